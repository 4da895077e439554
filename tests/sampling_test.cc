// Chroma filters, deinterlacing and block conversions of chroma against plain statements of each sample by its row and
// column: complete planes are compared, with what must not be written, in memory that ends where a call may read.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "support/images.h"
#include "support/instruction_sets.h"
#include "zumcc.h"

namespace {

int up(int a, int b) { return (a + b + 1) / 2; }
int down(int a, int b) { return (a + b) / 2; }
int clamp(int v) { return std::clamp(v, 0, 255); }

// Rows begin to end of a plane, between pages that cannot be touched.
class Plane {
 public:
  Plane(int slot, int width, int begin, int end, int padding = 0, int offset = 0)
      : width_(width), begin_(begin), end_(end), step_(width + padding) {
    using zumtest::Arena;
    constexpr std::size_t kSize = 1 << 16;
    static const Arena arenas[] = {Arena(kSize), Arena(kSize), Arena(kSize), Arena(kSize), Arena(kSize), Arena(kSize)};
    static std::mt19937 random(1);
    const Arena& arena = arenas[slot];
    const int length = step_ * (end - begin) - padding;
    first_ = (random() % 2 || offset || padding ? arena.begin() + offset : arena.end() - length) - begin * step_;
    const bool extremes = random() % 2;
    for (int y = begin; y < end; ++y)
      for (int x = 0; x < width; ++x)
        expected_.push_back(at(x, y) = static_cast<Zum8u>(extremes ? 0 - random() % 2 : random()));
  }

  Zum8u* data() const { return first_; }
  int step() const { return step_; }
  Zum8u& at(int x, int y) const { return first_[y * step_ + x]; }
  void expect(int x, int y, int value) { expected_[(y - begin_) * width_ + x] = static_cast<Zum8u>(value); }
  bool asExpected() const {
    for (int y = begin_; y < end_; ++y)
      if (std::memcmp(&at(0, y), &expected_[(y - begin_) * width_], width_) != 0) return false;
    return true;
  }

 private:
  int width_, begin_, end_, step_;
  Zum8u* first_;
  std::vector<Zum8u> expected_;
};

class Sampling : public ::testing::Test {
 protected:
  void TearDown() override { zumtest::useInstructionSet(zumtest::kBestInstructionSet); }

  static void onEveryInstructionSet(const std::function<void()>& test) {
    for (const int64_t target : zumtest::instructionSets()) {
      zumtest::useInstructionSet(target);
      SCOPED_TRACE(hwy::TargetName(target));
      test();
    }
  }
};

// ---- Chroma filter

int filtered(const std::function<int(int)>& even, int row, int height) {
  if (row % 2 == 0) return even(row);
  const int above = even(std::max(row - 3, 0)), below = even(std::min(row + 3, height - 2));
  return clamp((9 * (even(row - 1) + even(std::min(row + 1, height - 2))) - above - below + 8) >> 4);
}

TEST_F(Sampling, ChromaFilter) {
  onEveryInstructionSet([] {
    for (int width : {2, 3, 7, 30, 33, 64, 66, 95, 127, 130, 200, 258}) {
      for (int height : {8, 15, 16, 23, 40}) {
        for (const char* form : {"YCbCr P3", "YCrCb P3", "P2"}) {
          const int w = width / 2 * 2, h = height / 8 * 8, chromaRows = height / 2;
          const bool isPairs = form[0] == 'P', crFirst = form[2] == 'r';
          Plane y(0, width, 0, height), c1(1, w / (isPairs ? 1 : 2), 0, chromaRows), c2(2, w / 2, 0, chromaRows);
          Plane out[3] = {{3, width, 0, height}, {4, w / 2, 0, height, 3}, {5, w / 2, 0, height}};
          for (int r = 0; r < h; ++r) {
            for (int x = 0; x < w; ++x) out[0].expect(x, r, y.at(x, r));
            for (int x = 0; x < w / 2; ++x) {
              const auto cb = [&](int even) { return isPairs ? c1.at(2 * x, even / 2) : c1.at(x, even / 2); };
              const auto cr = [&](int even) { return isPairs ? c1.at(2 * x + 1, even / 2) : c2.at(x, even / 2); };
              out[crFirst ? 2 : 1].expect(x, r, filtered(cb, r, h));
              out[crFirst ? 1 : 2].expect(x, r, filtered(cr, r, h));
            }
          }
          const Zum8u* const src[3] = {y.data(), c1.data(), c2.data()};
          Zum8u* const dst[3] = {out[0].data(), out[1].data(), out[2].data()};
          const int srcStep[3] = {y.step(), c1.step(), c2.step()};
          const int dstStep[3] = {out[0].step(), out[1].step(), out[2].step()};
          const ZumiSize roi{width, height};
          ASSERT_EQ(zumOk, isPairs ? zumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(src[0], srcStep[0], src[1], srcStep[1], dst,
                                                                            dstStep, roi)
                           : crFirst ? zumiYCrCb420ToYCbCr422_Filter_8u_P3R(src, srcStep, dst, dstStep, roi)
                                     : zumiYCbCr420ToYCbCr422_Filter_8u_P3R(src, srcStep, dst, dstStep, roi));
          for (const Plane& plane : out) ASSERT_TRUE(plane.asExpected()) << form << ' ' << width << " by " << height;
        }
      }
    }
  });
}

// ---- Deinterlacing

int half(int row) { return row >> 1; }

// One band of a picture, and what its samples become; width and height are even.
struct Band {
  const Plane &y, &pairs;
  int width, height, layout;

