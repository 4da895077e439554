/* A preview that spares chroma: 4:2:0 planes to a pair for four by four pixels in one tight block, and back. */
#include <zumcc.h>

enum { kBlock = 4 }; /* width and height are multiples of it */

size_t previewBytes(ZumiSize size) { return (size_t)size.width * size.height * 9 / 8; }

static void previewPlanes(Zum8u* preview, ZumiSize size, Zum8u* planes[3], int steps[3]) {
  const size_t luma = (size_t)size.width * size.height;
  planes[0] = preview;
  planes[1] = preview + luma;
  planes[2] = planes[1] + luma / (kBlock * kBlock);
  steps[0] = size.width;
  steps[1] = steps[2] = size.width / kBlock;
}

ZumStatus toPreview(const Zum8u* const planes[3], const int steps[3], Zum8u* preview, ZumiSize size) {
  Zum8u* to[3];
  int toSteps[3];
  previewPlanes(preview, size, to, toSteps);
  return zumiYCbCr420To1620_8u_P3R(planes, steps, to, toSteps, size);
}

ZumStatus fromPreview(Zum8u* preview, Zum8u* const planes[3], const int steps[3], ZumiSize size) {
  Zum8u* from[3];
  int fromSteps[3];
  previewPlanes(preview, size, from, fromSteps);
  const Zum8u* const sources[3] = {from[0], from[1], from[2]};
  return zumiYCbCr1620To420_8u_P3R(sources, fromSteps, planes, steps, size);
}
