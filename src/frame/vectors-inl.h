// The vector vocabulary: what Highway does not say, or says in an order that costs a shuffle. Included once for each
// instruction set. Blocks are the 128-bit parts of a vector; "in blocks" means that nothing crosses them.
#if defined(ZUM_FRAME_VECTORS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_FRAME_VECTORS_INL_H
#undef ZUM_FRAME_VECTORS_INL_H
#else
#define ZUM_FRAME_VECTORS_INL_H
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <class T>
using Tag = hn::ScalableTag<T>;
template <class T>
using Vec = hn::Vec<Tag<T>>;
template <class T>
constexpr std::size_t kLanes = HWY_MAX_BYTES / sizeof(T);

using VU8 = Vec<std::uint8_t>;
using VI16 = Vec<std::int16_t>;
using VU16 = Vec<std::uint16_t>;
using VI32 = Vec<std::int32_t>;
using VU32 = Vec<std::uint32_t>;
using VF32 = Vec<float>;
using VF64 = Vec<double>;

// Three channels: R, G, B or Y, Cb, Cr and so on.
template <class V>
struct Channels {
  V c0, c1, c2;
};

// Two vectors of half as many, wider lanes. Whoever splits and whoever joins agree on which lane is where.
template <class V>
struct Halves {
  V a, b;
};

// The lanes of four vectors in turn, inside 128-bit blocks. Lanes of 32 bits: four by four of them transposed.
template <class V>
HWY_INLINE std::array<V, 4> interleaved4(V v0, V v1, V v2, V v3) {
  const hn::DFromV<V> d;
  const hn::RepartitionToWide<hn::DFromV<V>> pairs;
  const auto lower01 = hn::BitCast(pairs, hn::InterleaveLower(d, v0, v1)),
             upper01 = hn::BitCast(pairs, hn::InterleaveUpper(d, v0, v1)),
             lower23 = hn::BitCast(pairs, hn::InterleaveLower(d, v2, v3)),
             upper23 = hn::BitCast(pairs, hn::InterleaveUpper(d, v2, v3));
  return {hn::BitCast(d, hn::InterleaveLower(pairs, lower01, lower23)),
          hn::BitCast(d, hn::InterleaveUpper(pairs, lower01, lower23)),
          hn::BitCast(d, hn::InterleaveLower(pairs, upper01, upper23)),
          hn::BitCast(d, hn::InterleaveUpper(pairs, upper01, upper23))};
}

// The same value in all lanes.
template <class T>
HWY_INLINE Vec<T> all(T value) {
  return hn::Set(Tag<T>(), value);
}

// Signed and unsigned products of 16-bit lanes by a constant, cut down to 16 bits.
HWY_INLINE VI16 mulRounded15(int c, VI16 x) {
  return hn::MulFixedPoint15(all<std::int16_t>(c), x);
}  // (c x + 2^14) >> 15
HWY_INLINE VI16 mulHigh(int c, VI16 x) { return hn::MulHigh(all<std::int16_t>(c), x); }   // (c x) >> 16
HWY_INLINE VU16 mulHigh(int c, VU16 x) { return hn::MulHigh(all<std::uint16_t>(c), x); }  // (c x) >> 16

// Bytes widened to 16-bit lanes, in blocks: the first eight of a block in a, the others in b.
HWY_INLINE Halves<VI16> widen(VU8 v) {
  const Tag<std::uint8_t> d8;
  const Tag<std::int16_t> d16;
  return {hn::BitCast(d16, hn::InterleaveLower(d8, v, hn::Zero(d8))),
          hn::BitCast(d16, hn::InterleaveUpper(d8, v, hn::Zero(d8)))};
}

