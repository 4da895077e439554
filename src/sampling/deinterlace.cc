// Semi-planar 4:2:0 to packed 4:2:2 or to planes, without the comb of interlaced pictures: every row of luma is
// smoothed with its neighbours, every row of chroma with the next. A picture may come in bands, top to bottom.
//
// Body columns are the whole blocks at the start of a row, tail columns the others: they round differently.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sampling/deinterlace.cc"
#include <cstdint>

#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "sampling/planes.h"

#include "sampling/sample_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// A sample with those above and below, (a + 2 c + b) / 4. What differs is the rounding.
struct Smooth : HalvesUp {
  static HWY_INLINE VU8 luma(VU8 a, VU8 c, VU8 b) { return mean(mean(a, c), mean(c, b)); }
};
struct SmoothNeighboursFirst : HalvesUp {
  static HWY_INLINE VU8 luma(VU8 a, VU8 c, VU8 b) { return mean(c, mean(a, b)); }
};
struct SmoothTruncated : HalvesDown {
  static HWY_INLINE VU8 luma(VU8 a, VU8 c, VU8 b) { return mean(c, mean(a, b)); }
};
// One more, up to 255: (a + 2 c + b + 4) >> 2.
struct SmoothTruncatedPlusOne : HalvesDown {
  static HWY_INLINE VU8 luma(VU8 a, VU8 c, VU8 b) {
    return hn::SaturatedAdd(SmoothTruncated::luma(a, c, b), all<std::uint8_t>(1));
  }
};

// Luma above, here and below, and two rows of chroma pairs, to a packed row.
template <class Form>
struct ToPacked {
  static HWY_INLINE RowVectors<1, 2> apply(const RowVectors<5, 1>& in) {
    return {zipped(Form::luma(in[0][0], in[1][0], in[2][0]), Form::mean(in[3][0], in[4][0]))};
  }
};

template <class Form>
struct ToLuma {
  static HWY_INLINE RowVectors<1, 1> apply(const RowVectors<3, 1>& in) {
    return {{{Form::luma(in[0][0], in[1][0], in[2][0])}}};
  }
};

// Two rows of chroma pairs to a row of each chroma plane.
template <class Form>
struct ToChroma {
  static HWY_INLINE RowVectors<2, 1> apply(const RowVectors<2, 2>& in) {
    const std::array<VU8, 2> pairs = {Form::mean(in[0][0], in[1][0]), Form::mean(in[0][1], in[1][1])};
    return {{{evenBytes(pairs)}, {oddBytes(pairs)}}};
  }
};

template <class Body, class Tail>
HWY_INLINE void packedRow(const PlaneRow<const Zum8u, 5>& src, Zum8u* dst, int body, int width) {
  const PlaneRow<Zum8u, 1> row{dst};
  blocksAndTail<SampleRows<5, 1>, ToPacked<Body>, ToPacked<Tail>, SampleRows<1, 2>>(src, row, body, width);
}

template <class Body, class Tail>
HWY_INLINE void lumaRow(const PlaneRow<const Zum8u, 3>& src, Zum8u* dst, int body, int width) {
  const PlaneRow<Zum8u, 1> row{dst};
  blocksAndTail<SampleRows<3, 1>, ToLuma<Body>, ToLuma<Tail>, SampleRows<1, 1>>(src, row, body, width);
}

void innerNV12ToYUY2Deinterlace_P2C2R(const PlaneRow<const Zum8u, 5>& src, Zum8u* dst, int body, int width) {
  packedRow<Smooth, SmoothTruncated>(src, dst, body, width);
}
void innerNV12ToYUY2DeinterlaceAll_P2C2R(const PlaneRow<const Zum8u, 5>& src, Zum8u* dst, int body, int width) {
  packedRow<Smooth, SmoothTruncatedPlusOne>(src, dst, body, width);
}

