// Functions of a colour: rows of many colours against a formula for one.
#pragma once

#include <limits>
#include <type_traits>

#include "support/pictures.h"

namespace zumtest {

// Samples as numbers from 0 on.
template <class T>
constexpr int kLowest = std::is_integral_v<T> ? static_cast<int>(std::numeric_limits<T>::min()) : 0;
template <class T>
Colour<float> levels(const Colour<T>& c) {
  return {static_cast<float>(c[0] - kLowest<T>), static_cast<float>(c[1] - kLowest<T>),
          static_cast<float>(c[2] - kLowest<T>)};
}

// Compares functions with a formula of a colour and of whether it is in a column behind the last whole block. In the
// wide rows nearly all columns are block columns, in the narrow ones none.
template <class S, class Formula>
void compare(const Function& function, int block, const std::vector<Colour<S>>& colours, const Formula& formula) {
  constexpr std::size_t kPixels = 1 << 17;  // at a time
  for (const int width : {1023, 3}) {
    for (std::size_t first = 0; first < colours.size(); first += kPixels) {
      const int pixels = static_cast<int>(std::min(kPixels, colours.size() - first));
      const auto statement = [&](const Picture& src, const Picture& dst) {
        forEachPixel(src, [&](int x, int y) { dst.set(x, y, formula(src.at<S>(x, y), x >= width / block * block)); });
      };
      const auto filling = [&](const Picture& src) {
        forEachPixel(src, [&](int x, int y) { src.set(x, y, colours[first + (y * width + x) % pixels]); });
      };
      ASSERT_NO_FATAL_FAILURE(expectPicture(function, {width, (pixels + width - 1) / width}, statement, filling));
    }
  }
}
template <class S, class Formula>
void compare(const std::string& functions, int block, const std::vector<Colour<S>>& colours, const Formula& formula) {
  for (const Function& function : named(functions)) ASSERT_NO_FATAL_FAILURE(compare(function, block, colours, formula));
}

// A pixel in a block and one behind, of one colour.
template <class S, class D>
void expectColour(const char* function, const Colour<S>& in, const Colour<D>& block, const Colour<D>& tail) {
  EXPECT_EQ(block, (converted<S, D>(function, in, 9, 0))) << function;
  EXPECT_EQ(tail, (converted<S, D>(function, in, 9, 8))) << function;
}
template <class T>
void expectColour(const char* function, const Colour<T>& in, const Colour<T>& everywhere) {
  expectColour<T, T>(function, in, everywhere, everywhere);
}

// 8-bit colours all over the cube: of all 2^24, every n-th. A step prime to the channels' 256 values reaches every
// value of each.
inline std::vector<Colour<Zum8u>> everyNth(unsigned n) {
  std::vector<Colour<Zum8u>> colours;
  for (unsigned i = 0; i < 1u << 24; i += n)
    colours.push_back({static_cast<Zum8u>(i), static_cast<Zum8u>(i >> 8), static_cast<Zum8u>(i >> 16)});
  return colours;
}

// Samples of any value, every fourth the largest or the smallest; floats from -0.5 to 1.5.
template <class T>
std::vector<Colour<T>> anyColours(int count) {
  std::minstd_rand random;
  std::vector<Colour<T>> colours(count);
  for (Colour<T>& colour : colours) {
    for (T& sample : colour) {
      const auto bits = static_cast<unsigned>(random() >> 7 & 0xFFFF);
      sample = static_cast<T>(bits % 4   ? bits
                              : bits % 8 ? std::numeric_limits<T>::max()
                                         : std::numeric_limits<T>::min());
      if (std::is_same_v<T, Zum32f>) sample = static_cast<T>(bits) / 32768 - static_cast<T>(0.5);
    }
  }
  return colours;
}

// 16-bit colours: gray within two units, ties, colours near the borders of sextants and of the range, dark ones, gray,
// any. Signed samples are the others less 32768.
template <class T>
std::vector<Colour<T>> deepColours(int count = 1 << 18) {
  std::minstd_rand random;
  const auto any = [&] { return static_cast<int>(random() >> 8 & 0xFFFF); };
  constexpr int kEdges[] = {0, 1, 10922, 10923, 21844, 21845, 21846, 32767, 32768, 43689, 43690, 43691, 65534, 65535};
  std::vector<Colour<T>> colours;
  for (int i = 0; i < count; ++i) {
    const int base[3] = {i & 0xFFFF, any(), any()};
    Colour<T> c;
    for (int k = 0; k < 3; ++k) {
      int v = base[k];
      if (i % 7 == 1) v = (base[0] + any() % 3) & 0xFFFF;
      if (i % 7 == 2) v = base[any() % 3];
      if (i % 7 == 3) v = kEdges[any() % std::size(kEdges)];
      if (i % 7 == 4) v >>= any() % 16;
      if (i % 7 == 5 && k == 2) v = 0;
      c[k] = static_cast<T>(v + kLowest<T>);
    }
    colours.push_back(c);
  }
  return colours;
}

}  // namespace zumtest
