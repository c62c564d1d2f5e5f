// Catalogue rows of d_Date, d_Time, d_Timestamp and d_Interval. Internal.
//
// Stored forms (DO NOT CHANGE: records and index keys hold them): d_Date is
// 4 bytes laid out as an ObDate (the year in the format's byte order, then
// month and day); d_Time is its 6 memory bytes in every format; d_Timestamp
// is the two packed into 10 bytes. d_Interval is stored as a float.
#ifndef QUILLSTORE_SRC_TYPEMGR_STDROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_STDROWS_H_

#include "d_timestamp.h"
#include "hashrows.h"
#include "obbs.h"
#include "obtimetext.h"
#include "rowbuild.h"
#include "rowops.h"

namespace obstdrow {

constexpr uint32_t kDateStored = 4;
constexpr uint32_t kTimeStored = 6;
constexpr uint32_t kStampStored = 10;

uint32_t DateStore(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t DateLoad(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t DateHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status);
int32_t DateStep(void* value, uint32_t len, uint8_t format, uint8_t kind);

uint32_t TimeStore(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t TimeHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status);
int32_t TimeStep(void* value, uint32_t len, uint8_t format, uint8_t kind);

uint32_t StampStore(void* dest, const void* src, uint8_t format,
                    uint32_t count);
uint32_t StampLoad(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t StampHash(uint8_t format, uint32_t len, const void* value,
                   uint32_t count, int32_t& status);
int32_t StampStep(void* value, uint32_t len, uint8_t format, uint8_t kind);

template <uint32_t W>
uint32_t FixedSize(uint32_t count) {
  return W * count;
}
template <uint32_t W>
uint32_t FixedSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return W * count;
}

// Common part of the three rows: no null value.
template <class C, uint32_t W, ObStoreFn Store, ObStoreFn Load>
constexpr ObTypeEntry StdRowBase(const char* name, const char* idName,
                                 const char* format, ObKeyCompareFn cmp,
                                 ObHashFn hash, ObSequenceStepFn step) {
  ObTypeEntry r = obrow::Pending(name, idName, sizeof(C), 1, format);
  obrow::SetMemOps(r, obrow::kClass<C>);
  r.store = Store;
  r.load = Load;
  r.nullSizeGet = FixedSize<W>;
  r.sizeGet = FixedSizeGet<W>;
  r.sizeGetFromMemFile = obrow::FixedSizeFromMemFile<W>;
  r.compare = cmp;
  r.hash = hash;
  r.translate = obrow::FixedTranslate<W, Store, Load, sizeof(C)>;
  r.isNull = obrow::IsNullNever;
  r.sequenceStep = step;
  return r;
}

constexpr ObTypeEntry StdDateRow() {
  ObTypeEntry r = StdRowBase<d_Date, kDateStored, DateStore, DateLoad>(
      "d_Date", "D_DATE_T", "%a %b %e", d_DateCompare, DateHash, DateStep);
  r.print = obtimetext::StdDatePrint;
  r.scan = obtimetext::StdDateScan;
  return r;
}
constexpr ObTypeEntry StdTimeRow() {
  ObTypeEntry r = StdRowBase<d_Time, kTimeStored, TimeStore, TimeStore>(
      "d_Time", "D_TIME_T", "%I:%M:%S %p", d_TimeCompare, TimeHash, TimeStep);
  r.print = obtimetext::StdTimePrint;
  r.scan = obtimetext::StdTimeScan;
  return r;
}
constexpr ObTypeEntry StdTimestampRow() {
  ObTypeEntry r = StdRowBase<d_Timestamp, kStampStored, StampStore, StampLoad>(
      "d_Timestamp", "D_TIMESTAMP_T", "%a %b %e %I:%M:%S %p",
      d_TimestampCompare, StampHash, StampStep);
  r.print = obtimetext::StdTimestampPrint;
  r.scan = obtimetext::StdTimestampScan;
  return r;
}

// The float's stored form, comparator, translation and hash; NullSizeGet
// and SizeGet arrive with the float's while the library loads.
constexpr ObTypeEntry StdIntervalRow(ObTranslateFn floatTranslate) {
  ObTypeEntry r = obrow::Pending("d_Interval", "D_INTERVAL_T", 4, 1,
                                 "%e days, %I hours, %M minutes, %S seconds");
  obrow::SetMemOps(r, obrow::kClass<d_Interval>);
  r.store = FloatStore;
  r.load = FloatStore;
  r.sizeGetFromMemFile = obrow::FixedSizeFromMemFile<4>;
  r.compare = FloatCompare;
  r.translate = floatTranslate;
  r.hash = obrow::NumberHash<float>;
  r.isNull = obrow::IsNullNever;
  r.sequenceStep = obrow::FloatStep<float>;
  r.print = obtimetext::StdIntervalPrint;
  r.scan = obtimetext::StdIntervalScan;
  return r;
}

}  // namespace obstdrow

#endif  // QUILLSTORE_SRC_TYPEMGR_STDROWS_H_
