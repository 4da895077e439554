// Rows in which every pixel is decided alone, for every pair of depths: the nearest level, ordered dither, noise.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "reduce/ordered.cc"
#include "reduce/ordered.h"

#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "reduce/samples-inl.h"

#ifndef ZUM_REDUCE_PATTERN
#define ZUM_REDUCE_PATTERN
namespace zum {

// The pattern of ordered dither, fractions of a step: 0 to 15 over 15.
constexpr float fifteenths(int k) { return static_cast<float>(k) / 15; }
alignas(16) constexpr float kPattern[4][4] = {{fifteenths(0), fifteenths(8), fifteenths(2), fifteenths(10)},
                                              {fifteenths(12), fifteenths(4), fifteenths(14), fifteenths(6)},
                                              {fifteenths(3), fifteenths(11), fifteenths(1), fifteenths(9)},
                                              {fifteenths(15), fifteenths(7), fifteenths(13), fifteenths(5)}};

}  // namespace zum
#endif

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Forms

// The nearest level, found in the range 0 to 1; halfway between two, the lower one.
template <class Src, class Dst>
struct Nearest {
  using D = Depths<Src, Dst>;
  VF32 last, step, half;

  explicit Nearest(int levels) {
    const auto highest = static_cast<float>(levels - 1);
    last = all(highest);
    step = all(1 / highest);
    half = all(0.5f / highest);
  }

  HWY_INLINE Four<VI32> apply(const Four<VF32>& v) const { return {one(v.v0), one(v.v1), one(v.v2), one(v.v3)}; }

 private:
  HWY_INLINE VI32 one(VF32 v) const {
    constexpr float kUnit = 1 / D::kTop, kFull = D::kHighestStored;
    const VF32 x = v * all(kUnit), level = wholePart<!D::kFloat>(last * x) * step;
    return truncated(addWhere(half < x - level, level, step) * all(kFull));
  }
};

// The level below a value, or the one above if more than a threshold remains. Thresholds are those of consecutive
// samples.
template <class Src, class Dst, bool nudged>
struct AgainstThresholds {
  using D = Depths<Src, Dst>;
  VF32 inverse, step;
  const float* at;
  std::size_t phase;

  AgainstThresholds(Grid grid, const float* thresholds)
      : inverse(all(grid.inverse)), step(all(grid.step)), at(thresholds), phase(0) {}

  HWY_INLINE Four<VI32> converted(const Four<VF32>& v) const {
    return {one(v.v0, 0), one(v.v1, 1), one(v.v2, 2), one(v.v3, 3)};
  }

 private:
  HWY_INLINE VI32 one(VF32 v, std::size_t i) const {
    const VF32 threshold = hn::LoadU(Tag<float>(), at + phase + i * kLanes<float>);
    const VF32 count = nudged ? toFloat(truncatedNudged(v * inverse)) : wholePart<!D::kFloat>(v * inverse);
    const VF32 level = count * step;
    const VF32 scaled = addWhere(threshold < v - level, level, step) * all(D::kScale);
    return hn::ShiftRight<D::kShift>(truncatedTo<nudged>(scaled));
  }
};

// Thresholds that repeat after `period` samples, 0 for those that do not.
template <class Src, class Dst, bool nudged, std::size_t period>
struct Thresholded : AgainstThresholds<Src, Dst, nudged> {
  using AgainstThresholds<Src, Dst, nudged>::AgainstThresholds;

  HWY_INLINE Four<VI32> apply(const Four<VF32>& v) {
    const Four<VI32> result = this->converted(v);
    if constexpr (period == 0) {
      this->phase += kSamples;
    } else {
      this->phase += kSamples % period;
      if (this->phase >= period) this->phase -= period;
    }
    return result;
  }
};

// ---- Row kernels

template <class Dst, Layout layout, bool wraps>
using StoredOf = Stored<Dst, std::conditional_t<wraps, Wrapping, Saturating>, layout == kAC4>;

