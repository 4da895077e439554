// RGB to and from YUV 4:4:4, 4:2:2 and 4:2:0.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/yuv.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Three channels and zeros in a fourth.
struct C3And0 : Packed4 {
  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<VU8>& v, Zum8u* row, Access access = {}) {
    Packed4::store({v.c0, v.c1, v.c2, hn::Zero(Tag<Zum8u>())}, row, access);
  }
  static void setPixel(Zum8u* row, std::size_t x, const Pixel& p) { Packed4::setPixel(row, x, p, 0); }
};

// ---- RGB to YUV, the forms
//
// Full range: Y = 0.299 R + 0.587 G + 0.114 B, U = 0.492 (B - Y), V = 0.877 (R - Y). The vector forms work on the even
// and the odd pixels apart. U cannot leave the range of a byte, V can.

HWY_INLINE VI16 offset(VI16 chroma) { return chroma + all<std::int16_t>(kChromaOffset); }
HWY_INLINE VI16 saturated(VI16 chroma) {
  return hn::Min(hn::Max(offset(chroma), hn::Zero(Tag<std::int16_t>())), all<std::int16_t>(255));
}
HWY_INLINE VU8 offset(VU8 chroma) { return chroma + all<std::uint8_t>(kChromaOffset); }
HWY_INLINE VU8 saturated(VI16 even, VI16 odd) { return joinPairsSaturated(offset(even), offset(odd)); }

// Every term truncated, luma's at 256 times the sample, chroma's at 64 times; their sum truncated.
struct TruncatedTerms {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& rgb) {
    const Halves<VI16> r = times128(rgb.c0), g = times128(rgb.c1), b = times128(rgb.c2);
    return {highBytes(luma(r.a, g.a, b.a), luma(r.b, g.b, b.b)), offset(over64({u(r.a, g.a, b.a), u(r.b, g.b, b.b)})),
            offset(saturatedOver64({v(r.a, g.a, b.a), v(r.b, g.b, b.b)}))};
  }

 private:
  static HWY_INLINE VU16 luma(VI16 r, VI16 g, VI16 b) {
    const Tag<std::uint16_t> d;  // twice green's factor is more than a factor can be
    return mulHigh(2 * 19595, hn::BitCast(d, r)) + mulHigh(38469, hn::BitCast(d, g + g)) +
           mulHigh(2 * 7471, hn::BitCast(d, b));
  }
  static HWY_INLINE VI16 u(VI16 r, VI16 g, VI16 b) { return mulHigh(-4816, r) + mulHigh(-9469, g) + mulHigh(14286, b); }
  static HWY_INLINE VI16 v(VI16 r, VI16 g, VI16 b) {
    return mulHigh(20152, r) + mulHigh(-16875, g) + mulHigh(-3276, b);
  }
};

// Red and green summed exactly, then that sum and blue's term truncated, each on its own, to the scale of the sample.
struct TwoTerms {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& rgb) {
    const Halves<VU8> rg = zipPairs(rgb.c0, rgb.c1);
    const Halves<VI16> b = splitPairs(rgb.c2);
    return {joinPairs(terms<9798, 19235, 3736>(rg.a, b.a), terms<9798, 19235, 3736>(rg.b, b.b)),
            joinPairs(offset(terms<-4817, -9470, 14287>(rg.a, b.a)), offset(terms<-4817, -9470, 14287>(rg.b, b.b))),
            saturated(terms<20152, -16876, -3277>(rg.a, b.a), terms<20152, -16876, -3277>(rg.b, b.b))};
  }

 private:
  template <int kRed, int kGreen, int kBlue>
  static HWY_INLINE VI16 terms(VU8 rg, VI16 b) {
    return dotBytes<kRed, kGreen, 15>(rg) + mulHigh(2 * kBlue, b);
  }
};

