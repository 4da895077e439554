/* A 16-bit display's memory to 8-bit pixels at their full range: white comes out as 255, not as 248 or 252. */
#include <zumcc.h>

ZumStatus screenshot(const Zum16u* display, int displayStep, Zum8u* bgr, int bgrStep, ZumiSize size) {
  const ZumStatus status = zumiBGR565ToBGR_16u8u_C3R(display, displayStep, bgr, bgrStep, size);
  if (status < 0) return status;
  for (int y = 0; y < size.height; ++y) {
    Zum8u* sample = bgr + (ptrdiff_t)y * bgrStep;
    for (int x = 0; x < size.width; ++x, sample += 3) {
      /* The highest bits of a sample once more, where it has zeros. */
      sample[0] |= sample[0] >> 5;
      sample[1] |= sample[1] >> 6;
      sample[2] |= sample[2] >> 5;
    }
  }
  return zumOk;
}
