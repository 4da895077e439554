/* The luma of ITU-R BT.709 of a BGR picture with alpha, such as a screen is copied to. */
#include <zumcc.h>

ZumStatus lumaOfScreen(const Zum8u* bgra, int bgraStep, Zum8u* luma, int lumaStep, ZumiSize size) {
  const Zum32f weights[3] = {0.0722f, 0.7152f, 0.2126f}; /* of blue, green, red */
  return zumiColorToGray_8u_AC4C1R(bgra, bgraStep, luma, lumaStep, size, weights);
}

/* Whether a frame is too dark to read: fewer than one pixel in a hundred is brighter than a quarter. */
int isDark(const Zum8u* luma, int step, ZumiSize size) {
  long bright = 0;
  for (int y = 0; y < size.height; ++y) {
    const Zum8u* const row = luma + (ptrdiff_t)y * step;
    for (int x = 0; x < size.width; ++x) bright += row[x] > 64;
  }
  return bright < (long)size.width * size.height / 100;
}
