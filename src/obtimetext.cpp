#include "obtimetext.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "d_date.h"
#include "d_interval.h"
#include "d_time.h"
#include "d_timestamp.h"
#include "obcodetext.h"
#include "obdate.h"
#include "obdatetime.h"
#include "obdatetimen.h"
#include "obstring.h"
#include "typemgr/module.h"
#include "typemgr/printscan.h"

namespace obtimetext {
namespace {

// Macro texts contain no macros: expansion is one level deep.
const char* MacroText(char code) {
  switch (code) {
    case 'D':
      return kDateFormat;
    case 'T':
      return kTimeFormat;
    case 'O':
      return kDateTimeFormat;
    case 'X':
      return kDateTimeNFormat;
    case 'V':
      return kTimeSpanFormat;
    default:
      return nullptr;
  }
}

// ---- Printing.

// The printed text: inline for the usual short forms, on the heap beyond.
class TextBuf {
 public:
  void append(const char* p, size_t n) {
    if (!spilled_ && n_ + n < sizeof small_) {
      std::memcpy(small_ + n_, p, n);
    } else {
      if (!spilled_) big_.assign(small_, n_);
      spilled_ = true;
      big_.append(p, n);
    }
    n_ += n;
  }
  TextBuf& operator+=(char c) {
    append(&c, 1);
    return *this;
  }
  TextBuf& operator+=(const char* t) {
    append(t, std::strlen(t));
    return *this;
  }
  size_t size() const { return n_; }
  void resize(size_t n) {  // only ever shrinks
    n_ = n;
    if (spilled_) big_.resize(n);
  }
  const char* c_str() {
    if (spilled_) return big_.c_str();
    small_[n_] = '\0';
    return small_;
  }

 private:
  char small_[128];
  size_t n_ = 0;
  bool spilled_ = false;
  std::string big_;
};

// Decimal with at least `digits` digits, zero-padded, sign first: the
// output of "%0N.Nd".
void AppendInt(TextBuf& out, int64_t v, int digits) {
  char buf[24];
  char* end = buf + sizeof buf;
  char* p = end;
  // Through unsigned so that the lowest value negates without overflow.
  uint64_t u = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
  do {
    *--p = static_cast<char>('0' + u % 10);
    u /= 10;
  } while (u != 0);
  while (end - p < digits) *--p = '0';
  if (v < 0) out += '-';
  out.append(p, static_cast<size_t>(end - p));
}

void AppendName(TextBuf& out, const char* name, bool cut) {
  const size_t n = std::strlen(name);
  out.append(name, cut && n > 3 ? 3 : n);
}

int64_t TotalDays(const Fields& f) {
  return (int64_t{f.month} + 12 * int64_t{f.year}) * 30 + f.day;
}

// True when the format's own codes (not the macros') include %p or %P.
bool HasAmPm(const char* format) {
  for (const char* p = format; *p != '\0'; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p == '?') ++p;
    if (*p == '(') ++p;
    if (*p == 'p' || *p == 'P') return true;
    if (*p == '\0') break;
  }
  return false;
}

// Hour on the 12-hour clock and whether it is past noon.
int32_t TwelveHour(int32_t h, bool amPm, bool* pm) {
  *pm = h >= 12;
  if (!amPm) return h > 12 ? h - 12 : h;
  if (h == 0) return 12;
  return h > 12 ? h - 12 : h;
}

struct Printer {
  const Fields& f;
  bool amPm;
  TextBuf& out;
  bool printed = false;  // a code has printed: suppression is over
  size_t groupMark = 0;
  bool inGroup = false;

  // The field a suppressible code tests for zero; false: never suppressed.
  bool FieldIsZero(char code) const {
    switch (code) {
      case 'Y':
        return f.year == 0;
      case 'y':
        return f.year <= 0;
      case 'm':
      case 'B':
      case 'b':
        return f.month == 0;
      case 'd':
      case 'e':
        return f.day == 0;
      case 'H':
      case 'I':
        return f.hour == 0;
      case 'M':
        return f.minute == 0;
      case 'S':
        return f.second == 0;
      case 'f':
        return f.second == 0 && f.nanos == 0;
      case 'N':
        return f.nanos == 0;
      case 'J':
        return TotalDays(f) == 0;
      default:
        return false;
    }
  }

