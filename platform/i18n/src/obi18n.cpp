#include "obi18n.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "obi18n_tables.h"

// One code set: its collation table (null: map into 253) and, for 8-bit
// code sets, the code page (null: the code set is Unicode or orders).
struct ObCodeSetData {
  uint8_t code;
  bool wide;
  const char* name;
  const ObCharTable* table;
  const ObCodePageData* page;
};

namespace {

constexpr uint8_t kNativeCodeSet = 1;  // windows-1252
constexpr uint8_t kIso88592CodeSet = 2;
constexpr uint8_t kUnicodeCodeSet = 253;
constexpr uint8_t kOrderCodeSet = 254;
constexpr uint8_t kDefaultLanguageMarker = 255;
constexpr uint8_t kFirstWideCodeSet = 225;
// Wildcards stay off by default: with them on, equal values would no longer
// hash alike and a text holding '*' would act as a pattern in operator==.
constexpr uint16_t kCmpNoWildcards = 0x0010;
constexpr uint16_t kReplacement = '?';  // the usual code-page substitute

#ifdef NDEBUG
constexpr bool kDebugBuild = false;
#else
constexpr bool kDebugBuild = true;
#endif

constexpr ObCharTable kCharTable253(obi18n::kTable253);
constexpr ObCharTable kCharTable1(obi18n::kTable1);

constexpr ObCodeSetData kCodeSetData[] = {
    {kNativeCodeSet, false, "windows-1252", &kCharTable1, &obi18n::kCodePage1},
    {kIso88592CodeSet, false, "iso-8859-2", nullptr, &obi18n::kCodePage2},
    {kUnicodeCodeSet, true, "unicode-bmp", &kCharTable253, nullptr},
    {kOrderCodeSet, true, "collation-orders", nullptr, nullptr},
};
constexpr ObCodeSet kCodeSets[] = {
    ObCodeSet(kCodeSetData[0]), ObCodeSet(kCodeSetData[1]),
    ObCodeSet(kCodeSetData[2]), ObCodeSet(kCodeSetData[3])};

uint8_t g_codeSet = kNativeCodeSet;
uint8_t g_codeSet8 = kNativeCodeSet;
uint8_t g_codeSet16 = kUnicodeCodeSet;
uint8_t g_language = 1;  // English
uint16_t g_cmpOp = kCmpNoWildcards;
int32_t g_contextCount = 0;
// Debug builds report each unknown code set once; atomic so that concurrent
// readers of corrupt data do not race on the bookkeeping.
std::atomic<uint32_t> g_reportedUnknown[8];

int32_t Accept(bool ok, uint8_t code, uint8_t& slot) {
  if (!ok) return kObI18nBadArgument;
  slot = code;
  return 0;
}

const ObCodeSet* FindCodeSet(uint8_t code) {
  switch (code) {
    case 0:
    case kNativeCodeSet:
      return &kCodeSets[0];
    case kIso88592CodeSet:
      return &kCodeSets[1];
    case kUnicodeCodeSet:
      return &kCodeSets[2];
    case kOrderCodeSet:
      return &kCodeSets[3];
    default:
      return nullptr;
  }
}

// Unicode value of a character of code set `from` (never 0 or 254 here).
uint16_t ToUnicode(uint8_t from, uint16_t ch) {
  switch (from) {
    case kNativeCodeSet:
      return obi18n::kCodePage1.toUnicode[ch & 0xFF];
    case kIso88592CodeSet:
      return obi18n::kCodePage2.toUnicode[ch & 0xFF];
    default:  // 253, and the fallback reading of unknown code sets
      return from < kFirstWideCodeSet ? ch & 0xFF : ch;
  }
}

// The byte of `u` in an 8-bit code page; false when the page lacks it.
bool FromUnicode(const ObCodePageData& page, uint16_t u, uint8_t& out) {
  const uint8_t p = page.fromUnicodePage[u >> 8];
  if (p == 0) return false;
  const uint32_t i = (p - 1u) * 256u + (u & 0xFFu);
  if (i >= page.fromUnicodeCount) return false;
  out = page.fromUnicode[i];
  return out != 0 || u == 0;
}

// Table self-check, run by debug builds when the context first opens:
// cheap consistency checks that catch a broken generator or a stale build.
const char* CheckTables() {
  ObCollEntry e{};
  for (uint16_t ch = 1; ch < 0x200; ++ch) {
    if (!kCharTable253.Lookup(ch, e)) return "253 misses a code below 0x200";
  }
  if (!kCharTable253.Lookup(0xE1, e) || e.order != 0x510C) {
    return "order of a-acute";
  }
  for (uint32_t i = 0; i < obi18n::kTable253.expansionCount; ++i) {
    if (obi18n::kExpansions[i].Count() > 1) return "long expansion";
  }
  for (uint32_t b = 0; b < 256; ++b) {
    ObCollEntry e1{}, e253{};
    const uint16_t u = obi18n::kCodePage1.toUnicode[b];
    if (!kCharTable1.Lookup(static_cast<uint16_t>(b), e1) ||
        !kCharTable253.Lookup(u, e253) || e1.order != e253.order ||
        e1.collationId != e253.collationId ||
        e1.variantCount != e253.variantCount) {
      return "code set 1 differs from 253";
    }
  }
  return nullptr;
}

}  // namespace

