// Bit reduction against its definition, sample by sample in scalar steps: all depths, layouts, dithers, with noise and
// without, at every instruction set and number of threads.
#include <omp.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "support/pictures.h"

namespace zumtest {
namespace {

enum Layout { kC1, kC3, kAC4, kC4 };
constexpr int kStride[] = {1, 3, 4, 4}, kChannels[] = {1, 3, 3, 4};

struct Parameters {
  int noise;
  ZumDitherType dither;
  int levels;
};

int nudged(float x) { return truncated(x + 9e-06); }
int wrappedSum(int a, int b) { return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b)); }

// The noise of a range at pixels.
class Noise {
 public:
  Noise(float low, float high) : values_(1024), places_(1024) {
    ZumsRandUniState_16s* places;
    ZumsRandUniState_32f* values;
    zumsRandUniformInitAlloc_16s(&places, 0, 1024, 0);
    zumsRandUniformInitAlloc_32f(&values, low, high, 0);
    zumsRandUniform_16s(places_.data(), 1024, places);
    zumsRandUniform_32f(values_.data(), 1024, values);
    zumsRandUniformFree_16s(places);
    zumsRandUniformFree_32f(values);
  }
  float operator()(int x, int y) const { return values_[(places_[x & 1023] + 2 * y + x) & 1023]; }

 private:
  std::vector<Zum32f> values_;
  std::vector<Zum16s> places_;
};

// What the runtime makes of a number of threads.
int granted(int threads) {
  int team = 1;
#pragma omp parallel num_threads(std::max(threads, 1))
#pragma omp single
  team = omp_get_num_threads();
  return team;
}

template <class Src, class Dst>
struct Definition {
  static constexpr bool kFloat = std::is_same_v<Src, float>,
                        kSigned16To8 = std::is_same_v<Src, Zum16s> && sizeof(Dst) == 1;
  static constexpr int kFull = sizeof(Dst) == 1 ? 255 : 65535, kLowest = std::numeric_limits<Dst>::min();
  static constexpr float kTop = kFloat ? 1.0f : sizeof(Src) == 1 ? 255.0f : 65535.0f;

  Layout layout;
  ZumiSize size;
  Parameters p;
  int threads;  // asked for
  float q, inv;
  // Samples are chosen anew, so that with the errors that reach them they come next to a border.
  bool onBorders = false;

  Definition(Layout l, ZumiSize s, Parameters parameters, int t)
      : layout(l), size(s), p(parameters), threads(t), q(kTop / (p.levels - 1)), inv((p.levels - 1) / kTop) {}

  static float value(Src s) { return std::is_same_v<Src, Zum16s> ? s + 32768.0f : static_cast<float>(s); }
  static Dst clamped(int v) {
    return static_cast<Dst>(std::clamp<int>(wrappedSum(v, kLowest), kLowest, std::numeric_limits<Dst>::max()));
  }
  static Dst lowBits(int v) { return static_cast<Dst>(wrappedSum(v, kLowest)); }
  static int integer(float level, bool nudge) {
    const float scaled = kFloat ? level * kFull : level;
    return (nudge ? nudged(scaled) : truncated(scaled)) >> (!kFloat && sizeof(Src) > sizeof(Dst) ? 8 : 0);
  }

  std::vector<Dst> operator()(std::vector<Src>& src, std::vector<Dst> dst) const {
    if (p.dither == zumDitherNone) {
      undithered(src, dst);
    } else if (p.dither == zumDitherBayer) {
      ordered(src, dst);
    } else {
      diffused(src, dst);
    }
    return dst;
  }