  void Weekday(bool cut) {
    if (f.year == -1 || f.month == -1 || f.day == -1) {
      out += '*';
      return;
    }
    const ObDate d(static_cast<int16_t>(f.year), static_cast<int8_t>(f.month),
                   static_cast<int8_t>(f.day));
    AppendName(out, kObDayNames[d.GetDayOfTheDate()], cut);
  }

  void Seconds() {
    if (f.nanos == 0) {
      AppendInt(out, f.second, 2);
      return;
    }
    const int p = f.nanos % 1000000 == 0 ? 3 : f.nanos % 1000 == 0 ? 6 : 9;
    const double v = f.second + f.nanos / 1e9;
    char buf[64];
    const int n = std::snprintf(buf, sizeof buf, "%0*.*f", p + 3, p, v);
    if (n > 0) out.append(buf, static_cast<size_t>(n) < sizeof buf ? n : 63);
  }

  // One code that prints a field; -1 fields print "*".
  void Field(char code) {
    int32_t v;
    switch (code) {
      case 'Y':
      case 'y':
        v = f.year;
        break;
      case 'm':
      case 'B':
      case 'b':
        v = f.month;
        break;
      case 'd':
      case 'e':
        v = f.day;
        break;
      case 'H':
      case 'I':
      case 'p':
      case 'P':
        v = f.hour;
        break;
      case 'M':
        v = f.minute;
        break;
      case 'S':
      case 'f':
        v = f.second;
        break;
      case 'N':
        v = f.nanos;
        break;
      default:
        v = 0;
    }
    if (code == 'J') {
      if (f.year == -1 && f.month == -1 && f.day == -1) {
        out += '*';
      } else {
        AppendInt(out, TotalDays(f), 1);
      }
      return;
    }
    if (code == 'A' || code == 'a') {
      Weekday(code == 'a');
      return;
    }
    if (v == -1) {
      out += '*';
      return;
    }
    bool pm = false;
    switch (code) {
      case 'Y':
        AppendInt(out, v, 4);
        break;
      case 'y':
        AppendInt(out, v % 100, 2);
        break;
      case 'B':
      case 'b':
        if (v >= 1 && v <= 12) {
          AppendName(out, kObMonthNames[v - 1], code == 'b');
        } else {
          AppendInt(out, v, 3);
        }
        break;
      case 'I':
        AppendInt(out, TwelveHour(v, amPm, &pm), 2);
        break;
      case 'p':
      case 'P':
        TwelveHour(v, true, &pm);
        out += code == 'p' ? (pm ? "pm" : "am") : (pm ? "PM" : "AM");
        break;
      case 'f':
        Seconds();
        break;
      case 'N':
        AppendInt(out, v, 1);
        break;
      default:
        AppendInt(out, v, 2);
    }
  }

  void Run(const char* format, bool topLevel) {
    for (const char* p = format; *p != '\0'; ++p) {
      if (*p == ')' && inGroup) {
        if (!printed) out.resize(groupMark);
        inGroup = false;
        continue;
      }
      if (*p != '%') {
        out += *p;
        continue;
      }
      ++p;
      bool suppressible = false;
      if (*p == '?') {
        suppressible = true;
        ++p;
        if (*p == '(') {
          inGroup = true;
          groupMark = out.size();
          ++p;
        }
      }
      const char code = *p;
      if (code == '\0') break;  // a format ending in '%' prints nothing more
      const char* macro = topLevel ? MacroText(code) : nullptr;
      if (macro != nullptr) {
        Run(macro, false);
        continue;
      }
      if (std::strchr("YymdeBbAaHIMSfNJpP", code) == nullptr) {
        out += code;  // "%%" and unknown codes print their character
        continue;
      }
      if (suppressible && !printed && FieldIsZero(code)) continue;
      Field(code);
      printed = true;
    }
  }
};

// ---- Scanning.

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' ||
         c == '\r';
}
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

struct Scanner {
  Fields& f;
  const char* text;
  size_t len;
  size_t pos = 0;
  int amPm = 0;  // 1 am, 2 pm
  bool inGroup = false;

  // "%d": optional sign, then digits, at most `width` characters. Wraps
  // like a 32-bit conversion; no digits: `v` is left as it was.
  template <class T>
  void ReadInt(T& v, size_t width = SIZE_MAX) {
    size_t end = len - pos < width ? len : pos + width;
    bool neg = false;
    if (pos < end && (text[pos] == '+' || text[pos] == '-')) {
      neg = text[pos] == '-';
      ++pos;
    }
    uint64_t u = 0;
    const size_t start = pos;
    while (pos < end && IsDigit(text[pos])) u = u * 10 + (text[pos++] - '0');
    if (pos == start) return;
    if (neg) u = 0 - u;
    v = static_cast<T>(u);
  }