template <class Src, class Dst, Layout layout>
void nearestRow(const Src* src, Dst* dst, int width, int levels) {
  using To = StoredOf<Dst, layout, deviates(Deviation::kWraps, kPair<Src, Dst>, layout, kNearest)>;
  const std::size_t samples = static_cast<std::size_t>(width) * samplesOf(layout);
  columns<ValuesOf<Src>, Nearest<Src, Dst>, To>(src, dst, 0, samples, Nearest<Src, Dst>(levels));
}

// Columns of ordered dither between two samples, the first of which is at the beginning of the thresholds.
template <class Src, class Dst, Layout layout, Choice choice, bool inTail>
HWY_INLINE void dither(const Src* src, Dst* dst, std::size_t begin, std::size_t end, Grid grid,
                       const float* thresholds) {
  constexpr auto has = [](Deviation d) { return deviates(d, kPair<Src, Dst>, layout, choice); };
  constexpr bool kWraps = has(Deviation::kWraps) || (inTail && has(Deviation::kTailWraps));
  using Form = Thresholded<Src, Dst, has(Deviation::kNudged), choice == kOrdered ? 4 * samplesOf(layout) : 0>;
  columns<ValuesOf<Src>, Form, StoredOf<Dst, layout, kWraps>>(src, dst, begin, end, Form(grid, thresholds));
}

// The columns before the tail, which ends where the row does if there is none that differs.
template <class Src, class Dst, Layout layout, Choice choice>
constexpr int bodyOf(int width) {
  constexpr auto has = [](Deviation d) { return deviates(d, kPair<Src, Dst>, layout, choice); };
  constexpr bool kTail = has(Deviation::kTailWraps) || has(Deviation::kTailExchanges) ||
                         has(Deviation::kTailUnscaled) || has(Deviation::kTailUnscaledFirst);
  return kTail ? width & ~3 : width;
}

// The columns from there on.
template <class Src, class Dst, Layout layout, Choice choice>
HWY_INLINE void ditherTail(const Src* src, Dst* dst, int begin, int end, int y, Grid grid, const float* thresholds) {
  constexpr auto has = [](Deviation d) { return deviates(d, kPair<Src, Dst>, layout, choice); };
  constexpr std::size_t kOfPixel = samplesOf(layout);
  alignas(64) float own[kSamples] = {};
  for (std::size_t i = 0; i < kOfPixel * (end - begin); ++i) {
    const std::size_t column = i / kOfPixel, channel = i % kOfPixel;
    own[i] = thresholds[i];
    if (has(Deviation::kTailExchanges) && column != 0) own[i] = thresholds[3 - column];
    if (has(Deviation::kTailUnscaled)) own[i] = kPattern[y & 3][column];
    if (has(Deviation::kTailUnscaledFirst)) own[i] = channel == 0 ? kPattern[y & 3][column] : 0;
  }
  dither<Src, Dst, layout, choice, true>(src, dst, kOfPixel * begin, kOfPixel * end, grid, own);
}

// ---- Bytes by tables
//
// There are only 256 of them, and where there are instructions for it a look-up takes less time than the levels.

// Whether a band was worth it, and is done.
template <Layout layout, class Src, class Dst, class Parameters>
HWY_INLINE bool byTables(const Rows<const Src>&, const Rows<Dst>&, int, Band, const Parameters&) {
  return false;
}

#if HWY_TARGET <= HWY_AVX3_DL
// Making tables takes as long as some thousand pixels do.
bool isWorthTables(int width, Band band) { return std::int64_t{width} * (band.end - band.begin) >= 1 << 14; }

struct Table {
  VU8 t0, t1, t2, t3;

  explicit Table(const ByteTable& table) : t0(row(table, 0)), t1(row(table, 1)), t2(row(table, 2)), t3(row(table, 3)) {}

