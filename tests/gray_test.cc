// Gray against its formulas in plain arithmetic, with weights of all kinds, in block columns and behind them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "support/instruction_sets.h"
#include "zumcc.h"

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
T expected(const T* c, const Weights& w, bool tail) {
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
    constexpr int kLowest = std::is_integral_v<T> ? static_cast<int>(std::numeric_limits<T>::min()) : 0;
    float terms[3];
    for (int i = 0; i < 3; ++i) terms[i] = static_cast<float>(c[i] - kLowest) * w[i];
    const float two = terms[0] + terms[1], sum = two + terms[2];
    if constexpr (std::is_same_v<T, Zum32f>) {
      return sum;
    } else {
      const bool fits = sum >= -2147483648.0f && sum < 2147483648.0f;
      const int64_t truncated = fits ? static_cast<int64_t>(sum) : -2147483648LL;
      const auto moved = static_cast<int32_t>(static_cast<uint32_t>(truncated + kLowest));
      return static_cast<T>(tail || kLowest == 0 ? moved : std::clamp(moved, -32768, 32767));
    }
  }
}

template <class T>
using Weighted = ZumStatus(const T*, int, T*, int, ZumiSize, const Zum32f*);
template <class T>
using Plain = ZumStatus(const T*, int, T*, int, ZumiSize);

// Samples of any value, within 0..1 and around it for floats, every fourth at an end of the range.
template <class T>
std::vector<T> samples(int count) {
  std::minstd_rand random(1);
  std::vector<T> result(static_cast<std::size_t>(count));
  for (T& sample : result) {
    const auto bits = static_cast<unsigned>(random() >> 7 & 0xFFFF);
    sample = static_cast<T>(bits);
    if constexpr (std::is_same_v<T, Zum32f>)
      sample = sample / 32768 - 0.5f;
    else if (random() % 4 == 0)
      sample = bits % 2 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
  }
  return result;
}

// Block columns and those behind them, in rows of all lengths that end differently. No weights are the default ones,
// and steps are counted in samples.
template <class T>
void compare(Plain<T>* plain, Weighted<T>* weighted, int channels, int block) {
  constexpr int kRows = 40, kWidest = 1032;
  const std::vector<T> src = samples<T>(kRows * kWidest * channels);
  const int extra = static_cast<int>(sizeof(T)) - 1;
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    for (int width = kWidest - 8; width < kWidest; ++width) {
      const int step = width * static_cast<int>(sizeof(T)), srcStep = step * channels;
      std::vector<T> got(static_cast<std::size_t>(width) * kRows), same(got.size());
      for (const Weights& w : kWeights) {
        ASSERT_EQ(zumOk, weighted(src.data(), srcStep + extra, got.data(), step + extra, {width, kRows}, w.data()));
        for (int i = 0; i < width * kRows; ++i) {
          const T wanted = expected(&src[i * channels], w, i % width >= width / block * block);
          ASSERT_TRUE(got[i] == wanted || (wanted != wanted && got[i] != got[i]))
              << hwy::TargetName(set) << ", column " << i % width << " of " << width << ", weights " << w[0] << ' '
              << w[1] << ' ' << w[2] << ": " << +got[i] << ", not " << +wanted;
        }
      }
      weighted(src.data(), srcStep, got.data(), step, {width, kRows}, kDefault.data());
      weighted(src.data(), srcStep, same.data(), step, {width, kRows}, nullptr);
      ASSERT_EQ(got, same);
      plain(src.data(), srcStep, same.data(), step, {width, kRows});
      ASSERT_EQ(got, same);
    }
  }
  zumtest::useInstructionSet(zumtest::kBestInstructionSet);
}

#define COMPARE(T, depth, block3, block4)                                                \
  compare<T>(zumiRGBToGray_##depth##_C3C1R, zumiColorToGray_##depth##_C3C1R, 3, block3); \
  compare<T>(zumiRGBToGray_##depth##_AC4C1R, zumiColorToGray_##depth##_AC4C1R, 4, block4)

TEST(Gray, Bytes) { COMPARE(Zum8u, 8u, 4, 8); }
TEST(Gray, Words) { COMPARE(Zum16u, 16u, 4, 4); }
TEST(Gray, SignedWords) { COMPARE(Zum16s, 16s, 4, 4); }
TEST(Gray, Floats) { COMPARE(Zum32f, 32f, 4, 4); }

}  // namespace
