// Levelled text comparison with wildcards.
#include "obstrcmp.h"

#include <cstring>
#include <optional>
#include <vector>

#include "obchar.h"
#include "obi18n.h"
#include "obstring.h"
#include "obstringiterator.h"
#include "obweight.h"

namespace {

constexpr uint8_t kNullLanguage = 254;
constexpr uint8_t kOrderCodeSet = 254;

uint16_t g_asterisk = 0;
uint16_t g_question = 0;
uint16_t g_escape = 0;

uint16_t OrderInCodeSet1(uint16_t ch) {
  const ObCodeSet* cs = ObLanguageContext::QueryCodeSet(1);
  ObCollEntry e;
  if (cs == nullptr || cs->GetCharTable() == nullptr ||
      !cs->GetCharTable()->Lookup(ch, e))
    return ch;
  return e.order;
}

// Written lazily and idempotently: every thread computes the same values.
void EnsureWildcards() {
  if (g_asterisk == 0) g_asterisk = OrderInCodeSet1('*');
  if (g_question == 0) g_question = OrderInCodeSet1('?');
  if (g_escape == 0) g_escape = OrderInCodeSet1('\\');
}

bool IsNull(uint8_t codeSet, uint8_t language) {
  return language == kNullLanguage ||
         (codeSet == kOrderCodeSet && language == 0);
}

inline uint32_t Weight(uint16_t order, uint8_t collationId) {
  return ObCollationWeight(order, collationId);
}

inline int32_t Diff(uint32_t a, uint32_t b) {
  return static_cast<int32_t>(a - b);
}

// Both code sets 0, wildcards on: "*" any run, "?" one byte.
int32_t ByteWildcardMatch(const unsigned char* text,
                          const unsigned char* pattern, int32_t maxLength) {
  if (pattern == nullptr) return text != nullptr && *text != 0 ? 1 : 0;
  if (text == nullptr) return *pattern == 0 ? 0 : -1;
  const unsigned char* starPattern = nullptr;
  const unsigned char* starText = nullptr;
  int32_t compared = 0;
  for (;;) {
    if (maxLength >= 0 && compared >= maxLength) return 0;
    if (*pattern == '*') {
      while (*pattern == '*') ++pattern;
      if (*pattern == 0) return 0;
      starPattern = pattern;
      starText = text;
      continue;
    }
    if (*pattern == 0 && *text == 0) return 0;
    if (*pattern == '?' && *text != 0) {
      ++pattern;
      ++text;
      ++compared;
      continue;
    }
    if (*pattern == '?' && starPattern == nullptr) return -1;
    if (*pattern != 0 && *pattern == *text) {
      ++pattern;
      ++text;
      ++compared;
      continue;
    }
    if (starPattern != nullptr && *starText != 0) {
      pattern = starPattern;
      text = ++starText;
      continue;
    }
    return static_cast<int32_t>(*text) - static_cast<int32_t>(*pattern);
  }
}

int32_t BoundedBytes(const unsigned char* a, const unsigned char* b,
                     int32_t maxLength) {
  static const unsigned char kEmpty = 0;
  if (a == nullptr) a = &kEmpty;
  if (b == nullptr) b = &kEmpty;
  for (int32_t i = 0; maxLength < 0 || i < maxLength; ++i) {
    if (a[i] != b[i] || a[i] == 0)
      return static_cast<int32_t>(a[i]) - static_cast<int32_t>(b[i]);
  }
  return 0;
}

// One side of the levelled comparison: fetches significant characters and
// reports the blanks and symbols it passes.
struct Side {
  explicit Side(const ObStringIterator& start) : it(start) {}
  ObStringIterator it;
  int32_t count = 0;
  uint16_t order = 0;
  uint32_t weight = 0;
  bool ended() const { return order == 0; }
};

struct Levels {
  int32_t accent = 0;
  int32_t caseLevel = 0;
  int32_t tieBreak = 0;
};

class LevelledCompare {
 public:
  LevelledCompare(const ObStringIterator& it1, const ObStringIterator& it2,
                  uint16_t op, int16_t maxLength, bool orderText,
                  int32_t* resultOut)
      : s1_(it1),
        s2_(it2),
        op_(op),
        maxLength_(maxLength),
        orderText_(orderText),
        resultOut_(resultOut),
        wildcards_((op & CmpNoWildcards) == 0) {
    if (wildcards_) EnsureWildcards();
    const bool ic = (op & CmpIgnoreCase) != 0;
    const bool ia = (op & CmpIgnoreAccents) != 0;
    matchMask_ = ic && ia ? 0xFFFFFF80u
                 : ic     ? 0xFFFFFF9Fu
                 : ia     ? 0xFFFFFFE0u
                          : 0xFFFFFFFFu;
  }

