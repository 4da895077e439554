// RGB and YCbCr at 4:4:4, 4:2:2 and 4:2:0 against the arithmetic in plain integers.
#include "support/luma_chroma.h"

namespace zumtest {
namespace {

// Luma of truncated terms, chroma of their rounded sums.
Coded roundedSums(const Group& g) {
  const auto chroma = [&](const Numbers& w) { return clamp(down(termSum(w, 128, g.sum) + 64, 7) + 128); };
  return coded(
      g, [](const Numbers& p) { return down(termSum(kLuma, 256, p) + 128, 8) + 16; }, chroma(kCb), chroma(kCr));
}
Coded truncatedLuma(const Group& g) {
  Coded c = exactRounded(g);
  for (int i = 0; i < g.n; ++i) c.y[i] = down(termSum(kLuma, 256, g.pixel[i]), 8) + 16;
  return c;
}
// The second luma of a pair is not rounded.
Coded secondTruncated(const Group& g) {
  Coded c = exactRounded(g);
  c.y[1] = exactSum(kLuma, g.pixel[1], 1048576, 16);
  return c;
}

constexpr int kManyColours = 1 << 20;

TEST(YCbCr, Encoders) {
  expectEncoder({"zumiRGBToYCbCr_8u_C3R", whole<16>, roundedTerms, exactRounded}, kManyColours);
  expectEncoder({"zumiRGBToYCbCr_8u_AC4R", everywhere, exactRounded, nullptr}, kManyColours);
  expectEncoder({"zumiRGBToYCbCr_8u_P3R", whole<16>, roundedSums, exactRounded}, kManyColours);
  expectEncoder({"zumiRGBToY@(CbCr|CrCb)422_*", whole<8>, truncatedLuma, secondTruncated, exactRounded});
  expectEncoder({"zumiRGBToYCbCr420_*", whole<8>, roundedTerms, exactEighth});
}

TEST(YCbCr, Decoders) {
  expectDecoder({"zumiYCbCrToRGB_8u_@(C3|P3)R", whole<4>, truncated16, fine}, kManyColours);
  expectDecoder({"zumiYCbCrToRGB_8u_AC4R", everywhere, fine, nullptr}, kManyColours);
  expectDecoder({"zumiYCbCrToRGB_8u_P3C3R", whole<8>, rounded16, finePlanar}, kManyColours);
  expectDecoder({"zumiY@(CbCr|CrCb)422ToRGB_8u_C2*", whole<4>, truncated16, folded});
  expectDecoder({"zumiYCbCr422ToRGB_8u_P3C3R", whole<8>, rounded16, finePlanar});
  expectDecoder({"zumiYCbCr420ToRGB_*", whole<8>, truncated8, fine});
}

// The ends of the ranges, and where block and tail differ.
TEST(YCbCr, KnownColours) {
  const auto forward = [](const Numbers& rgb, int column, int width) {
    return converted("zumiRGBToYCbCr_8u_C3R", rgb, width, column);
  };
  EXPECT_EQ(forward({255, 255, 255}, 0, 16)[0], 235);
  EXPECT_EQ(forward({255, 255, 255}, 16, 17)[0], 235);
  EXPECT_EQ(forward({0, 0, 255}, 0, 16)[1], 239);
  EXPECT_EQ(forward({0, 0, 255}, 16, 17)[1], 240);
  EXPECT_EQ(forward({255, 0, 0}, 0, 16)[2], 239);
  EXPECT_EQ(forward({255, 0, 0}, 0, 15)[2], 240);
  for (const int column : {0, 8})
    EXPECT_EQ(converted("zumiYCbCrToRGB_8u_P3C3R", {235, 128, 128}, 9, column)[0], column ? 254 : 255);
}

}  // namespace
}  // namespace zumtest
