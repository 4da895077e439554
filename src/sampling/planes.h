// What the conversions between planes of different chroma sampling have in common.
#ifndef ZUM_SAMPLING_PLANES_H
#define ZUM_SAMPLING_PLANES_H

#include "frame/arguments.h"

namespace zum {

// A plane of luma and one of chroma pairs.
template <class T>
struct SemiPlanar {
  Pixels<T> luma, pairs;

  bool missing() const { return luma.missing() || pairs.missing(); }
  bool planeMissing() const { return false; }
};

// All pointers, those inside plane arrays included.
template <class Src, class Dst>
bool anyMissing(const Src& src, const Dst& dst) {
  return src.missing() || dst.missing() || src.planeMissing() || dst.planeMissing();
}

inline void copyPlane(const Rows<const Zum8u>& src, const Rows<Zum8u>& dst, ZumiSize size) {
  zumiCopy_8u_C1R(src.base, static_cast<int>(src.step), dst.base, static_cast<int>(dst.step), size);
}

}  // namespace zum

#endif
