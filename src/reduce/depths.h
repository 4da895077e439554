// The pairs of sample types, their levels, and who departs from the rules.
#ifndef ZUM_REDUCE_DEPTHS_H
#define ZUM_REDUCE_DEPTHS_H

#include <cstring>
#include <limits>
#include <type_traits>

#include "zumcc.h"

// All pairs: the tag of the function names, the types of source and destination.
#define ZUM_DEPTH_PAIRS(F)  \
  F(8u, Zum8u, Zum8u)       \
  F(16u, Zum16u, Zum16u)    \
  F(16s, Zum16s, Zum16s)    \
  F(16u8u, Zum16u, Zum8u)   \
  F(16s8u, Zum16s, Zum8u)   \
  F(32f8u, Zum32f, Zum8u)   \
  F(32f16u, Zum32f, Zum16u) \
  F(32f16s, Zum32f, Zum16s)

namespace zum {

// ---- Levels

// The value of a sample is the sample itself, or its distance from the lowest where there is a sign. Values are floats
// from 0 to kTop. What is stored for a value is, in this order: value times kScale, truncated, shifted right by kShift,
// and again with the sign that the destination has.
template <class Src, class Dst>
struct Depths {
  static constexpr bool kFloat = std::is_same_v<Src, Zum32f>;
  static constexpr float kTop = kFloat ? 1 : sizeof(Src) == 1 ? 255 : 65535;
  static constexpr int kHighestStored = sizeof(Dst) == 1 ? 255 : 65535;
  static constexpr float kScale = kFloat ? kHighestStored : 1;
  static constexpr int kShift = kFloat ? 0 : 8 * (sizeof(Src) - sizeof(Dst));
  static constexpr int kMostLevels = kFloat || sizeof(Dst) == 1 ? 256 : 65536;

  // Any alignment.
  static float value(const Src* p) {
    Src sample;
    std::memcpy(&sample, p, sizeof(sample));
    if constexpr (kFloat) {
      return sample;
    } else {
      return static_cast<float>(sample - std::numeric_limits<Src>::min());
    }
  }

  // Keeps the low bits.
  static void store(Dst* p, int distanceFromLowest) {
    const auto sample = static_cast<Dst>(distanceFromLowest + std::numeric_limits<Dst>::min());
    std::memcpy(p, &sample, sizeof(sample));
  }
};

// Levels are whole numbers of steps.
struct Grid {
  float step, inverse;  // the inverse is rounded on its own
};

template <class D>
Grid gridOf(int levels) {
  const auto last = static_cast<float>(levels - 1);
  return {D::kTop / last, last / D::kTop};
}

// Added in double precision before a truncation, by the functions that are said to do so.
constexpr double kNudge = 9e-06;

// ---- Layouts and deviations

enum Layout : unsigned { kC1 = 1, kC3 = 2, kAC4 = 4, kC4 = 8 };

constexpr int samplesOf(Layout layout) { return layout == kC1 ? 1 : layout == kC3 ? 3 : 4; }
constexpr int channelsOf(Layout layout) { return layout == kAC4 ? 3 : samplesOf(layout); }

enum DepthPair : unsigned {
  k8u = 1,
  k16u = 2,
  k16s = 4,
  k16u8u = 8,
  k16s8u = 16,
  k32f8u = 32,
  k32f16u = 64,
  k32f16s = 128,
  kFloats = k32f8u | k32f16u | k32f16s,
  kAllPairs = 255
};

template <class Src, class Dst>
constexpr DepthPair kPair{};
#define ZUM_PAIR(tag, Src, Dst) \
  template <>                   \
  inline constexpr DepthPair kPair<Src, Dst> = k##tag;
ZUM_DEPTH_PAIRS(ZUM_PAIR)
#undef ZUM_PAIR

// How a level is chosen where every pixel is decided alone.
enum Choice : unsigned { kNearest = 1, kOrdered = 2, kNoisy = 4 };

// What is not as everywhere else. The tail of a row is the last width mod 4 pixels.
enum class Deviation {
  kWraps,             // out of range values keep their low bits; elsewhere they saturate
  kTailWraps,         // the same in the tail alone
  kNudged,            // truncations are nudged
  kTailExchanges,     // in the tail, columns 1 and 2 have one another's thresholds
  kTailUnscaled,      // thresholds in the tail are fractions taken for values, without noise
  kTailUnscaledFirst  // the same in the first channel; the others have zeros
};

struct DeviationRule {
  Deviation deviation;
  unsigned pairs, layouts, choices;
};

constexpr DeviationRule kDeviations[] = {
    {Deviation::kWraps, k32f16u, kC1 | kC3 | kC4, kNearest},
    {Deviation::kTailWraps, kAllPairs, kC1, kOrdered},
    {Deviation::kTailExchanges, k16u8u | k16s8u, kC1, kOrdered},
    {Deviation::kNudged, kFloats, kC1 | kC3 | kAC4, kNoisy},
    {Deviation::kWraps, kFloats, kC1 | kC3 | kAC4, kNoisy},
    {Deviation::kTailUnscaled, k8u, kAC4 | kC4, kNoisy},
    {Deviation::kTailUnscaledFirst, kAllPairs & ~k8u, kC4, kNoisy},
};

constexpr bool deviates(Deviation deviation, DepthPair pair, Layout layout, Choice choice) {
  for (const DeviationRule& rule : kDeviations) {
    if (rule.deviation == deviation && (rule.pairs & pair) && (rule.layouts & layout) && (rule.choices & choice))
      return true;
  }
  return false;
}

}  // namespace zum

#endif
