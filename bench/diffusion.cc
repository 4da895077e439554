// Error diffusion against its plain form, which walks pixel by pixel: nanoseconds for each sample of an image, and how
// many times faster the library is. The two take turns; the best times count, of the processor where there is one
// thread.
//
//   zum_bench_diffusion [--isa=ssse3|avx2|avx512] [--threads=N] [--size=WxH] [--runs=N] [--only=8u_C3]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "reduce/diffusion_rows.h"
#include "support/instruction_sets.h"

namespace zum {
namespace {

struct Options {
  ZumiSize size{1920, 1080};
  int runs = 10;
  std::string only;  // depths and layout, such as 8u_C3
};

double now() {
  if (threads_omp_of_n_zum == 1) return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

template <class Src>
std::vector<Src> gradient(ZumiSize size, int samples) {
  std::vector<Src> image;
  for (int y = 0; y < size.height; ++y) {
    for (int i = 0; i < size.width * samples; ++i) {
      const double value = (i / samples + y) % 1000 / 1000.0, lowest = std::numeric_limits<Src>::min();
      image.push_back(static_cast<Src>(
          std::is_same_v<Src, Zum32f> ? value : lowest + value * (std::numeric_limits<Src>::max() - lowest)));
    }
  }
  return image;
}

template <class Src, class Dst>
using Function = ZumStatus(const Src*, int, Dst*, int, ZumiSize, int, ZumDitherType, int);

template <class Method, class Src, class Dst>
void compare(const Options& options, const char* name, Function<Src, Dst>* function, int samples,
             ZumDitherType dither) {
  constexpr int kLevels = 4;
  const ZumiSize size = options.size;
  const std::vector<Src> src = gradient<Src>(size, samples);
  std::vector<Dst> dst(src.size()), plain(src.size());
  std::vector<float> errors(errorLength<Method>(size.width));
  const int ofRow = size.width * samples, srcStep = ofRow * sizeof(Src), dstStep = ofRow * sizeof(Dst);
  const Diffusion diffusion{gridOf<Depths<Src, Dst>>(kLevels), nullptr};
  double plainTime = 1e9, time = 1e9;
  for (int run = 0; run < options.runs; ++run) {
    const double start = now();
    diffuseRows<Method>(Section<Src, Dst>{{src.data(), srcStep}, {plain.data(), dstStep}, size, samples, 0, samples},
                        diffusion, errors.data());
    const double middle = now();
    function(src.data(), srcStep, dst.data(), dstStep, size, 0, dither, kLevels);
    time = std::min(time, now() - middle);
    plainTime = std::min(plainTime, middle - start);
  }
  const char* const methods[] = {"", "FS", "JJN", "Stucki"};
  const double ofSample = 1e9 / (static_cast<double>(ofRow) * size.height);
  std::printf("%-9s %-7s plain %6.2f ns, here %5.2f ns: %5.2f times%s\n", name, methods[dither], plainTime * ofSample,
              time * ofSample, plainTime / time,
              threads_omp_of_n_zum == 1 && dst != plain ? ", and another result" : "");
}

template <class Src, class Dst>
void compareAll(const Options& options, const char* name, Function<Src, Dst>* function, int samples) {
  if (!options.only.empty() && options.only != name) return;
  compare<FloydSteinberg<Src, Dst>>(options, name, function, samples, zumDitherFS);
  compare<ThreeRows<JarvisJudiceNinke>>(options, name, function, samples, zumDitherJJN);
  compare<ThreeRows<Stucki>>(options, name, function, samples, zumDitherStucki);
}

int benchmarkMain(int argc, char** argv) {
  Options options;
  threads_omp_of_n_zum = 1;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const std::size_t equals = argument.find('=');
    const std::string key = argument.substr(0, equals),
                      value = argument.substr(std::min(equals, argument.size() - 1) + 1);
    if (key == "--threads") {
      threads_omp_of_n_zum = std::max(1, std::atoi(value.c_str()));
    } else if (key == "--runs") {
      options.runs = std::max(1, std::atoi(value.c_str()));
    } else if (key == "--only") {
      options.only = value;
    } else if (key == "--size" && std::sscanf(value.c_str(), "%dx%d", &options.size.width, &options.size.height) == 2) {
    } else if (key == "--isa" && (value == "ssse3" || value == "avx2" || value == "avx512")) {
      zumtest::useInstructionSet(value == "ssse3" ? HWY_SSSE3 : value == "avx2" ? HWY_AVX2 : HWY_AVX3_DL);
    } else {
      std::fprintf(stderr, "unknown: %s\n", argv[i]);
      return 1;
    }
  }
#define ZUM_COMPARE(tag, Src, Dst)                                          \
  compareAll<Src, Dst>(options, #tag "_C1", zumiReduceBits_##tag##_C1R, 1); \
  compareAll<Src, Dst>(options, #tag "_C3", zumiReduceBits_##tag##_C3R, 3); \
  compareAll<Src, Dst>(options, #tag "_C4", zumiReduceBits_##tag##_C4R, 4);
  ZUM_DEPTH_PAIRS(ZUM_COMPARE)
#undef ZUM_COMPARE
  return 0;
}

}  // namespace
}  // namespace zum

int main(int argc, char** argv) { return zum::benchmarkMain(argc, argv); }
