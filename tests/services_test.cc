// Version, memory, copy, fill and the reductions of single-precision images.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "../src/frame/extended.h"
#include "zumcc.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(Version, Record) {
  const ZumLibraryVersion* v = zumccGetLibVersion();
  EXPECT_EQ((std::vector<int>{5, 2, 108, 321}), (std::vector<int>{v->major, v->minor, v->majorBuild, v->build}));
  EXPECT_EQ(0, std::memcmp("k4\0\0", v->targetCpu, 4));
  EXPECT_STREQ("libzumcck4.so.5.2", v->name);
  EXPECT_STREQ("5.2", v->version);
  EXPECT_STREQ("Jul 11 2007", v->buildDate);
}

// An allocator that gives blocks at an awkward offset and remembers what it was asked.
size_t requested;
size_t offset;
void* given;
void* freed;

template <class T>
void checkBlocks(T* (*allocate)(int)) {
  EXPECT_EQ(nullptr, allocate(0));
  EXPECT_EQ(nullptr, allocate(-1));
  for (const int len : {1, 2, 7, 64, 1001}) {
    for (offset = 0; offset <= 32; ++offset) {
      T* block = allocate(len);
      ASSERT_NE(nullptr, block);
      EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block) % 32);
      EXPECT_EQ(len * sizeof(T) + sizeof(void*) + 32, requested);
      std::memset(block, 0xAB, len * sizeof(T));  // the sanitizer sees whether the block is whole
      freed = nullptr;
      zumsFree(block);
      EXPECT_EQ(given, freed);
    }
  }
  const auto normal = i_malloc;
  i_malloc = [](size_t) -> void* { return nullptr; };
  EXPECT_EQ(nullptr, allocate(1));
  i_malloc = normal;
}

class Blocks : public testing::Test {
 protected:
  void SetUp() override {
    i_malloc = [](size_t size) {
      requested = size;
      given = static_cast<char*>(std::malloc(size + offset)) + offset;
      return given;
    };
    i_free = [](void* block) {
      freed = block;
      std::free(static_cast<char*>(block) - offset);
    };
  }
  void TearDown() override {
    i_malloc = std::malloc;
    i_free = std::free;
  }
};

TEST_F(Blocks, OfAllSamples) {
  checkBlocks(zumsMalloc_16s);
  checkBlocks(zumsMalloc_16u);
  checkBlocks(zumsMalloc_32f);
}
TEST_F(Blocks, FreeOfNull) {
  freed = &offset;
  zumsFree(nullptr);
  EXPECT_EQ(&offset, freed);
}

TEST(CopyAndSet, EveryShape) {
  constexpr int kRows = 3, kMiddle = 4096;
  std::mt19937 random(2);
  std::vector<Zum8u> source(2 * kMiddle);
  for (Zum8u& s : source) s = static_cast<Zum8u>(random());
  const Zum8u* src = source.data() + kMiddle;
  for (const int width : {1, 2, 15, 16, 17, 31, 32, 33, 47, 63, 64, 65, 100, 255, 256, 257, 700}) {
    for (const int srcStep : {width, width + 3, -width - 5, 0}) {
      for (const int dstStep : {width, width + 1, -width, -width - 7, 0}) {
        for (const int align : {0, 1, 13}) {
          std::vector<Zum8u> copied(2 * kMiddle, 0xEE), filled = copied, wantCopied = copied, wantFilled = copied;
          for (int y = 0; y < kRows; ++y) {
            for (int x = 0; x < width; ++x) {
              const int at = kMiddle + align + y * dstStep + x;
              wantCopied[at] = src[y * srcStep + x];
              wantFilled[at] = 0x5A;
            }
          }
          const ZumiSize roi = {width, kRows};
          EXPECT_EQ(zumOk, zumiCopy_8u_C1R(src, srcStep, copied.data() + kMiddle + align, dstStep, roi));
          EXPECT_EQ(zumOk, zumiSet_8u_C1R(0x5A, filled.data() + kMiddle + align, dstStep, roi));
          ASSERT_TRUE(wantCopied == copied && wantFilled == filled)
              << width << ' ' << srcStep << ' ' << dstStep << ' ' << align;
        }
      }
    }
  }
}

// Larger than most caches, at odd addresses.
TEST(CopyAndSet, HugeImages) {
  for (const int padding : {0, 5}) {
    const ZumiSize roi = {6007, 6007};
    const int step = roi.width + padding;
    const size_t size = static_cast<size_t>(step) * roi.height;
    std::vector<Zum8u> src(size + 1), dst(size + 2, 0xEE);
    for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<Zum8u>(i * 2654435761u >> 23);
    const auto differences = [&](auto want) {
      size_t count = 0;
      for (size_t i = 0; i < size + 2; ++i) {
        const bool inside = i >= 1 && i <= size && (i - 1) % step < static_cast<size_t>(roi.width);
        count += dst[i] != (inside ? want(i) : 0xEE);
      }
      return count;
    };
    EXPECT_EQ(zumOk, zumiCopy_8u_C1R(src.data(), step, dst.data() + 1, step, roi));
    EXPECT_EQ(0u, differences([&](size_t i) { return src[i - 1]; }));
    EXPECT_EQ(zumOk, zumiSet_8u_C1R(0x5A, dst.data() + 1, step, roi));
    EXPECT_EQ(0u, differences([](size_t) { return 0x5A; }));
  }
}

// The lane of every sample of a row, worked out from its position alone.
std::vector<size_t> lanesOfRow(uintptr_t address, size_t width, size_t lanes) {
  std::vector<size_t> result;
  if (address % 4 == 0) {
    for (; address % 16 != 0 && result.size() < width; address += 4) result.push_back(0);
  }
  for (size_t group = lanes; group != 0; group /= 2) {
    while (width - result.size() >= group) {
      for (size_t lane = 0; lane < group; ++lane) result.push_back(lane);
    }
  }
  return result;
}

