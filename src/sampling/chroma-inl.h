// Rows of luma and shared chroma, packed, semi-planar and planar: how vectors of pixels come from and go to them, and
// the walk over the rows. A row kernel is the walk with a source layout, a form and a destination layout.
#if defined(ZUM_SAMPLING_CHROMA_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_SAMPLING_CHROMA_INL_H
#undef ZUM_SAMPLING_CHROMA_INL_H
#else
#define ZUM_SAMPLING_CHROMA_INL_H
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

using Byte = std::uint8_t;

// Two consecutive vectors.
template <class V>
struct Two {
  V a, b;
};
template <class V>
Two(V, V) -> Two<V>;

// Lanes of two vectors of bytes in turn, in order over both results. A lane is a byte, or a pair of chroma.
template <class Lane, class D, class V>
HWY_INLINE Two<V> weave(D d, V v0, V v1) {
  const hn::Repartition<Lane, D> dl;
#if HWY_TARGET <= HWY_AVX3_DL
  if constexpr (MaxLanes(d) == 64) {
    struct Index {
      alignas(64) Byte at[2][64];
      constexpr Index() : at() {
        for (std::size_t i = 0; i < 128; ++i) {
          const std::size_t lane = i / sizeof(Lane);
          at[i / 64][i % 64] = static_cast<Byte>(lane % 2 * 64 + lane / 2 * sizeof(Lane) + i % sizeof(Lane));
        }
      }
    };
    static constexpr Index kIndex;
    return {V{_mm512_permutex2var_epi8(v0.raw, _mm512_load_si512(kIndex.at[0]), v1.raw)},
            V{_mm512_permutex2var_epi8(v0.raw, _mm512_load_si512(kIndex.at[1]), v1.raw)}};
  }
#endif
  const V lower = hn::BitCast(d, hn::InterleaveLower(dl, hn::BitCast(dl, v0), hn::BitCast(dl, v1)));
  const V upper = hn::BitCast(d, hn::InterleaveUpper(dl, hn::BitCast(dl, v0), hn::BitCast(dl, v1)));
  if constexpr (MaxLanes(d) <= 16) {
    return {lower, upper};
  } else {
    return {hn::ConcatLowerLower(d, upper, lower), hn::ConcatUpperUpper(d, upper, lower)};
  }
}

// The inverse: the even lanes of both vectors, and the odd ones.
template <class Lane, class D, class V>
HWY_INLINE V evenLanes(D d, const Two<V>& v) {
  const hn::Repartition<Lane, D> dl;
  return hn::BitCast(d, hn::ConcatEven(dl, hn::BitCast(dl, v.b), hn::BitCast(dl, v.a)));
}
template <class Lane, class D, class V>
HWY_INLINE V oddLanes(D d, const Two<V>& v) {
  const hn::Repartition<Lane, D> dl;
  return hn::BitCast(d, hn::ConcatOdd(dl, hn::BitCast(dl, v.b), hn::BitCast(dl, v.a)));
}

// ---- Layouts
//
// A layout is a row, or a pair of rows, as runs of bytes. A load or a store takes twice as many pixels of a row as a
// vector has bytes: two vectors of luma, two of chroma pairs at half the width of luma, or one at a quarter.

struct RunOfBytes {
  std::size_t ofFour;  // bytes for four pixels
  std::size_t plane = 0;
  int rows = 1, row = 0;  // it is row `row` of every `rows`
  int uses = 1;           // so many times
};

