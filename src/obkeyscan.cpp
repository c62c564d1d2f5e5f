// The equal-prefix scan of the key comparators. Long keys spend most of
// their time here, so it runs 32 bytes a step where the processor can.
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define QS_X86 1
#endif

#include "obkeyloop.h"

namespace obkey {
namespace {

size_t ScanWords(const uint8_t* a, const uint8_t* b, size_t i, size_t n) {
  for (; i + 8 <= n; i += 8) {
    uint64_t x, y;
    std::memcpy(&x, a + i, 8);
    std::memcpy(&y, b + i, 8);
    if (x != y) break;
  }
  for (; i < n; ++i) {
    if (a[i] != b[i]) return i;
  }
  return n;
}

#if defined(QS_X86)
// The unrolled loops test four vectors with one branch; the single-vector
// loops then find the byte.
size_t ScanSse2(const uint8_t* a, const uint8_t* b, size_t i, size_t n) {
#define QS_EQ16(k)                                                           \
  _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a + (k))), \
                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + (k))))
  for (; i + 64 <= n; i += 64) {
    __m128i e = _mm_and_si128(_mm_and_si128(QS_EQ16(i), QS_EQ16(i + 16)),
                              _mm_and_si128(QS_EQ16(i + 32), QS_EQ16(i + 48)));
    if (_mm_movemask_epi8(e) != 0xFFFF) break;
  }
  for (; i + 16 <= n; i += 16) {
    unsigned equal = static_cast<unsigned>(_mm_movemask_epi8(QS_EQ16(i)));
    if (equal != 0xFFFF) return i + static_cast<size_t>(__builtin_ctz(~equal));
  }
#undef QS_EQ16
  return ScanWords(a, b, i, n);
}

__attribute__((target("avx2"))) size_t ScanAvx2(const uint8_t* a,
                                                const uint8_t* b, size_t i,
                                                size_t n) {
#define QS_EQ32(k)                                                   \
  _mm256_cmpeq_epi8(                                                 \
      _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + (k))), \
      _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + (k))))
  for (; i + 128 <= n; i += 128) {
    __m256i e =
        _mm256_and_si256(_mm256_and_si256(QS_EQ32(i), QS_EQ32(i + 32)),
                         _mm256_and_si256(QS_EQ32(i + 64), QS_EQ32(i + 96)));
    if (static_cast<unsigned>(_mm256_movemask_epi8(e)) != 0xFFFFFFFFu) break;
  }
  for (; i + 32 <= n; i += 32) {
    unsigned equal = static_cast<unsigned>(_mm256_movemask_epi8(QS_EQ32(i)));
    if (equal != 0xFFFFFFFFu)
      return i + static_cast<size_t>(__builtin_ctz(~equal));
  }
#undef QS_EQ32
  // Leave the wide registers clean before scalar code runs.
  _mm256_zeroupper();
  return ScanWords(a, b, i, n);
}

bool HasAvx2() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2");
}
const bool kHasAvx2 = HasAvx2();
#endif

}  // namespace

size_t FirstDifference(const uint8_t* a, const uint8_t* b, size_t from,
                       size_t n) {
#if defined(QS_X86)
  return kHasAvx2 ? ScanAvx2(a, b, from, n) : ScanSse2(a, b, from, n);
#else
  return ScanWords(a, b, from, n);
#endif
}

}  // namespace obkey
