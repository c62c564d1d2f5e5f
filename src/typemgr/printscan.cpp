#include "printscan.h"

#include <strings.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "obstring.h"

namespace obprint {
namespace {

constexpr char kDefaultDoubleFormat[] = "%.17g";
constexpr char kLdexpFormat[] = "ldexp(";
constexpr uint32_t kWorkBuffer = 512;

bool IsLdexpFormat(const char* format) {
  return format != nullptr && format[0] != '%' &&
         std::strncmp(format, kLdexpFormat, 8) == 0;
}

// The text of a scanned string in an 8-bit code set.
ObString Narrow(const ObString& text) {
  if (!text.IsWide()) return text;
  ObString copy;
  copy += text;
  return copy;
}

// The scanning routine needs "%lf" where a format names a double as "%f"
// (printing accepts both): add the length modifier to a bare conversion.
void DoubleScanFormat(const char* format, char* out, size_t size) {
  size_t o = 0;
  for (const char* p = format; *p != '\0' && o + 2 < size; ++p) {
    out[o++] = *p;
    if (*p != '%') continue;
    const char* q = p + 1;
    if (*q == '%') {
      out[o++] = *q;
      p = q;
      continue;
    }
    while (*q != '\0' && std::strchr("0123456789.*-+ #", *q) != nullptr) ++q;
    while (p + 1 < q && o + 2 < size) out[o++] = *++p;
    if (std::strchr("feEgGaA", *q) != nullptr && *q != '\0' && o + 2 < size)
      out[o++] = 'l';
  }
  out[o] = '\0';
}

}  // namespace

// Formats come from the catalogue or the caller; they name one double
// conversion (or a mantissa and an exponent for "ldexp(").
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
void FormatDouble(double value, const char* format, char* out, uint32_t size) {
  if (format == nullptr) format = kDefaultDoubleFormat;
  if (IsLdexpFormat(format)) {
    int exponent = 0;
    double mantissa = std::frexp(value, &exponent);
    std::snprintf(out, size, format, mantissa, exponent);
    return;
  }
  if (std::strcmp(format, kDefaultDoubleFormat) == 0) {
    if (std::isnan(value)) {
      std::snprintf(out, size, "NaN");
      return;
    }
    if (std::isinf(value)) {
      std::snprintf(out, size, value > 0 ? "Infinity" : "-Infinity");
      return;
    }
  }
  std::snprintf(out, size, format, value);
}
#pragma GCC diagnostic pop

double ScanDoubleText(const char* text) {
  char* end = nullptr;
  errno = 0;
  double v = std::strtod(text, &end);
  if (end != text) {
    if (errno == ERANGE) {
      if (v == HUGE_VAL) return std::numeric_limits<double>::infinity();
      if (v == -HUGE_VAL) return -std::numeric_limits<double>::infinity();
      return std::atof(text);
    }
    return v;
  }
  if (strcasecmp(text, "-Infinity") == 0)
    return -std::numeric_limits<double>::infinity();
  if (strcasecmp(text, "Infinity") == 0)
    return std::numeric_limits<double>::infinity();
  if (strcasecmp(text, "NaN") == 0)
    return -std::numeric_limits<double>::quiet_NaN();
  return 0.0;
}

ObString& DoublePrint(ObString& out, const void* value, const char* format,
                      uint32_t) {
  char buffer[kWorkBuffer] = {};
  FormatDouble(*static_cast<const double*>(value), format, buffer,
               sizeof buffer);
  out = buffer;
  return out;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
void* DoubleScan(void* value, ObString& text, const char* format, uint32_t) {
  if (value == nullptr) return nullptr;
  double* v = static_cast<double*>(value);
  const ObString narrow = Narrow(text);
  const char* s = narrow.StrGet();
  if (format == nullptr) format = kDefaultDoubleFormat;
  if (IsLdexpFormat(format)) {
    double mantissa = 0;
    int exponent = 0;
    if (std::sscanf(s, format, &mantissa, &exponent) == 2)
      *v = std::ldexp(mantissa, exponent);
  } else if (std::strcmp(format, kDefaultDoubleFormat) == 0) {
    *v = ScanDoubleText(s);
  } else {
    char scanFormat[kWorkBuffer];
    DoubleScanFormat(format, scanFormat, sizeof scanFormat);
    std::sscanf(s, scanFormat, v);
  }
  return value;
}
#pragma GCC diagnostic pop

}  // namespace obprint
