// RGB to and from L*u*v*.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/luv.cc"
#include <limits>

#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/cie.h"
#include "models/exports.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"
#include "models/cie-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The largest code.
template <class T>
constexpr float kTop = std::numeric_limits<T>::max();

// The chromaticity of white. The columns of the inverse behind the last block know it in more digits.
struct White {
  float u, v;
};
constexpr White kWhite{0.197839f, 0.468342f}, kFinerWhite{0.19783941f, 0.4683422f};

// What u* and v* are coded from, and the ranges that the codes stand for.
constexpr float kLowestU = -134, kLowestV = -140, kRangeU = 354, kRangeV = 262, kRangeL = 100;

constexpr float kNearlyHalf = 0.49999f;

// The lightness from which on it is a cube root, and the one below which there is only black.
constexpr float kEvenEndL = 7.9996247f, kBlackL = 0.00009f;

// The samples of all parts.
template <class Range, class Parts>
HWY_INLINE auto joinChannels(const Parts& parts) {
  using Part = typename Parts::value_type;
  return Channels<decltype(join<Range>(parts, &Part::c0))>{join<Range>(parts, &Part::c0), join<Range>(parts, &Part::c1),
                                                           join<Range>(parts, &Part::c2)};
}

// How numbers become integers.
struct Truncation {
  static HWY_INLINE VI32 of(VF32 v) { return truncated(v); }
};
struct Rounding {
  static HWY_INLINE VI32 of(VF32 v) { return nearest(v); }
};

// What becomes of integers out of range, beside Saturated, SaturatedFromLowest and LowBits: all that are negative end
// at the bottom, the most negative one, which stands for numbers out of the range of integers, among them.
struct SaturatedNegative : Saturated {
  using Saturated::join;
  static HWY_INLINE VU16 join(VI32 v0, VI32 v1) {
    const VI32 zero = hn::Zero(Tag<std::int32_t>());
    return Saturated::join(hn::Max(v0, zero), hn::Max(v1, zero));
  }
};

// ---- Forward, 8-bit

// The code of L* by the rounded luminance.
constexpr ByteTable lightnessCodes() {
  ByteTable table{};
  for (int i = 0; i < 256; ++i) {
    const double y = i / 255.0, lightness = y <= 0.008856 ? 903.3 * y : 116 * zum::cubeRoot(y) - 16;
    table.at[i] = static_cast<std::uint8_t>(2.55 * lightness + 0.5);
  }
  return table;
}
constexpr ByteTable kLightnessCodes = lightnessCodes();

struct RgbToLuv8 {
  // The luminance as an index, and the chromaticity relative to that of white.
  struct Colour {
    VI32 luminance;
    VF32 u, v;
  };
  using Colours = std::array<Colour, kParts<Zum8u>>;

  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& rgb) {
    const Colours colours = inParts<RgbToLuv8, Zum8u>(rgb);
    const VU8 lightness = lookUp<kLightnessCodes>(join<Saturated>(colours, &Colour::luminance));
    const auto codes = inParts<Coded, Zum8u>(typename Coded::Terms{lightness, colours});
    return {lightness, join<Saturated>(codes, &Coded::Codes::u), join<Saturated>(codes, &Coded::Codes::v)};
  }

  template <std::size_t part>
  static HWY_INLINE Colour lanes(const Channels<VU8>& rgb) {
    const Channels<VF32> scaled = rgbToXyz(partToFloat<part>(rgb));
    const VF32 top = all(kTop<Zum8u>);
    const VF32 x = scaled.c0 / top, y = scaled.c1 / top, z = scaled.c2 / top;
    // Not 0: the chromaticity of black is of no account, but has to be a number.
    const VF32 sum = hn::Max((all(3.0f) * z + x) + all(15.0f) * y, all(std::numeric_limits<float>::min()));
    return {truncated(all(kNearlyHalf) + scaled.c1), (all(4.0f) * x) / sum - all(kWhite.u),
            (all(9.0f) * y) / sum - all(kWhite.v)};
  }

 private:
  struct Coded {
    struct Terms {
      VU8 lightness;
      const Colours& colours;
    };
    struct Codes {
      VI32 u, v;
    };

    template <std::size_t part>
    static HWY_INLINE Codes lanes(const Terms& t) {
      // u* is 13 L* times the relative chromaticity; L* is the code times 100 / 255.
      constexpr float kSlopeU = 13 * kRangeL / kRangeU, kSlopeV = 13 * kRangeL / kRangeV;
      constexpr float kOffsetU = 97.02542f, kOffsetV = 136.75954f;  // the code of 0, and half a unit
      const VF32 lightness = partToFloat<part>(t.lightness);
      const Colour& colour = std::get<part>(t.colours);
      return {truncated((all(kSlopeU) * lightness) * colour.u + all(kOffsetU)),
              truncated((lightness * all(kSlopeV)) * colour.v + all(kOffsetV))};
    }
  };
};

