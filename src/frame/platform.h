// What the library takes from its surroundings: the allocator and the OpenMP runtime.
#ifndef ZUM_FRAME_PLATFORM_H
#define ZUM_FRAME_PLATFORM_H

#include "zumcc.h"

namespace zum {

// The thread count to ask for: threads_omp_of_n_zum, at least 1.
int requestedThreads();

// The number of the calling thread in its team.
int threadNumber();

}  // namespace zum

#endif
