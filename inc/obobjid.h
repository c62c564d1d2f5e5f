// ObObjId: the identifier of a stored object, a 48-bit object number
// (high, low) and the block that holds the object. Block identifiers are
// plain unsigned 32-bit numbers (the BlockId type of the catalogue).
#ifndef QUILLSTORE_OBOBJID_H_
#define QUILLSTORE_OBOBJID_H_

#include <cstdint>

#include "obdefs.h"

class MemFile;
class ObString;
struct ObIdxBounds;

typedef uint32_t ObBlockId;

class QS_TM_API ObObjId {
 public:
  // DO NOT CHANGE the field order: arrays of stored objects use it.
  ObBlockId block;
  uint32_t low;   // low part of the object number
  uint16_t high;  // high part of the object number

  ObObjId() : block(0), low(0), high(0) {}
  ObObjId(ObBlockId blockId, uint32_t lowPart, uint16_t highPart)
      : block(blockId), low(lowPart), high(highPart) {}

  // Null: object number 0, whatever the block.
  int32_t IsNullValue() const { return low == 0 && high == 0; }
  int32_t SetNullValue() {
    block = low = 0;
    high = 0;
    return 0;
  }
  // Object number 0xFFFF:0xFFFFFFFF in block 0.
  void SetHighestValue() {
    block = 0;
    low = 0xFFFFFFFF;
    high = 0xFFFF;
  }

  // The object number steps with a carry into (borrow from) the high part;
  // past the highest number it wraps to 0.
  ObObjId& operator++() {
    if (++low == 0) ++high;
    return *this;
  }
  ObObjId& operator--() {
    if (low-- == 0) --high;
    return *this;
  }
  ObObjId& operator+=(int16_t n) {
    const uint32_t before = low;
    low += static_cast<uint32_t>(static_cast<int32_t>(n));
    if (n > 0 && low < before) ++high;
    if (n < 0 && low > before) --high;
    return *this;
  }

  // Object numbers equal; the block does not take part.
  bool operator==(const ObObjId& other) const {
    return low == other.low && high == other.high;
  }
  // An ordering as well as inequality: the difference of the high parts
  // when they differ, else -1, 0 or 1 by the low parts.
  int32_t operator!=(const ObObjId& other) const {
    if (high != other.high) return high - other.high;
    return (low > other.low) - (low < other.low);
  }

  // Text form codes: %H high, %L low, %B block, %% '%'; the old positional
  // %h (high, then 0) and %l (low, block, then 0) swallow the character
  // after them; '%' and any other character prints that character. A null
  // identifier prints the null print text. Appends to `text`; a null format
  // means "(%H-%L#%B)".
  ObString& PrintToObString(ObString& text, const char* format) const;
  // A text beginning with the null print text gives the null identifier.
  // Otherwise low and high start at 0 and the codes read their fields.
  void ScanFromObString(const ObString& text, const char* format);

  // Row operations. Stored form, 10 bytes: block, low, high, each most
  // significant byte first in format 2 and least significant first in every
  // other stored format. Keys order by the object number.
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
  // Memory form (flags exactly 8): operator!=. Stored forms: the unsigned
  // difference of the first differing byte of 9, 8, 7, 6, 5, 4, in that
  // order whatever the format.
  static int32_t Compare(uint8_t flags, uint32_t len1, const void* p1,
                         uint32_t len2, const void* p2, uint16_t options,
                         uint32_t count, int32_t& status);
  // XOR of low and high, so that equal identifiers hash alike.
  static uint32_t Hash(uint8_t format, uint32_t len, const void* value,
                       uint32_t count, int32_t& status);
  // `narrow` is the ObIdxBounds to narrow, or null.
  static float EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                            uint8_t flags, uint32_t count, void* narrow);
  static uint32_t Translate(void* dest, uint8_t destFormat, uint32_t destLen,
                            const void* src, uint8_t srcFormat, uint32_t srcLen,
                            uint32_t count);
  // Replaces `out` with the text of the first value.
  static ObString& PrintToString(ObString& out, const void* values,
                                 const char* format, uint32_t count);
  // Scans the first value; null when `values` is null.
  static void* ScanFromString(void* values, ObString& text, const char* format,
                              uint32_t count);
};
static_assert(sizeof(ObObjId) == 12, "ObObjId is 12 bytes in memory");

#endif  // QUILLSTORE_OBOBJID_H_
