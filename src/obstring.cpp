#include "obstring.h"

#include <cerrno>
#include <cinttypes>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

#include "obbs.h"
#include "obcodeconv.h"
#include "obi18n.h"
#include "obmodule.h"
#include "typemgr/printscan.h"

namespace {

const char kEmptyText[2] = {0, 0};  // also an empty 16-bit text

inline uint32_t WidthOf(uint8_t codeSet) {
  return codeSet >= ObString::kFirstWideCodeSet ? 2 : 1;
}

inline uint16_t ReadUnit(const void* text, uint32_t index, uint32_t width) {
  const uint8_t* p = static_cast<const uint8_t*>(text) + size_t{index} * width;
  if (width == 1) return *p;
  uint16_t u;
  std::memcpy(&u, p, 2);
  return u;
}

inline void WriteUnit(void* text, uint32_t index, uint32_t width, uint16_t u) {
  uint8_t* p = static_cast<uint8_t*>(text) + size_t{index} * width;
  if (width == 1) {
    *p = static_cast<uint8_t>(u);
  } else {
    std::memcpy(p, &u, 2);
  }
}

// Characters of a zero-terminated text, counting at most `limit`.
uint32_t TextLength(const void* text, uint32_t width, uint32_t limit) {
  uint32_t n = 0;
  while (n < limit && ReadUnit(text, n, width) != 0) ++n;
  return n;
}

// Texts that would exceed the size limit are cut; the "debug" setting
// "stringOverflow" turns the cut into an assertion as well.
void ReportOverflow() {
  if (DefaultConfig().GetInt("debug", "stringOverflow", 0) != 0)
    ORLO_assert("String overflow", "obstring", 1110);
}

char* AllocZeroed(uint32_t bytes) {
  return static_cast<char*>(ObAllocate(bytes, 1));
}

// A C integer parse saturated to the range of T, as a 32-bit `long` and a
// 64-bit integer parse report overflow.
template <class T>
T Saturate(long long v) {
  if (v > static_cast<long long>(std::numeric_limits<T>::max()))
    return std::numeric_limits<T>::max();
  if (v < static_cast<long long>(std::numeric_limits<T>::min()))
    return std::numeric_limits<T>::min();
  return static_cast<T>(v);
}

}  // namespace

// ---- Construction and release.

ObString::ObString()
    : buffer_(nullptr),
      size_(0),
      codeSet_(GetDefaultCodeSet()),
      language_(GetDefaultLanguage()) {}

ObString::ObString(uint8_t codeSet, uint8_t language)
    : buffer_(nullptr), size_(0), codeSet_(codeSet), language_(language) {}

ObString::ObString(const ObString& other)
    : buffer_(nullptr),
      size_(0),
      codeSet_(other.codeSet_),
      language_(other.language_) {
  if (other.buffer_ != nullptr)
    AssignText(other.buffer_, other.codeSet_, other.Len());
}

ObString::ObString(char ch) : ObString(static_cast<unsigned char>(ch)) {}

ObString::ObString(unsigned char ch)
    : buffer_(nullptr),
      size_(0),
      codeSet_(GetDefault8CodeSet()),
      language_(GetDefaultLanguage()) {
  if (ch != 0) AssignText(&ch, codeSet_, 1);
}

ObString::ObString(const char* text) : ObString(text, kWholeText) {}

ObString::ObString(const char* text, uint16_t length)
    : buffer_(nullptr),
      size_(0),
      codeSet_(GetDefault8CodeSet()),
      language_(GetDefaultLanguage()) {
  if (text == nullptr || length == 0) return;
  uint32_t n = length == kWholeText ? TextLength(text, 1, UINT32_MAX)
                                    : TextLength(text, 1, length);
  AssignText(text, codeSet_, n);
}

ObString::ObString(unsigned short ch)
    : buffer_(nullptr),
      size_(0),
      codeSet_(GetDefault16CodeSet()),
      language_(GetDefaultLanguage()) {
  if (ch != 0) AssignText(&ch, codeSet_, 1);
}

ObString::ObString(const unsigned short* text) : ObString(text, kWholeText) {}

