// Gray against its formulas in plain arithmetic, with weights of all kinds.
#include <cmath>

#include "support/colours.h"

namespace zumtest {
namespace {

using Weights = std::array<float, 3>;

constexpr Weights kDefault{0.299f, 0.587f, 0.114f};
// Single channels; sums of 1 and more, up to those that turn to 0 at 8u; negative ones; numbers out of 16 and 32 bits.
const Weights kWeights[] = {kDefault,          {1, 0, 0},           {0, 0, 1},         {0.5f, 0.5f, 0.25f},
                            {2, 3, 1.5f},      {7, 7.5f, 8},        {15.9f, 15.9f, 9}, {-0.2f, 0.7f, 0.5f},
                            {-0.00013f, 0, 1}, {17, 32.5f, -31.0f}, {1e6f, 0.5f, 0},   {-1e6f, 0.25f, NAN}};

// The weight at 4096 times in 16 bits.
int fixedWeight(float w) {
  const double scaled = std::trunc(w * 4096.0 + 0.5);
  return std::abs(scaled) < 2147483648.0 ? static_cast<int>(static_cast<int64_t>(scaled) & 0xFFFF) : 0;
}

template <class T>
T expected(const Colour<T>& c, const Weights& w, bool tail) {
  if constexpr (std::is_same_v<T, Zum8u>) {
    int terms[3], sum = 0, exact = 0;
    for (int i = 0; i < 3; ++i) {
      exact += c[i] * fixedWeight(w[i]);
      terms[i] = c[i] * fixedWeight(w[i]) / 256;
      sum = std::min(sum + terms[i], 65535);
    }
    if (tail) return static_cast<T>(exact / 4096 % 256);
    return static_cast<T>(sum >= 32768 ? 0 : std::min(sum / 16, 255));
  } else {
    Colour<float> terms = levels(c);
    for (int i = 0; i < 3; ++i) terms[i] *= w[i];
    const float two = terms[0] + terms[1], sum = two + terms[2];
    if constexpr (std::is_same_v<T, Zum32f>) {
      return sum;
    } else {
      const bool fits = sum >= -2147483648.0f && sum < 2147483648.0f;
      const int64_t truncated = fits ? static_cast<int64_t>(sum) : -2147483648LL;
      const auto moved = static_cast<int32_t>(static_cast<uint32_t>(truncated + kLowest<T>));
      return static_cast<T>(tail || kLowest<T> == 0 ? moved : std::clamp(moved, -32768, 32767));
    }
  }
}

// Without weights, and where none are given, the default ones are taken.
template <class T>
void check(const std::string& layout, int block) {
  const std::vector<Colour<T>> colours = anyColours<T>(1 << 15);
  const auto compareWith = [&](const Function& function, const Weights& weights) {
    compare(function, block, colours,
            [&](const Colour<T>& c, bool tail) { return Colour<T>{expected(c, weights, tail)}; });
  };
  const Function weighted = named("zumiColorToGray_" + layout).front();
  for (const Weights& weights : kWeights) compareWith(withTable(weighted, weights.data()), weights);
  compareWith(withTable(weighted, nullptr), kDefault);
  compareWith(named("zumiRGBToGray_" + layout).front(), kDefault);
  expectStepsInSamples("zumi@(ColorToGray|RGBToGray)_" + layout);
}

TEST(Gray, Bytes) {
  check<Zum8u>("8u_C3C1R", 4);
  check<Zum8u>("8u_AC4C1R", 8);
}
TEST(Gray, Words) {
  for (const char* layout : {"16u_C3C1R", "16u_AC4C1R"}) check<Zum16u>(layout, 4);
}
TEST(Gray, SignedWords) {
  for (const char* layout : {"16s_C3C1R", "16s_AC4C1R"}) check<Zum16s>(layout, 4);
}
TEST(Gray, Floats) {
  for (const char* layout : {"32f_C3C1R", "32f_AC4C1R"}) check<Zum32f>(layout, 4);
}

}  // namespace
}  // namespace zumtest