  HWY_INLINE VU8 operator[](VU8 v) const {
    return VU8{_mm512_mask_blend_epi8(_mm512_movepi8_mask(v.raw), _mm512_permutex2var_epi8(t0.raw, v.raw, t1.raw),
                                      _mm512_permutex2var_epi8(t2.raw, v.raw, t3.raw))};
  }

 private:
  static HWY_INLINE VU8 row(const ByteTable& table, std::size_t i) {
    return hn::Load(Tag<std::uint8_t>(), table.at + i * kLanes<std::uint8_t>);
  }
};

struct LookedUp {
  Table table;

  HWY_INLINE VU8 apply(VU8 v) const { return table[v]; }
};

// The upper of two levels, or the lower one, as the column has it: the columns of the pattern in which a byte goes to
// the upper level are the bits of a third table.
template <std::size_t ofPixel>
struct LookedUpByColumn {
  Table lower, upper, columns;
  std::size_t phase = 0;

  HWY_INLINE VU8 apply(VU8 v) {
    static constexpr Bits kBits;
    const VU8 bit = hn::LoadU(Tag<std::uint8_t>(), kBits.at + phase);
    phase += kLanes<std::uint8_t> % kPeriod;
    if (phase >= kPeriod) phase -= kPeriod;
    return hn::IfThenElse(hn::TestBit(columns[v], bit), upper[v], lower[v]);
  }

 private:
  static constexpr std::size_t kPeriod = 4 * ofPixel;
  struct Bits {
    std::uint8_t at[kPeriod + kLanes<std::uint8_t>];
    constexpr Bits() : at() {
      for (std::size_t i = 0; i < sizeof(at); ++i) at[i] = static_cast<std::uint8_t>(1 << i / ofPixel % 4);
    }
  };
};

constexpr ByteTable everyByte() {
  ByteTable table{};
  for (int i = 0; i < 256; ++i) table.at[i] = static_cast<std::uint8_t>(i);
  return table;
}

// What becomes of every byte at a threshold.
HWY_INLINE ByteTable bytesAt(float threshold, Grid grid) {
  static constexpr ByteTable kBytes = everyByte();
  alignas(64) float thresholds[4 + kSamples];
  std::fill(std::begin(thresholds), std::end(thresholds), threshold);
  ByteTable result;
  dither<Zum8u, Zum8u, kC1, kOrdered, false>(kBytes.at, result.at, 0, sizeof(result.at), grid, thresholds);
  return result;
}

template <Layout layout>
HWY_INLINE bool byTables(const Rows<const Zum8u>& src, const Rows<Zum8u>& dst, int width, Band band,
                         const int& levels) {
  if (!isWorthTables(width, band)) return false;
  static constexpr ByteTable kBytes = everyByte();
  ByteTable table;
  nearestRow<Zum8u, Zum8u, kC1>(kBytes.at, table.at, sizeof(table.at), levels);
  const LookedUp form{Table(table)};
  const std::size_t samples = static_cast<std::size_t>(width) * samplesOf(layout);
  for (int y = band.begin; y < band.end; ++y)
    columns<Bytes<false>, LookedUp, Bytes<layout == kAC4>>(src.row(y), dst.row(y), 0, samples, form);
  return true;
}

template <Layout layout>
HWY_INLINE bool byTables(const Rows<const Zum8u>& src, const Rows<Zum8u>& dst, int width, Band band,
                         const OrderedDither& ordered) {
  if (!isWorthTables(width, band)) return false;
  constexpr std::size_t kOfPixel = samplesOf(layout);
  using Form = LookedUpByColumn<kOfPixel>;
  const float farOff = 2 * Depths<Zum8u, Zum8u>::kTop;
  const ByteTable lower = bytesAt(farOff, ordered.grid), upper = bytesAt(-farOff, ordered.grid);
  ByteTable columnsOfRow[4] = {};
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 4; ++x) {
      const ByteTable here = bytesAt(ordered.thresholds[y][x * kOfPixel], ordered.grid);
      for (int i = 0; i < 256; ++i)
        columnsOfRow[y].at[i] |= static_cast<std::uint8_t>((here.at[i] == upper.at[i]) << x);
    }
  }
  const int bodyEnd = bodyOf<Zum8u, Zum8u, layout, kOrdered>(width);
  for (int y = band.begin; y < band.end; ++y) {
    const Form form{Table(lower), Table(upper), Table(columnsOfRow[y & 3])};
    columns<Bytes<false>, Form, Bytes<layout == kAC4>>(src.row(y), dst.row(y), 0, kOfPixel * bodyEnd, form);
    ditherTail<Zum8u, Zum8u, layout, kOrdered>(src.row(y), dst.row(y), bodyEnd, width, y, ordered.grid,
                                               ordered.thresholds[y & 3]);
  }
  return true;
}
#endif

