// ObIString and ObCaseIString: folding order, case mapping, editing, the
// stored record, the key comparators, hashing and hostile records.
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

using Bytes = std::vector<uint8_t>;

int Sign(int64_t v) { return (v > 0) - (v < 0); }

template <class T>
constexpr char kId =
    std::is_same<T, ObIString>::value ? ObISTRING_T : ObCASEISTRING_T;

// A record as the layout defines it: marker, D, elements with their zeros.
Bytes Rec(uint8_t marker, std::vector<std::string> elems, uint8_t format = 1) {
  std::string data;
  for (const std::string& e : elems) data += e + '\0';
  const size_t d = data.size();
  std::string r = {static_cast<char>(marker),
                   static_cast<char>(format == 2 ? d >> 8 : d),
                   static_cast<char>(format == 2 ? d : d >> 8)};
  r += data;
  return Bytes(r.begin(), r.end());
}

template <class T>
Bytes Stored(const std::vector<T>& v, uint8_t format) {
  ObTypeMgr mgr(5);
  const uint32_t n = mgr.DiskLenGet(kId<T>, v.data(), format,
                                    static_cast<uint32_t>(v.size()), 8);
  Bytes out(n);
  EXPECT_EQ(mgr.Store(kId<T>, out.data(), v.data(), format,
                      static_cast<uint32_t>(v.size())),
            n);
  return out;
}

struct FoldCase {
  bool caseless;
  const char* a;
  uint8_t flagsA;
  const char* b;
  uint32_t limit;
  int sign;
};

int32_t FoldCompare(const FoldCase& c) {
  return c.caseless ? ObCaseIString::Compare(c.a, c.flagsA, c.b, 0, c.limit)
                    : ObIString::Compare(c.a, c.flagsA, c.b, 0, c.limit);
}

TEST(IString, FoldingOrder) {
  // clang-format off
  const FoldCase kCases[] = {
    {false, "a", 0, "A", 0, -1},            // lower case just before upper
    {false, "A", 0, "b", 0, -1},
    {false, "\xC0", 0, "A", 0, 0},          // accents fold
    {false, "\xE0", 0, "a", 0, 0},
    {false, "\xDF", 0, "ss", 0, 0},         // sharp s as two letters
    {false, "\xDF", 0, "sS", 0, -1},
    {false, "\x8C", 0, "OE", 0, 0},         // ligatures
    {false, "\x9C", 0, "oe", 0, 0},
    {false, "\x9F", 0, "Y", 0, 0},
    {false, "\xFF", 0, "y", 0, 0},
    {false, "[", 0, "a", 0, -1},            // symbols below letters
    {false, "9", 0, "[", 0, -1},
    {false, "\xBF", 0, "\x80", 0, -1},      // 207 < 224
    {false, "ab", 0, "abc", 0, -1},
    {false, "\xDF" "x", 0, "ssy", 2, 0},    // the limit counts weights
    {false, "\xDF" "x", 0, "ssy", 3, -1},
    {false, "abc", 0, "abd", 2, 0},
    {false, "N", 0x80, "a", 0, 0},          // key form: bytes are weights
    {false, "a", 0x80, "a", 0, 1},
    {true, "abc", 0, "ABC", 0, 0},
    {true, "\xE0", 0, "\xC0", 0, 0},
    {true, "\xF7", 0, "\xD7", 0, 1},        // division sign is no letter
    {true, "\xDF", 0, "SS", 0, 0},
    {true, "\x9C", 0, "OE", 0, 0},
    {true, "\xFF", 0, "\x9F", 0, 0},
    {true, "\xC0", 0x20, "A", 0, 1},        // accents weighed
    {true, "A", 0x20, "\xC0", 0, -1},
    {true, "\xDF", 0x20, "ss", 0, -1},      // one weight below S
    {true, "\xDF", 0x20, "r", 0, 1},
  };
  // clang-format on
  for (const FoldCase& c : kCases) {
    EXPECT_EQ(Sign(FoldCompare(c)), c.sign)
        << c.caseless << " '" << c.a << "' '" << c.b << "'";
  }
  // Null first; an empty operand gives the difference of first bytes.
  EXPECT_EQ(ObIString::Compare(nullptr, 0, nullptr, 0, 0), 0);
  EXPECT_LT(ObIString::Compare(nullptr, 0, "", 0, 0), 0);
  EXPECT_EQ(ObIString::Compare("", 0, "abc", 0, 0), -97);
  EXPECT_EQ(ObCaseIString::Compare("a", 0, "", 0, 0), 97);
  // Every letter against its other case and the next letter; the Latin
  // range's case pairs.
  for (int c = 'a'; c <= 'z'; ++c) {
    const char lower[2] = {static_cast<char>(c), 0};
    const char upper[2] = {static_cast<char>(c - 32), 0};
    EXPECT_LT(ObIString(lower), ObIString(upper)) << lower;
    EXPECT_EQ(ObCaseIString(lower), ObCaseIString(upper)) << lower;
    if (c < 'z') {
      const char next[2] = {static_cast<char>(c + 1), 0};
      EXPECT_LT(ObIString(upper), ObIString(next)) << upper;
      EXPECT_LT(ObCaseIString(upper), ObCaseIString(next)) << upper;
    }
  }
  for (int c = 224; c <= 254; ++c) {
    const char lower[2] = {static_cast<char>(c), 0};
    const char upper[2] = {static_cast<char>(c - 32), 0};
    EXPECT_EQ(ObCaseIString(lower) == ObCaseIString(upper), c != 247) << c;
  }
}