void innerNV12ToYV12Deinterlace_P2P3R(const PlaneRow<const Zum8u, 3>& src, Zum8u* dst, int body, int width) {
  lumaRow<Smooth, SmoothTruncated>(src, dst, body, width);
}
void innerNV12ToYV12Deinterlace_first_P2P3R(const PlaneRow<const Zum8u, 3>& src, Zum8u* dst, int body, int width) {
  lumaRow<SmoothNeighboursFirst, SmoothTruncated>(src, dst, body, width);
}
void innerNV12ToYV12DeinterlaceTwoRows_P2P3R(const PlaneRow<const Zum8u, 3>& src, Zum8u* dst, int body, int width) {
  lumaRow<Smooth, SmoothTruncatedPlusOne>(src, dst, body, width);
}

void innerNV12ToYV12DeinterlaceChroma_P2P3R(const PlaneRow<const Zum8u, 2>& src, const PlaneRow<Zum8u, 2>& dst,
                                            int body, int width) {
  blocksAndTail<SampleRows<2, 2>, ToChroma<HalvesUp>, ToChroma<HalvesDown>, SampleRows<2, 1>>(src, dst, body / 2,
                                                                                              width / 2);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerNV12ToYUY2Deinterlace_P2C2R);
HWY_EXPORT(innerNV12ToYUY2DeinterlaceAll_P2C2R);
HWY_EXPORT(innerNV12ToYV12Deinterlace_P2P3R);
HWY_EXPORT(innerNV12ToYV12Deinterlace_first_P2P3R);
HWY_EXPORT(innerNV12ToYV12DeinterlaceTwoRows_P2P3R);
HWY_EXPORT(innerNV12ToYV12DeinterlaceChroma_P2P3R);

namespace {

// A part of a picture, and where its rows are found. Row 0 is the one that the caller's pointers tell; a band that does
// not begin the picture has rows above it.
struct Band {
  int width, height;  // even
  bool beginsPicture, endsPicture;

  bool isWholePicture() const { return beginsPicture && endsPicture; }
  bool isFirst(int row) const { return beginsPicture && row == 0; }
  bool isLast(int row) const { return endsPicture && row == height - 1; }

  // The rows that can be written: those that have a row below them, and those that the band before had to leave.
  int begin() const { return beginsPicture ? 0 : -2; }
  int end() const { return endsPicture ? height : height - 2; }

