// The row operations that the identity types (ObObjId, ObClassId, ObRef,
// ObSeal) share, written once over a traits class per type. Internal to the
// library.
//
// Stored forms are packed fields without padding; DO NOT CHANGE their
// layouts or byte orders: they are embedded in records and index keys.
#ifndef QUILLSTORE_SRC_OBIDENTITY_H_
#define QUILLSTORE_SRC_OBIDENTITY_H_

#include <cstdint>
#include <cstring>

#include "obidxbounds.h"
#include "obkeyloop.h"
#include "obtypevl.h"
#include "obtyphash.h"
#include "typemgr/rowops.h"

namespace obident {

// Fields of a stored form, most significant byte first when `big`.
inline void Put16(uint8_t* p, uint16_t v, bool big) {
  p[big ? 0 : 1] = static_cast<uint8_t>(v >> 8);
  p[big ? 1 : 0] = static_cast<uint8_t>(v);
}
inline void Put32(uint8_t* p, uint32_t v, bool big) {
  for (int i = 0; i < 4; ++i)
    p[big ? 3 - i : i] = static_cast<uint8_t>(v >> (8 * i));
}
inline uint16_t Get16(const uint8_t* p, bool big) {
  return static_cast<uint16_t>(big ? p[0] << 8 | p[1] : p[1] << 8 | p[0]);
}
// Whole-word expressions that compilers turn into one load.
inline uint32_t Get32(const uint8_t* p, bool big) {
  return big ? uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 |
                   uint32_t{p[2]} << 8 | p[3]
             : uint32_t{p[3]} << 24 | uint32_t{p[2]} << 16 |
                   uint32_t{p[1]} << 8 | p[0];
}

// Stored keys compare byte by byte in an order of their own. `a` and `b`
// hold the bytes of two keys in that order, the first most significant;
// the result is the unsigned difference of the first bytes that differ.
inline int32_t KeyByteDifference(uint64_t a, uint64_t b) {
  if (a == b) return 0;
  const int shift = (63 - __builtin_clzll(a ^ b)) & ~7;
  return static_cast<int32_t>((a >> shift) & 0xFF) -
         static_cast<int32_t>((b >> shift) & 0xFF);
}

// Traits T describe one type:
//   using Value;                        the class
//   static constexpr uint32_t kStored;  bytes of the stored form
//   static bool Big(uint8_t fmt);       most significant byte first?
//   static void StoreOne(uint8_t*, const Value&, bool big);
//   static void LoadOne(Value&, const uint8_t*, bool big);
//   static int32_t CompareMemory(const Value&, const Value&);
//   static int32_t CompareStored(const uint8_t*, const uint8_t*);
//   static uint32_t Fold(const Value&);   the hash term: the fields that
//                                         take part in equality
//   static double Position(const Value&, bool stored);  key order as a
//                                         number, in the form's own order
template <class T>
struct Ops {
  using V = typename T::Value;
  static constexpr uint32_t kMem = sizeof(V);

  // Format 8 copies the memory form, as the fixed-width routines do.
  static uint32_t Store(void* dest, const void* src, uint8_t format,
                        uint32_t count) {
    const uint8_t fmt = format & kObFormatMask;
    if (fmt == kObFormatMemory) {
      if (count != 0 && dest != src) std::memmove(dest, src, count * kMem);
      return count * kMem;
    }
    uint8_t* d = static_cast<uint8_t*>(dest);
    const uint8_t* s = static_cast<const uint8_t*>(src);
    for (uint32_t i = 0; i < count; ++i)
      T::StoreOne(d + i * T::kStored, obkey::ReadNative<V>(s + i * kMem),
                  T::Big(fmt));
    return count * T::kStored;
  }

  static uint32_t Load(void* dest, const void* src, uint8_t format,
                       uint32_t count) {
    const uint8_t fmt = format & kObFormatMask;
    if (fmt == kObFormatMemory) return Store(dest, src, format, count);
    V* d = static_cast<V*>(dest);
    const uint8_t* s = static_cast<const uint8_t*>(src);
    for (uint32_t i = 0; i < count; ++i)
      T::LoadOne(d[i], s + i * T::kStored, T::Big(fmt));
    return count * T::kStored;
  }

  static uint32_t NullSizeGet(uint32_t count) { return count * T::kStored; }
  static uint32_t SizeGet(const void*, uint8_t, uint8_t, uint32_t count) {
    return count * T::kStored;
  }
  static uint32_t SizeGetFromMemFile(MemFile*, uint8_t, uint32_t count) {
    return count * T::kStored;
  }

  static int32_t Compare(uint8_t flags, uint32_t len1, const void* p1,
                         uint32_t len2, const void* p2, uint16_t,
                         uint32_t count, int32_t& status) {
    if (flags == kObFormatMemory) {
      return obkey::KeyLoop<kMem>(len1, p1, len2, p2, count, status,
                                  [](const uint8_t* a, const uint8_t* b) {
                                    return T::CompareMemory(
                                        obkey::ReadNative<V>(a),
                                        obkey::ReadNative<V>(b));
                                  });
    }
    return obkey::KeyLoop<T::kStored>(len1, p1, len2, p2, count, status,
                                      T::CompareStored);
  }

