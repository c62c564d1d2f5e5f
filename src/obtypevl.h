// Key range evaluation shared by the per-type EvalAndBound members.
// Internal to the library.
#ifndef QUILLSTORE_SRC_OBTYPEVL_H_
#define QUILLSTORE_SRC_OBTYPEVL_H_

#include <cstdint>

#include "obidxbounds.h"

namespace obrange {

// How many keys of [lo, hi] satisfy "key op [vl, vh]", with `unit` the
// distance between neighbouring keys (1.0 for integers). Spans that are not
// finite count as the largest double.
double RangeCount(uint16_t op, double vl, double vh, double lo, double hi,
                  double unit);

// Gives `narrow` the value as its missing bounds: the lower key when the
// operator does not include "less", the upper key when it does not include
// "greater". `bytes` is the value's size.
void NarrowBounds(ObIdxBounds* narrow, uint16_t op, const void* value,
                  uint32_t bytes);

// The member of a type whose keys map onto doubles: `width` bytes per
// element in the form being evaluated, `read` maps one element to its
// position in key order. The current range is used when both its keys hold
// an element. Returns the fraction of that range satisfying the predicate
// (0 without a current range) after narrowing `narrow`.
template <class Read>
float EvalAndBoundNumeric(const ObIdxBounds* bounds, uint16_t op,
                          const void* value, uint32_t width, uint32_t count,
                          ObIdxBounds* narrow, Read read) {
  double lo = 0, hi = 0, n = 0;
  const uint8_t* v = static_cast<const uint8_t*>(value);
  if (bounds != nullptr && bounds->lower != nullptr &&
      bounds->upper != nullptr && bounds->lowerSize >= width &&
      bounds->upperSize >= width && value != nullptr) {
    lo = read(static_cast<const uint8_t*>(bounds->lower));
    hi = read(static_cast<const uint8_t*>(bounds->upper));
    const double x = read(v);
    n = RangeCount(op, x, x, lo, hi, 1.0);
  }
  if (value != nullptr) NarrowBounds(narrow, op, value, width * count);
  return static_cast<float>(n / (hi - lo + 1.0));
}

}  // namespace obrange

#endif  // QUILLSTORE_SRC_OBTYPEVL_H_
