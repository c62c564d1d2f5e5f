// ObInt64: native arithmetic checked against a bit-at-a-time model of the
// documented algorithms, the double conversion, the text form, the key
// comparator and the catalogue rows of ObInt64 and ObNull_ObInt64.
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
constexpr int64_t kMax = std::numeric_limits<int64_t>::max();

// ---- The model: the algorithms as documented, one bit at a time, on the
// unsigned 64 bits (two's complement).
namespace model {

constexpr uint64_t kMinBits = uint64_t{1} << 63;

uint64_t Neg(uint64_t a) { return ~a + 1; }
bool IsNeg(uint64_t a) { return (a & kMinBits) != 0; }

uint64_t Mul(uint64_t a, uint64_t b) {
  if (a == kMinBits) return (b & 1) != 0 ? kMinBits : 0;
  if (b == kMinBits) return (a & 1) != 0 ? kMinBits : 0;
  const bool negative = IsNeg(b);
  if (negative) b = Neg(b);
  uint64_t acc = 0;
  for (int bit = 62; bit >= 0; --bit) {
    acc <<= 1;
    if ((b >> bit) & 1) acc += a;
  }
  return negative ? Neg(acc) : acc;
}

int g_zeroDivides = 0;

uint64_t Division(uint64_t dividend, uint64_t divisor, bool wantRemainder) {
  const bool negative =
      wantRemainder ? IsNeg(dividend) : IsNeg(dividend ^ divisor);
  bool correct = false;
  if (IsNeg(dividend)) dividend = Neg(dividend);
  if (IsNeg(dividend)) {
    dividend = kMinBits - 1;
    correct = true;
  }
  if (IsNeg(divisor)) divisor = Neg(divisor);  // the most negative stays
  uint64_t q = 0, r = 0;
  if (IsNeg(divisor)) {
    r = dividend;
  } else if (divisor == 0) {
    ++g_zeroDivides;
  } else {
    for (int bit = 62; bit >= 0; --bit) {
      r = r << 1 | ((dividend >> bit) & 1);
      if (r >= divisor) {
        r -= divisor;
        q |= uint64_t{1} << bit;
      }
    }
  }
  if (correct) {
    ++r;
    if (r == divisor) {
      ++q;
      r = 0;
    }
  }
  const uint64_t result = wantRemainder ? r : q;
  return negative ? Neg(result) : result;
}

uint64_t Shl(uint64_t a, uint32_t n) {
  for (uint32_t i = 0; i < n && i < 70; ++i) a <<= 1;
  return a;
}

uint64_t Shr(uint64_t a, uint32_t n) {
  for (uint32_t i = 0; i < n && i < 70; ++i) a = (a >> 1) | (a & kMinBits);
  return a;
}

}  // namespace model

uint64_t Bits(const ObInt64& v) { return v.GetU8b(); }

// Operands on every edge of the halves, plus random ones of several shapes.
std::vector<uint64_t> Operands() {
  std::vector<uint64_t> v = {0,
                             1,
                             2,
                             3,
                             7,
                             10,
                             0xFFFFFFFFu,
                             0x80000000u,
                             0x7FFFFFFFu,
                             0x100000000u,
                             0x100000001u,
                             static_cast<uint64_t>(kMin),
                             static_cast<uint64_t>(kMin) + 1,
                             static_cast<uint64_t>(kMax),
                             static_cast<uint64_t>(kMax) - 1};
  const size_t edges = v.size();
  for (size_t i = 1; i < edges; ++i) v.push_back(model::Neg(v[i]));
  std::mt19937_64 rng(20260122);
  for (int i = 0; i < 400; ++i) {
    const uint64_t r = rng();
    switch (i % 4) {
      case 0:
        v.push_back(r);
        break;
      case 1:
        v.push_back(r >> (r % 64));  // any magnitude
        break;
      case 2:
        v.push_back(model::Neg(r >> (r % 64)));
        break;
      default:
        v.push_back(r % 2000 - 1000);
    }
  }
  return v;
}

class AssertCounter {
 public:
  AssertCounter() { previous_ = ORLO_SetAssertHandler(Record); }
  ~AssertCounter() { ORLO_SetAssertHandler(previous_); }
  static int count;
  static std::string message, source;
  static int32_t line;

 private:
  static void Record(const char* m, const char* s, int32_t l) {
    ++count;
    message = m;
    source = s;
    line = l;
  }
  ObAssertHandler previous_;
};
int AssertCounter::count = 0;
std::string AssertCounter::message, AssertCounter::source;
int32_t AssertCounter::line = 0;