// Twice luma, of two truncated terms as above; chroma from the differences to it.
struct TwiceLuma {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& rgb) {
    const Halves<VI16> s = of(rgb), r = splitPairs(rgb.c0), b = splitPairs(rgb.c2);
    return {luma(s), joinPairs(offset(u(b.a + b.a - s.a)), offset(u(b.b + b.b - s.b))),
            saturated(v(r.a + r.a - s.a), v(r.b + r.b - s.b))};
  }

  static HWY_INLINE Halves<VI16> of(const Channels<VU8>& rgb) {
    const Halves<VU8> rg = zipPairs(rgb.c0, rgb.c1);
    const Halves<VI16> b = splitPairs(rgb.c2);
    return {dotBytes<9798, 19235, 14>(rg.a) + mulHigh(4 * 3736, b.a),
            dotBytes<9798, 19235, 14>(rg.b) + mulHigh(4 * 3736, b.b)};
  }
  static HWY_INLINE VU8 luma(const Halves<VI16>& twice) {
    return joinPairs(hn::ShiftRight<1>(twice.a), hn::ShiftRight<1>(twice.b));
  }
  // From twice the difference.
  static HWY_INLINE VI16 u(VI16 blue) { return mulHigh(16121, blue); }
  static HWY_INLINE VI16 v(VI16 red) { return mulHigh(28737, red); }
};

// The same with the chroma of a pair, from its sums.
struct TwiceLumaOfTwo {
  static HWY_INLINE Luma422 apply(const Channels<VU8>& rgb) {
    const Halves<VI16> s = TwiceLuma::of(rgb), r = splitPairs(rgb.c0), b = splitPairs(rgb.c2);
    const VI16 mean = hn::ShiftRight<1>(s.a + s.b);
    return {TwiceLuma::luma(s), offset(TwiceLuma::u(b.a + b.b - mean)), saturated(TwiceLuma::v(r.a + r.b - mean))};
  }
};

// Samples of 10 bits, the high ones repeated as the low ones; twice luma of three truncated terms.
struct TwiceLuma10 {
  Halves<VI16> luma;
  VI16 red, blue;  // of both pixels of a pair

  static HWY_INLINE TwiceLuma10 of(const Channels<VU8>& rgb) {
    const Halves<VI16> r = expanded(rgb.c0), g = expanded(rgb.c1), b = expanded(rgb.c2);
    return {{sum(r.a, g.a, b.a), sum(r.b, g.b, b.b)}, r.a + r.b, b.a + b.b};
  }

 private:
  static HWY_INLINE Halves<VI16> expanded(VU8 v) {
    const Halves<VU8> twice = zipPairs(v, v);
    return {expanded16(twice.a), expanded16(twice.b)};
  }
  static HWY_INLINE VI16 expanded16(VU8 twice) {
    return hn::BitCast(Tag<std::int16_t>(), hn::ShiftRight<6>(hn::BitCast(Tag<std::uint16_t>(), twice)));
  }
  static HWY_INLINE VI16 sum(VI16 r, VI16 g, VI16 b) { return mulHigh(9798, r) + mulHigh(19235, g) + mulHigh(3736, b); }
};

// From those the chroma of a pair,
struct TenBitsOfTwo {
  static HWY_INLINE Luma422 apply(const Channels<VU8>& rgb) {
    const TwiceLuma10 s = TwiceLuma10::of(rgb);
    const VI16 luma = s.luma.a + s.luma.b;
    return {TwiceLuma::luma(s.luma), offset(hn::ShiftRight<1>(TwiceLuma::u(hn::ShiftRight<1>(s.blue) - luma))),
            saturated(hn::ShiftRight<1>(TwiceLuma::v(hn::ShiftRight<1>(s.red) - luma)))};
  }
};

// and of two by two pixels.
struct TenBitsOfFour {
  static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
    const TwiceLuma10 upper = TwiceLuma10::of(rgb.upper), lower = TwiceLuma10::of(rgb.lower);
    const VI16 luma = hn::ShiftRight<2>(upper.luma.a + upper.luma.b + lower.luma.a + lower.luma.b);
    return {TwiceLuma::luma(upper.luma), TwiceLuma::luma(lower.luma),
            offset(TwiceLuma::u(hn::ShiftRight<3>(upper.blue + lower.blue) - luma)),
            saturated(TwiceLuma::v(hn::ShiftRight<3>(upper.red + lower.red) - luma))};
  }
};