ObString::ObString(const unsigned short* text, uint16_t length)
    : buffer_(nullptr),
      size_(0),
      codeSet_(GetDefault16CodeSet()),
      language_(GetDefaultLanguage()) {
  if (text == nullptr || length == 0) return;
  uint32_t n = length == kWholeText ? TextLength(text, 2, UINT32_MAX)
                                    : TextLength(text, 2, length);
  AssignText(text, codeSet_, n);
}

ObString::ObString(short value) : ObString(static_cast<int>(value)) {}

ObString::ObString(int value) : ObString(GetDefault8CodeSet(), 0) {
  language_ = GetDefaultLanguage();
  char text[16];
  std::snprintf(text, sizeof text, "%d", value);
  AssignNumber(text);
}

ObString::ObString(unsigned int value) : ObString(static_cast<int>(value)) {}

ObString::ObString(int64_t value) : ObString(GetDefault8CodeSet(), 0) {
  language_ = GetDefaultLanguage();
  char text[24];
  std::snprintf(text, sizeof text, "%" PRId64, value);
  AssignNumber(text);
}

ObString::ObString(uint64_t value) : ObString(GetDefault8CodeSet(), 0) {
  language_ = GetDefaultLanguage();
  char text[24];
  std::snprintf(text, sizeof text, "%" PRIu64, value);
  AssignNumber(text);
}

ObString::ObString(double value) : ObString(GetDefault8CodeSet(), 0) {
  language_ = GetDefaultLanguage();
  char text[512];
  obprint::FormatDouble(value, "%.17g", text, sizeof text);
  AssignNumber(text);
}

ObString::~ObString() { Destroy(); }

void ObString::Init() {
  buffer_ = nullptr;
  size_ = 0;
  codeSet_ = GetDefaultCodeSet();
  language_ = GetDefaultLanguage();
}

void ObString::Destroy() {
  std::free(buffer_);
  buffer_ = nullptr;
  size_ = 0;
  codeSet_ = 0;
  language_ = 0;
}

void ObString::Destruct(ObString& from) {
  if (&from == this) return;
  std::free(buffer_);
  buffer_ = from.buffer_;
  size_ = from.size_;
  codeSet_ = from.codeSet_;
  language_ = from.language_;
  from.buffer_ = nullptr;
  from.size_ = 0;
}

void ObString::ReplaceBuffer(char* buffer, uint16_t size) {
  std::free(buffer_);
  buffer_ = buffer;
  size_ = buffer != nullptr ? size : 0;
}

// ---- The edit primitive.

void ObString::Splice(const void* src, uint8_t srcCodeSet, uint32_t destPos,
                      uint32_t srcPos, uint32_t count, uint32_t repeat,
                      SpliceMode mode) {
  if (mode != SpliceMode::kTruncateAppend && (src == nullptr || count == 0))
    return;
  const uint32_t w = CharWidth();
  // Bring the source into this string's code set first.
  uint16_t* converted = nullptr;
  const uint32_t srcWidth = WidthOf(srcCodeSet);
  if (count != 0 && src != nullptr &&
      ((srcCodeSet != codeSet_ && srcCodeSet != 0) || srcWidth != w)) {
    const uint32_t n = repeat == 1 ? count : 1;
    converted = static_cast<uint16_t*>(ObAllocate(size_t{n} * 2 + 2, 0));
    if (converted == nullptr) return;
    for (uint32_t i = 0; i < n; ++i) {
      uint16_t ch = ReadUnit(src, srcPos + i, srcWidth);
      WriteUnit(converted, i, w, ObMapChar(ch, srcCodeSet, codeSet_));
    }
    src = converted;
    srcPos = 0;
  }
  const uint8_t* from =
      src != nullptr ? static_cast<const uint8_t*>(src) + size_t{srcPos} * w
                     : nullptr;
  const uint64_t copied = uint64_t{repeat == 1 ? count : repeat} * w;
  const uint32_t oldSize = size_;
  uint64_t newSize;
  switch (mode) {
    case SpliceMode::kOverwrite:
      newSize = oldSize;  // count characters replaced by count characters
      break;
    case SpliceMode::kInsert:
      newSize = (oldSize != 0 ? oldSize : w) + copied;
      break;
    default:
      newSize = uint64_t{destPos} * w + copied + w;
      break;
  }
  if (newSize > kMaxSize) {
    ReportOverflow();
    newSize = kMaxSize;
  }
  char* block = AllocZeroed(static_cast<uint32_t>(newSize));
  if (block == nullptr) {
    std::free(converted);
    return;
  }
  // Content room: everything but the terminating character.
  const uint64_t room = newSize - w;
  uint64_t at = 0;
  auto put = [&](const void* bytes, uint64_t n) {
    if (at >= room || n == 0) return;
    if (n > room - at) n = room - at;
    std::memcpy(block + at, bytes, static_cast<size_t>(n));
    at += n;
  };
  const uint64_t prefix = uint64_t{destPos} * w;
  if (buffer_ != nullptr) put(buffer_, prefix < oldSize ? prefix : oldSize);
  if (from != nullptr) {
    if (repeat == 1) {
      put(from, copied);
    } else {
      for (uint32_t i = 0; i < repeat && at < room; ++i) put(from, w);
    }
  }
  if (buffer_ != nullptr && mode != SpliceMode::kTruncateAppend) {
    uint64_t tail = prefix + (mode == SpliceMode::kOverwrite ? copied : 0);
    if (oldSize > tail + w) put(buffer_ + tail, oldSize - w - tail);
  }
  ReplaceBuffer(block, static_cast<uint16_t>(newSize));
  std::free(converted);
}

