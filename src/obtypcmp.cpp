// Key comparators of the fixed-width types.
#include "obbs.h"
#include "obkeycmp.h"
#include "obkeyloop.h"

using obkey::Cmp3;
using obkey::KeyLoop;

namespace {

inline uint8_t FormatOf(uint8_t flags) { return flags & kObFormatMask; }

// Integers of width sizeof(T): native for formats 8 and 1, most significant
// byte first for 2, otherwise through the base-services routine `conv`
// (null: least significant byte first, assembled here).
template <class T>
int32_t CompareIntegers(uint8_t flags, uint32_t len1, const void* p1,
                        uint32_t len2, const void* p2, uint32_t count,
                        int32_t& status,
                        uint32_t (*conv)(void*, const void*, uint8_t)) {
  constexpr uint32_t W = sizeof(T);
  const uint8_t fmt = FormatOf(flags);
  if (obkey::IsNativeFormat(fmt)) {
    return KeyLoop<W>(len1, p1, len2, p2, count, status,
                      [](const uint8_t* a, const uint8_t* b) {
                        return Cmp3(obkey::ReadNative<T>(a),
                                    obkey::ReadNative<T>(b));
                      });
  }
  if (fmt == kObFormatBig) {
    return KeyLoop<W>(len1, p1, len2, p2, count, status,
                      [](const uint8_t* a, const uint8_t* b) {
                        return Cmp3(obkey::ReadBig<T>(a), obkey::ReadBig<T>(b));
                      });
  }
  return KeyLoop<W>(len1, p1, len2, p2, count, status,
                    [fmt, conv](const uint8_t* a, const uint8_t* b) {
                      return Cmp3(obkey::ReadConverted<T>(a, fmt, conv),
                                  obkey::ReadConverted<T>(b, fmt, conv));
                    });
}

// 16-bit values: every stored format but 2 is least significant byte first.
template <class T>
int32_t CompareShorts(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint32_t count,
                      int32_t& status) {
  const uint8_t fmt = FormatOf(flags);
  if (obkey::IsNativeFormat(fmt) || fmt == kObFormatBig) {
    return CompareIntegers<T>(flags, len1, p1, len2, p2, count, status,
                              nullptr);
  }
  return KeyLoop<2>(len1, p1, len2, p2, count, status,
                    [](const uint8_t* a, const uint8_t* b) {
                      auto le = [](const uint8_t* p) {
                        uint16_t u = static_cast<uint16_t>(p[0] | p[1] << 8);
                        T v;
                        std::memcpy(&v, &u, sizeof v);
                        return v;
                      };
                      return Cmp3(le(a), le(b));
                    });
}

uint32_t IntLoadOne(void* dest, const void* src, uint8_t format) {
  return IntLoad(dest, src, format, 1);
}
uint32_t FloatStoreOne(void* dest, const void* src, uint8_t format) {
  return FloatStore(dest, src, format, 1);
}
uint32_t DoubleStoreOne(void* dest, const void* src, uint8_t format) {
  return DoubleStore(dest, src, format, 1);
}

template <class F, class Bits>
int32_t CompareFloats(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint32_t count,
                      int32_t& status,
                      uint32_t (*conv)(void*, const void*, uint8_t)) {
  constexpr uint32_t W = sizeof(F);
  const uint8_t fmt = FormatOf(flags);
  if (obkey::IsNativeFormat(fmt)) {
    return KeyLoop<W>(len1, p1, len2, p2, count, status,
                      [](const uint8_t* a, const uint8_t* b) {
                        return obkey::CompareFloating(obkey::ReadNative<F>(a),
                                                      obkey::ReadNative<F>(b));
                      });
  }
  if (fmt == kObFormatBig) {
    return KeyLoop<W>(len1, p1, len2, p2, count, status,
                      [](const uint8_t* a, const uint8_t* b) {
                        return obkey::CompareFloating(
                            obkey::ReadBig<F, Bits>(a),
                            obkey::ReadBig<F, Bits>(b));
                      });
  }
  return KeyLoop<W>(len1, p1, len2, p2, count, status,
                    [fmt, conv](const uint8_t* a, const uint8_t* b) {
                      return obkey::CompareFloating(
                          obkey::ReadConverted<F>(a, fmt, conv),
                          obkey::ReadConverted<F>(b, fmt, conv));
                    });
}

}  // namespace

