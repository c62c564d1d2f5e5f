// Print and scan operations of the catalogue rows. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_PRINTSCAN_H_
#define QUILLSTORE_SRC_TYPEMGR_PRINTSCAN_H_

#include <cstddef>
#include <cstdint>

#include "obnulty.h"

class ObString;

namespace obprint {

// The text of `value` under `format`: "Infinity", "-Infinity" and "NaN" for
// "%.17g", mantissa and exponent for "ldexp(". Writes at most `size` bytes.
void FormatDouble(double value, const char* format, char* out, uint32_t size);
// The "%.17g" reading of a text: strtod, with the words "Infinity",
// "-Infinity" and "NaN" (any case); 0.0 for anything else.
double ScanDoubleText(const char* text);

// Catalogue formats name their conversions for a platform with 32-bit
// `long` ("%ld", "%I64d"): rewrites every conversion of `format` to carry
// the length modifier `modifier` instead, for the C runtime here.
void RewriteFormat(const char* format, const char* modifier, char* out,
                   size_t size);

// True when `text` begins with the null print text.
bool IsNullText(const ObString& text);

// Row operations. Integers of width sizeof(T) (16-bit values are printed
// widened to int).
template <class T>
ObString& IntegerPrint(ObString& out, const void* value, const char* format,
                       uint32_t count);
template <class T>
void* IntegerScan(void* value, ObString& text, const char* format,
                  uint32_t count);
ObString& CharPrint(ObString& out, const void* value, const char* format,
                    uint32_t count);
void* CharScan(void* value, ObString& text, const char* format, uint32_t count);
ObString& FloatPrint(ObString& out, const void* value, const char* format,
                     uint32_t count);
void* FloatScan(void* value, ObString& text, const char* format,
                uint32_t count);
ObString& DoublePrint(ObString& out, const void* value, const char* format,
                      uint32_t count);
void* DoubleScan(void* value, ObString& text, const char* format,
                 uint32_t count);
ObString& BooleanPrint(ObString& out, const void* value, const char* format,
                       uint32_t count);
void* BooleanScan(void* value, ObString& text, const char* format,
                  uint32_t count);
ObString& BlobPrint(ObString& out, const void* value, const char* format,
                    uint32_t count);
void* BlobScan(void* value, ObString& text, const char* format, uint32_t count);
ObString& StringPrint(ObString& out, const void* value, const char* format,
                      uint32_t count);
void* StringScan(void* value, ObString& text, const char* format,
                 uint32_t count);
template <class T>
ObString& NullablePrint(ObString& out, const void* value, const char* format,
                        uint32_t count);
template <class T>
void* NullableScan(void* value, ObString& text, const char* format,
                   uint32_t count);

}  // namespace obprint

#endif  // QUILLSTORE_SRC_TYPEMGR_PRINTSCAN_H_
