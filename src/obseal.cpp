#include "obseal.h"

#include "obidentity.h"
#include "obstring.h"

namespace {

constexpr char kInt64Format[] = "%S";

struct Traits {
  using Value = ObSeal;
  static constexpr uint32_t kStored = 6;
  // Seals were always written most significant byte first, so every
  // stored format reads them that way.
  static bool Big(uint8_t) { return true; }
  static void StoreOne(uint8_t* d, const ObSeal& v, bool big) {
    obident::Put16(d, v.word0, big);
    obident::Put16(d + 2, v.word1, big);
    obident::Put16(d + 4, v.word2, big);
  }
  static void LoadOne(ObSeal& v, const uint8_t* s, bool big) {
    v.word0 = obident::Get16(s, big);
    v.word1 = obident::Get16(s + 2, big);
    v.word2 = obident::Get16(s + 4, big);
  }
  static int32_t CompareMemory(const ObSeal& a, const ObSeal& b) {
    return a != b;
  }
  // Bytes 0 to 5: the value.
  static int32_t CompareStored(const uint8_t* a, const uint8_t* b) {
    return obident::KeyByteDifference(Key(a), Key(b));
  }
  static uint64_t Key(const uint8_t* p) {
    return uint64_t{obident::Get16(p, true)} << 32 |
           uint64_t{obident::Get16(p + 2, true)} << 16 |
           obident::Get16(p + 4, true);
  }
  static uint32_t Fold(const ObSeal& v) {
    return uint32_t{v.word0} ^ v.word1 ^ v.word2;
  }
  static double Position(const ObSeal& v, bool) {
    int64_t value = 0;
    v.ConvertTo(value);
    return static_cast<double>(value);
  }
};
using Ops = obident::Ops<Traits>;

}  // namespace

ObString& ObSeal::PrintToObString(ObString& text, const char*) const {
  ObInt64 value;
  ConvertTo(value);
  return value.PrintToObString(text, kInt64Format);
}

void ObSeal::ScanFromObString(const ObString& text, const char*) {
  ObInt64 value;
  if (!text.IsEmpty()) value.ScanFromObString(text, kInt64Format);
  ConvertFrom(value);
}

OBIDENT_DEFINE_ROW_OPS(ObSeal, Ops)
