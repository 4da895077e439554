// RGB to and from YCbCr 4:2:0.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/ycbcr420.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

using C3Pair = RowPairOf<C3>;

// The rounded terms of 4:4:4, the chroma from the sum of four pixels at a quarter of its scale.
struct RoundedTermsOfFour {
  static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
    const VI16 r = sum(rgb.upper.c0, rgb.lower.c0), g = sum(rgb.upper.c1, rgb.lower.c1),
               b = sum(rgb.upper.c2, rgb.lower.c2);
    return {luma(rgb.upper), luma(rgb.lower), chroma(RoundedTerms::cb(r, g, b)), chroma(RoundedTerms::cr(r, g, b))};
  }

 private:
  static HWY_INLINE VU8 luma(const Channels<VU8>& rgb) {
    const Halves<VI16> r = times128(rgb.c0), g = times128(rgb.c1), b = times128(rgb.c2);
    return over64({RoundedTerms::luma(r.a, g.a, b.a), RoundedTerms::luma(r.b, g.b, b.b)}) +
           all<std::uint8_t>(kLumaOffset);
  }
  // 128 times the mean of two by two pixels.
  static HWY_INLINE VI16 sum(VU8 upper, VU8 lower) {
    const Halves<VI16> u = splitPairs(upper), l = splitPairs(lower);
    return hn::ShiftLeft<5>(u.a + u.b + l.a + l.b);
  }
  static HWY_INLINE VI16 chroma(VI16 sum) { return hn::ShiftRight<6>(sum) + all<std::int16_t>(kChromaOffset); }
};

// Blocks of 8 pairs and one of 4, by the same form, then single pairs.
void innerRGBToYCbCr420_8u_C3P3R(RowPair<const Zum8u> src, const RowPair420<Zum8u>& dst, int pairs) {
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
void innerYCbCr420ToRGB_8u_P3C3R(const RowPair420<const Zum8u>& src, RowPair<Zum8u> dst, int pairs) {
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

ZUM_EXPORT(zumiRGBToYCbCr420_8u_C3P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerRGBToYCbCr420_8u_C3P3R), src, dst, roi))
ZUM_EXPORT(zumiYCbCr420ToRGB_8u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerYCbCr420ToRGB_8u_P3C3R), src, dst, roi))

#endif  // HWY_ONCE
