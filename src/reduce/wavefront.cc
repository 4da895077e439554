#include "reduce/wavefront.h"

#include <array>
#include <thread>
#include <type_traits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "reduce/wavefront.cc"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/float-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Arithmetic, as in the plain form

// Of values that are not negative.
template <bool nudged>
HWY_INLINE VF32 wholePart(VF32 x) {
#if HWY_TARGET == HWY_SSSE3
  const VF32 whole = toFloat(truncated(x));
#else
  const VF32 whole = hn::Trunc(x);
#endif
  if constexpr (nudged) {
    // Fractions next to 1 are multiples of 2^-24, or of more. The nudge in double precision takes 150 of these to the
    // next whole number.
    return addWhere(x - whole >= all(1 - 150 * 0x1p-24f), whole, all(1.0f));
  } else {
    return whole;
  }
}

// The errors around the pixels of a vector: own and above those at the left of and above the pixels, by distance.
template <class Method>
struct Reaching;

template <class Src, class Dst>
struct Reaching<FloydSteinberg<Src, Dst>> {
  template <class Errors>
  static HWY_INLINE VF32 sum(const Errors& e) {
    const VF32 left = e.above(-1), center = all(5.0f) * e.above(0), right = all(3.0f) * e.above(1);
    const VF32 fromAbove = FloydSteinberg<Src, Dst>::kApart ? (right + center) + left : (right + left) + center;
    return (fromAbove + all(7.0f) * e.own(-1)) * all(0.0625f);
  }
};

template <class Weights>
struct Reaching<ThreeRows<Weights>> {
  template <int dx, class Errors>
  static HWY_INLINE VF32 column(const Errors& e) {
    constexpr int w = dx < 0 ? 2 + dx : 2 - dx;
    const VF32 above = all(Weights::kAbove[w]) * e.above(dx);
    if constexpr (w == 0) {
      static_assert(Weights::kTwoAbove[0] == 1, "a product that changes nothing");
      return above + e.twoAbove(dx);
    } else {
      return above + all(Weights::kTwoAbove[w]) * e.twoAbove(dx);
    }
  }
  template <class Errors>
  static HWY_INLINE VF32 sum(const Errors& e) {
    const VF32 m2 = column<-2>(e) + all(Weights::kOwn[0]) * e.own(-2),
               m1 = column<-1>(e) + all(Weights::kOwn[1]) * e.own(-1);
    const VF32 four = (m2 + column<0>(e)) + (m1 + column<1>(e));
    return (four + e.twoAbove(2) + all(Weights::kAbove[0]) * e.above(2)) * all(Weights::kUnit);
  }
};

// Lanes moved down by one, the first lane of the next vector into the last.
HWY_INLINE VF32 moveDown(VF32 v, VF32 next) {
#if HWY_TARGET <= HWY_AVX3
  return VF32{_mm512_castsi512_ps(_mm512_alignr_epi32(_mm512_castps_si512(next.raw), _mm512_castps_si512(v.raw), 1))};
#else
  const Tag<float> d;
#if HWY_TARGET == HWY_AVX2
  next = hn::ConcatLowerUpper(d, next, v);
#endif
  return hn::CombineShiftRightBytes<sizeof(float)>(d, next, v);
#endif
}

// ---- Samples between rows and lanes, four by four

using D4 = hn::FixedTag<std::int32_t, 4>;
using V4 = hn::Vec<D4>;

// Loads the distances from the lowest of one channel of four pixels, in windows of 16 bytes from that channel of a
// window's first pixel on.
template <class T>
class Window {
  static constexpr int kPixels = 4 / sizeof(T);

 public:
  explicit Window(int samples) : samples_(samples) {
    std::fill_n(places_, sizeof(places_), std::uint8_t{0x80});  // nothing
    for (std::size_t i = 0; i < kPixels; ++i) {
      for (std::size_t byte = 0; byte < sizeof(T); ++byte)
        places_[4 * i + byte] = static_cast<std::uint8_t>(i * samples * sizeof(T) + byte);
    }
  }

  static bool serves(int) { return true; }
  // The pixels that have to follow the four, as windows reach beyond them.
  int beyond() const { return (4 * kPixels + 2 * (samples_ - 1)) / samples_ - kPixels; }

