// Key comparators: the element loop, byte orders and the float order.
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "gtest/gtest.h"
#include "obbs.h"
#include "obkeycmp.h"

namespace {

int Sign(int32_t v) { return (v > 0) - (v < 0); }

struct Outcome {
  int sign;
  int32_t status;
};

Outcome Compare(ObKeyCompareFn fn, uint8_t flags, uint32_t len1, const void* p1,
                uint32_t len2, const void* p2, uint32_t count) {
  int32_t status = -1;
  int32_t r = fn(flags, len1, p1, len2, p2, 0, count, status);
  return {Sign(r), status};
}

TEST(ElementLoop, LengthsCountsAndStatus) {
  const int32_t a[3] = {1, 2, 3};
  const int32_t same[3] = {1, 2, 3};
  const int32_t secondDiffers[3] = {1, 5, 3};
  struct Case {
    const char* what;
    uint32_t len1;
    const int32_t* p2;
    uint32_t len2, count;
    int sign;
    int32_t status;
  } cases[] = {
      {"count 0 compares nothing", 12, secondDiffers, 12, 0, 0, 0},
      {"lengths 0 mean count elements", 0, same, 0, 3, 0, 0},
      {"operand 2 ends after two equal elements", 12, same, 8, 3, 0,
       ObCMP_OPERAND_EXHAUSTED},
      {"operand 1 ends first", 4, same, 12, 3, 0, ObCMP_OPERAND_EXHAUSTED},
      {"a difference ends the loop before the length check", 12, secondDiffers,
       8, 3, -1, 0},
      {"the last element needs no room after it", 12, same, 12, 3, 0, 0},
      {"fewer elements requested than present", 12, secondDiffers, 12, 1, 0, 0},
  };
  for (const Case& c : cases) {
    Outcome o = Compare(IntCompare, 8, c.len1, a, c.len2, c.p2, c.count);
    EXPECT_EQ(o.sign, c.sign) << c.what;
    EXPECT_EQ(o.status, c.status) << c.what;
  }
}

TEST(ElementLoop, CutElementIsReadZeroPaddedWithinTheLength) {
  // Six bytes of two 4-byte elements: the second is read as 0x0000BBAA
  // padded with zeros, never beyond the buffer (checked by the sanitizer).
  std::vector<uint8_t> one = {0, 0, 0, 1, 0xAA, 0xBB};
  std::vector<uint8_t> two = {0, 0, 0, 1, 0xAA, 0xBB, 0, 0};
  Outcome o = Compare(LongCompare, 2, 6, one.data(), 8, two.data(), 2);
  EXPECT_EQ(o.sign, 0);
  EXPECT_EQ(o.status, 0);
  two[7] = 1;
  EXPECT_EQ(Compare(LongCompare, 2, 6, one.data(), 8, two.data(), 2).sign, -1);
}

TEST(FixedWidth, ByteOrdersAndSignedness) {
  const uint8_t x80[] = {0x80}, x01[] = {0x01};
  const uint8_t s1[] = {0x01, 0x00}, s2[] = {0x00, 0x02};
  const uint8_t l1[] = {0xFF, 0, 0, 0}, l2[] = {0, 0, 0, 0x01};
  struct Case {
    const char* what;
    ObKeyCompareFn fn;
    uint8_t flags;
    const void *p1, *p2;
    int sign;
  } cases[] = {
      {"char is signed", CharCompare, 8, x80, x01, -1},
      {"byte is unsigned", ByteCompare, 8, x80, x01, 1},
      {"char ignores the format", CharCompare, 2, x80, x01, -1},
      {"short format 2: 256 > 2", ShortCompare, 2, s1, s2, 1},
      {"short format 1: 1 < 512", ShortCompare, 1, s1, s2, -1},
      {"short unknown format is little-endian", ShortCompare, 5, s1, s2, -1},
      {"short bits 4-7 are ignored", ShortCompare, 0x82, s1, s2, 1},
      {"word format 2", WordCompare, 2, s1, s2, 1},
      {"long format 2: 0xFF000000 is negative", LongCompare, 2, l1, l2, -1},
      {"dword format 2: 0xFF000000 is large", DwordCompare, 2, l1, l2, 1},
      {"long format 1: 255 > 16777216 is false", LongCompare, 1, l1, l2, -1},
      {"int format 2", IntCompare, 2, l1, l2, -1},
      {"unsigned format 2", UnsignedCompare, 2, l1, l2, 1},
      {"unsigned unknown format", UnsignedCompare, 3, l1, l2, -1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Compare(c.fn, c.flags, 0, c.p1, 0, c.p2, 1).sign, c.sign)
        << c.what;
  }
}

TEST(FixedWidth, FloatOrderIsTotal) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double nan2 = -std::numeric_limits<double>::signaling_NaN();
  struct Case {
    double a, b;
    int sign;
  } cases[] = {
      {nan, -inf, -1},  {nan, nan2, 0},     {-0.0, 0.0, 0},
      {1.0, inf, -1},   {-inf, -1e308, -1}, {inf, inf, 0},
      {5e-324, 0.0, 1}, {-inf, nan, 1},     {2.5, -2.5, 1},
  };
  for (const Case& c : cases) {
    for (uint8_t flags : {8, 1, 2, 4}) {
      uint8_t a[8], b[8];
      DoubleStore(a, &c.a, flags, 1);
      DoubleStore(b, &c.b, flags, 1);
      EXPECT_EQ(Compare(DoubleCompare, flags, 0, a, 0, b, 1).sign, c.sign)
          << c.a << " vs " << c.b << " format " << int(flags);
      float fa = static_cast<float>(c.a), fb = static_cast<float>(c.b);
      uint8_t x[4], y[4];
      FloatStore(x, &fa, flags, 1);
      FloatStore(y, &fb, flags, 1);
      int expected = c.sign;
      if (c.a == 5e-324) expected = 0;  // underflows to 0 as a float
      if (c.a == -inf && c.b == -1e308) expected = 0;  // both -inf
      EXPECT_EQ(Compare(FloatCompare, flags, 0, x, 0, y, 1).sign, expected)
          << fa << " vs " << fb << " format " << int(flags);
    }
  }
}

