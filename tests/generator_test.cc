// The uniform random generator and the extended arithmetic it is defined in.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "../src/frame/extended.h"
#include "zumcc.h"

namespace {

#ifdef __SIZEOF_INT128__
using zum::SoftExtended;  // not what the library computes with, where the processor has the format
#else
using SoftExtended = long double;
#endif

// The functions of both sample types under one name.
ZumStatus create(ZumsRandUniState_16s** state, Zum16s low, Zum16s high, uint32_t seed) {
  return zumsRandUniformInitAlloc_16s(state, low, high, seed);
}
ZumStatus create(ZumsRandUniState_32f** state, Zum32f low, Zum32f high, uint32_t seed) {
  return zumsRandUniformInitAlloc_32f(state, low, high, seed);
}
ZumStatus generate(Zum16s* dst, int len, ZumsRandUniState_16s* state) { return zumsRandUniform_16s(dst, len, state); }
ZumStatus generate(Zum32f* dst, int len, ZumsRandUniState_32f* state) { return zumsRandUniform_32f(dst, len, state); }
ZumStatus destroy(ZumsRandUniState_16s* state) { return zumsRandUniformFree_16s(state); }
ZumStatus destroy(ZumsRandUniState_32f* state) { return zumsRandUniformFree_32f(state); }

template <class State, class T>
std::vector<T> numbers(T low, T high, uint32_t seed, std::vector<int> lengths) {
  State* state = nullptr;
  EXPECT_EQ(zumOk, create(&state, low, high, seed));
  std::vector<T> all;
  for (int len : lengths) {
    std::vector<T> part(len);
    EXPECT_EQ(zumOk, generate(part.data(), len, state));
    all.insert(all.end(), part.begin(), part.end());
  }
  EXPECT_EQ(zumOk, destroy(state));
  return all;
}

// The words behind the numbers, from the recurrences on whole histories.
std::vector<int32_t> words(uint32_t seed, size_t count) {
  const auto next = [](uint32_t x) { return uint32_t((uint64_t{x} * 69069 + 1013904243) % (uint64_t{1} << 32)); };
  std::vector<uint32_t> x = {next(next(seed)), next(seed), seed};
  std::vector<int32_t> result;
  uint32_t lcg = 1131199209, borrow = 1;
  for (size_t n = 3; n < count + 3; ++n) {
    const uint32_t difference = x[n - 2] - x[n - 3] - borrow;
    borrow = difference >> 31;
    x.push_back(difference - 18 * borrow);
    lcg = next(lcg);
    result.push_back(int32_t(x[n] + lcg));
  }
  return result;
}

double unitScale() {
  const uint64_t bits = 0x3DF0000000000007;
  double value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

TEST(Generator, FirstNumbers) {
  const std::vector<Zum16s> expected = {0, 133, 216, 412, 361, 758, 844, 242, 783, 550, 993, 553};
  EXPECT_EQ(expected, numbers<ZumsRandUniState_16s>(Zum16s{0}, Zum16s{1024}, 0, {12}));
}

TEST(Generator, NumbersOf16s) {
  struct Range {
    Zum16s low, high;
    uint32_t seed;
  };
  for (const Range& c : {Range{0, 1024, 1}, Range{-32768, 32767, 77}, Range{100, -100, 0xFFFFFFFF}, Range{-7, -7, 5}}) {
    const std::vector<Zum16s> got = numbers<ZumsRandUniState_16s>(c.low, c.high, c.seed, {1, 1, 498, 500});
    const std::vector<int32_t> r = words(c.seed, got.size());
    for (size_t i = 0; i < got.size(); ++i) {
      const double value = r[i] * ((c.high - c.low) * unitScale()) + (c.low + c.high) * 0.5;
      ASSERT_EQ(std::trunc(value), got[i]) << c.low << ".." << c.high << " at " << i;
    }
  }
}

TEST(Generator, NumbersOf32f) {
  struct Range {
    Zum32f low, high;
  };
  for (const Range& c : {Range{0, 1}, Range{-1, 1}, Range{0.1f, 0.7f}, Range{5, -3}, Range{2.5f, 2.5f},
                         Range{1e-30f, 1e30f}, Range{0, 1e-40f}, Range{-FLT_MAX, FLT_MAX}}) {
    const std::vector<Zum32f> got = numbers<ZumsRandUniState_32f>(c.low, c.high, 3, {1, 1, 1998, 2000});
    const std::vector<int32_t> r = words(3, got.size());
    const SoftExtended low = double(c.low), high = double(c.high);
    const SoftExtended mean = double((low + high) * 0.5), scale = double((high - low) * unitScale());
    for (size_t i = 0; i < got.size(); ++i) {
      ASSERT_EQ(float(SoftExtended(r[i]) * scale + mean), got[i]) << c.low << ".." << c.high << " at " << i;
    }
  }
}

template <class State, class Other, class T>
void checkStatuses() {
  State* state = nullptr;
  T sample = 0;
  EXPECT_EQ(zumErrNullPtr, create(static_cast<State**>(nullptr), T{0}, T{1}, 0));
  ASSERT_EQ(zumOk, create(&state, T{0}, T{1}, 0));
  auto* wrongKind = reinterpret_cast<Other*>(state);
  auto* memory = reinterpret_cast<std::conditional_t<std::is_same_v<T, Zum16s>, Zum32f, Zum16s>*>(&sample);
  EXPECT_EQ(zumErrNullPtr, generate(static_cast<T*>(nullptr), 0, state));
  EXPECT_EQ(zumErrNullPtr, generate(&sample, 0, static_cast<State*>(nullptr)));
  EXPECT_EQ(zumErrSize, generate(&sample, 0, state));
  EXPECT_EQ(zumErrSize, generate(memory, -1, wrongKind));
  EXPECT_EQ(zumErrContextMatch, generate(memory, 1, wrongKind));
  EXPECT_EQ(zumErrContextMatch, destroy(wrongKind));
  EXPECT_EQ(zumErrNullPtr, destroy(static_cast<State*>(nullptr)));
  EXPECT_EQ(zumOk, destroy(state));

  const auto normal = i_malloc;
  i_malloc = [](size_t) -> void* { return nullptr; };
  State* const before = reinterpret_cast<State*>(&sample);
  State* untouched = before;
  EXPECT_EQ(zumErrMemAlloc, create(&untouched, T{0}, T{1}, 0));
  i_malloc = normal;
  EXPECT_EQ(before, untouched);
}

TEST(Generator, Statuses) {
  checkStatuses<ZumsRandUniState_16s, ZumsRandUniState_32f, Zum16s>();
  checkStatuses<ZumsRandUniState_32f, ZumsRandUniState_16s, Zum32f>();
}

#if LDBL_MANT_DIG == 64 && defined(__SIZEOF_INT128__)
TEST(SoftExtended, AgreesWithTheProcessor) {
  std::mt19937_64 random(1);
  // Few bits far apart make ties and values just beside them.
  const auto operand = [&] {
    const double wide = double(int64_t(random()) >> (random() % 64));
    const double sparse = std::ldexp(1.0, int(random() % 3)) + std::ldexp(1.0, -int(random() % 52));
    return std::ldexp(random() % 2 != 0 ? wide : (random() % 2 != 0 ? sparse : -sparse), int(random() % 150) - 75);
  };
  const auto check = [](long double expected, SoftExtended got) {
    ASSERT_EQ(double(expected), double(got));
    ASSERT_EQ(float(expected), float(got));
    ASSERT_EQ(std::signbit(expected), std::signbit(double(got)));
    if (std::fabs(expected) < 2147483647) {
      ASSERT_EQ(int32_t(expected), int32_t(got));
    }
    // Nothing is left below the double either.
    const double high = double(expected);
    ASSERT_EQ(double(expected - high), double(got - SoftExtended(high)));
  };
  for (int i = 0; i < 300000; ++i) {
    const double a = operand(), b = operand(), c = operand();
    const long double product = static_cast<long double>(a) * b, sum = static_cast<long double>(a) + b;
    check(product, SoftExtended(a) * b);
    check(sum, SoftExtended(a) + b);
    check(product + c, SoftExtended(a) * b + c);
    check(sum - c, SoftExtended(a) + b - c);
    check(sum * sum, (SoftExtended(a) + b) * (SoftExtended(a) + b));
    check(sum - product, (SoftExtended(a) + b) - SoftExtended(a) * b);
    if (HasFatalFailure()) FAIL() << a << ' ' << b << ' ' << c;
  }
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(-infinity, double(SoftExtended(1) - infinity));
  EXPECT_TRUE(std::isnan(float(SoftExtended(0) * infinity + 1)));
}
#endif

}  // namespace
