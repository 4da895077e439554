// RGB and YCbCr at 4:4:4, 4:2:2 and 4:2:0 against the arithmetic in plain integers, one pixel at a time: colours all
// over the cube at 4:4:4, and every width that changes who takes which form at 4:2:2 and 4:2:0.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace {

using zumtest::clamp;
using zumtest::down;
using zumtest::high;
using zumtest::rounded15;
using Bytes = std::vector<Zum8u>;
using Colour = std::array<int, 3>;

// ---- The forms. Forward ones take the sum of n pixels (1, 2 or 4) and give the chroma of their mean.

int roundedLuma(const Colour& p) {
  return clamp(down(rounded15(4211, 128 * p[0]) + rounded15(8258, 128 * p[1]) + rounded15(1606, 128 * p[2]), 6) + 16);
}
Colour roundedTerms(const Colour& sum, int n) {
  const int k = 128 / n, r = k * sum[0], g = k * sum[1], b = k * sum[2];
  return {0, clamp(down(rounded15(7193, b) - rounded15(4768, g) - rounded15(2425, r), 6) + 128),
          clamp(down(rounded15(7193, r) - rounded15(6029, g) - rounded15(1163, b), 6) + 128)};
}
Colour roundedTerms444(const Colour& p) {
  Colour result = roundedTerms(p, 1);
  result[0] = roundedLuma(p);
  return result;
}
Colour roundedSum(const Colour& p) {
  const int y = high(16843, 256 * p[0]) + high(33030, 256 * p[1]) + high(6423, 256 * p[2]);
  const auto chroma = [&](int r, int g, int b) {
    return clamp(down(high(r, 128 * p[0]) + high(g, 128 * p[1]) + high(b, 128 * p[2]) + 64, 7) + 128);
  };
  return {clamp(down(y + 128, 8) + 16), chroma(-9699, -19071, 28770), chroma(28770, -24117, -4653)};
}
int truncatedLuma(const Colour& p) {
  return down(high(16843, 256 * p[0]) + high(33030, 256 * p[1]) + high(6423, 256 * p[2]), 8) + 16;
}
int exactLuma(const Colour& p, int offset) {
  return down(16843LL * p[0] + 33030LL * p[1] + 6423LL * p[2] + offset, 16);
}
Colour exactChroma(const Colour& sum, int offset, int bits) {
  return {0, down(-9699LL * sum[0] - 19071LL * sum[1] + 28770LL * sum[2] + offset, bits) & 255,
          down(28770LL * sum[0] - 24117LL * sum[1] - 4653LL * sum[2] + offset, bits) & 255};
}
Colour exact(const Colour& p) {
  Colour result = exactChroma(p, 8421376, 16);
  result[0] = exactLuma(p, 1081344);
  return result;
}

Colour truncated16(const Colour& p) {
  const int t = high(9536, 128 * (p[0] - 16)), u = 128 * (p[1] - 128), v = 128 * (p[2] - 128);
  return {clamp(down(t + high(13074, v), 4)), clamp(down(t + high(-6660, v) + high(-3203, u), 4)),
          clamp(down(t + high(16523, u), 4))};
}
Colour rounded16(const Colour& p) {
  const int t = high(9535, 128 * (p[0] - 16)), u = 128 * (p[1] - 128), v = 128 * (p[2] - 128);
  return {clamp(down(t + high(13074, v) + 8, 4)), clamp(down(t + high(-6660, v) + high(-3211, u) + 8, 4)),
          clamp(down(t + high(16523, u) + 8, 4))};
}
Colour truncated8(const Colour& p) {
  const int t = high(4767, 128 * (p[0] - 16)), u = 128 * (p[1] - 128), v = 128 * (p[2] - 128);
  return {clamp(down(t + high(6537, v), 3)), clamp(down(t - (high(3330, v) + high(1605, u)), 3)),
          clamp(down(t + high(8261, u), 3))};
}
Colour fine(const Colour& p) {
  const int64_t w = 76284LL * p[0] - 1220544, u = p[1] - 128, v = p[2] - 128;
  return {clamp(down(w + 104595 * v, 16)), clamp(down(w - 25690 * u - 53281 * v, 16)), clamp(down(w + 132186 * u, 16))};
}
Colour finePlanar(const Colour& p) {
  const int64_t w = 76282LL * p[0] - 1220512, u = p[1] - 128, v = p[2] - 128;
  return {clamp(down(w + 104593 * v, 16)), clamp(down(w - 25689 * u - 53279 * v, 16)), clamp(down(w + 132184 * u, 16))};
}
Colour folded(const Colour& p) {
  const int64_t w = 76284LL * p[0];
  return {clamp(down(w + 104595LL * p[2] - 14608761, 16)),
          clamp(down(w - 53281LL * p[2] - 25690LL * p[1] + 8887730, 16)),
          clamp(down(w + 132186LL * p[1] - 18140365, 16))};
}

