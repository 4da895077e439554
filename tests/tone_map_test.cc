// Tone mapping against single steps of scalar arithmetic, and what it does with images that give no scale.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace {

using Function = ZumStatus(const Zum32f*, int, Zum8u*, int, ZumiSize);

constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();
constexpr Zum8u kUntouched = 99;

class ToneMapTest : public testing::Test {
 protected:
  ~ToneMapTest() override { zumtest::useInstructionSet(zumtest::kBestInstructionSet); }
};

struct Row {
  std::vector<float> samples;
  ZumStatus status;
  std::vector<Zum8u> bytes;
};

void expectRows(Function* function, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.samples));
    std::vector<Zum8u> got(row.samples.size(), kUntouched);
    EXPECT_EQ(row.status, function(row.samples.data(), 0, got.data(), 0, {static_cast<int>(got.size()), 1}));
    EXPECT_EQ(row.bytes, got);
  }
}

constexpr float kSmallestNormal = 0x1p-126f, kDenormal = 0x1p-130f;

// A NaN in the last of the eight lanes of the maximum remains, others are passed over.
TEST_F(ToneMapTest, Linear) {
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    expectRows(zumiToneMapLinear_32f8u_C1R,
               {{{0, 0}, zumOk, {0, 0}},
                {{-0.0f, -5}, zumOk, {0, 0}},
                {{kDenormal, kSmallestNormal}, zumOk, {0, 0}},
                {{-1, -2}, zumWrnNoOperation, {kUntouched, kUntouched}},
                {{2, 1, -0.0118f, -1}, zumOk, {255, 127, 255, 129}},
                // 255 / 41 is rounded down, and the product is below 255.
                {{41}, zumOk, {254}},
                {{3, -3e10f}, zumOk, {255, 0}},
                {{kInfinity, 5}, zumOk, {0, 0}},
                {{kNan, 2}, zumOk, {0, 255}},
                {{1, 1, 1, 1, 1, 1, 1, kNan}, zumWrnNoOperation, std::vector<Zum8u>(8, kUntouched)},
                {{2 * kSmallestNormal, -1}, zumOk, {0, 0}}});
  }
}

TEST_F(ToneMapTest, Mean) {
  for (const int64_t set : zumtest::instructionSets()) {
    zumtest::useInstructionSet(set);
    expectRows(zumiToneMapMean_32f8u_C1R, {{{0, 0}, zumOk, {0, 0}},
                                           {{kDenormal}, zumOk, {0}},
                                           {{0.5f * kSmallestNormal}, zumOk, {0}},
                                           {{5, -6}, zumWrnNoOperation, {kUntouched, kUntouched}},
                                           {{kNan, 1}, zumWrnNoOperation, {kUntouched, kUntouched}},
                                           {{8, 8, 8}, zumOk, {127, 127, 127}},
                                           {{3, -1, 1, 1}, zumOk, {255, 0, 127, 127}},
                                           {{0x1p35f, -0x1.fffffep34f}, zumOk, {0, 0}},
                                           {{kInfinity, 5}, zumOk, {0, 0}}});
  }
}

TEST_F(ToneMapTest, Checks) {
  const float bright = 1;
  Zum8u byte = kUntouched;
  for (Function* function : {zumiToneMapLinear_32f8u_C1R, zumiToneMapMean_32f8u_C1R}) {
    const float dark = 0, negative = -1;
    EXPECT_EQ(zumErrNullPtr, function(&dark, 4, nullptr, 1, {1, 1}));
    EXPECT_EQ(zumWrnNoOperation, function(&negative, 4, nullptr, 1, {1, 1}));
    EXPECT_EQ(zumErrSize, function(&bright, 4, nullptr, 1, {0, 1}));
    EXPECT_EQ(zumErrNullPtr, function(nullptr, 4, &byte, 1, {0, 1}));
  }
}

// Samples of both signs and many sizes, one of them above the others.
TEST_F(ToneMapTest, AllColumns) {
  std::minstd_rand random;
  for (const int width : {4, 15, 63, 64, 65, 127, 300, 1027}) {
    std::vector<float> samples(width);
    for (float& v : samples)
      v = std::ldexp(static_cast<float>(random() % 1024) - 200, -static_cast<int>(random() % 16));
    samples[width / 2] = 1500;
    const float max = *std::max_element(samples.begin(), samples.end());
    double mean;
    zumiMean_32f_C1R(samples.data(), 0, {width, 1}, &mean, zumHintFast);
    const float linear = 255 / max, toMean = static_cast<float>(255 / (mean + mean));
    std::vector<Zum8u> wrapped(width), limited(width), got(width);
    for (int i = 0; i < width; ++i) {
      wrapped[i] = static_cast<Zum8u>(zumtest::truncated(samples[i] * linear));
      limited[i] = static_cast<Zum8u>(zumtest::clamp(zumtest::truncated(samples[i] * toMean)));
    }
    for (const int64_t set : zumtest::instructionSets()) {
      zumtest::useInstructionSet(set);
      EXPECT_EQ(zumOk, zumiToneMapLinear_32f8u_C1R(samples.data(), 0, got.data(), 0, {width, 1}));
      EXPECT_EQ(wrapped, got) << hwy::TargetName(set) << ", width " << width;
      EXPECT_EQ(zumOk, zumiToneMapMean_32f8u_C1R(samples.data(), 0, got.data(), 0, {width, 1}));
      EXPECT_EQ(limited, got) << hwy::TargetName(set) << ", width " << width;
    }
  }
}

}  // namespace