  HWY_INLINE V4 four(const T* p) const {
    const D4 d;
    if constexpr (kPixels == 4) {
      return one(p);
    } else {
      const hn::Repartition<std::uint64_t, D4> pairs;
      const V4 first = one(p), second = one(p + kPixels * samples_);
      const auto both = hn::InterleaveLower(pairs, hn::BitCast(pairs, first), hn::BitCast(pairs, second));
      return hn::BitCast(d, both) ^ hn::Set(d, std::numeric_limits<T>::min() & 0xFFFF);
    }
  }

 private:
  HWY_INLINE V4 one(const T* p) const {
    const hn::Repartition<std::uint8_t, D4> d;
    const auto window = hn::LoadU(d, reinterpret_cast<const std::uint8_t*>(p));
    return hn::BitCast(D4(), hn::TableLookupBytesOr0(window, hn::Load(d, places_)));
  }

  const int samples_;
  alignas(16) std::uint8_t places_[16];
};

// The bits of floats that follow one another.
template <>
class Window<float> {
 public:
  explicit Window(int) {}
  static bool serves(int samples) { return samples == 1; }
  static int beyond() { return 0; }
  static HWY_INLINE V4 four(const float* p) { return hn::BitCast(D4(), hn::LoadU(hn::RebindToFloat<D4>(), p)); }
};

// Stores samples by the low bits of their distances from the lowest.
template <class T>
HWY_INLINE void storeFour(V4 distances, T* p) {
  using Bits = std::make_unsigned_t<T>;
  const hn::RebindToUnsigned<D4> d;
  const auto bits = hn::BitCast(d, distances + hn::Set(D4(), std::numeric_limits<T>::min()));
  hn::StoreU(hn::TruncateTo(hn::Rebind<Bits, D4>(), bits), hn::Rebind<Bits, D4>(), reinterpret_cast<Bits*>(p));
}

// ---- Lanes
//
// Lanes are the rows of a group, the last row in the first lane. A lane goes from pixel to pixel and from the end of
// its row, after a pause, to its row of the next group. Before the lanes run, in the same manner, the rows above the
// group: their errors are read from memory. Blocks of steps are prepared and stored row by row.

constexpr std::size_t kVectors = 4;
constexpr int kGroup = kVectors * kLanes<float>;  // rows
constexpr int kSteps = 32;                        // of a block
constexpr int kMostRowsAbove = 2;

// What goes into a block of steps and comes out of it.
struct Block {
  // Steps by lanes: samples, then what is stored for them.
  alignas(HWY_MAX_BYTES) std::int32_t cells[kSteps][kGroup];
  alignas(HWY_MAX_BYTES) float thresholds[kSteps][kGroup];
  // What comes from the group above and goes to the group below, the nearer row first.
  float errorsIn[kMostRowsAbove][kSteps], errorsOut[kMostRowsAbove][kSteps];
};

struct Pace {
  int rowsAbove;
  int lag;         // of a row behind the one above it
  int pause;       // at least, the width of the margins
  int64_t period;  // steps from a row of a lane to the next
};

// The same for all methods.
template <class Src, class Dst>
class Lanes {
  using D = Depths<Src, Dst>;

 public:
  Lanes(const Section<Src, Dst>& section, const NoiseField* noise, const Meeting& meeting, int wave, const Pace& pace)
      : section_(section), noise_(noise), meeting_(meeting), pace_(pace), window_(section.samples) {
    for (int lane = -pace.rowsAbove; lane < kGroup; ++lane) {
      Place& p = place(lane);
      p.column = -(lane + pace.rowsAbove) * pace.lag;
      p.channel = section.firstChannel;
      p.y = std::max(lane, 0);
      p.advance(int64_t{wave} * kGroup, section.size.height);
    }
  }

