// BGR to and from L*a*b*, in bytes or with 16 bits.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "models/lab.cc"
#include "frame/exports.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"
#include "models/cie.h"

#include "frame/float-inl.h"
#include "frame/layouts-inl.h"
#include "models/cie-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// 16-bit samples of as many pixels as a vector of bytes has, widened: see widen.
using Words = Halves<VU16>;

// The two ways that a result is coded in, with the number of terms that the forward direction takes for it.
struct ByteCode {
  using V = VU8;
  static constexpr float kLightness = 2.55f, kChroma = 1, kOfLightness = 100.0f / 255, kOfChroma = 1;
  static constexpr auto kSeries = kSixTerms;
};
struct WordCode {
  using V = Words;
  static constexpr float kLightness = 655.35f, kChroma = 255, kOfLightness = 100.0f / 65535, kOfChroma = 1.0f / 255;
  static constexpr auto kSeries = eightTerms(0.019001201f, 0.0158343f);
};

template <std::size_t part>
HWY_INLINE VF32 partToFloat(const Words& w) {
  return partToFloat<part % 2>(part < 2 ? w.a : w.b);
}

using Codes = Channels<VI32>;

template <class V>
V joinCodes(const std::array<Codes, 4>& parts, VI32 Codes::*member);
template <>
HWY_INLINE VU8 joinCodes(const std::array<Codes, 4>& parts, VI32 Codes::*member) {
  return join<Saturated>(parts, member);
}
template <>
HWY_INLINE Words joinCodes(const std::array<Codes, 4>& parts, VI32 Codes::*member) {
  return {Saturated::join(parts[0].*member, parts[1].*member), Saturated::join(parts[2].*member, parts[3].*member)};
}

template <class V>
HWY_INLINE Channels<V> joinCodes(const std::array<Codes, 4>& parts) {
  return {joinCodes<V>(parts, &Codes::c0), joinCodes<V>(parts, &Codes::c1), joinCodes<V>(parts, &Codes::c2)};
}

// The white, times the range of the samples.
constexpr float kWhiteX = 242.366f, kWhiteY = 255, kWhiteZ = 277.632f;

template <class Code>
struct RgbToLab {
  using Parts = std::array<Channels<VF32>, kParts<Zum8u>>;

  static HWY_INLINE Channels<typename Code::V> apply(const Channels<VU8>& rgb) {
    const Parts xyz = inParts<RgbToLab, Zum8u>(rgb);
    Parts roots;
    setRoots(xyz, &Channels<VF32>::c0, roots);
    setRoots(xyz, &Channels<VF32>::c1, roots);
    setRoots(xyz, &Channels<VF32>::c2, roots);
    return joinCodes<typename Code::V>(inParts<Coded, Zum8u>(typename Coded::Terms{xyz, roots}));
  }

  // Tristimulus values, those of white being 1.
  template <std::size_t part>
  static HWY_INLINE Channels<VF32> lanes(const Channels<VU8>& rgb) {
    const Channels<VF32> xyz = rgbToXyz(partToFloat<part>(rgb));
    return {xyz.c0 * all(1 / kWhiteX), xyz.c1 * all(1 / kWhiteY), xyz.c2 * all(1 / kWhiteZ)};
  }

 private:
  static HWY_INLINE void setRoots(const Parts& xyz, VF32 Channels<VF32>::*channel, Parts& roots) {
    std::array<VI32, kParts<Zum8u>> cells;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      cells[i] = truncated(xyz[i].*channel * all(static_cast<float>(kLabCells)));
    }
    const auto at = expansionsAt<kLabRoots>(cells);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      roots[i].*channel = cubeRoot(xyz[i].*channel, at[i], Code::kSeries);
    }
  }

  struct Coded {
    struct Terms {
      const Parts &xyz, &roots;
    };

    template <std::size_t part>
    static HWY_INLINE Codes lanes(const Terms& t) {
      const Channels<VF32>&xyz = t.xyz[part], &roots = t.roots[part];
      const VF32 fx = curve(xyz.c0, roots.c0), fy = curve(xyz.c1, roots.c1), fz = curve(xyz.c2, roots.c2);
      const VF32 lightness =
          hn::IfThenElse(xyz.c1 <= all(kEvenEnd), all(kEvenSlope) * xyz.c1, all(116.0f) * roots.c1 - all(16.0f));
      const VF32 a = (fx - fy) * all(500.0f) + all(128.0f), b = (fy - fz) * all(200.0f) + all(128.0f);
      return {nearest(lightness * all(Code::kLightness)), nearest(a * all(Code::kChroma)),
              nearest(b * all(Code::kChroma))};
    }

    static HWY_INLINE VF32 curve(VF32 v, VF32 root) {
      return hn::IfThenElse(v <= all(kEvenEnd), all(7.787f) * v + all(16.0f / 116), root);
    }
  };
};

// The inverse cubes at all lightnesses.
template <class Code>
struct LabToRgb {
  using Lab = Channels<typename Code::V>;

  static HWY_INLINE Channels<VU8> apply(const Lab& lab) { return joinCodes<VU8>(inParts<LabToRgb, Zum8u>(lab)); }

