// Colour twists against the sums in single steps of scalar arithmetic: every depth and layout, matrices of all kinds.
#include <cfenv>
#include <cmath>

#include "support/colours.h"
#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

namespace zumtest {
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
T twisted(const Matrix& matrix, int i, const Colour<T>& x) {
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

// As std::fegetround tells it, which may look at another unit.
int roundingMode() {
#if defined(__x86_64__) || defined(__i386__)
  static_assert(FE_UPWARD == _MM_ROUND_UP >> 3 && FE_DOWNWARD == _MM_ROUND_DOWN >> 3, "the same two bits");
  return static_cast<int>(_mm_getcsr() & _MM_ROUND_MASK) >> 3;
#else
  return std::fegetround();
#endif
}

// A function whose calls round in a mode, and leave it.
Function rounding(const Function& function, int mode) {
  Function result = function;
  result.invoke = [=](const Argument* arguments) {
    std::fesetround(mode);
    const ZumStatus status = function.invoke(arguments);
    EXPECT_EQ(mode, roundingMode()) << function.name;
    std::fesetround(FE_TONEAREST);
    return status;
  };
  return result;
}

// Of all sizes.
void fillWithFloats(const Picture& src) {
  std::minstd_rand random;
  forEachPixel(src, [&](int x, int y) {
    for (int k = 0; k < 4; ++k) {
      const auto bits = static_cast<uint32_t>(random() * 5);
      if (src.has(k, x, y))
        src.set(k, x, y, std::ldexp(static_cast<float>(bits >> 8) - 5e6f, static_cast<int>(bits % 40) - 30));
    }
  });
}

template <class T>
void expectTwists(const std::string& functions) {
  for (const Function& function : named(functions)) {
    for (const Matrix& matrix : kMatrices) {
      for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD}) {
        SCOPED_TRACE(testing::Message() << "matrix " << &matrix - kMatrices << ", rounding mode " << mode);
        expectPicture(
            rounding(withTable(function, matrix.data()), mode), {205, 30},
            [&](const Picture& src, const Picture& dst) {
              if (kIsFloat<T>) std::fesetround(mode);
              forEachPixel(src, [&](int x, int y) {
                for (int k = 0; k < 3; ++k) dst.set(k, x, y, twisted(matrix, k, src.at<T>(x, y)));
              });
              std::fesetround(FE_TONEAREST);
            },
            kIsFloat<T> ? fillWithFloats : Filling());
      }
    }
  }
}

TEST(ColorTwist, SumsInEveryRoundingMode) {
  expectTwists<Zum8u>("zumiColorTwist32f_8u_*");
  expectTwists<Zum8s>("zumiColorTwist32f_8s_*");
  expectTwists<Zum16u>("zumiColorTwist32f_16u_*");
  expectTwists<Zum16s>("zumiColorTwist32f_16s_*");
  expectTwists<Zum32f>("zumiColorTwist_32f_!(C4R)");
}

// A black pixel becomes the offsets.
TEST(ColorTwist, LimitsAndTies) {
  const struct {
    const char* function;
    std::vector<std::pair<float, int>> results;
  } cases[] = {{"zumiColorTwist32f_8u_C3IR",
                {{2.5f, 2}, {3.5f, 4}, {254.5f, 254}, {300, 255}, {-3, 0}, {1e20f, 255}, {-1e20f, 0}, {kNan, 255}}},
               {"zumiColorTwist32f_8s_C3IR", {{-2.5f, -2}, {127.5f, 127}, {-1e20f, -128}, {1e20f, 127}, {kNan, 127}}},
               {"zumiColorTwist32f_16u_C3IR", {{70000, 65535}, {-1, 0}, {-1e20f, 0}, {1e20f, 65535}, {kNan, 65535}}},
               {"zumiColorTwist32f_16s_C3IR",
                {{-40000, -32768}, {40000, 32767}, {-1e20f, -32768}, {1e20f, 32767}, {kNan, 32767}}}};
  onEveryInstructionSet([&] {
    for (const auto& [name, results] : cases) {
      for (const auto& [offset, result] : results) {
        const float twist[12] = {0, 0, 0, offset, 0, 0, 0, offset, 0, 0, 0, offset};
        EXPECT_EQ((Colour<int>{result, result, result}), converted(withTable(named(name).front(), twist), {}, 1, 0))
            << name << ' ' << offset;
      }
    }
  });
}

TEST(ColorTwist, FourSamples) {
  for (const Matrix& matrix : kMatrices) {
    expectPicture(
        withTable(named("zumiColorTwist_32f_C4R").front(), matrix.data()), {37, 9},
        [&](const Picture& src, const Picture& dst) {
          forEachPixel(src, [&](int x, int y) {
            for (int k = 0; k < 4; ++k) {
              float sum = static_cast<float>(src.get(0, x, y)) * matrix[4 * k];
              for (int j = 1; j < 4; ++j) {
                const float product = static_cast<float>(src.get(j, x, y)) * matrix[4 * k + j];
                sum = sum + product;
              }
              dst.set(k, x, y, sum);
            }
          });
        },
        fillWithFloats);
  }
}

// Steps of a quarter of a row make one run of the image.
TEST(ColorTwist, FourSamplesInOneRun) {
  constexpr int kWidth = 37, kHeight = 9;
  std::vector<float> src(4 * kWidth * kHeight), rows(src.size()), run(src.size());
  for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<float>(i * 40503 % 65536);
  zumiColorTwist_32f_C4R(src.data(), 16 * kWidth, rows.data(), 16 * kWidth, {kWidth, kHeight}, kMatrices[2].data());
  zumiColorTwist_32f_C4R(src.data(), 4 * kWidth, run.data(), 4 * kWidth, {kWidth, kHeight}, kMatrices[2].data());
  EXPECT_EQ(rows, run);
}

}  // namespace
}  // namespace zumtest
