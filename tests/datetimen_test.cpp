// ObDateTimeN, ObTimeSpan, their comparators and catalogue rows.
#include <cstring>
#include <string>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

using N = ObDateTimeN;
using S = ObTimeSpan;

std::string Str(const ObNanoValue& v) {
  return std::to_string(v.date.year) + "-" + std::to_string(v.date.month) +
         "-" + std::to_string(v.date.day) + "T" + std::to_string(v.time.hour) +
         ":" + std::to_string(v.time.minute) + ":" +
         std::to_string(v.time.second) + "." + std::to_string(v.nanoseconds);
}

TEST(ObDateTimeN, Totals) {
  struct Case {
    N value;
    int days;
    int64_t seconds;
  };
  const Case kCases[] = {
      {{0, 1, 1, 0, 0, 0, 0}, 0, 0},
      {{1970, 1, 1, 0, 0, 0, 0}, 719528, 62167219200},
      {{-1, 12, 31, 23, 59, 59, 5}, -1, -1},
      {{2024, 2, 29, 12, 0, 1, 0}, 739310, 63876427201},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(Str(c.value));
    EXPECT_EQ(c.value.GetTotalDays(), c.days);
    EXPECT_EQ(c.value.GetTotalSeconds(), c.seconds);
    N back;
    back.SetTotalSeconds(c.value.GetTotalSeconds());
    back.AddNanoSeconds(c.value.nanoseconds);
    EXPECT_EQ(Str(back), Str(c.value));
  }
  // Nanosecond totals wrap in 64 bits from about the year 292 on.
  const N kSmall(100, 2, 3, 4, 5, 6, 7);
  EXPECT_EQ(kSmall.GetTotalNanoSeconds(),
            kSmall.GetTotalSeconds() * 1000000000 + 7);
  EXPECT_EQ(Str(N().SetTotalNanoSeconds(kSmall.GetTotalNanoSeconds())),
            Str(kSmall));
  EXPECT_EQ(N(1970, 1, 1, 0, 0, 0, 0).GetTotalNanoSeconds(),
            int64_t(62167219200ull * 1000000000ull));
  EXPECT_EQ(Str(N(86399.5)), "0-1-1T23:59:59.500000000");
  EXPECT_EQ(Str(N().SetTotalDays(-1)), "-1-12-31T0:0:0.0");
  EXPECT_DOUBLE_EQ(N(0, 1, 1, 0, 0, 2, 250000000).GetTotalSeconds_f(), 2.25);
}

// Each row: start value, the operation, the normalised result.
TEST(CarryChain, DateTimeAndSpanModes) {
  struct Case {
    const char* what;
    std::string got;
    const char* want;
  };
  const Case kCases[] = {
      {"ns -1 across a year", Str(N(2024, 1, 1, 0, 0, 0, 0).AddNanoSeconds(-1)),
       "2023-12-31T23:59:59.999999999"},
      {"ns +1 across a leap day",
       Str(N(2024, 2, 28, 23, 59, 59, 999999999).AddNanoSeconds(1)),
       "2024-2-29T0:0:0.0"},
      {"nanosecond step stores even for 0",
       Str(N(2024, 1, 1, 0, 0, 0, 1500000000).AddNanoSeconds(0)),
       "2024-1-1T0:0:1.500000000"},
      {"seconds step skips 0", Str(N(2024, 1, 1, 0, 0, 75, 0).AddSeconds(0)),
       "2024-1-1T0:0:75.0"},
      {"hours back over a month", Str(N(2024, 3, 1, 1, 0, 0, 0).AddHours(-2)),
       "2024-2-29T23:0:0.0"},
      {"invalid date uses span days", Str(N(0, 0, 29, 0, 0, 0, 0).AddDays(1)),
       "0-1-0T0:0:0.0"},
      {"zone east", Str(N(2024, 12, 31, 23, 30, 0, 7).AddMinutes(60)),
       "2025-1-1T0:30:0.7"},
      {"span 45 days", Str(S().SetTotalDays(45)), "0-1-15T0:0:0.0"},
      {"span 400 days", Str(S().SetTotalDays(400)), "1-1-10T0:0:0.0"},
      {"span -5 days stays", Str(S().SetTotalDays(-5)), "0-0--5T0:0:0.0"},
      {"span month minus days borrows", Str(S(0, 1, 0, 0, 0, 0, 0).AddDays(-5)),
       "0-0-25T0:0:0.0"},
      {"span -5 hours", Str(S(0, 0, 0, 0, 0).AddHours(-5)), "0-0--1T19:0:0.0"},
      {"span ctor keeps hours", Str(S(0, -5, 0, 0, 0)), "0-0-0T-5:0:0.0"},
      {"span ctor days", Str(S(31, 1, 2, 3, 4)), "0-1-1T1:2:3.4"},
      {"span year clamps", Str(S(32767, 11, 29, 0, 0, 0, 0).AddDays(1)),
       "32767-0-0T0:0:0.0"},
      {"span -1 ns", Str(S(0.0).AddNanoSeconds(-1)),
       "0-0--1T23:59:59.999999999"},
      {"span from seconds", Str(S(-1.5)), "0-0--1T23:59:58.500000000"},
      {"minute carry cut to 32 bits",
       Str(S().SetTotalSeconds(int64_t{60} << 32)), "0-0-0T0:0:0.0"},
      {"fields cut to width", Str(S(65537, 257, 258, 259, 260, 261, -1)),
       "1-1-2T3:4:5.-1"},
  };
  for (const Case& c : kCases) EXPECT_EQ(c.got, c.want) << c.what;
  EXPECT_EQ(S(1, 1, 1, 0, 0, 0, 0).GetTotalDays(), 391);
  EXPECT_EQ(S(0, -5, 0, 0, 0).GetTotalSeconds(), -18000);
}

