#include <cmath>
#include <cstring>
#include <type_traits>

#include "d_timestamp.h"
#include "obbs.h"
#include "obdate.h"
#include "obdatetime.h"
#include "obkeyloop.h"
#include "obtyphash.h"
#include "typemgr/daterows.h"
#include "typemgr/stdrows.h"

namespace {

// Floating values enter integer arithmetic only through these: out-of-range
// values clamp and NaN gives 0, so no conversion is ever undefined.
int32_t ToInt32(double v) {
  if (std::isnan(v)) return 0;
  if (v >= 2147483647.0) return INT32_MAX;
  if (v <= -2147483648.0) return INT32_MIN;
  return static_cast<int32_t>(v);  // truncates toward zero
}
int64_t ToInt64(double v, int64_t limit) {
  if (std::isnan(v)) return 0;
  const double l = static_cast<double>(limit);
  if (v >= l) return limit;
  if (v <= -l) return -limit;
  return static_cast<int64_t>(v);
}
// Whole days moved at once; far beyond every 16-bit year, far below
// overflow of the day number sums.
constexpr int64_t kMaxDays = int64_t{1} << 40;

int32_t g_defaultZone = 0;  // hours; its low byte is the zone of new times

// Day number of any fields: Julian before 1582-10-15 (j < 2299170 before
// the correction), Gregorian from then on.
int32_t DayNumberOf(int32_t y, int32_t m, int32_t d) {
  int32_t yp = y, mp = m + 1;
  if (m < 3) {
    yp = y - 1;
    mp = m + 13;
  }
  const int32_t j = d + ToInt32(365.25 * yp) + 1720994 + ToInt32(30.6001 * mp);
  if (j < 2299170) return j;
  const int32_t a = yp / 100;
  return j + a / 4 - a + 2;
}

int8_t Low8(int32_t v) { return static_cast<int8_t>(static_cast<uint8_t>(v)); }

template <class T, class Cmp>
int Overlaps(const T& a1, const T& a2, const T& b1, const T& b2, Cmp cmp) {
  const bool ordered = cmp(a1, a2) <= 0;
  const T& lo = ordered ? a1 : a2;
  const T& hi = ordered ? a2 : a1;
  auto within = [&](const T& x) { return cmp(lo, x) <= 0 && cmp(x, hi) <= 0; };
  if (within(b1) || within(b2)) return 1;
  if (cmp(b1, lo) <= 0 && cmp(b2, hi) >= 0) return 1;
  if (cmp(b2, lo) <= 0 && cmp(b1, hi) >= 0) return 1;
  return 0;
}
int32_t DateDiff(const d_Date& a, const d_Date& b) { return a != b; }
int32_t TimeDiff(const d_Time& a, const d_Time& b) { return a != b; }
int32_t StampDiff(const d_Timestamp& a, const d_Timestamp& b) { return a != b; }

}  // namespace

// ---- d_Interval

d_Interval::d_Interval(int32_t days, int32_t hours, int32_t minutes,
                       float seconds) {
  // Magnitudes as unsigned 32-bit products: the most negative argument
  // wraps instead of overflowing.
  auto mag = [](int32_t v) {
    return v < 0 ? 0u - static_cast<uint32_t>(v) : static_cast<uint32_t>(v);
  };
  auto prod = [&](int32_t v, uint32_t f) {
    return static_cast<float>(static_cast<int32_t>(mag(v) * f));
  };
  float v = prod(minutes, 60) + std::fabs(seconds);
  v += prod(hours, 3600);
  v += prod(days, 86400);
  const bool negative = days < 0 || hours < 0 || minutes < 0 || seconds < 0;
  value_ = negative ? -v : v;
}

// ---- d_Date

d_Date::d_Date() {
  bdate b{};
  bksgetdate(&b);
  *this = d_Date(b.year, static_cast<uint8_t>(b.month),
                 static_cast<uint8_t>(b.day));
}
d_Date::d_Date(int16_t year, uint16_t dayOfYear)
    : d_Date(FromDayNumber(int64_t{DayNumberOf(year, 1, 1)} + dayOfYear - 1)) {}
d_Date::d_Date(const d_Timestamp& ts) : d_Date(ts.date()) {}
d_Date::d_Date(const ObDate& d)
    : year_(d.year),
      month_(static_cast<uint8_t>(d.month)),
      day_(static_cast<uint8_t>(d.day)) {}