template <std::size_t n>
constexpr std::array<RunOfBytes, n> behindLuma(std::array<RunOfBytes, n> runs) {
  for (std::size_t i = 0; i < n; ++i) ++runs[i].plane;
  return runs;
}
template <std::size_t n>
constexpr std::array<RunOfBytes, n> rowOfTwo(int row, std::array<RunOfBytes, n> runs) {
  for (std::size_t i = 0; i < n; ++i) {
    runs[i].rows = 2;
    runs[i].row = row;
  }
  return runs;
}
template <std::size_t n>
constexpr std::array<RunOfBytes, n> usedTwice(std::array<RunOfBytes, n> runs) {
  for (std::size_t i = 0; i < n; ++i) runs[i].uses = 2;
  return runs;
}
template <std::size_t n, std::size_t m>
constexpr std::array<RunOfBytes, n + m> joined(const std::array<RunOfBytes, n>& first,
                                               const std::array<RunOfBytes, m>& second) {
  std::array<RunOfBytes, n + m> result{};
  for (std::size_t i = 0; i < n; ++i) result[i] = first[i];
  for (std::size_t i = 0; i < m; ++i) result[n + i] = second[i];
  return result;
}

// Where the runs of a layout are: pointers, one for each.
template <class Layout>
constexpr std::size_t kRunsOf = Layout::kRuns.size();

// `count` of them, from `first` on.
template <std::size_t first, std::size_t count, class T, std::size_t n>
HWY_INLINE PlaneRow<T, count> part(const PlaneRow<T, n>& all) {
  PlaneRow<T, count> result{};
  for (std::size_t i = 0; i < count; ++i) result[i] = all[first + i];
  return result;
}

// Access to all pixels of a load or a store. Vector i of a run starts i bytes behind its pixels.
struct AllPixels {
  static Whole bytes(std::size_t) { return {}; }
};

// The same, with stores past the cache where the whole image is aligned and the vectors are long enough.
struct AllPastCache {
  struct Bytes : Whole {
    template <class D>
    static HWY_INLINE void store(hn::Vec<D> v, D d, Byte* p, std::size_t i = 0) {
      if constexpr (MaxLanes(d) >= 16) {
        hn::Stream(v, d, p + i);
      } else {
        hn::StoreU(v, d, p + i);
      }
    }
  };
  static Bytes bytes(std::size_t) { return {}; }
};

#if HWY_TARGET <= HWY_AVX3
// Access to the first n pixels.
struct FirstPixels {
  std::size_t n;

  First bytes(std::size_t ofFour) const { return {n * ofFour / 4}; }
};
#endif

enum Width { kHalf = 4, kQuarter = 2 };  // the bytes of chroma pairs that belong to four pixels

// Lanes in one run: chroma pairs; or the samples of a plane, two columns of which count as a pair.
template <class AnyLane, Width width>
struct Lanes {
  using Lane = AnyLane;
  static constexpr std::array<RunOfBytes, 1> kRuns{{{width}}};

  template <class D, class Row, class Access>
  static HWY_INLINE auto load(D d, const Row& row, Access access) {
    const auto bytes = access.bytes(width);
    if constexpr (width == kHalf) {
      return Two{bytes.load(d, row[0]), bytes.load(d, row[0], MaxLanes(d))};
    } else {
      return bytes.load(d, row[0]);
    }
  }
  template <class D, class Row, class Access>
  static HWY_INLINE void store(D d, const Two<hn::Vec<D>>& v, const Row& row, Access access) {
    const auto bytes = access.bytes(width);
    bytes.store(v.a, d, row[0]);
    bytes.store(v.b, d, row[0], MaxLanes(d));
  }
  template <class D, class Row, class Access>
  static HWY_INLINE void store(D d, hn::Vec<D> v, const Row& row, Access access) {
    access.bytes(width).store(v, d, row[0]);
  }
};
template <Width width>
using Pairs = Lanes<std::uint16_t, width>;
template <Width width>
using Samples = Lanes<Byte, width>;
using Luma = Samples<kHalf>;

// Cb and Cr in two runs.
template <Width width>
struct CbAndCr {
  using Lane = std::uint16_t;
  static constexpr std::array<RunOfBytes, 2> kRuns{{{width / 2, 0}, {width / 2, 1}}};