  template <std::size_t part>
  static HWY_INLINE Codes lanes(const Lab& lab) {
    const Channels<VF32> codes = partToFloat<part>(lab);
    const VF32 fy = (codes.c0 * all(Code::kOfLightness) + all(16.0f)) * all(1.0f / 116);
    const VF32 a = codes.c1 * all(Code::kOfChroma) - all(128.0f), b = codes.c2 * all(Code::kOfChroma) - all(128.0f);
    const VF32 fx = a * all(0.002f) + fy, fz = fy - b * all(0.005f);
    const Channels<VF32> rgb = xyzToRgb({cubed(fx) * all(kWhiteX), cubed(fy) * all(kWhiteY), cubed(fz) * all(kWhiteZ)});
    return {nearest(rgb.c0), nearest(rgb.c1), nearest(rgb.c2)};
  }

 private:
  static HWY_INLINE VF32 cubed(VF32 v) { return (v * v) * v; }
};

// ---- Layouts

using BgrBytes = Reversed<Packed3<Zum8u>>;
using LabBytes = Packed3<Zum8u>;

// The access to what lies behind the first n pixels.
HWY_INLINE Whole behind(Whole, std::size_t) { return {}; }
#if HWY_TARGET <= HWY_AVX3
HWY_INLINE First behind(First first, std::size_t n) { return {first.n > n ? first.n - n : 0}; }
#endif

struct LabWords : Interleaved<Zum16u, 3, kLanes<Zum8u>> {
  static constexpr bool kWoven = true;

  template <class Access = Whole>
  static HWY_INLINE Channels<Words> load(const Zum16u* row, Access access = {}) {
    const Channels<VU16> first = Half::load(row, access),
                         second = Half::load(row + kHalf, behind(access, Half::kPixels));
    return {split(first.c0, second.c0), split(first.c1, second.c1), split(first.c2, second.c2)};
  }

  template <class Access = Whole>
  static HWY_INLINE void store(const Channels<Words>& v, Zum16u* row, Access access = {}) {
    const Words c0 = inOrder(v.c0), c1 = inOrder(v.c1), c2 = inOrder(v.c2);
    Half::store({c0.a, c1.a, c2.a}, row, access);
    Half::store({c0.b, c1.b, c2.b}, row + kHalf, behind(access, Half::kPixels));
  }

 private:
  using Half = Packed3<Zum16u>;
  static constexpr std::size_t kHalf = 3 * Half::kPixels;

  // The even blocks of two vectors, and the odd ones.
  static HWY_INLINE Words split(VU16 v0, VU16 v1) {
#if HWY_TARGET <= HWY_AVX3
    return {VU16{_mm512_shuffle_i64x2(v0.raw, v1.raw, 0x88)}, VU16 { _mm512_shuffle_i64x2(v0.raw, v1.raw, 0xDD) }};
#elif HWY_TARGET == HWY_AVX2
    const Tag<std::uint16_t> d;
    return {hn::ConcatLowerLower(d, v1, v0), hn::ConcatUpperUpper(d, v1, v0)};
#else
    return {v0, v1};
#endif
  }
  static HWY_INLINE Words inOrder(const Words& w) {
#if HWY_TARGET <= HWY_AVX3
    const __m512i first = _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11),
                  second = _mm512_setr_epi64(4, 5, 12, 13, 6, 7, 14, 15);
    return {VU16{_mm512_permutex2var_epi64(w.a.raw, first, w.b.raw)}, VU16 {
              _mm512_permutex2var_epi64(w.a.raw, second, w.b.raw)
            }};
#else
    return split(w.a, w.b);
#endif
  }
};

// ---- Row kernels

void innerBGRToLab_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  columns<BgrBytes, RgbToLab<ByteCode>, LabBytes>(src, dst, 0, width);
}
void innerLabToBGR_8u_C3R(const Zum8u* src, Zum8u* dst, int width) {
  columns<LabBytes, LabToRgb<ByteCode>, BgrBytes>(src, dst, 0, width);
}
void innerBGRToLab_8u16u_C3R(const Zum8u* src, Zum16u* dst, int width) {
  columns<BgrBytes, RgbToLab<WordCode>, LabWords>(src, dst, 0, width);
}
void innerLabToBGR_16u8u_C3R(const Zum16u* src, Zum8u* dst, int width) {
  columns<LabWords, LabToRgb<WordCode>, BgrBytes>(src, dst, 0, width);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {

HWY_EXPORT(innerBGRToLab_8u_C3R);
HWY_EXPORT(innerLabToBGR_8u_C3R);
HWY_EXPORT(innerBGRToLab_8u16u_C3R);
HWY_EXPORT(innerLabToBGR_16u8u_C3R);

}  // namespace zum

ZUM_EXPORT(zumiBGRToLab_8u_C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertInParallelUnless(check(src, dst, roi), ZUM_KERNEL(innerBGRToLab_8u_C3R), src, dst, roi))
ZUM_EXPORT(zumiLabToBGR_8u_C3R, Pixels<const Zum8u>, Pixels<Zum8u>,
           convertInParallelUnless(check(src, dst, roi), ZUM_KERNEL(innerLabToBGR_8u_C3R), src, dst, roi))
ZUM_EXPORT(zumiBGRToLab_8u16u_C3R, Pixels<const Zum8u>, Pixels<Zum16u>,
           convertInParallelUnless(check(src, dst, roi), ZUM_KERNEL(innerBGRToLab_8u16u_C3R), src, dst, roi))
ZUM_EXPORT(zumiLabToBGR_16u8u_C3R, Pixels<const Zum16u>, Pixels<Zum8u>,
           convertInParallelUnless(check(src, dst, roi), ZUM_KERNEL(innerLabToBGR_16u8u_C3R), src, dst, roi))

#endif  // HWY_ONCE