  // At the edge of the picture a row is its own neighbour.
  PlaneRow<const Zum8u, 3> luma(const Rows<const Zum8u>& src, int row) const {
    return {src.row(isFirst(row) ? row : row - 1), src.row(row), src.row(isLast(row) ? row : row + 1)};
  }
  // The last row of chroma goes with the one above it; if there is none, alone.
  PlaneRow<const Zum8u, 2> chroma(const Rows<const Zum8u>& src, int row) const {
    const bool isLastRow = endsPicture && row == height / 2 - 1, isOnly = isLastRow && beginsPicture && row == 0;
    return {src.row(row), src.row(isOnly ? row : isLastRow ? row - 1 : row + 1)};
  }
};

// What the layout argument says. False if it says nothing.
bool bandOf(int layout, ZumiSize roi, Band& band) {
  const bool isWhole = (layout & zumWholePicture) == zumWholePicture;
  if (!isWhole && layout != zumTopBand && layout != zumMiddleBand && layout != zumBottomBand) return false;
  band = {roi.width & ~1, roi.height & ~1, isWhole || layout == zumTopBand, isWhole || layout == zumBottomBand};
  return true;
}

// The two rows at either edge of the picture have small blocks, or none if it comes whole.
void toPacked(const Band& band, const SemiPlanar<const Zum8u>& src, const Pixels<Zum8u>& dst) {
  constexpr int kBlock = 32, kEdgeBlock = 8;
  const int body = band.width & -kBlock, edgeBody = band.isWholePicture() ? 0 : band.width & -kEdgeBlock;
  const auto kernel = band.isWholePicture() ? ZUM_KERNEL(innerNV12ToYUY2DeinterlaceAll_P2C2R)
                                            : ZUM_KERNEL(innerNV12ToYUY2Deinterlace_P2C2R);
  const auto convert = [&](int begin, int end, int blocks) {
    for (int pair = begin; pair < end; ++pair) {
      const auto [chroma, next] = band.chroma(src.pairs.rows(), pair);
      for (int row : {2 * pair, 2 * pair + 1}) {
        const auto [above, here, below] = band.luma(src.luma.rows(), row);
        kernel({above, here, below, chroma, next}, dst.rows().row(row), blocks, band.width);
      }
    }
  };
  const int pairs = band.height / 2, inner = band.beginsPicture ? 1 : -1;
  if (band.beginsPicture) convert(0, 1, edgeBody);
  convert(inner, pairs - 1, body);
  if (band.endsPicture && pairs > inner) convert(pairs - 1, pairs, edgeBody);
}

// Whether the aligned kernels serve this call, which work on large blocks.
bool isAligned(const SemiPlanar<const Zum8u>& src, const PlaneRows<Zum8u, 3>& dst, ZumiSize roi) {
  const auto address = [](const Zum8u* p) { return reinterpret_cast<std::uintptr_t>(p); };
  std::uintptr_t addresses = address(src.luma.base) | address(src.pairs.base);
  std::ptrdiff_t steps = src.pairs.step;
  for (const Rows<Zum8u>& plane : dst.plane) {
    addresses |= address(plane.base);
    steps |= plane.step;
  }
  return roi.width % 64 == 0 && (roi.height & ~1) % 16 == 0 && addresses % 16 == 0 && src.luma.step % 16 == 0 &&
         steps % 32 == 0;
}

void toPlanes(const Band& band, const SemiPlanar<const Zum8u>& src, const PlaneRows<Zum8u, 3>& dst, bool aligned) {
  constexpr int kBlock = 16;
  const int body = band.width & -kBlock;
  const bool isTopBand = band.beginsPicture && !band.endsPicture;
  const auto kernel = isTopBand && !aligned                       ? ZUM_KERNEL(innerNV12ToYV12Deinterlace_first_P2P3R)
                      : band.isWholePicture() && band.height == 2 ? ZUM_KERNEL(innerNV12ToYV12DeinterlaceTwoRows_P2P3R)
                                                                  : ZUM_KERNEL(innerNV12ToYV12Deinterlace_P2P3R);
  // The first row is always written.
  for (int r = band.begin(); r < band.end() || band.isFirst(r); ++r) {
    const bool isPictureEdge = band.isWholePicture() && (band.isFirst(r) || band.isLast(r));
    kernel(band.luma(src.luma.rows(), r), dst.plane[0].row(r), isPictureEdge ? 0 : body, band.width);
  }
  const auto chromaKernel = ZUM_KERNEL(innerNV12ToYV12DeinterlaceChroma_P2P3R);
  for (int r = band.begin() / 2; r < band.end() / 2; ++r) {
    chromaKernel(band.chroma(src.pairs.rows(), r), {dst.plane[1].row(r), dst.plane[2].row(r)}, body, band.width);
  }
}

}  // namespace
}  // namespace zum

using namespace zum;

ZumStatus zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                 int srcCbCrStep, Zum8u* pDst, int dstStep, ZumiSize roi, int layout) {
  const SemiPlanar<const Zum8u> src{{pSrcY, srcYStep}, {pSrcCbCr, srcCbCrStep}};
  const Pixels dst{pDst, dstStep};
  if (const ZumStatus status = check(src, dst, roi, {2, 2})) return status;
  Band band;
  if (bandOf(layout, roi, band)) toPacked(band, src, dst);
  return zumOk;
}

ZumStatus zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                 int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                 ZumiSize roi, int layout) {
  const SemiPlanar<const Zum8u> src{{pSrcY, srcYStep}, {pSrcCbCr, srcCbCrStep}};
  const auto dst = planes3(pDst, dstStep);
  if (const ZumStatus status = check(src, dst, roi)) return status;
  if (below(roi, {2, 2})) return zumErrSize;
  Band band;
  if (bandOf(layout, roi, band)) toPlanes(band, src, dst.rows(), isAligned(src, dst.rows(), roi));
  return zumOk;
}

#endif  // HWY_ONCE
