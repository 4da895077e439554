// What the library takes from its surroundings: the allocator, the OpenMP runtime, the size of the cache and the
// rounding mode.
#ifndef ZUM_FRAME_PLATFORM_H
#define ZUM_FRAME_PLATFORM_H

#include <cstddef>

#include "zumcc.h"

namespace zum {

// The thread count to ask for: threads_omp_of_n_zum, at least 1.
int requestedThreads();

// The number of the calling thread in its team.
int threadNumber();

// The size of the largest cache in bytes, 0 if the processor does not tell.
std::size_t cacheSize();

// The thread's vector unit rounds to nearest, ties to even, as long as this lives; then as its caller had it again.
class NearestRounding {
 public:
  NearestRounding();
  ~NearestRounding();
  NearestRounding(const NearestRounding&) = delete;
  NearestRounding& operator=(const NearestRounding&) = delete;

 private:
  const unsigned previous_;
};

}  // namespace zum

#endif
