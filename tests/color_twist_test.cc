// Colour twists against the sums in single steps of scalar arithmetic: every depth and layout, matrices of all kinds.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "support/instruction_sets.h"
#include "zumcc.h"
#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace {

using Matrix = std::array<float, 16>;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN(), kInfinity = std::numeric_limits<float>::infinity();

constexpr Matrix kMatrices[] = {
    {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1},                                          // identity
    {0.25f, 0.5f, 0.125f, 0.5f, -0.5f, 1.5f, -0.25f, 2.5f, 0, 0.5f, 0.5f, 0, 1, 2, -1, 0.5f},  // ties
    {0.393f, 0.769f, 0.189f, 0.1f, -0.2f, 1.7f, 0.3f, -9.7f, 0.272f, -0.534f, 0.131f, 77.7f, 0.1f, 0.3f, 0.7f, 0.9f},
    {3e5f, -2e5f, 1.1f, -7, 1e8f, 3, -1e8f, 0.5f, -1e7f, 9, 1e7f, 1e5f, 1e20f, -1e20f, 1, 1},  // beyond all integers
    {1e20f, 0, 0, -1e20f, -1e30f, 1, 0, 0, 0, kInfinity, 1, 0, 1, 1, -kInfinity, 1},
    {kNan, 0, 0, 0, 1, 0, 0, kNan, 0.1f, 0.2f, 0.3f, 0.4f, 0, 0, 0, kNan},
};

template <class T>
constexpr bool kIsFloat = std::is_same_v<T, float>;
template <class T>
constexpr T kTop = std::numeric_limits<T>::max();
template <class T>
constexpr T kBottom = std::numeric_limits<T>::min();

template <class T>
T stored(float v) {
  if constexpr (kIsFloat<T>) {
    return v;
  } else {
    if (!(v <= kTop<T>)) return kTop<T>;
    return v < kBottom<T> ? kBottom<T> : static_cast<T>(std::nearbyint(v));
  }
}

// Channel i of a pixel.
template <class T>
T twisted(const Matrix& matrix, int i, const T* x) {
  const float* t = &matrix[4 * i];
  const float p0 = x[0] * t[0], p1 = x[1] * t[1], p2 = x[2] * t[2];
  if constexpr (std::is_same_v<T, Zum8s>) {
    const float first = p0 + p1, three = first + p2;
    return stored<T>(three + t[3]);
  } else {
    const float a = t[3] + p0, b = p2 + p1;
    return stored<T>(a + b);
  }
}

template <class T>
struct Functions {
  using Rows = ZumStatus(const T*, int, T*, int, ZumiSize, const float*);
  using InPlace = ZumStatus(T*, int, ZumiSize, const float*);
  using PlaneRows = ZumStatus(const T* const*, int, T* const*, int, ZumiSize, const float*);
  using PlanesInPlace = ZumStatus(T* const*, int, ZumiSize, const float*);
  Rows* c3;
  InPlace* c3InPlace;
  Rows* ac4;
  InPlace* ac4InPlace;
  PlaneRows* p3;
  PlanesInPlace* p3InPlace;
};

#define FUNCTIONS(name) \
  { name##_C3R, name##_C3IR, name##_AC4R, name##_AC4IR, name##_P3R, name##_IP3R }
const Functions<Zum8u> kFunctions8u = FUNCTIONS(zumiColorTwist32f_8u);
const Functions<Zum8s> kFunctions8s = FUNCTIONS(zumiColorTwist32f_8s);
const Functions<Zum16u> kFunctions16u = FUNCTIONS(zumiColorTwist32f_16u);
const Functions<Zum16s> kFunctions16s = FUNCTIONS(zumiColorTwist32f_16s);
const Functions<Zum32f> kFunctions32f = FUNCTIONS(zumiColorTwist_32f);

// Any samples, some of them at the ends of their range.
template <class T>
std::vector<T> noise(size_t size) {
  std::minstd_rand random(static_cast<unsigned>(size));
  std::vector<T> samples(size);
  for (T& sample : samples) {
    const auto bits = static_cast<uint32_t>(random() * 5);
    if constexpr (kIsFloat<T>) {
      sample = std::ldexp(static_cast<float>(bits >> 8) - 5e6f, static_cast<int>(bits % 40) - 30);
    } else {
      sample = bits % 8 == 0 ? kTop<T> : bits % 8 == 1 ? kBottom<T> : static_cast<T>(bits >> 8);
    }
  }
  return samples;
}

// The same samples; all NaNs are the same.
template <class T>
bool same(const std::vector<T>& a, const std::vector<T>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](T x, T y) { return x == y || (x != x && y != y); });
}

// As std::fegetround tells it, which may look at another unit.
int roundingMode() {
#if defined(__x86_64__) || defined(__i386__)
  static_assert(FE_UPWARD == _MM_ROUND_UP >> 3 && FE_DOWNWARD == _MM_ROUND_DOWN >> 3, "the same two bits");
  return static_cast<int>(_mm_getcsr() & _MM_ROUND_MASK) >> 3;
#else
  return std::fegetround();
#endif
}

