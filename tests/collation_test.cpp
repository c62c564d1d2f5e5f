// Collation orders, the string iterator, ObChar and ObStrCmp on the shipped
// language data.
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

// Code set 1 (windows-1252) text from a byte string.
int32_t Cmp(const char* a, const char* b, uint16_t op = 0x0010,
            uint8_t lang1 = 1, uint8_t lang2 = 1, int16_t maxLength = -1) {
  return ObStrCmp(1, lang1, a, 1, lang2, b, op, maxLength, 1, nullptr);
}

int Sign(int32_t v) { return (v > 0) - (v < 0); }

std::vector<uint16_t> Orders(const char* text, uint8_t language = 1,
                             uint8_t codeSet = 1) {
  ObStringIterator it(text, codeSet, language, 1);
  std::vector<uint16_t> out;
  for (uint16_t o; (o = it.GetNextOrder(1)) != 0 && out.size() < 16;)
    out.push_back(o);
  return out;
}

TEST(Orders, OfCharacters) {
  struct Case {
    const char* text;
    uint8_t language;
    std::vector<uint16_t> orders;
  } cases[] = {
      {"a", 1, {0x500C}},
      {"A", 1, {0x400C}},
      {"\xE1", 1, {0x510C}},  // á
      {"*", 1, {159}},
      {"09", 1, {16128, 16218}},
      {" ", 1, {32}},
      {"\xBD", 1, {16139, 16148}},    // ½ expands
      {"\xE4", 2, {0x530C, 0x501C}},  // German ä = a/6 + e
      {"\xE4", 1, {0x530C}},          // root ä
      {"ch", 4, {0x5015}},            // Spanish contraction
      {"ch", 1, {0x5014, 0x5028}},
      {"\xDF", 1, {0x57D4, 0x5054}},  // ß
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Orders(c.text, c.language), c.orders) << c.text;
  }
  // ISO-8859-2 has no table of its own: ł goes through code set 253.
  EXPECT_EQ(Orders("\xB3", 1, 2), std::vector<uint16_t>{0x5438});
}

TEST(Orders, FunctionsTakeOrdersApart) {
  uint16_t digit = 0, expand = 0, symbol = 0;
  EXPECT_EQ(ObExtractDigitFromOrder(16128 + 21, digit, expand), 0);
  EXPECT_EQ(digit, 2);
  EXPECT_EQ(expand, 1);
  EXPECT_EQ(ObExtractDigitFromOrder(16383, digit, expand), 0);
  EXPECT_EQ(digit, 25);
  EXPECT_EQ(ObExtractDigitFromOrder(100, digit, expand), kObBadArgument);
  EXPECT_EQ(ObExtractSymbolFromOrder(116, symbol), 0);
  EXPECT_EQ(symbol, 36);
  EXPECT_EQ(ObExtractSymbolFromOrder(16128, symbol), kObBadArgument);

  struct Case {
    uint16_t order;
    uint8_t id;
    const char* text;
  } cases[] = {
      {13, 1, "undefined ordering indicator"},
      {0, 1, "space"},
      {79, 1, "space"},
      {80, 1, "symbol "},
      {135, 1, "symbol \""},
      {116, 1, "symbol -"},
      {40000, 1, "HAN character 0x9c40\n"},
      {0x500C, 20, "HAN character 0x500c\n"},
      {0x510C, 1, "lower letter a with accent acute"},
      {0x400D, 1, "upper letter A with extension"},
      {16139, 1, "digit 1 with expand"},
  };
  for (const Case& c : cases) {
    ObString text;
    EXPECT_EQ(ObConvertOrderToString(c.order, c.id, text), 0);
    EXPECT_STREQ(text.StrGet(), c.text) << c.order;
  }
  unsigned char ch = 0;
  const char* name = nullptr;
  EXPECT_EQ(ObConvertOrderToChar(90, 1, ch, 0, nullptr), 0);
  EXPECT_EQ(ch, 7);
  ObConvertOrderToChar(0x510C, 1, ch, 1, &name);
  EXPECT_EQ(ch, 225);
  EXPECT_STREQ(name, "\\'a");
  ObConvertOrderToChar(0x510C, 1, ch, 0, &name);
  EXPECT_EQ(ch, 'a');
  ObConvertOrderToChar(40000, 1, ch, 0, nullptr);
  EXPECT_EQ(ch, 127);
}