TEST(ObInt64, ArithmeticMatchesTheModelOnEveryPair) {
  AssertCounter asserts;
  const std::vector<uint64_t> ops = Operands();
  for (uint64_t a : ops) {
    const ObInt64 x(a);
    ASSERT_EQ(Bits(-x), model::Neg(a));
    ASSERT_EQ(Bits(x.Abs()), model::IsNeg(a) ? model::Neg(a) : a);
    ASSERT_EQ(Bits(~x), ~a);
    ObInt64 inc = x, dec = x;
    ASSERT_EQ(Bits(++inc), a + 1);
    ASSERT_EQ(Bits(--dec), a - 1);
    for (uint32_t n :
         {0u, 1u, 31u, 32u, 33u, 63u, 64u, 65u, 100u, 0xFFFFFFFFu}) {
      ASSERT_EQ(Bits(x << n), model::Shl(a, n)) << a << " << " << n;
      ASSERT_EQ(Bits(x >> n), model::Shr(a, n)) << a << " >> " << n;
    }
    for (uint64_t b : ops) {
      const ObInt64 y(b);
      SCOPED_TRACE(::testing::Message() << static_cast<int64_t>(a) << " op "
                                        << static_cast<int64_t>(b));
      ASSERT_EQ(Bits(x + y), a + b);
      ASSERT_EQ(Bits(x - y), a - b);
      ASSERT_EQ(Bits(x * y), model::Mul(a, b));
      ASSERT_EQ(Bits(x & y), a & b);
      ASSERT_EQ(Bits(x | y), a | b);
      const int zeroBefore = model::g_zeroDivides;
      const int assertsBefore = AssertCounter::count;
      ASSERT_EQ(Bits(x / y), model::Division(a, b, false));
      ASSERT_EQ(Bits(x % y), model::Division(a, b, true));
      ASSERT_EQ(AssertCounter::count - assertsBefore,
                model::g_zeroDivides - zeroBefore);
      const int64_t sa = x.Get8b(), sb = y.Get8b();
      ASSERT_EQ(x < y, sa < sb);
      ASSERT_EQ(x > y, sa > sb);
      ASSERT_EQ(x <= y, sa <= sb);
      ASSERT_EQ(x >= y, sa >= sb);
      ASSERT_EQ(x == y, a == b);
      ASSERT_EQ(x != y, a != b);
    }
  }
}

TEST(ObInt64, DocumentedEdges) {
  const ObInt64 min(kMin), max(kMax);
  struct Case {
    const char* what;
    ObInt64 got;
    int64_t want;
  } cases[] = {
      {"min * 3", min * ObInt64(3), kMin},
      {"min * 2", min * ObInt64(2), 0},
      {"3 * min", ObInt64(3) * min, kMin},
      {"min / -1", min / ObInt64(-1), kMin},
      {"min % -1", min % ObInt64(-1), 0},
      {"min % 10", min % ObInt64(10), -8},
      {"min / 10", min / ObInt64(10), -922337203685477580},
      {"min / min", min / min, 1},
      {"5 / min", ObInt64(5) / min, 0},
      {"5 % min", ObInt64(5) % min, 5},
      {"-7 / 2", ObInt64(-7) / ObInt64(2), -3},
      {"-7 % 2", ObInt64(-7) % ObInt64(2), -1},
      {"7 % -2", ObInt64(7) % ObInt64(-2), 1},
      {"1 << 64", ObInt64(1) << 64, 0},
      {"-1 >> 100", ObInt64(-1) >> 100, -1},
      {"max >> 64", max >> 64, 0},
      {"Abs(min)", min.Abs(), kMin},
      {"-min", -min, kMin},
      {"max + 1", max + ObInt64(1), kMin},
      {"(4294967295, 0) sign-extends nothing", ObInt64(0xFFFFFFFFu),
       4294967295},
      {"int sign-extends", ObInt64(-2), -2},
      {"halves", ObInt64(5u, -1), static_cast<int64_t>(0xFFFFFFFF00000005ULL)},
  };
  for (const Case& c : cases) EXPECT_EQ(c.got.Get8b(), c.want) << c.what;
  ObInt64 v(10);
  const ObInt64 copy = (v += ObInt64(5));  // a copy of the new value
  EXPECT_EQ(copy.Get8b(), 15);
  EXPECT_EQ(v.Get8b(), 15);
  EXPECT_EQ(ObInt64(-1).GetU8b(), UINT64_MAX);
}

