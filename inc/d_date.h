// d_Date: a date of the historical calendar, Julian up to 1582-10-04 and
// Gregorian from 1582-10-15. Day numbers are computed in floating point the
// classic astronomical way; the ten dropped days 1582-10-05..14 take the
// numbers of 15..24 October. Fields are stored as given, never checked.
//
// Key order (memory and stored forms): by day number, then by the fields,
// so that only identical dates compare equal.
#ifndef QUILLSTORE_D_DATE_H_
#define QUILLSTORE_D_DATE_H_

#include <cstdint>

#include "d_interval.h"
#include "obdefs.h"
#include "obkeycmp.h"

class ObDate;
class ObDateTime;
class d_Timestamp;

class QS_TM_API d_Date {
 public:
  enum Weekday : int32_t {
    Sunday = 0,
    Monday,
    Tuesday,
    Wednesday,
    Thursday,
    Friday,
    Saturday
  };

  d_Date();  // today's local date
  d_Date(int16_t year, uint8_t month, uint8_t day)
      : year_(year), month_(month), day_(day) {}
  d_Date(int16_t year, uint16_t dayOfYear);
  d_Date(const d_Timestamp& ts);
  d_Date(const ObDate& d);
  d_Date(const ObDateTime& d);
  d_Date& operator=(const d_Timestamp& ts);
  d_Date& operator=(const ObDate& d);
  d_Date& operator=(const ObDateTime& d);

  static d_Date current() { return d_Date(); }
  // The date of a day number (0 is -4712-01-01).
  static d_Date FromDayNumber(int64_t dayNumber);

  int16_t year() const { return year_; }
  uint8_t month() const { return month_; }
  uint8_t day() const { return day_; }
  int32_t DayNumber() const;
  uint16_t day_of_year() const;
  Weekday day_of_week() const;
  uint8_t days_in_month() const { return days_in_month(year_, month_); }
  static uint8_t days_in_month(int32_t year, int32_t month);
  static int is_leap_year(int32_t year);

  // Forward (back) 1 to 7 days to the next (previous) such weekday.
  d_Date& next(Weekday wd);
  d_Date& previous(Weekday wd);
  d_Date operator++(int);
  d_Date operator--(int);
  d_Date& operator++() { return AddDays(1); }
  d_Date& operator--() { return AddDays(-1); }
  // Whole days of the interval, truncated toward zero.
  d_Date& operator+=(const d_Interval& i);
  d_Date& operator-=(const d_Interval& i);
  d_Date& AddDays(int64_t days);

  // Difference of the day numbers: non-zero when the dates differ.
  friend int32_t operator!=(const d_Date& a, const d_Date& b) {
    return a.DayNumber() - b.DayNumber();
  }
  friend int operator==(const d_Date& a, const d_Date& b) {
    return a.DayNumber() == b.DayNumber();
  }
  friend int operator<(const d_Date& a, const d_Date& b) {
    return a.DayNumber() < b.DayNumber();
  }
  friend int operator>(const d_Date& a, const d_Date& b) { return b < a; }
  friend int operator<=(const d_Date& a, const d_Date& b) { return !(b < a); }
  friend int operator>=(const d_Date& a, const d_Date& b) { return !(a < b); }

 private:
  // DO NOT CHANGE the field order or widths: arrays and records use them.
  int16_t year_;
  uint8_t month_;
  uint8_t day_;
};
static_assert(sizeof(d_Date) == 4, "d_Date is year, month, day");

QS_TM_API d_Date operator+(d_Date d, const d_Interval& i);
QS_TM_API d_Date operator+(const d_Interval& i, d_Date d);
QS_TM_API d_Date operator-(d_Date d, const d_Interval& i);
QS_TM_API int overlaps(const d_Date& a1, const d_Date& a2, const d_Date& b1,
                       const d_Date& b2);

// Stored form: 4 bytes, the year most significant byte first for format 2
// and least significant first otherwise, then month and day.
QS_DECLARE_KEY_COMPARE(d_DateCompare);

#endif  // QUILLSTORE_D_DATE_H_
