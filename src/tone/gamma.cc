// The transfer curve of ITU-R BT.709, forward and inverse: by table at eight bits; at sixteen bits and in single
// precision by powers in double precision, exactly those of the C library.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "tone/gamma.cc"
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <type_traits>

#include "frame/drivers.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"
#include "tone/power-inl.h"

#ifndef ZUM_TONE_GAMMA_CC
#define ZUM_TONE_GAMMA_CC

namespace zum {

// How the samples of a row that are converted lie.
enum class Interleaving { kPlane, kThree, kThreeOfFour };

// What samples are parts of: x = distance from the bottom / length.
struct Range {
  double bottom, length, reciprocal;
};

}  // namespace zum

#endif

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// ---- The curve, of vectors and of single numbers: a straight foot, then a power with something done to its argument
// and to its result, none of which falls where it rises.

template <class V>
HWY_INLINE constexpr auto constant(double value) {
  if constexpr (std::is_same_v<V, double>) {
    return value;
  } else {
    return all(value);
  }
}

struct Forward {
  static constexpr double kFoot = 0.018, kSlope = 4.5;
  using Exponent = Rational<9, 20>;

  template <class V>
  static HWY_INLINE constexpr V argument(V x) {
    return x;
  }
  template <class V>
  static HWY_INLINE constexpr V result(V power) {
    return power * constant<V>(1.099) - constant<V>(0.099);
  }
};

struct Inverse {
  static constexpr double kFoot = 0.0812, kSlope = 1 / 4.5;
  using Exponent = Rational<20, 9>;

  template <class V>
  static HWY_INLINE constexpr V argument(V x) {
    constexpr double kPer1099 = 0x1.d1e0c942633b6p-1;  // 1 / 1.099, closer than the quotient of the doubles
    return (x + constant<V>(0.099)) * constant<V>(kPer1099);
  }
  template <class V>
  static HWY_INLINE constexpr V result(V power) {
    return power;
  }
};
static_assert(Forward::Exponent::kValue == 0.45 && Inverse::Exponent::kValue == 1 / 0.45);

// ---- Eight bits

// The value of every sample, a tie rounded to the even integer.
template <class Curve>
constexpr ByteTable tableOf() {
  ByteTable table{};
  for (int i = 0; i < 256; ++i) {
    double value = i * Curve::kSlope;
    if (i / 255.0 >= Curve::kFoot) {
      value = Curve::result(rationalPower<typename Curve::Exponent>(Curve::argument(i / 255.0))) * 255;
    }
    const int whole = static_cast<int>(value);
    const double rest = value - whole;
    table.at[i] = static_cast<std::uint8_t>(rest > 0.5 || (rest == 0.5 && whole % 2 == 1) ? whole + 1 : whole);
  }
  return table;
}

template <class Curve>
struct ByTable {
  static constexpr ByteTable kTable = tableOf<Curve>();
  static HWY_INLINE VU8 apply(VU8 v) { return lookUp<kTable>(v); }
};

// ---- Sixteen bits and single precision

// The definition.
template <class Curve>
float bent(float distance, const Range& range) {
  const double d = distance, x = d * range.reciprocal;
  if (!(x >= Curve::kFoot)) return static_cast<float>(d * Curve::kSlope + range.bottom);
  const double power = std::pow(Curve::argument(x), Curve::Exponent::kValue);
  return static_cast<float>(Curve::result(power) * range.length + range.bottom);
}

template <class Curve>
HWY_NOINLINE VF32 bentOneByOne(VF32 distances, Range range) {
  const Tag<float> d;
  alignas(HWY_MAX_BYTES) float lanes[kLanes<float>];
  hn::Store(distances, d, lanes);
  for (float& lane : lanes) lane = bent<Curve>(lane, range);
  return hn::Load(d, lanes);
}

template <class Curve>
class Bend {
 public:
  explicit Bend(const Range& range) : range_(range), beyond_(static_cast<float>(kBeyond * range.length)) {}

