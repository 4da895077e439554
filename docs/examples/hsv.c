/* Makes the colours of a picture stronger or paler, in place: saturation is multiplied. */
#include <zumcc.h>

ZumStatus saturate(Zum8u* rgb, int step, ZumiSize size, float factor) {
  ZumStatus status = zumiRGBToHSV_8u_C3R(rgb, step, rgb, step, size);
  if (status < 0) return status;
  for (int y = 0; y < size.height; ++y) {
    Zum8u* const row = rgb + (ptrdiff_t)y * step;
    for (int x = 0; x < size.width; ++x) {
      const float saturation = row[3 * x + 1] * factor + 0.5f;
      row[3 * x + 1] = (Zum8u)(saturation < 255 ? saturation : 255);
    }
  }
  return zumiHSVToRGB_8u_C3R(rgb, step, rgb, step, size);
}
