// RGB to and from YCC, the luma and chroma of photographs: luma scaled by 1 / 1.402, so that highlights above white
// have room, and two colour differences with offsets of their own.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/ycc.cc"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/exports.h"

#include "frame/fixed-inl.h"
#include "frame/float-inl.h"
#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- 8-bit

constexpr int kC1Offset8 = 156, kC2Offset8 = 137;

// Luma at 64 times the sample, each of its terms truncated; the results from it at 4 times, truncated twice.
struct ForwardBlock {
  static HWY_INLINE Channels<VI16> half(const Channels<VI16>& rgb) {
    const Tag<std::uint16_t> d;
    const VU16 r = hn::ShiftLeft<8>(hn::BitCast(d, rgb.c0)), g = hn::ShiftLeft<8>(hn::BitCast(d, rgb.c1)),
               b = hn::ShiftLeft<8>(hn::BitCast(d, rgb.c2));
    const VI16 luma = hn::BitCast(Tag<std::int16_t>(), mulHigh(4898, r) + mulHigh(9617, g) + mulHigh(1867, b));
    const VI16 c1 = mulHigh(1789, hn::ShiftLeft<6>(rgb.c2) - luma), c2 = mulHigh(2178, hn::ShiftLeft<6>(rgb.c0) - luma);
    return {hn::ShiftRight<2>(mulHigh(2921, luma)), hn::ShiftRight<2>(c1 + all<std::int16_t>(4 * kC1Offset8)),
            hn::ShiftRight<2>(c2 + all<std::int16_t>(4 * kC2Offset8))};
  }
};

// Luma and the differences, exact at 16384 times the sample, truncated to 16 times, scaled and truncated again.
struct ForwardTail {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& rgb) {
    const VI32 zero = hn::Zero(Tag<std::int32_t>());
    const VI32 luma = addDots(addDots(zero, rgb.c02, pairsOf(kRed, kBlue)), rgb.c01, pairsOf(0, kGreen));
    const VI32 blue = addDots(addDots(zero, rgb.c02, pairsOf(-kRed, kOne - kBlue)), rgb.c01, pairsOf(0, -kGreen));
    const VI32 red = addDots(addDots(zero, rgb.c02, pairsOf(kOne - kRed, -kBlue)), rgb.c01, pairsOf(0, -kGreen));
    return {scaled(luma, 2921), scaled(blue, 1789) + all(kC1Offset8), scaled(red, 2178) + all(kC2Offset8)};
  }

 private:
  static constexpr int kRed = 4898, kGreen = 9617, kBlue = 1867, kOne = 1 << 14;

  static HWY_INLINE VI32 scaled(VI32 v, int factor) { return hn::ShiftRight<16>(hn::ShiftRight<10>(v) * all(factor)); }
};

// Terms at 16 times the sample, green's at 8 times, each truncated.
struct InverseBlock {
  static HWY_INLINE Channels<VI16> half(const Channels<VI16>& ycc) {
    const Tag<std::int16_t> d;
    const VI16 y = hn::BitCast(d, mulHigh(5563, hn::BitCast(Tag<std::uint16_t>(), hn::ShiftLeft<8>(ycc.c0))));
    const VI16 u = mulHigh(18168, hn::ShiftLeft<7>(ycc.c1 - all<std::int16_t>(kC1Offset8)));
    const VI16 v = mulHigh(14921, hn::ShiftLeft<7>(ycc.c2 - all<std::int16_t>(kC2Offset8)));
    const VI16 green = hn::ShiftRight<1>(y) + mulHigh(-6357, u) + mulHigh(-16679, v);
    return {hn::ShiftRight<4>(y + v), hn::ShiftRight<3>(green), hn::ShiftRight<4>(y + u)};
  }
};

// Terms at 4096 times the sample, exact but for the chroma of green, which is truncated to 16 times first.
struct InverseTail {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& ycc) {
    const VI32 y = addDots(hn::Zero(Tag<std::int32_t>()), ycc.c01, pairsOf(5564, 0));
    const VI32 u = addDots(all(-9084 * kC1Offset8), ycc.c01, pairsOf(0, 9084));
    const VI32 v = addDots(all(-7460 * kC2Offset8), ycc.c02, pairsOf(0, 7460));
    const VI32 green = hn::ShiftLeft<4>(y) + (hn::ShiftRight<8>(u) * all(-794) + hn::ShiftRight<8>(v) * all(-2084));
    return {hn::ShiftRight<12>(y + v), hn::ShiftRight<16>(green), hn::ShiftRight<12>(y + u)};
  }
};