  // The fast power is not that of the C library, but far closer to it than single precision shows. What follows it
  // rises with it, in steps that are each rounded as in the definition, and rounding keeps the order: where the least
  // and the largest possible power come to the same result, so does the C library's. That fails for about one sample in
  // thirty thousand; its vector, and those with numbers beyond the table of powers, go the slow way.
  HWY_INLINE VF32 apply(VF32 distance) const {
    const VF64 bottom = all(range_.bottom), length = all(range_.length);
    const Doubles d = toDoubles(distance), x = d * all(range_.reciprocal), foot = d * all(Curve::kSlope) + bottom;
    const Doubles fast = power<Exponent>(Curve::argument(x));
    const auto result = [&](double factor) HWY_ATTR {
      const Doubles bent = Curve::result(fast * all(factor)) * length + bottom;
      const VF64 end = all(Curve::kFoot);
      return toFloats({hn::IfThenElse(x.a >= end, bent.a, foot.a), hn::IfThenElse(x.b >= end, bent.b, foot.b)});
    };
    const VF32 least = result(1 - kPowerError<Exponent>), most = result(1 + kPowerError<Exponent>);

    const Tag<float> floats;
    const Tag<std::int32_t> asBits;
    const auto differ = hn::BitCast(asBits, least) != hn::BitCast(asBits, most);
    const auto doubtful = hn::Or(hn::RebindMask(floats, differ), distance >= all(beyond_));
    return HWY_LIKELY(hn::AllFalse(floats, doubtful)) ? most : bentOneByOne<Curve>(distance, range_);
  }

 private:
  using Exponent = typename Curve::Exponent;

  // A share of the length up to which arguments are in the range of the table.
  static constexpr double kBeyond = 1000;
  static_assert(Curve::argument(kBeyond) < 0.99 * PowerTable<Exponent>::kEnd);
  static_assert(Curve::argument(Curve::kFoot) > PowerTable<Exponent>::kLeast);

  Range range_;
  float beyond_;
};

// Parts of 65535, seen half a unit higher, so that cutting rounds. An integer there, as exactly as single precision
// tells, stands for a tie, and an odd one gives way to the even one below.
template <class Curve>
struct DeepGamma {
  static HWY_INLINE VU16 apply(VU16 v) { return LowBits::join(rounded(partToFloat<0>(v)), rounded(partToFloat<1>(v))); }
  static HWY_INLINE Channels<VU16> apply(const Channels<VU16>& v) { return {apply(v.c0), apply(v.c1), apply(v.c2)}; }

 private:
  static HWY_INLINE VI32 rounded(VF32 levels) {
    constexpr double kTop = 65535;
    const VF32 raised = Bend<Curve>({0.5, kTop, 1 / kTop}).apply(levels);
    const VI32 whole = truncated(raised);
    const VI32 isTie = hn::BitCast(Tag<std::int32_t>(), hn::VecFromMask(Tag<float>(), toFloat(whole) == raised));
    return whole - (whole & isTie & all<std::int32_t>(1));
  }
};

template <class Curve>
struct RealGamma {
  Bend<Curve> bend;
  float bottom;

  RealGamma(float least, float most) : bend({least, double{most - least}, 1.0 / double{most - least}}), bottom(least) {}

  HWY_INLINE VF32 apply(VF32 v) const { return bend.apply(v - all(bottom)); }
  HWY_INLINE Channels<VF32> apply(const Channels<VF32>& v) const { return {apply(v.c0), apply(v.c1), apply(v.c2)}; }
};

// ---- Row kernels

// A row of samples, or of pixels of which OfFour converts three channels, kUnits of its columns to a pixel.
template <class OfFour, std::size_t kUnits, class T, class Form>
HWY_INLINE void convertRow(const T* src, T* dst, int width, Interleaving interleaving, Form form) {
  const auto pixels = static_cast<std::size_t>(width);
  if (interleaving == Interleaving::kThreeOfFour) {
    columns<OfFour, Form, OfFour>(src, dst, 0, kUnits * pixels, form);
  } else {
    const std::size_t samples = interleaving == Interleaving::kThree ? 3 * pixels : pixels;
    columns<Plane1<T>, Form, Plane1<T>>(src, dst, 0, samples, form);
  }
}