  int32_t Run();

 private:
  // Returns true with the side on a significant character, or false with
  // `noted` holding the blank or symbol order it passed.
  bool Fetch(Side& s, bool pattern, uint16_t& noted);
  // Brings both sides onto significant characters, recording tie-breaks.
  void FetchBoth(bool need1, bool need2);
  bool IsAsterisk() const {
    return wildcards_ && s2_.order != 0 && s2_.order == ObAsteriskOrder();
  }
  bool IsQuestion() const {
    return wildcards_ && s2_.order != 0 && s2_.order == ObQuestionOrder();
  }
  int32_t Final(int32_t base) const;

  Side s1_, s2_;
  uint16_t op_;
  int16_t maxLength_;
  bool orderText_;
  int32_t* resultOut_;
  bool wildcards_;
  uint32_t matchMask_;
  bool firstStep_ = true;
  Levels levels_;
};

bool LevelledCompare::Fetch(Side& s, bool pattern, uint16_t& noted) {
  for (;;) {
    if (maxLength_ >= 0 && s.count >= maxLength_) {
      s.order = 0;
    } else {
      s.order = s.it.GetNextOrder(orderText_ && !firstStep_ ? 0 : 1);
      ++s.count;
    }
    s.weight = Weight(s.order, s.it.GetCollationId());
    const uint16_t o = s.order;
    if (o == 0 || o >= 16128 || s.it.GetCollationId() >= 20) return true;
    if (pattern && wildcards_ &&
        (o == ObAsteriskOrder() || o == ObQuestionOrder()))
      return true;
    if (o < 80 ? (op_ & CmpIgnoreBlanks) != 0 : (op_ & CmpIgnoreSymbols) != 0)
      continue;
    noted = o;
    return false;
  }
}

void LevelledCompare::FetchBoth(bool need1, bool need2) {
  while (need1 || need2) {
    uint16_t noted1 = 0, noted2 = 0;
    if (need1) need1 = !Fetch(s1_, false, noted1);
    if (need2) need2 = !Fetch(s2_, true, noted2);
    if ((noted1 != 0 || noted2 != 0) && noted1 != noted2)
      levels_.tieBreak = static_cast<int32_t>(noted1) - noted2;
  }
  firstStep_ = false;
}

int32_t LevelledCompare::Final(int32_t base) const {
  if (base != 0) return base;
  if (levels_.accent != 0 && (op_ & CmpIgnoreAccents) == 0)
    return levels_.accent;
  if (levels_.caseLevel == 0 || (op_ & CmpIgnoreCase) != 0)
    return levels_.tieBreak;
  return levels_.caseLevel;
}

// Under a pending asterisk the text is matched by trying each position in
// turn: the pattern restarts after the asterisk one text character further
// on, with the level differences as they were at the asterisk.
int32_t LevelledCompare::Run() {
  bool starPending = false;
  // Taken only once an asterisk is met.
  std::optional<Side> starPattern;  // on the pattern character after it
  std::optional<Side> starText;     // where the current attempt began
  Levels starLevels;
  uint16_t noted = 0;
  FetchBoth(true, true);
  int32_t base = 0;
  for (;;) {
    if (IsAsterisk()) {
      do {
        while (!Fetch(s2_, true, noted)) {
        }
      } while (IsAsterisk());
      if (s2_.ended()) return levels_.tieBreak;
      starPending = true;
      starPattern.emplace(s2_);
      starText.emplace(s1_);
      starLevels = levels_;
      continue;
    }
    bool matched;
    if (IsQuestion() && !s1_.ended()) {
      matched = true;
      base = 0;
    } else if (IsQuestion() && !starPending) {
      return -1;
    } else {
      const uint32_t w1 = s1_.weight, w2 = s2_.weight;
      base = Diff(w1 & ~127u, w2 & ~127u);
      matched = (w1 & matchMask_) == (w2 & matchMask_);
      if (!starPending || matched) {
        if (levels_.caseLevel == 0)
          levels_.caseLevel = Diff(w2 & ~31u, w1 & ~31u);
        if (((w1 ^ w2) & ~96u) != 0)
          levels_.accent = Diff(w1 & ~96u, w2 & ~96u);
      }
    }
    if (starPending && !matched && !s1_.ended()) {
      s2_ = *starPattern;
      s1_ = *starText;
      levels_ = starLevels;
      base = 0;
      while (!Fetch(s1_, false, noted)) {
      }
      *starText = s1_;
      continue;
    }
    if ((op_ & CmpIgnoreBlanks) != 0 && resultOut_ != nullptr &&
        (maxLength_ < 0 ||
         (s1_.count <= maxLength_ && s2_.count <= maxLength_)))
      *resultOut_ = base;
    if (base != 0 || s1_.ended() || (s2_.ended() && !starPending)) break;
    FetchBoth(true, true);
  }
  return Final(base);
}

// Whether the character at `at` has contractions in the language.
bool StartsContraction(uint8_t codeSet, uint8_t language, const char* at,
                       uint8_t format) {
  if (codeSet == kOrderCodeSet) return false;
  const ObCodeSet* cs = ObLanguageContext::QueryCodeSet(codeSet);
  const ObCodeSet* unicode = ObLanguageContext::QueryCodeSet(253);
  ObStringIterator it(at, codeSet, language, format);
  uint16_t ch = (*it).GetValue();
  const ObCharTable* table = cs != nullptr ? cs->GetCharTable() : nullptr;
  if (table == nullptr) {
    if (cs != nullptr) ch = unicode->Convert(ch, codeSet);
    table = unicode->GetCharTable();
  }
  ObCollEntry e, variant;
  if (!table->Lookup(ch, e)) return false;
  if (e.variantCount != 0 &&
      ObLanguageContext::QueryLanguage(language)->variantsApply &&
      table->VariantFor(e, language, variant))
    e = variant;
  return e.contractionCount != 0;
}

}  // namespace

