// Stored text and blob records, index keys built from them, and their
// comparison and hashing.
#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes Stored(const ObString& s, uint8_t format) {
  Bytes out(StringSizeGet(&s, 8, format, 1));
  EXPECT_EQ(StringStore(out.data(), &s, format, 1), out.size());
  return out;
}

ObString Text(const char* text, uint8_t codeSet, uint8_t language) {
  ObString s(text);
  s.SetCodeSetCode(codeSet);
  s.SetLanguage(language);
  return s;
}

TEST(StringRecords, LayoutEveryByte) {
  EXPECT_EQ(Stored(Text("abc", 0, 0), 1),
            (Bytes{0x07, 0x00, 0, 0, 'a', 'b', 'c', 0x00, 0xFF}));
  EXPECT_EQ(Stored(Text("abc", 0, 0), 2),
            (Bytes{0x00, 0x07, 0, 0, 'a', 'b', 'c', 0x00, 0xFF}));
  ObString wide(253, 1);
  wide += ObString("xy");
  EXPECT_EQ(Stored(wide, 1),
            (Bytes{0x08, 0x00, 253, 1, 'x', 0, 'y', 0, 0x00, 0xFF}));
  EXPECT_EQ(Stored(wide, 2),
            (Bytes{0x00, 0x08, 253, 1, 0, 'x', 0, 'y', 0x00, 0xFF}));
  ObString none(1, 1);
  EXPECT_EQ(Stored(none, 1), (Bytes{0x04, 0x00, 1, 1, 0x00, 0xFF}));

  for (uint8_t format : {1, 2}) {
    ObString back;
    const Bytes rec = Stored(wide, format);
    EXPECT_EQ(StringLoad(&back, rec.data(), format, 1), rec.size());
    EXPECT_TRUE(back == wide);
    EXPECT_EQ(back.GetCodeSet(), 253);
  }
  // An earlier-form record: a length and 0-terminated characters.
  const Bytes old = {0x04, 0x00, 'x', 'y', 'z', 0};
  ObString fromOld;
  EXPECT_EQ(StringLoad(&fromOld, old.data(), 1, 1), 6u);
  EXPECT_STREQ(fromOld.StrGet(), "xyz");
  EXPECT_EQ(fromOld.GetCodeSet(), 0);

  const ObString one = Text("abc", 1, 1);
  const Bytes rec = Stored(one, 1);
  EXPECT_EQ(StringSizeGet(rec.data(), 1, 0x81, 1), 30u);
  EXPECT_EQ(StringSizeGet(&one, 8, 0x81, 1), 24u);
  EXPECT_EQ(StringSizeGet(rec.data(), 1, 0xA1, 1), 9u);  // 0x20: no code set
}

// Keys built from texts order as the texts do.
TEST(StringKeys, KeysOrderAsTexts) {
  ObTypeMgr mgr(5);
  const char* words[] = {"apple",
                         "Apple",
                         "\xE4pfel",
                         "zebra",
                         "a b",
                         "ab",
                         "",
                         "Stra\xDF"
                         "e",
                         "strasse",
                         "ab-c"};
  for (const char* x : words) {
    for (const char* y : words) {
      const ObString a = Text(x, 1, 1), b = Text(y, 1, 1);
      Bytes ka(64), kb(64);
      const uint32_t na =
          mgr.Translate(ObSTRING_T, ka.data(), 0x81, 64, &a, 8, 0, 1);
      const uint32_t nb =
          mgr.Translate(ObSTRING_T, kb.data(), 0x81, 64, &b, 8, 0, 1);
      ASSERT_GT(na, 4u);
      EXPECT_EQ(ka[2], 254);
      int32_t status = 0;
      const int32_t keys = mgr.Cmp(ObSTRING_T, na, ka.data(), nb, kb.data(),
                                   0x10, 1, 0x81, status);
      const int32_t texts = ObStrCmp(1, 1, x, 1, 1, y, 0x10, -1, 1, nullptr);
      EXPECT_EQ((keys > 0) - (keys < 0), (texts > 0) - (texts < 0))
          << x << " vs " << y;
      const int32_t stored =
          mgr.Cmp(ObSTRING_T, 0, &a, 0, &b, 0x10, 1, 8, status);
      EXPECT_EQ((stored > 0) - (stored < 0), (texts > 0) - (texts < 0));
    }
  }
  // A key cut by a small destination has no closing bytes.
  const ObString longText = Text("abcdefghij", 1, 1);
  Bytes cut(10);
  EXPECT_EQ(mgr.Translate(ObSTRING_T, cut.data(), 0x81, 10, &longText, 8, 0, 1),
            10u);
  EXPECT_NE(cut[9], 0xFF);
}

