// YCbCr 4:4:4, 4:2:2, 4:1:1 and 4:2:0 and YUV 4:2:0 to BGR of 24 and 32 bits.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/bgr_decode.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Where pixels go

struct ToBgr {
  template <class Src, class Form, class SrcRow>
  HWY_INLINE void columns(const SrcRow& src, Zum8u* dst, std::size_t begin, std::size_t end) const {
    HWY_NAMESPACE::columns<Src, Form, Bgr>(src, dst, begin, end);
  }
  void setPixel(Zum8u* dst, int x, const Pixel& rgb) const { Bgr::setPixel(dst, x, rgb); }
};

struct ToBgra {
  Zum8u alpha;

  template <class Src, class Form, class SrcRow>
  HWY_INLINE void columns(const SrcRow& src, Zum8u* dst, std::size_t begin, std::size_t end) const {
    HWY_NAMESPACE::columns<Src, WithAlpha<Form>, Bgra>(src, dst, begin, end, {all(alpha)});
  }
  template <class Src, class Form, class SrcRow>
  HWY_INLINE void columns(const SrcRow& src, const RowPair<Zum8u>& dst, std::size_t begin, std::size_t end) const {
    HWY_NAMESPACE::columns<Src, WithAlpha<Form>, RowPairOf<Bgra>>(src, dst, begin, end, {all(alpha)});
  }
  void setPixel(Zum8u* dst, int x, const Pixel& rgb) const { Bgra::setPixel(dst, x, rgb, alpha); }
};

// ---- 4:4:4 and 4:2:2

void ownYCbCrToBGR_8u_P3C3R(const P3Row& src, Zum8u* dst, int width) {
  ToBgr().columns<P3, OnHalves<Rounded16>>(src, dst, 0, width);
}
void ownYCbCrToBGR_8u_P3C4R(const P3Row& src, Zum8u* dst, int width, Zum8u alpha) {
  ToBgra{alpha}.columns<P3, OnHalves<Rounded16>>(src, dst, 0, width);
}

using FoldedInverse = ExactInverse<76284, 104595, -25690, -53281, 132186, -14608761, 8887730, -18140365>;

// Half a pair at the end has Cb behind its Y; it takes Cr from the pair before.
template <class To>
void setLast(const Zum8u* src, Zum8u* dst, int width, To to) {
  const Zum8u* y = src + 2 * (width - 1);
  if (width % 2) to.setPixel(dst, width - 1, FoldedPixel::rgb(*y, y[1], y[-1]));
}

void ownYCbCr422ToBGR_8u_C2C3R(const Zum8u* src, Zum8u* dst, int width) {
  const ToBgr to;
  to.columns<YCbCrC2, OnPairs<Rounded16>>(src, dst, 0, width & ~1);
  setLast(src, dst, width, to);
}

// Blocks of 8, then pairs.
void ownYCbCr422ToBGR_8u_C2C4R(const Zum8u* src, Zum8u* dst, int width, Zum8u alpha) {
  const ToBgra to{alpha};
  to.columns<YCbCrC2, OnPairs<Truncated8>>(src, dst, 0, width & ~7);
  to.columns<YCbCrC2, OnRepeatedChroma<OnLanes<FoldedInverse>>>(src, dst, width & ~7, width & ~1);
  setLast(src, dst, width, to);
}

// ---- 4:1:1

// Blocks of 8 and one of 4, by the same form, then single pixels, which have a chroma sample for themselves.
template <class To>
HWY_INLINE void decode411(const P3Row& src, Zum8u* dst, int width, To to) {
  using Last = CentredPixel<76294, 104595, -25625, -53281, 132186>;
  const int blocks = width & ~3;
  to.template columns<Planes411, OnPairs<Truncated16>>(src, dst, 0, blocks);
  for (int x = blocks; x < width; ++x) to.setPixel(dst, x, Last::rgb(src[0][x], src[1][x / 4], src[2][x / 4]));
}

void innerYCbCr411ToBGR_8u_P3C3R(const P3Row& src, Zum8u* dst, int width) { decode411(src, dst, width, ToBgr()); }
void innerYCbCr411ToBGR_8u_P3C4R(const P3Row& src, Zum8u* dst, int width, Zum8u alpha) {
  decode411(src, dst, width, ToBgra{alpha});
}

// ---- 4:2:0

// Blocks of 4 pairs, then single pairs.
void innerYCbCr420ToBGR_8u_P3C3R(const RowPair420<const Zum8u>& src, RowPair<Zum8u> dst, int pairs) {
  const int blocks = pairs & ~3;
  columns<Planes420, OnPairs<Truncated8>, RowPairOf<Bgr>>(src, dst, 0, 2 * blocks);
  for (int x = 2 * blocks; x < 2 * pairs; ++x) {
    const int cb = src.cb[x / 2], cr = src.cr[x / 2];
    Bgr::setPixel(dst.upper, x, FineRoundedPixel::rgb(src.luma.upper[x], cb, cr));
    Bgr::setPixel(dst.lower, x, FineRoundedPixel::rgb(src.luma.lower[x], cb, cr));
  }
}

