// ObDateTime: a calendar date with a time of day to the second.
#ifndef QUILLSTORE_OBDATETIME_H_
#define QUILLSTORE_OBDATETIME_H_

#include "obdate.h"

class QS_TM_API ObDateTime {
 public:
  // DO NOT CHANGE: arrays step by the 8 bytes of this layout.
  ObDate date;
  ObTime time;

  ObDateTime() : date(), time() {}  // date read first, then time
  ObDateTime(const ObDate& d, const ObTime& t) : date(d), time(t) {}
  explicit ObDateTime(const ObDate& d) : date(d), time() {}
  explicit ObDateTime(const ObTime& t) : date(), time(t) {}
  ObDateTime(const ObDateTime&) = default;
  ObDateTime& operator=(const ObDateTime&) = default;
  ObDateTime& operator=(const ObTime& t) {  // the date is kept
    time = t;
    return *this;
  }

  ObDateTime& Now();     // time first, then date: two clock reads
  ObDateTime& NowUTC();  // one clock read

  int IsDateTime() const { return date.IsDate() && time.IsTime(); }
  int IsDaTime() const { return IsDateTime(); }

  // The date's ordering, then the time's, both with `options`.
  int Compare(const ObDateTime& other, unsigned short options) const;
  int Compare(const ObDateTime& other) const { return Compare(other, 0xFFFF); }
  int operator!=(const ObDateTime& o) const {
    if (int r = date != o.date) return r;
    return time != o.time;
  }

  // Adds seconds, carrying whole days into the date.
  ObDateTime& AddSeconds(int seconds);
  // Shift by the local zone's offset, moving at most one day. 0, or
  // kObZoneUnknown (-2171) with the value unchanged.
  int ToLocalTime();
  int ToUTCTime();

  // As for ObDate, with "%Y-%m-%dT%H:%M:%S" when `format` is null.
  ObString& PrintToObString(ObString& out, const char* format) const;
  void ScanFromObString(const ObString& in, const char* format);

  int IsNullValue() const { return date.IsNullValue() && time.IsNullValue(); }
  int SetNullValue();
  // The default value: the date is day number 0, -4713-11-24.
  int IsDefaultValue() const;

  // All fields zero: deliberately not the null value.
  static const ObDateTime& Null();
  static const ObDateTime& ClearValue() { return Null(); }
  static const ObDateTime& NullValue();

 private:
  friend struct ObDateTimeConstants;
  constexpr ObDateTime(int16_t y, int8_t fill)
      : date(y, fill, fill), time(fill, fill, fill) {}
  int ShiftMinutes(int32_t minutes);
};
static_assert(sizeof(ObDateTime) == 8, "ObDateTime occupies 8 bytes");

QS_DECLARE_KEY_COMPARE(ObDateTimeCompare);

#endif  // QUILLSTORE_OBDATETIME_H_
