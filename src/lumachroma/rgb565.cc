// 8-bit pixels to and from 16-bit pixels of 5-6-5 bits. RGB and BGR are the same bytes in the same bits.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/rgb565.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

using C3 = Packed3<Zum8u>;
using RGB565 = Packed16<5, 6>;

struct Same {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& v) { return v; }
};

void owncnRGBToRGB565_8u16u_C3R(const Zum8u* src, Zum16u* dst, int width) {
  columns<C3, Same, RGB565>(src, dst, 0, width);
}

void owncnRGB565ToRGB_16u8u_C3R(const Zum16u* src, Zum8u* dst, int width) {
  columns<RGB565, Same, C3>(src, dst, 0, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(owncnRGBToRGB565_8u16u_C3R);
HWY_EXPORT(owncnRGB565ToRGB_16u8u_C3R);

// The steps as they are given are checked, before one of them is cut to whole samples.
ZumStatus ownRGBToRGB565_8u16u_C3R(Pixels<const Zum8u> src, Pixels<Zum16u> dst, ZumiSize roi) {
  if (const ZumStatus status = checkWithSteps(src, dst, roi)) return status;
  slicedRows(ZUM_KERNEL(owncnRGBToRGB565_8u16u_C3R), src.rows(), samples16(dst.base, dst.step).rows(), roi);
  return zumOk;
}

ZumStatus ownRGB565ToRGB_16u8u_C3R(Pixels<const Zum16u> src, Pixels<Zum8u> dst, ZumiSize roi) {
  if (const ZumStatus status = checkWithSteps(src, dst, roi)) return status;
  slicedRows(ZUM_KERNEL(owncnRGB565ToRGB_16u8u_C3R), src.rows(), dst.rows(), roi);
  return zumOk;
}

}  // namespace
}  // namespace zum

ZUM_EXPORT(zumiRGBToRGB565_8u16u_C3R, Pixels<const Zum8u>, Pixels<Zum16u>, ownRGBToRGB565_8u16u_C3R(src, dst, roi))
ZUM_EXPORT(zumiBGRToBGR565_8u16u_C3R, Pixels<const Zum8u>, Pixels<Zum16u>, ownRGBToRGB565_8u16u_C3R(src, dst, roi))
ZUM_EXPORT(zumiRGB565ToRGB_16u8u_C3R, Pixels<const Zum16u>, Pixels<Zum8u>, ownRGB565ToRGB_16u8u_C3R(src, dst, roi))
ZUM_EXPORT(zumiBGR565ToBGR_16u8u_C3R, Pixels<const Zum16u>, Pixels<Zum8u>, ownRGB565ToRGB_16u8u_C3R(src, dst, roi))

#endif  // HWY_ONCE
