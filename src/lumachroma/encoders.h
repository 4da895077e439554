// The row kernels that encode pixels of one source layout: what the functions of that source choose from.
#ifndef ZUM_LUMACHROMA_ENCODERS_H
#define ZUM_LUMACHROMA_ENCODERS_H

#include "frame/rows.h"

namespace zum {

template <class T>
struct Encoders {
  void (*packed422)(const T* src, Zum8u* dst, int width);
  void (*planes422)(const T* src, const PlaneRow<Zum8u, 3>& dst, int width);
  void (*planes420)(RowPair<const T> src, const RowPair420<Zum8u>& dst, int width);
  void (*planes411)(const T* src, const PlaneRow<Zum8u, 3>& dst, int width);
  void (*luma)(const T* src, Zum8u* dst, int width);
};

}  // namespace zum

#endif
