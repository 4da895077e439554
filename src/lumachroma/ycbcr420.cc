// RGB to and from YCbCr 4:2:0.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/ycbcr420.cc"
#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

using C3 = Packed3<Zum8u>;
using C3Pair = RowPairOf<C3>;

// The rounded terms of 4:4:4, the chroma from the sum of four pixels at a quarter of its scale.
struct RoundedTermsOfFour {
  static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
    Channels<VI16> sumUpper, sumLower;
    const VU8 upper = row(rgb.upper, sumUpper), lower = row(rgb.lower, sumLower);
    const VI16 r = hn::ShiftLeft<5>(sumUpper.c0 + sumLower.c0), g = hn::ShiftLeft<5>(sumUpper.c1 + sumLower.c1),
               b = hn::ShiftLeft<5>(sumUpper.c2 + sumLower.c2);
    return {upper, lower, RoundedTerms::cb(r, g, b), RoundedTerms::cr(r, g, b)};
  }

 private:
  // The luma of a row, and the sums of its pixel pairs.
  static HWY_INLINE VU8 row(const Channels<VU8>& rgb, Channels<VI16>& sums) {
    const Halves<VI16> r = splitPairs(rgb.c0), g = splitPairs(rgb.c1), b = splitPairs(rgb.c2);
    sums = {r.a + r.b, g.a + g.b, b.a + b.b};
    return joinPairs(luma(r.a, g.a, b.a), luma(r.b, g.b, b.b));
  }
  static HWY_INLINE VI16 luma(VI16 r, VI16 g, VI16 b) {
    return RoundedTerms::luma(hn::ShiftLeft<7>(r), hn::ShiftLeft<7>(g), hn::ShiftLeft<7>(b));
  }
};

// Blocks of 8 pairs and one of 4, by the same form, then single pairs.
void innerRGBToYCbCr420_8u_C3P3R(RowPair<const Zum8u> src, RowPair420<Zum8u> dst, int pairs) {
  const int blocks = pairs & ~3;
  columns<C3Pair, RoundedTermsOfFour, Planes420>(src, dst, 0, 2 * blocks);
  for (int p = blocks; p < pairs; ++p) {
    Pixel sum{};
    const auto luma = [&](const Zum8u* rgb, Zum8u* y, int x) {
      const Pixel pixel = C3::pixel(rgb, x);
      sum = sum + pixel;
      y[x] = static_cast<Zum8u>(lumaOf(pixel, kLumaRounded));
    };
    luma(src.upper, dst.luma.upper, 2 * p);
    luma(src.upper, dst.luma.upper, 2 * p + 1);
    luma(src.lower, dst.luma.lower, 2 * p);
    luma(src.lower, dst.luma.lower, 2 * p + 1);
    dst.cb[p] = static_cast<Zum8u>((cbSum(sum) + kChroma4) >> 18);
    dst.cr[p] = static_cast<Zum8u>((crSum(sum) + kChroma4) >> 18);
  }
}

// Blocks of 4 pairs, then single pairs.
void innerYCbCr420ToRGB_8u_P3C3R(RowPair420<const Zum8u> src, RowPair<Zum8u> dst, int pairs) {
  const int blocks = pairs & ~3;
  columns<Planes420, OnPairs<Truncated8>, C3Pair>(src, dst, 0, 2 * blocks);
  for (int x = 2 * blocks; x < 2 * pairs; ++x) {
    const int cb = src.cb[x / 2], cr = src.cr[x / 2];
    C3::setPixel(dst.upper, x, FinePixel::rgb(src.luma.upper[x], cb, cr));
    C3::setPixel(dst.lower, x, FinePixel::rgb(src.luma.lower[x], cb, cr));
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerRGBToYCbCr420_8u_C3P3R);
HWY_EXPORT(innerYCbCr420ToRGB_8u_P3C3R);

}  // namespace zum

using namespace zum;

ZumStatus zumiRGBToYCbCr420_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                     ZumiSize roi) {
  return convertRowPairs(ZUM_KERNEL(innerRGBToYCbCr420_8u_C3P3R), Pixels{pSrc, srcStep}, planes3(pDst, dstStep), roi);
}

ZumStatus zumiYCbCr420ToRGB_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                     ZumiSize roi) {
  return convertRowPairs(ZUM_KERNEL(innerYCbCr420ToRGB_8u_P3C3R), planes3(pSrc, srcStep), Pixels{pDst, dstStep}, roi);
}

#endif  // HWY_ONCE
