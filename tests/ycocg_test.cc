// YCoCg against the transforms in single steps of plain integers, at every depth, in block columns and behind them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <vector>

#include "support/instruction_sets.h"
#include "zumcc.h"

namespace {

using Values = std::array<int64_t, 3>;

enum class Transform { kLossy, kReversible };

template <class T>
int64_t clamped(int64_t v) {
  return std::clamp<int64_t>(v, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}

// ---- The transforms from samples T to planes of Wide and back

template <class T, class Wide>
Values forward(Transform transform, const Values& bgr, bool tail) {
  const auto [b, g, r] = bgr;
  if (transform == Transform::kReversible) {
    const auto co = static_cast<Wide>(r - b), t = static_cast<Wide>(b + (co >> 1)), cg = static_cast<Wide>(g - t);
    return {static_cast<Wide>(t + (cg >> 1)), co, cg};
  }
  Values sums = {(r + 2 * g + b + 2) >> 2, (r - b + 1) >> 1, (2 * g - r - b + 2) >> 2};
  for (int64_t& v : sums) v = tail ? static_cast<Wide>(v) : clamped<Wide>(v);
  return sums;
}

template <class T, class Wide>
Values inverse(Transform transform, const Values& ycc) {
  const auto [y, co, cg] = ycc;
  Values bgr;
  if (transform == Transform::kReversible) {
    const auto t = static_cast<Wide>(y - (cg >> 1)), b = static_cast<Wide>(t - (co >> 1));
    bgr = {b, cg + t, co + b};
  } else {
    bgr = {y - co - cg, y + cg, y + co - cg};
  }
  for (int64_t& v : bgr) v = sizeof(T) == 1 ? clamped<T>(static_cast<Wide>(v)) : static_cast<T>(v);
  return bgr;
}

// ---- Images of both shapes

template <class T, class Wide>
struct Family {
  using Forward = ZumStatus(const T*, int, Wide* const*, int, ZumiSize);
  using Inverse = ZumStatus(const Wide* const*, int, T*, int, ZumiSize);
  using InverseC4 = ZumStatus(const Wide* const*, int, T*, int, ZumiSize, T);
  Transform transform;
  Forward *forwardC3, *forwardC4;
  Inverse* inverseC3;
  InverseC4* inverseC4;
};

template <class T>
int step(size_t samples) {
  return static_cast<int>(samples * sizeof(T));
}

// Pointers to the parts of three planes that lie behind one another.
template <class T>
std::array<T*, 3> thirds(std::vector<std::remove_const_t<T>>& planes) {
  return {planes.data(), planes.data() + planes.size() / 3, planes.data() + planes.size() / 3 * 2};
}

// Any values, with every fourth an extreme one.
template <class T>
std::vector<T> noise(size_t size) {
  std::minstd_rand random(static_cast<unsigned>(size));
  const T edges[] = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), 0, 1, static_cast<T>(-1)};
  std::vector<T> samples(size);
  for (T& sample : samples) {
    const auto bits = static_cast<uint32_t>(random()) * 2654435761u;
    sample = bits >> 30 ? static_cast<T>(bits >> 8 ^ bits << 20) : edges[bits % std::size(edges)];
  }
  return samples;
}

constexpr int kWidths[] = {1, 2, 3, 4, 7, 31, 66, 131, 1023};

template <class T, class Wide>
void expectFormulas(const Family<T, Wide>& family) {
  constexpr T kFourth = 77;
  for (const int width : kWidths) {
    const int height = 1 + 20000 / width;
    const auto pixels = static_cast<size_t>(width * height);
    const ZumiSize roi{width, height};
    for (const size_t channels : {3, 4}) {
      std::vector<T> bgr = noise<T>(channels * pixels), back(bgr.size());
      std::vector<Wide> planes(3 * pixels), any = noise<Wide>(3 * pixels);
      if (channels == 3) {
        family.forwardC3(bgr.data(), step<T>(3 * width), thirds<Wide>(planes).data(), step<Wide>(width), roi);
        family.inverseC3(thirds<const Wide>(any).data(), step<Wide>(width), back.data(), step<T>(3 * width), roi);
      } else {
        family.forwardC4(bgr.data(), step<T>(4 * width), thirds<Wide>(planes).data(), step<Wide>(width), roi);
        family.inverseC4(thirds<const Wide>(any).data(), step<Wide>(width), back.data(), step<T>(4 * width), roi,
                         kFourth);
      }
      for (size_t i = 0; i < pixels; ++i) {
        const bool tail = static_cast<int>(i) % width >= width / 4 * 4;
        const T *in = &bgr[channels * i], *out = &back[channels * i];
        const Values ycc = {planes[i], planes[pixels + i], planes[2 * pixels + i]};
        const Values anyYcc = {any[i], any[pixels + i], any[2 * pixels + i]};
        ASSERT_EQ(ycc, (forward<T, Wide>(family.transform, {in[0], in[1], in[2]}, tail))) << "width " << width;
        ASSERT_EQ(Values({out[0], out[1], out[2]}), (inverse<T, Wide>(family.transform, anyYcc))) << "width " << width;
        ASSERT_TRUE(channels == 3 || out[3] == kFourth) << "width " << width;
      }
    }
  }
}