TEST(Iterator, OverflowAndEnd) {
  ObString none;
  ObStringIterator empty(none);
  EXPECT_TRUE(empty.IsEOS());
  EXPECT_EQ(empty.GetNextOrder(1), 0);

  ObString text("xy");
  ObStringIterator it(text);
  static const uint16_t items[] = {'a', 'b', 'c'};
  static const ObWCharList list(items, 3);
  it.SetOverflow(&list, 255);
  for (uint16_t expected : items) EXPECT_EQ((*it).GetValue(), expected);
  ++it;  // drops the drained list and moves on
  EXPECT_EQ((*it).GetValue(), 'y');
}

TEST(StrCmp, WorkedExamples) {
  struct Case {
    const char* a;
    const char* b;
    uint16_t op;
    uint8_t lang1, lang2;
    int32_t expected;
  } cases[] = {
      {"ab", "Ab", 0x10, 1, 1, -32},
      {"ab", "Ab", 0x30, 1, 1, 0},
      {"a b", "ab", 0x10, 1, 1, 32},
      {"a b", "ab", 0x90, 1, 1, 0},
      {"a-b", "ab", 0x10, 1, 1, 116},
      {"a-b", "ab", 0x210, 1, 1, 0},
      {"M\xFCller", "Mueller", 0x10, 2, 2, 6},
      {"M\xFCller", "Mueller", 0x50, 2, 2, 0},
      {"M\xFCller", "Mueller", 0x10, 1, 1, 7168},
      {"chico", "cuna", 0x10, 4, 4, 256},
      {"chico", "cuna", 0x10, 1, 1, -13312},
      {"zebra", "\xE4rlig", 0x10, 5, 5, -2048},
      {"zebra", "\xE4rlig", 0x10, 1, 1, 25600},
      {"Aalborg", "Z\xFCrich", 0x10, 6, 6, 3072},
      {"abc", "abc", 0x10, 1, 2, -16777216},
      {"c\xF4te", "cot\xE9", 0x10, 3, 3, -2},
      {"Stra\xDF"
       "e",
       "Strasse", 0x10, 1, 1, 15},
      {"Stra\xDF"
       "e",
       "Strasse", 0x50, 1, 1, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Cmp(c.a, c.b, c.op, c.lang1, c.lang2), c.expected)
        << c.a << " vs " << c.b << " op " << std::hex << c.op;
  }
}

