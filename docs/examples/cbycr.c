/* Tight RGB to tight UYVY for a video card, without room behind either image; the width is even. */
#include <stdlib.h>
#include <string.h>
#include <zumcc.h>

ZumStatus rgbToUyvy(const Zum8u* rgb, Zum8u* uyvy, ZumiSize size) {
  const int rgbStep = 3 * size.width, uyvyStep = 2 * size.width;
  if (!rgb || !uyvy) return zumErrNullPtr;
  if (size.width < 2 || size.width % 2 || size.height < 1) return zumErrSize;
  if (size.width % 4 == 0) return zumiRGBToCbYCr422_8u_C3C2R(rgb, rgbStep, uyvy, uyvyStep, size);

  /* What a row leaves behind itself the next one overwrites; for the last row there is room in a copy. */
  ZumiSize rows = {size.width, size.height - 1};
  ZumStatus status = zumOk;
  if (rows.height > 0) status = zumiRGBToCbYCr422_8u_C3C2R(rgb, rgbStep, uyvy, uyvyStep, rows);
  if (status < 0) return status;
  Zum8u* const from = calloc((size_t)rgbStep + 3 + uyvyStep + 2, 1);
  if (!from) return zumErrMemAlloc;
  Zum8u* const to = from + rgbStep + 3;
  memcpy(from, rgb + (size_t)rows.height * rgbStep, (size_t)rgbStep);
  rows.height = 1;
  status = zumiRGBToCbYCr422_8u_C3C2R(from, rgbStep, to, uyvyStep, rows);
  memcpy(uyvy + (size_t)(size.height - 1) * uyvyStep, to, (size_t)uyvyStep);
  free(from);
  return status;
}
