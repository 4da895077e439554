// The forms of hue, lightness, saturation: the double hexcone, lightness halfway between the largest and the smallest
// channel. Of the integer forms everything up to the first rounding is exact, and done, in samples.
#if defined(ZUM_MODELS_HLS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_MODELS_HLS_INL_H
#undef ZUM_MODELS_HLS_INL_H
#else
#define ZUM_MODELS_HLS_INL_H
#endif

#include <limits>

#include "frame/float-inl.h"
#include "models/hexcone-inl.h"
#include "zumcc.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The whole circle, full lightness and full saturation.
template <class T>
inline constexpr float kHlsTop = std::numeric_limits<T>::max();
template <>
inline constexpr float kHlsTop<float> = 1;

// The largest channel, on a tie red before green before blue. The hue is 60 (plus - minus) / range degrees away from
// that of this channel alone.
template <class V>
struct LargestChannel {
  using M = hn::Mask<hn::DFromV<V>>;

  V value, smallest;
  M isRed, isGreen;

  explicit HWY_INLINE LargestChannel(const Channels<V>& rgb)
      : value(hn::Max(hn::Max(rgb.c0, rgb.c1), rgb.c2)),
        smallest(hn::Min(hn::Min(rgb.c0, rgb.c1), rgb.c2)),
        isRed(rgb.c0 == value),
        isGreen(rgb.c1 == value) {}

  HWY_INLINE V choose(V red, V green, V blue) const {
    return hn::IfThenElse(isRed, red, hn::IfThenElse(isGreen, green, blue));
  }
  HWY_INLINE V plus(const Channels<V>& rgb) const { return choose(rgb.c1, rgb.c2, rgb.c0); }
  HWY_INLINE V minus(const Channels<V>& rgb) const { return choose(rgb.c2, rgb.c0, rgb.c1); }
};

// ---- RGB to HLS

struct EstimatedReciprocal {
  static HWY_INLINE VF32 of(VF32 x) { return reciprocalEstimate(x); }
};
struct RefinedReciprocal {
  static HWY_INLINE VF32 of(VF32 x) { return refinedReciprocal(x); }
};

// Integer samples. Hues are counted in units of two degrees, so that an offset is a sample; that halves everything and
// rounds nothing in another way. One below red starts from the whole circle: no other could be negative.
template <class T, class Reciprocal>
struct RgbToHls {
  using V = Vec<T>;

  struct Terms {
    V range, reach;  // neither of them 0
    V plus, minus, offset;
  };

  struct HueSaturation {
    VI32 hue, saturation;
  };

  static HWY_INLINE Channels<V> apply(const Channels<V>& rgb) {
    const LargestChannel<V> largest(rgb);
    const V value = largest.value, smallest = largest.smallest, one = all<T>(1);
    const V range = value - smallest, valueLeft = hn::Not(value), smallestLeft = hn::Not(smallest);
    // The largest range with this lightness.
    const V reach = hn::Min(hn::SaturatedAdd(value, smallest), hn::SaturatedAdd(valueLeft, smallestLeft));
    const V red = hn::IfThenElseZero(rgb.c1 < rgb.c2, all<T>(180));
    const Terms terms{hn::Max(range, one), hn::Max(reach, one), largest.plus(rgb), largest.minus(rgb),
                      largest.choose(red, all<T>(60), all<T>(120))};
    const auto parts = inParts<RgbToHls, T>(terms);
    const V saturation = join<Saturated>(parts, &HueSaturation::saturation);
    return {join<Saturated>(parts, &HueSaturation::hue), hn::Not(hn::AverageRound(valueLeft, smallestLeft)),
            hn::IfThenZeroElse(value == smallest, saturation)};
  }

