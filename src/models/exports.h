// What the exported functions of a colour model have in common: interleaved pixels of the same samples and layout on
// both sides, steps that are counted in samples, signed samples seen as their distance from the lowest, and rows that
// are divided among threads.
#ifndef ZUM_MODELS_EXPORTS_H
#define ZUM_MODELS_EXPORTS_H

#include "frame/exports.h"

namespace zum {

template <class T>
Pixels<T> inSamples(const Pixels<T>& given) {
  if constexpr (sizeof(T) == 1) {
    return given;
  } else if constexpr (sizeof(T) == 2) {
    return samples16(given.base, given.step);
  } else {
    return samples32(given.base, given.step);
  }
}
inline auto inSamples(const Pixels<const Zum16s>& given) { return fromLowest(given.base, given.step); }
inline auto inSamples(const Pixels<Zum16s>& given) { return fromLowest(given.base, given.step); }

}  // namespace zum

// An exported function, by its row kernel. For use where HWY_EXPORT is.
#define ZUM_MODEL_FUNCTION(name, kernel, T)    \
  ZUM_ROW_KERNEL(kernel)                       \
  ZUM_EXPORT(name, Pixels<const T>, Pixels<T>, \
             convertRowsInParallel(ZUM_KERNEL(kernel), inSamples(src), inSamples(dst), roi))

#endif