// --- ObCharTable ---------------------------------------------------------

bool ObCharTable::VariantFor(const ObCollEntry& e, uint8_t language,
                             ObCollEntry& out) const noexcept {
  const ObCharTableData& t = *data_;
  for (uint32_t v = e.firstVariant;
       v < e.firstVariant + e.variantCount && v < t.variantCount; ++v) {
    const ObCollVariant& var = t.variants[v];
    for (uint32_t l = var.languageList;
         l < var.languageList + var.languageCount && l < t.languageListCount;
         ++l) {
      if (t.languageLists[l] != language) continue;
      if (var.entry >= t.entryCount) return false;
      out = t.entries[var.entry];
      return true;
    }
  }
  return false;
}

bool ObCharTable::Contraction(const ObCollEntry& e, int i, uint16_t& follower,
                              ObCollEntry& out) const noexcept {
  if (i < 0 || i >= e.contractionCount) return false;
  const ObCharTableData& t = *data_;
  const uint32_t c = e.firstContraction + static_cast<uint32_t>(i);
  if (c >= t.contractionCount || t.contractions[c].entry >= t.entryCount) {
    return false;
  }
  follower = t.contractions[c].follower;
  out = t.entries[t.contractions[c].entry];
  return true;
}

// --- ObCodeSet -----------------------------------------------------------

uint8_t ObCodeSet::GetCollationId(uint8_t language) const noexcept {
  // Code set 254 keeps a key's mode byte where other texts keep the language.
  if (data_->code == kOrderCodeSet) return language & 0x7F;
  return ObLanguageContext::QueryLanguage(language)->collationId;
}

const ObCharTable* ObCodeSet::GetCharTable() const noexcept {
  return data_->table;
}

uint16_t ObCodeSet::Convert(uint16_t ch, uint8_t fromCodeSet) const noexcept {
  if (fromCodeSet == 0) fromCodeSet = kNativeCodeSet;
  const uint8_t to = data_->code;
  if (fromCodeSet == to || fromCodeSet == kOrderCodeSet ||
      to == kOrderCodeSet) {
    return ch;
  }
  const uint16_t u = ToUnicode(fromCodeSet, ch);
  if (data_->page == nullptr) return u;
  uint8_t b = 0;
  return FromUnicode(*data_->page, u, b) ? b : kReplacement;
}

uint8_t ObCodeSet::GetCode() const noexcept { return data_->code; }

bool ObCodeSet::IsWide() const noexcept { return data_->wide; }

const char* ObCodeSet::GetName() const noexcept { return data_->name; }

