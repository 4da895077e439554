// The layouts: how a vector of pixels comes from and goes to memory. Every layout has
//
//   kPixels                  the pixels that one load or store takes
//   kKeeps                   whether a store leaves some bytes of its pixels as they are in memory
//   at(row, x)               a row handle, moved on to pixel x
//   load(row), store(v, row) kPixels pixels, at a row handle
//   pixel(row, x), setPixel(row, x, p)  one pixel, where single pixels are worked on
//   Local                    room for kPixels pixels, with row(), copyIn(row, n) and copyOut(row, n), for the end of a
//   row
//
// A row handle is a pointer, or an array of them for planes.
#if defined(ZUM_FRAME_LAYOUTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_FRAME_LAYOUTS_INL_H
#undef ZUM_FRAME_LAYOUTS_INL_H
#else
#define ZUM_FRAME_LAYOUTS_INL_H
#endif

#include "frame/pixel.h"
#include "frame/rows.h"
#include "frame/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Memory

// Pixels of `samples` interleaved samples, vectors of `pixels`.
template <class T, std::size_t samples, std::size_t pixels>
struct Interleaved {
  static constexpr std::size_t kPixels = pixels;
  static constexpr bool kKeeps = false;

  static const T* at(const T* row, std::size_t x) { return row + samples * x; }
  static T* at(T* row, std::size_t x) { return row + samples * x; }

  class Local {
   public:
    T* row() { return buffer_; }
    void copyIn(const T* from, std::size_t n) { zum::HWY_NAMESPACE::copyIn<kBytes>(buffer_, from, n * kPixelBytes); }
    void copyOut(T* to, std::size_t n) const { zum::HWY_NAMESPACE::copyOut<kBytes>(to, buffer_, n * kPixelBytes); }

   private:
    static constexpr std::size_t kPixelBytes = samples * sizeof(T);
    static constexpr std::size_t kBytes = (pixels * kPixelBytes + HWY_MAX_BYTES - 1) / HWY_MAX_BYTES * HWY_MAX_BYTES;
    alignas(HWY_MAX_BYTES) T buffer_[kBytes / sizeof(T)];
  };
};

// Samples in n planes, vectors of `pixels`.
template <class T, std::size_t n, std::size_t pixels>
struct Planar {
  static constexpr std::size_t kPixels = pixels;
  static constexpr bool kKeeps = false;

  template <class Sample>
  static PlaneRow<Sample, n> at(PlaneRow<Sample, n> row, std::size_t x) {
    for (auto& plane : row) plane += x;
    return row;
  }

  class Local {
   public:
    PlaneRow<T, n> row() {
      PlaneRow<T, n> result;
      for (std::size_t i = 0; i < n; ++i) result[i] = planes_[i].row();
      return result;
    }
    void copyIn(const PlaneRow<const T, n>& from, std::size_t count) {
      for (std::size_t i = 0; i < n; ++i) planes_[i].copyIn(from[i], count);
    }
    void copyOut(const PlaneRow<T, n>& to, std::size_t count) const {
      for (std::size_t i = 0; i < n; ++i) planes_[i].copyOut(to[i], count);
    }

   private:
    typename Interleaved<T, 1, pixels>::Local planes_[n];
  };
};

// ---- Three interleaved channels
//
// Three consecutive pieces of memory, of a length that leaves 1 or 2 when divided by 3, hold the samples of a channel
// in places that never coincide: two blends bring them into one vector, and one shuffle into order. A piece is a
// 128-bit block, and the pieces of all blocks are worked on side by side; with VBMI it is a whole vector.

#if HWY_TARGET <= HWY_AVX3_DL
constexpr std::size_t kPieceBytes = 64;
#else
constexpr std::size_t kPieceBytes = 16;
#endif

template <class T>
struct Weave3 {
  static constexpr std::size_t kSize = sizeof(T);
  static constexpr std::size_t kSamples = kPieceBytes / kSize;

  struct Bytes {
    alignas(kPieceBytes) std::uint8_t at[kPieceBytes];
  };

  // Which channel the sample at place i of piece p belongs to, and which pixel.
  static constexpr std::size_t channelAt(std::size_t p, std::size_t i) { return (p * kSamples + i) % 3; }

