// BGR of 24, 32 and 16 bits to YCbCr 4:2:2, 4:2:0 and 4:1:1 and to YUV 4:2:0.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/bgr_encode.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/encoders.h"
#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Forms
//
// A form has the luma of pixels, and the chroma of the mean of n pixels from 32 times their sums: as large a number as
// 16 bits hold for four. Chroma is a part of one channel (blue for Cb, red for Cr) less parts of the other two: sums
// and factors are given in this order.

constexpr int kSumScale = 32;

struct ChromaFactors {
  int own, redInCb, greenInCb, greenInCr, blueInCr;
};
constexpr ChromaFactors kFine{28770, 9699, 19071, 24117, 4653}, kCoarse{7193, 2425, 4768, 6029, 1163};

constexpr int kEighths = 8 * kChromaOffset + 1;  // 128.125, the offset of all chroma here but of rounded terms

// Each term truncated: luma at 128 times the sample, rounded, and chroma at 32 n times.
struct TruncatedTerms {
  static constexpr ChromaFactors kChroma = kFine;

  static HWY_INLINE VU8 luma(const Channels<VU8>& rgb) { return roundedLuma<8422, 16515, 3212, kLumaOffset>(rgb); }

  template <int n>
  static HWY_INLINE VI16 chroma(const Channels<VI16>& sums, const Channels<VI16>& factors) {
    constexpr int kShift = n == 2 ? 6 : 7;
    const VI16 others = hn::MulHigh(factors.c1, sums.c1) + hn::MulHigh(factors.c2, sums.c2);
    const VI16 offset = all<std::int16_t>(kEighths << (kShift - 3));
    return hn::ShiftRight<kShift>(hn::MulHigh(factors.c0, sums.c0) - others + offset);
  }
};

// The rounded terms of 4:4:4, chroma of four pixels.
struct RoundedTermsOfSums {
  static constexpr ChromaFactors kChroma = kCoarse;

  static HWY_INLINE VU8 luma(const Channels<VU8>& rgb) { return RoundedTerms::apply(rgb).c0; }

  template <int n>
  static HWY_INLINE VI16 chroma(const Channels<VI16>& sums, const Channels<VI16>& factors) {
    static_assert(n == 4, "at 128 times the sample");
    const VI16 terms = hn::MulFixedPoint15(factors.c0, sums.c0) - hn::MulFixedPoint15(factors.c1, sums.c1) -
                       hn::MulFixedPoint15(factors.c2, sums.c2);
    return hn::ShiftRight<6>(terms) + all<std::int16_t>(kChromaOffset);
  }
};

// Exact sums at 65536 times the sample, luma rounded.
struct ExactSums {
  static constexpr ChromaFactors kChroma = kFine;

  static HWY_INLINE VU8 luma(const Channels<VU8>& rgb) { return OnLanes<Exact>::apply(rgb).c0; }

  template <int n>
  static HWY_INLINE VI16 chroma(const Channels<VI16>& sums, const Channels<VI16>& factors) {
    const Tag<std::int16_t> d;
    constexpr int kShift = n == 2 ? 22 : 23;  // the sums are 32 n times the sample
    const VI32 offset = all(kEighths << (kShift - 3));
    const VI16 none = hn::Zero(d), minus1 = hn::Neg(factors.c1), minus2 = hn::Neg(factors.c2);
    const VI32 lower =
        addDots(addDots(offset, hn::InterleaveLower(d, sums.c0, sums.c1), hn::InterleaveLower(d, factors.c0, minus1)),
                hn::InterleaveLower(d, sums.c2, none), hn::InterleaveLower(d, minus2, none));
    const VI32 upper =
        addDots(addDots(offset, hn::InterleaveUpper(d, sums.c0, sums.c1), hn::InterleaveUpper(d, factors.c0, minus1)),
                hn::InterleaveUpper(d, sums.c2, none), hn::InterleaveUpper(d, minus2, none));
    return pack(hn::ShiftRight<kShift>(lower), hn::ShiftRight<kShift>(upper));
  }
};

HWY_INLINE Channels<VI16> pairSums(const Channels<VU8>& rgb) {
  return {dotBytes<kSumScale, kSumScale>(rgb.c0), dotBytes<kSumScale, kSumScale>(rgb.c1),
          dotBytes<kSumScale, kSumScale>(rgb.c2)};
}
HWY_INLINE Channels<VI16> squareSums(const TwoRows<Channels<VU8>>& rgb) {
  const Channels<VI16> upper = pairSums(rgb.upper), lower = pairSums(rgb.lower);
  return {upper.c0 + lower.c0, upper.c1 + lower.c1, upper.c2 + lower.c2};
}