  bool isWhole() const { return (layout & 21) == 21; }
  bool isTop() const { return isWhole() || layout == 1; }
  bool isBottom() const { return isWhole() || layout == 16; }
  bool isEdge(int r) const { return (isTop() && r < 2) || (isBottom() && r >= height - 2); }

  int nested(int x, int r) const { return up(up(y.at(x, r - 1), y.at(x, r)), up(y.at(x, r), y.at(x, r + 1))); }
  int acrossFirst(int x, int r) const { return up(y.at(x, r), up(y.at(x, r - 1), y.at(x, r + 1))); }
  // Four times the result, before anything is rounded.
  int sum(int x, int r) const {
    const int c = y.at(x, r);
    if (isTop() && r == 0) return 3 * c + y.at(x, r + 1);
    if (isBottom() && r == height - 1) return y.at(x, r - 1) + 3 * c;
    return y.at(x, r - 1) + 2 * c + y.at(x, r + 1);
  }
  // In the first and last row.
  int edge(int x, int r) const { return up(y.at(x, r), up(y.at(x, r), y.at(x, r == 0 ? 1 : r - 1))); }

  int packedLuma(int x, int r) const {
    if (isWhole() && isEdge(r)) return clamp((sum(x, r) + 4) / 4);
    if (isEdge(r) && x >= width / 8 * 8) return sum(x, r) / 4;
    if (isEdge(r)) return (isTop() && r == 0) || (isBottom() && r == height - 1) ? edge(x, r) : nested(x, r);
    if (x < width / 32 * 32) return nested(x, r);
    if (!isWhole()) return sum(x, r) / 4;
    if (x % 2 == 1) return clamp((sum(x, r) + 4) / 4);
    return clamp(((((y.at(x, r - 1) + y.at(x, r + 1)) >> 1) + y.at(x, r)) >> 1) + 1);
  }
  int packedChroma(int x, int r) const {
    const int block = isEdge(r) ? 8 : 32;
    return chroma(x, half(r), !(isWhole() && isEdge(r)) && x < width / block * block);
  }
  int planarLuma(int x, int r, bool aligned) const {
    const bool isLast = isBottom() && r == height - 1, isOutermost = (isTop() && r == 0) || isLast;
    if (isWhole() && height == 2) return clamp((sum(x, r) + 4) / 4);
    if ((isWhole() && isOutermost) || x >= width / 16 * 16) return sum(x, r) / 4;
    if (isOutermost) return edge(x, r);
    return layout == 1 && !aligned ? acrossFirst(x, r) : nested(x, r);
  }
  int planarChroma(int x, int k) const { return chroma(x, k, x < width / 16 * 16); }

