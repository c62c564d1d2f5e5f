// d_Date, d_Time, d_Timestamp, d_Interval and their catalogue rows.
#include <climits>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

std::string Str(const d_Date& d) {
  return std::to_string(d.year()) + "-" + std::to_string(d.month()) + "-" +
         std::to_string(d.day());
}
std::string Str(const d_Time& t) {
  return std::to_string(t.tz_hour()) + "/" + std::to_string(t.tz_minute()) +
         " " + std::to_string(t.hour()) + ":" + std::to_string(t.minute()) +
         ":" + std::to_string(t.second()) + "." +
         std::to_string(t.hundredths());
}
std::string Str(const d_Timestamp& v) {
  return Str(v.date()) + "T" + Str(v.time());
}
d_Time T(int h, int m, int s, int hs = 0, int tzh = 0, int tzm = 0) {
  return d_Time::FromFields(static_cast<int8_t>(tzh), static_cast<int8_t>(tzm),
                            static_cast<int8_t>(h), static_cast<int8_t>(m),
                            static_cast<uint8_t>(s), static_cast<uint8_t>(hs));
}
bool Same(const d_Date& a, const d_Date& b) { return Str(a) == Str(b); }
bool Same(const d_Time& a, const d_Time& b) { return Str(a) == Str(b); }

// Every test leaves the default zone, clock and local zone as it found them.
class StdTime : public ::testing::Test {
 protected:
  void TearDown() override {
    d_Time::set_default_Time_Zone(GMT);
    bksReleaseClock();
    bksReleaseTimeZone();
  }
};

// Day numbers against an independent Julian/Gregorian calendar.
TEST(d_Date, HistoricalCalendarTable) {
  std::ifstream in(QS_TEST_DATA_DIR "/stdcalendar.txt");
  ASSERT_TRUE(in.good());
  std::string line;
  int rows = 0;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream f(line);
    int y, m, d, dn;
    f >> y >> m >> d >> dn;
    const d_Date date(static_cast<int16_t>(y), static_cast<uint8_t>(m),
                      static_cast<uint8_t>(d));
    SCOPED_TRACE(line);
    EXPECT_EQ(date.DayNumber(), dn);
    EXPECT_TRUE(Same(d_Date::FromDayNumber(dn), date));
    ++rows;
  }
  EXPECT_GT(rows, 1000);
}

TEST(d_Date, Members) {
  struct Case {
    d_Date date;
    int32_t dayNumber;
    int weekday;
    int dayOfYear;
    int daysInMonth;
  };
  const Case kCases[] = {
      {{2000, 1, 1}, 2451544, 6, 1, 31},
      {{1970, 1, 1}, 2440587, 4, 1, 31},
      {{1582, 10, 4}, 2299159, 4, 277, 31},
      {{1582, 10, 15}, 2299160, 5, 278, 31},
      {{1582, 10, 5}, 2299160, 5, 278, 31},  // dropped days: 15 to 24 Oct
      {{1582, 10, 14}, 2299169, 0, 287, 31},
      {{1582, 12, 31}, 2299237, 5, 355, 31},
      {{1500, 2, 29}, 2268991, 6, 60, 29},  // Julian leap year
      {{1700, 2, 28}, 2342030, 0, 59, 28},
      {{2024, 2, 29}, 2460369, 4, 60, 29},
      {{2024, 13, 1}, 2460676, 3, 367, 0},  // unchecked fields still count
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.date));
    EXPECT_EQ(c.date.DayNumber(), c.dayNumber);
    EXPECT_EQ(c.date.day_of_week(), c.weekday);
    EXPECT_EQ(c.date.day_of_year(), c.dayOfYear);
    EXPECT_EQ(c.date.days_in_month(), c.daysInMonth);
  }
  EXPECT_EQ(d_Date::days_in_month(1500, 2), 29);
  EXPECT_EQ(d_Date::days_in_month(1600, 2), 29);
  EXPECT_EQ(d_Date::days_in_month(1900, 2), 28);
  EXPECT_EQ(d_Date::days_in_month(2023, 0), 0);
  EXPECT_EQ(d_Date::days_in_month(2023, 4), 30);
  EXPECT_TRUE(Same(d_Date(1582, uint16_t{278}), d_Date(1582, 10, 15)));
  EXPECT_TRUE(Same(d_Date(2024, uint16_t{60}), d_Date(2024, 2, 29)));
  EXPECT_TRUE(Same(d_Date(2023, uint16_t{366}), d_Date(2024, 1, 1)));
  EXPECT_EQ(d_Date(2024, 3, 1) != d_Date(2024, 2, 28), 2);
  EXPECT_TRUE(d_Date(1582, 10, 5) == d_Date(1582, 10, 15));
}

