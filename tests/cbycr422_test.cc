// RGB and BGR to and from packed CbYCr 4:2:2 against the arithmetic in plain integers, a pixel at a time: rows of every
// width that changes who takes which form, and of enough random colours.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace {

using zumtest::clamp;
using zumtest::down;
using zumtest::high;
using Bytes = std::vector<Zum8u>;
using Colour = std::array<int, 3>;

int64_t dot(const Colour& p, int r, int g, int b) { return static_cast<int64_t>(r) * p[0] + g * p[1] + b * p[2]; }
Colour operator+(const Colour& a, const Colour& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }

Zum8u low(int v) { return static_cast<Zum8u>(v & 255); }

Bytes noise(std::size_t n) {
  static std::mt19937 engine{5};
  Bytes result(n);
  for (auto& b : result) b = low(engine() % 5 ? engine() : engine() % 2 * 255);
  return result;
}

// The widths of rows, and how many rows there are of each: every end of a row, and blocks of some 2 million pixels.
const std::vector<ZumiSize> kSizes = [] {
  std::vector<ZumiSize> sizes{{4090, 500}};
  for (int width = 1; width <= 150; ++width) sizes.push_back({width, 3});
  return sizes;
}();

// What a row becomes, and a call that converts rows of `from` bytes a pixel to rows of `to`, with room for a pixel
// behind each.
template <class Row, class Call>
void expectRows(int from, int to, const Row& row, const Call& call) {
  for (const ZumiSize size : kSizes) {
    const int srcStep = from * (size.width + 1), dstStep = to * (size.width + 1);
    const Bytes src = noise(static_cast<std::size_t>(srcStep) * size.height);
    Bytes expected(static_cast<std::size_t>(dstStep) * size.height, 99);
    for (int y = 0; y < size.height; ++y) row(&src[y * srcStep], &expected[y * dstStep], size.width);
    for (const auto set : zumtest::instructionSets()) {
      zumtest::useInstructionSet(set);
      Bytes dst(expected.size(), 99);
      ASSERT_EQ(call(src.data(), srcStep, dst.data(), dstStep, size), zumOk);
      ASSERT_TRUE(dst == expected) << "width " << size.width << ' ' << hwy::TargetName(set);
    }
  }
  zumtest::useInstructionSet(zumtest::kBestInstructionSet);
}

int exactLuma(const Colour& p) { return down(dot(p, 16843, 33030, 6423) + 1081344, 16); }

void storeSingle(const Colour& p, Zum8u* to) {
  to[0] = low(down(dot(p, -9699, -19071, 28770) - 8355840, 16));
  to[1] = low(exactLuma(p));
}

// ---- RGB to 4:2:2

template <class Curve>
auto filteredRow(const Curve& curve) {
  return [=](const Zum8u* src, Zum8u* dst, int width) {
    const auto pixel = [&](int x) { return Colour{curve(src[3 * x]), curve(src[3 * x + 1]), curve(src[3 * x + 2])}; };
    for (int x = 0; x < width / 2 * 2; ++x) {
      dst[2 * x + 1] = low(down(dot(pixel(x), 8422, 16515, 3212) + 540672, 15));
      if (x % 2) continue;
      const Colour even = pixel(x), odd = pixel(x + 1) + (x > 0 ? pixel(x - 1) : Colour{});
      dst[2 * x] = low(down(dot(odd, -1213, -2385, 3596) + dot(even, -2426, -4769, 7193) + 4210687, 15));
      dst[2 * x + 2] = low(down(dot(odd, 3596, -3015, -582) + dot(even, 7193, -6030, -1164) + 4210687, 15));
    }
    // The last pixel, or the one behind the row.
    if (width % 4) storeSingle(pixel(width / 2 * 2), dst + width / 2 * 4);
  };
}

TEST(CbYCr422, FromRgb) {
  expectRows(3, 2, filteredRow([](int v) { return v; }), zumiRGBToCbYCr422_8u_C3C2R);
}

TEST(CbYCr422, FromRgbThroughTheVideoCurve) {
  const auto curve = [](int v) {
    const double x = v / 255.0;
    return static_cast<int>(std::nearbyint(x < 0.018 ? 4.5 * v : 255 * (1.099 * std::pow(x, 0.45) - 0.099)));
  };
  const int known[] = {0, 4, 9, 14, 18, 23, 27, 30};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(curve(i), known[i]);
  EXPECT_EQ(curve(100), 159);
  EXPECT_EQ(curve(253), 254);
  expectRows(3, 2, filteredRow(curve), zumiRGBToCbYCr422Gamma_8u_C3C2R);
}

