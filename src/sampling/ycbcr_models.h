// Luma-chroma images of shared chroma, as the conversions among them see them.
#ifndef ZUM_SAMPLING_YCBCR_MODELS_H
#define ZUM_SAMPLING_YCBCR_MODELS_H

#include "sampling/planes.h"

namespace zum {

// What pixels have one chroma pair: two in a row, two by two, four in a row.
enum class Sampling { k422, k420, k411 };

// What a model's name tells. The order of chroma is that of planes 1 and 2, or of the bytes of a packed pair.
struct YCbCrModel {
  Sampling sampling;
  bool crFirst;
  bool chromaFirst;  // packed: chroma stands before its luma

  constexpr int columns() const { return sampling == Sampling::k411 ? 4 : 2; }
  constexpr int rows() const { return sampling == Sampling::k420 ? 2 : 1; }
  constexpr int bitsPerPixel() const { return sampling == Sampling::k422 ? 16 : 12; }
};
constexpr YCbCrModel kYCbCr422{Sampling::k422, false, false}, kYCrCb422{Sampling::k422, true, false},
    kCbYCr422{Sampling::k422, false, true}, kYCbCr420{Sampling::k420, false, false},
    kYCrCb420{Sampling::k420, true, false}, kYCbCr411{Sampling::k411, false, false};

enum class YCbCrLayout { kPacked = 1, kSemiPlanar, kPlanar };  // the number of planes

// The planes of an image: packed rows; or luma and chroma pairs; or luma and the two of chroma, which
// may be exchanged on the way from the arguments.
template <class T>
struct YCbCrImage {
  YCbCrModel model;
  YCbCrLayout layout;
  Rows<T> plane[3];
};

template <class T>
YCbCrImage<T> imageOf(const YCbCrModel& model, const Pixels<T>& packed, bool) {
  return {model, YCbCrLayout::kPacked, {packed.rows()}};
}
template <class T>
YCbCrImage<T> imageOf(const YCbCrModel& model, const SemiPlanar<T>& planes, bool) {
  return {model, YCbCrLayout::kSemiPlanar, {planes.luma.rows(), planes.pairs.rows()}};
}
template <class T>
YCbCrImage<T> imageOf(const YCbCrModel& model, const Planes<T, 3, const int*>& planes, bool exchanged) {
  const auto rows = [&](int p) { return Rows<T>{planes.base[p], planes.step[p]}; };
  return {model, YCbCrLayout::kPlanar, {rows(0), rows(exchanged ? 2 : 1), rows(exchanged ? 1 : 2)}};
}

}  // namespace zum

#endif