TEST(StrCmp, WildcardsNullsAndLimits) {
  const uint16_t wild = 0;  // wildcards on
  struct Case {
    const char* text;
    const char* pattern;
    uint16_t op;
    int sign;
  } cases[] = {
      {"abc", "a*", wild, 0},    {"abc", "*c", wild, 0},
      {"abc", "a?c", wild, 0},   {"abc", "*", wild, 0},
      {"abc", "ab?d", wild, -1}, {"abc", "a**c", wild, 0},
      {"abcbc", "*bc", wild, 0}, {"abcabd", "*abd", wild, 0},
      {"abc", "*d", wild, -1},   {"ab", "ab?", wild, -1},
      {"aXc", "a?c", wild, 0},   {"abc", "a*", 0x10, 1},
      {"A", "a", 0x30, 0},       {"ac", "Ab", 0x10, 1},
      {"ABC", "a*", 0x20, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Sign(Cmp(c.text, c.pattern, c.op)), c.sign)
        << c.text << " vs " << c.pattern;
  }
  EXPECT_EQ(ObStrCmp(0, 254, nullptr, 0, 254, nullptr, 0x10, -1, 1, nullptr),
            0);
  EXPECT_EQ(ObStrCmp(1, 1, "abc", 0, 254, nullptr, 0x10, -1, 1, nullptr), 1);
  EXPECT_EQ(ObStrCmp(0, 254, nullptr, 1, 1, "abc", 0x10, -1, 1, nullptr), -1);
  EXPECT_EQ(Cmp("abc", "xyz", 0x10, 1, 1, 0), 0);
  EXPECT_EQ(Cmp("abcd", "abcz", 0x10, 1, 1, 3), 0);
  EXPECT_LT(Cmp("abc", "abd", 0x100), 0);
  EXPECT_EQ(Cmp("abc", "abc", 0x100, 1, 2), -16777216);

  // Raw bytes on both sides.
  struct Raw {
    const char* text;
    const char* pattern;
    uint16_t op;
    int32_t expected;
  } raws[] = {
      {"abc", "a*", 0, 0},     {"abc", "a?c", 0, 0}, {"ab", "ab?", 0, -1},
      {"abc", "abd", 0, -1},   {"abc", "*bc", 0, 0}, {"abc", "ABC", 0x10, 32},
      {"abc", "abc", 0x10, 0},
  };
  for (const Raw& r : raws) {
    EXPECT_EQ(ObStrCmp(0, 0, r.text, 0, 0, r.pattern, r.op, -1, 1, nullptr),
              r.expected)
        << r.text << " vs " << r.pattern;
  }
  EXPECT_EQ(ObStrCmp(0, 0, "a", 0, 0, nullptr, 0, -1, 1, nullptr), 1);
  EXPECT_EQ(ObStrCmp(0, 0, nullptr, 0, 0, "a", 0, -1, 1, nullptr), -1);

  int32_t out = 99;
  EXPECT_EQ(ObStrCmp(1, 1, "a b", 1, 1, "ab", 0x90, -1, 1, &out), 0);
  EXPECT_EQ(out, 0);
  EXPECT_EQ(FindWildcard(1, 1, "ab*c", 0, 10, nullptr, 1), 2);
  EXPECT_EQ(FindWildcard(1, 1, "ab?c", 1, 10, nullptr, 1), -1);
  EXPECT_EQ(FindWildcard(0, 0, "ab?c", 0, 10, nullptr, 1), 2);
}

// Random texts and patterns: no fault under the sanitizers, and every text
// equals itself.
TEST(StrCmp, RandomInputs) {
  std::mt19937 rng(99);
  const char alphabet[] = "ab*?cC \xE4\xDF-1";
  for (int round = 0; round < 3000; ++round) {
    std::string t, p;
    for (size_t n = rng() % 8; n > 0; --n) t += alphabet[rng() % 12];
    for (size_t n = rng() % 8; n > 0; --n) p += alphabet[rng() % 12];
    const uint16_t ops[] = {0, 0x10, 0x20, 0x40, 0x80, 0x100, 0x200, 0x2F0};
    const uint16_t op = ops[rng() % 8];
    const uint8_t lang = static_cast<uint8_t>(rng() % 7);
    Cmp(t.c_str(), p.c_str(), op, lang, lang,
        static_cast<int16_t>(rng() % 9) - 1);
    EXPECT_EQ(Cmp(t.c_str(), t.c_str(), op | 0x10, lang, lang), 0) << t;
  }
}

