// HLS against the formulas in single steps of plain arithmetic, in block columns and in the columns behind them.
#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "support/colours.h"

namespace {

using zumtest::Colour;
using zumtest::estimate;
using zumtest::ofBits;
using zumtest::refined;
using zumtest::truncated;

// ---- The formulas

template <class T>
constexpr bool kIsByte = sizeof(T) == 1;
template <class T>
constexpr bool kIsFloat = std::is_same_v<T, Zum32f>;
template <class T>
constexpr bool kIsSigned = std::is_same_v<T, Zum16s>;
template <class T>
constexpr int kLowest = kIsSigned<T> ? -32768 : 0;
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
  const Colour<float> v = {float(rgb[0]) - kLowest<T>, float(rgb[1]) - kLowest<T>, float(rgb[2]) - kLowest<T>};
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
  float h = float(hls[0]) - kLowest<T>, l = float(hls[1]) - kLowest<T>, s = float(hls[2]) - kLowest<T>;
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

// ---- Colours

// Gray within two units, ties, colours near the borders of sextants and of the range, dark colours, gray, any.
template <class T>
Colour<T> deepColour(int i) {
  std::minstd_rand random(static_cast<unsigned>(i) + 1);
  random.discard(2);
  const auto any = [&] { return static_cast<int>(random() >> 8 & 0xFFFF); };
  constexpr int kEdges[] = {0, 1, 10922, 10923, 21844, 21845, 21846, 32767, 32768, 43689, 43690, 43691, 65534, 65535};
  const int base[3] = {i & 0xFFFF, any(), any()};
  Colour<T> c;
  for (int k = 0; k < 3; ++k) {
    int v = base[k];
    if (i % 7 == 1) v = (base[0] + any() % 3) & 0xFFFF;
    if (i % 7 == 2) v = base[any() % 3];
    if (i % 7 == 3) v = kEdges[any() % std::size(kEdges)];
    if (i % 7 == 4) v >>= any() % 16;
    if (i % 7 == 5 && k == 2) v = 0;
    c[k] = static_cast<T>(v + kLowest<T>);
  }
  return c;
}

// The same from 0 to 1, far beyond both, or close together, and hues where sextants meet.
Colour<Zum32f> floatColour(int i) {
  constexpr float kScales[] = {1, 50, 0x1p-21f}, kOffsets[] = {0, -25, 0.25f};
  Colour<Zum32f> c;
  for (int k = 0; k < 3; ++k) c[k] = deepColour<Zum16u>(i)[k] / 65535.0f * kScales[i % 3] + kOffsets[i % 3];
  if (i % 7 == 6) c[0] = static_cast<float>(i % 6) / 6;
  return c;
}

template <class T>
std::vector<Colour<T>> colours() {
  if constexpr (kIsByte<T>) return zumtest::everyNth(61);
  std::vector<Colour<T>> result;
  for (int i = 0; i < 1 << 18; ++i) {
    if constexpr (kIsFloat<T>) {
      result.push_back(floatColour(i));
    } else {
      result.push_back(deepColour<T>(i));
    }
  }
  return result;
}

template <class T>
using Function = zumtest::Conversion<T, T>;

// Steps lose what is no whole sample.
template <class T>
void check(Function<T>* function, int channels, int block, Colour<T> (*formula)(const Colour<T>&, bool tail)) {
  const std::vector<Colour<T>> src = colours<T>();
  zumtest::compare<T, T>(function, channels, block, src, formula);
  constexpr int kStep = 12 * sizeof(T), kRows = 3;
  T whole[12 * kRows] = {}, odd[12 * kRows] = {};
  function(src[0].data(), kStep, whole, kStep, {3, kRows});
  function(src[0].data(), kStep + sizeof(T) - 1, odd, kStep + sizeof(T) - 1, {3, kRows});
  EXPECT_TRUE(std::equal(whole, std::end(whole), odd));
}

using HlsTest = zumtest::ColourTest;

TEST_F(HlsTest, ToHls) {
  check<Zum8u>(zumiRGBToHLS_8u_C3R, 3, 8, toHls);
  check<Zum8u>(zumiRGBToHLS_8u_AC4R, 4, 4, toHls);
  check<Zum16u>(zumiRGBToHLS_16u_C3R, 3, 4, toHls);
  check<Zum16u>(zumiRGBToHLS_16u_AC4R, 4, 4, toHls);
  check<Zum16s>(zumiRGBToHLS_16s_C3R, 3, 4, toHls);
  check<Zum16s>(zumiRGBToHLS_16s_AC4R, 4, 4, toHls);
  check<Zum32f>(zumiRGBToHLS_32f_C3R, 3, 4, toHls);
  check<Zum32f>(zumiRGBToHLS_32f_AC4R, 4, 4, toHls);
}
TEST_F(HlsTest, ToRgb) {
  check<Zum8u>(zumiHLSToRGB_8u_C3R, 3, 8, toRgb);
  check<Zum8u>(zumiHLSToRGB_8u_AC4R, 4, 4, toRgb);
  check<Zum16u>(zumiHLSToRGB_16u_C3R, 3, 4, toRgb);
  check<Zum16u>(zumiHLSToRGB_16u_AC4R, 4, 4, toRgb);
  check<Zum16s>(zumiHLSToRGB_16s_C3R, 3, 4, toRgb);
  check<Zum16s>(zumiHLSToRGB_16s_AC4R, 4, 4, toRgb);
  check<Zum32f>(zumiHLSToRGB_32f_C3R, 3, 4, toRgb);
  check<Zum32f>(zumiHLSToRGB_32f_AC4R, 4, 4, toRgb);
}

// ---- BGR, interleaved or in planes, as the type of a function's argument says

// Whole vectors, a block and a tail.
constexpr int kWidth = 135;

template <class Argument>
struct Row {
  static constexpr bool kPlanar = std::is_pointer_v<std::remove_pointer_t<Argument>>;