// A form on two by one, two by two and four by one pixels.
template <class Form>
class OnBlocks {
 public:
  struct Pairs {
    static HWY_INLINE Luma422 apply(const Channels<VU8>& rgb) {
      const Channels<VI16> sums = pairSums(rgb);
      return {Form::luma(rgb), cb<2>(sums), cr<2>(sums)};
    }
  };
  struct Squares {
    static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
      const Channels<VI16> sums = squareSums(rgb);
      return {Form::luma(rgb.upper), Form::luma(rgb.lower), cb<4>(sums), cr<4>(sums)};
    }
  };
  struct Groups {
    static HWY_INLINE Luma411 apply(const Channels<VU8>& rgb) {
      const Channels<VI16> pairs = pairSums(rgb);
      const VI32 r = groupSum(pairs.c0), g = groupSum(pairs.c1), b = groupSum(pairs.c2);
      return {Form::luma(rgb), Form::template chroma<4>({both(b, r), both(r, g), both(g, b)},
                                                        {all<std::int16_t>(k.own), pairsOf(k.redInCb, k.greenInCr),
                                                         pairsOf(k.greenInCb, k.blueInCr)})};
    }

   private:
    static HWY_INLINE VI32 groupSum(VI16 pairs) { return addDots(hn::Zero(Tag<std::int32_t>()), pairs, pairsOf(1, 1)); }
    // For Cb in the even lanes, for Cr in the odd ones.
    static HWY_INLINE VI16 both(VI32 cb, VI32 cr) {
      return hn::BitCast(Tag<std::int16_t>(), hn::Or(cb, hn::ShiftLeft<16>(cr)));
    }
  };

 private:
  static constexpr ChromaFactors k = Form::kChroma;

  template <int n>
  static HWY_INLINE VI16 cb(const Channels<VI16>& s) {
    return Form::template chroma<n>(
        {s.c2, s.c0, s.c1}, {all<std::int16_t>(k.own), all<std::int16_t>(k.redInCb), all<std::int16_t>(k.greenInCb)});
  }
  template <int n>
  static HWY_INLINE VI16 cr(const Channels<VI16>& s) {
    return Form::template chroma<n>(
        {s.c0, s.c1, s.c2}, {all<std::int16_t>(k.own), all<std::int16_t>(k.greenInCr), all<std::int16_t>(k.blueInCr)});
  }
};

struct ExactLuma {
  static HWY_INLINE VU8 apply(const Channels<VU8>& rgb) { return ExactSums::luma(rgb); }
};

// YUV of full range, its chroma the differences of blue and red from 8-bit luma: U = 0.492 (B - Y), V = 0.877 (R - Y).
struct YuvTruncatedTerms {
  static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
    const VU8 upper = luma(rgb.upper), lower = luma(rgb.lower);
    const VI16 lumaSum = dotBytes<kSumScale, kSumScale>(upper) + dotBytes<kSumScale, kSumScale>(lower);
    const Channels<VI16> sum = squareSums(rgb);
    return {upper, lower, chroma(mulHigh(16122, sum.c2 - lumaSum)), chroma(mulHigh(28737, sum.c0 - lumaSum))};
  }

 private:
  static HWY_INLINE VU8 luma(const Channels<VU8>& rgb) { return roundedLuma<9798, 19235, 3736, 0>(rgb); }
  static HWY_INLINE VI16 chroma(VI16 term) {
    return hn::ShiftRight<6>(term + all<std::int16_t>(64 * kChromaOffset + 32));
  }
};

// The same from exact luma at 65536 times the sample. The differences of the sums of four have almost 2 added and are
// truncated to whole numbers before they are multiplied.
struct YuvExactSums {
  static HWY_INLINE Luma420 apply(const TwoRows<Channels<VU8>>& rgb) {
    const Channels<VI16> sum = squareSums(rgb);
    const VI16 minusLuma = negativeLuma(sum);
    const VI16 blue = hn::ShiftRight<5>(sum.c2) + minusLuma, red = hn::ShiftRight<5>(sum.c0) + minusLuma;
    // 57475 is more than a factor can be: it is 65536 less 8061.
    return {OnLanes<Luma>::apply(rgb.upper).c0, OnLanes<Luma>::apply(rgb.lower).c0, chroma(mulHigh(32244, blue)),
            chroma(red + mulHigh(-8061, red))};
  }