  // "%lf" over the run of digits, '.', '+' and '-'.
  void ReadSeconds() {
    char buf[64];
    size_t n = 0;
    while (pos < len && (IsDigit(text[pos]) || text[pos] == '.' ||
                         text[pos] == '+' || text[pos] == '-')) {
      if (n < sizeof buf - 1) buf[n++] = text[pos];
      ++pos;
    }
    buf[n] = '\0';
    char* end = nullptr;
    const double v = std::strtod(buf, &end);
    if (end == buf || !std::isfinite(v)) return;
    f.second = Wrap32(std::trunc(v));
    const double ns = std::trunc(v * 1e9);
    f.nanos = std::isfinite(ns) ? static_cast<int32_t>(std::fmod(ns, 1e9)) : 0;
  }

  // A finite double's integer value modulo 2^32, as a 32-bit integer.
  static int32_t Wrap32(double d) {
    double m = std::fmod(d, 4294967296.0);
    if (m < 0) m += 4294967296.0;
    return static_cast<int32_t>(static_cast<uint32_t>(m));
  }

  // Month or weekday name: -1 with nothing consumed when the first three
  // characters match no name.
  int MatchName(const char* const* names, int count) {
    if (len - pos < 3) return -1;
    for (int i = 0; i < count; ++i) {
      if (std::strncmp(text + pos, names[i], 3) != 0) continue;
      const char* n = names[i];
      while (pos < len && *n != '\0' && text[pos] == *n) {
        ++pos;
        ++n;
      }
      return i;
    }
    return -1;
  }

  void Name(int32_t* field, const char* const* names, int count) {
    const int i = MatchName(names, count);
    if (i >= 0) {
      if (field != nullptr) *field = i + 1;
      return;
    }
    const size_t start = pos;
    int32_t v = field != nullptr ? *field : 0;
    ReadInt(v, 3);
    if (field != nullptr) *field = v;
    pos = start + (len - start < 3 ? len - start : 3);
  }

  void Unspecified(char code) {
    switch (code) {
      case 'Y':
      case 'y':
        f.year = -1;
        break;
      case 'm':
      case 'B':
      case 'b':
        f.month = -1;
        break;
      case 'd':
      case 'e':
        f.day = -1;
        break;
      case 'H':
      case 'I':
        f.hour = -1;
        break;
      case 'M':
        f.minute = -1;
        break;
      case 'S':
        f.second = -1;
        break;
      case 'f':
        f.second = -1;
        f.nanos = -1;
        break;
      case 'N':
        f.nanos = -1;
        break;
      case 'J':
        f.year = f.month = f.day = -1;
        break;
      default:
        break;
    }
  }

  void Code(char code) {
    switch (code) {
      case 'Y':
      case 'm':
      case 'd':
      case 'e':
      case 'H':
      case 'I':
      case 'M':
      case 'S':
      case 'N': {
        int32_t* field = code == 'Y'                  ? &f.year
                         : code == 'm'                ? &f.month
                         : code == 'd' || code == 'e' ? &f.day
                         : code == 'M'                ? &f.minute
                         : code == 'S'                ? &f.second
                         : code == 'N'                ? &f.nanos
                                                      : &f.hour;
        ReadInt(*field);
        break;
      }
      case 'y': {
        int32_t y = 0;
        const size_t start = pos;
        ReadInt(y);
        if (pos != start) {
          // 2-digit years: 31 to 99 are the 1900s; wraps like the field.
          f.year = static_cast<int32_t>(static_cast<uint32_t>(y) +
                                        (y > 30 ? 1900u : 2000u));
        }
        break;
      }
      case 'f':
        ReadSeconds();
        break;
      case 'J': {
        int64_t j = 0;
        const size_t start = pos;
        ReadInt(j);
        if (pos == start) break;
        const int32_t total = static_cast<int32_t>(j);  // a 32-bit long
        f.year = total / 360;
        f.month = (total - 360 * f.year) / 30;
        f.day = total - 360 * f.year - 30 * f.month;
        break;
      }
      case 'B':
      case 'b':
        Name(&f.month, kObMonthNames, 12);
        break;
      case 'A':
      case 'a':
        Name(nullptr, kObDayNames, 7);
        break;
      case 'p':
      case 'P':
        if (text[pos] == 'p' || text[pos] == 'P') amPm = 2;
        if (text[pos] == 'a' || text[pos] == 'A') amPm = 1;
        pos += len - pos < 2 ? len - pos : 2;
        break;
      default:
        ++pos;  // "%%" and unknown codes skip one character
    }
  }