  void prepare(Block& block) {
    for (int above = 0; above < pace_.rowsAbove; ++above) {
      float* const in = block.errorsIn[above];
      std::fill_n(in, kSteps, 0.0f);
      pieces(place(-1 - above),
             [&](int step, int length, int column) { std::copy_n(errors(above) + column, length, in + step); });
    }
    const Place* const lanes = &place(0);
    if (!std::all_of(lanes, lanes + kGroup, [&](const Place& p) { return isInside(p, 0); }))
      std::fill_n(block.cells[0], kSteps * kGroup, outside());
    for (int lane = 0; lane < kGroup; lane += 4) {
      if (window_.serves(section_.samples) && areInside(lane, window_.beyond())) {
        prepareFour(lane, block);
      } else {
        for (int i = lane; i < lane + 4; ++i) prepareOne(i, block);
      }
      for (int i = lane; i < lane + 4; ++i) fetchAhead(place(i));
      if (noise_) {
        for (int i = lane; i < lane + 4; ++i) prepareThresholds(i, block);
      }
    }
  }

  // Moves the lanes on.
  void finish(const Block& block) {
    for (int above = 0; above < pace_.rowsAbove; ++above) {
      Place p = place(kGroup - 1 - above);
      const float* const out = block.errorsOut[above];
      pieces(p, [&](int step, int length, int column) { std::copy_n(out + step, length, errors(above) + column); });
    }
    for (int lane = 0; lane < kGroup; lane += 4) {
      if (section_.samples == 1 && areInside(lane, 0)) {
        finishFour(lane, block);
      } else {
        for (int i = lane; i < lane + 4; ++i) finishOne(i, block);
      }
    }
  }

 private:
  // Where a lane is.
  struct Place {
    int64_t column;  // negative before the first row, the width or more in a pause
    int channel, y;

    void advance(int64_t rows, int height) {
      const int64_t below = y + rows;
      channel += static_cast<int>(below / height);
      y = static_cast<int>(below % height);
    }
  };
  Place& place(int lane) { return places_[lane + kMostRowsAbove]; }
  // Of a block.
  static constexpr std::size_t columnOf(int lane) { return kGroup - 1 - lane; }

  // piece(step, length, column) for those steps of the block, at most two runs unless rows are short, at which a lane
  // is in its row, from a place that is moved on.
  template <class Piece>
  void pieces(Place& p, const Piece& piece) const {
    const int width = section_.size.width;
    for (int step = 0; step < kSteps;) {
      const int64_t border = p.column < 0 ? 0 : p.column < width ? width : pace_.period;
      const int length = static_cast<int>(std::min<int64_t>(kSteps - step, border - p.column));
      if (border == width && p.channel < section_.end) piece(step, length, static_cast<int>(p.column));
      step += length;
      p.column += length;
      if (p.column == pace_.period) {
        p.column = 0;
        p.advance(int64_t{meeting_.waves} * kGroup, section_.size.height);
      }
    }
  }

  float* errors(int rowAbove) const {
    return meeting_.errors + (section_.size.width + std::ptrdiff_t{2} * pace_.pause) * rowAbove;
  }

  // What a lane takes: the distance of a sample from the lowest, or the bits of a float.
  static std::int32_t cell(const Src* p) {
    Src sample;
    std::memcpy(&sample, p, sizeof(sample));
    if constexpr (D::kFloat) {
      std::int32_t bits;
      std::memcpy(&bits, &sample, sizeof(bits));
      return bits;
    } else {
      return sample - std::numeric_limits<Src>::min();
    }
  }

  // A value that no errors keep from the top, where nothing is passed on.
  static std::int32_t outside() {
    if constexpr (D::kFloat) {
      constexpr float kFarAbove = 1e30f;
      return cell(&kFarAbove);
    } else {
      return std::numeric_limits<std::int32_t>::max();
    }
  }

  // Whether a lane is in its row all through the block, and some pixels on.
  bool isInside(const Place& p, int further) const {
    return p.column >= 0 && p.column + kSteps + further <= section_.size.width && p.channel < section_.end;
  }
  bool areInside(int lane, int further) {
    return isInside(place(lane), further) && isInside(place(lane + 1), further) && isInside(place(lane + 2), further) &&
           isInside(place(lane + 3), further);
  }

  const Src* source(const Place& p, int64_t column) const {
    return section_.src.row(p.y) + section_.samples * column + p.channel;
  }
  Dst* destination(const Place& p, int64_t column) const {
    return section_.dst.row(p.y) + section_.samples * column + p.channel;
  }