TEST(StringKeys, CutKeysAndWildcards) {
  ObTypeMgr mgr(5);
  int32_t status = 0;
  const Bytes a = Stored(Text("abcdef", 0, 0), 1);
  const Bytes same = Stored(Text("abcdef", 0, 0), 1);
  EXPECT_EQ(StringCompare(1, a.size(), a.data(), same.size(), same.data(), 0, 1,
                          status),
            0);
  EXPECT_EQ(status, 0);
  // Operand 1 lacks only its closing 0xFF; operand 2 goes on.
  const Bytes longer = Stored(Text("abcdefgh", 0, 0), 1);
  StringCompare(1, a.size() - 1, a.data(), longer.size(), longer.data(), 0, 1,
                status);
  EXPECT_EQ(status, ObCMP_OPERAND_EXHAUSTED);
  // A trailing "*" limits the comparison to the prefix.
  const Bytes pattern = Stored(Text("ab*", 0, 0), 1);
  EXPECT_EQ(StringCompare(1, a.size() - 1, a.data(), pattern.size(),
                          pattern.data(), 0, 1, status),
            0);
  EXPECT_EQ(status, 0);
  EXPECT_NE(StringCompare(1, a.size() - 1, a.data(), pattern.size(),
                          pattern.data(), 0x10, 1, status),
            0);
  // Cut at 254 bytes or more: unusable.
  const Bytes big = Stored(Text(std::string(300, 'q').c_str(), 0, 0), 1);
  EXPECT_EQ(
      StringCompare(1, 280, big.data(), big.size(), big.data(), 0, 1, status),
      -1);
  EXPECT_EQ(status, -2999);
}

TEST(Blobs, StoredFormAndComparison) {
  ObTypeMgr mgr(5);
  ObBlob blobs[2] = {ObBlob("ab", 2), ObBlob()};
  blobs[1].SetNullValue();
  Bytes out(mgr.DiskLenGet(ObBLOB_T, blobs, 2, 2, 8));
  EXPECT_EQ(mgr.Store(ObBLOB_T, out.data(), blobs, 2, 2), 10u);
  EXPECT_EQ(out, (Bytes{0, 0, 0, 2, 'a', 'b', 0xFF, 0xFF, 0xFF, 0xFF}));
  ObBlob back[2];
  EXPECT_EQ(mgr.Load(ObBLOB_T, back, out.data(), 2, 2), 10u);
  EXPECT_TRUE(back[0] == blobs[0]);
  EXPECT_TRUE(back[1].IsNullValue());
  int32_t status = 0;
  const Bytes nullBlob = {0xFF, 0xFF, 0xFF, 0xFF}, empty = {0, 0, 0, 0};
  EXPECT_EQ(BlobCompare(2, 4, nullBlob.data(), 4, empty.data(), 0, 1, status),
            -2);
  EXPECT_EQ(BlobCompare(2, 4, empty.data(), 4, nullBlob.data(), 0, 1, status),
            2);
  ObBlob x("ab", 2), y("ac", 2);
  EXPECT_EQ(BlobCompare(8, 0, &x, 0, &y, 0, 1, status), 1);
  EXPECT_EQ(BlobCompare(8, 0, &y, 0, &x, 0, 1, status), 1);
  EXPECT_EQ(mgr.Hash(ObBLOB_T, 0, &x, 1, 8, status),
            mgr.Hash(ObBLOB_T, 0, &y, 1, 8, status));
}

