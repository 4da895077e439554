// L*a*b* against its formulas in single steps of scalar arithmetic.
#include <cmath>

#include "support/colours.h"

namespace zumtest {
namespace {

// ---- The formulas

float cubeRoot(float v, int terms) {
  const uint32_t coefficients[] = {0x3EAAAAAB, 0x3DE38E39, 0x3D7CD6EA, 0x3D288F47,
                                   0x3CF7388A, 0x3CC0486B, 0x3C9BA868, 0x3C81B6EF};
  const double point = (truncated(v * 127.998046875f) + 1) / 127.998046875 + 0.0001;
  const float root = static_cast<float>(std::floor(std::cbrt(point) * 1e6 + 0.5) / 1e6);
  const float square = root * root, cube = square * root, distance = v - cube;
  const float t = distance * static_cast<float>(1 / point);
  float sum = 1, power = 1;
  for (int i = 0; i < terms; ++i) {
    power *= t;
    const float term = ofBits(coefficients[i]) * power;
    sum += i % 2 ? -term : term;
  }
  return sum * root;
}

float curve(float v, int terms) {
  const float line = 7.787f * v;
  return v <= ofBits(0x3C1118C2) ? line + ofBits(0x3E0D3DCB) : cubeRoot(v, terms);
}

float sum(const float (&weights)[3], float a, float b, float c) {
  const float first = weights[0] * a, second = weights[1] * b, third = weights[2] * c, both = first + second;
  return both + third;
}

template <class Code>
Colour<Code> toLab(const Colour<Zum8u>& rgb, bool) {
  const bool bytes = sizeof(Code) == 1;
  const int terms = bytes ? 6 : 8;
  const float x = sum({0.412453f, 0.35758f, 0.180423f}, rgb[0], rgb[1], rgb[2]) * ofBits(0x3B873353),
              y = sum({0.212671f, 0.71516f, 0.072169f}, rgb[0], rgb[1], rgb[2]) * ofBits(0x3B808081),
              z = sum({0.019334f, 0.119193f, 0.950227f}, rgb[0], rgb[1], rgb[2]) * ofBits(0x3B6C0DB2);
  const float scaledRoot = 116 * cubeRoot(y, terms), lightness = y <= 0.008856f ? 903.3f * y : scaledRoot - 16;
  const float red = (curve(x, terms) - curve(y, terms)) * 500, blue = (curve(y, terms) - curve(z, terms)) * 200;
  const float a = red + 128, b = blue + 128, scale = bytes ? 1 : 255;
  return {static_cast<Code>(nearest(lightness * ofBits(bytes ? 0x40233333 : 0x4423D666))),
          static_cast<Code>(nearest(a * scale)), static_cast<Code>(nearest(b * scale))};
}

Zum8u byte(float v) { return static_cast<Zum8u>(std::min(std::max(nearest(v), 0), 255)); }

template <class Code>
Colour<Zum8u> toRgb(const Colour<Code>& lab, bool) {
  const bool bytes = sizeof(Code) == 1;
  const float lightness = lab[0] * ofBits(bytes ? 0x3EC8C8C9 : 0x3AC800C8), unit = bytes ? 1 : ofBits(0x3B808081);
  const float red = lab[1] * unit, blue = lab[2] * unit, a = (red - 128) * 0.002f, b = (blue - 128) * 0.005f;
  const float fy = (lightness + 16) * ofBits(0x3C0D3DCB), fx = a + fy, fz = fy - b;
  const float x = fx * fx * fx * 242.366f, y = fy * fy * fy * 255, z = fz * fz * fz * 277.632f;
  return {byte(sum({3.240479f, -1.53715f, -0.498535f}, x, y, z)),
          byte(sum({-0.969256f, 1.875991f, 0.041556f}, x, y, z)),
          byte(sum({0.055648f, -0.204043f, 1.057311f}, x, y, z))};
}

// ---- Comparisons

TEST(Lab, Forward) {
  compare("zumiBGRToLab_8u_C3R", 1, everyNth(61), toLab<Zum8u>);
  compare("zumiBGRToLab_8u16u_C3R", 1, everyNth(61), toLab<Zum16u>);
}

TEST(Lab, Inverse) {
  compare("zumiLabToBGR_8u_C3R", 1, everyNth(61), toRgb<Zum8u>);
  compare("zumiLabToBGR_16u8u_C3R", 1, deepColours<Zum16u>(), toRgb<Zum16u>);
}

TEST(Lab, KnownColours) {
  const Colour<int> colours[][2] = {{{0, 0, 0}, {0, 128, 128}},         {{255, 255, 255}, {255, 128, 128}},
                                    {{128, 128, 128}, {194, 128, 128}}, {{5, 5, 5}, {39, 128, 128}},
                                    {{0, 0, 255}, {82, 207, 20}},       {{0, 255, 0}, {224, 42, 211}},
                                    {{255, 0, 0}, {136, 208, 195}}};
  for (const auto& [rgb, lab] : colours) expectColour("zumiBGRToLab_8u_C3R", rgb, lab);
  for (int l = 0; l <= 22; ++l) {
    const int gray = l <= 12 ? 1 : 2;
    expectColour<int>("zumiLabToBGR_8u_C3R", {l, 128, 128}, {gray, gray, gray});
  }
  expectColour<int>("zumiLabToBGR_8u_C3R", {255, 128, 128}, {255, 255, 255});
}

}  // namespace
}  // namespace zumtest