void ownYUV420ToBGR_8u_P3C3R(const RowPair420<const Zum8u>& src, RowPair<Zum8u> dst, int pairs) {
  using Form = YuvTerms<9339, -4760, -3228, Green::kAdded, 16646, 0, 1>;
  columns<Planes420, OnPairs<Form>, RowPairOf<Bgr>>(src, dst, 0, 2 * pairs);
}

// ---- 4:2:0 with interpolated chroma

// Chroma of the first and of the second pixel of each pair.
struct Luma420Interpolated {
  VU8 upper, lower;
  Halves<VI16> cb, cr;
};

// The second pixel of a pair has the mean of the pair's chroma and the next pair's. A next pair is read for every pair.
struct InterpolatedPlanes420 : Planes420 {
  template <class Sample, class Access = Whole>
  static HWY_INLINE Luma420Interpolated load(const RowPair420<Sample>& rows, Access access = {}) {
    const Tag<std::uint8_t> d;
    return {access.load(d, rows.luma.upper), access.load(d, rows.luma.lower), chroma(rows.cb, access),
            chroma(rows.cr, access)};
  }

  class Local {
   public:
    RowPair420<std::uint8_t> row() { return {{upper_.row(), lower_.row()}, cb_.row(), cr_.row()}; }
    void copyIn(const RowPair420<const std::uint8_t>& from, std::size_t n) {
      upper_.copyIn(from.luma.upper, n);
      lower_.copyIn(from.luma.lower, n);
      cb_.copyIn(from.cb, n / 2 + 1);
      cr_.copyIn(from.cr, n / 2 + 1);
    }

   private:
    LocalLuma upper_, lower_, cb_, cr_;
  };

 private:
  template <class Access>
  static HWY_INLINE Halves<VI16> chroma(const std::uint8_t* p, Access access) {
    const hn::Half<Tag<std::uint8_t>> half;
    const Tag<std::int16_t> d16;
    const auto own = access.half().load(half, p), next = access.half().load(half, p + 1);
    return {hn::PromoteTo(d16, own), hn::PromoteTo(d16, hn::AverageRound(own, next))};
  }
};

// The half-scale terms of plain 4:2:0 but for two factors.
struct InterpolatedTerms {
  static HWY_INLINE TwoRows<Channels<VU8>> apply(const Luma420Interpolated& in) {
    const Halves<Channels<VI16>> terms = {Form::chroma(in.cb.a, in.cr.a), Form::chroma(in.cb.b, in.cr.b)};
    return {row(in.upper, terms), row(in.lower, terms)};
  }

 private:
  using Form = Terms<4769, 6537, 3330, 1605, Green::kSubtracted, 8263, 0, 3>;

  static HWY_INLINE Channels<VU8> row(VU8 y, const Halves<Channels<VI16>>& terms) {
    const Halves<VI16> pair = splitPairs(y), luma = {Form::luma(pair.a), Form::luma(pair.b)};
    return {channel(luma, terms.a.c0, terms.b.c0), channel(luma, terms.a.c1, terms.b.c1),
            channel(luma, terms.a.c2, terms.b.c2)};
  }
  static HWY_INLINE VU8 channel(const Halves<VI16>& luma, VI16 first, VI16 second) {
    return joinPairsSaturated(Form::sum(luma.a, first), Form::sum(luma.b, second));
  }
};

// The same factors exactly, at 65536 times the sample.
struct InterpolatedExact {
  static HWY_INLINE TwoRows<Channels<VU8>> apply(const Luma420Interpolated& in) {
    const VU8 cb = joinPairs(in.cb.a, in.cb.b), cr = joinPairs(in.cr.a, in.cr.b);
    return {OnLanes<Form>::apply({in.upper, cb, cr}), OnLanes<Form>::apply({in.lower, cb, cr})};
  }

 private:
  using Form = CentredInverse<16 * 4769, 16 * 6537, 16 * -1605, 16 * -3330, 16 * 8263>;
};
using InterpolatedPixel = CentredPixel<16 * 4769, 16 * 6537, 16 * -1605, 16 * -3330, 16 * 8263>;

