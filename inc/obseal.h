// ObSeal: a 48-bit stamp held as three 16-bit words, most significant
// first; its value is word0 * 2^32 + word1 * 2^16 + word2.
#ifndef QUILLSTORE_OBSEAL_H_
#define QUILLSTORE_OBSEAL_H_

#include <cstdint>

#include "obdefs.h"
#include "obint64.h"
#include "obobjid.h"

class MemFile;
class ObString;
struct ObIdxBounds;

class QS_TM_API ObSeal {
 public:
  // DO NOT CHANGE the word order: arrays of stored objects use it.
  uint16_t word0;
  uint16_t word1;
  uint16_t word2;

  ObSeal() : word0(0), word1(0), word2(0) {}
  ObSeal(uint16_t w0, uint16_t w1, uint16_t w2)
      : word0(w0), word1(w1), word2(w2) {}

  // word0 from the high part, word1 and word2 from the low part.
  void ConvertFrom(const ObObjId& id) {
    word0 = id.high;
    word1 = static_cast<uint16_t>(id.low >> 16);
    word2 = static_cast<uint16_t>(id.low);
  }
  // word1 and word2 from the low half, word0 from the high half cut to 16
  // bits.
  void ConvertFrom(const ObInt64& v) {
    word0 = static_cast<uint16_t>(static_cast<uint32_t>(v.high));
    word1 = static_cast<uint16_t>(v.low >> 16);
    word2 = static_cast<uint16_t>(v.low);
  }
  // Bits 0 to 47.
  void ConvertFrom(const int64_t& v) {
    const uint64_t u = static_cast<uint64_t>(v);
    word0 = static_cast<uint16_t>(u >> 32);
    word1 = static_cast<uint16_t>(u >> 16);
    word2 = static_cast<uint16_t>(u);
  }
  void ConvertTo(int64_t& v) const {
    v = static_cast<int64_t>(uint64_t{word0} << 32 | uint64_t{word1} << 16 |
                             word2);
  }
  void ConvertTo(ObInt64& v) const {
    v = ObInt64(uint32_t{word1} << 16 | word2, int32_t{word0});
  }

  bool operator==(const ObSeal& other) const {
    return word0 == other.word0 && word1 == other.word1 && word2 == other.word2;
  }
  // An ordering: the difference of the first differing word (of word2 when
  // word0 and word1 are equal).
  int32_t operator!=(const ObSeal& other) const {
    if (word0 != other.word0) return word0 - other.word0;
    if (word1 != other.word1) return word1 - other.word1;
    return word2 - other.word2;
  }

  // The value printed as an ObInt64 with "%S"; the format is ignored.
  // Appends to `text`.
  ObString& PrintToObString(ObString& text, const char* format) const;
  // The seal becomes 0, then a non-empty text is read as an ObInt64 with
  // "%S" (its low half gives word1 and word2, its high half word0). The
  // format is ignored.
  void ScanFromObString(const ObString& text, const char* format);

  // Row operations. Stored form, 6 bytes: the three words most significant
  // byte first in every stored format. Keys order by value in both forms.
  static void* Create(uint32_t count);
  static void* Delete(void* values, uint32_t count);
  static uint32_t Store(void* dest, const void* src, uint8_t format,
                        uint32_t count);
  static uint32_t Load(void* dest, const void* src, uint8_t format,
                       uint32_t count);
  static uint32_t SizeGet(const void* value, uint8_t format, uint8_t format2,
                          uint32_t count);
  static uint32_t SizeGetFromMemFile(MemFile* file, uint8_t format,
                                     uint32_t count);
  static uint32_t NullSizeGet(uint32_t count);
  static int32_t Compare(uint8_t flags, uint32_t len1, const void* p1,
                         uint32_t len2, const void* p2, uint16_t options,
                         uint32_t count, int32_t& status);
  // XOR of the three words.
  static uint32_t Hash(uint8_t format, uint32_t len, const void* value,
                       uint32_t count, int32_t& status);
  static float EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                            uint8_t flags, uint32_t count, void* narrow);
  static uint32_t Translate(void* dest, uint8_t destFormat, uint32_t destLen,
                            const void* src, uint8_t srcFormat, uint32_t srcLen,
                            uint32_t count);
  static ObString& PrintToString(ObString& out, const void* values,
                                 const char* format, uint32_t count);
  static void* ScanFromString(void* values, ObString& text, const char* format,
                              uint32_t count);
};
static_assert(sizeof(ObSeal) == 6, "ObSeal is 6 bytes in memory");

#endif  // QUILLSTORE_OBSEAL_H_