d_Date::d_Date(const ObDateTime& d) : d_Date(d.date) {}
d_Date& d_Date::operator=(const d_Timestamp& ts) { return *this = ts.date(); }
d_Date& d_Date::operator=(const ObDate& d) { return *this = d_Date(d); }
d_Date& d_Date::operator=(const ObDateTime& d) { return *this = d_Date(d); }

d_Date d_Date::FromDayNumber(int64_t j) {
  if (j > kMaxDays) j = kMaxDays;
  if (j < -kMaxDays) j = -kMaxDays;
  int64_t z = j + 1;
  if (z > 2299160) {
    const int64_t alpha = ToInt64((z - 1867216.25) / 36524.25, kMaxDays);
    z = j + 1 + alpha - alpha / 4 + 1;
  }
  const int64_t b = z + 1524;
  const int64_t c = ToInt64((b - 122.1) / 365.25, kMaxDays);
  const int64_t cd = ToInt64(c * 365.25, kMaxDays * 2);
  const int64_t e = ToInt64((b - cd) / 30.6001, kMaxDays);
  const int64_t day = b - cd - ToInt64(std::floor(e * 30.6001), kMaxDays * 2);
  const int64_t month = e < 14 ? e - 1 : e - 13;
  const int64_t year = month == 1 || month == 2 ? c - 4715 : c - 4716;
  // Years beyond 16 bits keep their low bits, as the fields do everywhere.
  return d_Date(static_cast<int16_t>(static_cast<uint16_t>(year)),
                static_cast<uint8_t>(month), static_cast<uint8_t>(day));
}

int32_t d_Date::DayNumber() const { return DayNumberOf(year_, month_, day_); }

uint16_t d_Date::day_of_year() const {
  return static_cast<uint16_t>(DayNumber() - DayNumberOf(year_, 1, 1) + 1);
}

d_Date::Weekday d_Date::day_of_week() const {
  int32_t r = (DayNumber() + 2) % 7;
  if (r < 0) r += 7;  // dates before day 0 still name a weekday
  return static_cast<Weekday>(r);
}

int d_Date::is_leap_year(int32_t y) {
  return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0 || y < 1600);
}

uint8_t d_Date::days_in_month(int32_t year, int32_t month) {
  switch (month) {
    case 1:
    case 3:
    case 5:
    case 7:
    case 8:
    case 10:
    case 12:
      return 31;
    case 4:
    case 6:
    case 9:
    case 11:
      return 30;
    case 2:
      return is_leap_year(year) ? 29 : 28;
    default:
      return 0;
  }
}

d_Date& d_Date::AddDays(int64_t days) {
  if (days > kMaxDays) days = kMaxDays;
  if (days < -kMaxDays) days = -kMaxDays;
  return *this = FromDayNumber(DayNumber() + days);
}

d_Date& d_Date::next(Weekday wd) {
  int64_t delta = (int64_t{wd} - day_of_week()) % 7;
  if (delta <= 0) delta += 7;
  return AddDays(delta);
}
d_Date& d_Date::previous(Weekday wd) {
  int64_t delta = (int64_t{day_of_week()} - wd) % 7;
  if (delta <= 0) delta += 7;
  return AddDays(-delta);
}
d_Date d_Date::operator++(int) {
  const d_Date old = *this;
  AddDays(1);
  return old;
}
d_Date d_Date::operator--(int) {
  const d_Date old = *this;
  AddDays(-1);
  return old;
}
d_Date& d_Date::operator+=(const d_Interval& i) {
  return AddDays(ToInt64(std::trunc(double{i.value()} / 86400), kMaxDays));
}
d_Date& d_Date::operator-=(const d_Interval& i) { return *this += -i; }

d_Date operator+(d_Date d, const d_Interval& i) { return d += i; }
d_Date operator+(const d_Interval& i, d_Date d) { return d += i; }
d_Date operator-(d_Date d, const d_Interval& i) { return d -= i; }

int overlaps(const d_Date& a1, const d_Date& a2, const d_Date& b1,
             const d_Date& b2) {
  return Overlaps(a1, a2, b1, b2, DateDiff);
}

// ---- d_Time

