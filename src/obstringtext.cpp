// The members of ObString that work on collation orders: comparison,
// search, trimming, case.
#include <cstdlib>
#include <cstring>

#include "obchar.h"
#include "obi18n.h"
#include "obstrcmp.h"
#include "obstring.h"
#include "obstringiterator.h"

namespace {

uint16_t Operator(uint16_t cmpOp) {
  return cmpOp == 65535 ? ObLanguageContext::GetDefaultCmpOp() : cmpOp;
}

int32_t CompareTexts(const ObString& a, const ObString& b, uint16_t cmpOp,
                     int16_t length) {
  return ObStrCmp(a.GetCodeSet(), a.GetLanguage(), a.StrGet(), b.GetCodeSet(),
                  b.GetLanguage(), b.StrGet(), cmpOp, length, 1, nullptr);
}

}  // namespace

ObChar ObCharToLower::Apply(const ObChar& ch, ObStringIterator* from) const {
  return ch.ToLower(from);
}
ObChar ObCharToUpper::Apply(const ObChar& ch, ObStringIterator* from) const {
  return ch.ToUpper(from);
}

ObChar ObString::operator[](uint32_t index) {
  if (index > Len()) return ObChar();
  return ObChar(*this, static_cast<int32_t>(index * CharWidth()));
}

bool ObString::operator==(const ObString& other) const {
  return this == &other ||
         CompareTexts(*this, other, GetDefaultCmpOp(), -1) == 0;
}
bool ObString::operator<(const ObString& other) const {
  return CompareTexts(*this, other, GetDefaultCmpOp(), -1) < 0;
}
bool ObString::operator>(const ObString& other) const {
  return CompareTexts(*this, other, GetDefaultCmpOp(), -1) > 0;
}
bool ObString::operator<=(const ObString& other) const {
  return CompareTexts(*this, other, GetDefaultCmpOp(), -1) <= 0;
}
bool ObString::operator>=(const ObString& other) const {
  return CompareTexts(*this, other, GetDefaultCmpOp(), -1) >= 0;
}

int32_t ObString::Compare(const ObString& other, int16_t length,
                          uint16_t cmpOp) const {
  return CompareTexts(*this, other, Operator(cmpOp), length);
}

int32_t ObString::EqualsIgnoreLanguage(const ObString& other) const {
  const uint8_t language =
      language_ == other.language_ ? language_ : static_cast<uint8_t>(0);
  return ObStrCmp(codeSet_, language, StrGet(), other.codeSet_, language,
                  other.StrGet(), CmpBinaryOrder, -1, 1, nullptr) == 0;
}

int32_t ObString::Find(const ObString& pattern, uint32_t start,
                       uint16_t cmpOp) const {
  cmpOp = Operator(cmpOp);
  if (pattern.buffer_ == nullptr || buffer_ == nullptr || start > Len())
    return -1;
  // With wildcards the pattern matches as a prefix: "*" is appended and the
  // whole rest is compared; otherwise only the pattern's length is.
  ObString pat(pattern);
  int16_t length = static_cast<int16_t>(pattern.Len());
  if ((cmpOp & (CmpNoWildcards | CmpBinaryOrder)) == 0) {
    pat += ObString("*");
    length = -1;
  }
  const uint32_t w = CharWidth();
  const uint32_t patternBytes = pat.Len() * pat.CharWidth();
  const uint32_t len = Len();
  for (uint32_t pos = start; (len - pos) * w >= patternBytes; ++pos) {
    if (ObStrCmp(codeSet_, language_, buffer_ + pos * w, pat.codeSet_,
                 pat.language_, pat.buffer_, cmpOp, length, 1, nullptr) == 0)
      return static_cast<int32_t>(pos);
    if (pos == len) break;
  }
  return -1;
}

int32_t ObString::Find(char ch, uint32_t start, uint16_t cmpOp) const {
  return Find(ObString(ch), start, cmpOp);
}

int32_t ObString::Find(unsigned short ch, uint32_t start,
                       uint16_t cmpOp) const {
  return Find(ObString(ch), start, cmpOp);
}

ObString& ObString::ReplaceAll(const ObString& from, const ObString& to,
                               uint16_t cmpOp) {
  const uint32_t fromLen = from.Len();
  if (fromLen == 0) return *this;
  const ObString replacement(to);
  int32_t pos = 0;
  while ((pos = Find(from, static_cast<uint32_t>(pos), cmpOp)) >= 0) {
    Cut(static_cast<uint32_t>(pos), static_cast<int32_t>(fromLen));
    Insert(replacement, static_cast<uint32_t>(pos));
    pos += static_cast<int32_t>(replacement.Len());
  }
  return *this;
}

ObString& ObString::ReplaceAll(char from, char to, uint16_t cmpOp) {
  return ReplaceAll(ObString(from), ObString(to), cmpOp);
}

ObString& ObString::ReplaceAll(unsigned short from, unsigned short to,
                               uint16_t cmpOp) {
  return ReplaceAll(ObString(from), ObString(to), cmpOp);
}

ObString& ObString::LeftTrim() {
  const uint32_t len = Len();
  uint32_t blanks = 0;
  while (blanks < len && (*this)[blanks].IsSpace()) ++blanks;
  if (blanks > 0) Cut(0, static_cast<int32_t>(blanks));
  return *this;
}

// Walks back from the terminator, which counts as blank.
ObString& ObString::RightTrim() {
  if (buffer_ == nullptr) return *this;
  uint32_t end = Len();
  while (end > 0 && (*this)[end - 1].IsSpace()) --end;
  if (end < Len()) {
    Splice(buffer_, codeSet_, end, 0, 0, 1, SpliceMode::kTruncateAppend);
  }
  return *this;
}

ObString& ObString::ToLower() { return Transform(ObCharToLower()); }
ObString& ObString::ToUpper() { return Transform(ObCharToUpper()); }

ObString& ObString::Transform(const ObCharOperation& op) {
  if (size_ == 0) return *this;
  const uint32_t bytes = uint32_t{size_} * 2;
  char* out = static_cast<char*>(std::calloc(1, bytes));
  if (out == nullptr) return *this;
  ObStringIterator from(*this);
  ObStringIterator to(out, codeSet_, language_, 8);
  from.Transform(to, op);
  const uint32_t w = CharWidth();
  uint32_t written = static_cast<uint32_t>(to.GetPosition() - out) + w;
  ObString result(codeSet_, language_);
  // The transformed text may exceed the size limit: the splice cuts it.
  result.Splice(out, codeSet_, 0, 0, written / w - 1, 1,
                SpliceMode::kTruncateAppend);
  std::free(out);
  ReplaceBuffer(result.buffer_, result.size_);
  result.buffer_ = nullptr;
  result.size_ = 0;
  return *this;
}

int32_t ObSplitList(ObString& list, ObString& item, const ObString& separator,
                    unsigned short& position) {
  int32_t at = list.Find(separator, position);
  while (at >= 0 && static_cast<uint32_t>(at) == position) {
    ++position;
    at = list.Find(separator, position);
  }
  const uint32_t len = list.Len();
  uint32_t end;
  if (at < 0) {
    if (position >= len) return kObEndOfList;
    end = len;
  } else {
    end = static_cast<uint32_t>(at);
  }
  item = list.Copy(position, end - position);
  item.Trim();
  position = static_cast<unsigned short>(end + 1);
  return 0;
}
