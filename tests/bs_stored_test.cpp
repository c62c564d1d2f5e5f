#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "obbs.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Convert = uint32_t (*)(void*, const void*, uint8_t, uint32_t);

template <typename T>
Bytes Native(T value) {
  Bytes b(sizeof(T));
  std::memcpy(b.data(), &value, sizeof(T));
  return b;
}

struct EncodingCase {
  Convert fn;
  Bytes memory;    // the value as this machine holds it
  Bytes msbFirst;  // its stored form under format 2
};

// clang-format off
const EncodingCase kCases[] = {
    {ShortStore, Native<int16_t>(-2), {0xFF, 0xFE}},
    {IntStore, Native<int32_t>(-123456789), {0xF8, 0xA4, 0x32, 0xEB}},
    {IntLoad, Native<int32_t>(0x01020304), {1, 2, 3, 4}},
    {UnsignedStore, Native<uint32_t>(0x80000001u), {0x80, 0, 0, 0x01}},
    {UnsignedLoad, Native<uint32_t>(0xA1B2C3D4u), {0xA1, 0xB2, 0xC3, 0xD4}},
    {LongStore, Native<int32_t>(-1 - 0x7FFFFFFF), {0x80, 0, 0, 0}},
    {O_8BStore, Native<int64_t>(-0x0102030405060708), {0xFE, 0xFD, 0xFC, 0xFB, 0xFA, 0xF9, 0xF8, 0xF8}},
    {FloatStore, Native<float>(1.5f), {0x3F, 0xC0, 0, 0}},
    {DoubleStore, Native<double>(-2.5), {0xC0, 0x04, 0, 0, 0, 0, 0, 0}},
};
// clang-format on

TEST(StoredForm, EncodingOutputAndRoundTrip) {
  // Codes other than 8 and 2 must read as 1; the high nibble is ignored.
  for (uint8_t format : {1, 2, 0, 3, 7, 9, 15, 0x12, 0x81}) {
    for (const EncodingCase& c : kCases) {
      SCOPED_TRACE(testing::Message()
                   << "case " << (&c - kCases) << " format " << int(format));
      Bytes expected = c.msbFirst;
      if ((format & 0x0F) != 2)
        expected.assign(c.msbFirst.rbegin(), c.msbFirst.rend());
      Bytes stored(c.memory.size()), loaded(c.memory.size());
      EXPECT_EQ(c.fn(stored.data(), c.memory.data(), format, 1), stored.size());
      EXPECT_EQ(stored, expected);
      c.fn(loaded.data(), stored.data(), format, 1);
      EXPECT_EQ(loaded, c.memory);
    }
  }
}

// Several elements at an odd address, in and out of place, must match the
// one-element results and leave the neighbouring bytes alone. Format 8 and
// every Char format are plain copies.
TEST(StoredForm, ArraysUnalignedAndInPlace) {
  const Bytes memory = {0xCC, 0x81, 0x02, 0xF3, 0x04, 0x95, 0x06, 0xA7, 0x08,
                        0x19, 0x2A, 0x3B, 0x4C, 0x5D, 0x6E, 0x7F, 0x80, 0xCC};
  for (const EncodingCase& c : kCases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - kCases));
    const size_t w = c.memory.size();
    Bytes expected = memory;
    for (size_t at = 1; at < 17; at += w)
      c.fn(&expected[at], &memory[at], 2, 1);
    Bytes out(memory.size(), 0xCC), inPlace = memory, copy(memory.size(), 0xCC);
    EXPECT_EQ(c.fn(&out[1], &memory[1], 2, uint32_t(16 / w)), 16u);
    EXPECT_EQ(out, expected);
    c.fn(&inPlace[1], &inPlace[1], 0x22, uint32_t(16 / w));
    EXPECT_EQ(inPlace, expected);
    EXPECT_EQ(c.fn(&copy[1], &memory[1], 8, uint32_t(16 / w)), 16u);
    EXPECT_EQ(copy, memory);
    EXPECT_EQ(c.fn(nullptr, nullptr, 2, 0), 0u);
  }
  for (uint8_t format : {1, 2, 8, 15}) {
    Bytes copy(memory.size(), 0xCC);
    EXPECT_EQ(CharStore(&copy[1], &memory[1], format, 16), 16u);
    EXPECT_EQ(copy, memory) << int(format);
  }
}

TEST(StoredForm, StoreOneAndSizes) {
  const Bytes src = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  const struct {
    uint32_t (*one)(void*, const void*, uint8_t);
    Convert many;
  } ones[] = {{ShortStoreOne, ShortStore},
              {LongStoreOne, LongStore},
              {O_8BStoreOne, O_8BStore}};
  for (const auto& c : ones) {
    Bytes one(16, 0), many(16, 0);
    EXPECT_EQ(c.one(&one[0], &src[0], 2), c.many(&many[0], &src[0], 2, 1));
    EXPECT_EQ(one, many);
  }
  // Only the count matters, and the product wraps modulo 2^32.
  const uint32_t n = 0x40000001u, n2 = 0x80000002u;
  // clang-format off
  const uint32_t sizes[][3] = {
      {CharSizeGet(nullptr, 1, 2, n), CharNullSizeGet(n), n},
      {ShortSizeGet(&src[0], 8, 2, n), ShortNullSizeGet(n), n2},
      {IntSizeGet(nullptr, 2, 1, n), IntNullSizeGet(n), 4},
      {LongSizeGet(nullptr, 9, 9, n), LongNullSizeGet(n), 4},
      {FloatSizeGet(nullptr, 1, 8, n), FloatNullSizeGet(n), 4},
      {O_8BSizeGet(nullptr, 2, 8, n), O_8BNullSizeGet(n), 8},
      {DoubleSizeGet(nullptr, 8, 1, n), DoubleNullSizeGet(n), 8}};
  // clang-format on
  for (const auto& s : sizes) {
    EXPECT_EQ(s[0], s[2]);
    EXPECT_EQ(s[1], s[2]);
  }
}

}  // namespace
