// Conversions among the samplings and layouts of YCbCr: 4:2:2, 4:2:0 and 4:1:1, packed, semi-planar and planar. Luma is
// copied; chroma is copied, dropped, repeated or placed elsewhere, never computed.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sampling/ycbcr_layouts.cc"
#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/exports.h"
#include "hwy/cache_control.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "sampling/ycbcr_models.h"

#include "sampling/chroma-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Forms

struct Keep {
  template <class Lane, class D, class V>
  static HWY_INLINE V apply(D, const V& v) {
    return v;
  }
};

// 4:2:2 to 4:1:1: the first of two columns. 4:1:1 to 4:2:2: each one twice.
struct DropColumns {
  template <class Lane, class D, class V>
  static HWY_INLINE V apply(D d, const Two<V>& v) {
    return evenLanes<Lane>(d, v);
  }
};
struct RepeatColumns {
  template <class Lane, class D, class V>
  static HWY_INLINE Two<V> apply(D d, V v) {
    return weave<Lane>(d, v, v);
  }
};

// 4:2:2 to 4:2:0: the first of two rows. 4:2:0 to 4:2:2: each one twice.
struct DropRows {
  template <class Lane, class D, class V>
  static HWY_INLINE V apply(D, const Two<V>& v) {
    return v.a;
  }
};
struct RepeatRows {
  template <class Lane, class D, class V>
  static HWY_INLINE Two<V> apply(D, const V& v) {
    return {v, v};
  }
};

// 4:2:0 to 4:1:1: even columns to the upper row, odd columns to the lower. 4:1:1 to 4:2:0: back.
struct ColumnsToRows {
  template <class Lane, class D, class V>
  static HWY_INLINE Two<V> apply(D d, const Two<V>& v) {
    return {evenLanes<Lane>(d, v), oddLanes<Lane>(d, v)};
  }
};
struct RowsToColumns {
  template <class Lane, class D, class V>
  static HWY_INLINE Two<V> apply(D d, const Two<V>& v) {
    return weave<Lane>(d, v.a, v.b);
  }
};

// A form of chroma, with the luma of a row beside it.
template <class Form>
struct BesideLuma {
  template <class Lane, class D, class V>
  static HWY_INLINE auto apply(D d, const V& v) {
    return LumaChroma{v.luma, Form::template apply<Lane>(d, v.chroma)};
  }
};

// Of two rows, with the luma of both.
template <>
struct BesideLuma<DropRows> {
  template <class Lane, class D, class V>
  static HWY_INLINE auto apply(D, const Two<V>& v) {
    return LumaChroma{Two{v.a.luma, v.b.luma}, v.a.chroma};
  }
};

// Bytes of packed pixels: luma and chroma of a pixel exchanged, or Cb and Cr of two.
template <std::size_t exchanged>
struct Exchange {
  template <class Lane, class D, class V>
  static HWY_INLINE Two<V> apply(D d, const Two<V>& v) {
    struct Index {
      alignas(16) Byte at[16];
      constexpr Index() : at() {
        for (std::size_t i = 0; i < 16; ++i) at[i] = static_cast<Byte>(exchanged == 1 || i % 2 ? i ^ exchanged : i);
      }
    };
    static constexpr Index kIndex;
    const V index = hn::LoadDup128(d, kIndex.at);
    return {hn::TableLookupBytes(v.a, index), hn::TableLookupBytes(v.b, index)};
  }
};
using LumaWithChroma = Exchange<1>;
using CbWithCr = Exchange<2>;

// ---- Images

using Source = YCbCrImage<const Byte>;
using Destination = YCbCrImage<Byte>;

// In pieces that the C library copies in its fastest way, which is not the one for those that overflow a small cache.
void copyBytes(const Byte* src, Byte* dst, std::size_t n) {
  constexpr std::size_t kPiece = std::size_t{1} << 16;
  for (; n > kPiece; n -= kPiece, src += kPiece, dst += kPiece) std::memcpy(dst, src, kPiece);
  std::memcpy(dst, src, n);
}

void copyLuma(const Source& src, const Destination& dst, Extent extent) {
  mergeTightRows<Luma, Luma>(src.plane, dst.plane, extent);
  for (int r = 0; r < extent.rows; ++r) copyBytes(src.plane[0].row(r), dst.plane[0].row(r), extent.pixels);
}