// Saturated to bytes, in blocks: a in the first eight of a block, b in the others.
HWY_INLINE VU8 packToBytes(VI16 a, VI16 b) {
#if HWY_TARGET <= HWY_AVX3
  return VU8{_mm512_packus_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VU8{_mm256_packus_epi16(a.raw, b.raw)};
#elif HWY_ARCH_X86
  return VU8{_mm_packus_epi16(a.raw, b.raw)};
#else
  const hn::Half<Tag<std::uint8_t>> half;
  return hn::Combine(Tag<std::uint8_t>(), hn::DemoteTo(half, b), hn::DemoteTo(half, a));
#endif
}

// The inverse of widen, saturating.
HWY_INLINE VU8 narrow(Halves<VI16> h) { return packToBytes(h.a, h.b); }

// Saturated to signed 16-bit lanes, in blocks.
HWY_INLINE VI16 pack(VI32 a, VI32 b) { return hn::ReorderDemote2To(Tag<std::int16_t>(), a, b); }

// Saturated to unsigned 16-bit lanes, in blocks.
HWY_INLINE VU16 packToWords(VI32 a, VI32 b) {
#if HWY_TARGET <= HWY_AVX3
  return VU16{_mm512_packus_epi32(a.raw, b.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VU16{_mm256_packus_epi32(a.raw, b.raw)};
#else
  const VI32 offset = all<std::int32_t>(0x8000);  // moves the unsigned range to the signed one
  return hn::BitCast(Tag<std::uint16_t>(), pack(a - offset, b - offset)) ^ all<std::uint16_t>(0x8000);
#endif
}

// Bytes times 128 in 16-bit lanes by position: lane i of a is byte 2 i, of b byte 2 i + 1.
HWY_INLINE Halves<VI16> times128(VU8 v) {
  const Tag<std::int16_t> d16;
  const VU16 pairs = hn::BitCast(Tag<std::uint16_t>(), v), mask = all<std::uint16_t>(0x7F80);
  return {hn::BitCast(d16, hn::And(hn::ShiftLeft<7>(pairs), mask)),
          hn::BitCast(d16, hn::And(hn::ShiftRight<1>(pairs), mask))};
}

// The low bytes of such lanes over 64.
HWY_INLINE VU8 over64(Halves<VI16> h) {
#if HWY_TARGET <= HWY_AVX3_DL
  // In every 64 bits the bytes from bit 6 of each lane, twice.
  const __m512i from = _mm512_set1_epi64(0x3636262616160606);
  const __m512i even = _mm512_multishift_epi64_epi8(from, h.a.raw);
  return VU8{_mm512_mask_multishift_epi64_epi8(even, 0xAAAAAAAAAAAAAAAA, from, h.b.raw)};
#else
  const VI16 even = hn::And(hn::ShiftRight<6>(h.a), all<std::int16_t>(0xFF));
  const VI16 odd = hn::AndNot(all<std::int16_t>(0xFF), hn::ShiftLeft<2>(h.b));
  return hn::BitCast(Tag<std::uint8_t>(), hn::Or(even, odd));
#endif
}

// The high bytes of 16-bit lanes, those of a in the even places.
HWY_INLINE VU8 highBytes(VU16 a, VU16 b) {
  return hn::BitCast(Tag<std::uint8_t>(), hn::IfVecThenElse(all<std::uint16_t>(0xFF), hn::ShiftRight<8>(a), b));
}

// Like over64, saturating to signed bytes.
HWY_INLINE VU8 saturatedOver64(Halves<VI16> h) {
  const Tag<std::uint16_t> d;
  const VI16 a = hn::SaturatedAdd(h.a, h.a), b = hn::SaturatedAdd(h.b, h.b);
  return highBytes(hn::BitCast(d, hn::SaturatedAdd(a, a)), hn::BitCast(d, hn::SaturatedAdd(b, b)));
}

// Bytes split into 16-bit lanes by position: lane i of a is byte 2 i, of b byte 2 i + 1. Neighbouring pixels stand in
// the same lane of the two halves, so that a pair's sum is a sum and a pair's chroma serves both.
HWY_INLINE Halves<VI16> splitPairs(VU8 v) {
  const Tag<std::int16_t> d16;
  const VU16 pairs = hn::BitCast(Tag<std::uint16_t>(), v);
  return {hn::BitCast(d16, hn::And(pairs, all<std::uint16_t>(0xFF))), hn::BitCast(d16, hn::ShiftRight<8>(pairs))};
}

// The inverse of splitPairs; only the low 8 bits of a may be set.
HWY_INLINE VU8 joinPairs(VI16 a, VI16 b) { return hn::BitCast(Tag<std::uint8_t>(), hn::Or(a, hn::ShiftLeft<8>(b))); }

// The inverse of splitPairs, saturating.
HWY_INLINE VU8 joinPairsSaturated(VI16 a, VI16 b) {
  const Tag<std::uint8_t> d8;
  alignas(16) static constexpr std::uint8_t kAlternate[16] = {0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15};
  return hn::TableLookupBytes(packToBytes(a, b), hn::LoadDup128(d8, kAlternate));
}

// Bytes of two vectors in turn, by position: those of the even places in a, of the odd places in b.
HWY_INLINE Halves<VU8> zipPairs(VU8 v0, VU8 v1) {
  const Tag<std::uint8_t> d8;
  const Tag<std::uint16_t> d16;
  const VU16 x = hn::BitCast(d16, v0), y = hn::BitCast(d16, v1), low = all<std::uint16_t>(0xFF);
  return {hn::BitCast(d8, hn::IfVecThenElse(low, x, hn::ShiftLeft<8>(y))),
          hn::BitCast(d8, hn::IfVecThenElse(low, hn::ShiftRight<8>(x), y))};
}

// Bytes of two vectors in turn, in order over both results.
HWY_INLINE Halves<VU8> zip(VU8 v0, VU8 v1) {
#if HWY_TARGET <= HWY_AVX3_DL
  struct Index {
    alignas(64) std::uint8_t at[2][64];
    constexpr Index() : at() {
      for (int i = 0; i < 128; ++i) at[i / 64][i % 64] = static_cast<std::uint8_t>(i / 2 + i % 2 * 64);
    }
  };
  static constexpr Index kIndex;
  return {VU8{_mm512_permutex2var_epi8(v0.raw, _mm512_load_si512(kIndex.at[0]), v1.raw)},
          VU8{_mm512_permutex2var_epi8(v0.raw, _mm512_load_si512(kIndex.at[1]), v1.raw)}};
#else
  const Tag<std::uint8_t> d;
  const VU8 lower = hn::InterleaveLower(d, v0, v1), upper = hn::InterleaveUpper(d, v0, v1);
#if HWY_TARGET == HWY_AVX2
  return {hn::ConcatLowerLower(d, upper, lower), hn::ConcatUpperUpper(d, upper, lower)};
#else
  return {lower, upper};
#endif
#endif
}

// A pair of 16-bit constants in every 32-bit lane, for addDots.
HWY_INLINE VI16 pairsOf(int even, int odd) {
  const auto bits = static_cast<std::uint32_t>(odd) << 16 | (static_cast<std::uint32_t>(even) & 0xFFFF);
  return hn::BitCast(Tag<std::int16_t>(), all<std::uint32_t>(bits));
}

// sum + a[even] w[even] + a[odd] w[odd] in every 32-bit lane, exactly.
HWY_INLINE VI32 addDots(VI32 sum, VI16 a, VI16 w) {
#if HWY_TARGET <= HWY_AVX3_DL
  // One instruction, which every processor of this instruction set has; Highway does not turn its intrinsic on.
  asm("vpdpwssd %2, %1, %0" : "+v"(sum.raw) : "v"(a.raw), "v"(w.raw));
  return sum;
#elif HWY_TARGET == HWY_AVX2
  return sum + VI32{_mm256_madd_epi16(a.raw, w.raw)};
#elif HWY_ARCH_X86
  return sum + VI32{_mm_madd_epi16(a.raw, w.raw)};
#else
  return VI32{vaddq_s32(sum.raw,
                        vpaddq_s32(vmull_s16(vget_low_s16(a.raw), vget_low_s16(w.raw)), vmull_high_s16(a.raw, w.raw)))};
#endif
}

// even x + odd y in every 16-bit lane, where x and y are its bytes and the factors are bytes with a sign.
template <int even, int odd>
HWY_INLINE VI16 dotBytes(VU8 xy) {
  constexpr auto isByte = [](int v) { return v >= -128 && v <= 127; };
  static_assert(isByte(even) && isByte(odd) && even + odd >= -128 && even + odd <= 128, "the sum fits 16 bits");
#if HWY_ARCH_X86
  const VI16 factors = all(static_cast<std::int16_t>((odd & 0xFF) << 8 | (even & 0xFF)));
#if HWY_TARGET <= HWY_AVX3
  return VI16{_mm512_maddubs_epi16(xy.raw, factors.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VI16{_mm256_maddubs_epi16(xy.raw, factors.raw)};
#else
  return VI16{_mm_maddubs_epi16(xy.raw, factors.raw)};
#endif
#else
  const Halves<VI16> bytes = splitPairs(xy);
  return bytes.a * all<std::int16_t>(even) + bytes.b * all<std::int16_t>(odd);
#endif
}

// (even x + odd y) >> shift, exactly, with factors of 16 bits and a shift of at least 8.
template <int even, int odd, int shift>
HWY_INLINE VI16 dotBytes(VU8 xy) {
  constexpr auto lowByte = [](int v) { return (v & 0xFF) - (v & 0x80) * 2; };
  constexpr int lowEven = lowByte(even), lowOdd = lowByte(odd);
  const VI16 upper = dotBytes<(even - lowEven) / 256, (odd - lowOdd) / 256>(xy);
  return hn::ShiftRight<shift - 8>(upper + hn::ShiftRight<8>(dotBytes<lowEven, lowOdd>(xy)));
}

// Lanes moved up by one, the last lane of the vector before into the first.
HWY_INLINE VI16 moveUp(VI16 before, VI16 v) {
#if HWY_TARGET <= HWY_AVX3_DL
  struct Index {
    alignas(64) std::uint16_t at[32];
    constexpr Index() : at() {
      for (int i = 0; i < 32; ++i) at[i] = static_cast<std::uint16_t>(31 + i);
    }
  };
  static constexpr Index kIndex;
  return VI16{_mm512_permutex2var_epi16(before.raw, _mm512_load_si512(kIndex.at), v.raw)};
#else
  const Tag<std::int16_t> d;
#if HWY_TARGET == HWY_AVX2
  before = hn::ConcatLowerUpper(d, v, before);
#endif
  return hn::CombineShiftRightBytes<14>(d, v, before);
#endif
}

// Saturated to signed bytes.
HWY_INLINE Vec<std::int8_t> packToSignedBytes(VI16 a, VI16 b) {
#if HWY_TARGET <= HWY_AVX3
  return Vec<std::int8_t>{_mm512_packs_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_AVX2
  return Vec<std::int8_t>{_mm256_packs_epi16(a.raw, b.raw)};
#elif HWY_ARCH_X86
  return Vec<std::int8_t>{_mm_packs_epi16(a.raw, b.raw)};
#else
  const hn::Half<Tag<std::int8_t>> half;
  return hn::Combine(Tag<std::int8_t>(), hn::DemoteTo(half, b), hn::DemoteTo(half, a));
#endif
}

// Lanes widened to twice their bits, in order over both results.
template <class Wide, class V>
HWY_INLINE Halves<Vec<Wide>> widenInOrder(V v) {
  const hn::Half<hn::DFromV<V>> half;
  const Tag<Wide> to;
  return {hn::PromoteTo(to, hn::LowerHalf(half, v)), hn::PromoteTo(to, hn::UpperHalf(half, v))};
}

// Back to lanes of half the bits, in order: saturated to bytes, or the low 16 bits.
HWY_INLINE VU8 saturateInOrder(const Halves<VI16>& v) {
  const VU8 packed = packToBytes(v.a, v.b);
#if HWY_TARGET <= HWY_AVX3
  return VU8{_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), packed.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VU8{_mm256_permute4x64_epi64(packed.raw, _MM_SHUFFLE(3, 1, 2, 0))};
#else
  return packed;
#endif
}
HWY_INLINE VI16 lowHalvesInOrder(const Halves<VI32>& v) {
  const Tag<std::int16_t> d;
  return hn::ConcatEven(d, hn::BitCast(d, v.b), hn::BitCast(d, v.a));
}

// A byte for every byte.
struct ByteTable {
  alignas(64) std::uint8_t at[256];
};

#if HWY_ARCH_X86 && HWY_TARGET > HWY_AVX3_DL
// The table for shuffles that give an entry of 16 by the low bits of an index, or nothing if the index is negative.
// Each row of 16, of the lower and of the upper half, is what turns the entries of the row before into its own.
constexpr ByteTable differences(const ByteTable& table) {
  ByteTable result{};
  for (int i = 0; i < 256; ++i) {
    result.at[i] = static_cast<std::uint8_t>(table.at[i] ^ (i % 128 < 16 ? 0 : table.at[i - 16]));
  }
  return result;
}
#endif

// The entry of a table for each byte.
template <const ByteTable& table>
HWY_INLINE VU8 lookUp(VU8 v) {
#if HWY_TARGET <= HWY_AVX3_DL
  const Tag<std::uint8_t> d;
  const VU8 t0 = hn::Load(d, table.at), t1 = hn::Load(d, table.at + 64), t2 = hn::Load(d, table.at + 128),
            t3 = hn::Load(d, table.at + 192);
  return VU8{_mm512_mask_blend_epi8(_mm512_movepi8_mask(v.raw), _mm512_permutex2var_epi8(t0.raw, v.raw, t1.raw),
                                    _mm512_permutex2var_epi8(t2.raw, v.raw, t3.raw))};
#elif HWY_ARCH_ARM
  // Quarters of the table; an index beyond a quarter leaves what is there.
  const VU8 quarter = all<std::uint8_t>(64);
  uint8x16_t result = vqtbl4q_u8(vld1q_u8_x4(table.at), v.raw);
  v = v - quarter;
  result = vqtbx4q_u8(result, vld1q_u8_x4(table.at + 64), v.raw);
  v = v - quarter;
  result = vqtbx4q_u8(result, vld1q_u8_x4(table.at + 128), v.raw);
  v = v - quarter;
  return VU8{vqtbx4q_u8(result, vld1q_u8_x4(table.at + 192), v.raw)};
#else
  static constexpr ByteTable kDifferences = differences(table);
  const Tag<std::uint8_t> d;
  const Tag<std::int8_t> signedTag;
  const auto row = all<std::int8_t>(16);
  auto lower = hn::BitCast(signedTag, v), upper = lower ^ all<std::int8_t>(-128);
  VU8 result = hn::Zero(d);
  for (int i = 0; i < 128; i += 16) {
    const VU8 ofLower = hn::LoadDup128(d, kDifferences.at + i), ofUpper = hn::LoadDup128(d, kDifferences.at + 128 + i);
    result = result ^ hn::TableLookupBytesOr0(ofLower, hn::BitCast(d, lower)) ^
             hn::TableLookupBytesOr0(ofUpper, hn::BitCast(d, upper));
    lower = hn::SaturatedSub(lower, row);
    upper = hn::SaturatedSub(upper, row);
  }
  return result;
#endif
}

// Copies n bytes, at most bytes of them, into or out of a local buffer of whole vectors.
template <std::size_t bytes>
HWY_INLINE void copyIn(void* local, const void* from, std::size_t n) {
#if HWY_TARGET <= HWY_AVX3
  const Tag<std::uint8_t> d;
  for (std::size_t i = 0; i < bytes; i += kLanes<std::uint8_t>) {
    const auto mask = hn::FirstN(d, n > i ? n - i : 0);
    hn::StoreU(hn::MaskedLoad(mask, d, static_cast<const std::uint8_t*>(from) + i), d,
               static_cast<std::uint8_t*>(local) + i);
  }
#else
  std::memset(local, 0, bytes);
  std::memcpy(local, from, n);
#endif
}

template <std::size_t bytes>
HWY_INLINE void copyOut(void* to, const void* local, std::size_t n) {
#if HWY_TARGET <= HWY_AVX3
  const Tag<std::uint8_t> d;
  for (std::size_t i = 0; i < bytes; i += kLanes<std::uint8_t>) {
    const auto mask = hn::FirstN(d, n > i ? n - i : 0);
    hn::BlendedStore(hn::LoadU(d, static_cast<const std::uint8_t*>(local) + i), mask, d,
                     static_cast<std::uint8_t*>(to) + i);
  }
#else
  std::memcpy(to, local, n);
#endif
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
