// Text forms of the basic rows through the type manager.
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

std::string Print(char id, const void* values, const char* format = nullptr,
                  uint32_t count = 1, const char* start = "") {
  ObTypeMgr mgr(5);
  ObString out(start);
  mgr.PrintToObString(id, out, values, format, count);
  return out.StrGet();
}

TEST(PrintScan, PrintsNumbersWithCatalogueFormats) {
  const int32_t three[3] = {1, 2, 3};
  const int16_t shorts[1] = {-7};
  const uint32_t big = 4000000000u;
  const int64_t i64 = -9000000000;
  const uint64_t u64 = 18000000000000000000u;
  const double inf = HUGE_VAL, nan = std::nan(""), d = 0.5;
  const float f = 0.25f;
  const uint8_t bytes[3] = {0x41, 0x01, 0x42};
  const uint8_t withZero[2] = {0x41, 0x00};
  struct Case {
    const char* what;
    std::string text;
    const char* expected;
  } cases[] = {
      {"array appends with separators", Print(Ob4B_T, three, nullptr, 3, "x"),
       "x1,2,3"},
      {"%hd", Print(Ob2B_T, shorts), "-7"},
      {"%lu is 32-bit here too", Print(ObU4B_T, &big), "4000000000"},
      {"BlockId", Print(ObBLOCKID_T, &big), "#4000000000"},
      {"%I64d", Print(Ob8B_T, &i64), "-9000000000"},
      {"%I64u", Print(ObU8B_T, &u64), "18000000000000000000"},
      {"Infinity", Print(ObDOUBLE_T, &inf), "Infinity"},
      {"NaN", Print(ObDOUBLE_T, &nan), "NaN"},
      {"%f with C's infinity", Print(ObDOUBLE_T, &inf, "%f"), "inf"},
      {"double", Print(ObDOUBLE_T, &d), "0.5"},
      {"float through double", Print(ObFLOAT_T, &f), "0.25"},
      {"bytes as one run", Print(Ob1B_T, bytes, nullptr, 3), "A0x01B"},
      {"zero byte", Print(ObU1B_T, withZero, nullptr, 2), "A0x00"},
      {"format naming two values prints nothing", Print(ObINT_T, three, "%d%d"),
       ""},
      {"format naming a text prints nothing", Print(ObINT_T, three, "%s"), ""},
  };
  for (const Case& c : cases) EXPECT_EQ(c.text, c.expected) << c.what;
}

TEST(PrintScan, NullsBooleansBlobsStrings) {
  ObBoolean t(1), nullBool;
  nullBool.SetNullValue();
  ObNull_int ni = {5, 1}, vi = {5, 0};
  ObBlob blob(12), nullBlob;
  nullBlob.SetNullValue();
  ObString s("abc"), nullString;
  nullString.SetNullValue();
  EXPECT_EQ(Print(ObBOOLEAN_T, &t), "TRUE");
  EXPECT_EQ(Print(ObBOOLEAN_T, &nullBool), "{NULL}");
  EXPECT_EQ(Print(ObNULL_INT_T, &ni), "{NULL}");
  EXPECT_EQ(Print(ObNULL_INT_T, &vi), "5");
  EXPECT_EQ(Print(ObBLOB_T, &blob), "[BLOB,len=12]");
  EXPECT_EQ(Print(ObBLOB_T, &blob, "%L%% %x"), "12% x");
  EXPECT_EQ(Print(ObBLOB_T, &nullBlob), "{NULL}");
  EXPECT_EQ(Print(ObSTRING_T, &s, "<%s>"), "<abc>");
  EXPECT_EQ(Print(ObSTRING_T, &nullString), "{NULL}");
  ObString wide(253, 1);
  wide += ObString(
      "Stra\xDF"
      "e");
  // Each order becomes one display character: ß is two orders.
  EXPECT_EQ(Print(ObSTRING_T, &wide), "Stra\xDFse");
  EXPECT_EQ(Print(ObSTRING_T, &wide, "%2M"), "Strasse");  // base letters

  ObTypeMgr::SetNullPrintString(ObString("-"));
  EXPECT_EQ(Print(ObSTRING_T, &nullString), "-");
  ObTypeMgr mgr(5);
  ObBoolean b(1);
  ObString dash("-");
  mgr.ScanFromObString(ObBOOLEAN_T, &b, dash, nullptr, 1);
  EXPECT_TRUE(b.IsNullValue());
  ObTypeMgr::SetNullPrintString(ObString("{NULL}"));
}

