// ObDate, ObTime, ObDateTime and their catalogue rows.
#include <climits>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

// Exposes the protected division members.
struct DivDate : ObDate {
  DivDate() : ObDate(0, 0, 0) {}
  using ObDate::divide;
  using ObDate::modulo;
};

std::string Str(const ObDate& d) {
  return std::to_string(d.year) + "-" + std::to_string(d.month) + "-" +
         std::to_string(d.day);
}
std::string Str(const ObTime& t) {
  return std::to_string(t.hour) + ":" + std::to_string(t.minute) + ":" +
         std::to_string(t.second);
}
std::string Str(const ObDateTime& v) { return Str(v.date) + "T" + Str(v.time); }

// Pins the clock and the zone for one test.
class Clock : public ::testing::Test {
 protected:
  void TearDown() override {
    bksReleaseClock();
    bksReleaseTimeZone();
  }
};

TEST(ObDate, CalendarTable) {
  struct Case {
    ObDate date;
    int dayNumber;
    int weekday;
    int valid;
    int toNextMonth;
  };
  const Case kCases[] = {
      {{-4713, 11, 24}, 0, 1, 1, 7},  // truncation: not Monday
      {{-4800, 3, 1}, -32044, 2, 1, 31},
      {{0, 1, 1}, 1721060, 6, 1, 31},  // a Saturday, kept as Sunday
      {{1, 1, 1}, 1721426, 0, 1, 31},
      {{1582, 10, 4}, 2299150, 0, 1, 28},
      {{1582, 10, 5}, 2299151, 1, 1, 27},
      {{1900, 2, 29}, 2415080, 3, 0, 0},  // 1 March
      {{1900, 3, 1}, 2415080, 3, 1, 31},
      {{1970, 1, 1}, 2440588, 3, 1, 31},
      {{2000, 1, 1}, 2451545, 5, 1, 31},
      {{2000, 2, 29}, 2451604, 1, 1, 1},
      {{2023, 2, 29}, 2460005, 2, 0, 0},
      {{2023, 12, 31}, 2460310, 6, 1, 1},
      {{2024, 2, 29}, 2460370, 3, 1, 1},
      {{2024, 2, 30}, 2460371, 4, 0, 0},
      {{2024, 3, 0}, 2460370, 3, 0, 32},  // day 0: the last of February
      {{2024, 1, 32}, 2460342, 3, 0, 0},
      {{2023, 13, 1}, 2460311, 0, 0, 31},  // month 13: next January
      {{9999, 12, 31}, 5373484, 4, 1, 1},
      {{32767, 12, 31}, 13689325, 6, 1, 1},
      {{-1, 3, 1}, 1720754, 1, 1, 31},  // the unspecified year is a year
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.date));
    EXPECT_EQ(c.date.dayabs(), c.dayNumber);
    EXPECT_EQ(static_cast<int>(c.date), c.dayNumber);
    EXPECT_EQ(c.date.GetDayOfTheDate(), c.weekday);
    EXPECT_EQ(c.date.IsDate(), c.valid);
    EXPECT_EQ(c.date.daynxtmonth(), c.toNextMonth);
    EXPECT_EQ(c.date.IsLastDayOfTheMonth(), c.toNextMonth == 1);
    if (c.valid) {
      EXPECT_TRUE(ObDate(c.dayNumber) == c.date);
    }
  }
  EXPECT_TRUE(ObDate(-1) == ObDate(-4713, 11, 23));
}

// Every day from the lowest exact date to 32767-12-31 converts back to its
// number and follows its predecessor in the calendar.
TEST(ObDate, RoundTripEveryDay) {
  ObDate prev(-32045);
  for (int j = -32044; j <= 13689325; ++j) {
    ObDate d(j);
    if (d.dayabs() != j || !d.IsDate()) FAIL() << j << " " << Str(d);
    const bool nextDay =
        d.year == prev.year && d.month == prev.month && d.day == prev.day + 1;
    const bool nextMonth =
        d.day == 1 && prev.IsLastDayOfTheMonth() &&
        (d.month == prev.month + 1 ||
         (d.month == 1 && prev.month == 12 && d.year == prev.year + 1));
    if (j > -32044 && !nextDay && !nextMonth) FAIL() << j << " " << Str(d);
    prev = d;
  }
}

