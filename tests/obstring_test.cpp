// ObString: construction, editing bounds, the size limit, numbers.
#include <climits>
#include <cmath>
#include <string>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

std::string Text(const ObString& s) { return s.StrGet(); }

TEST(ObString, ConstructorsFromNumbersAndCharacters) {
  struct Case {
    const char* what;
    ObString s;
    const char* text;
    uint16_t size;
  } cases[] = {
      {"int 0 prints", ObString(0), "0", 2},
      {"char 0 has no buffer", ObString('\0'), "", 0},
      {"unsigned prints signed", ObString(4294967295u), "-1", 3},
      {"short", ObString(static_cast<short>(-5)), "-5", 3},
      {"int64", ObString(int64_t{-9223372036854775807 - 1}),
       "-9223372036854775808", 21},
      {"uint64", ObString(uint64_t{18446744073709551615u}),
       "18446744073709551615", 21},
      {"double", ObString(0.1), "0.10000000000000001", 20},
      {"infinity", ObString(HUGE_VAL), "Infinity", 9},
      {"length cut", ObString("abcdef", 3), "abc", 4},
      {"length 0", ObString("abc", 0), "", 0},
      {"length 65535 runs to the end", ObString("abc", 65535), "abc", 4},
      {"null pointer", ObString(static_cast<const char*>(nullptr)), "", 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Text(c.s), c.text) << c.what;
    EXPECT_EQ(c.s.GetSize(), c.size) << c.what;
    EXPECT_EQ(c.s.GetCodeSet(), ObString::GetDefault8CodeSet()) << c.what;
  }
  const unsigned short wide[] = {0x41, 0x3B1, 0};
  ObString w(wide);
  EXPECT_EQ(w.GetCodeSet(), ObString::GetDefault16CodeSet());
  EXPECT_EQ(w.Len(), 2u);
  EXPECT_EQ(w.GetSize(), 6);
  EXPECT_EQ(w.CharAt(1), 0x3B1);
}

TEST(ObString, EditingBounds) {
  struct Case {
    const char* what;
    ObString (*edit)(ObString);
    const char* result;
  } cases[] = {
      {"Cut(2,-1)", [](ObString s) { return s.Cut(2, -1); }, "ab"},
      {"Cut(2,10)", [](ObString s) { return s.Cut(2, 10); }, "ab"},
      {"Cut(6,1) does nothing", [](ObString s) { return s.Cut(6, 1); },
       "abcdef"},
      {"Cut(1,2)", [](ObString s) { return s.Cut(1, 2); }, "adef"},
      {"Cut(0,0) does nothing", [](ObString s) { return s.Cut(0, 0); },
       "abcdef"},
      {"Replace clips", [](ObString s) { return s.Replace("XYZ", 4); },
       "abcdXY"},
      {"Replace at the end does nothing",
       [](ObString s) { return s.Replace("XYZ", 6); }, "abcdef"},
      {"Insert beyond does nothing",
       [](ObString s) { return s.Insert("x", 7); }, "abcdef"},
      {"Insert at the end appends", [](ObString s) { return s.Insert("x", 6); },
       "abcdefx"},
      {"Insert at 0", [](ObString s) { return s.Insert("xy", 0); }, "xyabcdef"},
      {"Expand", [](ObString s) { return s.Expand(8, '.'); }, "abcdef.."},
      {"Expand shorter does nothing",
       [](ObString s) { return s.Expand(3, '.'); }, "abcdef"},
      {"Fill", [](ObString s) { return s.Fill(3, 'z'); }, "zzz"},
      {"Copy", [](ObString s) { return s.Copy(1, 3); }, "bcd"},
      {"Copy to the end", [](ObString s) { return s.Copy(4, 65535); }, "ef"},
      {"Copy beyond", [](ObString s) { return s.Copy(6, 1); }, ""},
      {"Left", [](ObString s) { return s.Left(10); }, "abcdef"},
      {"Right", [](ObString s) { return s.Right(2); }, "ef"},
      {"append itself", [](ObString s) { return s += s; }, "abcdefabcdef"},
      {"operator+", [](ObString s) { return s + ObString("!"); }, "abcdef!"},
      {"stream numbers", [](ObString s) { return s << 7 << 0.5; },
       "abcdef70.5"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Text(c.edit(ObString("abcdef"))), c.result) << c.what;
  }
  ObString copied = ObString("abc").Copy(6, 1);
  EXPECT_EQ(copied.GetSize(), 1);  // the empty text, not "no buffer"
  // Editing a string without a buffer.
  ObString none;
  none.Insert("q", 0);
  EXPECT_EQ(Text(none), "q");
}

TEST(ObString, SizeLimitCutsText) {
  std::string big(70000, 'x');
  ObString s(big.c_str());
  EXPECT_EQ(s.GetSize(), 65532);
  EXPECT_EQ(s.Len(), 65531u);
  s += "more";
  EXPECT_EQ(s.Len(), 65531u);
  ObString filled;
  filled.Fill(65531, 'y');
  EXPECT_EQ(filled.GetSize(), 65532);
  filled.Insert("ab", 0);
  EXPECT_EQ(filled.Len(), 65531u);
  EXPECT_EQ(filled.CharAt(0), 'a');

  static int asserted = 0;
  ORLO_SetAssertHandler([](const char* m, const char* src, int32_t line) {
    EXPECT_STREQ(m, "String overflow");
    EXPECT_STREQ(src, "obstring");
    EXPECT_EQ(line, 1110);
    ++asserted;
  });
  ObString quiet(big.c_str());
  EXPECT_EQ(asserted, 0);
  DefaultConfig().Set("debug", "stringOverflow", 1);
  ObString loud(big.c_str());
  EXPECT_EQ(asserted, 1);
  DefaultConfig().Set("debug", "stringOverflow", 0);
  ORLO_SetAssertHandler(nullptr);
}

