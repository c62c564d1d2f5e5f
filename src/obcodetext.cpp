#include "obcodetext.h"

#include <cstring>

#include "obstring.h"

namespace obtext {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

uint64_t Truncate(uint64_t v, uint8_t bits) {
  return bits >= 64 ? v : v & ((uint64_t{1} << bits) - 1);
}

const CodeField* FindNamed(const CodeForm& form, char code) {
  for (size_t i = 0; i < form.namedCount; ++i)
    if (form.named[i].code == code) return &form.named[i];
  return nullptr;
}

bool IsPositional(const CodeForm& form, char code) {
  for (size_t i = 0; i < form.positionalCount; ++i)
    if (form.positional[i].code == code) return true;
  return false;
}

// Counts the positional codes met so far and picks the entry of the next.
class Positions {
 public:
  explicit Positions(const CodeForm& form) : form_(form) {}

  // The field of the next positional `code`; its slot is kNoSlot when the
  // code stands for 0.
  CodeField Next(char code) {
    CodeField none = {code, kNoSlot, code == 'l' ? uint8_t{32} : uint8_t{16}};
    if (form_.sharedCounter) {
      const size_t n = total_++;
      if (n < form_.positionalCount && form_.positional[n].code == code)
        return form_.positional[n];
      return none;
    }
    size_t& seen = code == 'h' ? h_ : l_;
    size_t k = seen++;
    for (size_t i = 0; i < form_.positionalCount; ++i) {
      if (form_.positional[i].code != code) continue;
      if (k-- == 0) return form_.positional[i];
    }
    return none;
  }

 private:
  const CodeForm& form_;
  size_t total_ = 0, h_ = 0, l_ = 0;
};

void AppendDecimal(uint64_t v, uint8_t bits, std::string& out) {
  char digits[24];
  size_t n = 0;
  const bool negative = bits >= 64 && (v >> 63) != 0;
  uint64_t magnitude = negative ? uint64_t{0} - v : Truncate(v, bits);
  do {
    digits[n++] = static_cast<char>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (negative) out += '-';
  while (n > 0) out += digits[--n];
}

// Blanks, an optional sign and decimal digits from `p`, wrapping modulo
// 2^64. False, with `p` unchanged, when there are no digits.
bool ReadNumber(const char*& p, const char* end, uint64_t& out) {
  const char* q = p;
  while (q < end && (*q == ' ' || (*q >= '\t' && *q <= '\r'))) ++q;
  bool negative = false;
  if (q < end && (*q == '+' || *q == '-')) negative = *q++ == '-';
  if (q == end || !IsDigit(*q)) return false;
  uint64_t v = 0;
  while (q < end && IsDigit(*q)) v = v * 10 + static_cast<uint64_t>(*q++ - '0');
  out = negative ? uint64_t{0} - v : v;
  p = q;
  return true;
}

}  // namespace

void PrintCodes(const CodeForm& form, const char* format, const uint64_t* slots,
                std::string& out) {
  Positions positions(form);
  for (const char* f = format; *f != '\0'; ++f) {
    if (*f != '%') {
      out += *f;
      continue;
    }
    const char code = f[1];
    if (code == '\0') break;
    ++f;
    if (const CodeField* named = FindNamed(form, code)) {
      AppendDecimal(slots[named->slot], named->bits, out);
    } else if (IsPositional(form, code)) {
      const CodeField field = positions.Next(code);
      AppendDecimal(field.slot == kNoSlot ? 0 : slots[field.slot], field.bits,
                    out);
      if (f[1] != '\0') ++f;  // the conversion letter of "%hu", "%lu"
    } else {
      out += code;
    }
  }
}

void ScanCodes(const CodeForm& form, const char* format, const char* text,
               size_t len, uint64_t* slots) {
  Positions positions(form);
  const char* t = text;
  const char* const end = text + len;
  const char* f = format;
  while (*f != '\0' && t < end) {
    if (*f != '%') {
      if (*f == *t) {
        ++f;
        ++t;
      } else if (IsDigit(*t)) {
        const char* dash = std::strchr(f, '-');
        const bool textHasDash = std::memchr(t, '-', end - t) != nullptr;
        f = dash != nullptr && !textHasDash ? dash + 1 : f + 1;
      } else {
        ++t;
      }
      continue;
    }
    const char code = f[1];
    if (code == '\0') break;
    f += 2;
    CodeField field = {code, kNoSlot, 0};
    if (const CodeField* named = FindNamed(form, code)) {
      field = *named;
    } else if (IsPositional(form, code)) {
      field = positions.Next(code);
      if (*f != '\0') ++f;
    } else {
      ++t;
      continue;
    }
    uint64_t v = 0;
    if (ReadNumber(t, end, v) && field.slot != kNoSlot)
      slots[field.slot] = Truncate(v, field.bits);
  }
}

ObString NarrowText(const ObString& text) {
  if (!text.IsWide()) return text;
  ObString copy(ObString::GetDefault8CodeSet(), text.GetLanguage());
  copy += text;
  return copy;
}

}  // namespace obtext