// ---- 4:4:4: colours all over the cube, in a block and behind it

// A step prime to the channels' 256 values reaches every value of each, and neighbours of every colour.
constexpr int kStride = 13;
constexpr int kColours = (1 << 24) / kStride;

Colour colour(int i) { return {i * kStride & 255, i * kStride >> 8 & 255, i * kStride >> 16}; }

struct Conversion444 {
  const char* name;
  // Converts w by h tight pixels of `channels` interleaved samples, through planes if the function takes or gives them.
  std::function<ZumStatus(const Bytes&, Bytes&, int w, int h)> run;
  int channels;
  int blockWidth, tailWidth;
  Colour (*block)(const Colour&);
  Colour (*tail)(const Colour&);
};

template <class Function>
auto interleaved(Function* function, int channels) {
  return [=](const Bytes& src, Bytes& dst, int w, int h) {
    return function(src.data(), channels * w, dst.data(), channels * w, {w, h});
  };
}

template <class Function>
auto fromPlanes(Function* function, bool toPlanes) {
  return [=](const Bytes& src, Bytes& dst, int w, int h) {
    const std::size_t n = static_cast<std::size_t>(w) * h;
    Bytes in(3 * n), out(3 * n);
    for (std::size_t i = 0; i < 3 * n; ++i) in[i % 3 * n + i / 3] = src[i];
    const Zum8u* const planes[3] = {&in[0], &in[n], &in[2 * n]};
    Zum8u* const targets[3] = {&out[0], &out[n], &out[2 * n]};
    if constexpr (std::is_invocable_v<Function*, const Zum8u* const*, int, Zum8u*, int, ZumiSize>) {
      return function(planes, w, dst.data(), 3 * w, {w, h});
    } else {
      const ZumStatus status = function(planes, w, targets, w, {w, h});
      if (toPlanes) {
        for (std::size_t i = 0; i < 3 * n; ++i) dst[i] = out[i % 3 * n + i / 3];
      }
      return status;
    }
  };
}

const Conversion444 kConversions444[] = {
    {"RGBToYCbCr C3", interleaved(zumiRGBToYCbCr_8u_C3R, 3), 3, 4096, 15, roundedTerms444, exact},
    {"RGBToYCbCr AC4", interleaved(zumiRGBToYCbCr_8u_AC4R, 4), 4, 4096, 15, exact, exact},
    {"RGBToYCbCr P3", fromPlanes(zumiRGBToYCbCr_8u_P3R, true), 3, 4096, 15, roundedSum, exact},
    {"YCbCrToRGB C3", interleaved(zumiYCbCrToRGB_8u_C3R, 3), 3, 4, 3, truncated16, fine},
    {"YCbCrToRGB AC4", interleaved(zumiYCbCrToRGB_8u_AC4R, 4), 4, 4096, 3, fine, fine},
    {"YCbCrToRGB P3", fromPlanes(zumiYCbCrToRGB_8u_P3R, true), 3, 4096, 3, truncated16, fine},
    {"YCbCrToRGB P3C3", fromPlanes(zumiYCbCrToRGB_8u_P3C3R, false), 3, 4096, 7, rounded16, finePlanar},
};

TEST(YCbCr444, ColoursInAndBehindBlocks) {
  for (const Conversion444& c : kConversions444) {
    for (const bool isBlock : {true, false}) {
      const int width = isBlock ? c.blockWidth : c.tailWidth, height = kColours / width;
      const auto& form = isBlock ? c.block : c.tail;
      const std::size_t pixels = static_cast<std::size_t>(width) * height;
      Bytes src(c.channels * pixels), expected(c.channels * pixels, 77), dst;
      for (std::size_t i = 0; i < pixels; ++i) {
        const Colour in = colour(static_cast<int>(i)), out = form(in);
        for (int k = 0; k < 3; ++k) {
          src[c.channels * i + k] = static_cast<Zum8u>(in[k]);
          expected[c.channels * i + k] = static_cast<Zum8u>(out[k]);
        }
      }
      for (const auto set : zumtest::instructionSets()) {
        zumtest::useInstructionSet(set);
        dst.assign(expected.size(), 77);  // alpha stays 77
        ASSERT_EQ(c.run(src, dst, width, height), zumOk);
        ASSERT_TRUE(dst == expected) << c.name << (isBlock ? " block " : " tail ") << hwy::TargetName(set);
      }
    }
  }
  zumtest::useInstructionSet(zumtest::kBestInstructionSet);
}

