// YCbCr and YUV to 16-bit pixels of 5-6-5, 5-5-5 and 4-4-4 bits with ordered dither.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/packed16_dither.cc"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "lumachroma/packed16.h"

#include "lumachroma/packed16-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// A byte is brought to a level of so many bits: its share of the highest one, rounded down, and one up if what 256
// times the byte has above the level's steps exceeds the threshold of its place.
template <int bits>
struct Quantizer {
  static constexpr int kHighest = (1 << bits) - 1;
  static constexpr int kStep = bits == 4 ? 4352 : bits == 5 ? 2105 : 1036;

  // By row and column from the first pixel of the image on, modulo 4.
  static constexpr int threshold(int row, int column) {
    constexpr int kOf4[4][4] = {
        {0, 2312, 578, 2890}, {3468, 1156, 4046, 1734}, {867, 3179, 289, 2601}, {4335, 2023, 3757, 1445}};
    constexpr int kOf5[4][4] = {
        {0, 1118, 279, 1398}, {1678, 559, 1957, 839}, {419, 1538, 139, 1258}, {2097, 978, 1817, 699}};
    return bits == 4 ? kOf4[row % 4][column] : bits == 5 ? kOf5[row % 4][column] : kOf5[row % 4][column] / 2;
  }

  static constexpr int level(int v, int row, int column) {
    const int lower = kHighest * v >> 8;
    return lower + (256 * v - lower * kStep > threshold(row, column));
  }
};

// A row's bytes, from a column that is a multiple of 4 on, to levels in the top bits of bytes; their other bits mean
// nothing.
#if HWY_TARGET <= HWY_AVX3_DL
// By what is to be added to a byte. Levels are no closer than the bytes of equal top bits reach, so that one number
// serves all of those: it carries from the right one of them on into the next level.
template <int bits>
struct LevelAddends {
  static constexpr int kTopBits = bits == 6 ? 6 : 5, kTops = 1 << kTopBits, kBytes = 256 / kTops;

  alignas(64) std::uint8_t at[4][4][kTops];  // by row, column and top bits
  constexpr LevelAddends() : at() {
    for (int i = 0; i < 16 * kTops; ++i) {
      const int row = i / kTops / 4, column = i / kTops % 4, top = i % kTops;
      at[row][column][top] = addend(kBytes * top, row, column);
    }
  }

  // Brings the first byte of the higher of two levels, or the first byte of all, to the beginning of its level.
  static constexpr std::uint8_t addend(int first, int row, int column) {
    const int level = Quantizer<bits>::level(first + kBytes - 1, row, column);
    while (Quantizer<bits>::level(first, row, column) < level) ++first;
    return static_cast<std::uint8_t>((level << (8 - bits)) - first);
  }
};
template <int bits>
constexpr LevelAddends<bits> kLevelAddends{};

template <int bits>
class Levels {
 public:
  explicit Levels(int row) : addends_(kLevelAddends<bits>.at[row % 4][0]) {}

  HWY_INLINE VU8 of(VU8 v) const {
    const Tag<std::uint8_t> d;
    const VU8 top = hn::BitCast(d, hn::ShiftRight<8 - kTopBits>(hn::BitCast(Tag<std::uint16_t>(), v)));
    const VU8 inTable = hn::And(top, all<std::uint8_t>((1 << kTopBits) - 1));
    if constexpr (kTopBits == 5) return v + addends(0, hn::Or(inTable, hn::BitCast(d, all<std::uint32_t>(0x60402000))));
    // Two columns in a table.
    const VU8 index = hn::Or(inTable, hn::BitCast(d, all<std::uint32_t>(0x40004000)));
    const auto isLater = hn::MaskFromVec(hn::BitCast(d, all<std::uint32_t>(0xFFFF0000)));
    return v + hn::IfThenElse(isLater, addends(1, index), addends(0, index));
  }

 private:
  static constexpr int kTopBits = LevelAddends<bits>::kTopBits;

  // From a table of 128.
  HWY_INLINE VU8 addends(int table, VU8 index) const {
    const std::uint8_t* at = addends_ + 128 * table;
    return VU8{_mm512_permutex2var_epi8(_mm512_load_si512(at), index.raw, _mm512_load_si512(at + 64))};
  }

  const std::uint8_t* addends_;
};
#else
template <int bits>
class Levels {
 public:
  explicit Levels(int row) : even_(thresholds(row, 0)), odd_(thresholds(row, 1)) {}

