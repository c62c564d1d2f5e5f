// d_Timestamp: a d_Date and a d_Time side by side. Ordered by date, then
// time, in the key order of each part.
#ifndef QUILLSTORE_D_TIMESTAMP_H_
#define QUILLSTORE_D_TIMESTAMP_H_

#include "d_date.h"
#include "d_time.h"

class QS_TM_API d_Timestamp {
 public:
  d_Timestamp() : date_(), time_() {}
  d_Timestamp(const d_Date& d, const d_Time& t) : date_(d), time_(t) {}
  d_Timestamp(const ObDateTime& v) : date_(v), time_(v) {}
  d_Timestamp& operator=(const d_Date& d) {
    date_ = d;
    return *this;
  }
  d_Timestamp& operator=(const ObDateTime& v) {
    date_ = v;
    time_ = v;
    return *this;
  }
  static d_Timestamp current() {
    return d_Timestamp(d_Date::current(), d_Time::current());
  }

  const d_Date& date() const { return date_; }
  const d_Time& time() const { return time_; }

  // Whole days carry into the date through the day number; the zone of the
  // time is kept and its fields stay clock time plus zone.
  d_Timestamp& operator+=(const d_Interval& i);
  d_Timestamp& operator-=(const d_Interval& i) { return *this += -i; }

  friend int32_t operator!=(const d_Timestamp& a, const d_Timestamp& b) {
    if (int32_t r = a.date_ != b.date_) return r;
    return a.time_ != b.time_;
  }
  friend int operator==(const d_Timestamp& a, const d_Timestamp& b) {
    return !(a != b);
  }
  friend int operator<(const d_Timestamp& a, const d_Timestamp& b) {
    return (a != b) < 0;
  }

 private:
  // DO NOT CHANGE: 10 bytes, the date then the time.
  d_Date date_;
  d_Time time_;
};
static_assert(sizeof(d_Timestamp) == 10, "d_Timestamp is date and time");

QS_TM_API d_Timestamp operator+(d_Timestamp t, const d_Interval& i);
QS_TM_API d_Timestamp operator+(const d_Interval& i, d_Timestamp t);
QS_TM_API d_Timestamp operator-(d_Timestamp t, const d_Interval& i);

// Dates, times and timestamps as periods; mixed pairings compare the
// timestamps' date (time) parts with the dates (times).
QS_TM_API int overlaps(const d_Timestamp& a1, const d_Timestamp& a2,
                       const d_Timestamp& b1, const d_Timestamp& b2);
QS_TM_API int overlaps(const d_Timestamp& a1, const d_Timestamp& a2,
                       const d_Date& b1, const d_Date& b2);
QS_TM_API int overlaps(const d_Date& a1, const d_Date& a2,
                       const d_Timestamp& b1, const d_Timestamp& b2);
QS_TM_API int overlaps(const d_Timestamp& a1, const d_Timestamp& a2,
                       const d_Time& b1, const d_Time& b2);
QS_TM_API int overlaps(const d_Time& a1, const d_Time& a2,
                       const d_Timestamp& b1, const d_Timestamp& b2);

// Stored form: the date's 4 bytes, then the time's 6.
QS_DECLARE_KEY_COMPARE(d_TimestampCompare);

#endif  // QUILLSTORE_D_TIMESTAMP_H_
