// ObInt64: a signed 64-bit integer whose every result, overflow included,
// is the same on every platform. Addition, subtraction and multiplication
// wrap modulo 2^64; shifts take any count (64 or more shifts everything
// out); division truncates toward zero and the remainder takes the
// dividend's sign. The most negative value stays itself under negation,
// Abs and division by -1.
#ifndef QUILLSTORE_OBINT64_H_
#define QUILLSTORE_OBINT64_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "obdefs.h"
#include "obkeycmp.h"

class ObString;

class QS_TM_API ObInt64 {
 public:
  // DO NOT CHANGE the order: arrays of stored objects use this layout, which
  // on the little-endian hosts we support is also that of int64_t.
  uint32_t low;
  int32_t high;

  ObInt64() : low(0), high(0) {}
  ObInt64(int v) : ObInt64(static_cast<int64_t>(v)) {}  // NOLINT: sign-extends
  ObInt64(unsigned int v) : low(v), high(0) {}          // NOLINT
  // Any 64-bit integer type (long, long long, signed or not): the 64 bits
  // as they are.
  template <class I, typename std::enable_if<std::is_integral<I>::value &&
                                                 sizeof(I) == 8,
                                             int>::type = 0>
  ObInt64(I v)  // NOLINT
      : ObInt64(FromBits(static_cast<uint64_t>(v))) {}
  ObInt64(uint32_t lowHalf, int32_t highHalf) : low(lowHalf), high(highHalf) {}
  // Keeps seven significant decimal digits (123456789.0 gives 123456800);
  // magnitudes above the largest double below 2^63 give +-(2^63 - 1), NaN
  // and magnitudes below 1 give 0.
  ObInt64(double d);  // NOLINT

  int64_t Get8b() const { return ToSigned(GetU8b()); }
  uint64_t GetU8b() const {
    return uint64_t{static_cast<uint32_t>(high)} << 32 | low;
  }

  friend bool operator==(const ObInt64& a, const ObInt64& b) {
    return a.low == b.low && a.high == b.high;
  }
  friend bool operator!=(const ObInt64& a, const ObInt64& b) {
    return !(a == b);
  }
  friend bool operator<(const ObInt64& a, const ObInt64& b) {
    return a.Get8b() < b.Get8b();
  }
  friend bool operator>(const ObInt64& a, const ObInt64& b) { return b < a; }
  friend bool operator<=(const ObInt64& a, const ObInt64& b) {
    return !(b < a);
  }
  friend bool operator>=(const ObInt64& a, const ObInt64& b) {
    return !(a < b);
  }

  // Arithmetic on the unsigned 64 bits: wrap-around is defined there.
  friend ObInt64 operator+(const ObInt64& a, const ObInt64& b) {
    return FromBits(a.GetU8b() + b.GetU8b());
  }
  friend ObInt64 operator-(const ObInt64& a, const ObInt64& b) {
    return FromBits(a.GetU8b() - b.GetU8b());
  }
  // The wrapped product is also what the most negative value needs: itself
  // times an odd factor, 0 times an even one.
  friend ObInt64 operator*(const ObInt64& a, const ObInt64& b) {
    return FromBits(a.GetU8b() * b.GetU8b());
  }
  friend ObInt64 operator/(const ObInt64& a, const ObInt64& b) {
    return a.Division(b, 0);
  }
  friend ObInt64 operator%(const ObInt64& a, const ObInt64& b) {
    return a.Division(b, 1);
  }
  friend ObInt64 operator&(const ObInt64& a, const ObInt64& b) {
    return ObInt64(a.low & b.low, a.high & b.high);
  }
  friend ObInt64 operator|(const ObInt64& a, const ObInt64& b) {
    return ObInt64(a.low | b.low, a.high | b.high);
  }

  // Compound assignments return a copy of the new value, not a reference.
  ObInt64 operator+=(const ObInt64& b) { return *this = *this + b; }
  ObInt64 operator-=(const ObInt64& b) { return *this = *this - b; }
  ObInt64 operator*=(const ObInt64& b) { return *this = *this * b; }
  ObInt64 operator/=(const ObInt64& b) { return *this = *this / b; }
  ObInt64 operator%=(const ObInt64& b) { return *this = *this % b; }
  ObInt64 operator++() { return *this = *this + ObInt64(1); }
  ObInt64 operator--() { return *this = *this - ObInt64(1); }