TEST(ObTimeSpan, DifferenceIsOrderFree) {
  struct Case {
    N a, b;
    const char* want;
  };
  const Case kCases[] = {
      {{2024, 3, 1, 0, 0, 0, 0}, {2024, 1, 1, 12, 0, 0, 0}, "0-1-29T12:0:0.0"},
      {{2024, 1, 1, 0, 0, 0, 100},
       {2024, 1, 1, 0, 0, 0, 300},
       "0-0-0T0:0:0.200"},
      // The borrowed second wraps the earlier clock without moving its
      // day: a day too many, kept as stored results have it.
      {{2024, 1, 2, 0, 0, 0, 100},
       {2024, 1, 1, 23, 59, 59, 300},
       "0-0-1T0:0:0.999999800"},
      {{2025, 1, 1, 0, 0, 0, 0}, {2024, 1, 1, 0, 0, 0, 0}, "1-0-6T0:0:0.0"},
      // Null counts as all zeros, 32 days before 0000-01-01.
      {{0, 1, 1, 0, 0, 0, 0}, N::NullValue(), "0-1-2T0:0:0.0"},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(Str(S::Difference(c.a, c.b)), c.want) << Str(c.a);
    EXPECT_EQ(Str(S::Difference(c.b, c.a)), c.want) << Str(c.a);
  }
}

TEST(Compare, UnspecifiedNanoseconds) {
  const N a(2024, 1, 1, 0, 0, 0, -1), b(2024, 1, 1, 0, 0, 0, 5);
  EXPECT_EQ(a.Compare(b, 0), 0);
  EXPECT_EQ(a.Compare(b, 0x10), -1);
  EXPECT_EQ(b.Compare(a, 0x10), 1);
  // The difference wraps in 32 bits.
  EXPECT_EQ(N(0, 1, 1, 0, 0, 0, INT32_MAX).Compare(N(0, 1, 1, 0, 0, 0, -2), 0),
            -1);
  EXPECT_EQ(S(0, 1, 0, 0, 0, 0, 0).Compare(S(0, 0, 29, 0, 0, 0, 0), 0), 1);
}

TEST(NullValues, NotClearValues) {
  EXPECT_TRUE(N().IsNullValue());
  EXPECT_TRUE(S().IsNullValue());
  EXPECT_TRUE(N::NullValue().IsNullValue());
  EXPECT_FALSE(N::ClearValue().IsNullValue());
  N n;
  n.nanoseconds = 7;
  EXPECT_FALSE(n.IsNullValue());
  EXPECT_EQ(n.SetNullValue(), 0);
  EXPECT_TRUE(n.IsNullValue());
  EXPECT_EQ(Str(N().SetZero()), "0-1-1T0:0:0.0");
  EXPECT_EQ(Str(S(3, 4, 5, 6, 7).SetZero()), "0-0-0T0:0:0.0");
  EXPECT_TRUE(
      N(ObDateTime(ObDate(1, 2, 3), ObTime(4, 5, 6))).IsValidDateTime());
}

class Clock : public ::testing::Test {
 protected:
  void TearDown() override {
    bksReleaseClock();
    bksReleaseTimeZone();
  }
};

TEST_F(Clock, NowAndZones) {
  // 2024-02-29T23:30:00.123456789 UTC
  bksFixClock(int64_t{1709249400} * 1000000000 + 123456789);
  bksFixTimeZone(60);
  EXPECT_EQ(Str(N().NowUTC()), "2024-2-29T23:30:0.123456789");
  EXPECT_EQ(Str(N().Now()), "2024-3-1T0:30:0.123456789");
  N v = N().NowUTC();
  EXPECT_EQ(v.ToLocalTime(), 0);
  EXPECT_EQ(Str(v), "2024-3-1T0:30:0.123456789");
  EXPECT_EQ(v.ToUTCTime(), 0);
  EXPECT_EQ(Str(v), "2024-2-29T23:30:0.123456789");
  bksFixTimeZone(kObZoneUnknown);
  EXPECT_EQ(v.ToLocalTime(), kObZoneUnknown);
  EXPECT_EQ(Str(v), "2024-2-29T23:30:0.123456789");
}

int Sign(int v) { return (v > 0) - (v < 0); }

