// Text forms of the basic rows: numbers, characters, booleans, blobs,
// nullable numbers and strings.
#include "printscan.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

#include "module.h"
#include "obblob.h"
#include "obboolean.h"
#include "obcodetext.h"
#include "obstring.h"
#include "obstringiterator.h"

namespace obprint {
namespace {

constexpr char kDefaultDoubleFormat[] = "%.17g";
constexpr char kLdexpFormat[] = "ldexp(";
constexpr size_t kWorkBuffer = 512;  // formats must not produce more

bool IsLdexpFormat(const char* format) {
  return format != nullptr && format[0] != '%' &&
         std::strncmp(format, kLdexpFormat, 8) == 0;
}

enum class Kind { kInteger, kFloating };

// A format is handed to the C runtime only when it names exactly one
// conversion of the value's kind, with no '*' width: any other format would
// make the runtime read or write arguments that are not there.
bool PrepareFormat(const char* format, Kind kind, const char* modifier,
                   char* out, size_t size, char* conversion = nullptr) {
  if (format == nullptr) return false;
  RewriteFormat(format, modifier, out, size);
  int conversions = 0;
  char conv = 0;
  for (const char* p = out; *p != '\0'; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p == '%') continue;
    while (*p != '\0' && std::strchr("-+ #0123456789.", *p) != nullptr) ++p;
    while (*p != '\0' && std::strchr("hlLqjzt", *p) != nullptr) ++p;
    const char* allowed = kind == Kind::kInteger ? "diouxXc" : "fFeEgGaA";
    if (*p == '\0' || std::strchr(allowed, *p) == nullptr) return false;
    conv = *p;
    ++conversions;
  }
  // %c takes no length modifier.
  if (conv == 'c') RewriteFormat(format, "", out, size);
  if (conversion != nullptr) *conversion = conv;
  return conversions == 1;
}

template <class T>
const char* PrintModifier() {
  if (sizeof(T) == 8) return "ll";
  if (sizeof(T) == 2) return "h";
  if (sizeof(T) == 1) return "hh";
  return "";
}

template <class T>
using Widened =
    std::conditional_t<(sizeof(T) < 4), int,
                       std::conditional_t<std::is_signed<T>::value, long long,
                                          unsigned long long>>;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
template <class T>
void FormatInteger(T v, const char* format, char* out, size_t size) {
  out[0] = '\0';
  char f[kWorkBuffer];
  if (!PrepareFormat(format, Kind::kInteger, PrintModifier<T>(), f, sizeof f))
    return;
  if (sizeof(T) == 8) {
    std::snprintf(out, size, f, static_cast<Widened<T>>(v));
  } else {
    std::snprintf(out, size, f, static_cast<int>(v));  // the C promotion
  }
}

// Reads one T with the format; the value stays as it was when the text does
// not match.
template <class T>
void ScanInteger(const char* text, const char* format, T& v) {
  char f[kWorkBuffer];
  char conv = 0;
  if (!PrepareFormat(format, Kind::kInteger, PrintModifier<T>(), f, sizeof f,
                     &conv))
    return;
  if (conv == 'c') {
    char c;
    if (std::sscanf(text, f, &c) == 1) v = static_cast<T>(c);
    return;
  }
  T read = v;
  if (std::sscanf(text, f, &read) == 1) v = read;
}

void FormatFloating(double v, const char* format, char* out, size_t size) {
  out[0] = '\0';
  char f[kWorkBuffer];
  if (PrepareFormat(format, Kind::kFloating, "", f, sizeof f))
    std::snprintf(out, size, f, v);
}

template <class F>
void ScanFloating(const char* text, const char* format, F& v) {
  char f[kWorkBuffer];
  if (PrepareFormat(format, Kind::kFloating, sizeof(F) == 8 ? "l" : "", f,
                    sizeof f)) {
    F read = v;
    if (std::sscanf(text, f, &read) == 1) v = read;
  }
}
#pragma GCC diagnostic pop

double ScanDouble(const char* text, const char* format, double current) {
  if (format == nullptr) format = kDefaultDoubleFormat;
  if (IsLdexpFormat(format)) return current;  // names no conversion
  if (std::strcmp(format, kDefaultDoubleFormat) == 0)
    return ScanDoubleText(text);
  ScanFloating(text, format, current);
  return current;
}

void Assign(ObString& out, const char* text) { out = text; }

}  // namespace

