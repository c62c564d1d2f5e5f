// Multibyte (UTF-8) conversion of texts.
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

TEST(MultiByte, DecodeOne) {
  struct Case {
    std::vector<uint8_t> bytes;
    size_t n;
    int32_t used;
    unsigned short value;
  } cases[] = {
      {{0x41}, 1, 1, 0x41},
      {{0xC3, 0xA9}, 2, 2, 0xE9},
      {{0xDF, 0xBF}, 2, 2, 0x7FF},
      {{0xE0, 0xA0, 0x80}, 3, 3, 0x800},
      {{0xEF, 0xBF, 0xBF}, 3, 3, 0xFFFF},
      {{0xF0, 0x9F, 0x98, 0x80}, 4, 4, 0xF600},  // low 16 bits of U+1F600
      {{0xC0, 0x80}, 2, -1, 0},                  // over-long 0
      {{0xE0, 0x80, 0x80}, 3, -1, 0},            // over-long
      {{0xC3, 0x41}, 2, -1, 0},                  // not a continuation
      {{0xC3, 0xA9}, 1, -1, 0},                  // cut
      {{0x80}, 1, -1, 0},                        // stray continuation
      {{0xFE, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80}, 7, -1, 0},
  };
  for (const Case& c : cases) {
    unsigned short v = 0;
    EXPECT_EQ(ObMultiByte2WChar(
                  &v, reinterpret_cast<const char*>(c.bytes.data()), c.n),
              c.used);
    if (c.used > 0) {
      EXPECT_EQ(v, c.value);
    }
  }
}

TEST(MultiByte, EncodeOne) {
  struct Case {
    wchar_t ch;
    std::vector<uint8_t> bytes;
  } cases[] = {
      {0x41, {0x41}},
      {0x7FF, {0xDF, 0xBF}},
      {0x800, {0xE0, 0xA0, 0x80}},
      {0x10000, {0xF0, 0x90, 0x80, 0x80}},
      {0x7FFFFFFF, {0xFD, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF}},
  };
  for (const Case& c : cases) {
    char out[6] = {};
    ASSERT_EQ(ObWChar2MultiByte(out, c.ch), int32_t(c.bytes.size()));
    EXPECT_EQ(std::memcmp(out, c.bytes.data(), c.bytes.size()), 0);
  }
  char out[6];
  EXPECT_EQ(ObWChar2MultiByte(out, static_cast<wchar_t>(-1)), -1);
  EXPECT_EQ(ObWChar2MultiByte(nullptr, 0x41), 0);
}

TEST(MultiByte, TextsBothWays) {
  ObString s;
  s.SetLanguage(4);
  const std::string ascii(300, 'a');
  EXPECT_EQ(ObMBS2ObString(ascii.c_str(), s, 300), 300);
  EXPECT_EQ(s.Len(), 300u);
  EXPECT_EQ(s.GetCodeSet(), 253);
  EXPECT_EQ(s.GetLanguage(), 4);

  const char* mixed =
      "Stra\xC3\x9F"
      "e \xE2\x82\xAC";
  EXPECT_EQ(ObMBS2ObString(mixed, s, -1), 11);
  EXPECT_EQ(s.Len(), 8u);
  EXPECT_EQ(s.CharAt(4), 0xDF);
  EXPECT_EQ(s.CharAt(7), 0x20AC);
  char back[32];
  EXPECT_EQ(ObString2ObMBS(s, back, sizeof back), 11);
  EXPECT_STREQ(back, mixed);
  EXPECT_EQ(ObMBSLength(s, 65535), 11);
  EXPECT_EQ(ObMBSLength(s, 5), 6);
  char* heap = nullptr;
  int32_t n = 0;
  EXPECT_EQ(ObString2MultiByteString(s, heap, n), 11);
  EXPECT_EQ(n, 11);
  EXPECT_STREQ(heap, mixed);
  std::free(heap);

  EXPECT_EQ(ObMBS2ObString("ab\xC3", s, 3), -1);  // cut: "ab" kept
  EXPECT_EQ(s.Len(), 2u);
  EXPECT_EQ(ObMBS2ObString(nullptr, s, 3), -1);
  EXPECT_EQ(ObMBS2ObString("abc", s, 0), 0);
  EXPECT_EQ(ObMBS2ObString("ab\0cd", s, 5), 2);  // stops at a decoded 0
  const std::string huge(40000, 'x');
  EXPECT_EQ(ObMBS2ObString(huge.c_str(), s, 40000), -2);
  EXPECT_EQ(s.Len(), 32765u);  // 16-bit units up to the size limit
}

TEST(MultiByte, AsciiFastPathReportsTheSizeNeeded) {
  char out[8];
  std::memset(out, 'z', sizeof out);
  EXPECT_EQ(ObString2ObMBS(ObString("abc"), out, 8), 3);
  EXPECT_EQ(std::string(out, 8), std::string("abc\0\0\0\0\0", 8));
  EXPECT_EQ(ObString2ObMBS(ObString("abcdefghij"), out, 4), -10);
  EXPECT_EQ(ObString2ObMBS(ObString("ab\xE9"), out, 8), 4);  // Latin-1 é
  EXPECT_EQ(std::string(out, 4), "ab\xC3\xA9");
  EXPECT_EQ(ObString2ObMBS(ObString(""), out, 8), 0);
}

// Random bytes through the decoders: results stay in range and nothing is
// read beyond the given length (the sanitizer build checks the reads).
TEST(MultiByte, RandomInputNeverOverreads) {
  std::mt19937 rng(2024);
  for (int round = 0; round < 3000; ++round) {
    const size_t n = rng() % 24;
    std::vector<char> bytes(n);
    for (char& b : bytes) {
      uint32_t r = rng();
      b = static_cast<char>(r % 4 == 0 ? 0x80 | (r >> 8) % 64 : r >> 8);
    }
    unsigned short units[32];
    int32_t chars = ObMultiByteStr2WCharStr(units, 32, bytes.data(),
                                            static_cast<int32_t>(n));
    EXPECT_GE(chars, -1);
    EXPECT_LE(chars, static_cast<int32_t>(n));
    ObString s;
    int32_t used = ObMBS2ObString(bytes.data(), s, static_cast<int32_t>(n));
    EXPECT_GE(used, -1);
    EXPECT_LE(used, static_cast<int32_t>(n));
    char out[200];
    int32_t w = ObString2ObMBS(s, out, sizeof out);
    EXPECT_GE(w, 0);
  }
}

}  // namespace
