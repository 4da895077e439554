// Error diffusion in its plain form: pixel after pixel, row after row, channel after channel. It is the definition of
// the result, and the yardstick for whatever is faster.
#ifndef ZUM_REDUCE_DIFFUSION_ROWS_H
#define ZUM_REDUCE_DIFFUSION_ROWS_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "frame/rows.h"
#include "reduce/depths.h"
#include "reduce/noise.h"

namespace zum {

// What the channels of a call have in common.
struct Diffusion {
  Grid grid;
  const NoiseField* noise;  // the remainders above which a pixel goes to the next level; null: half a step
};

// Channels that are worked on one behind the other: the errors at the bottom of one go on to the top of the next.
template <class Src, class Dst>
struct Section {
  Rows<const Src> src;
  Rows<Dst> dst;
  ZumiSize size;
  int samples;            // of a pixel
  int firstChannel, end;  // the channels
};

// ---- Weights
//
// The errors that reach a pixel, from pointers to its place in its own row of errors and in those above. The order of
// the sums is part of the result.

template <class Src, class Dst>
struct FloydSteinberg {
  static constexpr int kRows = 2, kMargin = 1;
  // These pairs were a family of their own.
  static constexpr bool kApart = (kPair<Src, Dst> & (kFloats | k16s8u)) != 0;
  static constexpr bool kNudged = kApart;
  static constexpr float kBottom = Depths<Src, Dst>::kFloat ? std::numeric_limits<float>::epsilon() : 0;

  static float reaching(const float* own, const float* above, const float*) {
    const float left = above[-1], center = 5 * above[0], right = 3 * above[1];
    const float fromAbove = kApart ? (right + center) + left : (right + left) + center;
    return (fromAbove + 7 * own[-1]) * 0.0625f;
  }
};

// Weights of the rows above are symmetrical.
struct JarvisJudiceNinke {
  static constexpr float kTwoAbove[3] = {1, 3, 5}, kAbove[3] = {3, 5, 7}, kOwn[2] = {5, 7};
  static constexpr float kUnit = 0.020833334f;
};
struct Stucki {
  static constexpr float kTwoAbove[3] = {1, 2, 4}, kAbove[3] = {2, 4, 8}, kOwn[2] = {4, 8};
  static constexpr float kUnit = 0.023809524f;
};

template <class Weights>
struct ThreeRows {
  static constexpr int kRows = 3, kMargin = 2;
  static constexpr bool kNudged = false;
  static constexpr float kBottom = 0;

  static float reaching(const float* own, const float* above, const float* twoAbove) {
    const auto column = [&](int dx) {
      const int w = 2 - std::abs(dx);
      return Weights::kAbove[w] * above[dx] + Weights::kTwoAbove[w] * twoAbove[dx];
    };
    const float m2 = column(-2) + Weights::kOwn[0] * own[-2], m1 = column(-1) + Weights::kOwn[1] * own[-1];
    const float sum = ((m2 + column(0)) + (m1 + column(1))) + twoAbove[2] + Weights::kAbove[0] * above[2];
    return sum * Weights::kUnit;
  }
};

// ---- Rows

template <bool nudged>
int truncatedTo(float v) {
  return nudged ? static_cast<int>(v + kNudge) : static_cast<int>(v);
}

// One row of one channel; src and dst are at its first sample.
template <class Src, class Dst, class Method>
void diffuseRow(const Src* src, Dst* dst, int width, int samples, int y, const Diffusion& diffusion, float* own,
                const float* above, const float* twoAbove) {
  using D = Depths<Src, Dst>;
  const Grid grid = diffusion.grid;
  const float half = 0.5f * grid.step;
  for (int x = 0; x < width; ++x, src += samples, dst += samples) {
    const float v = D::value(src) + Method::reaching(own + x, above + x, twoAbove + x);
    own[x] = 0;
    if (v >= D::kTop) {
      D::store(dst, D::kHighestStored);
    } else if (!(v >= Method::kBottom)) {
      D::store(dst, 0);
    } else {
      const float threshold = diffusion.noise ? diffusion.noise->at(x, y) : half;
      float level = static_cast<float>(truncatedTo<Method::kNudged>(v * grid.inverse)) * grid.step;
      if (threshold < v - level) level += grid.step;
      own[x] = v - level;
      D::store(dst, truncatedTo<Method::kNudged>(level * D::kScale) >> D::kShift);
    }
  }
}

// The floats that a section needs: rows with zeros on either side.
template <class Method>
constexpr std::int64_t errorLength(int width) {
  return Method::kRows * (std::int64_t{width} + 2 * Method::kMargin);
}

template <class Method, class Src, class Dst>
void diffuseRows(const Section<Src, Dst>& section, const Diffusion& diffusion, float* errors) {
  std::fill_n(errors, errorLength<Method>(section.size.width), 0.0f);
  const auto row = [&](int i) { return errors + errorLength<Method>(section.size.width) / Method::kRows * i; };
  float *own = row(0) + Method::kMargin, *above = row(1) + Method::kMargin,
        *twoAbove = row(Method::kRows - 1) + Method::kMargin;
  for (int channel = section.firstChannel; channel < section.end; ++channel) {
    for (int y = 0; y < section.size.height; ++y) {
      diffuseRow<Src, Dst, Method>(section.src.row(y) + channel, section.dst.row(y) + channel, section.size.width,
                                   section.samples, y, diffusion, own, above, twoAbove);
      std::swap(own, above);
      if constexpr (Method::kRows == 3) std::swap(own, twoAbove);
    }
  }
}

}  // namespace zum

#endif
