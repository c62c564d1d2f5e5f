// The date and time text forms: one print engine and one scan engine over a
// broken-down value, shared by every date and time type. Each type converts
// to a Fields record, runs the engine and copies back only its own fields.
// Internal to the library.
#ifndef QUILLSTORE_SRC_OBTIMETEXT_H_
#define QUILLSTORE_SRC_OBTIMETEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "obdefs.h"

class ObString;
class ObDate;
class ObTime;
class ObDateTime;
class ObDateTimeN;
class ObTimeSpan;

namespace obtimetext {

// A date and time broken down; -1 marks an unspecified field. Widths cover
// every date and time type (spans keep totals in their fields).
struct Fields {
  int32_t year = 0;
  int32_t month = 0;
  int32_t day = 0;
  int32_t hour = 0;
  int32_t minute = 0;
  int32_t second = 0;
  int32_t nanos = 0;
};

// Default formats of the types; constant data, ready before any code runs.
constexpr char kDateFormat[] = "%Y-%m-%d";
constexpr char kTimeFormat[] = "%H:%M:%S";
constexpr char kDateTimeFormat[] = "%Y-%m-%dT%H:%M:%S";
constexpr char kDateTimeNFormat[] = "%Y-%m-%dT%H:%M:%f";
constexpr char kTimeSpanFormat[] = "%J.%H:%M:%f";

// The engines (exported for the tests and tools).
// Appends `f` printed with `format` (null: nothing) to `out`.
QS_TM_API void Print(const Fields& f, const char* format, std::string& out);

enum class ScanResult { kOk, kEnded, kNull };

// Reads the `len` characters of `text` (no terminator needed) into `f`
// under `format`; never looks past either. kEnded when the text ran out at
// a code; the fields read so far are stored all the same.
QS_TM_API ScanResult Scan(Fields& f, const char* text, size_t len,
                          const char* format);

// The ObString sides: a null value prints the null print text (appended);
// a text that begins with the null print text scans as kNull and leaves
// `f` alone. Two-byte texts are narrowed first.
ObString& PrintTo(ObString& out, const Fields& f, const char* format);
ScanResult ScanFrom(Fields& f, const ObString& text, const char* format);
ObString& PrintNull(ObString& out);

// The members' scans with the engine's success (true also for the null
// text), for the catalogue rows.
bool ScanValue(ObDate& d, const ObString& in, const char* format);
bool ScanValue(ObTime& t, const ObString& in, const char* format);
bool ScanValue(ObDateTime& v, const ObString& in, const char* format);
bool ScanValue(ObDateTimeN& v, const ObString& in, const char* format);
bool ScanValue(ObTimeSpan& v, const ObString& in, const char* format);

// Catalogue row print and scan of the standard types d_Date, d_Time and
// d_Timestamp. They have no null value, so no text is null; times carry
// hundredths as nanoseconds and keep their zone when scanned.
ObString& StdDatePrint(ObString& out, const void* values, const char* format,
                       uint32_t count);
void* StdDateScan(void* values, ObString& text, const char* format,
                  uint32_t count);
ObString& StdTimePrint(ObString& out, const void* values, const char* format,
                       uint32_t count);
void* StdTimeScan(void* values, ObString& text, const char* format,
                  uint32_t count);
ObString& StdIntervalPrint(ObString& out, const void* values,
                           const char* format, uint32_t count);
void* StdIntervalScan(void* values, ObString& text, const char* format,
                      uint32_t count);
ObString& StdTimestampPrint(ObString& out, const void* values,
                            const char* format, uint32_t count);
void* StdTimestampScan(void* values, ObString& text, const char* format,
                       uint32_t count);

}  // namespace obtimetext

#endif  // QUILLSTORE_SRC_OBTIMETEXT_H_
