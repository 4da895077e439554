// Pictures: the images of a call as channels of pixels, wherever the layout of its function has them, so that what a
// conversion computes is stated pixel by pixel, once for all layouts.
#pragma once

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/images.h"
#include "support/instruction_sets.h"
#include "support/plain.h"

namespace zumtest {

template <class T>
using Colour = std::array<T, 3>;

template <class Each>
void onEveryInstructionSet(const Each& each) {
  static const std::vector<int64_t> sets = instructionSets();
  for (const int64_t set : sets) {
    useInstructionSet(set);
    SCOPED_TRACE(hwy::TargetName(set));
    each();
  }
  useInstructionSet(kBestInstructionSet);
}

// The functions whose names match a shell pattern, at least one.
inline std::vector<Function> named(const std::string& pattern) {
  std::vector<Function> result;
  for (const Function& function : functions())
    if (fnmatch(pattern.c_str(), function.name.c_str(), FNM_EXTMATCH) == 0) result.push_back(function);
  EXPECT_FALSE(result.empty()) << pattern;
  return result;
}

// A function that finds another table of coefficients in its last argument.
inline Function withTable(const Function& function, const float* table) {
  Function result = function;
  result.invoke = [=](const Argument* given) {
    std::vector<Argument> arguments(given, given + function.kinds.size());
    arguments.back().pointer = const_cast<float*>(table);
    return function.invoke(arguments.data());
  };
  return result;
}

// The source or the destination of a function. Channels are R, G, B, alpha or Y, Cb, Cr, in this order whatever the
// model's is.
class Picture {
 public:
  enum Side { kSource, kDestination };

  // The planes are those of both sides, as in a Case.
  Picture(const Function& function, Side side, ZumiSize s, std::vector<Bytes>& planes) : size(s) {
    const std::string operation = function.name.substr(4, function.name.find('_') - 4);
    const std::size_t to = operation.find("To", 1);
    const bool hasOneModel = to == std::string::npos;
    const std::string model = side == kSource || hasOneModel ? operation.substr(0, to) : operation.substr(to + 2);
    const bool isBgr = model.find("BGR") != std::string::npos;
    const int crFirst = model.compare(0, 5, "YCrCb") == 0, chromaFirst = model.compare(0, 5, "CbYCr") == 0;

    std::vector<std::size_t> own;
    for (std::size_t i = 0; i < function.planes.size(); ++i)
      if (side == kSource ? function.planes[i].read() : function.planes[i].written()) own.push_back(i);
    // The channel whose samples are `first`, and every `stride` behind it, of a row of a plane.
    const auto add = [&](std::size_t p, int first, int stride, int columns) {
      const Plane& plane = function.planes[own[p]];
      sample_ = plane.sample;
      const int bytes = static_cast<int>(sample_.bytes), rowBytes = static_cast<int>(plane.rowBytes(size));
      channels_.push_back({planes[own[p]].data(), first * bytes, stride * bytes, rowBytes,
                           static_cast<int>(plane.rows(size)), columns / 2, plane.rowDivisor / 2});
    };
    const int samples = static_cast<int>(function.planes[own[0]].samplesPerColumn);
    if (own.size() == 1 && samples == 2) {  // Y, and Cb and Cr in turns
      add(0, chromaFirst, 2, 1);
      for (const int second : {crFirst, 1 - crFirst}) add(0, 2 * second + 1 - chromaFirst, 4, 2);
    } else if (own.size() == 2) {  // Y, and Cb with Cr
      add(0, 0, 1, 1);
      for (const int second : {crFirst, 1 - crFirst}) add(1, second, 2, function.planes[own[1]].columnDivisor);
    } else {
      const bool isPlanar = own.size() > 1;
      const int count = isPlanar ? static_cast<int>(own.size()) : samples;
      for (int k = 0; k < count; ++k) {
        const int place = isBgr && count >= 3 && k < 3 ? 2 - k : crFirst && k > 0 ? 3 - k : k;
        add(isPlanar ? place : 0, isPlanar ? 0 : place, isPlanar ? 1 : count,
            function.planes[own[isPlanar ? place : 0]].columnDivisor);
      }
    }
    const std::string bits = model.size() < 6 ? "" : model.substr(3, 3);
    if (channels_.size() == 1 && (bits == "565" || bits == "555")) greenBits_ = bits[1] - '0';
    blueFirst_ = isBgr;
  }

  // Pixels that share the chroma.
  int columns() const { return channels_.size() < 2 ? 1 : 1 << channels_[1].columnBits; }
  int rows() const { return channels_.size() < 2 ? 1 : 1 << channels_[1].rowBits; }

