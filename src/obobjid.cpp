#include "obobjid.h"

#include <string>

#include "obcodetext.h"
#include "obidentity.h"
#include "obstring.h"
#include "typemgr/module.h"
#include "typemgr/printscan.h"

namespace {

constexpr char kDefaultFormat[] = "(%H-%L#%B)";

enum Slot : uint8_t { kBlock, kLow, kHigh, kSlots };
constexpr obtext::CodeField kNamed[] = {
    {'H', kHigh, 16}, {'L', kLow, 32}, {'B', kBlock, 32}};
constexpr obtext::CodeField kPositional[] = {
    {'h', kHigh, 16}, {'l', kLow, 32}, {'l', kBlock, 32}};
constexpr obtext::CodeForm kForm = {kNamed, 3, kPositional, 3, false};

struct Traits {
  using Value = ObObjId;
  static constexpr uint32_t kStored = 10;
  static bool Big(uint8_t fmt) { return fmt == kObFormatBig; }
  static void StoreOne(uint8_t* d, const ObObjId& v, bool big) {
    obident::Put32(d, v.block, big);
    obident::Put32(d + 4, v.low, big);
    obident::Put16(d + 8, v.high, big);
  }
  static void LoadOne(ObObjId& v, const uint8_t* s, bool big) {
    v.block = obident::Get32(s, big);
    v.low = obident::Get32(s + 4, big);
    v.high = obident::Get16(s + 8, big);
  }
  static int32_t CompareMemory(const ObObjId& a, const ObObjId& b) {
    return a != b;
  }
  // High part, then low part, most significant byte first as they lie in
  // the little-endian form; the block is never compared.
  static int32_t CompareStored(const uint8_t* a, const uint8_t* b) {
    return obident::KeyByteDifference(Key(a), Key(b));
  }
  // Bytes 9 to 4.
  static uint64_t Key(const uint8_t* p) {
    return uint64_t{obident::Get16(p + 8, false)} << 32 |
           obident::Get32(p + 4, false);
  }
  static uint32_t Fold(const ObObjId& v) { return v.low ^ v.high; }
  static double Position(const ObObjId& v, bool) {
    return v.high * 4294967296.0 + v.low;
  }
};
using Ops = obident::Ops<Traits>;

}  // namespace

ObString& ObObjId::PrintToObString(ObString& text, const char* format) const {
  if (IsNullValue()) {
    text += NullPrintText();
    return text;
  }
  const uint64_t slots[kSlots] = {block, low, high};
  std::string out;
  obtext::PrintCodes(kForm, format != nullptr ? format : kDefaultFormat, slots,
                     out);
  text << out.c_str();
  return text;
}

void ObObjId::ScanFromObString(const ObString& text, const char* format) {
  const ObString narrow = obtext::NarrowText(text);
  if (obprint::IsNullText(narrow)) {
    SetNullValue();
    return;
  }
  uint64_t slots[kSlots] = {block, 0, 0};
  obtext::ScanCodes(kForm, format != nullptr ? format : kDefaultFormat,
                    narrow.StrGet(), narrow.Len(), slots);
  *this = ObObjId(static_cast<uint32_t>(slots[kBlock]),
                  static_cast<uint32_t>(slots[kLow]),
                  static_cast<uint16_t>(slots[kHigh]));
}

OBIDENT_DEFINE_ROW_OPS(ObObjId, Ops)
