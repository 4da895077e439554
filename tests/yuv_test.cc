// RGB and YUV against the arithmetic in plain integers.
#include "support/luma_chroma.h"

namespace zumtest {
namespace {

// ---- RGB to YUV. Nothing is saturated unless it can leave a byte.

Coded truncatedTerms(const Group& g) {
  return coded(
      g,
      [](const Numbers& p) {
        return down(termSum({19595, 38469, 7471}, 256, p), 8);
      },
      down(termSum({-4816, -9469, 14286}, 128, g.sum), 6) + 128,
      clamp(down(termSum({20152, -16875, -3276}, 128, g.sum), 6) + 128));
}
Coded twoTerms(const Group& g) {
  const auto sum = [&](int r, int gr, int b) {
    return down(r * g.sum[0] + gr * g.sum[1], 15) + down(b * g.sum[2], 15);
  };
  return {{sum(9798, 19235, 3736)}, sum(-4817, -9470, 14287) + 128, clamp(sum(20152, -16876, -3277) + 128)};
}
// A single pixel is a pair of itself.
Coded twiceLuma(const Group& g) {
  const Numbers &p0 = g.pixel[0], &p1 = g.pixel[g.n - 1];
  const auto twice = [](const Numbers& p) { return down(9798 * p[0] + 19235 * p[1], 14) + down(3736 * p[2], 14); };
  const int mean = down(twice(p0) + twice(p1), 1);
  return coded(
      g, [&](const Numbers& p) { return down(twice(p), 1); }, high(16121, p0[2] + p1[2] - mean) + 128,
      clamp(high(28737, p0[0] + p1[0] - mean) + 128));
}

// The luma of each pixel and the sums of all, by some measure of each.
struct Sums {
  int y[4];
  int64_t luma = 0, red = 0, blue = 0;

