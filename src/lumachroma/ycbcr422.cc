// RGB to and from YCbCr and YCrCb 4:2:2.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/ycbcr422.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Luma at 256 times the sample, each term and the sum truncated. Chroma from the sum of a pair at 131072 times the
// sample, rounded to nearest.
struct TruncatedLumaExactChroma {
  static HWY_INLINE Luma422 apply(const Channels<VU8>& rgb) {
    return {truncatedLuma<16843, 33030, 6423>(rgb) + all<std::uint8_t>(kLumaOffset),
            chroma(rgb, pairsOf(-9699, -19071), 28770), chroma(rgb, pairsOf(28770, -24117), -4653)};
  }

 private:
  static HWY_INLINE VI16 chroma(const Channels<VU8>& rgb, VI16 redGreen, int blue) {
    const Tag<std::int16_t> d;
    const VI16 r = pairSum(rgb.c0), g = pairSum(rgb.c1), b = pairSum(rgb.c2);
    const VI16 half = all<std::int16_t>(kHalf), blueHalf = pairsOf(blue, kChroma2 / kHalf);
    const VI32 lower = dot(hn::InterleaveLower(d, r, g), redGreen, hn::InterleaveLower(d, b, half), blueHalf);
    const VI32 upper = dot(hn::InterleaveUpper(d, r, g), redGreen, hn::InterleaveUpper(d, b, half), blueHalf);
    return pack(hn::ShiftRight<17>(lower), hn::ShiftRight<17>(upper));
  }
  static constexpr int kHalf = 16384;  // with what it is multiplied by, the constant of the sum
  static HWY_INLINE VI32 dot(VI16 rg, VI16 wrg, VI16 b, VI16 wb) {
    return addDots(addDots(hn::Zero(Tag<std::int32_t>()), rg, wrg), b, wb);
  }
  static HWY_INLINE VI16 pairSum(VU8 v) {
    const Halves<VI16> pair = splitPairs(v);
    return pair.a + pair.b;
  }
};

// ---- RGB to 4:2:2

// Writes the first pixel of a pair: its Y and the first chroma byte.
template <ChromaOrder order>
void storeFirst(Zum8u* pair, int y, int cb, int cr) {
  pair[0] = static_cast<Zum8u>(y);
  pair[1] = static_cast<Zum8u>(order == ChromaOrder::CbCr ? cb : cr);
}
template <ChromaOrder order>
void storeSecond(Zum8u* pair, int y, int cb, int cr) {
  pair[2] = static_cast<Zum8u>(y);
  pair[3] = static_cast<Zum8u>(order == ChromaOrder::CbCr ? cr : cb);
}

// Blocks of 8, then pairs with the first Y rounded and the second truncated, then half a pair.
template <ChromaOrder order, class Src, class SrcRow>
HWY_INLINE void encodeRow(const SrcRow& src, Zum8u* dst, int width) {
  const int blocks = width & ~7;
  columns<Src, TruncatedLumaExactChroma, Packed422<order>>(src, dst, 0, blocks);
  int x = blocks;
  for (; x + 1 < width; x += 2) {
    const Pixel first = Src::pixel(src, x), second = Src::pixel(src, x + 1), sum = first + second;
    const int cb = (cbSum(sum) + kChroma2) >> 17, cr = (crSum(sum) + kChroma2) >> 17;
    storeFirst<order>(dst + 2 * x, lumaOf(first, kLumaRounded), cb, cr);
    storeSecond<order>(dst + 2 * x, lumaOf(second, kLumaTruncated), cb, cr);
  }
  if (x < width) {
    const Pixel last = Src::pixel(src, x);
    storeFirst<order>(dst + 2 * x, lumaOf(last, kLumaRounded), (cbSum(last) + kChroma1) >> 16,
                      (crSum(last) + kChroma1) >> 16);
  }
}

void innerRGBToYCbCr422_C3_C2R(const Zum8u* src, Zum8u* dst, int width) {
  encodeRow<ChromaOrder::CbCr, C3>(src, dst, width);
}
void innerRGBToYCbCr422_C3P2_C3R(const P3Row& src, Zum8u* dst, int width) {
  encodeRow<ChromaOrder::CbCr, P3>(src, dst, width);
}
void innerRGBToYCrCb422_C3_C2R(const Zum8u* src, Zum8u* dst, int width) {
  encodeRow<ChromaOrder::CrCb, C3>(src, dst, width);
}
void innerRGBToYCrCb422_C3P2_C3R(const P3Row& src, Zum8u* dst, int width) {
  encodeRow<ChromaOrder::CrCb, P3>(src, dst, width);
}

