// RGB and YUV against the arithmetic in plain integers: every function, at every width that changes who takes which
// form.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "support/plain.h"
#include "zumcc.h"

namespace {

using zumtest::clamp;
using zumtest::down;
using zumtest::high;
using zumtest::rounded15;
using Colour = std::array<int, 3>;

// ---- RGB to YUV: forms of the n pixels, 1, 2 or 4, that share chroma. Nothing is saturated unless it can leave a
// byte.

struct Coded {
  int y[4], u, v;
};
using Encode = Coded (*)(const Colour*, int n);

Coded truncatedTerms(const Colour* p, int) {
  const int r = 128 * p[0][0], g = 128 * p[0][1], b = 128 * p[0][2];
  return {{down(high(19595, 2 * r) + high(38469, 2 * g) + high(7471, 2 * b), 8)},
          down(high(-4816, r) + high(-9469, g) + high(14286, b), 6) + 128,
          clamp(down(high(20152, r) + high(-16875, g) + high(-3276, b), 6) + 128)};
}
Coded twoTerms(const Colour* p, int) {
  const auto sum = [p](int r, int g, int b) { return down(r * p[0][0] + g * p[0][1], 15) + down(b * p[0][2], 15); };
  return {{sum(9798, 19235, 3736)}, sum(-4817, -9470, 14287) + 128, clamp(sum(20152, -16876, -3277) + 128)};
}
// A single pixel is a pair of itself.
Coded twiceLuma(const Colour* p, int n) {
  const Colour &p0 = p[0], &p1 = p[n - 1];
  const auto twice = [](const Colour& c) { return down(9798 * c[0] + 19235 * c[1], 14) + down(3736 * c[2], 14); };
  const int mean = down(twice(p0) + twice(p1), 1);
  return {{down(twice(p0), 1), down(twice(p1), 1)},
          high(16121, p0[2] + p1[2] - mean) + 128,
          clamp(high(28737, p0[0] + p1[0] - mean) + 128)};
}
Coded tenBits(const Colour* p, int n) {
  Coded result{};
  int luma = 0, red = 0, blue = 0;
  for (int i = 0; i < n; ++i) {
    const auto q = [&](int k) { return p[i][k] * 4 + p[i][k] / 64; };
    const int a = high(9798, q(0)) + high(19235, q(1)) + high(3736, q(2));
    result.y[i] = a / 2;
    luma += a;
    red += q(0);
    blue += q(2);
  }
  if (n == 2) {
    result.u = down(high(16121, blue / 2 - luma), 1) + 128;
    result.v = clamp(down(high(28737, red / 2 - luma), 1) + 128);
  } else {
    result.u = high(16121, blue / 8 - luma / 4) + 128;
    result.v = clamp(high(28737, red / 8 - luma / 4) + 128);
  }
  return result;
}
Coded roundedLuma(const Colour* p, int n) {
  Coded result{};
  int luma = 0, red = 0, blue = 0;
  for (int i = 0; i < n; ++i) {
    const int l = rounded15(4899, 128 * p[i][0]) + rounded15(9617, 128 * p[i][1]) + rounded15(1868, 128 * p[i][2]);
    result.y[i] = l / 64;
    luma += l;
    red += p[i][0];
    blue += p[i][2];
  }
  result.u = down(rounded15(8061, 32 * blue - luma / 2), 6) + 128;
  result.v = clamp(down(rounded15(14369, 32 * red - luma / 2), 6) + 128);
  return result;
}
Coded exact14(const Colour* p, int n) {
  Coded result{};
  int64_t luma = 0, red = 0, blue = 0;
  for (int i = 0; i < n; ++i) {
    const int l = 4899 * p[i][0] + 9617 * p[i][1] + 1868 * p[i][2];
    result.y[i] = l / 16384;
    luma += l;
    red += 16384 * p[i][0];
    blue += 16384 * p[i][2];
  }
  result.u = down(8061 * down(blue - luma, 14), 16) + 128;
  result.v = clamp(down(14369 * down(red - luma, 14), 16) + 128);
  return result;
}
// Luma exact at 2^bits times the sample, chroma from the differences to it, what is added to them, and its factors.
Coded differences(const Colour& p, int bits, const Colour& luma, int uRounding, int vRounding, int64_t u, int64_t v) {
  const int64_t l = static_cast<int64_t>(luma[0]) * p[0] + static_cast<int64_t>(luma[1]) * p[1] + luma[2] * p[2];
  const int64_t scale = 1LL << bits;
  return {{down(l, bits)},
          down(u * down(scale * p[2] - l + uRounding, bits), bits) + 128,
          clamp(down(v * down(scale * p[0] - l + vRounding, bits), bits) + 128)};
}
Coded exact16(const Colour* p, int) { return differences(*p, 16, {19595, 38470, 7471}, 32767, 32767, 32244, 57475); }
Coded unevenlyRounded15(const Colour* p, int) {
  return differences(*p, 15, {9798, 19235, 3736}, 16383, 32767, 16121, 28737);
}
Coded truncated15(const Colour* p, int) { return differences(*p, 15, {9798, 19235, 3736}, 0, 0, 16121, 28737); }
Coded exactSums(const Colour* p, int) {
  const int r = p[0][0], g = p[0][1], b = p[0][2];
  return {{down(19595LL * r + 38469LL * g + 7471LL * b, 16)},
          down(-4816 * r - 9469 * g + 14286 * b, 15) + 128,
          clamp(down(20152 * r - 16875 * g - 3276 * b, 15) + 128)};
}

// ---- YUV to RGB

using Decode = Colour (*)(const Colour&);

Colour truncated1(const Colour& p) {
  const int u = 8 * (p[1] - 128), v = 8 * (p[2] - 128);
  return {clamp(p[0] + high(9339, v)), clamp(p[0] + high(-3228, u) + high(-4760, v)), clamp(p[0] + high(16646, u))};
}
Colour truncated2(const Colour& p) {
  const int y = 2 * p[0], u = 16 * (p[1] - 128), v = 16 * (p[2] - 128);
  return {clamp(down(y + high(9338, v), 1)), clamp(down(y + high(-3227, u) + high(-4759, v), 1)),
          clamp(down(y + high(16645, u), 1))};
}
Colour parts(const Colour& p) {
  const int u = 64 * (p[1] - 128), v = 64 * (p[2] - 128);
  return {clamp(p[0] + down(high(18677, v), 4)), clamp(p[0] - down(high(6455, u) + high(9519, v), 4)),
          clamp(p[0] + down(high(16646, u), 3))};
}
Colour rounded16(const Colour& p) {
  const int y = 16 * p[0] + 8, u = 128 * (p[1] - 128), v = 128 * (p[2] - 128);
  return {clamp(down(y + high(9338, v), 4)), clamp(down(y - high(3227, u) - high(4759, v), 4)),
          clamp(down(y + high(16646, u), 4))};
}
template <int kBits, int kRed, int kGreenU, int kGreenV, int kBlueBits, int kBlue, int kRounding = 0>
Colour exact(const Colour& p) {
  const int64_t u = p[1] - 128, v = p[2] - 128;
  const auto sum = [&](int64_t terms, int bits) {
    return clamp(down((int64_t{p[0]} << bits) + terms + kRounding, bits));
  };
  return {sum(kRed * v, kBits), sum(-kGreenU * u - kGreenV * v, kBits), sum(kBlue * u, kBlueBits)};
}
constexpr Decode fine = exact<16, 74711, 25821, 38076, 16, 133169>;
constexpr Decode fineRounded = exact<16, 74711, 25821, 38076, 16, 133169, 32768>;
constexpr Decode exactParts = exact<14, 18677, 6455, 9519, 13, 16646>;
constexpr Decode coarse = exact<13, 9338, 3227, 4759, 13, 16645>;

// ---- Images in all the layouts

enum class Layout { kC2, kC3, kC4, kP3, kP422, kP420 };

struct Image {
  Layout layout;
  int width, height;
  std::vector<Zum8u> samples[3];
  Zum8u* planes[3];
  int steps[3];

