/* How far two pictures are apart to the eye: the mean distance of their pixels in L*u*v*. A distance of
   1 can just be seen. The samples are linear and have 16 bits. */
#include <math.h>
#include <stdlib.h>
#include <zumcc.h>

ZumStatus meanDistance(const Zum16u* a, int aStep, const Zum16u* b, int bStep, ZumiSize size, double* mean) {
  static const double unit[3] = {100.0 / 65535, 354.0 / 65535, 262.0 / 65535}; /* of L*, u* and v* */
  const size_t samples = 3 * (size_t)size.width * size.height;
  const int step = 3 * size.width * (int)sizeof(Zum16u);
  Zum16u* const luv = malloc(2 * samples * sizeof *luv);
  if (!luv) return zumErrMemAlloc;

  ZumStatus status = zumiRGBToLUV_16u_C3R(a, aStep, luv, step, size);
  if (status >= 0) status = zumiRGBToLUV_16u_C3R(b, bStep, luv + samples, step, size);
  double sum = 0;
  for (size_t i = 0; i < samples && status >= 0; i += 3) {
    double squares = 0;
    for (size_t c = 0; c < 3; ++c) squares += pow(unit[c] * (luv[i + c] - luv[samples + i + c]), 2);
    sum += sqrt(squares);
  }
  *mean = 3 * sum / (double)samples;
  free(luv);
  return status;
}