  int channels;
  Zum8u samples[4 * kWidth] = {};
  Zum8u* planes[4] = {samples, samples + kWidth, samples + 2 * kWidth, samples + 3 * kWidth};

  Zum8u& at(int x, int c) { return samples[kPlanar ? c * kWidth + x : x * channels + c]; }
  Argument argument() {
    if constexpr (kPlanar) {
      return planes;
    } else {
      return samples;
    }
  }
};

enum class Alpha { kNone, kKept, kCopied };

template <class Src, class Dst>
void checkBgr(ZumStatus (*function)(Src, int, Dst, int, ZumiSize), bool toHlsFromBgr, Alpha alpha) {
  const int channels = alpha == Alpha::kNone ? 3 : 4, inFirst = toHlsFromBgr ? 2 : 0, outFirst = 2 - inFirst;
  const auto formula = toHlsFromBgr ? toHls<Zum8u> : toRgb<Zum8u>;
  const std::vector<Colour<Zum8u>> colours = zumtest::everyNth(997);
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    for (auto colour = colours.begin(); colour + kWidth <= colours.end(); colour += kWidth) {
      Row<Src> src{channels};
      Row<Dst> dst{channels};
      for (int x = 0; x < kWidth; ++x) {
        for (int c = 0; c < 3; ++c) src.at(x, std::abs(inFirst - c)) = colour[x][c];
        if (channels == 4) src.at(x, 3) = static_cast<Zum8u>(x + 1);
      }
      ASSERT_EQ(zumOk, function(src.argument(), 1, dst.argument(), 1, {kWidth, 1}));
      for (int x = 0; x < kWidth; ++x) {
        const Colour<Zum8u> got{dst.at(x, outFirst), dst.at(x, 1), dst.at(x, 2 - outFirst)};
        ASSERT_EQ(formula(colour[x], x >= (kWidth & ~3)), got) << hwy::TargetName(set) << ", column " << x;
        ASSERT_TRUE(channels == 3 || dst.at(x, 3) == (alpha == Alpha::kCopied ? x + 1 : 0)) << "column " << x;
      }
    }
  }
}

