// Catalogue rows of ObDateTimeN and ObTimeSpan. Internal.
//
// Stored form (DO NOT CHANGE: records and index keys hold it): 11 bytes,
// the 7-byte stored ObDateTime followed by the nanoseconds as a 32-bit
// integer in the format's byte order.
#ifndef QUILLSTORE_SRC_TYPEMGR_SPANROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_SPANROWS_H_

#include <new>

#include "daterows.h"
#include "obdatetimen.h"

namespace obspanrow {

constexpr uint32_t kNanoStored = 11;

// The unspecified nanoseconds for key bounds: the sentinel 0xFFFFFFFE until
// the first request (or stored-form comparison) with a format other than
// memory form, all ones from then on.
const int32_t* UnspecifiedNanoseconds(uint8_t format);

// Both types share every layout operation; they differ in comparator and
// counter step.
uint32_t NanoStore(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t NanoLoad(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t NanoHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status);
int32_t DateTimeNStep(void* value, uint32_t len, uint8_t format, uint8_t kind);
int32_t TimeSpanStep(void* value, uint32_t len, uint8_t format, uint8_t kind);

// With a non-zero `sameSource` the one source element goes to every
// destination element.
template <class C>
void AssignFrom(void* dest, const void* src, uint32_t count,
                int32_t sameSource) {
  C* d = static_cast<C*>(dest);
  const C* s = static_cast<const C*>(src);
  for (uint32_t i = 0; i < count; ++i) d[i] = s[sameSource != 0 ? 0 : i];
}
template <class C>
void CopyFrom(void* dest, const void* src, uint32_t count, int32_t sameSource) {
  C* d = static_cast<C*>(dest);
  const C* s = static_cast<const C*>(src);
  for (uint32_t i = 0; i < count; ++i)
    new (&d[i]) C(s[sameSource != 0 ? 0 : i]);
}

template <class C>
constexpr ObTypeEntry NanoRow(const char* name, const char* idName,
                              const char* format, ObKeyCompareFn cmp,
                              ObSequenceStepFn step) {
  ObTypeEntry r = obrow::Pending(name, idName, sizeof(C), 1, format);
  obrow::SetMemOps(r, obrow::kClass<C>);
  r.store = NanoStore;
  r.load = NanoLoad;
  r.nullSizeGet = obdaterow::FixedSize<kNanoStored>;
  r.sizeGet = obdaterow::FixedSizeGet<kNanoStored>;
  r.sizeGetFromMemFile = obrow::FixedSizeFromMemFile<kNanoStored>;
  r.compare = cmp;
  r.hash = NanoHash;
  r.isNull = obdaterow::IsNullOf<C>;
  r.setNull = obdaterow::SetNullOf<C>;
  r.sequenceStep = step;
  r.print = obdaterow::PrintOf<C>;
  r.scan = obdaterow::ScanOf<C>;
  r.assignment = AssignFrom<C>;
  r.copy = CopyFrom<C>;
  r.translate =
      obrow::FixedTranslate<kNanoStored, NanoStore, NanoLoad, sizeof(C)>;
  return r;
}

constexpr ObTypeEntry DateTimeNRow() {
  return NanoRow<ObDateTimeN>("ObDateTimeN", "ObDATIME_N_T", "%X",
                              ObDateTimeNCompare, DateTimeNStep);
}
constexpr ObTypeEntry TimeSpanRow() {
  return NanoRow<ObTimeSpan>("ObTimeSpan", "ObTIMESPAN_T", "%V",
                             ObTimeSpanCompare, TimeSpanStep);
}

}  // namespace obspanrow

#endif  // QUILLSTORE_SRC_TYPEMGR_SPANROWS_H_
