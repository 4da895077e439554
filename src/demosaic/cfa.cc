// Demosaic: one sample a pixel, behind a colour filter array, to RGB.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaic/cfa.cc"
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "demosaic/mosaic.h"
#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/layouts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Two samples: (a + b + 1) >> 1, and in the lowest bit of `odd` whether that was rounded.
template <class V>
struct Pair {
  V average, odd;
};

template <class V>
HWY_INLINE Pair<V> pairOf(V a, V b) {
  return {hn::AverageRound(a, b), hn::Xor(a, b)};
}

// (a + b + c + d + 2) >> 2 of the samples of two pairs. The average of their averages is that, or one more where it was
// rounded up after one of them had been.
template <class V>
HWY_INLINE V averageOf(const Pair<V>& p, const Pair<V>& q) {
  const V twice = hn::And(hn::Xor(p.average, q.average), hn::Or(p.odd, q.odd));
  return hn::Sub(hn::AverageRound(p.average, q.average), hn::And(twice, hn::Set(hn::DFromV<V>(), 1)));
}

template <class V>
HWY_INLINE V absoluteDifference(V a, V b) {
  return hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
}

// A vector of samples, loaded once. Most of them are operands of two instructions, and the compiler would rather load
// them for each.
template <class T>
HWY_INLINE Vec<T> samples(const T* row) {
  Vec<T> v = hn::LoadU(Tag<T>(), row);
#if HWY_TARGET <= HWY_AVX2
  asm("" : "+v"(v.raw));
#endif
  return v;
}

// One vector of columns of n rows, the first of them a row of red or of blue sites, at the lanes of the mask. src
// starts two rows above and ends two rows below.
template <bool red, bool edgeSensing, class T, std::size_t n, class Mask>
HWY_INLINE void interpolate(const PlaneRow<const T, n + 4>& src, const PlaneRow<T, n>& dst, std::size_t x,
                            Mask colour) {
  Vec<T> centre[n + 2];
  Pair<Vec<T>> sides[n + 2];
  for (std::size_t i = 0; i < n + 2; ++i) {
    const T* row = src[i + 1] + x;
    centre[i] = samples(row);
    sides[i] = pairOf(samples(row - 1), samples(row + 1));
  }
  for (std::size_t r = 0; r < n; ++r) {
    const std::size_t i = r + 1;
    const Pair<Vec<T>> ends = pairOf(centre[i - 1], centre[i + 1]);
    Vec<T> green = averageOf(sides[i], ends);
    if (edgeSensing) {
      const T* row = src[r + 2] + x;
      const Vec<T> vertical = absoluteDifference(samples(src[r] + x), samples(src[r + 4] + x));
      const Vec<T> horizontal = absoluteDifference(samples(row - 2), samples(row + 2));
      green = hn::IfThenElse(hn::Lt(vertical, horizontal), ends.average, green);
      green = hn::IfThenElse(hn::Gt(vertical, horizontal), sides[i].average, green);
    }
    const Mask sites = r % 2 ? hn::Not(colour) : colour;
    const Vec<T> own = hn::IfThenElse(sites, centre[i], sides[i].average);
    const Vec<T> opposite = hn::IfThenElse(sites, averageOf(sides[i - 1], sides[i + 1]), ends.average);
    green = hn::IfThenElse(sites, green, centre[i]);
    if (red == (r % 2 == 0)) {
      Packed3<T>::store({own, green, opposite}, dst[r] + 3 * x);
    } else {
      Packed3<T>::store({opposite, green, own}, dst[r] + 3 * x);
    }
  }
}

template <class T>
constexpr int kVector = Packed3<T>::kPixels;

// n rows of at least a vector. The last vector may overlap the one before it. The arrays come by value because stores
// of bytes may change all that is not a local variable.
template <bool red, bool edgeSensing, class T, std::size_t n>
void interpolateRows(PlaneRow<const T, n + 4> src, PlaneRow<T, n> dst, int width, int colourColumn) {
  const Tag<T> d;
  // As seen from an even column.
  const auto green = hn::Eq(hn::And(hn::Iota(d, colourColumn), hn::Set(d, 1)), hn::Set(d, 1));
  const auto colour = hn::Not(green);
  for (std::size_t x = 0, last = width - kVector<T>;; x = std::min(x + kVector<T>, last)) {
    interpolate<red, edgeSensing, T, n>(src, dst, x, x % 2 ? green : colour);
    if (x == last) return;
  }
}

