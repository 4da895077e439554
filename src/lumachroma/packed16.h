// What the decoders to 16-bit pixels, plain and dithered, share outside of the instruction sets.
#ifndef ZUM_LUMACHROMA_PACKED16_H
#define ZUM_LUMACHROMA_PACKED16_H

#include "frame/rows.h"

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

}  // namespace zum

// An exported function: who converts it, to which model. Where it is used, kernelsOf(model) gives the kernels and
// target(pDst, dstStep) the destination for a conversion.
#define ZUM_PACKED16(name, Source, Step, conversion, model)                                        \
  ZumStatus name(Source pSrc, Step srcStep, Zum16u* pDst, int dstStep, ZumiSize roi) {             \
    return conversion(kernelsOf(Packed16Model::model), pSrc, srcStep, target(pDst, dstStep), roi); \
  }
#define ZUM_PACKED16_FROM_PIXELS(name, conversion, model) ZUM_PACKED16(name, const Zum8u*, int, conversion, model)
#define ZUM_PACKED16_FROM_PLANES(name, conversion, model) \
  ZUM_PACKED16(name, const Zum8u* const*, int, conversion, model)
#define ZUM_PACKED16_FROM_STEPPED_PLANES(name, conversion, model) \
  ZUM_PACKED16(name, const Zum8u* const*, const int*, conversion, model)

#endif
