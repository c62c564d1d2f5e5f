// The element loop that every key comparator follows, and the element
// readers of the fixed-width types. Internal to the library.
#ifndef QUILLSTORE_SRC_OBKEYLOOP_H_
#define QUILLSTORE_SRC_OBKEYLOOP_H_

#include <cmath>
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

// Compares up to `count` elements of width W and returns the result of the
// first pair that differs. Before advancing, the next element of each
// operand must start strictly before its end; when it does not, `status`
// becomes ObCMP_OPERAND_EXHAUSTED. A length of 0 means `count` elements.
// An element cut by its operand's end is read zero-padded, so nothing beyond
// the given lengths is ever read.
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
  uint64_t off1 = 0, off2 = 0;
  for (;;) {
    int32_t r;
    if (off1 + W <= end1 && off2 + W <= end2) {
      r = cmp(a + off1, b + off2);
    } else {
      uint8_t t1[W] = {}, t2[W] = {};
      std::memcpy(t1, a + off1, off1 + W <= end1 ? W : end1 - off1);
      std::memcpy(t2, b + off2, off2 + W <= end2 ? W : end2 - off2);
      r = cmp(t1, t2);
    }
    // A difference ends the loop before an advance is attempted.
    if (r != 0 || --count == 0) return r;
    if (off1 + W >= end1 || off2 + W >= end2) {
      status = ObCMP_OPERAND_EXHAUSTED;
      return r;
    }
    off1 += W;
    off2 += W;
  }
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
  U v = 0;
  for (size_t i = 0; i < sizeof(U); ++i) v = static_cast<U>((v << 8) | p[i]);
  return v;
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

// Float class rank: NaN -2, -inf -1, finite 0, +inf +1.
inline int32_t FloatRank(double v) {
  if (std::isnan(v)) return -2;
  if (std::isinf(v)) return v < 0 ? -1 : 1;
  return 0;
}

// Total order over doubles: NaN < -inf < finite < +inf, -0.0 == +0.0.
inline int32_t CompareFloating(double x, double y) {
  int32_t rx = FloatRank(x), ry = FloatRank(y);
  if (rx == 0 && ry == 0) return (x > y) - (x < y);
  return Cmp3(rx, ry);
}

}  // namespace obkey

#endif  // QUILLSTORE_SRC_OBKEYLOOP_H_
