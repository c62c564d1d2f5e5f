// Collation tables, conversions, languages and case mappings of the i18n
// library, checked through its public interface.
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "obi18n.h"

namespace {

using Orders = std::vector<uint16_t>;

const ObCodeSet& CodeSet(uint8_t code) {
  static const ObCodeSet* const unicode = ObLanguageContext::QueryCodeSet(253);
  const ObCodeSet* cs = ObLanguageContext::QueryCodeSet(code);
  return cs != nullptr ? *cs : *unicode;
}

const ObCharTable& Table(uint8_t code) { return *CodeSet(code).GetCharTable(); }

constexpr uint16_t Letter(int lower, int kind, char base, int ext = 0) {
  return static_cast<uint16_t>(0x4000 | lower << 12 | kind << 7 |
                               (base - 62) << 2 | ext);
}
constexpr uint16_t Nordic(int lower, int kind, int n) {
  return static_cast<uint16_t>(0x4000 | lower << 12 | kind << 7 | n << 2);
}

Orders EntryOrders(const ObCharTable& t, const ObCollEntry& e) {
  Orders out{e.order};
  if (const ObWCharList* x = t.Expansion(e)) {
    for (int i = 0; i < x->Count(); ++i) out.push_back(x->Get(i));
  }
  return out;
}

Orders RootOrders(uint8_t code, uint16_t ch) {
  ObCollEntry e{};
  if (!Table(code).Lookup(ch, e)) return {};
  return EntryOrders(Table(code), e);
}

// The table steps of the string iterator (map into 253 without a table,
// variant, contractions, expansion) over a whole text; unknown characters
// give their code.
Orders Collate(uint8_t code, uint8_t language, const std::u16string& text) {
  const ObCodeSet& cs = CodeSet(code);
  const ObCodeSet& unicode = CodeSet(253);
  const ObCharTable& t = cs.GetCharTable() ? *cs.GetCharTable() : Table(253);
  const bool mapped = cs.GetCharTable() == nullptr;
  const ObLanguage* lang = ObLanguageContext::QueryLanguage(language);
  auto read = [&](size_t i) {
    return mapped ? unicode.Convert(text[i], code) : uint16_t{text[i]};
  };
  Orders out;
  for (size_t i = 0; i < text.size(); ++i) {
    ObCollEntry e{}, other{};
    if (!t.Lookup(read(i), e)) {
      out.push_back(text[i]);
      continue;
    }
    if (lang->variantsApply && t.VariantFor(e, language, other)) e = other;
    for (int k = 0; k < e.contractionCount && i + 1 < text.size(); ++k) {
      uint16_t follower = 0;
      if (t.Contraction(e, k, follower, other) && follower == read(i + 1)) {
        e = other;
        ++i;
        k = -1;
      }
    }
    const Orders orders = EntryOrders(t, e);
    out.insert(out.end(), orders.begin(), orders.end());
  }
  return out;
}

// windows-1252 0x80-0x9F; the rest of the page is Latin-1.
constexpr uint16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

uint16_t Cp1252(int b) {
  return b >= 0x80 && b < 0xA0 ? kCp1252High[b - 0x80] : uint16_t(b);
}

// Entries of code set 1 and 253 agree in orders, identifiers, variants and
// contractions (followers compared as Unicode).
void ExpectSameEntry(const ObCollEntry& e1, const ObCollEntry& e253, uint16_t u,
                     int depth = 0) {
  SCOPED_TRACE(testing::Message()
               << "U+" << std::hex << u << " depth " << depth);
  const ObCharTable &t1 = Table(1), &t253 = Table(253);
  EXPECT_EQ(EntryOrders(t1, e1), EntryOrders(t253, e253));
  EXPECT_EQ(e1.collationId, e253.collationId);
  ASSERT_EQ(e1.contractionCount, e253.contractionCount);
  for (int k = 0; k < e1.contractionCount; ++k) {
    uint16_t f1 = 0, f253 = 0;
    ObCollEntry c1{}, c253{};
    ASSERT_TRUE(t1.Contraction(e1, k, f1, c1));
    ASSERT_TRUE(t253.Contraction(e253, k, f253, c253));
    EXPECT_EQ(CodeSet(253).Convert(f1, 1), f253);
    ExpectSameEntry(c1, c253, u, depth + 1);
  }
  for (uint8_t lang = 0; lang <= 6 && depth == 0; ++lang) {
    ObCollEntry v1{}, v253{};
    ASSERT_EQ(t1.VariantFor(e1, lang, v1), t253.VariantFor(e253, lang, v253));
    if (v1.order != 0) ExpectSameEntry(v1, v253, u, depth + 1);
  }
}

TEST(I18nTables, InvariantsOfTheUnicodeTable) {
  const ObCharTable& t = Table(253);
  for (uint32_t ch = 0; ch <= 0xFFFF; ++ch) {
    ObCollEntry e{};
    if (!t.Lookup(static_cast<uint16_t>(ch), e)) {
      ASSERT_GE(ch, 0x200u) << "every code below 0x200 must be known";
      continue;
    }
    SCOPED_TRACE(testing::Message() << "U+" << std::hex << ch);
    ASSERT_TRUE(e.order != 0 || ch == 0);
    const ObWCharList* x = t.Expansion(e);
    ASSERT_TRUE(x == nullptr || x->Count() == 1) << "keys allow two orders";
    ASSERT_TRUE(e.collationId == 0 || e.collationId == kObCollGreek ||
                e.collationId == kObCollCyrillic);
    const int n = e.order >> 2 & 31, ext = e.order & 3;
    if (e.order >= 0x4000 && e.order < 0x8000 && e.collationId == 0) {
      // Letter numbers 29-31 and extension 1 belong to language tailorings.
      EXPECT_TRUE(n < 29 && !(ext == 1 && n >= 3));
    }
  }
  for (uint16_t ch : {0xD800, 0xDFFF, 0xE000, 0xF8FF, 0xFFFE, 0xFFFF, 0xAC00,
                      0x0627, 0xFB03, 0x2152, 0x1F84, 0x1D6C}) {
    ObCollEntry e{};
    EXPECT_FALSE(t.Lookup(ch, e)) << std::hex << ch;
  }
}

TEST(I18nTables, CodeSet1IsCp1252ThroughTheUnicodeTable) {
  std::set<uint16_t> letterOrders;
  for (int b = 0; b < 256; ++b) {
    ObCollEntry e1{}, e253{};
    ASSERT_TRUE(Table(1).Lookup(static_cast<uint16_t>(b), e1)) << b;
    ASSERT_TRUE(Table(253).Lookup(Cp1252(b), e253)) << b;
    ExpectSameEntry(e1, e253, Cp1252(b));
    if (b >= 128 && e1.order >= 0x4000 && e1.order < 0x8000) {
      EXPECT_TRUE(letterOrders.insert(e1.order).second)
          << "accented letters need distinct first orders: " << b;
    }
  }
}

// Every named symbol, in code set 1; no other character of code set 1 and no
// other order value in 112-219 is used.
TEST(I18nTables, NamedSymbols) {
  const std::pair<uint8_t, uint16_t> named[] = {
      {'_', 112},  {0xAF, 114}, {0xAD, 115}, {'-', 116},  {',', 117},
      {';', 118},  {':', 119},  {'!', 120},  {0xA1, 121}, {'?', 122},
      {'/', 124},  {'.', 126},  {0xB7, 129}, {0xB8, 130}, {'\'', 132},
      {'"', 135},  {0xAB, 138}, {0xBB, 139}, {'(', 140},  {')', 142},
      {'[', 144},  {']', 145},  {'{', 146},  {'}', 147},  {0xA7, 148},
      {0xB6, 149}, {0xA9, 150}, {0xAE, 151}, {'@', 153},  {0xA4, 154},
      {0xA2, 155}, {'$', 156},  {0xA3, 157}, {0xA5, 158}, {'*', 159},
      {'\\', 160}, {'&', 161},  {'#', 162},  {'%', 163},  {'+', 165},
      {0xB1, 167}, {0xB4, 168},  // 168 is the acute accent, not U+0027
      {'`', 169},  {'^', 171},  {0xA8, 174}, {'~', 176},  {0xF7, 178},
      {0xD7, 179}, {'<', 181},  {'=', 183},  {'>', 185},  {0xAC, 186},
      {'|', 187},  {0xA6, 188}, {0xB0, 189}, {0xB5, 190},  // micro sign
      {0xBF, 219}};
  std::set<uint16_t> orders;
  for (const auto& [ch, order] : named) {
    EXPECT_EQ(RootOrders(1, ch), Orders{order}) << int{ch};
    orders.insert(order);
  }
  ASSERT_EQ(orders.size(), 57u);
  for (int b = 0; b < 256; ++b) {
    const uint16_t o = RootOrders(1, static_cast<uint16_t>(b))[0];
    if (o >= 112 && o <= 219) {
      EXPECT_TRUE(std::any_of(std::begin(named), std::end(named),
                              [&](const auto& n) { return n.first == b; }))
          << b;
    }
  }
  for (uint32_t ch = 0; ch <= 0xFFFF; ++ch) {
    const Orders o = RootOrders(253, static_cast<uint16_t>(ch));
    if (!o.empty() && o[0] >= 112 && o[0] <= 219) {
      ASSERT_EQ(orders.count(o[0]), 1u) << std::hex << ch;
    }
  }
}

TEST(I18nTables, RootOrders) {
  struct Case {
    uint8_t codeSet;
    uint16_t ch;
    Orders orders;
  } cases[] = {
      {1, 'a', {0x500C}},
      {1, 'A', {0x400C}},
      {1, 0xE1, {0x510C}},
      {1, '0', {16128}},
      {1, '9', {16218}},
      {1, ' ', {32}},
      {1, '\t', {9}},
      {1, '\r', {33}},
      {1, 0x7F, {34}},
      {1, 0xA0, {35}},
      {1, 0x81, {13}},
      {1, 0x9D, {13}},
      {253, 0x85, {13}},
      {253, 0x200B, {53}},
      {253, 0xFEFF, {57}},
      {253, 0x200E, {58}},
      {253, 0x3000, {52}},
      // Code set 1 letters above 127.
      {1, 0x8A, {0x44D4}},
      {1, 0x9A, {0x54D4}},
      {1, 0x8E, {0x44F0}},
      {1, 0x9E, {0x54F0}},
      {1, 0x9F, {0x436C}},
      {1, 0x83, {0x5B20}},
      {1, 0x8C, {0x47C4, 0x401C}},
      {1, 0x9C, {0x57C4, 0x501C}},
      {1, 0xAA, {0x580C}},
      {1, 0xBA, {0x5844}},
      {1, 0xC6, {0x478C, 0x401C}},
      {1, 0xD0, {0x4798}},
      {1, 0xD8, {0x4444}},
      {1, 0xDE, {0x47D8, 0x4028}},
      {1, 0xDF, {0x57D4, 0x5054}},
      {1, 0xC0, {0x418C}},
      {1, 0xE7, {0x5094}},
      {1, 0xF1, {0x52C0}},
      {1, 0xFC, {0x535C}},
      {1, 0xFF, {0x536C}},
      // Digits: compatibility forms set bit 0.
      {1, 0xB9, {16139}},
      {1, 0xB2, {16149}},
      {1, 0xBD, {16139, 16148}},
      {1, 0xBC, {16139, 16168}},
      {1, 0xBE, {16159, 16168}},
      {253, 0x2488, {16139, 126}},
      {253, 0x2469, {16139, 16128}},
      {253, 0x0663, {16158}},
      {253, 0xFF17, {16198}},
      // Ranked symbols (Unicode 15.0.0 numbering) in code set 1.
      {1, 0x80, {934}},
      {1, 0x82, {851}},
      {1, 0x84, {855}},
      {1, 0x85, {863}},
      {1, 0x86, {857}},
      {1, 0x87, {858}},
      {1, 0x88, {233}},
      {1, 0x89, {865}},
      {1, 0x8B, {874}},
      {1, 0x91, {849}},
      {1, 0x92, {850}},
      {1, 0x93, {853}},
      {1, 0x94, {854}},
      {1, 0x95, {859}},
      {1, 0x96, {844}},
      {1, 0x97, {845}},
      {1, 0x98, {255}},
      {1, 0x99, {1004}},
      {1, 0x9B, {875}},
      // Derived letters.
      {253, 0x0142, {0x5438}},
      {253, 0x01FD, {Letter(1, 15, 'A'), Letter(1, 2, 'E')}},
      {253, 0x1EA5, {Letter(1, 4, 'A'), RootOrders(253, 0x0301)[0]}},
      {253, 0x01D6, {Letter(1, 6, 'U'), RootOrders(253, 0x0304)[0]}},
      {253, 0x1E13, {Letter(1, 0, 'D'), RootOrders(253, 0x032D)[0]}},
      {253, 0x0133, {Letter(1, 15, 'I'), Letter(1, 0, 'J')}},
      {253, 0x01C5, {Letter(0, 15, 'D'), Letter(1, 9, 'Z')}},
      {253, 0xFB01, {Letter(1, 15, 'F'), Letter(1, 0, 'I')}},
      {253, 0x0149, {RootOrders(253, 0x02BC)[0], Letter(1, 0, 'N')}},
      {253, 0x212B, RootOrders(253, 0xC5)},
      {253, 0x212A, {Letter(0, 0, 'K')}},
      {253, 0x00AA, {Letter(1, 16, 'A')}},
      {253, 0xFF21, {Letter(0, 17, 'A')}},
      {253, 0x0192, {Letter(1, 22, 'F')}},
      {253, 0x0259, {0x579E}},
      // Han class.
      {253, 0x3042, {32768 + 2}},
      {253, 0x3400, {32960}},
      {253, 0x4E00, {39552}},
      {253, 0x9FFF, {60543}},
      {253, 0xFA0E, {60544 + 0x10E}},
      {253, 0xF900, RootOrders(253, 0x8C48)},
      {253, 0xFF71, RootOrders(253, 0x30A2)},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(RootOrders(c.codeSet, c.ch), c.orders)
        << "code set " << int{c.codeSet} << " ch 0x" << std::hex << c.ch;
  }
  // Ranked symbols fill 220-4909 (Unicode 15.0.0), nothing beyond.
  uint16_t highest = 0;
  for (uint32_t ch = 0; ch <= 0xFFFF; ++ch) {
    for (uint16_t o : RootOrders(253, static_cast<uint16_t>(ch))) {
      if (o < 16128) highest = std::max(highest, o);
    }
  }
  EXPECT_EQ(highest, 4909);
}

TEST(I18nTables, ScriptIdentifiers) {
  const struct {
    uint16_t ch;
    uint8_t id;
    uint16_t order;
  } cases[] = {
      {0x0391, kObCollGreek, Letter(0, 0, 'A')},   // Alpha
      {0x03C9, kObCollGreek, Nordic(1, 0, 26)},    // omega
      {0x03C2, kObCollGreek, Nordic(1, 15, 20)},   // final sigma
      {0x1F71, kObCollGreek, Letter(1, 2, 'A')},   // alpha with oxia
      {0x2126, kObCollGreek, Nordic(0, 0, 26)},    // ohm sign
      {0x0410, kObCollCyrillic, Nordic(0, 0, 0)},  // A
      {0x0419, kObCollCyrillic, Nordic(0, 0, 9)},  // short I
      {0x0401, kObCollCyrillic, Nordic(0, 6, 5)},  // IO = IE/6
      {0x0407, kObCollCyrillic, static_cast<uint16_t>(Nordic(0, 6, 8) | 1)},
      {0x0061, 0, Letter(1, 0, 'A')},
  };
  for (const auto& c : cases) {
    ObCollEntry e{};
    ASSERT_TRUE(Table(253).Lookup(c.ch, e)) << std::hex << c.ch;
    EXPECT_EQ(e.collationId, c.id) << std::hex << c.ch;
    EXPECT_EQ(e.order, c.order) << std::hex << c.ch;
  }
}

TEST(I18nTables, LanguageTailorings) {
  const uint16_t e = Letter(1, 0, 'E'), l = Letter(1, 0, 'L');
  const struct {
    uint8_t codeSet, language;
    std::u16string text;
    Orders orders;
  } cases[] = {
      {1,
       2,
       u"M\u00FCller",
       {Letter(0, 0, 'M'), 0x535C, 0x501C, l, l, e, Letter(1, 0, 'R')}},
      {1,
       1,
       u"M\u00FCller",
       {Letter(0, 0, 'M'), 0x535C, l, l, e, Letter(1, 0, 'R')}},
      {1,
       2,
       u"\u00C4\u00F6",
       {Letter(0, 6, 'A'), Letter(0, 0, 'E'), Letter(1, 6, 'O'), e}},
      {1, 4, u"chico", {0x5015, Letter(1, 0, 'I'), 0x5014, Letter(1, 0, 'O')}},
      {1, 4, u"CHcH", {0x4015, 0x5015}},
      {1, 4, u"lLLl", {Letter(1, 0, 'L', 1), Letter(0, 0, 'L', 1)}},
      {1, 4, u"\u00F1\u00D1", {Letter(1, 5, 'N', 1), Letter(0, 5, 'N', 1)}},
      {1, 1, u"ch", {0x5014, 0x5028}},
      {1, 5, u"z\u00E4", {0x5070, 0x5078}},
      {1, 1, u"z\u00E4", {0x5070, 0x530C}},
      {1,
       5,
       u"\u00C5\u00F6\u00F8\u00E6\u00FC",
       {Nordic(0, 0, 29), Nordic(1, 0, 31), Nordic(1, 8, 31), Nordic(1, 15, 30),
        Letter(1, 15, 'Y')}},
      {1,
       6,
       u"Aalborg",
       {0x47FC, l, Letter(1, 0, 'B'), Letter(1, 0, 'O'), Letter(1, 0, 'R'),
        Letter(1, 0, 'G')}},
      {1, 6, u"AAaaaA", {0x47FC, 0x57FC, 0x500C, 0x400C}},
      {1,
       6,
       u"\u00E6\u00C4\u00F8\u00D6\u00E5\u00DC",
       {Nordic(1, 0, 29), Nordic(0, 6, 29), Nordic(1, 0, 30), Nordic(0, 6, 30),
        Nordic(1, 0, 31), Letter(0, 15, 'Y')}},
      {1, 3, u"\u00E4ch", {0x530C, 0x5014, 0x5028}},  // French: root
      {1,
       1,
       u"Stra\u00DFe",
       {Letter(0, 0, 'S'), Letter(1, 0, 'T'), Letter(1, 0, 'R'), 0x500C, 0x57D4,
        0x5054, e}},
      {2, 1, u"\u00B3", {0x5438}},  // iso-8859-2 l-stroke, through 253
      {2, 4, u"Ch", {0x4015}},      // contraction through 253
      {253, 2, u"\u00FC", {0x535C, 0x501C}},
      {253, 6, u"aa", {0x57FC}},
      {253, 9, u"aa", {0x500C, 0x500C}},  // unshipped: neutral
      {253, 1, u"\uAC00", {0xAC00}},      // unknown: its code
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Collate(c.codeSet, c.language, c.text), c.orders)
        << "code set " << int{c.codeSet} << " language " << int{c.language}
        << " text #" << (&c - cases);
  }
}