  // false when the text ran out at a code.
  bool Run(const char* format, bool topLevel) {
    const char* p = format;
    for (;;) {
      while (IsSpace(*p)) ++p;
      while (pos < len && IsSpace(text[pos])) ++pos;
      if (*p == '\0') return true;
      if (*p == ')' && inGroup) {
        inGroup = false;
        ++p;
        continue;
      }
      if (*p != '%') {
        if (pos < len && (!IsDigit(text[pos]) || text[pos] == *p)) ++pos;
        ++p;
        continue;
      }
      ++p;
      if (*p == '?') {
        ++p;
        if (*p == '(') {
          inGroup = true;
          ++p;
        }
      }
      const char code = *p;
      if (code != '\0') ++p;
      const char* macro = topLevel ? MacroText(code) : nullptr;
      if (macro != nullptr) {
        if (!Run(macro, false)) return false;
        continue;
      }
      if (pos >= len) return false;
      if (code == '\0') return true;  // a lone '%' ends the format
      if (text[pos] == '*' && code != '%') {
        Unspecified(code);
        ++pos;
        continue;
      }
      Code(code);
    }
  }
};

}  // namespace

namespace {

void PrintInto(const Fields& f, const char* format, TextBuf& out) {
  if (format == nullptr) return;
  Printer printer{f, HasAmPm(format), out};
  printer.Run(format, true);
}

// Most texts are not null: a differing first byte settles it cheaply.
bool IsNull(const ObString& text) {
  const ObString& null = NullPrintText();
  if (null.GetCodeSet() == text.GetCodeSet() && !text.IsWide() &&
      null.Len() > 0 && text.Len() > 0 && null.StrGet()[0] != text.StrGet()[0])
    return false;
  return obprint::IsNullText(text);
}

}  // namespace

void Print(const Fields& f, const char* format, std::string& out) {
  TextBuf text;
  PrintInto(f, format, text);
  out.append(text.c_str(), text.size());
}

ScanResult Scan(Fields& f, const char* text, size_t len, const char* format) {
  if (format == nullptr || text == nullptr) len = 0;
  Scanner s{f, text, len};
  const bool ok = format == nullptr || s.Run(format, true);
  // Unspecified hours stay unspecified whatever the am/pm.
  if (s.amPm == 2 && f.hour >= 0 && f.hour < 12) f.hour += 12;
  if (s.amPm == 1 && f.hour == 12) f.hour = 0;
  return ok ? ScanResult::kOk : ScanResult::kEnded;
}

ObString& PrintNull(ObString& out) { return out += NullPrintText(); }

ObString& PrintTo(ObString& out, const Fields& f, const char* format) {
  TextBuf text;
  PrintInto(f, format, text);
  return out << text.c_str();
}

ScanResult ScanFrom(Fields& f, const ObString& text, const char* format) {
  if (!text.IsWide()) {  // no copy needed
    if (IsNull(text)) return ScanResult::kNull;
    return Scan(f, text.StrGet(), text.Len(), format);
  }
  const ObString narrow = obtext::NarrowText(text);
  if (IsNull(narrow)) return ScanResult::kNull;
  return Scan(f, narrow.StrGet(), narrow.Len(), format);
}

}  // namespace obtimetext

// ---- The members of the date and time classes.

namespace {

using obtimetext::Fields;
using obtimetext::ScanResult;

Fields FromDate(const ObDate& d) {
  Fields f;
  f.year = d.year;
  f.month = d.month;
  f.day = d.day;
  return f;
}
void ToDate(const Fields& f, ObDate& d) {
  d.year = static_cast<int16_t>(f.year);
  d.month = static_cast<int8_t>(f.month);
  d.day = static_cast<int8_t>(f.day);
}
Fields FromTime(const ObTime& t, Fields f = Fields()) {
  f.hour = t.hour;
  f.minute = t.minute;
  f.second = t.second;
  return f;
}
void ToTime(const Fields& f, ObTime& t) {
  t.hour = static_cast<int8_t>(f.hour);
  t.minute = static_cast<int8_t>(f.minute);
  t.second = static_cast<int8_t>(f.second);
}

Fields FromNano(const ObNanoValue& v) {
  Fields f = FromTime(v.time, FromDate(v.date));
  f.nanos = v.nanoseconds;
  return f;
}

// The engine's value: the six fields and the nanoseconds.
template <class C>
bool ScanNano(C& v, const ObString& in, const char* format) {
  Fields f;
  const ScanResult r = obtimetext::ScanFrom(f, in, format);
  if (r == ScanResult::kNull) return v.SetNullValue(), true;
  ToDate(f, v.date);
  ToTime(f, v.time);
  v.nanoseconds = f.nanos;
  return r == ScanResult::kOk;
}

}  // namespace

