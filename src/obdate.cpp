#include "obdate.h"

#include <cstring>

#include "obbs.h"
#include "obint64.h"
#include "obkeyloop.h"
#include "obstring.h"
#include "obtyphash.h"
#include "typemgr/daterows.h"

const char* const kObDayNames[7] = {"Monday",   "Tuesday", "Wednesday",
                                    "Thursday", "Friday",  "Saturday",
                                    "Sunday"};
const char* const kObMonthNames[12] = {
    "Januar", "Februar", "March",     "April",   "May",      "June",
    "July",   "August",  "September", "October", "November", "December"};
const char kObNoDayName[] = "no day";

namespace {

// The calendar arithmetic is that of 32-bit two's complement integers:
// intermediates are formed in 64 bits and wrapped, so that no input, however
// far out of range, overflows. Divisions by positive constants are C++'s own
// truncating division, which is what ObDate::divide computes.
inline int32_t Wrap(int64_t v) {
  return static_cast<int32_t>(static_cast<uint32_t>(v));
}
inline int8_t Wrap8(int32_t v) {
  return static_cast<int8_t>(static_cast<uint8_t>(v));
}

int32_t DayNumber(int32_t y, int32_t m, int32_t d) {
  const int32_t a = (m - 14) / 12;
  return (1461 * (y + 4800 + a)) / 4 + (367 * (m - 2 - 12 * a)) / 12 -
         (3 * ((y + 4900 + a) / 100)) / 4 + d - 32075;
}

constexpr ObDate kNullDate(-32768, -128, -128);
constexpr ObTime kNullTime(-128, -128, -128);

uint16_t g_unspecifiedYear = 0xFFFE;

// A component of the search key (operand 2) that is all ones matches
// anything unless the comparison is exact.
inline int32_t StoredByteCmp(uint8_t a, uint8_t b, bool exact) {
  if (!exact && b == 0xFF) return 0;
  return obkey::Cmp3(static_cast<int8_t>(a), static_cast<int8_t>(b));
}

}  // namespace

using obdaterow::DateTerm;
using obdaterow::PutYear;
using obdaterow::ReadValue;
using obdaterow::StoredYear;

// ---- ObDate

ObDate& ObDate::Today() {
  bdate b{};
  bksgetdate(&b);
  year = b.year;
  month = b.month;
  day = b.day;
  return *this;
}

int ObDate::divide(int a, int b) const {
  if (b == 0) return 0;
  if (b == -1) return Wrap(-int64_t{a});
  return a / b;
}

int ObDate::modulo(int a, int b) const {
  if (b == 0) return 0;
  const uint32_t ua = a < 0 ? 0u - static_cast<uint32_t>(a) : uint32_t(a);
  const uint32_t ub = b < 0 ? 0u - static_cast<uint32_t>(b) : uint32_t(b);
  const int32_t r = static_cast<int32_t>(ua % ub);  // below 2^31
  return (a < 0) != (b < 0) ? -r : r;
}

int ObDate::dayabs() const { return DayNumber(year, month, day); }

ObDate& ObDate::dateabs(int j) {
  int32_t l = Wrap(int64_t{j} + 68569);
  const int32_t n = Wrap(int64_t{4} * l) / 146097;
  l = Wrap(l - int64_t{Wrap(int64_t{146097} * n + 3) / 4});
  const int32_t i = Wrap(int64_t{4000} * Wrap(int64_t{l} + 1)) / 1461001;
  l = Wrap(l - int64_t{Wrap(int64_t{1461} * i) / 4} + 31);
  const int32_t k = Wrap(int64_t{80} * l) / 2447;
  day = Wrap8(Wrap(l - int64_t{Wrap(int64_t{2447} * k) / 80}));
  l = k / 11;
  // The month takes its 8 bits before the year is corrected; the year is
  // formed in 16 bits.
  month = Wrap8(Wrap(int64_t{k} + 2 - int64_t{12} * l));
  year = static_cast<int16_t>(
      static_cast<uint16_t>(Wrap(int64_t{100} * (int64_t{n} - 49) + i + l)));
  return *this;
}

