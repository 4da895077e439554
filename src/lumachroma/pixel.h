// The luma-chroma forms of single pixels, for the columns behind the blocks and at odd edges: plain integers at 65536
// times the sample. BT.601 in studio range, as in forms-inl.h.
#ifndef ZUM_LUMACHROMA_PIXEL_H
#define ZUM_LUMACHROMA_PIXEL_H

#include "frame/pixel.h"

namespace zum {

// Added to a luma sum before its shift by 16: 16.5 and 16 times 65536.
constexpr int kLumaRounded = 1081344;
constexpr int kLumaTruncated = 1048576;

// Added to a chroma sum of one pixel, of two, and of four before its shift: 128.5 times the scale, but for the last,
// which is 128.125 times the scale.
constexpr int kChroma1 = 8421376, kChroma2 = 16842752, kChroma4 = 33587200;

constexpr int lumaOf(const Pixel& rgb, int offset) {
  return (16843 * rgb.c0 + 33030 * rgb.c1 + 6423 * rgb.c2 + offset) >> 16;
}
constexpr int cbSum(const Pixel& rgb) { return -9699 * rgb.c0 - 19071 * rgb.c1 + 28770 * rgb.c2; }
constexpr int crSum(const Pixel& rgb) { return 28770 * rgb.c0 - 24117 * rgb.c1 - 4653 * rgb.c2; }

// R, G, B of a pixel whose chroma is centred at 0 first.
template <int kY, int kRedFromCr, int kGreenFromCb, int kGreenFromCr, int kBlueFromCb, int kRounding = 0>
struct CentredPixel {
  static constexpr Pixel rgb(int y, int cb, int cr) {
    const int w = kY * (y - 16) + kRounding, u = cb - 128, v = cr - 128;
    return {saturate8((w + kRedFromCr * v) >> 16), saturate8((w + kGreenFromCb * u + kGreenFromCr * v) >> 16),
            saturate8((w + kBlueFromCb * u) >> 16)};
  }
};
using FinePixel = CentredPixel<76284, 104595, -25690, -53281, 132186>;
using FineRoundedPixel = CentredPixel<76284, 104595, -25690, -53281, 132186, 32768>;
using FinePlanarPixel = CentredPixel<76282, 104593, -25689, -53279, 132184>;
using FinePlanarRoundedPixel = CentredPixel<76282, 104593, -25689, -53279, 132184, 32768>;

// The same matrix with its offsets folded, and rounded on their own.
struct FoldedPixel {
  static constexpr Pixel rgb(int y, int cb, int cr) {
    const int w = 76284 * y;
    return {saturate8((w + 104595 * cr - 14608761) >> 16), saturate8((w - 53281 * cr - 25690 * cb + 8887730) >> 16),
            saturate8((w + 132186 * cb - 18140365) >> 16)};
  }
};

// R, G, B from YUV of full range, the factors at 65536 times.
template <int kRedFromV, int kGreenFromU, int kGreenFromV, int kBlueFromU, int kRounding = 0>
struct YuvPixel {
  static constexpr Pixel rgb(int y, int uByte, int vByte) {
    const int w = 65536 * y + kRounding, u = uByte - 128, v = vByte - 128;
    return {saturate8((w + kRedFromV * v) >> 16), saturate8((w + kGreenFromU * u + kGreenFromV * v) >> 16),
            saturate8((w + kBlueFromU * u) >> 16)};
  }
};
using FineYuvPixel = YuvPixel<74711, -25821, -38076, 133169>;
using RoundedYuvPixel = YuvPixel<74711, -25821, -38076, 133169, 32768>;
using CoarseYuvPixel = YuvPixel<8 * 9338, 8 * -3227, 8 * -4759, 8 * 16645>;

}  // namespace zum

#endif
