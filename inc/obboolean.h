// ObBoolean: false, true or null in one byte (0, 1, 255). Null sorts below
// every value among booleans, and below every integer.
#ifndef QUILLSTORE_OBBOOLEAN_H_
#define QUILLSTORE_OBBOOLEAN_H_

#include <cstdint>

#include "obdefs.h"
#include "obkeycmp.h"

class QS_TM_API ObBoolean {
 public:
  static constexpr uint8_t kNull = 255;

  ObBoolean() : value_(0) {}
  ObBoolean(int32_t v) : value_(v != 0 ? 1 : 0) {}  // NOLINT
  ObBoolean& operator=(int32_t v) {
    value_ = v != 0 ? 1 : 0;
    return *this;
  }

  uint8_t GetValue() const { return value_; }
  int32_t SetNullValue() {
    value_ = kNull;
    return 0;
  }
  bool IsNullValue() const { return value_ == kNull; }

  bool operator==(const ObBoolean& b) const;
  bool operator!=(const ObBoolean& b) const { return !(*this == b); }
  bool operator<(const ObBoolean& b) const;
  bool operator>(const ObBoolean& b) const;
  bool operator==(int32_t x) const;
  bool operator!=(int32_t x) const { return !(*this == x); }
  bool operator<(int32_t x) const;
  bool operator>(int32_t x) const;

 private:
  uint8_t value_;
};
static_assert(sizeof(ObBoolean) == 1, "ObBoolean is one byte");

// Null first, then false before true.
QS_DECLARE_KEY_COMPARE(BooleanCompare);

#endif  // QUILLSTORE_OBBOOLEAN_H_
