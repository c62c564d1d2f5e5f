#include "obdatetimen.h"

#include <cmath>
#include <cstring>

#include "obbs.h"
#include "obkeyloop.h"
#include "obtyphash.h"
#include "typemgr/spanrows.h"

using obdaterow::DateTerm;
using obdaterow::kDateStored;
using obdaterow::kDateTimeStored;
using obdaterow::ReadValue;
using obdaterow::StoredYear;

struct ObNanoConstants {
  static constexpr ObDateTimeN kNullDateTime{-32768, -128, -128, -128,
                                             -128,   -128, 0};
  static constexpr ObDateTimeN kZeroDateTime{0, 0, 0, 0, 0, 0, 0};
  static constexpr ObTimeSpan kNullSpan{-32768, -128};
};

namespace {

constexpr int32_t kDayZeroNumber = 1721060;  // 0000-01-01
constexpr int64_t kNanoPerSecond = 1000000000;

inline int64_t Wrap64(uint64_t v) {
  int64_t r;
  std::memcpy(&r, &v, sizeof r);
  return r;
}
inline int64_t Add64(int64_t a, int64_t b) {
  return Wrap64(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
inline int64_t Mul64(int64_t a, int64_t b) {
  return Wrap64(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}
inline int32_t Wrap(int64_t v) {
  return static_cast<int32_t>(static_cast<uint32_t>(v));
}
inline int8_t Wrap8(int64_t v) {
  return static_cast<int8_t>(static_cast<uint8_t>(v));
}
inline int16_t Wrap16(int64_t v) {
  return static_cast<int16_t>(static_cast<uint16_t>(v));
}

// Truncating division whose remainder is then moved into [0, base).
template <class T>
inline T FloorSplit(T x, T base, T& rest) {
  T q = x / base;
  T r = x - q * base;
  if (r < 0) {
    r += base;
    --q;
  }
  rest = r;
  return q;
}

// trunc(s * 1e9) as a 64-bit count; saturates instead of overflowing.
int64_t NanosOf(double s) {
  const double x = std::trunc(s * 1e9);
  if (std::isnan(x)) return 0;
  if (x >= 9223372036854775807.0) return INT64_MAX;
  if (x <= -9223372036854775808.0) return INT64_MIN;
  return static_cast<int64_t>(x);
}

}  // namespace

// ---- Shared fields and carry chain

int32_t ObNanoValue::TotalDays(Mode m) const {
  if (m == kDateTimeMode) return Wrap(int64_t{date.dayabs()} - kDayZeroNumber);
  return (date.month + 12 * date.year) * 30 + date.day;
}

int64_t ObNanoValue::TotalSeconds(Mode m) const {
  return Add64(Mul64(TotalDays(m), 86400), static_cast<int>(time));
}

double ObNanoValue::TotalSecondsF(Mode m) const {
  return static_cast<double>(TotalSeconds(m)) + nanoseconds / 1e9;
}

int64_t ObNanoValue::TotalNanoSeconds(Mode m) const {
  return Add64(Mul64(TotalSeconds(m), kNanoPerSecond), nanoseconds);
}

int ObNanoValue::IsNullValue() const {
  return DateTime().IsNullValue() && nanoseconds == 0;
}

int ObNanoValue::SetNullValue() {
  date = ObDate::NullValue();
  time = ObTime::NullValue();
  nanoseconds = 0;
  return 0;
}

void ObNanoValue::Clear(Mode m) {
  date = ObDate(0, 0, 0);
  if (m == kDateTimeMode) date = ObDate(0, 1, 1);
  time = ObTime(0, 0, 0);
  nanoseconds = 0;
}

// The nanosecond step always stores its field; the steps above it do
// nothing for a zero amount.
void ObNanoValue::CarryNanoSeconds(int64_t n, Mode m) {
  int64_t r;
  const int64_t q = FloorSplit(Add64(nanoseconds, n), kNanoPerSecond, r);
  nanoseconds = static_cast<int32_t>(r);
  if (q != 0) CarrySeconds(q, m);
}

void ObNanoValue::CarrySeconds(int64_t n, Mode m) {
  if (n == 0) return;
  int64_t r;
  const int64_t q = FloorSplit(Add64(time.second, n), int64_t{60}, r);
  time.second = Wrap8(r);
  // Minutes count in 32 bits: a larger carry is cut.
  if (q != 0) CarryMinutes(Wrap(q), m);
}

void ObNanoValue::CarryMinutes(int32_t n, Mode m) {
  if (n == 0) return;
  int32_t r;
  const int32_t q = FloorSplit(Wrap(int64_t{time.minute} + n), 60, r);
  time.minute = Wrap8(r);
  if (q != 0) CarryHours(q, m);
}

void ObNanoValue::CarryHours(int32_t n, Mode m) {
  if (n == 0) return;
  int32_t r;
  const int32_t q = FloorSplit(Wrap(int64_t{time.hour} + n), 24, r);
  time.hour = Wrap8(r);
  if (q != 0) CarryDays(q, m);
}

void ObNanoValue::CarryDays(int32_t n, Mode m) {
  if (n == 0) return;
  if (m == kDateTimeMode && date.IsDate()) {
    if (n > 0)
      date += n;
    else
      date -= Wrap(-int64_t{n});
    return;
  }
  // Span arithmetic: borrow only from a non-zero higher unit or carry.
  const int32_t x = Wrap(int64_t{date.day} + n);
  int32_t q = x / 30;
  int32_t r = x - 30 * q;
  if (r < 0 && !(q == 0 && date.month == 0 && date.year == 0)) {
    r += 30;
    --q;
  }
  date.day = Wrap8(r);
  if (q == 0) return;
  const int32_t x2 = Wrap(int64_t{date.month} + q);
  int32_t q2 = x2 / 12;
  int32_t r2 = x2 - 12 * q2;
  if (r2 < 0 && !(q2 == 0 && date.year == 0)) {
    r2 += 12;
    --q2;
  }
  date.month = Wrap8(r2);
  if (q2 == 0) return;
  const int64_t y = int64_t{date.year} + q2;
  date.year = static_cast<int16_t>(y < -32768 ? -32768 : y > 32767 ? 32767 : y);
}

int ObNanoValue::CompareNano(const ObNanoValue& o,
                             unsigned short options) const {
  if (int r = DateTime().Compare(o.DateTime(), options)) return r;
  if ((options & 0x10) == 0 && (nanoseconds == -1 || o.nanoseconds == -1))
    return 0;
  if (nanoseconds == o.nanoseconds) return 0;
  return Wrap(int64_t{nanoseconds} - o.nanoseconds) < 1 ? -1 : 1;
}

// ---- ObDateTimeN

const ObDateTimeN& ObDateTimeN::NullValue() {
  return ObNanoConstants::kNullDateTime;
}
const ObDateTimeN& ObDateTimeN::ClearValue() {
  return ObNanoConstants::kZeroDateTime;
}

ObDateTimeN& ObDateTimeN::SetZero() {
  Clear(kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::SetTotalDays(int n) {
  Clear(kDateTimeMode);
  CarryDays(n, kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::SetTotalSeconds(int64_t n) {
  Clear(kDateTimeMode);
  CarrySeconds(n, kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::SetTotalSeconds(double s) {
  Clear(kDateTimeMode);
  if (s != 0.0) CarryNanoSeconds(NanosOf(s), kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::SetTotalNanoSeconds(int64_t n) {
  Clear(kDateTimeMode);
  CarryNanoSeconds(n, kDateTimeMode);
  return *this;
}

ObDateTimeN& ObDateTimeN::AddDays(int n) {
  CarryDays(n, kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::AddHours(int n) {
  CarryHours(n, kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::AddMinutes(int n) {
  CarryMinutes(n, kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::AddSeconds(int64_t n) {
  CarrySeconds(n, kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::AddSeconds(double s) {
  if (s != 0.0) CarryNanoSeconds(NanosOf(s), kDateTimeMode);
  return *this;
}
ObDateTimeN& ObDateTimeN::AddNanoSeconds(int64_t n) {
  CarryNanoSeconds(n, kDateTimeMode);
  return *this;
}

namespace {

template <class Read>
ObDateTimeN ReadClock(Read read) {
  bdate d{};
  btime t{};
  int32_t ns = 0;
  read(d, t, ns);
  return ObDateTimeN(d.year, d.month, d.day, static_cast<int8_t>(t.hour),
                     static_cast<int8_t>(t.minute),
                     static_cast<int8_t>(t.second), ns);
}

}  // namespace

ObDateTimeN& ObDateTimeN::Now() { return *this = ReadClock(bksGetHiresTime); }
ObDateTimeN& ObDateTimeN::NowUTC() {
  return *this = ReadClock(bksGetHiresTimeUTC);
}

int ObDateTimeN::ToLocalTime() {
  const int32_t z = bksgettimezone();
  if (z == kObZoneUnknown) return kObZoneUnknown;
  CarryMinutes(z, kDateTimeMode);
  return 0;
}

int ObDateTimeN::ToUTCTime() {
  const int32_t z = bksgettimezone();
  if (z == kObZoneUnknown) return kObZoneUnknown;
  CarryMinutes(Wrap(-int64_t{z}), kDateTimeMode);
  return 0;
}

// ---- ObTimeSpan

const ObTimeSpan& ObTimeSpan::NullValue() { return ObNanoConstants::kNullSpan; }

ObTimeSpan::ObTimeSpan(int years, int months, int days, int hours, int minutes,
                       int seconds, int ns)
    : ObNanoValue(Wrap16(years), Wrap8(months), Wrap8(days), Wrap8(hours),
                  Wrap8(minutes), Wrap8(seconds), ns) {}

ObTimeSpan::ObTimeSpan(int days, int hours, int minutes, int seconds, int ns)
    : ObTimeSpan(0, 0, 0, hours, minutes, seconds, ns) {
  CarryDays(days, kSpanMode);
}

ObTimeSpan::ObTimeSpan(double seconds) : ObTimeSpan(0, 0, 0, 0, 0, 0, 0) {
  if (seconds != 0.0) CarryNanoSeconds(NanosOf(seconds), kSpanMode);
}

ObTimeSpan& ObTimeSpan::SetZero() {
  Clear(kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetTotalDays(int n) {
  Clear(kSpanMode);
  CarryDays(n, kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetTotalSeconds(int64_t n) {
  Clear(kSpanMode);
  CarrySeconds(n, kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetTotalSeconds(double s) {
  Clear(kSpanMode);
  if (s != 0.0) CarryNanoSeconds(NanosOf(s), kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetTotalNanoSeconds(int64_t n) {
  Clear(kSpanMode);
  CarryNanoSeconds(n, kSpanMode);
  return *this;
}

ObTimeSpan& ObTimeSpan::AddDays(int n) {
  CarryDays(n, kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::AddHours(int n) {
  CarryHours(n, kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::AddMinutes(int n) {
  CarryMinutes(n, kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::AddSeconds(int64_t n) {
  CarrySeconds(n, kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::AddSeconds(double s) {
  if (s != 0.0) CarryNanoSeconds(NanosOf(s), kSpanMode);
  return *this;
}
ObTimeSpan& ObTimeSpan::AddNanoSeconds(int64_t n) {
  CarryNanoSeconds(n, kSpanMode);
  return *this;
}

ObTimeSpan& ObTimeSpan::SetYears(int n) {
  date.year = Wrap16(n);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetMonths(int n) {
  date.month = Wrap8(n);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetDays(int n) {
  date.day = Wrap8(n);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetHours(int n) {
  time.hour = Wrap8(n);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetMinutes(int n) {
  time.minute = Wrap8(n);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetSeconds(int n) {
  time.second = Wrap8(n);
  return *this;
}
ObTimeSpan& ObTimeSpan::SetNanoSeconds(int n) {
  nanoseconds = n;
  return *this;
}

ObTimeSpan ObTimeSpan::Difference(const ObTimeSpan& a, const ObTimeSpan& b) {
  ObTimeSpan x(a), y(b);
  if (x.IsNullValue()) x = ObTimeSpan(0, 0, 0, 0, 0, 0, 0);
  if (y.IsNullValue()) y = ObTimeSpan(0, 0, 0, 0, 0, 0, 0);
  int c = x.DateTime().Compare(y.DateTime(), 0xFFFF);
  if (c == 0) c = obkey::Cmp3(x.nanoseconds, y.nanoseconds);
  ObTimeSpan& h = c < 0 ? y : x;
  ObTimeSpan& l = c < 0 ? x : y;
  int32_t days = h.date - l.date;
  if (h.nanoseconds < l.nanoseconds) {
    h.nanoseconds = Wrap(int64_t{h.nanoseconds} + kNanoPerSecond);
    ++l.time;
  }
  if (h.time < l.time && days >= 1) {
    --days;
    h.time.hour = Wrap8(h.time.hour + 24);
  }
  const ObTime t = h.time - l.time;
  // Days split into 30-day months and 12-month years, each in 8 bits.
  const int32_t q = days / 30;
  return ObTimeSpan(Wrap8(q / 12), Wrap8(q - 12 * (q / 12)),
                    Wrap8(days - 30 * q), t.hour, t.minute, t.second,
                    Wrap(int64_t{h.nanoseconds} - l.nanoseconds));
}

ObTimeSpan ObTimeSpan::Difference(const ObDateTimeN& a, const ObDateTimeN& b) {
  auto span = [](const ObDateTimeN& v) {
    return ObTimeSpan(v.date.year, v.date.month, v.date.day, v.time.hour,
                      v.time.minute, v.time.second, v.nanoseconds);
  };
  return Difference(span(a), span(b));
}

// ---- Key order

namespace {

constexpr uint32_t kNanoOffset = kDateTimeStored;  // in stored form

template <class C>
int32_t NanoCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t options, uint32_t count,
                    int32_t& status) {
  const uint8_t fmt = flags & kObFormatMask;
  if (fmt == kObFormatMemory) {
    return obkey::KeyLoop<sizeof(C)>(
        len1, p1, len2, p2, count, status,
        [options](const uint8_t* a, const uint8_t* b) {
          return ReadValue<C>(a).Compare(ReadValue<C>(b), options);
        });
  }
  const int32_t* unspecified = obspanrow::UnspecifiedNanoseconds(fmt);
  const bool exact = (options & 0x10) != 0;
  return obkey::KeyLoop<obspanrow::kNanoStored>(
      len1, p1, len2, p2, count, status,
      [fmt, exact, options, unspecified](const uint8_t* a, const uint8_t* b) {
        int32_t st = 0;
        const uint8_t* na = a + kNanoOffset;
        const uint8_t* nb = b + kNanoOffset;
        if (exact) {
          if (int32_t r = ShortCompare(fmt, 0, a, 0, b, options, 1, st))
            return r;
          if (int32_t r = CharCompare(fmt, 0, a + 2, 0, b + 2, options, 5, st))
            return r;
          return LongCompare(fmt, 0, na, 0, nb, options, 1, st);
        }
        if (int32_t r = ObDateTimeCompare(fmt, 0, a, 0, b, options, 1, st))
          return r;
        // Only the search key (operand 2) may leave its nanoseconds open.
        if (LongCompare(fmt, 0, nb, 0, unspecified, options, 1, st) == 0)
          return 0;
        return LongCompare(fmt, 0, na, 0, nb, options, 1, st);
      });
}

}  // namespace

int32_t ObDateTimeNCompare(uint8_t flags, uint32_t len1, const void* p1,
                           uint32_t len2, const void* p2, uint16_t options,
                           uint32_t count, int32_t& status) {
  return NanoCompare<ObDateTimeN>(flags, len1, p1, len2, p2, options, count,
                                  status);
}

int32_t ObTimeSpanCompare(uint8_t flags, uint32_t len1, const void* p1,
                          uint32_t len2, const void* p2, uint16_t options,
                          uint32_t count, int32_t& status) {
  return NanoCompare<ObTimeSpan>(flags, len1, p1, len2, p2, options, count,
                                 status);
}

// ---- Catalogue operations

namespace obspanrow {

namespace {
uint32_t g_unspecifiedNanos = 0xFFFFFFFEu;
}  // namespace

const int32_t* UnspecifiedNanoseconds(uint8_t format) {
  // Every thread writes the same value; the atomic store keeps that a
  // defined operation.
  if ((format & kObFormatMask) != kObFormatMemory &&
      __atomic_load_n(&g_unspecifiedNanos, __ATOMIC_RELAXED) != 0xFFFFFFFFu)
    __atomic_store_n(&g_unspecifiedNanos, 0xFFFFFFFFu, __ATOMIC_RELAXED);
  return reinterpret_cast<const int32_t*>(&g_unspecifiedNanos);
}

// Both classes share the layout of ObNanoValue: the first eight bytes are
// an ObDateTime, the nanoseconds follow at offset 8.
uint32_t NanoStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* in = s + i * sizeof(ObDateTimeN);
    uint8_t* out = d + i * kNanoStored;
    obdaterow::DateTimeStore(out, in, format, 1);
    LongStoreOne(out + kNanoOffset, in + sizeof(ObDateTime), format);
  }
  return kNanoStored * count;
}

uint32_t NanoLoad(void* dest, const void* src, uint8_t format, uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const uint8_t* s = static_cast<const uint8_t*>(src);
  for (uint32_t i = 0; i < count; ++i) {
    const uint8_t* in = s + i * kNanoStored;
    uint8_t* out = d + i * sizeof(ObDateTimeN);
    obdaterow::DateTimeLoad(out, in, format, 1);
    LongStoreOne(out + sizeof(ObDateTime), in + kNanoOffset, format);
  }
  return kNanoStored * count;
}

uint32_t NanoHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status) {
  const uint8_t fmt = format & kObFormatMask;
  const bool mem = fmt == kObFormatMemory;
  auto fold = [fmt, mem](const uint8_t* p) {
    const int16_t y = mem ? obkey::ReadNative<int16_t>(p) : StoredYear(p, fmt);
    const uint8_t* t = p + kDateStored;
    int32_t ns;
    if (mem)
      ns = obkey::ReadNative<int32_t>(p + sizeof(ObDateTime));
    else
      LongStoreOne(&ns, p + kNanoOffset, fmt);
    return DateTerm(y, static_cast<int8_t>(p[2]), static_cast<int8_t>(p[3])) ^
           DateTerm(static_cast<int8_t>(t[0]), static_cast<int8_t>(t[1]),
                    static_cast<int8_t>(t[2])) ^
           static_cast<uint32_t>(ns);
  };
  if (mem)
    return obhash::HashLoop<sizeof(ObDateTimeN)>(len, value, count, status,
                                                 fold);
  return obhash::HashLoop<kNanoStored>(len, value, count, status, fold);
}

// Counters advance by the types' resolution, one nanosecond: date-times
// from the lowest date's midnight, spans from zero.
int32_t DateTimeNStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return obdaterow::StepValue<ObDateTimeN>(
      value, format, kind, ObDateTimeN(obdaterow::kLowestDate),
      [](ObDateTimeN& v) { v.AddNanoSeconds(1); });
}

int32_t TimeSpanStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  return obdaterow::StepValue<ObTimeSpan>(
      value, format, kind, ObTimeSpan(0, 0, 0, 0, 0, 0, 0),
      [](ObTimeSpan& v) { v.AddNanoSeconds(1); });
}

}  // namespace obspanrow
