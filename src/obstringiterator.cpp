#include "obstringiterator.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "obchar.h"
#include "obi18n.h"
#include "obstrcmp.h"
#include "obstring.h"

namespace {

constexpr uint8_t kUnicode = 253;
constexpr uint16_t kFirstUntabled = 0x200;

uint8_t Resolve8CodeSet(uint8_t codeSet) {
  return codeSet == 255 ? ObLanguageContext::GetDefault8CodeSet() : codeSet;
}
uint8_t ResolveLanguage(uint8_t language) {
  return language == 255 ? ObLanguageContext::GetDefaultLanguage() : language;
}

const char kEmpty[2] = {0, 0};

}  // namespace

// ---- Construction.

void ObStringIterator::Init(const char* text, uint8_t codeSet, uint8_t language,
                            uint8_t format) {
  codeSet_ = codeSet;
  language_ = language;
  format_ = format;
  ownsText_ = 0;
  position_ = text != nullptr ? text : kEmpty;
  overflow_ = nullptr;
  overflowIndex_ = 0;
  overflowCodeSet_ = codeSet;
  codeSetObject_ = ObLanguageContext::QueryCodeSet(codeSet);
  // An unknown code set reads bytes as U+0000-U+00FF and units as UCS-2.
  if (codeSetObject_ == nullptr)
    codeSetObject_ = ObLanguageContext::QueryCodeSet(kUnicode);
  languageRecord_ = ObLanguageContext::QueryLanguage(language);
  languageCollationId_ = codeSetObject_->GetCollationId(language);
  collationId_ = languageCollationId_;
  table_ = codeSetObject_->GetCharTable();
  unicode_ = nullptr;
  if (table_ == nullptr) {
    unicode_ = ObLanguageContext::QueryCodeSet(kUnicode);
    table_ = unicode_->GetCharTable();
  }
}

ObStringIterator::ObStringIterator(const ObString& s) {
  Init(s.StrGet(), s.GetCodeSet(), s.GetLanguage(), 8);
}

ObStringIterator::ObStringIterator(const char* text, uint8_t codeSet,
                                   uint8_t language, uint8_t format) {
  Init(text, Resolve8CodeSet(codeSet), ResolveLanguage(language),
       format == 255 ? 1 : format);
}

ObStringIterator::ObStringIterator(const unsigned short* text, uint8_t codeSet,
                                   uint8_t language, uint8_t format)
    : ObStringIterator(reinterpret_cast<const char*>(text), codeSet, language,
                       format) {}

ObStringIterator::ObStringIterator(const ObChar& ch) {
  const bool wide = ch.GetCodeSet() >= 225;
  char* text = static_cast<char*>(std::calloc(1, wide ? 4 : 2));
  Init(text, ch.GetCodeSet(), ch.GetLanguage(), 1);
  if (text == nullptr) return;
  ownsText_ = 1;
  const uint16_t v = ch.GetValue();
  if (wide) {
    std::memcpy(text, &v, 2);
  } else {
    text[0] = static_cast<char>(v);
  }
}

void ObStringIterator::FreeText() {
  std::free(const_cast<char*>(position_));
  ownsText_ = 0;
  position_ = kEmpty;
}

// ---- Movement.

int32_t ObStringIterator::OverflowCount() const { return overflow_->Count(); }

ObStringIterator& ObStringIterator::operator++() {
  if (OverflowPending()) return *this;  // the index moves in operator*
  overflow_ = nullptr;
  Advance();
  return *this;
}

ObStringIterator ObStringIterator::operator++(int) {
  ObStringIterator old(*this);
  ++*this;
  return old;
}

ObStringIterator& ObStringIterator::operator--() {
  position_ -= Width();
  return *this;
}

ObStringIterator ObStringIterator::operator--(int) {
  ObStringIterator old(*this);
  --*this;
  return old;
}

