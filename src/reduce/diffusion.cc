#include "reduce/diffusion.h"

#include <omp.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

#include "frame/platform.h"
#include "reduce/diffusion_rows.h"
#include "reduce/wavefront.h"

namespace zum {
namespace {

// The threads that the runtime grants, which decides how channels are divided among sections.
int teamSize() {
  const int requested = requestedThreads();
  int granted = 1;
  if (requested > 1) {
#pragma omp parallel num_threads(requested)
    {
#pragma omp single
      granted = omp_get_num_threads();
    }
  }
  return granted;
}

// Where section i of n begins: as even as it goes, the larger ones first.
int firstChannel(int channels, int n, int i) { return channels / n * i + std::min(i, channels % n); }

// The range of the threshold is centred on half a step.
float edgeOfNoise(int percent, float step) { return static_cast<float>(percent) * step / 100.0f; }

// The bytes of a channel's image and whatever is between them.
struct Extent {
  std::uintptr_t begin, end;
};

template <class T>
Extent extent(const Rows<T>& rows, ZumiSize size, int samples) {
  const auto first = reinterpret_cast<std::uintptr_t>(rows.row(0)),
             last = reinterpret_cast<std::uintptr_t>(rows.row(size.height - 1));
  return {std::min(first, last), std::max(first, last) + sizeof(T) * samples * size.width};
}

// Whether rows can be worked on before those above them are done: none is written over another one.
template <class Src, class Dst>
bool rowsAreApart(const Section<Src, Dst>& all) {
  const auto apart = [&](const auto& rows, std::size_t sample) {
    return all.size.height == 1 ||
           static_cast<std::size_t>(std::abs(rows.step)) >= sample * all.samples * all.size.width;
  };
  if (!apart(all.dst, sizeof(Dst))) return false;
  const Extent src = extent(all.src, all.size, all.samples), dst = extent(all.dst, all.size, all.samples);
  if (src.end <= dst.begin || dst.end <= src.begin) return true;
  const bool inPlace = static_cast<const void*>(all.src.base) == all.dst.base && all.src.step == all.dst.step;
  return inPlace && apart(all.src, sizeof(Src)) && (sizeof(Src) == sizeof(Dst) || all.samples == 1);
}

constexpr int kMostSections = 4, kMostWaves = 16;

template <class Method, class Src, class Dst>
ZumStatus diffuseSections(const Section<Src, Dst>& all, const Diffusion& diffusion,
                          const WaveKernel<Src, Dst>& kernel) {
  const int channels = all.end - all.firstChannel, team = channels == 1 ? 1 : teamSize(),
            sections = std::min(team, channels);
  const std::int64_t length = errorLength<Method>(all.size.width);
  if (length * sections > std::numeric_limits<int>::max()) return zumErrMemAlloc;
  float* const errors = zumsMalloc_32f(static_cast<int>(length * sections));
  if (!errors) return zumErrMemAlloc;
  std::fill_n(errors, length * sections, 0.0f);

  const auto section = [&](int i) {
    Section<Src, Dst> result = all;
    result.firstChannel = firstChannel(channels, sections, i);
    result.end = firstChannel(channels, sections, i + 1);
    return result;
  };
  const int longest = firstChannel(channels, sections, 1);
  const bool inWaves = kernel.isFaster(all.size.width, std::int64_t{all.size.height} * longest) && rowsAreApart(all);
  const auto alone = [&](int i) {
    if (inWaves) {
      Progress progress;
      kernel.run(section(i), diffusion, {errors + length * i, &progress, 1}, 0);
    } else {
      diffuseRows<Method>(section(i), diffusion, errors + length * i);
    }
  };
  // All threads on one section after another where that is sooner done than each on its own.
  const int waves = inWaves ? std::min({team, kernel.mostWaves(all.size.width), kMostWaves}) : 1;
  if (sections == 1) {
    alone(0);
  } else if (waves * longest > channels) {
    Progress progress[kMostSections][kMostWaves];
#pragma omp parallel num_threads(waves)
    for (int i = 0; i < sections; ++i) {
      kernel.run(section(i), diffusion, {errors + length * i, progress[i], omp_get_num_threads()},
                 omp_get_thread_num());
    }
  } else {
#pragma omp parallel for schedule(static, 1) num_threads(sections)
    for (int i = 0; i < sections; ++i) alone(i);
  }
  zumsFree(errors);
  return zumOk;
}

}  // namespace

template <class Src, class Dst>
ZumStatus diffuse(const Rows<const Src>& src, const Rows<Dst>& dst, ZumiSize size, Layout layout, ZumDitherType dither,
                  int noise, int levels) {
  const Grid grid = gridOf<Depths<Src, Dst>>(levels);
  std::optional<NoiseField> field;
  if (noise != 0) {
    field.emplace(edgeOfNoise(50 - noise, grid.step), edgeOfNoise(50 + noise, grid.step));
    if (field->missing()) return zumErrMemAlloc;
  }
  const Diffusion diffusion{grid, field ? &*field : nullptr};
  const Section<Src, Dst> all{src, dst, size, samplesOf(layout), 0, channelsOf(layout)};
  const WaveKernel<Src, Dst> kernel = waveKernel<Src, Dst>(dither);
  switch (dither) {
    case zumDitherFS:
      return diffuseSections<FloydSteinberg<Src, Dst>>(all, diffusion, kernel);
    case zumDitherJJN:
      return diffuseSections<ThreeRows<JarvisJudiceNinke>>(all, diffusion, kernel);
    default:
      return diffuseSections<ThreeRows<Stucki>>(all, diffusion, kernel);
  }
}

#define ZUM_DIFFUSE(tag, Src, Dst)                                                                                     \
  template ZumStatus diffuse<Src, Dst>(const Rows<const Src>&, const Rows<Dst>&, ZumiSize, Layout, ZumDitherType, int, \
                                       int);
ZUM_DEPTH_PAIRS(ZUM_DIFFUSE)
#undef ZUM_DIFFUSE

}  // namespace zum