// Against an independent calendar: tests/data/calendar.txt, made from
// Python's datetime by tests/data/gen_calendar.py.
TEST(ObDate, AgreesWithIndependentCalendar) {
  std::ifstream in(QS_TEST_DATA_DIR "/calendar.txt");
  ASSERT_TRUE(in.good());
  std::string line;
  int rows = 0;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream f(line);
    int y, m, d, jdn, weekday, monthLength;
    ASSERT_TRUE(f >> y >> m >> d >> jdn >> weekday >> monthLength) << line;
    const ObDate date(static_cast<int16_t>(y), static_cast<int8_t>(m),
                      static_cast<int8_t>(d));
    SCOPED_TRACE(line);
    EXPECT_EQ(date.dayabs(), jdn);
    EXPECT_TRUE(ObDate(jdn) == date);
    // From about the year 4000 the weekday congruence can go negative for
    // some dates, which then report Sunday; that is kept as it is.
    const int got = date.GetDayOfTheDate();
    if (y < 4000) {
      EXPECT_EQ(got, weekday);
    } else if (got != weekday) {
      EXPECT_EQ(got, ObSunday);
    }
    EXPECT_TRUE(date.IsDate());
    EXPECT_EQ(date.daynxtmonth(), monthLength - d + 1);
    const ObDate pastEnd(date.year, date.month,
                         static_cast<int8_t>(monthLength + 1));
    EXPECT_FALSE(pastEnd.IsDate());
    ++rows;
  }
  EXPECT_GT(rows, 1000);
}

TEST(ObDate, TruncatingDivision) {
  const DivDate d;
  struct Case {
    int a, b, q, r;
  };
  const Case kCases[] = {
      {7, 2, 3, 1},
      {-7, 2, -3, -1},
      {7, -2, -3, -1},
      {-7, -2, 3, 1},
      {0, 5, 0, 0},
      {INT_MIN, -1, INT_MIN, 0},
      {INT_MIN, 1, INT_MIN, 0},
      {5, 0, 0, 0},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(d.divide(c.a, c.b), c.q) << c.a << "/" << c.b;
    EXPECT_EQ(d.modulo(c.a, c.b), c.r) << c.a << "%" << c.b;
  }
}

TEST(ObDate, ArithmeticAndNames) {
  ObDate d(1582, 10, 4);
  ++d;
  EXPECT_EQ(Str(d), "1582-10-5");
  EXPECT_EQ(Str(ObDate(2023, 12, 31) + 1), "2024-1-1");
  EXPECT_EQ(Str(ObDate(2024, 3, 1) - 1), "2024-2-29");
  EXPECT_EQ(ObDate(2000, 1, 1) - ObDate(1970, 1, 1), 10957);
  // Far out of range: defined, no overflow.
  ObDate far(INT_MAX);
  far += INT_MAX;
  (void)far.dayabs();

  const ObDate monday(2024, 2, 26);
  EXPECT_STREQ(monday.PrintDayOfTheDate().StrGet(), "Monday");
  ObDate mutableMonday = monday;
  EXPECT_STREQ(mutableMonday.PrintDayOfTheDate().StrGet(), "0");
  EXPECT_STREQ(kObMonthNames[0], "Januar");
  EXPECT_STREQ(kObMonthNames[1], "Februar");
}

TEST(ObDate, CompareWithUnspecifiedComponents) {
  struct Case {
    ObDate a, b;
    int sign0, signExact;
  };
  const Case kCases[] = {
      {{2020, -1, 3}, {2020, 7, 3}, 0, -1},
      {{-1, 5, -1}, {1999, 5, 17}, 0, -1},
      {{2021, 5, 1}, {-1, 5, -1}, 0, 1},
      {{2020, 1, 1}, {2020, 1, 2}, -1, -1},
      {{-32768, -128, -128}, {-4713, 11, 24}, -1, -1},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.a) + " vs " + Str(c.b));
    const int r0 = c.a.Compare(c.b, 0), rx = c.a.Compare(c.b, 0x10);
    EXPECT_EQ((r0 > 0) - (r0 < 0), c.sign0);
    EXPECT_EQ((rx > 0) - (rx < 0), c.signExact);
    EXPECT_EQ(c.a < c.b, c.signExact < 0);
    EXPECT_EQ(c.a > c.b, c.signExact > 0);
    EXPECT_EQ((c.a != c.b) != 0, c.signExact != 0);
  }
  // A signed difference, not clipped.
  EXPECT_EQ(ObDate(2020, 1, 1).Compare(ObDate(2017, 1, 1), 0x10), 3);
  ObDate n(2000, 1, 1);
  EXPECT_EQ(n.SetNullValue(), 0);
  EXPECT_TRUE(n.IsNullValue());
  EXPECT_TRUE(n < ObDate(-4713, 11, 24));
}