 private:
  int chroma(int x, int k, bool inBody) const {
    if (isWhole() && height == 2) return pairs.at(x, 0);
    const int next = pairs.at(x, isBottom() && k == height / 2 - 1 ? k - 1 : k + 1);
    return inBody ? up(pairs.at(x, k), next) : down(pairs.at(x, k), next);
  }
};

struct Alignment {
  int offset[5] = {}, padding[5] = {};  // of luma, pairs and the three planes of the destination
};

// Converts to both layouts. The planes hold the rows that may be read or written, and two more of the destinations.
void deinterlace(int width, int height, int layout, bool aligned = false, const Alignment& memory = {}) {
  const int w = width / 2 * 2, h = height / 2 * 2;
  const bool isKnown = layout == 1 || layout == 4 || layout == 16 || (layout & 21) == 21;
  const bool below = layout == 1 && h == 2;  // the packed top band reads below itself
  const int begin = layout == 4 || layout == 16 ? -2 : 0;
  const Plane y(0, width, begin ? -3 : 0, h + below, memory.padding[0], memory.offset[0]);
  const Plane pairs(1, w, begin / 2, h / 2 + below, memory.padding[1], memory.offset[1]);
  const Band band{y, pairs, w, h, layout};
  const int end = !isKnown ? begin : band.isBottom() ? h : h - 2;
  const ZumiSize roi{width, height};

  Plane packed(2, 2 * width, begin - 2, h + 2);
  for (int r = begin; r < std::max(end, layout == 1 ? 2 : end); ++r) {
    for (int x = 0; x < w; ++x) {
      packed.expect(2 * x, r, band.packedLuma(x, r));
      packed.expect(2 * x + 1, r, band.packedChroma(x, r));
    }
  }
  ASSERT_EQ(zumOk, zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(y.data(), y.step(), pairs.data(), pairs.step(), packed.data(),
                                                          packed.step(), roi, layout));
  ASSERT_TRUE(packed.asExpected()) << "packed " << width << " by " << height << ", layout " << layout;

  Plane out[3] = {{2, width, begin - 2, h + 2, memory.padding[2], memory.offset[2]},
                  {3, w / 2, begin / 2 - 1, h / 2 + 1, memory.padding[3], memory.offset[3]},
                  {4, w / 2, begin / 2 - 1, h / 2 + 1, memory.padding[4], memory.offset[4]}};
  for (int r = begin; r < std::max(end, layout == 1 ? 1 : end); ++r)
    for (int x = 0; x < w; ++x) out[0].expect(x, r, band.planarLuma(x, r, aligned));
  for (int k = half(begin); k < half(end); ++k)
    for (int x = 0; x < w; ++x) out[1 + x % 2].expect(x / 2, k, band.planarChroma(x, k));
  Zum8u* const dst[3] = {out[0].data(), out[1].data(), out[2].data()};
  const int dstStep[3] = {out[0].step(), out[1].step(), out[2].step()};
  ASSERT_EQ(zumOk, zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(y.data(), y.step(), pairs.data(), pairs.step(), dst, dstStep,
                                                          roi, layout));
  for (const Plane& plane : out)
    ASSERT_TRUE(plane.asExpected()) << "planar " << width << " by " << height << ", layout " << layout;
}

TEST_F(Sampling, DeinterlacesBands) {
  onEveryInstructionSet([] {
    for (int width = 2; width < 150; width += width < 70 ? 1 : 13)
      for (int height : {2, 3, 4, 6, 9})
        for (int layout : {zumTopBand, zumMiddleBand, zumBottomBand, zumWholePicture})
          deinterlace(width, height, layout);
  });
}

TEST_F(Sampling, DeinterlacesWhatLayoutSays) {
  for (int layout : {-1, 23, 0, 2, 5, 17, 20, 3, -21}) deinterlace(37, 8, layout);
}

// The planar top band rounds in another way if everything is aligned.
TEST_F(Sampling, DeinterlacesAlignedTopBand) {
  const struct {
    int width, height;
    Alignment memory;
    bool aligned;
  } cases[] = {
      {64, 16, {}, true},
      {128, 33, {}, true},
      {65, 16, {{}, {63, 0, 63, 0, 0}}, false},  // the width counts as it is passed
      {96, 16, {}, false},
      {64, 18, {}, false},
      {64, 16, {{16, 16, 16, 16, 16}, {16, 32, 32, 32, 64}}, true},
      {64, 16, {{8}, {}}, false},
      {64, 16, {{0, 8}, {}}, false},
      {64, 16, {{0, 0, 8}, {}}, false},
      {64, 16, {{0, 0, 0, 8}, {}}, false},
      {64, 16, {{0, 0, 0, 0, 8}, {}}, false},
      {64, 16, {{}, {8}}, false},
      {64, 16, {{}, {0, 16}}, false},
      {64, 16, {{}, {0, 0, 16}}, false},
      {64, 16, {{}, {0, 0, 0, 16}}, false},
      {64, 16, {{}, {0, 0, 0, 0, 16}}, false},
  };
  // Often enough for noise, in which the roundings differ.
  for (int i = 0; i < 10; ++i)
    for (const auto& c : cases) deinterlace(c.width, c.height, zumTopBand, c.aligned, c.memory);
}

// ---- Blocks

struct BlockConversion {
  const char* name;
  decltype(&zumiYCbCr420To1620_8u_P3R) run;
  int srcColumns, srcRows, dstColumns, dstRows;             // pixels that share a chroma sample
  int (*chroma)(const Plane&, int x, int y, int w, int h);  // of the destination, w by h the size of the source plane
};

// The mean of a source column and the next.
int besides(const Plane& s, int i, int j, int w) {
  if (i == w - 1) return s.at(i, j);
  return i < (w - 1) / 16 * 16 ? up(s.at(i, j), s.at(i + 1, j)) : down(s.at(i, j), s.at(i + 1, j));
}
int doubled(const Plane& s, int x, int j, int w) { return x % 2 == 0 ? s.at(x / 2, j) : besides(s, x / 2, j, w); }

const BlockConversion kBlockConversions[] = {
    {"420 to 1620", zumiYCbCr420To1620_8u_P3R, 2, 2, 4, 4,
     [](const Plane& s, int x, int y, int, int) { return int{s.at(2 * x, 2 * y)}; }},
    {"420 to 411", zumiYCbCr420To411_8u_P3R, 2, 2, 4, 1,
     [](const Plane& s, int x, int y, int w, int h) {
       const int row = s.at(2 * x, y / 2);
       if (y % 2 == 0 || y == 2 * h - 1) return row;
       return (x < w / 2 / 32 * 32 ? up : down)(row, s.at(2 * x, y / 2 + 1));
     }},
    {"411 to 420", zumiYCbCr411To420_8u_P3R, 4, 1, 2, 2,
     [](const Plane& s, int x, int y, int w, int) { return doubled(s, x, 2 * y, w); }},
    {"1620 to 420", zumiYCbCr1620To420_8u_P3R, 4, 4, 2, 2,
     [](const Plane& s, int x, int y, int w, int h) {
       if (y % 2 == 0) return doubled(s, x, y / 2, w);
       if (y == 2 * h - 1) return int{s.at(x / 2, h - 1)};
       const bool inBlocks = x / 2 < (w - 1) / 16 * 16;
       return (inBlocks ? up : down)(doubled(s, x, y / 2, w), doubled(s, x, y / 2 + 1, w));
     }},
};

TEST_F(Sampling, Blocks) {
  onEveryInstructionSet([] {
    for (const BlockConversion& c : kBlockConversions) {
      for (int width = 4; width < 700; width += width < 280 ? 4 : 68) {
        for (int height : {4, 8, 20, 2, 6}) {
          if (height % 4 != 0 && c.run != zumiYCbCr420To411_8u_P3R) continue;
          const int w = width / c.srcColumns, h = height / c.srcRows;
          const Plane in[3] = {{0, width, 0, height}, {1, w, 0, h}, {2, w, 0, h}};
          Plane out[3] = {{3, width, 0, height},
                          {4, width / c.dstColumns, 0, height / c.dstRows},
                          {5, width / c.dstColumns, 0, height / c.dstRows}};
          for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) out[0].expect(x, y, in[0].at(x, y));
          for (int p : {1, 2})
            for (int y = 0; y < height / c.dstRows; ++y)
              for (int x = 0; x < width / c.dstColumns; ++x) out[p].expect(x, y, c.chroma(in[p], x, y, w, h));
          const Zum8u* const src[3] = {in[0].data(), in[1].data(), in[2].data()};
          Zum8u* const dst[3] = {out[0].data(), out[1].data(), out[2].data()};
          const int srcStep[3] = {in[0].step(), in[1].step(), in[2].step()};
          const int dstStep[3] = {out[0].step(), out[1].step(), out[2].step()};
          ASSERT_EQ(zumOk, c.run(src, srcStep, dst, dstStep, {width, height}));
          for (const Plane& plane : out) ASSERT_TRUE(plane.asExpected()) << c.name << ' ' << width << " by " << height;
        }
      }
    }
  });
}