  ObInt64 operator-() const { return FromBits(uint64_t{0} - GetU8b()); }
  ObInt64 operator~() const { return ObInt64(~low, ~high); }

  // Any count: 64 or more gives 0, or -1 for a negative value shifted right
  // (which is what a shift by 63 gives). Branch-free: the counts of a
  // computation are rarely predictable.
  ObInt64 operator<<(uint32_t n) const {
    return FromBits((GetU8b() << (n & 63)) & (uint64_t{0} - (n < 64)));
  }
  ObInt64 operator>>(uint32_t n) const {
    const uint64_t u = GetU8b();
    const uint64_t sign = uint64_t{0} - (u >> 63);  // all ones when negative
    // Shift the complement of a negative value so that ones come in.
    return FromBits(sign ^ ((u ^ sign) >> (n < 63 ? n : 63)));
  }
  ObInt64 operator<<=(uint32_t n) { return *this = *this << n; }
  ObInt64 operator>>=(uint32_t n) { return *this = *this >> n; }

  // The quotient (wantRemainder 0) or the remainder. A zero divisor is
  // reported through ORLO_assert and both results are then 0, except that
  // the most negative dividend leaves the remainder -1.
  ObInt64 Division(const ObInt64& divisor, int32_t wantRemainder) const {
    const int64_t a = Get8b();
    const int64_t b = divisor.Get8b();
    // Native division is exact outside these three cases.
    if (b != 0 && a != kMin && b != kMin)
      return ObInt64(wantRemainder != 0 ? a % b : a / b);
    return DivisionOutsideNative(divisor, wantRemainder);
  }

  ObInt64 Abs() const { return high < 0 ? -*this : *this; }

  // Appends the value printed with `format` (null: "%S", the signed
  // decimal value; "%%" is '%', '%' and any other character that character).
  ObString& PrintToObString(ObString& text, const char* format) const;
  // Reads the value from `text` under `format`: "%S" reads an optional sign
  // and decimal digits (wrapping modulo 2^64), other format characters must
  // match. A text without digits where "%S" stands leaves the value as it was.
  void ScanFromObString(const ObString& text, const char* format);

 private:
  static constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
  // The value of the 64 bits `v`. One 64-bit store where the halves lie as
  // an int64_t does (compilers do not merge the two half stores).
  static ObInt64 FromBits(uint64_t v) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    ObInt64 r;
    std::memcpy(static_cast<void*>(&r), &v, sizeof r);  // trivially copyable
    return r;
#else
    const uint32_t h = static_cast<uint32_t>(v >> 32);
    return ObInt64(static_cast<uint32_t>(v),
                   h <= INT32_MAX ? static_cast<int32_t>(h)
                                  : -static_cast<int32_t>(~h) - 1);
#endif
  }
  // Two's complement reinterpretation spelled out, so that it is defined
  // behaviour in C++17 too; compilers reduce it to nothing.
  static int64_t ToSigned(uint64_t u) {
    return u <= INT64_MAX ? static_cast<int64_t>(u)
                          : -static_cast<int64_t>(~u) - 1;
  }
  ObInt64 DivisionOutsideNative(const ObInt64& divisor,
                                int32_t wantRemainder) const;
};
static_assert(sizeof(ObInt64) == 8 && alignof(ObInt64) == 4,
              "ObInt64 is two 32-bit halves");
static_assert(offsetof(ObInt64, low) == 0 && offsetof(ObInt64, high) == 4,
              "ObInt64 keeps its low half first");

// The limits of ObInt64 as for int64_t, so that generic code over numbers
// (counters, nullable rows) treats it as a signed 64-bit integer.
namespace std {
template <>
struct numeric_limits<ObInt64> : numeric_limits<int64_t> {
  static ObInt64 min() { return ObInt64(std::numeric_limits<int64_t>::min()); }
  static ObInt64 lowest() { return min(); }
  static ObInt64 max() { return ObInt64(std::numeric_limits<int64_t>::max()); }
};
}  // namespace std

// Key comparator of ObInt64: signed 64-bit order, stored forms in the byte
// order of the format code.
QS_DECLARE_KEY_COMPARE(Int64Compare);

#endif  // QUILLSTORE_OBINT64_H_
