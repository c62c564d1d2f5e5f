// Internationalisation services of Quillstore: the process-wide defaults for
// code set, language and comparison operator, the code sets with their
// collation tables and conversions, languages, and Unicode case mappings.
//
// Code-set codes: 0 raw bytes, 1-224 one byte per character, 225-253 two
// bytes per character, 254 a text of collation orders, 255 never a code set.
// Shipped: 1 windows-1252 (native), 2 iso-8859-2 (no table of its own: map
// its characters into 253), 253 unicode-bmp (UCS-2), 254 collation-orders.
//
// Everything here is constant data or reads it: no heap, no locale, no
// exceptions; all objects are valid during other libraries' static
// initialisation.
#ifndef QUILLSTORE_OBI18N_H_
#define QUILLSTORE_OBI18N_H_

#include <cstdint>

#if defined(QS_I18N_BUILD)
#define QS_I18N_API __attribute__((visibility("default")))
#else
#define QS_I18N_API
#endif

// Status of a setter given a value it does not accept.
constexpr int32_t kObI18nBadArgument = -2002;

// Collation identifiers that are not languages: letters of the Greek and
// Cyrillic tables carry their own, and a character unknown to a table sorts
// under kObCollUnknown by its own code (the iterator sets it; no table
// entry holds it).
constexpr uint8_t kObCollGreek = 16;
constexpr uint8_t kObCollCyrillic = 17;
constexpr uint8_t kObCollUnknown = 20;

// Read-only list of 16-bit values (characters or collation orders) over
// constant data; never owns or frees anything.
class QS_I18N_API ObWCharList {
 public:
  constexpr ObWCharList(const uint16_t* items, uint16_t count) noexcept
      : items_(items), count_(items != nullptr ? count : 0) {}
  constexpr uint16_t Count() const noexcept { return count_; }
  // 0 when index is out of range.
  constexpr uint16_t Get(int index) const noexcept {
    return index >= 0 && index < count_ ? items_[index] : 0;
  }

 private:
  const uint16_t* items_;
  uint16_t count_;
};

// Case mappings of one character. lower and upper are code set 253 values
// (0 = none): map them back into the character's code set. upperList holds
// the rest of a multi-character upper case (at most one character), in the
// character's own code set: for U+00DF upper is 'S' and upperList is "S".
struct ObUnicodeProps {
  uint16_t lower;
  uint16_t upper;
  const ObWCharList* upperList;
};

// One character's collation data. The entry's orders are `order` followed by
// the expansion list (at most one more order), so a character yields at most
// two orders.
struct ObCollEntry {
  uint16_t order;
  uint8_t collationId;  // 0 = none: use the code set's identifier
  uint8_t variantCount;
  uint8_t contractionCount;
  uint16_t firstVariant;
  uint16_t firstContraction;
  uint16_t expansion;  // 0 = none, else 1 + index of the expansion list
};
struct ObCollVariant {
  uint16_t languageList;
  uint8_t languageCount;
  uint16_t entry;
};
struct ObCollContraction {
  uint16_t follower;  // in the table's code set
  uint16_t entry;
};

struct ObCodeSetData;  // library-internal layout

// Layout of a collation table, public so that the per-character look-up
// is inlined into the text comparison.
// 16-bit tables index `special` in two stages: the high
// byte selects a page through `specialPage` (0 = no entries on that page);
// 8-bit tables (specialPage null) index it directly. A special value is 0 for
// a plain character (order only), else 1 + entry index.
struct ObCharTableData {
  const uint16_t* orders;  // first order per character; 0 = unknown
  uint32_t orderCount;
  const uint8_t* specialPage;  // 256 entries: 0 none, else 1 + page
  const uint16_t* special;
  uint32_t specialCount;
  const ObCollEntry* entries;
  uint32_t entryCount;
  const ObCollVariant* variants;  // pools shared by all tables
  uint32_t variantCount;
  const ObCollContraction* contractions;
  uint32_t contractionCount;
  const uint8_t* languageLists;
  uint32_t languageListCount;
  const ObWCharList* expansions;
  uint32_t expansionCount;
};

// Collation table of a code set. Entries returned by Lookup, VariantFor and
// Contraction belong to this table and may only be passed back to it.
class QS_I18N_API ObCharTable {
 public:
  explicit constexpr ObCharTable(const ObCharTableData& data) noexcept
      : data_(&data) {}

