// Hashing: equal keys hash equal, in memory and stored form.
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

constexpr uint32_t kMul = 1103515245u;

TEST(Hash, FrameAndFolding) {
  ObTypeMgr mgr(5);
  int32_t status = 0;
  const int8_t minus1 = -1;
  const uint8_t ff = 0xFF;
  EXPECT_EQ(mgr.Hash(Ob1B_T, 0, &minus1, 1, 8, status), 0xFFFFFFFFu * kMul);
  EXPECT_EQ(mgr.Hash(ObU1B_T, 0, &ff, 1, 8, status), 0xFFu * kMul);
  const int32_t ints[3] = {1, 2, 4};
  EXPECT_EQ(mgr.Hash(ObINT_T, 8, ints, 3, 8, status), (1u ^ 2u) * kMul);
  EXPECT_EQ(status, ObCMP_OPERAND_EXHAUSTED);
  EXPECT_EQ(mgr.Hash(ObINT_T, 0, ints, 3, 8, status), (1u ^ 2u ^ 4u) * kMul);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(mgr.Hash(ObINT_T, 0, ints, 0, 8, status), 0u);
  const int64_t wide = 0x0000000500000003;
  EXPECT_EQ(mgr.Hash(Ob8B_T, 0, &wide, 1, 8, status), (5u ^ 3u) * kMul);
  uint8_t big[8];
  O_8BStore(big, &wide, 2, 1);
  EXPECT_EQ(mgr.Hash(Ob8B_T, 8, big, 1, 2, status), (5u ^ 3u) * kMul);
}

// Random values (small ranges, so that equal pairs are common) in every
// form: whenever the comparator says equal, the hashes must be equal.
template <class T>
void CheckEqualHashEqual(char id, std::mt19937& rng, T (*make)(std::mt19937&)) {
  ObTypeMgr mgr(5);
  const uint16_t mem = mgr.MemLenGet(id, 1);
  int equalPairs = 0;
  for (int round = 0; round < 400; ++round) {
    const uint32_t count = 1 + rng() % 3;
    std::vector<T> a(count), b(count);
    for (uint32_t i = 0; i < count; ++i) {
      a[i] = make(rng);
      b[i] = make(rng);
    }
    ASSERT_EQ(sizeof(T), mem);
    int32_t status = 0;
    if (mgr.Cmp(id, 0, a.data(), 0, b.data(), 0, count, 8, status) == 0) {
      ++equalPairs;
      EXPECT_EQ(mgr.Hash(id, 0, a.data(), count, 8, status),
                mgr.Hash(id, 0, b.data(), count, 8, status))
          << int(id);
    }
    for (uint8_t format : {1, 2}) {
      const uint32_t size = mgr.DiskLenGet(id, a.data(), format, count, 8);
      std::vector<uint8_t> sa(size), sb(size);
      mgr.Store(id, sa.data(), a.data(), format, count);
      mgr.Store(id, sb.data(), b.data(), format, count);
      if (mgr.Cmp(id, size, sa.data(), size, sb.data(), 0, count, format,
                  status) == 0) {
        EXPECT_EQ(mgr.Hash(id, size, sa.data(), count, format, status),
                  mgr.Hash(id, size, sb.data(), count, format, status))
            << int(id) << " format " << int(format);
      }
    }
  }
  EXPECT_GT(equalPairs, 10) << int(id);
}

TEST(Hash, EqualValuesHashEqual) {
  std::mt19937 rng(5);
  CheckEqualHashEqual<int16_t>(Ob2B_T, rng, [](std::mt19937& r) {
    return static_cast<int16_t>(static_cast<int>(r() % 3) - 1);
  });
  CheckEqualHashEqual<uint32_t>(ObUNSIGNED_T, rng, [](std::mt19937& r) {
    return static_cast<uint32_t>(r() % 3);
  });
  CheckEqualHashEqual<int64_t>(Ob8B_T, rng, [](std::mt19937& r) {
    return static_cast<int64_t>(r() % 3) << 40;
  });
  CheckEqualHashEqual<double>(ObDOUBLE_T, rng, [](std::mt19937& r) {
    const double values[] = {0.0, -0.0, std::nan(""), -std::nan("1"), 1.5};
    return values[r() % 5];
  });
  CheckEqualHashEqual<float>(ObFLOAT_T, rng, [](std::mt19937& r) {
    const float values[] = {0.0f, -0.0f, std::nanf("2"), 1.5f};
    return values[r() % 4];
  });
  CheckEqualHashEqual<ObNull_int>(ObNULL_INT_T, rng, [](std::mt19937& r) {
    // Nulls carry any value: all nulls are equal.
    return ObNull_int{static_cast<int32_t>(r() % 3),
                      static_cast<int8_t>(r() % 2)};
  });
  CheckEqualHashEqual<ObBoolean>(ObBOOLEAN_T, rng, [](std::mt19937& r) {
    // Canonical values only: a raw byte such as 0x80 orders equal to both
    // false and true, so no hash can follow it.
    ObBoolean b(static_cast<int32_t>(r() % 2));
    if (r() % 3 == 0) b.SetNullValue();
    return b;
  });
}

TEST(Hash, Texts) {
  EXPECT_EQ(HashString(1, 254, "abc", -1, 1), 0xFEFE7575u);
  EXPECT_EQ(HashString(254, 0, "abc", -1, 1), 0xFEFE7575u);
  EXPECT_EQ(HashString(1, 1, "abc", 0, 1), 0u);
  EXPECT_EQ(HashString(1, 1, "abc", -2, 1), 0u);
  EXPECT_NE(HashString(1, 1, "abc", -1, 1), 0u);
  // Equal text in different code sets hashes alike.
  ObString wide(253, 1);
  wide += ObString("\xFCml\xE4ut");
  EXPECT_EQ(HashString(1, 1, "\xFCml\xE4ut", -1, 1),
            HashString(253, 1, wide.StrGet(), -1, 8));
  EXPECT_NE(HashString(1, 1, "ab", -1, 1), HashString(1, 1, "Ab", -1, 1));
  EXPECT_EQ(HashObString7(ObString("a\xE1")), HashObString7(ObString("aa")));
  EXPECT_NE(HashObString(ObString("a\xE1")), HashObString(ObString("aa")));
  EXPECT_EQ(HashObString(ObString("")), 0u);
}

}  // namespace
