// The arithmetic that the luma-chroma families share: RGB to and from YCbCr with the matrix of ITU-R BT.601 in studio
// range, in the fixed-point forms that its functions are defined by.
// Every form says its scale and its rounding.
#if defined(ZUM_LUMACHROMA_FORMS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_LUMACHROMA_FORMS_INL_H
#undef ZUM_LUMACHROMA_FORMS_INL_H
#else
#define ZUM_LUMACHROMA_FORMS_INL_H
#endif

#include "frame/fixed-inl.h"
#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The layouts of the 8-bit functions by the tags of their names, and rows of planes.
using C3 = Packed3<Zum8u>;
using AC4 = ThreeOf4<Zum8u>;
using P3 = Planes3<Zum8u>;
using Bgr = Reversed<C3>;
using Bgra = Reversed<Packed4>;
using YCbCrC2 = Packed422<ChromaOrder::CbCr>;
using CbYCrC2 = Packed422<ChromaOrder::CbCr, FirstByte::kChroma>;
using P3Row = PlaneRow<const Zum8u, 3>;
using P3Target = PlaneRow<Zum8u, 3>;

// A form with a fourth channel that is the same everywhere.
template <class Form>
struct WithAlpha {
  VU8 alpha;

  template <class In>
  HWY_INLINE auto apply(const In& in) const {
    return add(Form::apply(in));
  }

 private:
  HWY_INLINE FourChannels<VU8> add(const Channels<VU8>& v) const { return {v.c0, v.c1, v.c2, alpha}; }
  HWY_INLINE TwoRows<FourChannels<VU8>> add(const TwoRows<Channels<VU8>>& v) const {
    return {add(v.upper), add(v.lower)};
  }
};

// ---- RGB to YCbCr

constexpr int kLumaOffset = 16;
constexpr int kChromaOffset = 128;

// Luma at 256 times the sample, each term and the sum truncated; no offset.
template <int kRed, int kGreen, int kBlue>
HWY_INLINE VU8 truncatedLuma(const Channels<VU8>& rgb) {
  const Tag<std::uint16_t> d;
  const VU16 high = all<std::uint16_t>(0xFF00);
  const VU16 r = hn::BitCast(d, rgb.c0), g = hn::BitCast(d, rgb.c1), b = hn::BitCast(d, rgb.c2);
  const VU16 even =
      mulHigh(kRed, hn::ShiftLeft<8>(r)) + mulHigh(kGreen, hn::ShiftLeft<8>(g)) + mulHigh(kBlue, hn::ShiftLeft<8>(b));
  const VU16 odd =
      mulHigh(kRed, hn::And(r, high)) + mulHigh(kGreen, hn::And(g, high)) + mulHigh(kBlue, hn::And(b, high));
  return highBytes(even, odd);
}

// Luma at 128 times the sample, each term truncated and their sum, with the offset, rounded.
template <int kRed, int kGreen, int kBlue, int kOffset>
HWY_INLINE VU8 roundedLuma(const Channels<VU8>& rgb) {
  const Tag<std::uint16_t> d;
  const VU16 r = hn::BitCast(d, rgb.c0), g = hn::BitCast(d, rgb.c1), b = hn::BitCast(d, rgb.c2);
  const VU16 high = all<std::uint16_t>(0xFF00), offset = all<std::uint16_t>(128 * kOffset + 64);
  const VU16 even = mulHigh(kRed, hn::ShiftLeft<8>(r)) + mulHigh(kGreen, hn::ShiftLeft<8>(g)) +
                    (mulHigh(kBlue, hn::ShiftLeft<8>(b)) + offset);
  const VU16 odd =
      mulHigh(kRed, hn::And(r, high)) + mulHigh(kGreen, hn::And(g, high)) + (mulHigh(kBlue, hn::And(b, high)) + offset);
  return hn::BitCast(Tag<std::uint8_t>(), hn::Or(hn::ShiftRight<7>(even), hn::And(hn::ShiftLeft<1>(odd), high)));
}

