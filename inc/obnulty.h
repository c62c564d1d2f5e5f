// Nullable basic types: a value followed by a one-byte null indicator, the
// whole padded to the alignment of the value.
#ifndef QUILLSTORE_OBNULTY_H_
#define QUILLSTORE_OBNULTY_H_

#include <cstdint>

template <class T>
struct ObNullable {
  T value;
  int8_t isNull;  // 1 when null
};

using ObNull_char = ObNullable<int8_t>;
using ObNull_uchar = ObNullable<uint8_t>;
using ObNull_short = ObNullable<int16_t>;
using ObNull_ushort = ObNullable<uint16_t>;
using ObNull_int = ObNullable<int32_t>;
using ObNull_unsigned = ObNullable<uint32_t>;
using ObNull_long = ObNullable<int32_t>;
using ObNull_ulong = ObNullable<uint32_t>;
using ObNull_float = ObNullable<float>;
using ObNull_double = ObNullable<double>;
using ObNull_8b = ObNullable<int64_t>;
using ObNull_u8b = ObNullable<uint64_t>;

// DO NOT CHANGE: array strides of stored objects depend on these sizes.
static_assert(sizeof(ObNull_char) == 2 && sizeof(ObNull_uchar) == 2, "");
static_assert(sizeof(ObNull_short) == 4 && sizeof(ObNull_ushort) == 4, "");
static_assert(sizeof(ObNull_int) == 8 && sizeof(ObNull_ulong) == 8, "");
static_assert(sizeof(ObNull_float) == 8, "");
static_assert(sizeof(ObNull_double) == 16 && sizeof(ObNull_8b) == 16, "");
static_assert(sizeof(ObNull_u8b) == 16, "");

#endif  // QUILLSTORE_OBNULTY_H_
