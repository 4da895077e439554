#include "frame/generator.h"

#include <cstring>
#include <new>

#include "frame/extended.h"

struct ZumsRandUniState_16s : zum::UniformGenerator<Zum16s> {
  using UniformGenerator::UniformGenerator;
};
struct ZumsRandUniState_32f : zum::UniformGenerator<Zum32f> {
  using UniformGenerator::UniformGenerator;
};

namespace zum {
namespace {

// What differs by sample type: the mark that the record carries, the memory for it, and how a value becomes a sample.
template <class T>
struct Kind;
template <>
struct Kind<Zum16s> {
  static constexpr Zum32s kId = 36;
  static constexpr int kAllocatedSamples = 48;
  static Zum16s* allocate() { return zumsMalloc_16s(kAllocatedSamples); }
  static Zum16s sample(Extended value) { return Zum16s(int32_t(value)); }
};
template <>
struct Kind<Zum32f> {
  static constexpr Zum32s kId = 37;
  static constexpr int kAllocatedSamples = 52;
  static Zum32f* allocate() { return zumsMalloc_32f(kAllocatedSamples); }
  static Zum32f sample(Extended value) { return Zum32f(value); }
};

constexpr uint32_t congruential(uint32_t x) { return x * 69069 + 1013904243; }
constexpr uint32_t kCongruentialStart = 0x436CBAE9;
// Subtracted from a word that came out negative: the modulus of that sequence is 2^32 - 18.
constexpr uint32_t kModulusGap = 18;

// Not exactly 2^-32: the seven units in the last place show in the results.
constexpr double kUnitScale = 0x1.0000000000007p-32;

}  // namespace

template <class T>
UniformGenerator<T>::UniformGenerator(T rangeLow, T rangeHigh, uint32_t seedWord)
    : idCtx(Kind<T>::kId),
      seed(seedWord),
      low(rangeLow),
      high(rangeHigh),
      mean(double((Extended(low) + Extended(high)) * Extended(0.5))),
      scale(double((Extended(high) - Extended(low)) * Extended(kUnitScale))),
      lcg(kCongruentialStart),
      s1(seedWord),
      s2(congruential(s1)),
      s3(congruential(s2)),
      carry(-1) {}

template <class T>
void UniformGenerator<T>::fill(T* dst, int len) {
  UniformGenerator g = *this;
  const Extended extendedScale = scale, extendedMean = mean;
  for (int i = 0; i < len; ++i) {
    g.lcg = congruential(g.lcg);
    const uint32_t difference = g.s2 - g.s3 + uint32_t(g.carry);
    g.carry = int32_t(difference) < 0 ? -1 : 0;
    g.s3 = g.s2;
    g.s2 = g.s1;
    g.s1 = difference - (kModulusGap & uint32_t(g.carry));
    const Extended value = Extended(int32_t(g.s1 + g.lcg)) * extendedScale + extendedMean;
    const T sample = Kind<T>::sample(value);
    std::memcpy(dst + i, &sample, sizeof(T));  // dst may be unaligned
  }
  *this = g;
}

template struct UniformGenerator<Zum16s>;
template struct UniformGenerator<Zum32f>;

namespace {

template <class State, class T>
ZumStatus create(State** state, T low, T high, uint32_t seed) {
  static_assert(sizeof(State) <= Kind<T>::kAllocatedSamples * sizeof(T));
  if (!state) return zumErrNullPtr;
  T* memory = Kind<T>::allocate();
  if (!memory) return zumErrMemAlloc;
  *state = new (memory) State(low, high, seed);
  return zumOk;
}

template <class State, class T>
ZumStatus generate(T* dst, int len, State* state) {
  if (!dst || !state) return zumErrNullPtr;
  if (len < 1) return zumErrSize;
  if (state->idCtx != Kind<T>::kId) return zumErrContextMatch;
  state->fill(dst, len);
  return zumOk;
}

template <class T, class State>
ZumStatus destroy(State* state) {
  if (!state) return zumErrNullPtr;
  if (state->idCtx != Kind<T>::kId) return zumErrContextMatch;
  zumsFree(state);
  return zumOk;
}

}  // namespace
}  // namespace zum

ZumStatus zumsRandUniformInitAlloc_16s(ZumsRandUniState_16s** pRandUniState, Zum16s low, Zum16s high, uint32_t seed) {
  return zum::create(pRandUniState, low, high, seed);
}
ZumStatus zumsRandUniformInitAlloc_32f(ZumsRandUniState_32f** pRandUniState, Zum32f low, Zum32f high, uint32_t seed) {
  return zum::create(pRandUniState, low, high, seed);
}
ZumStatus zumsRandUniform_16s(Zum16s* pDst, int len, ZumsRandUniState_16s* pRandUniState) {
  return zum::generate(pDst, len, pRandUniState);
}
ZumStatus zumsRandUniform_32f(Zum32f* pDst, int len, ZumsRandUniState_32f* pRandUniState) {
  return zum::generate(pDst, len, pRandUniState);
}
ZumStatus zumsRandUniformFree_16s(ZumsRandUniState_16s* pRandUniState) { return zum::destroy<Zum16s>(pRandUniState); }
ZumStatus zumsRandUniformFree_32f(ZumsRandUniState_32f* pRandUniState) { return zum::destroy<Zum32f>(pRandUniState); }