ObChar ObStringIterator::operator*() {
  if (OverflowPending()) {
    uint16_t v = overflow_->Get(overflowIndex_++);
    if (overflowCodeSet_ < 225)
      return ObChar(static_cast<char>(v), overflowCodeSet_, language_);
    return ObChar(v, overflowCodeSet_, language_);
  }
  return ObChar(const_cast<char*>(position_), codeSet_, language_, format_);
}

bool ObStringIterator::IsEOS() const {
  return overflow_ == nullptr &&
         (position_ == nullptr || ReadAt(position_) == 0);
}

void ObStringIterator::SetOverflow(const ObWCharList* list, uint8_t codeSet) {
  overflow_ = list;
  overflowIndex_ = 0;
  overflowCodeSet_ = codeSet == 255 ? codeSet_ : codeSet;
}

// ---- Orders.

uint16_t ObStringIterator::GetNextOrder(int expand) {
  if (codeSet_ == kOrderCodeSet) {
    const uint8_t* p = reinterpret_cast<const uint8_t*>(position_);
    uint16_t order = static_cast<uint16_t>(p[0] | p[1] << 8);
    if (order != 0 && !OverflowPending()) position_ += 2;
    return order;
  }
  const ObCharTable* table = table_;
  // A table-less code set reads its characters as code set 253 ones.
  auto tabled = [this](uint16_t ch) {
    return unicode_ != nullptr ? unicode_->Convert(ch, codeSet_) : ch;
  };
  bool fromText = true;
  uint16_t ch;
  if (OverflowPending()) {
    ch = overflow_->Get(overflowIndex_++);
    fromText = false;
    if (overflowCodeSet_ == kOrderCodeSet) {
      if (!OverflowPending()) {
        overflow_ = nullptr;
        Advance();
      }
      return ch;
    }
  } else {
    ch = ReadAt(position_);
  }
  ch = tabled(ch);
  if (ch == 0) return 0;

  ObCollEntry entry;
  if (!table->Lookup(ch, entry)) {
    // Unknown to the table (only characters from 0x200 on): its own code.
    if (!OverflowPending()) ++*this;
    if (expand == 0 || ch == ObAsteriskOrder() || ch == ObQuestionOrder() ||
        ch > 0xFFEF)
      return ch;
    collationId_ = kUnknownCollationId;
    return ch;
  }
  ObCollEntry variant;
  if (entry.variantCount != 0 && languageRecord_->variantsApply &&
      table->VariantFor(entry, language_, variant))
    entry = variant;
  // Contractions: the longest run of listed followers in the text.
  while (fromText && entry.contractionCount != 0) {
    const char* back = position_;
    Advance();
    const uint16_t next = tabled(ReadAt(position_));
    bool matched = false;
    if (next != 0) {
      for (int i = 0; i < entry.contractionCount; ++i) {
        uint16_t follower;
        ObCollEntry target;
        if (table->Contraction(entry, i, follower, target) &&
            follower == next) {
          entry = target;
          matched = true;
          break;
        }
      }
    }
    if (!matched) {
      position_ = back;
      break;
    }
  }
  if (expand != 0) {
    collationId_ =
        entry.collationId != 0 ? entry.collationId : languageCollationId_;
  }
  if (const ObWCharList* expansion = table->Expansion(entry)) {
    overflow_ = expansion;
    overflowIndex_ = 0;
    overflowCodeSet_ = kOrderCodeSet;
  }
  if (!OverflowPending()) {
    if (!fromText) overflow_ = nullptr;
    Advance();
  }
  return entry.order;
}

void ObStringIterator::Transform(ObStringIterator& dest,
                                 const ObCharOperation& op) {
  for (;;) {
    if (!OverflowPending() && ReadAt(position_) == 0) break;
    ObChar source = **this;
    ObChar result = op.Apply(source, this);
    ObChar slot = *dest;
    slot = result;
    ++*this;
    ++dest;
  }
  ObChar end = *dest;
  end = ObChar(static_cast<unsigned short>(0), dest.codeSet_, dest.language_);
}

