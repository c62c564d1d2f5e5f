#include "obdatetime.h"

#include <cstring>
#include <new>

#include "obbs.h"
#include "obkeyloop.h"
#include "obtyphash.h"
#include "typemgr/daterows.h"

using obdaterow::DateTerm;
using obdaterow::kDateStored;
using obdaterow::kDateTimeStored;
using obdaterow::ReadValue;
using obdaterow::StoredYear;

struct ObDateTimeConstants {
  static constexpr ObDateTime kNull{-32768, -128};
  static constexpr ObDateTime kZero{0, 0};
};

namespace {

constexpr ObDate kDayZero(-4713, 11, 24);

inline int32_t Wrap(int64_t v) {
  return static_cast<int32_t>(static_cast<uint32_t>(v));
}
inline int8_t Wrap8(int32_t v) {
  return static_cast<int8_t>(static_cast<uint8_t>(v));
}

}  // namespace

const ObDateTime& ObDateTime::Null() { return ObDateTimeConstants::kZero; }
const ObDateTime& ObDateTime::NullValue() { return ObDateTimeConstants::kNull; }

ObDateTime& ObDateTime::Now() {
  time.Now();
  date.Today();
  return *this;
}

ObDateTime& ObDateTime::NowUTC() {
  btime t{};
  bdate d{};
  bksgetsystemtime(&t, &d);
  date = ObDate(d.year, d.month, d.day);
  time = ObTime(static_cast<int8_t>(t.hour), static_cast<int8_t>(t.minute),
                static_cast<int8_t>(t.second));
  return *this;
}

int ObDateTime::Compare(const ObDateTime& o, unsigned short options) const {
  if (int r = date.Compare(o.date, options)) return r;
  return time.Compare(o.time, options);
}

ObDateTime& ObDateTime::AddSeconds(int n) {
  int32_t days = n / 86400;
  const int32_t r = n - 86400 * days;
  ObTime t = time;
  if (r >= 0) {
    t += r;
    if (t < time) ++days;
  } else {
    t -= -r;
    if (t > time) --days;
  }
  date += days;
  time = t;
  return *this;
}

// Moves the clock by `minutes`, carrying at most one day; seconds stay.
int ObDateTime::ShiftMinutes(int32_t minutes) {
  const int32_t x = Wrap(int64_t{time.hour} * 60 + time.minute + minutes);
  int32_t h, m;
  if (x >= 0 && x < 1440) {
    h = x / 60;
    m = x - 60 * h;
  } else if (x >= 1440) {
    date += 1;
    h = (x - 1440) / 60;
    m = x - 1440 - 60 * h;
  } else {
    date -= 1;
    const int32_t q = x / 60;
    const int32_t rest = x - 60 * q;
    h = rest == 0 ? q + 24 : q + 23;
    m = rest == 0 ? 0 : rest + 60;
  }
  time.hour = Wrap8(h);
  time.minute = Wrap8(m);
  return 0;
}

int ObDateTime::ToLocalTime() {
  const int32_t z = bksgettimezone();
  if (z == kObZoneUnknown) return kObZoneUnknown;
  return ShiftMinutes(z);
}

int ObDateTime::ToUTCTime() {
  const int32_t z = bksgettimezone();
  if (z == kObZoneUnknown) return kObZoneUnknown;
  return ShiftMinutes(Wrap(-int64_t{z}));
}

int ObDateTime::SetNullValue() {
  if (this != &ObDateTimeConstants::kNull) *this = ObDateTimeConstants::kNull;
  return 0;
}

int ObDateTime::IsDefaultValue() const { return date == kDayZero; }