// Each term rounded at 64 times the sample, their sum truncated. From 128 times the samples, 64 times Y less its
// offset, and so on; nothing leaves the range of a byte.
struct RoundedTerms {
  static HWY_INLINE VI16 luma(VI16 r, VI16 g, VI16 b) {
    return mulRounded15(4211, r) + mulRounded15(8258, g) + mulRounded15(1606, b);
  }
  static HWY_INLINE VI16 cb(VI16 r, VI16 g, VI16 b) {
    return mulRounded15(7193, b) - mulRounded15(4768, g) - mulRounded15(2425, r);
  }
  static HWY_INLINE VI16 cr(VI16 r, VI16 g, VI16 b) {
    return mulRounded15(7193, r) - mulRounded15(6029, g) - mulRounded15(1163, b);
  }
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& rgb) {
    const Halves<VI16> r = times128(rgb.c0), g = times128(rgb.c1), b = times128(rgb.c2);
    return {over64({luma(r.a, g.a, b.a), luma(r.b, g.b, b.b)}) + all<std::uint8_t>(kLumaOffset),
            over64({cb(r.a, g.a, b.a), cb(r.b, g.b, b.b)}) + all<std::uint8_t>(kChromaOffset),
            over64({cr(r.a, g.a, b.a), cr(r.b, g.b, b.b)}) + all<std::uint8_t>(kChromaOffset)};
  }
};

// Each term truncated, at 256 times the sample for luma and 128 times for chroma; their sum rounded.
struct RoundedSum {
  static HWY_INLINE VI16 luma(VI16 r, VI16 g, VI16 b) {
    const VU16 sum = lumaSum(r, g, b) + all<std::uint16_t>(128);
    return hn::BitCast(Tag<std::int16_t>(), hn::ShiftRight<8>(sum)) + all<std::int16_t>(kLumaOffset);
  }
  static HWY_INLINE VU16 lumaSum(VI16 r, VI16 g, VI16 b) {
    const Tag<std::uint16_t> d;
    return mulHigh(16843, hn::ShiftLeft<8>(hn::BitCast(d, r))) + mulHigh(33030, hn::ShiftLeft<8>(hn::BitCast(d, g))) +
           mulHigh(6423, hn::ShiftLeft<8>(hn::BitCast(d, b)));
  }
  static HWY_INLINE VI16 chroma(VI16 sum) {
    return hn::ShiftRight<7>(sum + all<std::int16_t>(64)) + all<std::int16_t>(kChromaOffset);
  }
  static HWY_INLINE Channels<VI16> half(const Channels<VI16>& rgb) {
    const VI16 r = hn::ShiftLeft<7>(rgb.c0), g = hn::ShiftLeft<7>(rgb.c1), b = hn::ShiftLeft<7>(rgb.c2);
    return {luma(rgb.c0, rgb.c1, rgb.c2), chroma(mulHigh(-9699, r) + mulHigh(-19071, g) + mulHigh(28770, b)),
            chroma(mulHigh(28770, r) + mulHigh(-24117, g) + mulHigh(-4653, b))};
  }
};

// Exact sums at 65536 times the sample, rounded to nearest.
struct Exact {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& rgb) {
    const VI32 chroma = all(kChromaOffset << 16 | 1 << 15);
    const VI16 greenHalf = pairsOf(0, 33030 / 2);  // 33030 is more than a factor can be: it is added in two halves
    const VI32 y = addDots(all(kLumaOffset << 16 | 1 << 15), rgb.c02, pairsOf(16843, 6423));
    return {hn::ShiftRight<16>(addDots(addDots(y, rgb.c01, greenHalf), rgb.c01, greenHalf)),
            hn::ShiftRight<16>(addDots(addDots(chroma, rgb.c02, pairsOf(-9699, 28770)), rgb.c01, pairsOf(0, -19071))),
            hn::ShiftRight<16>(addDots(addDots(chroma, rgb.c02, pairsOf(28770, -4653)), rgb.c01, pairsOf(0, -24117)))};
  }
};

