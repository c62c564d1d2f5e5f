// The element loop that every key comparator follows, and the element
// readers of the fixed-width types. Internal to the library.
#ifndef QUILLSTORE_SRC_OBKEYLOOP_H_
#define QUILLSTORE_SRC_OBKEYLOOP_H_

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "obbs.h"
#include "obdefs.h"

namespace obkey {

template <class T>
inline int32_t Cmp3(T a, T b) {
  return (a > b) - (a < b);
}

// Index of the first byte in [from, n) where a and b differ, or n. Uses the
// widest vector compare the processor offers.
size_t FirstDifference(const uint8_t* a, const uint8_t* b, size_t from,
                       size_t n);

// Below this many bytes decoding element by element beats the vector scan.
constexpr size_t kScanThreshold = 64;

// Compares up to `count` elements of width W and returns the result of the
// first pair that differs (a difference ends the comparison at once). Each
// further element must start strictly before the end of both operands;
// when it does not, `status` becomes ObCMP_OPERAND_EXHAUSTED and the result
// is 0. A length of 0 means `count` elements.
//
// `cmp` must find byte-identical elements equal: runs of identical bytes
// are skipped without decoding, which is what keeps long keys near memcmp
// speed. An element cut by its operand's end is read zero-padded, so
// nothing beyond the given lengths is ever read.
template <uint32_t W, class ElemCmp>
inline int32_t KeyLoop(uint32_t len1, const void* p1, uint32_t len2,
                       const void* p2, uint32_t count, int32_t& status,
                       ElemCmp cmp) {
  status = 0;
  if (count == 0) return 0;
  const uint8_t* a = static_cast<const uint8_t*>(p1);
  const uint8_t* b = static_cast<const uint8_t*>(p2);
  const uint64_t end1 = len1 != 0 ? len1 : uint64_t{count} * W;
  const uint64_t end2 = len2 != 0 ? len2 : uint64_t{count} * W;
  // Elements lying wholly inside both operands.
  uint64_t whole = end1 < end2 ? end1 / W : end2 / W;
  if (whole > count) whole = count;
  const size_t n = static_cast<size_t>(whole) * W;
  if (n < kScanThreshold) {
    for (size_t off = 0; off < n; off += W) {
      if (int32_t r = cmp(a + off, b + off)) return r;
    }
  } else {
    size_t pos = 0;
    while ((pos = FirstDifference(a, b, pos, n)) < n) {
      const size_t off = pos - pos % W;
      if (int32_t r = cmp(a + off, b + off)) return r;
      pos = off + W;
    }
  }
  if (whole == count) return 0;
  // The next element is compared when it starts inside both operands; it is
  // then cut in at least one of them, which therefore ends after it.
  const uint64_t off = n;
  if (off < end1 && off < end2) {
    uint8_t t1[W] = {}, t2[W] = {};
    std::memcpy(t1, a + off, end1 - off < W ? end1 - off : W);
    std::memcpy(t2, b + off, end2 - off < W ? end2 - off : W);
    int32_t r = cmp(t1, t2);
    if (r != 0 || whole + 1 == count) return r;
  }
  status = ObCMP_OPERAND_EXHAUSTED;
  return 0;
}

template <class T>
inline T ReadNative(const uint8_t* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

// Most significant byte first: the same conversion as the base-services
// format-2 routines, inlined because it runs for every key visited.
template <class U>
inline U ReadBigUnsigned(const uint8_t* p) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  U v;
  std::memcpy(&v, p, sizeof v);
  if constexpr (sizeof(U) == 2) return __builtin_bswap16(v);
  if constexpr (sizeof(U) == 4) return __builtin_bswap32(v);
  if constexpr (sizeof(U) == 8) return __builtin_bswap64(v);
#else
  U v = 0;
  for (size_t i = 0; i < sizeof(U); ++i) v = static_cast<U>((v << 8) | p[i]);
  return v;
#endif
}

template <class T, class U = typename std::make_unsigned<T>::type>
inline T ReadBig(const uint8_t* p) {
  U u = ReadBigUnsigned<U>(p);
  T v;
  std::memcpy(&v, &u, sizeof v);
  return v;
}

// A stored element of any other format, through the base-services
// single-element routine `conv`.
template <class T>
inline T ReadConverted(const uint8_t* p, uint8_t format,
                       uint32_t (*conv)(void*, const void*, uint8_t)) {
  T v;
  conv(&v, p, format);
  return v;
}

inline bool IsNativeFormat(uint8_t fmt) {
  return fmt == kObFormatMemory || fmt == kObFormatLittle;
}

// Total order over floating values: NaN < -inf < finite < +inf, -0.0 equal
// to +0.0 and every NaN equal to every other. Native comparison already
// orders infinities and finite values; only NaNs need their rank.
template <class F>
inline int32_t CompareFloating(F x, F y) {
  if (x < y) return -1;
  if (x > y) return 1;
  if (x == y) return 0;
  return Cmp3(!std::isnan(x), !std::isnan(y));
}

}  // namespace obkey

#endif  // QUILLSTORE_SRC_OBKEYLOOP_H_
