/* Black and white to luma and chroma. */
#include <stdio.h>
#include <string.h>
#include <zumcc.h>

int main(void) {
  const Zum8u rgb[6] = {0, 0, 0, 255, 255, 255};
  const Zum8u expected[6] = {16, 128, 128, 235, 128, 128};
  Zum8u ycbcr[6] = {0};
  const ZumiSize size = {2, 1};
  if (zumiRGBToYCbCr_8u_C3R(rgb, 6, ycbcr, 6, size) != zumOk || memcmp(ycbcr, expected, 6) != 0) return 1;
  printf("C: %s\n", zumccGetLibVersion()->name);
  return 0;
}