 private:
  static constexpr int kRed = 19595, kHalfGreen = 19235, kBlue = 7471;

  struct Luma {
    static HWY_INLINE Channels<VI32> lanes(const PixelPairs& rgb) {
      const VI16 green = pairsOf(0, kHalfGreen);
      const VI32 half = all(1 << 15), y = addDots(half, rgb.c02, pairsOf(kRed, kBlue));
      return {hn::ShiftRight<16>(addDots(addDots(y, rgb.c01, green), rgb.c01, green)), half, half};
    }
  };

  // Almost 2, less the luma of four pixels.
  static HWY_INLINE VI16 negativeLuma(const Channels<VI16>& sum) {
    const Tag<std::int16_t> d;
    const VI32 offset = all(131071 * kSumScale);
    const VI16 redGreen = pairsOf(-kRed, -kHalfGreen), blueGreen = pairsOf(-kBlue, -kHalfGreen);
    const VI32 lower = addDots(addDots(offset, hn::InterleaveLower(d, sum.c0, sum.c1), redGreen),
                               hn::InterleaveLower(d, sum.c2, sum.c1), blueGreen);
    const VI32 upper = addDots(addDots(offset, hn::InterleaveUpper(d, sum.c0, sum.c1), redGreen),
                               hn::InterleaveUpper(d, sum.c2, sum.c1), blueGreen);
    return pack(hn::ShiftRight<21>(lower), hn::ShiftRight<21>(upper));
  }
  static HWY_INLINE VI16 chroma(VI16 term) { return hn::ShiftRight<2>(term) + all<std::int16_t>(kChromaOffset); }
};

// ---- Rows

void setLast(Zum8u* row, int x, int y, int cb, int) {
  row[2 * x] = static_cast<Zum8u>(y);
  row[2 * x + 1] = static_cast<Zum8u>(cb);
}
void setLast(const P3Target& row, int x, int y, int cb, int cr) {
  row[0][x] = static_cast<Zum8u>(y);
  row[1][x / 2] = static_cast<Zum8u>(cb);
  row[2][x / 2] = static_cast<Zum8u>(cr);
}

// Blocks of 32, then one of 8 if the width is 8 or more past a multiple of 16, then exact pairs and a last pixel.
template <class Src, class Dst, class T, class DstRow>
void encode422(const T* src, DstRow dst, int width) {
  const int blocks = (width & ~31) + (width & 8), pairs = width & ~1;
  columns<Src, OnBlocks<TruncatedTerms>::Pairs, Dst>(src, dst, 0, blocks);
  columns<Src, OnBlocks<ExactSums>::Pairs, Dst>(src, dst, blocks, pairs);
  if (pairs < width) {
    constexpr int kOffset = kEighths << 13;
    const Pixel last = Src::pixel(src, pairs);
    setLast(dst, pairs, lumaOf(last, kLumaRounded), (cbSum(last) + kOffset) >> 16, (crSum(last) + kOffset) >> 16);
  }
}

// Blocks of 16, then one of 4 if the width is 4 or more past a multiple of 8, then exact pairs.
template <class Src, class Block, class Tail, class T>
HWY_INLINE void squares(const RowPair<const T>& src, const RowPair420<Zum8u>& dst, int width) {
  const int blocks = (width & ~15) + (width & 4);
  columns<RowPairOf<Src>, Block, Planes420>(src, dst, 0, blocks);
  columns<RowPairOf<Src>, Tail, Planes420>(src, dst, blocks, width & ~1);
}

enum class OddColumn { kLeft, kLuma };

template <class Src, OddColumn odd, class T>
void encode420(RowPair<const T> src, const RowPair420<Zum8u>& dst, int width) {
  squares<Src, OnBlocks<TruncatedTerms>::Squares, OnBlocks<ExactSums>::Squares>(src, dst, width);
  if (odd == OddColumn::kLuma && width % 2) {
    const int x = width - 1;
    dst.luma.upper[x] = static_cast<Zum8u>(lumaOf(Src::pixel(src.upper, x), kLumaRounded));
    dst.luma.lower[x] = static_cast<Zum8u>(lumaOf(Src::pixel(src.lower, x), kLumaRounded));
  }
}

template <class Src, class T>
void encodeLuma(const T* src, Zum8u* dst, int width) {
  columns<Src, ExactLuma, Plane1<Zum8u>>(src, dst, 0, width);
}