template <class Curve>
HWY_INLINE void gamma(const Zum8u* src, Zum8u* dst, int width, Interleaving interleaving) {
  convertRow<AllButFourth<Zum8u>, 4>(src, dst, width, interleaving, ByTable<Curve>());
}
template <class Curve>
HWY_INLINE void gamma(const Zum16u* src, Zum16u* dst, int width, Interleaving interleaving) {
  convertRow<ThreeOf4<Zum16u>, 1>(src, dst, width, interleaving, DeepGamma<Curve>());
}
template <class Curve>
HWY_INLINE void gamma(const Zum32f* src, Zum32f* dst, int width, Interleaving interleaving, Zum32f least, Zum32f most) {
  convertRow<ThreeOf4<Zum32f>, 1>(src, dst, width, interleaving, RealGamma<Curve>(least, most));
}

void innerGammaFwd_8u(const Zum8u* src, Zum8u* dst, int width, Interleaving interleaving) {
  gamma<Forward>(src, dst, width, interleaving);
}
void innerGammaInv_8u(const Zum8u* src, Zum8u* dst, int width, Interleaving interleaving) {
  gamma<Inverse>(src, dst, width, interleaving);
}
void innerGammaFwd_16u(const Zum16u* src, Zum16u* dst, int width, Interleaving interleaving) {
  gamma<Forward>(src, dst, width, interleaving);
}
void innerGammaInv_16u(const Zum16u* src, Zum16u* dst, int width, Interleaving interleaving) {
  gamma<Inverse>(src, dst, width, interleaving);
}
void innerGammaFwd_32f(const Zum32f* src, Zum32f* dst, int width, Interleaving interleaving, Zum32f least,
                       Zum32f most) {
  gamma<Forward>(src, dst, width, interleaving, least, most);
}
void innerGammaInv_32f(const Zum32f* src, Zum32f* dst, int width, Interleaving interleaving, Zum32f least,
                       Zum32f most) {
  gamma<Inverse>(src, dst, width, interleaving, least, most);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(innerGammaFwd_8u);
HWY_EXPORT(innerGammaInv_8u);
HWY_EXPORT(innerGammaFwd_16u);
HWY_EXPORT(innerGammaInv_16u);
HWY_EXPORT(innerGammaFwd_32f);
HWY_EXPORT(innerGammaInv_32f);

// All rows of an image, or of three planes, one plane after the other.
template <class Kernel, class T, class... Parameters>
void convertImage(Kernel* kernel, const Rows<const T>& src, const Rows<T>& dst, ZumiSize roi,
                  Parameters... parameters) {
  serialRows(kernel, src, dst, roi, parameters...);
}
template <class Kernel, class T, class... Parameters>
void convertImage(Kernel* kernel, const PlaneRows<const T, 3>& src, const PlaneRows<T, 3>& dst, ZumiSize roi,
                  Parameters... parameters) {
  for (int i = 0; i < 3; ++i) serialRows(kernel, src.plane[i], dst.plane[i], roi, parameters...);
}

// ---- Sixteen bits by table

constexpr int kLevels = 65536;

// The values of all levels, or none if there is no memory for them.
class LevelTable {
 public:
  template <class Kernel>
  explicit LevelTable(Kernel* kernel) : levels_(zumsMalloc_16u(kLevels)) {
    if (!levels_) return;
    std::iota(levels_, levels_ + kLevels, Zum16u{0});
    kernel(levels_, levels_, kLevels, Interleaving::kPlane);
  }
  ~LevelTable() { zumsFree(levels_); }
  LevelTable(const LevelTable&) = delete;
  LevelTable& operator=(const LevelTable&) = delete;

  const Zum16u* levels() const { return levels_; }

 private:
  Zum16u* levels_;
};

// Neither sample needs to be aligned.
void lookUp(const Zum16u* src, Zum16u* dst, const Zum16u* levels) {
  Zum16u sample;
  std::memcpy(&sample, src, sizeof(sample));
  std::memcpy(dst, &levels[sample], sizeof(sample));
}

void lookUpRow(const Zum16u* src, Zum16u* dst, int width, Interleaving interleaving, const Zum16u* levels) {
  const auto pixels = static_cast<std::size_t>(width);
  if (interleaving == Interleaving::kThreeOfFour) {
    for (std::size_t i = 0; i < 4 * pixels; i += 4) {
      for (std::size_t c = i; c < i + 3; ++c) lookUp(src + c, dst + c, levels);
    }
  } else {
    constexpr std::size_t kUnrolled = 8;
    const std::size_t samples = interleaving == Interleaving::kThree ? 3 * pixels : pixels;
    std::size_t i = 0;
    for (; i + kUnrolled <= samples; i += kUnrolled) {
      for (std::size_t k = i; k < i + kUnrolled; ++k) lookUp(src + k, dst + k, levels);
    }
    for (; i < samples; ++i) lookUp(src + i, dst + i, levels);
  }
}

// The samples that are converted, whether interleaved or in planes, by a wrapping 32-bit product.
std::int32_t wrappedSamples(ZumiSize roi) {
  return static_cast<std::int32_t>(3 * static_cast<std::uint32_t>(wrappedArea(roi)));
}

// ---- The functions by depth, after the checks

template <class Src, class Dst>
ZumStatus byTable(void (*kernel)(const Zum8u*, Zum8u*, int, Interleaving), const Src& src, const Dst& dst, ZumiSize roi,
                  Interleaving interleaving) {
  if (const ZumStatus status = checkPlanesFirstWithSteps(src, dst, roi)) return status;
  convertImage(kernel, src.rows(), dst.rows(), roi, interleaving);
  return zumOk;
}

template <class Src, class Dst>
ZumStatus byTableIfLarge(void (*kernel)(const Zum16u*, Zum16u*, int, Interleaving), const Src& src, const Dst& dst,
                         ZumiSize roi, Interleaving interleaving) {
  if (const ZumStatus status = checkPlanesFirstWithSteps(src, dst, roi)) return status;
  if (wrappedSamples(roi) > kLevels) {
    const LevelTable table(kernel);
    if (!table.levels()) return zumErrMemAlloc;
    convertImage(lookUpRow, src.rows(), dst.rows(), roi, interleaving, table.levels());
  } else {
    convertImage(kernel, src.rows(), dst.rows(), roi, interleaving);
  }
  return zumOk;
}

template <class Src, class Dst>
ZumStatus inRange(void (*kernel)(const Zum32f*, Zum32f*, int, Interleaving, Zum32f, Zum32f), const Src& src,
                  const Dst& dst, ZumiSize roi, Interleaving interleaving, Zum32f least, Zum32f most) {
  if (!(most - least > 0)) return zumErrRange;
  if (const ZumStatus status = checkPlanesFirstWithSteps(src, dst, roi)) return status;
  convertImage(kernel, src.rows(), dst.rows(), roi, interleaving, least, most);
  return zumOk;
}

}  // namespace
}  // namespace zum