TEST(IString, CaseMapping) {
  // clang-format off
  const struct { uint8_t in, upper, lower; } kCases[] = {
    {'a', 'A', 'a'}, {'Z', 'Z', 'z'}, {'1', '1', '1'},
    {0xE0, 0xC0, 0xE0}, {0xC0, 0xC0, 0xE0}, {0xFE, 0xDE, 0xFE},
    {0xF7, 0xF7, 0xF7}, {0xD7, 0xD7, 0xD7}, {0xDF, 0xDF, 0xDF},
    {0xFF, 0xFF, 0x9F}, {0x9F, 0xFF, 0x9F},   // this pair the other way
    {0x9C, 0x8C, 0x9C}, {0x8C, 0x8C, 0x9C},
  };
  // clang-format on
  for (const auto& c : kCases) {
    const char text[2] = {static_cast<char>(c.in), 0};
    EXPECT_EQ(uint8_t(ObIString(text).ToUpper()[0]), c.upper) << int(c.in);
    EXPECT_EQ(uint8_t(ObIString(text).ToLower()[0]), c.lower) << int(c.in);
    EXPECT_EQ(uint8_t(ObCaseIString(text).ToUpper()[0]), c.upper);
  }
}

// The text of a value, "<none>" without text.
std::string Show(const ObIString& v) { return !v ? "<none>" : v.GetText(); }

TEST(IString, Editing) {
  const ObIString abc("abc"), none;
  struct Case {
    const char* what;
    std::string result, want;
  };
  ObIString self("ab");
  self += self;
  ObIString flagged("x");
  flagged.SetFlags(0x80);
  // clang-format off
  const Case kCases[] = {
    {"cut all", Show(ObIString(abc).Cut(0, 3)), "<none>"},
    {"cut middle", Show(ObIString(abc).Cut(1, 1)), "ac"},
    {"cut clipped", Show(ObIString(abc).Cut(1, 99)), "a"},
    {"copy at end", Show(abc.Copy(3, 1)), ""},
    {"copy beyond", Show(abc.Copy(4, 1)), ""},
    {"insert beyond", Show(ObIString(abc).Insert("x", 10)), "abcx"},
    {"insert into none", Show(ObIString().Insert("x", 3)), "x"},
    {"empty into none", Show(ObIString().Insert("", 0)), "<none>"},
    {"append to none", Show(ObIString() += ObIString("")), ""},
    {"append none", Show(ObIString(abc) += none), "abc"},
    {"append self", Show(self), "abab"},
    {"fill partial", Show(ObIString("abcd").Fill(2, 'x')), "xxcd"},
    {"fill grows", Show(ObIString().Fill(3, 'x')), "xxx"},
    {"expand", Show(ObIString("ab").Expand(4, '.')), "ab.."},
    {"replace", Show(ObIString("abcd").Replace("XYZ", 1)), "aXYZ"},
    {"replace clipped", Show(ObIString("abcd").Replace("XYZ", 2)), "abXY"},
    {"space to zero", Show(ObIString("a b ").SpaceToZero()), "a0b0"},
    {"assign empty", Show(ObIString(abc) = ""), "<none>"},
    {"assign null", Show(ObIString(abc) = static_cast<const char*>(nullptr)), "<none>"},
    {"copy of none", Show(ObIString(none)), ""},
    {"length cuts", Show(ObIString("abcdef", 3)), "abc"},
    {"int64", Show(ObIString(int64_t{-9000000000})), "-9000000000"},
    {"double", Show(ObIString(1.5)), "1.500000"},
  };
  // clang-format on
  for (const Case& c : kCases) EXPECT_EQ(c.result, c.want) << c.what;
  EXPECT_EQ(ObIString("abcabc").SubStringPos("ca"), 2);
  EXPECT_EQ(ObIString("ab").SubStringPos("abc"), -1);
  EXPECT_EQ(abc.SubStringPos(""), 3);
  EXPECT_EQ(ObIString("aBc").SubStringPos("b"), -1);  // exact bytes
  EXPECT_EQ(int(ObIString("42x")), 42);
  EXPECT_EQ(double(ObIString("2.5")), 2.5);
  EXPECT_EQ(int(none), 0);
  // Flags: copies keep them, constructors and text assignments clear them.
  EXPECT_EQ(ObIString(flagged).GetFlags(), 0x80);
  ObIString assigned;
  assigned = flagged;
  EXPECT_EQ(assigned.GetFlags(), 0x80);
  assigned = "y";
  EXPECT_EQ(assigned.GetFlags(), 0);
  // A stray index reaches a scratch byte, never outside the block.
  ObIString t("ab");
  t[1] = 'X';
  t[7] = 'Y';
  EXPECT_STREQ(t.GetText(), "aX");
}