  void undithered(const std::vector<Src>& src, std::vector<Dst>& dst) const {
    const float last = static_cast<float>(p.levels - 1), c = 1 / last, h = 0.5f / last;
    const float unit = kFloat ? 1 : ofBits(sizeof(Src) == 1 ? 0x3B808081 : 0x37800080);
    const int ofRow = size.width * kStride[layout];
    for (int i = 0; i < ofRow * size.height; ++i) {
      if (layout == kAC4 && i % 4 == 3) continue;
      const float x = kFloat ? src[i] : value(src[i]) * unit;
      float t = truncated(last * x) * c;
      if (h < x - t) t = t + c;
      const int o = truncated(t * kFull);
      const bool wraps = std::is_same_v<Dst, Zum16u> && layout != kAC4 && (kFloat || i % ofRow >= ofRow / 4 * 4);
      dst[i] = wraps ? lowBits(o) : clamped(o);
    }
  }

  void ordered(const std::vector<Src>& src, std::vector<Dst>& dst) const {
    static constexpr int kPattern[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const Noise noise(-p.noise / 100.0f, p.noise / 100.0f);
    const bool scalar = p.noise && layout != kC4 && (kFloat || kSigned16To8);
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) {
        const bool tail = x >= size.width / 4 * 4;
        for (int k = 0; k < kChannels[layout]; ++k) {
          int column = x & 3;
          if (tail && layout == kC1 && !p.noise && !kFloat && sizeof(Src) == 2 && sizeof(Dst) == 1) {
            const int exchanged[] = {0, 2, 1, 3};
            column = exchanged[column];
          }
          const float fraction = kPattern[y & 3][column] / 15.0f;
          float threshold = p.noise ? (fraction + noise(x, y)) * q : fraction * q;
          if (p.noise && tail && sizeof(Src) == 1 && (layout == kAC4 || layout == kC4)) threshold = fraction;
          if (p.noise && tail && sizeof(Src) != 1 && layout == kC4) threshold = k == 0 ? fraction : 0;
          const int i = (y * size.width + x) * kStride[layout] + k;
          const float f = value(src[i]);
          const float below = (scalar ? nudged(f * inv) : truncated(f * inv)) * q;
          const int v = integer(threshold < f - below ? below + q : below, scalar);
          const bool wraps = p.noise ? scalar && kFloat : tail && layout == kC1;
          dst[i] = wraps ? lowBits(v) : clamped(v);
        }
      }
    }
  }

  // Channels of a section are one tall image. All of its errors are kept.
  void diffused(std::vector<Src>& src, std::vector<Dst>& dst) const {
    static const std::vector<int> kPlans[2][4] = {{{3}, {2, 1}, {1, 1, 1}, {1, 1, 1}},
                                                  {{4}, {2, 2}, {2, 1, 1}, {1, 1, 1, 1}}};
    const std::vector<int> plan =
        layout == kC1 ? std::vector<int>{1} : kPlans[layout == kC4][std::min(granted(threads), 4) - 1];
    const Noise noise((50 - p.noise) * q / 100.0f, (50 + p.noise) * q / 100.0f);
    const bool fs = p.dither == zumDitherFS, stucki = p.dither == zumDitherStucki,
               apart = fs && (kFloat || kSigned16To8);
    int first = 0;
    for (int channels : plan) {
      std::vector<std::vector<float>> errors;
      for (int row = 0; row < channels * size.height; ++row) {
        errors.emplace_back(size.width);
        const auto e = [&](int up, int x) { return row < up || x < 0 || x >= size.width ? 0.0f : errors[row - up][x]; };
        for (int x = 0; x < size.width; ++x) {
          float sum, unit;
          if (fs) {
            sum = 3 * e(1, x + 1);
            sum = apart ? sum + 5 * e(1, x) + e(1, x - 1) : sum + e(1, x - 1) + 5 * e(1, x);
            sum = sum + 7 * e(0, x - 1);
            unit = 1 / 16.0f;
          } else {
            const float above[2][5] = {{3, 5, 7, 5, 3}, {2, 4, 8, 4, 2}},
                        twoAbove[2][5] = {{1, 3, 5, 3, 1}, {1, 2, 4, 2, 1}}, own[2][4] = {{5, 7, 0, 0}, {4, 8, 0, 0}};
            float lane[4];
            for (int i = 0; i < 4; ++i) {
              lane[i] = above[stucki][i] * e(1, x - 2 + i) + twoAbove[stucki][i] * e(2, x - 2 + i);
              if (i < 2) lane[i] = lane[i] + own[stucki][i] * e(0, x - 2 + i);
            }
            sum = (lane[0] + lane[2]) + (lane[1] + lane[3]);
            sum = sum + e(2, x + 2);
            sum = sum + above[stucki][4] * e(1, x + 2);
            unit = ofBits(stucki ? 0x3CC30C31 : 0x3CAAAAAB);
          }
          const int y = row % size.height, i = (y * size.width + x) * kStride[layout] + first + row / size.height;
          const float threshold = p.noise ? noise(x, y) : 0.5f * q;
          if (onBorders) {
            const float border = x % 5 == 3 ? 6e-8f : (13 * x + 5 * y) % (p.levels - 1) * q + threshold;
            src[i] = static_cast<Src>(border - sum * unit);
          }
          const float v = value(src[i]) + sum * unit, bottom = fs && kFloat ? 1.1920929e-07f : 0;
          if (v >= kTop || v < bottom) {
            dst[i] = lowBits(v >= kTop ? kFull : 0);
            continue;
          }
          float level = (apart ? nudged(v * inv) : truncated(v * inv)) * q;
          const float remainder = v - level;
          if (threshold < remainder) level = level + q;
          errors[row][x] = v - level;
          dst[i] = lowBits(integer(level, apart));
        }
      }
      first += channels;
    }
  }
};