TEST(ObString, CodeSetsAndMoves) {
  ObString s("abc");
  EXPECT_EQ(s.SetCodeSetCode(253), kObBadArgument);
  EXPECT_EQ(s.SetCodeSetCode(2), 0);
  EXPECT_EQ(s.MapToCodeSet(0), kObBadArgument);
  EXPECT_EQ(s.SetCodeSet(253), 0);
  EXPECT_EQ(s.GetSize(), 8);
  EXPECT_EQ(s.CharAt(2), 'c');
  EXPECT_EQ(s.MapToCodeSet(1), 0);
  EXPECT_EQ(Text(s), "abc");
  EXPECT_EQ(s.CopyMapped(s, 253), kObBadArgument);
  ObString w;
  EXPECT_EQ(w.CopyMapped(s, 253, 2), 0);
  EXPECT_EQ(w.Len(), 2u);
  EXPECT_TRUE(w.IsWide());
  w += ObString("z");  // converted into the wide code set
  EXPECT_EQ(w.CharAt(2), 'z');

  ObString from("moved");
  from.SetLanguage(3);
  ObString to;
  to.Destruct(from);
  EXPECT_EQ(Text(to), "moved");
  EXPECT_EQ(to.GetLanguage(), 3);
  EXPECT_EQ(from.GetSize(), 0);
  EXPECT_EQ(from.GetLanguage(), 3);

  EXPECT_EQ(to.SetNullValue(), 0);
  EXPECT_TRUE(to.IsNullValue());
  EXPECT_TRUE(ObString(254, 0).IsNullValue());
}

TEST(ObString, Numbers) {
  struct Case {
    const char* text;
    int32_t options;
    int asInt;
    int64_t asInt64;
  } cases[] = {
      {"0x10", 0, 16, 16},
      {"0x10", 1, 0, 0},
      {"017", 0, 15, 15},
      {"017", 1, 17, 17},
      {"-42abc", 0, -42, -42},
      {"", 0, 0, 0},
      {"99999999999", 0, INT_MAX, 99999999999},
  };
  for (const Case& c : cases) {
    ___ObTypeMgrOptions() = c.options;
    ObString s(c.text);
    EXPECT_EQ(static_cast<int>(s), c.asInt) << c.text << " " << c.options;
    EXPECT_EQ(static_cast<int64_t>(s), c.asInt64) << c.text;
  }
  ___ObTypeMgrOptions() = 0;

  struct Leading {
    const char* text;
    int32_t rc, value;
  } leading[] = {{" 12", -1, 0}, {"12abc", 0, 12}, {"-7", 0, -7},
                 {"+3", -1, 0},  {"x", -1, 0},     {"", -1, 0}};
  for (const Leading& c : leading) {
    int32_t v = 99;
    EXPECT_EQ(ObString(c.text).Atol(v), c.rc) << c.text;
    EXPECT_EQ(v, c.value) << c.text;
  }
  int64_t big = 0;
  EXPECT_EQ(ObString("0x7fffffffffffffff").Strtoll(big), 0);
  EXPECT_EQ(big, INT64_MAX);

  // 16-bit texts: every unit is a digit, without sign or validation.
  const unsigned short minus1[] = {'-', '1', 0};
  EXPECT_EQ(static_cast<int>(ObString(minus1)), (45 - 48) * 10 + 1);

  EXPECT_EQ(static_cast<double>(ObString("2.5")), 2.5);
  EXPECT_TRUE(std::isnan(static_cast<double>(ObString("nan"))));
  EXPECT_EQ(static_cast<double>(ObString("-Infinity")), -HUGE_VAL);
  EXPECT_EQ(static_cast<double>(ObString("abc")), 0.0);
  EXPECT_EQ(static_cast<double>(ObString("1e999")), HUGE_VAL);
}

}  // namespace

namespace {

// Code-set changes go through Unicode: windows-1252 and ISO-8859-2 differ
// above 0x7F, and characters a target lacks become '?'.
TEST(ObString, ConversionBetweenCodeSets) {
  ObString euro("\x80\xE9");  // € é in windows-1252
  EXPECT_EQ(euro.MapToCodeSet(253), 0);
  EXPECT_EQ(euro.CharAt(0), 0x20AC);
  EXPECT_EQ(euro.CharAt(1), 0xE9);
  EXPECT_EQ(euro.MapToCodeSet(2), 0);  // ISO-8859-2 has é but not €
  EXPECT_STREQ(euro.StrGet(), "?\xE9");
  ObString polish("\xB3\xF3");  // ł ó, labelled ISO-8859-2
  polish.SetCodeSetCode(2);
  ObString unicode(253, 1);
  unicode += polish;
  EXPECT_EQ(unicode.CharAt(0), 0x142);
  EXPECT_EQ(unicode.CharAt(1), 0xF3);
  EXPECT_TRUE(unicode == polish);  // equal text in any code set
}

}  // namespace
