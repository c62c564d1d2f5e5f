#include "obcodeconv.h"

#include "obi18n.h"

uint16_t ObMapChar(uint16_t ch, uint8_t from, uint8_t to) {
  if (from == 0) from = ObLanguageContext::GetNativeCodeSet();
  if (to == 0) to = ObLanguageContext::GetNativeCodeSet();
  if (from == to) return ch;
  const ObCodeSet* target = ObLanguageContext::QueryCodeSet(to);
  // An unknown target keeps the code: its text is read as UCS-2 / Latin-1.
  if (target == nullptr) return to < 225 && ch > 0xFF ? '?' : ch;
  return target->Convert(ch, from);
}