int ObDate::daynxtmonth() const {
  const int8_t next = Wrap8(month + 1);
  return DayNumber(year, next, 1) - dayabs();
}

int ObDate::IsDate() const {
  return day >= 1 && day <= 31 && month >= 1 && month <= 12 &&
         daynxtmonth() > 0;
}

ObDaysOfTheWeek ObDate::GetDayOfTheDate() const {
  const int32_t mm = (month + 10) - 12 * ((month + 10) / 13);
  const int32_t y = year + (month - 14) / 12;
  const int32_t c = y / 100;
  const int32_t yy = y - 100 * c;
  const int32_t w =
      day + (13 * mm - 1) / 5 + (5 * yy) / 4 + y / 400 - 2 * c + 77;
  const int32_t r = w % 7;
  if (r >= 1 && r <= 6) return static_cast<ObDaysOfTheWeek>(r - 1);
  return ObSunday;
}

ObString ObDate::PrintDayOfTheDate() const {
  const int d = GetDayOfTheDate();
  return ObString(d >= 0 && d <= 6 ? kObDayNames[d] : kObNoDayName);
}

ObString ObDate::PrintDayOfTheDate() {
  return ObString(static_cast<int>(GetDayOfTheDate()));
}

int ObDate::Compare(const ObDate& o, unsigned short options) const {
  const bool wild = (options & 0x10) == 0;
  if (!(wild && (year == -1 || o.year == -1)) && year != o.year)
    return year - o.year;
  if (!(wild && (month == -1 || o.month == -1)) && month != o.month)
    return month - o.month;
  if (!(wild && (day == -1 || o.day == -1)) && day != o.day) return day - o.day;
  return 0;
}

ObDate ObDate::operator+(int days) const {
  ObDate r(*this);
  return r += days;
}
ObDate ObDate::operator-(int days) const {
  ObDate r(*this);
  return r -= days;
}
ObDate& ObDate::operator+=(int days) {
  return dateabs(Wrap(int64_t{dayabs()} + days));
}
ObDate& ObDate::operator-=(int days) {
  return dateabs(Wrap(int64_t{dayabs()} - days));
}
int ObDate::operator-(const ObDate& other) const {
  return Wrap(int64_t{dayabs()} - other.dayabs());
}

const ObDate& ObDate::NullValue() { return kNullDate; }
int ObDate::IsNullValue() const { return *this == kNullDate; }
int ObDate::SetNullValue() {
  if (this != &kNullDate) *this = kNullDate;
  return 0;
}

// ---- ObTime

ObTime& ObTime::SetSecondsAbs(int s) {
  const int32_t h = s / 3600;
  const int32_t m = (s - 3600 * h) / 60;
  hour = Wrap8(h);
  minute = Wrap8(m);
  second = Wrap8(s - 3600 * h - 60 * m);
  return *this;
}

ObTime& ObTime::Now() {
  btime t{};
  bksgettime(&t);
  hour = static_cast<int8_t>(t.hour);
  minute = static_cast<int8_t>(t.minute);
  second = static_cast<int8_t>(t.second);
  return *this;
}

ObTime& ObTime::NowUTC() {
  btime t{};
  bdate d{};
  bksgetsystemtime(&t, &d);
  hour = static_cast<int8_t>(t.hour);
  minute = static_cast<int8_t>(t.minute);
  second = static_cast<int8_t>(t.second);
  return *this;
}

int ObTime::Compare(const ObTime& o, unsigned short options) const {
  const bool wild = (options & 0x10) == 0;
  if (!(wild && (hour == -1 || o.hour == -1)) && hour != o.hour)
    return hour - o.hour;
  if (!(wild && (minute == -1 || o.minute == -1)) && minute != o.minute)
    return minute - o.minute;
  if (!(wild && (second == -1 || o.second == -1)) && second != o.second)
    return second - o.second;
  return 0;
}