// Stored keys order as the values, in both byte orders; equal values hash
// equal whatever the form.
TEST(Rows, StoredFormsCompareAndHash) {
  ObTypeMgr mgr(5);
  const N kValues[] = {
      {2024, 1, 1, 0, 0, 0, 0},         {2024, 1, 1, 0, 0, 0, 1},
      {2024, 1, 1, 0, 0, 0, 999999999}, {2024, 1, 1, 0, 0, 1, 0},
      {-5, 12, 31, 23, 59, 59, 7},      {1970, 6, 15, 12, 0, 0, 0x01020304},
  };
  const uint8_t kFormats[] = {1, 2};
  for (uint8_t fmt : kFormats) {
    uint8_t stored[6][11];
    for (int i = 0; i < 6; ++i) {
      EXPECT_EQ(mgr.Store(ObDATIME_N_T, stored[i], &kValues[i], fmt, 1), 11u);
      N back;
      mgr.Load(ObDATIME_N_T, &back, stored[i], fmt, 1);
      EXPECT_EQ(Str(back), Str(kValues[i]));
    }
    for (int i = 0; i < 6; ++i) {
      for (int j = 0; j < 6; ++j) {
        for (uint16_t opt : {uint16_t{0}, uint16_t{0x10}}) {
          int32_t st = -1;
          const int want = Sign(kValues[i].Compare(kValues[j], 0x10));
          EXPECT_EQ(Sign(ObDateTimeNCompare(fmt, 11, stored[i], 11, stored[j],
                                            opt, 1, st)),
                    want)
              << i << " " << j << " fmt " << int(fmt);
          EXPECT_EQ(st, 0);
          EXPECT_EQ(Sign(ObDateTimeNCompare(8, 0, &kValues[i], 0, &kValues[j],
                                            opt, 1, st)),
                    want);
        }
      }
      int32_t st = 0;
      EXPECT_EQ(mgr.Hash(ObDATIME_N_T, 11, stored[i], 1, fmt, st),
                mgr.Hash(ObDATIME_N_T, 12, &kValues[i], 1, 8, st));
    }
  }
  // Every stored byte, in both byte orders.
  const uint8_t kBig[11] = {0x07, 0xB2, 6, 15, 12, 0, 0, 1, 2, 3, 4};
  const uint8_t kLittle[11] = {0xB2, 0x07, 6, 15, 12, 0, 0, 4, 3, 2, 1};
  uint8_t b[11];
  EXPECT_EQ(mgr.DiskLenGet(ObDATIME_N_T, &kValues[5], 2, 3, 8), 33u);
  mgr.Store(ObDATIME_N_T, b, &kValues[5], 2, 1);
  EXPECT_EQ(std::memcmp(b, kBig, 11), 0);
  mgr.Store(ObDATIME_N_T, b, &kValues[5], 1, 1);  // the machine's order
  if (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
    EXPECT_EQ(std::memcmp(b, kLittle, 11), 0);
  }
}

TEST(Rows, StoredSearchKeyWithOpenNanoseconds) {
  const S key(0, 0, 3, 0, 0, 0, -1), stored(0, 0, 3, 0, 0, 0, 42);
  uint8_t k[11], s[11];
  ObTypeMgr mgr(5);
  mgr.Store(ObTIMESPAN_T, k, &key, 1, 1);
  mgr.Store(ObTIMESPAN_T, s, &stored, 1, 1);
  int32_t st = 0;
  EXPECT_EQ(ObTimeSpanCompare(1, 11, s, 11, k, 0, 1, st), 0);
  EXPECT_GT(ObTimeSpanCompare(1, 11, s, 11, k, 0x10, 1, st), 0);
  // Only the second operand is a search key.
  EXPECT_NE(ObTimeSpanCompare(1, 11, k, 11, s, 0, 1, st), 0);
  // A cut second operand ends the comparison early.
  const S two[2] = {stored, stored};
  EXPECT_EQ(ObTimeSpanCompare(8, 24, two, 12, two, 0, 2, st), 0);
  EXPECT_EQ(st, ObCMP_OPERAND_EXHAUSTED);
}

TEST(Rows, CountersAndNulls) {
  ObTypeMgr mgr(5);
  N n(2024, 12, 31, 23, 59, 59, 999999999);
  EXPECT_EQ(mgr.SetNullValue(ObDATIME_N_T, &n), 0);
  EXPECT_EQ(mgr.IsNullValue(ObDATIME_N_T, &n), 1);
  n = N(2024, 12, 31, 23, 59, 59, 999999999);
  EXPECT_EQ(mgr.GetValue(ObDATIME_N_T, &n, 12, 8, 'O'), 0);
  EXPECT_EQ(Str(n), "2024-12-31T23:59:59.999999999");
  EXPECT_EQ(mgr.GetValue(ObDATIME_N_T, &n, 12, 8, 'N'), 0);
  EXPECT_EQ(Str(n), "2025-1-1T0:0:0.0");
  S s(32767, 11, 29, 23, 59, 59, 999999999);
  EXPECT_EQ(mgr.GetValue(ObTIMESPAN_T, &s, 12, 8, 'M'), kObCounterAtMax);
  EXPECT_EQ(Str(s), "32767-11-29T23:59:59.999999999");
}

}  // namespace
