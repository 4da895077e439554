// A mosaic: one sample a pixel, behind a colour filter array.
#ifndef ZUM_DEMOSAIC_MOSAIC_H
#define ZUM_DEMOSAIC_MOSAIC_H

#include "frame/rows.h"

namespace zum {

// Where red stands in each tile of two by two pixels. Blue stands across, green on the other diagonal; red and blue are
// the colour sites.
struct Phase {
  int column, row;

  // As seen from another pixel.
  Phase from(int x, int y) const { return {column ^ (x & 1), row ^ (y & 1)}; }
  bool redRow() const { return row == 0; }
  // The first colour site of the first row.
  int colourColumn() const { return redRow() ? column : column ^ 1; }
};

template <class T>
struct Mosaic {
  Rows<const T> rows;
  ZumiSize size;
  Phase phase;

  const T* at(int x, int y) const { return rows.row(y) + x; }
  // What lies right of and below a pixel.
  Mosaic part(int x, int y, ZumiSize partSize) const { return {{at(x, y), rows.step}, partSize, phase.from(x, y)}; }
};

}  // namespace zum

#endif