void d_Time::Init(int32_t hour, int32_t minute, double sec, int32_t tzHour,
                  int32_t tzMinute) {
  const int32_t whole = ToInt32(sec);
  tzHour_ = Low8(tzHour);
  tzMinute_ = Low8(tzMinute);
  hour_ = Low8(static_cast<int32_t>(static_cast<uint32_t>(hour) +
                                    static_cast<uint32_t>(tzHour)));
  minute_ = Low8(static_cast<int32_t>(static_cast<uint32_t>(minute) +
                                      static_cast<uint32_t>(tzMinute)));
  second_ = static_cast<uint8_t>(whole);
  hundredths_ = static_cast<uint8_t>(ToInt32((sec - whole) * 100));
}

d_Time::d_Time() {
  btime t{};
  bksgettime(&t);
  Init(t.hour, t.minute, t.second, g_defaultZone, 0);
}
d_Time::d_Time(uint16_t hour, uint16_t minute, float sec) {
  Init(hour, minute, sec, g_defaultZone, 0);
}
d_Time::d_Time(uint16_t hour, uint16_t minute, float sec, int16_t tzHour,
               int16_t tzMinute) {
  Init(hour, minute, sec, tzHour, tzMinute);
}
d_Time::d_Time(int32_t seconds) {
  if (seconds < 0) {
    seconds %= 86400;
    if (seconds < 0) seconds += 86400;
  }
  Init(seconds / 3600, seconds % 3600 / 60, seconds % 60, g_defaultZone, 0);
}
d_Time::d_Time(const d_Timestamp& ts) : d_Time(ts.time()) {}
d_Time::d_Time(const ObTime& t) {
  Init(t.hour, t.minute, t.second, g_defaultZone, 0);
}
d_Time::d_Time(const ObDateTime& t) : d_Time(t.time) {}
d_Time& d_Time::operator=(const d_Timestamp& ts) { return *this = ts.time(); }
d_Time& d_Time::operator=(const ObTime& t) { return *this = d_Time(t); }
d_Time& d_Time::operator=(const ObDateTime& t) { return *this = d_Time(t); }

d_Time d_Time::FromFields(int8_t tzHour, int8_t tzMinute, int8_t hour,
                          int8_t minute, uint8_t second, uint8_t hundredths) {
  d_Time t(0);
  t.tzHour_ = tzHour;
  t.tzMinute_ = tzMinute;
  t.hour_ = hour;
  t.minute_ = minute;
  t.second_ = second;
  t.hundredths_ = hundredths;
  return t;
}

void d_Time::set_default_Time_Zone(Time_Zone zone) { g_defaultZone = zone; }
Time_Zone d_Time::default_Time_Zone() {
  return static_cast<Time_Zone>(g_defaultZone);
}
void d_Time::set_default_Time_Zone_to_local() {
  const int32_t minutes = bksgettimezone();
  if (minutes == kObZoneUnknown) return;
  const int64_t seconds = int64_t{minutes} * 60;
  if (seconds != 0) g_defaultZone = static_cast<int32_t>(seconds / 3600);
}

void d_Time::SetSplit(double sum, int32_t hourShift, int32_t minuteShift) {
  const int32_t s = ToInt32(sum);
  const double seconds = sum - s + s % 60;
  const int32_t whole = ToInt32(seconds);
  hour_ = Low8(s % 86400 / 3600 + hourShift);
  minute_ = Low8(s % 3600 / 60 + minuteShift);
  second_ = static_cast<uint8_t>(whole);
  hundredths_ = static_cast<uint8_t>(ToInt32((seconds - whole) * 100));
}

d_Time& d_Time::operator+=(const d_Interval& i) {
  const d_Interval now(0, hour_, minute_, second_ + hundredths_ / 100.0f);
  float sum = now.value() + i.value();
  if (sum < 0) {  // whole days up to the first non-negative sum
    sum = std::fmod(sum, 86400.0f);
    if (sum < 0) sum += 86400.0f;
  }
  SetSplit(sum, 0, 0);
  return *this;
}

d_Interval operator-(const d_Time& a, const d_Time& b) {
  return d_Interval(0, a.hour_, a.minute_, a.second_) -
         d_Interval(0, b.hour_, b.minute_, b.second_);
}

