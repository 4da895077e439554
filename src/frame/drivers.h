// The walks over rows. A driver knows no arithmetic and no layout; a row kernel knows no step and no height.
#ifndef ZUM_FRAME_DRIVERS_H
#define ZUM_FRAME_DRIVERS_H

#include <cstdint>

#include "frame/arguments.h"
#include "frame/platform.h"

// The kernel of the best instruction set of this machine, as a plain function pointer. For use behind HWY_EXPORT.
#define ZUM_KERNEL(name) (&HWY_DYNAMIC_DISPATCH(name))

namespace zum {

// Rows one after the other, in the caller's thread. Parameters go to the kernel as they are.
template <class Kernel, class Src, class Dst, class... Parameters>
void serialRows(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, Parameters... parameters) {
  for (int r = 0; r < roi.height; ++r) kernel(src.row(r), dst.row(r), roi.width, parameters...);
}

// Row pairs, for 4:2:0: the kernel gets two luma rows, their chroma rows and the number of pixel pairs. A last odd row
// or column is not touched.
template <class Kernel, class Src, class Dst, class... Parameters>
void serialRowPairs(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, Parameters... parameters) {
  for (int p = 0; p < roi.height / 2; ++p) kernel(rowPair(src, p), rowPair(dst, p), roi.width / 2, parameters...);
}

// Row pairs over the whole width, then a last odd row with the chroma of the pair that it would begin.
template <class PairKernel, class RowKernel, class Src, class Dst>
void serialRowPairsAndLast(PairKernel* ofPair, RowKernel* ofRow, const Src& src, const Dst& dst, ZumiSize roi) {
  const int pairs = roi.height / 2;
  for (int p = 0; p < pairs; ++p) ofPair(rowPair(src, p), rowPair(dst, p), roi.width);
  if (roi.height % 2) ofRow(upperRow(src, pairs), dst.row(2 * pairs), roi.width);
}

// The pixels of an image by a wrapping 32-bit product: what thresholds are compared with.
inline std::int32_t wrappedArea(ZumiSize roi) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(roi.width) * static_cast<std::uint32_t>(roi.height));
}

// A tight image as one row of `pixels`, which the kernel gets in two pieces: whole blocks of 8, then what remains.
template <class Kernel, class Src, class Dst>
void tightRun(Kernel* kernel, Src src, Dst dst, std::int32_t pixels) {
  const std::int32_t blocks = pixels & ~7;
  src.width = dst.width = blocks;
  kernel(src.rows().row(0), dst.rows().row(0), blocks);
  if (pixels > blocks) kernel(src.rows().row(1), dst.rows().row(1), pixels - blocks);
}

// Rows divided among threads in contiguous bands. The result does not depend on their number.
template <class Kernel, class Src, class Dst>
void parallelRows(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
#pragma omp parallel for schedule(static) num_threads(requestedThreads())
  for (int r = 0; r < roi.height; ++r) kernel(src.row(r), dst.row(r), roi.width);
}

// The smallest number of pixels for which parallelRowsFromThreshold asks for threads.
constexpr std::int32_t kParallelPixels = 4097;

// Serial below the threshold, and where the area wraps to a negative number.
template <class Kernel, class Src, class Dst>
void parallelRowsFromThreshold(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
  if (wrappedArea(roi) < kParallelPixels) {
    serialRows(kernel, src, dst, roi);
  } else {
    parallelRows(kernel, src, dst, roi);
  }
}

// The smallest width and height that slicedRegion cuts into bands.
constexpr int kSlicedSide = 192;

// Bands cut by hand: thread t of the n that are asked for calls band(first row, rows) for its n-th of the rows, the
// last one with the remainder. If the runtime grants fewer threads, the bands of the missing ones are not done.
template <class Band>
void slicedRegion(int width, int height, const Band& band) {
  const int threads = threads_omp_of_n_zum;
  if (threads <= 1 || width < kSlicedSide || height < kSlicedSide) {
    band(0, height);
    return;
  }
  const int rows = height / threads;
#pragma omp parallel num_threads(threads)
  {
    const int t = threadNumber();
    band(t * rows, t == threads - 1 ? rows + height % threads : rows);
  }
}

// The rows of an image in such bands.
template <class Kernel, class Src, class Dst>
void slicedRows(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
  slicedRegion(roi.width, roi.height, [&](int first, int rows) {
    for (int r = first; r < first + rows; ++r) kernel(src.row(r), dst.row(r), roi.width);
  });
}

// What most exported functions are: the checks, a serial walk, done.
template <class Kernel, class Src, class Dst, class... Parameters>
ZumStatus convertRows(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, Parameters... parameters) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  serialRows(kernel, src.rows(), dst.rows(), roi, parameters...);
  return zumOk;
}

// The smallest number of pixels that a tight image of even width is converted as one row for.
constexpr std::int32_t kTightRunPixels = 256;

// The same for tight 4:2:2 images.
template <class Kernel, class Src, class Dst>
ZumStatus convertTightRows(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  const std::int32_t pixels = wrappedArea(roi);
  if (pixels >= kTightRunPixels && roi.width % 2 == 0) {
    tightRun(kernel, src, dst, pixels);
  } else {
    serialRows(kernel, src.rows(), dst.rows(), roi);
  }
  return zumOk;
}

// The same for 4:2:0, with the warning for sizes that are not whole blocks.
template <class Kernel, class Src, class Dst, class... Parameters>
ZumStatus convertRowPairs(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, Parameters... parameters) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  serialRowPairs(kernel, src.rows(), dst.rows(), roi, parameters...);
  return roi.width % 2 || roi.height % 2 ? zumWrnOddSize : zumOk;
}

// The same for 4:2:0 of any size, to the last column and row.
template <class PairKernel, class RowKernel, class Src, class Dst>
ZumStatus convertRowPairsAndLast(PairKernel* ofPair, RowKernel* ofRow, const Src& src, const Dst& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  serialRowPairsAndLast(ofPair, ofRow, src.rows(), dst.rows(), roi);
  return zumOk;
}

// The same with rows divided among threads.
template <class Kernel, class Src, class Dst>
ZumStatus convertRowsInParallel(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  parallelRowsFromThreshold(kernel, src.rows(), dst.rows(), roi);
  return zumOk;
}

// Rows divided among threads, however few they are, unless the checks that came before found an error.
template <class Kernel, class Src, class Dst>
ZumStatus convertInParallelUnless(ZumStatus error, Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi) {
  if (error != zumOk) return error;
  parallelRows(kernel, src.rows(), dst.rows(), roi);
  return zumOk;
}

}  // namespace zum

#endif
