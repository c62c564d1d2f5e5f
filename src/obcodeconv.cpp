#include "obcodeconv.h"

#include "obi18n.h"

// Until the code-set tables are in place, 8-bit code sets are read as
// Latin-1 and 16-bit ones as UCS-2.
uint16_t ObMapChar(uint16_t ch, uint8_t from, uint8_t to) {
  if (from == 0) from = ObLanguageContext::GetNativeCodeSet();
  if (to == 0) to = ObLanguageContext::GetNativeCodeSet();
  if (from == to || to >= 225) return ch;
  return ch < 256 ? ch : '?';
}
