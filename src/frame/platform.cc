#include "frame/platform.h"

#include <omp.h>

#include <algorithm>
#include <cstdlib>

#if defined(__i386__) || defined(__x86_64__)
#include <cpuid.h>
#include <xmmintrin.h>
#else
#include <cfenv>
#endif

Zum32s threads_omp_of_n_zum = omp_get_max_threads();
void* (*i_malloc)(size_t) = std::malloc;
void (*i_free)(void*) = std::free;

namespace zum {

int requestedThreads() { return threads_omp_of_n_zum < 1 ? 1 : threads_omp_of_n_zum; }

int threadNumber() { return omp_get_thread_num(); }

// The processor is asked, not sysconf, which on some counts the caches of all cores together.
std::size_t cacheSize() {
  std::size_t largest = 0;
#if defined(__i386__) || defined(__x86_64__)
  constexpr unsigned kIntelCaches = 4, kAmdCaches = 0x8000001D, kMostCaches = 8;
  for (const unsigned leaf : {kIntelCaches, kAmdCaches}) {
    for (unsigned cache = 0; cache < kMostCaches; ++cache) {
      unsigned type, shape, sets, flags;
      if (!__get_cpuid_count(leaf, cache, &type, &shape, &sets, &flags) || (type & 31) == 0) break;
      const std::size_t ways = (shape >> 22) + 1, partitions = (shape >> 12 & 0x3FF) + 1, line = (shape & 0xFFF) + 1;
      largest = std::max(largest, ways * partitions * line * (std::size_t{sets} + 1));
    }
  }
#endif
  return largest;
}

#if defined(__i386__) || defined(__x86_64__)
// The control word of the vector unit: the floating-point environment of the C library may be that of another unit.
NearestRounding::NearestRounding() : previous_(_mm_getcsr()) {
  if (previous_ & _MM_ROUND_MASK) _mm_setcsr(previous_ & ~unsigned{_MM_ROUND_MASK});
}
NearestRounding::~NearestRounding() {
  if (previous_ & _MM_ROUND_MASK) _mm_setcsr(previous_);
}
#else
NearestRounding::NearestRounding() : previous_(static_cast<unsigned>(std::fegetround())) {
  std::fesetround(FE_TONEAREST);
}
NearestRounding::~NearestRounding() { std::fesetround(static_cast<int>(previous_)); }
#endif

}  // namespace zum