void ObString::AssignText(const void* text, uint8_t codeSet, uint32_t count) {
  ReplaceBuffer(nullptr, 0);
  Splice(text, codeSet, 0, 0, count, 1, SpliceMode::kTruncateAppend);
}

ObString& ObString::AssignChars(const void* chars, uint32_t count) {
  AssignText(chars, codeSet_, count);
  return *this;
}

void ObString::AssignNumber(const char* text) {
  AssignText(text, codeSet_, static_cast<uint32_t>(std::strlen(text)));
}

void ObString::Append(const void* text, uint8_t codeSet, uint32_t count) {
  Splice(text, codeSet, Len(), 0, count, 1, SpliceMode::kTruncateAppend);
}

// ---- Code sets.

int32_t ObString::SetCodeSetCode(uint8_t code) {
  if (WidthOf(code) != CharWidth()) return kObBadArgument;
  codeSet_ = code;
  return 0;
}

int32_t ObString::SetCodeSet(uint8_t code) {
  if (WidthOf(code) != CharWidth())
    MapToCodeSet(code != 0 ? code : ObLanguageContext::GetNativeCodeSet());
  codeSet_ = code;
  return 0;
}

int32_t ObString::MapToCodeSet(uint8_t code) {
  if (code == 0) return kObBadArgument;
  if (code == codeSet_) return 0;
  ObString converted(code, language_);
  if (buffer_ != nullptr) converted.Append(buffer_, codeSet_, Len());
  Destruct(converted);
  return 0;
}

int32_t ObString::CopyMapped(const ObString& source, uint8_t codeSet,
                             uint16_t length) {
  if (&source == this) return kObBadArgument;
  uint32_t n = source.Len();
  if (length != kWholeText && length < n) n = length;
  ReplaceBuffer(nullptr, 0);
  codeSet_ = codeSet;
  language_ = source.language_;
  if (source.buffer_ != nullptr) Append(source.buffer_, source.codeSet_, n);
  return 0;
}

// ---- Access.

uint32_t ObString::Len() const {
  if (buffer_ == nullptr) return 0;
  const uint32_t w = CharWidth();
  return TextLength(buffer_, w, size_ / w);
}

bool ObString::IsEmpty() const {
  return buffer_ == nullptr || ReadUnit(buffer_, 0, CharWidth()) == 0;
}

const char* ObString::StrGet() const {
  return buffer_ != nullptr ? buffer_ : kEmptyText;
}

// Bounded by the buffer, not by Len(): callers walk texts by index.
uint16_t ObString::CharAt(uint32_t index) const {
  const uint32_t w = CharWidth();
  return buffer_ != nullptr && index < size_ / w ? ReadUnit(buffer_, index, w)
                                                 : 0;
}

// ---- Editing.

ObString& ObString::operator=(const ObString& other) {
  if (this == &other) return *this;
  ReplaceBuffer(nullptr, 0);
  codeSet_ = other.codeSet_;
  if (other.buffer_ != nullptr)
    AssignText(other.buffer_, other.codeSet_, other.Len());
  language_ = other.language_;
  return *this;
}

