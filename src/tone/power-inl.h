// Arithmetic in double precision on the lanes of a vector of floats, and powers, fast and with a bound of their error.
#if defined(ZUM_TONE_POWER_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_TONE_POWER_INL_H
#undef ZUM_TONE_POWER_INL_H
#else
#define ZUM_TONE_POWER_INL_H
#endif

#include "frame/vectors-inl.h"
#include "tone/power.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// As many doubles as a vector has floats: the lower half of them in a. Every step is made on both halves before the
// next, so that one is under way while the other waits.
struct Doubles {
  VF64 a, b;
};

HWY_INLINE Doubles operator+(Doubles x, Doubles y) { return {x.a + y.a, x.b + y.b}; }
HWY_INLINE Doubles operator*(Doubles x, Doubles y) { return {x.a * y.a, x.b * y.b}; }
HWY_INLINE Doubles operator+(Doubles x, VF64 y) { return {x.a + y, x.b + y}; }
HWY_INLINE Doubles operator-(Doubles x, VF64 y) { return {x.a - y, x.b - y}; }
HWY_INLINE Doubles operator*(Doubles x, VF64 y) { return {x.a * y, x.b * y}; }

HWY_INLINE Doubles toDoubles(VF32 v) {
  const Tag<double> d;
  const hn::Half<Tag<float>> half;
  return {hn::PromoteTo(d, hn::LowerHalf(half, v)), hn::PromoteTo(d, hn::UpperHalf(half, v))};
}
HWY_INLINE VF32 toFloats(Doubles x) {
  const hn::Half<Tag<float>> half;
  const auto a = hn::DemoteTo(half, x.a), b = hn::DemoteTo(half, x.b);
  return hn::Combine(Tag<float>(), b, a);
}

// The reciprocal of a number near x, and its power.
template <class V>
struct NearbyPower {
  V reciprocal, power;
};

#if HWY_TARGET > HWY_AVX3
// The entry of the table for a lane.
template <class Exponent, int lane>
HWY_INLINE hn::Vec128<double> entry(hn::Vec128<double> x) {
  const int highest = hn::ExtractLane(hn::BitCast(hn::Full128<std::uint16_t>(), x), 4 * lane + 3);
  return hn::Load(hn::Full128<double>(), &kPowerTable<Exponent>.at[highest & 0xFF].reciprocal);
}

HWY_INLINE NearbyPower<VF64> unzipped(VF64 even, VF64 odd) {
  const Tag<double> d;
  return {hn::InterleaveLower(d, even, odd), hn::InterleaveUpper(d, even, odd)};
}
#endif

template <class Exponent>
HWY_INLINE NearbyPower<VF64> nearbyPower(VF64 x) {
  [[maybe_unused]] const Tag<double> d;
#if HWY_TARGET <= HWY_AVX3
  // The permutations look at the low four bits only.
  const auto lookUp = [](const double* table, Vec<std::uint64_t> i) HWY_ATTR {
    return VF64{_mm512_permutex2var_pd(_mm512_load_pd(table), i.raw, _mm512_load_pd(table + 8))};
  };
  const PowerTable<Exponent>& table = kPowerTable<Exponent>;
  const Vec<std::uint64_t> bits = hn::BitCast(Tag<std::uint64_t>(), x);
  const auto interval = hn::ShiftRight<48>(bits), octave = hn::ShiftRight<52>(bits);
  const VF64 start = hn::And(x, hn::BitCast(d, all<std::uint64_t>(0xFFF0000000000000)));
  // x over the start of its octave, times the reciprocal of the middle, as x times the quotient: exponents subtract.
  const auto one = all<std::uint64_t>(0x3FF0000000000000);
  const VF64 reciprocal = hn::BitCast(d, hn::BitCast(Tag<std::uint64_t>(), lookUp(table.reciprocal, interval)) -
                                             (hn::BitCast(Tag<std::uint64_t>(), start) - one));
  return {reciprocal, lookUp(table.ofInterval, interval) * lookUp(table.ofOctave, octave)};
#elif HWY_TARGET == HWY_AVX2
  const hn::Half<Tag<double>> half;
  const auto lower = hn::LowerHalf(half, x), upper = hn::UpperHalf(half, x);
  return unzipped(hn::Combine(d, entry<Exponent, 0>(upper), entry<Exponent, 0>(lower)),
                  hn::Combine(d, entry<Exponent, 1>(upper), entry<Exponent, 1>(lower)));
#else
  return unzipped(entry<Exponent, 0>(x), entry<Exponent, 1>(x));
#endif
}

// x to the exponent, for x in the range of the table, with a relative error below kPowerError. Beyond the range the
// result is of no use, but costs no more.
template <class Exponent>
HWY_INLINE Doubles power(Doubles x) {
  const auto ofA = nearbyPower<Exponent>(x.a), ofB = nearbyPower<Exponent>(x.b);
  const NearbyPower<Doubles> nearby{{ofA.reciprocal, ofB.reciprocal}, {ofA.power, ofB.power}};
  const Doubles u = x * nearby.reciprocal - all(1.0), square = u * u;
  const auto pair = [u](int i) HWY_ATTR {
    const double* const c = kPowerPolynomial<Exponent>.coefficient + i;
    return u * all(c[1]) + all(c[0]);
  };
  return nearby.power * (pair(0) + square * (pair(2) + square * pair(4)));
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
