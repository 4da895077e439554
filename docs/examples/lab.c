/* A mask of an actor before a screen of one colour: 0 where a* and b* are within r of a and b,
   those of the screen, at any lightness, and 255 elsewhere. */
#include <stdlib.h>
#include <zumcc.h>

ZumStatus keyOut(const Zum8u* bgr, int bgrStep, Zum8u* mask, int maskStep, ZumiSize size, int a, int b, int r) {
  Zum8u* const lab = malloc(3 * (size_t)size.width * size.height);
  if (!lab) return zumErrMemAlloc;
  const ZumStatus status = zumiBGRToLab_8u_C3R(bgr, bgrStep, lab, 3 * size.width, size);
  for (int y = 0; y < size.height && status >= 0; ++y) {
    const Zum8u* const row = lab + (size_t)y * 3 * size.width;
    for (int x = 0; x < size.width; ++x) {
      const int da = row[3 * x + 1] - 128 - a, db = row[3 * x + 2] - 128 - b;
      mask[(ptrdiff_t)y * maskStep + x] = da * da + db * db <= r * r ? 0 : 255;
    }
  }
  free(lab);
  return status;
}
