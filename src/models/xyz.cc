// RGB to and from CIE XYZ: linear RGB with the primaries of ITU-R BT.709 and the white point D65.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/xyz.cc"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/exports.h"

#include "frame/fixed-inl.h"
#include "frame/float-inl.h"
#include "frame/layouts-inl.h"
#include "models/cie-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The factors of the three channels, a row for each result.
struct Matrix {
  int row[3][3];
};

// ---- 8-bit

// Exact sums at 2^kShift times the sample, truncated.
template <const Matrix& m, int kShift>
struct FixedMatrix {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& in) { return {result<0>(in), result<1>(in), result<2>(in)}; }

 private:
  // Factors beyond 16 bits are multiplied as eight times one part plus another.
  static constexpr int kFineBits = 3, kFineMask = (1 << kFineBits) - 1;
  static constexpr bool isWide(int f) { return f < -0x8000 || f > 0x7FFF; }

  template <int r>
  static HWY_INLINE VI32 result(const PixelPairs& in) {
    constexpr int f0 = m.row[r][0], f1 = m.row[r][1], f2 = m.row[r][2];
    VI32 sum = hn::Zero(Tag<std::int32_t>());
    if constexpr (isWide(f0) || isWide(f1) || isWide(f2)) {
      const PixelPairs times8{hn::ShiftLeft<kFineBits>(in.c02), hn::ShiftLeft<kFineBits>(in.c01)};
      sum = add(sum, times8, f0 >> kFineBits, f1 >> kFineBits, f2 >> kFineBits);
      sum = add(sum, in, f0 & kFineMask, f1 & kFineMask, f2 & kFineMask);
    } else {
      sum = add(sum, in, f0, f1, f2);
    }
    return hn::ShiftRight<kShift>(sum);
  }

  static HWY_INLINE VI32 add(VI32 sum, const PixelPairs& in, int f0, int f1, int f2) {
    return addDots(addDots(sum, in.c02, pairsOf(f0, f2)), in.c01, pairsOf(0, f1));
  }
};

constexpr Matrix kForwardBlock{{{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}}};
constexpr Matrix kForwardTail{{{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}}};
constexpr Matrix kInverseBlock{{{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}}};
constexpr Matrix kInverseTail{{{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}}};

using ForwardBlock = OnLanes<FixedMatrix<kForwardBlock, 15>>;
using ForwardTail = OnLanes<FixedMatrix<kForwardTail, 16>>;
using InverseBlock = OnLanes<FixedMatrix<kInverseBlock, 13>>;
using InverseTail = OnLanes<FixedMatrix<kInverseTail, 16>>;

// ---- Wider samples, in single precision

struct Forward {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& rgb) { return rgbToXyz(rgb); }
};
struct Inverse {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& xyz) { return xyzToRgb(xyz); }
};

// Of floats only Z is limited: the Z of white is above 1, as no X or Y is.
struct ForwardLimited {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& rgb) {
    const Channels<VF32> xyz = rgbToXyz(rgb);
    return {xyz.c0, xyz.c1, unitLimited(xyz.c2)};
  }
};
struct InverseLimited {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& xyz) {
    const Channels<VF32> rgb = xyzToRgb(xyz);
    return {unitLimited(rgb.c0), unitLimited(rgb.c1), unitLimited(rgb.c2)};
  }
};

// ---- Row kernels

// Blocks of 8 pixels, of 4 with alpha, by one form, what remains by another.
template <class Block, class Tail>
HWY_INLINE void rowC3(const Zum8u* src, Zum8u* dst, int width) {
  using C3 = Packed3<Zum8u>;
  blocksAndTail<8, C3, Block, Tail, C3>(src, dst, width);
}
template <class Block, class Tail>
HWY_INLINE void rowAC4(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<4, PackedA4, Block, Tail, PackedA4>(src, dst, width);
}

template <class Layout, class Form>
HWY_INLINE void row16u(const Zum16u* src, Zum16u* dst, int width) {
  columns<Layout, OnFloats<Form>, Layout>(src, dst, 0, width);
}
template <class Layout, class Form>
HWY_INLINE void row16s(const Zum16u* src, Zum16u* dst, int width) {
  row16u<FromLowest<Layout>, Form>(src, dst, width);
}
template <class Layout, class Form>
HWY_INLINE void row32f(const Zum32f* src, Zum32f* dst, int width) {
  columns<Layout, Form, Layout>(src, dst, 0, width);
}

using C3x16 = Packed3<Zum16u>;
using AC4x16 = ThreeOf4<Zum16u>;
using C3x32 = Packed3<Zum32f>;
using AC4x32 = ThreeOf4<Zum32f>;

void innerRGBToXYZ_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  rowC3<ForwardBlock, ForwardTail>(src, dst, width);
}
void innerRGBToXYZ_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  rowAC4<ForwardBlock, ForwardTail>(src, dst, width);
}
void innerRGBToXYZ_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { row16u<C3x16, Forward>(src, dst, width); }
void innerRGBToXYZ_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { row16u<AC4x16, Forward>(src, dst, width); }
void innerRGBToXYZ_16s_C3R(const Zum16u* src, Zum16u* dst, int width) { row16s<C3x16, Forward>(src, dst, width); }
void innerRGBToXYZ_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) { row16s<AC4x16, Forward>(src, dst, width); }
void innerRGBToXYZ_32f_C3R(const Zum32f* src, Zum32f* dst, int width) {
  row32f<C3x32, ForwardLimited>(src, dst, width);
}
void innerRGBToXYZ_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) {
  row32f<AC4x32, ForwardLimited>(src, dst, width);
}

void innerXYZToRGB_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  rowC3<InverseBlock, InverseTail>(src, dst, width);
}
void innerXYZToRGB_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  rowAC4<InverseBlock, InverseTail>(src, dst, width);
}
void innerXYZToRGB_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { row16u<C3x16, Inverse>(src, dst, width); }
void innerXYZToRGB_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { row16u<AC4x16, Inverse>(src, dst, width); }
void innerXYZToRGB_16s_C3R(const Zum16u* src, Zum16u* dst, int width) { row16s<C3x16, Inverse>(src, dst, width); }
void innerXYZToRGB_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) { row16s<AC4x16, Inverse>(src, dst, width); }
void innerXYZToRGB_32f_C3R(const Zum32f* src, Zum32f* dst, int width) {
  row32f<C3x32, InverseLimited>(src, dst, width);
}
void innerXYZToRGB_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) {
  row32f<AC4x32, InverseLimited>(src, dst, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

ZUM_MODEL_FUNCTION(zumiRGBToXYZ_8u_C3R, innerRGBToXYZ_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_8u_AC4R, innerRGBToXYZ_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_16u_C3R, innerRGBToXYZ_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_16u_AC4R, innerRGBToXYZ_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_16s_C3R, innerRGBToXYZ_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_16s_AC4R, innerRGBToXYZ_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_32f_C3R, innerRGBToXYZ_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiRGBToXYZ_32f_AC4R, innerRGBToXYZ_32f_AC4R, Zum32f)

ZUM_MODEL_FUNCTION(zumiXYZToRGB_8u_C3R, innerXYZToRGB_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_8u_AC4R, innerXYZToRGB_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_16u_C3R, innerXYZToRGB_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_16u_AC4R, innerXYZToRGB_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_16s_C3R, innerXYZToRGB_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_16s_AC4R, innerXYZToRGB_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_32f_C3R, innerXYZToRGB_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiXYZToRGB_32f_AC4R, innerXYZToRGB_32f_AC4R, Zum32f)

#endif  // HWY_ONCE
