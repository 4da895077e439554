// The colour twist: an affine map of the three samples of each pixel, in single precision whatever the samples.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "tone/color_twist.cc"
#include <cmath>
#include <limits>
#include <type_traits>

#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- The sum of an output sample. The order of the additions is part of the result.

// One row of the matrix, in all lanes.
struct Weights {
  VF32 t0, t1, t2, offset;

  explicit Weights(const float* row) : t0(all(row[0])), t1(all(row[1])), t2(all(row[2])), offset(all(row[3])) {}
};

struct OffsetFirst {
  static HWY_INLINE VF32 sum(const Weights& t, const Channels<VF32>& x) {
    return (t.offset + x.c0 * t.t0) + (x.c2 * t.t2 + x.c1 * t.t1);
  }
};
struct OffsetLast {
  static HWY_INLINE VF32 sum(const Weights& t, const Channels<VF32>& x) {
    return ((x.c0 * t.t0 + x.c1 * t.t1) + x.c2 * t.t2) + t.offset;
  }
};

// ---- What becomes of the sums: limited() to the range of the samples, as far as join() does not saturate them

// A NaN becomes the largest sample.
template <class T>
HWY_INLINE VF32 limitedFromAbove(VF32 v) {
  const VF32 largest = all(static_cast<float>(std::numeric_limits<T>::max()));
#if HWY_ARCH_X86
  return hn::Min(v, largest);  // of a NaN and a number the instruction takes the second
#else
  return hn::IfThenElse(v < largest, v, largest);
#endif
}

template <class T>
struct Samples;

template <>
struct Samples<Zum8u> : Saturated, OffsetFirst {
  static HWY_INLINE VF32 limited(VF32 v) { return limitedFromAbove<Zum8u>(v); }
};
template <>
struct Samples<Zum8s> : OffsetLast {
  static HWY_INLINE VF32 limited(VF32 v) { return limitedFromAbove<Zum8s>(v); }
  static HWY_INLINE Vec<Zum8s> join(VI32 v0, VI32 v1, VI32 v2, VI32 v3) {
    return packToSignedBytes(pack(v0, v1), pack(v2, v3));
  }
};
template <>
struct Samples<Zum16u> : Saturated, OffsetFirst {
  // The most negative integer, which stands for what is below the integers, may not saturate to 0 in join.
  static HWY_INLINE VF32 limited(VF32 v) { return hn::Max(limitedFromAbove<Zum16u>(v), hn::Zero(Tag<float>())); }
};
template <>
struct Samples<Zum16s> : OffsetFirst {
  static HWY_INLINE VF32 limited(VF32 v) { return limitedFromAbove<Zum16s>(v); }
  static HWY_INLINE VI16 join(VI32 v0, VI32 v1) { return pack(v0, v1); }
};
template <>
struct Samples<Zum32f> : OffsetFirst {};

enum class Sums { kAny, kIntegers };

// Whether all sums are well inside the range of 32-bit integers: join saturates those from both sides.
template <class T>
Sums sumsOf(const float* twist) {
  constexpr float kLargestSample = std::numeric_limits<std::make_unsigned_t<T>>::max(), kLargestSum = 0x1p30f;
  for (const float* row = twist; row < twist + 12; row += 4) {
    const float weights = std::fabs(row[0]) + std::fabs(row[1]) + std::fabs(row[2]);
    if (!(weights * kLargestSample + std::fabs(row[3]) < kLargestSum)) return Sums::kAny;
  }
  return Sums::kIntegers;
}

// ---- Forms

template <class T, Sums sums>
struct Twist {
  Weights w0, w1, w2;

  explicit Twist(const float* twist) : w0(twist), w1(twist + 4), w2(twist + 8) {}

  HWY_INLINE Channels<Vec<T>> apply(const Channels<Vec<T>>& x) const {
    const auto parts = inParts<Twist, T>(Terms{*this, x});
    using Part = typename std::decay_t<decltype(parts)>::value_type;
    return {join<Samples<T>>(parts, &Part::c0), join<Samples<T>>(parts, &Part::c1), join<Samples<T>>(parts, &Part::c2)};
  }