int32_t CharCompare(uint8_t, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t, uint32_t count, int32_t& status) {
  return KeyLoop<1>(len1, p1, len2, p2, count, status,
                    [](const uint8_t* a, const uint8_t* b) {
                      return Cmp3(static_cast<int8_t>(*a),
                                  static_cast<int8_t>(*b));
                    });
}

int32_t ByteCompare(uint8_t, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t, uint32_t count, int32_t& status) {
  return KeyLoop<1>(
      len1, p1, len2, p2, count, status,
      [](const uint8_t* a, const uint8_t* b) { return Cmp3(*a, *b); });
}

int32_t ShortCompare(uint8_t flags, uint32_t len1, const void* p1,
                     uint32_t len2, const void* p2, uint16_t, uint32_t count,
                     int32_t& status) {
  return CompareShorts<int16_t>(flags, len1, p1, len2, p2, count, status);
}

int32_t WordCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t, uint32_t count, int32_t& status) {
  return CompareShorts<uint16_t>(flags, len1, p1, len2, p2, count, status);
}

// int is 4 bytes in memory; its stored width is whatever the base-services
// library reports for the format, which is 4 for every format it knows.
static_assert(sizeof(int) == 4, "int elements are 4 bytes in memory");

int32_t IntCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                   const void* p2, uint16_t, uint32_t count, int32_t& status) {
  return CompareIntegers<int32_t>(flags, len1, p1, len2, p2, count, status,
                                  IntLoadOne);
}

int32_t UnsignedCompare(uint8_t flags, uint32_t len1, const void* p1,
                        uint32_t len2, const void* p2, uint16_t, uint32_t count,
                        int32_t& status) {
  return CompareIntegers<uint32_t>(flags, len1, p1, len2, p2, count, status,
                                   IntLoadOne);
}

int32_t LongCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t, uint32_t count, int32_t& status) {
  return CompareIntegers<int32_t>(flags, len1, p1, len2, p2, count, status,
                                  LongStoreOne);
}

int32_t DwordCompare(uint8_t flags, uint32_t len1, const void* p1,
                     uint32_t len2, const void* p2, uint16_t, uint32_t count,
                     int32_t& status) {
  return CompareIntegers<uint32_t>(flags, len1, p1, len2, p2, count, status,
                                   LongStoreOne);
}

int32_t O_8BCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t, uint32_t count, int32_t& status) {
  return CompareIntegers<int64_t>(flags, len1, p1, len2, p2, count, status,
                                  O_8BStoreOne);
}

int32_t O_U8BCompare(uint8_t flags, uint32_t len1, const void* p1,
                     uint32_t len2, const void* p2, uint16_t, uint32_t count,
                     int32_t& status) {
  return CompareIntegers<uint64_t>(flags, len1, p1, len2, p2, count, status,
                                   O_8BStoreOne);
}

int32_t FloatCompare(uint8_t flags, uint32_t len1, const void* p1,
                     uint32_t len2, const void* p2, uint16_t, uint32_t count,
                     int32_t& status) {
  return CompareFloats<float, uint32_t>(flags, len1, p1, len2, p2, count,
                                        status, FloatStoreOne);
}

int32_t DoubleCompare(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint16_t, uint32_t count,
                      int32_t& status) {
  return CompareFloats<double, uint64_t>(flags, len1, p1, len2, p2, count,
                                         status, DoubleStoreOne);
}
