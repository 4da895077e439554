// HSV against the formulas in single steps of scalar arithmetic: every 8-bit colour, and 16-bit colours of all kinds,
// in block columns and in the columns behind them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <limits>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace {

using zumtest::estimate;
using zumtest::nearest;
using zumtest::ofBits;
using zumtest::refined;
using zumtest::truncated;
using Colour = std::array<int, 3>;

// ---- The formulas, for the numbers that depth and columns fix

template <class T>
constexpr int kTop = std::numeric_limits<T>::max();
template <class T>
constexpr bool kIsByte = sizeof(T) == 1;

template <class T>
int stored(float x, bool tail) {
  if (tail) return nearest(x) & kTop<T>;
  return std::clamp(kIsByte<T> ? truncated(x) : nearest(x), 0, kTop<T>);
}

template <class T>
Colour toHsv(const Colour& rgb, bool tail) {
  const int value = *std::max_element(rgb.begin(), rgb.end()),
            range = value - *std::min_element(rgb.begin(), rgb.end());
  if (range == 0) return {0, 0, value};
  const auto reciprocal = kIsByte<T> ? estimate : refined;
  const float c = reciprocal(range), saturation = reciprocal(value) * range * kTop<T>;
  const float r = (value - rgb[0]) * c, g = (value - rgb[1]) * c, b = (value - rgb[2]) * c;

  int channel = 0;
  if (tail) {
    for (int i = 1; i < 3; ++i) {
      if (rgb[i] == value) channel = i;
    }
  } else if (rgb[1] == value) {
    channel = rgb[0] == value ? 0 : 1;
  } else if (rgb[2] == value) {
    channel = 2;
  }
  float hue = channel == 0 ? b - g : channel == 1 ? r - b : g - r;
  hue += 2 * channel;
  hue *= kIsByte<T> ? 42.5f : 10922.5f;
  if (hue < 0) hue += kTop<T>;
  return {stored<T>(hue, tail), stored<T>(saturation, tail), value};
}

template <class T>
Colour toRgb(const Colour& hsv, bool tail) {
  const float perDegree = ofBits(0x3C888889), degrees = ofBits(kIsByte<T> ? 0x3FB4B4B5 : 0x3BB400B4),
              unit = ofBits(kIsByte<T> ? 0x3B808081 : 0x37800080);
  const int value = hsv[2];
  if (hsv[1] == 0) return {value, value, value};
  const float hue = (hsv[0] == kTop<T> ? 0 : hsv[0]) * perDegree * degrees;
  const int sextant = truncated(hue);
  const float chroma = hsv[1] * unit * value, ramp = (hue - sextant) * chroma, low = value - chroma;
  const auto store = [&](float x) { return kIsByte<T> ? stored<T>(x, tail) : nearest(x) & kTop<T>; };
  const int p = store(low), q = store(value - ramp), t = store(low + ramp);
  const Colour bySextant[] = {{value, t, p}, {q, value, p}, {p, value, t}, {p, q, value}, {t, p, value}, {value, p, q}};
  return bySextant[sextant];
}

// ---- Colours in rows of one kind of column

template <class T>
using Function = ZumStatus(const T*, int, T*, int, ZumiSize);

template <class T>
std::vector<T> convert(Function<T>* function, const std::vector<T>& src, int channels, int width) {
  std::vector<T> dst(src.size());
  const int step = width * channels * static_cast<int>(sizeof(T));
  EXPECT_EQ(zumOk,
            function(src.data(), step, dst.data(), step, {width, static_cast<int>(src.size()) / width / channels}));
  return dst;
}

// Rows of 1020 pixels end in the middle of every vector and have block columns only, rows of 3 have none.
constexpr int kBlocks = 1020, kTail = 3, kPixels = 512 * kBlocks;

