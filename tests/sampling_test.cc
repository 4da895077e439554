// Chroma filters, block conversions of chroma and deinterlacing against plain statements of each sample by its row and
// column.
#include "support/pictures.h"

namespace zumtest {
namespace {

int meanUp(int a, int b) { return (a + b + 1) / 2; }
int meanDown(int a, int b) { return (a + b) / 2; }

void copyLuma(const Picture& src, const Picture& dst, int width, int height) {
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) dst.set(0, x, y, src.get(0, x, y));
}

// ---- Chroma filter

TEST(Sampling, ChromaFilter) {
  for (const Function& function : named("zumi@(YCbCr|YCrCb)420ToYCbCr422_Filter_8u_*P3R")) {
    for (const int width : {2, 3, 7, 30, 33, 64, 66, 95, 127, 130, 200, 258}) {
      for (const int height : {8, 15, 16, 23, 40}) {
        expectPicture(function, {width, height}, [](const Picture& src, const Picture& dst) {
          const int w = src.size.width / 2 * 2, h = src.size.height / 8 * 8;
          copyLuma(src, dst, w, h);
          for (const int k : {1, 2}) {
            for (int y = 0; y < h; ++y) {
              for (int x = 0; x < w; x += 2) {
                const auto even = [&](int row) { return static_cast<int>(src.get(k, x, std::clamp(row, 0, h - 2))); };
                const int sum = 9 * (even(y - 1) + even(y + 1)) - even(y - 3) - even(y + 3);
                dst.set(k, x, y, y % 2 ? clamp((sum + 8) >> 4) : even(y));
              }
            }
          }
        });
      }
    }
  }
}

// ---- Blocks

// A plane of chroma.
struct Chroma {
  const Picture& picture;
  int k, width, height;