TEST(IString, RecordLayout) {
  const std::vector<ObIString> two = {ObIString("ab"), ObIString("")};
  const std::vector<ObIString> folded = {ObIString("a\xC0\xDF")};
  ObIString weights("NT");
  weights.SetFlags(0x80);
  const std::vector<ObCaseIString> cased = {ObCaseIString("a\xC0")};
  const struct {
    Bytes got, want;
  } kCases[] = {
      {Stored(two, 1), {0x40, 4, 0, 'a', 'b', 0, 0}},
      {Stored(two, 2), {0x40, 0, 4, 'a', 'b', 0, 0}},
      // An ObIString key carries the weights, the sharp s as two.
      {Stored(folded, 0x81), {0xC0, 5, 0, 78, 84, 156, 156, 0}},
      {Stored(folded, 0x82), {0xC0, 0, 5, 78, 84, 156, 156, 0}},
      {Stored(folded, 0x21), {0x40, 4, 0, 'a', 0xC0, 0xDF, 0}},
      {Stored(std::vector<ObIString>{weights}, 0x81),
       {0xC0, 3, 0, 'N', 'T', 0}},
      // ObCaseIString keys keep their bytes; any option bit makes a key.
      {Stored(cased, 0x81), {1, 3, 0, 'a', 0xC0, 0}},
      {Stored(cased, 0x21), {1, 3, 0, 'a', 0xC0, 0}},
      {Stored(cased, 0x01), {0x40, 3, 0, 'a', 0xC0, 0}},
  };
  for (const auto& c : kCases) EXPECT_EQ(c.got, c.want);

  ObTypeMgr mgr(5);
  EXPECT_EQ(mgr.DiskLenGet(ObISTRING_T, folded.data(), 0x81, 1, 8), 8u);
  EXPECT_EQ(mgr.DiskLenGet(ObISTRING_T, folded.data(), 1, 1, 8), 7u);
  const Bytes big = Rec(0x40, {"ab", ""}, 2);
  EXPECT_EQ(mgr.DiskLenGet(ObISTRING_T, big.data(), 2, 1, 2), 7u);
  MemFile whole(big.data(), 7), shortFile(big.data(), 6);
  EXPECT_EQ(mgr.DiskLenGetFromMemFile(ObISTRING_T, &whole, 2, 2), 7u);
  EXPECT_EQ(mgr.DiskLenGetFromMemFile(ObISTRING_T, &shortFile, 2, 2),
            3u * 65535);

  // Loading: empty elements and those beyond the data are empty texts; a
  // key keeps its key form.
  ObIString back[3];
  const Bytes plain = Stored(two, 1);
  EXPECT_EQ(mgr.Load(ObISTRING_T, back, plain.data(), 1, 3), 7u);
  EXPECT_STREQ(back[0].GetText(), "ab");
  EXPECT_EQ(Show(back[1]) + Show(back[2]), "");
  const Bytes key = Stored(folded, 0x81);
  EXPECT_EQ(mgr.Load(ObISTRING_T, back, key.data(), 0x81, 1), 8u);
  EXPECT_STREQ(back[0].GetText(), "NT\x9C\x9C");
  EXPECT_EQ(back[0].GetFlags(), 0x80);
  EXPECT_EQ(back[0], folded[0]);
  EXPECT_EQ(Stored(std::vector<ObIString>{back[0]}, 0x81), key);
}

