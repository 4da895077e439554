// BGR to and from Y, Co, Cg: a lossy transform, and one of lifting steps that can be undone.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "reversible/ycocg.cc"
#include <type_traits>

#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- The transforms, in lanes of any width, where they wrap around. Channels are B, G, R and Y, Co, Cg.

template <class V>
HWY_INLINE V plus2(V v) {
  return v + hn::Set(hn::DFromV<V>(), 2);
}

struct Lossy {
  template <class V>
  static HWY_INLINE Channels<V> forward(const Channels<V>& bgr) {
    const V twoG = bgr.c1 + bgr.c1, outer = bgr.c2 + bgr.c0;
    const V one = hn::Set(hn::DFromV<V>(), 1);
    return {hn::ShiftRight<2>(plus2(outer + twoG)), hn::ShiftRight<1>(bgr.c2 - bgr.c0 + one),
            hn::ShiftRight<2>(plus2(twoG - outer))};
  }

  template <class V>
  static HWY_INLINE Channels<V> inverse(const Channels<V>& ycc) {
    const V t = ycc.c0 - ycc.c2;
    return {t - ycc.c1, ycc.c0 + ycc.c2, t + ycc.c1};
  }
};

struct Lifted {
  template <class V>
  static HWY_INLINE Channels<V> forward(const Channels<V>& bgr) {
    const V co = bgr.c2 - bgr.c0;
    const V t = bgr.c0 + hn::ShiftRight<1>(co);
    const V cg = bgr.c1 - t;
    return {t + hn::ShiftRight<1>(cg), co, cg};
  }

  template <class V>
  static HWY_INLINE Channels<V> inverse(const Channels<V>& ycc) {
    const V t = ycc.c0 - hn::ShiftRight<1>(ycc.c2);
    const V b = t - hn::ShiftRight<1>(ycc.c1);
    return {b, ycc.c2 + t, ycc.c1 + b};
  }
};

// ---- Forms

// Samples of one width on both sides.
template <class Model>
struct Forward {
  static HWY_INLINE Channels<VI16> apply(const Channels<VI16>& bgr) { return Model::forward(bgr); }
};
template <class Model>
struct Inverse {
  static HWY_INLINE Channels<VI16> apply(const Channels<VI16>& ycc) { return Model::inverse(ycc); }
};

// The same lossy results from exact sums, which do not fit the lanes: from means, of samples as their distances from
// the lowest. Half a difference can be 32768: that saturates, or wraps around.
template <bool saturates>
struct LossyForward16 {
  static HWY_INLINE Channels<VI16> apply(const Channels<VI16>& bgr) {
    const VU16 b = distance(bgr.c0), g = distance(bgr.c1), r = distance(bgr.c2);
    const VU16 meanDown = hn::Not(hn::AverageRound(hn::Not(r), hn::Not(b))), meanUp = hn::AverageRound(r, b);
    return {value(hn::AverageRound(meanDown, g)), halfDifference(r, b), halfDifference(g, meanUp)};
  }

 private:
  static HWY_INLINE VU16 distance(VI16 v) { return hn::BitCast(Tag<std::uint16_t>(), v) ^ all<std::uint16_t>(0x8000); }
  static HWY_INLINE VI16 value(VU16 v) { return hn::BitCast(Tag<std::int16_t>(), v ^ all<std::uint16_t>(0x8000)); }

  // (u - v + 1) >> 1 = -((v - u) >> 1); the mean of v and 65535 - u, rounded up, is 32768 + ((v - u) >> 1).
  static HWY_INLINE VI16 halfDifference(VU16 u, VU16 v) {
    const VI16 zero = hn::Zero(Tag<std::int16_t>()), negative = value(hn::AverageRound(v, hn::Not(u)));
    return saturates ? hn::SaturatedSub(zero, negative) : zero - negative;
  }
};

// Planes of samples twice as wide as the interleaved ones; the arithmetic is as wide as the planes.
template <class Model, class Wide>
struct WideForward {
  template <class V>
  static HWY_INLINE Channels<Halves<Vec<Wide>>> apply(const Channels<V>& bgr) {
    const auto b = widenInOrder<Wide>(bgr.c0), g = widenInOrder<Wide>(bgr.c1), r = widenInOrder<Wide>(bgr.c2);
    const auto first = Model::forward(Channels<Vec<Wide>>{b.a, g.a, r.a}),
               second = Model::forward(Channels<Vec<Wide>>{b.b, g.b, r.b});
    return {{first.c0, second.c0}, {first.c1, second.c1}, {first.c2, second.c2}};
  }
};
template <class Model>
struct WideInverse {
  template <class V>
  static HWY_INLINE auto apply(const Channels<Halves<V>>& ycc) {
    const auto first = Model::inverse(Channels<V>{ycc.c0.a, ycc.c1.a, ycc.c2.a}),
               second = Model::inverse(Channels<V>{ycc.c0.b, ycc.c1.b, ycc.c2.b});
    const auto b = narrowed({first.c0, second.c0}), g = narrowed({first.c1, second.c1}),
               r = narrowed({first.c2, second.c2});
    return Channels<std::remove_const_t<decltype(b)>>{b, g, r};
  }

