// Text hashing.
#include "obtyphash.h"

#include "obchar.h"
#include "obhash.h"
#include "obi18n.h"
#include "obstring.h"
#include "obstringiterator.h"
#include "obweight.h"

uint32_t HashString(uint8_t codeSet, uint8_t language, const char* text,
                    int16_t maxCharacters, uint8_t format) {
  if (language == ObString::kNullLanguage ||
      (codeSet == ObString::kOrderCodeSet && language == 0))
    return obhash::kNullStringHash;
  if (maxCharacters == 0 || (maxCharacters < 0 && maxCharacters != -1))
    return 0;
  ObStringIterator it(text, codeSet, language, format);
  const bool collated =
      ObLanguageContext::QueryLanguage(language)->hasCollation;
  uint32_t h = 0;
  for (int32_t step = 0;; ++step) {
    if (maxCharacters == -1 ? it.IsEOS() : step >= maxCharacters) break;
    if (collated) {
      const uint16_t order = it.GetNextOrder(1);
      if (order == 0 && maxCharacters == -1) break;
      h = h * obhash::kStringStep +
          ObCollationWeight(order, it.GetCollationId());
    } else {
      h = h * obhash::kStringStep + ((*it).GetValue() & 0xFF);
      ++it;
    }
  }
  return h;
}

namespace {

template <class Term>
uint32_t HashRaw(const ObString& s, Term term) {
  uint32_t h = 0;
  const char* p = s.StrGet();
  if (s.GetCodeSet() == 253) {
    for (uint32_t i = 0, n = s.Len(); i < n; ++i)
      h = h * obhash::kStringStep + s.CharAt(i);
    return h;
  }
  for (; *p != 0; ++p)
    h = h * obhash::kStringStep + term(static_cast<signed char>(*p));
  return h;
}

}  // namespace

uint32_t HashObString7(const ObString& s) {
  return HashRaw(s, [](signed char c) { return uint32_t(c) & 0x7F; });
}

uint32_t HashObString(const ObString& s) {
  return HashRaw(s, [](signed char c) { return static_cast<uint32_t>(c); });
}
