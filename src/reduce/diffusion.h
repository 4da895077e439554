// Error diffusion: what a pixel's level leaves of its value goes, in parts, to pixels behind and below it.
#ifndef ZUM_REDUCE_DIFFUSION_H
#define ZUM_REDUCE_DIFFUSION_H

#include "frame/rows.h"
#include "reduce/depths.h"

namespace zum {

// Floyd-Steinberg, Jarvis-Judice-Ninke or Stucki. The arguments have been checked.
template <class Src, class Dst>
ZumStatus diffuse(const Rows<const Src>& src, const Rows<Dst>& dst, ZumiSize size, Layout layout, ZumDitherType dither,
                  int noise, int levels);

}  // namespace zum

#endif
