// ObClassId: the identifier of a class and its version. Both halves 0xFFFF
// is the null class identifier, which orders before every other.
#ifndef QUILLSTORE_OBCLASSID_H_
#define QUILLSTORE_OBCLASSID_H_

#include <cstdint>

#include "obdefs.h"

class MemFile;
class ObString;
struct ObIdxBounds;

class QS_TM_API ObClassId {
 public:
  // DO NOT CHANGE the field order: arrays of stored objects use it.
  uint16_t classNumber;
  uint16_t version;

  ObClassId() : classNumber(0), version(0) {}
  ObClassId(uint16_t classNo, uint16_t versionNo)
      : classNumber(classNo), version(versionNo) {}

  int32_t IsNullValue() const {
    return classNumber == 0xFFFF && version == 0xFFFF;
  }
  int32_t SetNullValue() {
    classNumber = version = 0xFFFF;
    return 0;
  }

  // An ordering: null first, then by class number, then by version; the
  // difference of the first differing half, or -1/1 when one side is null.
  int32_t operator!=(const ObClassId& other) const {
    if (IsNullValue() || other.IsNullValue())
      return other.IsNullValue() - IsNullValue();
    if (classNumber != other.classNumber)
      return classNumber - other.classNumber;
    return version - other.version;
  }
  bool operator==(const ObClassId& other) const {
    return (*this != other) == 0;
  }
  bool operator>(const ObClassId& other) const { return (*this != other) > 0; }

  // Text form codes: %C class number, %V version, %% '%'; the old
  // positional %h (class number, then version, then 0) swallows the
  // character after it; '%' and any other character prints that character.
  // A null identifier prints the null print text. Appends to `text`; a null
  // format means "(%Cv%V)".
  ObString& PrintToObString(ObString& text, const char* format) const;
  // A text beginning with the null print text gives the null identifier;
  // otherwise the codes read their fields and the others keep their values.
  void ScanFromObString(const ObString& text, const char* format);

  // Row operations. Stored form, 4 bytes: class number and version, most
  // significant byte first in format 2 and least significant first in every
  // other stored format.
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
  // Memory form (flags exactly 8): operator!=. Stored forms: null first,
  // then the unsigned difference of the first differing byte of 1, 0, 3, 2,
  // in that order whatever the format.
  static int32_t Compare(uint8_t flags, uint32_t len1, const void* p1,
                         uint32_t len2, const void* p2, uint16_t options,
                         uint32_t count, int32_t& status);
  // XOR of class number and version.
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
static_assert(sizeof(ObClassId) == 4, "ObClassId is 4 bytes in memory");

#endif  // QUILLSTORE_OBCLASSID_H_
