// The layouts: how a vector of pixels comes from and goes to memory. Every layout has
//
//   kPixels                  the pixels that one load or store takes
//   kWoven                   whether a load takes interleaved channels apart
//   kKeeps                   whether a store leaves some bytes of its pixels as they are in memory
//   at(row, x)               a row handle, moved on to pixel x
//   load(row, access), store(v, row, access)
//                            kPixels pixels, or the first of them, at a row handle
//   pixel(row, x), setPixel(row, x, p)
//                            one pixel, where single pixels are worked on
//   Local                    room for kPixels pixels, with row(), copyIn(row, n) and copyOut(row, n), for the end of a
//                            row where the instruction set does not take the first of a vector's pixels alone
//
// A row handle is a pointer, or an array of them for planes.
#if defined(ZUM_FRAME_LAYOUTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_FRAME_LAYOUTS_INL_H
#undef ZUM_FRAME_LAYOUTS_INL_H
#else
#define ZUM_FRAME_LAYOUTS_INL_H
#endif

#include <algorithm>

#include "frame/pixel.h"
#include "frame/rows.h"
#include "frame/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Memory

// Access to whole vectors. Every load is an instruction of its own: left to itself the compiler merges loads into
// masked blends, and masked loads that miss the cache are several times slower than plain ones.
struct Whole {
  Whole samples(std::size_t) const { return {}; }
  Whole half() const { return {}; }

  template <class D>
  static HWY_INLINE hn::Vec<D> load(D d, const hn::TFromD<D>* p) {
    hn::Vec<D> v = hn::LoadU(d, p);
#if HWY_TARGET <= HWY_AVX3
    asm("" : "+v"(v.raw));
#endif
    return v;
  }
  template <class D>
  static HWY_INLINE hn::Vec<D> load(D d, const hn::TFromD<D>* p, std::size_t i) {
    return load(d, p + i);
  }
  template <class D>
  static HWY_INLINE void store(hn::Vec<D> v, D d, hn::TFromD<D>* p, std::size_t i = 0) {
    hn::StoreU(v, d, p + i);
  }
};

#if HWY_TARGET <= HWY_AVX3
// Access to the first n pixels, or samples, of a load or a store. Vector i of them starts i samples behind p.
struct First {
  std::size_t n;

  First samples(std::size_t ofPixel) const { return {n * ofPixel}; }
  First half() const { return {(n + 1) / 2}; }

  template <class D>
  HWY_INLINE hn::Vec<D> load(D d, const hn::TFromD<D>* p, std::size_t i = 0) const {
    return hn::MaskedLoad(mask(d, i), d, p + i);
  }
  template <class D>
  HWY_INLINE void store(hn::Vec<D> v, D d, hn::TFromD<D>* p, std::size_t i = 0) const {
    hn::BlendedStore(v, mask(d, i), d, p + i);
  }

 private:
  template <class D>
  HWY_INLINE hn::Mask<D> mask(D d, std::size_t i) const {
    return hn::FirstN(d, n > i ? n - i : 0);
  }
};
#endif

// Pixels of `samples` interleaved samples, vectors of `pixels`.
template <class T, std::size_t samples, std::size_t pixels>
struct Interleaved {
  static constexpr std::size_t kPixels = pixels;
  static constexpr bool kWoven = false;
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
  static constexpr bool kWoven = false;
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

// Three vectors of consecutive pieces: piece p of block b is block b of vector p. The access is in bytes.
template <class Access>
HWY_INLINE void loadPieces(const std::uint8_t* p, Access access, VU8& v0, VU8& v1, VU8& v2) {
#if HWY_TARGET == HWY_AVX2
  const Tag<std::uint8_t> d;
  const hn::Half<Tag<std::uint8_t>> half;
  v0 = hn::Combine(d, access.load(half, p, 48), access.load(half, p));
  v1 = hn::Combine(d, access.load(half, p, 64), access.load(half, p, 16));
  v2 = hn::Combine(d, access.load(half, p, 80), access.load(half, p, 32));
#else
  const Tag<std::uint8_t> d;
  v0 = access.load(d, p);
  v1 = access.load(d, p, kPieceBytes);
  v2 = access.load(d, p, 2 * kPieceBytes);
#endif
}

template <class Access>
HWY_INLINE void storePieces(VU8 v0, VU8 v1, VU8 v2, std::uint8_t* p, Access access) {
  const Tag<std::uint8_t> d;
#if HWY_TARGET == HWY_AVX2
  access.store(hn::ConcatLowerLower(d, v1, v0), d, p);
  access.store(hn::ConcatUpperLower(d, v0, v2), d, p, 32);
  access.store(hn::ConcatUpperUpper(d, v2, v1), d, p, 64);
#else
  access.store(v0, d, p);
  access.store(v1, d, p, kPieceBytes);
  access.store(v2, d, p, 2 * kPieceBytes);
#endif
}

template <class T>
struct Packed3 : Interleaved<T, 3, kLanes<T>> {
  static constexpr bool kWoven = true;