TEST(I18nTables, Conversions) {
  const struct {
    uint8_t to, from;
    uint16_t in, out;
  } cases[] = {
      {253, 1, 0x80, 0x20AC},
      {1, 253, 0x20AC, 0x80},
      {253, 0, 0x80, 0x20AC},
      {253, 1, 0x81, 0x81},
      {1, 253, 0x81, 0x81},
      {1, 253, 0x8D, 0x8D},
      {1, 253, 0x8F, 0x8F},
      {1, 253, 0x90, 0x90},
      {1, 253, 0x9D, 0x9D},
      {1, 253, 0x80, '?'},
      {1, 253, 0x0100, '?'},
      {2, 253, 0x4E00, '?'},
      {1, 253, 0, 0},
      {1, 253, 'A', 'A'},
      {253, 2, 0xB3, 0x0142},
      {2, 253, 0x0142, 0xB3},
      {1, 2, 0xB3, '?'},
      {2, 1, 0x8A, 0xA9},
      {1, 2, 0xA9, 0x8A},
      {1, 1, 0x1234, 0x1234},
      {254, 1, 0x80, 0x80},
      {1, 254, 0x1234, 0x1234},
      {253, 254, 0xFFFF, 0xFFFF},
      {253, 77, 0x1E9, 0xE9},    // unknown 8-bit source: Latin-1 byte
      {253, 230, 0x1E9, 0x1E9},  // unknown 16-bit source: UCS-2
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CodeSet(c.to).Convert(c.in, c.from), c.out)
        << int{c.from} << " -> " << int{c.to} << " of 0x" << std::hex << c.in;
  }
  for (uint8_t code : {1, 2}) {
    for (int b = 0; b < 256; ++b) {
      const uint16_t u = CodeSet(253).Convert(static_cast<uint16_t>(b), code);
      EXPECT_EQ(CodeSet(code).Convert(u, 253), b) << int{code} << " " << b;
      if (code == 1) {
        EXPECT_EQ(u, Cp1252(b));
      }
    }
  }
}