void RewriteFormat(const char* format, const char* modifier, char* out,
                   size_t size) {
  size_t o = 0;
  auto put = [&](char c) {
    if (o + 1 < size) out[o++] = c;
  };
  for (const char* p = format; *p != '\0'; ++p) {
    put(*p);
    if (*p != '%') continue;
    if (p[1] == '%') {
      put(*++p);
      continue;
    }
    while (p[1] != '\0' && std::strchr("-+ #0123456789.*", p[1]) != nullptr)
      put(*++p);
    // Drop whatever length modifier the catalogue format carries.
    if (std::strncmp(p + 1, "I64", 3) == 0 ||
        std::strncmp(p + 1, "I32", 3) == 0)
      p += 3;
    while (p[1] != '\0' && std::strchr("hlLqjzt", p[1]) != nullptr) ++p;
    if (p[1] == '\0') break;
    for (const char* m = modifier; *m != '\0'; ++m) put(*m);
  }
  out[o] = '\0';
}

bool IsNullText(const ObString& text) {
  const ObString& null = NullPrintText();
  const uint32_t n = null.Len();
  return text.Compare(null, static_cast<int16_t>(n), CmpBinaryOrder) == 0 &&
         text.Len() >= n;
}

// ---- Floating point.

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
void FormatDouble(double value, const char* format, char* out, uint32_t size) {
  if (format == nullptr) format = kDefaultDoubleFormat;
  if (IsLdexpFormat(format)) {
    // The format itself names no conversion: it prints as it stands.
    std::snprintf(out, size, "%s", format);
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
    std::snprintf(out, size, kDefaultDoubleFormat, value);
    return;
  }
  FormatFloating(value, format, out, size);
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
  Assign(out, buffer);
  return out;
}

void* DoubleScan(void* value, ObString& text, const char* format, uint32_t) {
  if (value == nullptr) return nullptr;
  double* v = static_cast<double*>(value);
  *v = ScanDouble(obtext::NarrowText(text).StrGet(), format, *v);
  return value;
}

ObString& FloatPrint(ObString& out, const void* value, const char* format,
                     uint32_t count) {
  const double wide = *static_cast<const float*>(value);
  return DoublePrint(out, &wide, format, count);
}

void* FloatScan(void* value, ObString& text, const char* format, uint32_t) {
  if (value == nullptr) return nullptr;
  float* v = static_cast<float*>(value);
  const ObString narrow = obtext::NarrowText(text);
  if (format == nullptr || IsLdexpFormat(format) ||
      std::strcmp(format, kDefaultDoubleFormat) == 0) {
    *v = static_cast<float>(ScanDouble(narrow.StrGet(), format, *v));
  } else {
    ScanFloating(narrow.StrGet(), format, *v);
  }
  return value;
}

// ---- Integers and characters.

template <class T>
ObString& IntegerPrint(ObString& out, const void* value, const char* format,
                       uint32_t) {
  T v;
  std::memcpy(&v, value, sizeof v);
  char buffer[kWorkBuffer];
  FormatInteger(v, format, buffer, sizeof buffer);
  Assign(out, buffer);
  return out;
}

template <class T>
void* IntegerScan(void* value, ObString& text, const char* format, uint32_t) {
  if (value == nullptr) return nullptr;
  T v;
  std::memcpy(&v, value, sizeof v);
  ScanInteger(obtext::NarrowText(text).StrGet(), format, v);
  std::memcpy(value, &v, sizeof v);
  return value;
}

// A byte array prints as one run: printable bytes with the format, others
// as "0x%02x".
ObString& CharPrint(ObString& out, const void* value, const char* format,
                    uint32_t count) {
  out = "";
  const uint8_t* bytes = static_cast<const uint8_t*>(value);
  for (uint32_t i = 0; i < count; ++i) {
    char buffer[kWorkBuffer];
    if (std::isprint(bytes[i])) {
      FormatInteger(static_cast<int>(bytes[i]), format, buffer, sizeof buffer);
    } else {
      std::snprintf(buffer, sizeof buffer, "0x%02x", bytes[i]);
    }
    out += ObString(buffer);
  }
  return out;
}

namespace {
// One byte from `text`: "0x%x" first, else the format. The text position
// moves on by exactly one character whatever was read.
void ScanOneByte(const char* text, const char* format, uint8_t& byte) {
  unsigned hex = 0;
  if (std::sscanf(text, "0x%x", &hex) == 1) {
    byte = static_cast<uint8_t>(hex);
    return;
  }
  ScanInteger(text, format, byte);
}
}  // namespace

void* CharScan(void* value, ObString& text, const char* format,
               uint32_t count) {
  if (value == nullptr) return nullptr;
  const ObString narrow = obtext::NarrowText(text);
  const char* p = narrow.StrGet();
  uint8_t* bytes = static_cast<uint8_t*>(value);
  for (uint32_t i = 0; i < count && *p != '\0'; ++i, ++p)
    ScanOneByte(p, format, bytes[i]);
  return value;
}