TEST(d_Date, Moves) {
  using W = d_Date::Weekday;
  struct Case {
    d_Date from;
    int op;  // 0 next, 1 previous, 2 ++, 3 --, 4 + interval, 5 - interval
    W weekday;
    d_Interval interval;
    d_Date to;
  };
  const d_Interval none;
  const Case kCases[] = {
      {{2000, 1, 1}, 0, d_Date::Saturday, none, {2000, 1, 8}},
      {{2000, 1, 1}, 0, d_Date::Sunday, none, {2000, 1, 2}},
      {{2000, 1, 1}, 1, d_Date::Friday, none, {1999, 12, 31}},
      {{2000, 1, 1}, 1, d_Date::Saturday, none, {1999, 12, 25}},
      {{1582, 10, 4}, 2, W{}, none, {1582, 10, 15}},
      {{1582, 10, 15}, 3, W{}, none, {1582, 10, 4}},
      {{1500, 2, 28}, 2, W{}, none, {1500, 2, 29}},
      {{1700, 2, 28}, 2, W{}, none, {1700, 3, 1}},
      {{2024, 3, 1}, 4, W{}, d_Interval(0, 47, 0, 0), {2024, 3, 2}},
      {{2024, 3, 1}, 4, W{}, d_Interval(-1, -23, 0, 0), {2024, 2, 29}},
      {{2024, 3, 1}, 5, W{}, d_Interval(0, 47, 0, 0), {2024, 2, 29}},
      {{2024, 3, 1}, 4, W{}, d_Interval(0, 0, 0, 86399), {2024, 3, 1}},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.from) + " op " + std::to_string(c.op));
    d_Date d = c.from;
    switch (c.op) {
      case 0:
        d.next(c.weekday);
        break;
      case 1:
        d.previous(c.weekday);
        break;
      case 2:
        EXPECT_TRUE(Same(d++, c.from));
        break;
      case 3:
        EXPECT_TRUE(Same(d--, c.from));
        break;
      case 4:
        d = d + c.interval;
        break;
      case 5:
        d = d - c.interval;
        break;
    }
    EXPECT_TRUE(Same(d, c.to)) << Str(d);
  }
  // Extreme intervals clamp instead of overflowing.
  d_Date far(2024, 1, 1);
  far += d_Interval::FromSeconds(3e38f);
  far -= d_Interval::FromSeconds(-3e38f);
  far += d_Interval::FromSeconds(std::numeric_limits<float>::quiet_NaN());
}

TEST(d_Interval, Arithmetic) {
  struct Case {
    d_Interval value;
    float seconds;
  };
  const d_Interval a(1, 2, 3, 4.5f);
  const Case kCases[] = {
      {a, 93784.5f},
      {d_Interval(1, -2, 3, 4.5f), -93784.5f},
      {d_Interval(0, 0, 0, -0.5f), -0.5f},
      {d_Interval(0, 0, -1, 30), -90},
      {d_Interval(INT_MIN, 0, 0, 0), 0},  // the 32-bit product wraps
      {a / 0, 93784.5f},
      {a / 2, 46892.25f},
      {a * 2, 187569},
      {-2 * a, -187569},
      {-a, -93784.5f},
      {a + d_Interval(0, 0, 0, 0.5f), 93785},
      {a - a, 0},
  };
  for (size_t i = 0; i < sizeof kCases / sizeof kCases[0]; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(kCases[i].value.value(), kCases[i].seconds);
  }
}

