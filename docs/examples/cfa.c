/* A raw frame of a camera, 12 bits a sample in words, to a picture: demosaic, white balance, gamma,
   dither to bytes. */
#include <stdlib.h>
#include <zumcc.h>

ZumStatus develop(const Zum16u* raw, int rawStep, ZumiSize size, float redGain, float blueGain, Zum8u* rgb,
                  int rgbStep) {
  const Zum32f scale = 65535.0f / 4095;
  const Zum32f twist[12] = {redGain * scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, blueGain * scale, 0};
  const ZumiRect whole = {0, 0, size.width, size.height};
  const int step = 3 * size.width * (int)sizeof(Zum16u);
  Zum16u* const work = malloc((size_t)step * size.height);
  if (!work) return zumErrMemAlloc;

  ZumStatus status = zumiCFAToRGB_16u_C1C3R(raw, whole, size, rawStep, work, step, zumiBayerRGGB);
  if (status >= 0) status = zumiColorTwist32f_16u_C3IR(work, step, size, twist);
  if (status >= 0) status = zumiGammaFwd_16u_C3IR(work, step, size);
  if (status >= 0) status = zumiReduceBits_16u8u_C3R(work, step, rgb, rgbStep, size, 0, zumDitherBayer, 256);
  free(work);
  return status;
}