namespace obtimetext {

bool ScanValue(ObDateTimeN& v, const ObString& in, const char* format) {
  return ScanNano(v, in, format ? format : kDateTimeNFormat);
}

bool ScanValue(ObTimeSpan& v, const ObString& in, const char* format) {
  return ScanNano(v, in, format ? format : kTimeSpanFormat);
}

bool ScanValue(ObDate& d, const ObString& in, const char* format) {
  Fields f;
  const ScanResult r = ScanFrom(f, in, format ? format : kDateFormat);
  if (r == ScanResult::kNull) return d.SetNullValue(), true;
  ToDate(f, d);
  return r == ScanResult::kOk;
}

bool ScanValue(ObTime& t, const ObString& in, const char* format) {
  Fields f;
  const ScanResult r = ScanFrom(f, in, format ? format : kTimeFormat);
  if (r == ScanResult::kNull) return t.SetNullValue(), true;
  ToTime(f, t);
  return r == ScanResult::kOk;
}

bool ScanValue(ObDateTime& v, const ObString& in, const char* format) {
  Fields f;
  const ScanResult r = ScanFrom(f, in, format ? format : kDateTimeFormat);
  if (r == ScanResult::kNull) return v.SetNullValue(), true;
  ToDate(f, v.date);
  ToTime(f, v.time);
  return r == ScanResult::kOk;
}

}  // namespace obtimetext

ObString& ObDate::PrintToObString(ObString& out, const char* format) const {
  if (IsNullValue()) return obtimetext::PrintNull(out);
  return obtimetext::PrintTo(out, FromDate(*this),
                             format ? format : obtimetext::kDateFormat);
}

void ObDate::ScanFromObString(const ObString& in, const char* format) {
  obtimetext::ScanValue(*this, in, format);
}

ObString& ObTime::PrintToObString(ObString& out, const char* format) const {
  if (IsNullValue()) return obtimetext::PrintNull(out);
  return obtimetext::PrintTo(out, FromTime(*this),
                             format ? format : obtimetext::kTimeFormat);
}

void ObTime::ScanFromObString(const ObString& in, const char* format) {
  obtimetext::ScanValue(*this, in, format);
}

ObString& ObDateTime::PrintToObString(ObString& out, const char* format) const {
  if (IsNullValue()) return obtimetext::PrintNull(out);
  return obtimetext::PrintTo(out, FromTime(time, FromDate(date)),
                             format ? format : obtimetext::kDateTimeFormat);
}

void ObDateTime::ScanFromObString(const ObString& in, const char* format) {
  obtimetext::ScanValue(*this, in, format);
}

ObString& ObDateTimeN::PrintToObString(ObString& out,
                                       const char* format) const {
  if (IsNullValue()) return obtimetext::PrintNull(out);
  return obtimetext::PrintTo(out, FromNano(*this),
                             format ? format : obtimetext::kDateTimeNFormat);
}

void ObDateTimeN::ScanFromObString(const ObString& in, const char* format) {
  obtimetext::ScanValue(*this, in, format);
}

ObString& ObTimeSpan::PrintToObString(ObString& out, const char* format) const {
  if (IsNullValue()) return obtimetext::PrintNull(out);
  return obtimetext::PrintTo(out, FromNano(*this),
                             format ? format : obtimetext::kTimeSpanFormat);
}

void ObTimeSpan::ScanFromObString(const ObString& in, const char* format) {
  obtimetext::ScanValue(*this, in, format);
}

// ---- The standard types' rows.