// ---- Images of all kinds of samples

template <class T>
std::vector<T> image(std::size_t samples, unsigned seed) {
  std::minstd_rand random(seed);
  std::vector<T> result(samples);
  for (T& sample : result) {
    const auto bits = static_cast<uint32_t>(random() * 2654435761u);
    if constexpr (std::is_same_v<T, float>) {
      const float odd[] = {0, 1, -0.0f, 1e-8f, -1, 1.5f, 70000, -3e9f, 1e30f, -INFINITY, INFINITY, 0.99999999f};
      sample = bits % 16 == 0 ? odd[bits / 16 % std::size(odd)] : (bits >> 8) * (1.25f / (1 << 24)) - 0.125f;
    } else {
      const int kind = bits % 8, lowest = std::numeric_limits<T>::min(), highest = std::numeric_limits<T>::max();
      sample = static_cast<T>(kind == 0   ? highest
                              : kind == 1 ? lowest
                              : kind == 2 ? highest - (bits >> 8) % 3
                                          : bits >> 8);
    }
  }
  return result;
}

template <class Src, class Dst>
using Reduction = ZumStatus(const Src*, int, Dst*, int, ZumiSize, int, ZumDitherType, int);

class ReduceBits : public testing::Test {
 protected:
  ~ReduceBits() override {
    threads_omp_of_n_zum = threads_;
    i_malloc = std::malloc;
    i_free = std::free;
  }

  template <class Src, class Dst>
  static std::vector<Dst> call(Reduction<Src, Dst>* function, Layout layout, const std::vector<Src>& src, ZumiSize size,
                               Parameters p) {
    std::vector<Dst> dst(src.size(), Dst(77));
    const int samples = size.width * kStride[layout];
    EXPECT_EQ(zumOk, function(src.data(), samples * sizeof(Src), dst.data(), samples * sizeof(Dst), size, p.noise,
                              p.dither, p.levels));
    return dst;
  }

  template <class Src, class Dst>
  using Functions = Reduction<Src, Dst>* const[4];

