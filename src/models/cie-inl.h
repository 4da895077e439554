// What the CIE models share: tristimulus values of linear RGB, and the cube root by a table and a series.
#if defined(ZUM_MODELS_CIE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_MODELS_CIE_INL_H
#undef ZUM_MODELS_CIE_INL_H
#else
#define ZUM_MODELS_CIE_INL_H
#endif

#include <array>

#include "frame/float-inl.h"
#include "models/cie.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// A part of three channels.
template <std::size_t part, class V>
HWY_INLINE Channels<VF32> partToFloat(const Channels<V>& v) {
  return {partToFloat<part>(v.c0), partToFloat<part>(v.c1), partToFloat<part>(v.c2)};
}

HWY_INLINE VF32 weigh(const Channels<float>& weights, const Channels<VF32>& v) {
  return (v.c0 * all(weights.c0) + v.c1 * all(weights.c1)) + v.c2 * all(weights.c2);
}

HWY_INLINE Channels<VF32> rgbToXyz(const Channels<VF32>& rgb) {
  return {weigh({0.412453f, 0.35758f, 0.180423f}, rgb), weigh({0.212671f, 0.71516f, 0.072169f}, rgb),
          weigh({0.019334f, 0.119193f, 0.950227f}, rgb)};
}

HWY_INLINE Channels<VF32> xyzToRgb(const Channels<VF32>& xyz) {
  return {weigh({3.240479f, -1.53715f, -0.498535f}, xyz), weigh({-0.969256f, 1.875991f, 0.041556f}, xyz),
          weigh({0.055648f, -0.204043f, 1.057311f}, xyz)};
}

// Up to this luminance, or what stands for it, of white's 1 lightness rises evenly instead of as a cube root.
constexpr float kEvenEnd = 0.008856f, kEvenSlope = 903.3f;

// ---- Cube root

// A point that the cube root is expanded at.
struct Expansion {
  VF32 root, inverse;
};

#if HWY_TARGET <= HWY_AVX3_DL
// A table of floats as four of bytes, which one shuffle each looks up.
struct RootPlanes {
  alignas(64) std::uint8_t root[4][kCubeRootCells];
  alignas(64) std::uint8_t inverse[4][kCubeRootCells];
};

// The bits of a positive number.
constexpr std::uint32_t bitsOf(float v) {
  std::uint32_t exponent = 127;
  for (; v >= 2; v /= 2) ++exponent;
  for (; v < 1; v *= 2) --exponent;
  return ((exponent - 1) << 23) + static_cast<std::uint32_t>(v * 0x1p23f);
}

constexpr RootPlanes rootPlanes(const CubeRoots& table) {
  RootPlanes result{};
  for (int i = 0; i < kCubeRootCells; ++i) {
    for (int byte = 0; byte < 4; ++byte) {
      result.root[byte][i] = static_cast<std::uint8_t>(bitsOf(table.at[i].root) >> (8 * byte));
      result.inverse[byte][i] = static_cast<std::uint8_t>(bitsOf(table.at[i].inverse) >> (8 * byte));
    }
  }
  return result;
}

// The parts of a vector of bytes, each byte replaced by the float that the planes have for its low 7 bits.
HWY_INLINE std::array<VF32, 4> lookUp(const std::uint8_t (&planes)[4][kCubeRootCells], VU8 i) {
  const Tag<float> to;
  const auto plane = [&](int byte) HWY_ATTR {
    const std::uint8_t* const p = planes[byte];
    return VU8{_mm512_permutex2var_epi8(_mm512_load_si512(p), i.raw, _mm512_load_si512(p + 64))};
  };
  const auto parts = interleaved4(plane(0), plane(1), plane(2), plane(3));
  return {hn::BitCast(to, parts[0]), hn::BitCast(to, parts[1]), hn::BitCast(to, parts[2]), hn::BitCast(to, parts[3])};
}

// The points of cells, by the low 7 bits of those from 0 to 255.
template <const CubeRoots& table, std::size_t parts>
HWY_INLINE std::array<Expansion, parts> expansionsAt(const std::array<VI32, parts>& cells) {
  static constexpr RootPlanes kPlanes = rootPlanes(table);
  const VU8 i = Saturated::join(cells[0], cells[1 % parts], cells[2 % parts], cells[3 % parts]);
  const std::array<VF32, 4> roots = lookUp(kPlanes.root, i), inverses = lookUp(kPlanes.inverse, i);
  std::array<Expansion, parts> result;
  for (std::size_t part = 0; part < parts; ++part) result[part] = {roots[part], inverses[part]};
  return result;
}
#else
template <const CubeRoots& table, std::size_t parts>
HWY_INLINE std::array<Expansion, parts> expansionsAt(const std::array<VI32, parts>& cells) {
  std::array<Expansion, parts> result;
  for (std::size_t part = 0; part < parts; ++part) {
    alignas(HWY_MAX_BYTES) std::int32_t cell[kLanes<std::int32_t>];
    hn::Store(cells[part] & all(kCubeRootCells - 1), Tag<std::int32_t>(), cell);
    // The points of a lane and of the next, root and inverse of each side by side.
    const auto two = [&](int lane) HWY_ATTR {
      const hn::Full128<float> d;
      const hn::Half<hn::Full128<float> > half;
      return hn::Combine(d, hn::LoadU(half, &table.at[cell[lane + 1]].root),
                         hn::LoadU(half, &table.at[cell[lane]].root));
    };
    const Tag<float> d;
#if HWY_TARGET == HWY_AVX2
    const VF32 first = hn::Combine(d, two(4), two(0)), second = hn::Combine(d, two(6), two(2));
    result[part] = {VF32{_mm256_shuffle_ps(first.raw, second.raw, 0x88)},
                    VF32{_mm256_shuffle_ps(first.raw, second.raw, 0xDD)}};
#else
    const VF32 first = two(0), second = two(2);
    result[part] = {hn::ConcatEven(d, second, first), hn::ConcatOdd(d, second, first)};
#endif
  }
  return result;
}
#endif

template <const CubeRoots& table>
HWY_INLINE Expansion expansionAt(VI32 cell) {
  return expansionsAt<table>(std::array{cell})[0];
}

// The coefficients of (1 + t) to the power 1/3, from the first power of t on. Their signs alternate.
constexpr std::array kSixTerms{1.0f / 3, 1.0f / 9, 5.0f / 81, 10.0f / 243, 22.0f / 729, 154.0f / 6561};
constexpr std::array<float, 8> eightTerms(float seventh, float eighth) {
  const auto& six = kSixTerms;
  return {six[0], six[1], six[2], six[3], six[4], six[5], seventh, eighth};
}

template <std::size_t terms>
HWY_INLINE VF32 cubeRoot(VF32 v, const Expansion& at, const std::array<float, terms>& coefficients) {
  const VF32 t = (v - (at.root * at.root) * at.root) * at.inverse;
  VF32 power = t, sum = all(1.0f) + all(coefficients[0]) * t;
  for (std::size_t i = 1; i < terms; ++i) {
    power = power * t;
    const VF32 term = all(coefficients[i]) * power;
    sum = i % 2 ? sum - term : sum + term;
  }
  return sum * at.root;
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