  // Whether there is a place for a channel of a pixel. Where there is none, it is 0, and stays so.
  bool has(int k, int x, int y) const { return find(k, x, y) != nullptr; }
  double get(int k, int x, int y) const {
    const Zum8u* at = find(k, x, y);
    if (!at) return 0;
    if (sample_.type == 'f') return read<Zum32f>(at);
    if (sample_.bytes == 4) return read<Zum32s>(at);
    if (sample_.bytes == 2) return sample_.type == 's' ? read<Zum16s>(at) : read<Zum16u>(at);
    return sample_.type == 's' ? read<Zum8s>(at) : *at;
  }
  void set(int k, int x, int y, double value) const {
    Zum8u* at = find(k, x, y);
    const auto single = static_cast<Zum32f>(value);
    const auto whole = sample_.type == 'f' ? 0 : static_cast<int64_t>(value);
    if (at) std::memcpy(at, sample_.type == 'f' ? static_cast<const void*>(&single) : &whole, sample_.bytes);
  }

  // The first three channels; if they are levels in the bits of one 16-bit sample, as bytes.
  template <class T = int>
  Colour<T> at(int x, int y) const {
    if (greenBits_) {
      const int p = static_cast<int>(get(0, x, y)), green = p >> 5 & ((1 << greenBits_) - 1);
      const T first = static_cast<T>(p % 32 * 8), last = static_cast<T>((p >> (5 + greenBits_)) % 32 * 8);
      return {blueFirst_ ? last : first, static_cast<T>(green << (8 - greenBits_)), blueFirst_ ? first : last};
    }
    return {static_cast<T>(get(0, x, y)), static_cast<T>(get(1, x, y)), static_cast<T>(get(2, x, y))};
  }
  template <class T>
  void set(int x, int y, const Colour<T>& colour) const {
    for (int k = 0; k < 3; ++k) set(k, x, y, static_cast<double>(colour[k]));
  }

  const ZumiSize size;

 private:
  struct Channel {
    Zum8u* plane;
    int first, stride, rowBytes, height;  // in bytes
    int columnBits, rowBits;              // logarithms of the pixels to a sample
  };

  Zum8u* find(int k, int x, int y) const {
    if (k >= static_cast<int>(channels_.size())) return nullptr;
    const Channel& c = channels_[k];
    const int at = (x >> c.columnBits) * c.stride + c.first, row = y >> c.rowBits;
    return at < c.rowBytes && row < c.height ? c.plane + static_cast<std::ptrdiff_t>(row) * c.rowBytes + at : nullptr;
  }
  template <class T>
  static T read(const Zum8u* at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
  }