// ---- Wider samples, in single precision

constexpr float kLumaScale = 0.7132668f, kC1Scale = 0.43686f, kC2Scale = 0.53192f;
constexpr float kYFactor = 1.3584f, kC1Factor = 2.2179f, kC2Factor = 1.8215f;
constexpr float kAlmostHalf = 0.49999f;

// The offsets of the colour differences.
struct Offsets16 {
  static constexpr float kC1 = 40092, kC2 = 35209;
};
struct OffsetsUnit {
  static constexpr float kC1 = 0.6117647f, kC2 = 0.5372549f;
};

template <class Offsets>
struct Forward {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& rgb) {
    const VF32 luma = (all(0.299f) * rgb.c0 + all(0.587f) * rgb.c1) + all(0.114f) * rgb.c2;
    return {luma * all(kLumaScale), (rgb.c2 - luma) * all(kC1Scale) + all(Offsets::kC1),
            (rgb.c0 - luma) * all(kC2Scale) + all(Offsets::kC2)};
  }
};

template <class Offsets>
struct Inverse {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& ycc) {
    const VF32 y = ycc.c0 * all(kYFactor);
    const VF32 u = (ycc.c1 - all(Offsets::kC1)) * all(kC1Factor), v = (ycc.c2 - all(Offsets::kC2)) * all(kC2Factor);
    return {y + v, (y - u * all(0.194f)) - v * all(0.509f), y + u};
  }
};

// A form whose results, once truncated, are rounded.
template <class Form>
struct Rounded {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& in) {
    const Channels<VF32> out = Form::apply(in);
    const VF32 almostHalf = all(kAlmostHalf);
    return {out.c0 + almostHalf, out.c1 + almostHalf, out.c2 + almostHalf};
  }
};

// The 16u tails multiply the factors out.
struct FoldedForward {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& rgb) {
    const VF32 r = rgb.c0, g = rgb.c1, b = rgb.c2;
    return {(all(0.213267f) * r + all(0.418688f) * g) + all(0.0813124f) * b,
            ((all(-0.130621f) * r + all(Offsets16::kC1)) - all(0.256437f) * g) + all(0.387058f) * b,
            ((all(0.372876f) * r + all(Offsets16::kC2)) - all(0.312237f) * g) - all(0.0606389f) * b};
  }
};
struct FoldedInverse {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& ycc) {
    const VF32 y = ycc.c0 * all(kYFactor), u = ycc.c1 - all(Offsets16::kC1), v = ycc.c2 - all(Offsets16::kC2);
    return {all(kC2Factor) * v + y, (y - all(0.4302726f) * u) - v * all(0.92714345f), y + u * all(kC1Factor)};
  }
};

struct InverseLimited {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& ycc) {
    const Channels<VF32> rgb = Inverse<OffsetsUnit>::apply(ycc);
    return {unitLimited(rgb.c0), unitLimited(rgb.c1), unitLimited(rgb.c2)};
  }
};

// ---- Row kernels

// Blocks of 8 pixels, of 4 with alpha, by one form, what remains by another.
template <class Block, class Tail>
HWY_INLINE void rowC3(const Zum8u* src, Zum8u* dst, int width) {
  using C3 = Packed3<Zum8u>;
  blocksAndTail<8, C3, OnHalves<Block>, OnLanes<Tail>, C3>(src, dst, width);
}
template <class Block, class Tail>
HWY_INLINE void rowAC4(const Zum8u* src, Zum8u* dst, int width) {
  using AC4 = ThreeOf4<Zum8u>;
  blocksAndTail<4, AC4, OnHalves<Block>, OnLanes<Tail>, AC4>(src, dst, width);
}

// Blocks of 4 pixels.
template <class Layout, class Block, class Tail>
HWY_INLINE void row16(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<4, Layout, OnFloats<Block>, OnFloats<Tail>, Layout>(src, dst, width);
}

