/* More or less colour in an RGB image at the same brightness: percent of what there is, 0 for gray. In place. */
#include <zumcc.h>

ZumStatus saturate(Zum8u* rgb, int step, ZumiSize size, int percent) {
  const ZumStatus status = zumiRGBToYCbCr_8u_C3R(rgb, step, rgb, step, size);
  if (status < 0) return status;
  for (int y = 0; y < size.height; ++y) {
    Zum8u* pixel = rgb + (ptrdiff_t)y * step;
    for (int x = 0; x < size.width; ++x, pixel += 3) {
      for (int c = 1; c < 3; ++c) {
        const int v = 128 + (pixel[c] - 128) * percent / 100;
        pixel[c] = (Zum8u)(v < 16 ? 16 : v > 240 ? 240 : v);
      }
    }
  }
  return zumiYCbCrToRGB_8u_C3R(rgb, step, rgb, step, size);
}