  template <class Src, class Dst>
  static void compareOne(const Functions<Src, Dst>& functions, const Definition<Src, Dst>& d, std::vector<Src> src) {
    threads_omp_of_n_zum = d.threads;
    const std::vector<Dst> wanted = d(src, std::vector<Dst>(src.size(), Dst(77)));
    onEveryInstructionSet([&] {
      const std::vector<Dst> got = call(functions[d.layout], d.layout, src, d.size, d.p);
      const auto at = std::mismatch(got.begin(), got.end(), wanted.begin()).first - got.begin();
      ASSERT_EQ(got, wanted) << "layout " << d.layout << ", dither " << d.p.dither << ", noise " << d.p.noise
                             << ", levels " << d.p.levels << ", " << d.size.width << " by " << d.size.height
                             << ", threads " << d.threads << (d.onBorders ? ", on borders" : "") << ": sample " << at
                             << " of " << +src[at];
    });
  }

  template <class Src, class Dst>
  static void compare(const Functions<Src, Dst>& functions, int mostLevels) {
    unsigned seed = 0;
    for (Layout layout : {kC1, kC3, kAC4, kC4}) {
      for (ZumDitherType dither = zumDitherNone; dither <= zumDitherBayer; ++dither) {
        const bool diffused = dither != zumDitherNone && dither != zumDitherBayer;
        for (bool noisy : {false, true}) {
          for (int levels : {2, 0, 0, mostLevels}) {
            const int random = static_cast<int>(++seed * 2654435761u >> 8);
            if (levels == 0) levels = 2 + random / 100 % (mostLevels - 1);
            // Some go beyond the periods of the noise, which is also large enough for the ways of large images.
            const ZumiSize size = seed % 5 == 0                ? ZumiSize{1 + random % 3, 1030}
                                  : !diffused && seed % 3 == 0 ? ZumiSize{2100, 8}
                                                               : ZumiSize{1 + random % 75, 1 + random / 75 % 9};
            Definition<Src, Dst> definition(layout, size, {noisy ? 1 + random % 100 : 0, dither, levels},
                                            diffused ? random % 6 : 1);
            definition.onBorders = diffused && std::is_same_v<Src, float> && seed % 2;
            const auto samples = static_cast<std::size_t>(size.width) * size.height * kStride[layout];
            ASSERT_NO_FATAL_FAILURE(compareOne(functions, definition, image<Src>(samples, seed)));
          }
        }
      }
    }
    // The top, which rounding may lift by a level.
    for (int levels = 2; levels <= 256; ++levels) {
      const Definition<Src, Dst> definition(kC1, {5, 1}, {0, zumDitherBayer, levels}, 1);
      const Src top = std::is_same_v<Src, float> ? Src(1) : std::numeric_limits<Src>::max();
      ASSERT_NO_FATAL_FAILURE(compareOne(functions, definition, std::vector<Src>(5, top)));
    }
  }

  // Error diffusion of more rows than go together, over the borders between channels and groups of rows.
  template <class Src, class Dst>
  static void compareTall(const Functions<Src, Dst>& functions, Layout layout) {
    struct Case {
      ZumiSize size;
      int threads;
    };
    std::vector<Case> cases{{{1200, 70}, 2}, {{1200, 45}, 3}, {{150, 140}, 1}, {{700, 3}, 2}};
    for (int i = 1; i < 70; ++i) cases.push_back({{i, 1 + i * 29 % 70}, 1 + i % 3});
    unsigned seed = layout;
    for (const auto& [size, threads] : cases) {
      const ZumDitherType dither = zumDitherFS + static_cast<int>(++seed % 3);
      const Parameters p{seed % 4 == 0 ? 60 : 0, dither, 2 + size.height};
      Definition<Src, Dst> definition(layout, size, p, threads);
      definition.onBorders = std::is_same_v<Src, float> && seed % 2;
      compareOne(functions, definition,
                 image<Src>(static_cast<std::size_t>(size.width) * size.height * kStride[layout], seed));
    }
  }

 private:
  const Zum32s threads_ = threads_omp_of_n_zum;
};

#define ZUM_FUNCTIONS(pair)                                                                 \
  {                                                                                         \
    zumiReduceBits_##pair##_C1R, zumiReduceBits_##pair##_C3R, zumiReduceBits_##pair##_AC4R, \
        zumiReduceBits_##pair##_C4R                                                         \
  }
