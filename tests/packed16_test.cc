// 16-bit pixels from YCbCr and YUV, plain and dithered, against the arithmetic in plain integers. RGB to and from
// RGB565 on every value.
#include "support/luma_chroma.h"

namespace zumtest {
namespace {

// ---- From R, G, B to bits

struct Bits {
  int outer, green;
  bool blueFirst, dither;

  explicit Bits(const std::string& function) {
    const std::size_t model = function.find("To") + 2;
    outer = function[model + 3] - '0';
    green = function[model + 4] - '0';
    blueFirst = function[model] == 'B';
    dither = function.compare(model + 6, 6, "Dither") == 0;
  }
};

int dithered(int v, int bits, int x, int y) {
  const int fine[16] = {0, 1118, 279, 1398, 1678, 559, 1957, 839, 419, 1538, 139, 1258, 2097, 978, 1817, 699};
  const int rank[16] = {0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};
  const int at = y % 4 * 4 + x % 4, threshold = bits == 4 ? 289 * rank[at] : bits == 5 ? fine[at] : fine[at] / 2;
  const int step = bits == 4 ? 4352 : bits == 5 ? 2105 : 1036, level = ((1 << bits) - 1) * v / 256;
  return v * 256 - level * step > threshold ? level + 1 : level;
}

int packed(const Numbers& rgb, const Bits& bits, int x, int y) {
  const auto level = [&](int v, int n) { return bits.dither ? dithered(v, n, x, y) : v >> (8 - n); };
  const int red = level(rgb[0], bits.outer), blue = level(rgb[2], bits.outer), green = level(rgb[1], bits.green);
  const int first = bits.blueFirst ? blue : red, last = bits.blueFirst ? red : blue;
  return first + (green << bits.outer) + (last << (bits.outer + bits.green));
}

Store packing(const Function& function) {
  return [bits = Bits(function.name)](const Picture& dst, int x, int y, const Numbers& rgb) {
    dst.set(0, x, y, packed(rgb, bits, x, y));
  };
}

// ---- From luma and chroma

constexpr Decode kTruncated = terms<9535, 13074, 6660, 3211, 16523, 0, 4>;
constexpr Decode kRounded = terms<9535, 13074, 6660, 3211, 16523, 8, 4>;
constexpr Decode kYuvTruncated = yuvTerms<9338, 4759, 3227, 16646, 0, 4>;
bool inSquare(int x, int y, ZumiSize size) { return (x | 1) < size.width && (y | 1) < size.height; }

#define PLAIN "@(RGB|BGR)@(565|555|444)_8u16u_"
#define DITHER "*Dither_8u16u_"

TEST(Packed16, Decoders) {
  const Decoder decoders[] = {
      {"zumiYCbCrTo" PLAIN "C3R", whole<8>, kTruncated, fine},
      {"zumiYCbCrTo" PLAIN "P3C3R", everywhere, kTruncated, nullptr},
      {"zumiYCbCr422To" PLAIN "C2C3R", whole<4>, kTruncated, folded, fine},
      {"zumiYCbCr422To" DITHER "C2C3R", everywhere, kTruncated, nullptr, nullptr, true},
      {"zumiYCbCr422To*_8u16u_P3C3R", everywhere, kTruncated, nullptr},
      {"zumiYCbCr420To*_8u16u_P3C3R", everywhere, kTruncated, nullptr},
      {"zumiYUV420To" PLAIN "P3C3R", inSquare, kYuvTruncated, fineYuv},
      {"zumiYCbCr411To" PLAIN "P3C3R", whole<4>, kRounded, fine},
      {"zumiYCbCrTo" DITHER "*C3R", everywhere, kTruncated, nullptr},
      {"zumiYUV420To" DITHER "P3C3R", everywhere, kYuvTruncated, nullptr},
  };
  for (const Decoder& d : decoders)
    for (const Function& function : named(d.functions))
      expectPictures(function, kColours / 8, decoding(d, packing(function)));
}

TEST(Packed16, Levels) {
  for (const Function& function : named("zumiYCbCrTo@(RGB565|RGB565Dither|RGB444Dither)_8u16u_P3C3R"))
    expectPictures(function, 2 * kColours, decoding({"", everywhere, kTruncated, nullptr}, packing(function)));
}

// Without a gap between its rows an image is one row. The dither starts anew in each row all the same.
template <int n>
bool wholeArea(int x, int y, ZumiSize size) {
  return y * size.width + x < size.width * size.height / n * n;
}

TEST(Packed16, TightImagesAreOneRow) {
  const Decoder decoders[] = {{"zumiYCbCrTo" PLAIN "C3R", wholeArea<8>, kTruncated, fine},
                              {"zumiYCbCr422To" PLAIN "C2C3R", wholeArea<4>, kTruncated, folded},
                              {"zumiYCbCrTo" DITHER "C3R", everywhere, kTruncated, nullptr}};
  for (const Decoder& d : decoders)
    for (const Function& function : named(d.functions))
      for (const ZumiSize size : {ZumiSize{5, 7}, ZumiSize{6, 5}, ZumiSize{2, 1}, ZumiSize{1, 9}, ZumiSize{14, 3}})
        if (size.width % 2 == 0 || function.planes[0].samplesPerColumn == 3)
          expectPicture(function, size, decoding(d, packing(function)), nullptr, true);
}

TEST(Packed16, StepsLoseTheirLowBit) { expectStepsInSamples("zumiY*To@(RGB|BGR)@(565|555|444)*_8u16u_*"); }

TEST(Packed16, HalfPairsGiveBytes) {
  const Zum8u src[] = {100, 200, 50, 30, 235, 128};
  for (const auto function : {zumiYCbCr422ToRGB565_8u16u_C2C3R, zumiYCbCr422ToBGR444_8u16u_C2C3R}) {
    Bytes dst(14, 9), expected(14, 9);
    for (int r = 0; r < 3; ++r) {
      const Numbers rgb = folded({src[2 * r], src[2 * r + 1], src[2 * r + 1]});
      std::copy(rgb.begin(), rgb.end(), &expected[5 * r]);
    }
    ASSERT_EQ(function(src, 2, reinterpret_cast<Zum16u*>(dst.data()), 11, {1, 3}), zumOk);
    EXPECT_EQ(dst, expected);
  }
}

TEST(Packed16, KnownColours) {
  const Numbers white{235, 128, 128}, black{16, 128, 128};
  EXPECT_EQ(converted("zumiYCbCrToRGB565_8u16u_P3C3R", white, 1, 0), (Numbers{248, 252, 248}));
  EXPECT_EQ(converted("zumiYCbCr420ToRGB565_8u16u_P3C3R", white, 1, 0), (Numbers{248, 252, 248}));
  EXPECT_EQ(converted("zumiYCbCr420ToBGR444Dither_8u16u_P3C3R", black, 1, 0), (Numbers{0, 0, 0}));
  // The highest level of six bits is not reached in one place of the matrix.
  const Bytes luma(16, 255), chroma(16, 128);
  const Zum8u* const planes[3] = {luma.data(), chroma.data(), chroma.data()};
  std::vector<Zum16u> dst(16), levels(16, 0xFFFF);
  ASSERT_EQ(zumiYCbCrToRGB565Dither_8u16u_P3C3R(planes, 4, dst.data(), 8, {4, 4}), zumOk);
  levels[12] = 31 + (62 << 5) + (31 << 11);
  EXPECT_EQ(dst, levels);
}

// ---- RGB and RGB565

TEST(RGB565, EveryPixelAndBack) {
  for (const Function& function : named("zumi*565To@(RGB|BGR)_16u8u_C3R"))
    expectPicture(
        function, {256, 256},
        [](const Picture& src, const Picture& dst) {
          forEachPixel(src, [&](int x, int y) { dst.set(x, y, src.at(x, y)); });
        },
        [](const Picture& src) { forEachPixel(src, [&](int x, int y) { src.set(0, x, y, 256 * y + x); }); });
  for (const Function& function : named("zumi@(RGB|BGR)To*565_8u16u_C3R"))
    expectPictures(function, kColours, [store = packing(function)](const Picture& src, const Picture& dst) {
      forEachPixel(src, [&](int x, int y) { store(dst, x, y, src.at(x, y)); });
    });
  expectStepsInSamples("zumi@(RGB|BGR)To*565_8u16u_C3R");
}

// Where only one thread runs, only the first band is converted, if the image is large enough for bands.
TEST(RGB565, BandsOfThreadsThatDoNotRun) {
  const Zum32s threads = threads_omp_of_n_zum;
  for (const ZumiSize size : {ZumiSize{192, 198}, ZumiSize{191, 198}, ZumiSize{198, 191}}) {
    const Bytes white(3 * size.width * size.height, 255);
    std::vector<Zum16u> dst(size.width * size.height);
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
}  // namespace zumtest