// Blocks of 8 pairs that have a next pair each, then pairs; the last one has no next pair.
void innerYCrCb420ToBGR_Filter_8u_P3C4R(const RowPair420<const Zum8u>& src, RowPair<Zum8u> dst, int pairs,
                                        Zum8u alpha) {
  if (pairs == 0) return;
  const ToBgra to{alpha};
  const int last = pairs - 1, blocks = last & ~7;
  to.columns<InterpolatedPlanes420, InterpolatedTerms>(src, dst, 0, 2 * blocks);
  to.columns<InterpolatedPlanes420, InterpolatedExact>(src, dst, 2 * blocks, 2 * last);
  for (int x = 2 * last; x < 2 * pairs; ++x) {
    to.setPixel(dst.upper, x, InterpolatedPixel::rgb(src.luma.upper[x], src.cb[last], src.cr[last]));
    to.setPixel(dst.lower, x, InterpolatedPixel::rgb(src.luma.lower[x], src.cb[last], src.cr[last]));
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(ownYCbCrToBGR_8u_P3C3R);
HWY_EXPORT(ownYCbCrToBGR_8u_P3C4R);
HWY_EXPORT(ownYCbCr422ToBGR_8u_C2C3R);
HWY_EXPORT(ownYCbCr422ToBGR_8u_C2C4R);
HWY_EXPORT(innerYCbCr411ToBGR_8u_P3C3R);
HWY_EXPORT(innerYCbCr411ToBGR_8u_P3C4R);
HWY_EXPORT(innerYCbCr420ToBGR_8u_P3C3R);
HWY_EXPORT(ownYUV420ToBGR_8u_P3C3R);
HWY_EXPORT(innerYCrCb420ToBGR_Filter_8u_P3C4R);

namespace {

template <class Kernel, class Src, class Dst, class... Alpha>
ZumStatus decodePlanes(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, int minimumWidth, Alpha... alpha) {
  if (const ZumStatus status = checkPlanesFirst(src, dst, roi, {minimumWidth, 1})) return status;
  serialRows(kernel, src.rows(), dst.rows(), roi, alpha...);
  return zumOk;
}

template <class Kernel, class... Alpha>
ZumStatus decodePacked(Kernel* kernel, const Pixels<const Zum8u>& src, const Pixels<Zum8u>& dst, ZumiSize roi,
                       Alpha... alpha) {
  if (const ZumStatus status = check(src, dst, roi, {2, 1})) return status;
  serialRows(kernel, src.rows(), dst.rows(), roi, alpha...);
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

ZUM_EXPORT(zumiYCbCrToBGR_8u_P3C3R, ThreePlanes<const Zum8u>, Pixels<Zum8u>,
           decodePlanes(ZUM_KERNEL(ownYCbCrToBGR_8u_P3C3R), src, dst, roi, 1))
ZUM_EXPORT_WITH(zumiYCbCrToBGR_8u_P3C4R, ThreePlanes<const Zum8u>, Pixels<Zum8u>, Zum8u alpha,
                decodePlanes(ZUM_KERNEL(ownYCbCrToBGR_8u_P3C4R), src, dst, roi, 1, alpha))
ZUM_EXPORT(zumiYCbCr422ToBGR_8u_C2C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           decodePacked(ZUM_KERNEL(ownYCbCr422ToBGR_8u_C2C3R), src, dst, roi))
ZUM_EXPORT_WITH(zumiYCbCr422ToBGR_8u_C2C4R, Pixels<const Zum8u>, Pixels<Zum8u>, Zum8u alpha,
                decodePacked(ZUM_KERNEL(ownYCbCr422ToBGR_8u_C2C4R), src, dst, roi, alpha))
ZUM_EXPORT(zumiYCbCr411ToBGR_8u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           decodePlanes(ZUM_KERNEL(innerYCbCr411ToBGR_8u_P3C3R), src, dst, roi, 4))
ZUM_EXPORT_WITH(zumiYCbCr411ToBGR_8u_P3C4R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>, Zum8u alpha,
                decodePlanes(ZUM_KERNEL(innerYCbCr411ToBGR_8u_P3C4R), src, dst, roi, 4, alpha))
ZUM_EXPORT(zumiYCbCr420ToBGR_8u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>,
           convertRowPairs(ZUM_KERNEL(innerYCbCr420ToBGR_8u_P3C3R), src, dst, roi))

// The warning is for an odd number of pairs, not of pixels.
ZumStatus zumiYUV420ToBGR_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                   ZumiSize roi) {
  const auto src = planes3(pSrc, srcStep);
  const Pixels dst{pDst, dstStep};
  if (const ZumStatus status = check(src, dst, roi, {2, 2})) return status;
  serialRowPairs(ZUM_KERNEL(ownYUV420ToBGR_8u_P3C3R), src.rows(), dst.rows(), roi);
  return roi.width / 2 % 2 || roi.height / 2 % 2 ? zumWrnOddSize : zumOk;
}

ZUM_EXPORT_WITH(zumiYCrCb420ToBGR_Filter_8u_P3C4R, ExchangedChroma<const Zum8u>, Pixels<Zum8u>, Zum8u alpha,
                convertRowPairs(ZUM_KERNEL(innerYCrCb420ToBGR_Filter_8u_P3C4R), src, dst, roi, alpha))

#endif  // HWY_ONCE