TEST(IString, Translate) {
  ObTypeMgr mgr(5);
  const std::vector<ObIString> v = {ObIString("abc"), ObIString("de")};
  const Bytes full = Stored(v, 1);
  Bytes out(5, 0xEE);
  // A record that does not fit is cut at the destination's size.
  EXPECT_EQ(mgr.Translate(ObISTRING_T, out.data(), 1, 5, v.data(), 8, 0, 2),
            5u);
  EXPECT_EQ(out, Bytes(full.begin(), full.begin() + 5));
  // Between stored forms the length is rewritten in the target's order;
  // keys get marker 1, weights stay weights.
  const struct {
    Bytes src;
    uint8_t srcFormat, destFormat;
    Bytes want;
  } kCases[] = {
      {Rec(0x40, {"ab"}, 1), 1, 2, Rec(0x40, {"ab"}, 2)},
      {Rec(0x40, {"ab"}, 1), 1, 0x82, Rec(1, {"ab"}, 2)},
      {Rec(0xC0, {"NZ"}, 2), 2, 1, Rec(0xC0, {"NZ"}, 1)},
      {Rec(1, {"ab"}, 1), 1, 1, Rec(0x40, {"ab"}, 1)},
  };
  for (const auto& c : kCases) {
    Bytes dest(c.want.size() + 2, 0xEE);
    EXPECT_EQ(
        mgr.Translate(ObISTRING_T, dest.data(), c.destFormat,
                      static_cast<uint32_t>(dest.size()), c.src.data(),
                      c.srcFormat, static_cast<uint32_t>(c.src.size()), 1),
        c.want.size());
    EXPECT_EQ(Bytes(dest.begin(), dest.begin() + c.want.size()), c.want);
    EXPECT_EQ(dest.back(), 0);  // zeroed beyond the record
  }
  // From a cut record: what is there loads, the rest is empty.
  ObIString back[2] = {ObIString("x"), ObIString("y")};
  EXPECT_EQ(mgr.Translate(ObISTRING_T, back, 8, 0, full.data(), 1, 5, 2), 5u);
  EXPECT_EQ(Show(back[0]) + "|" + Show(back[1]), "ab|");
}

struct CmpCase {
  const char* what;
  bool caseless;
  Bytes a;
  uint32_t len1;  // kAll: the whole record
  Bytes b;
  uint16_t options;
  uint32_t count;
  int sign;
  int32_t status;
};
constexpr uint32_t kAll = 0xFFFFFFFF;