// Every layout, from one image to another and in place. With a rounding mode set by the caller.
template <class T>
void expectTwists(const Functions<T>& functions, int rounding) {
  constexpr ZumiSize kRoi{205, 30};
  constexpr size_t kPixels = size_t{kRoi.width} * kRoi.height;
  constexpr int kStep = kRoi.width * sizeof(T);
  for (const Matrix& matrix : kMatrices) {
    for (const size_t channels : {3, 4, 1}) {
      const std::vector<T> src = noise<T>(std::max<size_t>(channels, 3) * kPixels);
      std::vector<T> expected = src, got = src, inPlace = src;
      if (kIsFloat<T>) std::fesetround(rounding);
      for (size_t i = 0; i < kPixels; ++i) {
        const size_t at = channels * i, next = channels == 1 ? kPixels : 1;
        const T x[3] = {src[at], src[at + next], src[at + 2 * next]};
        for (int c = 0; c < 3; ++c) expected[at + c * next] = twisted(matrix, c, x);
      }
      std::fesetround(rounding);
      if (channels == 1) {
        const T* const from[3] = {&src[0], &src[kPixels], &src[2 * kPixels]};
        T* const to[3] = {&got[0], &got[kPixels], &got[2 * kPixels]};
        T* const both[3] = {&inPlace[0], &inPlace[kPixels], &inPlace[2 * kPixels]};
        functions.p3(from, kStep, to, kStep, kRoi, matrix.data());
        functions.p3InPlace(both, kStep, kRoi, matrix.data());
      } else {
        const int step = kStep * static_cast<int>(channels);
        (channels == 3 ? functions.c3 : functions.ac4)(src.data(), step, got.data(), step, kRoi, matrix.data());
        (channels == 3 ? functions.c3InPlace : functions.ac4InPlace)(inPlace.data(), step, kRoi, matrix.data());
      }
      EXPECT_EQ(rounding, roundingMode());
      std::fesetround(FE_TONEAREST);
      EXPECT_TRUE(same(expected, got)) << "matrix " << &matrix - kMatrices << ", " << channels << " samples a pixel";
      EXPECT_TRUE(same(expected, inPlace)) << "matrix " << &matrix - kMatrices << ", in place";
    }
  }
}

class ColorTwistTest : public testing::Test {
 protected:
  ~ColorTwistTest() override { zumtest::useInstructionSet(zumtest::kBestInstructionSet); }
};

TEST_F(ColorTwistTest, SumsInEveryRoundingMode) {
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    for (const int rounding : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD}) {
      SCOPED_TRACE(std::string(hwy::TargetName(set)) + ", rounding mode " + std::to_string(rounding));
      expectTwists(kFunctions8u, rounding);
      expectTwists(kFunctions8s, rounding);
      expectTwists(kFunctions16u, rounding);
      expectTwists(kFunctions16s, rounding);
      expectTwists(kFunctions32f, rounding);
    }
  }
}

// A black pixel becomes the offsets.
template <class T>
void expectOffsets(const Functions<T>& functions, const std::vector<std::pair<float, int>>& cases) {
  for (const auto& [offset, result] : cases) {
    T pixel[3] = {};
    const float twist[12] = {0, 0, 0, offset, 0, 0, 0, offset, 0, 0, 0, offset};
    functions.c3InPlace(pixel, sizeof(pixel), {1, 1}, twist);
    EXPECT_EQ((std::array<int, 3>{result, result, result}), (std::array<int, 3>{pixel[0], pixel[1], pixel[2]}))
        << offset;
  }
}

TEST_F(ColorTwistTest, LimitsAndTies) {
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    expectOffsets(kFunctions8u,
                  {{2.5f, 2}, {3.5f, 4}, {254.5f, 254}, {300, 255}, {-3, 0}, {1e20f, 255}, {-1e20f, 0}, {kNan, 255}});
    expectOffsets(kFunctions8s, {{-2.5f, -2}, {127.5f, 127}, {-1e20f, -128}, {1e20f, 127}, {kNan, 127}});
    expectOffsets(kFunctions16u, {{70000, 65535}, {-1, 0}, {-1e20f, 0}, {1e20f, 65535}, {kNan, 65535}});
    expectOffsets(kFunctions16s, {{-40000, -32768}, {40000, 32767}, {-1e20f, -32768}, {1e20f, 32767}, {kNan, 32767}});
  }
}

// Four samples; steps of a quarter of a row make one run of the image.
TEST_F(ColorTwistTest, FourSamples) {
  constexpr int kWidth = 37, kHeight = 9, kSamples = 4 * kWidth * kHeight;
  const std::vector<float> src = noise<float>(kSamples);
  for (const Matrix& matrix : kMatrices) {
    std::vector<float> expected(kSamples);
    for (int i = 0; i < kSamples; ++i) {
      const float *x = &src[i / 4 * 4], *t = &matrix[i % 4 * 4];
      const float p0 = x[0] * t[0], p1 = x[1] * t[1], p2 = x[2] * t[2], p3 = x[3] * t[3];
      const float two = p0 + p1, three = two + p2;
      expected[i] = three + p3;
    }
    for (const int64_t set : zumtest::instructionSets()) {
      zumtest::useInstructionSet(set);
      for (const int step : {16 * kWidth, 4 * kWidth}) {
        std::vector<float> got(kSamples);
        EXPECT_EQ(zumOk, zumiColorTwist_32f_C4R(src.data(), step, got.data(), step, {kWidth, kHeight}, matrix.data()));
        EXPECT_TRUE(same(expected, got)) << hwy::TargetName(set) << ", matrix " << &matrix - kMatrices;
      }
    }
  }
}

}  // namespace
