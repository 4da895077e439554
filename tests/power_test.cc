// The fast power of every instruction set against the C library's: its error and its bound.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "support/instruction_sets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "power_test.cc"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "tone/power-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// The largest relative error, as a share of the bound.
template <class Exponent>
double worstError() {
  constexpr int kSamples = 1 << 16;
  const Tag<double> d;
  std::mt19937 random;
  std::uniform_real_distribution<double> anyExponent(std::log2(PowerTable<Exponent>::kLeast),
                                                     std::log2(PowerTable<Exponent>::kEnd));
  double worst = 0;
  for (int i = 0; i < kSamples; ++i) {
    double x[kLanes<float>], result[kLanes<float>];
    for (double& v : x) v = std::exp2(anyExponent(random));
    // The ends of an interval are farthest from what the table holds.
    const double end = std::ldexp(1 + random() % kIntervals * (1.0 / kIntervals), random() % kOctaves + kFirstOctave);
    x[0] = end;
    x[1] = std::max(std::nextafter(end, 0), PowerTable<Exponent>::kLeast);
    const Doubles powers = power<Exponent>({hn::LoadU(d, x), hn::LoadU(d, x + kLanes<double>)});
    hn::StoreU(powers.a, d, result);
    hn::StoreU(powers.b, d, result + kLanes<double>);
    for (std::size_t k = 0; k < kLanes<float>; ++k) {
      const double wanted = std::pow(x[k], Exponent::kValue);
      worst = std::max(worst, std::fabs(result[k] - wanted) / wanted / kPowerError<Exponent>);
    }
  }
  return worst;
}

double worstOfRoot() { return worstError<Rational<9, 20>>(); }
double worstOfPower() { return worstError<Rational<20, 9>>(); }

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(worstOfRoot);
HWY_EXPORT(worstOfPower);

TEST(Power, StaysInItsBound) {
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    for (const double worst : {HWY_DYNAMIC_DISPATCH(worstOfRoot)(), HWY_DYNAMIC_DISPATCH(worstOfPower)()}) {
      EXPECT_LT(worst, 1) << hwy::TargetName(set);
      EXPECT_GT(worst, 0.1) << hwy::TargetName(set) << ", a bound that is needlessly wide";
    }
  }
  zumtest::useInstructionSet(zumtest::kBestInstructionSet);
}

}  // namespace
}  // namespace zum
#endif  // HWY_ONCE