// Stored keys in every format must order exactly as the values do.
template <class T>
void CheckStoredMatchesMemory(ObKeyCompareFn fn,
                              uint32_t (*store)(void*, const void*, uint8_t,
                                                uint32_t)) {
  std::mt19937_64 rng(42);
  const uint32_t n = 4;
  for (int round = 0; round < 2000; ++round) {
    T a[n], b[n];
    for (uint32_t i = 0; i < n; ++i) {
      uint64_t bits = rng();
      // Small values make equal elements likely, so later ones matter too.
      if (round % 2 == 0) bits %= 3;
      std::memcpy(&a[i], &bits, sizeof(T));
      bits = round % 2 == 0 ? rng() % 3 : rng();
      std::memcpy(&b[i], &bits, sizeof(T));
    }
    Outcome mem = Compare(fn, 8, 0, a, 0, b, n);
    for (uint8_t flags : {1, 2, 7}) {
      uint8_t sa[n * sizeof(T)], sb[n * sizeof(T)];
      store(sa, a, flags, n);
      store(sb, b, flags, n);
      Outcome st = Compare(fn, flags, 0, sa, 0, sb, n);
      ASSERT_EQ(st.sign, mem.sign) << "format " << int(flags);
      ASSERT_EQ(st.status, 0);
    }
  }
}

TEST(FixedWidth, StoredFormsOrderAsValues) {
  CheckStoredMatchesMemory<int16_t>(ShortCompare, ShortStore);
  CheckStoredMatchesMemory<uint16_t>(WordCompare, ShortStore);
  CheckStoredMatchesMemory<int32_t>(IntCompare, IntStore);
  CheckStoredMatchesMemory<uint32_t>(UnsignedCompare, UnsignedStore);
  CheckStoredMatchesMemory<int32_t>(LongCompare, LongStore);
  CheckStoredMatchesMemory<uint32_t>(DwordCompare, LongStore);
  CheckStoredMatchesMemory<int64_t>(O_8BCompare, O_8BStore);
  CheckStoredMatchesMemory<uint64_t>(O_U8BCompare, O_8BStore);
  CheckStoredMatchesMemory<double>(DoubleCompare, DoubleStore);
  CheckStoredMatchesMemory<float>(FloatCompare, FloatStore);
}

}  // namespace

namespace {

// Long keys take the vector scan for equal bytes; results must match a plain
// element-by-element reference wherever the first difference lies, also
// when byte-different elements are equal (-0.0 and +0.0, NaN payloads).
TEST(ElementLoop, LongKeysMatchElementByElement) {
  const uint32_t n = 70;  // 560 bytes: every scan width and a tail
  std::mt19937 rng(7);
  for (uint32_t at = 0; at < n; ++at) {
    for (int variant = 0; variant < 3; ++variant) {
      std::vector<double> a(n), b(n);
      for (uint32_t i = 0; i < n; ++i) a[i] = b[i] = double(rng() % 1000);
      if (at > 0) {
        a[at - 1] = 0.0;
        b[at - 1] = -0.0;  // equal value, different bytes
      }
      if (variant == 1) b[at] = a[at] + 1;
      if (variant == 2) {
        a[at] = std::numeric_limits<double>::quiet_NaN();
        b[at] = -std::numeric_limits<double>::quiet_NaN();
      }
      int expected = variant == 1 ? -1 : 0;
      for (uint8_t flags : {8, 2}) {
        std::vector<uint8_t> x(n * 8), y(n * 8);
        DoubleStore(x.data(), a.data(), flags, n);
        DoubleStore(y.data(), b.data(), flags, n);
        Outcome o = Compare(DoubleCompare, flags, 0, x.data(), 0, y.data(), n);
        ASSERT_EQ(o.sign, expected) << "difference at " << at;
        ASSERT_EQ(o.status, 0);
        // Cut operand 2 just after the difference: the result is unchanged
        // when it differs, else the operand ends early.
        const uint32_t cut = (at + 1) * 8;
        o = Compare(DoubleCompare, flags, n * 8, x.data(), cut, y.data(), n);
        ASSERT_EQ(o.sign, expected);
        ASSERT_EQ(o.status,
                  expected == 0 && at + 1 < n ? ObCMP_OPERAND_EXHAUSTED : 0);
      }
    }
  }
}

}  // namespace