// Luma at 64 times the sample, each term rounded and their sum truncated; the chroma of two by two pixels from the
// differences to it at the same scale, rounded and then truncated.
struct RoundedLumaOfFour {
  static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
    const Halves<VI16> upper = luma(rgb.upper), lower = luma(rgb.lower);
    const VI16 total = upper.a + upper.b + lower.a + lower.b;  // of 16 bits without a sign
    const VI16 mean = hn::BitCast(Tag<std::int16_t>(), hn::ShiftRight<1>(hn::BitCast(Tag<std::uint16_t>(), total)));
    const VI16 red = sum(rgb.upper.c0, rgb.lower.c0), blue = sum(rgb.upper.c2, rgb.lower.c2);
    return {over64(upper), over64(lower), offset(hn::ShiftRight<6>(mulRounded15(8061, blue - mean))),
            saturated(hn::ShiftRight<6>(mulRounded15(14369, red - mean)))};
  }

 private:
  static HWY_INLINE Halves<VI16> luma(const Channels<VU8>& rgb) {
    const Halves<VI16> r = times128(rgb.c0), g = times128(rgb.c1), b = times128(rgb.c2);
    return {luma(r.a, g.a, b.a), luma(r.b, g.b, b.b)};
  }
  static HWY_INLINE VI16 luma(VI16 r, VI16 g, VI16 b) {
    return mulRounded15(4899, r) + mulRounded15(9617, g) + mulRounded15(1868, b);
  }
  static HWY_INLINE VI16 sum(VU8 upper, VU8 lower) {
    const Halves<VI16> u = splitPairs(upper), l = splitPairs(lower);
    return hn::ShiftLeft<5>(u.a + u.b + l.a + l.b);
  }
};

// Exact sums at 65536 times the sample for luma and 32768 times for chroma, truncated.
struct ExactSums {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& rgb) {
    const VI32 zero = hn::Zero(Tag<std::int32_t>()), chroma = all(kChromaOffset << 15);
    const VI32 y = addDots(addDots(zero, rgb.c02, pairsOf(19595, 7471)), rgb.c01, pairsOf(0, 38469 / 2));
    return {hn::ShiftRight<16>(addDots(y, rgb.c01, pairsOf(0, 38469 - 38469 / 2))),
            hn::ShiftRight<15>(addDots(addDots(chroma, rgb.c02, pairsOf(-4816, 14286)), rgb.c01, pairsOf(0, -9469))),
            hn::ShiftRight<15>(addDots(addDots(chroma, rgb.c02, pairsOf(20152, -3276)), rgb.c01, pairsOf(0, -16875)))};
  }
};

// Luma exact at 65536 times the sample, truncated; chroma from the rounded differences to it, truncated.
struct RoundedDifferences {
  static HWY_INLINE Channels<VI32> lanes(const PixelPairs& rgb) {
    const VI32 zero = hn::Zero(Tag<std::int32_t>()), chroma = all(kChromaOffset);
    const VI16 greenHalf = pairsOf(0, 38470 / 2);
    const VI32 redGreen = addDots(addDots(zero, rgb.c01, greenHalf), rgb.c01, greenHalf);
    const VI32 luma = addDots(redGreen, rgb.c02, pairsOf(19595, 7471));
    const VI32 rounded = luma - all(32767);
    const VI32 redBlue = hn::BitCast(Tag<std::int32_t>(), rgb.c02), high = all<std::int32_t>(-65536);
    const VI32 blue = hn::ShiftRight<16>(hn::And(redBlue, high) - rounded);
    const VI32 red = hn::ShiftRight<16>(hn::ShiftLeft<16>(redBlue) - rounded);
    return {hn::ShiftRight<16>(luma), hn::ShiftRight<16>(blue * all(32244)) + chroma,
            hn::ShiftRight<16>(red * all(57475)) + chroma};
  }
};

// The forms of single pixels at odd ends, in plain integers.
struct Yuv {
  int y, u, v;
};

Yuv twiceLuma(const Pixel& rgb) {
  const int s = ((9798 * rgb.c0 + 19235 * rgb.c1) >> 14) + ((3736 * rgb.c2) >> 14);
  return {s >> 1, ((16121 * (2 * rgb.c2 - s)) >> 16) + 128, saturate8(((28737 * (2 * rgb.c0 - s)) >> 16) + 128)};
}