uint16_t ObAsteriskOrder() {
  EnsureWildcards();
  return g_asterisk;
}
uint16_t ObQuestionOrder() {
  EnsureWildcards();
  return g_question;
}
uint16_t ObEscapeOrder() {
  EnsureWildcards();
  return g_escape;
}

namespace {
uint16_t FirstOrder(const ObChar& ch) {
  ObStringIterator it(ch);
  return it.GetNextOrder(1);
}
}  // namespace

int32_t ObString::SetAsterisk(const ObChar& ch) {
  EnsureWildcards();
  g_asterisk = FirstOrder(ch);
  return 0;
}
int32_t ObString::SetQuestion(const ObChar& ch) {
  EnsureWildcards();
  g_question = FirstOrder(ch);
  return 0;
}
int32_t ObString::SetEscape(const ObChar& ch) {
  EnsureWildcards();
  g_escape = FirstOrder(ch);
  return 0;
}

int32_t ObStrCmp(uint8_t codeSet1, uint8_t language1, const char* text1,
                 uint8_t codeSet2, uint8_t language2, const char* text2,
                 uint16_t cmpOp, int16_t maxLength, uint8_t iteratorMode,
                 int32_t* resultOut) {
  const bool null1 = IsNull(codeSet1, language1);
  const bool null2 = IsNull(codeSet2, language2);
  if (null1 && null2) return 0;
  if (null1 && (cmpOp & (CmpNoWildcards | CmpBinaryOrder)) != 0) return -1;
  if (!null1 && null2) return 1;
  if (maxLength == 0) return 0;
  if (codeSet1 == 0 && codeSet2 == 0) {
    const auto* a = reinterpret_cast<const unsigned char*>(text1);
    const auto* b = reinterpret_cast<const unsigned char*>(text2);
    if ((cmpOp & (CmpNoWildcards | CmpBinaryOrder)) == 0)
      return ByteWildcardMatch(a, b, maxLength);
    return BoundedBytes(a, b, maxLength);
  }
  if (codeSet1 == 0) codeSet1 = ObLanguageContext::GetNativeCodeSet();
  if (codeSet2 == 0) codeSet2 = ObLanguageContext::GetNativeCodeSet();
  if (codeSet1 == codeSet2 && language1 == language2 && text1 != nullptr &&
      text2 != nullptr && maxLength < 0 &&
      (cmpOp & (CmpNoWildcards | CmpBinaryOrder)) != 0) {
    // Identical leading characters add nothing to any level.
    const size_t w = codeSet1 >= 225 ? 2 : 1;
    size_t same = 0;
    while (std::memcmp(text1 + same * w, text2 + same * w, w) == 0 &&
           (text1[same * w] != 0 || (w == 2 && text1[same * w + 1] != 0)))
      ++same;
    // Back off while the last skipped character may begin a contraction:
    // the element it starts could reach into the characters that differ.
    size_t skip = same;
    while (skip > 0 && StartsContraction(codeSet1, language1,
                                         text1 + (skip - 1) * w, iteratorMode))
      --skip;
    if (skip > 0) {
      text1 += skip * w;
      text2 += skip * w;
    }
  }
  ObStringIterator it1(text1, codeSet1, language1, iteratorMode);
  ObStringIterator it2(text2, codeSet2, language2, iteratorMode);
  const bool orderText = codeSet1 == kOrderCodeSet || codeSet2 == kOrderCodeSet;
  if ((cmpOp & CmpBinaryOrder) != 0) {
    for (int32_t n = 0; maxLength < 0 || n < maxLength; ++n) {
      const int expand = orderText && n > 0 ? 0 : 1;
      const uint16_t o1 = it1.GetNextOrder(expand);
      const uint16_t o2 = it2.GetNextOrder(expand);
      const int32_t d = Diff(Weight(o1, it1.GetCollationId()),
                             Weight(o2, it2.GetCollationId()));
      if (d != 0 || o1 == 0 || o2 == 0) return d;
    }
    return 0;
  }
  LevelledCompare compare(it1, it2, cmpOp, maxLength, orderText, resultOut);
  return compare.Run();
}

