// RGB to and from hue, saturation, value: the hexcone, its hue circle as wide as the range of the samples.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/hsv.cc"
#include <limits>

#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/exports.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"
#include "models/hexcone-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The whole circle, which is full saturation and full value too.
template <class T>
constexpr float kScale = std::numeric_limits<T>::max();

// How results become integers, and what becomes of those out of range.
struct Truncated : Saturated {
  static HWY_INLINE VI32 integer(VF32 v) { return truncated(v); }
};
struct Rounded : Saturated {
  static HWY_INLINE VI32 integer(VF32 v) { return nearest(v); }
};
struct RoundedLowBits : LowBits {
  static HWY_INLINE VI32 integer(VF32 v) { return nearest(v); }
};

// ---- RGB to HSV

// Which channel gives the hue, as masks: that of the value, red where neither green nor blue is told. On a tie blocks
// and tails choose differently; gray is always red's.
template <class M>
struct HueRule {
  M green, blue;
};
struct BlockTies {
  template <class M>
  static HWY_INLINE HueRule<M> rule(M isRed, M isGreen, M isBlue) {
    return {hn::AndNot(isRed, isGreen), hn::AndNot(isGreen, isBlue)};
  }
};
struct TailTies {
  template <class M>
  static HWY_INLINE HueRule<M> rule(M isRed, M isGreen, M isBlue) {
    return {hn::AndNot(isBlue, isGreen), hn::AndNot(hn::And(isRed, isGreen), isBlue)};
  }
};

template <class T>
VF32 reciprocal(VF32 x);
template <>
HWY_INLINE VF32 reciprocal<Zum8u>(VF32 x) {
  return reciprocalEstimate(x);
}
template <>
HWY_INLINE VF32 reciprocal<Zum16u>(VF32 x) {
  return refinedReciprocal(x);
}

// Everything up to the first division is exact, and done, in samples.
template <class T, class Ties, class Stored>
struct RgbToHsv {
  using V = Vec<T>;

  // Hue in sextants is (plus - minus) / range + offset. For gray, whose range is 1 in place of 0, that gives 0.
  struct Terms {
    V value, range;  // neither of them 0
    V plus, minus, offset;
  };

  struct HueSaturation {
    VI32 hue, saturation;
  };

  static HWY_INLINE Channels<V> apply(const Channels<V>& rgb) {
    const V value = hn::Max(hn::Max(rgb.c0, rgb.c1), rgb.c2), smallest = hn::Min(hn::Min(rgb.c0, rgb.c1), rgb.c2);
    const V r = value - rgb.c0, g = value - rgb.c1, b = value - rgb.c2, one = all<T>(1);
    const auto rule = Ties::rule(rgb.c0 == value, rgb.c1 == value, rgb.c2 == value);
    const Terms terms{hn::Max(value, one), hn::Max(value - smallest, one), choose(rule, b, r, g), choose(rule, g, b, r),
                      choose(rule, hn::Zero(Tag<T>()), all<T>(2), all<T>(4))};
    const auto parts = inParts<RgbToHsv, T>(terms);
    const V saturation = join<Stored>(parts, &HueSaturation::saturation);
    return {join<Stored>(parts, &HueSaturation::hue), hn::IfThenZeroElse(value == smallest, saturation), value};
  }

  template <std::size_t part>
  static HWY_INLINE HueSaturation lanes(const Terms& t) {
    constexpr float kSextant = kScale<T> / 6;
    const VF32 range = partToFloat<part>(t.range);
    const VF32 saturation = reciprocal<T>(partToFloat<part>(t.value)) * range * all(kScale<T>);
    const VF32 c = reciprocal<T>(range);
    const VF32 sextants = partToFloat<part>(t.plus) * c - partToFloat<part>(t.minus) * c;
    const VF32 hue = (sextants + partToFloat<part>(t.offset)) * all(kSextant);
    const VF32 wrapped = addWhere(hue < hn::Zero(Tag<float>()), hue, all(kScale<T>));
    return {Stored::integer(wrapped), Stored::integer(saturation)};
  }

 private:
  template <class M>
  static HWY_INLINE V choose(const HueRule<M>& rule, V red, V green, V blue) {
    return hn::IfThenElse(rule.blue, blue, hn::IfThenElse(rule.green, green, red));
  }
};

// ---- HSV to RGB

template <class T, class Stored>
struct HsvToRgb {
  using V = Vec<T>;