// Luma at 32768 times the sample. What is added to the differences rounds down or to nearest, U and V on their own.
Yuv exactLuma(const Pixel& rgb, int uRounding, int vRounding) {
  const int luma = 9798 * rgb.c0 + 19235 * rgb.c1 + 3736 * rgb.c2;
  const int blue = ((rgb.c2 << 15) - luma + uRounding) >> 15, red = ((rgb.c0 << 15) - luma + vRounding) >> 15;
  return {luma >> 15, ((16121 * blue) >> 15) + 128, saturate8(((28737 * red) >> 15) + 128)};
}

// ---- RGB to YUV, the rows

void innerRGBToYUV_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  const int blocks = width & ~15;
  columns<C3, TruncatedTerms, C3>(src, dst, 0, blocks);
  columns<C3, TwiceLuma, C3>(src, dst, blocks, width);
}

void innerRGBToYUV_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  const int blocks = width & ~7;
  columns<AC4, TwoTerms, AC4>(src, dst, 0, blocks);
  columns<AC4, TwiceLuma, AC4>(src, dst, blocks, width);
}

void innerRGBToYUV_8u_P3R(const P3Row& src, const P3Target& dst, int width) {
  const int blocks = width & ~15;
  columns<P3, TruncatedTerms, P3>(src, dst, 0, blocks);
  columns<P3, OnLanes<ExactSums>, P3>(src, dst, blocks, width);
}

void innerRGBToYUV_8u_C3P3R(const Zum8u* src, const P3Target& dst, int width) {
  const int blocks = width & ~7;
  columns<C3, TruncatedTerms, P3>(src, dst, 0, blocks);
  columns<C3, OnLanes<RoundedDifferences>, P3>(src, dst, blocks, width);
}

// An odd last pixel has half a pair: Y and U.
void innerRGBToYUV422_8u_C3C2R(const Zum8u* src, Zum8u* dst, int width) {
  const int pairs = width & ~1;
  columns<C3, TwiceLumaOfTwo, YCbCrC2>(src, dst, 0, pairs);
  if (pairs < width) {
    const Yuv last = twiceLuma(C3::pixel(src, pairs));
    dst[2 * pairs] = static_cast<Zum8u>(last.y);
    dst[2 * pairs + 1] = static_cast<Zum8u>(last.u);
  }
}

void setLastPixel(const P3Target& dst, int x, const Yuv& yuv) {
  dst[0][x] = static_cast<Zum8u>(yuv.y);
  dst[1][x / 2] = static_cast<Zum8u>(yuv.u);
  dst[2][x / 2] = static_cast<Zum8u>(yuv.v);
}

void innerRGBToYUV422_8u_C3P3R(const Zum8u* src, const P3Target& dst, int width) {
  const int pairs = width & ~1;
  columns<C3, TwiceLumaOfTwo, Planes422>(src, dst, 0, pairs);
  if (pairs < width) setLastPixel(dst, pairs, exactLuma(C3::pixel(src, pairs), 16383, 32767));
}

void innerRGBToYUV422_8u_P3R(const P3Row& src, const P3Target& dst, int width) {
  const int pairs = width & ~1;
  columns<P3, TenBitsOfTwo, Planes422>(src, dst, 0, pairs);
  if (pairs < width) setLastPixel(dst, pairs, exactLuma(P3::pixel(src, pairs), 0, 0));
}

// Blocks of 8 pairs and one of 4, by the same form, then single pairs.
void innerRGBToYUV420_8u_C3P3R(RowPair<const Zum8u> src, const RowPair420<Zum8u>& dst, int pairs) {
  const int blocks = pairs & ~3;
  columns<RowPairOf<C3>, RoundedLumaOfFour, Planes420>(src, dst, 0, 2 * blocks);
  for (int p = blocks; p < pairs; ++p) {
    int total = 0, red = 0, blue = 0;
    const auto luma = [&](const Zum8u* rgb, Zum8u* y, int x) {
      const Pixel pixel = C3::pixel(rgb, x);
      const int l = 4899 * pixel.c0 + 9617 * pixel.c1 + 1868 * pixel.c2;
      total += l;
      red += pixel.c0;
      blue += pixel.c2;
      y[x] = static_cast<Zum8u>(l >> 14);
    };
    luma(src.upper, dst.luma.upper, 2 * p);
    luma(src.upper, dst.luma.upper, 2 * p + 1);
    luma(src.lower, dst.luma.lower, 2 * p);
    luma(src.lower, dst.luma.lower, 2 * p + 1);
    dst.cb[p] = static_cast<Zum8u>(((8061 * (((blue << 14) - total) >> 14)) >> 16) + 128);
    dst.cr[p] = static_cast<Zum8u>(saturate8(((14369 * (((red << 14) - total) >> 14)) >> 16) + 128));
  }
}