int32_t FindWildcard(uint8_t codeSet, uint8_t language, const char* text,
                     int32_t questionIsLiteral, int32_t maxCharacters,
                     int32_t* byteOffsetOut, uint8_t iteratorMode) {
  const int32_t kNotFound = -1;
  if (text == nullptr) {
    if (byteOffsetOut != nullptr)
      *byteOffsetOut = static_cast<int32_t>(0xFFFF0000u);
    return kNotFound;
  }
  if (codeSet == 0) {
    for (int32_t i = 0; i < maxCharacters && text[i] != 0; ++i) {
      if (text[i] == '*' || (questionIsLiteral == 0 && text[i] == '?')) {
        if (byteOffsetOut != nullptr) *byteOffsetOut = i;
        return i;
      }
    }
    if (byteOffsetOut != nullptr)
      *byteOffsetOut = static_cast<int32_t>(0xFFFF0000u);
    return kNotFound;
  }
  ObStringIterator it(text, codeSet, language, iteratorMode);
  const uint16_t asterisk = ObAsteriskOrder(), question = ObQuestionOrder();
  for (int32_t i = 0; i < maxCharacters; ++i) {
    const char* at = it.GetPosition();
    const uint16_t o = it.GetNextOrder(0);
    if (o == 0) break;
    if (o == asterisk || (questionIsLiteral == 0 && o == question)) {
      if (byteOffsetOut != nullptr)
        *byteOffsetOut = static_cast<int32_t>(at - text);
      return i;
    }
  }
  if (byteOffsetOut != nullptr)
    *byteOffsetOut = static_cast<int32_t>(0xFFFF0000u);
  return kNotFound;
}
