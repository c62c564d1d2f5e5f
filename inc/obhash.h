// Hash functions over texts. Values that compare equal hash equal.
#ifndef QUILLSTORE_OBHASH_H_
#define QUILLSTORE_OBHASH_H_

#include <cstdint>

#include "obdefs.h"

class ObString;

// Hash of a text by its collation orders, so that texts equal under their
// language's collation hash alike. maxCharacters: -1 for the whole text.
QS_TM_API uint32_t HashString(uint8_t codeSet, uint8_t language,
                              const char* text, int16_t maxCharacters,
                              uint8_t format);
// Hashes of a string's raw characters, for the program's own tables:
// HashObString7 ignores bit 0x80 of 8-bit characters.
QS_TM_API uint32_t HashObString7(const ObString& s);
QS_TM_API uint32_t HashObString(const ObString& s);

#endif  // QUILLSTORE_OBHASH_H_