  template <class D, class Row, class Access>
  static HWY_INLINE auto load(D d, const Row& row, Access access) {
    const auto bytes = access.bytes(width / 2);
    if constexpr (width == kHalf) {
      return weave<Byte>(d, bytes.load(d, row[0]), bytes.load(d, row[1]));
    } else {
      const hn::Repartition<Lane, D> pairs;
      const hn::Half<D> half;
      const auto cb = hn::PromoteTo(pairs, bytes.load(half, row[0]));
      const auto cr = hn::PromoteTo(pairs, bytes.load(half, row[1]));
      return hn::BitCast(d, hn::Or(cb, hn::ShiftLeft<8>(cr)));
    }
  }
  template <class D, class Row, class Access>
  static HWY_INLINE void store(D d, const Two<hn::Vec<D>>& v, const Row& row, Access access) {
    const auto bytes = access.bytes(width / 2);
    bytes.store(evenLanes<Byte>(d, v), d, row[0]);
    bytes.store(oddLanes<Byte>(d, v), d, row[1]);
  }
  template <class D, class Row, class Access>
  static HWY_INLINE void store(D, hn::Vec<D> v, const Row& row, Access access) {
    const auto bytes = access.bytes(width / 2);
    const auto pairs = hn::BitCast(hn::Repartition<Lane, D>(), v);
    const hn::Half<D> half;
    bytes.store(hn::TruncateTo(half, pairs), half, row[0]);
    bytes.store(hn::TruncateTo(half, hn::ShiftRight<8>(pairs)), half, row[1]);
  }
};

// Two rows of another layout.
template <class Layout>
struct UpperAndLower {
  using Lane = typename Layout::Lane;
  static constexpr auto kRuns = joined(rowOfTwo(0, Layout::kRuns), rowOfTwo(1, Layout::kRuns));
  static constexpr std::size_t n = kRunsOf<Layout>;

  template <class D, class Row, class Access>
  static HWY_INLINE auto load(D d, const Row& row, Access access) {
    return Two{Layout::load(d, part<0, n>(row), access), Layout::load(d, part<n, n>(row), access)};
  }
  template <class D, class V, class Row, class Access>
  static HWY_INLINE void store(D d, const Two<V>& v, const Row& row, Access access) {
    Layout::store(d, v.a, part<0, n>(row), access);
    Layout::store(d, v.b, part<n, n>(row), access);
  }
};

// A layout each of whose rows is loaded twice.
template <class Layout>
struct Twice : Layout {
  static constexpr auto kRuns = usedTwice(Layout::kRuns);
};

// Luma, of one row or two, and its chroma.
template <class AnyLuma, class AnyChroma>
struct LumaChroma {
  AnyLuma luma;
  AnyChroma chroma;
};
template <class AnyLuma, class AnyChroma>
LumaChroma(AnyLuma, AnyChroma) -> LumaChroma<AnyLuma, AnyChroma>;

// In planes.
template <class LumaRows, class Chroma>
struct Apart {
  using Lane = typename Chroma::Lane;
  static constexpr auto kRuns = joined(LumaRows::kRuns, behindLuma(Chroma::kRuns));
  static constexpr std::size_t n = kRunsOf<LumaRows>, m = kRunsOf<Chroma>;

  template <class D, class Row, class Access>
  static HWY_INLINE auto load(D d, const Row& row, Access access) {
    return LumaChroma{LumaRows::load(d, part<0, n>(row), access), Chroma::load(d, part<n, m>(row), access)};
  }
  template <class D, class V, class Row, class Access>
  static HWY_INLINE void store(D d, const V& v, const Row& row, Access access) {
    LumaRows::store(d, v.luma, part<0, n>(row), access);
    Chroma::store(d, v.chroma, part<n, m>(row), access);
  }
};

// In turn.
template <bool chromaFirst>
struct Packed {
  using Lane = std::uint16_t;
  static constexpr std::array<RunOfBytes, 1> kRuns{{{8}}};

