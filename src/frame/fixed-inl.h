// Fixed-point forms on bytes: how their samples come to lanes wide enough for them, and go back. A form with a `half`
// works on 16-bit lanes, a sample each, one with a `lanes` on 32-bit lanes, a pixel each.
#if defined(ZUM_FRAME_FIXED_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_FRAME_FIXED_INL_H
#undef ZUM_FRAME_FIXED_INL_H
#else
#define ZUM_FRAME_FIXED_INL_H
#endif

#include "frame/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// Applies a form's `half` to bytes.
template <class Form>
struct OnHalves {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& in) {
    const Halves<VI16> c0 = widen(in.c0), c1 = widen(in.c1), c2 = widen(in.c2);
    const Channels<VI16> a = Form::half({c0.a, c1.a, c2.a}), b = Form::half({c0.b, c1.b, c2.b});
    return {packToBytes(a.c0, b.c0), packToBytes(a.c1, b.c1), packToBytes(a.c2, b.c2)};
  }
};

// Pixels in 32-bit lanes, as pairs of 16-bit numbers: channels 0 and 2, channels 0 and 1.
struct PixelPairs {
  VI16 c02, c01;
};

// Applies a form's `lanes` to bytes of separate channels.
template <class Form>
struct OnLanes {
  static HWY_INLINE Channels<VU8> apply(const Channels<VU8>& in) {
    const Tag<std::uint8_t> d;
    const Halves<VI16> lower02 = widen(hn::InterleaveLower(d, in.c0, in.c2)),
                       upper02 = widen(hn::InterleaveUpper(d, in.c0, in.c2)),
                       lower01 = widen(hn::InterleaveLower(d, in.c0, in.c1)),
                       upper01 = widen(hn::InterleaveUpper(d, in.c0, in.c1));
    const Channels<VI32> q0 = Form::lanes({lower02.a, lower01.a}), q1 = Form::lanes({lower02.b, lower01.b}),
                         q2 = Form::lanes({upper02.a, upper01.a}), q3 = Form::lanes({upper02.b, upper01.b});
    return {bytes(q0.c0, q1.c0, q2.c0, q3.c0), bytes(q0.c1, q1.c1, q2.c1, q3.c1), bytes(q0.c2, q1.c2, q2.c2, q3.c2)};
  }

  // The same with the pixels in the lanes already.
  static HWY_INLINE VU32 apply(VU32 pixels) {
    const Channels<VI32> out = Form::lanes({pairs<2>(pixels), pairs<1>(pixels)});
    // In each block four bytes of channel 0, of channel 1, of channel 2, and four zeros.
    const VU8 planes = packToBytes(pack(out.c0, out.c1), pack(out.c2, hn::Zero(Tag<std::int32_t>())));
    alignas(16) static constexpr std::uint8_t kToPixels[16] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};
    const Tag<std::uint8_t> d8;
    return hn::BitCast(Tag<std::uint32_t>(), hn::TableLookupBytes(planes, hn::LoadDup128(d8, kToPixels)));
  }

 private:
  static HWY_INLINE VU8 bytes(VI32 q0, VI32 q1, VI32 q2, VI32 q3) { return packToBytes(pack(q0, q1), pack(q2, q3)); }

  // Channel 0 and another of each pixel, widened.
  template <std::uint8_t other>
  static HWY_INLINE VI16 pairs(VU32 pixels) {
    constexpr std::uint8_t kZero = 0x80;
    alignas(16) static constexpr std::uint8_t kBytes[16] = {0, kZero, 0 + other, kZero, 4,  kZero, 4 + other,  kZero,
                                                            8, kZero, 8 + other, kZero, 12, kZero, 12 + other, kZero};
    const Tag<std::uint8_t> d8;
    return hn::BitCast(Tag<std::int16_t>(),
                       hn::TableLookupBytesOr0(hn::BitCast(d8, pixels), hn::LoadDup128(d8, kBytes)));
  }
};

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
