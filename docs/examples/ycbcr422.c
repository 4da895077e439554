/* A frame of a YUY2 camera to RGB from the bottom row up, as bitmap files have it, rows padded to whole words. */
#include <stdlib.h>
#include <zumcc.h>

Zum8u* cameraToBitmap(const Zum8u* yuy2, int yuy2Step, ZumiSize size, int* bitmapStep) {
  const int step = (3 * size.width + 3) / 4 * 4;
  if (size.width < 1 || size.height < 1) return NULL;
  Zum8u* const rows = calloc((size_t)size.height, (size_t)step);
  if (!rows) return NULL;
  /* The camera's first row goes to the last one of the bitmap, and each next row one step back. */
  Zum8u* const last = rows + (ptrdiff_t)(size.height - 1) * step;
  if (zumiYCbCr422ToRGB_8u_C2C3R(yuy2, yuy2Step, last, -step, size) < 0) {
    free(rows);
    return NULL;
  }
  *bitmapStep = step;
  return rows;
}