  // O(1). False for a character the table does not know (only possible at
  // 0x200 and above; for 8-bit tables, above 255); `out` is then zeroed.
  // Character 0 is known, with order 0.
  bool Lookup(uint16_t ch, ObCollEntry& out) const noexcept {
    out = ObCollEntry{};
    const ObCharTableData& t = *data_;
    if (ch >= t.orderCount) return false;
    uint32_t slot = ch;
    if (t.specialPage != nullptr) {
      const uint8_t page = t.specialPage[ch >> 8];
      slot = page == 0 ? t.specialCount : (page - 1u) * 256u + (ch & 0xFFu);
    }
    const uint16_t special = slot < t.specialCount ? t.special[slot] : 0;
    if (special != 0 && special <= t.entryCount) {
      out = t.entries[special - 1];
      return true;
    }
    out.order = t.orders[ch];
    return out.order != 0 || ch == 0;
  }
  // The entry of `language` among e's variants; false (out untouched) when
  // it lists none. Apply it only when the language's variantsApply is set.
  bool VariantFor(const ObCollEntry& e, uint8_t language,
                  ObCollEntry& out) const noexcept;
  // Contraction i (0 <= i < e.contractionCount): the follower character and
  // the entry that the pair (lead, follower) sorts as; false (outputs
  // untouched) for any other i.
  bool Contraction(const ObCollEntry& e, int i, uint16_t& follower,
                   ObCollEntry& out) const noexcept;
  // Orders that follow e.order; nullptr = none.
  const ObWCharList* Expansion(const ObCollEntry& e) const noexcept {
    if (e.expansion == 0 || e.expansion > data_->expansionCount) return nullptr;
    return &data_->expansions[e.expansion - 1];
  }

 private:
  const ObCharTableData* data_;
};

class QS_I18N_API ObCodeSet {
 public:
  explicit constexpr ObCodeSet(const ObCodeSetData& data) noexcept
      : data_(&data) {}

  // The collation identifier for texts of this code set in `language`:
  // the language's identifier; for code set 254 the low 7 bits of the
  // "language" byte, which holds a key's mode byte there.
  uint8_t GetCollationId(uint8_t language) const noexcept;
  // nullptr: the code set has no table; map characters into 253 first.
  const ObCharTable* GetCharTable() const noexcept;
  // `ch` of code set `fromCodeSet` (0 = native) in this code set: unchanged
  // for the same code set and from or to 254; characters an 8-bit code set
  // lacks become '?'. Unknown source code sets are read as Latin-1 (8-bit
  // codes) or UCS-2 (16-bit codes).
  uint16_t Convert(uint16_t ch, uint8_t fromCodeSet) const noexcept;
  uint8_t GetCode() const noexcept;
  bool IsWide() const noexcept;
  const char* GetName() const noexcept;

  // Case mappings of `ch` of code set `cs`; nullptr when it has none (also
  // for cs nullptr and code set 254). `language` is reserved: no shipped
  // language has its own case rules.
  static const ObUnicodeProps* GetUnicodeProps(const ObCodeSet* cs, uint16_t ch,
                                               uint8_t language) noexcept;

 private:
  const ObCodeSetData* data_;
};

struct ObLanguage {
  uint8_t code;
  const char* tag;  // BCP 47 concept, e.g. "de-u-co-phonebk"
  uint8_t collationId;
  bool variantsApply;  // table variants and contractions apply
  bool hasCollation;
};

// The defaults are constant-initialised, so they hold during other
// libraries' static initialisation. Setters return 0, or kObI18nBadArgument
// and change nothing. No locks: set them before other threads start.
class QS_I18N_API ObLanguageContext {
 public:
  ObLanguageContext() = delete;

  static uint8_t GetNativeCodeSet();

  static uint8_t GetDefaultCodeSet();
  static int32_t SetDefaultCodeSet(
      uint8_t code);  // a known code set, not 0/254
  static uint8_t GetDefault8CodeSet();
  static int32_t SetDefault8CodeSet(uint8_t code);  // a known code 1-224
  static uint8_t GetDefault16CodeSet();
  static int32_t SetDefault16CodeSet(uint8_t code);  // a known code 225-253
  static uint8_t GetDefaultLanguage();
  static int32_t SetDefaultLanguage(uint8_t code);  // a shipped language
  static uint16_t GetDefaultCmpOp();
  static int32_t SetDefaultCmpOp(uint16_t op);  // anything but 0xFFFF

  // True for the code sets this library has tables or rules for.
  static bool IsKnownCodeSet(uint8_t code);
  // True for the languages this library ships collation data for.
  static bool IsShippedLanguage(uint8_t code);

  // 0 gives the native code set; unknown codes (255 included) give nullptr.
  // Callers then read bytes as U+0000-U+00FF and 16-bit units as UCS-2.
  static const ObCodeSet* QueryCodeSet(uint8_t code);
  // Never nullptr: 255 gives the default language's record, unshipped codes
  // the neutral record (code 0).
  static const ObLanguage* QueryLanguage(uint8_t code);
  // Changes whenever stored collation orders change: index keys built under
  // another version must be rebuilt.
  static uint32_t GetTableVersion();
};

// Context switch, reference counted; returns 0. The defaults are left alone.
// Debug builds check the tables when the context is first switched on.
extern "C" QS_I18N_API int32_t ___ObI18NContext(int32_t on);

#endif  // QUILLSTORE_OBI18N_H_
