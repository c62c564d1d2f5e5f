// ObStrCmp: the one comparison of texts, by collation orders in levels
// (base, accent, case, blanks and symbols), with "*" and "?" wildcards in
// the second text unless CmpNoWildcards or CmpBinaryOrder is given.
#ifndef QUILLSTORE_OBSTRCMP_H_
#define QUILLSTORE_OBSTRCMP_H_

#include <cstdint>

#include "obdefs.h"

// Returns 0 for equal (or a match), < 0 when text 1 sorts first, > 0
// otherwise. Null texts read as empty; language 254 (or code set 254 with
// language 0) marks a null value. maxLength: characters to compare, -1 for
// all. iteratorMode: the storage format of 16-bit characters (callers pass
// 1). resultOut: under CmpIgnoreBlanks, receives the base-level difference
// after every step.
QS_TM_API int32_t ObStrCmp(uint8_t codeSet1, uint8_t language1,
                           const char* text1, uint8_t codeSet2,
                           uint8_t language2, const char* text2, uint16_t cmpOp,
                           int16_t maxLength, uint8_t iteratorMode,
                           int32_t* resultOut);

// Index of the first of the first `maxCharacters` characters that is the
// asterisk (or, unless questionIsLiteral, the question mark); -1 when none.
// byteOffsetOut receives the character index (code set 0) or byte offset,
// with 65535 in its upper 16 bits when nothing was found.
QS_TM_API int32_t FindWildcard(uint8_t codeSet, uint8_t language,
                               const char* text, int32_t questionIsLiteral,
                               int32_t maxCharacters, int32_t* byteOffsetOut,
                               uint8_t iteratorMode);

// The wildcard collation orders (computed from code set 1 on first use).
QS_TM_API uint16_t ObAsteriskOrder();
QS_TM_API uint16_t ObQuestionOrder();
QS_TM_API uint16_t ObEscapeOrder();

#endif  // QUILLSTORE_OBSTRCMP_H_
