// Rows in which every pixel is decided alone: the nearest level, or ordered dither with or without noise.
#ifndef ZUM_REDUCE_ORDERED_H
#define ZUM_REDUCE_ORDERED_H

#include "frame/rows.h"
#include "reduce/depths.h"
#include "reduce/noise.h"

namespace zum {

// The remainders above which the samples of a row go to the next level, for the four rows of the pattern: a period of
// columns, then its beginning again, as far as the longest vector reaches.
struct OrderedDither {
  static constexpr int kLength = 80;

  OrderedDither(Grid grid, int samplesOfPixel);

  Grid grid;
  alignas(64) float thresholds[4][kLength];
};

// The same with noise, a fraction of a step at every pixel.
struct NoisyDither {
  Grid grid;
  const NoiseField& noise;
};

// Rows of an image.
struct Band {
  int begin, end;
};

template <class Src, class Dst>
struct BandKernels {
  void (*nearest)(const Rows<const Src>& src, const Rows<Dst>& dst, int width, Band band, int levels);
  void (*ordered)(const Rows<const Src>& src, const Rows<Dst>& dst, int width, Band band, const OrderedDither& dither);
  void (*noisy)(const Rows<const Src>& src, const Rows<Dst>& dst, int width, Band band, const NoisyDither& dither);
};

// Those of the best instruction set of this machine.
template <class Src, class Dst>
BandKernels<Src, Dst> bandKernels(Layout layout);

}  // namespace zum

#endif