// ---- Forward, 16-bit and floating point

template <std::size_t terms>
HWY_INLINE VF32 lightnessOf(VF32 y, hn::Mask<Tag<float>> even, const Expansion& at,
                            const std::array<float, terms>& series) {
  return hn::IfThenElse(even, all(kEvenSlope) * y, cubeRoot(y, at, series) * all(116.0f) - all(16.0f));
}

// What to divide by for the chromaticity.
HWY_INLINE VF32 chromaticSum(const Channels<VF32>& xyz) { return (all(3.0f) * xyz.c2 + all(15.0f) * xyz.c1) + xyz.c0; }
HWY_INLINE VF32 notZero(VF32 sum) { return hn::IfThenElse(sum == hn::Zero(Tag<float>()), all(3.0f), sum); }

HWY_INLINE Channels<VF32> luvOf(VF32 lightness, VF32 u, VF32 v) {
  const VF32 scale = all(13.0f) * lightness;
  return {lightness, (u - all(kWhite.u)) * scale, (v - all(kWhite.v)) * scale};
}

// The luminance chooses its cell by one rule, L* is coded by another.
template <class Cell, class Code, class Range>
struct RgbToLuv16 {
  static HWY_INLINE Channels<VU16> apply(const Channels<VU16>& rgb) {
    return joinChannels<Range>(inParts<RgbToLuv16, Zum16u>(rgb));
  }

  template <std::size_t part>
  static HWY_INLINE Channels<VI32> lanes(const Channels<VU16>& rgb) {
    constexpr float kTop16 = kTop<Zum16u>, kEvenEnd16 = 580.378f;
    const Channels<VF32> xyz = rgbToXyz(partToFloat<part>(rgb));
    const Expansion at = expansionAt<kLuvRoots>(hn::ShiftRight<9>(Cell::of(xyz.c1)));
    const VF32 lightness = lightnessOf(xyz.c1 * all(1 / kTop16), xyz.c1 <= all(kEvenEnd16), at, kSixTerms);
    const VF32 r = refinedReciprocal(notZero(chromaticSum(xyz)));
    const Channels<VF32> luv = luvOf(lightness, (all(4.0f) * xyz.c0) * r, (all(9.0f) * xyz.c1) * r);
    // v* is coded half a unit high.
    return {Code::of(all(655.35f) * luv.c0), nearest((luv.c1 - all(kLowestU)) * all(kTop16 / kRangeU)),
            nearest((luv.c2 - all(kLowestV)) * all(kTop16 / kRangeV) + all(0.5f))};
  }
};

// What has no chromaticity, in blocks and behind them.
struct WithoutSum {
  static HWY_INLINE Halves<VF32> chromaticity(const Channels<VF32>& xyz) {
    const VF32 r = refinedReciprocal(notZero(chromaticSum(xyz)));
    return {(all(4.0f) * xyz.c0) * r, (all(9.0f) * xyz.c1) * r};
  }
};
struct WithoutZ {
  static HWY_INLINE Halves<VF32> chromaticity(const Channels<VF32>& xyz) {
    const auto none = xyz.c2 == hn::Zero(Tag<float>());
    const VF32 r = refinedReciprocal(chromaticSum(xyz));
    return {hn::IfThenZeroElse(none, (all(4.0f) * xyz.c0) * r), hn::IfThenZeroElse(none, (all(9.0f) * xyz.c1) * r)};
  }
};

template <class Colourless>
struct RgbToLuv32 {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& rgb) {
    constexpr auto kSeries = eightTerms(374.0f / 19683, 935.0f / 59049);
    const Channels<VF32> xyz = rgbToXyz(rgb);
    const VF32 y = xyz.c1;
    // A luminance of 1 is behind the last cell, where this stands for a root and its inverse.
    const auto behind = y >= all(1.0f);
    const VF32 third = all(1.0f / 3);
    const Expansion in = expansionAt<kLuvRoots>(truncated(all(static_cast<float>(kLuvCells)) * y));
    const Expansion at{hn::IfThenElse(behind, third, in.root), hn::IfThenElse(behind, third, in.inverse)};
    const Halves<VF32> uv = Colourless::chromaticity(xyz);
    return luvOf(lightnessOf(y, y <= all(kEvenEnd), at, kSeries), uv.a, uv.b);
  }
};