 private:
  static HWY_INLINE VU8 narrowed(const Halves<VI16>& v) { return saturateInOrder(v); }
  static HWY_INLINE VI16 narrowed(const Halves<VI32>& v) { return lowHalvesInOrder(v); }
};

// A fourth channel behind those of another form.
template <class Form, class T>
struct WithFourth {
  Vec<T> fourth;

  template <class In>
  HWY_INLINE FourChannels<Vec<T>> apply(const In& in) const {
    const Channels<Vec<T>> v = Form::apply(in);
    return {v.c0, v.c1, v.c2, fourth};
  }
};

// ---- Row kernels

template <class Model, template <class> class Layout, class T, class Wide>
HWY_INLINE void forward(const T* src, const PlaneRow<Wide, 3>& dst, int width) {
  if constexpr (sizeof(Wide) > sizeof(T)) {
    columns<Layout<T>, WideForward<Model, Wide>, WidePlanes3<Wide>>(src, dst, 0, width);
  } else if constexpr (std::is_same_v<Model, Lifted>) {
    columns<Layout<T>, Forward<Model>, Planes3<T>>(src, dst, 0, width);
  } else {
    blocksAndTail<4, Layout<T>, LossyForward16<true>, LossyForward16<false>, Planes3<T>>(src, dst, width);
  }
}

template <class Wide, class T>
using PlanesFor = std::conditional_t<(sizeof(Wide) > sizeof(T)), WidePlanes3<Wide>, Planes3<Wide>>;
template <class Model, class Wide, class T>
using InverseFor = std::conditional_t<(sizeof(Wide) > sizeof(T)), WideInverse<Model>, Inverse<Model>>;

template <class Model, class Wide, class T>
HWY_INLINE void inverse(const PlaneRow<const Wide, 3>& src, T* dst, int width) {
  columns<PlanesFor<Wide, T>, InverseFor<Model, Wide, T>, Packed3<T>>(src, dst, 0, width);
}
template <class Model, class Wide, class T>
HWY_INLINE void inverse(const PlaneRow<const Wide, 3>& src, T* dst, int width, T fourth) {
  using Form = WithFourth<InverseFor<Model, Wide, T>, T>;
  columns<PlanesFor<Wide, T>, Form, Interleaved4<T>>(src, dst, 0, width, Form{all(fourth)});
}