ObTime ObTime::operator+(int n) const {
  const int32_t s = n % 60;
  const int32_t q = n / 60;
  const int32_t h = q / 60;
  const int32_t mm = q - 60 * h;
  ObTime t(*this);
  t.second = Wrap8(t.second + s);
  t.minute = Wrap8(t.minute + mm);
  t.hour = Wrap8(t.hour + h);
  if (t.second >= 60) {
    t.second = Wrap8(t.second - 60);
    t.minute = Wrap8(t.minute + 1);
  } else if (t.second < 0) {
    t.second = Wrap8(t.second + 60);
    t.minute = Wrap8(t.minute - 1);
  }
  if (t.minute >= 60) {
    t.minute = Wrap8(t.minute - 60);
    t.hour = Wrap8(t.hour + 1);
  } else if (t.minute < 0) {
    t.minute = Wrap8(t.minute + 60);
    t.hour = Wrap8(t.hour - 1);
  }
  // A negative hour of exactly -24k lands on 24, not 0: callers rely on it.
  if (t.hour >= 24)
    t.hour = Wrap8(t.hour - 24 * (t.hour / 24));
  else if (t.hour < 0)
    t.hour = Wrap8(t.hour + 24 * (1 - t.hour / 24));
  return t;
}

ObTime ObTime::operator-(int n) const { return *this + Wrap(-int64_t{n}); }
ObTime ObTime::operator-(const ObTime& other) const {
  return *this + -static_cast<int>(other);
}

int ObTime::ToLocalTime() {
  const int32_t z = bksgettimezone();
  if (z == kObZoneUnknown) return kObZoneUnknown;
  *this += Wrap(int64_t{z} * 60);
  return 0;
}

int ObTime::ToUTCTime() {
  const int32_t z = bksgettimezone();
  if (z == kObZoneUnknown) return kObZoneUnknown;
  *this += Wrap(-int64_t{z} * 60);
  return 0;
}

const ObTime& ObTime::NullValue() { return kNullTime; }
int ObTime::IsNullValue() const { return *this == kNullTime; }
int ObTime::SetNullValue() {
  if (this != &kNullTime) *this = kNullTime;
  return 0;
}

// ---- Clock

int GetSystemTimeInMSSinceTheEpoch(ObInt64& ms) {
  ms = ObInt64();
  bdate d{};
  btime t{};
  int32_t ns = 0;
  bksGetHiresTimeUTC(d, t, ns);
  constexpr int32_t kEpochDay = 2440588;  // 1970-01-01
  const int64_t days = ObDate(d.year, d.month, d.day).dayabs() - kEpochDay;
  const int64_t seconds =
      days * 86400 + int64_t{t.hour} * 3600 + t.minute * 60 + t.second;
  ms = ObInt64(seconds) * ObInt64(1000) + ObInt64(ns / 1000000);
  return 0;
}

// ---- Key order

int32_t ObDateCompare(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint16_t options,
                      uint32_t count, int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  if (fmt == kObFormatMemory) {
    return obkey::KeyLoop<obdaterow::kDateStored>(
        len1, p1, len2, p2, count, status,
        [options](const uint8_t* a, const uint8_t* b) {
          return ReadValue<ObDate>(a).Compare(ReadValue<ObDate>(b), options);
        });
  }
  obdaterow::UnspecifiedYear(fmt);
  const bool exact = (options & 0x10) != 0;
  return obkey::KeyLoop<obdaterow::kDateStored>(
      len1, p1, len2, p2, count, status,
      [fmt, exact](const uint8_t* a, const uint8_t* b) {
        const int16_t ya = StoredYear(a, fmt), yb = StoredYear(b, fmt);
        if (ya != yb && (exact || yb != -1)) return obkey::Cmp3(ya, yb);
        if (int32_t r = StoredByteCmp(a[2], b[2], exact)) return r;
        return StoredByteCmp(a[3], b[3], exact);
      });
}