TEST(I18nTables, CodeSetsAndLanguages) {
  const struct {
    uint8_t query;
    int code;  // -1: unknown
    bool wide = false, table = false;
    const char* name = nullptr;
  } sets[] = {{0, 1, false, true, "windows-1252"},
              {1, 1, false, true, "windows-1252"},
              {2, 2, false, false, "iso-8859-2"},
              {253, 253, true, true, "unicode-bmp"},
              {254, 254, true, false, "collation-orders"},
              {3, -1},
              {77, -1},
              {225, -1},
              {252, -1},
              {255, -1}};
  for (const auto& s : sets) {
    const ObCodeSet* cs = ObLanguageContext::QueryCodeSet(s.query);
    EXPECT_EQ(ObLanguageContext::IsKnownCodeSet(s.query), s.code >= 0);
    if (s.code < 0) {
      EXPECT_EQ(cs, nullptr) << int{s.query};
      continue;
    }
    ASSERT_NE(cs, nullptr) << int{s.query};
    EXPECT_EQ(cs->GetCode(), s.code);
    EXPECT_EQ(cs->IsWide(), s.wide);
    EXPECT_EQ(cs->GetCharTable() != nullptr, s.table);
    EXPECT_STREQ(cs->GetName(), s.name);
  }

  const struct {
    uint8_t query, code, id;
    const char* tag;
    bool variants;
  } langs[] = {{0, 0, 1, "und", false},
               {1, 1, 1, "en", false},
               {2, 2, 2, "de-u-co-phonebk", true},
               {3, 3, 1, "fr", false},
               {4, 4, 3, "es-u-co-trad", true},
               {5, 5, 4, "sv", true},
               {6, 6, 5, "da", true},
               {7, 0, 1, "und", false},
               {254, 0, 1, "und", false},
               {255, 1, 1, "en", false}};
  for (const auto& l : langs) {
    const ObLanguage* lang = ObLanguageContext::QueryLanguage(l.query);
    ASSERT_NE(lang, nullptr);
    EXPECT_EQ(lang->code, l.code) << int{l.query};
    EXPECT_EQ(lang->collationId, l.id) << int{l.query};
    EXPECT_STREQ(lang->tag, l.tag);
    EXPECT_EQ(lang->variantsApply, l.variants);
    EXPECT_TRUE(lang->hasCollation);
    EXPECT_EQ(ObLanguageContext::IsShippedLanguage(l.query), l.query <= 6);
    for (uint8_t cs : {1, 2, 253}) {
      EXPECT_EQ(CodeSet(cs).GetCollationId(l.query), l.id);
    }
  }
  EXPECT_EQ(CodeSet(254).GetCollationId(0x85), 5);
  EXPECT_EQ(CodeSet(254).GetCollationId(0x14), 20);
  ASSERT_EQ(ObLanguageContext::SetDefaultLanguage(4), 0);
  EXPECT_EQ(ObLanguageContext::QueryLanguage(255)->code, 4);
  EXPECT_EQ(CodeSet(1).GetCollationId(255), 3);
  ASSERT_EQ(ObLanguageContext::SetDefaultLanguage(1), 0);
  EXPECT_GE(ObLanguageContext::GetTableVersion(), 1u);
  EXPECT_EQ(___ObI18NContext(1), 0);
  EXPECT_EQ(___ObI18NContext(0), 0);
}