// ---- Order functions.

int32_t ObExtractSymbolFromOrder(uint16_t order, uint16_t& symbol) {
  if (order < 80 || order >= 16128) return kObBadArgument;
  symbol = static_cast<uint16_t>(order - 80);
  return 0;
}

int32_t ObExtractDigitFromOrder(uint16_t order, uint16_t& digit,
                                uint16_t& expand) {
  if (order < 16128 || order >= 16384) return kObBadArgument;
  digit = static_cast<uint16_t>(((order & 0xFFFE) - 16128) / 10);
  expand = order & 1;
  return 0;
}

namespace {

struct SymbolName {
  uint16_t order;
  const char* text;  // appended by ObConvertOrderToString
  char ch;           // given by ObConvertOrderToChar
};
// DO NOT CHANGE: printed order texts of stored keys depend on these.
constexpr SymbolName kSymbols[] = {
    {112, "_", '_'},
    {114, "macron sign", '.'},
    {115, "soft hyphen", '.'},
    {116, "-", '-'},
    {117, ",", ','},
    {118, ";", ';'},
    {119, ":", ':'},
    {120, "!", '!'},
    {121, "inverted exclamation mark", '.'},
    {122, "?", '?'},
    {124, "solidus", '/'},
    {126, "full stop", '.'},
    {129, "middle dot", '.'},
    {130, "cedilla", '.'},
    {132, "apostrophe", '\''},
    {135, "\"", '"'},
    {138, "left pointing o_double angle quotation mark", '.'},
    {139, "right pointing o_double angle quotation mark", '.'},
    {140, "(", '('},
    {142, ")", ')'},
    {144, "[", '['},
    {145, "]", ']'},
    {146, "{", '{'},
    {147, "}", '}'},
    {148, "section sign", '.'},
    {149, "pilcrow sign", '.'},
    {150, "copyright sign", '.'},
    {151, "registered sign", '.'},
    {153, "@", '@'},
    {154, "currency sign", '.'},
    {155, "cent sign", '.'},
    {156, "$", '$'},
    {157, "pound sign", '.'},
    {158, "yen sign", '.'},
    {159, "*", '*'},
    {160, "reverse solidus", '.'},
    {161, "&", '&'},
    {162, "#", '#'},
    {163, "%", '%'},
    {165, "+", '+'},
    {167, "plus minus sign", '.'},
    {168, "'", '\''},
    {169, "`", '`'},
    {171, "^", '^'},
    {174, "diaeresis", '.'},
    {176, "~", '~'},
    {178, "division sign", '.'},
    {179, "multiplication sign", '.'},
    {181, "<", '<'},
    {183, "=", '='},
    {185, ">", '>'},
    {186, "not sign", '.'},
    {187, "|", '|'},
    {188, "broken bar", '.'},
    {189, "degree sign", '.'},
    {190, "micron sign", '.'},
    {219, "inverted question mark", '.'},
};

const SymbolName* FindSymbol(uint16_t order) {
  for (const SymbolName& s : kSymbols) {
    if (s.order == order) return &s;
  }
  return nullptr;
}

const char* const kAccentNames[15] = {nullptr,
                                      "cedilla",
                                      "accent acute",
                                      "accent grave",
                                      "accent circumflex",
                                      "tilde",
                                      "diaeresis",
                                      "ring above",
                                      "stroke",
                                      "accent caron",
                                      "accent macron",
                                      "accent breve",
                                      "dot above",
                                      "ogonek",
                                      "accent o_double acute"};

bool IsLanguageOrder(uint16_t order, uint8_t collationId) {
  return order < 32768 && (collationId & 127) < 20;
}

// Latin-1 letters in backslash accent notation, from 192 on; 215 and 247
// (multiplication and division signs) have none.
const char* const kAccentNotation[64] = {
    "\\`A", "\\'A", "\\^A", "\\~A",  "\\\"A", "\\AA", "\\AE",  "\\,C",
    "\\`E", "\\'E", "\\^E", "\\\"E", "\\`I",  "\\'I", "\\^I",  "\\\"I",
    "\\-D", "\\~N", "\\`O", "\\'O",  "\\^O",  "\\~O", "\\\"O", "",
    "\\-O", "\\`U", "\\'U", "\\^U",  "\\\"U", "\\'Y", "\\TH",  "\\ss",
    "\\`a", "\\'a", "\\^a", "\\~a",  "\\\"a", "\\aa", "\\ae",  "\\,c",
    "\\`e", "\\'e", "\\^e", "\\\"e", "\\`i",  "\\'i", "\\^i",  "\\\"i",
    "\\-d", "\\~n", "\\`o", "\\'o",  "\\^o",  "\\~o", "\\\"o", "",
    "\\-o", "\\`u", "\\'u", "\\^u",  "\\\"u", "\\'y", "\\th",  "\\\"y"};

}  // namespace

