// YCbCr and YUV to 16-bit pixels of 5-6-5, 5-5-5 and 4-4-4 bits.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/packed16.cc"
#include "lumachroma/packed16.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "lumachroma/packed16-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

template <class Dst>
struct Packed16Rows {
  // Blocks of 8, then single pixels.
  static void c3(const Zum8u* src, Zum16u* dst, int width) {
    const int blocks = width & ~7;
    columns<Packed3<Zum8u>, OnHalves<PackedTruncated16>, Dst>(src, dst, 0, blocks);
    columns<Packed3<Zum8u>, OnLanes<FineInverse>, Dst>(src, dst, blocks, width);
  }

  static void p3(const P3Row& src, Zum16u* dst, int width) {
    columns<Planes3<Zum8u>, OnHalves<PackedTruncated16>, Dst>(src, dst, 0, width);
  }

  // Blocks of 8 and one of 4, a pair, then half a pair, at least the second of the row: its Cr is that of the pair
  // before.
  static void c2(const Zum8u* src, Zum16u* dst, int width) {
    int x = width & ~3;
    columns<YCbCrC2, OnPairs<PackedTruncated16>, Dst>(src, dst, 0, x);
    if (width & 2) {
      const Zum8u* pair = src + 2 * x;
      Dst::setPixel(dst, x, FoldedPixel::rgb(pair[0], pair[1], pair[3]));
      Dst::setPixel(dst, x + 1, FoldedPixel::rgb(pair[2], pair[1], pair[3]));
      x += 2;
    }
    if (x < width) Dst::setPixel(dst, x, FinePixel::rgb(src[2 * x], src[2 * x + 1], src[2 * x - 1]));
  }

  static void planes422(const P3Row& src, Zum16u* dst, int width) {
    columns<Planes422, OnPairs<PackedTruncated16>, Dst>(src, dst, 0, width);
  }

  static void planes420(const RowPair420<const Zum8u>& src, RowPair<Zum16u> dst, int width) {
    columns<Planes420, OnPairs<PackedTruncated16>, RowPairOf<Dst>>(src, dst, 0, width);
  }

  // Whole pairs, then a last odd pixel in both rows.
  static void planesYuv420(const RowPair420<const Zum8u>& src, RowPair<Zum16u> dst, int width) {
    const int x = width & ~1;
    columns<Planes420, OnPairs<PackedYuvTruncated16>, RowPairOf<Dst>>(src, dst, 0, x);
    if (x == width) return;
    const int u = src.cb[x / 2], v = src.cr[x / 2];
    Dst::setPixel(dst.upper, x, FineYuvPixel::rgb(src.luma.upper[x], u, v));
    Dst::setPixel(dst.lower, x, FineYuvPixel::rgb(src.luma.lower[x], u, v));
  }

  static void lastRowYuv420(const P3Row& src, Zum16u* dst, int width) {
    columns<Planes422, OnRepeatedChroma<OnLanes<FineYuvInverse>>, Dst>(src, dst, 0, width);
  }

  static constexpr Packed16Kernels<Zum16u*, RowPair<Zum16u>> kKernels = {
      c3, p3, c2, planes422, planes420, planesYuv420, lastRowYuv420};
};

const Packed16Kernels<Zum16u*, RowPair<Zum16u>>& packed16Kernels(Packed16Model model) {
  return kernelsFor<Packed16Rows>(model);
}

