// Uniform random numbers: a linear congruential sequence plus a subtract-with-borrow sequence, mapped to a range.
#ifndef ZUM_FRAME_GENERATOR_H
#define ZUM_FRAME_GENERATOR_H

#include "zumcc.h"

namespace zum {

// A plain record that may live anywhere: what the exported functions allocate, and what a conversion that needs random
// numbers of its own keeps on the stack.
template <class T>
struct UniformGenerator {
  UniformGenerator(T rangeLow, T rangeHigh, uint32_t seedWord);

  // Writes the next len numbers.
  void fill(T* dst, int len);

  Zum32s idCtx;  // the kind of the record
  uint32_t seed;
  T low, high;
  double mean, scale;
  uint32_t lcg;
  uint32_t s1, s2, s3;  // the last three words of the subtract-with-borrow sequence, the newest first
  Zum32s carry;         // its borrow, 0 or -1
};

}  // namespace zum

#endif