// ---- Inverse, blocks: multiplications by reciprocals

template <class T>
HWY_INLINE VF32 blockReciprocal(VF32 x) {
  return sizeof(T) == 1 ? reciprocalEstimate(x) : refinedReciprocal(x);
}

// What of black is raised, so that it has a reciprocal.
enum class Raised { kSample, kLightness };

template <class T, Raised raised>
struct LuvToRgbBlock {
  static HWY_INLINE Channels<Vec<T>> apply(const Channels<Vec<T>>& luv) {
    return joinChannels<SaturatedFromLowest>(inParts<LuvToRgbBlock, T>(luv));
  }

  template <std::size_t part>
  static HWY_INLINE Channels<VI32> lanes(const Channels<Vec<T>>& luv) {
    const Channels<VF32> codes = partToFloat<part>(luv);
    const VF32 unit = all(kRangeL / kTop<T>);
    const VF32 lightness = raised == Raised::kSample ? notBlack(codes.c0) * unit : notBlack(codes.c0 * unit);
    const VF32 c = blockReciprocal<T>(all(13.0f) * lightness);
    const VF32 u = (codes.c1 * all(kRangeU / kTop<T>) + all(kLowestU)) * c + all(kWhite.u),
               v = (codes.c2 * all(kRangeV / kTop<T>) + all(kLowestV)) * c + all(kWhite.v);
    const VF32 root = (lightness + all(16.0f)) * all(1.0f / 116);
    const VF32 relativeY =
        hn::IfThenElse(lightness <= all(kEvenEndL), all(1 / kEvenSlope) * lightness, root * (root * root));
    const VF32 y = relativeY * all(kTop<T>), w = blockReciprocal<T>(v) * y, x = (all(2.25f) * w) * u;
    const VF32 z = (w * all(3.0f) - all(5.0f) * y) - all(1.0f / 3) * x;
    const Channels<VF32> rgb = xyzToRgb({x, y, z});
    return {truncated(rgb.c0), truncated(rgb.c1), truncated(rgb.c2)};
  }

 private:
  static HWY_INLINE VF32 notBlack(VF32 v) { return addWhere(v <= all(kBlackL), v, all(kBlackL)); }
};

// ---- Inverse, by divisions: columns behind the last block, and floating point

// Tristimulus values, white's luminance being `top`.
HWY_INLINE Channels<VF32> dividedXyz(const Channels<VF32>& luv, const White& white, float top) {
  const VF32 root = (all(16.0f) + luv.c0) / all(116.0f), scale = all(13.0f) * luv.c0;
  const VF32 relativeY = hn::IfThenElse(luv.c0 >= all(kEvenEndL), root * (root * root), luv.c0 / all(kEvenSlope));
  const VF32 u = luv.c1 / scale + all(white.u), v = luv.c2 / scale + all(white.v);
  const VF32 y = relativeY * all(top), w = y / v, x = (all(2.25f) * w) * u;
  return {x, y, (w * all(3.0f) - all(5.0f) * y) - x / all(3.0f)};
}

template <class T>
struct LuvToRgbTail {
  static HWY_INLINE Channels<Vec<T>> apply(const Channels<Vec<T>>& luv) {
    return joinChannels<SaturatedNegative>(inParts<LuvToRgbTail, T>(luv));
  }

  template <std::size_t part>
  static HWY_INLINE Channels<VI32> lanes(const Channels<Vec<T>>& luv) {
    const Channels<VF32> codes = partToFloat<part>(luv);
    const VF32 top = all(kTop<T>);
    const Channels<VF32> values{(codes.c0 * all(kRangeL)) / top, (codes.c1 * all(kRangeU)) / top + all(kLowestU),
                                (codes.c2 * all(kRangeV)) / top + all(kLowestV)};
    const Channels<VF32> xyz = dividedXyz(values, kFinerWhite, kTop<T>);
    const VF32 half = all(kNearlyHalf);
    const VF32 r = ((half - all(1.53715f) * xyz.c1) + all(3.240479f) * xyz.c0) - all(0.498535f) * xyz.c2,
               g = ((half + all(1.875991f) * xyz.c1) + all(-0.969256f) * xyz.c0) + all(0.041556f) * xyz.c2;
    const auto black = hn::RebindMask(Tag<std::int32_t>(), values.c0 < all(kBlackL));
    return {hn::IfThenZeroElse(black, truncated(r)), hn::IfThenZeroElse(black, truncated(g)),
            hn::IfThenZeroElse(black, blue(xyz))};
  }