  template <class D, class Row, class Access>
  static HWY_INLINE auto load(D d, const Row& row, Access access) {
    constexpr std::size_t n = MaxLanes(D());
    const auto bytes = access.bytes(8);
    const Two first{bytes.load(d, row[0]), bytes.load(d, row[0], n)};
    const Two second{bytes.load(d, row[0], 2 * n), bytes.load(d, row[0], 3 * n)};
    const Two even{evenLanes<Byte>(d, first), evenLanes<Byte>(d, second)};
    const Two odd{oddLanes<Byte>(d, first), oddLanes<Byte>(d, second)};
    return chromaFirst ? LumaChroma{odd, even} : LumaChroma{even, odd};
  }
  template <class D, class V, class Row, class Access>
  static HWY_INLINE void store(D d, const V& v, const Row& row, Access access) {
    constexpr std::size_t n = MaxLanes(D());
    const auto bytes = access.bytes(8);
    const auto& even = chromaFirst ? v.chroma : v.luma;
    const auto& odd = chromaFirst ? v.luma : v.chroma;
    const auto first = weave<Byte>(d, even.a, odd.a), second = weave<Byte>(d, even.b, odd.b);
    bytes.store(first.a, d, row[0]);
    bytes.store(first.b, d, row[0], n);
    bytes.store(second.a, d, row[0], 2 * n);
    bytes.store(second.b, d, row[0], 3 * n);
  }
};

// ---- Rows

template <class Layout, class T>
HWY_INLINE PlaneRow<T, kRunsOf<Layout>> rowOf(const Rows<T>* planes, int r) {
  PlaneRow<T, kRunsOf<Layout>> row{};
  for (std::size_t i = 0; i < row.size(); ++i) {
    constexpr auto& kRuns = Layout::kRuns;
    row[i] = planes[kRuns[i].plane].row(r / kRuns[i].uses * kRuns[i].rows + kRuns[i].row);
  }
  return row;
}

template <class Layout, class T>
HWY_INLINE auto at(PlaneRow<T, kRunsOf<Layout>> row, std::size_t x) {
  for (std::size_t i = 0; i < row.size(); ++i) row[i] += x * Layout::kRuns[i].ofFour / 4;
  return row;
}

// Whether the rows follow one another without a gap.
template <class Layout, class T>
bool isTight(const Rows<T>* planes, std::size_t pixels) {
  for (const RunOfBytes& run : Layout::kRuns) {
    if (run.rows != 1 || run.uses != 1 ||
        planes[run.plane].step != static_cast<std::ptrdiff_t>(pixels * run.ofFour / 4))
      return false;
  }
  return true;
}

template <class Src, class Form, class Dst, class D, class SrcRow, class DstRow, class Access>
HWY_INLINE void convertAt(D d, const SrcRow& src, const DstRow& dst, std::size_t x, Access access) {
  const auto pixels = Src::load(d, at<Src>(src, x), access);
  Dst::store(d, Form::template apply<typename Src::Lane>(d, pixels), at<Dst>(dst, x), access);
}

#if HWY_TARGET <= HWY_AVX3
template <class Src, class Form, class Dst, class Access, class SrcRow, class DstRow>
HWY_INLINE void convertRow(const SrcRow& src, const DstRow& dst, std::size_t pixels) {
  const Tag<Byte> d;
  constexpr std::size_t kStep = 2 * kLanes<Byte>;
  std::size_t x = 0;
  for (; x + kStep <= pixels; x += kStep) convertAt<Src, Form, Dst>(d, src, dst, x, Access());
  if (x < pixels) convertAt<Src, Form, Dst>(d, src, dst, x, FirstPixels{pixels - x});
}
#else
// The last pixels overlap those before them: they are loaded first, as source and destination may be the same.
template <class Src, class Form, class Dst, class Access, class D, class SrcRow, class DstRow>
HWY_INLINE void convertSteps(D d, const SrcRow& src, const DstRow& dst, std::size_t pixels) {
  constexpr std::size_t kStep = 2 * MaxLanes(D());
  const bool overlaps = pixels % kStep != 0;
  const std::size_t last = pixels - kStep;
  const auto end = Src::load(d, at<Src>(src, overlaps ? last : 0), AllPixels());
  for (std::size_t x = 0; x <= last; x += kStep) convertAt<Src, Form, Dst>(d, src, dst, x, Access());
  if (!overlaps) return;
  Dst::store(d, Form::template apply<typename Src::Lane>(d, end), at<Dst>(dst, last), AllPixels());
}

