// Catalogue rows of ObDate, ObTime and ObDateTime. Internal.
//
// Stored forms (DO NOT CHANGE: records and index keys hold them): ObDate is
// 4 bytes, the year in the format's byte order (most significant byte first
// for format 2, else least significant first), then month and day; ObTime is
// hour, minute, second; ObDateTime is the two packed into 7 bytes.
#ifndef QUILLSTORE_SRC_TYPEMGR_DATEROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_DATEROWS_H_

#include <cstring>

#include "obdate.h"
#include "obdatetime.h"
#include "obstring.h"
#include "obtimetext.h"
#include "obtypes.h"
#include "rowbuild.h"

namespace obdaterow {

constexpr uint32_t kDateStored = 4;
constexpr uint32_t kTimeStored = 3;
constexpr uint32_t kDateTimeStored = 7;

// The lowest date whose day number converts back to itself: counters
// start there.
constexpr ObDate kLowestDate(-4800, 3, 1);

// An element in memory form, read without assuming alignment.
template <class C>
inline C ReadValue(const uint8_t* p) {
  C v(C::NullValue());
  std::memcpy(&v, p, sizeof v);
  return v;
}

// Stored year of a date element, in the byte order of 16-bit record fields.
inline int16_t StoredYear(const uint8_t* p, uint8_t fmt) {
  return static_cast<int16_t>(oblayout::Read16(p, fmt));
}
inline void PutYear(uint8_t* p, int16_t year, uint8_t fmt) {
  oblayout::Write16(p, fmt, static_cast<uint16_t>(year));
}

// Hash term of three date or time components, each sign-extended.
inline uint32_t DateTerm(int32_t a, int32_t b, int32_t c) {
  return (static_cast<uint32_t>(a) << 16) + (static_cast<uint32_t>(b) << 8) +
         static_cast<uint32_t>(c);
}

// The integer counter rule with the type's successor `next`: kind 2 resets
// to `lowest`, 'O' keeps, 'M'/'N' advance unless the value would not grow.
template <class C, class Next>
int32_t StepValue(void* value, uint8_t format, uint8_t kind, const C& lowest,
                  Next next) {
  if (format != kObFormatMemory) return kObNotSupported;
  C v = ReadValue<C>(static_cast<const uint8_t*>(value));
  switch (kind) {
    case obrow::kStepReset:
      v = lowest;
      break;
    case obrow::kStepKeep:
      return 0;
    case obrow::kStepNext:
    case obrow::kStepNextM: {
      const C old = v;
      next(v);
      if (v.Compare(old, 0xFFFF) <= 0) return kObCounterAtMax;
      break;
    }
    default:
      return kObNotSupported;
  }
  std::memcpy(value, &v, sizeof v);
  return 0;
}

// The unspecified year for key bounds: the sentinel 0xFFFE until the first
// request (or stored-form date comparison) with a format other than memory
// form, all ones from then on.
const uint16_t* UnspecifiedYear(uint8_t format);

uint32_t DateStore(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t DateLoad(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t DateHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status);
int32_t DateStep(void* value, uint32_t len, uint8_t format, uint8_t kind);

uint32_t TimeStore(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t TimeHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status);
int32_t TimeStep(void* value, uint32_t len, uint8_t format, uint8_t kind);

uint32_t DateTimeStore(void* dest, const void* src, uint8_t format,
                       uint32_t count);
uint32_t DateTimeLoad(void* dest, const void* src, uint8_t format,
                      uint32_t count);
uint32_t DateTimeHash(uint8_t format, uint32_t len, const void* value,
                      uint32_t count, int32_t& status);
int32_t DateTimeStep(void* value, uint32_t len, uint8_t format, uint8_t kind);
// With a non-zero `sameSource` the one source element goes to every
// destination element.
void DateTimeAssign(void* dest, const void* src, uint32_t count,
                    int32_t sameSource);
void DateTimeCopy(void* dest, const void* src, uint32_t count,
                  int32_t sameSource);

template <uint32_t W>
uint32_t FixedSize(uint32_t count) {
  return W * count;
}
template <uint32_t W>
uint32_t FixedSizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
  return W * count;
}

template <class C>
int32_t IsNullOf(const void* value) {
  return ReadValue<C>(static_cast<const uint8_t*>(value)).IsNullValue();
}
template <class C>
int32_t SetNullOf(void* value) {
  std::memcpy(value, &C::NullValue(), sizeof(C));
  return 0;
}

// Row print: `out` holds just the first element's text.
template <class C>
ObString& PrintOf(ObString& out, const void* values, const char* format,
                  uint32_t) {
  out = "";
  return ReadValue<C>(static_cast<const uint8_t*>(values))
      .PrintToObString(out, format);
}
// Row scan: null when the text ran out at a code (the fields read are
// stored all the same).
template <class C>
void* ScanOf(void* values, ObString& text, const char* format, uint32_t) {
  if (values == nullptr) return nullptr;
  C v = ReadValue<C>(static_cast<const uint8_t*>(values));
  const bool ok = obtimetext::ScanValue(v, text, format);
  std::memcpy(values, &v, sizeof v);
  return ok ? values : nullptr;
}

// Common part of the three rows.
template <class C, uint32_t W>
constexpr ObTypeEntry DateRowBase(const char* name, const char* idName,
                                  const char* format, ObStoreFn store,
                                  ObStoreFn load, ObKeyCompareFn cmp,
                                  ObHashFn hash, ObSequenceStepFn step) {
  ObTypeEntry r = obrow::Pending(name, idName, sizeof(C), 1, format);
  obrow::SetMemOps(r, obrow::kClass<C>);
  r.store = store;
  r.load = load;
  r.nullSizeGet = FixedSize<W>;
  r.sizeGet = FixedSizeGet<W>;
  r.sizeGetFromMemFile = obrow::FixedSizeFromMemFile<W>;
  r.compare = cmp;
  r.hash = hash;
  r.isNull = IsNullOf<C>;
  r.setNull = SetNullOf<C>;
  r.sequenceStep = step;
  r.print = PrintOf<C>;
  r.scan = ScanOf<C>;
  return r;
}

constexpr ObTypeEntry DateRow() {
  ObTypeEntry r = DateRowBase<ObDate, kDateStored>(
      "ObDate", "ObDATE_T", "%a %e.%b %Y", DateStore, DateLoad, ObDateCompare,
      DateHash, DateStep);
  r.translate = obrow::FixedTranslate<kDateStored, DateStore, DateLoad>;
  return r;
}

constexpr ObTypeEntry TimeRow() {
  ObTypeEntry r = DateRowBase<ObTime, kTimeStored>(
      "ObTime", "ObTIME_T", "%I:%M:%S %p", TimeStore, TimeStore, ObTimeCompare,
      TimeHash, TimeStep);
  r.translate = obrow::FixedTranslate<kTimeStored, TimeStore, TimeStore>;
  return r;
}

constexpr ObTypeEntry DateTimeRow() {
  ObTypeEntry r = DateRowBase<ObDateTime, kDateTimeStored>(
      "ObDateTime", "ObDATIME_T", "%a %e.%b %Y %I:%M:%S %p", DateTimeStore,
      DateTimeLoad, ObDateTimeCompare, DateTimeHash, DateTimeStep);
  r.assignment = DateTimeAssign;
  r.copy = DateTimeCopy;
  r.translate = obrow::FixedTranslate<kDateTimeStored, DateTimeStore,
                                      DateTimeLoad, sizeof(ObDateTime)>;
  return r;
}

}  // namespace obdaterow

#endif  // QUILLSTORE_SRC_TYPEMGR_DATEROWS_H_