  // The places of piece p that hold a channel, as a byte mask.
  static constexpr Bytes placesOf(std::size_t channel, std::size_t p) {
    Bytes mask{};
    for (std::size_t b = 0; b < kPieceBytes; ++b) mask.at[b] = channelAt(p, b / kSize) == channel ? 0xFF : 0;
    return mask;
  }
  // For each pixel, the place of its sample of a channel.
  static constexpr Bytes gather(std::size_t channel) {
    Bytes index{};
    for (std::size_t b = 0; b < kPieceBytes; ++b) {
      index.at[b] = static_cast<std::uint8_t>((3 * (b / kSize) + channel) % kSamples * kSize + b % kSize);
    }
    return index;
  }
  // For each place that holds a channel in some piece, the pixel of the sample.
  static constexpr Bytes scatter(std::size_t channel) {
    Bytes index{};
    for (std::size_t b = 0; b < kPieceBytes; ++b) {
      for (std::size_t p = 0; p < 3; ++p) {
        if (channelAt(p, b / kSize) == channel) {
          index.at[b] = static_cast<std::uint8_t>((p * kSamples + b / kSize) / 3 * kSize + b % kSize);
        }
      }
    }
    return index;
  }
};

// Bytes of a piece moved to the places that a table of the piece's length tells.
template <class Table>
HWY_INLINE VU8 shuffle(VU8 v, const Table& table) {
#if HWY_TARGET <= HWY_AVX3_DL
  return VU8{_mm512_permutexvar_epi8(_mm512_load_si512(table.at), v.raw)};
#else
  return hn::TableLookupBytes(v, hn::LoadDup128(Tag<std::uint8_t>(), table.at));
#endif
}

// v0, v1 or v2, whichever of the masks is set.
template <class Table>
HWY_INLINE VU8 select(VU8 v0, VU8 v1, VU8 v2, const Table& mask1, const Table& mask2) {
  const Tag<std::uint8_t> d;
#if HWY_TARGET <= HWY_AVX3_DL
  const auto is1 = hn::MaskFromVec(hn::Load(d, mask1.at)), is2 = hn::MaskFromVec(hn::Load(d, mask2.at));
#else
  const auto is1 = hn::MaskFromVec(hn::LoadDup128(d, mask1.at)), is2 = hn::MaskFromVec(hn::LoadDup128(d, mask2.at));
#endif
  return hn::IfThenElse(is2, v2, hn::IfThenElse(is1, v1, v0));
}

// Three vectors of consecutive pieces: piece p of block b is block b of vector p.
HWY_INLINE void loadPieces(const std::uint8_t* p, VU8& v0, VU8& v1, VU8& v2) {
#if HWY_TARGET == HWY_AVX2
  const Tag<std::uint8_t> d;
  const hn::Half<Tag<std::uint8_t>> half;
  v0 = hn::Combine(d, hn::LoadU(half, p + 48), hn::LoadU(half, p));
  v1 = hn::Combine(d, hn::LoadU(half, p + 64), hn::LoadU(half, p + 16));
  v2 = hn::Combine(d, hn::LoadU(half, p + 80), hn::LoadU(half, p + 32));
#else
  v0 = loadWhole(p);
  v1 = loadWhole(p + kPieceBytes);
  v2 = loadWhole(p + 2 * kPieceBytes);
#endif
}

HWY_INLINE void storePieces(VU8 v0, VU8 v1, VU8 v2, std::uint8_t* p) {
  const Tag<std::uint8_t> d;
#if HWY_TARGET == HWY_AVX2
  hn::StoreU(hn::ConcatLowerLower(d, v1, v0), d, p);
  hn::StoreU(hn::ConcatUpperLower(d, v0, v2), d, p + 32);
  hn::StoreU(hn::ConcatUpperUpper(d, v2, v1), d, p + 64);
#else
  hn::StoreU(v0, d, p);
  hn::StoreU(v1, d, p + kPieceBytes);
  hn::StoreU(v2, d, p + 2 * kPieceBytes);
#endif
}

template <class T>
struct Packed3 : Interleaved<T, 3, kLanes<T>> {
  static HWY_INLINE Channels<Vec<T>> load(const T* row) {
    VU8 v0, v1, v2;
    loadPieces(reinterpret_cast<const std::uint8_t*>(row), v0, v1, v2);
    return {channel<0>(v0, v1, v2), channel<1>(v0, v1, v2), channel<2>(v0, v1, v2)};
  }

