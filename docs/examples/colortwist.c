/* Full-range RGB to studio-range YCbCr of ITU-R BT.709, planes of 4:4:4, for high definition video. */
#include <zumcc.h>

ZumStatus toYCbCr709(const Zum8u* const rgb[3], int rgbStep, Zum8u* const dst[3], int dstStep, ZumiSize size) {
  const Zum32f kr = 0.2126f, kg = 0.7152f, kb = 0.0722f, luma = 219.0f / 255, chroma = 224.0f / 255;
  const Zum32f u = chroma / (2 * (1 - kb)), v = chroma / (2 * (1 - kr));
  const Zum32f twist[12] = {
      luma * kr,    luma * kg, luma * kb,    16,  /* Y  = 16 + 219 luma */
      -u * kr,      -u * kg,   u * (1 - kb), 128, /* Cb = 128 + 224 (B - luma) / 1.8556 */
      v * (1 - kr), -v * kg,   -v * kb,      128, /* Cr = 128 + 224 (R - luma) / 1.5748 */
  };
  return zumiColorTwist32f_8u_P3R(rgb, rgbStep, dst, dstStep, size, twist);
}