// Row pairs, and an odd last row.
template <bool red, class T>
void bayerRect(const Mosaic<T>& mosaic, Rows<T> dst) {
  const Rows<const T> src = mosaic.rows;
  const auto [width, height] = mosaic.size;
  const int colourColumn = mosaic.phase.colourColumn();
  int y = 0;
  for (; y + 2 <= height; y += 2) {
    interpolateRows<red, true, T, 2>(
        {src.row(y - 2), src.row(y - 1), src.row(y), src.row(y + 1), src.row(y + 2), src.row(y + 3)},
        {dst.row(y), dst.row(y + 1)}, width, colourColumn);
  }
  if (y < height) {
    interpolateRows<red, true, T, 1>({src.row(y - 2), src.row(y - 1), src.row(y), src.row(y + 1), src.row(y + 2)},
                                     {dst.row(y)}, width, colourColumn);
  }
}

// The same for rows shorter than a vector, some at a time in a local copy.
template <bool red, class T>
void bayerNarrowRect(const Mosaic<T>& mosaic, Rows<T> dst) {
  constexpr int kRows = 16;
  alignas(HWY_MAX_BYTES) T in[kRows + 4][2 * kVector<T>], out[kRows][3 * kVector<T>];
  const auto [width, height] = mosaic.size;
  for (int y = 0; y < height; y += kRows) {
    const int rows = std::min(kRows, height - y);
    for (int r = 0; r < rows + 4; ++r) copyIn<sizeof in[0]>(in[r], mosaic.at(-2, y + r - 2), (width + 4) * sizeof(T));
    bayerRect<red, T>({{in[2] + 2, sizeof in[0]}, {kVector<T>, rows}, mosaic.phase}, {out[0], sizeof out[0]});
    for (int r = 0; r < rows; ++r) copyOut<sizeof out[0]>(dst.row(y + r), out[r], 3 * width * sizeof(T));
  }
}

template <bool red, class T>
void bayerBorderRow(const T* above, const T* row, const T* below, T* dst, int width, int colourColumn) {
  if (width >= kVector<T>) {
    interpolateRows<red, false, T, 1>({above, above, row, below, below}, {dst}, width, colourColumn);
    return;
  }
  alignas(HWY_MAX_BYTES) T in[3][2 * kVector<T>], out[3 * kVector<T>];
  const T* const rows[3] = {above - 1, row - 1, below - 1};
  for (int r = 0; r < 3; ++r) copyIn<sizeof in[0]>(in[r], rows[r], (width + 2) * sizeof(T));
  interpolateRows<red, false, T, 1>({in[0] + 1, in[0] + 1, in[1] + 1, in[2] + 1, in[2] + 1}, {out}, kVector<T>,
                                    colourColumn);
  copyOut<sizeof out>(dst, out, 3 * width * sizeof(T));
}

template <class T>
void bayerRect(const Mosaic<T>& mosaic, Rows<T> dst) {
  const bool narrow = mosaic.size.width < kVector<T>;
  if (mosaic.phase.redRow()) {
    narrow ? bayerNarrowRect<true>(mosaic, dst) : bayerRect<true>(mosaic, dst);
  } else {
    narrow ? bayerNarrowRect<false>(mosaic, dst) : bayerRect<false>(mosaic, dst);
  }
}

// A row by the rule of the ring, between two rows of the image; the pixels left and right of it are in the image too.
template <class T>
void bayerBorderRow(const T* above, const T* row, const T* below, T* dst, int width, Phase phase) {
  if (phase.redRow()) {
    bayerBorderRow<true>(above, row, below, dst, width, phase.colourColumn());
  } else {
    bayerBorderRow<false>(above, row, below, dst, width, phase.colourColumn());
  }
}

