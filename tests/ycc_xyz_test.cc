// YCC and XYZ against their formulas in single steps of plain arithmetic.
#include "support/cie.h"

namespace zumtest {
namespace {

using Ints = Colour<int>;

// ---- The formulas

// How the columns behind the blocks convert 16-bit samples.
enum class Columns { kBlock, kUnsignedTail, kSignedTail };

struct Formulas {
  Ints (*bytes)(const Ints&, bool tail);
  Floats (*words)(const Floats&, Columns);  // samples of 0..65535; what is stored once truncated and limited
  Floats (*singles)(const Floats&);
};

Ints limited(const Ints& c) { return {std::clamp(c[0], 0, 255), std::clamp(c[1], 0, 255), std::clamp(c[2], 0, 255)}; }
float limited(float v) { return std::clamp(v, 0.0f, 1.0f); }
Floats limited(const Floats& c) { return {limited(c[0]), limited(c[1]), limited(c[2])}; }

Ints product(const Ints& c, const int (&m)[9], int bits) {
  Ints sums{};
  for (int i = 0; i < 9; ++i) sums[i / 3] += m[i] * c[i % 3];
  return limited(Ints{down(sums[0], bits), down(sums[1], bits), down(sums[2], bits)});
}
Ints xyzBytes(const Ints& c, bool tail) {
  return tail ? product(c, {27030, 23434, 11824, 13937, 46868, 4729, 1267, 7811, 62274}, 16)
              : product(c, {13515, 11717, 5912, 6969, 23434, 2365, 634, 3906, 31137}, 15);
}
Ints rgbBytesOfXyz(const Ints& c, bool tail) {
  return tail ? product(c, {212368, -100738, -32671, -63521, 122944, 2723, 3646, -13372, 69291}, 16)
              : product(c, {26546, -12591, -4083, -7939, 15368, 340, 456, -1671, 8661}, 13);
}
Floats yccOf(const Floats& c, float offset1, float offset2) {
  const float r = 0.299f * c[0], g = 0.587f * c[1], b = 0.114f * c[2], rg = r + g, luma = rg + b;
  const float blue = c[2] - luma, red = c[0] - luma, c1 = blue * 0.43686f, c2 = red * 0.53192f;
  return {luma * 0.7132668f, c1 + offset1, c2 + offset2};
}
Floats rgbOfYcc(const Floats& c, float offset1, float offset2) {
  const float y = c[0] * 1.3584f, blue = c[1] - offset1, red = c[2] - offset2, u = blue * 2.2179f, v = red * 1.8215f;
  const float ofU = u * 0.194f, ofV = v * 0.509f, green = y - ofU;
  return {y + v, green - ofV, y + u};
}

Ints yccBytes(const Ints& c, bool tail) {
  const auto [r, g, b] = c;
  if (tail) {
    const int t = 4898 * r + 9617 * g + 1867 * b, blue = down((b << 14) - t, 10), red = down((r << 14) - t, 10);
    return {((t >> 10) * 2921) >> 16, (down(blue * 1789, 16) + 156) & 255, (down(red * 2178, 16) + 137) & 255};
  }
  const int luma = (4898 * r >> 8) + (9617 * g >> 8) + (1867 * b >> 8);
  const int y = down(luma * 2921, 16), c1 = down((b * 64 - luma) * 1789, 16), c2 = down((r * 64 - luma) * 2178, 16);
  return limited(Ints{down(y, 2), down(c1 + 624, 2), down(c2 + 548, 2)});
}
Ints rgbBytesOfYcc(const Ints& c, bool tail) {
  if (tail) {
    const int y = 5564 * c[0], u = 9084 * c[1] - 1417104, v = 7460 * c[2] - 1022020;
    return limited(Ints{down(y + v, 12), down(y * 16 - down(u, 8) * 794 - down(v, 8) * 2084, 16), down(y + u, 12)});
  }
  const int y = 5563 * c[0] >> 8, u = down((c[1] - 156) * 128 * 18168, 16), v = down((c[2] - 137) * 128 * 14921, 16);
  return limited(Ints{down(y + v, 4), down(y / 2 + down(u * -6357, 16) + down(v * -16679, 16), 3), down(y + u, 4)});
}

Floats yccWords(const Floats& c, Columns columns) {
  Floats ycc = yccOf(c, 40092, 35209);
  if (columns == Columns::kBlock) return ycc;
  if (columns == Columns::kUnsignedTail) {
    const Floats y{0.213267f * c[0], 0.418688f * c[1], 0.0813124f * c[2]},
        c1{-0.130621f * c[0], 0.256437f * c[1], 0.387058f * c[2]},
        c2{0.372876f * c[0], 0.312237f * c[1], 0.0606389f * c[2]};
    ycc = {y[0] + y[1], c1[0] + 40092, c2[0] + 35209};
    ycc = {ycc[0] + y[2], ycc[1] - c1[1], ycc[2] - c2[1]};
    ycc = {ycc[0], ycc[1] + c1[2], ycc[2] - c2[2]};
  }
  for (float& v : ycc) v += 0.49999f;
  return ycc;
}
Floats rgbWords(const Floats& c, Columns columns) {
  if (columns != Columns::kUnsignedTail) return rgbOfYcc(c, 40092, 35209);
  const float y = c[0] * 1.3584f, u = c[1] - 40092, v = c[2] - 35209, red = 1.8215f * v, blue = u * 2.2179f;
  const float ofU = 0.4302726f * u, ofV = v * 0.92714345f, green = y - ofU;
  Floats rgb{red + y, green - ofV, y + blue};
  for (float& channel : rgb) channel += 0.49999f;
  return rgb;
}

constexpr float kUnitC1 = 0.6117647f, kUnitC2 = 0.5372549f;

const Formulas kToYcc{yccBytes, yccWords, [](const Floats& c) { return yccOf(c, kUnitC1, kUnitC2); }};
const Formulas kFromYcc{rgbBytesOfYcc, rgbWords,
                        [](const Floats& c) { return limited(rgbOfYcc(c, kUnitC1, kUnitC2)); }};
const Formulas kToXyz{xyzBytes, [](const Floats& c, Columns) { return rgbToXyz(c); },
                      [](const Floats& c) {
                        const Floats xyz = rgbToXyz(c);
                        return Floats{xyz[0], xyz[1], limited(xyz[2])};
                      }};
const Formulas kFromXyz{rgbBytesOfXyz, [](const Floats& c, Columns) { return xyzToRgb(c); },
                        [](const Floats& c) { return limited(xyzToRgb(c)); }};

// ---- Comparisons

template <class T>
Colour<T> expected(const Formulas& formulas, const Colour<T>& c, bool tail) {
  if constexpr (std::is_same_v<T, Zum32f>) {
    return formulas.singles(c);
  } else if constexpr (std::is_same_v<T, Zum8u>) {
    const Ints out = formulas.bytes({c[0], c[1], c[2]}, tail);
    return {static_cast<T>(out[0]), static_cast<T>(out[1]), static_cast<T>(out[2])};
  } else {
    const Columns columns = !tail ? Columns::kBlock : kLowest<T> ? Columns::kSignedTail : Columns::kUnsignedTail;
    const auto stored = [](float v) { return static_cast<T>(std::clamp(static_cast<int>(v), 0, 65535) + kLowest<T>); };
    const Floats out = formulas.words(levels(c), columns);
    return {stored(out[0]), stored(out[1]), stored(out[2])};
  }
}

// All depths and layouts of a conversion.
void check(const std::string& name, const Formulas& formulas) {
  const auto compareAs = [&](auto sample, const char* layouts, int block) {
    using T = decltype(sample);
    compare(name + layouts, block, anyColours<T>(1 << 16),
            [&](const Colour<T>& c, bool tail) { return expected(formulas, c, tail); });
  };
  compareAs(Zum8u(), "_8u_C3R", 8);
  compareAs(Zum8u(), "_8u_AC4R", 4);
  compareAs(Zum16u(), "_16u_*", 4);
  compareAs(Zum16s(), "_16s_*", 4);
  compareAs(Zum32f(), "_32f_*", 4);
  expectStepsInSamples(name + "_*");
}

TEST(YccXyz, RgbToYcc) { check("zumiRGBToYCC", kToYcc); }
TEST(YccXyz, YccToRgb) { check("zumiYCCToRGB", kFromYcc); }
TEST(YccXyz, RgbToXyz) { check("zumiRGBToXYZ", kToXyz); }
TEST(YccXyz, XyzToRgb) { check("zumiXYZToRGB", kFromXyz); }

TEST(YccXyz, KnownColours) {
  expectColour<int, int>("zumiRGBToXYZ_8u_C3R", {255, 255, 255}, {242, 255, 255}, {242, 254, 255});
  expectColour<int>("zumiXYZToRGB_8u_C3R", {255, 0, 0}, {255, 0, 14});
  expectColour<float>("zumiRGBToXYZ_32f_C3R", {1, 1, 1}, {0.950456f, 1, 1});
  expectColour<int>("zumiRGBToYCC_8u_C3R", {0, 0, 0}, {0, 156, 137});
  expectColour<int, int>("zumiRGBToYCC_16u_C3R", {1, 1, 1}, {0, 40092, 35209}, {1, 40092, 35209});
}

}  // namespace
}  // namespace zumtest
