// RGB to and from hue, lightness, saturation, at four depths.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/hls.cc"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/exports.h"

#include "frame/layouts-inl.h"
#include "models/hls-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Of all forms that tell block columns from others, but for three channels of bytes.
constexpr std::size_t kBlock = 4;

template <std::size_t block, class Layout>
HWY_INLINE void forward8(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<block, Layout, BlockRgbToHls8, TailRgbToHls8, Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void forward16(const Zum16u* src, Zum16u* dst, int width) {
  columns<Layout, RgbToHls<Zum16u, RefinedReciprocal>, Layout>(src, dst, 0, width);
}
template <class Layout>
HWY_INLINE void inverse8(const Zum8u* src, Zum8u* dst, int width) {
  columns<Layout, HlsToRgb8, Layout>(src, dst, 0, width);
}
template <class Layout>
HWY_INLINE void inverse16u(const Zum16u* src, Zum16u* dst, int width) {
  using Block = HlsToRgb<Zum16u, ByReciprocals<Zum16u>, Doubled<Zum16u>>;
  blocksAndTail<kBlock, Layout, Block, GrayKept<Block>, Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void inverse16s(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<kBlock, Layout, HlsToRgb<Zum16u, ByReciprocals<Zum16u>, Truncated<Zum16u>>,
                HlsToRgb<Zum16u, ByDivisions<Zum16u>, AlmostRounded<Zum16u>>, Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void inverse32(const Zum32f* src, Zum32f* dst, int width) {
  blocksAndTail<kBlock, Layout, GrayKept<FloatHlsToRgb<ByReciprocals<Zum32f>>>,
                GrayKept<FloatHlsToRgb<ByDivisions<Zum32f>>>, Layout>(src, dst, width);
}

void innerRGBToHLS_8u_C3R(const Zum8u* src, Zum8u* dst, int width) { forward8<8, Packed3<Zum8u>>(src, dst, width); }
void innerRGBToHLS_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  forward8<kBlock, ThreeOf4<Zum8u>>(src, dst, width);
}
void innerRGBToHLS_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { forward16<Packed3<Zum16u>>(src, dst, width); }
void innerRGBToHLS_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { forward16<ThreeOf4<Zum16u>>(src, dst, width); }
void innerRGBToHLS_16s_C3R(const Zum16u* src, Zum16u* dst, int width) {
  forward16<FromLowest<Packed3<Zum16u>>>(src, dst, width);
}
void innerRGBToHLS_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  forward16<FromLowest<ThreeOf4<Zum16u>>>(src, dst, width);
}
void innerRGBToHLS_32f_C3R(const Zum32f* src, Zum32f* dst, int width) {
  columns<Packed3<Zum32f>, FloatRgbToHls, Packed3<Zum32f>>(src, dst, 0, width);
}
void innerRGBToHLS_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) {
  columns<ThreeOf4<Zum32f>, FloatRgbToHls, ThreeOf4<Zum32f>>(src, dst, 0, width);
}
void innerHLSToRGB_8u_C3R(const Zum8u* src, Zum8u* dst, int width) { inverse8<Packed3<Zum8u>>(src, dst, width); }
void innerHLSToRGB_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) { inverse8<ThreeOf4<Zum8u>>(src, dst, width); }
void innerHLSToRGB_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { inverse16u<Packed3<Zum16u>>(src, dst, width); }
void innerHLSToRGB_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  inverse16u<ThreeOf4<Zum16u>>(src, dst, width);
}
void innerHLSToRGB_16s_C3R(const Zum16u* src, Zum16u* dst, int width) {
  inverse16s<FromLowest<Packed3<Zum16u>>>(src, dst, width);
}
void innerHLSToRGB_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  inverse16s<FromLowest<ThreeOf4<Zum16u>>>(src, dst, width);
}
void innerHLSToRGB_32f_C3R(const Zum32f* src, Zum32f* dst, int width) { inverse32<Packed3<Zum32f>>(src, dst, width); }
void innerHLSToRGB_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) { inverse32<ThreeOf4<Zum32f>>(src, dst, width); }

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

ZUM_MODEL_FUNCTION(zumiRGBToHLS_8u_C3R, innerRGBToHLS_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_8u_AC4R, innerRGBToHLS_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_16u_C3R, innerRGBToHLS_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_16u_AC4R, innerRGBToHLS_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_16s_C3R, innerRGBToHLS_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_16s_AC4R, innerRGBToHLS_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_32f_C3R, innerRGBToHLS_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiRGBToHLS_32f_AC4R, innerRGBToHLS_32f_AC4R, Zum32f)

ZUM_MODEL_FUNCTION(zumiHLSToRGB_8u_C3R, innerHLSToRGB_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_8u_AC4R, innerHLSToRGB_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_16u_C3R, innerHLSToRGB_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_16u_AC4R, innerHLSToRGB_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_16s_C3R, innerHLSToRGB_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_16s_AC4R, innerHLSToRGB_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_32f_C3R, innerHLSToRGB_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiHLSToRGB_32f_AC4R, innerHLSToRGB_32f_AC4R, Zum32f)

#endif  // HWY_ONCE
