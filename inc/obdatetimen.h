// ObDateTimeN, a date-time to the nanosecond, and ObTimeSpan, a duration in
// years, months, days, hours, minutes, seconds and nanoseconds.
//
// Both normalise through one carry chain from nanoseconds up to days. Days
// move the calendar when the value is a date-time holding a valid date;
// otherwise (every span, or a date-time without a valid date) they count
// 30-day months and 12-month years. In that span arithmetic a field borrows
// from a higher unit only when that unit or the carry is non-zero, so a
// span of -5 days stays days -5 while -5 hours becomes days -1, hours 19:
// stored spans rely on this representation.
#ifndef QUILLSTORE_OBDATETIMEN_H_
#define QUILLSTORE_OBDATETIMEN_H_

#include <cstdint>

#include "obdate.h"
#include "obdatetime.h"

class ObString;

// The fields and the carry chain shared by both classes.
class QS_TM_API ObNanoValue {
 public:
  // DO NOT CHANGE: arrays step by these 12 bytes; the first eight are an
  // ObDateTime.
  ObDate date;
  ObTime time;
  int32_t nanoseconds;  // 0 to 999,999,999 after normalisation; -1 unspecified

  ObDateTime DateTime() const { return ObDateTime(date, time); }

  // The six fields are null and the nanoseconds 0.
  int IsNullValue() const;
  int SetNullValue();

 protected:
  constexpr ObNanoValue(int16_t y, int8_t mo, int8_t d, int8_t h, int8_t mi,
                        int8_t s, int32_t ns)
      : date(y, mo, d), time(h, mi, s), nanoseconds(ns) {}

  // Calendar days apply only to a date-time with a valid date.
  enum Mode : uint8_t { kDateTimeMode, kSpanMode };

  // Counts from 0000-01-01T00:00:00 for date-times; for spans a month is 30
  // days and a year 12 months. Totals wrap on overflow.
  int32_t TotalDays(Mode m) const;
  int64_t TotalSeconds(Mode m) const;
  double TotalSecondsF(Mode m) const;
  int64_t TotalNanoSeconds(Mode m) const;
  void Clear(Mode m);  // zero, or 0000-01-01T00:00:00 for date-times
  void CarryNanoSeconds(int64_t n, Mode m);
  void CarrySeconds(int64_t n, Mode m);
  void CarryMinutes(int32_t n, Mode m);
  void CarryHours(int32_t n, Mode m);
  void CarryDays(int32_t n, Mode m);
  // The date-time order, then the nanoseconds; -1 nanoseconds match
  // anything unless the exact bit 0x10 is set.
  int CompareNano(const ObNanoValue& o, unsigned short options) const;
};

class QS_TM_API ObDateTimeN : public ObNanoValue {
 public:
  // The null value: unlike ObDateTime, the clock is not read.
  ObDateTimeN() : ObNanoValue(NullValue()) {}
  constexpr ObDateTimeN(int16_t year, int8_t month, int8_t day, int8_t hour,
                        int8_t minute, int8_t second, int32_t ns)
      : ObNanoValue(year, month, day, hour, minute, second, ns) {}
  ObDateTimeN(const ObDate& d, const ObTime& t)
      : ObDateTimeN(ObDateTime(d, t)) {}
  ObDateTimeN(const ObDateTime& v)  // NOLINT: widens without loss
      : ObNanoValue(v.date.year, v.date.month, v.date.day, v.time.hour,
                    v.time.minute, v.time.second, 0) {}
  explicit ObDateTimeN(const ObDate& d) : ObDateTimeN(d, ObTime(0, 0, 0)) {}
  explicit ObDateTimeN(const ObTime& t) : ObDateTimeN(ObDate(0, 0, 0), t) {}
  explicit ObDateTimeN(double seconds) : ObDateTimeN() {
    SetTotalSeconds(seconds);
  }
  ObDateTimeN(const ObDateTimeN&) = default;
  ObDateTimeN& operator=(const ObDateTimeN&) = default;
  ObDateTimeN& operator=(const ObDateTime& v) { return *this = ObDateTimeN(v); }

  int GetTotalDays() const { return TotalDays(kDateTimeMode); }
  int64_t GetTotalSeconds() const { return TotalSeconds(kDateTimeMode); }
  double GetTotalSeconds_f() const { return TotalSecondsF(kDateTimeMode); }
  int64_t GetTotalNanoSeconds() const {
    return TotalNanoSeconds(kDateTimeMode);
  }
  ObDateTimeN& SetZero();
  ObDateTimeN& SetTotalDays(int n);
  ObDateTimeN& SetTotalSeconds(int64_t n);
  // trunc(s * 1e9) nanoseconds, saturated to 64 bits (NaN counts as 0).
  ObDateTimeN& SetTotalSeconds(double s);
  ObDateTimeN& SetTotalNanoSeconds(int64_t n);