  HWY_INLINE VU8 of(VU8 v) const {
    const VU16 pairs = hn::BitCast(Tag<std::uint16_t>(), v);
    const VU16 even = level(hn::ShiftLeft<8>(pairs), even_);
    const VU16 odd = level(hn::And(pairs, all<std::uint16_t>(0xFF00)), odd_);
    return hn::BitCast(Tag<std::uint8_t>(), hn::Or(hn::ShiftLeft<8 - bits>(even), hn::ShiftLeft<16 - bits>(odd)));
  }

 private:
  static VI16 thresholds(int row, int column) {
    return pairsOf(Quantizer<bits>::threshold(row, column), Quantizer<bits>::threshold(row, column + 2));
  }
  // From 256 times the bytes.
  static HWY_INLINE VU16 level(VU16 v, VI16 threshold) {
    const Tag<std::int16_t> d;
    const VU16 lower = mulHigh(Quantizer<bits>::kHighest, v);
    const VI16 rest = hn::BitCast(d, v - lower * all<std::uint16_t>(Quantizer<bits>::kStep));
    return lower - hn::BitCast(Tag<std::uint16_t>(), hn::VecFromMask(d, rest > threshold));
  }

  VI16 even_, odd_;
};
#endif

// A decoder's pixels brought to the levels of a layout, those of a row or of two rows.
template <class Decoder, class Layout>
class Dithered {
 public:
  explicit Dithered(int row) : upper_(row), lower_(row + 1) {}

  template <class Source>
  HWY_INLINE auto apply(const Source& source) const {
    return levels(Decoder::apply(source));
  }

 private:
  struct Row {
    explicit Row(int row) : outer(row), green(row) {}
    HWY_INLINE Channels<VU8> levels(const Channels<VU8>& rgb) const {
      return {outer.of(rgb.c0), green.of(rgb.c1), outer.of(rgb.c2)};
    }
    Levels<Layout::kOuterBits> outer;
    Levels<Layout::kGreenBits> green;
  };

  HWY_INLINE Channels<VU8> levels(const Channels<VU8>& rgb) const { return upper_.levels(rgb); }
  HWY_INLINE TwoRows<Channels<VU8>> levels(const TwoRows<Channels<VU8>>& rgb) const {
    return {upper_.levels(rgb.upper), lower_.levels(rgb.lower)};
  }

  Row upper_, lower_;
};

// The decoders are the same in all columns and rows.
template <class Dst>
struct DitheredKernels {
  template <class Src, class Decoder, class Pixels = Dst, class SrcRow, class DstRow>
  static HWY_INLINE void all(const SrcRow& src, const DstRow& dst, int begin, int end) {
    using Form = Dithered<Decoder, Dst>;
    columns<Src, Form, Pixels>(src, dst.pixels, begin, end, Form(dst.number));
  }

  static void c3(const Zum8u* src, DitheredRow dst, int width) {
    all<Packed3<Zum8u>, OnHalves<PackedTruncated16>>(src, dst, 0, width);
  }

  static void p3(const P3Row& src, DitheredRow dst, int width) {
    all<Planes3<Zum8u>, OnHalves<PackedTruncated16>>(src, dst, 0, width);
  }

  // Half a pair at the end has no Cr: its Cb serves as both.
  static void c2(const Zum8u* src, DitheredRow dst, int width) {
    using Form = OnPairs<PackedTruncated16>;
    if (width % 2 == 0) return all<YCbCrC2, Form>(src, dst, 0, width);
    const int begin = (width - 1) & ~3, count = width - begin;  // the columns of the matrix that the half pair is in
    all<YCbCrC2, Form>(src, dst, 0, begin);
    Planes422::Local local;
    const auto planes = local.row();
    for (int x = 0; x < count; ++x) {
      const Zum8u* sample = src + 2 * (begin + x);
      planes[0][x] = sample[0];
      planes[1 + x % 2][x / 2] = sample[1];
    }
    planes[2][count / 2] = planes[1][count / 2];
    all<Planes422, Form>(P3Row{planes[0], planes[1], planes[2]}, DitheredRow{dst.pixels + begin, dst.number}, 0, count);
  }

  static void planes422(const P3Row& src, DitheredRow dst, int width) {
    all<Planes422, OnPairs<PackedTruncated16>>(src, dst, 0, width);
  }

  static void planes420(const RowPair420<const Zum8u>& src, DitheredRowPair dst, int width) {
    all<Planes420, OnPairs<PackedTruncated16>, RowPairOf<Dst>>(src, dst, 0, width);
  }

  static void planesYuv420(const RowPair420<const Zum8u>& src, DitheredRowPair dst, int width) {
    all<Planes420, OnPairs<PackedYuvTruncated16>, RowPairOf<Dst>>(src, dst, 0, width);
  }

