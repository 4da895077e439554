// BGR, interleaved or planar, to and from hue, lightness, saturation.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/hls_bgr.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/layouts-inl.h"
#include "models/hls-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The forms for channels in the order B, G, R. A fourth channel stays what it is.
template <class Form>
struct OfBgr {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& bgr) { return Form::apply({bgr.c2, bgr.c1, bgr.c0}); }
};
template <class Form>
struct ToBgr {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& hls) {
    const Channels<VU8> rgb = Form::apply(hls);
    return {rgb.c2, rgb.c1, rgb.c0};
  }
};
template <class Form>
struct WithAlpha : Form {
  using Form::apply;
  static HWY_INLINE FourChannels<VU8> apply(const FourChannels<VU8>& v) {
    const Channels<VU8> colour = Form::apply({v.c0, v.c1, v.c2});
    return {colour.c0, colour.c1, colour.c2, v.c3};
  }
};

// ---- Row kernels

template <class Src, class Dst, class SrcRow, class DstRow>
HWY_INLINE void forward(const SrcRow& src, const DstRow& dst, int width) {
  blocksAndTail<4, Src, WithAlpha<OfBgr<BlockRgbToHls8>>, WithAlpha<OfBgr<TailRgbToHls8>>, Dst>(src, dst, width);
}
template <class Src, class Dst, class SrcRow, class DstRow>
HWY_INLINE void inverse(const SrcRow& src, const DstRow& dst, int width) {
  columns<Src, WithAlpha<ToBgr<HlsToRgb8>>, Dst>(src, dst, 0, width);
}

void innerBGRToHLS_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  forward<ThreeOf4<Zum8u>, ThreeOf4<Zum8u>>(src, dst, width);
}
void innerBGRToHLS_8u_AP4R(const PlaneRow<const Zum8u, 4>& src, const PlaneRow<Zum8u, 4>& dst, int width) {
  forward<Planes4, Planes4>(src, dst, width);
}
void innerBGRToHLS_8u_AP4C4R(const PlaneRow<const Zum8u, 4>& src, Zum8u* dst, int width) {
  forward<Planes4, Packed4>(src, dst, width);
}
void innerBGRToHLS_8u_AC4P4R(const Zum8u* src, const PlaneRow<Zum8u, 4>& dst, int width) {
  forward<AllOf4, Planes4>(src, dst, width);
}
void innerBGRToHLS_8u_P3R(const PlaneRow<const Zum8u, 3>& src, const PlaneRow<Zum8u, 3>& dst, int width) {
  forward<Planes3<Zum8u>, Planes3<Zum8u>>(src, dst, width);
}
void innerBGRToHLS_8u_P3C3R(const PlaneRow<const Zum8u, 3>& src, Zum8u* dst, int width) {
  forward<Planes3<Zum8u>, Packed3<Zum8u>>(src, dst, width);
}
void innerBGRToHLS_8u_C3P3R(const Zum8u* src, const PlaneRow<Zum8u, 3>& dst, int width) {
  forward<Packed3<Zum8u>, Planes3<Zum8u>>(src, dst, width);
}
void innerHLSToBGR_8u_AP4R(const PlaneRow<const Zum8u, 4>& src, const PlaneRow<Zum8u, 4>& dst, int width) {
  inverse<Planes4, Planes4>(src, dst, width);
}
void innerHLSToBGR_8u_AP4C4R(const PlaneRow<const Zum8u, 4>& src, Zum8u* dst, int width) {
  inverse<Planes4, Packed4>(src, dst, width);
}
void innerHLSToBGR_8u_AC4P4R(const Zum8u* src, const PlaneRow<Zum8u, 4>& dst, int width) {
  inverse<AllOf4, Planes4>(src, dst, width);
}
void innerHLSToBGR_8u_P3R(const PlaneRow<const Zum8u, 3>& src, const PlaneRow<Zum8u, 3>& dst, int width) {
  inverse<Planes3<Zum8u>, Planes3<Zum8u>>(src, dst, width);
}
void innerHLSToBGR_8u_P3C3R(const PlaneRow<const Zum8u, 3>& src, Zum8u* dst, int width) {
  inverse<Planes3<Zum8u>, Packed3<Zum8u>>(src, dst, width);
}
void innerHLSToBGR_8u_C3P3R(const Zum8u* src, const PlaneRow<Zum8u, 3>& dst, int width) {
  inverse<Packed3<Zum8u>, Planes3<Zum8u>>(src, dst, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerBGRToHLS_8u_AC4R);
HWY_EXPORT(innerBGRToHLS_8u_AP4R);
HWY_EXPORT(innerBGRToHLS_8u_AP4C4R);
HWY_EXPORT(innerBGRToHLS_8u_AC4P4R);
HWY_EXPORT(innerBGRToHLS_8u_P3R);
HWY_EXPORT(innerBGRToHLS_8u_P3C3R);
HWY_EXPORT(innerBGRToHLS_8u_C3P3R);
HWY_EXPORT(innerHLSToBGR_8u_AP4R);
HWY_EXPORT(innerHLSToBGR_8u_AP4C4R);
HWY_EXPORT(innerHLSToBGR_8u_AC4P4R);
HWY_EXPORT(innerHLSToBGR_8u_P3R);
HWY_EXPORT(innerHLSToBGR_8u_P3C3R);
HWY_EXPORT(innerHLSToBGR_8u_C3P3R);

// Steps are checked before the size.
template <class Kernel, class Src, class Dst>
static ZumStatus convert(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
  return convertInParallelUnless(checkStepsBeforeSize(src, dst, roi), kernel, src, dst, roi);
}

}  // namespace zum

