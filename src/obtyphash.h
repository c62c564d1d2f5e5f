// The frame of the per-type hash functions. Internal to the library.
#ifndef QUILLSTORE_SRC_OBTYPHASH_H_
#define QUILLSTORE_SRC_OBTYPHASH_H_

#include <cmath>
#include <cstdint>
#include <cstring>

#include "obdefs.h"
#include "obkeyloop.h"

namespace obhash {

// Every per-type hash multiplies its accumulated XOR by this once.
constexpr uint32_t kFinalMultiplier = 1103515245u;  // 0x41C64E6D

// XORs `fold` of up to `count` elements of width W into one term and
// returns it times kFinalMultiplier. A length of 0 means `count` elements.
// Each further element must start before the end; when it does not,
// `status` becomes ObCMP_OPERAND_EXHAUSTED. An element cut by the end is
// read zero-padded: nothing beyond `len` bytes is read.
template <uint32_t W, class Fold>
inline uint32_t HashLoop(uint32_t len, const void* value, uint32_t count,
                         int32_t& status, Fold fold) {
  status = 0;
  if (count == 0) return 0;
  const uint8_t* p = static_cast<const uint8_t*>(value);
  const uint64_t end = len != 0 ? len : uint64_t{count} * W;
  uint32_t acc = 0;
  for (uint64_t off = 0;; off += W) {
    if (end - off >= W) {
      acc ^= fold(p + off);
    } else {
      uint8_t cut[W] = {};
      std::memcpy(cut, p + off, static_cast<size_t>(end - off));
      acc ^= fold(cut);
    }
    if (--count == 0) break;
    if (off + W >= end) {
      status = ObCMP_OPERAND_EXHAUSTED;
      break;
    }
  }
  return acc * kFinalMultiplier;
}

constexpr uint32_t kStringStep = 9;  // h = h * 9 + term for texts
constexpr uint32_t kNullStringHash = 0xFEFE7575u;
// The term of a null value among nullable numbers.
constexpr uint32_t kNullTerm = 0x4E554C4Cu;

// Term of a floating value consistent with its key order: -0.0 and +0.0
// alike, every NaN alike.
inline uint32_t FloatingTerm(double v) {
  if (std::isnan(v)) return 0x7FF80000u;
  if (v == 0) return 0;
  uint64_t bits;
  std::memcpy(&bits, &v, 8);
  return static_cast<uint32_t>(bits) ^ static_cast<uint32_t>(bits >> 32);
}

}  // namespace obhash

#endif  // QUILLSTORE_SRC_OBTYPHASH_H_
