// 16-bit pixels from YCbCr and YUV, plain and dithered, against the arithmetic in plain integers, one pixel at a time:
// every function at every width that changes who takes which form. RGB to and from RGB565 on every value.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace {

using zumtest::clamp;
using zumtest::down;
using zumtest::high;
using Bytes = std::vector<Zum8u>;
using Words = std::vector<Zum16u>;
using Colour = std::array<int, 3>;
using Form = Colour (*)(const Colour&);

// ---- From Y, Cb, Cr to R, G, B

Colour over16(int t, const Colour& p, int red, int greenCb, int greenCr, int blue) {
  const int u = 128 * (p[1] - 128), v = 128 * (p[2] - 128);
  return {clamp(down(t + high(red, v), 4)), clamp(down(t - high(greenCr, v) - high(greenCb, u), 4)),
          clamp(down(t + high(blue, u), 4))};
}
Colour truncated(const Colour& p) { return over16(high(9535, 128 * (p[0] - 16)), p, 13074, 3211, 6660, 16523); }
Colour rounded(const Colour& p) { return over16(high(9535, 128 * (p[0] - 16)) + 8, p, 13074, 3211, 6660, 16523); }
Colour yuvTruncated(const Colour& p) { return over16(16 * p[0], p, 9338, 3227, 4759, 16646); }

Colour over65536(int64_t w, int u, int v, int red, int greenCb, int greenCr, int blue) {
  return {clamp(down(w + int64_t{red} * v, 16)), clamp(down(w - int64_t{greenCb} * u - int64_t{greenCr} * v, 16)),
          clamp(down(w + int64_t{blue} * u, 16))};
}
Colour centred(const Colour& p) {
  return over65536(76284LL * p[0] - 1220544, p[1] - 128, p[2] - 128, 104595, 25690, 53281, 132186);
}
Colour yuvCentred(const Colour& p) {
  return over65536(65536LL * p[0], p[1] - 128, p[2] - 128, 74711, 25821, 38076, 133169);
}
Colour folded(const Colour& p) {
  const int64_t w = 76284LL * p[0];
  return {clamp(down(w + 104595LL * p[2] - 14608761, 16)),
          clamp(down(w - 53281LL * p[2] - 25690LL * p[1] + 8887730, 16)),
          clamp(down(w + 132186LL * p[1] - 18140365, 16))};
}

// ---- From R, G, B to bits

struct Bits {
  int outer, green;
  bool blueFirst;
};

int packed(const Colour& levels, const Bits& bits) {
  const int first = levels[bits.blueFirst ? 2 : 0], last = levels[bits.blueFirst ? 0 : 2];
  return first + levels[1] * (1 << bits.outer) + last * (1 << (bits.outer + bits.green));
}

Colour cut(const Colour& rgb, const Bits& bits) {
  return {rgb[0] >> (8 - bits.outer), rgb[1] >> (8 - bits.green), rgb[2] >> (8 - bits.outer)};
}

int dithered(int v, int bits, int x, int y) {
  const int fine[16] = {0, 1118, 279, 1398, 1678, 559, 1957, 839, 419, 1538, 139, 1258, 2097, 978, 1817, 699};
  const int rank[16] = {0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};
  const int at = y % 4 * 4 + x % 4, threshold = bits == 4 ? 289 * rank[at] : bits == 5 ? fine[at] : fine[at] / 2;
  const int step = bits == 4 ? 4352 : bits == 5 ? 2105 : 1036, level = ((1 << bits) - 1) * v / 256;
  return v * 256 - level * step > threshold ? level + 1 : level;
}
Colour dithered(const Colour& rgb, const Bits& bits, int x, int y) {
  return {dithered(rgb[0], bits.outer, x, y), dithered(rgb[1], bits.green, x, y), dithered(rgb[2], bits.outer, x, y)};
}

// ---- The functions

using FromPixels = ZumStatus (*)(const Zum8u*, int, Zum16u*, int, ZumiSize);
using FromPlanes = ZumStatus (*)(const Zum8u* const*, int, Zum16u*, int, ZumiSize);
using FromSteppedPlanes = ZumStatus (*)(const Zum8u* const*, const int*, Zum16u*, int, ZumiSize);

