// Error diffusion in waves: many rows at once, each a few pixels behind the one above it.
#ifndef ZUM_REDUCE_WAVEFRONT_H
#define ZUM_REDUCE_WAVEFRONT_H

#include <atomic>
#include <cstdint>

#include "reduce/diffusion_rows.h"

namespace zum {

// How many steps a wave has made, for the one behind it.
struct alignas(64) Progress {
  std::atomic<int64_t> steps{0};
};

// Where the waves of a section meet. The rows of its channels are one tall image, which is cut into groups of rows.
// Waves, each on a thread of its own, take groups in turn and follow the one that has the group above.
struct Meeting {
  float* errors;       // below the last group that has come by, zeros at first: errorLength floats
  Progress* progress;  // of each wave
  int waves;
};

template <class Src, class Dst>
struct WaveKernel {
  bool (*isFaster)(int width, int64_t rows);  // than the plain form
  int (*mostWaves)(int width);                // of a section
  void (*run)(const Section<Src, Dst>& section, const Diffusion& diffusion, const Meeting& meeting, int wave);
};

// That of the best instruction set of this machine.
template <class Src, class Dst>
WaveKernel<Src, Dst> waveKernel(ZumDitherType dither);

}  // namespace zum

#endif
