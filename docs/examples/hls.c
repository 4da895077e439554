/* Turns all hues of a picture by so many degrees, in place. Alpha stays as it is. */
#include <zumcc.h>

ZumStatus turnHues(Zum8u* rgba, int step, ZumiSize size, int degrees) {
  const int turn = (degrees % 360 + 360) % 360 * 255 / 360; /* the circle is 255 units */
  ZumStatus status = zumiRGBToHLS_8u_AC4R(rgba, step, rgba, step, size);
  if (status < 0) return status;
  for (int y = 0; y < size.height; ++y) {
    Zum8u* const row = rgba + (ptrdiff_t)y * step;
    for (int x = 0; x < size.width; ++x) row[4 * x] = (Zum8u)((row[4 * x] + turn) % 255);
  }
  return zumiHLSToRGB_8u_AC4R(rgba, step, rgba, step, size);
}
