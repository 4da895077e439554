// Weighted sums of three channels, to one.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/gray.cc"
#include <array>

#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/exports.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"

namespace zum {

// The weights of the channels, as they are given and at 4096 times.
using Weights = std::array<float, 3>;
using FixedWeights = std::array<std::uint16_t, 3>;

}  // namespace zum

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- 8-bit

// Terms at 16 times the sample, each truncated; their sum is an unsigned number first and a signed one then, so that
// sums from 2048 on become 0.
struct Terms16 {
  VU16 w0, w1, w2;

  explicit Terms16(const FixedWeights& w) : w0(all(w[0])), w1(all(w[1])), w2(all(w[2])) {}

  HWY_INLINE VU8 apply(const Channels<VU8>& in) const {
    const Tag<std::uint16_t> d;
    const VU16 high = all<std::uint16_t>(0xFF00);
    const VU16 c0 = hn::BitCast(d, in.c0), c1 = hn::BitCast(d, in.c1), c2 = hn::BitCast(d, in.c2);
    return joinPairsSaturated(gray(hn::ShiftLeft<8>(c0), hn::ShiftLeft<8>(c1), hn::ShiftLeft<8>(c2)),
                              gray(hn::And(c0, high), hn::And(c1, high), hn::And(c2, high)));
  }

 private:
  // From 256 times the samples.
  HWY_INLINE VI16 gray(VU16 c0, VU16 c1, VU16 c2) const {
    const VU16 sum = hn::SaturatedAdd(hn::SaturatedAdd(hn::MulHigh(c0, w0), hn::MulHigh(c1, w1)), hn::MulHigh(c2, w2));
    return hn::ShiftRight<4>(hn::BitCast(Tag<std::int16_t>(), sum));
  }
};

// The exact sum truncated, its low bits.
constexpr Zum8u exactGray(const Pixel& p, const FixedWeights& w) {
  return static_cast<Zum8u>((p.c0 * w[0] + p.c1 * w[1] + p.c2 * w[2]) >> 12);
}

// ---- Wider samples, in single precision

struct FloatGray {
  VF32 w0, w1, w2;

  explicit FloatGray(const Weights& w) : w0(all(w[0])), w1(all(w[1])), w2(all(w[2])) {}

  HWY_INLINE VF32 apply(const Channels<VF32>& in) const { return (in.c0 * w0 + in.c1 * w1) + in.c2 * w2; }
};

template <class Range>
struct TruncatedGray : FloatGray {
  using FloatGray::FloatGray;

  HWY_INLINE VU16 apply(const Channels<VU16>& in) const { return Range::join(part<0>(in), part<1>(in)); }

 private:
  template <std::size_t i>
  HWY_INLINE VI32 part(const Channels<VU16>& in) const {
    return truncated(FloatGray::apply({partToFloat<i>(in.c0), partToFloat<i>(in.c1), partToFloat<i>(in.c2)}));
  }
};

// ---- Row kernels

template <class Layout>
HWY_INLINE void row8u(const Zum8u* src, Zum8u* dst, int blockEnd, int width, const FixedWeights& w) {
  columns<Layout, Terms16, Plane1<Zum8u>>(src, dst, 0, blockEnd, Terms16(w));
  for (int x = blockEnd; x < width; ++x) dst[x] = exactGray(Layout::pixel(src, x), w);
}
template <class Src, class Dst>
HWY_INLINE void row16u(const Zum16u* src, Zum16u* dst, int width, const Weights& w) {
  using Form = TruncatedGray<LowBits>;
  columns<Src, Form, Dst>(src, dst, 0, width, Form(w));
}
template <class SrcLayout, class DstLayout>
HWY_INLINE void row16s(const Zum16u* src, Zum16u* dst, int width, const Weights& w) {
  using Src = FromLowest<SrcLayout>;
  using Dst = FromLowest<DstLayout>;
  using Block = TruncatedGray<SaturatedFromLowest>;
  using Tail = TruncatedGray<LowBits>;
  const int blockEnd = width & ~3;
  columns<Src, Block, Dst>(src, dst, 0, blockEnd, Block(w));
  lastColumns<Src, Tail, Dst>(src, dst, blockEnd, width, Tail(w));
}
template <class Src, class Dst>
HWY_INLINE void row32f(const Zum32f* src, Zum32f* dst, int width, const Weights& w) {
  columns<Src, FloatGray, Dst>(src, dst, 0, width, FloatGray(w));
}

