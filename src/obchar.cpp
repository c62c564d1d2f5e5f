#include "obchar.h"

#include <cctype>
#include <cstring>

#include "obi18n.h"
#include "obstrcmp.h"
#include "obstring.h"
#include "obstringiterator.h"

namespace {

constexpr uint8_t kUnicode = 253;

uint8_t Default16(uint8_t codeSet) {
  return codeSet == 255 ? ObLanguageContext::GetDefault16CodeSet() : codeSet;
}
uint8_t Default8(uint8_t codeSet) {
  return codeSet == 255 ? ObLanguageContext::GetDefault8CodeSet() : codeSet;
}
uint8_t DefaultLanguage(uint8_t language) {
  return language == 255 ? ObLanguageContext::GetDefaultLanguage() : language;
}

}  // namespace

ObChar::ObChar(unsigned short value, uint8_t codeSet, uint8_t language)
    : view_(nullptr),
      value_(value),
      codeSet_(Default16(codeSet)),
      language_(DefaultLanguage(language)),
      format_(1) {}

ObChar::ObChar(char value, uint8_t codeSet, uint8_t language)
    : view_(nullptr),
      value_(static_cast<unsigned char>(value)),
      codeSet_(Default8(codeSet)),
      language_(DefaultLanguage(language)),
      format_(1) {}

ObChar::ObChar(char* at, uint8_t codeSet, uint8_t language, uint8_t format)
    : view_(at),
      value_(0),
      codeSet_(Default8(codeSet)),
      language_(DefaultLanguage(language)),
      format_(format == 255 ? 1 : format) {}

ObChar::ObChar(ObString& s, int32_t offset)
    : view_(const_cast<char*>(s.StrGet()) + offset),
      value_(0),
      codeSet_(s.GetCodeSet()),
      language_(s.GetLanguage()),
      format_(1) {}

ObChar::ObChar(const ObChar& other)
    : view_(nullptr),
      value_(other.GetValue()),
      codeSet_(other.codeSet_),
      language_(DefaultLanguage(other.language_)),
      format_(1) {}

// 16-bit characters of a viewed text are stored most significant byte
// first in format 2 and in machine order otherwise.
uint16_t ObChar::GetValue() const {
  if (view_ == nullptr) return IsWide() ? value_ : (value_ & 0xFF);
  const uint8_t* p = reinterpret_cast<const uint8_t*>(view_);
  if (!IsWide()) return *p;
  if ((format_ & 0x0F) == 2) return static_cast<uint16_t>(p[0] << 8 | p[1]);
  uint16_t u;
  std::memcpy(&u, p, 2);
  return u;
}

void ObChar::Write(uint16_t value) {
  if (view_ == nullptr) {
    value_ = value;
    return;
  }
  uint8_t* p = reinterpret_cast<uint8_t*>(view_);
  if (!IsWide()) {
    *p = static_cast<uint8_t>(value);
  } else if ((format_ & 0x0F) == 2) {
    p[0] = static_cast<uint8_t>(value >> 8);
    p[1] = static_cast<uint8_t>(value);
  } else {
    std::memcpy(p, &value, 2);
  }
}

ObChar& ObChar::operator=(char value) {
  if (view_ != nullptr) {
    *view_ = value;
  } else {
    value_ = static_cast<unsigned char>(value);
  }
  return *this;
}

ObChar& ObChar::operator=(unsigned short value) {
  Write(value);
  return *this;
}

ObChar& ObChar::operator=(const ObChar& c) {
  if (this == &c) return *this;
  if (view_ == nullptr) {
    value_ = c.GetValue();
    codeSet_ = c.codeSet_;
    language_ = c.language_;
    format_ = c.format_;
    return *this;
  }
  // A view keeps its text's code set.
  Write(c.MapTo(codeSet_).GetValue());
  return *this;
}

ObChar ObChar::MapTo(uint8_t codeSet) const {
  codeSet = Default16(codeSet);
  const uint16_t v = GetValue();
  if (codeSet == codeSet_ || codeSet == 0) return ObChar(*this);
  uint16_t mapped = v;
  if (const ObCodeSet* target = ObLanguageContext::QueryCodeSet(codeSet))
    mapped = target->Convert(v, codeSet_);
  return ObChar(mapped, codeSet, language_);
}

uint16_t ObChar::Order() const {
  const uint8_t codeSet =
      codeSet_ == 0 ? ObLanguageContext::GetNativeCodeSet() : codeSet_;
  const ObCodeSet* cs = ObLanguageContext::QueryCodeSet(codeSet);
  const ObCharTable* table = cs != nullptr ? cs->GetCharTable() : nullptr;
  uint16_t v = GetValue();
  if (table == nullptr) {
    const ObCodeSet* unicode = ObLanguageContext::QueryCodeSet(kUnicode);
    if (cs != nullptr) v = unicode->Convert(v, codeSet);
    table = unicode->GetCharTable();
  }
  ObCollEntry e;
  if (!table->Lookup(v, e)) return v;  // unknown: its own code
  return e.order;
}

int32_t ObChar::Compare(const ObChar& other, uint16_t cmpOp) const {
  if (cmpOp == 65535) cmpOp = ObLanguageContext::GetDefaultCmpOp();
  uint16_t a[2] = {GetValue(), 0}, b[2] = {other.GetValue(), 0};
  char a8[2] = {static_cast<char>(a[0]), 0};
  char b8[2] = {static_cast<char>(b[0]), 0};
  const char* t1 = IsWide() ? reinterpret_cast<const char*>(a) : a8;
  const char* t2 = other.IsWide() ? reinterpret_cast<const char*>(b) : b8;
  return ObStrCmp(codeSet_, language_, t1, other.codeSet_, other.language_, t2,
                  cmpOp, 1, 1, nullptr);
}

ObChar ObChar::Held8(char c) { return ObChar(c, 255, 255); }
ObChar ObChar::Held16(unsigned short c) { return ObChar(c, 255, 255); }

ObChar ObChar::ToLower(ObStringIterator*) const {
  const uint16_t v = GetValue();
  if (codeSet_ == 0)
    return ObChar(static_cast<char>(std::tolower(v & 0xFF)), 0, language_);
  const ObUnicodeProps* props = ObCodeSet::GetUnicodeProps(
      ObLanguageContext::QueryCodeSet(codeSet_), v, language_);
  if (props == nullptr || props->lower == 0) return ObChar(*this);
  return ObChar(props->lower, kUnicode, language_).MapTo(codeSet_);
}

ObChar ObChar::ToUpper(ObStringIterator* from) const {
  const uint16_t v = GetValue();
  if (codeSet_ == 0)
    return ObChar(static_cast<char>(std::toupper(v & 0xFF)), 0, language_);
  const ObUnicodeProps* props = ObCodeSet::GetUnicodeProps(
      ObLanguageContext::QueryCodeSet(codeSet_), v, language_);
  if (props == nullptr || props->upper == 0) return ObChar(*this);
  if (props->upperList != nullptr && from != nullptr)
    from->SetOverflow(props->upperList, 255);
  return ObChar(props->upper, kUnicode, language_).MapTo(codeSet_);
}
