/* A decoded I420 frame, its planes one after another in one block, to RGB; the size may be odd. */
#include <zumcc.h>

ZumStatus i420ToRgb(const Zum8u* frame, ZumiSize size, Zum8u* rgb, int rgbStep) {
  /* Such frames have chroma for a last odd column and row; the function converts whole blocks only. */
  const int chromaWidth = (size.width + 1) / 2, chromaHeight = (size.height + 1) / 2;
  const Zum8u* const cb = frame + (size_t)size.width * size.height;
  const Zum8u* const planes[3] = {frame, cb, cb + (size_t)chromaWidth * chromaHeight};
  const int steps[3] = {size.width, chromaWidth, chromaWidth};
  const ZumStatus status = zumiYCbCr420ToRGB_8u_P3C3R(planes, steps, rgb, rgbStep, size);
  if (status != zumWrnOddSize) return status;

  /* Repeat the last pixel of each row, then the last row. A size of 1 has nothing to repeat. */
  const ZumiSize even = {size.width & ~1, size.height & ~1};
  if (!even.width || !even.height) return zumErrSize;
  for (int y = 0; y < even.height && size.width > even.width; ++y) {
    Zum8u* const last = rgb + (ptrdiff_t)y * rgbStep + 3 * even.width;
    for (int c = 0; c < 3; ++c) last[c] = last[c - 3];
  }
  if (size.height == even.height) return zumOk;
  const ZumiSize row = {3 * size.width, 1};
  Zum8u* const bottom = rgb + (ptrdiff_t)even.height * rgbStep;
  return zumiCopy_8u_C1R(bottom - rgbStep, rgbStep, bottom, rgbStep, row);
}
