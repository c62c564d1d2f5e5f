// d_Time: a time of day to the hundredth with a time zone. The hour and
// minute fields hold the clock time plus the zone (nothing is normalised);
// subtracting the zone gives back the clock time.
//
// Key order (memory and stored forms): by the clock time (hour minus zone
// hours, minute minus zone minutes, second, hundredths), then by the zone,
// so that only identical times compare equal.
#ifndef QUILLSTORE_D_TIME_H_
#define QUILLSTORE_D_TIME_H_

#include <cstdint>

#include "d_interval.h"
#include "obdefs.h"
#include "obkeycmp.h"

class ObTime;
class ObDateTime;
class d_Timestamp;

// Hours east of Greenwich.
enum Time_Zone : int32_t {
  GMT = 0,
  GMT1 = 1,
  GMT2,
  GMT3,
  GMT4,
  GMT5,
  GMT6,
  GMT7,
  GMT8,
  GMT9,
  GMT10,
  GMT11,
  GMT12,
  GMT_1 = -1,
  GMT_2 = -2,
  GMT_3 = -3,
  GMT_4 = -4,
  GMT_5 = -5,
  GMT_6 = -6,
  GMT_7 = -7,
  GMT_8 = -8,
  GMT_9 = -9,
  GMT_10 = -10,
  GMT_11 = -11,
  GMT_12 = -12
};

class QS_TM_API d_Time {
 public:
  d_Time();  // the local clock in the default zone
  d_Time(uint16_t hour, uint16_t minute, float sec = 0);
  d_Time(uint16_t hour, uint16_t minute, float sec, int16_t tzHour,
         int16_t tzMinute);
  explicit d_Time(int32_t seconds);
  d_Time(const d_Timestamp& ts);
  d_Time(const ObTime& t);
  d_Time(const ObDateTime& t);
  d_Time& operator=(const d_Timestamp& ts);
  d_Time& operator=(const ObTime& t);
  d_Time& operator=(const ObDateTime& t);

  // The six fields exactly as given.
  static d_Time FromFields(int8_t tzHour, int8_t tzMinute, int8_t hour,
                           int8_t minute, uint8_t second, uint8_t hundredths);
  static d_Time current() { return d_Time(); }
  static void set_default_Time_Zone(Time_Zone zone);
  // From the clock's zone; an unknown or zero offset keeps the default.
  static void set_default_Time_Zone_to_local();
  static Time_Zone default_Time_Zone();

  int8_t tz_hour() const { return tzHour_; }
  int8_t tz_minute() const { return tzMinute_; }
  int8_t hour() const { return hour_; }      // clock hour plus zone hours
  int8_t minute() const { return minute_; }  // clock minute plus zone minutes
  uint8_t second() const { return second_; }
  uint8_t hundredths() const { return hundredths_; }

  d_Time& operator+=(const d_Interval& i);
  d_Time& operator-=(const d_Interval& i) { return *this += -i; }
  // The stored hour and minute fields and whole seconds; hundredths ignored.
  friend QS_TM_API d_Interval operator-(const d_Time& a, const d_Time& b);
  // First non-zero difference of clock hour, clock minute, whole seconds;
  // times less than a second apart are equal.
  friend QS_TM_API int32_t operator!=(const d_Time& a, const d_Time& b);
  friend int operator==(const d_Time& a, const d_Time& b) { return !(a != b); }
  friend int operator<(const d_Time& a, const d_Time& b) {
    return (a != b) < 0;
  }
  friend int operator>(const d_Time& a, const d_Time& b) {
    return (a != b) > 0;
  }

 private:
  friend class d_Timestamp;
  void Init(int32_t hour, int32_t minute, double sec, int32_t tzHour,
            int32_t tzMinute);
  // Seconds of a day in [0, 86400) into hour, minute, second, hundredths,
  // the shifts added to hour and minute.
  void SetSplit(double seconds, int32_t hourShift, int32_t minuteShift);

  // DO NOT CHANGE the field order or widths: arrays and records use them.
  int8_t tzHour_;
  int8_t tzMinute_;
  int8_t hour_;
  int8_t minute_;
  uint8_t second_;
  uint8_t hundredths_;
};
static_assert(sizeof(d_Time) == 6, "d_Time is zone, hour, minute, second");

QS_TM_API d_Time operator+(d_Time t, const d_Interval& i);
QS_TM_API d_Time operator+(const d_Interval& i, d_Time t);
QS_TM_API d_Time operator-(d_Time t, const d_Interval& i);
QS_TM_API int overlaps(const d_Time& a1, const d_Time& a2, const d_Time& b1,
                       const d_Time& b2);

// Stored form: the six bytes of the memory form in every format.
QS_DECLARE_KEY_COMPARE(d_TimeCompare);

#endif  // QUILLSTORE_D_TIME_H_
