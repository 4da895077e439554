/* Film grain: noise of up to `strength` on both sides, the same for the same seed, added to a gray image. */
#include <zumcc.h>

ZumStatus addGrain(Zum8u* image, int step, ZumiSize size, Zum16s strength, uint32_t seed) {
  if (!image) return zumErrNullPtr;
  if (size.width < 1 || size.height < 1) return zumErrSize;
  ZumsRandUniState_16s* state;
  ZumStatus status = zumsRandUniformInitAlloc_16s(&state, (Zum16s)-strength, strength, seed);
  if (status < 0) return status;
  Zum16s* const grain = zumsMalloc_16s(size.width);
  if (!grain) status = zumErrMemAlloc;
  for (int y = 0; y < size.height && status >= 0; ++y) {
    Zum8u* const row = image + (ptrdiff_t)y * step;
    status = zumsRandUniform_16s(grain, size.width, state);
    for (int x = 0; x < size.width && status >= 0; ++x) {
      const int v = row[x] + grain[x];
      row[x] = (Zum8u)(v < 0 ? 0 : v > 255 ? 255 : v);
    }
  }
  zumsFree(grain);
  zumsRandUniformFree_16s(state);
  return status;
}
