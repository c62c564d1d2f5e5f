// Layout of the generated tables (obi18n_tables.gen.cpp); library-internal.
// Every table is a namespace-scope constexpr array or record declared here
// first, so it exists once, with external linkage and constant
// initialisation.
#ifndef QUILLSTORE_OBI18N_TABLES_H_
#define QUILLSTORE_OBI18N_TABLES_H_

#include <cstdint>

#include "obi18n.h"

// Case mappings of code set 253, two-stage like the collation specials.
struct ObPropsData {
  const uint8_t* page;    // 256 entries: 0 none, else 1 + page
  const uint16_t* index;  // 0 none, else 1 + record index
  uint32_t indexCount;
  const ObUnicodeProps* props;
  uint32_t propsCount;
};

// An 8-bit code set against Unicode. The reverse direction is two-stage:
// a byte of 0 in `fromUnicode` means "absent" except for U+0000.
struct ObCodePageData {
  const uint16_t* toUnicode;       // 256 entries
  const uint8_t* fromUnicodePage;  // 256 entries: 0 none, else 1 + page
  const uint8_t* fromUnicode;
  uint32_t fromUnicodeCount;
  const ObUnicodeProps* props;  // 256 entries, per byte
};

namespace obi18n {

extern const uint32_t kTableVersion;
extern const ObLanguage kLanguages[];  // codes 0 .. kLanguageCount - 1
extern const uint32_t kLanguageCount;

extern const uint16_t kExpansionOrders[];
extern const ObWCharList kExpansions[];
extern const uint8_t kLanguageLists[];
extern const ObCollVariant kVariants[];
extern const ObCollContraction kContractions[];

extern const uint16_t kOrders253[65536];
extern const uint8_t kSpecialPage253[256];
extern const uint16_t kSpecial253[];
extern const ObCollEntry kEntries253[];
extern const uint16_t kOrders1[256];
extern const uint16_t kSpecial1[256];
extern const ObCollEntry kEntries1[];
extern const ObCharTableData kTable253;
extern const ObCharTableData kTable1;

extern const uint16_t kUpperListChars[];
extern const ObWCharList kUpperLists[];
extern const ObUnicodeProps kProps253[];
extern const uint8_t kPropsPage253[256];
extern const uint16_t kPropsIndex253[];
extern const ObPropsData kPropsData253;

extern const uint16_t kToUnicode1[256];
extern const uint8_t kFromUnicodePage1[256];
extern const uint8_t kFromUnicode1[];
extern const ObUnicodeProps kProps1[256];
extern const ObCodePageData kCodePage1;
extern const uint16_t kToUnicode2[256];
extern const uint8_t kFromUnicodePage2[256];
extern const uint8_t kFromUnicode2[];
extern const ObUnicodeProps kProps2[256];
extern const ObCodePageData kCodePage2;

}  // namespace obi18n

#endif  // QUILLSTORE_OBI18N_TABLES_H_