 private:
  // The last steps are made in double precision.
  static HWY_INLINE VI32 blue(const Channels<VF32>& xyz) {
    const Halves<VF64> xy = toDouble(all(0.055648f) * xyz.c0 - all(0.204043f) * xyz.c1), z = toDouble(xyz.c2);
    const VF64 half = all(0.49999), ofZ = all(1.057311);
    return truncated({(xy.a + half) + ofZ * z.a, (xy.b + half) + ofZ * z.b});
  }
};

struct LuvToRgb32 {
  static HWY_INLINE Channels<VF32> apply(const Channels<VF32>& luv) {
    const Channels<VF32> rgb = xyzToRgb(dividedXyz(luv, kWhite, 1));
    const auto black = isBlack(luv);
    return {stored(black, rgb.c0), stored(black, rgb.c1), stored(black, rgb.c2)};
  }

  static HWY_INLINE hn::Mask<Tag<float>> isBlack(const Channels<VF32>& luv) { return luv.c0 < all(kBlackL); }

 private:
  static HWY_INLINE VF32 stored(hn::Mask<Tag<float>> black, VF32 v) {
    return hn::IfThenZeroElse(black, unitLimited(v));
  }
};

// ---- Row kernels

// Of all forms that tell block columns from others, but for three channels of bytes.
constexpr std::size_t kBlock = 4;

template <class Layout>
HWY_INLINE void forward8(const Zum8u* src, Zum8u* dst, int width) {
  columns<Layout, RgbToLuv8, Layout>(src, dst, 0, width);
}
template <class Layout>
HWY_INLINE void forward16u(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<kBlock, Layout, RgbToLuv16<Truncation, Truncation, Saturated>,
                RgbToLuv16<Truncation, Rounding, LowBits>, Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void forward16s(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<kBlock, FromLowest<Layout>, RgbToLuv16<Truncation, Truncation, Saturated>,
                RgbToLuv16<Rounding, Rounding, Saturated>, FromLowest<Layout>>(src, dst, width);
}
template <class Layout>
HWY_INLINE void forward32(const Zum32f* src, Zum32f* dst, int width) {
  blocksAndTail<kBlock, Layout, RgbToLuv32<WithoutSum>, RgbToLuv32<WithoutZ>, Layout>(src, dst, width);
}

template <std::size_t block, class Layout>
HWY_INLINE void inverse8(const Zum8u* src, Zum8u* dst, int width) {
  blocksAndTail<block, Layout, LuvToRgbBlock<Zum8u, Raised::kLightness>, LuvToRgbTail<Zum8u>, Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void inverse16u(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<kBlock, Layout, LuvToRgbBlock<Zum16u, Raised::kSample>, LuvToRgbTail<Zum16u>, Layout>(src, dst, width);
}
template <class Layout>
HWY_INLINE void inverse16s(const Zum16u* src, Zum16u* dst, int width) {
  blocksAndTail<kBlock, FromLowest<Layout>, LuvToRgbBlock<Zum16u, Raised::kLightness>, LuvToRgbTail<Zum16u>,
                FromLowest<Layout>>(src, dst, width);
}

// The columns up to and with the first black one, which ends a row.
template <class Layout>
HWY_INLINE std::size_t endOfRow(const Zum32f* src, std::size_t width) {
  std::size_t x = 0;
  for (; x + Layout::kPixels <= width; x += Layout::kPixels) {
    const auto black = LuvToRgb32::isBlack(Layout::load(Layout::at(src, x), Whole()));
    if (!hn::AllFalse(Tag<float>(), black)) break;
  }
  while (x < width) {
    float lightness;
    std::memcpy(&lightness, Layout::at(src, x++), sizeof lightness);
    if (lightness < kBlackL) break;
  }
  return x;
}
template <class Layout>
HWY_INLINE void inverse32(const Zum32f* src, Zum32f* dst, int width) {
  columns<Layout, LuvToRgb32, Layout>(src, dst, 0, endOfRow<Layout>(src, width));
}

void innerRGBToLUV_8u_C3R(const Zum8u* src, Zum8u* dst, int width) { forward8<Packed3<Zum8u>>(src, dst, width); }
void innerRGBToLUV_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) { forward8<ThreeOf4<Zum8u>>(src, dst, width); }
void innerRGBToLUV_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { forward16u<Packed3<Zum16u>>(src, dst, width); }
void innerRGBToLUV_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  forward16u<ThreeOf4<Zum16u>>(src, dst, width);
}
void innerRGBToLUV_16s_C3R(const Zum16u* src, Zum16u* dst, int width) { forward16s<Packed3<Zum16u>>(src, dst, width); }
void innerRGBToLUV_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  forward16s<ThreeOf4<Zum16u>>(src, dst, width);
}
void innerRGBToLUV_32f_C3R(const Zum32f* src, Zum32f* dst, int width) { forward32<Packed3<Zum32f>>(src, dst, width); }
void innerRGBToLUV_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) { forward32<ThreeOf4<Zum32f>>(src, dst, width); }
void innerLUVToRGB_8u_C3R(const Zum8u* src, Zum8u* dst, int width) { inverse8<8, Packed3<Zum8u>>(src, dst, width); }
void innerLUVToRGB_8u_AC4R(const Zum8u* src, Zum8u* dst, int width) {
  inverse8<kBlock, ThreeOf4<Zum8u>>(src, dst, width);
}
void innerLUVToRGB_16u_C3R(const Zum16u* src, Zum16u* dst, int width) { inverse16u<Packed3<Zum16u>>(src, dst, width); }
void innerLUVToRGB_16u_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  inverse16u<ThreeOf4<Zum16u>>(src, dst, width);
}
void innerLUVToRGB_16s_C3R(const Zum16u* src, Zum16u* dst, int width) { inverse16s<Packed3<Zum16u>>(src, dst, width); }
void innerLUVToRGB_16s_AC4R(const Zum16u* src, Zum16u* dst, int width) {
  inverse16s<ThreeOf4<Zum16u>>(src, dst, width);
}
void innerLUVToRGB_32f_C3R(const Zum32f* src, Zum32f* dst, int width) { inverse32<Packed3<Zum32f>>(src, dst, width); }
void innerLUVToRGB_32f_AC4R(const Zum32f* src, Zum32f* dst, int width) { inverse32<ThreeOf4<Zum32f>>(src, dst, width); }

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