TEST(IString, StoredKeyCompare) {
  const std::string longText(300, 'k');
  // clang-format off
  const CmpCase kCases[] = {
    {"equal", false, Rec(0x40, {"abc"}), kAll, Rec(0x40, {"abc"}), 0, 1, 0, 0},
    {"folds", false, Rec(0x40, {"abc"}), kAll, Rec(0x40, {"ABC"}), 0, 1, -1, 0},
    {"bytes break ties", false, Rec(0x40, {"\xC0"}), kAll, Rec(0x40, {"A"}), 0, 1, 1, 0},
    {"exact: no tie break", false, Rec(0x40, {"\xC0"}), kAll, Rec(0x40, {"A"}), 0x10, 1, 0, 0},
    {"case tie", true, Rec(0x40, {"abc"}), kAll, Rec(0x40, {"ABC"}), 0, 1, 1, 0},
    {"case exact", true, Rec(0x40, {"abc"}), kAll, Rec(0x40, {"ABC"}), 0x100, 1, 0, 0},
    {"prefix match", false, Rec(0x40, {"abcdef"}), kAll, Rec(0x40, {"ab*"}), 0, 1, 0, 0},
    {"prefix differs", false, Rec(0x40, {"abd"}), kAll, Rec(0x40, {"abc*"}), 0, 1, 1, 0},
    {"pattern is exact bytes", true, Rec(0x40, {"ABC"}), kAll, Rec(0x40, {"ab*"}), 0, 1, 1, 0},
    {"pattern below", false, Rec(0x40, {"ABC"}), kAll, Rec(0x40, {"b*"}), 0, 1, -1, 0},
    {"lone star", false, Rec(0x40, {""}), kAll, Rec(0x40, {"*"}), 0, 1, 0, 0},
    {"star first", false, Rec(0x40, {"zzz"}), kAll, Rec(0x40, {"*b"}), 0, 1, 1, 0},
    {"? no wildcard", false, Rec(0x40, {"abc"}), kAll, Rec(0x40, {"a?c"}), 0, 1, 1, 0},
    {"exact star", false, Rec(0x40, {"abc"}), kAll, Rec(0x40, {"ab*"}), 0x10, 1, 1, 0},
    {"cut prefix", false, Rec(0x40, {"abcdef"}), 6, Rec(0x40, {"abcdef"}), 0x10, 1, 0, 2101},
    {"cut differs", false, Rec(0x40, {"abcdef"}), 6, Rec(0x40, {"abz"}), 0, 1, -1, 2101},
    {"cut too long", false, Rec(0x40, {longText}), 263, Rec(0x40, {"k"}), 0, 1, -1, -2999},
    {"short cut of long", false, Rec(0x40, {longText}), 103, Rec(0x40, {longText}), 0, 1, 0, 2101},
    {"key vs text", false, Rec(0xC0, {"NZ\\"}), kAll, Rec(0x40, {"abc"}), 0, 1, 0, 2101},
    {"key vs text differs", false, Rec(0xC0, {"NZ\\"}), kAll, Rec(0x40, {"ABC"}), 0, 1, -1, 2101},
    {"keys", false, Rec(0xC0, {"NZ\\"}), kAll, Rec(0xC0, {"NZ]"}), 0, 1, -1, 2101},
    {"key prefix", false, Rec(0xC0, {"NZ"}), kAll, Rec(0xC0, {"NZ\\"}), 0, 1, 0, 2101},
    {"longer key", false, Rec(0xC0, {"NZ\\"}), kAll, Rec(0xC0, {"NZ"}), 0, 1, 1, 0},
    {"key, lone star", false, Rec(0xC0, {"N"}), kAll, Rec(0x40, {"*"}), 0, 1, 0, 0},
    {"key, star", false, Rec(0xC0, {"N"}), kAll, Rec(0x40, {"a*"}), 0, 1, 0, 2101},
    {"key exact is bytes", false, Rec(0xC0, {"N"}), kAll, Rec(0x40, {"N"}), 0x10, 1, 0, 0},
    {"marker 1 folds", false, Rec(1, {"abc"}), kAll, Rec(0x40, {"ABC"}), 0, 1, -1, 0},
    {"second element", false, Rec(0x40, {"ab", "cd"}), kAll, Rec(0x40, {"ab", "ce"}), 0, 2, -1, 0},
    {"operand ends", false, Rec(0x40, {"ab", "cd"}), kAll, Rec(0x40, {"ab"}), 0, 2, 0, 2101},
    {"count 0", false, Rec(0x40, {"a"}), kAll, Rec(0x40, {"b"}), 0, 0, 0, 0},
    {"no header", false, Rec(0x40, {"a"}), 2, Rec(0x40, {"a"}), 0, 1, 0, 2101},
  };
  // clang-format on
  ObTypeMgr mgr(5);
  for (const CmpCase& c : kCases) {
    const char id = c.caseless ? ObCASEISTRING_T : ObISTRING_T;
    int32_t status = 77;
    const uint32_t len1 =
        c.len1 == kAll ? static_cast<uint32_t>(c.a.size()) : c.len1;
    const int32_t r =
        mgr.Cmp(id, len1, c.a.data(), static_cast<uint32_t>(c.b.size()),
                c.b.data(), c.options, c.count, 1, status);
    EXPECT_EQ(Sign(r), c.sign) << c.what;
    EXPECT_EQ(status, c.status) << c.what;
  }
}

