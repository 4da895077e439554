// Samples of all types as values and back, in memory order and without regard to channels: four vectors of floats at a
// time, whatever the types.
#if defined(ZUM_REDUCE_SAMPLES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_REDUCE_SAMPLES_INL_H
#undef ZUM_REDUCE_SAMPLES_INL_H
#else
#define ZUM_REDUCE_SAMPLES_INL_H
#endif

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"
#include "reduce/depths.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

template <class V>
struct Four {
  V v0, v1, v2, v3;
};

constexpr std::size_t kSamples = 4 * kLanes<float>;

// ---- Truncation

// Nudged in double precision before it.
HWY_INLINE VI32 truncatedNudged(VF32 x) {
  const Halves<VF64> wide = toDouble(x);
  return truncated(Halves<VF64>{wide.a + all(kNudge), wide.b + all(kNudge)});
}

template <bool nudged>
HWY_INLINE VI32 truncatedTo(VF32 x) {
  if constexpr (nudged) {
    return truncatedNudged(x);
  } else {
    return truncated(x);
  }
}

// Truncated to integers that become floats again. Values of samples that are integers never leave the range.
template <bool inRange>
HWY_INLINE VF32 wholePart(VF32 x) {
#if HWY_TARGET <= HWY_AVX2 || !HWY_ARCH_X86
  if constexpr (inRange) return hn::Trunc(x);
#endif
  return toFloat(truncated(x));
}

// ---- Sources

template <class T>
struct ValuesOf : Interleaved<T, 1, kSamples> {
  template <class Access = Whole>
  static HWY_INLINE Four<VF32> load(const T* row, Access access = {}) {
    return {vector(row, 0, access), vector(row, 1, access), vector(row, 2, access), vector(row, 3, access)};
  }

 private:
  template <class Access>
  static HWY_INLINE VF32 vector(const T* row, std::size_t i, Access access) {
    const Tag<std::int32_t> d;
    const hn::Rebind<T, Tag<std::int32_t>> from;
    const auto samples = access.load(from, row, i * kLanes<float>);
    if constexpr (std::is_same_v<T, float>) {
      return samples;
    } else {
      return toFloat(hn::PromoteTo(d, samples) - all<std::int32_t>(std::numeric_limits<T>::min()));
    }
  }
};

// ---- Destinations, from distances from the lowest sample

// Blocks of four vectors, or of two, in turn, which packing leaves them in.
HWY_INLINE VU8 inOrder(VU8 v) {
#if HWY_TARGET <= HWY_AVX3
  const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
  return VU8{_mm512_permutexvar_epi32(order, v.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VU8{_mm256_permutevar8x32_epi32(v.raw, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))};
#else
  return v;
#endif
}
template <class T>
HWY_INLINE Vec<T> inOrder(Vec<T> v) {
#if HWY_TARGET <= HWY_AVX3
  return Vec<T>{_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v.raw)};
#elif HWY_TARGET == HWY_AVX2
  return Vec<T>{_mm256_permute4x64_epi64(v.raw, 0xD8)};
#else
  return v;
#endif
}

// What becomes of distances out of range: those of signed samples are wrapped when they become samples.
struct Saturating {
  static HWY_INLINE VU8 bytes(const Four<VI32>& v) { return packToBytes(pack(v.v0, v.v1), pack(v.v2, v.v3)); }
  static HWY_INLINE VI16 words(VI32 a, VI32 b, Zum16s) {
    const VI32 lowest = all<std::int32_t>(-32768);
    return pack(a + lowest, b + lowest);
  }
  static HWY_INLINE VU16 words(VI32 a, VI32 b, Zum16u) {
#if HWY_TARGET > HWY_AVX2
    // That packing wraps near the lowest integers.
    const VI32 zero = hn::Zero(Tag<std::int32_t>());
    a = hn::Max(a, zero);
    b = hn::Max(b, zero);
#endif
    return packToWords(a, b);
  }
};
struct Wrapping {
  static HWY_INLINE VU8 bytes(const Four<VI32>& v) {
    const VI32 mask = all<std::int32_t>(0xFF);
    return Saturating::bytes({v.v0 & mask, v.v1 & mask, v.v2 & mask, v.v3 & mask});
  }
  template <class T>
  static HWY_INLINE Vec<T> words(VI32 a, VI32 b, T type) {
    const VI32 mask = all<std::int32_t>(0xFFFF);
    return Saturating::words(a & mask, b & mask, type);
  }
};

// A vector, i samples behind a place in a row. With fourthKept the last sample of every four stays as it is in memory.
template <bool fourthKept, class T, class Access>
HWY_INLINE void storeSamples(Vec<T> v, T* row, std::size_t i, Access access) {
  const Tag<T> d;
  if constexpr (fourthKept) {
    const hn::Repartition<std::conditional_t<sizeof(T) == 1, std::uint32_t, std::uint64_t>, Tag<T>> pixels;
    using Pixel = hn::TFromD<decltype(pixels)>;
    const auto fourth = hn::Set(pixels, Pixel{std::numeric_limits<std::make_unsigned_t<T>>::max()} << 24 * sizeof(T));
    v = hn::IfVecThenElse(hn::BitCast(d, fourth), access.load(d, row, i), v);
  }
  access.store(v, d, row, i);
}

template <class T, class Range, bool fourthKept>
struct Stored : Interleaved<T, 1, kSamples> {
  static constexpr bool kKeeps = fourthKept;

  template <class Access = Whole>
  static HWY_INLINE void store(const Four<VI32>& v, T* row, Access access = {}) {
    if constexpr (sizeof(T) == 1) {
      storeSamples<fourthKept>(inOrder(Range::bytes(v)), row, 0, access);
    } else {
      storeSamples<fourthKept>(inOrder<T>(Range::words(v.v0, v.v1, T())), row, 0, access);
      storeSamples<fourthKept>(inOrder<T>(Range::words(v.v2, v.v3, T())), row, kLanes<T>, access);
    }
  }
};

// ---- Bytes as they are

template <bool fourthKept>
struct Bytes : Interleaved<std::uint8_t, 1, kSamples> {
  static constexpr bool kKeeps = fourthKept;

  template <class Access = Whole>
  static HWY_INLINE VU8 load(const std::uint8_t* row, Access access = {}) {
    return access.load(Tag<std::uint8_t>(), row);
  }

  template <class Access = Whole>
  static HWY_INLINE void store(VU8 v, std::uint8_t* row, Access access = {}) {
    storeSamples<fourthKept>(v, row, 0, access);
  }
};

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
