#include "obint64.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "obbs.h"
#include "obcodetext.h"
#include "obstring.h"

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "ObInt64 stores and compares its memory form as a little-endian int64"
#endif

namespace {

constexpr char kDefaultFormat[] = "%S";
constexpr uint64_t kMaxMagnitude = 0x7FFFFFFFFFFFFFFFULL;
// The largest double below 2^63.
constexpr double kLargestBelow2p63 = 9223372036854774784.0;

constexpr obtext::CodeField kCodes[] = {{'S', 0, 64}};
constexpr obtext::CodeForm kForm = {kCodes, 1, nullptr, 0, false};

}  // namespace

// The magnitude keeps the digits that "%E" prints (one before the point and
// six after), scaled by the printed exponent: rounding to seven significant
// digits is this type's documented conversion, so it is done by the C
// runtime's printing rather than re-derived.
ObInt64::ObInt64(double d) : low(0), high(0) {
  const double a = std::fabs(d);
  uint64_t magnitude = 0;
  if (a > kLargestBelow2p63) {
    magnitude = kMaxMagnitude;
  } else if (a >= 1.0) {
    char text[32] = {};
    std::snprintf(text, sizeof text, "%E", a);
    const char* e = text;
    while (*e != '\0' && *e != 'E') ++e;
    int exponent = 0;
    for (const char* p = *e == 'E' ? e + 2 : e; *p >= '0' && *p <= '9'; ++p)
      exponent = exponent * 10 + (*p - '0');
    // a >= 1, so the exponent is never negative.
    if (text[0] >= '0' && text[0] <= '9') magnitude = text[0] - '0';
    for (const char* p = text + 1; p < e; ++p) {
      if (*p < '0' || *p > '9') continue;  // the point, in any locale
      if (--exponent < 0) break;
      magnitude = magnitude * 10 + static_cast<uint64_t>(*p - '0');
    }
    for (; exponent > 0; --exponent) magnitude *= 10;
  }
  *this = ObInt64(d < 0 ? uint64_t{0} - magnitude : magnitude);
}

// Division by zero and the most negative operands: the magnitude of the
// most negative dividend is taken as 2^63 - 1 and corrected afterwards,
// which also decides what a zero divisor leaves.
ObInt64 ObInt64::DivisionOutsideNative(const ObInt64& divisor,
                                       int32_t wantRemainder) const {
  const bool negative =
      wantRemainder != 0 ? high < 0 : (high < 0) != (divisor.high < 0);
  const bool correct = Get8b() == kMin;
  const uint64_t a = correct ? kMaxMagnitude : Abs().GetU8b();
  const uint64_t b = divisor.Abs().GetU8b();
  uint64_t q = 0, r = 0;
  if (divisor.Get8b() == kMin) {
    r = a;
  } else if (b == 0) {
    ORLO_assert("ObInt64 divide by zero", "obint64", 748);
  } else {
    q = a / b;
    r = a % b;
  }
  if (correct && ++r == b) {
    ++q;
    r = 0;
  }
  const uint64_t result = wantRemainder != 0 ? r : q;
  return ObInt64(negative ? uint64_t{0} - result : result);
}

ObString& ObInt64::PrintToObString(ObString& text, const char* format) const {
  const uint64_t slots[1] = {GetU8b()};
  std::string out;
  obtext::PrintCodes(kForm, format != nullptr ? format : kDefaultFormat, slots,
                     out);
  text << out.c_str();
  return text;
}

void ObInt64::ScanFromObString(const ObString& text, const char* format) {
  const ObString narrow = obtext::NarrowText(text);
  uint64_t slots[1] = {GetU8b()};
  obtext::ScanCodes(kForm, format != nullptr ? format : kDefaultFormat,
                    narrow.StrGet(), narrow.Len(), slots);
  *this = ObInt64(slots[0]);
}

// The memory form is laid out as an int64_t (static_asserted in the header)
// and orders like one, so the 64-bit comparator serves in every format.
int32_t Int64Compare(uint8_t flags, uint32_t len1, const void* p1,
                     uint32_t len2, const void* p2, uint16_t options,
                     uint32_t count, int32_t& status) {
  return O_8BCompare(flags, len1, p1, len2, p2, options, count, status);
}