template <class T>
void compare(Function<T>* function, int channels, Colour (*expected)(const Colour&, bool tail), int colours,
             Colour (*colour)(int)) {
  static const std::vector<int64_t> sets = zumtest::instructionSets();
  for (int first = 0; first < colours; first += kPixels) {
    std::vector<T> src(static_cast<std::size_t>(kPixels) * channels);
    for (int i = 0; i < kPixels; ++i) {
      const Colour c = colour(std::min(first + i, colours - 1));
      for (int k = 0; k < 3; ++k) src[i * channels + k] = static_cast<T>(c[k]);
    }
    for (const int width : {kBlocks, kTail}) {
      std::vector<T> wanted(src.size());
      for (int i = 0; i < kPixels; ++i) {
        const T* const in = &src[i * channels];
        const Colour c = expected({in[0], in[1], in[2]}, width == kTail);
        for (int k = 0; k < 3; ++k) wanted[i * channels + k] = static_cast<T>(c[k]);
      }
      for (const int64_t set : sets) {
        zumtest::useInstructionSet(set);
        const std::vector<T> got = convert(function, src, channels, width);
        if (got == wanted) continue;
        const auto at = std::mismatch(got.begin(), got.end(), wanted.begin()).first - got.begin();
        const T* const in = &src[at / channels * channels];
        FAIL() << hwy::TargetName(set) << ", rows of " << width << ", colour " << +in[0] << ' ' << +in[1] << ' '
               << +in[2] << ", channel " << at % channels << ": " << +got[at] << ", not " << +wanted[at];
      }
    }
  }
}

// All 8-bit colours, and some all over the cube: a step prime to the channels' 256 values. With the sanitizer, which
// slows the formulas down, some stand for all.
Colour everyColour(int i) { return {i & 255, i >> 8 & 255, i >> 16}; }
Colour someColour(int i) { return everyColour(61 * i); }
constexpr int kEvery = 1 << 24, kSome = kEvery / 61;
#ifdef __SANITIZE_ADDRESS__
constexpr int kColours = kSome;
constexpr auto* colour8 = someColour;
#else
constexpr int kColours = kEvery;
constexpr auto* colour8 = everyColour;
#endif

// Gray within two units, ties, colours near the borders of sextants and of the range, dark colours, and any.
Colour deepColour(int i) {
  std::minstd_rand random(static_cast<unsigned>(i) + 1);
  random.discard(2);
  const auto any = [&] { return static_cast<int>(random() >> 8 & 0xFFFF); };
  constexpr int kEdges[] = {0, 1, 10922, 10923, 21844, 21845, 21846, 32767, 32768, 43689, 43690, 43691, 65534, 65535};
  Colour c = {any(), any(), any()};
  for (int& v : c) {
    if (i % 5 == 1) v = (c[0] + any() % 3) & 0xFFFF;
    if (i % 5 == 2) v = c[any() % 3];
    if (i % 5 == 3) v = kEdges[any() % std::size(kEdges)];
    if (i % 5 == 4) v >>= any() % 16;
  }
  return c;
}

// One thread: on a busy machine others cost more than they do.
class HsvTest : public testing::Test {
 protected:
  HsvTest() { threads_omp_of_n_zum = 1; }
  ~HsvTest() override {
    zumtest::useInstructionSet(zumtest::kBestInstructionSet);
    threads_omp_of_n_zum = threads_;
  }

 private:
  const Zum32s threads_ = threads_omp_of_n_zum;
};

TEST_F(HsvTest, EveryColourForward) { compare(zumiRGBToHSV_8u_C3R, 3, toHsv<Zum8u>, kColours, colour8); }
TEST_F(HsvTest, EveryColourInverse) { compare(zumiHSVToRGB_8u_C3R, 3, toRgb<Zum8u>, kColours, colour8); }

TEST_F(HsvTest, AlphaLayouts) {
  compare(zumiRGBToHSV_8u_AC4R, 4, toHsv<Zum8u>, kSome, someColour);
  compare(zumiHSVToRGB_8u_AC4R, 4, toRgb<Zum8u>, kSome, someColour);
  compare(zumiRGBToHSV_16u_AC4R, 4, toHsv<Zum16u>, kSome, deepColour);
  compare(zumiHSVToRGB_16u_AC4R, 4, toRgb<Zum16u>, kSome, deepColour);
}