  static HWY_INLINE void store(const Channels<Vec<T>>& v, T* row) {
    const VU8 x0 = spread<0>(v.c0), x1 = spread<1>(v.c1), x2 = spread<2>(v.c2);
    storePieces(piece<0>(x0, x1, x2), piece<1>(x0, x1, x2), piece<2>(x0, x1, x2), reinterpret_cast<std::uint8_t*>(row));
  }

  static Pixel pixel(const T* row, std::size_t x) { return {row[3 * x], row[3 * x + 1], row[3 * x + 2]}; }
  static void setPixel(T* row, std::size_t x, const Pixel& p) {
    row[3 * x] = static_cast<T>(p.c0);
    row[3 * x + 1] = static_cast<T>(p.c1);
    row[3 * x + 2] = static_cast<T>(p.c2);
  }

 private:
  using Weave = Weave3<T>;

  template <std::size_t c>
  static HWY_INLINE Vec<T> channel(VU8 v0, VU8 v1, VU8 v2) {
    static constexpr typename Weave::Bytes kIn1 = Weave::placesOf(c, 1), kIn2 = Weave::placesOf(c, 2),
                                           kGather = Weave::gather(c);
    return hn::BitCast(Tag<T>(), shuffle(select(v0, v1, v2, kIn1, kIn2), kGather));
  }

  template <std::size_t c>
  static HWY_INLINE VU8 spread(Vec<T> v) {
    static constexpr typename Weave::Bytes kScatter = Weave::scatter(c);
    return shuffle(hn::BitCast(Tag<std::uint8_t>(), v), kScatter);
  }

  template <std::size_t p>
  static HWY_INLINE VU8 piece(VU8 x0, VU8 x1, VU8 x2) {
    static constexpr typename Weave::Bytes kOf1 = Weave::placesOf(1, p), kOf2 = Weave::placesOf(2, p);
    return select(x0, x1, x2, kOf1, kOf2);
  }
};

// ---- Three planes

template <class T>
struct Planes3 : Planar<T, 3, kLanes<T>> {
  template <class Sample>
  static HWY_INLINE Channels<Vec<T>> load(const PlaneRow<Sample, 3>& row) {
    const Tag<T> d;
    return {hn::LoadU(d, row[0]), hn::LoadU(d, row[1]), hn::LoadU(d, row[2])};
  }

  static HWY_INLINE void store(const Channels<Vec<T>>& v, const PlaneRow<T, 3>& row) {
    const Tag<T> d;
    hn::StoreU(v.c0, d, row[0]);
    hn::StoreU(v.c1, d, row[1]);
    hn::StoreU(v.c2, d, row[2]);
  }

  static Pixel pixel(const PlaneRow<const T, 3>& row, std::size_t x) { return {row[0][x], row[1][x], row[2][x]}; }
  static void setPixel(const PlaneRow<T, 3>& row, std::size_t x, const Pixel& p) {
    row[0][x] = static_cast<T>(p.c0);
    row[1][x] = static_cast<T>(p.c1);
    row[2][x] = static_cast<T>(p.c2);
  }
};

// ---- Shared chroma, 8-bit
//
// Chroma stands in 16-bit lanes, lane i for the pixels 2 i and 2 i + 1.

struct Luma422 {
  VU8 y;
  VI16 cb, cr;
};

struct Luma420 {
  VU8 upper, lower;
  VI16 cb, cr;
};

enum class ChromaOrder { CbCr, CrCb };

// Packed 4:2:2: Y0 Cb Y1 Cr, or with the chroma bytes exchanged.
template <ChromaOrder order>
struct Packed422 : Interleaved<std::uint8_t, 2, kLanes<std::uint8_t>> {
  static HWY_INLINE Luma422 load(const std::uint8_t* row) {
    const Tag<std::uint8_t> d;
    const VU8 v0 = loadWhole(row), v1 = loadWhole(row + kLanes<std::uint8_t>);
    const Halves<VI16> chroma = splitPairs(hn::ConcatOdd(d, v1, v0));
    const VU8 y = hn::ConcatEven(d, v1, v0);
    if constexpr (order == ChromaOrder::CbCr) {
      return {y, chroma.a, chroma.b};
    } else {
      return {y, chroma.b, chroma.a};
    }
  }

