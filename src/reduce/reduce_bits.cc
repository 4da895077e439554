// Fewer levels, and fewer bits with them: nearest level, ordered dither, error diffusion.
#include <algorithm>
#include <cstdint>

#include "frame/arguments.h"
#include "frame/platform.h"
#include "reduce/depths.h"
#include "reduce/diffusion.h"
#include "reduce/ordered.h"

namespace zum {
namespace {

// An image whose steps are counted in samples: the bits below a sample are lost.
template <class T>
Rows<T> inWholeSamples(const Pixels<T>& pixels) {
  return {pixels.base, pixels.step & ~static_cast<int>(sizeof(T) - 1)};
}

// Bands of rows, one a thread.
template <class Src, class Dst, class Kernel, class Dither>
void ditherBands(Kernel* kernel, const Rows<const Src>& src, const Rows<Dst>& dst, ZumiSize size,
                 const Dither& dither) {
  const int bands = std::min(requestedThreads(), size.height);
#pragma omp parallel for schedule(static) num_threads(bands)
  for (int i = 0; i < bands; ++i) {
    const auto first = [&](int band) { return static_cast<int>(std::int64_t{size.height} * band / bands); };
    kernel(src, dst, size.width, Band{first(i), first(i + 1)}, dither);
  }
}

template <class Src, class Dst>
ZumStatus ditherOrdered(const Rows<const Src>& src, const Rows<Dst>& dst, ZumiSize size, Layout layout, int noise,
                        int levels) {
  const Grid grid = gridOf<Depths<Src, Dst>>(levels);
  const BandKernels<Src, Dst> kernels = bandKernels<Src, Dst>(layout);
  if (noise == 0) {
    ditherBands(kernels.ordered, src, dst, size, OrderedDither(grid, samplesOf(layout)));
    return zumOk;
  }
  const float range = static_cast<float>(noise) / 100;
  const NoiseField field(-range, range);
  if (field.missing()) return zumErrMemAlloc;
  ditherBands(kernels.noisy, src, dst, size, NoisyDither{grid, field});
  return zumOk;
}

template <Layout layout, class Src, class Dst>
ZumStatus reduceBits(const Pixels<const Src>& src, const Pixels<Dst>& dst, ZumiSize size, int noise,
                     ZumDitherType dither, int levels) {
  if (const ZumStatus status = check(src, dst, size)) return status;
  if (noise < 0 || noise > 100) return zumErrNoiseValue;
  if (levels < 2 || levels > Depths<Src, Dst>::kMostLevels) return zumErrDitherLevels;
  switch (dither) {
    case zumDitherNone:
      bandKernels<Src, Dst>(layout).nearest(src.rows(), dst.rows(), size.width, {0, size.height}, levels);
      return zumOk;
    case zumDitherBayer:
      if (layout == kC4) return ditherOrdered(src.rows(), dst.rows(), size, layout, noise, levels);
      return ditherOrdered(inWholeSamples(src), inWholeSamples(dst), size, layout, noise, levels);
    case zumDitherFS:
    case zumDitherJJN:
    case zumDitherStucki:
      return diffuse(inWholeSamples(src), inWholeSamples(dst), size, layout, dither, noise, levels);
    default:
      return zumOk;
  }
}

}  // namespace
}  // namespace zum

using namespace zum;

#define ZUM_REDUCE_BITS(name, Src, Dst, layout)                                                                       \
  ZumStatus name(const Src* pSrc, int srcStep, Dst* pDst, int dstStep, ZumiSize roi, int noise, ZumDitherType dither, \
                 int levels) {                                                                                        \
    return reduceBits<layout>(Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi, noise, dither, levels);              \
  }

ZUM_REDUCE_BITS(zumiReduceBits_8u_C1R, Zum8u, Zum8u, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_8u_C3R, Zum8u, Zum8u, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_8u_AC4R, Zum8u, Zum8u, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_8u_C4R, Zum8u, Zum8u, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_16u_C1R, Zum16u, Zum16u, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_16u_C3R, Zum16u, Zum16u, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_16u_AC4R, Zum16u, Zum16u, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_16u_C4R, Zum16u, Zum16u, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_16s_C1R, Zum16s, Zum16s, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_16s_C3R, Zum16s, Zum16s, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_16s_AC4R, Zum16s, Zum16s, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_16s_C4R, Zum16s, Zum16s, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_16u8u_C1R, Zum16u, Zum8u, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_16u8u_C3R, Zum16u, Zum8u, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_16u8u_AC4R, Zum16u, Zum8u, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_16u8u_C4R, Zum16u, Zum8u, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_16s8u_C1R, Zum16s, Zum8u, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_16s8u_C3R, Zum16s, Zum8u, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_16s8u_AC4R, Zum16s, Zum8u, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_16s8u_C4R, Zum16s, Zum8u, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_32f8u_C1R, Zum32f, Zum8u, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_32f8u_C3R, Zum32f, Zum8u, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_32f8u_AC4R, Zum32f, Zum8u, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_32f8u_C4R, Zum32f, Zum8u, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_32f16u_C1R, Zum32f, Zum16u, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_32f16u_C3R, Zum32f, Zum16u, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_32f16u_AC4R, Zum32f, Zum16u, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_32f16u_C4R, Zum32f, Zum16u, kC4)
ZUM_REDUCE_BITS(zumiReduceBits_32f16s_C1R, Zum32f, Zum16s, kC1)
ZUM_REDUCE_BITS(zumiReduceBits_32f16s_C3R, Zum32f, Zum16s, kC3)
ZUM_REDUCE_BITS(zumiReduceBits_32f16s_AC4R, Zum32f, Zum16s, kAC4)
ZUM_REDUCE_BITS(zumiReduceBits_32f16s_C4R, Zum32f, Zum16s, kC4)