int32_t ObTimeCompare(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint16_t options,
                      uint32_t count, int32_t& status) {
  if ((flags & kObFormatMask) == kObFormatMemory) {
    return obkey::KeyLoop<obdaterow::kTimeStored>(
        len1, p1, len2, p2, count, status,
        [options](const uint8_t* a, const uint8_t* b) {
          return ReadValue<ObTime>(a).Compare(ReadValue<ObTime>(b), options);
        });
  }
  const bool exact = (options & 0x10) != 0;
  return obkey::KeyLoop<obdaterow::kTimeStored>(
      len1, p1, len2, p2, count, status,
      [exact](const uint8_t* a, const uint8_t* b) {
        for (int i = 0; i < 3; ++i)
          if (int32_t r = StoredByteCmp(a[i], b[i], exact)) return r;
        return 0;
      });
}

// ---- Catalogue rows

namespace obdaterow {

const uint16_t* UnspecifiedYear(uint8_t format) {
  // Every thread writes the same value; the atomic store keeps that a
  // defined operation.
  if ((format & kObFormatMask) != kObFormatMemory &&
      __atomic_load_n(&g_unspecifiedYear, __ATOMIC_RELAXED) != 0xFFFF)
    __atomic_store_n(&g_unspecifiedYear, uint16_t{0xFFFF}, __ATOMIC_RELAXED);
  return &g_unspecifiedYear;
}

uint32_t DateStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  const uint8_t fmt = format & kObFormatMask;
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const ObDate v = ReadValue<ObDate>(s + i * sizeof(ObDate));
    uint8_t* out = d + i * kDateStored;
    PutYear(out, v.year, fmt);
    out[2] = static_cast<uint8_t>(v.month);
    out[3] = static_cast<uint8_t>(v.day);
  }
  return kDateStored * count;
}

uint32_t DateLoad(void* dest, const void* src, uint8_t format, uint32_t count) {
  const uint8_t fmt = format & kObFormatMask;
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* in = s + i * kDateStored;
    const ObDate v(StoredYear(in, fmt), static_cast<int8_t>(in[2]),
                   static_cast<int8_t>(in[3]));
    std::memcpy(d + i * sizeof(ObDate), &v, sizeof v);
  }
  return kDateStored * count;
}

uint32_t DateHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status) {
  const uint8_t fmt = format & kObFormatMask;
  return obhash::HashLoop<kDateStored>(
      len, value, count, status, [fmt](const uint8_t* p) {
        const int16_t y = fmt == kObFormatMemory ? obkey::ReadNative<int16_t>(p)
                                                 : StoredYear(p, fmt);
        return DateTerm(y, static_cast<int8_t>(p[2]),
                        static_cast<int8_t>(p[3]));
      });
}

// Dates count by days from the lowest date that converts back exactly.
int32_t DateStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return StepValue<ObDate>(value, format, kind, kLowestDate,
                           [](ObDate& v) { ++v; });
}

// Three bytes in memory and in every stored format.
uint32_t TimeStore(void* dest, const void* src, uint8_t, uint32_t count) {
  if (count != 0 && dest != src)
    std::memmove(dest, src, size_t{count} * kTimeStored);
  return kTimeStored * count;
}

// Folded as the time half of a date-time.
uint32_t TimeHash(uint8_t, uint32_t len, const void* value, uint32_t count,
                  int32_t& status) {
  return obhash::HashLoop<kTimeStored>(
      len, value, count, status, [](const uint8_t* p) {
        return DateTerm(static_cast<int8_t>(p[0]), static_cast<int8_t>(p[1]),
                        static_cast<int8_t>(p[2]));
      });
}

// Times count by seconds from midnight; 23:59:59 is the last.
int32_t TimeStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return StepValue<ObTime>(value, format, kind, ObTime(0, 0, 0),
                           [](ObTime& v) { ++v; });
}

}  // namespace obdaterow