// ---- Noise

// Four floats at each of the addresses of the blocks.
template <class Address>
HWY_INLINE VF32 blocksOf(const Address& address) {
  const Tag<float> d;
#if HWY_TARGET <= HWY_AVX3
  const hn::FixedTag<float, 4> block;
  const hn::Half<Tag<float>> half;
  return hn::Combine(d, hn::Combine(half, hn::LoadU(block, address(3)), hn::LoadU(block, address(2))),
                     hn::Combine(half, hn::LoadU(block, address(1)), hn::LoadU(block, address(0))));
#elif HWY_TARGET == HWY_AVX2
  const hn::FixedTag<float, 4> block;
  return hn::Combine(d, hn::LoadU(block, address(1)), hn::LoadU(block, address(0)));
#else
  return hn::LoadU(d, address(0));
#endif
}

// The noise of as many pixels as there are lanes, in four rows.
HWY_INLINE std::array<VF32, 4> noiseAt(const NoiseField& noise, int x, int y) {
  const float* const row = noise.fromRow(y);
  const Zum16s* const places = noise.placesFrom(x);
  const auto columnsFrom = [&](int first) HWY_ATTR {
    return blocksOf([&](int block) { return row + places[4 * block + first]; });
  };
  return interleaved4(columnsFrom(0), columnsFrom(1), columnsFrom(2), columnsFrom(3));
}

// Every lane `samples` times.
template <std::size_t samples>
HWY_INLINE void storeRepeated(VF32 v, float* to) {
  const Tag<float> d;
  if constexpr (samples == 1) {
    hn::StoreU(v, d, to);
  } else {
    struct Index {
      std::int32_t at[samples * kLanes<float>];
      constexpr Index() : at() {
        for (std::size_t i = 0; i < samples * kLanes<float>; ++i) at[i] = static_cast<std::int32_t>(i / samples);
      }
    };
    static constexpr Index kIndex;
    for (std::size_t i = 0; i < samples * kLanes<float>; i += kLanes<float>)
      hn::StoreU(hn::TableLookupLanes(v, hn::SetTableIndices(d, kIndex.at + i)), d, to + i);
  }
}

// Four rows at a time, in pieces whose thresholds stay in the cache.
constexpr int kPiece = 512;

template <std::size_t samples>
HWY_INLINE void noisyThresholds(const NoisyDither& noisy, int x, int y, int pixels, float (&to)[4][kPiece * samples]) {
  const Tag<float> d;
  const VF32 step = all(noisy.grid.step);
  const auto store = [&](VF32 noise, int r, int i) HWY_ATTR {
    storeRepeated<samples>((hn::LoadDup128(d, kPattern[(y + r) & 3]) + noise) * step, to[r] + samples * i);
  };
  for (int i = 0; i < pixels; i += static_cast<int>(kLanes<float>)) {
    const auto noise = noiseAt(noisy.noise, x + i, y);
    for (int r = 0; r < 4; ++r) store(noise[r], r, i);
  }
}

// ---- Bands of rows

template <class Src, class Dst, Layout layout>
void nearestBand(const Rows<const Src>& src, const Rows<Dst>& dst, int width, Band band, int levels) {
  if (byTables<layout>(src, dst, width, band, levels)) return;
  for (int y = band.begin; y < band.end; ++y) nearestRow<Src, Dst, layout>(src.row(y), dst.row(y), width, levels);
}