void innerRGBToYUV420_8u_P3R(const PairOfRows<P3Row>& src, const RowPair420<Zum8u>& dst, int pairs) {
  columns<RowPairOf<P3>, TenBitsOfFour, Planes420>(src, dst, 0, 2 * pairs);
}

// ---- YUV to RGB

// Chroma's part truncated to the scale of the sample: at 16384 times and 8192 times it for red and blue, at 16 times
// for the two terms of green before their sum.
struct TruncatedParts {
  static HWY_INLINE Channels<VI16> half(const Channels<VI16>& yuv) {
    const VI16 u = hn::ShiftLeft<6>(yuv.c1 - all<std::int16_t>(kChromaOffset));
    const VI16 v = hn::ShiftLeft<6>(yuv.c2 - all<std::int16_t>(kChromaOffset));
    return {yuv.c0 + hn::ShiftRight<4>(mulHigh(18677, v)),
            yuv.c0 - hn::ShiftRight<4>(mulHigh(6455, u) + mulHigh(9519, v)),
            yuv.c0 + hn::ShiftRight<3>(mulHigh(16646, u))};
  }
};
using ExactParts = ExactYuvInverse<4 * 18677, 4 * -6455, 4 * -9519, 8 * 16646>;

void innerYUVToRGB_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  columns<C3, OnHalves<YuvTruncated1>, C3>(src, dst, 0, width);
}

void innerYUVToRGB_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  columns<AC4, OnHalves<YuvTruncated1>, AC4>(src, dst, 0, width);
}

void innerYUVToRGB_8u_P3R(const P3Row& src, const P3Target& dst, int width) {
  const int blocks = width & ~7;
  columns<P3, OnHalves<TruncatedParts>, P3>(src, dst, 0, blocks);
  columns<P3, OnLanes<ExactParts>, P3>(src, dst, blocks, width);
}

void innerYUVToRGB_8u_P3C3R(const P3Row& src, Zum8u* dst, int width) {
  columns<P3, OnHalves<YuvTruncated2>, C3>(src, dst, 0, width);
}

// An odd last pixel has only its Y and U, and takes the V of the pair before. At a width of 1 there is none, and U
// serves as both.
void innerYUV422ToRGB_8u_C2C3R(const Zum8u* src, Zum8u* dst, int width) {
  const int pairs = width & ~1;
  columns<YCbCrC2, OnPairs<YuvTruncated2>, C3>(src, dst, 0, pairs);
  if (pairs < width) {
    const Zum8u* y = src + 2 * pairs;
    C3::setPixel(dst, pairs, width > 1 ? CoarseYuvPixel::rgb(y[0], y[1], y[-1]) : FineYuvPixel::rgb(y[0], y[1], y[1]));
  }
}

// Columns begin to end of planes, in single pixels.
template <class Form, class Dst, class DstRow>
void decodePixels(const P3Row& src, const DstRow& dst, int begin, int end) {
  for (int x = begin; x < end; ++x) Dst::setPixel(dst, x, Form::rgb(src[0][x], src[1][x / 2], src[2][x / 2]));
}

void innerYUV422ToRGB_8u_P3C3R(const P3Row& src, Zum8u* dst, int width) {
  const int blocks = width & ~15, pairs = width & ~1;
  columns<Planes422, OnPairs<YuvTruncated2>, C3>(src, dst, 0, blocks);
  columns<Planes422, OnRepeatedChroma<OnLanes<FineYuvInverse>>, C3>(src, dst, blocks, pairs);
  decodePixels<FineYuvPixel, C3>(src, dst, pairs, width);
}

void innerYUV422ToRGB_8u_P3R(const P3Row& src, const P3Target& dst, int width) {
  const int pairs = width & ~1;
  columns<Planes422, OnPairs<YuvTruncated2>, P3>(src, dst, 0, pairs);
  decodePixels<CoarseYuvPixel, P3>(src, dst, pairs, width);
}

