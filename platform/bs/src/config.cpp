#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "obbs.h"

namespace {

// Every scan works on a [begin, end) range of the caller's text: nothing is
// copied into a line buffer, so line length does not matter.
struct Span {
  const char* begin;
  const char* end;
  size_t size() const { return static_cast<size_t>(end - begin); }
  bool empty() const { return begin == end; }
};

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}

Span Trim(Span s) {
  while (!s.empty() && IsSpace(*s.begin)) ++s.begin;
  while (!s.empty() && IsSpace(s.end[-1])) --s.end;
  return s;
}

const char* Find(Span s, char c) {
  const void* p = s.empty() ? nullptr : std::memchr(s.begin, c, s.size());
  return p ? static_cast<const char*>(p) : s.end;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Decimal must fit int32_t. Hex may use all 32 bits (0xFFFFFFFF is -1) so
// that masks can be written naturally.
bool ParseInt(Span s, int32_t* out) {
  const char* p = s.begin;
  bool negative = false;
  if (p != s.end && (*p == '+' || *p == '-')) negative = *p++ == '-';
  unsigned base = 10;
  if (s.end - p > 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
    base = 16;
    p += 2;
  }
  if (p == s.end) return false;
  const uint64_t limit =
      base == 16 ? 0xFFFFFFFFu : (negative ? 0x80000000u : 0x7FFFFFFFu);
  uint64_t magnitude = 0;
  for (; p != s.end; ++p) {
    const int digit = HexDigit(*p);
    if (digit < 0 || static_cast<unsigned>(digit) >= base) return false;
    magnitude = magnitude * base + static_cast<unsigned>(digit);
    if (magnitude > limit) return false;
  }
  uint32_t bits = static_cast<uint32_t>(magnitude);
  if (negative) bits = 0u - bits;
  // Wraps: guaranteed since C++20 and defined by GCC and Clang before.
  *out = static_cast<int32_t>(bits);
  return true;
}

// Copies a name into a fixed field; fails rather than truncating, so two
// long names can never collide.
bool CopyName(char (&field)[ObConfig::kMaxName], const char* name,
              size_t length) {
  if (length >= sizeof(field)) return false;
  std::memcpy(field, name, length);
  field[length] = '\0';
  return true;
}

// Keys before the first section header belong to the section "". After a
// malformed header, keys are dropped until the next good one rather than
// being filed under the previous section.
void ParseText(ObConfig& config, const char* text, size_t length) {
  config.Clear();
  char section[ObConfig::kMaxName] = "";
  bool sectionValid = true;
  const char* const end = text + length;
  for (const char* p = text; p != end;) {
    const void* nl = std::memchr(p, '\n', static_cast<size_t>(end - p));
    const char* eol = nl ? static_cast<const char*>(nl) : end;
    Span line{p, eol};
    p = eol == end ? end : eol + 1;

    const char* hash = Find(line, '#');
    const char* semicolon = Find(line, ';');
    line.end = hash < semicolon ? hash : semicolon;
    line = Trim(line);
    if (line.empty()) continue;

    if (*line.begin == '[') {
      sectionValid = false;
      if (line.size() < 2 || line.end[-1] != ']') continue;
      const Span name = Trim({line.begin + 1, line.end - 1});
      sectionValid =
          !name.empty() && CopyName(section, name.begin, name.size());
      continue;
    }
    if (!sectionValid) continue;

    const char* equals = Find(line, '=');
    if (equals == line.end) continue;
    const Span key = Trim({line.begin, equals});
    const Span value = Trim({equals + 1, line.end});
    char keyName[ObConfig::kMaxName];
    int32_t number;
    if (key.empty() || !CopyName(keyName, key.begin, key.size()) ||
        !ParseInt(value, &number))
      continue;
    config.Set(section, keyName, number);  // full table: later lines lost
  }
}

}  // namespace

int32_t ObConfig::Set(const char* section, const char* key,
                      int32_t value) noexcept {
  if (section == nullptr || key == nullptr) return -1;
  // strnlen: never scan a long or unterminated name beyond what could fit.
  const size_t sectionLength = ::strnlen(section, kMaxName);
  const size_t keyLength = ::strnlen(key, kMaxName);
  if (sectionLength >= kMaxName || keyLength >= kMaxName) return -1;
  for (int i = 0; i < count_; ++i) {
    Entry& e = entries_[i];
    if (std::strcmp(e.section, section) == 0 && std::strcmp(e.key, key) == 0) {
      e.value = value;
      return 0;
    }
  }
  if (count_ == kMaxEntries) return -1;
  Entry& e = entries_[count_];
  CopyName(e.section, section, sectionLength);
  CopyName(e.key, key, keyLength);
  e.value = value;
  ++count_;
  return 0;
}

int32_t ObConfig::GetInt(const char* section, const char* key,
                         int32_t defaultValue) const noexcept {
  if (section == nullptr || key == nullptr) return defaultValue;
  for (int i = 0; i < count_; ++i) {
    const Entry& e = entries_[i];
    if (std::strcmp(e.section, section) == 0 && std::strcmp(e.key, key) == 0)
      return e.value;
  }
  return defaultValue;
}

void ObConfig::ReadText(const char* text) noexcept {
  if (text == nullptr) {
    Clear();
    return;
  }
  ParseText(*this, text, std::strlen(text));
}

int32_t ObConfig::ReadFile(const char* path) noexcept {
  Clear();
  std::FILE* file = path ? std::fopen(path, "rb") : nullptr;
  if (file == nullptr) return -1;
  // malloc rather than a container: allocation failure must not throw.
  char* buffer = nullptr;
  size_t length = 0;
  size_t capacity = 0;
  bool ok = true;
  for (;;) {
    if (length == capacity) {
      const size_t grown = capacity ? capacity * 2 : 4096;
      char* bigger = static_cast<char*>(std::realloc(buffer, grown));
      if (bigger == nullptr) {
        ok = false;
        break;
      }
      buffer = bigger;
      capacity = grown;
    }
    const size_t got = std::fread(buffer + length, 1, capacity - length, file);
    length += got;
    if (got == 0) {
      ok = !std::ferror(file);
      break;
    }
  }
  std::fclose(file);
  if (ok) ParseText(*this, buffer, length);
  std::free(buffer);
  return ok ? 0 : -1;
}

ObConfig& DefaultConfig() {
  static ObConfig config;
  static const bool loaded = [] {
    const char* path = std::getenv("QUILLSTORE_CONFIG");
    if (path != nullptr && *path != '\0') config.ReadFile(path);
    return true;
  }();
  (void)loaded;
  return config;
}