  template <std::size_t part>
  static HWY_INLINE HueSaturation lanes(const Terms& t) {
    constexpr float kPerTwoDegrees = kHlsTop<T> / 360 * 2;
    const VF32 range = partToFloat<part>(t.range);
    const VF32 saturation = Reciprocal::of(partToFloat<part>(t.reach)) * range * all(kHlsTop<T>);
    const VF32 turn = partOfDifference<30, part>(t.plus, t.minus) * Reciprocal::of(range);
    const VF32 hue = turn + partToFloat<part>(t.offset);
    return {truncated(hue * all(kPerTwoDegrees)), truncated(saturation)};
  }
};

// Single precision.
struct FloatRgbToHls {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& rgb) {
    constexpr float kLargestGrayRange = 0x1p-23f;
    const VF32 zero = hn::Zero(Tag<float>()), half = all(0.5f), circle = all(360.0f);
    const LargestChannel<VF32> largest(rgb);
    const VF32 range = largest.value - largest.smallest, sum = largest.value + largest.smallest, lightness = half * sum;
    const VF32 saturation = range / hn::IfThenElse(lightness > half, all(2.0f) - sum, sum);
    const VF32 turn = (largest.plus(rgb) - largest.minus(rgb)) * all(60.0f) / range;
    const VF32 hue = turn + largest.choose(zero, all(120.0f), all(240.0f));
    const VF32 wrapped = addWhere(hue < zero, hue, circle);
    const auto isColour = range > all(kLargestGrayRange);
    return {hn::IfThenElseZero(isColour, wrapped / circle), lightness, hn::IfThenElseZero(isColour, saturation)};
  }
};

// ---- HLS to RGB

// The channels of a colour lie between two values.
struct ChannelRange {
  VF32 smallest, largest, width;
};

// How samples become degrees and fractions, those the range of the channels, and 0 to 60 degrees a ramp from its
// smallest value to its largest: multiplying by reciprocals, or dividing.
template <class T>
struct ByReciprocals {
  static HWY_INLINE VF32 degrees(VF32 hue) { return hue * all(360 / kHlsTop<T>); }
  static HWY_INLINE VF32 fraction(VF32 x) { return x * all(1 / kHlsTop<T>); }
  static HWY_INLINE VF32 largest(VF32 l, VF32 s) {
    const VF32 product = l * s;
    return hn::IfThenElse(l <= all(0.5f), product + l, (l + s) - product);
  }
  static HWY_INLINE VF32 ramp(VF32 degrees, const ChannelRange& range) {
    return degrees * all(1.0f / 60) * range.width + range.smallest;
  }
};
template <class T>
struct ByDivisions {
  static HWY_INLINE VF32 degrees(VF32 hue) { return hue * all(360.0f) / all(kHlsTop<T>); }
  static HWY_INLINE VF32 fraction(VF32 x) { return x / all(kHlsTop<T>); }
  static HWY_INLINE VF32 largest(VF32 l, VF32 s) {
    return hn::IfThenElse(l <= all(0.5f), (all(1.0f) + s) * l, (l + s) - s * l);
  }
  static HWY_INLINE VF32 ramp(VF32 degrees, const ChannelRange& range) {
    return range.width * degrees / all(60.0f) + range.smallest;
  }
};

template <class Arithmetic>
HWY_INLINE ChannelRange rangeOf(VF32 l, VF32 s) {
  const VF32 largest = Arithmetic::largest(l, s), smallest = l + l - largest;
  return {smallest, largest, largest - smallest};
}

// How fractions become integers.
template <class T>
struct Truncated {
  static HWY_INLINE VI32 integer(VF32 v) { return truncated(v * all(kHlsTop<T>)); }
};
template <class T>
struct AlmostRounded {
  static HWY_INLINE VI32 integer(VF32 v) { return truncated(v * all(kHlsTop<T>) + all(0.49999f)); }
};
template <class T>
struct Doubled {
  static HWY_INLINE VI32 integer(VF32 v) { return hn::ShiftLeft<1>(truncated(v * all(kHlsTop<T> / 2))); }
};