// By hand: black, and a row of one colour, which begins with a quarter less of it.
TEST(CbYCr422, RowsBeginWithLessColour) {
  const Bytes black(3 * 8), red = {255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0};
  Bytes dst(16);
  zumiRGBToCbYCr422_8u_C3C2R(black.data(), 24, dst.data(), 16, {8, 1});
  EXPECT_EQ(dst, Bytes({128, 16, 128, 16, 128, 16, 128, 16, 128, 16, 128, 16, 128, 16, 128, 16}));
  dst.resize(8);
  zumiRGBToCbYCr422_8u_C3C2R(red.data(), 12, dst.data(), 8, {4, 1});
  EXPECT_EQ(dst, Bytes({100, 82, 212, 82, 90, 82, 240, 82}));
}

// ---- BGR to 4:2:2

void bgrRow(const Zum8u* src, Zum8u* dst, int width) {
  const auto rgb = [&](int x) { return Colour{src[4 * x + 2], src[4 * x + 1], src[4 * x]}; };
  for (int x = 0; x + 1 < width; x += 2) {
    const Colour sum = rgb(x) + rgb(x + 1);
    Zum8u* to = dst + 2 * x;
    for (int i = 0; i < 2; ++i) {
      const Colour p = rgb(x + i);
      const int terms = p[0] * 8422 / 256 + p[1] * 16515 / 256 + p[2] * 3212 / 256;
      to[2 * i + 1] = low(x < width / 8 * 8 ? (terms + 2112) / 128 : exactLuma(p));
    }
    if (x < width / 8 * 8) {
      const int r = 64 * sum[0], g = 64 * sum[1], b = 64 * sum[2];
      to[0] = low(down(high(r, -9699) + high(g, -19071) + high(b, 28770) + 16448, 7));
      to[2] = low(down(high(r, 28770) + high(g, -24117) + high(b, -4653) + 16448, 7));
    } else {
      to[0] = low(down(dot(sum, -9699, -19071, 28770) - 16711680, 17));
      to[2] = low(down(dot(sum, 28770, -24117, -4653) - 16711682, 17));
    }
  }
  // Its bytes taken as R, G, B.
  const Zum8u* last = src + 4 * (width - 1);
  if (width % 2) storeSingle({last[0], last[1], last[2]}, dst + 2 * (width - 1));
}

TEST(CbYCr422, FromBgr) { expectRows(4, 2, bgrRow, zumiBGRToCbYCr422_8u_AC4C2R); }

// ---- 4:2:2 to RGB and BGR

Colour decoded(int y, int cb, int cr, bool inBlock) {
  const int u = cb - 128, v = cr - 128;
  if (inBlock) {
    const int t = high(128 * (y - 16), 9535) + 8;
    return {clamp(down(t + high(128 * v, 13074), 4)), clamp(down(t + high(128 * v, -6660) + high(128 * u, -3211), 4)),
            clamp(down(t + high(128 * u, 16523), 4))};
  }
  const int64_t w = 76282LL * y - 1187744;
  return {clamp(down(w + 104593LL * v, 16)), clamp(down(w - 25689LL * u - 53279LL * v, 16)),
          clamp(down(w + 132184LL * u, 16))};
}

// red and blue are the places of these channels in a pixel of `channels` bytes, the fourth of which is alpha.
auto decodedRow(int channels, int red, int blue, Zum8u alpha) {
  return [=](const Zum8u* src, Zum8u* dst, int width) {
    for (int x = 0; x < width; ++x) {
      const int cb = src[x / 2 * 4];
      const int cr = x / 2 * 2 + 1 < width ? src[x / 2 * 4 + 2] : width > 1 ? src[x / 2 * 4 - 2] : cb;
      const Colour rgb = decoded(src[2 * x + 1], cb, cr, x < width / 8 * 8);
      Zum8u* to = dst + channels * x;
      to[red] = low(rgb[0]);
      to[1] = low(rgb[1]);
      to[blue] = low(rgb[2]);
      if (channels == 4) to[3] = alpha;
    }
  };
}

TEST(CbYCr422, ToRgb) { expectRows(2, 3, decodedRow(3, 0, 2, 0), zumiCbYCr422ToRGB_8u_C2C3R); }

TEST(CbYCr422, ToBgrWithAlpha) {
  for (const Zum8u alpha : {0, 201}) {
    expectRows(2, 4, decodedRow(4, 2, 0, alpha),
               [=](const Zum8u* src, int srcStep, Zum8u* dst, int dstStep, ZumiSize size) {
                 return zumiCbYCr422ToBGR_8u_C2C4R(src, srcStep, dst, dstStep, size, alpha);
               });
  }
}

}  // namespace