TEST(ObInt64, DivideByZeroIsReported) {
  AssertCounter asserts;
  const int before = AssertCounter::count;
  EXPECT_EQ((ObInt64(42) / ObInt64(0)).Get8b(), 0);
  EXPECT_EQ(AssertCounter::message, "ObInt64 divide by zero");
  EXPECT_EQ(AssertCounter::source, "obint64");
  EXPECT_EQ(AssertCounter::line, 748);
  EXPECT_EQ((ObInt64(-42) % ObInt64(0)).Get8b(), 0);
  // The most negative dividend is corrected after the report: its remainder
  // by zero is -1.
  EXPECT_EQ((ObInt64(kMin) / ObInt64(0)).Get8b(), 0);
  EXPECT_EQ((ObInt64(kMin) % ObInt64(0)).Get8b(), -1);
  EXPECT_EQ(AssertCounter::count - before, 4);
}

TEST(ObInt64, FromDoubleKeepsSevenDigits) {
  struct Case {
    double d;
    int64_t want;
  } cases[] = {
      {123456789.0, 123456800},
      {1e19, kMax},
      {9.3e18, kMax},
      {-1e19, -kMax},
      {9223372036854774784.0, 9223372000000000000},  // not above the limit
      {0.99, 0},
      {-0.99, 0},
      {-2.5, -2},
      {1.0, 1},
      {1234.5678, 1234},
      {9999999.5, 10000000},  // rounded by the printing
      {std::numeric_limits<double>::infinity(), kMax},
      {-std::numeric_limits<double>::infinity(), -kMax},
      {std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const Case& c : cases) EXPECT_EQ(ObInt64(c.d).Get8b(), c.want) << c.d;
}

std::string Print(const ObInt64& v, const char* format) {
  ObString s("x");
  v.PrintToObString(s, format);
  return s.StrGet();
}

TEST(ObInt64, Text) {
  struct PrintCase {
    int64_t v;
    const char* format;
    const char* want;
  } prints[] = {
      {kMin, "%S", "x-9223372036854775808"},  // appended
      {kMax, nullptr, "x9223372036854775807"},
      {0, "[%S] %% %q", "x[0] % q"},
      {-5, "%S%", "x-5"},
      {7, "", "x"},
  };
  for (const PrintCase& c : prints)
    EXPECT_EQ(Print(ObInt64(c.v), c.format), c.want) << c.want;

  struct ScanCase {
    const char* text;
    const char* format;
    int64_t start, want;
  } scans[] = {
      {"-9223372036854775808", "%S", 1, kMin},
      {"  +42", "%S", 1, 42},
      {"18446744073709551615", "%S", 1, -1},  // wraps modulo 2^64
      {"abc", "%S", 9, 9},                    // no digits: unchanged
      {"", "%S", 9, 9},
      {"v=12", "v=%S", 0, 12},
      {"12", "%", 3, 3},
      {"12", nullptr, 3, 12},
  };
  for (const ScanCase& c : scans) {
    ObInt64 v(c.start);
    v.ScanFromObString(ObString(c.text), c.format);
    EXPECT_EQ(v.Get8b(), c.want) << c.text;
  }
  // A two-byte text is read through an 8-bit copy.
  const unsigned short wide[] = {'-', '7', 0};
  ObInt64 v;
  v.ScanFromObString(ObString(wide), "%S");
  EXPECT_EQ(v.Get8b(), -7);
}

TEST(ObInt64, KeyComparatorInEveryFormat) {
  std::mt19937_64 rng(7);
  ObTypeMgr mgr(5);
  for (int i = 0; i < 2000; ++i) {
    const ObInt64 v[2] = {ObInt64(rng() >> (rng() % 64)),
                          ObInt64(i % 3 == 0 ? model::Neg(rng()) : rng())};
    const int want = (v[0] > v[1]) - (v[0] < v[1]);
    for (uint8_t format : {8, 1, 2, 3}) {
      uint8_t stored[2][8];
      const void* p[2] = {&v[0], &v[1]};
      if (format != 8) {
        for (int k = 0; k < 2; ++k) {
          ASSERT_EQ(mgr.Store(ObINT64_T, stored[k], &v[k], format, 1), 8u);
          p[k] = stored[k];
        }
      }
      int32_t status = -1;
      const int32_t r = Int64Compare(format, 8, p[0], 8, p[1], 0, 1, status);
      ASSERT_EQ((r > 0) - (r < 0), want) << int(format);
      ASSERT_EQ(status, 0);
    }
  }
}

TEST(ObInt64, Rows) {
  ObTypeMgr mgr(5);
  ObInt64 v[2] = {ObInt64(0x0102030405060708LL), ObInt64(-1)};
  uint8_t out[16];
  EXPECT_EQ(mgr.Store(ObINT64_T, out, v, 2, 2), 16u);
  const uint8_t big[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  EXPECT_EQ(std::memcmp(out, big, 8), 0);
  ObInt64 back[2];
  EXPECT_EQ(mgr.Load(ObINT64_T, back, out, 2, 2), 16u);
  EXPECT_TRUE(back[0] == v[0] && back[1] == v[1]);

  // Equal values hash alike in memory and stored form.
  int32_t status = -1;
  const uint32_t h = mgr.Hash(ObINT64_T, 0, v, 2, 8, status);
  EXPECT_EQ(mgr.Hash(ObINT64_T, 16, out, 2, 2, status), h);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(h, (0x01020304u ^ 0x05060708u ^ 0u) * 1103515245u);

  // Counters stop at the highest value.
  struct Step {
    int64_t start;
    uint8_t kind;
    int32_t rc;
    int64_t after;
  } steps[] = {{kMax, 'N', kObCounterAtMax, kMax},
               {0xFFFFFFFF, 'M', 0, 0x100000000},
               {-1, 'N', 0, 0},
               {4, 'O', 0, 4},
               {4, 'X', kObNotSupported, 4}};
  for (const Step& s : steps) {
    ObInt64 c(s.start);
    EXPECT_EQ(mgr.GetValue(ObINT64_T, &c, 0, 8, s.kind), s.rc);
    EXPECT_EQ(c.Get8b(), s.after);
  }
  // A stored counter steps through Load and Store.
  ObInt64 stored(41);
  uint8_t key[8];
  mgr.Store(ObINT64_T, key, &stored, 1, 1);
  EXPECT_EQ(mgr.GetValue(ObINT64_T, key, 8, 1, 'N'), 0);
  mgr.Load(ObINT64_T, &stored, key, 1, 1);
  EXPECT_EQ(stored.Get8b(), 42);

  // Text through the rows; the printer replaces the output.
  ObString text("old");
  mgr.PrintToObString(ObINT64_T, text, &v[1], nullptr, 1);
  EXPECT_STREQ(text.StrGet(), "-1");
  ObString in("77");
  mgr.ScanFromObString(ObINT64_T, &v[0], in, nullptr, 1);
  EXPECT_EQ(v[0].Get8b(), 77);

  // Range estimate over [0, 99].
  ObIdxBounds bounds;
  const ObInt64 lo(0), hi(99);
  bounds.SetLower(&lo, 8);
  bounds.SetUpper(&hi, 8);
  ObInt64 key50(50);
  uint16_t op = kObOpEqual;
  EXPECT_FLOAT_EQ(
      mgr.EvalAndBound(ObINT64_T, &bounds, op, &key50, 8, 1, nullptr, nullptr),
      0.01f);
}

TEST(ObInt64, NullableRow) {
  ObTypeMgr mgr(5);
  auto* v = static_cast<ObNullable<ObInt64>*>(mgr.Create(ObNULL_OBINT64_T, 2));
  ASSERT_NE(v, nullptr);
  v[0].value = ObInt64(-3);
  EXPECT_EQ(mgr.SetNullValue(ObNULL_OBINT64_T, &v[1]), 0);
  uint8_t out[18];
  EXPECT_EQ(mgr.Store(ObNULL_OBINT64_T, out, v, 2, 2), 18u);
  EXPECT_EQ(out[8], 0);
  EXPECT_EQ(out[17], 1);
  int32_t status = -1;
  // Null orders first, in memory and stored form.
  EXPECT_GT(mgr.Cmp(ObNULL_OBINT64_T, 0, &v[0], 0, &v[1], 0, 1, 8, status), 0);
  EXPECT_GT(mgr.Cmp(ObNULL_OBINT64_T, 9, out, 9, out + 9, 0, 1, 2, status), 0);
  EXPECT_EQ(mgr.Hash(ObNULL_OBINT64_T, 0, v, 2, 8, status),
            mgr.Hash(ObNULL_OBINT64_T, 18, out, 2, 2, status));

  ObString text;
  mgr.PrintToObString(ObNULL_OBINT64_T, text, v, nullptr, 2);
  EXPECT_STREQ(text.StrGet(), "-3,{NULL}");
  ObString empty, number("12");
  mgr.ScanFromObString(ObNULL_OBINT64_T, &v[1], number, nullptr, 1);
  EXPECT_EQ(v[1].isNull, 0);
  EXPECT_EQ(v[1].value.Get8b(), 12);
  mgr.ScanFromObString(ObNULL_OBINT64_T, &v[0], empty, nullptr, 1);
  EXPECT_EQ(mgr.IsNullValue(ObNULL_OBINT64_T, &v[0]), 1);
  EXPECT_EQ(v[0].value.Get8b(), 0);
  mgr.Delete(ObNULL_OBINT64_T, v, 2);
}

}  // namespace