int32_t operator!=(const d_Time& a, const d_Time& b) {
  const int16_t ha = static_cast<int16_t>(a.hour_ - a.tzHour_);
  const int16_t hb = static_cast<int16_t>(b.hour_ - b.tzHour_);
  if (ha != hb) return ha - hb;
  const int16_t ma = static_cast<int16_t>(a.minute_ - a.tzMinute_);
  const int16_t mb = static_cast<int16_t>(b.minute_ - b.tzMinute_);
  if (ma != mb) return ma - mb;
  return ToInt32((a.second_ + a.hundredths_ / 100.0f) -
                 (b.second_ + b.hundredths_ / 100.0f));
}

d_Time operator+(d_Time t, const d_Interval& i) { return t += i; }
d_Time operator+(const d_Interval& i, d_Time t) { return t += i; }
d_Time operator-(d_Time t, const d_Interval& i) { return t -= i; }

int overlaps(const d_Time& a1, const d_Time& a2, const d_Time& b1,
             const d_Time& b2) {
  return Overlaps(a1, a2, b1, b2, TimeDiff);
}

// ---- d_Timestamp

d_Timestamp& d_Timestamp::operator+=(const d_Interval& i) {
  const d_Time& t = time_;
  const d_Interval now(date_.day(), t.hour_ - t.tzHour_,
                       t.minute_ - t.tzMinute_,
                       t.second_ + t.hundredths_ / 100.0f);
  const double sum = now.value() + i.value();
  int64_t days = ToInt64(std::floor(sum / 86400), kMaxDays);
  double rest = sum - static_cast<double>(days) * 86400;
  if (!(rest >= 0 && rest < 86400)) rest = 0;  // NaN or a clamped sum
  // The day of the month is part of the interval: counting from the day
  // before keeps the dropped days of 1582 and unnormalised dates in place.
  date_ =
      d_Date::FromDayNumber(int64_t{date_.DayNumber()} - date_.day() + days);
  time_.SetSplit(rest, t.tzHour_, t.tzMinute_);
  return *this;
}

d_Timestamp operator+(d_Timestamp t, const d_Interval& i) { return t += i; }
d_Timestamp operator+(const d_Interval& i, d_Timestamp t) { return t += i; }
d_Timestamp operator-(d_Timestamp t, const d_Interval& i) { return t -= i; }

int overlaps(const d_Timestamp& a1, const d_Timestamp& a2,
             const d_Timestamp& b1, const d_Timestamp& b2) {
  return Overlaps(a1, a2, b1, b2, StampDiff);
}
int overlaps(const d_Timestamp& a1, const d_Timestamp& a2, const d_Date& b1,
             const d_Date& b2) {
  return overlaps(a1.date(), a2.date(), b1, b2);
}
int overlaps(const d_Date& a1, const d_Date& a2, const d_Timestamp& b1,
             const d_Timestamp& b2) {
  return overlaps(a1, a2, b1.date(), b2.date());
}
int overlaps(const d_Timestamp& a1, const d_Timestamp& a2, const d_Time& b1,
             const d_Time& b2) {
  return overlaps(a1.time(), a2.time(), b1, b2);
}
int overlaps(const d_Time& a1, const d_Time& a2, const d_Timestamp& b1,
             const d_Timestamp& b2) {
  return overlaps(a1, a2, b1.time(), b2.time());
}

// ---- Key order, stored forms, hashes, counters

