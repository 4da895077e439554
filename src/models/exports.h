// What the exported functions of a colour model have in common: interleaved pixels of the same samples and layout on
// both sides, steps that are counted in samples, signed samples seen as their distance from the lowest, and rows that
// are divided among threads.
#ifndef ZUM_MODELS_EXPORTS_H
#define ZUM_MODELS_EXPORTS_H

#include "frame/drivers.h"

namespace zum {

template <class T>
Pixels<T> inSamples(T* base, int step) {
  if constexpr (sizeof(T) == 1) {
    return {base, step};
  } else if constexpr (sizeof(T) == 2) {
    return samples16(base, step);
  } else {
    return samples32(base, step);
  }
}
inline auto inSamples(const Zum16s* base, int step) { return fromLowest(base, step); }
inline auto inSamples(Zum16s* base, int step) { return fromLowest(base, step); }

}  // namespace zum

// An exported function, by its row kernel. For use where HWY_EXPORT is.
#define ZUM_MODEL_FUNCTION(name, kernel, T)                                                                    \
  namespace zum {                                                                                              \
  HWY_EXPORT(kernel);                                                                                          \
  }                                                                                                            \
  ZumStatus name(const T* pSrc, int srcStep, T* pDst, int dstStep, ZumiSize roi) {                             \
    using namespace zum;                                                                                       \
    return convertRowsInParallel(ZUM_KERNEL(kernel), inSamples(pSrc, srcStep), inSamples(pDst, dstStep), roi); \
  }

#endif
