// HLS against the formulas in single steps of scalar arithmetic: every 8-bit colour, and colours of all kinds at the
// other depths, in block columns and in the columns behind them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace {

template <class T>
using Colour = std::array<T, 3>;

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

// ---- Images, interleaved or in planes, as the type of a function's argument says

constexpr int kBlocks = 1016, kPixels = kBlocks * 3 * 5 * 7 * 3;

template <class Argument>
struct Image {
  static constexpr bool kPlanar = std::is_pointer_v<std::remove_pointer_t<Argument>>;
  using Sample = std::remove_const_t<std::remove_pointer_t<std::remove_const_t<std::remove_pointer_t<Argument>>>>;

  std::size_t channels;
  std::vector<Sample> samples = std::vector<Sample>(channels * kPixels);
  std::array<Sample*, 4> planes{};

  Sample& at(std::size_t pixel, std::size_t c) { return samples[kPlanar ? c * kPixels + pixel : pixel * channels + c]; }
  int step(int width) const { return static_cast<int>((kPlanar ? 1 : channels) * width * sizeof(Sample)); }
  Argument argument() {
    for (std::size_t c = 0; c < channels; ++c) planes[c] = samples.data() + c * kPixels;
    if constexpr (kPlanar) {
      return planes.data();
    } else {
      return samples.data();
    }
  }
};

struct Format {
  std::size_t channels;
  int block;  // columns in a whole block
  bool toHls, bgr = false, copiesAlpha = false;
};

template <class T, class Src, class Dst>
void compare(ZumStatus (*function)(Src, int, Dst, int, ZumiSize), const Format& f, int colours,
             Colour<T> (*colour)(int)) {
  static const std::vector<int64_t> sets = zumtest::instructionSets();
  const bool bgrIn = f.bgr && f.toHls, bgrOut = f.bgr && !f.toHls;
  for (int first = 0; first < colours; first += kPixels) {
    Image<Src> src{f.channels};
    std::vector<std::array<Colour<T>, 2>> wanted(kPixels);  // in a block, and behind
    for (int i = 0; i < kPixels; ++i) {
      const Colour<T> c = colour(std::min(first + i, colours - 1));
      for (int tail = 0; tail < 2; ++tail) wanted[i][tail] = (f.toHls ? toHls<T> : toRgb<T>)(c, tail);
      for (int k = 0; k < 3; ++k) src.at(i, bgrIn ? 2 - k : k) = c[k];
      if (f.copiesAlpha) src.at(i, 3) = static_cast<T>(i);
    }
    for (const int width : {kBlocks, f.block - 1, 15}) {
      for (const int64_t set : sets) {
        zumtest::useInstructionSet(set);
        Image<Dst> dst{f.channels};
        ASSERT_EQ(zumOk,
                  function(src.argument(), src.step(width), dst.argument(), dst.step(width), {width, kPixels / width}));
        for (int i = 0; i < kPixels; ++i) {
          const bool tail = i % width >= width - width % f.block;
          const Colour<T> got = {dst.at(i, bgrOut ? 2 : 0), dst.at(i, 1), dst.at(i, bgrOut ? 0 : 2)};
          if (got == wanted[i][tail] && (!f.copiesAlpha || dst.at(i, 3) == src.at(i, 3))) continue;
          FAIL() << hwy::TargetName(set) << ", column " << i % width << " of " << width << ": "
                 << testing::PrintToString(colour(first + i)) << " gives " << testing::PrintToString(got) << ", not "
                 << testing::PrintToString(wanted[i][tail]) << ", or has another alpha";
        }
      }
    }
  }
}

// Bytes all over the cube: an odd step meets every colour once in 2^24.
Colour<Zum8u> byteColour(int i) { return {Zum8u(61 * i), Zum8u(61 * i >> 8), Zum8u(61 * i >> 16)}; }

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

// The same from 0 to 1, far beyond both, or close together.
Colour<Zum32f> floatColour(int i) {
  constexpr float kScales[] = {1, 50, 0x1p-21f}, kOffsets[] = {0, -25, 0.25f};
  Colour<Zum32f> c;
  for (int k = 0; k < 3; ++k) c[k] = deepColour<Zum16u>(i)[k] / 65535.0f * kScales[i % 3] + kOffsets[i % 3];
  return c;
}

// One thread: on a busy machine others cost more than they do.
class HlsTest : public testing::Test {
 protected:
  HlsTest() { threads_omp_of_n_zum = 1; }
  ~HlsTest() override {
    zumtest::useInstructionSet(zumtest::kBestInstructionSet);
    threads_omp_of_n_zum = threads_;
  }

 private:
  const Zum32s threads_ = threads_omp_of_n_zum;
};

template <class T>
using Function = ZumStatus(const T*, int, T*, int, ZumiSize);

