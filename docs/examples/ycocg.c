/* The two ends of a lossless coder: a picture to planes that compress better, and back from them, to
   the same bytes. */
#include <zumcc.h>

/* The samples of a plane. The three lie one behind the other, without gaps. */
static size_t samplesOf(ZumiSize size) { return (size_t)size.width * size.height; }

ZumStatus split(const Zum8u* bgr, int bgrStep, Zum16s* planes, ZumiSize size) {
  Zum16s* const yCoCg[3] = {planes, planes + samplesOf(size), planes + 2 * samplesOf(size)};
  return zumiBGRToYCoCg_Rev_8u16s_C3P3R(bgr, bgrStep, yCoCg, size.width * (int)sizeof(Zum16s), size);
}

/* Pixels of four bytes, the fourth of which is opaque. */
ZumStatus join(const Zum16s* planes, Zum8u* bgra, int bgraStep, ZumiSize size) {
  const Zum16s* const yCoCg[3] = {planes, planes + samplesOf(size), planes + 2 * samplesOf(size)};
  return zumiYCoCgToBGR_Rev_16s8u_P3C4R(yCoCg, size.width * (int)sizeof(Zum16s), bgra, bgraStep, size, 255);
}
