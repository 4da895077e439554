// RGB to and from YCbCr 4:4:4.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/ycbcr444.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/forms-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// A row in two column ranges: whole blocks by one form, what remains by another.
template <class Src, class Block, class Tail, class Dst, class SrcRow, class DstRow>
HWY_INLINE void blocksAndTail(const SrcRow& src, const DstRow& dst, std::size_t blockEnd, std::size_t width) {
  columns<Src, Block, Dst>(src, dst, 0, blockEnd);
  columns<Src, OnLanes<Tail>, Dst>(src, dst, blockEnd, width);
}

void innerRGBToYCbCr_C3_C3R(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<C3, RoundedTerms, Exact, C3>(src, dst, width & ~15, width);
}

void innerRGBToYCbCr_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  columns<PackedA4, OnLanes<Exact>, PackedA4>(src, dst, 0, width);
}

void innerRGBToYCbCr_C3P2_C3P2R(const P3Row& src, const P3Target& dst, int width) {
  blocksAndTail<P3, OnHalves<RoundedSum>, Exact, P3>(src, dst, width & ~15, width);
}

// Blocks of 8, then one of 4, by the same form.
void innerYCbCrToRGB_C3_C3R(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<C3, OnHalves<Truncated16>, FineInverse, C3>(src, dst, width & ~3, width);
}

void innerYCbCrToRGB_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  columns<PackedA4, OnLanes<FineInverse>, PackedA4>(src, dst, 0, width);
}

void innerYCbCrToRGB_C3P2_C3P2R(const P3Row& src, const P3Target& dst, int width) {
  blocksAndTail<P3, OnHalves<Truncated16>, FineInverse, P3>(src, dst, width & ~3, width);
}

void innerYCbCrToRGB_8u_P3C3R(const P3Row& src, Zum8u* dst, int width) {
  blocksAndTail<P3, OnHalves<Rounded16>, FinePlanarInverse, C3>(src, dst, width & ~7, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerRGBToYCbCr_C3_C3R);
HWY_EXPORT(innerRGBToYCbCr_AC4R);
HWY_EXPORT(innerRGBToYCbCr_C3P2_C3P2R);
HWY_EXPORT(innerYCbCrToRGB_C3_C3R);
HWY_EXPORT(innerYCbCrToRGB_AC4R);
HWY_EXPORT(innerYCbCrToRGB_C3P2_C3P2R);
HWY_EXPORT(innerYCbCrToRGB_8u_P3C3R);

}  // namespace zum

ZUM_EXPORT(zumiRGBToYCbCr_8u_C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCbCr_C3_C3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYCbCr_8u_AC4R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCbCr_AC4R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYCbCr_8u_P3R, ThreePlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYCbCr_C3P2_C3P2R), src, dst, roi))
ZUM_EXPORT(zumiYCbCrToRGB_8u_C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCrToRGB_C3_C3R), src, dst, roi))
ZUM_EXPORT(zumiYCbCrToRGB_8u_AC4R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCrToRGB_AC4R), src, dst, roi))
ZUM_EXPORT(zumiYCbCrToRGB_8u_P3R, ThreePlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCrToRGB_C3P2_C3P2R), src, dst, roi))
ZUM_EXPORT(zumiYCbCrToRGB_8u_P3C3R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYCbCrToRGB_8u_P3C3R), src, dst, roi))

#endif  // HWY_ONCE