// Each direction with three channels and with alpha.
template <class T>
void compareAll(Function<T>* const (&functions)[4], int blockOf3, Colour<T> (*colour)(int)) {
  constexpr int kColours = 3 * kPixels;
  compare(functions[0], {3, blockOf3, true}, kColours, colour);
  compare(functions[1], {4, 4, true}, kColours, colour);
  compare(functions[2], {3, blockOf3, false}, kColours, colour);
  compare(functions[3], {4, 4, false}, kColours, colour);
}

TEST_F(HlsTest, AllDepths) {
  compareAll({zumiRGBToHLS_8u_C3R, zumiRGBToHLS_8u_AC4R, zumiHLSToRGB_8u_C3R, zumiHLSToRGB_8u_AC4R}, 8, byteColour);
  compareAll({zumiRGBToHLS_16u_C3R, zumiRGBToHLS_16u_AC4R, zumiHLSToRGB_16u_C3R, zumiHLSToRGB_16u_AC4R}, 4,
             deepColour<Zum16u>);
  compareAll({zumiRGBToHLS_16s_C3R, zumiRGBToHLS_16s_AC4R, zumiHLSToRGB_16s_C3R, zumiHLSToRGB_16s_AC4R}, 4,
             deepColour<Zum16s>);
  compareAll({zumiRGBToHLS_32f_C3R, zumiRGBToHLS_32f_AC4R, zumiHLSToRGB_32f_C3R, zumiHLSToRGB_32f_AC4R}, 4,
             floatColour);
}

TEST_F(HlsTest, BgrLayouts) {
  constexpr bool kBgr = true, kAlpha = true;
  compare(zumiBGRToHLS_8u_AC4R, {4, 4, true, kBgr}, kPixels, byteColour);
  compare(zumiBGRToHLS_8u_AP4R, {4, 4, true, kBgr, kAlpha}, kPixels, byteColour);
  compare(zumiBGRToHLS_8u_AP4C4R, {4, 4, true, kBgr, kAlpha}, kPixels, byteColour);
  compare(zumiBGRToHLS_8u_AC4P4R, {4, 4, true, kBgr, kAlpha}, kPixels, byteColour);
  compare(zumiBGRToHLS_8u_P3R, {3, 4, true, kBgr}, kPixels, byteColour);
  compare(zumiBGRToHLS_8u_P3C3R, {3, 4, true, kBgr}, kPixels, byteColour);
  compare(zumiBGRToHLS_8u_C3P3R, {3, 4, true, kBgr}, kPixels, byteColour);
  compare(zumiHLSToBGR_8u_AP4R, {4, 4, false, kBgr, kAlpha}, kPixels, byteColour);
  compare(zumiHLSToBGR_8u_AP4C4R, {4, 4, false, kBgr, kAlpha}, kPixels, byteColour);
  compare(zumiHLSToBGR_8u_AC4P4R, {4, 4, false, kBgr, kAlpha}, kPixels, byteColour);
  compare(zumiHLSToBGR_8u_P3R, {3, 4, false, kBgr}, kPixels, byteColour);
  compare(zumiHLSToBGR_8u_P3C3R, {3, 4, false, kBgr}, kPixels, byteColour);
  compare(zumiHLSToBGR_8u_C3P3R, {3, 4, false, kBgr}, kPixels, byteColour);
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

template <class T>
void expectWholeSteps(std::initializer_list<Function<T>*> functions) {
  constexpr int kStep = 64, kOddStep = kStep + int{sizeof(T)} - 1, kRows = 3;
  std::vector<T> src((kRows + 1) * kStep / sizeof(T)), whole(src.size()), odd(src.size());
  for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<T>(i * 97);
  for (Function<T>* function : functions) {
    function(src.data(), kStep, whole.data(), kStep, {4, kRows});
    function(src.data(), kOddStep, odd.data(), kOddStep, {4, kRows});
    EXPECT_EQ(whole, odd);
  }
}

TEST_F(HlsTest, StepsLoseWhatIsNoWholeSample) {
  expectWholeSteps<Zum16u>({zumiRGBToHLS_16u_C3R, zumiRGBToHLS_16u_AC4R, zumiHLSToRGB_16u_C3R, zumiHLSToRGB_16u_AC4R});
  expectWholeSteps<Zum16s>({zumiRGBToHLS_16s_C3R, zumiRGBToHLS_16s_AC4R, zumiHLSToRGB_16s_C3R, zumiHLSToRGB_16s_AC4R});
  expectWholeSteps<Zum32f>({zumiRGBToHLS_32f_C3R, zumiRGBToHLS_32f_AC4R, zumiHLSToRGB_32f_C3R, zumiHLSToRGB_32f_AC4R});
}

}  // namespace