struct Model {
  const char* name;
  Bits bits;
  bool dither;
  FromPixels c3, c2;
  FromPlanes p3;
  FromSteppedPlanes p422, p420, yuv420;
};
#define MODEL(name, outer, green, blueFirst, dither)                                                                 \
  {                                                                                                                  \
#name, {outer, green, blueFirst }, dither, zumiYCbCrTo##name##_8u16u_C3R, zumiYCbCr422To##name##_8u16u_C2C3R,    \
            zumiYCbCrTo##name##_8u16u_P3C3R, zumiYCbCr422To##name##_8u16u_P3C3R, zumiYCbCr420To##name##_8u16u_P3C3R, \
            zumiYUV420To##name##_8u16u_P3C3R                                                                         \
  }
const Model kModels[] = {
    MODEL(RGB565, 5, 6, false, false),      MODEL(BGR565, 5, 6, true, false),
    MODEL(RGB555, 5, 5, false, false),      MODEL(BGR555, 5, 5, true, false),
    MODEL(RGB444, 4, 4, false, false),      MODEL(BGR444, 4, 4, true, false),
    MODEL(RGB565Dither, 5, 6, false, true), MODEL(BGR565Dither, 5, 6, true, true),
    MODEL(RGB555Dither, 5, 5, false, true), MODEL(BGR555Dither, 5, 5, true, true),
    MODEL(RGB444Dither, 4, 4, false, true), MODEL(BGR444Dither, 4, 4, true, true),
};

// An image of planes whose chroma samples serve xShared by yShared pixels, and the same as interleaved rows, with a few
// bytes behind each row.
class Image {
 public:
  static constexpr int kBehind = 3;

  Image(ZumiSize s, int xShared, int yShared, int behind) : size(s), xShared_(xShared), yShared_(yShared) {
    const int chromaWidth = (size.width + xShared - 1) / xShared, chromaHeight = (size.height + yShared - 1) / yShared;
    const int widths[3] = {size.width, chromaWidth, chromaWidth};
    for (int k = 0; k < 3; ++k) {
      steps[k] = widths[k] + behind;
      planes[k].resize(steps[k] * (k == 0 ? size.height : chromaHeight));
      for (Zum8u& sample : planes[k]) sample = static_cast<Zum8u>(random() % 4 ? random() : random() % 2 * 255);
      pointers[k] = planes[k].data();
    }
  }

  Colour at(int x, int y) const {
    const int chroma = y / yShared_ * steps[1] + x / xShared_;
    return {planes[0][y * steps[0] + x], planes[1][chroma], planes[2][chroma]};
  }

  // Rows of Y, Cb, Cr, or of pairs Y, Cb, Y, Cr.
  Bytes interleaved(int samples, int step) const {
    Bytes result(step * size.height);
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) {
        Zum8u* to = &result[y * step + samples * x];
        for (int k = 0; k < samples; ++k) to[k] = static_cast<Zum8u>(at(x, y)[samples == 2 && k == 1 ? 1 + x % 2 : k]);
      }
    }
    return result;
  }

  ZumiSize size;
  Bytes planes[3];
  const Zum8u* pointers[3];
  int steps[3];

 private:
  static std::uint32_t random() {
    static std::mt19937 engine{5};
    return engine();
  }
  int xShared_, yShared_;
};

// A pixel of the result.
int expected(const Model& model, const Colour& rgb, int x, int y) {
  return packed(model.dither ? dithered(rgb, model.bits, x, y) : cut(rgb, model.bits), model.bits);
}

// The destination of a call: an odd number of bytes behind its rows, of which the step loses one.
struct Target {
  explicit Target(ZumiSize s) : size(s), step(2 * s.width + 5), pixels((s.width + 2) * s.height) {}
  int at(int x, int y) const { return pixels[y * (size.width + 2) + x]; }
  ZumiSize size;
  int step;
  Words pixels;
};