TEST_F(StdTime, TimeConstruction) {
  struct Case {
    d_Time t;
    d_Time expected;
  };
  const Case kCases[] = {
      {d_Time(10, 30, 15.25f), T(10, 30, 15, 25)},
      {d_Time(10, 30, 0, 2, 30), T(12, 60, 0, 0, 2, 30)},
      {d_Time(2, 0, 0, -5, 0), T(-3, 0, 0, 0, -5, 0)},
      {d_Time(-1), T(23, 59, 59)},
      {d_Time(-86400), T(0, 0, 0)},
      {d_Time(90000), T(25, 0, 0)},
      {d_Time(INT_MIN), T(20, 45, 52)},
      {d_Time(ObTime(7, 8, 9)), T(7, 8, 9)},
      {d_Time(d_Timestamp(d_Date(1, 1, 1), T(1, 2, 3, 4, 5, 6))),
       T(1, 2, 3, 4, 5, 6)},
  };
  for (const Case& c : kCases) EXPECT_TRUE(Same(c.t, c.expected)) << Str(c.t);
  d_Time::set_default_Time_Zone(GMT_5);
  EXPECT_TRUE(Same(d_Time(10, 0, 0), T(5, 0, 0, 0, -5, 0)));
  EXPECT_TRUE(Same(d_Time(3600), T(-4, 0, 0, 0, -5, 0)));
  EXPECT_TRUE(Same(d_Time(ObTime(7, 8, 9)), T(2, 8, 9, 0, -5, 0)));
}

TEST_F(StdTime, ClockAndLocalZone) {
  bksFixClock(1709150400123456789);  // 2024-02-28T20:00:00.123Z
  bksFixTimeZone(270);               // local 2024-02-29T00:30
  EXPECT_TRUE(Same(d_Date::current(), d_Date(2024, 2, 29)));
  EXPECT_TRUE(Same(d_Time::current(), T(0, 30, 0)));
  d_Time::set_default_Time_Zone_to_local();
  EXPECT_EQ(d_Time::default_Time_Zone(), 4);  // 4.5 hours, truncated
  EXPECT_TRUE(Same(d_Time(), T(4, 30, 0, 0, 4, 0)));
  EXPECT_TRUE(Same(d_Timestamp::current().date(), d_Date(2024, 2, 29)));
  bksFixTimeZone(kObZoneUnknown);
  d_Time::set_default_Time_Zone(GMT3);
  d_Time::set_default_Time_Zone_to_local();
  EXPECT_EQ(d_Time::default_Time_Zone(), 3);
  bksFixTimeZone(0);
  d_Time::set_default_Time_Zone_to_local();
  EXPECT_EQ(d_Time::default_Time_Zone(), 3);  // a zero offset is ignored
}

TEST(d_Time, Arithmetic) {
  struct Case {
    d_Time t;
    d_Interval i;
    d_Time expected;
  };
  const Case kCases[] = {
      {T(23, 30, 0), d_Interval(0, 1, 0, 0), T(0, 30, 0)},
      {T(12, 0, 0, 0, 2, 0), d_Interval(0, 1, 0, 0), T(13, 0, 0, 0, 2, 0)},
      {T(0, 10, 0), d_Interval(0, 0, -20, 0), T(23, 50, 0)},
      {T(10, 0, 0, 50), d_Interval(0, 0, 0, 0.75f), T(10, 0, 1, 25)},
      {T(1, 0, 0), d_Interval(-3, 0, 0, 0), T(1, 0, 0)},
      {T(1, 0, 0), d_Interval(0, 50, 0, 0), T(3, 0, 0)},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.t));
    EXPECT_TRUE(Same(c.t + c.i, c.expected)) << Str(c.t + c.i);
    EXPECT_TRUE(Same(c.t - -c.i, c.expected));
  }
  EXPECT_EQ((T(10, 30, 15, 99) - T(9, 0, 0)).value(), 5415);
  struct Order {
    d_Time a, b;
    int sign;
  };
  const Order kOrders[] = {
      {T(12, 0, 0, 0, 2, 0), T(10, 0, 0), 0},  // same clock time
      {T(10, 0, 0, 50), T(10, 0, 0), 0},       // under a second apart
      {T(10, 0, 1), T(10, 0, 0, 50), 0},
      {T(10, 0, 2), T(10, 0, 0, 50), 1},
      {T(11, 0, 0), T(10, 59, 0), 1},
      {T(10, 59, 0, 0, 0, 30), T(10, 30, 0), -1},
  };
  for (const Order& o : kOrders) {
    SCOPED_TRACE(Str(o.a) + " vs " + Str(o.b));
    const int32_t d = o.a != o.b;
    EXPECT_EQ((d > 0) - (d < 0), o.sign);
  }
}