// Integer samples: the hue's sextant tells which channel is the largest, which the smallest, and which is on a ramp.
template <class T, class Arithmetic, class Stored>
struct HlsToRgb {
  using V = Vec<T>;

  struct Candidates {
    VI32 sextant, smallest, ramp, largest;
  };

  static HWY_INLINE Channels<V> apply(const Channels<V>& hls) {
    const auto parts = inParts<HlsToRgb, T>(hls);
    // The end of the circle, 360 degrees, is one of the last sextant.
    const V sextant = hn::Min(join<Saturated>(parts, &Candidates::sextant), all<T>(5)),
            smallest = join<Saturated>(parts, &Candidates::smallest), ramp = join<Saturated>(parts, &Candidates::ramp),
            largest = join<Saturated>(parts, &Candidates::largest);
    return bySextant(sextant, largest, ramp, ramp, smallest);
  }

  // The channel on the ramp is that of red, green or blue, which stand at the hue + 120, + 0 and - 120 degrees: it
  // rises from 0 degrees, or 360, to 60 and falls from 180 to 240.
  template <std::size_t part>
  static HWY_INLINE Candidates lanes(const Channels<V>& hls) {
    static constexpr Floats8 kPosition{{0, 120, -120, 0, 120, -120, -120}}, kFoot{{0, 240, 0, 240, 360, 240, 240}};
    const VF32 hue = Arithmetic::degrees(partToFloat<part>(hls.c0));
    const ChannelRange range = rangeOf<Arithmetic>(Arithmetic::fraction(partToFloat<part>(hls.c1)),
                                                   Arithmetic::fraction(partToFloat<part>(hls.c2)));
    const VI32 sextant = truncated(hue * all(1.0f / 60));
    const VF32 fromFoot = hn::Abs(hue + lookUp(kPosition, sextant) - lookUp(kFoot, sextant));
    return {sextant, Stored::integer(range.smallest), Stored::integer(Arithmetic::ramp(fromFoot, range)),
            Stored::integer(range.largest)};
  }
};

// Single precision, any hue.
template <class Arithmetic>
struct FloatHlsToRgb {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& hls) {
    const VF32 hue = Arithmetic::degrees(hls.c0), third = all(120.0f), circle = all(360.0f);
    const ChannelRange range = rangeOf<Arithmetic>(hls.c1, hls.c2);
    const VF32 red = hue + third, blue = hue - third;
    return {channel(addWhere(red > circle, red, hn::Neg(circle)), range), channel(hue, range),
            channel(addWhere(blue < hn::Zero(Tag<float>()), blue, circle), range)};
  }

 private:
  static HWY_INLINE VF32 channel(VF32 position, const ChannelRange& range) {
    const VF32 foot = all(240.0f);
    const auto rises = position < all(60.0f);
    const VF32 ramp = Arithmetic::ramp(hn::IfThenElse(rises, position, foot - position), range);
    const VF32 behind = hn::IfThenElse(position < foot, ramp, range.smallest);
    return hn::IfThenElse(rises, ramp, hn::IfThenElse(position < all(180.0f), range.largest, behind));
  }
};

// Gray is its lightness, whatever the form makes of it.
template <class Form>
struct GrayKept {
  template <class V>
  static HWY_INLINE Channels<V> apply(const Channels<V>& hls) {
    const Channels<V> rgb = Form::apply(hls);
    const auto isGray = hls.c2 == hn::Zero(hn::DFromV<V>());
    return {hn::IfThenElse(isGray, hls.c1, rgb.c0), hn::IfThenElse(isGray, hls.c1, rgb.c1),
            hn::IfThenElse(isGray, hls.c1, rgb.c2)};
  }
};

// ---- Bytes

using BlockRgbToHls8 = RgbToHls<Zum8u, EstimatedReciprocal>;
using TailRgbToHls8 = RgbToHls<Zum8u, RefinedReciprocal>;
using HlsToRgb8 = HlsToRgb<Zum8u, ByReciprocals<Zum8u>, Truncated<Zum8u>>;

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