// Compares a result with the colours of its pixels, plain or dithered.
template <class Colours>
testing::AssertionResult isAs(const Target& target, const Model& model, const char* source, const Colours& colours) {
  for (int y = 0; y < target.size.height; ++y) {
    for (int x = 0; x < target.size.width; ++x) {
      if (const int pixel = expected(model, colours(x, y), x, y); target.at(x, y) != pixel)
        return testing::AssertionFailure()
               << model.name << " from " << source << ", " << target.size.width << " by " << target.size.height
               << ": pixel " << x << ", " << y << " is " << target.at(x, y) << ", not " << pixel;
    }
  }
  return testing::AssertionSuccess();
}

TEST(Packed16, EverySize) {
  for (int width = 1; width <= 140; width += width < 70 ? 1 : 13) {
    const ZumiSize size = {width, 1 + width % 6};
    const Image full(size, 1, 1, 3), half(size, 2, 1, 3), quarter(size, 2, 2, 3);
    const Bytes c3 = full.interleaved(3, 3 * width + 4), c2 = half.interleaved(2, 2 * width + 4);
    for (const Model& m : kModels) {
      Target to(size);
      ASSERT_EQ(m.c3(c3.data(), 3 * width + 4, to.pixels.data(), to.step, size), zumOk);
      ASSERT_TRUE(isAs(to, m, "C3", [&](int x, int y) {
        return m.dither || x < width / 8 * 8 ? truncated(full.at(x, y)) : centred(full.at(x, y));
      }));
      ASSERT_EQ(m.p3(full.pointers, full.steps[0], to.pixels.data(), to.step, size), zumOk);
      ASSERT_TRUE(isAs(to, m, "P3", [&](int x, int y) { return truncated(full.at(x, y)); }));
      if (m.dither || width > 1) {
        ASSERT_EQ(m.c2(c2.data(), 2 * width + 4, to.pixels.data(), to.step, size), zumOk);
        ASSERT_TRUE(isAs(to, m, "C2", [&](int x, int y) {
          Colour p = half.at(x, y);
          const bool lone = x % 2 == 0 && x + 1 == width;
          if (lone) p[2] = m.dither ? p[1] : half.at(x - 1, y)[2];
          return m.dither || x < width / 4 * 4 ? truncated(p) : lone ? centred(p) : folded(p);
        }));
      }
      ASSERT_EQ(m.p422(half.pointers, half.steps, to.pixels.data(), to.step, size), zumOk);
      ASSERT_TRUE(isAs(to, m, "4:2:2", [&](int x, int y) { return truncated(half.at(x, y)); }));
      ASSERT_EQ(m.p420(quarter.pointers, quarter.steps, to.pixels.data(), to.step, size), zumOk);
      ASSERT_TRUE(isAs(to, m, "4:2:0", [&](int x, int y) { return truncated(quarter.at(x, y)); }));
      ASSERT_EQ(m.yuv420(quarter.pointers, quarter.steps, to.pixels.data(), to.step, size), zumOk);
      ASSERT_TRUE(isAs(to, m, "YUV 4:2:0", [&](int x, int y) {
        const bool paired = (x | 1) < width && (y | 1) < size.height;
        return m.dither || paired ? yuvTruncated(quarter.at(x, y)) : yuvCentred(quarter.at(x, y));
      }));
    }
  }
}

TEST(Packed16, FourSharedChroma) {
  for (int width = 4; width <= 150; ++width) {
    const ZumiSize size = {width, 2};
    const Image image(size, 4, 1, 3);
    const auto colours = [&](int x, int y) {
      return x < width / 4 * 4 ? rounded(image.at(x, y)) : centred(image.at(x, y));
    };
    Target to(size);
    const ZumStatus status = width % 4 ? zumWrnOddSize : zumOk;
    ASSERT_EQ(zumiYCbCr411ToBGR565_8u16u_P3C3R(image.pointers, image.steps, to.pixels.data(), to.step, size), status);
    ASSERT_TRUE(isAs(to, kModels[1], "4:1:1", colours));
    ASSERT_EQ(zumiYCbCr411ToBGR555_8u16u_P3C3R(image.pointers, image.steps, to.pixels.data(), to.step, size), status);
    ASSERT_TRUE(isAs(to, kModels[3], "4:1:1", colours));
  }
}

