// Conversion between texts of the Unicode code set (253, 16-bit units) and
// their multibyte (UTF-8, up to six bytes a character) byte form.
#ifndef QUILLSTORE_OBMBCONV_H_
#define QUILLSTORE_OBMBCONV_H_

#include <cstddef>
#include <cstdint>

#include "obdefs.h"

class ObString;

// Decodes one character from at most `n` bytes into `*out` (not stored when
// out is null; values above 0xFFFF keep their low 16 bits). Returns the
// bytes used, or -1 for a malformed, over-long or cut sequence.
QS_TM_API int32_t ObMultiByte2WChar(unsigned short* out, const char* in,
                                    size_t n);
// Decodes `inBytes` bytes; stores at most `outCount` units. Returns the
// number of characters, 0 for no input, -1 for malformed input.
QS_TM_API int32_t ObMultiByteStr2WCharStr(unsigned short* out, int32_t outCount,
                                          const char* in, int32_t inBytes);
// Encodes one character; returns the bytes written (at most 6), 0 when out
// is null, -1 when the value cannot be encoded.
QS_TM_API int32_t ObWChar2MultiByte(char* out, wchar_t ch);

// Replaces `out` (language kept) by the decoded text in code set 253.
// Stops at a decoded 0 or after `inBytes` bytes (a negative count: at the
// terminating 0). Returns the bytes consumed; -1 for malformed input or a
// null `in`; -2 once 32768 bytes have been consumed. What was decoded
// before an error is kept.
QS_TM_API int32_t ObMBS2ObString(const char* in, ObString& out,
                                 int32_t inBytes);
QS_TM_API int32_t ObMultiByteString2ObString(const ObString& in, ObString& out);
QS_TM_API int32_t ObMultiByteString2ObString(const char* in, ObString& out,
                                             int32_t inBytes);

// Writes the multibyte form of `in` into `out` (at most `outBytes` bytes,
// followed by a 0 when there is room). Returns the bytes written; -1 when a
// character cannot be encoded; for texts of ASCII-compatible code sets that
// do not fit, minus the text's length (the size needed).
QS_TM_API int32_t ObString2ObMBS(const ObString& in, char* out,
                                 int32_t outBytes);
// Bytes of the multibyte form of the first `n` characters of `s`
// (n = 65535: the whole text).
QS_TM_API int32_t ObMBSLength(const ObString& s, unsigned short n);
// The multibyte form in a new buffer of outBytes + 1 bytes, 0-terminated.
// The caller frees `out` with the C heap's free(). Returns ObString2ObMBS's
// result; `out` is null (and outBytes 0) when memory is exhausted.
QS_TM_API int32_t ObString2MultiByteString(const ObString& in, char*& out,
                                           int32_t& outBytes);

#endif  // QUILLSTORE_OBMBCONV_H_