  static HWY_INLINE void store(const Luma422& v, std::uint8_t* row) {
    const VU8 chroma = order == ChromaOrder::CbCr ? joinPairs(v.cb, v.cr) : joinPairs(v.cr, v.cb);
    hn::StoreInterleaved2(v.y, chroma, Tag<std::uint8_t>(), row);
  }
};

// Half a vector of chroma bytes.
HWY_INLINE VI16 loadChroma(const std::uint8_t* p) {
  return hn::PromoteTo(Tag<std::int16_t>(), hn::LoadU(hn::Half<Tag<std::uint8_t>>(), p));
}
HWY_INLINE void storeChroma(VI16 v, std::uint8_t* p) {
  const hn::Half<Tag<std::uint8_t>> half;
  hn::StoreU(hn::DemoteTo(half, v), half, p);
}

// The ends of a luma row and of the chroma rows of half its width.
class LocalChroma {
 public:
  std::uint8_t* cb() { return cb_.row(); }
  std::uint8_t* cr() { return cr_.row(); }
  void copyIn(const std::uint8_t* cb, const std::uint8_t* cr, std::size_t pixels) {
    cb_.copyIn(cb, pixels / 2);
    cr_.copyIn(cr, pixels / 2);
  }
  void copyOut(std::uint8_t* cb, std::uint8_t* cr, std::size_t pixels) const {
    cb_.copyOut(cb, pixels / 2);
    cr_.copyOut(cr, pixels / 2);
  }

 private:
  Interleaved<std::uint8_t, 1, kLanes<std::uint8_t> / 2>::Local cb_, cr_;
};
using LocalLuma = Interleaved<std::uint8_t, 1, kLanes<std::uint8_t>>::Local;

// Planes of 4:2:2, as a source. Works on whole pairs.
struct Planes422 {
  static constexpr std::size_t kPixels = kLanes<std::uint8_t>;
  using Row = PlaneRow<const std::uint8_t, 3>;

  static Row at(const Row& row, std::size_t x) { return {row[0] + x, row[1] + x / 2, row[2] + x / 2}; }

  static HWY_INLINE Luma422 load(const Row& row) {
    return {hn::LoadU(Tag<std::uint8_t>(), row[0]), loadChroma(row[1]), loadChroma(row[2])};
  }

  class Local {
   public:
    Row row() { return {luma_.row(), chroma_.cb(), chroma_.cr()}; }
    void copyIn(const Row& from, std::size_t n) {
      luma_.copyIn(from[0], n);
      chroma_.copyIn(from[1], from[2], n);
    }

   private:
    LocalLuma luma_;
    LocalChroma chroma_;
  };
};

// Planes of 4:2:0, two luma rows at a time. Works on whole pairs.
struct Planes420 {
  static constexpr std::size_t kPixels = kLanes<std::uint8_t>;
  static constexpr bool kKeeps = false;

  template <class Sample>
  static RowPair420<Sample> at(const RowPair420<Sample>& rows, std::size_t x) {
    return {{rows.luma.upper + x, rows.luma.lower + x}, rows.cb + x / 2, rows.cr + x / 2};
  }

  template <class Sample>
  static HWY_INLINE Luma420 load(const RowPair420<Sample>& rows) {
    const Tag<std::uint8_t> d;
    return {hn::LoadU(d, rows.luma.upper), hn::LoadU(d, rows.luma.lower), loadChroma(rows.cb), loadChroma(rows.cr)};
  }

  static HWY_INLINE void store(const Luma420& v, const RowPair420<std::uint8_t>& rows) {
    const Tag<std::uint8_t> d;
    hn::StoreU(v.upper, d, rows.luma.upper);
    hn::StoreU(v.lower, d, rows.luma.lower);
    storeChroma(v.cb, rows.cb);
    storeChroma(v.cr, rows.cr);
  }

  class Local {
   public:
    RowPair420<std::uint8_t> row() { return {{upper_.row(), lower_.row()}, chroma_.cb(), chroma_.cr()}; }
    void copyIn(const RowPair420<const std::uint8_t>& from, std::size_t n) {
      upper_.copyIn(from.luma.upper, n);
      lower_.copyIn(from.luma.lower, n);
      chroma_.copyIn(from.cb, from.cr, n);
    }
    void copyOut(const RowPair420<std::uint8_t>& to, std::size_t n) const {
      upper_.copyOut(to.luma.upper, n);
      lower_.copyOut(to.luma.lower, n);
      chroma_.copyOut(to.cb, to.cr, n);
    }