ObString& ObString::operator=(const char* text) {
  ObString s(text);
  Destruct(s);
  return *this;
}

ObString& ObString::operator=(const unsigned short* text) {
  ObString s(text);
  Destruct(s);
  return *this;
}

// Appending a string to itself is safe: the splice builds the new text in
// a new block before it frees the old one.
ObString& ObString::operator+=(const ObString& s) {
  if (s.buffer_ != nullptr) Append(s.buffer_, s.codeSet_, s.Len());
  return *this;
}

ObString& ObString::operator<<(const char* s) {
  if (s != nullptr)
    Append(s, GetDefault8CodeSet(), static_cast<uint32_t>(std::strlen(s)));
  return *this;
}
ObString& ObString::operator<<(char ch) { return *this += ObString(ch); }
ObString& ObString::operator<<(short v) { return *this += ObString(v); }
ObString& ObString::operator<<(int v) { return *this += ObString(v); }
ObString& ObString::operator<<(unsigned int v) { return *this += ObString(v); }
ObString& ObString::operator<<(int64_t v) { return *this += ObString(v); }
ObString& ObString::operator<<(uint64_t v) { return *this += ObString(v); }
ObString& ObString::operator<<(float v) {
  return *this += ObString(static_cast<double>(v));
}
ObString& ObString::operator<<(double v) { return *this += ObString(v); }

ObString operator+(const ObString& a, const ObString& b) {
  ObString r(a);
  r += b;
  return r;
}

ObString& ObString::Insert(const ObString& s, uint32_t pos) {
  if (pos > Len()) return *this;
  const ObString copy(s);
  Splice(copy.buffer_, copy.codeSet_, pos, 0, copy.Len(), 1,
         SpliceMode::kInsert);
  return *this;
}

ObString& ObString::Replace(const ObString& s, uint32_t pos) {
  const uint32_t len = Len();
  if (pos >= len) return *this;
  const ObString copy(s);
  uint32_t count = copy.Len();
  if (count > len - pos) count = len - pos;
  if (count < 1) return *this;
  Splice(copy.buffer_, copy.codeSet_, pos, 0, count, 1, SpliceMode::kOverwrite);
  return *this;
}

ObString& ObString::Cut(uint32_t pos, int32_t count) {
  const uint32_t len = Len();
  if (pos >= len) return *this;
  uint32_t n = len - pos;
  if (count >= 0 && static_cast<uint32_t>(count) < n) n = count;
  if (n < 1) return *this;
  // The kept tail is copied from a private copy: the source is this text.
  const ObString tail = Copy(pos + n, kWholeText);
  Splice(tail.buffer_, codeSet_, pos, 0, tail.Len(), 1,
         SpliceMode::kTruncateAppend);
  return *this;
}

ObString& ObString::Fill(uint32_t count, char ch) {
  codeSet_ = GetDefault8CodeSet();
  ReplaceBuffer(nullptr, 0);
  Splice(&ch, codeSet_, 0, 0, 1, count, SpliceMode::kTruncateAppend);
  return *this;
}

ObString& ObString::Fill(uint32_t count, unsigned short ch) {
  codeSet_ = GetDefault16CodeSet();
  ReplaceBuffer(nullptr, 0);
  Splice(&ch, codeSet_, 0, 0, 1, count, SpliceMode::kTruncateAppend);
  return *this;
}

ObString& ObString::Expand(uint32_t width, char ch) {
  const uint32_t len = Len();
  if (len >= width) return *this;
  Splice(&ch, GetDefault8CodeSet(), len, 0, 1, width - len,
         SpliceMode::kTruncateAppend);
  return *this;
}

ObString& ObString::Expand(uint32_t width, unsigned short ch) {
  const uint32_t len = Len();
  if (len >= width) return *this;
  Splice(&ch, GetDefault16CodeSet(), len, 0, 1, width - len,
         SpliceMode::kTruncateAppend);
  return *this;
}