using namespace zum;

// The functions of a curve and a depth, by their row kernel, with what the function `run` takes behind the size.
#define ZUM_GAMMA(T, run, kernel, c3, c3InPlace, ac4, ac4InPlace, p3, p3InPlace)                                  \
  ZumStatus c3(const T* pSrc, int srcStep, T* pDst, int dstStep, ZumiSize roi ZUM_PARAMETERS) {                   \
    return run(ZUM_KERNEL(kernel), Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi,                             \
               Interleaving::kThree ZUM_ARGUMENTS);                                                               \
  }                                                                                                               \
  ZumStatus c3InPlace(T* pSrcDst, int step, ZumiSize roi ZUM_PARAMETERS) {                                        \
    return run(ZUM_KERNEL(kernel), Pixels<const T>{pSrcDst, step}, Pixels{pSrcDst, step}, roi,                    \
               Interleaving::kThree ZUM_ARGUMENTS);                                                               \
  }                                                                                                               \
  ZumStatus ac4(const T* pSrc, int srcStep, T* pDst, int dstStep, ZumiSize roi ZUM_PARAMETERS) {                  \
    return run(ZUM_KERNEL(kernel), Pixels{pSrc, srcStep}, Pixels{pDst, dstStep}, roi,                             \
               Interleaving::kThreeOfFour ZUM_ARGUMENTS);                                                         \
  }                                                                                                               \
  ZumStatus ac4InPlace(T* pSrcDst, int step, ZumiSize roi ZUM_PARAMETERS) {                                       \
    return run(ZUM_KERNEL(kernel), Pixels<const T>{pSrcDst, step}, Pixels{pSrcDst, step}, roi,                    \
               Interleaving::kThreeOfFour ZUM_ARGUMENTS);                                                         \
  }                                                                                                               \
  ZumStatus p3(const T* const pSrc[3], int srcStep, T* const pDst[3], int dstStep, ZumiSize roi ZUM_PARAMETERS) { \
    return run(ZUM_KERNEL(kernel), planes3(pSrc, srcStep), planes3(pDst, dstStep), roi,                           \
               Interleaving::kPlane ZUM_ARGUMENTS);                                                               \
  }                                                                                                               \
  ZumStatus p3InPlace(T* const pSrcDst[3], int step, ZumiSize roi ZUM_PARAMETERS) {                               \
    return run(ZUM_KERNEL(kernel), planes3<const T>(pSrcDst, step), planes3(pSrcDst, step), roi,                  \
               Interleaving::kPlane ZUM_ARGUMENTS);                                                               \
  }