// ---- YCbCr to RGB

enum class Green { kAdded, kSubtracted };

// The part of luma in each sum, with the rounding of the sum: of studio range by a factor, of full range as it is.
template <int kY, int kRounding>
struct StudioLuma {
  static HWY_INLINE VI16 luma(VI16 y) {
    return mulHigh(kY, hn::ShiftLeft<7>(y - all<std::int16_t>(kLumaOffset))) + all<std::int16_t>(kRounding);
  }
};
template <int kRounding, int kShift>
struct FullLuma {
  static HWY_INLINE VI16 luma(VI16 y) { return hn::ShiftLeft<kShift>(y) + all<std::int16_t>(kRounding); }
};

// The parts of chroma, each product with 2^kScale times the centred sample truncated. Green's are those of negative
// factors added, or of positive factors subtracted: they are truncated the other way.
template <int kRedFromCr, int kGreenFromCr, int kGreenFromCb, Green kGreen, int kBlueFromCb, int kScale>
struct ChromaTerms {
  static HWY_INLINE Channels<VI16> chroma(VI16 cb, VI16 cr) {
    const VI16 u = hn::ShiftLeft<kScale>(cb - all<std::int16_t>(kChromaOffset));
    const VI16 v = hn::ShiftLeft<kScale>(cr - all<std::int16_t>(kChromaOffset));
    const VI16 green = mulHigh(kGreenFromCr, v) + mulHigh(kGreenFromCb, u);
    return {mulHigh(kRedFromCr, v), kGreen == Green::kAdded ? green : hn::Neg(green), mulHigh(kBlueFromCb, u)};
  }
};

// Sums at 2^kShift times the sample, truncated.
template <class Luma, class Chroma, int kShift>
struct TermSums : Luma, Chroma {
  static HWY_INLINE VI16 sum(VI16 luma, VI16 chroma) { return hn::ShiftRight<kShift>(luma + chroma); }

  static HWY_INLINE Channels<VI16> half(const Channels<VI16>& ycc) {
    const VI16 y = Luma::luma(ycc.c0);
    const Channels<VI16> terms = Chroma::chroma(ycc.c1, ycc.c2);
    return {sum(y, terms.c0), sum(y, terms.c1), sum(y, terms.c2)};
  }
};

template <int kY, int kRedFromCr, int kGreenFromCr, int kGreenFromCb, Green kGreen, int kBlueFromCb, int kRounding,
          int kShift>
using Terms = TermSums<StudioLuma<kY, kRounding>,
                       ChromaTerms<kRedFromCr, kGreenFromCr, kGreenFromCb, kGreen, kBlueFromCb, 7>, kShift>;

using Truncated16 = Terms<9536, 13074, -6660, -3203, Green::kAdded, 16523, 0, 4>;
using Rounded16 = Terms<9535, 13074, -6660, -3211, Green::kAdded, 16523, 8, 4>;
using Truncated8 = Terms<4767, 6537, 3330, 1605, Green::kSubtracted, 8261, 0, 3>;

// A form of Terms on pixel pairs, whose chroma terms are computed once for both pixels, and at 4:2:0 for both rows.
template <class Form>
struct OnPairs {
  static HWY_INLINE Channels<VU8> apply(const Luma422& in) { return row(in.y, Form::chroma(in.cb, in.cr)); }

  static HWY_INLINE TwoRows<Channels<VU8>> apply(const Luma420& in) {
    const Channels<VI16> terms = Form::chroma(in.cb, in.cr);
    return {row(in.upper, terms), row(in.lower, terms)};
  }

 private:
  static HWY_INLINE Channels<VU8> row(VU8 y, const Channels<VI16>& terms) {
    const Halves<VI16> pair = splitPairs(y);
    const Halves<VI16> luma = {Form::luma(pair.a), Form::luma(pair.b)};
    return {channel(luma, terms.c0), channel(luma, terms.c1), channel(luma, terms.c2)};
  }
  static HWY_INLINE VU8 channel(const Halves<VI16>& luma, VI16 term) {
    return joinPairsSaturated(Form::sum(luma.a, term), Form::sum(luma.b, term));
  }
};

