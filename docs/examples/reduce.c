/* A scan of 16 bits a sample to 8 bits, without steps in its smooth parts: the remainders go to the
   neighbours, and a little noise keeps them from forming patterns. */
#include <zumcc.h>

ZumStatus scanTo8Bits(const Zum16u* scan, int scanStep, Zum8u* rgb, int rgbStep, ZumiSize size) {
  return zumiReduceBits_16u8u_C3R(scan, scanStep, rgb, rgbStep, size, 20, zumDitherFS, 256);
}

/* A gray picture for paper of 16 grays, in place: pixels of an ordered dither stay what they are when
   others change. */
ZumStatus toPaper(Zum8u* gray, int step, ZumiSize size) {
  return zumiReduceBits_8u_C1R(gray, step, gray, step, size, 0, zumDitherBayer, 16);
}
