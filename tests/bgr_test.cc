// BGR to and from subsampled YCbCr and YUV against the arithmetic in plain integers, one block of pixels at a time, at
// every width that changes who takes which form.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "support/plain.h"
#include "zumcc.h"

namespace {

using zumtest::clamp;
using zumtest::down;
using zumtest::high;
using zumtest::rounded15;
using Bytes = std::vector<Zum8u>;
using Colour = std::array<int, 3>;  // R, G, B or Y, Cb, Cr
using Image = std::array<Bytes, 3>;

constexpr Zum8u kUntouched = 9, kAlpha = 200;

int64_t dot(const Colour& w, const Colour& p) { return 1LL * w[0] * p[0] + 1LL * w[1] * p[1] + 1LL * w[2] * p[2]; }
int terms(const Colour& w, int scale, const Colour& p) {
  return high(w[0], scale * p[0]) + high(w[1], scale * p[1]) + high(w[2], scale * p[2]);
}

// How planes are shared: one chroma sample for `columns` by `rows` pixels.
struct Sampling {
  int columns, rows;
};
constexpr Sampling k444{1, 1}, k422{2, 1}, k420{2, 2}, k411{4, 1};

// ---- Encoders

// The pixels of a block and their sum; what they become.
struct Block {
  std::vector<Colour> pixels;
  Colour sum{};
  int n() const { return static_cast<int>(pixels.size()); }
};
struct Coded {
  std::vector<int> y;
  int cb, cr;
};
template <class Luma>
std::vector<int> each(const Block& block, Luma luma) {
  std::vector<int> result;
  for (const Colour& p : block.pixels) result.push_back(luma(p));
  return result;
}

Coded codeTruncated(const Block& b) {
  const auto chroma = [&](int plus, int one, int two, int p, int q, int r) {
    const int t = high(plus, 32 * b.sum[p]) - high(one, 32 * b.sum[q]) - high(two, 32 * b.sum[r]);
    return b.n() == 2 ? down(t + 8200, 6) : down(t + 16400, 7);
  };
  const auto luma = [](const Colour& p) { return down(terms({8422, 16515, 3212}, 256, p) + 2112, 7); };
  return {each(b, luma), chroma(28770, 9699, 19071, 2, 0, 1), chroma(28770, 24117, 4653, 0, 1, 2)};
}
Coded codeExact(const Block& b) {
  const double whole = 65536.0 * b.n(), offset = 128.125;
  const auto chroma = [&](const Colour& w) { return static_cast<int>(std::floor(dot(w, b.sum) / whole + offset)); };
  const auto luma = [](const Colour& p) { return down(dot({16843, 33030, 6423}, p) + 1081344, 16); };
  return {each(b, luma), chroma({-9699, -19071, 28770}), chroma({28770, -24117, -4653})};
}
Coded codeRounded(const Block& b) {
  const auto luma = [](const Colour& p) {
    return down(rounded15(4211, 128 * p[0]) + rounded15(8258, 128 * p[1]) + rounded15(1606, 128 * p[2]), 6) + 16;
  };
  const auto chroma = [&](int plus, int one, int two, int p, int q, int r) {
    const int t = rounded15(plus, 32 * b.sum[p]) - rounded15(one, 32 * b.sum[q]) - rounded15(two, 32 * b.sum[r]);
    return down(t, 6) + 128;
  };
  return {each(b, luma), chroma(7193, 4768, 2425, 2, 1, 0), chroma(7193, 6029, 1163, 0, 1, 2)};
}
Coded codeYuvTruncated(const Block& b) {
  Coded c{each(b, [](const Colour& p) { return clamp(down(terms({9798, 19235, 3736}, 256, p) + 64, 7)); }), 0, 0};
  const int t = c.y[0] + c.y[1] + c.y[2] + c.y[3];
  c.cb = clamp(down(high(16122, 32 * (b.sum[2] - t)) + 8224, 6));
  c.cr = clamp(down(high(28737, 32 * (b.sum[0] - t)) + 8224, 6));
  return c;
}
Coded codeYuvExact(const Block& b) {
  const Colour w{19595, 38470, 7471};
  const auto difference = [&](int sample) {
    return down((static_cast<int64_t>(sample) << 16) - dot(w, b.sum) + 131071, 16);
  };
  return {each(b, [&](const Colour& p) { return down(dot(w, p) + 32768, 16); }),
          (down(32244LL * difference(b.sum[2]), 18) + 128) & 255,
          clamp(down(57475LL * difference(b.sum[0]), 18) + 128)};
}

enum Source { kBgr, kBgra, k565, k555 };

Colour unpack(Source source, const Bytes& row, int x) {
  if (source == kBgr || source == kBgra) {
    const Zum8u* p = &row[(source == kBgr ? 3 : 4) * x];
    return {p[2], p[1], p[0]};
  }
  const int p = row[2 * x] + 256 * row[2 * x + 1];
  return source == k565 ? Colour{p / 2048 * 8, p / 32 % 64 * 4, p % 32 * 8}
                        : Colour{p / 1024 % 32 * 8, p / 32 % 32 * 8, p % 32 * 8};
}

using Encode = std::function<ZumStatus(const Bytes&, int, Zum8u* const*, const int*, ZumiSize)>;
template <class T>
Encode run(ZumStatus (*f)(const T*, int, Zum8u* const*, const int*, ZumiSize)) {
  return [f](const Bytes& src, int srcStep, Zum8u* const* dst, const int* steps, ZumiSize size) {
    return f(reinterpret_cast<const T*>(src.data()), srcStep, dst, steps, size);
  };
}
template <class T>
Encode run(ZumStatus (*f)(const T*, int, Zum8u*, int, ZumiSize)) {
  return [f](const Bytes& src, int srcStep, Zum8u* const* dst, const int* steps, ZumiSize size) {
    return f(reinterpret_cast<const T*>(src.data()), srcStep, dst[0], steps[0], size);
  };
}

// Block columns of a width.
int of16Then4(int w) { return w / 16 * 16 + (w % 8 >= 4 ? 4 : 0); }
int of32Then8(int w) { return w / 32 * 32 + (w % 16 >= 8 ? 8 : 0); }
template <int n>
int whole(int w) {
  return w / n * n;
}

struct Encoder {
  Encode encode;
  Source source;
  Sampling sampling;
  enum { kPlanes, kExchanged, kPacked } target;
  int (*blockEnd)(int);
  Coded (*block)(const Block&);
  Coded (*tail)(const Block&);
  enum { kLeft, kLuma, kOwnChroma } rest;  // of pixels that fill no block
};

#define ENCODERS(name, depth, layout, source, rest420, block411, form411, rest411)                                     \
  {run(zumi##name##ToYCbCr422_##depth##_##layout##C2R),                                                                \
   source,                                                                                                             \
   k422,                                                                                                               \
   Encoder::kPacked,                                                                                                   \
   of32Then8,                                                                                                          \
   codeTruncated,                                                                                                      \
   codeExact,                                                                                                          \
   Encoder::kOwnChroma},                                                                                               \
      {run(zumi##name##ToYCbCr422_##depth##_##layout##P3R),                                                            \
       source,                                                                                                         \
       k422,                                                                                                           \
       Encoder::kPlanes,                                                                                               \
       of32Then8,                                                                                                      \
       codeTruncated,                                                                                                  \
       codeExact,                                                                                                      \
       Encoder::kOwnChroma},                                                                                           \
      {run(zumi##name##ToYCbCr420_##depth##_##layout##P3R),                                                            \
       source,                                                                                                         \
       k420,                                                                                                           \
       Encoder::kPlanes,                                                                                               \
       of16Then4,                                                                                                      \
       codeTruncated,                                                                                                  \
       codeExact,                                                                                                      \
       Encoder::rest420},                                                                                              \
      {run(zumi##name##ToYCrCb420_##depth##_##layout##P3R),                                                            \
       source,                                                                                                         \
       k420,                                                                                                           \
       Encoder::kExchanged,                                                                                            \
       of16Then4,                                                                                                      \
       codeTruncated,                                                                                                  \
       codeExact,                                                                                                      \
       Encoder::rest420},                                                                                              \
  {                                                                                                                    \
    run(zumi##name##ToYCbCr411_##depth##_##layout##P3R), source, k411, Encoder::kPlanes, block411, form411, codeExact, \
        Encoder::rest411                                                                                               \
  }

const Encoder kEncoders[] = {
    ENCODERS(BGR, 8u, C3, kBgr, kLeft, whole<16>, codeRounded, kLeft),
    ENCODERS(BGR, 8u, AC4, kBgra, kLeft, whole<32>, codeTruncated, kLuma),
    ENCODERS(BGR565, 16u8u, C3, k565, kLuma, whole<4>, codeTruncated, kLeft),
    ENCODERS(BGR555, 16u8u, C3, k555, kLuma, whole<32>, codeTruncated, kLuma),
    {run(zumiBGR565ToYUV420_16u8u_C3P3R), k565, k420, Encoder::kPlanes, of16Then4, codeYuvTruncated, codeYuvExact,
     Encoder::kLeft},
    {run(zumiBGR555ToYUV420_16u8u_C3P3R), k555, k420, Encoder::kPlanes, of16Then4, codeYuvTruncated, codeYuvExact,
     Encoder::kLeft},
};

std::mt19937 engine{5};
Bytes noise(int n) {
  Bytes result(n);
  for (auto& b : result) b = static_cast<Zum8u>(engine() % 4 ? engine() : engine() % 2 * 255);
  return result;
}

// Y in steps of the width, chroma in steps of chromaWidth.
Image expectedOf(const Encoder& e, const std::vector<Bytes>& src, int width, int chromaWidth, int chromaHeight) {
  const int height = static_cast<int>(src.size());
  Image image{Bytes(width * height, kUntouched), Bytes(chromaWidth * chromaHeight + 1, kUntouched),
              Bytes(chromaWidth * chromaHeight + 1, kUntouched)};
  for (int y = 0; y < height; y += e.sampling.rows) {
    for (int x = 0; x < width; x += e.sampling.columns) {
      Block block;
      std::vector<Zum8u*> lumas;
      for (int v = y; v < std::min(height, y + e.sampling.rows); ++v) {
        for (int u = x; u < std::min(width, x + e.sampling.columns); ++u) {
          block.pixels.push_back(unpack(e.source, src[v], u));
          for (int k = 0; k < 3; ++k) block.sum[k] += block.pixels.back()[k];
          lumas.push_back(&image[0][v * width + u]);
        }
      }
      const bool isWhole = block.n() == e.sampling.columns * e.sampling.rows;
      if (!isWhole && e.rest == Encoder::kLeft) continue;
      const Coded coded = (isWhole && x < e.blockEnd(width) ? e.block : e.tail)(block);
      for (int i = 0; i < block.n(); ++i) *lumas[i] = static_cast<Zum8u>(coded.y[i]);
      if (!isWhole && e.rest == Encoder::kLuma) continue;
      const int at = y / e.sampling.rows * chromaWidth + x / e.sampling.columns;
      image[1][at] = static_cast<Zum8u>(coded.cb);
      image[2][at] = static_cast<Zum8u>(coded.cr);
    }
  }
  if (e.target == Encoder::kExchanged) std::swap(image[1], image[2]);
  if (e.target == Encoder::kPacked) {
    Bytes packed;
    for (int i = 0; i < width * height; ++i) {
      const int x = i % width;
      packed.push_back(image[0][i]);
      packed.push_back(image[1 + x % 2][i / width * chromaWidth + x / 2]);
    }
    image[0] = packed;
  }
  return image;
}

TEST(BgrEncode, Columns) {
  for (const Encoder& e : kEncoders) {
    const int bytes = e.source == kBgr ? 3 : e.source == kBgra ? 4 : 2;
    for (int width = e.sampling.columns; width <= 140; ++width) {
      const int height = width % 2 + 2 * e.sampling.rows;
      std::vector<Bytes> rows(height);
      Bytes src;
      for (Bytes& row : rows) {
        row = noise(bytes * width);
        src.insert(src.end(), row.begin(), row.end());
      }
      const int chromaWidth = (width + (e.rest == Encoder::kOwnChroma)) / e.sampling.columns,
                chromaHeight = height / e.sampling.rows;
      const Image expected = expectedOf(e, rows, width, chromaWidth, chromaHeight);
      Image image;
      for (int k = 0; k < 3; ++k) image[k].assign(expected[k].size(), kUntouched);
      Zum8u* const planes[3] = {image[0].data(), image[1].data(), image[2].data()};
      const int steps[3] = {e.target == Encoder::kPacked ? 2 * width : width, chromaWidth, chromaWidth};
      ASSERT_GE(e.encode(src, bytes * width, planes, steps, {width, height}), zumOk);
      for (int k = 0; k < (e.target == Encoder::kPacked ? 1 : 3); ++k)
        ASSERT_EQ(image[k], expected[k]) << "encoder " << &e - kEncoders << " width " << width << " plane " << k;
    }
  }
}

// ---- Decoders

// Each term truncated, the factors those of Y, of Cr to red, of Cr and Cb to green and of Cb to blue.
template <int y, int red, int greenCr, int greenCb, int blue, int rounding, int bits>
Colour truncatedTerms(const Colour& p) {
  const int t = high(y, 128 * (p[0] - 16)) + rounding, u = 128 * (p[1] - 128), v = 128 * (p[2] - 128);
  // Positive factors are subtracted from green, negative ones added.
  const int green = (greenCr < 0 ? 1 : -1) * (high(greenCr, v) + high(greenCb, u));
  return {down(t + high(red, v), bits), down(t + green, bits), down(t + high(blue, u), bits)};
}
constexpr auto rounded16 = truncatedTerms<9535, 13074, -6660, -3211, 16523, 8, 4>;
constexpr auto truncated16 = truncatedTerms<9536, 13074, -6660, -3203, 16523, 0, 4>;
constexpr auto truncated8 = truncatedTerms<4767, 6537, 3330, 1605, 8261, 0, 3>;
constexpr auto interpolated8 = truncatedTerms<4769, 6537, 3330, 1605, 8263, 0, 3>;

template <int y, int red, int greenCr, int greenCb, int blue, int rounding, int bits>
Colour exactly(const Colour& p) {
  const int64_t w = static_cast<int64_t>(y) * (p[0] - 16) + rounding, u = p[1] - 128, v = p[2] - 128;
  return {down(w + red * v, bits), down(w - greenCr * v - greenCb * u, bits), down(w + blue * u, bits)};
}
constexpr auto lastOf411 = exactly<76294, 104595, 53281, 25625, 132186, 0, 16>;
constexpr auto fineRounded = exactly<76284, 104595, 53281, 25690, 132186, 32768, 16>;
constexpr auto interpolated12 = exactly<4769, 6537, 3330, 1605, 8263, 0, 12>;

Colour folded(const Colour& p) {
  const int64_t w = 76284LL * p[0];
  return {down(w + 104595LL * p[2] - 14608761, 16), down(w - 53281LL * p[2] - 25690LL * p[1] + 8887730, 16),
          down(w + 132186LL * p[1] - 18140365, 16)};
}
Colour yuvTerms(const Colour& p) {
  const int y = 2 * p[0], u = 16 * (p[1] - 128), v = 16 * (p[2] - 128);
  return {down(y + high(9339, v), 1), down(y + high(-3228, u) + high(-4760, v), 1), down(y + high(16646, u), 1)};
}

// From planes in the order Y, Cb, Cr, or from image[0] if packed.
using Decode = std::function<ZumStatus(const Zum8u* const*, const int*, Zum8u*, int, ZumiSize)>;
int allButLastPair(int w) { return (w / 2 - 1) / 8 * 16; }
int all(int w) { return w; }
int pairs(int w) { return w / 2 * 2; }

struct Decoder {
  Decode decode;
  int channels;
  Sampling sampling;
  enum { kPlain, kPacked, kInterpolated } kind;
  int (*blockEnd)(int);
  Colour (*block)(const Colour&);
  Colour (*tail)(const Colour&);
};

#define WITH(call) \
  [](const Zum8u* const* src, const int* srcSteps, Zum8u* dst, int step, ZumiSize size) { return call; }

const Decoder kDecoders[] = {
    {WITH(zumiYCbCrToBGR_8u_P3C3R(src, srcSteps[0], dst, step, size)), 3, k444, Decoder::kPlain, all, rounded16,
     nullptr},
    {WITH(zumiYCbCrToBGR_8u_P3C4R(src, srcSteps[0], dst, step, size, kAlpha)), 4, k444, Decoder::kPlain, all, rounded16,
     nullptr},
    {WITH(zumiYCbCr422ToBGR_8u_C2C3R(src[0], srcSteps[0], dst, step, size)), 3, k422, Decoder::kPacked, pairs,
     rounded16, folded},
    {WITH(zumiYCbCr422ToBGR_8u_C2C4R(src[0], srcSteps[0], dst, step, size, kAlpha)), 4, k422, Decoder::kPacked,
     whole<8>, truncated8, folded},
    {WITH(zumiYCbCr411ToBGR_8u_P3C3R(src, srcSteps, dst, step, size)), 3, k411, Decoder::kPlain, whole<4>, truncated16,
     lastOf411},
    {WITH(zumiYCbCr411ToBGR_8u_P3C4R(src, srcSteps, dst, step, size, kAlpha)), 4, k411, Decoder::kPlain, whole<4>,
     truncated16, lastOf411},
    {WITH(zumiYCbCr420ToBGR_8u_P3C3R(src, srcSteps, dst, step, size)), 3, k420, Decoder::kPlain, whole<8>, truncated8,
     fineRounded},
    {WITH(zumiYUV420ToBGR_8u_P3C3R(src, srcSteps, dst, step, size)), 3, k420, Decoder::kPlain, all, yuvTerms, nullptr},
    {[](const Zum8u* const* src, const int* srcSteps, Zum8u* dst, int step, ZumiSize size) {
       const Zum8u* const exchanged[3] = {src[0], src[2], src[1]};
       return zumiYCrCb420ToBGR_Filter_8u_P3C4R(exchanged, srcSteps, dst, step, size, kAlpha);
     },
     4, k420, Decoder::kInterpolated, allButLastPair, interpolated8, interpolated12},
};

TEST(BgrDecode, Columns) {
  for (const Decoder& d : kDecoders) {
    const Sampling s = d.sampling;
    for (int width = s.columns; width <= 140; ++width) {
      const int height = width % 2 + 2 * s.rows, chromaWidth = (width + s.columns - 1) / s.columns;
      const Image src{noise(width * height), noise(chromaWidth * height), noise(chromaWidth * height)};
      const int lastPair = width / 2 - 1;
      Bytes expected(d.channels * width * height, kUntouched);
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          if (s.rows == 2 && (x >= width / 2 * 2 || y >= height / 2 * 2)) continue;
          const auto chroma = [&](int plane, int i) { return src[plane][y / s.rows * chromaWidth + i]; };
          Colour p{src[0][y * width + x], chroma(1, x / s.columns), chroma(2, x / s.columns)};
          if (d.kind == Decoder::kPacked && x == width - 1 && x % 2 == 0) p[2] = chroma(2, x / 2 - 1);
          for (int k = 1; k < 3 && d.kind == Decoder::kInterpolated; ++k)
            if (x % 2 && x / 2 < lastPair) p[k] = (p[k] + chroma(k, x / 2 + 1) + 1) / 2;
          const Colour rgb = (x < d.blockEnd(width) ? d.block : d.tail)(p);
          Zum8u* to = &expected[d.channels * (y * width + x)];
          for (int k = 0; k < 3; ++k) to[k] = static_cast<Zum8u>(clamp(rgb[2 - k]));
          if (d.channels == 4) to[3] = kAlpha;
        }
      }
      Bytes packed;
      for (int i = 0; i < width * height && d.kind == Decoder::kPacked; ++i) {
        packed.push_back(src[0][i]);
        packed.push_back(src[1 + i % width % 2][i / width * chromaWidth + i % width / 2]);
      }
      const Zum8u* const planes[3] = {packed.empty() ? src[0].data() : packed.data(), src[1].data(), src[2].data()};
      const int steps[3] = {packed.empty() ? width : 2 * width, chromaWidth, chromaWidth};
      Bytes dst(expected.size(), kUntouched);
      ASSERT_GE(d.decode(planes, steps, dst.data(), d.channels * width, {width, height}), zumOk);
      ASSERT_EQ(dst, expected) << "decoder " << &d - kDecoders << " width " << width;
    }
  }
}

// ---- By hand

TEST(BgrEncode, KnownColours) {
  struct {
    Source source;
    Bytes pixel;
    int y, cb, cr;
  } const cases[] = {
      {kBgr, {255, 255, 255}, 235, 128, 128}, {kBgr, {0, 0, 0}, 16, 128, 128},   {kBgr, {255, 0, 0}, 41, 240, 110},
      {kBgr, {0, 0, 255}, 82, 90, 240},       {k565, {255, 255}, 231, 126, 126}, {k555, {255, 127}, 229, 128, 128},
  };
  for (const auto& c : cases) {
    Bytes src, dst(64);
    for (int i = 0; i < 32; ++i) src.insert(src.end(), c.pixel.begin(), c.pixel.end());
    const Zum16u* words = reinterpret_cast<const Zum16u*>(src.data());
    const ZumiSize size{32, 1};
    ASSERT_EQ(c.source == kBgr   ? zumiBGRToYCbCr422_8u_C3C2R(src.data(), 96, dst.data(), 64, size)
              : c.source == k565 ? zumiBGR565ToYCbCr422_16u8u_C3C2R(words, 64, dst.data(), 64, size)
                                 : zumiBGR555ToYCbCr422_16u8u_C3C2R(words, 64, dst.data(), 64, size),
              zumOk);
    EXPECT_EQ((Colour{dst[0], dst[1], dst[3]}), (Colour{c.y, c.cb, c.cr})) << "source " << c.source;
  }
}

}  // namespace