  void prepareFour(int lane, Block& block) {
    const D4 d;
    const std::size_t c = columnOf(lane + 3);
    const Src* src[4];
    for (int i = 0; i < 4; ++i) src[i] = source(place(lane + 3 - i), place(lane + 3 - i).column);
    for (int step = 0; step < kSteps; step += 4) {
      const int at = step * section_.samples;
      const auto steps = interleaved4(window_.four(src[0] + at), window_.four(src[1] + at), window_.four(src[2] + at),
                                      window_.four(src[3] + at));
      for (int i = 0; i < 4; ++i) hn::Store(steps[i], d, block.cells[step + i] + c);
    }
  }

  void finishFour(int lane, const Block& block) {
    const D4 d;
    const std::size_t c = columnOf(lane + 3);
    Dst* dst[4];
    for (int i = 0; i < 4; ++i) {
      Place& p = place(lane + 3 - i);
      dst[i] = destination(p, p.column);
      p.column += kSteps;
    }
    for (int step = 0; step < kSteps; step += 4) {
      const auto at = [&](int i) HWY_ATTR { return hn::Load(d, block.cells[step + i] + c); };
      const auto rows = interleaved4(at(0), at(1), at(2), at(3));
      for (int i = 0; i < 4; ++i) storeFour(rows[i], dst[i] + step);
    }
  }

  void prepareOne(int lane, Block& block) {
    Place p = place(lane);
    const std::size_t c = columnOf(lane);
    pieces(p, [&](int step, int length, int column) {
      const Src* src = source(p, column);
      const int samples = section_.samples;
      std::int32_t* to = &block.cells[step][c];
#pragma GCC unroll 8
      for (int i = 0; i < length; ++i, src += samples, to += kGroup) *to = cell(src);
    });
  }

  void finishOne(int lane, const Block& block) {
    const std::size_t c = columnOf(lane);
    Place& p = place(lane);
    pieces(p, [&](int step, int length, int column) {
      Dst* dst = destination(p, column);
      const int samples = section_.samples;
      const std::int32_t* from = &block.cells[step][c];
#pragma GCC unroll 8
      for (int i = 0; i < length; ++i, dst += samples, from += kGroup) D::store(dst, *from);
    });
  }

  void prepareThresholds(int lane, Block& block) {
    Place p = place(lane);
    const std::size_t c = columnOf(lane);
    pieces(p, [&](int step, int length, int column) {
      for (int i = 0; i < length; ++i) block.thresholds[step + i][c] = noise_->at(column + i, p.y);
    });
  }

  // As many rows as there are lanes are too many for the processor to see what comes next.
  HWY_INLINE void fetchAhead(const Place& p) const {
    constexpr int kSourceAhead = 2 * kSteps, kDestinationAhead = kSteps;
    if (!isInside(p, kSourceAhead)) return;
    const std::size_t samples = static_cast<std::size_t>(section_.samples) * kSteps;
    fetch<false>(source(p, p.column + kSourceAhead), samples * sizeof(Src));
    fetch<true>(destination(p, p.column + kDestinationAhead), samples * sizeof(Dst));
  }
  // Inlined always: the compiler drops calls that do nothing else.
  template <bool toWrite>
  static HWY_INLINE void fetch(const void* p, std::size_t bytes) {
    constexpr std::size_t kLine = 64;
    for (std::size_t i = 0; i < bytes; i += kLine) __builtin_prefetch(static_cast<const char*>(p) + i, toWrite);
  }

  const Section<Src, Dst>& section_;
  const NoiseField* const noise_;
  const Meeting& meeting_;
  const Pace pace_;
  const Window<Src> window_;
  Place places_[kMostRowsAbove + kGroup];
};

// ---- A wave

template <class Method, class Src, class Dst>
class Wave {
  using D = Depths<Src, Dst>;

  static constexpr int kRowsAbove = Method::kRows - 1;
  // One more than it must be, so that a step need not wait for the last one's errors to be moved to the next row.
  static constexpr int kLag = Method::kMargin + 2;
  static constexpr int kEarlier = kRowsAbove * kLag + Method::kMargin;  // steps whose errors are still needed
  // From the step at which the rows above the group are read to that at which they are known.
  static constexpr int kDelay = kGroup * kLag;
  static constexpr int kShortestPeriod = kDelay + kSteps;
  static constexpr int kPixelsOfStep = 3;