  static void lastRowYuv420(const P3Row& src, DitheredRow dst, int width) {
    all<Planes422, OnPairs<PackedYuvTruncated16>>(src, dst, 0, width);
  }

  static constexpr Packed16Kernels<DitheredRow, DitheredRowPair> kKernels = {
      c3, p3, c2, planes422, planes420, planesYuv420, lastRowYuv420};
};

const Packed16Kernels<DitheredRow, DitheredRowPair>& ditheredKernels(Packed16Model model) {
  return kernelsFor<DitheredKernels>(model);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(ditheredKernels);

using Kernels = Packed16Kernels<DitheredRow, DitheredRowPair>;

const Kernels& kernelsOf(Packed16Model model) { return HWY_DYNAMIC_DISPATCH(ditheredKernels)(model); }

struct Target : Pixels<Zum16u> {
  DitheredRows rows() const { return {Pixels<Zum16u>::rows()}; }
};
Target target(const Pixels<Zum16u>& given) { return {samples16(given.base, given.step)}; }

ZumStatus fromC3(const Kernels& kernels, const Pixels<const Zum8u>& src, const Target& dst, ZumiSize roi) {
  return convertRows(kernels.c3, src, dst, roi);
}

ZumStatus fromC2(const Kernels& kernels, const Pixels<const Zum8u>& src, const Target& dst, ZumiSize roi) {
  return convertRows(kernels.c2, src, dst, roi);
}

}  // namespace
}  // namespace zum

ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToRGB565Dither_8u16u_C3R, fromC3, kRGB565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToBGR565Dither_8u16u_C3R, fromC3, kBGR565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToRGB555Dither_8u16u_C3R, fromC3, kRGB555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToBGR555Dither_8u16u_C3R, fromC3, kBGR555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToRGB444Dither_8u16u_C3R, fromC3, kRGB444)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCrToBGR444Dither_8u16u_C3R, fromC3, kBGR444)

ZUM_PACKED16_FROM_PLANES(zumiYCbCrToRGB565Dither_8u16u_P3C3R, fromP3, kRGB565)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToBGR565Dither_8u16u_P3C3R, fromP3, kBGR565)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToRGB555Dither_8u16u_P3C3R, fromP3, kRGB555)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToBGR555Dither_8u16u_P3C3R, fromP3, kBGR555)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToRGB444Dither_8u16u_P3C3R, fromP3, kRGB444)
ZUM_PACKED16_FROM_PLANES(zumiYCbCrToBGR444Dither_8u16u_P3C3R, fromP3, kBGR444)

ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToRGB565Dither_8u16u_C2C3R, fromC2, kRGB565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToBGR565Dither_8u16u_C2C3R, fromC2, kBGR565)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToRGB555Dither_8u16u_C2C3R, fromC2, kRGB555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToBGR555Dither_8u16u_C2C3R, fromC2, kBGR555)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToRGB444Dither_8u16u_C2C3R, fromC2, kRGB444)
ZUM_PACKED16_FROM_PIXELS(zumiYCbCr422ToBGR444Dither_8u16u_C2C3R, fromC2, kBGR444)

ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToRGB565Dither_8u16u_P3C3R, from422, kRGB565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToBGR565Dither_8u16u_P3C3R, from422, kBGR565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToRGB555Dither_8u16u_P3C3R, from422, kRGB555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToBGR555Dither_8u16u_P3C3R, from422, kBGR555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToRGB444Dither_8u16u_P3C3R, from422, kRGB444)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr422ToBGR444Dither_8u16u_P3C3R, from422, kBGR444)

ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToRGB565Dither_8u16u_P3C3R, from420, kRGB565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToBGR565Dither_8u16u_P3C3R, from420, kBGR565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToRGB555Dither_8u16u_P3C3R, from420, kRGB555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToBGR555Dither_8u16u_P3C3R, from420, kBGR555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToRGB444Dither_8u16u_P3C3R, from420, kRGB444)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYCbCr420ToBGR444Dither_8u16u_P3C3R, from420, kBGR444)

ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToRGB565Dither_8u16u_P3C3R, fromYuv420, kRGB565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToBGR565Dither_8u16u_P3C3R, fromYuv420, kBGR565)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToRGB555Dither_8u16u_P3C3R, fromYuv420, kRGB555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToBGR555Dither_8u16u_P3C3R, fromYuv420, kBGR555)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToRGB444Dither_8u16u_P3C3R, fromYuv420, kRGB444)
ZUM_PACKED16_FROM_STEPPED_PLANES(zumiYUV420ToBGR444Dither_8u16u_P3C3R, fromYuv420, kBGR444)

#endif  // HWY_ONCE
