// L*a*b* against its formulas in single steps of scalar arithmetic.
#include "support/cie.h"

namespace zumtest {
namespace {

// ---- The formulas

float root(float v, int terms) {
  const double cell = truncated(v * 127.998046875f) + 1;
  return cubeRoot(v, RootAt(cell / 127.998046875 + 0.0001), terms, 0x3C9BA868, 0x3C81B6EF);
}

float curve(float v, int terms) {
  const float line = 7.787f * v;
  return v <= ofBits(0x3C1118C2) ? line + ofBits(0x3E0D3DCB) : root(v, terms);
}

template <class Code>
Colour<Code> toLab(const Colour<Zum8u>& rgb, bool) {
  const bool bytes = sizeof(Code) == 1;
  const int terms = bytes ? 6 : 8;
  const Floats xyz = rgbToXyz(levels(rgb));
  const float x = xyz[0] * ofBits(0x3B873353), y = xyz[1] * ofBits(0x3B808081), z = xyz[2] * ofBits(0x3B6C0DB2);
  const float scaledRoot = 116 * root(y, terms), lightness = y <= 0.008856f ? 903.3f * y : scaledRoot - 16;
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
  const Floats rgb = xyzToRgb({x, y, z});
  return {byte(rgb[0]), byte(rgb[1]), byte(rgb[2])};
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
