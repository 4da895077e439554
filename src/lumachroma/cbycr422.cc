// RGB and BGR to and from packed CbYCr 4:2:2.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "lumachroma/cbycr422.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "lumachroma/forms-inl.h"
#include "lumachroma/pixel.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- Transfer curves

constexpr double power(double x, int n) { return n == 0 ? 1 : x * power(x, n - 1); }

// The curve of ITU-R BT.709: 1.099 x^0.45 - 0.099 for x of 0.018 and more, 4.5 x below, to the nearest byte. Where the
// power curve passes the middle between two bytes is told without a root, by the 20th power of both sides.
constexpr ByteTable videoCurve() {
  ByteTable table{};
  int y = 0;
  for (int i = 0; i < 256; ++i) {
    const double x = i / 255.0;
    if (x < 0.018) {
      y = (9 * i + (i % 4 == 3)) / 2;  // a half to the nearest even
    } else {
      while (power((y + 0.5) / 255 + 0.099, 20) < power(1.099, 20) * power(x, 9)) ++y;
    }
    table.at[i] = static_cast<std::uint8_t>(y);
  }
  return table;
}

struct VideoCurve {
  static constexpr ByteTable kTable = videoCurve();

  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& v) {
    return {lookUp<kTable>(v.c0), lookUp<kTable>(v.c1), lookUp<kTable>(v.c2)};
  }
  static Pixel apply(const Pixel& p) { return {kTable.at[p.c0], kTable.at[p.c1], kTable.at[p.c2]}; }
};

struct Linear {
  template <class V>
  static HWY_INLINE V apply(const V& v) {
    return v;
  }
};

// ---- RGB to 4:2:2

// Writes the first half of a pair.
void storeFirst(Zum8u* pair, int y, int cb) {
  pair[0] = static_cast<Zum8u>(cb);
  pair[1] = static_cast<Zum8u>(y);
}
void storeSecond(Zum8u* pair, int y, int cr) {
  pair[2] = static_cast<Zum8u>(cr);
  pair[3] = static_cast<Zum8u>(y);
}

// A single pixel.
void storeLast(Zum8u* dst, int x, const Pixel& rgb) {
  storeFirst(dst + 2 * x, lumaOf(rgb, kLumaRounded), (cbSum(rgb) + kChroma1) >> 16);
}

// Exact sums at 32768 times the sample, rounded. Chroma from the first pixel of a pair twice and its neighbours once:
// to the left of it is the second pixel of the pair before, of which a row's first pair has none.
template <class Curve>
class FilteredPairs {
 public:
  HWY_INLINE FilteredPairs() {
    const VI16 none = hn::Zero(Tag<std::int16_t>());
    before_ = {none, none, none};
  }

  HWY_INLINE Luma422 apply(const Channels<VU8>& in) {
    const Channels<VU8> rgb = Curve::apply(in);
    const Halves<VU8> redGreen = zipPairs(rgb.c0, rgb.c1), blueGreen = zipPairs(rgb.c2, rgb.c1);
    const VI16 r = filtered(rgb.c0, before_.c0), g = filtered(rgb.c1, before_.c1), b = filtered(rgb.c2, before_.c2);
    // The factors of the first pixel are not all twice those of its neighbours: two of Cb's and one of Cr's are 1 more.
    return {joined(luma(redGreen.a, blueGreen.a), luma(redGreen.b, blueGreen.b)),
            chroma(r, g, b, dotBytes<1, 1>(blueGreen.a), pairsOf(-1213, -2385), pairsOf(3596, 1)),
            chroma(r, g, b, dotBytes<1, 0>(redGreen.a), pairsOf(3596, -3015), pairsOf(-582, 1))};
  }

 private:
  // before: the second pixels of the pairs in the vector before, and then in this one.
  static HWY_INLINE VI16 filtered(VU8 v, VI16& before) {
    const VI16 second = splitPairs(v).b, left = moveUp(before, second);
    before = second;
    return dotBytes<2, 1>(v) + left;
  }

  static HWY_INLINE VI16 chroma(VI16 r, VI16 g, VI16 b, VI16 rest, VI16 redGreen, VI16 blueRest) {
    const Tag<std::int16_t> d;
    const VI32 offset = all((kChromaOffset << 15) + (1 << 14) - 1);
    const VI32 lower =
        addDots(addDots(offset, hn::InterleaveLower(d, r, g), redGreen), hn::InterleaveLower(d, b, rest), blueRest);
    const VI32 upper =
        addDots(addDots(offset, hn::InterleaveUpper(d, r, g), redGreen), hn::InterleaveUpper(d, b, rest), blueRest);
    return pack(hn::ShiftRight<15>(lower), hn::ShiftRight<15>(upper));
  }

  // 256 times luma from factors 8422, 16515 and 3212 as 128 times a byte and another byte; green's takes two.
  static HWY_INLINE VU16 luma(VU8 redGreen, VU8 blueGreen) {
    static_assert(128 * 66 - 26 == 8422 && 128 * (62 + 67) + 3 == 16515 && 128 * 25 + 12 == 3212);
    const VI16 upper = dotBytes<66, 62>(redGreen) + dotBytes<25, 67>(blueGreen);
    const VI16 lower = dotBytes<-26, 3>(redGreen) + dotBytes<12, 0>(blueGreen);
    const VI16 offset = all<std::int16_t>((kLumaOffset << 8) + (1 << 7));
    return hn::BitCast(Tag<std::uint16_t>(), upper + hn::ShiftRight<7>(lower) + offset);
  }
  static HWY_INLINE VU8 joined(VU16 even, VU16 odd) {
    return hn::BitCast(Tag<std::uint8_t>(), hn::Or(hn::ShiftRight<8>(even), hn::And(odd, all<std::uint16_t>(0xFF00))));
  }

