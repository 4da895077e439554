// The conversions among YCbCr layouts against where each sample comes from, one sample at a time, and against what the
// names of the functions say.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "support/images.h"
#include "support/instruction_sets.h"

namespace zumtest {
namespace {

enum Channel { kY, kCb, kCr };

// One side of a conversion.
struct Side {
  std::string model;
  int sampling;
  std::string layout;
  size_t firstPlane;

  int chromaColumns() const { return sampling == 411 ? 4 : 2; }
  int chromaRows() const { return sampling == 420 ? 2 : 1; }

  struct Place {
    size_t plane;
    int byte;  // of a row
  };
  Place place(Channel channel, int column) const {
    const bool crFirst = model == "YCrCb", second = channel == (crFirst ? kCb : kCr);
    if (layout == "C2") {
      const bool chromaFirst = model == "CbYCr";
      if (channel == kY) return {firstPlane, 2 * column + (chromaFirst ? 1 : 0)};
      return {firstPlane, 4 * column + (second ? 2 : 0) + (chromaFirst ? 0 : 1)};
    }
    if (channel == kY) return {firstPlane, column};
    if (layout == "P2") return {firstPlane + 1, 2 * column + (second ? 1 : 0)};
    return {firstPlane + (second ? 2 : 1), column};
  }
};

struct Conversion {
  const Function* function;
  Side from, to;
};

// One model or two, and one layout or two.
bool parse(const std::string& function, Side& from, Side& to) {
  char model[2][6], layout[2][3];
  int sampling[2], end = 0;
  const char* const name = function.c_str();
  const auto matches = [&](int fields, int expected) {
    return fields == expected && end == static_cast<int>(function.size());
  };
  const bool isWhole = matches(std::sscanf(name, "zumi%5[YCbr]%3dTo%5[YCbr]%3d_8u_%2[CP23]%2[CP23]R%n", model[0],
                                           &sampling[0], model[1], &sampling[1], layout[0], layout[1], &end),
                               6);
  const bool hasOneLayout =
      !isWhole && matches(std::sscanf(name, "zumi%5[YCbr]%3dTo%5[YCbr]%3d_8u_%2[CP23]R%n", model[0], &sampling[0],
                                      model[1], &sampling[1], layout[0], &end),
                          5);
  const bool hasOneModel = !isWhole && !hasOneLayout &&
                           matches(std::sscanf(name, "zumi%5[YCbr]%3d_8u_%2[CP23]%2[CP23]R%n", model[0], &sampling[0],
                                               layout[0], layout[1], &end),
                                   4);
  if (!isWhole && !hasOneLayout && !hasOneModel) return false;
  from = {model[0], sampling[0], layout[0], 0};
  to = hasOneModel ? from : Side{model[1], sampling[1], layout[0], 0};
  if (!hasOneLayout) to.layout = layout[1];
  return true;
}

std::vector<Conversion> conversions() {
  std::vector<Conversion> result;
  for (const Function& function : functions()) {
    Side from, to;
    if (!parse(function.name, from, to)) continue;
    to.firstPlane = from.layout[1] - (from.layout[0] == 'C' ? '1' : '0');
    // The one name that is not kept to.
    if (function.name == "zumiYCbCr420ToYCrCb420_8u_P2P3R") to.model = "YCbCr";
    result.push_back({&function, from, to});
  }
  return result;
}

// Where the chroma of a column and a row of the destination comes from.
struct At {
  int column, row;
};
At chromaSource(int from, int to, At at) {
  if (from == to) return at;
  if (from == 422) return to == 420 ? At{at.column, 2 * at.row} : At{2 * at.column, at.row};
  if (to == 422) return from == 420 ? At{at.column, at.row / 2} : At{at.column / 2, at.row};
  if (from == 420) return {2 * at.column + at.row % 2, at.row / 2};
  return {at.column / 2, 2 * at.row + at.column % 2};
}

std::vector<Bytes> expected(const Conversion& conversion, const Case& c) {
  const auto& [function, from, to] = conversion;
  std::vector<Bytes> pixels = c.pixels;
  const auto sample = [&](const Side& side, Channel channel, At at) -> uint8_t& {
    const Side::Place place = side.place(channel, at.column);
    return pixels[place.plane][at.row * function->planes[place.plane].rowBytes(c.size) + place.byte];
  };
  const int columns = std::max(from.chromaColumns(), to.chromaColumns());
  const int rows = std::max(from.chromaRows(), to.chromaRows());
  const int width = c.size.width / columns * columns, height = c.size.height / rows * rows;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) sample(to, kY, {x, y}) = sample(from, kY, {x, y});
  for (int y = 0; y < height / to.chromaRows(); ++y)
    for (int x = 0; x < width / to.chromaColumns(); ++x)
      for (Channel channel : {kCb, kCr})
        sample(to, channel, {x, y}) = sample(from, channel, chromaSource(from.sampling, to.sampling, {x, y}));
  return {pixels.begin() + to.firstPlane, pixels.end()};
}

TEST(YCbCrLayouts, EverySampleComesFromItsPlace) {
  ASSERT_EQ(conversions().size(), 49u);
  for (const Conversion& conversion : conversions()) {
    const ZumiSize minimum = conversion.function->traits.minimum;
    for (int width = minimum.width; width <= 530; width += width < 140 ? 1 : 13) {
      const Case c(*conversion.function, {width, std::max(minimum.height, 1) + width % 4});
      ASSERT_EQ(difference(expected(conversion, c), run(c, {}).destinations), "") << describe(c, {});
    }
  }
}

TEST(YCbCrLayouts, SomeConvertNoRowsToNothing) {
  for (const Conversion& conversion : conversions()) {
    if (conversion.function->traits.minimum.height > 0) continue;
    for (int height : {0, -1, -70000}) {
      PlacedCall call(Case(*conversion.function, {64, 2}), {});
      const std::vector<Bytes> before = call.destinations();
      call.setSize({64, height});
      ASSERT_EQ(call(), zumOk) << conversion.function->name;
      ASSERT_EQ(difference(before, call.destinations()), "") << conversion.function->name;
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
  alignas(64) static uint8_t memory[kPlanes][kRoom], expectation[kPlanes][kRoom];
  std::vector<std::string> seen;  // one function for each pair of layouts
  for (const Conversion& conversion : conversions()) {
    const Function& function = *conversion.function;
    const std::string layouts = conversion.from.layout + conversion.to.layout;
    if (std::count(seen.begin(), seen.end(), layouts) != 0) continue;
    seen.push_back(layouts);
    for (int64_t set : instructionSets()) {
      useInstructionSet(set);
      const auto convert = [&](ZumiSize size, uint8_t(*to)[kRoom]) {
        Call call(function, size, function.traits.variants.front());
        for (size_t i = 0; i < function.planes.size(); ++i) {
          fill(to[i], {'u', 1}, kRoom, 1, Content::kNoise, i);
          call.place(i, to[i], 0);
        }
        ASSERT_EQ(call(), zumOk);
      };
      convert(kSmall, expectation);
      convert(kLarge, memory);
      for (size_t i = 0; i < function.planes.size(); ++i)
        ASSERT_TRUE(std::equal(memory[i], memory[i] + kRoom, expectation[i])) << function.name << ", plane " << i;
    }
  }
  useInstructionSet(kBestInstructionSet);
}

}  // namespace
}  // namespace zumtest