TEST(d_Timestamp, Arithmetic) {
  struct Case {
    d_Timestamp t;
    d_Interval i;
    d_Timestamp expected;
  };
  const Case kCases[] = {
      {{{2024, 2, 28}, T(23, 0, 0)},
       d_Interval(0, 2, 0, 0),
       {{2024, 2, 29}, T(1, 0, 0)}},
      {{{2024, 3, 1}, T(0, 30, 0)},
       d_Interval(0, -1, 0, 0),
       {{2024, 2, 29}, T(23, 30, 0)}},
      {{{1582, 10, 4}, T(12, 0, 0)},
       d_Interval(1, 0, 0, 0),
       {{1582, 10, 15}, T(12, 0, 0)}},
      {{{2024, 1, 1}, T(0, 0, 0)},
       d_Interval(-3, 0, 0, 0),
       {{2023, 12, 29}, T(0, 0, 0)}},
      {{{2023, 12, 31}, T(23, 59, 59)},
       d_Interval(0, 0, 0, 1),
       {{2024, 1, 1}, T(0, 0, 0)}},
      // The zone stays; the fields stay clock time plus zone.
      {{{2024, 1, 1}, T(25, 0, 0, 0, 2, 0)},
       d_Interval(0, 2, 0, 0),
       {{2024, 1, 2}, T(3, 0, 0, 0, 2, 0)}},
      {{{2024, 1, 1}, T(10, 0, 0)}, d_Interval(), {{2024, 1, 1}, T(10, 0, 0)}},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.t));
    const d_Timestamp r = c.t + c.i;
    EXPECT_TRUE(Same(r.date(), c.expected.date()) &&
                Same(r.time(), c.expected.time()))
        << Str(r);
  }
}

TEST(Overlaps, Periods) {
  const d_Date d1(2024, 1, 1), d5(2024, 1, 5), d10(2024, 1, 10),
      d11(2024, 1, 11), d20(2024, 1, 20), f1(2024, 2, 1);
  struct Case {
    d_Date a1, a2, b1, b2;
    int expected;
  };
  const Case kCases[] = {
      {d10, d1, d5, f1, 1},  {d10, d1, d11, d20, 0}, {d5, d10, d1, d20, 1},
      {d5, d10, d20, d1, 1}, {d1, d5, d5, d10, 1},   {d1, d5, d10, d11, 0},
      {d10, d10, d1, d5, 0},
  };
  for (const Case& c : kCases)
    EXPECT_EQ(overlaps(c.a1, c.a2, c.b1, c.b2), c.expected)
        << Str(c.a1) << " " << Str(c.a2) << " " << Str(c.b1);
  EXPECT_EQ(
      overlaps(T(9, 0, 0), T(10, 0, 0), T(11, 0, 0, 0, 2, 0), T(12, 0, 0)),
      1);  // 09:00 in zone 2
  EXPECT_EQ(overlaps(T(9, 0, 0), T(10, 0, 0), T(10, 0, 1), T(12, 0, 0)), 0);
  const d_Timestamp s1(d1, T(12, 0, 0)), s2(d1, T(13, 0, 0)),
      s3(d1, T(13, 0, 1)), s4(d5, T(0, 0, 0));
  EXPECT_EQ(overlaps(s1, s2, s3, s4), 0);
  EXPECT_EQ(overlaps(s1, s3, s2, s4), 1);
  EXPECT_EQ(overlaps(s1, s2, d1, d1), 1);
  EXPECT_EQ(overlaps(d5, d10, s1, s2), 0);
  EXPECT_EQ(overlaps(s1, s4, T(13, 0, 0), T(14, 0, 0)), 0);  // 00:00..12:00
  EXPECT_EQ(overlaps(s1, s4, T(11, 0, 0), T(14, 0, 0)), 1);
  EXPECT_EQ(overlaps(T(14, 0, 0), T(15, 0, 0), s1, s2), 0);
}

