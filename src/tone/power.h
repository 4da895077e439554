// Powers with a rational exponent: at compile time, and tables to find them from at run time.
#ifndef ZUM_TONE_POWER_H
#define ZUM_TONE_POWER_H

#include <cstddef>
#include <cstdint>

namespace zum {

template <int numerator, int denominator>
struct Rational {
  static constexpr int kNumerator = numerator, kDenominator = denominator;
  static constexpr double kValue = static_cast<double>(numerator) / denominator;
};

constexpr double integerPower(double x, int n) {
  double result = 1;
  for (int i = 0; i < n; ++i) result *= x;
  return result;
}

// x in 1..2 to a positive exponent, to within a few units in the last place: the root by Newton's iteration, which
// falls toward it from above until rounding holds it.
template <class Exponent>
constexpr double powerFromOneToTwo(double x) {
  constexpr int n = Exponent::kNumerator, d = Exponent::kDenominator;
  const double power = integerPower(x, n);
  double root = integerPower(2, n / d + 1);
  while (true) {
    const double next = root - root * (1 - power / integerPower(root, d)) / d;
    if (!(next < root)) return root;
    root = next;
  }
}

// The same for any positive x.
template <class Exponent>
constexpr double rationalPower(double x) {
  constexpr double powerOfTwo = powerFromOneToTwo<Exponent>(2);
  double scale = 1;
  for (; x >= 2; x /= 2) scale *= powerOfTwo;
  for (; x < 1; x *= 2) scale /= powerOfTwo;
  return scale * powerFromOneToTwo<Exponent>(x);
}

// Powers of the middles of intervals, sixteen to an octave, for sixteen octaves: x in kLeast..kEnd. Bits 48 to 55 of x
// are the place of its interval: the low bits of its exponent and the high bits of its significand.
constexpr int kFirstOctave = -6, kOctaves = 16, kIntervals = 16;

template <class Exponent>
struct PowerTable {
  static constexpr double kLeast = 0x1p-6, kEnd = 0x1p10;

  struct Entry {
    double reciprocal, power;  // of the middle
  };
  alignas(64) Entry at[kOctaves * kIntervals];

  // The same as a product: what the octave gives and what the place in it gives.
  alignas(64) double ofOctave[kOctaves];
  alignas(64) double ofInterval[kIntervals], reciprocal[kIntervals];

  constexpr PowerTable() : at(), ofOctave(), ofInterval(), reciprocal() {
    constexpr int kBias = 1023;
    for (int i = 0; i < kIntervals; ++i) {
      const double middle = 1 + (i + 0.5) / kIntervals;
      ofInterval[i] = powerFromOneToTwo<Exponent>(middle);
      reciprocal[i] = 1 / middle;
    }
    double start = kLeast;
    for (int octave = kFirstOctave; octave < kFirstOctave + kOctaves; ++octave, start *= 2) {
      const int place = (octave + kBias) % kOctaves;
      ofOctave[place] = rationalPower<Exponent>(start);
      for (int i = 0; i < kIntervals; ++i) {
        at[place * kIntervals + i] = {reciprocal[i] / start, ofInterval[i] * ofOctave[place]};
      }
    }
  }
};

template <class Exponent>
inline constexpr PowerTable<Exponent> kPowerTable;

// The power of 1 + u as a polynomial in u, which is at most kFarthest from 0: the binomial series up to u^6, with that
// term replaced by the polynomial of degree 4 that stays closest to it, its difference from a Chebyshev polynomial.
template <class Exponent>
struct PowerPolynomial {
  static constexpr double kFarthest = 1.0 / (2 * kIntervals + 1);
  double coefficient[6];

  constexpr PowerPolynomial() : coefficient() {
    for (int i = 0; i < 6; ++i) coefficient[i] = binomial(i);
    const double h = kFarthest, last = binomial(6);
    coefficient[0] += last * integerPower(h, 6) / 32;
    coefficient[2] -= last * integerPower(h, 4) * 9 / 16;
    coefficient[4] += last * integerPower(h, 2) * 3 / 2;
  }

  // What the replacement changes, and what the rest of the series can come to.
  static constexpr double error() {
    const double replaced = binomial(6) * integerPower(kFarthest, 6) / 32,
                 rest = binomial(7) * integerPower(kFarthest, 7) / integerPower(1 - kFarthest, 7);
    return magnitude(replaced) + magnitude(rest);
  }

 private:
  static constexpr double magnitude(double x) { return x < 0 ? -x : x; }
  static constexpr double binomial(int n) {
    double result = 1;
    for (int i = 1; i <= n; ++i) result *= (Exponent::kValue - i + 1) / i;
    return result;
  }
};

template <class Exponent>
inline constexpr PowerPolynomial<Exponent> kPowerPolynomial;

// A bound of the relative error of a power that comes from the table and the polynomial, with room for some dozens of
// roundings, in whatever mode.
template <class Exponent>
inline constexpr double kPowerError = PowerPolynomial<Exponent>::error() + 0x1p-46;

}  // namespace zum

#endif