// Packed to packed. In place too.
void repack(const Source& src, const Destination& dst, Extent extent) {
  extent.pixels *= 2;  // columns of bytes
  if (src.model.crFirst == dst.model.crFirst) {
    convertRows<Luma, LumaWithChroma, Luma>(src.plane, dst.plane, extent);
  } else {
    convertRows<Luma, CbWithCr, Luma>(src.plane, dst.plane, extent);
  }
}

// Packed to planes.
template <bool chromaFirst, template <Width> class Chroma>
void unpackAs(const Source& src, const Destination& dst, Extent extent) {
  using Src = Packed<chromaFirst>;
  switch (dst.model.sampling) {
    case Sampling::k422:
      return convertRows<Src, Keep, Apart<Luma, Chroma<kHalf>>>(src.plane, dst.plane, extent);
    case Sampling::k411:
      return convertRows<Src, BesideLuma<DropColumns>, Apart<Luma, Chroma<kQuarter>>>(src.plane, dst.plane, extent);
    case Sampling::k420:
      extent.rows /= 2;
      return convertRows<UpperAndLower<Src>, BesideLuma<DropRows>, Apart<UpperAndLower<Luma>, Chroma<kHalf>>>(
          src.plane, dst.plane, extent);
  }
}
template <template <Width> class Chroma>
void unpack(const Source& src, const Destination& dst, const Extent& extent) {
  src.model.chromaFirst ? unpackAs<true, Chroma>(src, dst, extent) : unpackAs<false, Chroma>(src, dst, extent);
}

// Planes to packed.
template <bool chromaFirst, template <Width> class Chroma>
void packAs(const Source& src, const Destination& dst, Extent extent) {
  using Dst = Packed<chromaFirst>;
  switch (src.model.sampling) {
    case Sampling::k422:
      return convertRows<Apart<Luma, Chroma<kHalf>>, Keep, Dst>(src.plane, dst.plane, extent);
    case Sampling::k411:
      return convertRows<Apart<Luma, Chroma<kQuarter>>, BesideLuma<RepeatColumns>, Dst>(src.plane, dst.plane, extent);
    case Sampling::k420:
      return convertRows<Apart<Luma, Twice<Chroma<kHalf>>>, Keep, Dst>(src.plane, dst.plane, extent);
  }
}
template <template <Width> class Chroma>
void pack(const Source& src, const Destination& dst, const Extent& extent) {
  dst.model.chromaFirst ? packAs<true, Chroma>(src, dst, extent) : packAs<false, Chroma>(src, dst, extent);
}

// Chroma between images of planes.
template <template <Width> class Src, template <Width> class Dst>
void resample(Sampling from, Sampling to, const Rows<const Byte>* src, const Rows<Byte>* dst, Extent extent) {
  if (from == Sampling::k420 || to == Sampling::k420) extent.rows /= 2;
  if (from == to) {
    if (from == Sampling::k411) extent.pixels /= 2;
    convertRows<Src<kHalf>, Keep, Dst<kHalf>>(src, dst, extent);
  } else if (from == Sampling::k422 && to == Sampling::k411) {
    convertRows<Src<kHalf>, DropColumns, Dst<kQuarter>>(src, dst, extent);
  } else if (from == Sampling::k411 && to == Sampling::k422) {
    convertRows<Src<kQuarter>, RepeatColumns, Dst<kHalf>>(src, dst, extent);
  } else if (from == Sampling::k422) {
    convertRows<UpperAndLower<Src<kHalf>>, DropRows, Dst<kHalf>>(src, dst, extent);
  } else if (to == Sampling::k422) {
    convertRows<Src<kHalf>, RepeatRows, UpperAndLower<Dst<kHalf>>>(src, dst, extent);
  } else if (to == Sampling::k411) {
    convertRows<Src<kHalf>, ColumnsToRows, UpperAndLower<Dst<kQuarter>>>(src, dst, extent);
  } else {
    convertRows<UpperAndLower<Src<kQuarter>>, RowsToColumns, Dst<kHalf>>(src, dst, extent);
  }
}

void convertPlanes(const Source& src, const Destination& dst, const Extent& extent) {
  const Sampling from = src.model.sampling, to = dst.model.sampling;
  copyLuma(src, dst, extent);
  if (src.layout == YCbCrLayout::kSemiPlanar) {
    resample<Pairs, CbAndCr>(from, to, src.plane + 1, dst.plane + 1, extent);
  } else if (dst.layout == YCbCrLayout::kSemiPlanar) {
    resample<CbAndCr, Pairs>(from, to, src.plane + 1, dst.plane + 1, extent);
  } else {
    const Extent samples{extent.pixels / 2, extent.rows, extent.pastCache};
    resample<Samples, Samples>(from, to, src.plane + 1, dst.plane + 1, samples);
    resample<Samples, Samples>(from, to, src.plane + 2, dst.plane + 2, samples);
  }
}

