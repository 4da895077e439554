// Demosaic, against a plain statement of what each pixel is.
#include <limits>

#include "support/pictures.h"

namespace zumtest {
namespace {

ZumStatus demosaic(const Zum8u* src, ZumiRect part, ZumiSize size, int srcStep, Zum8u* dst, int dstStep, int grid) {
  return zumiCFAToRGB_8u_C1C3R(src, part, size, srcStep, dst, dstStep, grid);
}
ZumStatus demosaic(const Zum16u* src, ZumiRect part, ZumiSize size, int srcStep, Zum16u* dst, int dstStep, int grid) {
  return zumiCFAToRGB_16u_C1C3R(src, part, size, srcStep, dst, dstStep, grid);
}

// A mosaic at the beginning or at the end of memory between pages that cannot be touched, and what its pixels are.
template <class T>
class Image {
 public:
  static constexpr int kMax = std::numeric_limits<T>::max();

  Image(int width, int height, int grid, unsigned seed)
      : size{width, height},
        grid_(grid),
        memory_(width * height * sizeof(T)),
        samples_(reinterpret_cast<T*>(seed % 2 ? memory_.begin() : memory_.end() - width * height * sizeof(T))) {
    // Noise, few values so that gradients are often equal, and extremes.
    std::mt19937 random(seed);
    const int few[] = {kMax, 3, 1}, scale[] = {1, 1, kMax};
    for (int i = 0; i < width * height; ++i) {
      const unsigned value = random();
      samples_[i] = static_cast<T>(value % (few[seed % 3] + 1u) * scale[seed % 3]);
    }
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        for (char channel : std::string("RGB")) rgb_.push_back(static_cast<T>(valueOf(channel, x, y)));
  }

  const T* pixel(int x, int y) const { return &rgb_[3 * (y * size.width + x)]; }
  ZumStatus convert(ZumiRect part, T* dst, int dstStep) const {
    const int step = static_cast<int>(size.width * sizeof(T));
    // The low bit of the steps of 16-bit images does not count.
    const int odd = sizeof(T) == 2;
    return demosaic(samples_, part, size, step | odd, dst, dstStep | odd, grid_);
  }

  const ZumiSize size;

 private:
  char colourAt(int x, int y) const {
    static const char* const kGrids[] = {"BGGR", "RGGB", "GBRG", "GRBG"};
    return kGrids[grid_][y % 2 * 2 + x % 2];
  }
  int at(int x, int y) const {
    const auto mirrored = [](int i, int last) { return last - std::abs(last - std::abs(i)); };
    return samples_[mirrored(y, size.height - 1) * size.width + mirrored(x, size.width - 1)];
  }
  int valueOf(char channel, int x, int y) const {
    if (colourAt(x, y) == channel) return at(x, y);
    int dxs = 1, dys = 1;
    if (channel == 'G' && x >= 2 && y >= 2 && x < size.width - 2 && y < size.height - 2) {
      const int vertical = std::abs(at(x, y - 2) - at(x, y + 2)), horizontal = std::abs(at(x - 2, y) - at(x + 2, y));
      if (vertical < horizontal) dxs = 0;
      if (horizontal < vertical) dys = 0;
    }
    int sum = 0, count = 0;
    for (int dy = -dys; dy <= dys; ++dy)
      for (int dx = -dxs; dx <= dxs; ++dx)
        if (colourAt(x + dx + 2, y + dy + 2) == channel) sum += at(x + dx, y + dy), ++count;
    return (sum + count / 2) / count;
  }

  int grid_;
  Arena memory_;
  T* const samples_;
  std::vector<T> rgb_;
};

using Pixels = std::function<bool(int, int)>;  // some of an image, by column and row

// Converts a part into memory with room for the whole image and more around it, and looks at all of that.
template <class T>
testing::AssertionResult converts(const Image<T>& image, ZumiRect part, const Pixels& written) {
  constexpr T kUntouched = static_cast<T>(0xA5A5);
  constexpr int kMargin = 2;
  const int width = image.size.width, height = image.size.height, stride = 3 * (width + 2 * kMargin) + 1;
  std::vector<T> out(stride * (height + 2 * kMargin), kUntouched);
  T* const first =
      &out[(std::clamp(part.y, 0, height) + kMargin) * stride + 3 * (std::clamp(part.x, 0, width) + kMargin)];
  const ZumStatus status = image.convert(part, first, static_cast<int>(stride * sizeof(T)));
  if (status != zumOk) return testing::AssertionFailure() << "status " << status;
  for (size_t i = 0; i < out.size(); ++i) {
    const int x = i % stride / 3 - kMargin, y = i / stride - kMargin, channel = i % stride % 3;
    const bool inside = x >= 0 && y >= 0 && x < width && y < height;
    const T expected = inside && written(x, y) ? image.pixel(x, y)[channel] : kUntouched;
    if (out[i] == expected) continue;
    return testing::AssertionFailure() << "part " << part.x << ", " << part.y << ", " << part.width << " by "
                                       << part.height << " of " << width << " by " << height << ": channel " << channel
                                       << " at " << x << ", " << y << " is " << int{out[i]} << ", not "
                                       << int{expected};
  }
  return testing::AssertionSuccess();
}

template <class T>
testing::AssertionResult converts(const Image<T>& image, ZumiRect part) {
  return converts(image, part, [&](int x, int y) {
    return x >= part.x && y >= part.y && x - part.x < part.width && y - part.y < part.height;
  });
}

// One thread: on a busy machine others cost more than they do.
template <class T>
class Demosaic : public testing::Test {
 protected:
  Demosaic() { threads_omp_of_n_zum = 1; }
  ~Demosaic() override { threads_omp_of_n_zum = threads_; }

