/* A decoded 4:2:0 frame to a corner of a 16-bit display, dithered or, for speed, not. */
#include <zumcc.h>

typedef struct {
  Zum16u* pixels; /* blue in the lowest bits */
  int pitch;      /* pixels from one row to the next */
  ZumiSize size;
} Display;

ZumStatus showOn(const Display* display, int x, int y, const Zum8u* const planes[3], const int steps[3], ZumiSize size,
                 int dithered) {
  if (x < 0 || y < 0 || x >= display->size.width || y >= display->size.height) return zumErrSize;
  if (size.width > display->size.width - x) size.width = display->size.width - x;
  if (size.height > display->size.height - y) size.height = display->size.height - y;

  Zum16u* const corner = display->pixels + (ptrdiff_t)y * display->pitch + x;
  const int step = display->pitch * (int)sizeof(Zum16u); /* steps are bytes here too */
  return dithered ? zumiYCbCr420ToBGR565Dither_8u16u_P3C3R(planes, steps, corner, step, size)
                  : zumiYCbCr420ToBGR565_8u16u_P3C3R(planes, steps, corner, step, size);
}