TEST(ObTime, SplitAndClockArithmetic) {
  EXPECT_EQ(Str(ObTime(3661)), "1:1:1");
  EXPECT_EQ(Str(ObTime(90000)), "25:0:0");
  EXPECT_FALSE(ObTime(90000).IsTime());
  EXPECT_EQ(static_cast<int>(ObTime(23, 59, 59)), 86399);
  struct Case {
    ObTime t;
    int n;
    const char* expect;
  };
  const Case kCases[] = {
      {{23, 59, 59}, 1, "0:0:0"},
      {{0, 0, 0}, -1, "23:59:59"},
      {{0, 0, 0}, -86400, "24:0:0"},  // kept asymmetry
      {{0, 0, 0}, -90000, "23:0:0"},
      {{12, 30, 30}, 86400 * 3 + 61, "12:31:31"},
      {{0, 0, 0}, INT_MAX, "19:14:7"},  // hours wrap in 8 bits first
      {{0, 0, 0}, INT_MIN, "4:45:52"},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(Str(c.t + c.n), c.expect) << Str(c.t) << " + " << c.n;
  }
  EXPECT_EQ(Str(ObTime(0, 0, 0) - INT_MIN), "4:45:52");
  EXPECT_EQ(Str(ObTime(1, 0, 0) - ObTime(2, 0, 30)), "22:59:30");
  ObTime t(-1, 30, -1);
  EXPECT_EQ(t.Compare(ObTime(5, 30, 9), 0), 0);
  EXPECT_NE(t.Compare(ObTime(5, 30, 9), 0x10), 0);
  EXPECT_EQ(t.SetNullValue(), 0);
  EXPECT_TRUE(t.IsNullValue());
}

TEST_F(Clock, ReadsTheBaseServicesClockAndZone) {
  bksFixClock(1709150400123456789);  // 2024-02-28T20:00:00.123456789Z
  bksFixTimeZone(270);
  EXPECT_EQ(Str(ObDate()), "2024-2-29");
  EXPECT_EQ(Str(ObTime()), "0:30:0");
  EXPECT_EQ(Str(ObTime().NowUTC()), "20:0:0");
  EXPECT_EQ(Str(ObDateTime()), "2024-2-29T0:30:0");
  EXPECT_EQ(Str(ObDateTime().NowUTC()), "2024-2-28T20:0:0");
  ObInt64 ms(5);
  EXPECT_EQ(GetSystemTimeInMSSinceTheEpoch(ms), 0);
  EXPECT_EQ(ms.Get8b(), 1709150400123);

  ObTime t(23, 0, 0);
  EXPECT_EQ(t.ToLocalTime(), 0);
  EXPECT_EQ(Str(t), "3:30:0");
  EXPECT_EQ(t.ToUTCTime(), 0);
  EXPECT_EQ(Str(t), "23:0:0");
  bksFixTimeZone(kObZoneUnknown);
  EXPECT_EQ(t.ToLocalTime(), kObZoneUnknown);
  ObDateTime dt(ObDate(2024, 1, 1), t);
  EXPECT_EQ(dt.ToUTCTime(), kObZoneUnknown);
  EXPECT_EQ(Str(dt), "2024-1-1T23:0:0");
}

TEST_F(Clock, DateTimeZoneShifts) {
  struct Case {
    int zone;
    bool toLocal;
    ObDateTime in;
    const char* expect;
  };
  const Case kCases[] = {
      {120, true, {{2024, 1, 1}, {23, 30, 15}}, "2024-1-2T1:30:15"},
      {120, false, {{2024, 1, 1}, {0, 30, 15}}, "2023-12-31T22:30:15"},
      {-60, true, {{2024, 1, 1}, {0, 0, 0}}, "2023-12-31T23:0:0"},
      {-90, true, {{2024, 3, 1}, {0, 30, 7}}, "2024-2-29T23:0:7"},
      {0, true, {{2024, 3, 1}, {0, 30, 7}}, "2024-3-1T0:30:7"},
      {-1440, true, {{2024, 3, 1}, {0, 0, 0}}, "2024-2-29T0:0:0"},
  };
  for (const Case& c : kCases) {
    bksFixTimeZone(c.zone);
    ObDateTime v = c.in;
    EXPECT_EQ(c.toLocal ? v.ToLocalTime() : v.ToUTCTime(), 0);
    EXPECT_EQ(Str(v), c.expect) << Str(c.in) << " zone " << c.zone;
  }
}