namespace {

using obstdrow::kDateStored;
using obstdrow::kStampStored;
using obstdrow::kTimeStored;

static_assert(std::is_trivially_copyable<d_Timestamp>::value,
              "values are copied as bytes");

// Memory-form date without the clock read of the default constructor.
d_Date ReadMemDate(const uint8_t* p) {
  int16_t year;
  std::memcpy(&year, p, sizeof year);
  return d_Date(year, p[2], p[3]);
}
d_Date ReadDate(const uint8_t* p, uint8_t fmt) {
  if (fmt == kObFormatMemory) return ReadMemDate(p);
  return d_Date(obdaterow::StoredYear(p, fmt), p[2], p[3]);
}
// Time bytes are the same in memory and stored form.
d_Time ReadTime(const uint8_t* p) {
  return d_Time::FromFields(
      static_cast<int8_t>(p[0]), static_cast<int8_t>(p[1]),
      static_cast<int8_t>(p[2]), static_cast<int8_t>(p[3]), p[4], p[5]);
}

// By day number; the fields break ties (the dropped days of 1582, dates
// out of range) so that only identical dates are equal.
int32_t DateKeyCmp(const d_Date& a, const d_Date& b) {
  if (int32_t r = obkey::Cmp3(a.DayNumber(), b.DayNumber())) return r;
  if (int32_t r = obkey::Cmp3(a.year(), b.year())) return r;
  if (int32_t r = obkey::Cmp3(a.month(), b.month())) return r;
  return obkey::Cmp3(a.day(), b.day());
}
// By clock time to the hundredth, then by zone.
int32_t TimeKeyCmp(const d_Time& a, const d_Time& b) {
  auto clock = [](const d_Time& t) {
    return ((int32_t{t.hour()} - t.tz_hour()) * 60 + t.minute() -
            t.tz_minute()) *
               6000 +
           t.second() * 100 + t.hundredths();
  };
  if (int32_t r = obkey::Cmp3(clock(a), clock(b))) return r;
  if (int32_t r = obkey::Cmp3(a.tz_hour(), b.tz_hour())) return r;
  return obkey::Cmp3(a.tz_minute(), b.tz_minute());
}

uint32_t DateTerm(const d_Date& d) {
  return static_cast<uint32_t>(d.DayNumber());
}
uint32_t TimeTerm(const d_Time& t) {
  return obdaterow::DateTerm(t.tz_hour(), t.tz_minute(), t.hour()) ^
         (obdaterow::DateTerm(t.minute(), t.second(), t.hundredths()) << 5);
}

}  // namespace

int32_t d_DateCompare(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint16_t, uint32_t count,
                      int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  return obkey::KeyLoop<kDateStored>(len1, p1, len2, p2, count, status,
                                     [fmt](const uint8_t* a, const uint8_t* b) {
                                       return DateKeyCmp(ReadDate(a, fmt),
                                                         ReadDate(b, fmt));
                                     });
}

int32_t d_TimeCompare(uint8_t, uint32_t len1, const void* p1, uint32_t len2,
                      const void* p2, uint16_t, uint32_t count,
                      int32_t& status) {
  return obkey::KeyLoop<kTimeStored>(len1, p1, len2, p2, count, status,
                                     [](const uint8_t* a, const uint8_t* b) {
                                       return TimeKeyCmp(ReadTime(a),
                                                         ReadTime(b));
                                     });
}

int32_t d_TimestampCompare(uint8_t flags, uint32_t len1, const void* p1,
                           uint32_t len2, const void* p2, uint16_t,
                           uint32_t count, int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  return obkey::KeyLoop<kStampStored>(
      len1, p1, len2, p2, count, status,
      [fmt](const uint8_t* a, const uint8_t* b) {
        if (int32_t r = DateKeyCmp(ReadDate(a, fmt), ReadDate(b, fmt)))
          return r;
        return TimeKeyCmp(ReadTime(a + kDateStored), ReadTime(b + kDateStored));
      });
}