   private:
    LocalLuma upper_, lower_;
    LocalChroma chroma_;
  };
};

// Two rows of another layout.
template <class V>
struct TwoRows {
  V upper, lower;
};

template <class Layout>
struct RowPairOf {
  static constexpr std::size_t kPixels = Layout::kPixels;
  static constexpr bool kKeeps = Layout::kKeeps;

  template <class Sample>
  static RowPair<Sample> at(const RowPair<Sample>& rows, std::size_t x) {
    return {Layout::at(rows.upper, x), Layout::at(rows.lower, x)};
  }

  template <class Sample>
  static HWY_INLINE auto load(const RowPair<Sample>& rows) {
    return TwoRows<decltype(Layout::load(rows.upper))>{Layout::load(rows.upper), Layout::load(rows.lower)};
  }

  template <class V, class Sample>
  static HWY_INLINE void store(const TwoRows<V>& v, const RowPair<Sample>& rows) {
    Layout::store(v.upper, rows.upper);
    Layout::store(v.lower, rows.lower);
  }

  class Local {
   public:
    auto row() { return RowPair<std::remove_pointer_t<decltype(upper_.row())>>{upper_.row(), lower_.row()}; }
    template <class Sample>
    void copyIn(const RowPair<Sample>& from, std::size_t n) {
      upper_.copyIn(from.upper, n);
      lower_.copyIn(from.lower, n);
    }
    template <class Sample>
    void copyOut(const RowPair<Sample>& to, std::size_t n) const {
      upper_.copyOut(to.upper, n);
      lower_.copyOut(to.lower, n);
    }

   private:
    typename Layout::Local upper_, lower_;
  };
};

// ---- Bytes, a pixel in each 32-bit lane

// Three channels and alpha. What is stored has nothing in the place of alpha, which stays as it is in memory.
struct PackedA4 : Interleaved<std::uint8_t, 4, kLanes<std::uint32_t>> {
  static constexpr bool kKeeps = true;
  static constexpr std::uint32_t kAlpha = 0xFF000000;

  static HWY_INLINE VU32 load(const std::uint8_t* row) {
    return hn::BitCast(Tag<std::uint32_t>(), hn::LoadU(Tag<std::uint8_t>(), row));
  }

  static HWY_INLINE void store(VU32 v, std::uint8_t* row) {
    const VU32 merged = hn::Or(v, hn::And(load(row), all(kAlpha)));
    hn::StoreU(hn::BitCast(Tag<std::uint8_t>(), merged), Tag<std::uint8_t>(), row);
  }
};

// ---- Three of four interleaved channels
//
// Four vectors of pixels become a vector of each channel. A block of bytes holds four pixels, one of 16-bit samples
// two: grouped by channel, either is four 32-bit lanes, a channel each, which transpose with those of the other
// vectors. The pixels of a block of the result come from the same block of the four vectors.

// The fourth channel is not loaded, and stays as it is in memory.
template <class T>
struct ThreeOf4 : Interleaved<T, 4, kLanes<T>> {
  static constexpr bool kKeeps = true;

  static HWY_INLINE Channels<Vec<T>> load(const T* row) {
    const VU32 v0 = group(row), v1 = group(row + kStride), v2 = group(row + 2 * kStride), v3 = group(row + 3 * kStride);
    const Tag<std::uint32_t> d;
    const VU64 lower01 = wide(hn::InterleaveLower(d, v0, v1)), upper01 = wide(hn::InterleaveUpper(d, v0, v1)),
               lower23 = wide(hn::InterleaveLower(d, v2, v3)), upper23 = wide(hn::InterleaveUpper(d, v2, v3));
    const Tag<std::uint64_t> d64;
    const Tag<T> to;
    return {hn::BitCast(to, hn::InterleaveLower(d64, lower01, lower23)),
            hn::BitCast(to, hn::InterleaveUpper(d64, lower01, lower23)),
            hn::BitCast(to, hn::InterleaveLower(d64, upper01, upper23))};
  }

