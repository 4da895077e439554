// Chroma of 4:2:0 to 4:2:2 by a vertical filter of four taps.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sampling/chroma_filter.cc"
#include <algorithm>

#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "sampling/planes.h"

#include "sampling/sample_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Halfway between the middle two of four samples: weights -1, 9, 9, -1 over 16, rounded to nearest.
struct Halfway {
  static HWY_INLINE VU8 between(VU8 s0, VU8 s1, VU8 s2, VU8 s3) {
    const Halves<VI16> a = widen(s0), b = widen(s1), c = widen(s2), d = widen(s3);
    return packToBytes(half(a.a, b.a, c.a, d.a), half(a.b, b.b, c.b, d.b));
  }

 private:
  static HWY_INLINE VI16 half(VI16 s0, VI16 s1, VI16 s2, VI16 s3) {
    const VI16 inner = s1 + s2, outer = s0 + s3;
    return hn::ShiftRight<4>(hn::ShiftLeft<3>(inner) + inner - outer + all<std::int16_t>(8));
  }
};

// Of four rows of a plane: the second, and the one halfway to the third.
struct DoubleRows {
  static HWY_INLINE RowVectors<2, 1> apply(const RowVectors<4, 1>& in) {
    return {{{in[1][0]}, {Halfway::between(in[0][0], in[1][0], in[2][0], in[3][0])}}};
  }
};

// The same of rows of pairs, split into two planes.
struct DoubleRowsOfPairs {
  static HWY_INLINE RowVectors<4, 1> apply(const RowVectors<4, 2>& in) {
    const std::array<VU8, 2> halfway = {Halfway::between(in[0][0], in[1][0], in[2][0], in[3][0]),
                                        Halfway::between(in[0][1], in[1][1], in[2][1], in[3][1])};
    return {{{evenBytes(in[1])}, {evenBytes(halfway)}, {oddBytes(in[1])}, {oddBytes(halfway)}}};
  }
};

void innerYCbCr420ToYCbCr422Filter_8u_P3R(const PlaneRow<const Zum8u, 4>& src, const PlaneRow<Zum8u, 2>& dst,
                                          int width) {
  blocksAndTail<SampleRows<4, 1>, DoubleRows, DoubleRows, SampleRows<2, 1>>(src, dst, width, width);
}

void innerYCbCr420ToYCbCr422Filter_8u_P2P3R(const PlaneRow<const Zum8u, 4>& src, const PlaneRow<Zum8u, 4>& dst,
                                            int width) {
  blocksAndTail<SampleRows<4, 2>, DoubleRowsOfPairs, DoubleRowsOfPairs, SampleRows<4, 1>>(src, dst, width, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerYCbCr420ToYCbCr422Filter_8u_P3R);
HWY_EXPORT(innerYCbCr420ToYCbCr422Filter_8u_P2P3R);

namespace {

// Doubles the rows of a plane of chroma, into one plane or two. Beyond the first and the last row they are repeated.
template <std::size_t n, class Kernel>
void doubleRows(Kernel* kernel, const Rows<const Zum8u>& src, const std::array<Rows<Zum8u>, n>& dst, ZumiSize size) {
  const int last = size.height - 1;
  for (int r = 0; r <= last; ++r) {
    PlaneRow<Zum8u, 2 * n> rows;
    for (std::size_t i = 0; i < n; ++i) {
      rows[2 * i] = dst[i].row(2 * r);
      rows[2 * i + 1] = dst[i].row(2 * r + 1);
    }
    kernel({src.row(std::max(r - 1, 0)), src.row(r), src.row(std::min(r + 1, last)), src.row(std::min(r + 2, last))},
           rows, size.width);
  }
}

// Rows come in strips: the height is rounded down to whole ones.
constexpr int kStripRows = 8;

template <class Src>
ZumStatus checkStrips(const Src& src, const Planes<Zum8u, 3, const int*>& dst, ZumiSize roi) {
  if (anyMissing(src, dst)) return zumErrNullPtr;
  return below(roi, {2, kStripRows}) ? zumErrSize : zumOk;
}

ZumiSize wholeStrips(ZumiSize roi) { return {roi.width & ~1, roi.height & ~(kStripRows - 1)}; }

// cb is the number of the source's plane that becomes plane 1.
ZumStatus filterPlanes(const Planes<const Zum8u, 3, const int*>& src, int cb, const Planes<Zum8u, 3, const int*>& dst,
                       ZumiSize roi) {
  if (const ZumStatus status = checkStrips(src, dst, roi)) return status;
  const ZumiSize size = wholeStrips(roi), chroma{size.width / 2, size.height / 2};
  const PlaneRows<const Zum8u, 3> from = src.rows();
  const PlaneRows<Zum8u, 3> to = dst.rows();
  const auto kernel = ZUM_KERNEL(innerYCbCr420ToYCbCr422Filter_8u_P3R);
  copyPlane(from.plane[0], to.plane[0], size);
  doubleRows<1>(kernel, from.plane[cb], {to.plane[1]}, chroma);
  doubleRows<1>(kernel, from.plane[3 - cb], {to.plane[2]}, chroma);
  return zumOk;
}

ZumStatus filterPairs(const SemiPlanar<const Zum8u>& src, const Planes<Zum8u, 3, const int*>& dst, ZumiSize roi) {
  if (const ZumStatus status = checkStrips(src, dst, roi)) return status;
  const ZumiSize size = wholeStrips(roi);
  const PlaneRows<Zum8u, 3> to = dst.rows();
  copyPlane(src.luma.rows(), to.plane[0], size);
  doubleRows<2>(ZUM_KERNEL(innerYCbCr420ToYCbCr422Filter_8u_P2P3R), src.pairs.rows(), {to.plane[1], to.plane[2]},
                {size.width / 2, size.height / 2});
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

ZUM_EXPORT(zumiYCbCr420ToYCbCr422_Filter_8u_P3R, ThreeSteppedPlanes<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           filterPlanes(src, 1, dst, roi))
ZUM_EXPORT(zumiYCrCb420ToYCbCr422_Filter_8u_P3R, ThreeSteppedPlanes<const Zum8u>, ThreeSteppedPlanes<Zum8u>,
           filterPlanes(src, 2, dst, roi))

ZumStatus zumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                 int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                 ZumiSize roi) {
  return filterPairs({{pSrcY, srcYStep}, {pSrcCbCr, srcCbCrStep}}, planes3(pDst, dstStep), roi);
}

#endif  // HWY_ONCE
