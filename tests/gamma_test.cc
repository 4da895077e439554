// Gamma against the curve in single steps of scalar arithmetic with the C library's pow: all integer samples, and
// floats of all kinds in ranges of all kinds.
#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numeric>

#include "support/colours.h"

namespace zumtest {
namespace {

// ---- The curve. Its constants stand outside, so that no rounding mode but the default one is in them.

constexpr double kPer1099 = 0x1.d1e0c942633b6p-1, kPer045 = 1 / 0.45, kPer45 = 1 / 4.5, kPer65535 = 1.0 / 65535;

double bent(bool forward, double d, double x, double length, double bottom) {
  if (forward) return x >= 0.018 ? (std::pow(x, 0.45) * 1.099 - 0.099) * length + bottom : d * 4.5 + bottom;
  return x >= 0.0812 ? std::pow((x + 0.099) * kPer1099, kPer045) * length + bottom : kPer45 * d + bottom;
}

Zum8u expected(bool forward, Zum8u s) {
  const double value = bent(forward, s, s / 255.0, 255, 0), whole = std::floor(value);
  // What is a tie but for the rounding of the last place counts as one.
  if (std::fabs(value - whole - 0.5) < 1e-9) return static_cast<Zum8u>(2 * std::nearbyint((whole + 0.5) / 2));
  return static_cast<Zum8u>(std::lround(value));
}

Zum16u expected(bool forward, Zum16u s) {
  const auto raised = static_cast<float>(bent(forward, s, kPer65535 * s, 65535, 0) + 0.5);
  int whole = static_cast<int>(raised);
  if (whole % 2 == 1 && static_cast<float>(whole) == raised) --whole;
  return static_cast<Zum16u>(whole);
}

float expected(bool forward, float s, float least, float most) {
  const float range = most - least, distance = s - least;
  const double d = distance, length = range;
  return static_cast<float>(bent(forward, d, d * (1 / length), length, least));
}

// ---- Comparisons, of all layouts

std::string gamma(bool forward, const char* depth) {
  return std::string(forward ? "zumiGammaFwd_" : "zumiGammaInv_") + depth + "_*";
}

template <class T, class... Range>
Colour<T> expected(bool forward, const Colour<T>& c, Range... range) {
  return {expected(forward, c[0], range...), expected(forward, c[1], range...), expected(forward, c[2], range...)};
}

// All values in turn, from some value on.
template <class T>
void compareValues(const char* depth, ZumiSize size, int first = 0) {
  for (const bool forward : {false, true})
    for (const Function& function : named(gamma(forward, depth)))
      expectPicture(
          function, size,
          [=](const Picture& src, const Picture& dst) {
            forEachPixel(src, [&](int x, int y) { dst.set(x, y, expected(forward, src.at<T>(x, y))); });
          },
          [=](const Picture& src) {
            forEachPixel(src, [&](int x, int y) {
              for (int k = 0; k < 3; ++k) src.set(k, x, y, static_cast<T>(first + (y * size.width + x) * 3 + k));
            });
          });
}

TEST(Gamma, EveryByte) { compareValues<Zum8u>("8u", {256, 1}); }

TEST(Gamma, EveryLevelByTable) { compareValues<Zum16u>("16u", {8192, 4}); }

TEST(Gamma, EveryLevelDirectly) {
  for (const int first : {0, 65532}) compareValues<Zum16u>("16u", {21844, 1}, first);
}

// The exact values at the ends of the curve and some between them.
TEST(Gamma, KnownBytes) {
  const int known[][3] = {{0, 0, 0},     {1, 4, 0},      {2, 9, 0},       {3, 14, 1},      {4, 18, 1},
                          {64, 125, 20}, {128, 180, 67}, {200, 226, 157}, {254, 255, 253}, {255, 255, 255}};
  for (const auto& [s, forward, inverse] : known) {
    EXPECT_EQ(forward, converted("zumiGammaFwd_8u_C3R", {s, s, s}, 1, 0)[0]) << s;
    EXPECT_EQ(inverse, converted("zumiGammaInv_8u_C3R", {s, s, s}, 1, 0)[0]) << s;
  }
}

// ---- Single precision

// Half of them inside the range, a quarter near its bottom and a quarter of all kinds: apart, as one sample that is out
// of the ordinary takes its neighbours to the slow path.
std::vector<float> samples(float least, float most, std::size_t n) {
  std::mt19937 random;
  std::vector<float> result(n);
  for (std::size_t i = 0; i < n; ++i) {
    const uint32_t bits = random();
    const double share = bits * 0x1p-32, length = double{most} - least;
    result[i] = static_cast<float>(least + (i < n / 2 ? share : (share - 0.5) / 4) * length);
    if (i >= n / 4 * 3) std::memcpy(&result[i], &bits, sizeof(bits));
  }
  const float kInfinity = std::numeric_limits<float>::infinity();
  const float special[] = {least, most, 0, -0.0f, kInfinity, -kInfinity, std::nanf(""), 1e-45f, 3.4e38f, -3.4e38f};
  std::copy(std::begin(special), std::end(special), result.end() - n / 8);
  return result;
}

TEST(Gamma, FloatsAreThoseOfTheLibrarysPow) {
  const float ranges[][2] = {{0, 1}, {0, 255}, {-1, 1}, {1e6f, 1e6f + 1}, {0, 1e-40f}, {-3e38f, 3e38f}};
  for (const auto& range : ranges) {
    const float least = range[0], most = range[1];
    // What is nearly between two floats takes many samples to be met. One range is enough for that.
    const int width = most == 255 ? 1 << 16 : 1 << 8;
    const std::vector<float> src = samples(least, most, 6 * width);
    for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_TOWARDZERO}) {
      for (const bool forward : {false, true}) {
        for (Function function : named(gamma(forward, "32f"))) {
          function.traits.variants = {{{least, most}}};
          std::fesetround(mode);
          expectPicture(
              function, {width, 2},
              [=](const Picture& from, const Picture& to) {
                forEachPixel(from,
                             [&](int x, int y) { to.set(x, y, expected(forward, from.at<float>(x, y), least, most)); });
              },
              [&](const Picture& from) {
                for (int k = 0; k < 3; ++k)
                  for (int y = 0; y < 2; ++y)
                    for (int x = 0; x < width; ++x) from.set(k, x, y, src[(y * width + x) * 3 + k]);
              });
          std::fesetround(FE_TONEAREST);
        }
      }
    }
  }
}