  Chroma(const Picture& p, int channel)
      : picture(p), k(channel), width(p.size.width / p.columns()), height(p.size.height / p.rows()) {}
  int at(int x, int y) const { return static_cast<int>(picture.get(k, x * picture.columns(), y * picture.rows())); }
  // The mean of a column and the next, for every second column of twice the width.
  int doubled(int x, int y) const {
    const int i = x / 2;
    if (x % 2 == 0 || i == width - 1) return at(i, y);
    return (i < (width - 1) / 16 * 16 ? meanUp : meanDown)(at(i, y), at(i + 1, y));
  }
};

struct BlockConversion {
  const char* function;
  int (*chroma)(const Chroma&, int x, int y);  // of the destination
};

const BlockConversion kBlockConversions[] = {
    {"zumiYCbCr420To1620_8u_P3R", [](const Chroma& s, int x, int y) { return s.at(2 * x, 2 * y); }},
    {"zumiYCbCr420To411_8u_P3R",
     [](const Chroma& s, int x, int y) {
       const int row = s.at(2 * x, y / 2);
       if (y % 2 == 0 || y == 2 * s.height - 1) return row;
       return (x < s.width / 2 / 32 * 32 ? meanUp : meanDown)(row, s.at(2 * x, y / 2 + 1));
     }},
    {"zumiYCbCr411To420_8u_P3R", [](const Chroma& s, int x, int y) { return s.doubled(x, 2 * y); }},
    {"zumiYCbCr1620To420_8u_P3R",
     [](const Chroma& s, int x, int y) {
       if (y % 2 == 0) return s.doubled(x, y / 2);
       if (y == 2 * s.height - 1) return s.at(x / 2, s.height - 1);
       const bool inBlocks = x / 2 < (s.width - 1) / 16 * 16;
       return (inBlocks ? meanUp : meanDown)(s.doubled(x, y / 2), s.doubled(x, y / 2 + 1));
     }},
};

TEST(Sampling, Blocks) {
  for (const auto& [name, chroma] : kBlockConversions) {
    const Function function = named(name).front();
    for (int width = 4; width < 700; width += width < 280 ? 4 : 68) {
      for (const int height : {4, 8, 20, 2, 6}) {
        if (height % function.traits.multiple.height != 0) continue;
        expectPicture(function, {width, height}, [convert = chroma](const Picture& src, const Picture& dst) {
          copyLuma(src, dst, src.size.width, src.size.height);
          for (const int k : {1, 2})
            for (int y = 0; y < src.size.height / dst.rows(); ++y)
              for (int x = 0; x < src.size.width / dst.columns(); ++x)
                dst.set(k, x * dst.columns(), y * dst.rows(), convert(Chroma(src, k), x, y));
        });
      }
    }
  }
}

TEST(Sampling, RefusesPartsOfBlocks) {
  for (const BlockConversion& c : kBlockConversions) {
    const Function function = named(c.function).front();
    const Case whole(function, {4, 4});
    for (const int rest : {1, 2, 3}) {
      PlacedCall call(whole, {});
      call.setSize({4 + rest, 4});
      EXPECT_EQ(call(), zumErrSize) << c.function;
      if (rest % function.traits.multiple.height == 0) continue;
      call.setSize({4, 4 + rest});
      EXPECT_EQ(call(), zumErrSize) << c.function;
    }
  }
}

// ---- Deinterlacing

// Rows begin to end of a plane, between pages that cannot be touched.
class GuardedPlane {
 public:
  GuardedPlane(int slot, int width, int begin, int end, int padding = 0, int offset = 0)
      : width_(width), begin_(begin), end_(end), step_(width + padding) {
    constexpr std::size_t kSize = 1 << 16;
    static const Arena arenas[] = {Arena(kSize), Arena(kSize), Arena(kSize), Arena(kSize), Arena(kSize)};
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

int half(int row) { return row >> 1; }

// One band of a picture, and what its samples become; width and height are even.
struct Band {
  const GuardedPlane &y, &pairs;
  int width, height, layout;

  bool isWhole() const { return (layout & 21) == 21; }
  bool isTop() const { return isWhole() || layout == 1; }
  bool isBottom() const { return isWhole() || layout == 16; }
  bool isEdge(int r) const { return (isTop() && r < 2) || (isBottom() && r >= height - 2); }

  int nested(int x, int r) const {
    return meanUp(meanUp(y.at(x, r - 1), y.at(x, r)), meanUp(y.at(x, r), y.at(x, r + 1)));
  }
  int acrossFirst(int x, int r) const { return meanUp(y.at(x, r), meanUp(y.at(x, r - 1), y.at(x, r + 1))); }
  // Four times the result, before anything is rounded.
  int sum(int x, int r) const {
    const int c = y.at(x, r);
    if (isTop() && r == 0) return 3 * c + y.at(x, r + 1);
    if (isBottom() && r == height - 1) return y.at(x, r - 1) + 3 * c;
    return y.at(x, r - 1) + 2 * c + y.at(x, r + 1);
  }
  // In the first and last row.
  int edge(int x, int r) const { return meanUp(y.at(x, r), meanUp(y.at(x, r), y.at(x, r == 0 ? 1 : r - 1))); }

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
    return inBody ? meanUp(pairs.at(x, k), next) : meanDown(pairs.at(x, k), next);
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
  const GuardedPlane y(0, width, begin ? -3 : 0, h + below, memory.padding[0], memory.offset[0]);
  const GuardedPlane pairs(1, w, begin / 2, h / 2 + below, memory.padding[1], memory.offset[1]);
  const Band band{y, pairs, w, h, layout};
  const int end = !isKnown ? begin : band.isBottom() ? h : h - 2;
  const ZumiSize roi{width, height};

  GuardedPlane packed(2, 2 * width, begin - 2, h + 2);
  for (int r = begin; r < std::max(end, layout == 1 ? 2 : end); ++r) {
    for (int x = 0; x < w; ++x) {
      packed.expect(2 * x, r, band.packedLuma(x, r));
      packed.expect(2 * x + 1, r, band.packedChroma(x, r));
    }
  }
  ASSERT_EQ(zumOk, zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(y.data(), y.step(), pairs.data(), pairs.step(), packed.data(),
                                                          packed.step(), roi, layout));
  ASSERT_TRUE(packed.asExpected()) << "packed " << width << " by " << height << ", layout " << layout;

  GuardedPlane out[3] = {{2, width, begin - 2, h + 2, memory.padding[2], memory.offset[2]},
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
  for (const GuardedPlane& plane : out)
    ASSERT_TRUE(plane.asExpected()) << "planar " << width << " by " << height << ", layout " << layout;
}

TEST(Sampling, DeinterlacesBands) {
  onEveryInstructionSet([] {
    for (int width = 2; width < 150; width += width < 70 ? 1 : 13)
      for (const int height : {2, 3, 4, 6, 9})
        for (const int layout : {zumTopBand, zumMiddleBand, zumBottomBand, zumWholePicture})
          deinterlace(width, height, layout);
  });
}

TEST(Sampling, DeinterlacesWhatLayoutSays) {
  for (int layout : {-1, 23, 0, 2, 5, 17, 20, 3, -21}) deinterlace(37, 8, layout);
}

// The planar top band rounds in another way if everything is aligned.
TEST(Sampling, DeinterlacesAlignedTopBand) {
  const struct {
    int width, height;
    Alignment memory;
    bool aligned;
  } cases[] = {
      {64, 16, {}, true},
      {128, 33, {}, true},
      {65, 16, {{}, {63, 0, 63, 0, 0}}, false},  // the width counts as it is passed
      {96, 16, {}, false},
      {96, 16, {{}, {0, 0, 0, 16, 16}}, false},
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

// Planar deinterlacing looks at the planes before it refuses a width or height of 1.
TEST(Sampling, RefusesDeinterlacingInOrder) {
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
}  // namespace zumtest