// ---- Sizes that are refused, beyond those below the minimum

TEST_F(Sampling, RefusesPartsOfBlocks) {
  Zum8u samples[64];
  const Zum8u* const src[3] = {samples, samples, samples};
  Zum8u* const dst[3] = {samples, samples, samples};
  const int steps[3] = {8, 8, 8};
  for (const BlockConversion& c : kBlockConversions) {
    const int rows = c.run == zumiYCbCr420To411_8u_P3R ? 2 : 4;
    for (int rest : {1, 2, 3}) {
      EXPECT_EQ(zumErrSize, c.run(src, steps, dst, steps, {4 + rest, 4})) << c.name;
      EXPECT_EQ(rest % rows != 0 ? zumErrSize : zumOk, c.run(src, steps, dst, steps, {4, 4 + rest})) << c.name;
    }
  }
}

// Planar deinterlacing looks at the planes before it refuses a width or height of 1.
TEST_F(Sampling, RefusesDeinterlacingInOrder) {
  Zum8u samples[4];
  Zum8u *const planes[3] = {samples, samples, samples}, *const missing[3] = {samples, samples, nullptr};
  const int steps[3] = {1, 1, 1};
  for (ZumiSize one : {ZumiSize{1, 4}, ZumiSize{4, 1}, ZumiSize{0, 4}, ZumiSize{4, 0}, ZumiSize{1, 0}}) {
    const bool isEmpty = one.width == 0 || one.height == 0;
    EXPECT_EQ(zumErrSize, zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(samples, 1, samples, 1, planes, steps, one, 21));
    EXPECT_EQ(isEmpty ? zumErrSize : zumErrNullPtr,
              zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(samples, 1, samples, 1, missing, steps, one, 21));
    EXPECT_EQ(zumErrNullPtr, zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(samples, 1, samples, 1, nullptr, steps, one, 21));
  }
}

}  // namespace