namespace {

constexpr int32_t kNanosPerHundredth = 10000000;

Fields FieldsOf(const d_Date& d, Fields f = Fields()) {
  f.year = d.year();
  f.month = d.month();
  f.day = d.day();
  return f;
}
Fields FieldsOf(const d_Time& t, Fields f = Fields()) {
  f.hour = t.hour();
  f.minute = t.minute();
  f.second = t.second();
  f.nanos = t.hundredths() * kNanosPerHundredth;
  return f;
}
void SetFields(d_Date& d, const Fields& f) {
  d = d_Date(static_cast<int16_t>(f.year), static_cast<uint8_t>(f.month),
             static_cast<uint8_t>(f.day));
}
void SetFields(d_Time& t, const Fields& f) {
  t = d_Time::FromFields(
      t.tz_hour(), t.tz_minute(), static_cast<int8_t>(f.hour),
      static_cast<int8_t>(f.minute), static_cast<uint8_t>(f.second),
      static_cast<uint8_t>(f.nanos / kNanosPerHundredth));
}

// Arrays come from the catalogue's Create: elements are aligned.
template <class C, class Print>
ObString& StdPrint(ObString& out, const void* values, const char* format,
                   Print fields) {
  out = "";
  return obtimetext::PrintTo(out, fields(*static_cast<const C*>(values)),
                             format);
}
template <class C, class Apply>
void* StdScan(void* values, ObString& text, const char* format, Apply apply) {
  if (values == nullptr) return nullptr;
  const ObString narrow = obtext::NarrowText(text);
  Fields f;
  const ScanResult r =
      obtimetext::Scan(f, narrow.StrGet(), narrow.Len(), format);
  apply(*static_cast<C*>(values), f);
  return r == ScanResult::kOk ? values : nullptr;
}

}  // namespace

namespace obtimetext {

ObString& StdDatePrint(ObString& out, const void* values, const char* format,
                       uint32_t) {
  return StdPrint<d_Date>(out, values, format,
                          [](const d_Date& d) { return FieldsOf(d); });
}
void* StdDateScan(void* values, ObString& text, const char* format, uint32_t) {
  return StdScan<d_Date>(values, text, format,
                         [](d_Date& d, const Fields& f) { SetFields(d, f); });
}
ObString& StdTimePrint(ObString& out, const void* values, const char* format,
                       uint32_t) {
  return StdPrint<d_Time>(out, values, format,
                          [](const d_Time& t) { return FieldsOf(t); });
}
void* StdTimeScan(void* values, ObString& text, const char* format, uint32_t) {
  return StdScan<d_Time>(values, text, format,
                         [](d_Time& t, const Fields& f) { SetFields(t, f); });
}
// An interval prints as days, hours, minutes and seconds of its length; a
// negative interval carries its sign on the days.
ObString& StdIntervalPrint(ObString& out, const void* values,
                           const char* format, uint32_t) {
  return StdPrint<d_Interval>(out, values, format, [](const d_Interval& i) {
    const double v = i.value();
    const double magnitude = std::fabs(v);
    const double whole = std::floor(magnitude);
    const int64_t s = whole < 9.0e18 ? static_cast<int64_t>(whole) : 0;
    Fields f;
    f.day = static_cast<int32_t>(s / 86400) * (v < 0 ? -1 : 1);
    f.hour = static_cast<int32_t>(s % 86400 / 3600);
    f.minute = static_cast<int32_t>(s % 3600 / 60);
    f.second = static_cast<int32_t>(s % 60);
    f.nanos = static_cast<int32_t>((magnitude - whole) * 1e9);
    return f;
  });
}
void* StdIntervalScan(void* values, ObString& text, const char* format,
                      uint32_t) {
  return StdScan<d_Interval>(
      values, text, format, [](d_Interval& i, const Fields& f) {
        i = d_Interval(f.day, f.hour, f.minute,
                       static_cast<float>(f.second + f.nanos / 1e9));
      });
}
ObString& StdTimestampPrint(ObString& out, const void* values,
                            const char* format, uint32_t) {
  return StdPrint<d_Timestamp>(out, values, format, [](const d_Timestamp& v) {
    return FieldsOf(v.time(), FieldsOf(v.date()));
  });
}
void* StdTimestampScan(void* values, ObString& text, const char* format,
                       uint32_t) {
  return StdScan<d_Timestamp>(values, text, format,
                              [](d_Timestamp& v, const Fields& f) {
                                d_Date d = v.date();
                                d_Time t = v.time();
                                SetFields(d, f);
                                SetFields(t, f);
                                v = d_Timestamp(d, t);
                              });
}

}  // namespace obtimetext