  Image(Layout l, int w, int h, bool tight) : layout(l), width(w), height(h) {
    const int perPixel = l == Layout::kC2 ? 2 : l == Layout::kC3 ? 3 : l == Layout::kC4 ? 4 : 1;
    for (int k = 0; k < 3; ++k) {
      const bool half = k > 0 && (l == Layout::kP422 || l == Layout::kP420);
      const int columns = !half ? perPixel * w : l == Layout::kP420 ? w / 2 : (w + 1) / 2;
      steps[k] = columns + (tight ? 0 : 5);
      samples[k].assign(steps[k] * h + 1, 77);
      planes[k] = samples[k].data();
    }
  }
  Image(const Image&) = delete;

  // Channel k of a pixel; null if the layout has no place for it.
  Zum8u* at(int k, int x, int y) {
    if (layout == Layout::kC4) return planes[0] + y * steps[0] + 4 * x + k;
    if (k >= 3) return nullptr;
    const auto plane = [&](int p, int column, int row) { return planes[p] + row * steps[p] + column; };
    switch (layout) {
      case Layout::kC2:
        if (k == 2 && (x | 1) >= width) return nullptr;
        return plane(0, k == 0 ? 2 * x : 2 * (x & ~1) + 2 * k - 1, y);
      case Layout::kC3:
        return plane(0, 3 * x + k, y);
      case Layout::kP422:
        return plane(k, k == 0 ? x : x / 2, y);
      case Layout::kP420:
        return k == 0 ? plane(0, x, y) : (x | 1) < width && (y | 1) < height ? plane(k, x / 2, y / 2) : nullptr;
      default:
        return plane(k, x, y);
    }
  }
};

// An image as the arguments of a declaration.
template <class T>
T argument(Image& image) {
  if constexpr (std::is_same_v<T, int>) {
    return image.steps[0];
  } else if constexpr (std::is_same_v<T, const int*>) {
    return image.steps;
  } else if constexpr (std::is_pointer_v<std::remove_pointer_t<T>>) {
    return image.planes;
  } else {
    return image.planes[0];
  }
}

using Call = std::function<ZumStatus(Image&, Image&)>;

template <class Src, class SrcStep, class Dst, class DstStep>
Call call(ZumStatus (*function)(Src, SrcStep, Dst, DstStep, ZumiSize)) {
  return [=](Image& src, Image& dst) {
    return function(argument<Src>(src), argument<SrcStep>(src), argument<Dst>(dst), argument<DstStep>(dst),
                    {src.width, src.height});
  };
}
template <class Src, class Dst>
Call call(ZumStatus (*function)(Src, Dst, ZumiSize)) {
  return [=](Image& src, Image& dst) {
    return function(argument<Src>(src), argument<Dst>(dst), {src.width, src.height});
  };
}

// ---- The functions

struct Conversion {
  const char* name;
  Call run;
  Layout src, dst;
  int pixels, rows;  // that share chroma
  int block;         // the width is rounded down to this for block columns
  Encode encodeBlock, encodeTail, encodeLast;
  Decode decodeBlock, decodeTail, decodeLast;
  bool zeroFourth, tight;
};

Conversion encoder(const char* name, Call run, Layout src, Layout dst, int block, Encode inBlock, Encode tail,
                   Encode last = nullptr, bool tight = false) {
  const int rows = dst == Layout::kP420 ? 2 : 1, pixels = dst == Layout::kP422 || dst == Layout::kC2 ? 2 : rows;
  return {name, run, src, dst, pixels, rows, block, inBlock, tail, last, nullptr, nullptr, nullptr, false, tight};
}
Conversion decoder(const char* name, Call run, Layout src, Layout dst, int block, Decode inBlock, Decode tail,
                   Decode last = nullptr, bool zeroFourth = false, bool tight = false) {
  const int rows = src == Layout::kP420 ? 2 : 1, pixels = src == Layout::kP422 || src == Layout::kC2 ? 2 : rows;
  return {name, run, src, dst, pixels, rows, block, nullptr, nullptr, nullptr, inBlock, tail, last, zeroFourth, tight};
}

#define NAMED(function) #function, call(function)

const Conversion kConversions[] = {
    encoder(NAMED(zumiRGBToYUV_8u_C3R), Layout::kC3, Layout::kC3, 16, truncatedTerms, twiceLuma),
    encoder(NAMED(zumiRGBToYUV_8u_AC4R), Layout::kC4, Layout::kC4, 8, twoTerms, twiceLuma),
    encoder(NAMED(zumiRGBToYUV_8u_P3R), Layout::kP3, Layout::kP3, 16, truncatedTerms, exactSums),
    encoder(NAMED(zumiRGBToYUV_8u_C3P3R), Layout::kC3, Layout::kP3, 8, truncatedTerms, exact16),
    encoder(NAMED(zumiRGBToYUV422_8u_C3C2R), Layout::kC3, Layout::kC2, 16, twiceLuma, twiceLuma, twiceLuma),
    encoder(NAMED(zumiRGBToYUV422_8u_C3P3R), Layout::kC3, Layout::kP422, 16, twiceLuma, twiceLuma, unevenlyRounded15),
    encoder(NAMED(zumiRGBToYUV422_8u_P3R), Layout::kP3, Layout::kP422, 16, tenBits, tenBits, truncated15),
    encoder(NAMED(zumiRGBToYUV422_8u_C3P3), Layout::kC3, Layout::kP422, 16, twiceLuma, twiceLuma, unevenlyRounded15,
            true),
    encoder(NAMED(zumiRGBToYUV422_8u_P3), Layout::kP3, Layout::kP422, 16, tenBits, tenBits, truncated15, true),
    encoder(NAMED(zumiRGBToYUV420_8u_C3P3R), Layout::kC3, Layout::kP420, 8, roundedLuma, exact14),
    encoder(NAMED(zumiRGBToYUV420_8u_P3R), Layout::kP3, Layout::kP420, 16, tenBits, tenBits),
    encoder(NAMED(zumiRGBToYUV420_8u_C3P3), Layout::kC3, Layout::kP420, 8, roundedLuma, exact14, nullptr, true),
    encoder(NAMED(zumiRGBToYUV420_8u_P3), Layout::kP3, Layout::kP420, 16, tenBits, tenBits, nullptr, true),
    decoder(NAMED(zumiYUVToRGB_8u_C3R), Layout::kC3, Layout::kC3, 8, truncated1, truncated1),
    decoder(NAMED(zumiYUVToRGB_8u_AC4R), Layout::kC4, Layout::kC4, 4, truncated1, truncated1),
    decoder(NAMED(zumiYUVToRGB_8u_P3R), Layout::kP3, Layout::kP3, 8, parts, exactParts),
    decoder(NAMED(zumiYUVToRGB_8u_P3C3R), Layout::kP3, Layout::kC3, 16, truncated2, truncated2),
    decoder(NAMED(zumiYUV422ToRGB_8u_C2C3R), Layout::kC2, Layout::kC3, 8, truncated2, truncated2, coarse),
    decoder(NAMED(zumiYUV422ToRGB_8u_P3C3R), Layout::kP422, Layout::kC3, 16, truncated2, fine, fine),
    decoder(NAMED(zumiYUV422ToRGB_8u_P3R), Layout::kP422, Layout::kP3, 16, truncated2, truncated2, coarse),
    decoder(NAMED(zumiYUV422ToRGB_8u_P3AC4R), Layout::kP422, Layout::kC4, 4, rounded16, fine, fine, true),
    decoder(NAMED(zumiYUV422ToRGB_8u_P3C3), Layout::kP422, Layout::kC3, 16, truncated2, fine, fine, false, true),
    decoder(NAMED(zumiYUV422ToRGB_8u_P3), Layout::kP422, Layout::kP3, 16, truncated2, truncated2, coarse, false, true),
    decoder(NAMED(zumiYUV420ToRGB_8u_P3C3R), Layout::kP420, Layout::kC3, 16, truncated2, truncated2),
    decoder(NAMED(zumiYUV420ToRGB_8u_P3R), Layout::kP420, Layout::kP3, 16, truncated2, truncated2),
    decoder(NAMED(zumiYUV420ToRGB_8u_P3AC4R), Layout::kP420, Layout::kC4, 4, rounded16, fineRounded, nullptr, true),
    decoder(NAMED(zumiYUV420ToRGB_8u_P3C3), Layout::kP420, Layout::kC3, 16, truncated2, truncated2, nullptr, false,
            true),
    decoder(NAMED(zumiYUV420ToRGB_8u_P3), Layout::kP420, Layout::kP3, 16, truncated2, truncated2, nullptr, false, true),
};

bool isBlockColumn(const Conversion& c, int x, int y, int width, int height) {
  if (c.tight && c.rows == 1 && width % 2 == 0 && width * height >= 256) {  // one row, in two pieces
    x += y * width;
    width *= height;
    if (x >= width / 8 * 8)
      x -= width / 8 * 8, width %= 8;
    else
      width = width / 8 * 8;
  }
  return x < width / c.block * c.block;
}

void expectGroup(const Conversion& c, Image& src, Image& dst, int x0, int y0) {
  const bool isBlock = isBlockColumn(c, x0, y0, src.width, src.height), isLast = x0 + c.pixels > src.width;
  const int n = isLast ? 1 : c.pixels * c.rows;
  const auto x = [&](int i) { return x0 + i % c.pixels; };
  const auto y = [&](int i) { return y0 + i / c.pixels; };
  const auto set = [&](int k, int i, int value) {
    if (Zum8u* sample = dst.at(k, x(i), y(i))) *sample = static_cast<Zum8u>(value);
  };
  if (c.encodeBlock) {
    Colour p[4] = {};
    for (int i = 0; i < n; ++i) p[i] = {*src.at(0, x(i), y(i)), *src.at(1, x(i), y(i)), *src.at(2, x(i), y(i))};
    const Coded coded = (isLast ? c.encodeLast : isBlock ? c.encodeBlock : c.encodeTail)(p, n);
    for (int i = 0; i < n; ++i) set(0, i, coded.y[i]);
    set(1, 0, coded.u);
    set(2, 0, coded.v);
    return;
  }
  for (int i = 0; i < n; ++i) {
    const Zum8u* v = src.at(2, x(i), y(i));
    Decode form = isLast ? c.decodeLast : isBlock ? c.decodeBlock : c.decodeTail;
    if (!v) v = src.at(0, x0, y0) - 1;  // half a pair: the chroma of the pair before
    if (src.layout == Layout::kC2 && src.width == 1) v = src.at(1, x0, y0), form = fine;
    const Colour rgb = form({*src.at(0, x(i), y(i)), *src.at(1, x(i), y(i)), *v});
    for (int k = 0; k < 3; ++k) set(k, i, rgb[k]);
    if (c.zeroFourth) set(3, i, 0);
  }
}

void verify(const Conversion& c, int width, int height, std::mt19937& random) {
  Image src(c.src, width, height, c.tight), dst(c.dst, width, height, c.tight), expected(c.dst, width, height, c.tight);
  for (auto& plane : src.samples)
    for (auto& sample : plane) sample = static_cast<Zum8u>(random() % 5 ? random() : random() % 2 * 255);
  const bool isWhole = c.rows == 1 || (width % 2 == 0 && height % 2 == 0);
  ASSERT_EQ(c.run(src, dst), isWhole ? zumOk : zumWrnOddSize) << c.name;
  for (int y = 0; y + c.rows <= height; y += c.rows)
    for (int x = 0; x < (c.rows == 2 ? width & ~1 : width); x += c.pixels) expectGroup(c, src, expected, x, y);
  for (int k = 0; k < 3; ++k)
    ASSERT_TRUE(dst.samples[k] == expected.samples[k]) << c.name << " " << width << "x" << height << " plane " << k;
}

TEST(Yuv, EveryColumn) {
  std::mt19937 random(7);
  for (const Conversion& c : kConversions) {
    for (int width = 1; width <= 150; ++width) verify(c, width, 1 + width % 3, random);
    verify(c, 1000, 200, random);
  }
}

// One row in two pieces from 256 pixels on, if the width is even.
TEST(Yuv, TightImages) {
  std::mt19937 random(8);
  const ZumiSize sizes[] = {{16, 16}, {14, 14}, {10, 30}, {254, 1}, {256, 1}, {2, 129}, {17, 20}, {26, 11}, {66, 7}};
  for (const Conversion& c : kConversions)
    for (const ZumiSize& size : sizes) verify(c, size.width, size.height, random);
}

// ---- Values worked out by hand

Colour convertUniform(const Conversion& c, const Colour& colour, int width, int x) {
  Image src(c.src, width, 2, c.tight), dst(c.dst, width, 2, c.tight);
  for (int i = 0; i < 2 * width; ++i) {
    for (int k = 0; k < 3; ++k)
      if (Zum8u* sample = src.at(k, i % width, i / width)) *sample = static_cast<Zum8u>(colour[k]);
  }
  c.run(src, dst);
  Colour result;
  for (int k = 0; k < 3; ++k) result[k] = dst.at(k, x, 0) ? *dst.at(k, x, 0) : -1;
  return result;
}

const Conversion& find(const std::string& name) {
  return *std::find_if(std::begin(kConversions), std::end(kConversions), [&](auto& c) { return c.name == name; });
}

TEST(Yuv, KnownColours) {
  const Colour white = {255, 255, 255}, red = {255, 0, 0}, yuv = {100, 200, 50};
  const Colour roundedWhite = {254, 128, 128}, truncatedWhite = {254, 127, 127};
  EXPECT_EQ(convertUniform(find("zumiRGBToYUV_8u_C3R"), white, 17, 15), truncatedWhite);
  EXPECT_EQ(convertUniform(find("zumiRGBToYUV_8u_C3R"), white, 17, 16), roundedWhite);
  EXPECT_EQ(convertUniform(find("zumiRGBToYUV_8u_C3P3R"), white, 9, 7), truncatedWhite);
  EXPECT_EQ(convertUniform(find("zumiRGBToYUV_8u_C3P3R"), white, 9, 8), (Colour{255, 128, 128}));
  for (const Conversion& c : kConversions) {
    if (!c.encodeBlock) continue;
    for (const int x : {0, 33}) EXPECT_EQ(convertUniform(c, red, 34, x), (Colour{76, 90, 255})) << c.name << " " << x;
  }
  struct {
    const char* name;
    int inBlock, behind;  // green
  } const kGreen[] = {{"zumiYUVToRGB_8u_C3R", 116, 116},       {"zumiYUVToRGB_8u_P3C3R", 116, 116},
                      {"zumiYUV422ToRGB_8u_P3C3R", 116, 116},  {"zumiYUV422ToRGB_8u_P3AC4R", 117, 116},
                      {"zumiYUV420ToRGB_8u_P3AC4R", 117, 117}, {"zumiYUVToRGB_8u_P3R", 118, 116}};
  for (const auto& g : kGreen) {
    EXPECT_EQ(convertUniform(find(g.name), yuv, 34, 0)[1], g.inBlock) << g.name;
    EXPECT_EQ(convertUniform(find(g.name), yuv, 34, 33)[1], g.behind) << g.name;
  }
}

}  // namespace
