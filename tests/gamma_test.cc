// Gamma against the curve in single steps of scalar arithmetic with the C library's pow: all integer samples, and
// floats of all kinds in ranges of all kinds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "zumcc.h"

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

// ---- The six functions of a direction and a depth, on the same samples

template <class T, class... Range>
struct Functions {
  ZumStatus (*c3)(const T*, int, T*, int, ZumiSize, Range...), (*c3i)(T*, int, ZumiSize, Range...);
  ZumStatus (*ac4)(const T*, int, T*, int, ZumiSize, Range...), (*ac4i)(T*, int, ZumiSize, Range...);
  ZumStatus (*p3)(const T* const*, int, T* const*, int, ZumiSize, Range...), (*ip3)(T* const*, int, ZumiSize, Range...);
};
#define ZUM_FUNCTIONS(name) \
  { name##_C3R, name##_C3IR, name##_AC4R, name##_AC4IR, name##_P3R, name##_IP3R }
const Functions<Zum8u> k8u[] = {ZUM_FUNCTIONS(zumiGammaInv_8u), ZUM_FUNCTIONS(zumiGammaFwd_8u)};
const Functions<Zum16u> k16u[] = {ZUM_FUNCTIONS(zumiGammaInv_16u), ZUM_FUNCTIONS(zumiGammaFwd_16u)};
const Functions<Zum32f, Zum32f, Zum32f> k32f[] = {ZUM_FUNCTIONS(zumiGammaInv_32f), ZUM_FUNCTIONS(zumiGammaFwd_32f)};

template <class T>
bool same(T a, T b) {
  return std::memcmp(&a, &b, sizeof(T)) == 0 || (a != a && b != b);
}

template <class T>
void expectSame(const std::vector<T>& src, const std::vector<T>& wanted, const std::vector<T>& got,
                const char* layout) {
  const auto at = std::mismatch(wanted.begin(), wanted.end(), got.begin(), same<T>).first - wanted.begin();
  if (static_cast<std::size_t>(at) == wanted.size()) return;
  ADD_FAILURE() << layout << ", " << std::hexfloat << +src[at] << " becomes " << +got[at] << ", not " << +wanted[at];
}

// Converts rows of a multiple of 12 samples in every layout.
template <class T, class... Range>
void compare(const Functions<T, Range...>& f, const std::vector<T>& src, std::vector<T> wanted, int rows,
             Range... range) {
  const int rowSamples = static_cast<int>(src.size()) / rows, step = rowSamples * static_cast<int>(sizeof(T));
  const ZumiSize three{rowSamples / 3, rows}, four{rowSamples / 4, rows};
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    SCOPED_TRACE(hwy::TargetName(set));
    std::vector<T> dst(src.size()), inPlace = src;
    ASSERT_EQ(zumOk, f.c3(src.data(), step, dst.data(), step, three, range...));
    expectSame(src, wanted, dst, "C3");
    ASSERT_EQ(zumOk, f.c3i(inPlace.data(), step, three, range...));
    expectSame(src, wanted, inPlace, "C3 in place");

    // Planes one behind the other in every row.
    dst.assign(src.size(), T());
    inPlace = src;
    const int third = rowSamples / 3;
    const T* const from[] = {src.data(), src.data() + third, src.data() + 2 * third};
    T* const to[] = {dst.data(), dst.data() + third, dst.data() + 2 * third};
    T* const both[] = {inPlace.data(), inPlace.data() + third, inPlace.data() + 2 * third};
    ASSERT_EQ(zumOk, f.p3(from, step, to, step, three, range...));
    expectSame(src, wanted, dst, "P3");
    ASSERT_EQ(zumOk, f.ip3(both, step, three, range...));
    expectSame(src, wanted, inPlace, "P3 in place");

    std::vector<T> wantedOf4 = wanted;
    inPlace = dst = src;
    for (std::size_t i = 3; i < src.size(); i += 4) wantedOf4[i] = src[i];
    ASSERT_EQ(zumOk, f.ac4(src.data(), step, dst.data(), step, four, range...));
    expectSame(src, wantedOf4, dst, "AC4");
    ASSERT_EQ(zumOk, f.ac4i(inPlace.data(), step, four, range...));
    expectSame(src, wantedOf4, inPlace, "AC4 in place");
  }
}

class GammaTest : public testing::Test {
 protected:
  ~GammaTest() override {
    zumtest::useInstructionSet(zumtest::kBestInstructionSet);
    std::fesetround(FE_TONEAREST);
  }
};

// `samples` of all values in turn, from some value on.
template <class T>
void compareValues(const Functions<T> (&functions)[2], int first, int samples, int rows) {
  for (const bool forward : {false, true}) {
    std::vector<T> src(samples), wanted;
    for (int i = 0; i < samples; ++i) src[i] = static_cast<T>(first + i);
    for (const T s : src) wanted.push_back(expected(forward, s));
    compare(functions[forward], src, wanted, rows);
  }
}

TEST_F(GammaTest, EveryByte) { compareValues(k8u, 0, 12 * 64, 1); }

TEST_F(GammaTest, EveryLevelByTable) { compareValues(k16u, 0, 12 * 8192, 4); }

TEST_F(GammaTest, EveryLevelDirectly) {
  constexpr int kSamples = 65532;
  for (const int first : {0, kSamples}) compareValues(k16u, first, kSamples, 1);
}

// The exact values at the ends of the curve and some between them.
TEST_F(GammaTest, KnownBytes) {
  const Zum8u samples[] = {0, 1, 2, 3, 4, 64, 128, 200, 254, 255, 0, 0},
              forward[] = {0, 4, 9, 14, 18, 125, 180, 226, 255, 255},
              inverse[] = {0, 0, 0, 1, 1, 20, 67, 157, 253, 255};
  Zum8u dst[12];
  zumiGammaFwd_8u_C3R(samples, 12, dst, 12, {4, 1});
  EXPECT_TRUE(std::equal(std::begin(forward), std::end(forward), dst));
  zumiGammaInv_8u_C3R(samples, 12, dst, 12, {4, 1});
  EXPECT_TRUE(std::equal(std::begin(inverse), std::end(inverse), dst));
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

TEST_F(GammaTest, FloatsAreThoseOfTheLibrarysPow) {
  const float ranges[][2] = {{0, 1}, {0, 255}, {-1, 1}, {1e6f, 1e6f + 1}, {0, 1e-40f}, {-3e38f, 3e38f}};
  for (const auto& [least, most] : ranges) {
    // What is nearly between two floats takes many samples to be met. One range is enough for that.
    const std::vector<float> src = samples(least, most, most == 255 ? 12 << 15 : 12 << 7);
    for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_TOWARDZERO}) {
      std::fesetround(mode);
      for (const bool forward : {false, true}) {
        SCOPED_TRACE(testing::Message() << least << " to " << most << ", rounding mode " << mode);
        std::vector<float> wanted;
        for (const float s : src) wanted.push_back(expected(forward, s, least, most));
        compare(k32f[forward], src, wanted, 2, float{least}, float{most});
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

TEST_F(GammaTest, TableIsOfMoreThan65536SamplesAndFreed) {
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