TEST(ObDateTime, AddSeconds) {
  struct Case {
    ObDateTime in;
    int n;
    const char* expect;
  };
  const Case kCases[] = {
      {{{2023, 12, 31}, {23, 59, 59}}, 1, "2024-1-1T0:0:0"},
      {{{2024, 1, 1}, {0, 0, 0}}, -1, "2023-12-31T23:59:59"},
      {{{2024, 2, 28}, {10, 0, 0}}, 86400, "2024-2-29T10:0:0"},
      {{{2024, 3, 1}, {0, 30, 0}}, -90000, "2024-2-28T23:30:0"},
      {{{2024, 3, 1}, {0, 0, 0}}, -86400, "2024-2-29T0:0:0"},
      {{{2000, 1, 1}, {12, 0, 0}}, 86400 * 366, "2001-1-1T12:0:0"},
  };
  for (const Case& c : kCases) {
    ObDateTime v = c.in;
    v.AddSeconds(c.n);
    EXPECT_EQ(Str(v), c.expect) << Str(c.in) << " + " << c.n;
  }
}

TEST(ObDateTime, SpecialValues) {
  EXPECT_TRUE(ObDateTime::NullValue().IsNullValue());
  EXPECT_FALSE(ObDateTime::Null().IsNullValue());
  EXPECT_EQ(Str(ObDateTime::ClearValue()), "0-0-0T0:0:0");
  EXPECT_FALSE(ObDateTime::Null().IsDefaultValue());
  EXPECT_TRUE(
      ObDateTime(ObDate(-4713, 11, 24), ObTime(7, 8, 9)).IsDefaultValue());
  ObDateTime v(ObDate(2024, 2, 29), ObTime(23, 59, 60));
  EXPECT_TRUE(v.date.IsDate());
  EXPECT_FALSE(v.IsDateTime());
  v = ObTime(1, 2, 3);
  EXPECT_EQ(Str(v), "2024-2-29T1:2:3");
  EXPECT_EQ(v.SetNullValue(), 0);
  EXPECT_TRUE(v.IsNullValue());
  const ObDateTime a(ObDate(2024, 1, 1), ObTime(1, 0, 0));
  const ObDateTime b(ObDate(2024, 1, 1), ObTime(-1, 0, 5));
  EXPECT_LT(a.Compare(b, 0), 0);  // hour skipped, seconds decide
  EXPECT_GT(a.Compare(b), 0);
  EXPECT_NE(a != b, 0);
}

// ---- Catalogue rows through the type manager.

const uint8_t kBig = 2, kLittle = 1, kMem = 8;

TEST(DateRows, StoredFormsEveryByte) {
  ObTypeMgr mgr(5);
  const ObDate d(2024, 2, 29);
  const ObTime t(23, 59, 58);
  const ObDateTime dt(d, t);
  struct Case {
    char id;
    const void* value;
    uint8_t format;
    std::vector<uint8_t> bytes;
  };
  const Case kCases[] = {
      {ObDATE_T, &d, kBig, {0x07, 0xE8, 2, 29}},
      {ObDATE_T, &d, kLittle, {0xE8, 0x07, 2, 29}},
      {ObDATE_T, &d, 5, {0xE8, 0x07, 2, 29}},
      {ObTIME_T, &t, kBig, {23, 59, 58}},
      {ObDATIME_T, &dt, kBig, {0x07, 0xE8, 2, 29, 23, 59, 58}},
      {ObDATIME_T, &dt, kLittle, {0xE8, 0x07, 2, 29, 23, 59, 58}},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(int(c.id) * 100 + c.format);
    uint8_t out[16];
    std::memset(out, 0xAA, sizeof out);
    const uint32_t n = uint32_t(c.bytes.size());
    EXPECT_EQ(mgr.Store(c.id, out, c.value, c.format, 1), n);
    EXPECT_EQ(std::vector<uint8_t>(out, out + n), c.bytes);
    EXPECT_EQ(out[n], 0xAA);
    EXPECT_EQ(mgr.DiskLenGet(c.id, c.value, c.format, 3, kMem), 3 * n);
    uint8_t back[8] = {};
    EXPECT_EQ(mgr.Load(c.id, back, out, c.format, 1), n);
    EXPECT_EQ(std::memcmp(back, c.value, mgr.MemLenGet(c.id, 1) - (n == 7)), 0);
    uint8_t viaTranslate[8] = {};
    EXPECT_EQ(mgr.Translate(c.id, viaTranslate, kMem, 8, out, c.format, n, 1),
              n);
    EXPECT_EQ(mgr.Cmp(c.id, viaTranslate, c.value, 0xFFFF, 1, kMem), 0);
    // Stored and memory forms hash alike.
    int32_t st = 0;
    EXPECT_EQ(mgr.Hash(c.id, 0, out, 1, c.format, st),
              mgr.Hash(c.id, 0, c.value, 1, kMem, st));
  }
  int32_t st = 0;
  EXPECT_EQ(mgr.Hash(ObDATE_T, 0, &d, 1, kMem, st), 0x0DDBBC59u);
  EXPECT_EQ(mgr.Hash(ObDATIME_T, 0, &dt, 1, kMem, st), 0x463F379Bu);
  EXPECT_EQ(mgr.Hash(ObDATIME_T, 0, &ObDateTime::NullValue(), 1, kMem, st),
            0xB6800000u);
}