  template <class Access = Whole>
  static HWY_INLINE Channels<Vec<T>> load(const T* row, Access access = {}) {
    VU8 v0, v1, v2;
    loadPieces(reinterpret_cast<const std::uint8_t*>(row), access.samples(3 * sizeof(T)), v0, v1, v2);
    return {channel<0>(v0, v1, v2), channel<1>(v0, v1, v2), channel<2>(v0, v1, v2)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<Vec<T>>& v, T* row, Access access = {}) {
    const VU8 x0 = spread<0>(v.c0), x1 = spread<1>(v.c1), x2 = spread<2>(v.c2);
    storePieces(piece<0>(x0, x1, x2), piece<1>(x0, x1, x2), piece<2>(x0, x1, x2), reinterpret_cast<std::uint8_t*>(row),
                access.samples(3 * sizeof(T)));
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
  template <class Sample, class Access = Whole>
  static HWY_INLINE Channels<Vec<T>> load(const PlaneRow<Sample, 3>& row, Access access = {}) {
    const Tag<T> d;
    return {access.load(d, row[0]), access.load(d, row[1]), access.load(d, row[2])};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<Vec<T>>& v, const PlaneRow<T, 3>& row, Access access = {}) {
    const Tag<T> d;
    access.store(v.c0, d, row[0]);
    access.store(v.c1, d, row[1]);
    access.store(v.c2, d, row[2]);
  }

  static Pixel pixel(const PlaneRow<const T, 3>& row, std::size_t x) { return {row[0][x], row[1][x], row[2][x]}; }
  static void setPixel(const PlaneRow<T, 3>& row, std::size_t x, const Pixel& p) {
    row[0][x] = static_cast<T>(p.c0);
    row[1][x] = static_cast<T>(p.c1);
    row[2][x] = static_cast<T>(p.c2);
  }
};

// ---- One plane

template <class T>
struct Plane1 : Interleaved<T, 1, kLanes<T>> {
  template <class Access = Whole>
  static HWY_INLINE Vec<T> load(const T* row, Access access = {}) {
    return access.load(Tag<T>(), row);
  }

  template <class Access = Whole>
  static HWY_INLINE void store(Vec<T> v, T* row, Access access = {}) {
    access.store(v, Tag<T>(), row);
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

// Which of luma and chroma is at the even places.
enum class FirstByte { kLuma, kChroma };

// Packed 4:2:2: Y0 Cb Y1 Cr, or with the chroma bytes exchanged, or with chroma before luma.
template <ChromaOrder order, FirstByte first = FirstByte::kLuma>
struct Packed422 : Interleaved<std::uint8_t, 2, kLanes<std::uint8_t>> {
  static constexpr bool kWoven = true;

  template <class Access = Whole>
  static HWY_INLINE Luma422 load(const std::uint8_t* row, Access access = {}) {
    const Tag<std::uint8_t> d;
    const VU8 v0 = access.samples(2).load(d, row), v1 = access.samples(2).load(d, row, kLanes<std::uint8_t>);
    const VU8 even = hn::ConcatEven(d, v1, v0), odd = hn::ConcatOdd(d, v1, v0);
    const VU8 y = first == FirstByte::kLuma ? even : odd;
    const Halves<VI16> chroma = splitPairs(first == FirstByte::kLuma ? odd : even);
    if constexpr (order == ChromaOrder::CbCr) {
      return {y, chroma.a, chroma.b};
    } else {
      return {y, chroma.b, chroma.a};
    }
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Luma422& v, std::uint8_t* row, Access access = {}) {
    const VU8 chroma = order == ChromaOrder::CbCr ? joinPairs(v.cb, v.cr) : joinPairs(v.cr, v.cb);
    const Halves<VU8> both = first == FirstByte::kLuma ? zip(v.y, chroma) : zip(chroma, v.y);
    const Tag<std::uint8_t> d;
    access.samples(2).store(both.a, d, row);
    access.samples(2).store(both.b, d, row, kLanes<std::uint8_t>);
  }
};

// Half a vector of chroma bytes. The access is in pixels of luma.
template <class Access>
HWY_INLINE VI16 loadChroma(const std::uint8_t* p, Access access) {
  return hn::PromoteTo(Tag<std::int16_t>(), access.half().load(hn::Half<Tag<std::uint8_t>>(), p));
}
template <class Access>
HWY_INLINE void storeChroma(VI16 v, std::uint8_t* p, Access access) {
  const hn::Half<Tag<std::uint8_t>> half;
  access.half().store(hn::DemoteTo(half, v), half, p);
}

// The ends of a luma row and of the chroma rows of half its width.
class LocalChroma {
 public:
  std::uint8_t* cb() { return cb_.row(); }
  std::uint8_t* cr() { return cr_.row(); }
  void copyIn(const std::uint8_t* cb, const std::uint8_t* cr, std::size_t pixels) {
    cb_.copyIn(cb, (pixels + 1) / 2);
    cr_.copyIn(cr, (pixels + 1) / 2);
  }
  void copyOut(std::uint8_t* cb, std::uint8_t* cr, std::size_t pixels) const {
    cb_.copyOut(cb, (pixels + 1) / 2);
    cr_.copyOut(cr, (pixels + 1) / 2);
  }

 private:
  Interleaved<std::uint8_t, 1, kLanes<std::uint8_t> / 2>::Local cb_, cr_;
};
using LocalLuma = Interleaved<std::uint8_t, 1, kLanes<std::uint8_t>>::Local;

// Planes of 4:2:2, with a chroma sample of its own for a last odd pixel. What is stored is saturated.
struct Planes422 {
  static constexpr std::size_t kPixels = kLanes<std::uint8_t>;
  static constexpr bool kWoven = false;
  static constexpr bool kKeeps = false;

  template <class Sample>
  static PlaneRow<Sample, 3> at(const PlaneRow<Sample, 3>& row, std::size_t x) {
    return {row[0] + x, row[1] + x / 2, row[2] + x / 2};
  }

  template <class Sample, class Access = Whole>
  static HWY_INLINE Luma422 load(const PlaneRow<Sample, 3>& row, Access access = {}) {
    return {access.load(Tag<std::uint8_t>(), row[0]), loadChroma(row[1], access), loadChroma(row[2], access)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Luma422& v, const PlaneRow<std::uint8_t, 3>& row, Access access = {}) {
    access.store(v.y, Tag<std::uint8_t>(), row[0]);
    storeChroma(v.cb, row[1], access);
    storeChroma(v.cr, row[2], access);
  }

  class Local {
   public:
    PlaneRow<std::uint8_t, 3> row() { return {luma_.row(), chroma_.cb(), chroma_.cr()}; }
    void copyIn(const PlaneRow<const std::uint8_t, 3>& from, std::size_t n) {
      luma_.copyIn(from[0], n);
      chroma_.copyIn(from[1], from[2], n);
    }
    void copyOut(const PlaneRow<std::uint8_t, 3>& to, std::size_t n) const {
      luma_.copyOut(to[0], n);
      chroma_.copyOut(to[1], to[2], n);
    }

   private:
    LocalLuma luma_;
    LocalChroma chroma_;
  };
};

// Planes of 4:2:0, two luma rows at a time, with a chroma sample of its own for a last odd pixel.
struct Planes420 {
  static constexpr std::size_t kPixels = kLanes<std::uint8_t>;
  static constexpr bool kWoven = false;
  static constexpr bool kKeeps = false;

  template <class Sample>
  static RowPair420<Sample> at(const RowPair420<Sample>& rows, std::size_t x) {
    return {{rows.luma.upper + x, rows.luma.lower + x}, rows.cb + x / 2, rows.cr + x / 2};
  }

  template <class Sample, class Access = Whole>
  static HWY_INLINE Luma420 load(const RowPair420<Sample>& rows, Access access = {}) {
    const Tag<std::uint8_t> d;
    return {access.load(d, rows.luma.upper), access.load(d, rows.luma.lower), loadChroma(rows.cb, access),
            loadChroma(rows.cr, access)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Luma420& v, const RowPair420<std::uint8_t>& rows, Access access = {}) {
    const Tag<std::uint8_t> d;
    access.store(v.upper, d, rows.luma.upper);
    access.store(v.lower, d, rows.luma.lower);
    storeChroma(v.cb, rows.cb, access);
    storeChroma(v.cr, rows.cr, access);
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
  static constexpr bool kWoven = Layout::kWoven;
  static constexpr bool kKeeps = Layout::kKeeps;

  template <class Row>
  static PairOfRows<Row> at(const PairOfRows<Row>& rows, std::size_t x) {
    return {Layout::at(rows.upper, x), Layout::at(rows.lower, x)};
  }

  template <class Row, class Access = Whole>
  static HWY_INLINE auto load(const PairOfRows<Row>& rows, Access access = {}) {
    return TwoRows<decltype(Layout::load(rows.upper))>{Layout::load(rows.upper, access),
                                                       Layout::load(rows.lower, access)};
  }

  template <class V, class Row, class Access = Whole>
  static HWY_INLINE void store(const TwoRows<V>& v, const PairOfRows<Row>& rows, Access access = {}) {
    Layout::store(v.upper, rows.upper, access);
    Layout::store(v.lower, rows.lower, access);
  }

  class Local {
   public:
    auto row() { return PairOfRows<decltype(upper_.row())>{upper_.row(), lower_.row()}; }
    template <class Row>
    void copyIn(const PairOfRows<Row>& from, std::size_t n) {
      upper_.copyIn(from.upper, n);
      lower_.copyIn(from.lower, n);
    }
    template <class Row>
    void copyOut(const PairOfRows<Row>& to, std::size_t n) const {
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

  template <class Access = Whole>
  static HWY_INLINE VU32 load(const std::uint8_t* row, Access access = {}) {
    return hn::BitCast(Tag<std::uint32_t>(), access.samples(4).load(Tag<std::uint8_t>(), row));
  }

  template <class Access = Whole>
  static HWY_INLINE void store(VU32 v, std::uint8_t* row, Access access = {}) {
    const VU32 merged = hn::Or(v, hn::And(load(row, access), all(kAlpha)));
    access.samples(4).store(hn::BitCast(Tag<std::uint8_t>(), merged), Tag<std::uint8_t>(), row);
  }
};

// ---- Three of four interleaved channels
//
// Four vectors of pixels become a vector of each channel. A block of bytes holds four pixels, one of 16-bit samples
// two, one of floats one: grouped by channel, each is four 32-bit lanes, a channel each, which transpose with those of
// the other vectors. The pixels of a block of the result come from the same block of the four vectors.

// The fourth channel is not loaded, and stays as it is in memory.
template <class T>
struct ThreeOf4 : Interleaved<T, 4, kLanes<T>> {
  static constexpr bool kWoven = true;
  static constexpr bool kKeeps = true;

  template <class Access = Whole>
  static HWY_INLINE Channels<Vec<T>> load(const T* row, Access access = {}) {
    const VU32 v0 = group(row, 0, access), v1 = group(row, 1, access), v2 = group(row, 2, access),
               v3 = group(row, 3, access);
    const auto channels = interleaved4(v0, v1, v2, v3);
    const Tag<T> to;
    return {hn::BitCast(to, channels[0]), hn::BitCast(to, channels[1]), hn::BitCast(to, channels[2])};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<Vec<T>>& v, T* row, Access access = {}) {
    const Tag<std::uint32_t> d;
    const VU32 c0 = hn::BitCast(d, v.c0), c1 = hn::BitCast(d, v.c1), c2 = hn::BitCast(d, v.c2);
    const auto groups = interleaved4(c0, c1, c2, hn::Zero(d));
    for (std::size_t i = 0; i < 4; ++i) merge(groups[i], row, i, access);
  }

 private:
  struct Bytes {
    alignas(16) std::uint8_t at[16];
  };
  static constexpr std::size_t kBlockPixels = 4 / sizeof(T);

  // The places of the fourth channel.
  static constexpr Bytes fourthPlaces() {
    Bytes mask{};
    for (std::size_t b = 0; b < 16; ++b) mask.at[b] = b / sizeof(T) % 4 == 3 ? 0xFF : 0;
    return mask;
  }

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

  // Vector i of the four.
  template <class Access>
  static HWY_INLINE VU32 group(const T* row, std::size_t i, Access access) {
    static constexpr Bytes kGroup = grouping(false);
    const Tag<std::uint8_t> d;
    const VU8 pixels = hn::BitCast(d, access.samples(4).load(Tag<T>(), row, i * kLanes<T>));
    return hn::BitCast(Tag<std::uint32_t>(), hn::TableLookupBytes(pixels, hn::LoadDup128(d, kGroup.at)));
  }

  template <class Access>
  static HWY_INLINE void merge(VU32 v, T* row, std::size_t i, Access access) {
    static constexpr Bytes kUngroup = grouping(true), kFourth = fourthPlaces();
    const Tag<std::uint8_t> d;
    const Tag<T> to;
    const VU8 pixels = hn::TableLookupBytes(hn::BitCast(d, v), hn::LoadDup128(d, kUngroup.at));
    const Vec<T> fourth =
        hn::And(access.samples(4).load(to, row, i * kLanes<T>), hn::BitCast(to, hn::LoadDup128(d, kFourth.at)));
    access.samples(4).store(hn::Or(hn::BitCast(to, pixels), fourth), to, row, i * kLanes<T>);
  }
};

// One plane, for vectors whose pixels stand as ThreeOf4 loads them.
template <class T>
struct PlaneOfThreeOf4 : Plane1<T> {
  template <class Access = Whole>
  static HWY_INLINE void store(Vec<T> v, T* row, Access access = {}) {
    static constexpr Order kOrder;
    const Tag<std::uint32_t> d;
    const VU32 groups = hn::BitCast(d, v);
    Plane1<T>::store(hn::BitCast(Tag<T>(), hn::TableLookupLanes(groups, hn::SetTableIndices(d, kOrder.at))), row,
                     access);
  }

 private:
  // Group i of a block, the pixels of 32 bits, is of vector i, and its place there is that of the block.
  struct Order {
    static constexpr std::size_t kBlocks = HWY_MAX_BYTES / 16;
    alignas(HWY_MAX_BYTES) std::uint32_t at[4 * kBlocks];
    constexpr Order() : at() {
      for (std::size_t i = 0; i < 4 * kBlocks; ++i) at[i] = static_cast<std::uint32_t>(i % kBlocks * 4 + i / kBlocks);
    }
  };
};

// Samples of four interleaved channels in memory order, vectors of samples. The fourth of each pixel stays as it is in
// memory.
template <class T>
struct AllButFourth : Interleaved<T, 1, kLanes<T>> {
  static constexpr bool kKeeps = true;

  template <class Access = Whole>
  static HWY_INLINE Vec<T> load(const T* row, Access access = {}) {
    return access.load(Tag<T>(), row);
  }

  template <class Access = Whole>
  static HWY_INLINE void store(Vec<T> v, T* row, Access access = {}) {
    static constexpr Pixels kFourth;
    const Tag<T> d;
    access.store(hn::IfVecThenElse(hn::LoadDup128(d, kFourth.at), access.load(d, row), v), d, row);
  }

 private:
  struct Pixels {
    alignas(16) T at[16 / sizeof(T)];
    constexpr Pixels() : at() {
      for (std::size_t i = 3; i < 16 / sizeof(T); i += 4) at[i] = static_cast<T>(-1);
    }
  };
};

// ---- Other bytes, vectors of pixels in memory order

// Chroma in 16-bit lanes, Cb and Cr in turn, the pair i for the pixels 4 i to 4 i + 3.
struct Luma411 {
  VU8 y;
  VI16 cbCr;
};

// Planes of 4:1:1. Works on whole groups of four. A load repeats the chroma for both pairs of a group.
struct Planes411 {
  static constexpr std::size_t kPixels = kLanes<std::uint8_t>;
  static constexpr bool kWoven = false;
  static constexpr bool kKeeps = false;

  template <class Sample>
  static PlaneRow<Sample, 3> at(const PlaneRow<Sample, 3>& row, std::size_t x) {
    return {row[0] + x, row[1] + x / 4, row[2] + x / 4};
  }

  template <class Sample, class Access = Whole>
  static HWY_INLINE Luma422 load(const PlaneRow<Sample, 3>& row, Access access = {}) {
    return {access.load(Tag<std::uint8_t>(), row[0]), repeated(row[1], access), repeated(row[2], access)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Luma411& v, const PlaneRow<std::uint8_t, 3>& row, Access access = {}) {
    access.store(v.y, Tag<std::uint8_t>(), row[0]);
    const Access groups = access.half().half();
    const auto cbThenCr = hn::LowerHalf(hn::Half<Tag<std::uint8_t>>(), grouped(v.cbCr));
    groups.store(hn::LowerHalf(Quarter(), cbThenCr), Quarter(), row[1]);
    groups.store(hn::UpperHalf(Quarter(), cbThenCr), Quarter(), row[2]);
  }

  class Local {
   public:
    PlaneRow<std::uint8_t, 3> row() { return {y_.row(), cb_.row(), cr_.row()}; }
    void copyIn(const PlaneRow<const std::uint8_t, 3>& from, std::size_t n) {
      y_.copyIn(from[0], n);
      cb_.copyIn(from[1], n / 4);
      cr_.copyIn(from[2], n / 4);
    }
    void copyOut(const PlaneRow<std::uint8_t, 3>& to, std::size_t n) const {
      y_.copyOut(to[0], n);
      cb_.copyOut(to[1], n / 4);
      cr_.copyOut(to[2], n / 4);
    }

   private:
    LocalLuma y_;
    Interleaved<std::uint8_t, 1, kLanes<std::uint32_t>>::Local cb_, cr_;
  };

 private:
  using Quarter = hn::Rebind<std::uint8_t, Tag<std::int32_t>>;

  // The low bytes of the even lanes in the first quarter, of the odd ones in the second.
  static HWY_INLINE VU8 grouped(VI16 v) {
#if HWY_TARGET <= HWY_AVX3_DL
    struct Index {
      alignas(64) std::uint8_t at[64];
      constexpr Index() : at() {
        for (int i = 0; i < 32; ++i) at[i] = static_cast<std::uint8_t>(i % 16 * 4 + i / 16 * 2);
      }
    };
    static constexpr Index kIndex;
    return VU8{_mm512_permutexvar_epi8(_mm512_load_si512(kIndex.at), v.raw)};
#else
    const Tag<std::uint8_t> d;
    alignas(16) static constexpr std::uint8_t kInBlocks[16] = {0, 4, 8, 12, 2, 6, 10, 14, 0, 4, 8, 12, 2, 6, 10, 14};
    const VU8 quads = hn::TableLookupBytes(hn::BitCast(d, v), hn::LoadDup128(d, kInBlocks));
#if HWY_TARGET == HWY_AVX2
    return VU8{_mm256_permutevar8x32_epi32(quads.raw, _mm256_setr_epi32(0, 4, 1, 5, 0, 4, 1, 5))};
#else
    return quads;
#endif
#endif
  }

  template <class Access>
  static HWY_INLINE VI16 repeated(const std::uint8_t* p, Access access) {
    const VI32 chroma = hn::PromoteTo(Tag<std::int32_t>(), access.half().half().load(Quarter(), p));
    return hn::BitCast(Tag<std::int16_t>(), hn::Or(chroma, hn::ShiftLeft<16>(chroma)));
  }
};

template <class V>
struct FourChannels {
  V c0, c1, c2, c3;
};

// Four interleaved channels. A load leaves out the fourth.
template <class T>
struct Interleaved4 : Interleaved<T, 4, kLanes<T>> {
  static constexpr bool kWoven = true;

  template <class Access = Whole>
  static HWY_INLINE Channels<Vec<T>> load(const T* row, Access access = {}) {
    const FourChannels<Vec<T>> v = loadAll(row, access);
    return {v.c0, v.c1, v.c2};
  }

  template <class Access>
  static HWY_INLINE FourChannels<Vec<T>> loadAll(const T* row, Access access) {
    const VU8 v0 = part(row, 0, access), v1 = part(row, 1, access), v2 = part(row, 2, access),
              v3 = part(row, 3, access);
    const Tag<T> to;
#if HWY_TARGET <= HWY_AVX3_DL
    const Tag<std::uint8_t> d;
    static constexpr Bytes<64> kFirstTwo = channelBytes(0), kLastTwo = channelBytes(2);
    const VU8 lower01 = gather(v0, v1, kFirstTwo), lower23 = gather(v0, v1, kLastTwo),
              upper01 = gather(v2, v3, kFirstTwo), upper23 = gather(v2, v3, kLastTwo);
    return {hn::BitCast(to, hn::ConcatLowerLower(d, upper01, lower01)),
            hn::BitCast(to, hn::ConcatUpperUpper(d, upper01, lower01)),
            hn::BitCast(to, hn::ConcatLowerLower(d, upper23, lower23)),
            hn::BitCast(to, hn::ConcatUpperUpper(d, upper23, lower23))};
#else
    const auto channels = interleaved4(group(v0), group(v1), group(v2), group(v3));
    return {hn::BitCast(to, channels[0]), hn::BitCast(to, channels[1]), hn::BitCast(to, channels[2]),
            hn::BitCast(to, channels[3])};
#endif
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const FourChannels<Vec<T>>& v, T* row, Access access = {}) {
    using Sample = hwy::MakeUnsigned<T>;
    using Pair = hwy::MakeWide<Sample>;
    const Tag<std::uint8_t> bytes;
    const auto first = zipUnits<Sample>(hn::BitCast(bytes, v.c0), hn::BitCast(bytes, v.c1)),
               second = zipUnits<Sample>(hn::BitCast(bytes, v.c2), hn::BitCast(bytes, v.c3));
    const Halves<VU8> lower = zipUnits<Pair>(first.a, second.a), upper = zipUnits<Pair>(first.b, second.b);
#if HWY_TARGET == HWY_AVX2
    storeParts(hn::ConcatLowerLower(bytes, lower.b, lower.a), hn::ConcatLowerLower(bytes, upper.b, upper.a),
               hn::ConcatUpperUpper(bytes, lower.b, lower.a), hn::ConcatUpperUpper(bytes, upper.b, upper.a), row,
               access);
#else
    storeParts(lower.a, lower.b, upper.a, upper.b, row, access);
#endif
  }

  static Pixel pixel(const T* row, std::size_t x) { return {row[4 * x], row[4 * x + 1], row[4 * x + 2]}; }
  static void setPixel(T* row, std::size_t x, const Pixel& p, T fourth) {
    row[4 * x] = static_cast<T>(p.c0);
    row[4 * x + 1] = static_cast<T>(p.c1);
    row[4 * x + 2] = static_cast<T>(p.c2);
    row[4 * x + 3] = fourth;
  }

 private:
  template <std::size_t bytes>
  struct Bytes {
    alignas(bytes) std::uint8_t at[bytes];
  };

  // A quarter of the pixels; with AVX2 such that block b of part i is block 4 b + i of memory.
  template <class Access>
  static HWY_INLINE VU8 part(const T* row, std::size_t i, Access access) {
    const Tag<T> d;
#if HWY_TARGET == HWY_AVX2
    const hn::Half<Tag<T>> half;
    constexpr std::size_t kBlock = kLanes<T> / 2;
    const Vec<T> v = hn::Combine(d, access.load(half, row, (4 + i) * kBlock), access.load(half, row, i * kBlock));
#else
    const Vec<T> v = access.samples(4).load(d, row, i * kLanes<T>);
#endif
    return hn::BitCast(Tag<std::uint8_t>(), v);
  }

  template <class Access>
  static HWY_INLINE void storeParts(VU8 v0, VU8 v1, VU8 v2, VU8 v3, T* row, Access access) {
    const Tag<T> d;
    const Access samples = access.samples(4);
    samples.store(hn::BitCast(d, v0), d, row);
    samples.store(hn::BitCast(d, v1), d, row, kLanes<T>);
    samples.store(hn::BitCast(d, v2), d, row, 2 * kLanes<T>);
    samples.store(hn::BitCast(d, v3), d, row, 3 * kLanes<T>);
  }

#if HWY_TARGET <= HWY_AVX3_DL
  // Of the pixels in two vectors, the bytes of a channel and then those of the next.
  static constexpr Bytes<64> channelBytes(std::size_t channel) {
    constexpr std::size_t kHalf = kLanes<T> / 2;
    Bytes<64> index{};
    for (std::size_t b = 0; b < 64; ++b) {
      const std::size_t i = b / sizeof(T);
      index.at[b] = static_cast<std::uint8_t>((4 * (i % kHalf) + channel + i / kHalf) * sizeof(T) + b % sizeof(T));
    }
    return index;
  }
  static HWY_INLINE VU8 gather(VU8 v0, VU8 v1, const Bytes<64>& index) {
    return VU8{_mm512_permutex2var_epi8(v0.raw, _mm512_load_si512(index.at), v1.raw)};
  }

  // Units of two vectors in turn, in order over both results.
  template <class Unit>
  static HWY_INLINE Halves<VU8> zipUnits(VU8 v0, VU8 v1) {
    static constexpr Bytes<64> kLower = zipped(sizeof(Unit), 0), kUpper = zipped(sizeof(Unit), 32);
    return {gather(v0, v1, kLower), gather(v0, v1, kUpper)};
  }
  static constexpr Bytes<64> zipped(std::size_t unit, std::size_t begin) {
    Bytes<64> index{};
    for (std::size_t b = 0; b < 64; ++b) {
      const std::size_t i = b / unit;
      index.at[b] = static_cast<std::uint8_t>(begin + i / 2 * unit + b % unit + i % 2 * 64);
    }
    return index;
  }
#else
  // The pixels of each block grouped by channel.
  static HWY_INLINE VU32 group(VU8 v) {
    static constexpr Bytes<16> kGroup = grouping();
    return hn::BitCast(Tag<std::uint32_t>(), hn::TableLookupBytes(v, hn::LoadDup128(Tag<std::uint8_t>(), kGroup.at)));
  }
  static constexpr Bytes<16> grouping() {
    Bytes<16> index{};
    for (std::size_t b = 0; b < 16; ++b) {
      const std::size_t channel = b / 4, pixel = b % 4 / sizeof(T);
      index.at[b] = static_cast<std::uint8_t>((4 * pixel + channel) * sizeof(T) + b % sizeof(T));
    }
    return index;
  }

  // Units of two vectors in turn, in blocks.
  template <class Unit>
  static HWY_INLINE Halves<VU8> zipUnits(VU8 v0, VU8 v1) {
    const Tag<std::uint8_t> d;
    const Tag<Unit> units;
    const Vec<Unit> u0 = hn::BitCast(units, v0), u1 = hn::BitCast(units, v1);
    return {hn::BitCast(d, hn::InterleaveLower(units, u0, u1)), hn::BitCast(d, hn::InterleaveUpper(units, u0, u1))};
  }
#endif
};
using Packed4 = Interleaved4<std::uint8_t>;

// The same with the fourth.
struct AllOf4 : Packed4 {
  template <class Access = Whole>
  static HWY_INLINE FourChannels<VU8> load(const std::uint8_t* row, Access access = {}) {
    return loadAll(row, access);
  }
};

// Four planes.
struct Planes4 : Planar<std::uint8_t, 4, kLanes<std::uint8_t>> {
  template <class Sample, class Access = Whole>
  static HWY_INLINE FourChannels<VU8> load(const PlaneRow<Sample, 4>& row, Access access = {}) {
    const Tag<std::uint8_t> d;
    return {access.load(d, row[0]), access.load(d, row[1]), access.load(d, row[2]), access.load(d, row[3])};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const FourChannels<VU8>& v, const PlaneRow<std::uint8_t, 4>& row, Access access = {}) {
    const Tag<std::uint8_t> d;
    access.store(v.c0, d, row[0]);
    access.store(v.c1, d, row[1]);
    access.store(v.c2, d, row[2]);
    access.store(v.c3, d, row[3]);
  }
};

// Three planes of samples that are twice as wide as those on the other side, and so take two vectors each.
template <class T>
struct WidePlanes3 : Planar<T, 3, 2 * kLanes<T>> {
  template <class Sample, class Access = Whole>
  static HWY_INLINE Channels<Halves<Vec<T>>> load(const PlaneRow<Sample, 3>& row, Access access = {}) {
    return {both(row[0], access), both(row[1], access), both(row[2], access)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<Halves<Vec<T>>>& v, const PlaneRow<T, 3>& row, Access access = {}) {
    storeBoth(v.c0, row[0], access);
    storeBoth(v.c1, row[1], access);
    storeBoth(v.c2, row[2], access);
  }

 private:
  template <class Access>
  static HWY_INLINE Halves<Vec<T>> both(const T* p, Access access) {
    const Tag<T> d;
    return {access.load(d, p), access.load(d, p, kLanes<T>)};
  }
  template <class Access>
  static HWY_INLINE void storeBoth(const Halves<Vec<T>>& v, T* p, Access access) {
    const Tag<T> d;
    access.store(v.a, d, p);
    access.store(v.b, d, p, kLanes<T>);
  }
};

// ---- 16-bit pixels
//
// Three channels, the first in the lowest bits: the outer ones in outerBits bits each, green between them in greenBits,
// more than a byte altogether. Bytes lose their low bits on the way in, and have zeros in their place on the way out.
template <int outerBits, int greenBits>
struct Packed16 : Interleaved<std::uint16_t, 1, kLanes<std::uint8_t>> {
  static constexpr int kOuterBits = outerBits, kGreenBits = greenBits;

  template <class Access = Whole>
  static HWY_INLINE Channels<VU8> load(const std::uint16_t* row, Access access = {}) {
    const Tag<std::uint8_t> d;
    const Tag<std::uint16_t> d16;
    const VU8 v0 = hn::BitCast(d, access.load(d16, row)),
              v1 = hn::BitCast(d, access.load(d16, row, kLanes<std::uint16_t>));
    const VU8 low = hn::ConcatEven(d, v1, v0), high = hn::ConcatOdd(d, v1, v0);
    const VU8 green = hn::Or(right<kGreenUp, kGreenFromLow>(low), left<8 - kGreenUp, kGreenFromHigh>(high));
    return {left<8 - outerBits, kOuterMask>(low), green, left<kLastDown, kOuterMask>(high)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<VU8>& v, std::uint16_t* row, Access access = {}) {
    const VU8 low = hn::Or(right<8 - outerBits, kFirstInLow>(v.c0), left<kGreenUp, kGreenInLow>(v.c1));
    const VU8 high = hn::Or(right<kLastDown, kLastInHigh>(v.c2), right<8 - kGreenUp, kGreenInHigh>(v.c1));
    const Halves<VU8> both = zip(low, high);
    const Tag<std::uint16_t> d;
    access.store(hn::BitCast(d, both.a), d, row);
    access.store(hn::BitCast(d, both.b), d, row, kLanes<std::uint16_t>);
  }

  static Pixel pixel(const std::uint16_t* row, std::size_t x) {
    std::uint16_t p;
    std::memcpy(&p, row + x, sizeof p);
    return {p << (8 - outerBits) & kOuterMask, p >> outerBits << (8 - greenBits) & kGreenMask,
            p >> (outerBits + greenBits) << (8 - outerBits) & kOuterMask};
  }
  static void setPixel(std::uint16_t* row, std::size_t x, const Pixel& p) {
    const auto pixel = static_cast<std::uint16_t>(p.c0 >> (8 - outerBits) | p.c1 >> (8 - greenBits) << outerBits |
                                                  p.c2 >> (8 - outerBits) << (outerBits + greenBits));
    std::memcpy(row + x, &pixel, sizeof pixel);
  }

 private:
  // The top bits of green are moved up from a byte's, and the last channel down, to their places in the high byte.
  static constexpr int kGreenUp = outerBits + greenBits - 8, kLastDown = 8 - outerBits - kGreenUp;
  static constexpr int kOuterMask = 0xFF & 0xFF << (8 - outerBits), kGreenMask = 0xFF & 0xFF << (8 - greenBits);
  static constexpr int kGreenFromLow = kGreenMask & 0xFF >> kGreenUp, kGreenFromHigh = kGreenMask & ~kGreenFromLow;
  static constexpr int kFirstInLow = (1 << outerBits) - 1, kGreenInLow = 0xFF & ~kFirstInLow;
  static constexpr int kGreenInHigh = (1 << kGreenUp) - 1, kLastInHigh = kOuterMask >> kLastDown;

  // Bytes shifted and masked; the mask is 0 for what comes from another byte.
  template <int count, int mask>
  static HWY_INLINE VU8 left(VU8 v) {
    return masked(hn::ShiftLeft<count>(hn::BitCast(Tag<std::uint16_t>(), v)), mask);
  }
  template <int count, int mask>
  static HWY_INLINE VU8 right(VU8 v) {
    return masked(hn::ShiftRight<count>(hn::BitCast(Tag<std::uint16_t>(), v)), mask);
  }
  static HWY_INLINE VU8 masked(VU16 v, int mask) {
    return hn::And(hn::BitCast(Tag<std::uint8_t>(), v), all(static_cast<std::uint8_t>(mask)));
  }
};

// The first and the third channel exchanged: forms say R, G, B where the memory of another layout says B, G, R.
template <class Layout>
struct Reversed : Layout {
  template <class Sample, class Access = Whole>
  static HWY_INLINE auto load(const Sample* row, Access access = {}) {
    return reversed(Layout::load(row, access));
  }
  template <class V, class Sample, class Access = Whole>
  static HWY_INLINE void store(const V& v, Sample* row, Access access = {}) {
    Layout::store(reversed(v), row, access);
  }

  template <class Sample>
  static Pixel pixel(const Sample* row, std::size_t x) {
    return reversed(Layout::pixel(row, x));
  }
  template <class Sample, class... Fourth>
  static void setPixel(Sample* row, std::size_t x, const Pixel& p, Fourth... fourth) {
    Layout::setPixel(row, x, reversed(p), fourth...);
  }

 private:
  template <class Of>
  static HWY_INLINE Of reversed(Of v) {
    const auto third = v.c2;
    v.c2 = v.c0;
    v.c0 = third;
    return v;
  }
};

// Signed 16-bit samples as their distance from the lowest, which an unsigned sample holds: their rows come as such.
template <class Layout>
struct FromLowest : Layout {
  template <class Row, class Access = Whole>
  static HWY_INLINE auto load(const Row& row, Access access = {}) {
    return moved(Layout::load(row, access));
  }
  template <class V, class Row, class Access = Whole>
  static HWY_INLINE void store(const V& v, const Row& row, Access access = {}) {
    Layout::store(moved(v), row, access);
  }

 private:
  static HWY_INLINE VU16 moved(VU16 v) { return v ^ all<std::uint16_t>(0x8000); }
  static HWY_INLINE Channels<VU16> moved(const Channels<VU16>& v) { return {moved(v.c0), moved(v.c1), moved(v.c2)}; }
};

// Blue in the lowest bits.
using Packed565 = Reversed<Packed16<5, 6>>;
using Packed555 = Reversed<Packed16<5, 5>>;

// ---- Columns of a row

// Converts the columns from x on that are fewer than a vector has, alone or through a local copy.
template <class Src, class Form, class Dst, class SrcRow, class DstRow>
HWY_INLINE void lastColumns(const SrcRow& src, const DstRow& dst, std::size_t x, std::size_t end, Form form = Form()) {
  if (x >= end) return;
#if HWY_TARGET <= HWY_AVX3
  const First rest{end - x};
  Dst::store(form.apply(Src::load(Src::at(src, x), rest)), Dst::at(dst, x), rest);
#else
  typename Src::Local in;
  typename Dst::Local out;
  in.copyIn(Src::at(src, x), end - x);
  if constexpr (Dst::kKeeps) out.copyIn(Dst::at(dst, x), end - x);
  Dst::store(form.apply(Src::load(in.row(), Whole())), out.row(), Whole());
  out.copyOut(Dst::at(dst, x), end - x);
#endif
}

// Converts columns begin to end by one form: whole vectors from and to memory, then the remainder. Where a load takes
// its channels apart, which is a long chain of steps, the next vector is loaded while one is converted and the one
// before it is stored: the processor then has operations at hand that can start. Most forms hold nothing; one that does
// is given, and may keep something of a vector for the next.
template <class Src, class Form, class Dst, class SrcRow, class DstRow>
HWY_INLINE void columns(const SrcRow& src, const DstRow& dst, std::size_t begin, std::size_t end, Form form = Form()) {
  static_assert(Src::kPixels == Dst::kPixels, "source and destination go in step");
  constexpr std::size_t kStride = Src::kPixels;
  const std::size_t wholeEnd = end - (end - begin) % kStride;
  const auto load = [&](std::size_t x) HWY_ATTR { return Src::load(Src::at(src, x), Whole()); };
  const auto store = [&](const auto& v, std::size_t x) HWY_ATTR { Dst::store(v, Dst::at(dst, x), Whole()); };
  if constexpr (Src::kWoven) {
    if (begin < wholeEnd) {
      const std::size_t last = wholeEnd - kStride;
      auto converted = form.apply(load(begin));
      auto loaded = load(std::min(begin + kStride, last));
      for (std::size_t x = begin + kStride; x <= last; x += kStride) {
        const auto next = load(std::min(x + kStride, last));
        const auto result = form.apply(loaded);
        store(converted, x - kStride);
        converted = result;
        loaded = next;
      }
      store(converted, last);
    }
  } else {
    for (std::size_t x = begin; x < wholeEnd; x += kStride) store(form.apply(load(x)), x);
  }
  lastColumns<Src, Form, Dst>(src, dst, wholeEnd, end, form);
}

// Whole blocks of columns by one form, the columns behind them by another.
template <std::size_t block, class Src, class Block, class Tail, class Dst, class SrcRow, class DstRow>
HWY_INLINE void blocksAndTail(const SrcRow& src, const DstRow& dst, std::size_t width) {
  static_assert(block <= Src::kPixels, "a vector holds the tail");
  const std::size_t blockEnd = width - width % block;
  columns<Src, Block, Dst>(src, dst, 0, blockEnd);
  lastColumns<Src, Tail, Dst>(src, dst, blockEnd, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