// ---- 4:2:2 to RGB

// Blocks of 8 and one of 4, by the same form, then single pixels. Half a pair at the end has one chroma byte, behind
// its Y; for the other it takes that of the pair before, and where there is none, at a width of 1, its own byte again.
template <ChromaOrder order, class Dst, class DstRow>
HWY_INLINE void decodeRow(const Zum8u* src, const DstRow& dst, int width) {
  const int blocks = width & ~3;
  columns<Packed422<order>, OnPairs<Truncated16>, Dst>(src, dst, 0, blocks);
  for (int x = blocks; x < width; ++x) {
    const Zum8u* y = src + 2 * x;
    const bool isSecond = x & 1, isHalf = !isSecond && x + 1 == width;
    const int first = isSecond ? y[-1] : y[1];
    const int second = isSecond ? y[1] : !isHalf ? y[3] : x > 0 ? y[-1] : first;
    Dst::setPixel(
        dst, x, order == ChromaOrder::CbCr ? FoldedPixel::rgb(*y, first, second) : FoldedPixel::rgb(*y, second, first));
  }
}

void innerYCbCrToRGB422_C2_C3R(const Zum8u* src, Zum8u* dst, int width) {
  decodeRow<ChromaOrder::CbCr, C3>(src, dst, width);
}
void innerYCbCr422ToRGB_C2_C3P2R(const Zum8u* src, const P3Target& dst, int width) {
  decodeRow<ChromaOrder::CbCr, P3>(src, dst, width);
}
void innerYCrCbToRGB422_C2_C3R(const Zum8u* src, Zum8u* dst, int width) {
  decodeRow<ChromaOrder::CrCb, C3>(src, dst, width);
}
void innerYCrCb422ToRGB_C2_C3P2R(const Zum8u* src, const P3Target& dst, int width) {
  decodeRow<ChromaOrder::CrCb, P3>(src, dst, width);
}

// Blocks of 8, then single pixels; the last of an odd width has chroma samples of its own.
void innerYCbCr422ToRGB_8u_P3C3R(const P3Row& src, Zum8u* dst, int width) {
  const int blocks = width & ~7;
  columns<Planes422, OnPairs<Rounded16>, C3>(src, dst, 0, blocks);
  for (int x = blocks; x < width; ++x) {
    C3::setPixel(dst, x, FinePlanarPixel::rgb(src[0][x], src[1][x / 2], src[2][x / 2]));
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerRGBToYCbCr422_C3_C2R);
HWY_EXPORT(innerRGBToYCbCr422_C3P2_C3R);
HWY_EXPORT(innerRGBToYCrCb422_C3_C2R);
HWY_EXPORT(innerRGBToYCrCb422_C3P2_C3R);
HWY_EXPORT(innerYCbCrToRGB422_C2_C3R);
HWY_EXPORT(innerYCbCr422ToRGB_C2_C3P2R);
HWY_EXPORT(innerYCbCr422ToRGB_8u_P3C3R);
HWY_EXPORT(innerYCrCbToRGB422_C2_C3R);
HWY_EXPORT(innerYCrCb422ToRGB_C2_C3P2R);

}  // namespace zum

ZUM_EXPORT(zumiRGBToYCbCr422_8u_C3C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCbCr422_C3_C2R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYCbCr422_8u_P3C2R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCbCr422_C3P2_C3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYCrCb422_8u_C3C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCrCb422_C3_C2R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYCrCb422_8u_P3C2R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCrCb422_C3P2_C3R), src, dst, roi))
ZUM_EXPORT(zumiYCbCr422ToRGB_8u_C2C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCrToRGB422_C2_C3R), src, dst, roi))
ZUM_EXPORT(zumiYCbCr422ToRGB_8u_C2P3R, Pixels<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCr422ToRGB_C2_C3P2R), src, dst, roi))
ZUM_EXPORT(zumiYCbCr422ToRGB_8u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCr422ToRGB_8u_P3C3R), src, dst, roi))
ZUM_EXPORT(zumiYCrCb422ToRGB_8u_C2C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCrCbToRGB422_C2_C3R), src, dst, roi))
ZUM_EXPORT(zumiYCrCb422ToRGB_8u_C2P3R, Pixels<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCrCb422ToRGB_C2_C3P2R), src, dst, roi))

#endif  // HWY_ONCE