  static uint32_t Hash(uint8_t format, uint32_t len, const void* value,
                       uint32_t count, int32_t& status) {
    const uint8_t fmt = format & kObFormatMask;
    if (fmt == kObFormatMemory) {
      return obhash::HashLoop<kMem>(
          len, value, count, status,
          [](const uint8_t* p) { return T::Fold(obkey::ReadNative<V>(p)); });
    }
    const bool big = T::Big(fmt);
    return obhash::HashLoop<T::kStored>(len, value, count, status,
                                        [big](const uint8_t* p) {
                                          V v;
                                          T::LoadOne(v, p, big);
                                          return T::Fold(v);
                                        });
  }

  static float EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                            uint8_t flags, uint32_t count, void* narrow) {
    const uint8_t fmt = flags & kObFormatMask;
    auto* n = static_cast<ObIdxBounds*>(narrow);
    if (fmt == kObFormatMemory) {
      return obrange::EvalAndBoundNumeric(
          bounds, op, value, kMem, count, n, [](const uint8_t* p) {
            return T::Position(obkey::ReadNative<V>(p), false);
          });
    }
    const bool big = T::Big(fmt);
    return obrange::EvalAndBoundNumeric(bounds, op, value, T::kStored, count, n,
                                        [big](const uint8_t* p) {
                                          V v;
                                          T::LoadOne(v, p, big);
                                          return T::Position(v, true);
                                        });
  }

  static uint32_t Translate(void* dest, uint8_t destFormat, uint32_t destLen,
                            const void* src, uint8_t srcFormat, uint32_t srcLen,
                            uint32_t count) {
    return obrow::FixedTranslate<T::kStored, Store, Load, kMem>(
        dest, destFormat, destLen, src, srcFormat, srcLen, count);
  }

  static void* Create(uint32_t count) { return obrow::PlainCreate<V>(count); }
  static void* Delete(void* values, uint32_t count) {
    return obrow::PlainDelete<V>(values, count);
  }
};

}  // namespace obident

// Defines the static row operations of `Class` (declared in its public
// header) as those of `OpsType`, and its row printer and scanner through
// its PrintToObString and ScanFromObString members. The printer replaces
// `out` with the text of the first value; the scanner reads the first.
#define OBIDENT_DEFINE_ROW_OPS(Class, OpsType)                                \
  void* Class::Create(uint32_t count) { return OpsType::Create(count); }      \
  void* Class::Delete(void* values, uint32_t count) {                         \
    return OpsType::Delete(values, count);                                    \
  }                                                                           \
  uint32_t Class::Store(void* dest, const void* src, uint8_t format,          \
                        uint32_t count) {                                     \
    return OpsType::Store(dest, src, format, count);                          \
  }                                                                           \
  uint32_t Class::Load(void* dest, const void* src, uint8_t format,           \
                       uint32_t count) {                                      \
    return OpsType::Load(dest, src, format, count);                           \
  }                                                                           \
  uint32_t Class::SizeGet(const void* value, uint8_t format, uint8_t format2, \
                          uint32_t count) {                                   \
    return OpsType::SizeGet(value, format, format2, count);                   \
  }                                                                           \
  uint32_t Class::SizeGetFromMemFile(MemFile* file, uint8_t format,           \
                                     uint32_t count) {                        \
    return OpsType::SizeGetFromMemFile(file, format, count);                  \
  }                                                                           \
  uint32_t Class::NullSizeGet(uint32_t count) {                               \
    return OpsType::NullSizeGet(count);                                       \
  }                                                                           \
  int32_t Class::Compare(uint8_t flags, uint32_t len1, const void* p1,        \
                         uint32_t len2, const void* p2, uint16_t options,     \
                         uint32_t count, int32_t& status) {                   \
    return OpsType::Compare(flags, len1, p1, len2, p2, options, count,        \
                            status);                                          \
  }                                                                           \
  uint32_t Class::Hash(uint8_t format, uint32_t len, const void* value,       \
                       uint32_t count, int32_t& status) {                     \
    return OpsType::Hash(format, len, value, count, status);                  \
  }                                                                           \
  float Class::EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,   \
                            uint8_t flags, uint32_t count, void* narrow) {    \
    return OpsType::EvalAndBound(bounds, op, value, flags, count, narrow);    \
  }                                                                           \
  uint32_t Class::Translate(void* dest, uint8_t destFormat, uint32_t destLen, \
                            const void* src, uint8_t srcFormat,               \
                            uint32_t srcLen, uint32_t count) {                \
    return OpsType::Translate(dest, destFormat, destLen, src, srcFormat,      \
                              srcLen, count);                                 \
  }                                                                           \
  ObString& Class::PrintToString(ObString& out, const void* values,           \
                                 const char* format, uint32_t) {              \
    out = "";                                                                 \
    return static_cast<const Class*>(values)->PrintToObString(out, format);   \
  }                                                                           \
  void* Class::ScanFromString(void* values, ObString& text,                   \
                              const char* format, uint32_t) {                 \
    if (values != nullptr)                                                    \
      static_cast<Class*>(values)->ScanFromObString(text, format);            \
    return values;                                                            \
  }

#endif  // QUILLSTORE_SRC_OBIDENTITY_H_