// Stored search keys may leave components unspecified (0xFF, year 0xFFFF).
TEST(DateRows, StoredKeyComparison) {
  const uint8_t key2020[] = {0xE4, 0x07, 0xFF, 0xFF};  // 2020-?-?
  const uint8_t anyYearMay[] = {0xFF, 0xFF, 5, 0xFF};
  struct Case {
    std::vector<uint8_t> a;
    const uint8_t* b;
    uint16_t options;
    int expect;
  };
  const Case kCases[] = {
      {{0xE4, 0x07, 1, 1}, key2020, 0, 0},
      {{0xE4, 0x07, 12, 31}, key2020, 0, 0},
      {{0xE4, 0x07, 12, 31}, key2020, 0x10, 1},
      {{0xE5, 0x07, 1, 1}, key2020, 0, 1},
      {{0xE3, 0x07, 12, 31}, key2020, 0, -1},
      {{0x10, 0x00, 5, 9}, anyYearMay, 0, 0},
      {{0x10, 0x00, 6, 9}, anyYearMay, 0, 1},
      {{0x10, 0x00, 5, 9}, anyYearMay, 0x10, 1},
  };
  for (const Case& c : kCases) {
    int32_t st = 7;
    const int32_t r =
        ObDateCompare(kLittle, 0, c.a.data(), 0, c.b, c.options, 1, st);
    EXPECT_EQ((r > 0) - (r < 0), c.expect) << int(c.a[2]) << " " << c.options;
    EXPECT_EQ(st, 0);
  }
  // Only the search key is wild: the same bytes as operand 1 are values.
  int32_t st = 0;
  const uint8_t jan1[] = {0xE4, 0x07, 1, 1};
  EXPECT_LT(ObDateCompare(kLittle, 0, key2020, 0, jan1, 0, 1, st), 0);
  const uint8_t anyHour[] = {0xFF, 30, 0};
  const uint8_t t1[] = {7, 30, 0};
  EXPECT_EQ(ObTimeCompare(kBig, 0, t1, 0, anyHour, 0, 1, st), 0);
  EXPECT_GT(ObTimeCompare(kBig, 0, t1, 0, anyHour, 0x10, 1, st), 0);
  // A shorter operand ends the comparison with 2101.
  const uint8_t two[] = {1, 0, 0, 2, 0, 0};
  EXPECT_EQ(ObTimeCompare(kBig, 6, two, 3, two, 0, 2, st), 0);
  EXPECT_EQ(st, ObCMP_OPERAND_EXHAUSTED);
}

