// HLS against the formulas in single steps of plain arithmetic.
#include "support/colours.h"

namespace zumtest {
namespace {

// ---- The formulas

template <class T>
constexpr bool kIsByte = sizeof(T) == 1;
template <class T>
constexpr bool kIsFloat = std::is_same_v<T, Zum32f>;
template <class T>
constexpr bool kIsSigned = std::is_same_v<T, Zum16s>;
template <class T>
constexpr int kTop = kIsFloat<T>  ? 1
                     : kIsByte<T> ? 255
                                  : 65535;

template <class T>
T stored(int fromLowest) {
  return static_cast<T>(std::clamp(fromLowest, 0, kTop<T>) + kLowest<T>);
}

template <class T>
Colour<T> toHls(const Colour<T>& rgb, bool tail) {
  const Colour<float> v = levels(rgb);
  const auto [smallest, largest] = std::minmax({v[0], v[1], v[2]});
  const float range = largest - smallest, sum = largest + smallest, lightness = 0.5f * sum;
  const auto q = [&](float x) { return kIsByte<T> && !tail ? estimate(x) : refined(x); };
  float hue = 0, saturation = 0;
  if (range > (kIsFloat<T> ? ofBits(0x34000000) : 0)) {
    const float reach = lightness <= kTop<T> * 0.5f ? sum : kTop<T> * 2 - sum;
    saturation = kIsFloat<T> ? range / reach : q(reach) * range * kTop<T>;
    const int channel = v[0] == largest ? 0 : v[1] == largest ? 1 : 2;
    const float turn = (v[(channel + 1) % 3] - v[(channel + 2) % 3]) * 60;
    hue = kIsFloat<T> ? turn / range : turn * q(range);
    hue += 120 * channel;
    if (hue < 0) hue += 360;
  }
  if constexpr (kIsFloat<T>) {
    return {hue / 360, lightness, saturation};
  } else {
    const float scale = ofBits(kIsByte<T> ? 0x3F355555 : 0x43360AAB);
    return {stored<T>(truncated(hue * scale)), stored<T>(truncated(lightness)), stored<T>(truncated(saturation))};
  }
}

template <class T>
T fromUnit(float v, bool tail) {
  if constexpr (kIsFloat<T>) return v;
  if (kIsByte<T>) return stored<T>(truncated(v * 255));
  if (!kIsSigned<T>) return static_cast<T>(std::min(truncated(v * 32767.5f), 32767) * 2);
  const float scaled = v * 65535;
  return tail ? static_cast<T>(truncated(scaled + ofBits(0x3EFFFEB0)) - 32768) : stored<T>(truncated(scaled));
}

template <class T>
Colour<T> toRgb(const Colour<T>& hls, bool tail) {
  const bool divides = tail && (kIsFloat<T> || kIsSigned<T>);
  auto [h, l, s] = levels(hls);
  if (kIsFloat<T> || divides) {
    h *= 360;
    if (!kIsFloat<T>) h /= 65535, l /= 65535, s /= 65535;
  } else {
    const float unit = ofBits(kIsByte<T> ? 0x3B808081 : 0x37800080);
    h *= ofBits(kIsByte<T> ? 0x3FB4B4B5 : 0x3BB400B4), l *= unit, s *= unit;
  }
  if (s == 0) {
    const T gray = kIsFloat<T> || (tail && !kIsSigned<T>) ? hls[1] : fromUnit<T>(l, tail);
    return {gray, gray, gray};
  }
  const float product = l * s, sum = l + s;
  const float largest = l > 0.5f ? sum - product : divides ? (1 + s) * l : product + l;
  const float smallest = 2 * l - largest, range = largest - smallest;
  const auto ramp = [&](float x) {
    const float part = divides ? range * x / 60 : x * ofBits(0x3C888889) * range;
    return part + smallest;
  };
  const auto channel = [&](float x) {
    return fromUnit<T>(x < 60 ? ramp(x) : x < 180 ? largest : x < 240 ? ramp(240 - x) : smallest, tail);
  };
  const float red = h + 120, blue = h - 120;
  return {channel(red > 360 ? red - 360 : red), channel(h), channel(blue < 0 ? blue + 360 : blue)};
}

// ---- Comparisons

// Deep colours from 0 to 1, far beyond both, or close together, and hues where sextants meet.
std::vector<Colour<Zum32f>> floatColours() {
  constexpr float kScales[] = {1, 50, 0x1p-21f}, kOffsets[] = {0, -25, 0.25f};
  std::vector<Colour<Zum32f>> colours;
  for (const Colour<Zum16u>& deep : deepColours<Zum16u>()) {
    const std::size_t i = colours.size();
    Colour<Zum32f>& c = colours.emplace_back();
    for (int k = 0; k < 3; ++k) c[k] = deep[k] / 65535.0f * kScales[i % 3] + kOffsets[i % 3];
    if (i % 7 == 6) c[0] = static_cast<float>(i % 6) / 6;
  }
  return colours;
}

TEST(Hls, ToHls) {
  compare("zumiRGBToHLS_8u_C3R", 8, everyNth(61), toHls<Zum8u>);
  compare("zumiRGBToHLS_8u_AC4R", 4, everyNth(61), toHls<Zum8u>);
  compare("zumiRGBToHLS_16u_*", 4, deepColours<Zum16u>(), toHls<Zum16u>);
  compare("zumiRGBToHLS_16s_*", 4, deepColours<Zum16s>(), toHls<Zum16s>);
  compare("zumiRGBToHLS_32f_*", 4, floatColours(), toHls<Zum32f>);
}
TEST(Hls, ToRgb) {
  compare("zumiHLSToRGB_8u_C3R", 8, everyNth(61), toRgb<Zum8u>);
  compare("zumiHLSToRGB_8u_AC4R", 4, everyNth(61), toRgb<Zum8u>);
  compare("zumiHLSToRGB_16u_*", 4, deepColours<Zum16u>(), toRgb<Zum16u>);
  compare("zumiHLSToRGB_16s_*", 4, deepColours<Zum16s>(), toRgb<Zum16s>);
  compare("zumiHLSToRGB_32f_*", 4, floatColours(), toRgb<Zum32f>);
}
TEST(Hls, StepsAreInSamples) { expectStepsInSamples("zumi@(RGBToHLS|HLSToRGB)_*"); }

// Fourth channels are copied, but for the one layout that keeps them.
TEST(Hls, BgrLayouts) {
  for (const Function& function : named("zumi@(BGRToHLS|HLSToBGR)_8u_*")) {
    const auto formula = function.name[4] == 'B' ? toHls<Zum8u> : toRgb<Zum8u>;
    const bool copies = !function.planes.back().keepsAlpha;
    expectPictures(function, kColours, [=](const Picture& src, const Picture& dst) {
      forEachPixel(src, [&](int x, int y) {
        dst.set(x, y, formula(src.at<Zum8u>(x, y), x >= src.size.width / 4 * 4));
        if (copies) dst.set(3, x, y, src.get(3, x, y));
      });
    });
  }
}

// ---- Values known beforehand

TEST(Hls, KnownColours) {
  for (const Zum8u v : {0, 77, 255}) expectColour<Zum8u>("zumiRGBToHLS_8u_C3R", {v, v, v}, {0, v, 0});
  // A hue of 360 degrees: red, not wrapped to 0.
  expectColour<Zum8u>("zumiHLSToRGB_8u_C3R", {255, 127, 255}, {254, 0, 0});
  expectColour<Zum16s>("zumiRGBToHLS_16s_C3R", {5, 5, 5}, {-32768, 5, -32768});
  const Zum16u halved[][2] = {{1, 0}, {3, 2}, {32767, 32766}, {65535, 65534}};
  for (const auto& [l, even] : halved)
    expectColour<Zum16u, Zum16u>("zumiHLSToRGB_16u_C3R", {123, l, 0}, {even, even, even}, {l, l, l});
}

// Block columns make 512 of the 65536 grays one darker.
TEST(Hls, SignedGrays) {
  std::vector<Colour<Zum16s>> grays;
  std::vector<int> lost;
  for (int l = 0; l < 65536; ++l) {
    const auto v = static_cast<Zum16s>(l - 32768);
    grays.push_back({1000, v, -32768});
    if (toRgb(grays.back(), false)[0] == v - 1) lost.push_back(l);
  }
  compare("zumiHLSToRGB_16s_C3R", 4, grays, toRgb<Zum16s>);
  ASSERT_EQ(512u, lost.size());
  EXPECT_EQ(257, lost[0]);
  EXPECT_EQ(261, lost[1]);
  EXPECT_EQ(65152, lost[511]);
}

// Lightness that the formulas would not give back.
TEST(Hls, FloatGrayIsKeptBitForBit) {
  for (const float l : {-0.0f, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max()})
    for (const int x : {0, 4})
      for (const float v : converted<Zum32f, Zum32f>("zumiHLSToRGB_32f_C3R", {0.3f, l, 0}, 5, x))
        EXPECT_EQ(bitsOf(l), bitsOf(v)) << l << ' ' << v;
}

}  // namespace
}  // namespace zumtest