  struct Terms {
    V hue, saturation, value;
  };

  // The sextant, the smallest channel, and the one in between where it falls and where it rises with the hue.
  struct Candidates {
    VI32 sextant, smallest, falling, rising;
  };

  // Gray needs no care: without saturation all candidates are the value.
  static HWY_INLINE Channels<V> apply(const Channels<V>& hsv) {
    const V circle = all(std::numeric_limits<T>::max()), value = hsv.c2;
    const auto parts = inParts<HsvToRgb, T>(Terms{hn::IfThenZeroElse(hsv.c0 == circle, hsv.c0), hsv.c1, value});
    const V sextant = join<Saturated>(parts, &Candidates::sextant),
            smallest = join<Stored>(parts, &Candidates::smallest), falling = join<Stored>(parts, &Candidates::falling),
            rising = join<Stored>(parts, &Candidates::rising);
    return bySextant(sextant, value, falling, rising, smallest);
  }

  template <std::size_t part>
  static HWY_INLINE Candidates lanes(const Terms& t) {
    constexpr float kPerDegree = 1.0f / 60, kDegrees = 360.0f / kScale<T>, kUnit = 1.0f / kScale<T>;
    const VF32 value = partToFloat<part>(t.value);
    const VF32 hue = partToFloat<part>(t.hue) * all(kPerDegree) * all(kDegrees);
    const VI32 sextant = truncated(hue);
    const VF32 chroma = partToFloat<part>(t.saturation) * all(kUnit) * value;
    const VF32 smallest = value - chroma;
    const VF32 ramp = (hue - toFloat(sextant)) * chroma;
    return {sextant, Stored::integer(smallest), Stored::integer(value - ramp), Stored::integer(smallest + ramp)};
  }
};

// ---- Row kernels

constexpr std::size_t kBlock = 4;

template <class Layout>
HWY_INLINE void forward(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<kBlock, Layout, RgbToHsv<Zum8u, BlockTies, Truncated>, RgbToHsv<Zum8u, TailTies, RoundedLowBits>,
                Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void forward(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<kBlock, Layout, RgbToHsv<Zum16u, BlockTies, Rounded>, RgbToHsv<Zum16u, TailTies, RoundedLowBits>,
                Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void inverse(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<kBlock, Layout, HsvToRgb<Zum8u, Truncated>, HsvToRgb<Zum8u, RoundedLowBits>, Layout>(src, dst, width);
}
// One form for all columns.
template <class Layout>
HWY_INLINE void inverse(const Zum16u* src, Zum16u* dst, int width) {
  columns<Layout, HsvToRgb<Zum16u, RoundedLowBits>, Layout>(src, dst, 0, width);
}

void innerRGBToHSV_8u_C3R(const Zum8u* src, Zum8u* dst, int width) { forward<Packed3<Zum8u>>(src, dst, width); }
void innerRGBToHSV_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) { forward<ThreeOf4<Zum8u>>(src, dst, width); }
void innerRGBToHSV_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { forward<Packed3<Zum16u>>(src, dst, width); }
void innerRGBToHSV_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { forward<ThreeOf4<Zum16u>>(src, dst, width); }
void innerHSVToRGB_8u_C3R(const Zum8u* src, Zum8u* dst, int width) { inverse<Packed3<Zum8u>>(src, dst, width); }
void innerHSVToRGB_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) { inverse<ThreeOf4<Zum8u>>(src, dst, width); }
void innerHSVToRGB_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { inverse<Packed3<Zum16u>>(src, dst, width); }
void innerHSVToRGB_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) { inverse<ThreeOf4<Zum16u>>(src, dst, width); }

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

ZUM_MODEL_FUNCTION(zumiRGBToHSV_8u_C3R, innerRGBToHSV_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToHSV_8u_AC4R, innerRGBToHSV_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToHSV_16u_C3R, innerRGBToHSV_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToHSV_16u_AC4R, innerRGBToHSV_16u_AC4R, Zum16u)

ZUM_MODEL_FUNCTION(zumiHSVToRGB_8u_C3R, innerHSVToRGB_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiHSVToRGB_8u_AC4R, innerHSVToRGB_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiHSVToRGB_16u_C3R, innerHSVToRGB_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiHSVToRGB_16u_AC4R, innerHSVToRGB_16u_AC4R, Zum16u)

#endif  // HWY_ONCE
