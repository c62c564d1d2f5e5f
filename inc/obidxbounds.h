// ObIdxBounds: the bounds of an index key range, and the operator bits of
// the predicates that key range evaluation (EvalAndBound) is asked about.
#ifndef QUILLSTORE_OBIDXBOUNDS_H_
#define QUILLSTORE_OBIDXBOUNDS_H_

#include <cstdint>

#include "obdefs.h"

// Comparison operator bits of a predicate "key op value"; they combine
// (0x3 less or equal, 0x5 greater or equal, 0x6 not equal).
constexpr uint16_t kObOpEqual = 0x1;
constexpr uint16_t kObOpLess = 0x2;
constexpr uint16_t kObOpGreater = 0x4;

// The longest string index key in bytes.
constexpr int16_t ObINDEX_MAX_KEYLEN = 254;

// The lowest and highest key of a range (either may be absent), each in the
// form the evaluation was given (memory form or a stored format). The record
// owns its keys: they are heap blocks (malloc family) freed with the record.
struct QS_TM_API ObIdxBounds {
  void* lower = nullptr;
  void* upper = nullptr;
  uint8_t lowerSize = 0;  // bytes of *lower
  uint8_t upperSize = 0;  // bytes of *upper

  ObIdxBounds() = default;
  ObIdxBounds(const ObIdxBounds&) = delete;
  ObIdxBounds& operator=(const ObIdxBounds&) = delete;
  ~ObIdxBounds() { Clear(); }

  // Replace a key by a copy of the first min(size, 255) bytes of `key`
  // (a null `key` just frees it). Return 0, or -1 when no memory could be
  // obtained (the memory handler was called; the key is then absent).
  int32_t SetLower(const void* key, uint32_t size);
  int32_t SetUpper(const void* key, uint32_t size);
  // Frees both keys.
  void Clear();
};

#endif  // QUILLSTORE_OBIDXBOUNDS_H_