TEST_F(ReduceBits, Definition8u) { compare(ZUM_FUNCTIONS(8u), 256); }
TEST_F(ReduceBits, Definition16u) { compare(ZUM_FUNCTIONS(16u), 65536); }
TEST_F(ReduceBits, Definition16s) { compare(ZUM_FUNCTIONS(16s), 65536); }
TEST_F(ReduceBits, Definition16u8u) { compare(ZUM_FUNCTIONS(16u8u), 256); }
TEST_F(ReduceBits, Definition16s8u) { compare(ZUM_FUNCTIONS(16s8u), 256); }
TEST_F(ReduceBits, Definition32f8u) { compare(ZUM_FUNCTIONS(32f8u), 256); }
TEST_F(ReduceBits, Definition32f16u) { compare(ZUM_FUNCTIONS(32f16u), 256); }
TEST_F(ReduceBits, Definition32f16s) { compare(ZUM_FUNCTIONS(32f16s), 256); }

TEST_F(ReduceBits, DiffusesTallImages) {
  compareTall<Zum8u, Zum8u>(ZUM_FUNCTIONS(8u), kC1);
  compareTall<Zum16s, Zum8u>(ZUM_FUNCTIONS(16s8u), kAC4);
  compareTall<Zum32f, Zum16s>(ZUM_FUNCTIONS(32f16s), kC3);
  compareTall<Zum16u, Zum16u>(ZUM_FUNCTIONS(16u), kC4);
}

// Rows that are written over others: as if they were done one after the other.
TEST_F(ReduceBits, DiffusesOverlappingRows) {
  constexpr ZumiSize kSize{64, 40};
  const std::vector<Zum16u> src = image<Zum16u>(kSize.width * kSize.height, 1);
  for (ZumDitherType dither = zumDitherFS; dither <= zumDitherStucki; ++dither) {
    const std::vector<Zum8u> apart = call(zumiReduceBits_16u8u_C1R, kC1, src, kSize, {0, dither, 7});
    const auto overlap = [&](const Zum16u* from, Zum8u* to, int step) {
      zumiReduceBits_16u8u_C1R(from, kSize.width * 2, to, step, kSize, 0, dither, 7);
    };
    std::vector<Zum16u> both = src;
    auto* const bytes = reinterpret_cast<Zum8u*>(both.data());
    overlap(both.data(), bytes, kSize.width);
    EXPECT_TRUE(std::equal(apart.begin(), apart.end(), bytes)) << dither;
    std::vector<Zum8u> lastRow(kSize.width);
    overlap(src.data(), lastRow.data(), 0);
    EXPECT_TRUE(std::equal(lastRow.begin(), lastRow.end(), apart.end() - kSize.width)) << dither;
  }
}

TEST_F(ReduceBits, KnownValues) {
  std::vector<Zum8u> src(256);
  for (int i = 0; i < 256; ++i) src[i] = static_cast<Zum8u>(i);
  const auto undithered = call(zumiReduceBits_8u_C1R, kC1, src, {256, 1}, {0, zumDitherNone, 2});
  EXPECT_EQ(0, undithered[127]);
  EXPECT_EQ(255, undithered[128]);
  // Against the thresholds of 0, 8, 2 and 10 fifteenths of the range.
  const auto bayer =
      call(zumiReduceBits_8u_C1R, kC1, {0, 136, 35, 171, 1, 137, 34, 170}, {8, 1}, {0, zumDitherBayer, 2});
  EXPECT_EQ((std::vector<Zum8u>{0, 0, 255, 255, 255, 255, 0, 0}), bayer);
  const auto diffused = call(zumiReduceBits_8u_C1R, kC1, std::vector<Zum8u>(4, 128), {4, 1}, {0, zumDitherFS, 2});
  EXPECT_EQ((std::vector<Zum8u>{255, 0, 255, 0}), diffused);
  // Six sevenths: scaled to the range of bytes if undithered, else the high byte of the 16-bit level.
  const auto ofDeep = [&](ZumDitherType dither) {
    return call(zumiReduceBits_16u8u_C1R, kC1, std::vector<Zum16u>(4, 56173), {4, 1}, {0, dither, 8})[3];
  };
  EXPECT_EQ(218, ofDeep(zumDitherNone));
  EXPECT_EQ(219, ofDeep(zumDitherBayer));
  EXPECT_EQ(219, ofDeep(zumDitherJJN));
}

