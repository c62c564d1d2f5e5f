// Fixed-width stored forms. Index key comparison calls these per column, so
// everything below is a small inline template over the element width: no
// heap, no host byte-order tests, and every element goes through a local
// copy so that unaligned and in-place buffers need no special handling.
#include <cstring>

#include "obbs.h"

namespace {

constexpr uint8_t kFormatMask = 0x0F;
constexpr uint8_t kMemoryForm = 8;
constexpr uint8_t kMsbFirst = 2;

// Writes v with shifts rather than by reinterpreting memory, so the stored
// bytes are the same on every host.
template <typename U, bool kMsb>
inline void PutOrdered(uint8_t* out, U v) {
  constexpr unsigned kWidth = sizeof(U);
  uint8_t bytes[kWidth];
  for (unsigned k = 0; k < kWidth; ++k) {
    const unsigned shift = 8 * (kMsb ? kWidth - 1 - k : k);
    bytes[k] = static_cast<uint8_t>(v >> shift);
  }
  std::memcpy(out, bytes, kWidth);
}

template <typename U, bool kMsb>
inline void ReorderAll(uint8_t* d, const uint8_t* s, uint32_t count) {
  for (uint32_t i = 0; i < count; ++i) {
    U v;
    std::memcpy(&v, s + static_cast<size_t>(i) * sizeof(U), sizeof(U));
    PutOrdered<U, kMsb>(d + static_cast<size_t>(i) * sizeof(U), v);
  }
}

// Memory form -> stored form. Either order is its own inverse (identity or
// full reversal of each element), so the same call also loads.
template <typename U>
inline uint32_t Reorder(void* dest, const void* src, uint8_t format,
                        uint32_t count) {
  auto* d = static_cast<uint8_t*>(dest);
  auto* s = static_cast<const uint8_t*>(src);
  const uint8_t code = format & kFormatMask;
  if (sizeof(U) == 1 || code == kMemoryForm) {
    // memmove: a caller breaking the no-overlap rule gets garbage, not UB.
    if (d != s && count != 0)
      std::memmove(d, s, static_cast<size_t>(count) * sizeof(U));
  } else if (code == kMsbFirst) {
    ReorderAll<U, true>(d, s, count);
  } else {
    ReorderAll<U, false>(d, s, count);
  }
  return static_cast<uint32_t>(sizeof(U)) * count;
}

template <typename U>
inline uint32_t Size(uint32_t count) {
  return static_cast<uint32_t>(sizeof(U)) * count;
}

static_assert(sizeof(float) == 4 && sizeof(double) == 8,
              "stored floats are IEEE single and double");

}  // namespace

extern "C" {

uint32_t CharStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  return Reorder<uint8_t>(dest, src, format, count);
}
uint32_t ShortStore(void* dest, const void* src, uint8_t format,
                    uint32_t count) {
  return Reorder<uint16_t>(dest, src, format, count);
}
uint32_t IntStore(void* dest, const void* src, uint8_t format, uint32_t count) {
  return Reorder<uint32_t>(dest, src, format, count);
}
uint32_t IntLoad(void* dest, const void* src, uint8_t format, uint32_t count) {
  return Reorder<uint32_t>(dest, src, format, count);
}
uint32_t UnsignedStore(void* dest, const void* src, uint8_t format,
                       uint32_t count) {
  return Reorder<uint32_t>(dest, src, format, count);
}
uint32_t UnsignedLoad(void* dest, const void* src, uint8_t format,
                      uint32_t count) {
  return Reorder<uint32_t>(dest, src, format, count);
}
uint32_t LongStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  return Reorder<uint32_t>(dest, src, format, count);
}
uint32_t O_8BStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  return Reorder<uint64_t>(dest, src, format, count);
}
uint32_t FloatStore(void* dest, const void* src, uint8_t format,
                    uint32_t count) {
  return Reorder<uint32_t>(dest, src, format, count);
}
uint32_t DoubleStore(void* dest, const void* src, uint8_t format,
                     uint32_t count) {
  return Reorder<uint64_t>(dest, src, format, count);
}

uint32_t ShortStoreOne(void* dest, const void* src, uint8_t format) {
  return Reorder<uint16_t>(dest, src, format, 1);
}
uint32_t LongStoreOne(void* dest, const void* src, uint8_t format) {
  return Reorder<uint32_t>(dest, src, format, 1);
}
uint32_t O_8BStoreOne(void* dest, const void* src, uint8_t format) {
  return Reorder<uint64_t>(dest, src, format, 1);
}

// Fixed widths: the size never depends on the value or the formats.
uint32_t CharSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint8_t>(count);
}
uint32_t ShortSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint16_t>(count);
}
uint32_t IntSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint32_t>(count);
}
uint32_t LongSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint32_t>(count);
}
uint32_t O_8BSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint64_t>(count);
}
uint32_t FloatSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint32_t>(count);
}
uint32_t DoubleSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return Size<uint64_t>(count);
}

uint32_t CharNullSizeGet(uint32_t count) { return Size<uint8_t>(count); }
uint32_t ShortNullSizeGet(uint32_t count) { return Size<uint16_t>(count); }
uint32_t IntNullSizeGet(uint32_t count) { return Size<uint32_t>(count); }
uint32_t LongNullSizeGet(uint32_t count) { return Size<uint32_t>(count); }
uint32_t O_8BNullSizeGet(uint32_t count) { return Size<uint64_t>(count); }
uint32_t FloatNullSizeGet(uint32_t count) { return Size<uint32_t>(count); }
uint32_t DoubleNullSizeGet(uint32_t count) { return Size<uint64_t>(count); }

}  // extern "C"
