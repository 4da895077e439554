#include "reduce/diffusion.h"

#include <omp.h>

#include <cstdint>
#include <limits>
#include <optional>

#include "frame/platform.h"
#include "reduce/diffusion_rows.h"

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

template <class Method, class Src, class Dst>
ZumStatus diffuseSections(const Section<Src, Dst>& all, const Diffusion& diffusion) {
  const int channels = all.end - all.firstChannel;
  const int sections = channels == 1 ? 1 : std::min(teamSize(), channels);
  const std::int64_t length = errorLength<Method>(all.size.width);
  if (length * sections > std::numeric_limits<int>::max()) return zumErrMemAlloc;
  float* const errors = zumsMalloc_32f(static_cast<int>(length * sections));
  if (!errors) return zumErrMemAlloc;
  const auto run = [&](int i) {
    Section<Src, Dst> section = all;
    section.firstChannel = firstChannel(channels, sections, i);
    section.end = firstChannel(channels, sections, i + 1);
    diffuseRows<Method>(section, diffusion, errors + length * i);
  };
  if (sections == 1) {
    run(0);
  } else {
#pragma omp parallel for schedule(static, 1) num_threads(sections)
    for (int i = 0; i < sections; ++i) run(i);
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
  switch (dither) {
    case zumDitherFS:
      return diffuseSections<FloydSteinberg<Src, Dst>>(all, diffusion);
    case zumDitherJJN:
      return diffuseSections<ThreeRows<JarvisJudiceNinke>>(all, diffusion);
    default:
      return diffuseSections<ThreeRows<Stucki>>(all, diffusion);
  }
}

#define ZUM_DIFFUSE(tag, Src, Dst)                                                                                     \
  template ZumStatus diffuse<Src, Dst>(const Rows<const Src>&, const Rows<Dst>&, ZumiSize, Layout, ZumDitherType, int, \
                                       int);
ZUM_DEPTH_PAIRS(ZUM_DIFFUSE)
#undef ZUM_DIFFUSE

}  // namespace zum