template <class Src, class Dst, Layout layout>
void orderedBand(const Rows<const Src>& src, const Rows<Dst>& dst, int width, Band band, const OrderedDither& ordered) {
  if (byTables<layout>(src, dst, width, band, ordered)) return;
  constexpr std::size_t kOfPixel = samplesOf(layout);
  const int bodyEnd = bodyOf<Src, Dst, layout, kOrdered>(width);
  for (int y = band.begin; y < band.end; ++y) {
    const float* const thresholds = ordered.thresholds[y & 3];
    dither<Src, Dst, layout, kOrdered, false>(src.row(y), dst.row(y), 0, kOfPixel * bodyEnd, ordered.grid, thresholds);
    ditherTail<Src, Dst, layout, kOrdered>(src.row(y), dst.row(y), bodyEnd, width, y, ordered.grid, thresholds);
  }
}

template <class Src, class Dst, Layout layout>
void noisyBand(const Rows<const Src>& src, const Rows<Dst>& dst, int width, Band band, const NoisyDither& noisy) {
  constexpr std::size_t kOfPixel = samplesOf(layout);
  const int bodyEnd = bodyOf<Src, Dst, layout, kNoisy>(width);
  alignas(64) float thresholds[4][kPiece * kOfPixel];
  for (int y = band.begin; y < band.end; y += 4) {
    const int rows = std::min(4, band.end - y);
    for (int x = 0; x < bodyEnd; x += std::min(bodyEnd - x, kPiece)) {
      const int pixels = std::min(bodyEnd - x, kPiece);
      noisyThresholds<kOfPixel>(noisy, x, y, pixels, thresholds);
      for (int r = 0; r < rows; ++r)
        dither<Src, Dst, layout, kNoisy, false>(src.row(y + r), dst.row(y + r), kOfPixel * x, kOfPixel * (x + pixels),
                                                noisy.grid, thresholds[r]);
    }
    for (int r = 0; r < rows; ++r)
      ditherTail<Src, Dst, layout, kNoisy>(src.row(y + r), dst.row(y + r), bodyEnd, width, y + r, noisy.grid,
                                           thresholds[r]);
  }
}

template <class Src, class Dst, Layout layout>
constexpr BandKernels<Src, Dst> kKernels{nearestBand<Src, Dst, layout>, orderedBand<Src, Dst, layout>,
                                         noisyBand<Src, Dst, layout>};

#define ZUM_KERNELS(tag, Src, Dst)                     \
  BandKernels<Src, Dst> kernels_##tag(Layout layout) { \
    return layout == kC1    ? kKernels<Src, Dst, kC1>  \
           : layout == kC3  ? kKernels<Src, Dst, kC3>  \
           : layout == kAC4 ? kKernels<Src, Dst, kAC4> \
                            : kKernels<Src, Dst, kC4>; \
  }
ZUM_DEPTH_PAIRS(ZUM_KERNELS)
#undef ZUM_KERNELS

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

OrderedDither::OrderedDither(Grid g, int samplesOfPixel) : grid(g) {
  for (int y = 0; y < 4; ++y)
    for (int i = 0; i < kLength; ++i) thresholds[y][i] = kPattern[y][i / samplesOfPixel % 4] * grid.step;
}

#define ZUM_BAND_KERNELS(tag, Src, Dst)                        \
  HWY_EXPORT(kernels_##tag);                                   \
  template <>                                                  \
  BandKernels<Src, Dst> bandKernels<Src, Dst>(Layout layout) { \
    return HWY_DYNAMIC_DISPATCH(kernels_##tag)(layout);        \
  }
ZUM_DEPTH_PAIRS(ZUM_BAND_KERNELS)
#undef ZUM_BAND_KERNELS

}  // namespace zum
#endif  // HWY_ONCE
