// Rows of the nullable basic types: a value and a one-byte null indicator.
// Stored form: the value in the byte order of the format, then the
// indicator byte. Key order: null first, then the values.
#ifndef QUILLSTORE_SRC_TYPEMGR_NULLROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_NULLROWS_H_

#include <limits>
#include <type_traits>

#include "obnulty.h"
#include "rowops.h"

namespace obrow {

template <class T, ObStoreFn Conv>
struct NullableRow {
  using Type = T;
  using Value = ObNullable<T>;
  static constexpr uint32_t W = sizeof(T);
  static constexpr uint32_t kStored = W + 1;

  static uint32_t Store(void* dest, const void* src, uint8_t format,
                        uint32_t count) {
    uint8_t* d = static_cast<uint8_t*>(dest);
    const Value* s = static_cast<const Value*>(src);
    for (uint32_t i = 0; i < count; ++i, d += kStored) {
      Conv(d, &s[i].value, format, 1);
      d[W] = static_cast<uint8_t>(s[i].isNull);
    }
    return kStored * count;
  }

  static uint32_t Load(void* dest, const void* src, uint8_t format,
                       uint32_t count) {
    Value* d = static_cast<Value*>(dest);
    const uint8_t* s = static_cast<const uint8_t*>(src);
    for (uint32_t i = 0; i < count; ++i, s += kStored) {
      Conv(&d[i].value, s, format, 1);
      d[i].isNull = static_cast<int8_t>(s[W]);
    }
    return kStored * count;
  }

  static uint32_t NullSize(uint32_t count) { return kStored * count; }
  static uint32_t SizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
    return kStored * count;
  }

  static int32_t Order(T x, T y) {
    if constexpr (std::is_floating_point<T>::value) {
      return obkey::CompareFloating(x, y);
    } else {
      return obkey::Cmp3(x, y);
    }
  }
  static int32_t OrderNullable(bool null1, T x, bool null2, T y) {
    if (null1 || null2) return obkey::Cmp3(!null1, !null2);
    return Order(x, y);
  }

  static int32_t Compare(uint8_t flags, uint32_t len1, const void* p1,
                         uint32_t len2, const void* p2, uint16_t,
                         uint32_t count, int32_t& status) {
    const uint8_t fmt = flags & kObFormatMask;
    if (fmt == kObFormatMemory) {
      return obkey::KeyLoop<sizeof(Value)>(
          len1, p1, len2, p2, count, status,
          [](const uint8_t* a, const uint8_t* b) {
            Value x = obkey::ReadNative<Value>(a);
            Value y = obkey::ReadNative<Value>(b);
            return OrderNullable(x.isNull != 0, x.value, y.isNull != 0,
                                 y.value);
          });
    }
    return obkey::KeyLoop<kStored>(len1, p1, len2, p2, count, status,
                                   [fmt](const uint8_t* a, const uint8_t* b) {
                                     T x, y;
                                     Conv(&x, a, fmt, 1);
                                     Conv(&y, b, fmt, 1);
                                     return OrderNullable(a[W] != 0, x,
                                                          b[W] != 0, y);
                                   });
  }

  static uint32_t Translate(void* dest, uint8_t destFormat, uint32_t destLen,
                            const void* src, uint8_t srcFormat, uint32_t srcLen,
                            uint32_t count) {
    return FixedTranslate<kStored, Store, Load, sizeof(Value)>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count);
  }

  static int32_t IsNull(const void* value) {
    return static_cast<const Value*>(value)->isNull;
  }

  static int32_t SetNull(void* value) {
    Value* v = static_cast<Value*>(value);
    v->value = T{};
    v->isNull = 1;
    return 0;
  }

  // The integer counter rule on the value. A null counter has no successor;
  // kind 2 starts it again at the lowest value (-inf for floating types).
  static int32_t Step(void* value, uint32_t, uint8_t format, uint8_t kind) {
    if (format != kObFormatMemory) return kObNotSupported;
    Value* v = static_cast<Value*>(value);
    if (kind == kStepReset) {
      v->value = std::numeric_limits<T>::has_infinity
                     ? -std::numeric_limits<T>::infinity()
                     : std::numeric_limits<T>::min();
      v->isNull = 0;
      return 0;
    }
    if (kind == kStepKeep) return 0;
    if (kind != kStepNext && kind != kStepNextM) return kObNotSupported;
    if (v->isNull != 0) return kObCounterAtMax;
    if constexpr (std::is_floating_point<T>::value) {
      return NextFloat(v->value) ? 0 : kObCounterAtMax;
    } else {
      return StepInteger(v->value, kind);
    }
  }
};

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_NULLROWS_H_
