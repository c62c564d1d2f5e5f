#include "obclassid.h"

#include <string>

#include "obcodetext.h"
#include "obidentity.h"
#include "obstring.h"
#include "typemgr/module.h"
#include "typemgr/printscan.h"

namespace {

constexpr char kDefaultFormat[] = "(%Cv%V)";

enum Slot : uint8_t { kClass, kVersion, kSlots };
constexpr obtext::CodeField kNamed[] = {{'C', kClass, 16}, {'V', kVersion, 16}};
constexpr obtext::CodeField kPositional[] = {{'h', kClass, 16},
                                             {'h', kVersion, 16}};
constexpr obtext::CodeForm kForm = {kNamed, 2, kPositional, 2, false};

bool IsNullStored(const uint8_t* p) {
  return (p[0] & p[1] & p[2] & p[3]) == 0xFF;
}

struct Traits {
  using Value = ObClassId;
  static constexpr uint32_t kStored = 4;
  static bool Big(uint8_t fmt) { return fmt == kObFormatBig; }
  static void StoreOne(uint8_t* d, const ObClassId& v, bool big) {
    obident::Put16(d, v.classNumber, big);
    obident::Put16(d + 2, v.version, big);
  }
  static void LoadOne(ObClassId& v, const uint8_t* s, bool big) {
    v.classNumber = obident::Get16(s, big);
    v.version = obident::Get16(s + 2, big);
  }
  static int32_t CompareMemory(const ObClassId& a, const ObClassId& b) {
    return a != b;
  }
  static int32_t CompareStored(const uint8_t* a, const uint8_t* b) {
    const bool nullA = IsNullStored(a), nullB = IsNullStored(b);
    if (nullA || nullB) return nullB - nullA;
    return obident::KeyByteDifference(Key(a), Key(b));
  }
  // Bytes 1, 0, 3, 2.
  static uint64_t Key(const uint8_t* p) {
    return uint64_t{obident::Get16(p, false)} << 16 |
           obident::Get16(p + 2, false);
  }
  static uint32_t Fold(const ObClassId& v) {
    return uint32_t{v.classNumber} ^ v.version;
  }
  static double Position(const ObClassId& v, bool) {
    return v.IsNullValue() ? -1.0 : v.classNumber * 65536.0 + v.version;
  }
};
using Ops = obident::Ops<Traits>;

}  // namespace

ObString& ObClassId::PrintToObString(ObString& text, const char* format) const {
  if (IsNullValue()) {
    text += NullPrintText();
    return text;
  }
  const uint64_t slots[kSlots] = {classNumber, version};
  std::string out;
  obtext::PrintCodes(kForm, format != nullptr ? format : kDefaultFormat, slots,
                     out);
  text << out.c_str();
  return text;
}

void ObClassId::ScanFromObString(const ObString& text, const char* format) {
  const ObString narrow = obtext::NarrowText(text);
  if (obprint::IsNullText(narrow)) {
    SetNullValue();
    return;
  }
  uint64_t slots[kSlots] = {classNumber, version};
  obtext::ScanCodes(kForm, format != nullptr ? format : kDefaultFormat,
                    narrow.StrGet(), narrow.Len(), slots);
  classNumber = static_cast<uint16_t>(slots[kClass]);
  version = static_cast<uint16_t>(slots[kVersion]);
}

OBIDENT_DEFINE_ROW_OPS(ObClassId, Ops)