TEST(I18nTables, CaseMappings) {
  const struct {
    uint8_t codeSet;
    uint16_t ch, lower, upper;
    int extra;  // -1: no upper-case list
  } cases[] = {
      {253, 0xDF, 0, 'S', 'S'},       {1, 0xDF, 0, 'S', 'S'},
      {2, 0xDF, 0, 'S', 'S'},         {253, 'a', 0, 'A', -1},
      {253, 'A', 'a', 0, -1},         {1, 0xFF, 0, 0x178, -1},
      {1, 0x9F, 0xFF, 0, -1},         {253, 0xB5, 0, 0x39C, -1},
      {253, 0x149, 0, 0x2BC, 'N'},    {253, 0xFB01, 0, 'F', 'I'},
      {253, 0x1FB3, 0, 0x391, 0x399}, {2, 0xB3, 0, 0x141, -1},
      {1, 0x8A, 0x161, 0, -1},        {253, 0x1C5, 0x1C6, 0x1C4, -1},
  };
  for (const auto& c : cases) {
    const ObUnicodeProps* p =
        ObCodeSet::GetUnicodeProps(&CodeSet(c.codeSet), c.ch, 1);
    ASSERT_NE(p, nullptr) << int{c.codeSet} << " " << std::hex << c.ch;
    EXPECT_EQ(p->lower, c.lower) << std::hex << c.ch;
    EXPECT_EQ(p->upper, c.upper) << std::hex << c.ch;
    EXPECT_EQ(p->upperList ? p->upperList->Get(0) : -1, c.extra);
  }
  EXPECT_EQ(CodeSet(1).Convert(0x178, 253), 0x9F);
  // Mappings to characters a code set lacks are not offered.
  EXPECT_EQ(ObCodeSet::GetUnicodeProps(&CodeSet(1), 0xB5, 1), nullptr);
  EXPECT_EQ(ObCodeSet::GetUnicodeProps(&CodeSet(253), 0x390, 1), nullptr);
  EXPECT_EQ(ObCodeSet::GetUnicodeProps(&CodeSet(253), '1', 1), nullptr);
  EXPECT_EQ(ObCodeSet::GetUnicodeProps(&CodeSet(254), 'a', 1), nullptr);
  EXPECT_EQ(ObCodeSet::GetUnicodeProps(&CodeSet(1), 0x100, 1), nullptr);
  EXPECT_EQ(ObCodeSet::GetUnicodeProps(nullptr, 'a', 1), nullptr);
  for (uint32_t ch = 0; ch <= 0xFFFF; ++ch) {
    const ObUnicodeProps* p =
        ObCodeSet::GetUnicodeProps(&CodeSet(253), static_cast<uint16_t>(ch), 1);
    ASSERT_TRUE(!p || !p->upperList || p->upperList->Count() == 1) << ch;
  }
  for (uint8_t code : {1, 2}) {
    for (uint16_t b = 0; b < 256; ++b) {
      const ObUnicodeProps* p =
          ObCodeSet::GetUnicodeProps(&CodeSet(code), b, 1);
      if (p == nullptr) continue;
      for (uint16_t u : {p->lower, p->upper}) {
        if (u != 0) {
          EXPECT_NE(CodeSet(code).Convert(u, 253), '?') << b;
        }
      }
      EXPECT_TRUE(!p->upperList || p->upperList->Count() == 1);
    }
  }
}

}  // namespace