// ---- Booleans and blobs.

ObString& BooleanPrint(ObString& out, const void* value, const char*,
                       uint32_t) {
  const ObBoolean& b = *static_cast<const ObBoolean*>(value);
  if (b.IsNullValue()) {
    out = NullPrintText();
  } else {
    Assign(out, b.GetValue() == 1 ? "TRUE" : "FALSE");
  }
  return out;
}

void* BooleanScan(void* value, ObString& text, const char*, uint32_t) {
  if (value == nullptr) return nullptr;
  ObBoolean& b = *static_cast<ObBoolean*>(value);
  const ObString narrow = obtext::NarrowText(text);
  if (IsNullText(narrow)) {
    b.SetNullValue();
    return value;
  }
  const char* t = narrow.StrGet();
  b = std::strcmp(t, "T") == 0 || std::strcmp(t, "t") == 0 ||
      std::strcmp(t, "TRUE") == 0 || std::strcmp(t, "true") == 0 ||
      std::strcmp(t, "1") == 0;
  return value;
}

ObString& BlobPrint(ObString& out, const void* value, const char* format,
                    uint32_t) {
  const ObBlob& b = *static_cast<const ObBlob*>(value);
  if (b.IsNullValue()) {
    out = NullPrintText();
    return out;
  }
  out = "";
  std::string text;
  for (const char* p = format != nullptr ? format : ""; *p != '\0'; ++p) {
    if (*p != '%') {
      text += *p;
    } else if (p[1] == 'L') {
      text += std::to_string(b.Length());
      ++p;
    } else if (p[1] != '\0') {
      text += *++p;
    }
  }
  Assign(out, text.c_str());
  return out;
}

void* BlobScan(void* value, ObString& text, const char*, uint32_t) {
  if (value == nullptr) return nullptr;
  if (IsNullText(obtext::NarrowText(text)))
    static_cast<ObBlob*>(value)->SetNullValue();
  return value;
}

// ---- Nullable numbers.

template <class T>
ObString& NullablePrint(ObString& out, const void* value, const char* format,
                        uint32_t count) {
  const auto& v = *static_cast<const ObNullable<T>*>(value);
  if (v.isNull != 0) {
    out = NullPrintText();
    return out;
  }
  if constexpr (std::is_floating_point<T>::value) {
    char buffer[kWorkBuffer];
    FormatFloating(v.value, format, buffer, sizeof buffer);
    Assign(out, buffer);
    return out;
  } else {
    return IntegerPrint<T>(out, &v.value, format, count);
  }
}

template <class T>
void* NullableScan(void* value, ObString& text, const char* format,
                   uint32_t count) {
  if (value == nullptr) return nullptr;
  auto& v = *static_cast<ObNullable<T>*>(value);
  const ObString narrow = obtext::NarrowText(text);
  if (narrow.Len() == 0 || IsNullText(narrow)) {
    v.value = T{};
    v.isNull = 1;
    return value;
  }
  if constexpr (std::is_floating_point<T>::value) {
    ScanFloating(narrow.StrGet(), format, v.value);
  } else if constexpr (sizeof(T) == 1) {
    uint8_t byte = static_cast<uint8_t>(v.value);
    ScanOneByte(narrow.StrGet(), format, byte);
    v.value = static_cast<T>(byte);
  } else {
    IntegerScan<T>(&v.value, const_cast<ObString&>(narrow), format, count);
  }
  v.isNull = 0;
  return value;
}

// ---- Strings.

namespace {

// Texts of code sets 253 and 254 print through their collation orders; the
// format's "%1M" to "%4M" directive selects how (0 when there is none).
int OrderMode(const char* format, char* rewritten, size_t size) {
  std::snprintf(rewritten, size, "%s", format);
  for (int mode = 1; mode <= 4; ++mode) {
    char directive[4] = {'%', static_cast<char>('0' + mode), 'M', '\0'};
    if (char* at = std::strstr(rewritten, directive)) {
      // The directive becomes a string directive in place.
      std::memmove(at + 2, at + 3, std::strlen(at + 3) + 1);
      at[1] = 's';
      return mode;
    }
  }
  return 0;
}

}  // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
namespace {

// The format with the text as its one argument; a format that names
// anything but one "%s" prints as it stands.
std::string FormatText(const char* format, const char* text) {
  char f[kWorkBuffer];
  std::snprintf(f, sizeof f, "%s", format != nullptr ? format : "%s");
  int conversions = 0;
  bool ok = true;
  for (const char* p = f; *p != '\0'; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p == '%') continue;
    while (*p != '\0' && std::strchr("-0123456789.", *p) != nullptr) ++p;
    if (*p != 's') ok = false;
    if (*p == '\0') break;
    ++conversions;
  }
  if (!ok || conversions != 1) return f;
  const size_t size = std::strlen(text) + std::strlen(f) + 511;
  std::string out(size, '\0');
  int n = std::snprintf(&out[0], size, f, text);
  out.resize(n > 0 ? std::min(static_cast<size_t>(n), size - 1) : 0);
  return out;
}

}  // namespace
#pragma GCC diagnostic pop

