// Key comparators: one free function per type with one common signature.
//
// A comparator compares `count` elements of two operands, both in memory form
// (format code 8) or both in the stored form of the format code (low four
// bits of `flags`), and reports the ordering of the first pair that differs:
//   < 0 iff operand 1 orders before operand 2, 0 when equal, > 0 after.
// Callers test only the sign. `len1`/`len2` are the operands' byte lengths;
// 0 means exactly `count` elements. `status` is set to 0, or to
// ObCMP_OPERAND_EXHAUSTED when an operand ends before `count` elements were
// compared (the result is then 0: the compared prefix was equal).
// Comparators never allocate and may be called from any thread.
#ifndef QUILLSTORE_OBKEYCMP_H_
#define QUILLSTORE_OBKEYCMP_H_

#include <cstdint>

#include "obdefs.h"

typedef int32_t (*ObKeyCompareFn)(uint8_t flags, uint32_t len1, const void* p1,
                                  uint32_t len2, const void* p2,
                                  uint16_t options, uint32_t count,
                                  int32_t& status);

#define QS_DECLARE_KEY_COMPARE(name)                                      \
  QS_TM_API int32_t name(uint8_t flags, uint32_t len1, const void* p1,    \
                         uint32_t len2, const void* p2, uint16_t options, \
                         uint32_t count, int32_t& status)

// Fixed-width comparators. The 16-bit ones read format 2 most significant
// byte first and every other stored format least significant first; float
// and double order NaN < -inf < finite < +inf, with -0.0 == +0.0 and all
// NaNs equal, so that keys always compare consistently.
QS_DECLARE_KEY_COMPARE(CharCompare);      // signed 8-bit
QS_DECLARE_KEY_COMPARE(ByteCompare);      // unsigned 8-bit
QS_DECLARE_KEY_COMPARE(ShortCompare);     // signed 16-bit
QS_DECLARE_KEY_COMPARE(WordCompare);      // unsigned 16-bit
QS_DECLARE_KEY_COMPARE(IntCompare);       // signed int
QS_DECLARE_KEY_COMPARE(UnsignedCompare);  // unsigned int
QS_DECLARE_KEY_COMPARE(LongCompare);      // signed 32-bit
QS_DECLARE_KEY_COMPARE(DwordCompare);     // unsigned 32-bit
QS_DECLARE_KEY_COMPARE(O_8BCompare);      // signed 64-bit
QS_DECLARE_KEY_COMPARE(O_U8BCompare);     // unsigned 64-bit
QS_DECLARE_KEY_COMPARE(FloatCompare);     // IEEE single
QS_DECLARE_KEY_COMPARE(DoubleCompare);    // IEEE double

#endif  // QUILLSTORE_OBKEYCMP_H_
