// YCoCg against the transforms in single steps of plain integers, at every depth.
#include "support/colours.h"

namespace zumtest {
namespace {

using Values = Colour<int64_t>;

enum class Transform { kLossy, kReversible };

template <class T>
int64_t clamped(int64_t v) {
  return std::clamp<int64_t>(v, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}

// ---- The transforms from samples T to planes of Wide and back

template <class T, class Wide>
Values forward(Transform transform, const Values& rgb, bool tail) {
  const auto [r, g, b] = rgb;
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
  Values rgb;
  if (transform == Transform::kReversible) {
    const auto t = static_cast<Wide>(y - (cg >> 1)), b = static_cast<Wide>(t - (co >> 1));
    rgb = {co + b, cg + t, b};
  } else {
    rgb = {y + co - cg, y + cg, y - co - cg};
  }
  for (int64_t& v : rgb) v = sizeof(T) == 1 ? clamped<T>(static_cast<Wide>(v)) : static_cast<T>(v);
  return rgb;
}

// ---- Comparisons

// Functions by the models, and the depths of both directions.
template <class T, class Wide>
void expectTransforms(const std::string& model, const std::string& to, const std::string& back) {
  constexpr int kManyColours = 1 << 18, kFourth = 77;
  for (const Transform transform : {Transform::kLossy, Transform::kReversible}) {
    const std::string reversible = transform == Transform::kReversible ? "_Rev_" : "_";
    for (const Function& function : named("zumi" + model + "ToYCoCg" + reversible + to + "_*"))
      expectPictures(function, kManyColours, [=](const Picture& src, const Picture& dst) {
        forEachPixel(src, [&](int x, int y) {
          dst.set(x, y, forward<T, Wide>(transform, src.at<int64_t>(x, y), x >= src.size.width / 4 * 4));
        });
      });
    for (Function function : named("zumiYCoCgTo" + model + reversible + back + "_*")) {
      function.traits.variants = {{{kFourth}}};
      expectPictures(function, kManyColours, [=](const Picture& src, const Picture& dst) {
        forEachPixel(src, [&](int x, int y) {
          dst.set(x, y, inverse<T, Wide>(transform, src.at<int64_t>(x, y)));
          dst.set(3, x, y, kFourth);
        });
      });
    }
  }
}

TEST(YCoCg, Bytes) { expectTransforms<Zum8u, Zum16s>("BGR", "8u16s", "16s8u"); }
TEST(YCoCg, Words) { expectTransforms<Zum16s, Zum16s>("SBGR", "16s", "16s"); }
TEST(YCoCg, WordsToWiderOnes) { expectTransforms<Zum16s, Zum32s>("SBGR", "16s32s", "32s16s"); }

TEST(YCoCg, ReversibleFormsGiveEveryColourBack) {
  std::vector<Zum8u> colours(3 << 16), back(colours.size());
  std::vector<Zum16s> planes(colours.size());
  Zum16s* const to[] = {&planes[0], &planes[1 << 16], &planes[2 << 16]};
  const Zum16s* const from[] = {to[0], to[1], to[2]};
  for (int r = 0; r < 256; ++r) {
    for (int i = 0; i < 1 << 16; ++i) {
      colours[3 * i] = static_cast<Zum8u>(i);
      colours[3 * i + 1] = static_cast<Zum8u>(i >> 8);
      colours[3 * i + 2] = static_cast<Zum8u>(r);
    }
    zumiBGRToYCoCg_Rev_8u16s_C3P3R(colours.data(), 3 * 256, to, 2 * 256, {256, 256});
    zumiYCoCgToBGR_Rev_16s8u_P3C3R(from, 2 * 256, back.data(), 3 * 256, {256, 256});
    ASSERT_EQ(colours, back) << "red " << r;
  }
}

TEST(YCoCg, EmptyImagesAreNoErrors) {
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
}  // namespace zumtest
