/* A photograph of any even size to NV12, as video encoders take it. */
#include <stdlib.h>
#include <zumcc.h>

ZumStatus toNv12(const Zum8u* rgb, int rgbStep, ZumiSize size, Zum8u* luma, int lumaStep, Zum8u* chroma,
                 int chromaStep) {
  const int half = size.width / 2;
  Zum8u* const work = malloc((size_t)size.width * size.height + 2 * (size_t)half * (size.height / 2));
  if (!work) return zumErrMemAlloc;
  Zum8u* const y = work;
  Zum8u* const cb = y + (size_t)size.width * size.height;
  Zum8u* const cr = cb + (size_t)half * (size.height / 2);
  Zum8u* const planes[3] = {y, cb, cr};
  const Zum8u* const sources[3] = {y, cb, cr};
  const int steps[3] = {size.width, half, half};

  ZumStatus status = zumiRGBToYCbCr420_8u_C3P3R(rgb, rgbStep, planes, steps, size);
  if (status >= 0) status = zumiYCbCr420_8u_P3P2R(sources, steps, luma, lumaStep, chroma, chromaStep, size);
  free(work);
  return status;
}
