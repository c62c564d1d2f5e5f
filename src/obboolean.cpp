#include "obboolean.h"

#include <cstring>

#include "obkeyloop.h"

bool ObBoolean::operator==(const ObBoolean& b) const {
  if (IsNullValue() || b.IsNullValue()) return IsNullValue() && b.IsNullValue();
  return (value_ != 0) == (b.value_ != 0);
}

bool ObBoolean::operator>(const ObBoolean& b) const {
  if (IsNullValue()) return false;
  if (b.IsNullValue()) return true;
  return static_cast<int8_t>(value_) > static_cast<int8_t>(b.value_);
}

bool ObBoolean::operator<(const ObBoolean& b) const {
  if (IsNullValue()) return !b.IsNullValue();
  if (b.IsNullValue()) return false;
  return value_ == 0 && b.value_ != 0;
}

bool ObBoolean::operator==(int32_t x) const {
  if (IsNullValue()) return false;
  return (value_ != 0) == (x != 0);
}

bool ObBoolean::operator>(int32_t x) const {
  if (IsNullValue()) return false;
  return static_cast<int8_t>(value_) > (x != 0 ? 1 : 0);
}

bool ObBoolean::operator<(int32_t x) const {
  if (IsNullValue()) return true;
  return value_ == 0 && x != 0;
}

// Stored booleans are the byte itself in every format.
int32_t BooleanCompare(uint8_t, uint32_t len1, const void* p1, uint32_t len2,
                       const void* p2, uint16_t, uint32_t count,
                       int32_t& status) {
  return obkey::KeyLoop<1>(len1, p1, len2, p2, count, status,
                           [](const uint8_t* a, const uint8_t* b) {
                             ObBoolean x, y;
                             std::memcpy(&x, a, 1);
                             std::memcpy(&y, b, 1);
                             if (x.IsNullValue() || y.IsNullValue())
                               return obkey::Cmp3(!x.IsNullValue(),
                                                  !y.IsNullValue());
                             return x < y ? -1 : x > y ? 1 : 0;
                           });
}