ObString& StringPrint(ObString& out, const void* value, const char* format,
                      uint32_t) {
  const ObString& s = *static_cast<const ObString*>(value);
  if (s.IsNullValue()) {
    out = NullPrintText();
    return out;
  }
  if (format == nullptr) format = "%s";
  const uint8_t cs = s.GetCodeSet();
  if (cs != 253 && cs != 254) {
    const std::string text = FormatText(format, s.StrGet());
    ObString result(text.c_str());
    result.SetCodeSetCode(cs);
    const uint8_t language = out.GetLanguage();
    out = result;
    out.SetLanguage(language);
    return out;
  }
  char rewritten[kWorkBuffer];
  const int mode = OrderMode(format, rewritten, sizeof rewritten);
  ObStringIterator it(s);
  if (mode == 3 || mode == 4) {
    out = "";
    for (uint16_t order; (order = it.GetNextOrder(1)) != 0;) {
      std::string piece;
      if (mode == 3) {
        ObString name;
        ObConvertOrderToString(order, it.GetCollationId(), name);
        piece = FormatText(rewritten, name.StrGet());
      } else {
        unsigned char ch = 0;
        ObConvertOrderToChar(order, it.GetCollationId(), ch, 1, nullptr);
        const char one[2] = {static_cast<char>(ch), '\0'};
        piece = FormatText(rewritten, one);
      }
      out += ObString(piece.c_str());
    }
    return out;
  }
  // Modes 0 and 2 give display characters (0 with accents found in code
  // set 1, 2 the base letters); mode 1 keeps the orders' low bytes.
  std::string chars;
  for (uint16_t order; (order = it.GetNextOrder(1)) != 0;) {
    unsigned char ch = static_cast<unsigned char>(order);
    if (mode != 1)
      ObConvertOrderToChar(order, it.GetCollationId(), ch, mode == 0, nullptr);
    if (ch == 0) ch = '?';
    chars += static_cast<char>(ch);
  }
  ObString result(FormatText(rewritten, chars.c_str()).c_str());
  result.SetCodeSetCode(1);
  if (mode != 1) {
    uint8_t target = ObString::GetDefaultCodeSet();
    if (target == 0) target = 1;
    if (target != 1) result.MapToCodeSet(target);
  }
  out = result;
  return out;
}

void* StringScan(void* value, ObString& text, const char*, uint32_t) {
  if (value == nullptr) return nullptr;
  ObString& s = *static_cast<ObString*>(value);
  if (IsNullText(text)) {
    s.SetNullValue();
  } else {
    s = text;
  }
  return value;
}

// The instantiations the catalogue uses.
#define QS_INTEGER_TEXT(T)                                                \
  template ObString& IntegerPrint<T>(ObString&, const void*, const char*, \
                                     uint32_t);                           \
  template void* IntegerScan<T>(void*, ObString&, const char*, uint32_t);
QS_INTEGER_TEXT(int16_t)
QS_INTEGER_TEXT(uint16_t)
QS_INTEGER_TEXT(int32_t)
QS_INTEGER_TEXT(uint32_t)
QS_INTEGER_TEXT(int64_t)
QS_INTEGER_TEXT(uint64_t)
#undef QS_INTEGER_TEXT

#define QS_NULLABLE_TEXT(T)                                                \
  template ObString& NullablePrint<T>(ObString&, const void*, const char*, \
                                      uint32_t);                           \
  template void* NullableScan<T>(void*, ObString&, const char*, uint32_t);
QS_NULLABLE_TEXT(int8_t)
QS_NULLABLE_TEXT(uint8_t)
QS_NULLABLE_TEXT(int16_t)
QS_NULLABLE_TEXT(uint16_t)
QS_NULLABLE_TEXT(int32_t)
QS_NULLABLE_TEXT(uint32_t)
QS_NULLABLE_TEXT(float)
QS_NULLABLE_TEXT(double)
QS_NULLABLE_TEXT(int64_t)
QS_NULLABLE_TEXT(uint64_t)
#undef QS_NULLABLE_TEXT

}  // namespace obprint