// ---- 4:2:2 and 4:2:0: rows of random colours of every width, expected column by column

struct Noise {
  std::mt19937 engine{11};
  Bytes bytes(std::size_t n) {
    Bytes result(n);
    for (auto& b : result) b = static_cast<Zum8u>(engine() % 5 ? engine() : engine() % 2 * 255);
    return result;
  }
};

Colour at(const Bytes& c3, int width, int x, int y) {
  const Zum8u* p = &c3[3 * (static_cast<std::size_t>(y) * width + x)];
  return {p[0], p[1], p[2]};
}
Colour sum(const Colour& a, const Colour& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }

// Which function, and whether its C2 rows have Cb or Cr first.
struct Packed422 {
  const char* name;
  int firstChroma, secondChroma;
  ZumStatus (*fromC3)(const Zum8u*, int, Zum8u*, int, ZumiSize);
  ZumStatus (*fromP3)(const Zum8u* const*, int, Zum8u*, int, ZumiSize);
  ZumStatus (*toC3)(const Zum8u*, int, Zum8u*, int, ZumiSize);
  ZumStatus (*toP3)(const Zum8u*, int, Zum8u* const*, int, ZumiSize);
};
const Packed422 kPacked422[] = {
    {"YCbCr", 1, 2, zumiRGBToYCbCr422_8u_C3C2R, zumiRGBToYCbCr422_8u_P3C2R, zumiYCbCr422ToRGB_8u_C2C3R,
     zumiYCbCr422ToRGB_8u_C2P3R},
    {"YCrCb", 2, 1, zumiRGBToYCrCb422_8u_C3C2R, zumiRGBToYCrCb422_8u_P3C2R, zumiYCrCb422ToRGB_8u_C2C3R,
     zumiYCrCb422ToRGB_8u_C2P3R},
};

void split(const Bytes& c3, Bytes (&planes)[3]) {
  for (auto& plane : planes) plane.clear();
  for (std::size_t i = 0; i < c3.size(); ++i) planes[i % 3].push_back(c3[i]);
}

TEST(YCbCr422, ForwardColumns) {
  Noise noise;
  for (const Packed422& f : kPacked422) {
    for (int width = 1; width <= 150; ++width) {
      const int height = 3;
      const Bytes src = noise.bytes(3 * width * height);
      Bytes expected(2 * width * height), dst(expected.size());
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          const bool inBlock = x < width / 8 * 8, isSecond = x % 2, isLast = !isSecond && x + 1 == width;
          const Colour p = at(src, width, x, y);
          const Colour pair = isLast ? sum(p, p) : sum(p, at(src, width, x ^ 1, y));
          const Colour chroma = exactChroma(pair, 16842752, 17);
          Zum8u* out = &expected[2 * (y * width + x)];
          out[0] = static_cast<Zum8u>(inBlock ? truncatedLuma(p) : exactLuma(p, isSecond ? 1048576 : 1081344));
          out[1] = static_cast<Zum8u>(chroma[isSecond ? f.secondChroma : f.firstChroma]);
        }
      }
      ASSERT_EQ(f.fromC3(src.data(), 3 * width, dst.data(), 2 * width, {width, height}), zumOk);
      ASSERT_EQ(dst, expected) << f.name << " C3 width " << width;
      Bytes planes[3];
      split(src, planes);
      const Zum8u* const pointers[3] = {planes[0].data(), planes[1].data(), planes[2].data()};
      dst.assign(dst.size(), 0);
      ASSERT_EQ(f.fromP3(pointers, width, dst.data(), 2 * width, {width, height}), zumOk);
      ASSERT_EQ(dst, expected) << f.name << " P3 width " << width;
    }
  }
}

