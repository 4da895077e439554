// Single-precision arithmetic on integer samples. A vector of samples has as many parts as vectors of floats are needed
// for it: four for bytes, two for 16-bit samples, one for floats. A part takes four samples of every 128-bit block, so
// that samples widen and narrow without leaving their block.
//
// The order of operations is part of every result. What looks like a step that could be saved changes a rounding.
#if defined(ZUM_FRAME_FLOAT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_FRAME_FLOAT_INL_H
#undef ZUM_FRAME_FLOAT_INL_H
#else
#define ZUM_FRAME_FLOAT_INL_H
#endif

#include <array>
#include <limits>

#include "frame/reciprocal.h"
#include "frame/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Single operations

// The reciprocal estimate of x86 processors: rcpps. The 512-bit estimate is another one, with other results. Elsewhere
// x must be normal and have a normal reciprocal.
HWY_INLINE VF32 reciprocalEstimate(VF32 x) {
#if HWY_TARGET <= HWY_AVX3
  const __m256 lower = _mm256_rcp_ps(_mm512_castps512_ps256(x.raw));
  const __m256 upper = _mm256_rcp_ps(_mm512_extractf32x8_ps(x.raw, 1));
  return VF32{_mm512_insertf32x8(_mm512_castps256_ps512(lower), upper, 1)};
#elif HWY_TARGET == HWY_AVX2
  return VF32{_mm256_rcp_ps(x.raw)};
#elif HWY_ARCH_X86
  return VF32{_mm_rcp_ps(x.raw)};
#else
  alignas(HWY_MAX_BYTES) std::uint32_t lanes[kLanes<float>];
  const Tag<std::uint32_t> d;
  hn::Store(hn::BitCast(d, x), d, lanes);
  for (std::uint32_t& lane : lanes) lane = reciprocalBits(lane);
  return hn::BitCast(Tag<float>(), hn::Load(d, lanes));
#endif
}

// The estimate, refined once.
HWY_INLINE VF32 refinedReciprocal(VF32 x) {
  const VF32 r = reciprocalEstimate(x);
  return (r + r) - (x * r) * r;
}

