#include "obstring.h"

#include <cstdlib>
#include <cstring>

#include "obbs.h"
#include "obi18n.h"

namespace {

const char kEmptyText[2] = {0, 0};  // also an empty 16-bit text

// Texts that would exceed the size limit are cut; the "debug" setting
// "stringOverflow" turns the cut into an assertion as well.
uint32_t ClampSize(uint32_t bytes) {
  if (bytes <= ObString::kMaxSize) return bytes;
  if (DefaultConfig().GetInt("debug", "stringOverflow", 0) != 0)
    ORLO_assert("String overflow", "obstring", 1110);
  return ObString::kMaxSize;
}

}  // namespace

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
  if (other.buffer_ != nullptr) {
    buffer_ = static_cast<char*>(std::malloc(other.size_));
    if (buffer_ == nullptr) {
      ObCallMemoryHandler(other.size_);
      return;
    }
    std::memcpy(buffer_, other.buffer_, other.size_);
    size_ = other.size_;
  }
}

ObString::ObString(const char* text)
    : buffer_(nullptr),
      size_(0),
      codeSet_(GetDefault8CodeSet()),
      language_(GetDefaultLanguage()) {
  if (text != nullptr) Assign8(text, std::strlen(text), codeSet_);
}

ObString::~ObString() { Destroy(); }

ObString& ObString::operator=(const ObString& other) {
  if (this == &other) return *this;
  ObString copy(other);
  std::free(buffer_);
  buffer_ = copy.buffer_;
  size_ = copy.size_;
  codeSet_ = copy.codeSet_;
  language_ = copy.language_;
  copy.buffer_ = nullptr;
  copy.size_ = 0;
  return *this;
}

ObString& ObString::operator=(const char* text) {
  std::free(buffer_);
  buffer_ = nullptr;
  size_ = 0;
  codeSet_ = GetDefault8CodeSet();
  if (text != nullptr) Assign8(text, std::strlen(text), codeSet_);
  return *this;
}

void ObString::Assign8(const char* text, uint32_t bytes, uint8_t codeSet) {
  const uint32_t size = ClampSize(bytes + 1);
  char* p = static_cast<char*>(std::malloc(size));
  if (p == nullptr) {
    ObCallMemoryHandler(size);
    return;
  }
  std::memcpy(p, text, size - 1);
  p[size - 1] = 0;
  buffer_ = p;
  size_ = static_cast<uint16_t>(size);
  codeSet_ = codeSet;
}

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

uint32_t ObString::Len() const {
  if (buffer_ == nullptr) return 0;
  if (codeSet_ < 225) return static_cast<uint32_t>(strnlen(buffer_, size_));
  uint32_t n = 0;
  while (2 * n + 1 < size_ && (buffer_[2 * n] | buffer_[2 * n + 1]) != 0) ++n;
  return n;
}

const char* ObString::StrGet() const {
  return buffer_ != nullptr ? buffer_ : kEmptyText;
}

int32_t ObString::SetNullValue() {
  std::free(buffer_);
  buffer_ = nullptr;
  size_ = 0;
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