TEST(YCbCr422, InverseColumns) {
  Noise noise;
  for (const Packed422& f : kPacked422) {
    for (int width = 1; width <= 150; ++width) {
      const int height = 3;
      const Bytes src = noise.bytes(2 * width * height);
      Bytes expected;
      for (int y = 0; y < height; ++y) {
        const Zum8u* row = &src[2 * width * y];
        for (int x = 0; x < width; ++x) {
          // The chroma bytes of a row in order, those of a pair side by side; half a pair borrows from the pair before.
          Colour p = {row[2 * x], 0, 0};
          p[f.firstChroma] = row[2 * (x & ~1) + 1];
          p[f.secondChroma] = (x | 1) < width ? row[2 * (x | 1) + 1] : row[2 * (x > 0 ? x - 1 : 0) + 1];
          for (const int v : x < width / 4 * 4 ? truncated16(p) : folded(p)) expected.push_back(static_cast<Zum8u>(v));
        }
      }
      Bytes dst(expected.size());
      ASSERT_EQ(f.toC3(src.data(), 2 * width, dst.data(), 3 * width, {width, height}), zumOk);
      ASSERT_EQ(dst, expected) << f.name << " C3 width " << width;
      Bytes expectedPlanes[3], planes[3];
      split(expected, expectedPlanes);
      for (auto& plane : planes) plane.assign(width * height, 0);
      Zum8u* const pointers[3] = {planes[0].data(), planes[1].data(), planes[2].data()};
      ASSERT_EQ(f.toP3(src.data(), 2 * width, pointers, width, {width, height}), zumOk);
      for (int k = 0; k < 3; ++k) ASSERT_EQ(planes[k], expectedPlanes[k]) << f.name << " P3 width " << width;
    }
  }
}

// Planar sources of both samplings: the pixel at (x, y) takes the chroma sample at (x / 2, y / shared).
Bytes decodePlanes(const Bytes (&planes)[3], int width, int chromaWidth, int pixels, int rows, int rowsShared,
                   int blockPixels, Colour (*block)(const Colour&), Colour (*tail)(const Colour&)) {
  Bytes result;
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < pixels; ++x) {
      const int c = y / rowsShared * chromaWidth + x / 2;
      const Colour p = {planes[0][y * width + x], planes[1][c], planes[2][c]};
      for (const int v : x < blockPixels ? block(p) : tail(p)) result.push_back(static_cast<Zum8u>(v));
    }
  }
  return result;
}

TEST(YCbCr422, InverseFromPlanes) {
  Noise noise;
  for (int width = 1; width <= 150; ++width) {
    const int height = 3, chroma = (width + 1) / 2;
    const Bytes src[3] = {noise.bytes(width * height), noise.bytes(chroma * height), noise.bytes(chroma * height)};
    const Zum8u* const pointers[3] = {src[0].data(), src[1].data(), src[2].data()};
    const int steps[3] = {width, chroma, chroma};
    Bytes dst(3 * width * height);
    ASSERT_EQ(zumiYCbCr422ToRGB_8u_P3C3R(pointers, steps, dst.data(), 3 * width, {width, height}), zumOk);
    ASSERT_EQ(dst, decodePlanes(src, width, chroma, width, height, 1, width / 8 * 8, rounded16, finePlanar)) << width;
  }
}

TEST(YCbCr420, ForwardColumns) {
  Noise noise;
  for (int width = 1; width <= 150; ++width) {
    for (const int height : {1, 2, 5}) {
      const int chroma = width / 2;
      const Bytes src = noise.bytes(3 * width * height);
      const std::size_t samples = width * height,
                        chromaSamples = chroma * (height / 2) + 1;  // at least one, for data()
      Bytes expected[3] = {Bytes(samples, 9), Bytes(chromaSamples, 9), Bytes(chromaSamples, 9)};
      for (int y = 0; y + 1 < height; y += 2) {
        for (int x = 0; x + 1 < width; x += 2) {
          const bool inBlock = x < width / 8 * 8;
          Colour all{};
          for (int i = 0; i < 4; ++i) {
            const Colour p = at(src, width, x + i % 2, y + i / 2);
            all = sum(all, p);
            expected[0][(y + i / 2) * width + x + i % 2] =
                static_cast<Zum8u>(inBlock ? roundedLuma(p) : exactLuma(p, 1081344));
          }
          const Colour c = inBlock ? roundedTerms(all, 4) : exactChroma(all, 33587200, 18);
          expected[1][y / 2 * chroma + x / 2] = static_cast<Zum8u>(c[1]);
          expected[2][y / 2 * chroma + x / 2] = static_cast<Zum8u>(c[2]);
        }
      }
      Bytes dst[3] = {Bytes(samples, 9), Bytes(chromaSamples, 9), Bytes(chromaSamples, 9)};
      Zum8u* const pointers[3] = {dst[0].data(), dst[1].data(), dst[2].data()};
      const int steps[3] = {width, chroma, chroma};
      const ZumStatus status = width % 2 || height % 2 ? zumWrnOddSize : zumOk;
      ASSERT_EQ(zumiRGBToYCbCr420_8u_C3P3R(src.data(), 3 * width, pointers, steps, {width, height}), status);
      for (int k = 0; k < 3; ++k) ASSERT_EQ(dst[k], expected[k]) << "plane " << k << " width " << width;
    }
  }
}

