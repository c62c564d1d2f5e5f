// ObRef: a reference to a stored object: the object's identifier, an origin
// number and the class identifier of the referenced object.
#ifndef QUILLSTORE_OBREF_H_
#define QUILLSTORE_OBREF_H_

#include <cstdint>

#include "obclassid.h"
#include "obdefs.h"
#include "obobjid.h"

class MemFile;
class ObLocalRef;
class ObString;
struct ObIdxBounds;

class QS_TM_API ObRef {
 public:
  static constexpr uint16_t kNoOrigin = 0xFFFF;  // no valid origin number

  // DO NOT CHANGE the field order: arrays of stored objects use it. The
  // first three fields are an ObObjId, the last two an ObClassId.
  ObBlockId block;
  uint32_t low;
  uint16_t high;
  uint16_t origin;
  uint16_t classNumber;
  uint16_t version;

  ObRef() : block(0), low(0), high(0), origin(0), classNumber(0), version(0) {}

  ObRef& operator=(const ObObjId& id) {
    block = id.block;
    low = id.low;
    high = id.high;
    return *this;
  }
  ObRef& operator=(const ObClassId& id) {
    classNumber = id.classNumber;
    version = id.version;
    return *this;
  }
  ObRef& operator=(uint16_t originNumber) {
    origin = originNumber;
    return *this;
  }
  // Copies everything but the origin number, which becomes 0.
  ObRef& operator=(const ObLocalRef& ref);

  // Null: object number 0, whatever the other fields.
  int32_t IsNullValue() const { return low == 0 && high == 0; }
  int32_t SetNullValue() {
    block = low = 0;
    high = 0;
    return 0;
  }

  bool IsValid() const {
    return (low != 0 || high != 0) && classNumber != 0 && origin < kNoOrigin;
  }
  bool IsInvalid() const {
    return (low == 0 && high == 0) || classNumber == 0 || origin == kNoOrigin;
  }
  bool IsValidOriginId() const {
    return (low != 0 || high != 0) && (origin == kNoOrigin || classNumber != 0);
  }
  bool IsInvalidOriginId() const {
    return (low == 0 && high == 0) || (origin < kNoOrigin && classNumber == 0);
  }

  // Object number and origin number equal; block, class and version do not
  // take part.
  bool operator==(const ObRef& other) const {
    return low == other.low && high == other.high && origin == other.origin;
  }
  // An ordering: the difference of the high parts when they differ, else
  // -1/1 by the low parts, else -1/1 by the origin numbers, else 0.
  int32_t operator!=(const ObRef& other) const {
    if (high != other.high) return high - other.high;
    if (low != other.low) return low > other.low ? 1 : -1;
    return (origin > other.origin) - (origin < other.origin);
  }

  // Text form codes: %B block, %L low, %H high, %D origin number, %C class
  // number, %V version, %% '%'. The old positional %h and %l share one
  // counter: the 1st positional code is the origin number, the 2nd the high
  // part, the 3rd the low part, the 4th the block, the 5th the class number,
  // each only for its own letter (%h for 16-bit fields, %l for 32-bit
  // ones), else 0; they swallow the character after them. A null reference
  // prints the null print text. Appends to `text`; a null format means
  // "(%D:%H-%L#%B,%Cv%V)".
  ObString& PrintToObString(ObString& text, const char* format) const;
  // As ObObjId: the null print text gives a null reference, otherwise low
  // and high start at 0 and the codes read their fields.
  void ScanFromObString(const ObString& text, const char* format);

  // Row operations. Stored form, 14 bytes: block, low, high, origin number,
  // class number, most significant byte first in format 2 and least
  // significant first in every other stored format. The version is not
  // stored; Load sets it to 0.
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
  // Memory form (flags exactly 8): operator!= (origin number last). Stored
  // forms: the unsigned difference of the first differing byte of 11, 10,
  // 9, 8, 7, 6, 5, 4 (origin number first), whatever the format.
  static int32_t Compare(uint8_t flags, uint32_t len1, const void* p1,
                         uint32_t len2, const void* p2, uint16_t options,
                         uint32_t count, int32_t& status);
  // XOR of low, high and origin number.
  static uint32_t Hash(uint8_t format, uint32_t len, const void* value,
                       uint32_t count, int32_t& status);
  // `narrow` is the ObIdxBounds to narrow, or null.
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
static_assert(sizeof(ObRef) == 16, "ObRef is 16 bytes in memory");

#endif  // QUILLSTORE_OBREF_H_
