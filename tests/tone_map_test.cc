// Tone mapping against single steps of scalar arithmetic, and what it does with images that give no scale.
#include <cmath>

#include "support/pictures.h"

namespace zumtest {
namespace {

using ToneMap = ZumStatus(const Zum32f*, int, Zum8u*, int, ZumiSize);

constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();
constexpr Zum8u kUntouched = 99;

constexpr float kSmallestNormal = 0x1p-126f, kDenormal = 0x1p-130f;

struct Row {
  ToneMap* function;
  std::vector<float> samples;
  ZumStatus status;
  std::vector<Zum8u> bytes;
};

// A NaN in the last of the eight lanes of the maximum remains, others are passed over.
TEST(ToneMap, Rows) {
  ToneMap *const linear = zumiToneMapLinear_32f8u_C1R, *const mean = zumiToneMapMean_32f8u_C1R;
  const std::vector<Zum8u> untouched(8, kUntouched);
  const Row rows[] = {{linear, {0, 0}, zumOk, {0, 0}},
                      {linear, {-0.0f, -5}, zumOk, {0, 0}},
                      {linear, {kDenormal, kSmallestNormal}, zumOk, {0, 0}},
                      {linear, {-1, -2}, zumWrnNoOperation, {kUntouched, kUntouched}},
                      {linear, {2, 1, -0.0118f, -1}, zumOk, {255, 127, 255, 129}},
                      // 255 / 41 is rounded down, and the product is below 255.
                      {linear, {41}, zumOk, {254}},
                      {linear, {3, -3e10f}, zumOk, {255, 0}},
                      {linear, {kInfinity, 5}, zumOk, {0, 0}},
                      {linear, {kNan, 2}, zumOk, {0, 255}},
                      {linear, {1, 1, 1, 1, 1, 1, 1, kNan}, zumWrnNoOperation, untouched},
                      {linear, {2 * kSmallestNormal, -1}, zumOk, {0, 0}},
                      {mean, {0, 0}, zumOk, {0, 0}},
                      {mean, {kDenormal}, zumOk, {0}},
                      {mean, {0.5f * kSmallestNormal}, zumOk, {0}},
                      {mean, {5, -6}, zumWrnNoOperation, {kUntouched, kUntouched}},
                      {mean, {kNan, 1}, zumWrnNoOperation, {kUntouched, kUntouched}},
                      {mean, {8, 8, 8}, zumOk, {127, 127, 127}},
                      {mean, {3, -1, 1, 1}, zumOk, {255, 0, 127, 127}},
                      {mean, {0x1p35f, -0x1.fffffep34f}, zumOk, {0, 0}},
                      {mean, {kInfinity, 5}, zumOk, {0, 0}}};
  onEveryInstructionSet([&] {
    for (const Row& row : rows) {
      std::vector<Zum8u> got(row.samples.size(), kUntouched);
      EXPECT_EQ(row.status, row.function(row.samples.data(), 0, got.data(), 0, {static_cast<int>(got.size()), 1}));
      EXPECT_EQ(row.bytes, got) << testing::PrintToString(row.samples);
    }
  });
}

TEST(ToneMap, Checks) {
  const float bright = 1;
  Zum8u byte = kUntouched;
  for (ToneMap* function : {zumiToneMapLinear_32f8u_C1R, zumiToneMapMean_32f8u_C1R}) {
    const float dark = 0, negative = -1;
    EXPECT_EQ(zumErrNullPtr, function(&dark, 4, nullptr, 1, {1, 1}));
    EXPECT_EQ(zumWrnNoOperation, function(&negative, 4, nullptr, 1, {1, 1}));
    EXPECT_EQ(zumErrSize, function(&bright, 4, nullptr, 1, {0, 1}));
    EXPECT_EQ(zumErrNullPtr, function(nullptr, 4, &byte, 1, {0, 1}));
  }
}

// Samples of both signs and many sizes, one of them above the others.
TEST(ToneMap, AllColumns) {
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
      wrapped[i] = static_cast<Zum8u>(truncated(samples[i] * linear));
      limited[i] = static_cast<Zum8u>(clamp(truncated(samples[i] * toMean)));
    }
    onEveryInstructionSet([&] {
      EXPECT_EQ(zumOk, zumiToneMapLinear_32f8u_C1R(samples.data(), 0, got.data(), 0, {width, 1}));
      EXPECT_EQ(wrapped, got) << "width " << width;
      EXPECT_EQ(zumOk, zumiToneMapMean_32f8u_C1R(samples.data(), 0, got.data(), 0, {width, 1}));
      EXPECT_EQ(limited, got) << "width " << width;
    });
  }
}

}  // namespace
}  // namespace zumtest
