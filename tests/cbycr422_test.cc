// RGB and BGR to and from packed CbYCr 4:2:2 against the arithmetic in plain integers.
#include <cmath>

#include "support/luma_chroma.h"

namespace zumtest {
namespace {

constexpr int kManyColours = 1 << 21;

Numbers operator+(const Numbers& a, const Numbers& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }

void setSingle(const Picture& dst, int x, int y, const Numbers& p) {
  dst.set(0, x, y, exactLuma(p));
  dst.set(1, x, y, exactSum(kCb, p, 8421376, 16));
}

template <class Curve>
void expectFiltered(const char* name, const Curve& curve) {
  expectPictures(named(name).front(), kManyColours, [&](const Picture& src, const Picture& dst) {
    const auto [width, height] = src.size;
    for (int y = 0; y < height; ++y) {
      const auto pixel = [&](int x) {
        const Numbers p = src.at(x, y);
        return Numbers{curve(p[0]), curve(p[1]), curve(p[2])};
      };
      for (int x = 0; x < width / 2 * 2; ++x) {
        dst.set(0, x, y, exactSum({8422, 16515, 3212}, pixel(x), 540672, 15));
        if (x % 2) continue;
        const Numbers even = pixel(x), odd = pixel(x + 1) + (x > 0 ? pixel(x - 1) : Numbers{});
        const auto sum = [&](const Numbers& ofOdd, const Numbers& ofEven) {
          return down(exactSum(ofOdd, odd, 0, 0) + exactSum(ofEven, even, 4210687, 0), 15);
        };
        dst.set(1, x, y, sum({-1213, -2385, 3596}, {-2426, -4769, 7193}));
        dst.set(2, x, y, sum({3596, -3015, -582}, {7193, -6030, -1164}));
      }
      // The last pixel, or the one behind the row.
      if (width % 4) setSingle(dst, width / 2 * 2, y, pixel(width / 2 * 2));
    }
  });
}

TEST(CbYCr422, FromRgb) {
  expectFiltered("zumiRGBToCbYCr422_8u_C3C2R", [](int v) { return v; });
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
  expectFiltered("zumiRGBToCbYCr422Gamma_8u_C3C2R", curve);
}

// By hand: black, and a row of one colour, which begins with a quarter less of it.
TEST(CbYCr422, RowsBeginWithLessColour) {
  const char* const function = "zumiRGBToCbYCr422_8u_C3C2R";
  for (const int x : {0, 2, 6}) EXPECT_EQ(converted(function, {}, 8, x), (Numbers{16, 128, 128}));
  EXPECT_EQ(converted(function, {255, 0, 0}, 4, 0), (Numbers{82, 100, 212}));
  EXPECT_EQ(converted(function, {255, 0, 0}, 4, 2), (Numbers{82, 90, 240}));
}

TEST(CbYCr422, FromBgr) {
  expectPictures(
      named("zumiBGRToCbYCr422_8u_AC4C2R").front(), kManyColours, [](const Picture& src, const Picture& dst) {
        const auto [width, height] = src.size;
        for (int y = 0; y < height; ++y) {
          for (int x = 0; x + 1 < width; x += 2) {
            const Numbers sum = src.at(x, y) + src.at(x + 1, y);
            const bool inBlock = x < width / 8 * 8;
            for (const int i : {x, x + 1}) dst.set(0, i, y, (inBlock ? roundedLuma : exactLuma)(src.at(i, y)));
            dst.set(1, x, y, inBlock ? down(termSum(kCb, 64, sum) + 16448, 7) : exactSum(kCb, sum, 16842752, 17));
            dst.set(2, x, y, inBlock ? down(termSum(kCr, 64, sum) + 16448, 7) : exactSum(kCr, sum, 16842750, 17));
          }
          const Numbers last = src.at(width - 1, y);  // its bytes taken as R, G, B
          if (width % 2) setSingle(dst, width - 1, y, {last[2], last[1], last[0]});
        }
      });
}

TEST(CbYCr422, ToRgbAndBgr) {
  constexpr Decode kTail = exactly<76282, 104593, 53279, 25689, 132184, 32768>;
  expectDecoder({"zumiCbYCr422To@(RGB|BGR)_*", whole<8>, rounded16, kTail}, kManyColours);
}

}  // namespace
}  // namespace zumtest