// Blocks of 8 and one of 4, by the same form, then single pixels.
void innerYUV422ToRGB_8u_P3AC4R(const P3Row& src, Zum8u* dst, int width) {
  const int blocks = width & ~3;
  columns<Planes422, OnPairs<YuvRounded16>, C3And0>(src, dst, 0, blocks);
  decodePixels<FineYuvPixel, C3And0>(src, dst, blocks, width);
}

void innerYUV420ToRGB_8u_P3C3R(const RowPair420<const Zum8u>& src, RowPair<Zum8u> dst, int pairs) {
  columns<Planes420, OnPairs<YuvTruncated2>, RowPairOf<C3>>(src, dst, 0, 2 * pairs);
}

void innerYUV420ToRGB_8u_P3R(const RowPair420<const Zum8u>& src, const PairOfRows<P3Target>& dst, int pairs) {
  columns<Planes420, OnPairs<YuvTruncated2>, RowPairOf<P3>>(src, dst, 0, 2 * pairs);
}

// Blocks of 4 pairs and one of 2, by the same form, then a single pair.
void innerYUV420ToRGB_8u_P3AC4R(const RowPair420<const Zum8u>& src, RowPair<Zum8u> dst, int pairs) {
  const int blocks = pairs & ~1;
  columns<Planes420, OnPairs<YuvRounded16>, RowPairOf<C3And0>>(src, dst, 0, 2 * blocks);
  decodePixels<RoundedYuvPixel, C3And0>({src.luma.upper, src.cb, src.cr}, dst.upper, 2 * blocks, 2 * pairs);
  decodePixels<RoundedYuvPixel, C3And0>({src.luma.lower, src.cb, src.cr}, dst.lower, 2 * blocks, 2 * pairs);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerRGBToYUV_8u_C3R);
HWY_EXPORT(innerRGBToYUV_8u_AC4R);
HWY_EXPORT(innerRGBToYUV_8u_P3R);
HWY_EXPORT(innerRGBToYUV_8u_C3P3R);
HWY_EXPORT(innerRGBToYUV422_8u_C3C2R);
HWY_EXPORT(innerRGBToYUV422_8u_C3P3R);
HWY_EXPORT(innerRGBToYUV422_8u_P3R);
HWY_EXPORT(innerRGBToYUV420_8u_C3P3R);
HWY_EXPORT(innerRGBToYUV420_8u_P3R);
HWY_EXPORT(innerYUVToRGB_8u_C3R);
HWY_EXPORT(innerYUVToRGB_8u_AC4R);
HWY_EXPORT(innerYUVToRGB_8u_P3R);
HWY_EXPORT(innerYUVToRGB_8u_P3C3R);
HWY_EXPORT(innerYUV422ToRGB_8u_C2C3R);
HWY_EXPORT(innerYUV422ToRGB_8u_P3C3R);
HWY_EXPORT(innerYUV422ToRGB_8u_P3R);
HWY_EXPORT(innerYUV422ToRGB_8u_P3AC4R);
HWY_EXPORT(innerYUV420ToRGB_8u_P3C3R);
HWY_EXPORT(innerYUV420ToRGB_8u_P3R);
HWY_EXPORT(innerYUV420ToRGB_8u_P3AC4R);

}  // namespace zum

using namespace zum;

ZUM_EXPORT(zumiRGBToYUV_8u_C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV_8u_C3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV_8u_AC4R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV_8u_AC4R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV_8u_P3R, ThreePlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV_8u_P3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV_8u_C3P3R, Pixels<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV_8u_C3P3R), src, dst, roi))
ZUM_EXPORT(zumiYUVToRGB_8u_C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUVToRGB_8u_C3R), src, dst, roi))
ZUM_EXPORT(zumiYUVToRGB_8u_AC4R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUVToRGB_8u_AC4R), src, dst, roi))
ZUM_EXPORT(zumiYUVToRGB_8u_P3R, ThreePlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUVToRGB_8u_P3R), src, dst, roi))
ZUM_EXPORT(zumiYUVToRGB_8u_P3C3R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUVToRGB_8u_P3C3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV422_8u_C3C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV422_8u_C3C2R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV422_8u_C3P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV422_8u_C3P3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV422_8u_P3R, ThreePlanes<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerRGBToYUV422_8u_P3R), src, dst, roi))

