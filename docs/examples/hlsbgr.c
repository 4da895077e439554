/* Stretches the lightness of a picture to the full range, in place. Hue, saturation and alpha stay. */
#include <stdlib.h>
#include <zumcc.h>

ZumStatus stretchLightness(Zum8u* bgra, int bgraStep, ZumiSize size) {
  const size_t plane = (size_t)size.width * size.height;
  Zum8u* const work = malloc(4 * plane);
  if (!work) return zumErrMemAlloc;
  Zum8u* const lightness = work + plane;
  Zum8u* const hlsa[4] = {work, lightness, work + 2 * plane, work + 3 * plane};
  const Zum8u* const stretched[4] = {hlsa[0], hlsa[1], hlsa[2], hlsa[3]};

  ZumStatus status = zumiBGRToHLS_8u_AC4P4R(bgra, bgraStep, hlsa, size.width, size);
  if (status >= 0) {
    int darkest = 255, lightest = 0;
    for (size_t i = 0; i < plane; ++i) {
      if (lightness[i] < darkest) darkest = lightness[i];
      if (lightness[i] > lightest) lightest = lightness[i];
    }
    for (size_t i = 0; i < plane && lightest > darkest; ++i)
      lightness[i] = (Zum8u)((lightness[i] - darkest) * 255 / (lightest - darkest));
    status = zumiHLSToBGR_8u_AP4C4R(stretched, size.width, bgra, bgraStep, size);
  }
  free(work);
  return status;
}
