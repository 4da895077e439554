// RGB to and from luma and chroma in plain integers: the forms that several families share, and the comparison of a
// function with the forms that its columns take.
#pragma once

#include "support/pictures.h"

namespace zumtest {

using Numbers = Colour<int>;  // R, G, B or Y, Cb, Cr

// Weighted sums, exactly and of truncated terms.
inline int exactSum(const Numbers& w, const Numbers& p, int64_t offset, int bits) {
  return down(int64_t{w[0]} * p[0] + int64_t{w[1]} * p[1] + int64_t{w[2]} * p[2] + offset, bits);
}
inline int termSum(const Numbers& w, int scale, const Numbers& p) {
  return high(w[0], scale * p[0]) + high(w[1], scale * p[1]) + high(w[2], scale * p[2]);
}

// Which columns take the form of blocks.
using InBlock = bool (*)(int x, int y, ZumiSize size);
template <int n>
bool whole(int x, int, ZumiSize size) {
  return x < size.width / n * n;
}
inline bool everywhere(int, int, ZumiSize) { return true; }

// ---- RGB to luma and chroma

// The pixels that share chroma, and what becomes of them.
struct Group {
  Numbers pixel[4];
  int n = 0;
  Numbers sum{};
};
struct Coded {
  int y[4], cb, cr;
};
using Encode = Coded (*)(const Group&);

template <class Luma>
Coded coded(const Group& g, const Luma& luma, int cb, int cr) {
  Coded c{{}, cb, cr};
  for (int i = 0; i < g.n; ++i) c.y[i] = luma(g.pixel[i]);
  return c;
}

constexpr Numbers kLuma{16843, 33030, 6423}, kCb{-9699, -19071, 28770}, kCr{28770, -24117, -4653};

inline int exactLuma(const Numbers& p) { return exactSum(kLuma, p, 1081344, 16); }
inline int roundedLuma(const Numbers& p) { return down(termSum({8422, 16515, 3212}, 256, p) + 2112, 7); }
inline int lumaOfRoundedTerms(const Numbers& p) {
  return down(rounded15(4211, 128 * p[0]) + rounded15(8258, 128 * p[1]) + rounded15(1606, 128 * p[2]), 6) + 16;
}

// With what is added to the chroma of each pixel.
inline Coded exact(const Group& g, int offset) {
  const int64_t all = int64_t{offset} * g.n;
  const int bits = 16 + (g.n == 4 ? 2 : g.n - 1);
  return coded(g, exactLuma, exactSum(kCb, g.sum, all, bits), exactSum(kCr, g.sum, all, bits));
}
inline Coded exactRounded(const Group& g) { return exact(g, (128 << 16) + (1 << 15)); }
inline Coded exactEighth(const Group& g) { return exact(g, (128 << 16) + (1 << 13)); }
inline Coded roundedTerms(const Group& g) {
  const auto chroma = [&](int plus, int one, int two, int p, int q, int r) {
    const int k = 128 / g.n;
    return down(rounded15(plus, k * g.sum[p]) - rounded15(one, k * g.sum[q]) - rounded15(two, k * g.sum[r]), 6) + 128;
  };
  return coded(g, lumaOfRoundedTerms, chroma(7193, 4768, 2425, 2, 1, 0), chroma(7193, 6029, 1163, 0, 1, 2));
}

struct Encoder {
  const char* functions;  // a shell pattern
  InBlock inBlock;
  Encode block, tail;
  Encode rest = nullptr;  // of pixels that are no whole group; null: they are left alone
};

inline void expectEncoder(const Encoder& e, int colours = kColours) {
  for (const Function& function : named(e.functions)) {
    const auto statement = [&](const Picture& src, const Picture& dst) {
      const auto [width, height] = src.size;
      for (int y = 0; y < height; y += dst.rows()) {
        for (int x = 0; x < width; x += dst.columns()) {
          Group g;
          int xs[4], ys[4];
          for (int v = y; v < std::min(height, y + dst.rows()); ++v) {
            for (int u = x; u < std::min(width, x + dst.columns()); ++u, ++g.n) {
              xs[g.n] = u, ys[g.n] = v, g.pixel[g.n] = src.at(u, v);
              for (int k = 0; k < 3; ++k) g.sum[k] += g.pixel[g.n][k];
            }
          }
          const bool isRest = g.n < dst.rows() * dst.columns();
          const Encode form = isRest ? e.rest : e.inBlock(x, y, src.size) ? e.block : e.tail;
          if (!form) continue;
          const Coded c = form(g);
          for (int i = 0; i < g.n; ++i) dst.set(0, xs[i], ys[i], c.y[i]);
          dst.set(1, x, y, c.cb);
          dst.set(2, x, y, c.cr);
        }
      }
    };
    expectPictures(function, colours, statement);
  }
}

// ---- Luma and chroma to RGB

using Decode = Numbers (*)(const Numbers&);

// Sums at 2 to the bits, each term truncated. Green's factors are those of Cr and of Cb: positive ones are subtracted,
// negative ones added. Luma of studio range, and of full range.
template <int red, int greenCr, int greenCb, int blue, int bits>
Numbers termsOver(int luma, int scale, const Numbers& p) {
  const int u = scale * (p[1] - 128), v = scale * (p[2] - 128);
  const int green = (greenCr < 0 ? 1 : -1) * (high(greenCr, v) + high(greenCb, u));
  return {clamp(down(luma + high(red, v), bits)), clamp(down(luma + green, bits)),
          clamp(down(luma + high(blue, u), bits))};
}
template <int y, int red, int greenCr, int greenCb, int blue, int rounding, int bits>
Numbers terms(const Numbers& p) {
  return termsOver<red, greenCr, greenCb, blue, bits>(high(y, 128 * (p[0] - 16)) + rounding, 128, p);
}
template <int red, int greenCr, int greenCb, int blue, int rounding, int bits>
Numbers yuvTerms(const Numbers& p) {
  return termsOver<red, greenCr, greenCb, blue, bits>((p[0] << bits) + rounding, 8 << bits, p);
}

// Exactly.
template <int y, int red, int greenCr, int greenCb, int blue, int rounding = 0, int bits = 16, int black = 16>
Numbers exactly(const Numbers& p) {
  const int64_t w = int64_t{y} * (p[0] - black) + rounding, u = p[1] - 128, v = p[2] - 128;
  return {clamp(down(w + red * v, bits)), clamp(down(w - greenCr * v - greenCb * u, bits)),
          clamp(down(w + blue * u, bits))};
}

constexpr Decode truncated16 = terms<9536, 13074, -6660, -3203, 16523, 0, 4>;
constexpr Decode rounded16 = terms<9535, 13074, -6660, -3211, 16523, 8, 4>;
constexpr Decode truncated8 = terms<4767, 6537, 3330, 1605, 8261, 0, 3>;
constexpr Decode fine = exactly<76284, 104595, 53281, 25690, 132186>;
constexpr Decode finePlanar = exactly<76282, 104593, 53279, 25689, 132184>;
constexpr Decode fineYuv = exactly<65536, 74711, 38076, 25821, 133169, 0, 16, 0>;
inline Numbers folded(const Numbers& p) {
  const int64_t w = 76284LL * p[0];
  return {clamp(down(w + 104595LL * p[2] - 14608761, 16)),
          clamp(down(w - 53281LL * p[2] - 25690LL * p[1] + 8887730, 16)),
          clamp(down(w + 132186LL * p[1] - 18140365, 16))};
}

struct Decoder {
  const char* functions;  // a shell pattern
  InBlock inBlock;
  Decode block, tail;
  Decode last = nullptr;   // of half a pair behind others, if it differs
  bool lendsNone = false;  // a pair to the half one behind it
};

constexpr int kAlpha = 200;

// What becomes of a pixel of the destination.
using Store = std::function<void(const Picture& dst, int x, int y, const Numbers& rgb)>;

// Half a pair has one sample of chroma. For the other it takes that of the pair before, or else its own again.
inline Statement decoding(const Decoder& d, const Store& store) {
  return [=](const Picture& src, const Picture& dst) {
    forEachPixel(src, [&](int x, int y) {
      if (!src.has(1, x, y) && !src.has(2, x, y)) return;  // of no whole square
      Numbers p = src.at(x, y);
      for (const int k : {1, 2})
        if (!src.has(k, x, y)) p[k] = x > 0 && !d.lendsNone ? src.at(x - 1, y)[k] : p[3 - k];
      const bool isLast = d.last && x > 0 && src.columns() == 2 && (x | 1) == src.size.width;
      store(dst, x, y, (isLast ? d.last : d.inBlock(x, y, src.size) ? d.block : d.tail)(p));
    });
  };
}

inline void expectDecoder(const Decoder& d, int colours = kColours) {
  for (Function function : named(d.functions)) {
    function.traits.variants = {{{kAlpha}}};
    const bool isKept = function.planes.back().keepsAlpha, isGiven = function.name.find("AC4R") == std::string::npos;
    expectPictures(function, colours, decoding(d, [=](const Picture& dst, int x, int y, const Numbers& rgb) {
                     dst.set(x, y, rgb);
                     if (!isKept) dst.set(3, x, y, isGiven ? kAlpha : 0);
                   }));
  }
}

}  // namespace zumtest