// Blocks of 8 pixels, then one of 4.
void innerRGBToGray_8u_C3C1R(const Zum8u* src, Zum8u* dst, int width, const FixedWeights& w) {
  row8u<Packed3<Zum8u>>(src, dst, width & ~3, width, w);
}
void innerRGBToGray_8u_AC4C1R(const Zum8u* src, Zum8u* dst, int width, const FixedWeights& w) {
  row8u<Packed4>(src, dst, width & ~7, width, w);
}
void innerRGBToGray_16u_C3C1R(const Zum16u* src, Zum16u* dst, int width, const Weights& w) {
  row16u<Packed3<Zum16u>, Plane1<Zum16u>>(src, dst, width, w);
}
void innerRGBToGray_16u_AC4C1R(const Zum16u* src, Zum16u* dst, int width, const Weights& w) {
  row16u<ThreeOf4<Zum16u>, PlaneOfThreeOf4<Zum16u>>(src, dst, width, w);
}
void innerRGBToGray_16s_C3C1R(const Zum16u* src, Zum16u* dst, int width, const Weights& w) {
  row16s<Packed3<Zum16u>, Plane1<Zum16u>>(src, dst, width, w);
}
void innerRGBToGray_16s_AC4C1R(const Zum16u* src, Zum16u* dst, int width, const Weights& w) {
  row16s<ThreeOf4<Zum16u>, PlaneOfThreeOf4<Zum16u>>(src, dst, width, w);
}
void innerRGBToGray_32f_C3C1R(const Zum32f* src, Zum32f* dst, int width, const Weights& w) {
  row32f<Packed3<Zum32f>, Plane1<Zum32f>>(src, dst, width, w);
}
void innerRGBToGray_32f_AC4C1R(const Zum32f* src, Zum32f* dst, int width, const Weights& w) {
  row32f<ThreeOf4<Zum32f>, PlaneOfThreeOf4<Zum32f>>(src, dst, width, w);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

constexpr Weights kDefaultWeights{0.299f, 0.587f, 0.114f};

// The low 16 bits of the weight at 4096 times, rounded to a 32-bit integer; 0 if that holds no such number.
constexpr std::uint16_t fixedWeight(float weight) {
  const double rounded = weight * 4096.0 + 0.5;
  const bool fits = rounded > -2147483649.0 && rounded < 2147483648.0;
  return static_cast<std::uint16_t>(fits ? static_cast<std::int32_t>(rounded) : 0);
}
static_assert(fixedWeight(kDefaultWeights[0]) == 1225 && fixedWeight(kDefaultWeights[1]) == 2404 &&
              fixedWeight(kDefaultWeights[2]) == 467);

// The weights that the caller gave, or the default, as the kernels for samples of that type take them.
template <class T>
auto weightsFor(const Zum32f* given) {
  const Weights w = given ? Weights{given[0], given[1], given[2]} : kDefaultWeights;
  if constexpr (sizeof(T) == 1) {
    return FixedWeights{fixedWeight(w[0]), fixedWeight(w[1]), fixedWeight(w[2])};
  } else {
    return w;
  }
}

}  // namespace
}  // namespace zum

// The function with the default weights and the one with the caller's, by their row kernel.
#define ZUM_GRAY_FUNCTIONS(name, weightedName, kernel, T)                                                  \
  ZUM_ROW_KERNEL(kernel)                                                                                   \
  ZUM_EXPORT(name, Pixels<const T>, Pixels<T>,                                                             \
             convertRows(ZUM_KERNEL(kernel), inSamples(src), inSamples(dst), roi, weightsFor<T>(nullptr))) \
  ZUM_EXPORT_WITH(weightedName, Pixels<const T>, Pixels<T>, const Zum32f* pWeights,                        \
                  convertRows(ZUM_KERNEL(kernel), inSamples(src), inSamples(dst), roi, weightsFor<T>(pWeights)))

ZUM_GRAY_FUNCTIONS(zumiRGBToGray_8u_C3C1R, zumiColorToGray_8u_C3C1R, innerRGBToGray_8u_C3C1R, Zum8u)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_8u_AC4C1R, zumiColorToGray_8u_AC4C1R, innerRGBToGray_8u_AC4C1R, Zum8u)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_16u_C3C1R, zumiColorToGray_16u_C3C1R, innerRGBToGray_16u_C3C1R, Zum16u)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_16u_AC4C1R, zumiColorToGray_16u_AC4C1R, innerRGBToGray_16u_AC4C1R, Zum16u)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_16s_C3C1R, zumiColorToGray_16s_C3C1R, innerRGBToGray_16s_C3C1R, Zum16s)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_16s_AC4C1R, zumiColorToGray_16s_AC4C1R, innerRGBToGray_16s_AC4C1R, Zum16s)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_32f_C3C1R, zumiColorToGray_32f_C3C1R, innerRGBToGray_32f_C3C1R, Zum32f)
ZUM_GRAY_FUNCTIONS(zumiRGBToGray_32f_AC4C1R, zumiColorToGray_32f_AC4C1R, innerRGBToGray_32f_AC4C1R, Zum32f)

#endif  // HWY_ONCE