  static HWY_INLINE void store(const Channels<Vec<T>>& v, T* row) {
    const Tag<std::uint32_t> d;
    const VU32 c0 = hn::BitCast(d, v.c0), c1 = hn::BitCast(d, v.c1), c2 = hn::BitCast(d, v.c2);
    const VU32 none = hn::Zero(d);
    const VU64 lower01 = wide(hn::InterleaveLower(d, c0, c1)), upper01 = wide(hn::InterleaveUpper(d, c0, c1)),
               lower2 = wide(hn::InterleaveLower(d, c2, none)), upper2 = wide(hn::InterleaveUpper(d, c2, none));
    const Tag<std::uint64_t> d64;
    merge(hn::InterleaveLower(d64, lower01, lower2), row);
    merge(hn::InterleaveUpper(d64, lower01, lower2), row + kStride);
    merge(hn::InterleaveLower(d64, upper01, upper2), row + 2 * kStride);
    merge(hn::InterleaveUpper(d64, upper01, upper2), row + 3 * kStride);
  }

 private:
  using VU64 = Vec<std::uint64_t>;
  static constexpr std::size_t kStride = kLanes<T>;
  static constexpr std::uint64_t kFourth = sizeof(T) == 1 ? 0xFF000000FF000000 : 0xFFFF000000000000;

  struct Bytes {
    alignas(16) std::uint8_t at[16];
  };
  static constexpr std::size_t kBlockPixels = 4 / sizeof(T);

  // From pixels to lanes of a channel, or back.
  static constexpr Bytes grouping(bool back) {
    Bytes index{};
    for (std::size_t c = 0; c < 4; ++c) {
      for (std::size_t pixel = 0; pixel < kBlockPixels; ++pixel) {
        for (std::size_t b = 0; b < sizeof(T); ++b) {
          const std::size_t inPixels = (4 * pixel + c) * sizeof(T) + b,
                            inLanes = (kBlockPixels * c + pixel) * sizeof(T) + b;
          index.at[back ? inPixels : inLanes] = static_cast<std::uint8_t>(back ? inLanes : inPixels);
        }
      }
    }
    return index;
  }

  static HWY_INLINE VU64 wide(VU32 v) { return hn::BitCast(Tag<std::uint64_t>(), v); }

  static HWY_INLINE VU32 group(const T* row) {
    static constexpr Bytes kGroup = grouping(false);
    const Tag<std::uint8_t> d;
    const VU8 pixels = hn::LoadU(d, reinterpret_cast<const std::uint8_t*>(row));
    return hn::BitCast(Tag<std::uint32_t>(), hn::TableLookupBytes(pixels, hn::LoadDup128(d, kGroup.at)));
  }

  static HWY_INLINE void merge(VU64 v, T* row) {
    static constexpr Bytes kUngroup = grouping(true);
    const Tag<std::uint8_t> d;
    std::uint8_t* const bytes = reinterpret_cast<std::uint8_t*>(row);
    const VU8 pixels = hn::TableLookupBytes(hn::BitCast(d, v), hn::LoadDup128(d, kUngroup.at));
    const VU8 fourth = hn::BitCast(d, all(kFourth));
    hn::StoreU(hn::Or(pixels, hn::And(hn::LoadU(d, bytes), fourth)), d, bytes);
  }
};

// ---- Columns of a row

// Converts columns begin to end by one form: whole vectors from and to memory, the remainder through a local copy.
template <class Src, class Form, class Dst, class SrcRow, class DstRow>
HWY_INLINE void columns(const SrcRow& src, const DstRow& dst, std::size_t begin, std::size_t end) {
  static_assert(Src::kPixels == Dst::kPixels, "source and destination go in step");
  std::size_t x = begin;
  for (; x + Src::kPixels <= end; x += Src::kPixels)
    Dst::store(Form::apply(Src::load(Src::at(src, x))), Dst::at(dst, x));
  if (x < end) {
    typename Src::Local in;
    typename Dst::Local out;
    in.copyIn(Src::at(src, x), end - x);
    if constexpr (Dst::kKeeps) out.copyIn(Dst::at(dst, x), end - x);
    Dst::store(Form::apply(Src::load(in.row())), out.row());
    out.copyOut(Dst::at(dst, x), end - x);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
