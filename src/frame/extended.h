// Extended precision: 64 bits of significand, every operation rounded to the nearest, ties to even.
#ifndef ZUM_FRAME_EXTENDED_H
#define ZUM_FRAME_EXTENDED_H

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zum {

#ifdef __SIZEOF_INT128__
// The same in integers, for processors without the format. Exponents are not limited: of what is computed here nothing
// comes near the limits of the format.
class SoftExtended {
 public:
  SoftExtended(double x) : negative_(std::signbit(x)) {
    if (!std::isfinite(x)) {
      special_ = x;
    } else if (x != 0) {
      const double fraction = std::frexp(std::fabs(x), &exponent_);  // in [0.5, 1)
      significand_ = uint64_t(std::ldexp(fraction, 64));
      exponent_ -= 64;
    }
  }

  explicit operator double() const {
    return special() ? special_ : withSign(std::ldexp(double(significand_), exponent_));
  }

  // A double that is rounded to odd on the way has bits enough for the second rounding to be the right one.
  explicit operator float() const {
    if (special()) return float(special_);
    const uint64_t odd = (significand_ >> 11) | ((significand_ & 0x7FF) != 0);
    return float(withSign(std::ldexp(double(odd), exponent_ + 11)));
  }

  // Truncates. The value must be in the range of the type.
  explicit operator int32_t() const {
    if (exponent_ <= -64) return 0;
    const int32_t magnitude = int32_t(significand_ >> -exponent_);
    return negative_ ? -magnitude : magnitude;
  }

  friend SoftExtended operator*(SoftExtended a, SoftExtended b) {
    if (a.special() || b.special()) return double(a) * double(b);
    return rounded(a.negative_ != b.negative_, Wide{a.significand_} * b.significand_, a.exponent_ + b.exponent_);
  }

  friend SoftExtended operator+(SoftExtended a, SoftExtended b) {
    if (a.special() || b.special()) return double(a) + double(b);
    if (a.significand_ == 0 && b.significand_ == 0) return a.negative_ && b.negative_ ? -0.0 : 0.0;
    if (a.significand_ == 0) return b;
    if (b.significand_ == 0) return a;
    if (a.exponent_ < b.exponent_) std::swap(a, b);
    // The larger has 63 bits below it. What the smaller loses under them only matters as not being zero.
    const int shift = a.exponent_ - b.exponent_;
    const Wide large = Wide{a.significand_} << 63;
    const Wide whole = Wide{b.significand_} << 63;
    Wide small = shift < 127 ? whole >> shift : 0;
    if (shift >= 127 || small << shift != whole) small |= 1;
    if (a.negative_ == b.negative_) return rounded(a.negative_, large + small, a.exponent_ - 63);
    if (large < small) return rounded(b.negative_, small - large, a.exponent_ - 63);
    return rounded(large != small && a.negative_, large - small, a.exponent_ - 63);
  }

  friend SoftExtended operator-(SoftExtended a, SoftExtended b) {
    b.negative_ = !b.negative_;
    b.special_ = -b.special_;
    return a + b;
  }

 private:
  __extension__ typedef unsigned __int128 Wide;

  static SoftExtended rounded(bool negative, Wide value, int exponent) {
    SoftExtended result = 0.0;
    result.negative_ = negative;
    if (value == 0) return result;
    const uint64_t high = uint64_t(value >> 64);
    const int leading = high != 0 ? __builtin_clzll(high) : 64 + __builtin_clzll(uint64_t(value));
    value <<= leading;
    exponent += 64 - leading;
    uint64_t significand = uint64_t(value >> 64);
    const uint64_t below = uint64_t(value);
    constexpr uint64_t kHalf = uint64_t{1} << 63;
    if (below > kHalf || (below == kHalf && (significand & 1) != 0)) {
      if (++significand == 0) {
        significand = kHalf;
        ++exponent;
      }
    }
    result.significand_ = significand;
    result.exponent_ = exponent;
    return result;
  }

  bool special() const { return special_ != 0; }
  double withSign(double magnitude) const { return negative_ ? -magnitude : magnitude; }

  uint64_t significand_ = 0;  // zero, or the highest bit is set
  int exponent_ = 0;          // of the lowest bit
  bool negative_;
  double special_ = 0;  // the value if it is infinite or not a number
};

#endif

#if LDBL_MANT_DIG == 64
using Extended = long double;
#else
using Extended = SoftExtended;
#endif

}  // namespace zum

#endif