const ObUnicodeProps* ObCodeSet::GetUnicodeProps(const ObCodeSet* cs,
                                                 uint16_t ch,
                                                 uint8_t language) noexcept {
  static_cast<void>(language);
  if (cs == nullptr) return nullptr;
  const ObUnicodeProps* p = nullptr;
  if (cs->data_->page != nullptr) {
    if (ch > 0xFF) return nullptr;
    p = &cs->data_->page->props[ch];
  } else if (cs->data_->code == kUnicodeCodeSet) {
    const ObPropsData& d = obi18n::kPropsData253;
    const uint8_t page = d.page[ch >> 8];
    if (page == 0) return nullptr;
    const uint32_t slot = (page - 1u) * 256u + (ch & 0xFFu);
    const uint16_t index = slot < d.indexCount ? d.index[slot] : 0;
    if (index == 0 || index > d.propsCount) return nullptr;
    p = &d.props[index - 1];
  } else {
    return nullptr;  // collation orders have no case
  }
  return p->lower != 0 || p->upper != 0 || p->upperList != nullptr ? p
                                                                   : nullptr;
}

// --- ObLanguageContext ---------------------------------------------------

bool ObLanguageContext::IsKnownCodeSet(uint8_t code) {
  return FindCodeSet(code) != nullptr;
}

bool ObLanguageContext::IsShippedLanguage(uint8_t code) {
  return code != kDefaultLanguageMarker && QueryLanguage(code)->code == code;
}

const ObCodeSet* ObLanguageContext::QueryCodeSet(uint8_t code) {
  const ObCodeSet* cs = FindCodeSet(code);
  if (kDebugBuild && cs == nullptr) {
    const uint32_t bit = 1u << (code % 32);
    if ((g_reportedUnknown[code / 32].fetch_or(bit) & bit) == 0) {
      std::fprintf(stderr, "obi18n: unknown code set %u\n",
                   static_cast<unsigned>(code));
    }
  }
  return cs;
}

const ObLanguage* ObLanguageContext::QueryLanguage(uint8_t code) {
  if (code == kDefaultLanguageMarker) code = g_language;
  return code < obi18n::kLanguageCount ? &obi18n::kLanguages[code]
                                       : &obi18n::kLanguages[0];
}

uint32_t ObLanguageContext::GetTableVersion() { return obi18n::kTableVersion; }

uint8_t ObLanguageContext::GetNativeCodeSet() { return kNativeCodeSet; }

uint8_t ObLanguageContext::GetDefaultCodeSet() { return g_codeSet; }
int32_t ObLanguageContext::SetDefaultCodeSet(uint8_t code) {
  return Accept(IsKnownCodeSet(code) && code != 0 && code != kOrderCodeSet,
                code, g_codeSet);
}

uint8_t ObLanguageContext::GetDefault8CodeSet() { return g_codeSet8; }
int32_t ObLanguageContext::SetDefault8CodeSet(uint8_t code) {
  return Accept(IsKnownCodeSet(code) && code >= 1 && code < kFirstWideCodeSet,
                code, g_codeSet8);
}

uint8_t ObLanguageContext::GetDefault16CodeSet() { return g_codeSet16; }
int32_t ObLanguageContext::SetDefault16CodeSet(uint8_t code) {
  return Accept(IsKnownCodeSet(code) && code >= kFirstWideCodeSet &&
                    code <= kUnicodeCodeSet,
                code, g_codeSet16);
}

uint8_t ObLanguageContext::GetDefaultLanguage() { return g_language; }
int32_t ObLanguageContext::SetDefaultLanguage(uint8_t code) {
  return Accept(IsShippedLanguage(code), code, g_language);
}

uint16_t ObLanguageContext::GetDefaultCmpOp() { return g_cmpOp; }
int32_t ObLanguageContext::SetDefaultCmpOp(uint16_t op) {
  if (op == 0xFFFF) return kObI18nBadArgument;
  g_cmpOp = op;
  return 0;
}

extern "C" int32_t ___ObI18NContext(int32_t on) {
  if (on != 0) {
    if (++g_contextCount == 1 && kDebugBuild) {
      if (const char* problem = CheckTables()) {
        std::fprintf(stderr, "obi18n: table self-check failed: %s\n", problem);
        std::abort();
      }
    }
  } else if (g_contextCount > 0) {
    --g_contextCount;
  }
  return 0;
}