// Stored bytes, and the same key order in memory and both byte orders.
TEST(StdRows, StoredFormsAndKeyOrder) {
  ObTypeMgr mgr(5);
  uint8_t out[16];
  const d_Date date(2024, 3, 1);
  EXPECT_EQ(mgr.Store(D_DATE_T, out, &date, 2, 1), 4u);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4),
            (std::vector<uint8_t>{0x07, 0xE8, 3, 1}));
  EXPECT_EQ(mgr.Store(D_DATE_T, out, &date, 1, 1), 4u);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4),
            (std::vector<uint8_t>{0xE8, 0x07, 3, 1}));
  const d_Timestamp stamp(date, T(-3, 4, 5, 6, -7, 8));
  EXPECT_EQ(mgr.Store(D_TIMESTAMP_T, out, &stamp, 2, 1), 10u);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 10),
            (std::vector<uint8_t>{0x07, 0xE8, 3, 1, 0xF9, 8, 0xFD, 4, 5, 6}));
  d_Timestamp back;
  EXPECT_EQ(mgr.Load(D_TIMESTAMP_T, &back, out, 2, 1), 10u);
  EXPECT_TRUE(Same(back.date(), date) && Same(back.time(), stamp.time()));

  // Ascending in key order.
  const d_Timestamp kStamps[] = {
      {{1582, 10, 4}, T(23, 0, 0)},
      {{1582, 10, 5}, T(0, 0, 0)},  // the day number of 15 October
      {{1582, 10, 15}, T(0, 0, 0)},
      {{1582, 10, 15}, T(2, 0, 0, 0, 2, 0)},  // same clock, other zone
      {{1582, 10, 15}, T(0, 0, 0, 1)},
      {{1582, 10, 15}, T(9, 59, 59, 99)},
      {{1582, 10, 15}, T(10, 0, 0)},
      {{1582, 10, 15}, T(11, 0, 0, 0, 1, 0)},
      {{-4712, 1, 1}, T(0, 0, 0)},
  };
  const size_t n = sizeof kStamps / sizeof kStamps[0] - 1;
  for (size_t i = 0; i < n + 1; ++i) {
    for (size_t j = 0; j < n + 1; ++j) {
      SCOPED_TRACE(Str(kStamps[i]) + " vs " + Str(kStamps[j]));
      // The last entry has the lowest day number.
      const size_t ri = i == n ? 0 : i + 1, rj = j == n ? 0 : j + 1;
      const int expected = (ri > rj) - (ri < rj);
      for (uint8_t fmt : {8, 1, 2}) {
        uint8_t a[10], b[10];
        const void *pa = &kStamps[i], *pb = &kStamps[j];
        if (fmt != 8) {
          mgr.Store(D_TIMESTAMP_T, a, pa, fmt, 1);
          mgr.Store(D_TIMESTAMP_T, b, pb, fmt, 1);
          pa = a;
          pb = b;
        }
        const int32_t r = mgr.Cmp(D_TIMESTAMP_T, pa, pb, 0, 1, fmt);
        EXPECT_EQ((r > 0) - (r < 0), expected) << int{fmt};
        int32_t st = 0;
        if (expected == 0) {
          EXPECT_EQ(mgr.Hash(D_TIMESTAMP_T, 0, pa, 1, fmt, st),
                    mgr.Hash(D_TIMESTAMP_T, 0, &kStamps[i], 1, 8, st));
        }
      }
      const d_Date da = kStamps[i].date(), db = kStamps[j].date();
      const d_Time ta = kStamps[i].time(), tb = kStamps[j].time();
      const int32_t rd = mgr.Cmp(D_DATE_T, &da, &db, 0, 1, 8);
      if (rd != 0) {
        EXPECT_EQ(rd > 0, expected > 0);
      }
      const int32_t rt = mgr.Cmp(D_TIME_T, &ta, &tb, 0, 1, 2);
      if (rd == 0) {
        EXPECT_EQ((rt > 0) - (rt < 0), expected);
      }
    }
  }
  // d_Interval is a float throughout.
  const d_Interval iv(0, 0, 0, 1.5f);
  EXPECT_EQ(mgr.Store(D_INTERVAL_T, out, &iv, 2, 1), 4u);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4),
            (std::vector<uint8_t>{0x3F, 0xC0, 0, 0}));
  const d_Interval lo(0, 0, 0, -2);
  EXPECT_LT(mgr.Cmp(D_INTERVAL_T, &lo, &iv, 0, 1, 8), 0);
  EXPECT_EQ(mgr.DiskLenGet(D_INTERVAL_T, &iv, 2, 3, 8), 12u);
}

