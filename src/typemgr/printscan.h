// Print and scan operations of the catalogue rows. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_PRINTSCAN_H_
#define QUILLSTORE_SRC_TYPEMGR_PRINTSCAN_H_

#include <cstdint>

class ObString;

namespace obprint {

// Row operations of o_double.
ObString& DoublePrint(ObString& out, const void* value, const char* format,
                      uint32_t count);
void* DoubleScan(void* value, ObString& text, const char* format,
                 uint32_t count);

// The text of `value` under `format`: "Infinity", "-Infinity" and "NaN" for
// "%.17g", mantissa and exponent for "ldexp(". Writes at most `size` bytes.
void FormatDouble(double value, const char* format, char* out, uint32_t size);
// The "%.17g" reading of a text: strtod, with the words "Infinity",
// "-Infinity" and "NaN" (any case); 0.0 for anything else.
double ScanDoubleText(const char* text);

}  // namespace obprint

#endif  // QUILLSTORE_SRC_TYPEMGR_PRINTSCAN_H_