#define FAMILY(transform, bgr, rev, narrow, wide, to, back)                                           \
  Family<narrow, wide> {                                                                              \
    Transform::transform, zumi##bgr##ToYCoCg_##rev##to##_C3P3R, zumi##bgr##ToYCoCg_##rev##to##_C4P3R, \
        zumiYCoCgTo##bgr##_##rev##back##_P3C3R, zumiYCoCgTo##bgr##_##rev##back##_P3C4R                \
  }

class YCoCgTest : public testing::Test {
 protected:
  ~YCoCgTest() override { zumtest::useInstructionSet(zumtest::kBestInstructionSet); }
};

TEST_F(YCoCgTest, FollowsTheFormulas) {
  for (const int64_t set : zumtest::instructionSets()) {
    SCOPED_TRACE(hwy::TargetName(set));
    zumtest::useInstructionSet(set);
    expectFormulas(FAMILY(kLossy, BGR, , Zum8u, Zum16s, 8u16s, 16s8u));
    expectFormulas(FAMILY(kLossy, SBGR, , Zum16s, Zum16s, 16s, 16s));
    expectFormulas(FAMILY(kLossy, SBGR, , Zum16s, Zum32s, 16s32s, 32s16s));
    expectFormulas(FAMILY(kReversible, BGR, Rev_, Zum8u, Zum16s, 8u16s, 16s8u));
    expectFormulas(FAMILY(kReversible, SBGR, Rev_, Zum16s, Zum16s, 16s, 16s));
    expectFormulas(FAMILY(kReversible, SBGR, Rev_, Zum16s, Zum32s, 16s32s, 32s16s));
  }
}

TEST_F(YCoCgTest, ReversibleFormsGiveEveryColourBack) {
  std::vector<Zum8u> colours(3 << 16), back(colours.size());
  std::vector<Zum16s> planes(colours.size());
  for (int r = 0; r < 256; ++r) {
    for (int i = 0; i < 1 << 16; ++i) {
      colours[3 * i] = static_cast<Zum8u>(i);
      colours[3 * i + 1] = static_cast<Zum8u>(i >> 8);
      colours[3 * i + 2] = static_cast<Zum8u>(r);
    }
    zumiBGRToYCoCg_Rev_8u16s_C3P3R(colours.data(), 3 * 256, thirds<Zum16s>(planes).data(), 2 * 256, {256, 256});
    zumiYCoCgToBGR_Rev_16s8u_P3C3R(thirds<const Zum16s>(planes).data(), 2 * 256, back.data(), 3 * 256, {256, 256});
    ASSERT_EQ(colours, back) << "red " << r;
  }
}

TEST_F(YCoCgTest, EmptyImagesAreNoErrors) {
  Zum8u bgr[3] = {1, 2, 3};
  Zum16s y = 4, co = 5, cg = 6;
  Zum16s* const planes[3] = {&y, &co, &cg};
  for (const ZumiSize roi : {ZumiSize{0, 1}, ZumiSize{1, 0}, ZumiSize{-1, 1}, ZumiSize{1, -1}, ZumiSize{-7, -7}}) {
    EXPECT_EQ(zumOk, zumiBGRToYCoCg_8u16s_C3P3R(bgr, 3, planes, 2, roi));
    EXPECT_EQ(zumOk, zumiYCoCgToBGR_Rev_16s8u_P3C3R(planes, 2, bgr, 3, roi));
  }
  EXPECT_EQ(Values({4, 5, 6}), Values({y, co, cg}));
  EXPECT_EQ(Values({1, 2, 3}), Values({bgr[0], bgr[1], bgr[2]}));
}

}  // namespace