int32_t ObDateTimeCompare(uint8_t flags, uint32_t len1, const void* p1,
                          uint32_t len2, const void* p2, uint16_t options,
                          uint32_t count, int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  if (fmt == kObFormatMemory) {
    return obkey::KeyLoop<sizeof(ObDateTime)>(
        len1, p1, len2, p2, count, status,
        [options](const uint8_t* a, const uint8_t* b) {
          return ReadValue<ObDateTime>(a).Compare(ReadValue<ObDateTime>(b),
                                                  options);
        });
  }
  // Exact keys order field by field as signed values; otherwise the date
  // and time comparators apply their unspecified-component rules.
  const bool exact = (options & 0x10) != 0;
  return obkey::KeyLoop<kDateTimeStored>(
      len1, p1, len2, p2, count, status,
      [fmt, exact, options](const uint8_t* a, const uint8_t* b) {
        int32_t st = 0;
        if (exact) {
          if (int32_t r = ShortCompare(fmt, 0, a, 0, b, options, 1, st))
            return r;
          return CharCompare(fmt, 0, a + 2, 0, b + 2, options, 5, st);
        }
        if (int32_t r = ObDateCompare(fmt, 0, a, 0, b, options, 1, st))
          return r;
        return ObTimeCompare(fmt, 0, a + kDateStored, 0, b + kDateStored,
                             options, 1, st);
      });
}

namespace obdaterow {

uint32_t DateTimeStore(void* dest, const void* src, uint8_t format,
                       uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const ObDateTime v = ReadValue<ObDateTime>(s + i * sizeof(ObDateTime));
    uint8_t* out = d + i * kDateTimeStored;
    DateStore(out, &v.date, format, 1);
    TimeStore(out + kDateStored, &v.time, format, 1);
  }
  return kDateTimeStored * count;
}

uint32_t DateTimeLoad(void* dest, const void* src, uint8_t format,
                      uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* in = s + i * kDateTimeStored;
    ObDateTime v = ObDateTime::Null();
    DateLoad(&v.date, in, format, 1);
    TimeStore(&v.time, in + kDateStored, format, 1);
    std::memcpy(d + i * sizeof(ObDateTime), &v, sizeof v);
  }
  return kDateTimeStored * count;
}

uint32_t DateTimeHash(uint8_t format, uint32_t len, const void* value,
                      uint32_t count, int32_t& status) {
  const uint8_t fmt = format & kObFormatMask;
  auto fold = [fmt](const uint8_t* p) {
    const int16_t y = fmt == kObFormatMemory ? obkey::ReadNative<int16_t>(p)
                                             : StoredYear(p, fmt);
    const uint8_t* t = p + kDateStored;
    return DateTerm(y, static_cast<int8_t>(p[2]), static_cast<int8_t>(p[3])) ^
           DateTerm(static_cast<int8_t>(t[0]), static_cast<int8_t>(t[1]),
                    static_cast<int8_t>(t[2]));
  };
  if (fmt == kObFormatMemory)
    return obhash::HashLoop<sizeof(ObDateTime)>(len, value, count, status,
                                                fold);
  return obhash::HashLoop<kDateTimeStored>(len, value, count, status, fold);
}

// Date-times count by seconds from the lowest date's midnight.
int32_t DateTimeStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return StepValue<ObDateTime>(value, format, kind,
                               ObDateTime(kLowestDate, ObTime(0, 0, 0)),
                               [](ObDateTime& v) { v.AddSeconds(1); });
}

void DateTimeAssign(void* dest, const void* src, uint32_t count,
                    int32_t sameSource) {
  ObDateTime* d = static_cast<ObDateTime*>(dest);
  const ObDateTime* s = static_cast<const ObDateTime*>(src);
  for (uint32_t i = 0; i < count; ++i) d[i] = s[sameSource != 0 ? 0 : i];
}

void DateTimeCopy(void* dest, const void* src, uint32_t count,
                  int32_t sameSource) {
  ObDateTime* d = static_cast<ObDateTime*>(dest);
  const ObDateTime* s = static_cast<const ObDateTime*>(src);
  for (uint32_t i = 0; i < count; ++i)
    new (&d[i]) ObDateTime(s[sameSource != 0 ? 0 : i]);
}

}  // namespace obdaterow
