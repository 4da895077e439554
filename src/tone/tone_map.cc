// One channel of unbounded range to bytes, by one factor taken from the image's maximum or mean.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "tone/tone_map.cc"
#include <cfloat>

#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// One plane of floats, as many vectors as one vector of bytes has parts.
struct FloatParts : Interleaved<float, 1, kLanes<std::uint8_t>> {
  using Parts = std::array<VF32, 4>;

  template <class Access = Whole>
  static HWY_INLINE Parts load(const float* row, Access access = {}) {
    const Tag<float> d;
    return {access.load(d, row), access.load(d, row, kLanes<float>), access.load(d, row, 2 * kLanes<float>),
            access.load(d, row, 3 * kLanes<float>)};
  }
};

// Range says what becomes of integers that are no bytes.
template <class Range>
struct Scaled {
  VF32 factor;

  HWY_INLINE VU8 apply(const FloatParts::Parts& v) const {
    return Range::join(truncated(v[0] * factor), truncated(v[1] * factor), truncated(v[2] * factor),
                       truncated(v[3] * factor));
  }
};

// Four vectors joined in blocks stand as ThreeOf4 would load them.
template <class Range>
HWY_INLINE void scaled(const Zum32f* src, Zum8u* dst, int width, float factor) {
  columns<FloatParts, Scaled<Range>, PlaneOfThreeOf4<Zum8u>>(src, dst, 0, width, Scaled<Range>{all(factor)});
}

void innerToneMapLinear(const Zum32f* src, Zum8u* dst, int width, float factor) {
  scaled<LowBits>(src, dst, width, factor);
}
void innerToneMapMean(const Zum32f* src, Zum8u* dst, int width, float factor) {
  scaled<Saturated>(src, dst, width, factor);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(innerToneMapLinear);
HWY_EXPORT(innerToneMapMean);

constexpr float kWhite = 255;

// The number that becomes white decides, in its own precision, whether there is anything to scale.
template <class Kernel, class Number>
ZumStatus toneMap(Kernel* kernel, Number white, const Pixels<const Zum32f>& src, const Pixels<Zum8u>& dst,
                  ZumiSize roi) {
  if (!(white >= 0)) return zumWrnNoOperation;
  if (white <= Number{FLT_MIN}) return zumiSet_8u_C1R(0, dst.base, dst.step, roi);
  serialRows(kernel, src.rows(), dst.rows(), roi, static_cast<float>(kWhite / white));
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

ZumStatus zumiToneMapLinear_32f8u_C1R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi) {
  Zum32f max;
  if (const ZumStatus status = zumiMax_32f_C1R(pSrc, srcStep, roi, &max)) return status;
  return toneMap(ZUM_KERNEL(innerToneMapLinear), max, Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi);
}

ZumStatus zumiToneMapMean_32f8u_C1R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi) {
  double mean;
  if (const ZumStatus status = zumiMean_32f_C1R(pSrc, srcStep, roi, &mean, zumHintFast)) return status;
  return toneMap(ZUM_KERNEL(innerToneMapMean), mean + mean, Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi);
}

#endif  // HWY_ONCE