int32_t ObConvertOrderToString(uint16_t order, uint8_t collationId,
                               ObString& text) {
  char buffer[96] = "unknown";
  if (!IsLanguageOrder(order, collationId)) {
    std::snprintf(buffer, sizeof buffer, "HAN character 0x%04x\n", order);
  } else if (order < 80) {
    std::snprintf(buffer, sizeof buffer, "%s",
                  order == 13 ? "undefined ordering indicator" : "space");
  } else if (order < 16128) {
    const SymbolName* s = FindSymbol(order);
    std::snprintf(buffer, sizeof buffer, "symbol %s", s ? s->text : "");
  } else if (order < 16384) {
    uint16_t digit = 0, expand = 0;
    ObExtractDigitFromOrder(order, digit, expand);
    std::snprintf(buffer, sizeof buffer, "digit %u%s", digit,
                  expand ? " with expand" : "");
  } else {
    const bool lower = (order & 0x3000) != 0;
    const unsigned kind = (order >> 7) & 0x1F;
    const char letter =
        static_cast<char>(62 + ((order >> 2) & 0x1F) + (lower ? 32 : 0));
    int n = std::snprintf(buffer, sizeof buffer, "%s letter %c",
                          lower ? "lower" : "upper", letter);
    if (kind != 0) {
      n += std::snprintf(buffer + n, sizeof buffer - n, " with %s",
                         kind < 15 ? kAccentNames[kind] : "");
    }
    if ((order & 3) != 0)
      std::snprintf(buffer + n, sizeof buffer - n, " with extension");
  }
  text = buffer;
  return 0;
}

int32_t ObConvertOrderToChar(uint16_t order, uint8_t collationId,
                             unsigned char& ch, int32_t findAccented,
                             const char** name) {
  ch = 7;
  if (!IsLanguageOrder(order, collationId)) {
    ch = 127;
  } else if (order < 80) {
    ch = 32;
  } else if (order < 16128) {
    if (const SymbolName* s = FindSymbol(order))
      ch = static_cast<unsigned char>(s->ch);
  } else if (order < 16384) {
    uint16_t digit = 0, expand = 0;
    ObExtractDigitFromOrder(order, digit, expand);
    ch = static_cast<unsigned char>('0' + digit);
  } else {
    const bool lower = (order & 0x3000) != 0;
    ch = static_cast<unsigned char>((lower ? 94 : 62) + ((order >> 2) & 0x1F));
    if (((order >> 7) & 0x1F) != 0 && findAccented != 0) {
      const ObCharTable* table =
          ObLanguageContext::QueryCodeSet(1)->GetCharTable();
      for (unsigned c = 128; c < 256; ++c) {
        ObCollEntry e;
        if (table->Lookup(static_cast<uint16_t>(c), e) && e.order == order) {
          ch = static_cast<unsigned char>(c);
          break;
        }
      }
    }
    if (name != nullptr) *name = ch >= 192 ? kAccentNotation[ch - 192] : "";
  }
  return 0;
}
