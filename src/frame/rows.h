// Where rows start. A step is used here and nowhere else: what a row kernel sees is a row.
#ifndef ZUM_FRAME_ROWS_H
#define ZUM_FRAME_ROWS_H

#include <array>
#include <cstddef>
#include <type_traits>

#include "zumcc.h"

namespace zum {

// The rows of one plane. Steps are bytes, whatever the sample type, and may be negative or zero.
template <class T>
struct Rows {
  T* base;
  std::ptrdiff_t step;

  T* row(int r) const {
    using Byte = std::conditional_t<std::is_const_v<T>, const char, char>;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + r * step);
  }
};

// One row of each of n planes.
template <class T, std::size_t n>
using PlaneRow = std::array<T*, n>;

// The rows of n planes of the same height.
template <class T, std::size_t n>
struct PlaneRows {
  std::array<Rows<T>, n> plane;

  PlaneRow<T, n> row(int r) const {
    PlaneRow<T, n> result;
    for (std::size_t i = 0; i < n; ++i) result[i] = plane[i].row(r);
    return result;
  }
};

// The rows of three planes of one size. Their row pairs are pairs in every plane.
template <class T>
struct FullPlaneRows : PlaneRows<T, 3> {};

// Two rows: of luma or of interleaved pixels, or of several planes each.
template <class Row>
struct PairOfRows {
  Row upper, lower;
};
template <class T>
using RowPair = PairOfRows<T*>;

// Two rows of luma and the chroma rows that they share.
template <class T>
struct RowPair420 {
  RowPair<T> luma;
  T* cb;
  T* cr;
};

template <class T>
RowPair<T> rowPair(const Rows<T>& rows, int pair) {
  return {rows.row(2 * pair), rows.row(2 * pair + 1)};
}

template <class T>
RowPair420<T> rowPair(const PlaneRows<T, 3>& rows, int pair) {
  return {rowPair(rows.plane[0], pair), rows.plane[1].row(pair), rows.plane[2].row(pair)};
}

template <class T>
PairOfRows<PlaneRow<T, 3>> rowPair(const FullPlaneRows<T>& rows, int pair) {
  return {rows.row(2 * pair), rows.row(2 * pair + 1)};
}

// The upper luma row of a pair with the chroma rows of the pair.
template <class T>
PlaneRow<T, 3> upperRow(const PlaneRows<T, 3>& rows, int pair) {
  return {rows.plane[0].row(2 * pair), rows.plane[1].row(pair), rows.plane[2].row(pair)};
}

// The step of an image that is counted in 16-bit samples: an odd one loses its low bit.
constexpr int wholeSamples(int step) { return step & ~1; }

}  // namespace zum

#endif