TEST(IString, MemoryKeyCompare) {
  ObIString a[2] = {ObIString("ab"), ObIString("cd")};
  ObIString b[2] = {ObIString("ab"), ObIString("ce")};
  int32_t status = 0;
  EXPECT_LT(ObIStringCompare(8, 0, a, 0, b, 0, 2, status), 0);
  EXPECT_EQ(ObIStringCompare(8, 0, a, 16, b, 0, 2, status), 0);
  EXPECT_EQ(status, ObCMP_OPERAND_EXHAUSTED);
  ObIString none, empty("");
  EXPECT_LT(ObIStringCompare(8, 0, &none, 0, &empty, 0, 1, status), 0);
  ObIString key("NZ");  // "ab" as weights
  key.SetFlags(0x80);
  EXPECT_EQ(ObIStringCompare(8, 0, &key, 0, &a[0], 0, 1, status), 0);
  EXPECT_EQ(status, ObCMP_OPERAND_EXHAUSTED);
  // Only part of an object inside the length: read as one without text.
  EXPECT_LT(ObIStringCompare(8, 4, a, 0, b, 0x10, 1, status), 0);
}

TEST(IString, TextForms) {
  ObTypeMgr mgr(5);
  ObIString v[2] = {ObIString("ab"), ObIString()};
  ObString out("x");
  EXPECT_STREQ(mgr.PrintToObString(ObISTRING_T, out, v, nullptr, 2).StrGet(),
               "xab,{NULL}");
  ObString framed;
  mgr.PrintToObString(ObCASEISTRING_T, framed, v, "[%s]", 1);
  EXPECT_STREQ(framed.StrGet(), "[ab]");
  ObString text("{NULL}");
  mgr.ScanFromObString(ObISTRING_T, v, text, nullptr, 1);
  EXPECT_TRUE(!v[0]);
  ObString plain("xyz");
  mgr.ScanFromObString(ObISTRING_T, v, plain, nullptr, 1);
  EXPECT_STREQ(v[0].GetText(), "xyz");
  // No null value and no counter.
  EXPECT_EQ(mgr.SupportsNullValue(ObISTRING_T), 0);
  EXPECT_EQ(mgr.IsNullValue(ObCASEISTRING_T, &v[1]), 0);
  EXPECT_EQ(mgr.GetValue(ObISTRING_T, v, 0, 8, 'N'), kObNotSupported);
  auto* made = static_cast<ObCaseIString*>(mgr.Create(ObCASEISTRING_T, 2));
  ASSERT_NE(made, nullptr);
  EXPECT_TRUE(!made[1]);
  mgr.Delete(ObCASEISTRING_T, made, 2);
}

// Pairs of texts made of pieces that fold alike in both classes (but the
// last group's); the second text mostly takes a piece of the same group.
const std::vector<std::vector<std::string>> kAlike = {{"A", "\xC0", "\xC1"},
                                                      {"a", "\xE0", "\xE1"},
                                                      {"ss", "\xDF"},
                                                      {"OE", "\x8C"},
                                                      {"oe", "\x9C"},
                                                      {"Y", "\x9F", "\xDD"},
                                                      {"y", "\xFF", "\xFD"},
                                                      {"s",
                                                       "\xDF"
                                                       "e",
                                                       "b"}};

template <class T>
void RandomPair(std::mt19937& rng, T& a, T& b) {
  std::string x, y;
  for (unsigned n = rng() % 3; n != 0; --n) {
    const auto& group = kAlike[rng() % kAlike.size()];
    x += group[rng() % group.size()];
    const auto& other = rng() % 4 != 0 ? group : kAlike[rng() % kAlike.size()];
    y += other[rng() % other.size()];
  }
  a = x.c_str();
  b = y.c_str();
}

