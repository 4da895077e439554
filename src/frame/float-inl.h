// Single-precision arithmetic on integer samples. A vector of samples has as many parts as vectors of floats are needed
// for it: four for bytes, two for 16-bit samples. A part takes four samples of every 128-bit block, so that samples
// widen and narrow without leaving their block.
//
// The order of operations is part of every result. What looks like a step that could be saved changes a rounding.
#if defined(ZUM_FRAME_FLOAT_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_FRAME_FLOAT_INL_H
#undef ZUM_FRAME_FLOAT_INL_H
#else
#define ZUM_FRAME_FLOAT_INL_H
#endif

#include <array>

#include "frame/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Single operations

#if !HWY_ARCH_X86
#error "The reciprocal estimate and the conversions to integers are those of the x86 instructions."
#endif

// The processor's reciprocal estimate: rcpps. The 512-bit estimate is another one, with other results.
HWY_INLINE VF32 reciprocalEstimate(VF32 x) {
#if HWY_TARGET <= HWY_AVX3
  const __m256 lower = _mm256_rcp_ps(_mm512_castps512_ps256(x.raw));
  const __m256 upper = _mm256_rcp_ps(_mm512_extractf32x8_ps(x.raw, 1));
  return VF32{_mm512_insertf32x8(_mm512_castps256_ps512(lower), upper, 1)};
#elif HWY_TARGET == HWY_AVX2
  return VF32{_mm256_rcp_ps(x.raw)};
#else
  return VF32{_mm_rcp_ps(x.raw)};
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
#else
  return VI32{_mm_cvttps_epi32(x.raw)};
#endif
}

// The same to the nearest integer, by the rounding mode of the thread.
HWY_INLINE VI32 nearest(VF32 x) {
#if HWY_TARGET <= HWY_AVX3
  return VI32{_mm512_cvtps_epi32(x.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VI32{_mm256_cvtps_epi32(x.raw)};
#else
  return VI32{_mm_cvtps_epi32(x.raw)};
#endif
}

HWY_INLINE VF32 toFloat(VI32 x) { return hn::ConvertTo(Tag<float>(), x); }

// ---- Parts of a vector of samples

template <class T>
constexpr std::size_t kParts = sizeof(float) / sizeof(T);

// Where the bytes of a part come from, for unsigned samples in 32-bit lanes.
template <class T, std::size_t part>
struct PartBytes {
  alignas(16) std::uint8_t at[16];

  constexpr PartBytes() : at() {
    for (std::size_t b = 0; b < 16; ++b) {
      const std::size_t sample = 4 * part + b / 4;
      at[b] = static_cast<std::uint8_t>(b % 4 < sizeof(T) ? sample * sizeof(T) + b % 4 : 0x80);
    }
  }
};

// A part of unsigned samples, exactly.
template <std::size_t part, class V>
HWY_INLINE VF32 partToFloat(V samples) {
  static constexpr PartBytes<hn::TFromV<V>, part> kBytes;
  const Tag<std::uint8_t> d8;
  return toFloat(hn::BitCast(Tag<std::int32_t>(),
                             hn::TableLookupBytesOr0(hn::BitCast(d8, samples), hn::LoadDup128(d8, kBytes.at))));
}

// What a form's `lanes` gives for each part of its terms.
template <class Form, class T, class Terms>
HWY_INLINE auto inParts(const Terms& terms) {
  if constexpr (kParts<T> == 4) {
    return std::array{Form::template lanes<0>(terms), Form::template lanes<1>(terms), Form::template lanes<2>(terms),
                      Form::template lanes<3>(terms)};
  } else {
    return std::array{Form::template lanes<0>(terms), Form::template lanes<1>(terms)};
  }
}

// Integers back to a vector of samples, out of range values saturated.
struct Saturated {
  static HWY_INLINE VU8 join(VI32 v0, VI32 v1, VI32 v2, VI32 v3) { return packToBytes(pack(v0, v1), pack(v2, v3)); }
  static HWY_INLINE VU16 join(VI32 v0, VI32 v1) { return packToWords(v0, v1); }
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
HWY_INLINE VU8 join(const std::array<Part, 4>& parts, VI32 Part::*member) {
  return Range::join(parts[0].*member, parts[1].*member, parts[2].*member, parts[3].*member);
}
template <class Range, class Part>
HWY_INLINE VU16 join(const std::array<Part, 2>& parts, VI32 Part::*member) {
  return Range::join(parts[0].*member, parts[1].*member);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