template <class Layout>
HWY_INLINE void forward16u(const Zum16u* src, Zum16u* dst, int width) {
  row16<Layout, Forward<Offsets16>, Rounded<FoldedForward>>(src, dst, width);
}
template <class Layout>
HWY_INLINE void forward16s(const Zum16u* src, Zum16u* dst, int width) {
  row16<FromLowest<Layout>, Forward<Offsets16>, Rounded<Forward<Offsets16>>>(src, dst, width);
}
template <class Layout>
HWY_INLINE void inverse16u(const Zum16u* src, Zum16u* dst, int width) {
  row16<Layout, Inverse<Offsets16>, Rounded<FoldedInverse>>(src, dst, width);
}
// One form for all columns.
template <class Layout>
HWY_INLINE void inverse16s(const Zum16u* src, Zum16u* dst, int width) {
  columns<FromLowest<Layout>, OnFloats<Inverse<Offsets16>>, FromLowest<Layout>>(src, dst, 0, width);
}
template <class Layout>
HWY_INLINE void forward32f(const Zum32f* src, Zum32f* dst, int width) {
  columns<Layout, Forward<OffsetsUnit>, Layout>(src, dst, 0, width);
}
template <class Layout>
HWY_INLINE void inverse32f(const Zum32f* src, Zum32f* dst, int width) {
  columns<Layout, InverseLimited, Layout>(src, dst, 0, width);
}

using C3x16 = Packed3<Zum16u>;
using AC4x16 = ThreeOf4<Zum16u>;
using C3x32 = Packed3<Zum32f>;
using AC4x32 = ThreeOf4<Zum32f>;

void innerRGBToYCC_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  rowC3<ForwardBlock, ForwardTail>(src, dst, width);
}
void innerRGBToYCC_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  rowAC4<ForwardBlock, ForwardTail>(src, dst, width);
}
void innerRGBToYCC_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { forward16u<C3x16>(src, dst, width); }
void innerRGBToYCC_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { forward16u<AC4x16>(src, dst, width); }
void innerRGBToYCC_16s_C3R(const Zum16u* src, Zum16u* dst, int width) { forward16s<C3x16>(src, dst, width); }
void innerRGBToYCC_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) { forward16s<AC4x16>(src, dst, width); }
void innerRGBToYCC_32f_C3R(const Zum32f* src, Zum32f* dst, int width) { forward32f<C3x32>(src, dst, width); }
void innerRGBToYCC_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) { forward32f<AC4x32>(src, dst, width); }

void innerYCCToRGB_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  rowC3<InverseBlock, InverseTail>(src, dst, width);
}
void innerYCCToRGB_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  rowAC4<InverseBlock, InverseTail>(src, dst, width);
}
void innerYCCToRGB_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { inverse16u<C3x16>(src, dst, width); }
void innerYCCToRGB_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { inverse16u<AC4x16>(src, dst, width); }
void innerYCCToRGB_16s_C3R(const Zum16u* src, Zum16u* dst, int width) { inverse16s<C3x16>(src, dst, width); }
void innerYCCToRGB_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) { inverse16s<AC4x16>(src, dst, width); }
void innerYCCToRGB_32f_C3R(const Zum32f* src, Zum32f* dst, int width) { inverse32f<C3x32>(src, dst, width); }
void innerYCCToRGB_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) { inverse32f<AC4x32>(src, dst, width); }

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

ZUM_MODEL_FUNCTION(zumiRGBToYCC_8u_C3R, innerRGBToYCC_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_8u_AC4R, innerRGBToYCC_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_16u_C3R, innerRGBToYCC_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_16u_AC4R, innerRGBToYCC_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_16s_C3R, innerRGBToYCC_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_16s_AC4R, innerRGBToYCC_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_32f_C3R, innerRGBToYCC_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiRGBToYCC_32f_AC4R, innerRGBToYCC_32f_AC4R, Zum32f)

ZUM_MODEL_FUNCTION(zumiYCCToRGB_8u_C3R, innerYCCToRGB_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_8u_AC4R, innerYCCToRGB_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_16u_C3R, innerYCCToRGB_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_16u_AC4R, innerYCCToRGB_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_16s_C3R, innerYCCToRGB_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_16s_AC4R, innerYCCToRGB_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_32f_C3R, innerYCCToRGB_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiYCCToRGB_32f_AC4R, innerYCCToRGB_32f_AC4R, Zum32f)

#endif  // HWY_ONCE