void innerBGRToYCoCg_8u16s_C3P3R(const Zum8u* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lossy, Packed3>(src, dst, width);
}
void innerBGRToYCoCg_8u16s_C4P3R(const Zum8u* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lossy, Interleaved4>(src, dst, width);
}
void innerYCoCgToBGR_16s8u_P3C3R(const PlaneRow<const Zum16s, 3>& src, Zum8u* dst, int width) {
  inverse<Lossy>(src, dst, width);
}
void innerYCoCgToBGR_16s8u_P3C4R(const PlaneRow<const Zum16s, 3>& src, Zum8u* dst, int width, Zum8u fourth) {
  inverse<Lossy>(src, dst, width, fourth);
}
void innerSBGRToYCoCg_16s_C3P3R(const Zum16s* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lossy, Packed3>(src, dst, width);
}
void innerSBGRToYCoCg_16s_C4P3R(const Zum16s* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lossy, Interleaved4>(src, dst, width);
}
void innerYCoCgToSBGR_16s_P3C3R(const PlaneRow<const Zum16s, 3>& src, Zum16s* dst, int width) {
  inverse<Lossy>(src, dst, width);
}
void innerYCoCgToSBGR_16s_P3C4R(const PlaneRow<const Zum16s, 3>& src, Zum16s* dst, int width, Zum16s fourth) {
  inverse<Lossy>(src, dst, width, fourth);
}
void innerSBGRToYCoCg_16s32s_C3P3R(const Zum16s* src, const PlaneRow<Zum32s, 3>& dst, int width) {
  forward<Lossy, Packed3>(src, dst, width);
}
void innerSBGRToYCoCg_16s32s_C4P3R(const Zum16s* src, const PlaneRow<Zum32s, 3>& dst, int width) {
  forward<Lossy, Interleaved4>(src, dst, width);
}
void innerYCoCgToSBGR_32s16s_P3C3R(const PlaneRow<const Zum32s, 3>& src, Zum16s* dst, int width) {
  inverse<Lossy>(src, dst, width);
}
void innerYCoCgToSBGR_32s16s_P3C4R(const PlaneRow<const Zum32s, 3>& src, Zum16s* dst, int width, Zum16s fourth) {
  inverse<Lossy>(src, dst, width, fourth);
}
void innerBGRToYCoCg_Rev_8u16s_C3P3R(const Zum8u* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lifted, Packed3>(src, dst, width);
}
void innerBGRToYCoCg_Rev_8u16s_C4P3R(const Zum8u* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lifted, Interleaved4>(src, dst, width);
}
void innerYCoCgToBGR_Rev_16s8u_P3C3R(const PlaneRow<const Zum16s, 3>& src, Zum8u* dst, int width) {
  inverse<Lifted>(src, dst, width);
}
void innerYCoCgToBGR_Rev_16s8u_P3C4R(const PlaneRow<const Zum16s, 3>& src, Zum8u* dst, int width, Zum8u fourth) {
  inverse<Lifted>(src, dst, width, fourth);
}
void innerSBGRToYCoCg_Rev_16s_C3P3R(const Zum16s* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lifted, Packed3>(src, dst, width);
}
void innerSBGRToYCoCg_Rev_16s_C4P3R(const Zum16s* src, const PlaneRow<Zum16s, 3>& dst, int width) {
  forward<Lifted, Interleaved4>(src, dst, width);
}
void innerYCoCgToSBGR_Rev_16s_P3C3R(const PlaneRow<const Zum16s, 3>& src, Zum16s* dst, int width) {
  inverse<Lifted>(src, dst, width);
}
void innerYCoCgToSBGR_Rev_16s_P3C4R(const PlaneRow<const Zum16s, 3>& src, Zum16s* dst, int width, Zum16s fourth) {
  inverse<Lifted>(src, dst, width, fourth);
}
void innerSBGRToYCoCg_Rev_16s32s_C3P3R(const Zum16s* src, const PlaneRow<Zum32s, 3>& dst, int width) {
  forward<Lifted, Packed3>(src, dst, width);
}
void innerSBGRToYCoCg_Rev_16s32s_C4P3R(const Zum16s* src, const PlaneRow<Zum32s, 3>& dst, int width) {
  forward<Lifted, Interleaved4>(src, dst, width);
}
void innerYCoCgToSBGR_Rev_32s16s_P3C3R(const PlaneRow<const Zum32s, 3>& src, Zum16s* dst, int width) {
  inverse<Lifted>(src, dst, width);
}
void innerYCoCgToSBGR_Rev_32s16s_P3C4R(const PlaneRow<const Zum32s, 3>& src, Zum16s* dst, int width, Zum16s fourth) {
  inverse<Lifted>(src, dst, width, fourth);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

// No size is an error here: an image without pixels is converted as such.
template <class Kernel, class Src, class Dst, class... Parameters>
ZumStatus convert(Kernel* kernel, const Src& src, const Dst& dst, ZumiSize roi, Parameters... parameters) {
  if (src.missing() || dst.missing() || src.planeMissing() || dst.planeMissing()) return zumErrNullPtr;
  if (roi.width > 0) serialRows(kernel, src.rows(), dst.rows(), roi, parameters...);
  return zumOk;
}

}  // namespace
}  // namespace zum

// The exported functions: name, row kernel, type of the source's samples, of the destination's.

#define ZUM_TO_YCOCG(name, kernel, T, U) \
  ZUM_ROW_KERNEL(kernel)                 \
  ZUM_EXPORT(name, Pixels<const T>, ThreePlanes<U>, convert(ZUM_KERNEL(kernel), src, dst, roi))
