#include "obtypevl.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "obbs.h"

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// A heap copy of at most 255 bytes of `key`; null when the memory handler
// gives up.
void* CopyKey(const void* key, uint32_t size, uint8_t& copied) {
  const uint32_t n = size < 255 ? size : 255;
  const size_t bytes = n != 0 ? n : 1;
  void* p = ObAllocate(bytes, 0);
  if (p == nullptr) return nullptr;
  if (n != 0) std::memcpy(p, key, n);
  copied = static_cast<uint8_t>(n);
  return p;
}

int32_t SetKey(void*& slot, uint8_t& size, const void* key, uint32_t n) {
  std::free(slot);
  slot = nullptr;
  size = 0;
  if (key == nullptr) return 0;
  slot = CopyKey(key, n, size);
  return slot != nullptr ? 0 : -1;
}

}  // namespace

int32_t ObIdxBounds::SetLower(const void* key, uint32_t size) {
  return SetKey(lower, lowerSize, key, size);
}

int32_t ObIdxBounds::SetUpper(const void* key, uint32_t size) {
  return SetKey(upper, upperSize, key, size);
}

void ObIdxBounds::Clear() {
  SetLower(nullptr, 0);
  SetUpper(nullptr, 0);
}

namespace obrange {

double RangeCount(uint16_t op, double vl, double vh, double lo, double hi,
                  double unit) {
  double count = 0;
  if ((op & kObOpGreater) != 0) {
    const double d = hi - (lo > vh ? lo - unit : vh);
    if (!std::isfinite(d)) {
      count = kLargest;
    } else if (d > 0) {
      count = d;
    }
  }
  if ((op & kObOpLess) != 0) {
    const double d = (vl > hi ? hi + unit : vl) - lo;
    if (!std::isfinite(d)) {
      count += kLargest;
    } else if (d > 0) {
      count += d;
    }
  }
  if ((op & kObOpEqual) != 0) {
    double d = (vh < hi ? vh : hi) - (vl > lo ? vl : lo);
    if (!std::isfinite(d)) d = kLargest;
    d += unit;
    if (d > 0) count += d;
  }
  return count;
}

void NarrowBounds(ObIdxBounds* narrow, uint16_t op, const void* value,
                  uint32_t bytes) {
  if (narrow == nullptr) return;
  if (narrow->lower == nullptr && (op & kObOpLess) == 0)
    narrow->SetLower(value, bytes);
  if (narrow->upper == nullptr && (op & kObOpGreater) == 0)
    narrow->SetUpper(value, bytes);
}

}  // namespace obrange