namespace obstdrow {

namespace {
void PutDate(uint8_t* out, const d_Date& d, uint8_t format) {
  obdaterow::PutYear(out, d.year(), format);
  out[2] = d.month();
  out[3] = d.day();
}

// The memory-form counter rule: kind 2 resets, 'O' keeps, 'M'/'N' advance
// by the smallest unit, 2091 when the value cannot grow.
template <class C, class Reset, class Next>
int32_t Step(void* value, uint8_t format, uint8_t kind, Reset reset,
             Next next) {
  if (format != kObFormatMemory) return kObNotSupported;
  C v = reset();  // overwritten: avoids the clock read of C()
  std::memcpy(&v, value, sizeof v);
  switch (kind) {
    case obrow::kStepReset:
      v = reset();
      break;
    case obrow::kStepKeep:
      return 0;
    case obrow::kStepNext:
    case obrow::kStepNextM:
      if (!next(v)) return kObCounterAtMax;
      break;
    default:
      return kObNotSupported;
  }
  std::memcpy(value, &v, sizeof v);
  return 0;
}

bool NextDate(d_Date& d) {
  const d_Date n = d_Date::FromDayNumber(int64_t{d.DayNumber()} + 1);
  if (n.DayNumber() <= d.DayNumber()) return false;
  d = n;
  return true;
}
constexpr int32_t kHundredthsPerDay = 8640000;
int32_t ClockHundredths(const d_Time& t) {
  return ((int32_t{t.hour()} - t.tz_hour()) * 3600 +
          (int32_t{t.minute()} - t.tz_minute()) * 60 + t.second()) *
             100 +
         t.hundredths();
}
d_Time TimeAt(const d_Time& zone, int32_t h) {
  return d_Time::FromFields(
      zone.tz_hour(), zone.tz_minute(), Low8(h / 360000 + zone.tz_hour()),
      Low8(h / 6000 % 60 + zone.tz_minute()),
      static_cast<uint8_t>(h / 100 % 60), static_cast<uint8_t>(h % 100));
}
// One hundredth later on the clock of the time's own zone, up to
// 23:59:59.99.
bool NextTime(d_Time& t) {
  const int32_t h = ClockHundredths(t);
  if (h < 0 || h + 1 >= kHundredthsPerDay) return false;
  t = TimeAt(t, h + 1);
  return true;
}
}  // namespace

uint32_t DateStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i)
    PutDate(d + i * kDateStored, ReadMemDate(s + i * sizeof(d_Date)), format);
  return kDateStored * count;
}
uint32_t DateLoad(void* dest, const void* src, uint8_t format, uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const d_Date v = ReadDate(s + i * kDateStored, format);
    std::memcpy(d + i * sizeof(d_Date), &v, sizeof v);
  }
  return kDateStored * count;
}
uint32_t DateHash(uint8_t flags, uint32_t len, const void* value,
                  uint32_t count, int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  return obhash::HashLoop<kDateStored>(
      len, value, count, status,
      [fmt](const uint8_t* p) { return DateTerm(ReadDate(p, fmt)); });
}
int32_t DateStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return Step<d_Date>(
      value, format, kind, [] { return d_Date::FromDayNumber(0); }, NextDate);
}

uint32_t TimeStore(void* dest, const void* src, uint8_t, uint32_t count) {
  if (count != 0 && dest != src)
    std::memmove(dest, src, size_t{count} * kTimeStored);
  return kTimeStored * count;
}
uint32_t TimeHash(uint8_t, uint32_t len, const void* value, uint32_t count,
                  int32_t& status) {
  return obhash::HashLoop<kTimeStored>(
      len, value, count, status,
      [](const uint8_t* p) { return TimeTerm(ReadTime(p)); });
}
int32_t TimeStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return Step<d_Time>(
      value, format, kind, [] { return d_Time::FromFields(0, 0, 0, 0, 0, 0); },
      NextTime);
}

uint32_t StampStore(void* dest, const void* src, uint8_t format,
                    uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* in = s + i * sizeof(d_Timestamp);
    uint8_t* out = d + i * kStampStored;
    PutDate(out, ReadMemDate(in), format);
    std::memmove(out + kDateStored, in + sizeof(d_Date), kTimeStored);
  }
  return kStampStored * count;
}
uint32_t StampLoad(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* in = s + i * kStampStored;
    const d_Timestamp v(ReadDate(in, format), ReadTime(in + kDateStored));
    std::memcpy(d + i * sizeof(d_Timestamp), &v, sizeof v);
  }
  return kStampStored * count;
}
uint32_t StampHash(uint8_t flags, uint32_t len, const void* value,
                   uint32_t count, int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  return obhash::HashLoop<kStampStored>(
      len, value, count, status, [fmt](const uint8_t* p) {
        return DateTerm(ReadDate(p, fmt)) * 31u ^
               TimeTerm(ReadTime(p + kDateStored));
      });
}
// The time advances; past 23:59:59.99 it starts the next day at midnight
// in its zone.
int32_t StampStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return Step<d_Timestamp>(
      value, format, kind,
      [] {
        return d_Timestamp(d_Date::FromDayNumber(0),
                           d_Time::FromFields(0, 0, 0, 0, 0, 0));
      },
      [](d_Timestamp& v) {
        d_Time t = v.time();
        if (NextTime(t)) {
          v = d_Timestamp(v.date(), t);
          return true;
        }
        d_Date d = v.date();
        if (!NextDate(d)) return false;
        v = d_Timestamp(d, TimeAt(t, 0));
        return true;
      });
}

}  // namespace obstdrow