// Exact sums at 65536 times the sample, truncated. The factors are the family's; offsets are added to R, G, B.
template <int kY, int kRedFromCr, int kGreenFromCb, int kGreenFromCr, int kBlueFromCb, int kRed, int kGreen, int kBlue>
struct ExactInverse {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& ycc) {
    const VI16 yCr = ycc.c02, yCb = ycc.c01, yCr8 = hn::ShiftLeft<3>(yCr), yCb8 = hn::ShiftLeft<3>(yCb);
    const VI32 r = add(all(kRed), yCr, yCr8, kY, kRedFromCr);
    const VI32 g = addDots(add(all(kGreen), yCr, yCr8, kY, kGreenFromCr), yCb, pairsOf(0, kGreenFromCb));
    const VI32 b = add(all(kBlue), yCb, yCb8, kY, kBlueFromCb);
    return {hn::ShiftRight<16>(r), hn::ShiftRight<16>(g), hn::ShiftRight<16>(b)};
  }

 private:
  // Factors beyond 16 bits are multiplied as eight times one part plus another.
  static HWY_INLINE VI32 add(VI32 sum, VI16 x, VI16 x8, int even, int odd) {
    return addDots(addDots(sum, x8, pairsOf(even >> 3, odd >> 3)), x, pairsOf(even & 7, odd & 7));
  }
};

// The same, its offsets the products of the factors with the offsets of the samples.
template <int kY, int kRedFromCr, int kGreenFromCb, int kGreenFromCr, int kBlueFromCb>
using CentredInverse =
    ExactInverse<kY, kRedFromCr, kGreenFromCb, kGreenFromCr, kBlueFromCb, -16 * kY - 128 * kRedFromCr,
                 -16 * kY - 128 * kGreenFromCb - 128 * kGreenFromCr, -16 * kY - 128 * kBlueFromCb>;

using FineInverse = CentredInverse<76284, 104595, -25690, -53281, 132186>;
using FinePlanarInverse = CentredInverse<76282, 104593, -25689, -53279, 132184>;

// ---- YUV to RGB
//
// Full range: R = Y + 1.14 V, G = Y - 0.394 U - 0.581 V, B = Y + 2.032 U.

// Terms at 2^kShift times the sample, their factors at 8192 times.
template <int kRedFromV, int kGreenFromV, int kGreenFromU, Green kGreen, int kBlueFromU, int kRounding, int kShift>
using YuvTerms = TermSums<FullLuma<kRounding, kShift>,
                          ChromaTerms<kRedFromV, kGreenFromV, kGreenFromU, kGreen, kBlueFromU, kShift + 3>, kShift>;

using YuvTruncated1 = YuvTerms<9339, -4760, -3228, Green::kAdded, 16646, 0, 0>;
using YuvTruncated2 = YuvTerms<9338, -4759, -3227, Green::kAdded, 16645, 0, 1>;
using YuvRounded16 = YuvTerms<9338, 4759, 3227, Green::kSubtracted, 16646, 8, 4>;

// Exact sums at 65536 times the sample, truncated.
template <int kRedFromV, int kGreenFromU, int kGreenFromV, int kBlueFromU>
using ExactYuvInverse = ExactInverse<65536, kRedFromV, kGreenFromU, kGreenFromV, kBlueFromU, -128 * kRedFromV,
                                     -128 * kGreenFromU - 128 * kGreenFromV, -128 * kBlueFromU>;

using FineYuvInverse = ExactYuvInverse<74711, -25821, -38076, 133169>;

// A form of whole pixels on pixel pairs.
template <class Form>
struct OnRepeatedChroma {
  static HWY_INLINE Channels<VU8> apply(const Luma422& in) {
    return Form::apply({in.y, joinPairs(in.cb, in.cb), joinPairs(in.cr, in.cr)});
  }
};

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