TEST_F(HsvTest, DeepColours) {
  compare(zumiRGBToHSV_16u_C3R, 3, toHsv<Zum16u>, 1 << 20, deepColour);
  compare(zumiHSVToRGB_16u_C3R, 3, toRgb<Zum16u>, 1 << 20, deepColour);
}

// ---- Values known beforehand

template <class T>
void expectColour(Function<T>* function, const std::vector<T>& in, const std::vector<T>& block,
                  const std::vector<T>& tail) {
  std::vector<T> src, dst;
  for (int i = 0; i < 5; ++i) src.insert(src.end(), in.begin(), in.end());
  dst = convert(function, src, 3, 5);
  EXPECT_EQ(block, std::vector<T>(dst.begin(), dst.begin() + 3));
  EXPECT_EQ(tail, std::vector<T>(dst.end() - 3, dst.end()));
}

TEST_F(HsvTest, KnownColours) {
  struct Bytes {
    std::vector<Zum8u> hsv, block, tail;
  };
  const Bytes bytes[] = {
      {{42, 255, 255}, {255, 252, 0}, {255, 252, 0}}, {{43, 255, 255}, {251, 255, 0}, {252, 255, 0}},
      {{85, 255, 255}, {0, 255, 0}, {0, 255, 0}},     {{170, 255, 255}, {0, 0, 255}, {0, 0, 255}},
      {{254, 255, 255}, {255, 0, 5}, {255, 0, 6}},    {{255, 255, 255}, {255, 0, 0}, {255, 0, 0}},
      {{171, 0, 99}, {99, 99, 99}, {99, 99, 99}},
  };
  for (const Bytes& b : bytes) expectColour(zumiHSVToRGB_8u_C3R, b.hsv, b.block, b.tail);
  const std::vector<Zum16u> words[][2] = {{{21845, 65535, 65535}, {0, 65535, 0}},
                                          {{43690, 65535, 65535}, {0, 0, 65535}},
                                          {{65534, 65535, 65535}, {65535, 0, 6}},
                                          {{65535, 65535, 65535}, {65535, 0, 0}}};
  for (const auto& w : words) expectColour(zumiHSVToRGB_16u_C3R, w[0], w[1], w[1]);

  // Just below red: 254.83, whatever the estimate of 1 / 255. The saturation depends on it.
  const std::vector<Zum8u> reds = {255, 0, 1, 255, 0, 1, 255, 0, 1, 255, 0, 1, 255, 0, 1};
  const std::vector<Zum8u> hsv = convert(zumiRGBToHSV_8u_C3R, reds, 3, 5);
  EXPECT_EQ(254, hsv[0]);
  EXPECT_EQ(255, hsv[12]);
}

// 60.4 for the smaller two channels.
TEST_F(HsvTest, TailRoundsAsTheThreadDoes) {
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    expectColour<Zum8u>(zumiHSVToRGB_8u_C3R, {0, 101, 100}, {100, 60, 60}, {100, 60, 60});
    std::fesetround(FE_UPWARD);
    expectColour<Zum8u>(zumiHSVToRGB_8u_C3R, {0, 101, 100}, {100, 60, 60}, {100, 61, 61});
    std::fesetround(FE_TONEAREST);
  }
}

TEST_F(HsvTest, OddStepsLoseTheirLowBit) {
  constexpr int kStep = 32, kRows = 3;
  std::vector<Zum16u> src(kStep / 2 * kRows + 1), even(src.size()), odd(src.size());
  for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<Zum16u>(i * 40503);
  for (Function<Zum16u>* function :
       {zumiRGBToHSV_16u_C3R, zumiHSVToRGB_16u_C3R, zumiRGBToHSV_16u_AC4R, zumiHSVToRGB_16u_AC4R}) {
    function(src.data(), kStep, even.data(), kStep, {4, kRows});
    function(src.data(), kStep + 1, odd.data(), kStep + 1, {4, kRows});
    EXPECT_EQ(even, odd);
  }
}

}  // namespace