// Exact stored-form order agrees with the memory-form order of the values,
// in both byte orders, for dates, times and date-times.
TEST(DateRows, StoredOrderMatchesMemoryOrder) {
  ObTypeMgr mgr(5);
  const ObDateTime kValues[] = {
      ObDateTime::NullValue(),         {{-4800, 3, 1}, {0, 0, 0}},
      {{-1, 12, 31}, {23, 59, 59}},    {{0, 1, 1}, {0, 0, 1}},
      {{255, 1, 1}, {0, 1, 0}},        {{256, 1, 1}, {1, 0, 0}},
      {{2024, 2, 29}, {12, 0, 0}},     {{2024, 2, 29}, {12, 0, 1}},
      {{32767, 12, 31}, {23, 59, 59}},
  };
  for (uint8_t fmt : {kLittle, kBig}) {
    for (const ObDateTime& a : kValues) {
      for (const ObDateTime& b : kValues) {
        uint8_t sa[7], sb[7];
        mgr.Store(ObDATIME_T, sa, &a, fmt, 1);
        mgr.Store(ObDATIME_T, sb, &b, fmt, 1);
        const int mem = mgr.Cmp(ObDATIME_T, &a, &b, 0xFFFF, 1, kMem);
        const int sto = mgr.Cmp(ObDATIME_T, sa, sb, 0x10, 1, fmt);
        const int dmem = mgr.Cmp(ObDATE_T, &a.date, &b.date, 0xFFFF, 1, kMem);
        const int dsto = mgr.Cmp(ObDATE_T, sa, sb, 0x10, 1, fmt);
        const int tsto = mgr.Cmp(ObTIME_T, sa + 4, sb + 4, 0x10, 1, fmt);
        const int tmem = mgr.Cmp(ObTIME_T, &a.time, &b.time, 0xFFFF, 1, kMem);
        ASSERT_EQ((mem > 0) - (mem < 0), sto) << Str(a) << " " << Str(b);
        ASSERT_EQ((dmem > 0) - (dmem < 0), dsto) << Str(a) << " " << Str(b);
        ASSERT_EQ((tmem > 0) - (tmem < 0), tsto) << Str(a) << " " << Str(b);
      }
    }
  }
}

TEST(DateRows, NullsCountersAndArrays) {
  ObTypeMgr mgr(5);
  struct Case {
    char id;
    std::vector<uint8_t> start;  // memory form
    std::vector<uint8_t> last;   // the last value a counter reaches
  };
  // clang-format off
  const Case kCases[] = {
    {ObDATE_T, {0xE8, 0x07, 2, 28}, {0xFF, 0x7F, 12, 31}},
    {ObTIME_T, {23, 59, 58}, {23, 59, 59}},
    {ObDATIME_T, {0xE8, 0x07, 2, 28, 23, 59, 59, 0},
     {0xFF, 0x7F, 12, 31, 23, 59, 59, 0}},
  };
  // clang-format on
  for (const Case& c : kCases) {
    SCOPED_TRACE(int(c.id));
    const size_t n = c.start.size();
    std::vector<uint8_t> v = c.start;
    EXPECT_EQ(mgr.IsNullValue(c.id, v.data()), 0);
    EXPECT_EQ(mgr.GetValue(c.id, v.data(), 0, kMem, 'N'), 0);
    EXPECT_GT(mgr.Cmp(c.id, v.data(), c.start.data(), 0xFFFF, 1, kMem), 0);
    const std::vector<uint8_t> stepped = v;
    EXPECT_EQ(mgr.GetValue(c.id, v.data(), 0, kMem, 'O'), 0);
    EXPECT_EQ(v, stepped);
    v = c.last;
    EXPECT_EQ(mgr.GetValue(c.id, v.data(), 0, kMem, 'M'), kObCounterAtMax);
    EXPECT_EQ(v, c.last);
    EXPECT_EQ(mgr.SetNullValue(c.id, v.data()), 0);
    EXPECT_NE(mgr.IsNullValue(c.id, v.data()), 0);
    EXPECT_EQ(v[n == 8 ? 6 : n - 1], 0x80);
  }
  // A stored counter is loaded, stepped and stored back.
  uint8_t stored[] = {0xE8, 0x07, 2, 28};
  EXPECT_EQ(mgr.GetValue(ObDATE_T, stored, 4, kLittle, 'N'), 0);
  EXPECT_EQ(stored[3], 29);
  // The same-source flag spreads one date-time over an array.
  const ObDateTime one(ObDate(2024, 2, 29), ObTime(1, 2, 3));
  ObDateTime* arr = static_cast<ObDateTime*>(mgr.Create(ObDATIME_T, 3));
  ASSERT_NE(arr, nullptr);
  mgr.AssignmentPtrGet(ObDATIME_T)(arr, &one, 3, 1);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(arr[i].Compare(one), 0);
  mgr.Delete(ObDATIME_T, arr, 3);
}

}  // namespace
