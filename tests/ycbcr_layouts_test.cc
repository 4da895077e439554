// The conversions among YCbCr layouts against where each sample comes from.
#include "support/pictures.h"

namespace zumtest {
namespace {

std::vector<Function> conversions() {
#define MODEL "@(YCbCr|YCrCb|CbYCr)4[12]?"
  std::vector<Function> result = named("zumi?(" MODEL "To)" MODEL "_8u_*");
  for (Function& function : result)  // the one name that is not kept to
    if (function.name == "zumiYCbCr420ToYCrCb420_8u_P2P3R") function.name = "zumiYCbCr420ToYCbCr420_8u_P2P3R";
  return result;
}

// Where the chroma of a column and a row of the destination comes from.
struct At {
  int column, row;
};
At chromaSource(const Picture& src, const Picture& dst, At at) {
  const auto is420 = [](const Picture& p) { return p.rows() == 2; };
  const auto is411 = [](const Picture& p) { return p.columns() == 4; };
  if (is420(src) && is411(dst)) return {2 * at.column + at.row % 2, at.row / 2};
  if (is411(src) && is420(dst)) return {at.column / 2, 2 * at.row + at.column % 2};
  return {at.column * dst.columns() / src.columns(), at.row * dst.rows() / src.rows()};
}

TEST(YCbCrLayouts, EverySampleComesFromItsPlace) {
  ASSERT_EQ(conversions().size(), 49u);
  for (const Function& function : conversions()) {
    const auto [least, lowest] = function.traits.minimum;
    for (int width = least; width <= 530; width += width < 140 ? 1 : 13) {
      const ZumiSize size{width, std::max(lowest, 1) + width % 4};
      ASSERT_NO_FATAL_FAILURE(expectPicture(function, size, [=](const Picture& src, const Picture& dst) {
        const int columns = std::max(src.columns(), dst.columns()), rows = std::max(src.rows(), dst.rows());
        for (int y = 0; y < size.height / rows * rows; ++y) {
          for (int x = 0; x < size.width / columns * columns; ++x) {
            dst.set(0, x, y, src.get(0, x, y));
            const At from = chromaSource(src, dst, {x / dst.columns(), y / dst.rows()});
            for (const int k : {1, 2}) dst.set(k, x, y, src.get(k, from.column * src.columns(), from.row * src.rows()));
          }
        }
      }));
    }
  }
}

TEST(YCbCrLayouts, SomeConvertNoRowsToNothing) {
  for (const Function& function : conversions()) {
    if (function.traits.minimum.height > 0) continue;
    for (const int height : {0, -1, -70000}) {
      PlacedCall call(Case(function, {64, 2}), {});
      const std::vector<Bytes> before = call.destinations();
      call.setSize({64, height});
      ASSERT_EQ(call(), zumOk) << function.name;
      ASSERT_EQ(difference(before, call.destinations()), "") << function.name;
    }
  }
}

TEST(YCbCrLayouts, SemiPlanarToYCrCbAndBackExchangesChroma) {
  const Zum8u luma[4] = {1, 2, 3, 4}, pair[2] = {50, 60};
  Zum8u y[4], cb = 0, cr = 0, back[2];
  Zum8u* const planes[3] = {y, &cb, &cr};
  const int steps[3] = {2, 1, 1};
  ASSERT_EQ(zumiYCbCr420ToYCrCb420_8u_P2P3R(luma, 2, pair, 2, planes, steps, {2, 2}), zumOk);
  EXPECT_EQ(cb, 50);
  EXPECT_EQ(cr, 60);
  const Zum8u* const sources[3] = {y, &cb, &cr};
  ASSERT_EQ(zumiYCrCb420ToYCbCr420_8u_P3P2R(sources, steps, y, 2, back, 2, {2, 2}), zumOk);
  EXPECT_EQ(back[0], 60);
  EXPECT_EQ(back[1], 50);
}

// Images larger than the cache, though each plane has but one row: what is written past the cache is the same.
TEST(YCbCrLayouts, LargeImages) {
  constexpr ZumiSize kSmall{262, 2}, kLarge{262, 1 << 15};
  constexpr size_t kPlanes = 6, kRoom = 1024;
  alignas(64) static uint8_t memory[2][kPlanes][kRoom];
  std::vector<std::string> seen;  // one function for each pair of layouts
  for (const Function& function : conversions()) {
    const std::string layouts = function.name.substr(function.name.rfind('_'));
    if (std::count(seen.begin(), seen.end(), layouts) != 0) continue;
    seen.push_back(layouts);
    onEveryInstructionSet([&] {
      for (const bool isLarge : {false, true}) {
        Call call(function, isLarge ? kLarge : kSmall, function.traits.variants.front());
        for (size_t i = 0; i < function.planes.size(); ++i) {
          fill(memory[isLarge][i], {'u', 1}, kRoom, 1, Content::kNoise, i);
          call.place(i, memory[isLarge][i], 0);
        }
        ASSERT_EQ(call(), zumOk);
      }
      ASSERT_EQ(std::memcmp(memory[0], memory[1], sizeof memory[0]), 0) << function.name;
    });
  }
}

}  // namespace
}  // namespace zumtest