#define ZUM_PARAMETERS
#define ZUM_ARGUMENTS
ZUM_GAMMA(Zum8u, byTable, innerGammaFwd_8u, zumiGammaFwd_8u_C3R, zumiGammaFwd_8u_C3IR, zumiGammaFwd_8u_AC4R,
          zumiGammaFwd_8u_AC4IR, zumiGammaFwd_8u_P3R, zumiGammaFwd_8u_IP3R)
ZUM_GAMMA(Zum8u, byTable, innerGammaInv_8u, zumiGammaInv_8u_C3R, zumiGammaInv_8u_C3IR, zumiGammaInv_8u_AC4R,
          zumiGammaInv_8u_AC4IR, zumiGammaInv_8u_P3R, zumiGammaInv_8u_IP3R)
ZUM_GAMMA(Zum16u, byTableIfLarge, innerGammaFwd_16u, zumiGammaFwd_16u_C3R, zumiGammaFwd_16u_C3IR, zumiGammaFwd_16u_AC4R,
          zumiGammaFwd_16u_AC4IR, zumiGammaFwd_16u_P3R, zumiGammaFwd_16u_IP3R)
ZUM_GAMMA(Zum16u, byTableIfLarge, innerGammaInv_16u, zumiGammaInv_16u_C3R, zumiGammaInv_16u_C3IR, zumiGammaInv_16u_AC4R,
          zumiGammaInv_16u_AC4IR, zumiGammaInv_16u_P3R, zumiGammaInv_16u_IP3R)
#undef ZUM_PARAMETERS
#undef ZUM_ARGUMENTS
#define ZUM_PARAMETERS , Zum32f vMin, Zum32f vMax
#define ZUM_ARGUMENTS , vMin, vMax
ZUM_GAMMA(Zum32f, inRange, innerGammaFwd_32f, zumiGammaFwd_32f_C3R, zumiGammaFwd_32f_C3IR, zumiGammaFwd_32f_AC4R,
          zumiGammaFwd_32f_AC4IR, zumiGammaFwd_32f_P3R, zumiGammaFwd_32f_IP3R)
ZUM_GAMMA(Zum32f, inRange, innerGammaInv_32f, zumiGammaInv_32f_C3R, zumiGammaInv_32f_C3IR, zumiGammaInv_32f_AC4R,
          zumiGammaInv_32f_AC4IR, zumiGammaInv_32f_P3R, zumiGammaInv_32f_IP3R)

#endif  // HWY_ONCE
