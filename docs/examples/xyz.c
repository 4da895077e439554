/* The chromaticity of a patch, such as a gray card, of linear RGB: D65 is x = 0.3127, y = 0.3290.
   Samples are to be below 0.9, so that Z stays below its limit. */
#include <stdlib.h>
#include <zumcc.h>

ZumStatus chromaticity(const Zum32f* rgb, int rgbStep, ZumiSize size, double* x, double* y) {
  const int samples = 3 * size.width;
  double sum[3] = {0, 0, 0};
  Zum32f* const row = malloc(samples * sizeof *row);
  if (!row) return zumErrMemAlloc;

  ZumStatus status = zumOk;
  for (int r = 0; r < size.height && status >= 0; ++r) {
    const Zum32f* const from = (const Zum32f*)((const char*)rgb + (ptrdiff_t)r * rgbStep);
    status = zumiRGBToXYZ_32f_C3R(from, rgbStep, row, samples * (int)sizeof *row, (ZumiSize){size.width, 1});
    for (int i = 0; i < samples && status >= 0; ++i) sum[i % 3] += row[i];
  }
  free(row);
  *x = sum[0] / (sum[0] + sum[1] + sum[2]);
  *y = sum[1] / (sum[0] + sum[1] + sum[2]);
  return status;
}
