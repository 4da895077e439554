#include "frame/platform.h"

#include <omp.h>

#include <cstdlib>

Zum32s threads_omp_of_n_zum = omp_get_max_threads();
void* (*i_malloc)(size_t) = std::malloc;
void (*i_free)(void*) = std::free;

namespace zum {

int requestedThreads() { return threads_omp_of_n_zum < 1 ? 1 : threads_omp_of_n_zum; }

int threadNumber() { return omp_get_thread_num(); }

}  // namespace zum
