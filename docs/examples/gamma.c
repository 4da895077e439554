/* Fades one picture over to another as light does it: the mean of gamma-corrected values would be too
   dark. The samples are floats of 0..1. The result is in `to`; `from` is left linear. */
#include <zumcc.h>

ZumStatus fade(Zum32f* from, int fromStep, Zum32f* to, int toStep, ZumiSize size, float part) {
  ZumStatus status = zumiGammaInv_32f_C3IR(from, fromStep, size, 0, 1);
  if (status >= 0) status = zumiGammaInv_32f_C3IR(to, toStep, size, 0, 1);
  if (status < 0) return status;
  for (int y = 0; y < size.height; ++y) {
    const Zum32f* const a = (const Zum32f*)((const char*)from + (ptrdiff_t)y * fromStep);
    Zum32f* const b = (Zum32f*)((char*)to + (ptrdiff_t)y * toStep);
    for (int i = 0; i < 3 * size.width; ++i) b[i] = (1 - part) * a[i] + part * b[i];
  }
  return zumiGammaFwd_32f_C3IR(to, toStep, size, 0, 1);
}