// Blocks of 32, exact groups of four, and the luma of the pixels behind them.
template <class Src, class T>
void encode411(const T* src, const P3Target& dst, int width) {
  const int blocks = width & ~31, groups = width & ~3;
  columns<Src, OnBlocks<TruncatedTerms>::Groups, Planes411>(src, dst, 0, blocks);
  columns<Src, OnBlocks<ExactSums>::Groups, Planes411>(src, dst, blocks, groups);
  columns<Src, ExactLuma, Plane1<Zum8u>>(src, dst[0], groups, width);
}

// Blocks of 32 and one of 16, then exact groups of four.
void encodeBgr411(const Zum8u* src, const P3Target& dst, int width) {
  const int blocks = width & ~15;
  columns<Bgr, OnBlocks<RoundedTermsOfSums>::Groups, Planes411>(src, dst, 0, blocks);
  columns<Bgr, OnBlocks<ExactSums>::Groups, Planes411>(src, dst, blocks, width & ~3);
}

// Groups of four by one form.
void encodeBgr565To411(const Zum16u* src, const P3Target& dst, int width) {
  columns<Packed565, OnBlocks<TruncatedTerms>::Groups, Planes411>(src, dst, 0, width & ~3);
}

// ---- The kernels of each source

template <class Src, OddColumn odd, class T>
constexpr Encoders<T> encoders(void (*to411)(const T*, const P3Target&, int)) {
  return {encode422<Src, Packed422<ChromaOrder::CbCr>, T, Zum8u*>, encode422<Src, Planes422, T, const P3Target&>,
          encode420<Src, odd, T>, to411, encodeLuma<Src, T>};
}

Encoders<Zum8u> bgr() { return encoders<Bgr, OddColumn::kLeft>(encodeBgr411); }
Encoders<Zum8u> bgra() { return encoders<Bgra, OddColumn::kLeft>(encode411<Bgra, Zum8u>); }
Encoders<Zum16u> bgr565() { return encoders<Packed565, OddColumn::kLuma>(encodeBgr565To411); }
Encoders<Zum16u> bgr555() { return encoders<Packed555, OddColumn::kLuma>(encode411<Packed555, Zum16u>); }

void bgr565ToYuv420(RowPair<const Zum16u> src, const RowPair420<Zum8u>& dst, int width) {
  squares<Packed565, YuvTruncatedTerms, YuvExactSums>(src, dst, width);
}
void bgr555ToYuv420(RowPair<const Zum16u> src, const RowPair420<Zum8u>& dst, int width) {
  squares<Packed555, YuvTruncatedTerms, YuvExactSums>(src, dst, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(bgr);
HWY_EXPORT(bgra);
HWY_EXPORT(bgr565);
HWY_EXPORT(bgr555);
HWY_EXPORT(bgr565ToYuv420);
HWY_EXPORT(bgr555ToYuv420);

namespace {

// The kernels of a source for the best instruction set of this machine.
#define ZUM_ENCODERS(source) HWY_DYNAMIC_DISPATCH(source)()

template <class Kernel, class T, class Dst>
ZumStatus encodeRows(Kernel* kernel, const Pixels<T>& src, const Dst& dst, ZumiSize roi, int minimumWidth) {
  if (const ZumStatus status = checkPlanesFirst(src, dst, roi, {minimumWidth, 1})) return status;
  serialRows(kernel, src.rows(), dst.rows(), roi);
  return zumOk;
}

// Groups of four share their chroma; the warning is for what is left of them.
template <class Kernel, class T, class Dst>
ZumStatus encodeGroups(Kernel* kernel, const Pixels<T>& src, const Dst& dst, ZumiSize roi) {
  const ZumStatus status = encodeRows(kernel, src, dst, roi, 4);
  return status == zumOk && roi.width % 4 ? zumWrnOddSize : status;
}

// Row pairs, whose kernel deals with an odd column itself. The kernel for a last odd row is null if it is left alone.
template <class T, class Dst>
ZumStatus encodeRowPairs(void (*kernel)(RowPair<const T>, const RowPair420<Zum8u>&, int),
                         void (*lastRow)(const T*, Zum8u*, int), const Pixels<const T>& src, const Dst& dst,
                         ZumiSize roi) {
  if (const ZumStatus status = checkPlanesFirst(src, dst, roi, {2, 2})) return status;
  const Rows<const T> from = src.rows();
  const PlaneRows<Zum8u, 3> to = dst.rows();
  for (int p = 0; p < roi.height / 2; ++p) kernel(rowPair(from, p), rowPair(to, p), roi.width);
  const int last = roi.height - 1;
  if (lastRow && roi.height % 2) lastRow(from.row(last), to.plane[0].row(last), roi.width);
  return !lastRow && (roi.width % 2 || roi.height % 2) ? zumWrnOddSize : zumOk;
}

// With the luma of an odd last column and row, and without.
template <class T, class Dst>
ZumStatus encodeWithEdges(const Encoders<T>& encoders, const Pixels<const T>& src, const Dst& dst, ZumiSize roi) {
  return encodeRowPairs(encoders.planes420, encoders.luma, src, dst, roi);
}
template <class T, class Dst>
ZumStatus encodeWholeSquares(const Encoders<T>& encoders, const Pixels<const T>& src, const Dst& dst, ZumiSize roi) {
  return encodeRowPairs<T>(encoders.planes420, nullptr, src, dst, roi);
}

}  // namespace
}  // namespace zum

ZUM_EXPORT(zumiBGRToYCbCr422_8u_C3C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgr).packed422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGRToYCbCr422_8u_C3P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgr).planes422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGRToYCbCr420_8u_C3P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           encodeWholeSquares(ZUM_ENCODERS(bgr), src, dst, roi))
ZUM_EXPORT(zumiBGRToYCrCb420_8u_C3P3R, Pixels<const Zum8u>, ExchangedChroma<Zum8u>,
           encodeWholeSquares(ZUM_ENCODERS(bgr), src, dst, roi))