// Without a gap between its rows, which one odd byte of the destination's step does not make, an image is one row. The
// dither starts anew in each row all the same.
TEST(Packed16, TightImagesAreOneRow) {
  const Model &plain = kModels[0], &dither = kModels[6];
  for (const ZumiSize size : {ZumiSize{5, 7}, ZumiSize{6, 5}, ZumiSize{2, 1}, ZumiSize{1, 9}, ZumiSize{14, 3}}) {
    const int w = size.width, pixels = w * size.height;
    const Image full(size, 1, 1, 0), half(size, 2, 1, 0);
    const Bytes c3 = full.interleaved(3, 3 * w), c2 = half.interleaved(2, 2 * w);
    Words to(pixels);
    plain.c3(c3.data(), 3 * w, to.data(), 2 * w + 1, size);
    for (int i = 0; i < pixels; ++i) {
      const Colour p = full.at(i % w, i / w);
      ASSERT_EQ(to[i], packed(cut(i < pixels / 8 * 8 ? truncated(p) : centred(p), plain.bits), plain.bits)) << i;
    }
    dither.c3(c3.data(), 3 * w, to.data(), 2 * w, size);
    for (int i = 0; i < pixels; ++i) ASSERT_EQ(to[i], expected(dither, truncated(full.at(i % w, i / w)), i % w, i / w));
    if (w % 2) continue;
    plain.c2(c2.data(), 2 * w, to.data(), 2 * w + 1, size);
    for (int i = 0; i < pixels; ++i) {
      const Colour p = half.at(i % w, i / w);
      ASSERT_EQ(to[i], packed(cut(i < pixels / 4 * 4 ? truncated(p) : folded(p), plain.bits), plain.bits)) << i;
    }
  }
}

TEST(Packed16, HalfPairsGiveBytes) {
  const Zum8u src[] = {100, 200, 50, 30, 235, 128};
  for (const Model& m : {kModels[0], kModels[5]}) {
    Bytes dst(14, 9), expectedBytes(14, 9);
    for (int r = 0; r < 3; ++r) {
      const Colour rgb = folded({src[2 * r], src[2 * r + 1], src[2 * r + 1]});
      for (int k = 0; k < 3; ++k) expectedBytes[5 * r + k] = static_cast<Zum8u>(rgb[k]);
    }
    ASSERT_EQ(m.c2(src, 2, reinterpret_cast<Zum16u*>(dst.data()), 11, {1, 3}), zumOk);
    EXPECT_EQ(dst, expectedBytes) << m.name;
  }
}

// Colours over the whole cube, at all places of the matrix.
TEST(Packed16, ColoursAcrossTheCube) {
#ifdef __SANITIZE_ADDRESS__
  constexpr int kStride = 401;
#else
  constexpr int kStride = 47;
#endif
  constexpr int kWidth = 1021, kHeight = (1 << 24) / kStride / kWidth;
  Image image({kWidth, kHeight}, 1, 1, 0);
  for (int i = 0; i < kWidth * kHeight; ++i) {
    for (int k = 0; k < 3; ++k) image.planes[k][i] = static_cast<Zum8u>(i * kStride >> 8 * k);
  }
  for (const int i : {0, 6, 10}) {
    const Model& m = kModels[i];
    Target to(image.size);
    for (const auto set : zumtest::instructionSets()) {
      zumtest::useInstructionSet(set);
      ASSERT_EQ(m.p3(image.pointers, kWidth, to.pixels.data(), to.step, image.size), zumOk);
      EXPECT_TRUE(isAs(to, m, "P3", [&](int x, int y) { return truncated(image.at(x, y)); })) << hwy::TargetName(set);
    }
  }
  zumtest::useInstructionSet(zumtest::kBestInstructionSet);
}

// ---- Values worked out by hand

TEST(Packed16, KnownPixels) {
  const Zum8u y = 235, black = 16, c = 128;
  const Zum8u *const white[3] = {&y, &c, &c}, *const dark[3] = {&black, &c, &c};
  const int steps[3] = {1, 1, 1};
  Zum16u p = 1;
  EXPECT_EQ(zumiYCbCrToRGB565_8u16u_P3C3R(white, 1, &p, 2, {1, 1}), zumOk);
  EXPECT_EQ(p, 31 + (63 << 5) + (31 << 11));
  p = 0;
  EXPECT_EQ(zumiYCbCr420ToRGB565_8u16u_P3C3R(white, steps, &p, 2, {1, 1}), zumOk);
  EXPECT_EQ(p, 31 + (63 << 5) + (31 << 11));
  EXPECT_EQ(zumiYCbCr420ToBGR444Dither_8u16u_P3C3R(dark, steps, &p, 2, {1, 1}), zumOk);
  EXPECT_EQ(p, 0);
}