  Sample sample_;
  std::vector<Channel> channels_;
  int greenBits_ = 0;  // of a 16-bit sample that holds all three channels
  bool blueFirst_ = false;
};

// Any bits, and in every fifth sample the smallest or the largest number; floats from 0 to 1.
inline void addNoise(Bytes& plane, Sample sample) {
  static std::mt19937 random(1);
  fill(plane.data(), sample, plane.size() / sample.bytes, 1, Content::kNoise, random());
  if (sample.type == 'f') return;
  for (std::size_t i = 0; i < plane.size(); i += sample.bytes) {
    const uint32_t bits = random();
    if (bits % 5 != 0) continue;
    std::fill_n(&plane[i], sample.bytes, bits >> 31 ? 0xFF : 0);
    if (sample.type == 's') plane[i + sample.bytes - 1] ^= 0x80;
  }
}

template <class Each>
void forEachPixel(const Picture& picture, const Each& each) {
  for (int y = 0; y < picture.size.height; ++y)
    for (int x = 0; x < picture.size.width; ++x) each(x, y);
}

// The planes of a case, with what a call made of the destinations.
inline std::vector<Bytes> planesBehind(const Case& c, std::vector<Bytes> destinations) {
  std::vector<Bytes> planes = c.pixels;
  std::size_t next = 0;
  for (std::size_t i = 0; i < planes.size(); ++i)
    if (c.function.planes[i].written()) planes[i] = std::move(destinations[next++]);
  return planes;
}
// All NaNs are one.
inline void uniteNans(const Function& function, std::vector<Bytes>& planes) {
  for (std::size_t i = 0; i < planes.size(); ++i)
    for (std::size_t at = 0; function.planes[i].sample.type == 'f' && at < planes[i].size(); at += sizeof(Zum32f)) {
      Zum32f v;
      std::memcpy(&v, &planes[i][at], sizeof v);
      if (v != v) std::memset(&planes[i][at], 0xFF, sizeof v);
    }
}

// Sets the source.
using Filling = std::function<void(const Picture& src)>;
using Statement = std::function<void(const Picture& src, const Picture& dst)>;

// Where a result is not what it should be.
inline std::string mismatches(const Picture& src, const Picture& wanted, const Picture& got) {
  std::ostringstream text;
  forEachPixel(wanted, [&](int x, int y) {
    for (int k = 0; k < 4 && text.tellp() < 300; ++k)
      if (const double is = got.get(k, x, y), should = wanted.get(k, x, y);
          is != should && (is == is || should == should))
        text << "\n  " << x << ", " << y << ": channel " << k << " is " << is << ", not " << should << ", from "
             << src.get(0, x, y) << ' ' << src.get(1, x, y) << ' ' << src.get(2, x, y);
  });
  return text.str();
}

// Compares what a function makes of a picture, of noise where it is not filled, with a statement of it, with every
// instruction set. The function must leave what the statement does not set.
inline void expectPicture(const Function& function, ZumiSize size, const Statement& statement,
                          const Filling& filling = nullptr, bool isTight = false) {
  Case c(function, size);
  for (std::size_t i = 0; i < c.pixels.size() && !filling; ++i) addNoise(c.pixels[i], function.planes[i].sample);
  const Picture src(function, Picture::kSource, size, c.pixels);
  if (filling) filling(src);
  std::vector<Bytes> wanted = c.pixels;
  const Picture dst(function, Picture::kDestination, size, wanted);
  statement(src, dst);
  uniteNans(function, wanted);
  Placement placement;
  placement.padding = function.traits.tightShows && !isTight;
  const Zum32s threads = threads_omp_of_n_zum;
  threads_omp_of_n_zum = 1;  // on a busy machine others cost more than they do
  onEveryInstructionSet([&] {
    PlacedCall call(c, placement);
    ASSERT_EQ(call(), expectedStatus(c)) << describe(c, placement);
    std::vector<Bytes> got = planesBehind(c, call.destinations());
    uniteNans(function, got);
    ASSERT_EQ(difference(wanted, got), "")
        << describe(c, placement) << mismatches(src, dst, {function, Picture::kDestination, size, got});
  });
  threads_omp_of_n_zum = threads;
}

// Whether steps are counted in whole samples: what is more of them is nothing.
inline void expectStepsInSamples(const std::string& pattern) {
  for (const Function& function : named(pattern)) {
    const Case c(function, {13, 3});
    std::vector<Bytes> images[2];
    for (const bool odd : {false, true}) {
      Call call(function, c.size, c.variant);
      for (std::size_t i = 0; i < c.pixels.size(); ++i) {
        const std::size_t bytes = call.rowBytes(i), step = bytes + 8;
        Bytes& image = images[odd].emplace_back(step * call.rows(i));
        for (std::size_t r = 0; r < call.rows(i); ++r) std::copy_n(&c.pixels[i][r * bytes], bytes, &image[r * step]);
      }
      for (std::size_t i = 0; i < c.pixels.size(); ++i)
        call.place(i, images[odd][i].data(),
                   static_cast<int>(call.rowBytes(i) + 8 + odd * (function.planes[i].sample.bytes - 1)));
      EXPECT_EQ(call(), expectedStatus(c)) << function.name;
    }
    EXPECT_EQ(difference(images[0], images[1]), "") << function.name;
  }
}

// What a function makes of a picture of one colour, at a column.
template <class S = int, class D = S>
Colour<D> converted(const Function& function, const Colour<S>& colour, int width, int x) {
  Case c(function, {width, 2});
  const Picture src(function, Picture::kSource, c.size, c.pixels);
  forEachPixel(src, [&](int u, int v) { src.set(u, v, colour); });
  const Outcome outcome = run(c, {});
  EXPECT_EQ(outcome.status, expectedStatus(c)) << function.name;
  std::vector<Bytes> planes = planesBehind(c, outcome.destinations);
  return Picture(function, Picture::kDestination, c.size, planes).at<D>(x, 0);
}

template <class S = int, class D = S>
Colour<D> converted(const std::string& name, const Colour<S>& colour, int width, int x) {
  return converted<S, D>(named(name).front(), colour, width, x);
}

constexpr int kColours = 1 << 17;

// Rows that end everywhere, of even and odd heights; then some of as many colours as are wanted, in and behind blocks.
inline std::vector<ZumiSize> sizesFor(const Function& function, int colours) {
  std::vector<ZumiSize> sizes;
  const int least = std::max(function.traits.minimum.width, function.traits.narrowest),
            lowest = function.traits.minimum.height;
  if (!function.takesSteps())  // images of 256 pixels and more are in one piece
    sizes = {{16, 16}, {14, 14}, {10, 30}, {254, 1}, {256, 1}, {2, 129}, {17, 20}, {26, 11}, {66, 7}};
  for (int width = least; width <= 150; ++width) sizes.push_back({width, std::max(lowest, 1 + width % 5)});
  for (const int width : {1021, 7}) sizes.push_back({width, 2 + colours / 2 / width});
  return sizes;
}

// Pictures of all these sizes.
inline void expectPictures(const Function& function, int colours, const Statement& statement) {
  for (const ZumiSize size : sizesFor(function, colours))
    ASSERT_NO_FATAL_FAILURE(expectPicture(function, size, statement));
}

}  // namespace zumtest