template <class T>
void CheckEqualHashEqual(uint32_t seed) {
  ObTypeMgr mgr(5);
  std::mt19937 rng(seed);
  int foldedAlike = 0;  // equal, though their bytes differ
  for (int round = 0; round < 1000; ++round) {
    const uint32_t count = 1 + rng() % 2;
    std::vector<T> a(count), b(count);
    for (uint32_t i = 0; i < count; ++i) RandomPair(rng, a[i], b[i]);
    int32_t status = 0;
    const uint32_t hashA = mgr.Hash(kId<T>, 0, a.data(), count, 8, status);
    if (mgr.Cmp(kId<T>, 0, a.data(), 0, b.data(), 0x10, count, 8, status) ==
        0) {
      foldedAlike += Stored(a, 1) != Stored(b, 1);
      EXPECT_EQ(hashA, mgr.Hash(kId<T>, 0, b.data(), count, 8, status));
    }
    for (uint8_t format : {1, 2, 0x81}) {
      const Bytes sa = Stored(a, format), sb = Stored(b, format);
      // Every form of a value hashes as its memory form.
      EXPECT_EQ(mgr.Hash(kId<T>, static_cast<uint32_t>(sa.size()), sa.data(),
                         count, format, status),
                hashA);
      EXPECT_EQ(status, 0);
      if (mgr.Cmp(kId<T>, static_cast<uint32_t>(sa.size()), sa.data(),
                  static_cast<uint32_t>(sb.size()), sb.data(), 0x10, count,
                  format, status) == 0 &&
          status == 0) {
        EXPECT_EQ(mgr.Hash(kId<T>, static_cast<uint32_t>(sb.size()), sb.data(),
                           count, format, status),
                  hashA);
      }
    }
  }
  EXPECT_GT(foldedAlike, 200);
}

TEST(IString, EqualValuesHashEqual) {
  CheckEqualHashEqual<ObIString>(3);
  CheckEqualHashEqual<ObCaseIString>(4);
}

// Random and mutated records with random lengths, each in a heap block of
// exactly that length, so that the sanitizers see any read beyond it.
template <class T>
void Fuzz(uint32_t seed) {
  ObTypeMgr mgr(5);
  std::mt19937 rng(seed);
  const char id = kId<T>;
  auto block = [](const Bytes& b, size_t n) {
    std::unique_ptr<uint8_t[]> p(new uint8_t[n == 0 ? 1 : n]());
    if (!b.empty()) std::memcpy(p.get(), b.data(), std::min(n, b.size()));
    return p;
  };
  for (int round = 0; round < 3000; ++round) {
    std::vector<T> v;
    for (uint32_t n = rng() % 4; n != 0; --n) {
      std::string s(rng() % 300, 'x');
      for (char& c : s) c = static_cast<char>(1 + rng() % 255);
      v.push_back(T(s.c_str()));
    }
    const uint8_t format =
        static_cast<uint8_t>((rng() % 2 + 1) | (rng() % 2) << 7);
    Bytes rec = Stored(v, format);
    for (uint32_t n = rng() % 4; n != 0; --n)
      rec[rng() % rec.size()] = static_cast<uint8_t>(rng());
    std::vector<T> pair(2);
    RandomPair(rng, pair[0], pair[1]);
    Bytes other = Stored(pair, format);
    const uint32_t len1 = 1 + rng() % static_cast<uint32_t>(rec.size() + 4);
    const uint32_t len2 = 1 + rng() % static_cast<uint32_t>(other.size());
    const uint32_t count = rng() % 5;
    auto p1 = block(rec, len1);
    auto p2 = block(other, len2);
    int32_t status = 0;
    const uint16_t options = static_cast<uint16_t>(rng() % 2 ? 0 : 0x10);
    mgr.Cmp(id, len1, p1.get(), len2, p2.get(), options, count, format, status);
    mgr.Cmp(id, len2, p2.get(), len1, p1.get(), options, count, format, status);
    EXPECT_TRUE(status == 0 || status == ObCMP_OPERAND_EXHAUSTED ||
                status == kObNotSupported);
    mgr.Hash(id, len1, p1.get(), count, format, status);
    std::vector<T> loaded(count + 1);
    mgr.Translate(id, loaded.data(), 8, 0, p1.get(), format, len1, count);
    const uint32_t destLen = rng() % 320;
    auto dest = block(Bytes(), destLen);
    EXPECT_LE(mgr.Translate(id, dest.get(), 1, destLen, p1.get(), format, len1,
                            count),
              destLen);
    MemFile file(p1.get(), len1);
    mgr.DiskLenGetFromMemFile(id, &file, format, count);
    if (len1 >= 3) {
      const uint32_t size = mgr.DiskLenGet(id, p1.get(), format, count, format);
      if (size <= len1) mgr.Load(id, loaded.data(), p1.get(), format, count);
    }
  }
}

TEST(IString, HostileRecords) {
  Fuzz<ObIString>(11);
  Fuzz<ObCaseIString>(12);
}

}  // namespace
