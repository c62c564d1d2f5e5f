// d_Interval: a signed length of time in seconds, held in single precision.
// Its memory and stored forms and its key order are those of a 4-byte float.
#ifndef QUILLSTORE_D_INTERVAL_H_
#define QUILLSTORE_D_INTERVAL_H_

#include <cstdint>

#include "obdefs.h"

class QS_TM_API d_Interval {
 public:
  // The magnitudes are summed (minutes, seconds, hours, days, in single
  // precision); any negative argument makes the whole interval negative.
  d_Interval(int32_t days = 0, int32_t hours = 0, int32_t minutes = 0,
             float seconds = 0);
  static d_Interval FromSeconds(float s) {
    d_Interval i;
    i.value_ = s;
    return i;
  }

  float value() const { return value_; }  // seconds
  int is_zero() const { return value_ == 0; }

  d_Interval operator-() const { return FromSeconds(-value_); }
  d_Interval& operator+=(const d_Interval& o) {
    value_ += o.value_;
    return *this;
  }
  d_Interval& operator-=(const d_Interval& o) {
    value_ -= o.value_;
    return *this;
  }
  d_Interval& operator*=(int32_t n) {
    value_ *= static_cast<float>(n);
    return *this;
  }
  // Division by 0 leaves the interval as it is.
  d_Interval& operator/=(int32_t n) {
    if (n != 0) value_ /= static_cast<float>(n);
    return *this;
  }
  friend d_Interval operator+(d_Interval a, const d_Interval& b) {
    return a += b;
  }
  friend d_Interval operator-(d_Interval a, const d_Interval& b) {
    return a -= b;
  }
  friend d_Interval operator*(d_Interval a, int32_t n) { return a *= n; }
  friend d_Interval operator*(int32_t n, d_Interval a) { return a *= n; }
  friend d_Interval operator/(d_Interval a, int32_t n) { return a /= n; }
  friend int operator==(const d_Interval& a, const d_Interval& b) {
    return a.value_ == b.value_;
  }
  friend int operator!=(const d_Interval& a, const d_Interval& b) {
    return a.value_ != b.value_;
  }
  friend int operator<(const d_Interval& a, const d_Interval& b) {
    return a.value_ < b.value_;
  }
  friend int operator>(const d_Interval& a, const d_Interval& b) {
    return a.value_ > b.value_;
  }

 private:
  float value_;  // DO NOT CHANGE: the whole memory form
};
static_assert(sizeof(d_Interval) == 4, "d_Interval is one float");

#endif  // QUILLSTORE_D_INTERVAL_H_
