// Per-type hashes of the basic rows. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_HASHROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_HASHROWS_H_

#include <type_traits>

#include "obbs.h"
#include "obnulty.h"
#include "obtyphash.h"

namespace obrow {

// The element of a fixed-width number in memory form (formats 8 and 1 read
// natively; others converted as the comparators convert them).
template <class T>
inline T ReadNumber(const uint8_t* p, uint8_t format) {
  if (obkey::IsNativeFormat(format)) return obkey::ReadNative<T>(p);
  T v;
  if constexpr (sizeof(T) == 1) {
    std::memcpy(&v, p, 1);
  } else if constexpr (std::is_same<T, float>::value) {
    FloatStore(&v, p, format, 1);
  } else if constexpr (std::is_same<T, double>::value) {
    DoubleStore(&v, p, format, 1);
  } else if constexpr (sizeof(T) == 2) {
    ShortStoreOne(&v, p, format);
  } else if constexpr (sizeof(T) == 4) {
    LongStoreOne(&v, p, format);
  } else {
    O_8BStoreOne(&v, p, format);
  }
  return v;
}

// The 32-bit term of a number: sign- or zero-extended, 64-bit values as
// the XOR of their halves.
template <class T>
inline uint32_t NumberTerm(T v) {
  if constexpr (std::is_floating_point<T>::value) {
    return obhash::FloatingTerm(v);
  } else if constexpr (sizeof(T) == 8) {
    const uint64_t u = static_cast<uint64_t>(v);
    return static_cast<uint32_t>(u) ^ static_cast<uint32_t>(u >> 32);
  } else {
    return static_cast<uint32_t>(static_cast<int64_t>(v));
  }
}

template <class T>
uint32_t NumberHash(uint8_t flags, uint32_t len, const void* value,
                    uint32_t count, int32_t& status) {
  const uint8_t format = flags & kObFormatMask;
  return obhash::HashLoop<sizeof(T)>(
      len, value, count, status, [format](const uint8_t* p) {
        return NumberTerm(ReadNumber<T>(p, format));
      });
}

// Nullable numbers: the stored form is the value and an indicator byte.
template <class T>
uint32_t NullableHash(uint8_t flags, uint32_t len, const void* value,
                      uint32_t count, int32_t& status) {
  const uint8_t format = flags & kObFormatMask;
  auto term = [](bool isNull, T v) {
    return isNull ? obhash::kNullTerm : NumberTerm(v);
  };
  if (format == kObFormatMemory) {
    return obhash::HashLoop<sizeof(ObNullable<T>)>(
        len, value, count, status, [term](const uint8_t* p) {
          const auto v = obkey::ReadNative<ObNullable<T>>(p);
          return term(v.isNull != 0, v.value);
        });
  }
  return obhash::HashLoop<sizeof(T) + 1>(
      len, value, count, status, [format, term](const uint8_t* p) {
        return term(p[sizeof(T)] != 0, ReadNumber<T>(p, format));
      });
}

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_HASHROWS_H_
