// Image arguments as the caller gave them, and the checks that every function makes of them.
#ifndef ZUM_FRAME_ARGUMENTS_H
#define ZUM_FRAME_ARGUMENTS_H

#include <utility>

#include "frame/rows.h"

namespace zum {

// One image of interleaved pixels.
template <class T>
struct Pixels {
  T* base;
  int step;

  bool missing() const { return !base; }
  bool planeMissing() const { return false; }
  Rows<T> rows() const { return {base, step}; }
};

template <class T>
Pixels(T*, int) -> Pixels<T>;

// One image of 16-bit samples whose steps are counted in samples.
template <class T>
Pixels<T> samples16(T* base, int step) {
  return {base, wholeSamples(step)};
}

// One image of signed samples, seen as their distances from the lowest: see the layout FromLowest.
inline Pixels<Zum16u> fromLowest(Zum16s* base, int step) { return samples16(reinterpret_cast<Zum16u*>(base), step); }
inline Pixels<const Zum16u> fromLowest(const Zum16s* base, int step) {
  return samples16(reinterpret_cast<const Zum16u*>(base), step);
}

// One image of single-precision samples whose steps are counted in samples.
template <class T>
Pixels<T> samples32(T* base, int step) {
  return {base, step & ~3};
}

// An array of n planes, with one step for all or an array of steps.
template <class T, std::size_t n, class Step>
struct Planes {
  T* const* base;
  Step step;

  bool missing() const { return !base; }

  bool planeMissing() const {
    for (std::size_t i = 0; i < n; ++i) {
      if (!base[i]) return true;
    }
    return false;
  }

  PlaneRows<T, n> rows() const {
    PlaneRows<T, n> result;
    for (std::size_t i = 0; i < n; ++i) result.plane[i] = {base[i], stepOf(step, i)};
    return result;
  }

 private:
  static int stepOf(int shared, std::size_t) { return shared; }
  static int stepOf(const int* steps, std::size_t i) { return steps[i]; }
};

template <class T>
using ThreePlanes = Planes<T, 3, int>;
template <class T>
using ThreeSteppedPlanes = Planes<T, 3, const int*>;
template <class T>
using FourPlanes = Planes<T, 4, int>;

template <class T, class Step>
Planes<T, 3, Step> planes3(T* const* base, Step step) {
  return {base, step};
}

// Three planes of one size, with one step, where they are worked on in row pairs.
template <class T>
struct FullPlanes : ThreePlanes<T> {
  FullPlaneRows<T> rows() const { return {ThreePlanes<T>::rows()}; }
};

// A tight image of interleaved pixels: its rows follow one another without a gap.
template <class T>
struct TightPixels {
  T* base;
  int samples;  // of a pixel
  std::ptrdiff_t width;

  bool missing() const { return !base; }
  bool planeMissing() const { return false; }
  Rows<T> rows() const { return {base, width * samples * static_cast<std::ptrdiff_t>(sizeof(T))}; }
};

template <class T>
TightPixels(T*, int, int) -> TightPixels<T>;

// The rows of three planes, the second and third with a step of their own.
template <class T>
PlaneRows<T, 3> rowsOf3(T* const* planes, std::ptrdiff_t step, std::ptrdiff_t chromaStep) {
  return {{{{planes[0], step}, {planes[1], chromaStep}, {planes[2], chromaStep}}}};
}

// Three tight planes of bytes of one size.
template <class T>
struct TightFullPlanes : ThreePlanes<T> {
  std::ptrdiff_t width;

  FullPlaneRows<T> rows() const { return {rowsOf3(this->base, width, width)}; }
};

template <class T>
TightFullPlanes<T> tightFullPlanes3(T* const* base, int width) {
  return {{base, 0}, width};
}

// What a chroma plane of half the width has for a last odd pixel.
enum class OddPixel { kNone, kOwnSample };

// Three tight planes of bytes, the second and third of half the width.
template <class T, OddPixel last>
struct TightHalfPlanes : ThreePlanes<T> {
  std::ptrdiff_t width;

  PlaneRows<T, 3> rows() const {
    const std::ptrdiff_t half = width / 2 + (last == OddPixel::kOwnSample ? width % 2 : 0);
    return rowsOf3(this->base, width, half);
  }
};

template <OddPixel last, class T>
TightHalfPlanes<T, last> tightHalfPlanes3(T* const* base, int width) {
  return {{base, 0}, width};
}

// Planes in the order Y, Cr, Cb, with a step each, seen as Y, Cb, Cr: each goes with its step.
template <class T>
struct ExchangedChroma : ThreeSteppedPlanes<T> {
  PlaneRows<T, 3> rows() const {
    PlaneRows<T, 3> result = ThreeSteppedPlanes<T>::rows();
    std::swap(result.plane[1], result.plane[2]);
    return result;
  }
};

inline bool below(ZumiSize size, ZumiSize minimum) {
  return size.width < minimum.width || size.height < minimum.height;
}

// The checks in their order: the arguments themselves, the size, the planes inside the arguments.
template <class Src, class Dst>
ZumStatus check(const Src& src, const Dst& dst, ZumiSize roi, ZumiSize minimum = {1, 1}) {
  if (src.missing() || dst.missing()) return zumErrNullPtr;
  if (below(roi, minimum)) return zumErrSize;
  if (src.planeMissing() || dst.planeMissing()) return zumErrNullPtr;
  return zumOk;
}

// The checks of the functions that look at the planes before the size.
template <class Src, class Dst>
ZumStatus checkPlanesFirst(const Src& src, const Dst& dst, ZumiSize roi, ZumiSize minimum) {
  if (src.missing() || dst.missing() || src.planeMissing() || dst.planeMissing()) return zumErrNullPtr;
  return below(roi, minimum) ? zumErrSize : zumOk;
}

// The checks of the functions that check their steps too, last.
template <class T, class U>
ZumStatus checkWithSteps(const Pixels<T>& src, const Pixels<U>& dst, ZumiSize roi) {
  if (const ZumStatus status = check(src, dst, roi)) return status;
  return src.step < 1 || dst.step < 1 ? zumErrStep : zumOk;
}

// The checks of the functions that look at planes first, and at their steps before the size.
template <class Src, class Dst>
ZumStatus checkStepsBeforeSize(const Src& src, const Dst& dst, ZumiSize roi) {
  if (src.missing() || dst.missing() || src.planeMissing() || dst.planeMissing()) return zumErrNullPtr;
  if (src.step < 1 || dst.step < 1) return zumErrStep;
  return below(roi, {1, 1}) ? zumErrSize : zumOk;
}

// The checks of the functions that look at the planes before the size and at the steps last.
template <class Src, class Dst>
ZumStatus checkPlanesFirstWithSteps(const Src& src, const Dst& dst, ZumiSize roi) {
  if (const ZumStatus status = checkPlanesFirst(src, dst, roi, {1, 1})) return status;
  return src.step < 1 || dst.step < 1 ? zumErrStep : zumOk;
}

}  // namespace zum

#endif
