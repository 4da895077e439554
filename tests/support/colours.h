// Colours in rows, converted by a function of the library with every instruction set and by a formula for one colour.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "support/instruction_sets.h"
#include "support/plain.h"
#include "zumcc.h"

namespace zumtest {

template <class T>
using Colour = std::array<T, 3>;

template <class S, class D>
using Conversion = ZumStatus(const S*, int, D*, int, ZumiSize);

// Rows of pixels behind one another.
template <class S, class D>
std::vector<D> convert(Conversion<S, D>* function, const std::vector<S>& src, int channels, int width,
                       std::vector<D> dst = {}) {
  const int samples = width * channels;
  dst.resize(src.size());
  EXPECT_EQ(zumOk, function(src.data(), samples * static_cast<int>(sizeof(S)), dst.data(),
                            samples * static_cast<int>(sizeof(D)), {width, static_cast<int>(src.size()) / samples}));
  return dst;
}

// Compares the function with a formula of a colour and of whether it is in a column behind the last whole block. In the
// wide rows nearly all columns are block columns, in the narrow ones none.
template <class S, class D, class Formula>
void compare(Conversion<S, D>* function, int channels, int block, const std::vector<Colour<S>>& colours,
             const Formula& formula) {
  static const std::vector<int64_t> sets = instructionSets();
  for (const int width : {1023, 3}) {
    const std::size_t pixels = (colours.size() + width - 1) / width * width;
    std::vector<S> src;
    std::vector<D> wanted;
    for (std::size_t i = 0; i < pixels; ++i) {
      const Colour<S>& colour = colours[i % colours.size()];
      const Colour<D> result = formula(colour, static_cast<int>(i % width) >= width / block * block);
      for (int k = 0; k < channels; ++k) src.push_back(k < 3 ? colour[k] : S{1});
      for (int k = 0; k < channels; ++k) wanted.push_back(k < 3 ? result[k] : D{0});
    }
    for (const int64_t set : sets) {
      useInstructionSet(set);
      const std::vector<D> got = convert(function, src, channels, width);
      for (std::size_t i = 0; i < got.size(); ++i) {
        if (got[i] == wanted[i]) continue;
        const S* const in = &src[i / channels * channels];
        FAIL() << hwy::TargetName(set) << ", rows of " << width << ", colour " << +in[0] << ' ' << +in[1] << ' '
               << +in[2] << ", channel " << i % channels << ": " << +got[i] << ", not " << +wanted[i];
      }
    }
  }
}

// 8-bit colours all over the cube: of all 2^24, every n-th.
inline std::vector<Colour<Zum8u>> everyNth(unsigned n) {
  std::vector<Colour<Zum8u>> colours;
  for (unsigned i = 0; i < 1u << 24; i += n)
    colours.push_back({static_cast<Zum8u>(i), static_cast<Zum8u>(i >> 8), static_cast<Zum8u>(i >> 16)});
  return colours;
}

// One thread: on a busy machine others cost more than they do.
class ColourTest : public testing::Test {
 protected:
  ColourTest() { threads_omp_of_n_zum = 1; }
  ~ColourTest() override {
    useInstructionSet(kBestInstructionSet);
    threads_omp_of_n_zum = threads_;
  }

 private:
  const Zum32s threads_ = threads_omp_of_n_zum;
};

}  // namespace zumtest