template <class Operation>
float fold(std::vector<float> lanes, Operation operation) {
  while (lanes.size() > 1) {
    const std::vector<float> upper(lanes.begin() + lanes.size() / 2, lanes.end());
    lanes.resize(upper.size());
    for (size_t i = 0; i < upper.size(); ++i) lanes[i] = operation(lanes[i], upper[i]);
  }
  return lanes[0];
}

TEST(Reductions, EveryShape) {
  constexpr int kRows = 3;
  const auto add = [](float a, float b) { return a + b; };
  const auto larger = [](float a, float b) { return a > b ? a : b; };
  std::mt19937 random(3);
  alignas(64) char memory[2 * 4096];
  char* const middle = memory + 4096;
  for (int width = 1; width <= 70; ++width) {
    for (const int step : {4 * width, 4 * width + 4, -4 * width - 12, 4 * width + 2, 0}) {
      for (const int align : {0, 4, 8, 12, 2}) {
        for (const int nans : {0, 1, 12}) {
          for (size_t i = 0; i + 2 < sizeof(memory); i += 2) {  // whatever the alignment, the samples are random
            const uint32_t bits = random() % 64 < static_cast<unsigned>(nans) ? 0xFFFF : random() & 0xC1FF;
            const auto half = static_cast<uint16_t>(bits);
            std::memcpy(memory + i, &half, 2);
          }
          std::vector<float> maxima(8, -FLT_MAX);
          zum::Extended fast = 0.0;
          double odd = 0, even = 0;
          for (int y = 0; y < kRows; ++y) {
            const char* row = middle + align + y * step;
            const auto address = reinterpret_cast<uintptr_t>(row);
            const auto lanes8 = lanesOfRow(address, width, 8), lanes16 = lanesOfRow(address, width, 16);
            std::vector<float> sums(16, 0.0f);
            for (int x = 0; x < width; ++x) {
              float sample;
              std::memcpy(&sample, row + 4 * x, 4);
              maxima[lanes8[x]] = larger(maxima[lanes8[x]], sample);
              sums[lanes16[x]] += sample;
              (x % 2 ? odd : even) += sample;
            }
            fast = fast + zum::Extended(fold(sums, add));
          }
          const float max = fold(maxima, larger);
          const double accurate = odd + even, sums[3] = {double(fast), double(fast), accurate};
          const auto src = reinterpret_cast<const Zum32f*>(middle + align);
          const ZumiSize roi = {width, kRows};
          const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
          float gotMax;
          EXPECT_EQ(zumOk, zumiMax_32f_C1R(src, step, roi, &gotMax));
          ASSERT_PRED2(same, max, gotMax) << width << ' ' << step << ' ' << align;
          for (const int hint : {0, 1, 2}) {
            double gotSum, gotMean;
            EXPECT_EQ(zumOk, zumiSum_32f_C1R(src, step, roi, &gotSum, hint));
            EXPECT_EQ(zumOk, zumiMean_32f_C1R(src, step, roi, &gotMean, hint));
            ASSERT_PRED2(same, sums[hint], gotSum) << width << ' ' << step << ' ' << align << ' ' << hint;
            ASSERT_PRED2(same, sums[hint] / (3.0 * width), gotMean);
          }
        }
      }
    }
  }
}

TEST(Reductions, SumByHand) {
  struct Case {
    ZumiSize roi;
    std::vector<float> samples;
    int hint;
    double sum;
  };
  const Case cases[] = {
      {{3, 1}, {0x1p53f, 1, -0x1p53f}, zumHintAccurate, 1},  // even positions first
      {{1, 3}, {0x1p53f, 1, -0x1p53f}, zumHintAccurate, 0},  // a double does not hold the second row
      {{1, 3}, {0x1p63f, 1, -0x1p63f}, zumHintFast, 1},      // 64 bits do
      {{1, 3}, {0x1p64f, 1, -0x1p64f}, zumHintFast, 0},      // but not 65
      {{2, 1}, {0x1p24f, 1}, zumHintNone, 0x1p24},           // within a row single precision
      {{2, 1}, {0x1p24f, 1}, zumHintAccurate, 0x1p24 + 1},
  };
  for (const Case& c : cases) {
    double sum;
    EXPECT_EQ(zumOk, zumiSum_32f_C1R(c.samples.data(), 4 * c.roi.width, c.roi, &sum, c.hint));
    EXPECT_EQ(c.sum, sum) << c.roi.width << ' ' << c.roi.height << ' ' << c.hint;
  }
}

TEST(Reductions, MaxByHand) {
  struct Case {
    std::vector<float> samples;  // one column: all in lane 0
    float max;
  };
  const Case cases[] = {
      {{1, kNaN, -5}, -5},        // a NaN hides what came before it
      {{1, -5, kNaN}, -FLT_MAX},  // and gives way to the other lanes
      {{-kInfinity, -kInfinity}, -FLT_MAX},
      {{2, kInfinity, 3}, kInfinity},
  };
  for (const Case& c : cases) {
    float max;
    EXPECT_EQ(zumOk, zumiMax_32f_C1R(c.samples.data(), 4, {1, static_cast<int>(c.samples.size())}, &max));
    EXPECT_EQ(c.max, max);
  }
}

// The number of pixels does not fit in 32 bits.
TEST(Reductions, MeanOfManyPixels) {
  const std::vector<float> row(65536, 1.5f);
  double mean;
  EXPECT_EQ(zumOk, zumiMean_32f_C1R(row.data(), 0, {65536, 65537}, &mean, zumHintFast));
  EXPECT_EQ(1.5, mean);
}

}  // namespace