ZumStatus zumiRGBToYUV422_8u_C3P3(const Zum8u* pSrc, Zum8u* const pDst[3], ZumiSize roi) {
  return convertTightRows(ZUM_KERNEL(innerRGBToYUV422_8u_C3P3R), TightPixels{pSrc, 3, roi.width},
                          tightHalfPlanes3<OddPixel::kOwnSample>(pDst, roi.width), roi);
}

ZumStatus zumiRGBToYUV422_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi) {
  return convertTightRows(ZUM_KERNEL(innerRGBToYUV422_8u_P3R), tightFullPlanes3(pSrc, roi.width),
                          tightHalfPlanes3<OddPixel::kOwnSample>(pDst, roi.width), roi);
}
ZUM_EXPORT(zumiYUV422ToRGB_8u_C2C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUV422ToRGB_8u_C2C3R), src, dst, roi))
ZUM_EXPORT(zumiYUV422ToRGB_8u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUV422ToRGB_8u_P3C3R), src, dst, roi))
ZUM_EXPORT(zumiYUV422ToRGB_8u_P3R, ThreeSteppedPlanes<const Zum8u>, ThreePlanes<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUV422ToRGB_8u_P3R), src, dst, roi))
ZUM_EXPORT(zumiYUV422ToRGB_8u_P3AC4R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(innerYUV422ToRGB_8u_P3AC4R), src, dst, roi))

ZumStatus zumiYUV422ToRGB_8u_P3C3(const Zum8u* const pSrc[3], Zum8u* pDst, ZumiSize roi) {
  return convertTightRows(ZUM_KERNEL(innerYUV422ToRGB_8u_P3C3R),
                          tightHalfPlanes3<OddPixel::kOwnSample>(pSrc, roi.width), TightPixels{pDst, 3, roi.width},
                          roi);
}

ZumStatus zumiYUV422ToRGB_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi) {
  return convertTightRows(ZUM_KERNEL(innerYUV422ToRGB_8u_P3R), tightHalfPlanes3<OddPixel::kOwnSample>(pSrc, roi.width),
                          tightFullPlanes3(pDst, roi.width), roi);
}
ZUM_EXPORT(zumiRGBToYUV420_8u_C3P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerRGBToYUV420_8u_C3P3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToYUV420_8u_P3R, FullPlanes<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerRGBToYUV420_8u_P3R), src, dst, roi))

ZumStatus zumiRGBToYUV420_8u_C3P3(const Zum8u* pSrc, Zum8u* const pDst[3], ZumiSize roi) {
  return convertRowPairs(ZUM_KERNEL(innerRGBToYUV420_8u_C3P3R), TightPixels{pSrc, 3, roi.width},
                         tightHalfPlanes3<OddPixel::kNone>(pDst, roi.width), roi);
}

ZumStatus zumiRGBToYUV420_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi) {
  return convertRowPairs(ZUM_KERNEL(innerRGBToYUV420_8u_P3R), tightFullPlanes3(pSrc, roi.width),
                         tightHalfPlanes3<OddPixel::kNone>(pDst, roi.width), roi);
}
ZUM_EXPORT(zumiYUV420ToRGB_8u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerYUV420ToRGB_8u_P3C3R), src, dst, roi))
ZUM_EXPORT(zumiYUV420ToRGB_8u_P3R, ThreeSteppedPlanes<const Zum8u>, FullPlanes<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerYUV420ToRGB_8u_P3R), src, dst, roi))
ZUM_EXPORT(zumiYUV420ToRGB_8u_P3AC4R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerYUV420ToRGB_8u_P3AC4R), src, dst, roi))

ZumStatus zumiYUV420ToRGB_8u_P3C3(const Zum8u* const pSrc[3], Zum8u* pDst, ZumiSize roi) {
  return convertRowPairs(ZUM_KERNEL(innerYUV420ToRGB_8u_P3C3R), tightHalfPlanes3<OddPixel::kNone>(pSrc, roi.width),
                         TightPixels{pDst, 3, roi.width}, roi);
}

ZumStatus zumiYUV420ToRGB_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi) {
  return convertRowPairs(ZUM_KERNEL(innerYUV420ToRGB_8u_P3R), tightHalfPlanes3<OddPixel::kNone>(pSrc, roi.width),
                         tightFullPlanes3(pDst, roi.width), roi);
}

#endif  // HWY_ONCE