  template <class Luma, class Sample>
  Sums(const Group& g, const Luma& lumaOf, int scale, const Sample& sampleOf) {
    for (int i = 0; i < g.n; ++i) {
      const int l = lumaOf(g.pixel[i]);
      y[i] = l / scale;
      luma += l;
      red += sampleOf(g.pixel[i][0]);
      blue += sampleOf(g.pixel[i][2]);
    }
  }
  Coded with(int u, int v) const { return {{y[0], y[1], y[2], y[3]}, u + 128, clamp(v + 128)}; }
};

Coded tenBits(const Group& g) {
  const auto q = [](int v) { return v * 4 + v / 64; };
  const auto luma = [&](const Numbers& p) { return termSum({9798, 19235, 3736}, 1, {q(p[0]), q(p[1]), q(p[2])}); };
  const Sums s(g, luma, 2, q);
  const auto term = [&](int factor, int64_t sum) {
    return g.n == 2 ? down(high(factor, static_cast<int>(sum / 2 - s.luma)), 1)
                    : high(factor, static_cast<int>(sum / 8 - s.luma / 4));
  };
  return s.with(term(16121, s.blue), term(28737, s.red));
}
Coded ofRoundedLuma(const Group& g) {
  const auto luma = [](const Numbers& p) {
    return rounded15(4899, 128 * p[0]) + rounded15(9617, 128 * p[1]) + rounded15(1868, 128 * p[2]);
  };
  const Sums s(g, luma, 64, [](int v) { return 32 * v; });
  const auto term = [&](int factor, int64_t sum) {
    return down(rounded15(factor, static_cast<int>(sum - s.luma / 2)), 6);
  };
  return s.with(term(8061, s.blue), term(14369, s.red));
}
Coded exact14(const Group& g) {
  const auto luma = [](const Numbers& p) { return exactSum({4899, 9617, 1868}, p, 0, 0); };
  const Sums s(g, luma, 1 << 14, [](int v) { return v << 14; });
  const auto term = [&](int64_t factor, int64_t sum) { return down(factor * down(sum - s.luma, 14), 16); };
  return s.with(term(8061, s.blue), term(14369, s.red));
}

// Of a single pixel: luma exact at 2 to the bits, chroma from the differences to it, of what is added to them first.
template <int bits, int red, int green, int blue, int uRounding, int vRounding, int64_t u, int64_t v>
Coded differences(const Group& g) {
  const int luma = exactSum({red, green, blue}, g.sum, 0, 0);
  const auto difference = [&](int k, int rounding) { return down((g.sum[k] << bits) - luma + rounding, bits); };
  return {{luma >> bits},
          down(u * difference(2, uRounding), bits) + 128,
          clamp(down(v * difference(0, vRounding), bits) + 128)};
}
constexpr Encode exact16 = differences<16, 19595, 38470, 7471, 32767, 32767, 32244, 57475>;
constexpr Encode unevenlyRounded15 = differences<15, 9798, 19235, 3736, 16383, 32767, 16121, 28737>;
constexpr Encode truncated15 = differences<15, 9798, 19235, 3736, 0, 0, 16121, 28737>;

Coded exactSums(const Group& g) {
  return {{exactSum({19595, 38469, 7471}, g.sum, 0, 16)},
          exactSum({-4816, -9469, 14286}, g.sum, 0, 15) + 128,
          clamp(exactSum({20152, -16875, -3276}, g.sum, 0, 15) + 128)};
}

TEST(Yuv, Encoders) {
  const Encoder encoders[] = {
      {"zumiRGBToYUV_8u_C3R", whole<16>, truncatedTerms, twiceLuma},
      {"zumiRGBToYUV_8u_AC4R", whole<8>, twoTerms, twiceLuma},
      {"zumiRGBToYUV_8u_P3R", whole<16>, truncatedTerms, exactSums},
      {"zumiRGBToYUV_8u_C3P3R", whole<8>, truncatedTerms, exact16},
      {"zumiRGBToYUV422_8u_C3C2R", everywhere, twiceLuma, nullptr, twiceLuma},
      {"zumiRGBToYUV422_8u_C3P3?(R)", everywhere, twiceLuma, nullptr, unevenlyRounded15},
      {"zumiRGBToYUV422_8u_P3?(R)", everywhere, tenBits, nullptr, truncated15},
      {"zumiRGBToYUV420_8u_C3P3?(R)", whole<8>, ofRoundedLuma, exact14},
      {"zumiRGBToYUV420_8u_P3?(R)", everywhere, tenBits, nullptr},
  };
  for (const Encoder& e : encoders) expectEncoder(e);
}

// ---- YUV to RGB

constexpr Decode truncated1 = yuvTerms<9339, -4760, -3228, 16646, 0, 0>;
constexpr Decode truncated2 = yuvTerms<9338, -4759, -3227, 16645, 0, 1>;
constexpr Decode yuvRounded16 = yuvTerms<9338, 4759, 3227, 16646, 8, 4>;
constexpr Decode fineYuvRounded = exactly<65536, 74711, 38076, 25821, 133169, 32768, 16, 0>;
constexpr Decode exactParts = exactly<16384, 18677, 9519, 6455, 2 * 16646, 0, 14, 0>;
constexpr Decode coarse = exactly<8192, 9338, 4759, 3227, 16645, 0, 13, 0>;
Numbers parts(const Numbers& p) {
  const int u = 64 * (p[1] - 128), v = 64 * (p[2] - 128);
  return {clamp(p[0] + down(high(18677, v), 4)), clamp(p[0] - down(high(6455, u) + high(9519, v), 4)),
          clamp(p[0] + down(high(16646, u), 3))};
}

bool inPair(int x, int, ZumiSize size) { return (x | 1) < size.width; }
bool ofSome(int, int, ZumiSize size) { return size.width > 1; }
// Without steps, an image of an even width and 256 pixels or more is one row in two pieces.
bool wholeOfPieces(int x, int y, ZumiSize size) {
  const int area = size.width * size.height, at = y * size.width + x, first = area / 8 * 8;
  if (size.width % 2 || area < 256) return whole<16>(x, y, size);
  return at < first ? whole<16>(at, 0, {first, 1}) : whole<16>(at - first, 0, {area - first, 1});
}

TEST(Yuv, Decoders) {
  const Decoder decoders[] = {
      {"zumiYUVToRGB_8u_@(C3|AC4)R", everywhere, truncated1, nullptr},
      {"zumiYUVToRGB_8u_P3R", whole<8>, parts, exactParts},
      {"zumiYUVToRGB_8u_P3C3R", everywhere, truncated2, nullptr},
      {"zumiYUV422ToRGB_8u_C2C3R", ofSome, truncated2, fineYuv, coarse},
      {"zumiYUV422ToRGB_8u_P3C3R", whole<16>, truncated2, fineYuv},
      {"zumiYUV422ToRGB_8u_P3C3", wholeOfPieces, truncated2, fineYuv},
      {"zumiYUV422ToRGB_8u_P3?(R)", inPair, truncated2, coarse},
      {"zumiYUV422ToRGB_8u_P3AC4R", whole<4>, yuvRounded16, fineYuv},
      {"zumiYUV420ToRGB_8u_P3?(C3)?(R)", everywhere, truncated2, nullptr},
      {"zumiYUV420ToRGB_8u_P3AC4R", whole<4>, yuvRounded16, fineYuvRounded},
  };
  for (const Decoder& d : decoders) expectDecoder(d);
}

// ---- Values worked out by hand

TEST(Yuv, KnownColours) {
  const Numbers white{255, 255, 255}, red{255, 0, 0}, yuv{100, 200, 50};
  EXPECT_EQ(converted("zumiRGBToYUV_8u_C3R", white, 17, 15), (Numbers{254, 127, 127}));
  EXPECT_EQ(converted("zumiRGBToYUV_8u_C3R", white, 17, 16), (Numbers{254, 128, 128}));
  EXPECT_EQ(converted("zumiRGBToYUV_8u_C3P3R", white, 9, 7), (Numbers{254, 127, 127}));
  EXPECT_EQ(converted("zumiRGBToYUV_8u_C3P3R", white, 9, 8), (Numbers{255, 128, 128}));
  for (const Function& function : named("zumiRGBToYUV*"))
    for (const int x : {0, 33}) EXPECT_EQ(converted(function.name, red, 34, x), (Numbers{76, 90, 255}));
  const struct {
    const char* function;
    int inBlock, behind;  // green
  } kGreen[] = {{"zumiYUVToRGB_8u_C3R", 116, 116},       {"zumiYUVToRGB_8u_P3C3R", 116, 116},
                {"zumiYUV422ToRGB_8u_P3C3R", 116, 116},  {"zumiYUV422ToRGB_8u_P3AC4R", 117, 116},
                {"zumiYUV420ToRGB_8u_P3AC4R", 117, 117}, {"zumiYUVToRGB_8u_P3R", 118, 116}};
  for (const auto& g : kGreen) {
    EXPECT_EQ(converted(g.function, yuv, 34, 0)[1], g.inBlock) << g.function;
    EXPECT_EQ(converted(g.function, yuv, 34, 33)[1], g.behind) << g.function;
  }
}

}  // namespace
}  // namespace zumtest