ObString ObString::Copy(uint32_t pos, uint32_t count) const {
  const uint32_t len = Len();
  if (pos >= len) {
    // Beyond the end: the empty text of the default 8-bit code set.
    ObString empty(GetDefault8CodeSet(), GetDefaultLanguage());
    empty.AssignText("", empty.codeSet_, 0);
    return empty;
  }
  uint32_t n = len - pos;
  if (count != kWholeText && count < n) n = count;
  ObString r(codeSet_, language_);
  r.Splice(buffer_, codeSet_, 0, pos, n, 1, SpliceMode::kTruncateAppend);
  return r;
}

ObString ObString::Left(uint32_t n) const {
  const uint32_t len = Len();
  return Copy(0, n < len ? n : len);
}

ObString ObString::Right(uint32_t n) const {
  const uint32_t len = Len();
  const uint32_t m = n < len ? n : len;
  return Copy(len - m, m);
}

// ---- Numbers.

namespace {

// Every 16-bit unit is a digit: value * 10 + (unit - '0'), wrapping.
template <class U>
U WideDigits(const ObString& s) {
  U v = 0;
  const uint32_t len = s.Len();
  for (uint32_t i = 0; i < len; ++i)
    v = static_cast<U>(v * 10u + static_cast<U>(s.CharAt(i) - 48u));
  return v;
}

long long ParseC(const char* text, bool cStyle) {
  errno = 0;
  return std::strtoll(text, nullptr, cStyle ? 0 : 10);
}

bool DecimalOnly() { return (___ObTypeMgrOptions() & 1) != 0; }

}  // namespace

ObString::operator int() const {
  if (buffer_ == nullptr) return 0;
  if (IsWide()) return static_cast<int>(WideDigits<uint32_t>(*this));
  return Saturate<int32_t>(ParseC(buffer_, !DecimalOnly()));
}

ObString::operator short() const {
  return static_cast<short>(static_cast<int>(*this));
}

ObString::operator int64_t() const {
  if (buffer_ == nullptr) return 0;
  if (IsWide()) return static_cast<int64_t>(WideDigits<uint64_t>(*this));
  return ParseC(buffer_, !DecimalOnly());
}

ObString::operator double() const {
  if (buffer_ == nullptr) return 0.0;
  double v = 0.0;
  ObString text(*this);
  obprint::DoubleScan(&v, text, "%.17g", 1);
  return v;
}

template <class T>
int32_t ObString::ParseLeading(T& out, bool cStyle) const {
  out = 0;
  const uint16_t first = CharAt(0);
  if (!(first >= '0' && first <= '9') && first != '-') return -1;
  if (IsWide()) {
    out = static_cast<T>(WideDigits<std::make_unsigned_t<T>>(*this));
  } else {
    out = Saturate<T>(ParseC(buffer_, cStyle));
  }
  return 0;
}

int32_t ObString::Atol(int32_t& out) const { return ParseLeading(out, false); }
int32_t ObString::Strtol(int32_t& out) const { return ParseLeading(out, true); }
int32_t ObString::Atoll(int64_t& out) const { return ParseLeading(out, false); }
int32_t ObString::Strtoll(int64_t& out) const {
  return ParseLeading(out, true);
}

// ---- Null value and defaults.

int32_t ObString::SetNullValue() {
  ReplaceBuffer(nullptr, 0);
  codeSet_ = 0;
  language_ = kNullLanguage;
  return 0;
}

uint8_t ObString::GetDefaultCodeSet() {
  return ObLanguageContext::GetDefaultCodeSet();
}
uint8_t ObString::GetDefault8CodeSet() {
  return ObLanguageContext::GetDefault8CodeSet();
}
uint8_t ObString::GetDefault16CodeSet() {
  return ObLanguageContext::GetDefault16CodeSet();
}
uint8_t ObString::GetDefaultLanguage() {
  return ObLanguageContext::GetDefaultLanguage();
}
uint16_t ObString::GetDefaultCmpOp() {
  return ObLanguageContext::GetDefaultCmpOp();
}
void ObString::SetDefaultCodeSet(uint8_t code) {
  ObLanguageContext::SetDefaultCodeSet(code);
}
void ObString::SetDefaultLanguage(uint8_t code) {
  ObLanguageContext::SetDefaultLanguage(code);
}
void ObString::SetDefaultCmpOp(uint16_t op) {
  ObLanguageContext::SetDefaultCmpOp(op);
}