TEST(TextMembers, SearchSplitTrimCase) {
  EXPECT_EQ(ObString("abc").Find(ObString("b"), 0, 0), 1);  // "b*" matches
  EXPECT_EQ(ObString("abc").Find(ObString("c"), 0, 0x10), 2);
  EXPECT_EQ(ObString("abc").Find(ObString("x"), 0, 0x10), -1);
  EXPECT_EQ(ObString("abc").Find(ObString("b"), 4, 0x10), -1);

  ObString list("a,,b"), item;
  unsigned short pos = 0;
  EXPECT_EQ(ObSplitList(list, item, ObString(","), pos), 0);
  EXPECT_STREQ(item.StrGet(), "a");
  EXPECT_EQ(ObSplitList(list, item, ObString(","), pos), 0);
  EXPECT_STREQ(item.StrGet(), "b");
  EXPECT_EQ(ObSplitList(list, item, ObString(","), pos), kObEndOfList);

  struct Trim {
    const char* in;
    const char* right;
    const char* both;
  } trims[] = {{"ab  ", "ab", "ab"}, {"   ", "", ""}, {" a b ", " a b", "a b"}};
  for (const Trim& t : trims) {
    EXPECT_STREQ(ObString(t.in).RightTrim().StrGet(), t.right);
    EXPECT_STREQ(ObString(t.in).Trim().StrGet(), t.both);
  }
  EXPECT_STREQ(ObString("stra\xDF"
                        "e")
                   .ToUpper()
                   .StrGet(),
               "STRASSE");
  EXPECT_STREQ(ObString("\xC4pfel").ToLower().StrGet(), "\xE4pfel");
  EXPECT_EQ(ObChar('\xB5', 1, 1).ToUpper(nullptr).GetValue(), 0xB5);
  EXPECT_STREQ(ObString("a.b.c").ReplaceAll('.', '-', 0x10).StrGet(), "a-b-c");

  EXPECT_TRUE(ObString("abc") == ObString("abc"));
  EXPECT_TRUE(ObString("ab") < ObString("Ab"));
  ObString german("abc");
  german.SetLanguage(2);
  EXPECT_FALSE(german == ObString("abc"));
  EXPECT_EQ(german.EqualsIgnoreLanguage(ObString("abc")), 1);
}

TEST(Characters, ClassesViewsAndMapping) {
  EXPECT_TRUE(ObChar('\0', 1, 1).IsSpace());
  EXPECT_TRUE(ObChar('7', 1, 1).IsDigit());
  EXPECT_TRUE(ObChar('-', 1, 1).IsSymbol());
  EXPECT_TRUE(ObChar('\xE9', 1, 1).IsAlpha());
  EXPECT_TRUE(ObChar(static_cast<unsigned short>(0x4E00), 253, 1).IsHan());

  ObString text("abc");
  ObChar view = text[1];
  view = ObChar(static_cast<unsigned short>(0xE9), 253, 1);  // é into cp1252
  EXPECT_STREQ(text.StrGet(),
               "a\xE9"
               "c");
  ObChar same = ObChar('x', 1, 1).MapTo(1);
  EXPECT_EQ(same.GetValue(), 'x');
  EXPECT_EQ(ObChar('\x80', 1, 1).MapTo(253).GetValue(), 0x20AC);  // €
  EXPECT_EQ(ObChar('A', 0, 1).ToLower(nullptr).GetValue(), 'a');
  EXPECT_TRUE(ObChar('a', 1, 1) < ObChar('b', 1, 1));
}

}  // namespace

namespace {

// Texts without wildcard characters compare the same with wildcards on and
// off; only the latter skips a shared prefix, so contractions and
// expansions at the end of a shared prefix are checked here.
TEST(StrCmp, SharedPrefixSkipKeepsResults) {
  std::mt19937 rng(3);
  const char alphabet[] = "aAclLh \xE4\xE5\xF1-";
  for (int round = 0; round < 4000; ++round) {
    std::string prefix, a, b;
    for (size_t n = rng() % 5; n > 0; --n) prefix += alphabet[rng() % 11];
    a = prefix;
    b = prefix;
    for (size_t n = rng() % 3; n > 0; --n) a += alphabet[rng() % 11];
    for (size_t n = rng() % 3; n > 0; --n) b += alphabet[rng() % 11];
    for (uint8_t lang : {1, 2, 4, 6}) {
      EXPECT_EQ(Cmp(a.c_str(), b.c_str(), 0x10, lang, lang),
                Cmp(a.c_str(), b.c_str(), 0x00, lang, lang))
          << a << " vs " << b << " language " << int(lang);
    }
  }
}

}  // namespace