// ---- The table of 16-bit values

int blocks = 0, failures = 0;
void* countedMalloc(size_t size) { return ++blocks, std::malloc(size); }
void countedFree(void* block) {
  --blocks;
  std::free(block);
}
void* noMemory(size_t) { return ++failures, nullptr; }

TEST(Gamma, TableServesOddAddresses) {
  constexpr int kWidth = 257, kHeight = 86, kBytes = kWidth * kHeight * 6;
  std::vector<Zum16u> image(kBytes / 2 + 1);
  std::iota(image.begin(), image.end(), Zum16u{0});
  Zum8u* const odd = reinterpret_cast<Zum8u*>(image.data()) + 1;
  std::vector<Zum16u> expected(kBytes / 2);
  std::memcpy(expected.data(), odd, kBytes);
  EXPECT_EQ(zumOk, zumiGammaFwd_16u_C3IR(reinterpret_cast<Zum16u*>(odd), kWidth * 6, {kWidth, kHeight}));
  EXPECT_EQ(zumOk, zumiGammaFwd_16u_C3IR(expected.data(), kWidth * 6, {kWidth, kHeight}));
  EXPECT_EQ(0, std::memcmp(expected.data(), odd, kBytes));
}

TEST(Gamma, TableIsOfMoreThan65536SamplesAndFreed) {
  constexpr int kWidth = 257;
  std::vector<Zum16u> image(kWidth * 86 * 4, 7), before = image;
  const ZumiSize large{kWidth, 86}, small{kWidth, 85};  // 66306 and 65535 samples
  Zum16u* const planes[] = {image.data(), image.data(), image.data()};

  i_malloc = noMemory;
  EXPECT_EQ(zumErrMemAlloc, zumiGammaFwd_16u_C3IR(image.data(), kWidth * 6, large));
  EXPECT_EQ(zumErrMemAlloc, zumiGammaInv_16u_AC4IR(image.data(), kWidth * 8, large));
  EXPECT_EQ(zumErrMemAlloc, zumiGammaInv_16u_IP3R(planes, kWidth * 2, large));
  EXPECT_EQ(zumErrStep, zumiGammaInv_16u_IP3R(planes, 0, large));
  EXPECT_EQ(3, failures);
  EXPECT_EQ(before, image);
  EXPECT_EQ(zumOk, zumiGammaFwd_16u_AC4IR(image.data(), kWidth * 8, small));
  EXPECT_EQ(3, failures);

  i_malloc = countedMalloc;
  i_free = countedFree;
  EXPECT_EQ(zumOk, zumiGammaFwd_16u_C3IR(image.data(), kWidth * 6, large));
  EXPECT_EQ(0, blocks);
  i_malloc = std::malloc;
  i_free = std::free;
}

}  // namespace
}  // namespace zumtest
