// The 32-bit comparison weight of a collation order. Internal.
#ifndef QUILLSTORE_SRC_OBWEIGHT_H_
#define QUILLSTORE_SRC_OBWEIGHT_H_

#include <cstdint>

// Collation identifier on top; for letters the variant bits (accent kind,
// case) move to the low 7 bits so that masks select the comparison levels.
// Text comparison and text hashing must agree on it.
inline uint32_t ObCollationWeight(uint16_t order, uint8_t collationId) {
  if (order == 0) return 0;
  uint32_t low;
  if (order < 32768 && (order & 0x4000) != 0 && collationId != 20) {
    low = (uint32_t{order & 0x407Fu} << 8) | ((order >> 7) & 0x7Fu);
  } else {
    low = uint32_t{order} << 8;
  }
  return uint32_t{collationId} << 24 | low;
}

#endif  // QUILLSTORE_SRC_OBWEIGHT_H_