TEST_F(ReduceBits, LeavesAloneWhatHasNoName) {
  const std::vector<Zum8u> src(64, 200);
  for (ZumDitherType dither : {-1, 5}) {
    EXPECT_EQ(std::vector<Zum8u>(64, 77), call(zumiReduceBits_8u_C4R, kC4, src, {4, 4}, {3, dither, 4}));
  }
}

TEST_F(ReduceBits, SurvivesNaN) {
  for (ZumDitherType dither = zumDitherNone; dither <= zumDitherBayer; ++dither)
    for (int noise : {0, 50})
      call(zumiReduceBits_32f16s_C3R, kC3, std::vector<float>(99, NAN), {11, 3}, {noise, dither, 9});
}

// Steps in bytes where nothing is dithered and in ordered C4, in samples elsewhere.
TEST_F(ReduceBits, OddSteps) {
  constexpr int kWidth = 3, kHeight = 4, kStep = 60;
  const std::vector<float> src = image<float>(kStep * kHeight, 1);
  const auto reduced = [&](Reduction<float, Zum16u>* function, ZumDitherType dither, int srcStep, int dstStep) {
    std::vector<Zum16u> dst(kStep * kHeight);
    function(src.data(), srcStep, dst.data(), dstStep, {kWidth, kHeight}, 10, dither, 5);
    return dst;
  };
  for (ZumDitherType dither = zumDitherNone; dither <= zumDitherBayer; ++dither) {
    for (Layout layout : {kC1, kC4}) {
      const auto function = layout == kC1 ? zumiReduceBits_32f16u_C1R : zumiReduceBits_32f16u_C4R;
      const bool inBytes = dither == zumDitherNone || (dither == zumDitherBayer && layout == kC4);
      const auto even = reduced(function, dither, kStep, kStep);
      EXPECT_NE(even, reduced(function, dither, kStep + 4, kStep));
      EXPECT_EQ(inBytes, even != reduced(function, dither, kStep + 3, kStep)) << dither;
      EXPECT_EQ(inBytes, even != reduced(function, dither, kStep, kStep + 1)) << dither;
    }
  }
}

int blocksLeft, blocksHeld;

// Whatever cannot be had, nothing is written and everything is given back. No dither without noise needs any, but for
// the rows of errors.
TEST_F(ReduceBits, OutOfMemory) {
  i_malloc = [](size_t size) { return blocksLeft-- > 0 ? (++blocksHeld, std::malloc(size)) : nullptr; };
  i_free = [](void* block) {
    --blocksHeld;
    std::free(block);
  };
  const std::vector<Zum8u> src(48, 100);
  for (ZumDitherType dither = zumDitherNone; dither <= zumDitherBayer; ++dither) {
    for (int noise : {0, 9}) {
      const bool diffused = dither != zumDitherNone && dither != zumDitherBayer;
      const int needed = dither == zumDitherNone ? 0 : diffused + (noise ? 2 : 0);
      for (int blocks = 0; blocks <= needed; ++blocks) {
        std::vector<Zum8u> dst(48, 77);
        blocksLeft = blocks;
        EXPECT_EQ(blocks < needed ? zumErrMemAlloc : zumOk,
                  zumiReduceBits_8u_C3R(src.data(), 12, dst.data(), 12, {4, 4}, noise, dither, 3));
        EXPECT_EQ(blocks < needed, dst == std::vector<Zum8u>(48, 77));
        EXPECT_EQ(0, blocksHeld);
      }
    }
  }
}

}  // namespace
}  // namespace zumtest
