// What XYZ, LUV and Lab share, in single steps of scalar arithmetic.
#pragma once

#include <cmath>

#include "support/colours.h"

namespace zumtest {

using Floats = Colour<float>;

inline Floats product(const float (&m)[9], const Floats& c) {
  Floats sums;
  for (int i = 0; i < 9; ++i) {
    const float term = m[i] * c[i % 3];
    sums[i / 3] = i % 3 == 0 ? term : sums[i / 3] + term;
  }
  return sums;
}
inline Floats rgbToXyz(const Floats& rgb) {
  return product({0.412453f, 0.35758f, 0.180423f, 0.212671f, 0.71516f, 0.072169f, 0.019334f, 0.119193f, 0.950227f},
                 rgb);
}
inline Floats xyzToRgb(const Floats& xyz) {
  return product({3.240479f, -1.53715f, -0.498535f, -0.969256f, 1.875991f, 0.041556f, 0.055648f, -0.204043f, 1.057311f},
                 xyz);
}

// A cube root of six decimals, from which those nearby are found by a series.
struct RootAt {
  float root, inverse;  // of the point

  explicit RootAt(double point)
      : root(static_cast<float>(std::floor(std::cbrt(point) * 1e6 + 0.5) / 1e6)),
        inverse(static_cast<float>(1 / point)) {}
};
inline float cubeRoot(float v, const RootAt& at, int terms, uint32_t seventh, uint32_t eighth) {
  const uint32_t factors[] = {0x3EAAAAAB, 0x3DE38E39, 0x3D7CD6EA, 0x3D288F47, 0x3CF7388A, 0x3CC0486B, seventh, eighth};
  const float square = at.root * at.root, cube = square * at.root, t = (v - cube) * at.inverse;
  float series = 1, power = 1;
  for (int i = 0; i < terms; ++i) {
    power *= t;
    const float term = ofBits(factors[i]) * power;
    series += i % 2 ? -term : term;
  }
  return series * at.root;
}

}  // namespace zumtest
