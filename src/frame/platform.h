// What the library takes from its surroundings: the allocator, the OpenMP runtime and the size of the cache.
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

}  // namespace zum

#endif
