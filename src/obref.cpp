#include "obref.h"

#include <string>

#include "obcodetext.h"
#include "obidentity.h"
#include "oblocalref.h"
#include "obstring.h"
#include "typemgr/module.h"
#include "typemgr/printscan.h"

namespace {

constexpr char kDefaultFormat[] = "(%D:%H-%L#%B,%Cv%V)";

enum Slot : uint8_t { kBlock, kLow, kHigh, kOrigin, kClass, kVersion, kSlots };
constexpr obtext::CodeField kNamed[] = {{'B', kBlock, 32}, {'L', kLow, 32},
                                        {'H', kHigh, 16},  {'D', kOrigin, 16},
                                        {'C', kClass, 16}, {'V', kVersion, 16}};
// The field order of the old printf-style format "%hu:%hu-%lu#%lu,%hu".
constexpr obtext::CodeField kPositional[] = {{'h', kOrigin, 16},
                                             {'h', kHigh, 16},
                                             {'l', kLow, 32},
                                             {'l', kBlock, 32},
                                             {'h', kClass, 16}};
constexpr obtext::CodeForm kForm = {kNamed, 6, kPositional, 5, true};

struct Traits {
  using Value = ObRef;
  static constexpr uint32_t kStored = 14;
  static bool Big(uint8_t fmt) { return fmt == kObFormatBig; }
  static void StoreOne(uint8_t* d, const ObRef& v, bool big) {
    obident::Put32(d, v.block, big);
    obident::Put32(d + 4, v.low, big);
    obident::Put16(d + 8, v.high, big);
    obident::Put16(d + 10, v.origin, big);
    obident::Put16(d + 12, v.classNumber, big);
  }
  static void LoadOne(ObRef& v, const uint8_t* s, bool big) {
    v.block = obident::Get32(s, big);
    v.low = obident::Get32(s + 4, big);
    v.high = obident::Get16(s + 8, big);
    v.origin = obident::Get16(s + 10, big);
    v.classNumber = obident::Get16(s + 12, big);
    v.version = 0;
  }
  static int32_t CompareMemory(const ObRef& a, const ObRef& b) {
    return a != b;
  }
  // Origin number, high part, low part, most significant byte first as
  // they lie in the little-endian form: unlike the memory form, the origin
  // ranks first. Block and class number are never compared.
  static int32_t CompareStored(const uint8_t* a, const uint8_t* b) {
    return obident::KeyByteDifference(Key(a), Key(b));
  }
  // Bytes 11 to 4.
  static uint64_t Key(const uint8_t* p) {
    return uint64_t{obident::Get16(p + 10, false)} << 48 |
           uint64_t{obident::Get16(p + 8, false)} << 32 |
           obident::Get32(p + 4, false);
  }
  static uint32_t Fold(const ObRef& v) {
    return v.low ^ v.high ^ uint32_t { v.origin };
  }
  static double Position(const ObRef& v, bool stored) {
    const double number = v.high * 4294967296.0 + v.low;
    return stored ? v.origin * 281474976710656.0 + number
                  : number * 65536.0 + v.origin;
  }
};
using Ops = obident::Ops<Traits>;

}  // namespace

ObRef& ObRef::operator=(const ObLocalRef& ref) {
  block = ref.block;
  low = ref.low;
  high = ref.high;
  origin = 0;
  classNumber = ref.classNumber;
  version = ref.version;
  return *this;
}

ObString& ObRef::PrintToObString(ObString& text, const char* format) const {
  if (IsNullValue()) {
    text += NullPrintText();
    return text;
  }
  const uint64_t slots[kSlots] = {block,  low,         high,
                                  origin, classNumber, version};
  std::string out;
  obtext::PrintCodes(kForm, format != nullptr ? format : kDefaultFormat, slots,
                     out);
  text << out.c_str();
  return text;
}

void ObRef::ScanFromObString(const ObString& text, const char* format) {
  const ObString narrow = obtext::NarrowText(text);
  if (obprint::IsNullText(narrow)) {
    SetNullValue();
    return;
  }
  uint64_t slots[kSlots] = {block, 0, 0, origin, classNumber, version};
  obtext::ScanCodes(kForm, format != nullptr ? format : kDefaultFormat,
                    narrow.StrGet(), narrow.Len(), slots);
  block = static_cast<uint32_t>(slots[kBlock]);
  low = static_cast<uint32_t>(slots[kLow]);
  high = static_cast<uint16_t>(slots[kHigh]);
  origin = static_cast<uint16_t>(slots[kOrigin]);
  classNumber = static_cast<uint16_t>(slots[kClass]);
  version = static_cast<uint16_t>(slots[kVersion]);
}

OBIDENT_DEFINE_ROW_OPS(ObRef, Ops)