ZUM_TO_YCOCG(zumiBGRToYCoCg_8u16s_C3P3R, innerBGRToYCoCg_8u16s_C3P3R, Zum8u, Zum16s)
ZUM_TO_YCOCG(zumiBGRToYCoCg_8u16s_C4P3R, innerBGRToYCoCg_8u16s_C4P3R, Zum8u, Zum16s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_16s_C3P3R, innerSBGRToYCoCg_16s_C3P3R, Zum16s, Zum16s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_16s_C4P3R, innerSBGRToYCoCg_16s_C4P3R, Zum16s, Zum16s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_16s32s_C3P3R, innerSBGRToYCoCg_16s32s_C3P3R, Zum16s, Zum32s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_16s32s_C4P3R, innerSBGRToYCoCg_16s32s_C4P3R, Zum16s, Zum32s)
ZUM_TO_YCOCG(zumiBGRToYCoCg_Rev_8u16s_C3P3R, innerBGRToYCoCg_Rev_8u16s_C3P3R, Zum8u, Zum16s)
ZUM_TO_YCOCG(zumiBGRToYCoCg_Rev_8u16s_C4P3R, innerBGRToYCoCg_Rev_8u16s_C4P3R, Zum8u, Zum16s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_Rev_16s_C3P3R, innerSBGRToYCoCg_Rev_16s_C3P3R, Zum16s, Zum16s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_Rev_16s_C4P3R, innerSBGRToYCoCg_Rev_16s_C4P3R, Zum16s, Zum16s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_Rev_16s32s_C3P3R, innerSBGRToYCoCg_Rev_16s32s_C3P3R, Zum16s, Zum32s)
ZUM_TO_YCOCG(zumiSBGRToYCoCg_Rev_16s32s_C4P3R, innerSBGRToYCoCg_Rev_16s32s_C4P3R, Zum16s, Zum32s)

#define ZUM_FROM_YCOCG(name, kernel, T, U) \
  ZUM_ROW_KERNEL(kernel)                   \
  ZUM_EXPORT(name, ThreePlanes<const T>, Pixels<U>, convert(ZUM_KERNEL(kernel), src, dst, roi))
ZUM_FROM_YCOCG(zumiYCoCgToBGR_16s8u_P3C3R, innerYCoCgToBGR_16s8u_P3C3R, Zum16s, Zum8u)
ZUM_FROM_YCOCG(zumiYCoCgToSBGR_16s_P3C3R, innerYCoCgToSBGR_16s_P3C3R, Zum16s, Zum16s)
ZUM_FROM_YCOCG(zumiYCoCgToSBGR_32s16s_P3C3R, innerYCoCgToSBGR_32s16s_P3C3R, Zum32s, Zum16s)
ZUM_FROM_YCOCG(zumiYCoCgToBGR_Rev_16s8u_P3C3R, innerYCoCgToBGR_Rev_16s8u_P3C3R, Zum16s, Zum8u)
ZUM_FROM_YCOCG(zumiYCoCgToSBGR_Rev_16s_P3C3R, innerYCoCgToSBGR_Rev_16s_P3C3R, Zum16s, Zum16s)
ZUM_FROM_YCOCG(zumiYCoCgToSBGR_Rev_32s16s_P3C3R, innerYCoCgToSBGR_Rev_32s16s_P3C3R, Zum32s, Zum16s)

#define ZUM_FROM_YCOCG_AND_FOURTH(name, kernel, T, U) \
  ZUM_ROW_KERNEL(kernel)                              \
  ZUM_EXPORT_WITH(name, ThreePlanes<const T>, Pixels<U>, U fourth, convert(ZUM_KERNEL(kernel), src, dst, roi, fourth))
ZUM_FROM_YCOCG_AND_FOURTH(zumiYCoCgToBGR_16s8u_P3C4R, innerYCoCgToBGR_16s8u_P3C4R, Zum16s, Zum8u)
ZUM_FROM_YCOCG_AND_FOURTH(zumiYCoCgToSBGR_16s_P3C4R, innerYCoCgToSBGR_16s_P3C4R, Zum16s, Zum16s)
ZUM_FROM_YCOCG_AND_FOURTH(zumiYCoCgToSBGR_32s16s_P3C4R, innerYCoCgToSBGR_32s16s_P3C4R, Zum32s, Zum16s)
ZUM_FROM_YCOCG_AND_FOURTH(zumiYCoCgToBGR_Rev_16s8u_P3C4R, innerYCoCgToBGR_Rev_16s8u_P3C4R, Zum16s, Zum8u)
ZUM_FROM_YCOCG_AND_FOURTH(zumiYCoCgToSBGR_Rev_16s_P3C4R, innerYCoCgToSBGR_Rev_16s_P3C4R, Zum16s, Zum16s)
ZUM_FROM_YCOCG_AND_FOURTH(zumiYCoCgToSBGR_Rev_32s16s_P3C4R, innerYCoCgToSBGR_Rev_32s16s_P3C4R, Zum32s, Zum16s)

#endif  // HWY_ONCE