ZUM_EXPORT(zumiBGRToYCbCr411_8u_C3P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           encodeGroups(ZUM_ENCODERS(bgr).planes411, src, dst, roi))
ZUM_EXPORT(zumiBGRToYCbCr422_8u_AC4C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgra).packed422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGRToYCbCr422_8u_AC4P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgra).planes422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGRToYCbCr420_8u_AC4P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           encodeWholeSquares(ZUM_ENCODERS(bgra), src, dst, roi))
ZUM_EXPORT(zumiBGRToYCrCb420_8u_AC4P3R, Pixels<const Zum8u>, ExchangedChroma<Zum8u>,
           encodeWholeSquares(ZUM_ENCODERS(bgra), src, dst, roi))
ZUM_EXPORT(zumiBGRToYCbCr411_8u_AC4P3R, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           encodeGroups(ZUM_ENCODERS(bgra).planes411, src, dst, roi))
ZUM_EXPORT(zumiBGR565ToYCbCr422_16u8u_C3C2R, Pixels<const Zum16u>, Pixels<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgr565).packed422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGR565ToYCbCr422_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgr565).planes422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGR565ToYCbCr420_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeWithEdges(ZUM_ENCODERS(bgr565), src, dst, roi))
ZUM_EXPORT(zumiBGR565ToYCrCb420_16u8u_C3P3R, Pixels<const Zum16u>, ExchangedChroma<Zum8u>,
           encodeWithEdges(ZUM_ENCODERS(bgr565), src, dst, roi))
ZUM_EXPORT(zumiBGR565ToYCbCr411_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeGroups(ZUM_ENCODERS(bgr565).planes411, src, dst, roi))
ZUM_EXPORT(zumiBGR565ToYUV420_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeRowPairs<Zum16u>(ZUM_KERNEL(bgr565ToYuv420), nullptr, src, dst, roi))
ZUM_EXPORT(zumiBGR555ToYCbCr422_16u8u_C3C2R, Pixels<const Zum16u>, Pixels<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgr555).packed422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGR555ToYCbCr422_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeRows(ZUM_ENCODERS(bgr555).planes422, src, dst, roi, 2))
ZUM_EXPORT(zumiBGR555ToYCbCr420_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeWithEdges(ZUM_ENCODERS(bgr555), src, dst, roi))
ZUM_EXPORT(zumiBGR555ToYCrCb420_16u8u_C3P3R, Pixels<const Zum16u>, ExchangedChroma<Zum8u>,
           encodeWithEdges(ZUM_ENCODERS(bgr555), src, dst, roi))
ZUM_EXPORT(zumiBGR555ToYCbCr411_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeGroups(ZUM_ENCODERS(bgr555).planes411, src, dst, roi))
ZUM_EXPORT(zumiBGR555ToYUV420_16u8u_C3P3R, Pixels<const Zum16u>, ThreeSteppedPlanes<Zum8u>,
           encodeRowPairs<Zum16u>(ZUM_KERNEL(bgr555ToYuv420), nullptr, src, dst, roi))

#endif  // HWY_ONCE