TEST(PrintScan, Scans) {
  ObTypeMgr mgr(5);
  auto scan = [&](char id, void* v, const char* text,
                  const char* format = nullptr, uint32_t count = 1) {
    ObString t(text);
    return mgr.ScanFromObString(id, v, t, format, count);
  };
  double d = 1;
  scan(ObDOUBLE_T, &d, "nan");
  EXPECT_TRUE(std::isnan(d));
  scan(ObDOUBLE_T, &d, "abc");
  EXPECT_EQ(d, 0.0);
  scan(ObDOUBLE_T, &d, "-Infinity");
  EXPECT_EQ(d, -HUGE_VAL);
  int32_t i = 7;
  scan(Ob4B_T, &i, "-42");
  EXPECT_EQ(i, -42);
  scan(Ob4B_T, &i, "junk");  // no match: unchanged
  EXPECT_EQ(i, -42);
  scan(Ob4B_T, &i, "5", "%");  // unterminated format: unchanged
  EXPECT_EQ(i, -42);
  int64_t big = 0;
  scan(Ob8B_T, &big, "-9000000000");
  EXPECT_EQ(big, -9000000000);
  uint8_t bytes[3] = {};
  scan(Ob1B_T, bytes, "0x41", nullptr, 3);  // one position per byte
  EXPECT_EQ(bytes[0], 0x41);
  EXPECT_EQ(bytes[1], 'x');
  EXPECT_EQ(bytes[2], '4');
  ObBoolean b;
  for (const char* yes : {"T", "t", "TRUE", "true", "1"}) {
    b = 0;
    scan(ObBOOLEAN_T, &b, yes);
    EXPECT_TRUE(b == 1) << yes;
  }
  scan(ObBOOLEAN_T, &b, "yes");
  EXPECT_TRUE(b == 0);
  scan(ObBOOLEAN_T, &b, "{NULL}");
  EXPECT_TRUE(b.IsNullValue());
  ObNull_int n = {3, 0};
  scan(ObNULL_INT_T, &n, "");
  EXPECT_EQ(n.isNull, 1);
  scan(ObNULL_INT_T, &n, "12");
  EXPECT_EQ(n.isNull, 0);
  EXPECT_EQ(n.value, 12);
  ObString s;
  scan(ObSTRING_T, &s, "text");
  EXPECT_STREQ(s.StrGet(), "text");
  scan(ObSTRING_T, &s, "{NULL}x");
  EXPECT_TRUE(s.IsNullValue());
}

TEST(Boolean, OperatorsAndKeys) {
  ObBoolean t(7), f(0), n;
  n.SetNullValue();
  EXPECT_EQ(t.GetValue(), 1);
  EXPECT_TRUE(n == n);
  EXPECT_FALSE(n == f);
  EXPECT_TRUE(n < f);
  EXPECT_FALSE(f < n);
  EXPECT_FALSE(n > t);
  EXPECT_TRUE(t > n);
  EXPECT_FALSE(n == 0);
  EXPECT_TRUE(n < 0);
  EXPECT_FALSE(n > 0);
  EXPECT_FALSE(t < 5);
  EXPECT_TRUE(f < 5);
  EXPECT_FALSE(f > 0);
  int32_t status = 0;
  EXPECT_EQ(BooleanCompare(8, 0, &n, 0, &f, 0, 1, status), -1);
  EXPECT_EQ(BooleanCompare(2, 0, &t, 0, &f, 0, 1, status), 1);
  ObTypeMgr mgr(5);
  EXPECT_EQ(mgr.GetValue(ObBOOLEAN_T, &f, 0, 8, 'N'), 0);
  EXPECT_TRUE(f == 1);
  EXPECT_EQ(mgr.GetValue(ObBOOLEAN_T, &f, 0, 8, 'N'), kObCounterAtMax);
}

TEST(Blob, EditingRules) {
  std::string bytes(300, 'b');
  ObBlob blob(bytes.data(), 200);
  const void* block = blob.Data();
  blob.SetTo(bytes.data(), 72);
  EXPECT_EQ(blob.Data(), block);  // 200 <= 72 + 128: reused
  EXPECT_EQ(blob.Length(), 72);
  ObBlob other(bytes.data(), 200);
  block = other.Data();
  other.SetTo(bytes.data(), 71);
  EXPECT_NE(other.Length(), 200);
  EXPECT_EQ(other.Length(), 71);
  ObBlob nullBlob;
  nullBlob.SetNullValue();
  EXPECT_EQ(nullBlob.Search(ObBlob("x")), 65535);
  ObBlob cut(bytes.data(), 10);
  cut.Cut(0, cut.Length());
  EXPECT_FALSE(cut.IsNullValue());
  EXPECT_EQ(cut.Length(), 0);
  const uint8_t two[] = {1, 2}, three[] = {1, 2, 3};
  EXPECT_EQ(ObBlob(two, 2) != ObBlob(three, 3), -1);
  EXPECT_EQ(nullBlob != ObBlob(two, 2), -2);
  ObBlob text("hello world");
  EXPECT_EQ(text.Search(ObBlob("world", 5)), 6);
  ObBlob mid = text.CopyFrom(6, 100);
  EXPECT_EQ(mid.Length(), 6);  // "world" and the terminator
  EXPECT_EQ(text.CopyFrom(50, 2).Length(), 0);
  text.Cut(5, 6);
  EXPECT_STREQ(static_cast<const char*>(text.Data()), "hello");
  EXPECT_EQ(text.Seek(6, 1), nullptr);
  EXPECT_NE(text.Seek(0, 6), nullptr);
  EXPECT_EQ(static_cast<int>(ObBlob("42")), 42);
}

}  // namespace