  struct Terms {
    const Twist& twist;
    const Channels<Vec<T>>& x;
  };
  template <std::size_t part>
  static HWY_INLINE auto lanes(const Terms& terms) {
    const Twist& twist = terms.twist;
    const Channels<VF32> x{partToFloat<part>(terms.x.c0), partToFloat<part>(terms.x.c1), partToFloat<part>(terms.x.c2)};
    const auto v0 = stored(Samples<T>::sum(twist.w0, x)), v1 = stored(Samples<T>::sum(twist.w1, x)),
               v2 = stored(Samples<T>::sum(twist.w2, x));
    return Channels<std::remove_const_t<decltype(v0)>>{v0, v1, v2};
  }

 private:
  static HWY_INLINE auto stored(VF32 sum) {
    if constexpr (std::is_same_v<T, float>) {
      return sum;
    } else if constexpr (sums == Sums::kIntegers) {
      return nearest(sum);
    } else {
      return nearest(Samples<T>::limited(sum));
    }
  }
};

// The linear map of four samples, a pixel in every block: sample j of a pixel times column j of the matrix.
class Twist4 {
 public:
  explicit Twist4(const float* twist)
      : column0_(column(twist)),
        column1_(column(twist + 1)),
        column2_(column(twist + 2)),
        column3_(column(twist + 3)) {}

  HWY_INLINE VF32 apply(VF32 x) const {
    return ((hn::Broadcast<0>(x) * column0_ + hn::Broadcast<1>(x) * column1_) + hn::Broadcast<2>(x) * column2_) +
           hn::Broadcast<3>(x) * column3_;
  }

 private:
  static HWY_INLINE VF32 column(const float* first) {
    const float samples[4] = {first[0], first[4], first[8], first[12]};
    return hn::LoadDup128(Tag<float>(), samples);
  }

  VF32 column0_, column1_, column2_, column3_;
};

// ---- Row kernels

template <class T, class Layout, class Src, class Dst>
HWY_INLINE void twistRow(const Src& src, const Dst& dst, int width, const float* twist) {
  if constexpr (std::is_integral_v<T>) {
    if (sumsOf<T>(twist) == Sums::kIntegers) {
      using Form = Twist<T, Sums::kIntegers>;
      return columns<Layout, Form, Layout>(src, dst, 0, width, Form(twist));
    }
  }
  using Form = Twist<T, Sums::kAny>;
  columns<Layout, Form, Layout>(src, dst, 0, width, Form(twist));
}