TEST_F(HlsTest, BgrLayouts) {
  checkBgr(zumiBGRToHLS_8u_AC4R, true, Alpha::kKept);
  checkBgr(zumiBGRToHLS_8u_AP4R, true, Alpha::kCopied);
  checkBgr(zumiBGRToHLS_8u_AP4C4R, true, Alpha::kCopied);
  checkBgr(zumiBGRToHLS_8u_AC4P4R, true, Alpha::kCopied);
  checkBgr(zumiBGRToHLS_8u_P3R, true, Alpha::kNone);
  checkBgr(zumiBGRToHLS_8u_P3C3R, true, Alpha::kNone);
  checkBgr(zumiBGRToHLS_8u_C3P3R, true, Alpha::kNone);
  checkBgr(zumiHLSToBGR_8u_AP4R, false, Alpha::kCopied);
  checkBgr(zumiHLSToBGR_8u_AP4C4R, false, Alpha::kCopied);
  checkBgr(zumiHLSToBGR_8u_AC4P4R, false, Alpha::kCopied);
  checkBgr(zumiHLSToBGR_8u_P3R, false, Alpha::kNone);
  checkBgr(zumiHLSToBGR_8u_P3C3R, false, Alpha::kNone);
  checkBgr(zumiHLSToBGR_8u_C3P3R, false, Alpha::kNone);
}

// ---- Values known beforehand

// A row of five: four block columns and one behind them.
template <class T>
std::vector<T> rowOf(Function<T>* function, const Colour<T>& in) {
  std::vector<T> src, dst(15);
  for (int i = 0; i < 5; ++i) src.insert(src.end(), in.begin(), in.end());
  EXPECT_EQ(zumOk, function(src.data(), 0, dst.data(), 0, {5, 1}));
  return dst;
}

template <class T>
void expectColours(Function<T>* function, const Colour<T>& in, const Colour<T>& block, const Colour<T>& tail) {
  const std::vector<T> dst = rowOf(function, in);
  EXPECT_EQ(block, (Colour<T>{dst[0], dst[1], dst[2]}));
  EXPECT_EQ(tail, (Colour<T>{dst[12], dst[13], dst[14]}));
}

TEST_F(HlsTest, KnownColours) {
  for (const int value : {0, 77, 255}) {
    const auto v = static_cast<Zum8u>(value);
    expectColours<Zum8u>(zumiRGBToHLS_8u_C3R, {v, v, v}, {0, v, 0}, {0, v, 0});
  }
  // A hue of 360 degrees: red, not wrapped to 0.
  expectColours<Zum8u>(zumiHLSToRGB_8u_C3R, {255, 127, 255}, {254, 0, 0}, {254, 0, 0});
  expectColours<Zum16s>(zumiRGBToHLS_16s_C3R, {5, 5, 5}, {-32768, 5, -32768}, {-32768, 5, -32768});

  const Zum16u halved[][2] = {{1, 0}, {3, 2}, {32767, 32766}, {65535, 65534}};
  for (const auto& [l, even] : halved) {
    expectColours<Zum16u>(zumiHLSToRGB_16u_C3R, {123, l, 0}, {even, even, even}, {l, l, l});
  }

  std::vector<int> lossy;
  for (int l = 0; l < 65536; ++l) {
    const auto v = static_cast<Zum16s>(l - 32768);
    const std::vector<Zum16s> dst = rowOf<Zum16s>(zumiHLSToRGB_16s_C3R, {1000, v, -32768});
    if (dst[0] != v) lossy.push_back(l);
    ASSERT_GE(dst[0], v - 1);
    ASSERT_EQ(v, dst[14]);
  }
  ASSERT_EQ(512U, lossy.size());
  EXPECT_EQ(257, lossy[0]);
  EXPECT_EQ(261, lossy[1]);
  EXPECT_EQ(65152, lossy[511]);
}

// Lightness that the formulas would not give back.
TEST_F(HlsTest, FloatGrayIsKeptBitForBit) {
  for (const float l : {-0.0f, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max()}) {
    const std::vector<float> dst = rowOf<Zum32f>(zumiHLSToRGB_32f_C3R, {0.3f, l, 0});
    for (const float v : dst) EXPECT_EQ(0, std::memcmp(&l, &v, sizeof(v))) << l << ' ' << v;
  }
}

}  // namespace