// Groups of 4, rounded, then single pixels.
template <class Dst>
HWY_INLINE void planes411(const P3Row& src, Zum16u* dst, int width) {
  using Rounded = Terms<9535, 13074, 6660, 3211, Green::kSubtracted, 16523, 8, 4>;
  const int groups = width & ~3;
  columns<Planes411, OnPairs<Rounded>, Dst>(src, dst, 0, groups);
  for (int x = groups; x < width; ++x) {
    Dst::setPixel(dst, x, FinePixel::rgb(src[0][x], src[1][x / 4], src[2][x / 4]));
  }
}
void innerYCbCr411ToBGR565_8u16u_P3C3R(const P3Row& src, Zum16u* dst, int width) {
  planes411<Packed565>(src, dst, width);
}
void innerYCbCr411ToBGR555_8u16u_P3C3R(const P3Row& src, Zum16u* dst, int width) {
  planes411<Packed555>(src, dst, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(packed16Kernels);
HWY_EXPORT(innerYCbCr411ToBGR565_8u16u_P3C3R);
HWY_EXPORT(innerYCbCr411ToBGR555_8u16u_P3C3R);

using Kernels = Packed16Kernels<Zum16u*, RowPair<Zum16u>>;
using Target = Pixels<Zum16u>;

const Kernels& kernelsOf(Packed16Model model) { return HWY_DYNAMIC_DISPATCH(packed16Kernels)(model); }
Target target(const Pixels<Zum16u>& given) { return samples16(given.base, given.step); }

// A tight image of any size is one row: only its last pixels are converted as the last of a row.
template <class Kernel>
void rowsOrTightRun(Kernel* kernel, int samples, Pixels<const Zum8u> src, Target dst, ZumiSize roi) {
  const bool isTight = src.step == std::int64_t{samples} * roi.width && dst.step / 2 == roi.width;
  const std::int32_t area = wrappedArea(roi);
  if (isTight && area > 0) {
    tightRun(kernel, TightPixels{src.base, samples, roi.width}, TightPixels{dst.base, 1, roi.width}, area);
  } else {
    serialRows(kernel, src.rows(), dst.rows(), roi);
  }
}

ZumStatus fromC3(const Kernels& kernels, const Pixels<const Zum8u>& src, const Target& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  rowsOrTightRun(kernels.c3, 3, src, dst, roi);
  return zumOk;
}

// Half a pair in each row gives three bytes R, G, B and no 16-bit pixel, in rows at half the step.
void convertHalfPairs(Rows<const Zum8u> src, Rows<Zum8u> dst, int height) {
  for (int r = 0; r < height; ++r) {
    const Zum8u* half = src.row(r);
    const Pixel pixel = FoldedPixel::rgb(half[0], half[1], half[1]);
    Zum8u* to = dst.row(r);
    to[0] = static_cast<Zum8u>(pixel.c0);
    to[1] = static_cast<Zum8u>(pixel.c1);
    to[2] = static_cast<Zum8u>(pixel.c2);
  }
}

ZumStatus fromC2(const Kernels& kernels, const Pixels<const Zum8u>& src, const Target& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  if (roi.width == 1) {
    convertHalfPairs(src.rows(), {reinterpret_cast<Zum8u*>(dst.base), dst.step / 2}, roi.height);
  } else if (roi.width % 2 == 0) {
    rowsOrTightRun(kernels.c2, 2, src, dst, roi);
  } else {
    serialRows(kernels.c2, src.rows(), dst.rows(), roi);
  }
  return zumOk;
}

template <class Kernel>
ZumStatus from411(Kernel* kernel, const ThreeSteppedPlanes<const Zum8u>& src, const Target& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi, {4, 1})) return status;
  serialRows(kernel, src.rows(), dst.rows(), roi);
  return roi.width % 4 ? zumWrnOddSize : zumOk;
}

}  // namespace
}  // namespace zum

ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToRGB565_8u16u_C3R, fromC3, kRGB565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToBGR565_8u16u_C3R, fromC3, kBGR565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToRGB555_8u16u_C3R, fromC3, kRGB555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToBGR555_8u16u_C3R, fromC3, kBGR555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToRGB444_8u16u_C3R, fromC3, kRGB444)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToBGR444_8u16u_C3R, fromC3, kBGR444)

ZUM_PACKED16_FROM_PLANES(zumiYCbCrToRGB565_8u16u_P3C3R, fromP3, kRGB565)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToBGR565_8u16u_P3C3R, fromP3, kBGR565)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToRGB555_8u16u_P3C3R, fromP3, kRGB555)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToBGR555_8u16u_P3C3R, fromP3, kBGR555)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToRGB444_8u16u_P3C3R, fromP3, kRGB444)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToBGR444_8u16u_P3C3R, fromP3, kBGR444)

ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToRGB565_8u16u_C2C3R, fromC2, kRGB565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToBGR565_8u16u_C2C3R, fromC2, kBGR565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToRGB555_8u16u_C2C3R, fromC2, kRGB555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToBGR555_8u16u_C2C3R, fromC2, kBGR555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToRGB444_8u16u_C2C3R, fromC2, kRGB444)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToBGR444_8u16u_C2C3R, fromC2, kBGR444)

ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToRGB565_8u16u_P3C3R, from422, kRGB565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToBGR565_8u16u_P3C3R, from422, kBGR565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToRGB555_8u16u_P3C3R, from422, kRGB555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToBGR555_8u16u_P3C3R, from422, kBGR555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToRGB444_8u16u_P3C3R, from422, kRGB444)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToBGR444_8u16u_P3C3R, from422, kBGR444)

ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToRGB565_8u16u_P3C3R, from420, kRGB565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToBGR565_8u16u_P3C3R, from420, kBGR565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToRGB555_8u16u_P3C3R, from420, kRGB555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToBGR555_8u16u_P3C3R, from420, kBGR555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToRGB444_8u16u_P3C3R, from420, kRGB444)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToBGR444_8u16u_P3C3R, from420, kBGR444)

ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToRGB565_8u16u_P3C3R, fromYuv420, kRGB565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToBGR565_8u16u_P3C3R, fromYuv420, kBGR565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToRGB555_8u16u_P3C3R, fromYuv420, kRGB555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToBGR555_8u16u_P3C3R, fromYuv420, kBGR555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToRGB444_8u16u_P3C3R, fromYuv420, kRGB444)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToBGR444_8u16u_P3C3R, fromYuv420, kBGR444)

ZUM_EXPORT(zumiYCbCr411ToBGR565_8u16u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum16u>,
           from411(ZUM_KERNEL(innerYCbCr411ToBGR565_8u16u_P3C3R), src, target(dst), roi))
ZUM_EXPORT(zumiYCbCr411ToBGR555_8u16u_P3C3R, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum16u>,
           from411(ZUM_KERNEL(innerYCbCr411ToBGR555_8u16u_P3C3R), src, target(dst), roi))

#endif  // HWY_ONCE