void convertImage(const Source& src, const Destination& dst, ZumiSize roi, bool pastCache) {
  const Extent extent{static_cast<std::size_t>(roi.width), roi.height, pastCache};
  const bool fromPacked = src.layout == YCbCrLayout::kPacked, toPacked = dst.layout == YCbCrLayout::kPacked;
  if (fromPacked && toPacked) {
    repack(src, dst, extent);
  } else if (fromPacked) {
    dst.layout == YCbCrLayout::kPlanar ? unpack<CbAndCr>(src, dst, extent) : unpack<Pairs>(src, dst, extent);
  } else if (toPacked) {
    src.layout == YCbCrLayout::kPlanar ? pack<CbAndCr>(src, dst, extent) : pack<Pairs>(src, dst, extent);
  } else {
    convertPlanes(src, dst, extent);
  }
  if (pastCache) hwy::FlushStream();
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(convertImage);

// Writing through the cache is of no use to a call that touches about as many bytes as its thread can keep there: three
// eighths, as measured. Stores past it want whole aligned lines, in all rows of all planes.
bool goesPastCache(const YCbCrModel& from, const YCbCrImage<Zum8u>& dst, ZumiSize roi) {
  static const double usable = 3.0 / 8 * static_cast<double>(cacheSize());
  const double bits = static_cast<double>(roi.width) * roi.height * (from.bitsPerPixel() + dst.model.bitsPerPixel());
  if (usable == 0 || bits / CHAR_BIT <= usable) return false;
  constexpr std::uintptr_t kLine = 64;
  std::uintptr_t all = 0;
  for (int p = 0; p < static_cast<int>(dst.layout); ++p) {
    all |= reinterpret_cast<std::uintptr_t>(dst.plane[p].base) | static_cast<std::uintptr_t>(dst.plane[p].step);
  }
  return all % kLine == 0;
}

// The smallest height. With kAnyHeight one of 0 or less is converted, to nothing.
enum MinimumHeight { kAnyHeight = INT_MIN, kOneRow = 1, kTwoRows = 2 };

// Whole blocks of shared chroma are converted; what is beyond them stays as it is.
template <class Src, class Dst>
ZumStatus convert(const YCbCrModel& from, const YCbCrModel& to, MinimumHeight minimum, const Src& src, const Dst& dst,
                  ZumiSize roi) {
  const int columns = std::max(from.columns(), to.columns());
  if (const ZumStatus status = checkPlanesFirst(src, dst, roi, {columns, minimum})) return status;
  roi.width &= -columns;
  roi.height &= -(minimum == kTwoRows ? 2 : 1);
  const bool exchanged = from.crFirst != to.crFirst;
  const YCbCrImage<const Zum8u> source = imageOf(from, src, exchanged);
  const YCbCrImage<Zum8u> target = imageOf(to, dst, exchanged && source.layout != YCbCrLayout::kPlanar);
  ZUM_KERNEL(convertImage)(source, target, roi, goesPastCache(from, target, roi));
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

// The exported functions, by the shape of their arguments: name, source, destination, smallest height.

#define ZUM_C2R(name, from, to, height) \
  ZUM_EXPORT(name, Pixels<const Zum8u>, Pixels<Zum8u>, convert(from, to, height, src, dst, roi))
ZUM_C2R(zumiCbYCr422ToYCbCr422_8u_C2R, kCbYCr422, kYCbCr422, kOneRow)
ZUM_C2R(zumiYCbCr422ToCbYCr422_8u_C2R, kYCbCr422, kCbYCr422, kAnyHeight)
ZUM_C2R(zumiYCbCr422ToYCrCb422_8u_C2R, kYCbCr422, kYCrCb422, kAnyHeight)

#define ZUM_C2P3R(name, from, to, height) \
  ZUM_EXPORT(name, Pixels<const Zum8u>, ThreeSteppedPlanes<Zum8u>, convert(from, to, height, src, dst, roi))
ZUM_C2P3R(zumiCbYCr422ToYCbCr411_8u_C2P3R, kCbYCr422, kYCbCr411, kAnyHeight)
ZUM_C2P3R(zumiCbYCr422ToYCbCr420_8u_C2P3R, kCbYCr422, kYCbCr420, kTwoRows)
ZUM_C2P3R(zumiCbYCr422ToYCbCr422_8u_C2P3R, kCbYCr422, kYCbCr422, kAnyHeight)
ZUM_C2P3R(zumiCbYCr422ToYCrCb420_8u_C2P3R, kCbYCr422, kYCrCb420, kTwoRows)
ZUM_C2P3R(zumiYCbCr422ToYCbCr411_8u_C2P3R, kYCbCr422, kYCbCr411, kAnyHeight)
ZUM_C2P3R(zumiYCbCr422ToYCbCr420_8u_C2P3R, kYCbCr422, kYCbCr420, kTwoRows)
ZUM_C2P3R(zumiYCbCr422ToYCrCb420_8u_C2P3R, kYCbCr422, kYCrCb420, kTwoRows)
ZUM_C2P3R(zumiYCbCr422_8u_C2P3R, kYCbCr422, kYCbCr422, kOneRow)
ZUM_C2P3R(zumiYCrCb422ToYCbCr411_8u_C2P3R, kYCrCb422, kYCbCr411, kAnyHeight)
ZUM_C2P3R(zumiYCrCb422ToYCbCr420_8u_C2P3R, kYCrCb422, kYCbCr420, kTwoRows)
ZUM_C2P3R(zumiYCrCb422ToYCbCr422_8u_C2P3R, kYCrCb422, kYCbCr422, kOneRow)

#define ZUM_C2P2R(name, from, to, height)                                                                      \
  ZumStatus name(const Zum8u* pSrc, int srcStep, Zum8u* pDstY, int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, \
                 ZumiSize roi) {                                                                               \
    return convert(from, to, height, Pixels{pSrc, srcStep},                                                    \
                   SemiPlanar<Zum8u>{{pDstY, dstYStep}, {pDstCbCr, dstCbCrStep}}, roi);                        \
  }
ZUM_C2P2R(zumiCbYCr422ToYCbCr420_8u_C2P2R, kCbYCr422, kYCbCr420, kTwoRows)
ZUM_C2P2R(zumiYCbCr422ToYCbCr411_8u_C2P2R, kYCbCr422, kYCbCr411, kAnyHeight)
ZUM_C2P2R(zumiYCbCr422ToYCbCr420_8u_C2P2R, kYCbCr422, kYCbCr420, kTwoRows)

#define ZUM_P3C2R(name, from, to, height) \
  ZUM_EXPORT(name, ThreeSteppedPlanes<const Zum8u>, Pixels<Zum8u>, convert(from, to, height, src, dst, roi))
ZUM_P3C2R(zumiYCbCr411ToYCbCr422_8u_P3C2R, kYCbCr411, kYCbCr422, kAnyHeight)
ZUM_P3C2R(zumiYCbCr411ToYCrCb422_8u_P3C2R, kYCbCr411, kYCrCb422, kAnyHeight)
ZUM_P3C2R(zumiYCbCr422ToYCrCb422_8u_P3C2R, kYCbCr422, kYCrCb422, kAnyHeight)
ZUM_P3C2R(zumiYCbCr422_8u_P3C2R, kYCbCr422, kYCbCr422, kOneRow)
ZUM_P3C2R(zumiYCrCb420ToCbYCr422_8u_P3C2R, kYCrCb420, kCbYCr422, kTwoRows)
ZUM_P3C2R(zumiYCrCb420ToYCbCr422_8u_P3C2R, kYCrCb420, kYCbCr422, kTwoRows)

#define ZUM_P2C2R(name, from, to, height)                                                                            \
  ZumStatus name(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr, int srcCbCrStep, Zum8u* pDst, int dstStep, \
                 ZumiSize roi) {                                                                                     \
    return convert(from, to, height, SemiPlanar<const Zum8u>{{pSrcY, srcYStep}, {pSrcCbCr, srcCbCrStep}},            \
                   Pixels{pDst, dstStep}, roi);                                                                      \
  }
ZUM_P2C2R(zumiYCbCr411ToYCbCr422_8u_P2C2R, kYCbCr411, kYCbCr422, kAnyHeight)
ZUM_P2C2R(zumiYCbCr420ToCbYCr422_8u_P2C2R, kYCbCr420, kCbYCr422, kTwoRows)
ZUM_P2C2R(zumiYCbCr420ToYCbCr422_8u_P2C2R, kYCbCr420, kYCbCr422, kTwoRows)

#define ZUM_P3R(name, from, to, height) \
  ZUM_EXPORT(name, ThreeSteppedPlanes<const Zum8u>, ThreeSteppedPlanes<Zum8u>, convert(from, to, height, src, dst, roi))
ZUM_P3R(zumiYCbCr411ToYCbCr420_8u_P3R, kYCbCr411, kYCbCr420, kTwoRows)
ZUM_P3R(zumiYCbCr411ToYCbCr422_8u_P3R, kYCbCr411, kYCbCr422, kAnyHeight)
ZUM_P3R(zumiYCbCr411ToYCrCb422_8u_P3R, kYCbCr411, kYCrCb422, kAnyHeight)
ZUM_P3R(zumiYCbCr420ToYCbCr422_8u_P3R, kYCbCr420, kYCbCr422, kTwoRows)
ZUM_P3R(zumiYCbCr422ToYCbCr411_8u_P3R, kYCbCr422, kYCbCr411, kAnyHeight)
ZUM_P3R(zumiYCbCr422ToYCbCr420_8u_P3R, kYCbCr422, kYCbCr420, kTwoRows)
ZUM_P3R(zumiYCrCb420ToYCbCr422_8u_P3R, kYCrCb420, kYCbCr422, kTwoRows)

#define ZUM_P3P2R(name, from, to, height)                                                                       \
  ZumStatus name(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY, int dstYStep, Zum8u* pDstCbCr, \
                 int dstCbCrStep, ZumiSize roi) {                                                               \
    return convert(from, to, height, planes3(pSrc, srcStep),                                                    \
                   SemiPlanar<Zum8u>{{pDstY, dstYStep}, {pDstCbCr, dstCbCrStep}}, roi);                         \
  }
ZUM_P3P2R(zumiYCbCr411ToYCbCr420_8u_P3P2R, kYCbCr411, kYCbCr420, kTwoRows)
ZUM_P3P2R(zumiYCbCr411_8u_P3P2R, kYCbCr411, kYCbCr411, kAnyHeight)
ZUM_P3P2R(zumiYCbCr420ToYCbCr411_8u_P3P2R, kYCbCr420, kYCbCr411, kTwoRows)
ZUM_P3P2R(zumiYCbCr420_8u_P3P2R, kYCbCr420, kYCbCr420, kTwoRows)
ZUM_P3P2R(zumiYCbCr422ToYCbCr411_8u_P3P2R, kYCbCr422, kYCbCr411, kAnyHeight)
ZUM_P3P2R(zumiYCbCr422ToYCbCr420_8u_P3P2R, kYCbCr422, kYCbCr420, kTwoRows)
ZUM_P3P2R(zumiYCrCb420ToYCbCr411_8u_P3P2R, kYCrCb420, kYCbCr411, kTwoRows)
ZUM_P3P2R(zumiYCrCb420ToYCbCr420_8u_P3P2R, kYCrCb420, kYCbCr420, kTwoRows)

#define ZUM_P2P3R(name, from, to, height)                                                                        \
  ZumStatus name(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr, int srcCbCrStep, Zum8u* const pDst[3], \
                 const int dstStep[3], ZumiSize roi) {                                                           \
    return convert(from, to, height, SemiPlanar<const Zum8u>{{pSrcY, srcYStep}, {pSrcCbCr, srcCbCrStep}},        \
                   planes3(pDst, dstStep), roi);                                                                 \
  }
ZUM_P2P3R(zumiYCbCr411ToYCbCr420_8u_P2P3R, kYCbCr411, kYCbCr420, kTwoRows)
ZUM_P2P3R(zumiYCbCr411ToYCbCr422_8u_P2P3R, kYCbCr411, kYCbCr422, kAnyHeight)
ZUM_P2P3R(zumiYCbCr411ToYCrCb420_8u_P2P3R, kYCbCr411, kYCrCb420, kTwoRows)
ZUM_P2P3R(zumiYCbCr411_8u_P2P3R, kYCbCr411, kYCbCr411, kAnyHeight)
ZUM_P2P3R(zumiYCbCr420ToYCbCr411_8u_P2P3R, kYCbCr420, kYCbCr411, kTwoRows)
ZUM_P2P3R(zumiYCbCr420ToYCbCr422_8u_P2P3R, kYCbCr420, kYCbCr422, kTwoRows)
// Not what its name says: the planes are Cb and Cr.
ZUM_P2P3R(zumiYCbCr420ToYCrCb420_8u_P2P3R, kYCbCr420, kYCbCr420, kTwoRows)
ZUM_P2P3R(zumiYCbCr420_8u_P2P3R, kYCbCr420, kYCbCr420, kTwoRows)

#endif  // HWY_ONCE