using FewBytes = hn::CappedTag<Byte, 8>;
constexpr std::size_t kFewPixels = 2 * MaxLanes(FewBytes());

// Fewer pixels than even the shortest vectors take, through local rows.
template <class Src, class Form, class Dst, class SrcRow, class DstRow>
HWY_NOINLINE void convertFew(const SrcRow& src, const DstRow& dst, std::size_t pixels) {
  Byte in[kRunsOf<Src>][2 * kFewPixels] = {}, out[kRunsOf<Dst>][2 * kFewPixels];
  PlaneRow<const Byte, kRunsOf<Src>> localSrc;
  PlaneRow<Byte, kRunsOf<Dst>> localDst;
  for (std::size_t i = 0; i < src.size(); ++i) {
    localSrc[i] = in[i];
    std::memcpy(in[i], src[i], pixels * Src::kRuns[i].ofFour / 4);
  }
  for (std::size_t i = 0; i < dst.size(); ++i) localDst[i] = out[i];
  convertAt<Src, Form, Dst>(FewBytes(), localSrc, localDst, 0, AllPixels());
  for (std::size_t i = 0; i < dst.size(); ++i) std::memcpy(dst[i], out[i], pixels * Dst::kRuns[i].ofFour / 4);
}

template <class Src, class Form, class Dst, class Access, class SrcRow, class DstRow>
HWY_INLINE void convertRow(const SrcRow& src, const DstRow& dst, std::size_t pixels) {
  if (pixels >= 2 * kLanes<Byte>) {
    convertSteps<Src, Form, Dst, Access>(Tag<Byte>(), src, dst, pixels);
  } else if (pixels >= kFewPixels) {
    convertSteps<Src, Form, Dst, AllPixels>(FewBytes(), src, dst, pixels);
  } else {
    convertFew<Src, Form, Dst>(src, dst, pixels);
  }
}
#endif

// How much is converted: pixels of a row, rows or pairs of them.
struct Extent {
  std::size_t pixels;
  int rows;
  bool pastCache;
};

// Tight images are one long row.
template <class Src, class Dst>
HWY_INLINE void mergeTightRows(const Rows<const Byte>* src, const Rows<Byte>* dst, Extent& extent) {
  if (extent.rows > 1 && isTight<Src>(src, extent.pixels) && isTight<Dst>(dst, extent.pixels)) {
    extent.pixels *= static_cast<std::size_t>(extent.rows);
    extent.rows = 1;
  }
}

template <class Src, class Form, class Dst>
HWY_NOINLINE void convertRows(const Rows<const Byte>* src, const Rows<Byte>* dst, Extent extent) {
  mergeTightRows<Src, Dst>(src, dst, extent);
  if (extent.pastCache) {
    for (int r = 0; r < extent.rows; ++r) {
      convertRow<Src, Form, Dst, AllPastCache>(rowOf<Src>(src, r), rowOf<Dst>(dst, r), extent.pixels);
    }
  } else {
    for (int r = 0; r < extent.rows; ++r) {
      convertRow<Src, Form, Dst, AllPixels>(rowOf<Src>(src, r), rowOf<Dst>(dst, r), extent.pixels);
    }
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
