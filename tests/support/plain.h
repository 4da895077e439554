// Arithmetic in plain numbers, one at a time, for the statements of what conversions compute.
#pragma once

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "../src/frame/reciprocal.h"
#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace zumtest {

inline int clamp(int v) { return std::clamp(v, 0, 255); }

// v over 2 to the bits, rounded down.
inline int down(int64_t v, int bits) {
  return static_cast<int>(v >= 0 ? v >> bits : -((-v + (int64_t{1} << bits) - 1) >> bits));
}
// What multiplications of 16-bit lanes keep of a product: the high half, or the high half of twice it, rounded.
inline int high(int64_t c, int x) { return down(c * x, 16); }
inline int rounded15(int64_t c, int x) { return down(c * x + (1 << 14), 15); }

inline float ofBits(uint32_t bits) {
  float value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}
inline uint32_t bitsOf(float value) {
  uint32_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// To integers as x86 does it: the lowest where the value is out of range or none.
inline int truncated(double x) { return x > -2147483649.0 && x < 2147483648.0 ? static_cast<int>(x) : INT_MIN; }
inline int nearest(float x) { return truncated(std::nearbyint(x)); }

// The estimate of 1 / x by the processor, or by the table where it has none.
inline float estimate(float x) {
#if defined(__x86_64__) || defined(__i386__)
  return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x)));
#else
  return ofBits(zum::reciprocalBits(bitsOf(x)));
#endif
}

// The estimate refined once.
inline float refined(float x) {
  const float r = estimate(x), twice = r + r, square = x * r * r;
  return twice - square;
}

}  // namespace zumtest