ZUM_MODEL_FUNCTION(zumiRGBToLUV_8u_C3R, innerRGBToLUV_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToLUV_8u_AC4R, innerRGBToLUV_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiRGBToLUV_16u_C3R, innerRGBToLUV_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToLUV_16u_AC4R, innerRGBToLUV_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiRGBToLUV_16s_C3R, innerRGBToLUV_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiRGBToLUV_16s_AC4R, innerRGBToLUV_16s_AC4R, Zum16s)

ZUM_MODEL_FUNCTION(zumiLUVToRGB_8u_C3R, innerLUVToRGB_8u_C3R, Zum8u)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_8u_AC4R, innerLUVToRGB_8u_AC4R, Zum8u)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_16u_C3R, innerLUVToRGB_16u_C3R, Zum16u)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_16u_AC4R, innerLUVToRGB_16u_AC4R, Zum16u)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_16s_C3R, innerLUVToRGB_16s_C3R, Zum16s)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_16s_AC4R, innerLUVToRGB_16s_AC4R, Zum16s)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_32f_C3R, innerLUVToRGB_32f_C3R, Zum32f)
ZUM_MODEL_FUNCTION(zumiLUVToRGB_32f_AC4R, innerLUVToRGB_32f_AC4R, Zum32f)

// These steps are counted in bytes.

namespace zum {
HWY_EXPORT(innerRGBToLUV_32f_C3R);
HWY_EXPORT(innerRGBToLUV_32f_AC4R);
}  // namespace zum

ZUM_EXPORT(zumiRGBToLUV_32f_C3R, Pixels<const Zum32f>, Pixels<Zum32f>,
           convertRowsInParallel(ZUM_KERNEL(innerRGBToLUV_32f_C3R), src, dst, roi))
ZUM_EXPORT(zumiRGBToLUV_32f_AC4R, Pixels<const Zum32f>, Pixels<Zum32f>,
           convertRowsInParallel(ZUM_KERNEL(innerRGBToLUV_32f_AC4R), src, dst, roi))

#endif  // HWY_ONCE