 public:
  // Waves that can wait for one another in a ring without a standstill, with time to spare.
  static int mostWaves(int width) { return std::max(width / (2 * kShortestPeriod), 1); }

  // A step takes as long as some pixels do in the plain form.
  static bool isFaster(int width, int64_t rows) { return kPixelsOfStep * steps(width, rows, 0, 1) < rows * width; }

  Wave(const Section<Src, Dst>& section, const Diffusion& diffusion, const Meeting& meeting, int wave)
      : diffusion_(diffusion),
        meeting_(meeting),
        wave_(wave),
        period_(period(section.size.width)),
        steps_(steps(section.size.width, int64_t{section.size.height} * (section.end - section.firstChannel), wave,
                     meeting.waves)),
        lanes_(section, diffusion.noise, meeting, wave, {kRowsAbove, kLag, Method::kMargin, period_}) {
    std::fill_n(block_.thresholds[0], kSteps * kGroup, 0.5f * diffusion.grid.step);
  }

  void run() {
    for (int64_t done = 0; done < steps_; done += kSteps) {
      await(done);
      lanes_.prepare(block_);
      walk();
      lanes_.finish(block_);
      publish(done + kSteps);
    }
    publish(std::numeric_limits<int64_t>::max());
  }

 private:
  static int64_t period(int width) { return std::max(width + int64_t{Method::kMargin}, int64_t{kShortestPeriod}); }

  // Until a wave's last row is done.
  static int64_t steps(int width, int64_t rows, int wave, int waves) {
    const int64_t groups = (rows + kGroup - 1) / kGroup, rounds = (groups - wave + waves - 1) / waves;
    if (rounds == 0) return 0;
    return (rounds - 1) * period(width) + (kRowsAbove + std::min<int64_t>(rows, kGroup)) * kLag + width;
  }

  // The wave with the rows above has to be so far that all that a block reads is there.
  void await(int64_t done) const {
    if (meeting_.waves == 1) return;
    const int above = (wave_ == 0 ? meeting_.waves : wave_) - 1;
    const int64_t needed = done + kSteps + kDelay - (wave_ == 0 ? period_ : 0);
    // Most waits are short. Whoever yields at once may get the processor back only after a long time.
    constexpr int kTries = 20000;
    for (int tries = 0; meeting_.progress[above].steps.load(std::memory_order_acquire) < needed; ++tries)
      if (tries >= kTries) std::this_thread::yield();
  }
  void publish(int64_t done) const {
    if (meeting_.waves > 1) meeting_.progress[wave_].steps.store(done, std::memory_order_release);
  }

  struct Errors {
    const float* ofStep;  // of the row above, moved down to this row, at this step
    const float* ofStepTwoAbove;
    VF32 own1, own2;

    HWY_INLINE VF32 own(int dx) const { return dx == -1 ? own1 : own2; }
    HWY_INLINE VF32 above(int dx) const { return hn::Load(Tag<float>(), ofStep + (dx - kLag) * kGroup); }
    HWY_INLINE VF32 twoAbove(int dx) const { return hn::Load(Tag<float>(), ofStepTwoAbove + (dx - 2 * kLag) * kGroup); }
  };