ZUM_EXPORT(zumiBGRToHLS_8u_AC4R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertInParallelUnless(checkWithSteps(src, dst, roi), ZUM_KERNEL(innerBGRToHLS_8u_AC4R), src, dst, roi))
ZUM_EXPORT(zumiBGRToHLS_8u_AP4R, FourPlanes<const Zum8u>, FourPlanes<Zum8u>,
           convert(ZUM_KERNEL(innerBGRToHLS_8u_AP4R), src, dst, roi))
ZUM_EXPORT(zumiBGRToHLS_8u_AP4C4R, FourPlanes<const Zum8u>, Pixels<Zum8u>,
           convert(ZUM_KERNEL(innerBGRToHLS_8u_AP4C4R), src, dst, roi))
ZUM_EXPORT(zumiBGRToHLS_8u_AC4P4R, Pixels<const Zum8u>, FourPlanes<Zum8u>,
           convert(ZUM_KERNEL(innerBGRToHLS_8u_AC4P4R), src, dst, roi))
ZUM_EXPORT(zumiBGRToHLS_8u_P3R, ThreePlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convert(ZUM_KERNEL(innerBGRToHLS_8u_P3R), src, dst, roi))
ZUM_EXPORT(zumiBGRToHLS_8u_P3C3R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           convert(ZUM_KERNEL(innerBGRToHLS_8u_P3C3R), src, dst, roi))
ZUM_EXPORT(zumiBGRToHLS_8u_C3P3R, Pixels<const Zum8u>, ThreePlanes<Zum8u>,
           convert(ZUM_KERNEL(innerBGRToHLS_8u_C3P3R), src, dst, roi))

ZUM_EXPORT(zumiHLSToBGR_8u_AP4R, FourPlanes<const Zum8u>, FourPlanes<Zum8u>,
           convert(ZUM_KERNEL(innerHLSToBGR_8u_AP4R), src, dst, roi))
ZUM_EXPORT(zumiHLSToBGR_8u_AP4C4R, FourPlanes<const Zum8u>, Pixels<Zum8u>,
           convert(ZUM_KERNEL(innerHLSToBGR_8u_AP4C4R), src, dst, roi))
ZUM_EXPORT(zumiHLSToBGR_8u_AC4P4R, Pixels<const Zum8u>, FourPlanes<Zum8u>,
           convert(ZUM_KERNEL(innerHLSToBGR_8u_AC4P4R), src, dst, roi))
ZUM_EXPORT(zumiHLSToBGR_8u_P3R, ThreePlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convert(ZUM_KERNEL(innerHLSToBGR_8u_P3R), src, dst, roi))
ZUM_EXPORT(zumiHLSToBGR_8u_P3C3R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           convert(ZUM_KERNEL(innerHLSToBGR_8u_P3C3R), src, dst, roi))
ZUM_EXPORT(zumiHLSToBGR_8u_C3P3R, Pixels<const Zum8u>, ThreePlanes<Zum8u>,
           convert(ZUM_KERNEL(innerHLSToBGR_8u_C3P3R), src, dst, roi))

#endif  // HWY_ONCE
