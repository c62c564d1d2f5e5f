// Row operations shared by several catalogue rows. Internal to the library.
#ifndef QUILLSTORE_SRC_TYPEMGR_ROWOPS_H_
#define QUILLSTORE_SRC_TYPEMGR_ROWOPS_H_

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "obbs.h"
#include "obkeyloop.h"
#include "obtypemgr.h"

namespace obrow {

// Sequence kinds of SequenceStep.
constexpr uint8_t kStepReset = 2;
constexpr uint8_t kStepKeep = 'O';
constexpr uint8_t kStepNext = 'N';
constexpr uint8_t kStepNextM = 'M';

// A zero-filled heap block of `count` elements of `size` bytes; calls the
// memory handler while it asks for another try. Null on failure.
void* AllocArray(uint32_t count, size_t size);
void FreeArray(void* p);

// ---- The "illegal" row and other rows without an operation.
void* CreateNothing(uint32_t count);
void* DeleteNothing(void* values, uint32_t count);
uint32_t StoreNothing(void* dest, const void* src, uint8_t format,
                      uint32_t count);
uint32_t NullSizeNothing(uint32_t count);
uint32_t SizeGetNothing(const void* value, uint8_t format, uint8_t format2,
                        uint32_t count);
uint32_t SizeFromMemFileNothing(MemFile* file, uint8_t format, uint32_t count);
int32_t CompareNothing(uint8_t flags, uint32_t len1, const void* p1,
                       uint32_t len2, const void* p2, uint16_t options,
                       uint32_t count, int32_t& status);
float EvalNothing(ObIdxBounds* bounds, uint16_t& op, void* value, uint8_t flags,
                  uint32_t count, void* other);
uint32_t HashNothing(uint8_t format, uint32_t len, const void* value,
                     uint32_t count, int32_t& status);
ObTypeConvertData* ConvertToNothing(void* values, uint32_t count);
void* ConvertFromNothing(ObTypeConvertData* data, uint32_t count);
void ConstructNothing(void* values, uint32_t count, uint32_t flags);
void AssignNothing(void* dest, const void* src, uint32_t count, int32_t flags);
uint32_t TranslateNothing(void* dest, uint8_t destFormat, uint32_t destLen,
                          const void* src, uint8_t srcFormat, uint32_t srcLen,
                          uint32_t count);
int32_t IsNullNever(const void* value);
ObString& PrintNothing(ObString& out, const void* values, const char* format,
                       uint32_t count);
void* ScanNothing(void* values, ObString& text, const char* format,
                  uint32_t count);
void* DefaultValueNothing(uint32_t count, int32_t asNull);
int32_t StepUnsupported(void* value, uint32_t len, uint8_t format,
                        uint8_t kind);

// ---- ObString rows (memory operations; storage comes with the layouts).
void* StringCreate(uint32_t count);
void* StringDelete(void* values, uint32_t count);
void StringConstruct(void* values, uint32_t count, uint32_t flags);
void StringDestruct(void* values, uint32_t count, uint32_t flags);
void StringAssign(void* dest, const void* src, uint32_t count, int32_t flags);
void StringCopy(void* dest, const void* src, uint32_t count, int32_t flags);
int32_t StringIsNull(const void* value);
int32_t StringSetNull(void* value);

// ---- Plain values of trivially copyable types (numbers and their nullable
// forms): zero-filled on creation and construction, copied bytewise.
template <class T>
void* PlainCreate(uint32_t count) {
  return AllocArray(count, sizeof(T));
}
template <class T>
void* PlainDelete(void* values, uint32_t) {
  FreeArray(values);
  return nullptr;
}
template <class T>
void PlainConstruct(void* values, uint32_t count, uint32_t) {
  if (count != 0) std::memset(values, 0, size_t{count} * sizeof(T));
}
template <class T>
void PlainAssign(void* dest, const void* src, uint32_t count, int32_t) {
  if (count != 0 && dest != src)
    std::memmove(dest, src, size_t{count} * sizeof(T));
}
template <uint32_t W>
uint32_t FixedSizeFromMemFile(MemFile*, uint8_t, uint32_t count) {
  return W * count;
}

inline bool IsMemoryForm(uint8_t format) { return (format & 0x08) != 0; }

// The Translate rule of the fixed-width types: stored forms are copied as
// they are between any two formats; memory and stored forms convert through
// the type's Store and Load routines.
template <uint32_t W, ObStoreFn Store, ObStoreFn Load, size_t MemSize = W>
uint32_t FixedTranslate(void* dest, uint8_t destFormat, uint32_t destLen,
                        const void* src, uint8_t srcFormat, uint32_t srcLen,
                        uint32_t count) {
  const bool destMem = IsMemoryForm(destFormat);
  const bool srcMem = IsMemoryForm(srcFormat);
  if (!destMem && srcMem) return Store(dest, src, destFormat, count);
  if (!destMem) {
    uint32_t n = srcLen < destLen ? srcLen : destLen;
    if (srcLen < destLen) std::memset(dest, 0, destLen);
    if (n != 0) std::memmove(dest, src, n);
    return n;
  }
  if (!srcMem) return Load(dest, src, srcFormat, count);
  if (count != 0 && dest != src) std::memmove(dest, src, count * MemSize);
  return static_cast<uint32_t>(count * MemSize);
}

// ---- Counters. Integer steps: kind 2 resets to the lowest value (0 for
// unsigned types), 'O' keeps, 'M'/'N' add one unless at the maximum.
template <class T>
int32_t StepInteger(T& v, uint8_t kind) {
  switch (kind) {
    case kStepReset:
      v = std::numeric_limits<T>::min();
      return 0;
    case kStepKeep:
      return 0;
    case kStepNext:
    case kStepNextM:
      if (v == std::numeric_limits<T>::max()) return kObCounterAtMax;
      v = static_cast<T>(v + 1);
      return 0;
    default:
      return kObNotSupported;
  }
}

// Next larger representable value; false when there is none (+inf, NaN).
template <class F>
bool NextFloat(F& v) {
  F next = std::nextafter(v, std::numeric_limits<F>::infinity());
  if (!(next > v)) return false;
  v = next;
  return true;
}

template <class T>
int32_t IntegerStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  if (format != kObFormatMemory) return kObNotSupported;
  T v;
  std::memcpy(&v, value, sizeof v);
  int32_t rc = StepInteger(v, kind);
  if (rc == 0) std::memcpy(value, &v, sizeof v);
  return rc;
}

// Float steps reset to a NaN and, unlike the integer steps, reject 'O'.
template <class F>
int32_t FloatStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  if (format != kObFormatMemory) return kObNotSupported;
  F v;
  std::memcpy(&v, value, sizeof v);
  if (kind == kStepReset) {
    v = std::numeric_limits<F>::quiet_NaN();
  } else if (kind == kStepNext || kind == kStepNextM) {
    if (!NextFloat(v)) return kObCounterAtMax;
  } else {
    return kObNotSupported;
  }
  std::memcpy(value, &v, sizeof v);
  return 0;
}

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_ROWOPS_H_
