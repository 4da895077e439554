// What the decoders to 16-bit pixels, plain and dithered, share outside of the instruction sets.
#ifndef ZUM_LUMACHROMA_PACKED16_H
#define ZUM_LUMACHROMA_PACKED16_H

#include "frame/exports.h"

namespace zum {

enum class Packed16Model { kRGB565, kBGR565, kRGB555, kBGR555, kRGB444, kBGR444 };

// Rows of a dithered image, and their numbers, which tell their thresholds.
struct DitheredRow {
  Zum16u* pixels;
  int number;
};
struct DitheredRowPair {
  RowPair<Zum16u> pixels;
  int number;  // of the upper row
};
struct DitheredRows {
  Rows<Zum16u> rows;
  DitheredRow row(int r) const { return {rows.row(r), r}; }
};
inline DitheredRowPair rowPair(const DitheredRows& dst, int pair) { return {rowPair(dst.rows, pair), 2 * pair}; }

// The kernels of one model by source, for rows of the destination as Row and RowPair tell them.
template <class Row, class RowPair>
struct Packed16Kernels {
  void (*c3)(const Zum8u* src, Row dst, int width);
  void (*p3)(const PlaneRow<const Zum8u, 3>& src, Row dst, int width);
  void (*c2)(const Zum8u* src, Row dst, int width);
  void (*planes422)(const PlaneRow<const Zum8u, 3>& src, Row dst, int width);
  void (*planes420)(const RowPair420<const Zum8u>& src, RowPair dst, int width);
  void (*planesYuv420)(const RowPair420<const Zum8u>& src, RowPair dst, int width);
  void (*lastRowYuv420)(const PlaneRow<const Zum8u, 3>& src, Row dst, int width);
};

// Conversions of a source that are the same for both.
template <class Kernels, class Dst>
ZumStatus fromP3(const Kernels& kernels, const ThreePlanes<const Zum8u>& src, const Dst& dst, ZumiSize roi) {
  return convertRows(kernels.p3, src, dst, roi);
}
template <class Kernels, class Dst>
ZumStatus from422(const Kernels& kernels, const ThreeSteppedPlanes<const Zum8u>& src, const Dst& dst, ZumiSize roi) {
  return convertRows(kernels.planes422, src, dst, roi);
}
template <class Kernels, class Dst>
ZumStatus from420(const Kernels& kernels, const ThreeSteppedPlanes<const Zum8u>& src, const Dst& dst, ZumiSize roi) {
  return convertRowPairsAndLast(kernels.planes420, kernels.planes422, src, dst, roi);
}
template <class Kernels, class Dst>
ZumStatus fromYuv420(const Kernels& kernels, const ThreeSteppedPlanes<const Zum8u>& src, const Dst& dst, ZumiSize roi) {
  return convertRowPairsAndLast(kernels.planesYuv420, kernels.lastRowYuv420, src, dst, roi);
}

}  // namespace zum

// Exported functions: who converts them, to which model. Where they are used, kernelsOf(model) gives the kernels and
// target(dst) the destination for a conversion.
#define ZUM_PACKED16(name, Source, conversion, model) \
  ZUM_EXPORT(name, Source, Pixels<Zum16u>, conversion(kernelsOf(Packed16Model::model), src, target(dst), roi))
#define ZUM_PACKED16_FROM_PIXELS(name, conversion, model) ZUM_PACKED16(name, Pixels<const Zum8u>, conversion, model)
#define ZUM_PACKED16_FROM_PLANES(name, conversion, model) \
  ZUM_PACKED16(name, ThreePlanes<const Zum8u>, conversion, model)
#define ZUM_PACKED16_FROM_STEPPED_PLANES(name, conversion, model) \
  ZUM_PACKED16(name, ThreeSteppedPlanes<const Zum8u>, conversion, model)

#endif
