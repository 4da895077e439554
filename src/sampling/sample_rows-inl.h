// A layout for the kernels that resample planes: some rows of bytes, worked on side by side.
#if defined(ZUM_SAMPLING_SAMPLE_ROWS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_SAMPLING_SAMPLE_ROWS_INL_H
#undef ZUM_SAMPLING_SAMPLE_ROWS_INL_H
#else
#define ZUM_SAMPLING_SAMPLE_ROWS_INL_H
#endif

#include <array>

#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Vectors of n rows, `samples` consecutive ones of each.
template <std::size_t n, std::size_t samples>
using RowVectors = std::array<std::array<VU8, samples>, n>;

// n rows, each with `samples` bytes a column: two where the other side has half as many columns, or has them in two
// rows.
template <std::size_t n, std::size_t samples>
struct SampleRows {
  static constexpr std::size_t kPixels = kLanes<std::uint8_t>;
  static constexpr bool kKeeps = false;
  static constexpr bool kWoven = false;

  // Rows from a column on. Moving the pointers themselves tempts the compiler into loading them as a vector, just after
  // the caller has stored them one by one, for which the processor waits.
  template <class Sample>
  struct Place {
    const PlaneRow<Sample, n>& rows;
    std::size_t offset;

    Sample* operator[](std::size_t r) const { return rows[r] + offset; }
  };

  template <class Sample>
  static Place<Sample> at(const PlaneRow<Sample, n>& rows, std::size_t x) {
    return {rows, samples * x};
  }

  template <class Row, class Access = Whole>
  static HWY_INLINE RowVectors<n, samples> load(const Row& row, Access access = {}) {
    RowVectors<n, samples> v;
    for (std::size_t r = 0; r < n; ++r) {
      for (std::size_t i = 0; i < samples; ++i) {
        v[r][i] = access.samples(samples).load(Tag<std::uint8_t>(), row[r], i * kPixels);
      }
    }
    return v;
  }

  template <class Row, class Access = Whole>
  static HWY_INLINE void store(const RowVectors<n, samples>& v, const Row& row, Access access = {}) {
    for (std::size_t r = 0; r < n; ++r) {
      for (std::size_t i = 0; i < samples; ++i) {
        access.samples(samples).store(v[r][i], Tag<std::uint8_t>(), row[r], i * kPixels);
      }
    }
  }

  class Local {
   public:
    PlaneRow<std::uint8_t, n> row() {
      PlaneRow<std::uint8_t, n> result;
      for (std::size_t r = 0; r < n; ++r) result[r] = rows_[r].row();
      return result;
    }
    template <class Row>
    void copyIn(const Row& from, std::size_t columns) {
      for (std::size_t r = 0; r < n; ++r) rows_[r].copyIn(from[r], columns);
    }
    template <class Row>
    void copyOut(const Row& to, std::size_t columns) const {
      for (std::size_t r = 0; r < n; ++r) rows_[r].copyOut(to[r], columns);
    }

   private:
    typename Interleaved<std::uint8_t, samples, kPixels>::Local rows_[n];
  };
};

// Converts columns begin to end, no fewer than a vector from the row's start, in whole vectors. The last one may
// overlap those before it, and begin.
template <class Src, class Form, class Dst, class SrcRow, class DstRow>
HWY_INLINE void wholeVectors(const SrcRow& src, const DstRow& dst, std::size_t begin, std::size_t end) {
  const auto convert = [&](std::size_t x) HWY_ATTR {
    Dst::store(Form::apply(Src::load(Src::at(src, x), Whole())), Dst::at(dst, x), Whole());
  };
  std::size_t x = begin;
  for (; x + Src::kPixels <= end; x += Src::kPixels) convert(x);
  if (x < end) convert(end - Src::kPixels);
}

// The same wherever they are.
template <class Src, class Form, class Dst, class SrcRow, class DstRow>
HWY_INLINE void anyColumns(const SrcRow& src, const DstRow& dst, std::size_t begin, std::size_t end) {
  if (end >= Src::kPixels) {
    wholeVectors<Src, Form, Dst>(src, dst, begin, end);
  } else {
    lastColumns<Src, Form, Dst>(src, dst, begin, end);
  }
}

// The blocks at the start of a row by one form, what remains by another. It comes first, as it may overlap the blocks.
template <class Src, class Block, class Tail, class Dst, class SrcRow, class DstRow>
HWY_INLINE void blocksAndTail(const SrcRow& src, const DstRow& dst, std::size_t blockEnd, std::size_t width) {
  anyColumns<Src, Tail, Dst>(src, dst, blockEnd, width);
  anyColumns<Src, Block, Dst>(src, dst, 0, blockEnd);
}

// The first and the second of every two consecutive bytes.
HWY_INLINE VU8 evenBytes(const std::array<VU8, 2>& v) { return hn::ConcatEven(Tag<std::uint8_t>(), v[1], v[0]); }
HWY_INLINE VU8 oddBytes(const std::array<VU8, 2>& v) { return hn::ConcatOdd(Tag<std::uint8_t>(), v[1], v[0]); }

// The inverse.
HWY_INLINE std::array<VU8, 2> zipped(VU8 even, VU8 odd) {
  const Halves<VU8> both = zip(even, odd);
  return {both.a, both.b};
}

// The mean of two samples, halves rounded up or down.
struct HalvesUp {
  static HWY_INLINE VU8 mean(VU8 a, VU8 b) { return hn::AverageRound(a, b); }
};
struct HalvesDown {
  static HWY_INLINE VU8 mean(VU8 a, VU8 b) {
    return hn::AverageRound(a, b) - hn::And(hn::Xor(a, b), all<std::uint8_t>(1));
  }
};

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