// The highest level of six bits is not reached in one place of the matrix.
TEST(Packed16, DitheredWhite) {
  const Bytes luma(16, 255), chroma(16, 128);
  const Zum8u* const planes[3] = {luma.data(), chroma.data(), chroma.data()};
  Words dst(16), white(16, 0xFFFF);
  ASSERT_EQ(zumiYCbCrToRGB565Dither_8u16u_P3C3R(planes, 4, dst.data(), 8, {4, 4}), zumOk);
  white[12] = 31 + (62 << 5) + (31 << 11);
  EXPECT_EQ(dst, white);
}

// ---- RGB and RGB565

TEST(RGB565, EveryPixelApart) {
  constexpr int kWidth = 257, kHeight = 255;  // of 65535 pixels
  Words pixels(kWidth * kHeight);
  Bytes expectedBytes;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const int p = static_cast<int>(i) + 1;
    pixels[i] = static_cast<Zum16u>(p);
    for (const int sample : {p % 32 * 8, p / 32 % 64 * 4, p / 2048 * 8})
      expectedBytes.push_back(static_cast<Zum8u>(sample));
  }
  for (const auto& functions : {std::pair(zumiRGB565ToRGB_16u8u_C3R, zumiRGBToRGB565_8u16u_C3R),
                                std::pair(zumiBGR565ToBGR_16u8u_C3R, zumiBGRToBGR565_8u16u_C3R)}) {
    Bytes bytes(expectedBytes.size());
    ASSERT_EQ(functions.first(pixels.data(), 2 * kWidth, bytes.data(), 3 * kWidth, {kWidth, kHeight}), zumOk);
    ASSERT_EQ(bytes, expectedBytes);
    // What is below the levels is dropped.
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<Zum8u>(bytes[i] + (i % 3 == 1 ? 3 : 7));
    Words back(pixels.size());
    ASSERT_EQ(functions.second(bytes.data(), 3 * kWidth, back.data(), 2 * kWidth + 1, {kWidth, kHeight}), zumOk);
    ASSERT_EQ(back, pixels);
  }
}

// Where only one thread runs, only the first band is converted, if the image is large enough for bands.
TEST(RGB565, BandsOfThreadsThatDoNotRun) {
  const Zum32s threads = threads_omp_of_n_zum;
  for (const ZumiSize size : {ZumiSize{192, 198}, ZumiSize{191, 198}, ZumiSize{198, 191}}) {
    const Bytes white(3 * size.width * size.height, 255);
    Words dst(size.width * size.height);
    threads_omp_of_n_zum = 5;
#pragma omp parallel num_threads(2)
#pragma omp master
    zumiRGBToRGB565_8u16u_C3R(white.data(), 3 * size.width, dst.data(), 2 * size.width, size);
    threads_omp_of_n_zum = threads;
    const int rows = std::min(size.width, size.height) < 192 ? size.height : size.height / 5;
    EXPECT_EQ(std::count(dst.begin(), dst.end(), 0xFFFF), rows * size.width);
    EXPECT_EQ(dst[rows * size.width - 1], 0xFFFF);
  }
}

// A destination step of one byte passes the check and is none then.
TEST(RGB565, StepsAreCheckedAsTheyAreGiven) {
  const Zum8u rgb[] = {255, 0, 0, 0, 0, 255};
  Zum16u p = 0;
  EXPECT_EQ(zumiRGBToRGB565_8u16u_C3R(rgb, 3, &p, 0, {1, 2}), zumErrStep);
  EXPECT_EQ(zumiRGBToRGB565_8u16u_C3R(rgb, 3, &p, 1, {1, 2}), zumOk);
  EXPECT_EQ(p, 31 << 11);
}

}  // namespace