TEST(StringKeys, EqualTextsHashEqual) {
  ObTypeMgr mgr(5);
  const char* words[] = {"ab", "Ab", "a b", "\xE4", "ae", "x", ""};
  for (const char* x : words) {
    for (const char* y : words) {
      ObString a = Text(x, 1, 2), b(253, 2);
      b += Text(y, 1, 2);
      int32_t status = 0;
      if (mgr.Cmp(ObSTRING_T, 0, &a, 0, &b, 0x10, 1, 8, status) != 0) continue;
      EXPECT_EQ(mgr.Hash(ObSTRING_T, 0, &a, 1, 8, status),
                mgr.Hash(ObSTRING_T, 0, &b, 1, 8, status))
          << x << " vs " << y;
      const Bytes ra = Stored(a, 1), rb = Stored(b, 1);
      EXPECT_EQ(mgr.Hash(ObSTRING_T, ra.size(), ra.data(), 1, 1, status),
                mgr.Hash(ObSTRING_T, rb.size(), rb.data(), 1, 1, status));
    }
  }
}

TEST(StringKeys, CounterBoundsKeysFromAbove) {
  ObTypeMgr mgr(5);
  const ObString s = Text("ab", 1, 1);
  Bytes key(16);
  const uint32_t n =
      mgr.Translate(ObSTRING_T, key.data(), 0x81, 16, &s, 8, 0, 1);
  EXPECT_EQ(mgr.GetValue(ObSTRING_T, key.data(), 16, 0x81, 'N'), 0);
  // Keys hold 16-bit orders: the highest unit goes behind the text.
  EXPECT_EQ(key[n - 2], 0xFE);
  EXPECT_EQ(key[n - 1], 0xFF);
  EXPECT_EQ(mgr.GetValue(ObSTRING_T, key.data(), 16, 0x01, 'N'),
            kObNotSupported);
}

// Random and mutated records with random lengths: results stay defined and
// nothing outside the given lengths is read (checked by the sanitizers).
TEST(StringKeys, RandomRecordsNeverOverread) {
  ObTypeMgr mgr(5);
  std::mt19937 rng(11);
  for (int round = 0; round < 3000; ++round) {
    Bytes a = Stored(Text("hello", 1, 1), 1),
          b = Stored(Text("help*", 1, 1), 1);
    for (int m = rng() % 4; m > 0; --m)
      a[rng() % a.size()] = static_cast<uint8_t>(rng());
    for (int m = rng() % 4; m > 0; --m)
      b[rng() % b.size()] = static_cast<uint8_t>(rng());
    const uint32_t la = 1 + rng() % a.size(), lb = 1 + rng() % b.size();
    Bytes ca(a.begin(), a.begin() + la), cb(b.begin(), b.begin() + lb);
    int32_t status = 0;
    const uint8_t flags = rng() % 2 ? 1 : 0x81;
    StringCompare(flags, la, ca.data(), lb, cb.data(),
                  static_cast<uint16_t>(rng() % 0x400), 1 + rng() % 2, status);
    mgr.Hash(ObSTRING_T, la, ca.data(), 1, flags & 0x0F, status);
    ObString loaded[2];
    mgr.Translate(ObSTRING_T, loaded, 8, 0, ca.data(), 1, la, 2);
    Bytes key(1 + rng() % 40);
    mgr.Translate(ObSTRING_T, key.data(), 0x81, key.size(), ca.data(), 1, la,
                  1);
    BlobCompare(2, la, ca.data(), lb, cb.data(), 0, 2, status);
    mgr.Hash(ObBLOB_T, la, ca.data(), 2, 2, status);
  }
}

}  // namespace
