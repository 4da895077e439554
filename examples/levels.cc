// Fewer levels, with the ways to hide it.
#include <algorithm>
#include <string>

#include "sections.h"

namespace {

struct Way {
  const char* name;
  ZumDitherType dither;
  int noise;
};
constexpr Way kWays[] = {
    {"nearest", zumDitherNone, 0},
    {"ordered", zumDitherBayer, 0},
    {"ordered with noise", zumDitherBayer, 60},
    {"Floyd-Steinberg", zumDitherFS, 0},
    {"Jarvis-Judice-Ninke", zumDitherJJN, 0},
    {"Stucki", zumDitherStucki, 0},
};

template <int levels>
void photograph(Exhibition& show) {
  const Picture& photo = show.photo();
  for (const Way& way : kWays) {
    Picture reduced(photo.width, photo.height, 3);
    show.convert("zumiReduceBits_8u_C3R, " + std::string(way.name), [&] {
      return zumiReduceBits_8u_C3R(photo.data(), photo.step(), reduced.data(), reduced.step(), photo.size(), way.noise,
                                   way.dither, levels);
    });
    show.hang(way.name, std::move(reduced));
  }
}

// A dark ramp of few 8-bit levels in samples of another depth, where the first level becomes `one`.
constexpr int kRampLevels = 16;

template <class T>
std::vector<T> ramp(ZumiSize size, double one) {
  std::vector<T> samples;
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) samples.push_back(static_cast<T>(one * kRampLevels * x / size.width));
  }
  return samples;
}

template <class T>
using Reduction = ZumStatus(const T*, int, Zum8u*, int, ZumiSize, int, ZumDitherType, int);

template <class T>
void reduceRamp(Exhibition& show, const Named<Reduction<T>>& named, const std::string& depth, double one) {
  const ZumiSize size = show.photo().size();
  const std::vector<T> samples = ramp<T>(size, one);
  for (const Way& way : {kWays[0], kWays[1], kWays[3]}) {
    Picture reduced(size.width, size.height, 1);
    show.convert(std::string(named.name) + ", " + way.name, [&] {
      return named.function(samples.data(), size.width * static_cast<int>(sizeof(T)), reduced.data(), reduced.step(),
                            size, way.noise, way.dither, 256);
    });
    for (uint8_t& sample : reduced.samples) sample = static_cast<uint8_t>(std::min(255, sample * 255 / kRampLevels));
    show.hang(depth + ", " + way.name, std::move(reduced));
  }
}

void ramps(Exhibition& show) {
  reduceRamp<Zum16u>(show, NAMED(zumiReduceBits_16u8u_C1R), "16-bit", 256);
  reduceRamp<Zum32f>(show, NAMED(zumiReduceBits_32f8u_C1R), "Floats", 1 / 255.0);
}

}  // namespace

std::vector<Section> levelSections() {
  return {
      {"2 levels", "Black or full in every channel: all else is the work of the eye.", photograph<2>},
      {"4 levels", "The same with two levels more.", photograph<4>},
      {"16 levels", "Bands show in smooth areas and in shadows, and go away.", photograph<16>},
      {"Deep ramps", "A dark ramp over sixteen of the 256 levels of a byte, made sixteen times as bright to be seen.",
       ramps},
  };
}
