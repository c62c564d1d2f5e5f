#include "int64row.h"

#include "hashrows.h"
#include "module.h"
#include "obcodetext.h"
#include "obkeyloop.h"
#include "obstring.h"
#include "obtypevl.h"
#include "obtyphash.h"
#include "printscan.h"

namespace obrow {
namespace {

// Below every value of ObInt64 in key order.
constexpr double kNullPosition = -18446744073709551616.0;  // -2^64

// The null indicator of ObNull_ObInt64 follows the value in memory and in
// stored form alike.
constexpr uint32_t kIndicator = 8;

}  // namespace

int32_t Int64Step(void* value, uint32_t len, uint8_t format, uint8_t kind) {
  if (format == kObFormatMemory && kind == kStepReset) {
    *static_cast<ObInt64*>(value) = ObInt64();
    return 0;
  }
  return IntegerStep<int64_t>(value, len, format, kind);
}

float Int64EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                        uint8_t flags, uint32_t count, void* narrow) {
  const uint8_t fmt = flags & kObFormatMask;
  return obrange::EvalAndBoundNumeric(
      bounds, op, value, 8, count, static_cast<ObIdxBounds*>(narrow),
      [fmt](const uint8_t* p) {
        return static_cast<double>(ReadNumber<int64_t>(p, fmt));
      });
}

ObString& Int64Print(ObString& out, const void* value, const char* format,
                     uint32_t) {
  out = "";
  return static_cast<const ObInt64*>(value)->PrintToObString(out, format);
}

void* Int64Scan(void* value, ObString& text, const char* format, uint32_t) {
  if (value != nullptr)
    static_cast<ObInt64*>(value)->ScanFromObString(text, format);
  return value;
}

uint32_t NullInt64Hash(uint8_t format, uint32_t len, const void* value,
                       uint32_t count, int32_t& status) {
  const uint8_t fmt = format & kObFormatMask;
  auto fold = [fmt](const uint8_t* p) {
    return p[kIndicator] != 0 ? obhash::kNullTerm
                              : NumberTerm(ReadNumber<int64_t>(p, fmt));
  };
  if (fmt == kObFormatMemory)
    return obhash::HashLoop<sizeof(ObNull_ObInt64)>(len, value, count, status,
                                                    fold);
  return obhash::HashLoop<NullInt64::kStored>(len, value, count, status, fold);
}

float NullInt64EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                            uint8_t flags, uint32_t count, void* narrow) {
  const uint8_t fmt = flags & kObFormatMask;
  const uint32_t width =
      fmt == kObFormatMemory ? sizeof(ObNull_ObInt64) : NullInt64::kStored;
  return obrange::EvalAndBoundNumeric(
      bounds, op, value, width, count, static_cast<ObIdxBounds*>(narrow),
      [fmt](const uint8_t* p) {
        return p[kIndicator] != 0
                   ? kNullPosition
                   : static_cast<double>(ReadNumber<int64_t>(p, fmt));
      });
}

ObString& NullInt64Print(ObString& out, const void* value, const char* format,
                         uint32_t) {
  const auto* v = static_cast<const ObNull_ObInt64*>(value);
  out = "";
  if (v->isNull != 0) {
    out += NullPrintText();
    return out;
  }
  return v->value.PrintToObString(out, format);
}

void* NullInt64Scan(void* value, ObString& text, const char* format, uint32_t) {
  if (value == nullptr) return nullptr;
  auto* v = static_cast<ObNull_ObInt64*>(value);
  const ObString narrow = obtext::NarrowText(text);
  if (narrow.IsEmpty() || obprint::IsNullText(narrow)) {
    NullInt64::SetNull(v);
  } else {
    v->value.ScanFromObString(narrow, format);
    v->isNull = 0;
  }
  return value;
}

}  // namespace obrow