  Channels<VI16> before_;
};

// Pairs, then a single pixel unless the width is a multiple of 4: the last of an odd width, or the one behind the row.
template <class Curve>
HWY_INLINE void encodeFiltered(const Zum8u* src, Zum8u* dst, int width) {
  const int pairs = width & ~1;
  columns<C3, FilteredPairs<Curve>, CbYCrC2>(src, dst, 0, pairs);
  if (width % 4) storeLast(dst, pairs, Curve::apply(C3::pixel(src, pairs)));
}

void myRGBToCbYCr422_8u_C3C2R(const Zum8u* src, Zum8u* dst, int width) { encodeFiltered<Linear>(src, dst, width); }
void myRGBToCbYCr422Gamma_8u_C3C2R(const Zum8u* src, Zum8u* dst, int width) {
  encodeFiltered<VideoCurve>(src, dst, width);
}

// ---- BGR to 4:2:2

// Terms at 128 times the sample truncated, their sum rounded; chroma of the mean of a pair.
struct TruncatedTermsOfPairs {
  static HWY_INLINE Luma422 apply(const Channels<VU8>& rgb) {
    const VI16 r = dotBytes<64, 64>(rgb.c0), g = dotBytes<64, 64>(rgb.c1), b = dotBytes<64, 64>(rgb.c2);
    return {roundedLuma<8422, 16515, 3212, kLumaOffset>(rgb),
            RoundedSum::chroma(mulHigh(-9699, r) + mulHigh(-19071, g) + mulHigh(28770, b)),
            RoundedSum::chroma(mulHigh(28770, r) + mulHigh(-24117, g) + mulHigh(-4653, b))};
  }
};

// Blocks of 8, exact pairs, and a last pixel by the order of its bytes as if it were R, G, B.
void myBGRToCbYCr422_8u_AC4C2R(const Zum8u* src, Zum8u* dst, int width) {
  const int blocks = width & ~7, pairs = width & ~1;
  columns<Bgra, TruncatedTermsOfPairs, CbYCrC2>(src, dst, 0, blocks);
  for (int x = blocks; x < pairs; x += 2) {
    const Pixel first = Bgra::pixel(src, x), second = Bgra::pixel(src, x + 1), sum = first + second;
    storeFirst(dst + 2 * x, lumaOf(first, kLumaRounded), (cbSum(sum) + kChroma2) >> 17);
    storeSecond(dst + 2 * x, lumaOf(second, kLumaRounded), (crSum(sum) + kChroma2 - 2) >> 17);
  }
  if (pairs < width) storeLast(dst, pairs, Packed4::pixel(src, pairs));
}

// ---- 4:2:2 to RGB and BGR

// Blocks of 8, then single pixels. Half a pair at the end has its Cb before its Y; it takes Cr from the pair before,
// and where there is none, at a width of 1, its own chroma byte again.
template <class Dst, class Block, class... Alpha>
HWY_INLINE void decodeRow(const Zum8u* src, Zum8u* dst, int width, const Block& block, Alpha... alpha) {
  const int blocks = width & ~7;
  columns<CbYCrC2, Block, Dst>(src, dst, 0, blocks, block);
  for (int x = blocks; x < width; ++x) {
    const Zum8u* pair = src + 2 * (x & ~1);
    const int cb = pair[0], cr = (x | 1) < width ? pair[2] : x > 0 ? pair[-2] : cb;
    Dst::setPixel(dst, x, FinePlanarRoundedPixel::rgb(src[2 * x + 1], cb, cr), alpha...);
  }
}

void myCbYCr422ToRGB_8u_C2C3R(const Zum8u* src, Zum8u* dst, int width) {
  decodeRow<C3>(src, dst, width, OnPairs<Rounded16>());
}
void myCbYCr422ToBGR_8u_C2AC4R(const Zum8u* src, Zum8u* dst, int width, Zum8u alpha) {
  decodeRow<Bgra>(src, dst, width, WithAlpha<OnPairs<Rounded16>>{all(alpha)}, alpha);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(myRGBToCbYCr422_8u_C3C2R);
HWY_EXPORT(myRGBToCbYCr422Gamma_8u_C3C2R);
HWY_EXPORT(myBGRToCbYCr422_8u_AC4C2R);
HWY_EXPORT(myCbYCr422ToRGB_8u_C2C3R);
HWY_EXPORT(myCbYCr422ToBGR_8u_C2AC4R);

}  // namespace zum

using namespace zum;

ZUM_EXPORT(zumiRGBToCbYCr422_8u_C3C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(myRGBToCbYCr422_8u_C3C2R), src, dst, roi))

ZumStatus zumiRGBToCbYCr422Gamma_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi) {
  const Pixels src{pSrc, srcStep};
  const Pixels dst{pDst, dstStep};
  if (const ZumStatus status = checkWithSteps(src, dst, roi)) return status;
  serialRows(ZUM_KERNEL(myRGBToCbYCr422Gamma_8u_C3C2R), src.rows(), dst.rows(), roi);
  return zumOk;
}

ZUM_EXPORT(zumiBGRToCbYCr422_8u_AC4C2R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(myBGRToCbYCr422_8u_AC4C2R), src, dst, roi))
ZUM_EXPORT(zumiCbYCr422ToRGB_8u_C2C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertRows(ZUM_KERNEL(myCbYCr422ToRGB_8u_C2C3R), src, dst, roi))
ZUM_EXPORT_WITH(zumiCbYCr422ToBGR_8u_C2C4R, Pixels<const Zum8u>, Pixels<Zum8u>, Zum8u alpha,
                convertRows(ZUM_KERNEL(myCbYCr422ToBGR_8u_C2AC4R), src, dst, roi, alpha))

#endif  // HWY_ONCE