void owncnBayerRect_8u(const Mosaic<Zum8u>& mosaic, Rows<Zum8u> dst) { bayerRect(mosaic, dst); }
void owncnBayerRect_16u(const Mosaic<Zum16u>& mosaic, Rows<Zum16u> dst) { bayerRect(mosaic, dst); }

void ownBayerBrdHrz_8u(const Zum8u* above, const Zum8u* row, const Zum8u* below, Zum8u* dst, int width, Phase phase) {
  bayerBorderRow(above, row, below, dst, width, phase);
}
void ownBayerBrdHrz_16u(const Zum16u* above, const Zum16u* row, const Zum16u* below, Zum16u* dst, int width,
                        Phase phase) {
  bayerBorderRow(above, row, below, dst, width, phase);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(owncnBayerRect_8u);
HWY_EXPORT(owncnBayerRect_16u);
HWY_EXPORT(ownBayerBrdHrz_8u);
HWY_EXPORT(ownBayerBrdHrz_16u);

namespace {

template <class T>
struct Kernels {
  void (*rect)(const Mosaic<T>&, Rows<T>);
  void (*borderRow)(const T*, const T*, const T*, T*, int, Phase);
};

// Rows or columns of the image.
struct Span {
  int begin, end;

  // Without the two at either end of the image.
  Span interior(int size) const { return {std::max(begin, 2), std::min(end, size - 2)}; }
};

// As many as the image has.
Span cropped(int first, int count, int size) {
  return {first, static_cast<int>(std::min<std::int64_t>(std::int64_t{first} + count, size))};
}

// The two neighbours of a row or column of the image. Beyond the frame it is the one across.
struct Neighbours {
  int before, after;

  Neighbours(int i, int size) : before(i == 0 ? 1 : i - 1), after(i == size - 1 ? size - 2 : i + 1) {}
};

// One pixel of the ring, of which all neighbours count. Nothing is aligned.
template <class T>
HWY_INLINE void borderPixel(const T* above, const T* row, const T* below, int x, Neighbours beside, Phase phase,
                            T* target) {
  const auto sample = [](const T* from, int column) {
    T value;
    std::memcpy(&value, from + column, sizeof(T));
    return int{value};
  };
  const auto set = [target](int channel, int value) {
    const T narrow = static_cast<T>(value);
    std::memcpy(target + channel, &narrow, sizeof(T));
  };
  const auto sidesOf = [&](const T* from) { return sample(from, beside.before) + sample(from, beside.after); };
  const int own = phase.redRow() ? 0 : 2, opposite = 2 - own, green = 1;
  const int centre = sample(row, x), sides = sidesOf(row), ends = sample(above, x) + sample(below, x);
  if (phase.colourColumn() == 0) {
    set(own, centre);
    set(green, (sides + ends + 2) >> 2);
    set(opposite, (sidesOf(above) + sidesOf(below) + 2) >> 2);
  } else {
    set(own, (sides + 1) >> 1);
    set(green, centre);
    set(opposite, (ends + 1) >> 1);
  }
}

// A part of an image, and where its pixels go.
template <class T>
struct Demosaic {
  const Kernels<T>& kernels;
  const Mosaic<T>& image;
  Span columns, rows;
  Rows<T> dst;

  T* target(int x, int y) const { return dst.row(y - rows.begin) + std::ptrdiff_t{3} * (x - columns.begin); }

  void ownBayerBrdHrz(int y) const {
    const int width = image.size.width;
    const int begin = std::max(columns.begin, 1), end = std::min(columns.end, width - 1);
    const Neighbours beside(y, image.size.height);
    const T *above = image.rows.row(beside.before), *row = image.rows.row(y), *below = image.rows.row(beside.after);
    const auto corner = [&](int x) {
      borderPixel(above, row, below, x, Neighbours(x, width), image.phase.from(x, y), target(x, y));
    };
    if (columns.begin == 0 && columns.end > 0) corner(0);
    if (begin < end) {
      kernels.borderRow(above + begin, row + begin, below + begin, target(begin, y), end - begin,
                        image.phase.from(begin, y));
    }
    if (columns.end == width) corner(width - 1);
  }

  // Works on local variables, since stores of bytes may change all others.
  void ownBayerBrdVrt(int x) const {
    const Span inner = rows.interior(image.size.height);
    const Neighbours beside(x, image.size.width);
    const Rows<const T> src = image.rows;
    const Rows<T> out{target(x, inner.begin), dst.step};
    for (int first : {inner.begin, inner.begin + 1}) {  // all rows of one phase, then those of the other
      const Phase phase = image.phase.from(x, first);
      for (int y = first; y < inner.end; y += 2)
        borderPixel(src.row(y - 1), src.row(y), src.row(y + 1), x, beside, phase, out.row(y - inner.begin));
    }
  }

  // The lines of the ring that a span has, first to last. Lines that are both first and last come twice; an empty span
  // that begins on one of the first two still has that line.
  template <class Line>
  static void borderLines(const Span& span, int size, const Line& line) {
    if (span.begin == 0) line(0);
    if (size >= 3 && (span.begin == 1 || (span.begin == 0 && span.end >= 2))) line(1);
    if (size >= 3 && span.begin < size - 1 && span.end >= size - 1) line(size - 2);
    if (span.end == size) line(size - 1);
  }

  void ownBayerBorder() const {
    borderLines(rows, image.size.height, [this](int y) { ownBayerBrdHrz(y); });
    borderLines(columns, image.size.width, [this](int x) { ownBayerBrdVrt(x); });
  }

  void ownBayerRect() const {
    const Span across = columns.interior(image.size.width), down = rows.interior(image.size.height);
    const int width = across.end - across.begin, height = down.end - down.begin;
    if (width <= 0 || height <= 0) return;
    slicedRegion(width, height, [&](int first, int count) {
      const int x = across.begin, y = down.begin + first;
      kernels.rect(image.part(x, y, {width, count}), {target(x, y), dst.step});
    });
  }
};

template <class T>
ZumStatus demosaic(const Kernels<T>& kernels, const Pixels<const T>& src, ZumiRect part, ZumiSize size,
                   const Pixels<T>& dst, ZumiBayerGrid grid) {
  if (const ZumStatus status = check(src, dst, size, {2, 2})) return status;
  if (grid < zumiBayerBGGR || grid > zumiBayerGRBG) return zumErrBadArg;
  if (std::min({part.x, part.y, part.width, part.height}) < 0 || part.x >= size.width || part.y >= size.height)
    return zumOk;
  static constexpr Phase kPhases[] = {{1, 1}, {0, 0}, {0, 1}, {1, 0}};
  const Mosaic<T> image{src.rows(), size, kPhases[grid]};
  const Demosaic<T> run{kernels, image, cropped(part.x, part.width, size.width),
                        cropped(part.y, part.height, size.height), dst.rows()};
  run.ownBayerBorder();
  run.ownBayerRect();
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

ZumStatus zumiCFAToRGB_8u_C1C3R(const Zum8u* pSrc, ZumiRect srcRoi, ZumiSize srcSize, int srcStep, Zum8u* pDst,
                                int dstStep, ZumiBayerGrid grid) {
  const Kernels<Zum8u> kernels{ZUM_KERNEL(owncnBayerRect_8u), ZUM_KERNEL(ownBayerBrdHrz_8u)};
  return demosaic<Zum8u>(kernels, {pSrc, srcStep}, srcRoi, srcSize, {pDst, dstStep}, grid);
}

ZumStatus zumiCFAToRGB_16u_C1C3R(const Zum16u* pSrc, ZumiRect srcRoi, ZumiSize srcSize, int srcStep, Zum16u* pDst,
                                 int dstStep, ZumiBayerGrid grid) {
  const Kernels<Zum16u> kernels{ZUM_KERNEL(owncnBayerRect_16u), ZUM_KERNEL(ownBayerBrdHrz_16u)};
  return demosaic<Zum16u>(kernels, {pSrc, wholeSamples(srcStep)}, srcRoi, srcSize, {pDst, wholeSamples(dstStep)}, grid);
}

#endif  // HWY_ONCE
