/* A photograph in YCC to RGB for a display. Highlights above white, which is 188, would be lost there:
   where there are any, all is darkened, in luma and chroma alike, until the brightest is white. */
#include <zumcc.h>

ZumStatus showPhotograph(const Zum8u* ycc, int yccStep, Zum8u* rgb, int rgbStep, ZumiSize size) {
  enum { kWhite = 188, kC1 = 156, kC2 = 137 };
  ZumStatus status = zumiCopy_8u_C1R(ycc, yccStep, rgb, rgbStep, (ZumiSize){3 * size.width, size.height});
  if (status < 0) return status;

  int brightest = kWhite;
  for (int y = 0; y < size.height; ++y) {
    const Zum8u* const row = rgb + (ptrdiff_t)y * rgbStep;
    for (int x = 0; x < size.width; ++x) brightest = row[3 * x] > brightest ? row[3 * x] : brightest;
  }
  for (int y = 0; y < size.height && brightest > kWhite; ++y) {
    Zum8u* const row = rgb + (ptrdiff_t)y * rgbStep;
    for (int x = 0; x < size.width; ++x) {
      row[3 * x] = (Zum8u)(row[3 * x] * kWhite / brightest);
      row[3 * x + 1] = (Zum8u)(kC1 + (row[3 * x + 1] - kC1) * kWhite / brightest);
      row[3 * x + 2] = (Zum8u)(kC2 + (row[3 * x + 2] - kC2) * kWhite / brightest);
    }
  }
  return zumiYCCToRGB_8u_C3R(rgb, rgbStep, rgb, rgbStep, size);
}