 private:
  const Zum32s threads_ = threads_omp_of_n_zum;
};

using SampleTypes = testing::Types<Zum8u, Zum16u>;
TYPED_TEST_SUITE(Demosaic, SampleTypes);

TYPED_TEST(Demosaic, EveryPartOfSmallImages) {
  onEveryInstructionSet([] {
    for (int code = 0; code < 4 * 6 * 6; ++code) {
      const Image<TypeParam> image(2 + code % 6, 2 + code / 6 % 6, code / 36, code);
      for (int x = 0; x < image.size.width; ++x)
        for (int y = 0; y < image.size.height; ++y)
          for (int w = 1; x + w <= image.size.width; ++w)
            for (int h = 1; y + h <= image.size.height; ++h) ASSERT_TRUE(converts(image, {x, y, w, h}));
    }
  });
}

// Widths around the lengths of vectors, whole images and some part of each.
TYPED_TEST(Demosaic, EveryWidth) {
  onEveryInstructionSet([] {
    for (int width = 2; width < 140; ++width) {
      for (int height : {2, 5, 6, 9, 20}) {
        const Image<TypeParam> image(width, height, (width + height) % 4, width * height);
        const int x = width * 3 % 7 % width, y = width % height;
        ASSERT_TRUE(converts(image, {0, 0, width, height}));
        ASSERT_TRUE(converts(image, {x, y, width - x - width % 2, height - y}));
      }
    }
  });
}

// Where only one thread runs, only the first band of the interior is converted, if that is large enough for bands.
TYPED_TEST(Demosaic, BandsOfThreadsThatDoNotRun) {
  for (const ZumiSize interior : {ZumiSize{192, 192}, ZumiSize{191, 192}, ZumiSize{192, 191}}) {
    const int width = interior.width + 4, height = interior.height + 4;
    const Image<TypeParam> image(width, height, 1, 1);
    const int rows = std::min(interior.width, interior.height) < 192 ? interior.height : interior.height / 5;
    threads_omp_of_n_zum = 5;
#pragma omp parallel num_threads(2)
#pragma omp master
    EXPECT_TRUE(converts(image, {0, 0, width, height},
                         [&](int x, int y) { return y < 2 + rows || y >= height - 2 || x < 2 || x >= width - 2; }));
  }
}

TYPED_TEST(Demosaic, PartsThatAreNotInTheImage) {
  constexpr int kHuge = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
  const Image<TypeParam> image(8, 7, 2, 0);
  const struct {
    ZumiRect part;
    int left, top, right, bottom;  // of what is written
  } cases[] = {
      {{3, 4, kHuge, kHuge}, 3, 4, 8, 7},  // cropped
      {{7, 0, 2, kHuge}, 7, 0, 8, 7},
      {{0, 0, 0, 7}, 0, 2, 1, 5},  // empty
      {{0, 3, 0, 2}, 0, 3, 1, 5},
      {{1, 1, 0, 7}, 1, 2, 2, 5},
      {{2, 0, 0, 7}, 0, 0, 0, 0},
      {{0, 0, 8, 0}, 0, 0, 8, 1},
      {{3, 0, 2, 0}, 3, 0, 5, 1},
      {{2, 1, 4, 0}, 2, 1, 6, 2},
      {{0, 2, 8, 0}, 0, 0, 0, 0},
      {{8, 0, 2, 2}, 0, 0, 0, 0},  // outside
      {{0, 7, 2, 2}, 0, 0, 0, 0},
      {{8, 7, 0, 0}, 0, 0, 0, 0},
      {{kHuge, kHuge, kHuge, kHuge}, 0, 0, 0, 0},
      {{-1, 0, 4, 4}, 0, 0, 0, 0},
      {{0, kLeast, 4, kHuge}, 0, 0, 0, 0},
      {{0, 0, -1, 4}, 0, 0, 0, 0},
      {{0, 0, 4, kLeast}, 0, 0, 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(converts(image, c.part,
                         [&c](int x, int y) { return x >= c.left && x < c.right && y >= c.top && y < c.bottom; }));
  }
}

TYPED_TEST(Demosaic, ValuesByHand) {
  TypeParam two[2 * 2] = {10, 20, 25, 40}, rgb[5 * 5 * 3];
  const int sample = sizeof(TypeParam);
  ASSERT_EQ(zumOk, demosaic(two, {0, 0, 2, 2}, {2, 2}, 2 * sample, rgb, 6 * sample, zumiBayerBGGR));
  const std::vector<int> corners = {40, 23, 10, 40, 20, 10, 40, 25, 10, 40, 23, 10};
  EXPECT_EQ(corners, std::vector<int>(rgb, rgb + 12));

  // Green in the middle of five by five, from the samples two above, below, left and right of it.
  TypeParam five[25] = {};
  five[7] = 100, five[17] = 201, five[11] = 10, five[13] = 21;
  const int cases[][5] = {{9, 9, 4, 4, 83}, {0, 9, 9, 0, 83}, {4, 4, 0, 1, 151}, {1, 0, 200, 200, 16}};
  for (const auto& [above, below, left, right, green] : cases) {
    five[2] = above, five[22] = below, five[10] = left, five[14] = right;
    ASSERT_EQ(zumOk, demosaic(five, {2, 2, 1, 1}, {5, 5}, 5 * sample, rgb, 15 * sample, zumiBayerRGGB));
    EXPECT_EQ(green, rgb[1]);
  }
}

}  // namespace
}  // namespace zumtest
