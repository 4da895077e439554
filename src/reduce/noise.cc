#include "reduce/noise.h"

#include "frame/generator.h"

namespace zum {

NoiseField::NoiseField(float low, float high)
    : values_(zumsMalloc_32f(2 * kHalf)), places_(values_ ? zumsMalloc_16s(kPeriod) : nullptr) {
  if (missing()) return;
  constexpr uint32_t kSeed = 0;
  UniformGenerator<Zum32f> values(low, high, kSeed);
  for (int i = 0; i < kPeriod; ++i) values.fill(values_ + inHalves(i), 1);
  for (int i = kPeriod / 2; i < kHalf; ++i) {
    values_[i] = values_[i - kPeriod / 2];
    values_[kHalf + i] = values_[kHalf + i - kPeriod / 2];
  }
  UniformGenerator<Zum16s>(0, kPeriod, kSeed).fill(places_, kPeriod);
  for (int x = 0; x < kPeriod; ++x) places_[x] = static_cast<Zum16s>(inHalves((places_[x] + x) % kPeriod));
}

NoiseField::~NoiseField() {
  zumsFree(values_);
  zumsFree(places_);
}

}  // namespace zum