  HWY_INLINE void walk() {
    const Tag<float> d;
    const Tag<std::int32_t> di;
    const VF32 top = all(D::kTop), bottom = all(Method::kBottom), step = all(diffusion_.grid.step),
               inverse = all(diffusion_.grid.inverse);
    const float* threshold = block_.thresholds[0];
    std::array<VF32, kVectors> own1, own2;
    for (std::size_t j = 0; j < kVectors; ++j) {
      own1[j] = hn::Load(d, own_[0] + j * kLanes<float>);
      own2[j] = hn::Load(d, own_[1] + j * kLanes<float>);
    }
    for (int i = 0; i < kSteps; ++i) {
      float* const above = moved_[0][kEarlier + i];
      float* const twoAbove = moved_[kRowsAbove - 1][kEarlier + i];
      std::array<VF32, kVectors> e;
#pragma GCC unroll 4
      for (std::size_t j = 0; j < kVectors; ++j) {
        const std::size_t at = j * kLanes<float>;
        const VI32 sample = hn::Load(di, block_.cells[i] + at);
        const VF32 value = D::kFloat ? hn::BitCast(d, sample) : toFloat(sample);
        const VF32 v = value + Reaching<Method>::sum(Errors{above + at, twoAbove + at, own1[j], own2[j]});
        VF32 level = wholePart<Method::kNudged>(v * inverse) * step;
        level = addWhere(hn::Load(d, threshold + at) < v - level, level, step);
        const auto aboveBottom = v >= bottom, atTop = v >= top;
        e[j] = hn::IfThenElseZero(hn::AndNot(atTop, aboveBottom), v - level);
        level = hn::IfThenElse(atTop, top, hn::IfThenElseZero(aboveBottom, level));
        if constexpr (D::kScale != 1) level = level * all(D::kScale);
        VI32 distance = truncated(Method::kNudged ? wholePart<true>(level) : level);
        if constexpr (D::kShift != 0) distance = hn::ShiftRight<D::kShift>(distance);
        hn::Store(distance, di, block_.cells[i] + at);
      }
      block_.errorsOut[0][i] = hn::GetLane(e[0]);
      own2 = own1;
      own1 = e;
      const auto moveRows = [&](int rowsAbove, float* to) HWY_ATTR {
        for (std::size_t j = 0; j < kVectors; ++j) {
          e[j] = moveDown(e[j], j + 1 < kVectors ? e[j + 1] : all(block_.errorsIn[rowsAbove][i]));
          hn::Store(e[j], d, to + j * kLanes<float>);
        }
      };
      moveRows(0, above);
      if constexpr (kRowsAbove == 2) {
        block_.errorsOut[1][i] = hn::GetLane(e[0]);
        moveRows(1, twoAbove);
      }
      if (diffusion_.noise) threshold += kGroup;
    }
    for (std::size_t j = 0; j < kVectors; ++j) {
      hn::Store(own1[j], d, own_[0] + j * kLanes<float>);
      hn::Store(own2[j], d, own_[1] + j * kLanes<float>);
    }
    for (auto& moved : moved_) std::copy_n(moved[kSteps], kEarlier * kGroup, moved[0]);
  }

  const Diffusion& diffusion_;
  const Meeting& meeting_;
  const int wave_;
  const int64_t period_, steps_;
  Lanes<Src, Dst> lanes_;
  Block block_;
  // Errors of the rows above, moved to the lanes below them, and of the last pixels of the lanes themselves.
  alignas(HWY_MAX_BYTES) float moved_[kRowsAbove][kEarlier + kSteps][kGroup] = {};
  alignas(HWY_MAX_BYTES) float own_[2][kGroup] = {};
};

template <class Method, class Src, class Dst>
void runWave(const Section<Src, Dst>& section, const Diffusion& diffusion, const Meeting& meeting, int wave) {
  Wave<Method, Src, Dst>(section, diffusion, meeting, wave).run();
}

template <class Method, class Src, class Dst>
constexpr WaveKernel<Src, Dst> kKernel{Wave<Method, Src, Dst>::isFaster, Wave<Method, Src, Dst>::mostWaves,
                                       runWave<Method, Src, Dst>};

#define ZUM_KERNELS(tag, Src, Dst)                                                    \
  WaveKernel<Src, Dst> kernel_##tag(ZumDitherType dither) {                           \
    return dither == zumDitherFS    ? kKernel<FloydSteinberg<Src, Dst>, Src, Dst>     \
           : dither == zumDitherJJN ? kKernel<ThreeRows<JarvisJudiceNinke>, Src, Dst> \
                                    : kKernel<ThreeRows<Stucki>, Src, Dst>;           \
  }
ZUM_DEPTH_PAIRS(ZUM_KERNELS)
#undef ZUM_KERNELS

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

#define ZUM_WAVE_KERNEL(tag, Src, Dst)                              \
  HWY_EXPORT(kernel_##tag);                                         \
  template <>                                                       \
  WaveKernel<Src, Dst> waveKernel<Src, Dst>(ZumDitherType dither) { \
    return HWY_DYNAMIC_DISPATCH(kernel_##tag)(dither);              \
  }
ZUM_DEPTH_PAIRS(ZUM_WAVE_KERNEL)
#undef ZUM_WAVE_KERNEL

}  // namespace zum
#endif  // HWY_ONCE
