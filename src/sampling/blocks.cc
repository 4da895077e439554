// Planar 4:2:0 to and from coarser chroma: a pair for every four by four pixels, or for every four pixels of a row.
// Columns and rows are dropped going down and interpolated going up, halves up in blocks of columns and down elsewhere.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sampling/blocks.cc"
#include <algorithm>

#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "sampling/planes.h"

#include "sampling/sample_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

struct DropOddColumns {
  static HWY_INLINE RowVectors<1, 1> apply(const RowVectors<1, 2>& in) { return {{{evenBytes(in[0])}}}; }
};

// The even columns of a row, and of the row halfway to the next.
template <class Form>
struct DoubleRowsOfEvenColumns {
  static HWY_INLINE RowVectors<2, 1> apply(const RowVectors<2, 2>& in) {
    const VU8 row = evenBytes(in[0]);
    return {{{row}, {Form::mean(row, evenBytes(in[1]))}}};
  }
};

// The row halfway between two, and between its columns: the two rows come twice, the second time a column ahead.
template <class Form>
struct DoubleColumns {
  static HWY_INLINE RowVectors<1, 2> apply(const RowVectors<4, 1>& in) {
    const VU8 ahead = Form::mean(Form::mean(in[0][0], in[2][0]), Form::mean(in[1][0], in[3][0]));
    return {zipped(Form::mean(in[0][0], in[1][0]), ahead)};
  }
};

void innerYCbCr420To1620_8u_P3R(const Zum8u* src, Zum8u* dst, int width) {
  const PlaneRow<const Zum8u, 1> from{src};
  const PlaneRow<Zum8u, 1> to{dst};
  blocksAndTail<SampleRows<1, 2>, DropOddColumns, DropOddColumns, SampleRows<1, 1>>(from, to, width, width);
}

void innerYCbCr420To411_8u_P3R(const PlaneRow<const Zum8u, 2>& src, const PlaneRow<Zum8u, 2>& dst, int width) {
  blocksAndTail<SampleRows<2, 2>, DoubleRowsOfEvenColumns<HalvesUp>, DoubleRowsOfEvenColumns<HalvesDown>,
                SampleRows<2, 1>>(src, dst, width & ~31, width);
}

// A row of twice the width from the rows above and below it, which may be one, and what is right of each column in
// them. Blocks leave at least one column, and the last has nothing on its right.
void innerDoubleColumns(const PlaneRow<const Zum8u, 4>& src, Zum8u* dst, int width) {
  const int last = width - 1;
  const PlaneRow<Zum8u, 1> row{dst};
  blocksAndTail<SampleRows<4, 1>, DoubleColumns<HalvesUp>, DoubleColumns<HalvesDown>, SampleRows<1, 2>>(
      src, row, last & ~15, last);
  dst[2 * last] = dst[2 * last + 1] = static_cast<Zum8u>((src[0][last] + src[1][last]) >> 1);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerYCbCr420To1620_8u_P3R);
HWY_EXPORT(innerYCbCr420To411_8u_P3R);
HWY_EXPORT(innerDoubleColumns);

namespace {

// chroma(src, dst) converts a plane.
template <class Chroma>
ZumStatus convertBlocks(const Planes<const Zum8u, 3, const int*>& src, const Planes<Zum8u, 3, const int*>& dst,
                        ZumiSize roi, ZumiSize block, const Chroma& chroma) {
  if (anyMissing(src, dst)) return zumErrNullPtr;
  if (below(roi, block) || roi.width % block.width || roi.height % block.height) return zumErrSize;
  const PlaneRows<const Zum8u, 3> from = src.rows();
  const PlaneRows<Zum8u, 3> to = dst.rows();
  copyPlane(from.plane[0], to.plane[0], roi);
  chroma(from.plane[1], to.plane[1]);
  chroma(from.plane[2], to.plane[2]);
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

ZumStatus zumiYCbCr420To1620_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                    const int dstStep[3], ZumiSize roi) {
  const auto kernel = ZUM_KERNEL(innerYCbCr420To1620_8u_P3R);
  const auto chroma = [&](const Rows<const Zum8u>& src, const Rows<Zum8u>& dst) {
    for (int r = 0; r < roi.height / 4; ++r) kernel(src.row(2 * r), dst.row(r), roi.width / 4);
  };
  return convertBlocks(planes3(pSrc, srcStep), planes3(pDst, dstStep), roi, {4, 4}, chroma);
}

// Between two rows comes their mean, behind the last one itself; the columns are doubled on the way. But the very last
// row takes columns as they are.
ZumStatus zumiYCbCr1620To420_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                    const int dstStep[3], ZumiSize roi) {
  const auto kernel = ZUM_KERNEL(innerDoubleColumns);
  const auto chroma = [&](const Rows<const Zum8u>& src, const Rows<Zum8u>& dst) {
    const int width = roi.width / 4, last = roi.height / 4 - 1;
    for (int r = 0; r <= last; ++r) {
      const Zum8u *row = src.row(r), *below = src.row(std::min(r + 1, last));
      kernel({row, row, row + 1, row + 1}, dst.row(2 * r), width);
      const int ahead = r < last ? 1 : 0;
      kernel({row, below, row + ahead, below + ahead}, dst.row(2 * r + 1), width);
    }
  };
  return convertBlocks(planes3(pSrc, srcStep), planes3(pDst, dstStep), roi, {4, 4}, chroma);
}

// Behind each row comes its mean with the next, behind the last one itself.
ZumStatus zumiYCbCr420To411_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                   const int dstStep[3], ZumiSize roi) {
  const auto kernel = ZUM_KERNEL(innerYCbCr420To411_8u_P3R);
  const auto chroma = [&](const Rows<const Zum8u>& src, const Rows<Zum8u>& dst) {
    const int last = roi.height / 2 - 1;
    for (int r = 0; r <= last; ++r) {
      kernel({src.row(r), src.row(std::min(r + 1, last))}, {dst.row(2 * r), dst.row(2 * r + 1)}, roi.width / 4);
    }
  };
  return convertBlocks(planes3(pSrc, srcStep), planes3(pDst, dstStep), roi, {4, 2}, chroma);
}

// Odd rows are dropped.
ZumStatus zumiYCbCr411To420_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                   const int dstStep[3], ZumiSize roi) {
  const auto kernel = ZUM_KERNEL(innerDoubleColumns);
  const auto chroma = [&](const Rows<const Zum8u>& src, const Rows<Zum8u>& dst) {
    for (int r = 0; r < roi.height / 2; ++r) {
      const Zum8u* row = src.row(2 * r);
      kernel({row, row, row + 1, row + 1}, dst.row(r), roi.width / 4);
    }
  };
  return convertBlocks(planes3(pSrc, srcStep), planes3(pDst, dstStep), roi, {4, 4}, chroma);
}

#endif  // HWY_ONCE