  ObDateTimeN& AddDays(int n);
  ObDateTimeN& AddHours(int n);
  ObDateTimeN& AddMinutes(int n);
  ObDateTimeN& AddSeconds(int n) { return AddSeconds(int64_t{n}); }
  ObDateTimeN& AddSeconds(int64_t n);
  ObDateTimeN& AddSeconds(double s);
  ObDateTimeN& AddNanoSeconds(int n) { return AddNanoSeconds(int64_t{n}); }
  ObDateTimeN& AddNanoSeconds(int64_t n);

  int Compare(const ObDateTimeN& o, unsigned short options) const {
    return CompareNano(o, options);
  }
  int IsValidDateTime() const { return DateTime().IsDaTime(); }

  // One read of the high-resolution clock, local or UTC.
  ObDateTimeN& Now();
  ObDateTimeN& NowUTC();
  // Shift by the local zone's offset with full carries. 0, or
  // kObZoneUnknown (-2171) with the value unchanged.
  int ToLocalTime();
  int ToUTCTime();

  // Text forms as for ObDate, with "%X" when `format` is null.
  ObString& PrintToObString(ObString& out, const char* format) const;
  void ScanFromObString(const ObString& in, const char* format);

  static const ObDateTimeN& NullValue();
  static const ObDateTimeN& ClearValue();  // all fields zero
};
static_assert(sizeof(ObDateTimeN) == 12, "ObDateTimeN occupies 12 bytes");

class QS_TM_API ObTimeSpan : public ObNanoValue {
 public:
  ObTimeSpan() : ObNanoValue(NullValue()) {}  // the null value
  // Each argument cut to its field's width, nothing normalised.
  ObTimeSpan(int years, int months, int days, int hours, int minutes,
             int seconds, int ns);
  // Hours to nanoseconds as given; the days go through span arithmetic.
  ObTimeSpan(int days, int hours, int minutes, int seconds, int ns);
  explicit ObTimeSpan(double seconds);
  ObTimeSpan(const ObTimeSpan&) = default;
  ObTimeSpan& operator=(const ObTimeSpan&) = default;

  int GetTotalDays() const { return TotalDays(kSpanMode); }
  int64_t GetTotalSeconds() const { return TotalSeconds(kSpanMode); }
  double GetTotalSeconds_f() const { return TotalSecondsF(kSpanMode); }
  int64_t GetTotalNanoSeconds() const { return TotalNanoSeconds(kSpanMode); }
  ObTimeSpan& SetZero();
  ObTimeSpan& SetTotalDays(int n);
  ObTimeSpan& SetTotalSeconds(int64_t n);
  ObTimeSpan& SetTotalSeconds(double s);
  ObTimeSpan& SetTotalNanoSeconds(int64_t n);

  ObTimeSpan& AddDays(int n);
  ObTimeSpan& AddHours(int n);
  ObTimeSpan& AddMinutes(int n);
  ObTimeSpan& AddSeconds(int n) { return AddSeconds(int64_t{n}); }
  ObTimeSpan& AddSeconds(int64_t n);
  ObTimeSpan& AddSeconds(double s);
  ObTimeSpan& AddNanoSeconds(int n) { return AddNanoSeconds(int64_t{n}); }
  ObTimeSpan& AddNanoSeconds(int64_t n);

  // Each cut to its field's width, nothing normalised.
  ObTimeSpan& SetYears(int n);
  ObTimeSpan& SetMonths(int n);
  ObTimeSpan& SetDays(int n);
  ObTimeSpan& SetHours(int n);
  ObTimeSpan& SetMinutes(int n);
  ObTimeSpan& SetSeconds(int n);
  ObTimeSpan& SetNanoSeconds(int n);

  int Compare(const ObTimeSpan& o, unsigned short options) const {
    return CompareNano(o, options);
  }

  // The non-negative span between two date-times in either order (null
  // operands count as all zeros), split into 30-day months and 12-month
  // years; the years wrap at 8 bits.
  static ObTimeSpan Difference(const ObTimeSpan& a, const ObTimeSpan& b);
  static ObTimeSpan Difference(const ObDateTimeN& a, const ObDateTimeN& b);

  // Text forms as for ObDate, with "%V" when `format` is null.
  ObString& PrintToObString(ObString& out, const char* format) const;
  void ScanFromObString(const ObString& in, const char* format);

  static const ObTimeSpan& NullValue();

 private:
  friend struct ObNanoConstants;
  constexpr ObTimeSpan(int16_t y, int8_t fill)
      : ObNanoValue(y, fill, fill, fill, fill, fill, 0) {}
};
static_assert(sizeof(ObTimeSpan) == 12, "ObTimeSpan occupies 12 bytes");

// Key order; in stored form only operand 2 (the search key) may hold
// unspecified nanoseconds (all ones).
QS_DECLARE_KEY_COMPARE(ObDateTimeNCompare);
QS_DECLARE_KEY_COMPARE(ObTimeSpanCompare);

#endif  // QUILLSTORE_OBDATETIMEN_H_