// To integers, toward zero. Beyond the range, and from NaN: the most negative integer.
HWY_INLINE VI32 truncated(VF32 x) {
#if HWY_TARGET <= HWY_AVX3
  return VI32{_mm512_cvttps_epi32(x.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VI32{_mm256_cvttps_epi32(x.raw)};
#elif HWY_ARCH_X86
  return VI32{_mm_cvttps_epi32(x.raw)};
#else
  const Tag<std::int32_t> d;
  const auto inRange = hn::RebindMask(d, x < all(0x1p31f));  // which no NaN is
  return hn::IfThenElse(inRange, hn::ConvertTo(d, x), all(std::numeric_limits<std::int32_t>::min()));
#endif
}

// The same to the nearest integer, by the rounding mode of the thread.
HWY_INLINE VI32 nearest(VF32 x) {
#if HWY_TARGET <= HWY_AVX3
  return VI32{_mm512_cvtps_epi32(x.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VI32{_mm256_cvtps_epi32(x.raw)};
#elif HWY_ARCH_X86
  return VI32{_mm_cvtps_epi32(x.raw)};
#else
  return truncated(VF32{vrndiq_f32(x.raw)});
#endif
}

HWY_INLINE VF32 toFloat(VI32 x) { return hn::ConvertTo(Tag<float>(), x); }

// a + b where the mask is set, a elsewhere.
HWY_INLINE VF32 addWhere(hn::Mask<Tag<float>> mask, VF32 a, VF32 b) {
#if HWY_TARGET <= HWY_AVX3
  return VF32{_mm512_mask_add_ps(a.raw, mask.raw, a.raw, b.raw)};
#else
  return hn::IfThenElse(mask, a + b, a);
#endif
}

// Eight floats, and the one that each lane's index tells, 0 to 7.
struct Floats8 {
  alignas(32) float at[8];
};
HWY_INLINE VF32 lookUp(const Floats8& table, VI32 index) {
#if HWY_TARGET <= HWY_AVX3
  return VF32{_mm512_permutexvar_ps(index.raw, _mm512_broadcast_f32x8(_mm256_load_ps(table.at)))};
#elif HWY_TARGET == HWY_AVX2
  return VF32{_mm256_permutevar8x32_ps(_mm256_load_ps(table.at), index.raw)};
#else
  const Tag<float> d;
  const auto place = hn::IndicesFromVec(d, hn::And(index, all(3)));
  return hn::IfThenElse(hn::RebindMask(d, index > all(3)), hn::TableLookupLanes(hn::Load(d, table.at + 4), place),
                        hn::TableLookupLanes(hn::Load(d, table.at), place));
#endif
}

// ---- Double precision

// The lanes of a vector of floats, in order over both halves.
HWY_INLINE Halves<VF64> toDouble(VF32 x) {
  const Tag<double> d;
  const hn::Half<Tag<float>> half;
  return {hn::PromoteTo(d, hn::LowerHalf(half, x)), hn::PromoteTo(d, hn::UpperHalf(half, x))};
}

// To integers, toward zero. Beyond the range, and from NaN: the most negative integer.
HWY_INLINE VI32 truncated(const Halves<VF64>& x) {
#if HWY_TARGET <= HWY_AVX3
  return VI32{
      _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvttpd_epi32(x.a.raw)), _mm512_cvttpd_epi32(x.b.raw), 1)};
#elif HWY_TARGET == HWY_AVX2
  return VI32{_mm256_set_m128i(_mm256_cvttpd_epi32(x.b.raw), _mm256_cvttpd_epi32(x.a.raw))};
#elif HWY_ARCH_X86
  return VI32{_mm_unpacklo_epi64(_mm_cvttpd_epi32(x.a.raw), _mm_cvttpd_epi32(x.b.raw))};
#else
  const auto half = [](VF64 v) HWY_ATTR {  // below the range conversions saturate; no NaN is below its end
    return hn::DemoteTo(hn::Half<Tag<std::int32_t>>(), hn::IfThenElse(v < all(0x1p31), v, all(-0x1p31)));
  };
  return hn::Combine(Tag<std::int32_t>(), half(x.b), half(x.a));
#endif
}

// ---- Parts of a vector of samples

template <class T>
constexpr std::size_t kParts = sizeof(float) / sizeof(T);

// A part of unsigned samples, exactly. Interleaved with zeros they widen within their block.
template <std::size_t part>
HWY_INLINE VF32 partToFloat(VU16 samples) {
  const Tag<std::uint16_t> d;
  const VU16 zero = hn::Zero(d);
  const VU16 wide = part == 0 ? hn::InterleaveLower(d, samples, zero) : hn::InterleaveUpper(d, samples, zero);
  return toFloat(hn::BitCast(Tag<std::int32_t>(), wide));
}
// The four bytes of a part, each in one place of a 32-bit lane, with zeros in the others.
template <std::size_t part, std::size_t place>
HWY_INLINE VI32 widenedPart(VU8 samples) {
  struct Index {
    alignas(16) std::uint8_t at[16];
    constexpr Index() : at() {
      for (std::size_t i = 0; i < 16; ++i) at[i] = static_cast<std::uint8_t>(i % 4 == place ? 4 * part + i / 4 : 0x80);
    }
  };
  static constexpr Index kIndex;
  const Tag<std::uint8_t> d;
  return hn::BitCast(Tag<std::int32_t>(), hn::TableLookupBytesOr0(samples, hn::LoadDup128(d, kIndex.at)));
}
template <std::size_t part>
HWY_INLINE VF32 partToFloat(VU8 samples) {
  return toFloat(widenedPart<part, 0>(samples));
}

// A part of signed samples: above zeros they keep their sign when the 32-bit lanes are moved down.
template <std::size_t part>
HWY_INLINE VF32 partToFloat(VI16 samples) {
  const Tag<std::int16_t> d;
  const VI16 zero = hn::Zero(d);
  const VI16 wide = part == 0 ? hn::InterleaveLower(d, zero, samples) : hn::InterleaveUpper(d, zero, samples);
  return toFloat(hn::ShiftRight<16>(hn::BitCast(Tag<std::int32_t>(), wide)));
}
template <std::size_t part>
HWY_INLINE VF32 partToFloat(Vec<std::int8_t> samples) {
  return toFloat(hn::ShiftRight<24>(widenedPart<part, 3>(hn::BitCast(Tag<std::uint8_t>(), samples))));
}

// Floats are their own only part.
template <std::size_t part>
HWY_INLINE VF32 partToFloat(VF32 samples) {
  return samples;
}

// factor (plus - minus) of a part, exactly: one product of each pair of samples.
template <int factor, std::size_t part>
HWY_INLINE VF32 partOfDifference(VU8 plus, VU8 minus) {
  const Tag<std::uint8_t> d;
  const VI16 both =
      dotBytes<factor, -factor>(part < 2 ? hn::InterleaveLower(d, plus, minus) : hn::InterleaveUpper(d, plus, minus));
  const Tag<std::int16_t> d16;
  const VI16 twice = part % 2 == 0 ? hn::InterleaveLower(d16, both, both) : hn::InterleaveUpper(d16, both, both);
  return toFloat(hn::ShiftRight<16>(hn::BitCast(Tag<std::int32_t>(), twice)));
}
template <int factor, std::size_t part>
HWY_INLINE VF32 partOfDifference(VU16 plus, VU16 minus) {
  const Tag<std::uint16_t> d;
  const VU16 middle = all<std::uint16_t>(0x8000);  // falls out
  const VU16 a = plus ^ middle, b = minus ^ middle;
  const VI16 pairs =
      hn::BitCast(Tag<std::int16_t>(), part == 0 ? hn::InterleaveLower(d, a, b) : hn::InterleaveUpper(d, a, b));
  return toFloat(addDots(hn::Zero(Tag<std::int32_t>()), pairs, pairsOf(factor, -factor)));
}

// What a form's `lanes` gives for each part of its terms.
template <class Form, class T, class Terms>
HWY_INLINE auto inParts(const Terms& terms) {
  if constexpr (kParts<T> == 4) {
    return std::array{Form::template lanes<0>(terms), Form::template lanes<1>(terms), Form::template lanes<2>(terms),
                      Form::template lanes<3>(terms)};
  } else if constexpr (kParts<T> == 2) {
    return std::array{Form::template lanes<0>(terms), Form::template lanes<1>(terms)};
  } else {
    return std::array{Form::template lanes<0>(terms)};
  }
}

// Integers back to a vector of samples, out of range values saturated.
struct Saturated {
  static HWY_INLINE VU8 join(VI32 v0, VI32 v1, VI32 v2, VI32 v3) { return packToBytes(pack(v0, v1), pack(v2, v3)); }
  static HWY_INLINE VU16 join(VI32 v0, VI32 v1) { return packToWords(v0, v1); }
};

// The same, but 16-bit samples by way of signed ones, their distances from the lowest: integers too low for a
// difference of 32768 wrap around and end at the top, the most negative one, which stands for numbers out of range,
// among them.
struct SaturatedFromLowest : Saturated {
  using Saturated::join;
  static HWY_INLINE VU16 join(VI32 v0, VI32 v1) {
    const VI32 offset = all<std::int32_t>(0x8000);
    return hn::BitCast(Tag<std::uint16_t>(), pack(v0 - offset, v1 - offset)) ^ all<std::uint16_t>(0x8000);
  }
};

// The same with the low bits of the values.
struct LowBits {
  static HWY_INLINE VU8 join(VI32 v0, VI32 v1, VI32 v2, VI32 v3) {
    const VI32 mask = all<std::int32_t>(0xFF);
    return Saturated::join(v0 & mask, v1 & mask, v2 & mask, v3 & mask);
  }
  static HWY_INLINE VU16 join(VI32 v0, VI32 v1) {
    const VI32 mask = all<std::int32_t>(0xFFFF);
    return Saturated::join(v0 & mask, v1 & mask);
  }
};

// One member of all parts, joined.
template <class Range, class Part>
HWY_INLINE auto join(const std::array<Part, 4>& parts, VI32 Part::*member) {
  return Range::join(parts[0].*member, parts[1].*member, parts[2].*member, parts[3].*member);
}
template <class Range, class Part>
HWY_INLINE auto join(const std::array<Part, 2>& parts, VI32 Part::*member) {
  return Range::join(parts[0].*member, parts[1].*member);
}
template <class Range, class Part>
HWY_INLINE VF32 join(const std::array<Part, 1>& parts, VF32 Part::*member) {
  return parts[0].*member;
}

// ---- Forms on floats

// Limited to 0..1.
HWY_INLINE VF32 unitLimited(VF32 x) { return hn::Min(hn::Max(x, hn::Zero(Tag<float>())), all(1.0f)); }

// A form on floats applied to 16-bit samples, its results truncated and saturated.
template <class Form>
struct OnFloats {
  static HWY_INLINE Channels<VU16> apply(const Channels<VU16>& in) {
    const Channels<VI32> a = part<0>(in), b = part<1>(in);
    return {packToWords(a.c0, b.c0), packToWords(a.c1, b.c1), packToWords(a.c2, b.c2)};
  }

 private:
  template <std::size_t i>
  static HWY_INLINE Channels<VI32> part(const Channels<VU16>& in) {
    const Channels<VF32> out =
        Form::apply(Channels<VF32>{partToFloat<i>(in.c0), partToFloat<i>(in.c1), partToFloat<i>(in.c2)});
    return {truncated(out.c0), truncated(out.c1), truncated(out.c2)};
  }
};

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
