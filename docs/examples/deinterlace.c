/* An interlaced NV12 picture to YUY2 in bands of 16 rows, each as soon as the decoder has it; the height is even. */
#include <zumcc.h>

typedef int WaitForRows(void* decoder, int rows); /* until so many rows are there; 0 if they will not come */

ZumStatus deinterlaceWhileDecoding(const Zum8u* luma, int lumaStep, const Zum8u* pairs, int pairsStep, Zum8u* yuy2,
                                   int yuy2Step, ZumiSize size, WaitForRows* wait, void* decoder) {
  const int band = 16;
  for (int y = 0; y < size.height; y += band) {
    const int rows = size.height - y < band ? size.height - y : band;
    const int layout = size.height <= band       ? zumWholePicture
                       : y == 0                  ? zumTopBand
                       : y + band >= size.height ? zumBottomBand
                                                 : zumMiddleBand;
    const ZumiSize part = {size.width, rows};
    if (!wait(decoder, y + rows)) return zumErrSize;
    /* A band's last two rows are written by the call for the next band. */
    const ZumStatus status = zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(
        luma + (ptrdiff_t)y * lumaStep, lumaStep, pairs + (ptrdiff_t)(y / 2) * pairsStep, pairsStep,
        yuy2 + (ptrdiff_t)y * yuy2Step, yuy2Step, part, layout);
    if (status < 0) return status;
  }
  return zumOk;
}
