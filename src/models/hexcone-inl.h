// What models with a circle of hues share.
#if defined(ZUM_MODELS_HEXCONE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_MODELS_HEXCONE_INL_H
#undef ZUM_MODELS_HEXCONE_INL_H
#else
#define ZUM_MODELS_HEXCONE_INL_H
#endif

#include "frame/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Red, green and blue by the sextant of the hue. Sextants come in pairs: in the first pair red and green are the larger
// two channels, falling or rising is the smaller of them in the second or the first sextant of the pair, and blue is
// the smallest. Each further pair moves all channels on by one.
template <class V>
HWY_INLINE Channels<V> bySextant(V sextant, V largest, V falling, V rising, V smallest) {
  using T = hn::TFromV<V>;
  const auto odd = hn::TestBit(sextant, all<T>(1)), pair1 = hn::TestBit(sextant, all<T>(2)),
             pair2 = hn::TestBit(sextant, all<T>(4));
  const V first = hn::IfThenElse(odd, falling, largest), second = hn::IfThenElse(odd, largest, rising);
  const auto choose = [&](V v0, V v1, V v2)
                          HWY_ATTR { return hn::IfThenElse(pair2, v2, hn::IfThenElse(pair1, v1, v0)); };
  return {choose(first, smallest, second), choose(second, first, smallest), choose(smallest, second, first)};
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
