// BGR to and from subsampled YCbCr and YUV against the arithmetic in plain integers.
#include "support/luma_chroma.h"

namespace zumtest {
namespace {

// ---- Encoders

Coded truncated(const Group& g) {
  const auto chroma = [&](int plus, int one, int two, int p, int q, int r) {
    const int t = high(plus, 32 * g.sum[p]) - high(one, 32 * g.sum[q]) - high(two, 32 * g.sum[r]);
    return g.n == 2 ? down(t + 8200, 6) : down(t + 16400, 7);
  };
  return coded(g, roundedLuma, chroma(28770, 9699, 19071, 2, 0, 1), chroma(28770, 24117, 4653, 0, 1, 2));
}

Coded yuvTruncated(const Group& g) {
  Coded c = coded(
      g,
      [](const Numbers& p) {
        return clamp(down(termSum({9798, 19235, 3736}, 256, p) + 64, 7));
      },
      0, 0);
  const int t = c.y[0] + c.y[1] + c.y[2] + c.y[3];
  c.cb = clamp(down(high(16122, 32 * (g.sum[2] - t)) + 8224, 6));
  c.cr = clamp(down(high(28737, 32 * (g.sum[0] - t)) + 8224, 6));
  return c;
}
Coded yuvExact(const Group& g) {
  const auto difference = [&](int k) {
    return down((int64_t{g.sum[k]} << 16) - exactSum({19595, 38470, 7471}, g.sum, -131071, 0), 16);
  };
  return coded(
      g,
      [](const Numbers& p) {
        return exactSum({19595, 38470, 7471}, p, 32768, 16);
      },
      down(32244LL * difference(2), 18) + 128, clamp(down(57475LL * difference(0), 18) + 128));
}

// Blocks of n, then one of a quarter if there is room for it in what is left of half a block.
template <int n>
bool withQuarter(int x, int, ZumiSize size) {
  return x < size.width / n * n + (size.width % (n / 2) >= n / 4 ? n / 4 : 0);
}

TEST(Bgr, Encoders) {
  const Encoder encoders[] = {
      {"zumiBGR*ToYCbCr422_*", withQuarter<32>, truncated, exactEighth, exactEighth},
      {"zumiBGRToY@(CbCr|CrCb)420_*", withQuarter<16>, truncated, exactEighth},
      {"zumiBGR@(565|555)ToY@(CbCr|CrCb)420_*", withQuarter<16>, truncated, exactEighth, exactEighth},
      {"zumiBGR@(565|555)ToYUV420_*", withQuarter<16>, yuvTruncated, yuvExact},
      {"zumiBGRToYCbCr411_8u_C3P3R", whole<16>, roundedTerms, exactEighth},
      {"zumiBGRToYCbCr411_8u_AC4P3R", whole<32>, truncated, exactEighth, exactEighth},
      {"zumiBGR555ToYCbCr411_*", whole<32>, truncated, exactEighth, exactEighth},
      {"zumiBGR565ToYCbCr411_*", everywhere, truncated, truncated},
  };
  for (const Encoder& e : encoders) expectEncoder(e);
}

// ---- Decoders

constexpr Decode kYuvTerms = yuvTerms<9339, -4760, -3228, 16646, 0, 1>;
constexpr Decode kLastOf411 = exactly<76294, 104595, 53281, 25625, 132186>;
constexpr Decode kFineRounded = exactly<76284, 104595, 53281, 25690, 132186, 32768>;
bool inPair(int x, int, ZumiSize size) { return (x | 1) < size.width; }

TEST(Bgr, Decoders) {
  const Decoder decoders[] = {
      {"zumiYCbCrToBGR_*", everywhere, rounded16, nullptr},
      {"zumiYCbCr422ToBGR_8u_C2C3R", inPair, rounded16, folded},
      {"zumiYCbCr422ToBGR_8u_C2C4R", whole<8>, truncated8, folded},
      {"zumiYCbCr411ToBGR_8u_*", whole<4>, truncated16, kLastOf411},
      {"zumiYCbCr420ToBGR_*", whole<8>, truncated8, kFineRounded},
      {"zumiYUV420ToBGR_*", everywhere, kYuvTerms, nullptr},
  };
  for (const Decoder& d : decoders) expectDecoder(d);
}

// The second pixel of a pair has the mean of the pair's chroma and the next pair's. The last pair has no next one.
TEST(Bgr, InterpolatedChroma) {
  constexpr Decode kBlock = terms<4769, 6537, 3330, 1605, 8263, 0, 3>,
                   kTail = exactly<4769, 6537, 3330, 1605, 8263, 0, 12>;
  Function function = named("zumiYCrCb420ToBGR_Filter_8u_P3C4R").front();
  function.traits.variants = {{{kAlpha}}};
  expectPictures(function, kColours, [](const Picture& src, const Picture& dst) {
    const auto [width, height] = src.size;
    const int last = width / 2 - 1;
    for (int y = 0; y < height / 2 * 2; ++y) {
      for (int x = 0; x < width / 2 * 2; ++x) {
        Numbers p = src.at(x, y);
        if (x % 2 && x / 2 < last)
          for (const int k : {1, 2}) p[k] = (p[k] + src.at(x + 1, y)[k] + 1) / 2;
        dst.set(x, y, (x < last / 8 * 16 ? kBlock : kTail)(p));
        dst.set(3, x, y, kAlpha);
      }
    }
  });
}

TEST(Bgr, KnownColours) {
  const struct {
    const char* function;
    Numbers pixel, ycc;
  } cases[] = {{"zumiBGRToYCbCr422_8u_C3C2R", {255, 255, 255}, {235, 128, 128}},
               {"zumiBGRToYCbCr422_8u_C3C2R", {0, 0, 0}, {16, 128, 128}},
               {"zumiBGRToYCbCr422_8u_C3C2R", {0, 0, 255}, {41, 240, 110}},
               {"zumiBGRToYCbCr422_8u_C3C2R", {255, 0, 0}, {82, 90, 240}},
               {"zumiBGR565ToYCbCr422_16u8u_C3C2R", {0xFFFF}, {231, 126, 126}},
               {"zumiBGR555ToYCbCr422_16u8u_C3C2R", {0x7FFF}, {229, 128, 128}}};
  for (const auto& c : cases) EXPECT_EQ(converted(c.function, c.pixel, 32, 0), c.ycc) << c.function;
}

}  // namespace
}  // namespace zumtest