TEST(YCbCr420, InverseColumns) {
  Noise noise;
  for (int width = 2; width <= 150; ++width) {
    const int height = 4, chroma = width / 2;
    const Bytes src[3] = {noise.bytes(width * height), noise.bytes(chroma * 2), noise.bytes(chroma * 2)};
    const Zum8u* const pointers[3] = {src[0].data(), src[1].data(), src[2].data()};
    const int steps[3] = {width, chroma, chroma}, pixels = 2 * chroma;
    // One column and one row more than whole blocks: neither is written.
    Bytes dst(3 * (pixels + 1) * (height + 1), 9);
    ASSERT_EQ(zumiYCbCr420ToRGB_8u_P3C3R(pointers, steps, dst.data(), 3 * (pixels + 1), {pixels + 1, height + 1}),
              zumWrnOddSize);
    const Bytes expected = decodePlanes(src, width, chroma, pixels, height, 2, pixels / 8 * 8, truncated8, fine);
    for (int y = 0; y <= height; ++y) {
      for (int i = 0; i < 3 * (pixels + 1); ++i) {
        const bool written = y < height && i < 3 * pixels;
        ASSERT_EQ(dst[y * 3 * (pixels + 1) + i], written ? expected[y * 3 * pixels + i] : 9) << width << " " << i;
      }
    }
  }
}

// Values worked out by hand: the ends of the ranges, and where block and tail differ.
TEST(YCbCr444, KnownColours) {
  const auto forward = [](Colour rgb, int column, int width) {
    Bytes src(3 * width), dst(3 * width);
    for (int k = 0; k < 3; ++k) src[3 * column + k] = static_cast<Zum8u>(rgb[k]);
    zumiRGBToYCbCr_8u_C3R(src.data(), 0, dst.data(), 0, {width, 1});
    return Colour{dst[3 * column], dst[3 * column + 1], dst[3 * column + 2]};
  };
  EXPECT_EQ(forward({255, 255, 255}, 0, 16)[0], 235);
  EXPECT_EQ(forward({255, 255, 255}, 16, 17)[0], 235);
  EXPECT_EQ(forward({0, 0, 255}, 0, 16)[1], 239);
  EXPECT_EQ(forward({0, 0, 255}, 16, 17)[1], 240);
  EXPECT_EQ(forward({255, 0, 0}, 0, 16)[2], 239);
  EXPECT_EQ(forward({255, 0, 0}, 0, 15)[2], 240);

  const Bytes luma(9, 235), chroma(9, 128);
  const Zum8u* const planes[3] = {luma.data(), chroma.data(), chroma.data()};
  Bytes rgb(27);
  zumiYCbCrToRGB_8u_P3C3R(planes, 9, rgb.data(), 27, {9, 1});
  EXPECT_EQ(rgb[0], 255);
  EXPECT_EQ(rgb[24], 254);
}

TEST(YCbCr422, OneByteOfChromaServesBothAtWidthOne) {
  const Zum8u pair[2] = {100, 200};
  Zum8u a[3], b[3];
  zumiYCbCr422ToRGB_8u_C2C3R(pair, 2, a, 3, {1, 1});
  zumiYCrCb422ToRGB_8u_C2C3R(pair, 2, b, 3, {1, 1});
  const Colour expected = folded({100, 200, 200});
  for (int k = 0; k < 3; ++k) {
    EXPECT_EQ(a[k], expected[k]);
    EXPECT_EQ(b[k], expected[k]);
  }
}

}  // namespace
