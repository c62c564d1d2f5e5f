// The only file that asks the operating system for the time. The fixed
// clock and zone exist so that callers' tests do not depend on the machine's
// clock or TZ setting; a fixed zone is therefore applied with our own
// calendar arithmetic instead of the OS rules.
#include <time.h>

#include <mutex>

#include "obbs.h"

namespace {

constexpr int64_t kNanosPerSecond = 1000000000;
constexpr int64_t kSecondsPerDay = 86400;

// Rounds towards negative infinity; divisor > 0. Instants before 1970 must
// land in the previous second/day, not the next one.
constexpr int64_t FloorDiv(int64_t a, int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}

struct Overrides {
  bool clockFixed = false;
  int64_t clockNanos = 0;
  bool zoneFixed = false;
  int32_t zoneMinutes = 0;
};

std::mutex gMutex;
Overrides gOverrides;

Overrides Snapshot() {
  std::lock_guard<std::mutex> lock(gMutex);
  return gOverrides;
}

struct Instant {
  int64_t seconds;  // since 1970-01-01T00:00:00 UTC
  int32_t nanos;    // 0 .. 999,999,999
};

Instant Now(const Overrides& o) {
  if (o.clockFixed) {
    // Remainder first: seconds * 10^9 can overflow near INT64_MIN.
    int64_t nanos = o.clockNanos % kNanosPerSecond;
    if (nanos < 0) nanos += kNanosPerSecond;
    return {FloorDiv(o.clockNanos, kNanosPerSecond),
            static_cast<int32_t>(nanos)};
  }
  timespec ts{};
  if (clock_gettime(CLOCK_REALTIME, &ts) != 0) return {0, 0};
  return {static_cast<int64_t>(ts.tv_sec), static_cast<int32_t>(ts.tv_nsec)};
}

struct Civil {
  bdate date;
  btime time;
};

void SetTime(int hour, int minute, int second, int32_t nanos, btime* t) {
  t->hour = static_cast<uint8_t>(hour);
  t->minute = static_cast<uint8_t>(minute);
  t->second = static_cast<uint8_t>(second);
  t->hundredths = static_cast<uint8_t>(nanos / 10000000);
  t->fraction = static_cast<uint32_t>(nanos);
}

// Proleptic Gregorian date of a day count from 1970-01-01, computed in
// 400-year eras counted from March so that leap days fall at the end.
void CivilFromDays(int64_t days, bdate* d) {
  const int64_t z = days + 719468;  // days since 0000-03-01
  const int64_t era = FloorDiv(z, 146097);
  const int64_t dayOfEra = z - era * 146097;
  const int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int64_t dayOfYear =
      dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  const int64_t month =
      monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  d->year = static_cast<int16_t>(yearOfEra + era * 400 + (month <= 2 ? 1 : 0));
  d->month = static_cast<int8_t>(month);
  d->day = static_cast<int8_t>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
}

void FromSeconds(int64_t seconds, int32_t nanos, Civil* out) {
  const int64_t days = FloorDiv(seconds, kSecondsPerDay);
  const int64_t secondOfDay = seconds - days * kSecondsPerDay;
  CivilFromDays(days, &out->date);
  SetTime(static_cast<int>(secondOfDay / 3600),
          static_cast<int>(secondOfDay / 60 % 60),
          static_cast<int>(secondOfDay % 60), nanos, &out->time);
}

bool OsLocal(int64_t seconds, tm* parts) {
  const time_t t = static_cast<time_t>(seconds);
  return static_cast<int64_t>(t) == seconds && localtime_r(&t, parts);
}

Civil Utc(Instant now) {
  Civil c;
  FromSeconds(now.seconds, now.nanos, &c);
  return c;
}

// Falls back to UTC when the OS cannot convert the instant.
Civil Local(const Overrides& o, Instant now) {
  Civil c;
  if (o.zoneFixed) {
    const int64_t offset =
        o.zoneMinutes == kObZoneUnknown ? 0 : int64_t{o.zoneMinutes} * 60;
    FromSeconds(now.seconds + offset, now.nanos, &c);
    return c;
  }
  tm parts{};
  if (!OsLocal(now.seconds, &parts)) return Utc(now);
  c.date.year = static_cast<int16_t>(parts.tm_year + 1900);
  c.date.month = static_cast<int8_t>(parts.tm_mon + 1);
  c.date.day = static_cast<int8_t>(parts.tm_mday);
  SetTime(parts.tm_hour, parts.tm_min, parts.tm_sec, now.nanos, &c.time);
  return c;
}

Civil LocalNow() {
  const Overrides o = Snapshot();
  return Local(o, Now(o));
}

Civil UtcNow() { return Utc(Now(Snapshot())); }

}  // namespace

extern "C" {

void bksgetdate(bdate* date) {
  if (date) *date = LocalNow().date;
}

void bksgettime(btime* time) {
  if (time) *time = LocalNow().time;
}

void bksgetsystemtime(btime* time, bdate* date) {
  const Civil c = UtcNow();
  if (time) *time = c.time;
  if (date) *date = c.date;
}

int32_t bksgettimezone() {
  const Overrides o = Snapshot();
  if (o.zoneFixed) return o.zoneMinutes;
  tm parts{};
  if (!OsLocal(Now(o).seconds, &parts)) return kObZoneUnknown;
  return static_cast<int32_t>(parts.tm_gmtoff / 60);
}

}  // extern "C"

void bksGetHiresTime(bdate& date, btime& time, int32_t& nanoseconds) {
  const Civil c = LocalNow();
  date = c.date;
  time = c.time;
  nanoseconds = static_cast<int32_t>(c.time.fraction);
}

void bksGetHiresTimeUTC(bdate& date, btime& time, int32_t& nanoseconds) {
  const Civil c = UtcNow();
  date = c.date;
  time = c.time;
  nanoseconds = static_cast<int32_t>(c.time.fraction);
}

void bksFixClock(int64_t utcNanoseconds) {
  std::lock_guard<std::mutex> lock(gMutex);
  gOverrides.clockFixed = true;
  gOverrides.clockNanos = utcNanoseconds;
}

void bksReleaseClock() {
  std::lock_guard<std::mutex> lock(gMutex);
  gOverrides.clockFixed = false;
}

void bksFixTimeZone(int32_t minutesEast) {
  std::lock_guard<std::mutex> lock(gMutex);
  gOverrides.zoneFixed = true;
  gOverrides.zoneMinutes = minutesEast;
}

void bksReleaseTimeZone() {
  std::lock_guard<std::mutex> lock(gMutex);
  gOverrides.zoneFixed = false;
}