TEST(StdRows, Counters) {
  ObTypeMgr mgr(5);
  d_Date d(2024, 2, 28);
  EXPECT_EQ(mgr.GetValue(D_DATE_T, &d, 0, 8, 'N'), 0);
  EXPECT_TRUE(Same(d, d_Date(2024, 2, 29)));
  d = d_Date(32767, 12, 31);
  EXPECT_EQ(mgr.GetValue(D_DATE_T, &d, 0, 8, 'M'), kObCounterAtMax);
  d_Time t = T(13, 59, 59, 99, 2, 0);
  EXPECT_EQ(mgr.GetValue(D_TIME_T, &t, 0, 8, 'N'), 0);
  EXPECT_TRUE(Same(t, T(14, 0, 0, 0, 2, 0))) << Str(t);
  t = T(25, 59, 59, 99, 2, 0);
  EXPECT_EQ(mgr.GetValue(D_TIME_T, &t, 0, 8, 'N'), kObCounterAtMax);
  d_Timestamp s(d_Date(2024, 2, 29), T(25, 59, 59, 99, 2, 0));
  EXPECT_EQ(mgr.GetValue(D_TIMESTAMP_T, &s, 0, 8, 'N'), 0);
  EXPECT_TRUE(Same(s.date(), d_Date(2024, 3, 1)) &&
              Same(s.time(), T(2, 0, 0, 0, 2, 0)))
      << Str(s);
  uint8_t stored[4];
  d = d_Date(2024, 2, 28);
  mgr.Store(D_DATE_T, stored, &d, 1, 1);
  EXPECT_EQ(mgr.GetValue(D_DATE_T, stored, 0, 1, 'N'), 0);
  EXPECT_EQ(stored[3], 29);
}

TEST_F(StdTime, StoreTimeStamp) {
  ObTypeMgr mgr(5);
  uint8_t now[12] = {};
  const int16_t year = 2024;
  std::memcpy(now, &year, 2);
  now[2] = 2;
  now[3] = 29;
  now[4] = 13;
  now[5] = 45;
  now[6] = 30;
  struct Case {
    char id;
    uint8_t format;
    uint32_t fraction;
    int32_t result;
    std::vector<uint8_t> bytes;
  };
  const Case kCases[] = {
      {D_DATE_T, 2, 0, 4, {0x07, 0xE8, 2, 29}},
      {D_TIME_T, 1, 0, 6, {0, 0, 13, 45, 30, 0}},
      {D_TIME_T, 1, 1, 6, {0, 0, 13, 45, 31, 0}},  // the fraction unscaled
      {D_TIMESTAMP_T, 1, 0, 10, {0xE8, 0x07, 2, 29, 0, 0, 13, 45, 30, 0}},
      {ObDATE_T, 2, 0, 4, {0x07, 0xE8, 2, 29}},
      {ObTIME_T, 2, 0, 3, {13, 45, 30}},
      {ObDATIME_T, 2, 0, 7, {0x07, 0xE8, 2, 29, 13, 45, 30}},
      {Ob4B_T, 2, 0, kObNotSupported, {}},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(int{c.id});
    std::memcpy(now + 8, &c.fraction, 4);
    uint8_t out[16] = {};
    EXPECT_EQ(mgr.StoreTimeStamp(c.id, out, c.format, now), c.result);
    EXPECT_EQ(std::vector<uint8_t>(out, out + c.bytes.size()), c.bytes);
  }
  uint8_t out[16];
  EXPECT_EQ(mgr.StoreTimeStamp(D_DATE_T, out, 2, nullptr), kObNotSupported);
  d_Time::set_default_Time_Zone(GMT1);
  std::memset(now + 8, 0, 4);
  EXPECT_EQ(mgr.StoreTimeStamp(D_TIME_T, out, 2, now), 6);
  EXPECT_EQ(out[0], 1);
  EXPECT_EQ(out[2], 14);
}

}  // namespace