void innerColorTwist_32f_C3R(const Zum32f* src, Zum32f* dst, int width, const float* twist) {
  twistRow<Zum32f, Packed3<Zum32f>>(src, dst, width, twist);
}
void innerColorTwist_32f_AC4R(const Zum32f* src, Zum32f* dst, int width, const float* twist) {
  twistRow<Zum32f, ThreeOf4<Zum32f>>(src, dst, width, twist);
}
void innerColorTwist_32f_P3R(const PlaneRow<const Zum32f, 3>& src, const PlaneRow<Zum32f, 3>& dst, int width,
                             const float* twist) {
  twistRow<Zum32f, Planes3<Zum32f>>(src, dst, width, twist);
}
void innerColorTwist32f_8u_C3R(const Zum8u* src, Zum8u* dst, int width, const float* twist) {
  twistRow<Zum8u, Packed3<Zum8u>>(src, dst, width, twist);
}
void innerColorTwist32f_8u_AC4R(const Zum8u* src, Zum8u* dst, int width, const float* twist) {
  twistRow<Zum8u, ThreeOf4<Zum8u>>(src, dst, width, twist);
}
void innerColorTwist32f_8u_P3R(const PlaneRow<const Zum8u, 3>& src, const PlaneRow<Zum8u, 3>& dst, int width,
                               const float* twist) {
  twistRow<Zum8u, Planes3<Zum8u>>(src, dst, width, twist);
}
void innerColorTwist32f_8s_C3R(const Zum8s* src, Zum8s* dst, int width, const float* twist) {
  twistRow<Zum8s, Packed3<Zum8s>>(src, dst, width, twist);
}
void innerColorTwist32f_8s_AC4R(const Zum8s* src, Zum8s* dst, int width, const float* twist) {
  twistRow<Zum8s, ThreeOf4<Zum8s>>(src, dst, width, twist);
}
void innerColorTwist32f_8s_P3R(const PlaneRow<const Zum8s, 3>& src, const PlaneRow<Zum8s, 3>& dst, int width,
                               const float* twist) {
  twistRow<Zum8s, Planes3<Zum8s>>(src, dst, width, twist);
}
void innerColorTwist32f_16u_C3R(const Zum16u* src, Zum16u* dst, int width, const float* twist) {
  twistRow<Zum16u, Packed3<Zum16u>>(src, dst, width, twist);
}
void innerColorTwist32f_16u_AC4R(const Zum16u* src, Zum16u* dst, int width, const float* twist) {
  twistRow<Zum16u, ThreeOf4<Zum16u>>(src, dst, width, twist);
}
void innerColorTwist32f_16u_P3R(const PlaneRow<const Zum16u, 3>& src, const PlaneRow<Zum16u, 3>& dst, int width,
                                const float* twist) {
  twistRow<Zum16u, Planes3<Zum16u>>(src, dst, width, twist);
}
void innerColorTwist32f_16s_C3R(const Zum16s* src, Zum16s* dst, int width, const float* twist) {
  twistRow<Zum16s, Packed3<Zum16s>>(src, dst, width, twist);
}
void innerColorTwist32f_16s_AC4R(const Zum16s* src, Zum16s* dst, int width, const float* twist) {
  twistRow<Zum16s, ThreeOf4<Zum16s>>(src, dst, width, twist);
}
void innerColorTwist32f_16s_P3R(const PlaneRow<const Zum16s, 3>& src, const PlaneRow<Zum16s, 3>& dst, int width,
                                const float* twist) {
  twistRow<Zum16s, Planes3<Zum16s>>(src, dst, width, twist);
}
void innerColorTwist_32f_C4R(const Zum32f* src, Zum32f* dst, std::size_t width, const float* twist) {
  columns<Plane1<Zum32f>, Twist4, Plane1<Zum32f>>(src, dst, 0, 4 * width, Twist4(twist));
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(innerColorTwist_32f_C3R);
HWY_EXPORT(innerColorTwist_32f_AC4R);
HWY_EXPORT(innerColorTwist_32f_P3R);
HWY_EXPORT(innerColorTwist32f_8u_C3R);
HWY_EXPORT(innerColorTwist32f_8u_AC4R);
HWY_EXPORT(innerColorTwist32f_8u_P3R);
HWY_EXPORT(innerColorTwist32f_8s_C3R);
HWY_EXPORT(innerColorTwist32f_8s_AC4R);
HWY_EXPORT(innerColorTwist32f_8s_P3R);
HWY_EXPORT(innerColorTwist32f_16u_C3R);
HWY_EXPORT(innerColorTwist32f_16u_AC4R);
HWY_EXPORT(innerColorTwist32f_16u_P3R);
HWY_EXPORT(innerColorTwist32f_16s_C3R);
HWY_EXPORT(innerColorTwist32f_16s_AC4R);
HWY_EXPORT(innerColorTwist32f_16s_P3R);
HWY_EXPORT(innerColorTwist_32f_C4R);

template <class Src, class Dst>
ZumStatus checkTwist(const Src& src, const Dst& dst, ZumiSize roi, const Zum32f* twist) {
  if (!twist) return zumErrNullPtr;
  return checkPlanesFirstWithSteps(src, dst, roi);
}

// Floats are rounded by the caller's mode.
template <class Kernel, class Src, class Dst>
ZumStatus twistFloats(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, const Zum32f* twist) {
  if (const ZumStatus status = checkTwist(src, dst, roi, twist)) return status;
  serialRows(kernel, src.rows(), dst.rows(), roi, twist);
  return zumOk;
}

template <class Kernel, class Src, class Dst>
ZumStatus twistIntegers(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, const Zum32f* twist) {
  if (const ZumStatus status = checkTwist(src, dst, roi, twist)) return status;
  const NearestRounding rounding;
  serialRows(kernel, src.rows(), dst.rows(), roi, twist);
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

// The functions of a depth, by their row kernels.
#define ZUM_TWIST(T, run, kernelC3, kernelAC4, kernelP3, c3, c3InPlace, ac4, ac4InPlace, p3, p3InPlace)                \
  ZumStatus c3(const T* pSrc, int srcStep, T* pDst, int dstStep, ZumiSize roi, const Zum32f* twist) {                  \
    return run(ZUM_KERNEL(kernelC3), Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi, twist);                        \
  }                                                                                                                    \
  ZumStatus c3InPlace(T* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist) {                                 \
    return run(ZUM_KERNEL(kernelC3), Pixels<const T>{pSrcDst, srcDstStep}, Pixels{pSrcDst, srcDstStep}, roi, twist);   \
  }                                                                                                                    \
  ZumStatus ac4(const T* pSrc, int srcStep, T* pDst, int dstStep, ZumiSize roi, const Zum32f* twist) {                 \
    return run(ZUM_KERNEL(kernelAC4), Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi, twist);                       \
  }                                                                                                                    \
  ZumStatus ac4InPlace(T* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist) {                                \
    return run(ZUM_KERNEL(kernelAC4), Pixels<const T>{pSrcDst, srcDstStep}, Pixels{pSrcDst, srcDstStep}, roi, twist);  \
  }                                                                                                                    \
  ZumStatus p3(const T* const pSrc[3], int srcStep, T* const pDst[3], int dstStep, ZumiSize roi,                       \
               const Zum32f* twist) {                                                                                  \
    return run(ZUM_KERNEL(kernelP3), planes3(pSrc, srcStep), planes3(pDst, dstStep), roi, twist);                      \
  }                                                                                                                    \
  ZumStatus p3InPlace(T* const pSrcDst[3], int srcDstStep, ZumiSize roi, const Zum32f* twist) {                        \
    return run(ZUM_KERNEL(kernelP3), planes3<const T>(pSrcDst, srcDstStep), planes3(pSrcDst, srcDstStep), roi, twist); \
  }

ZUM_TWIST(Zum32f, twistFloats, innerColorTwist_32f_C3R, innerColorTwist_32f_AC4R, innerColorTwist_32f_P3R,
          zumiColorTwist_32f_C3R, zumiColorTwist_32f_C3IR, zumiColorTwist_32f_AC4R, zumiColorTwist_32f_AC4IR,
          zumiColorTwist_32f_P3R, zumiColorTwist_32f_IP3R)
ZUM_TWIST(Zum8u, twistIntegers, innerColorTwist32f_8u_C3R, innerColorTwist32f_8u_AC4R, innerColorTwist32f_8u_P3R,
          zumiColorTwist32f_8u_C3R, zumiColorTwist32f_8u_C3IR, zumiColorTwist32f_8u_AC4R, zumiColorTwist32f_8u_AC4IR,
          zumiColorTwist32f_8u_P3R, zumiColorTwist32f_8u_IP3R)
ZUM_TWIST(Zum8s, twistIntegers, innerColorTwist32f_8s_C3R, innerColorTwist32f_8s_AC4R, innerColorTwist32f_8s_P3R,
          zumiColorTwist32f_8s_C3R, zumiColorTwist32f_8s_C3IR, zumiColorTwist32f_8s_AC4R, zumiColorTwist32f_8s_AC4IR,
          zumiColorTwist32f_8s_P3R, zumiColorTwist32f_8s_IP3R)
ZUM_TWIST(Zum16u, twistIntegers, innerColorTwist32f_16u_C3R, innerColorTwist32f_16u_AC4R, innerColorTwist32f_16u_P3R,
          zumiColorTwist32f_16u_C3R, zumiColorTwist32f_16u_C3IR, zumiColorTwist32f_16u_AC4R,
          zumiColorTwist32f_16u_AC4IR, zumiColorTwist32f_16u_P3R, zumiColorTwist32f_16u_IP3R)
ZUM_TWIST(Zum16s, twistIntegers, innerColorTwist32f_16s_C3R, innerColorTwist32f_16s_AC4R, innerColorTwist32f_16s_P3R,
          zumiColorTwist32f_16s_C3R, zumiColorTwist32f_16s_C3IR, zumiColorTwist32f_16s_AC4R,
          zumiColorTwist32f_16s_AC4IR, zumiColorTwist32f_16s_P3R, zumiColorTwist32f_16s_IP3R)

ZumStatus zumiColorTwist_32f_C4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                 const Zum32f* twist) {
  const Pixels src{pSrc, srcStep};
  const Pixels dst{pDst, dstStep};
  if (const ZumStatus status = checkTwist(src, dst, roi, twist)) return status;
  auto* const kernel = ZUM_KERNEL(innerColorTwist_32f_C4R);
  // A quarter of a row of pixels: that is how an image in one run is recognised.
  const std::int64_t runStep = std::int64_t{roi.width} * 4;
  if (srcStep == runStep && dstStep == runStep) {
    kernel(pSrc, pDst, static_cast<std::size_t>(roi.width) * static_cast<std::size_t>(roi.height), twist);
  } else {
    serialRows(kernel, src.rows(), dst.rows(), roi, twist);
  }
  return zumOk;
}

#endif  // HWY_ONCE
