/* A part of a decoder's NV12 surface to the three planes of an I420 image. */
#include <zumcc.h>

ZumStatus cropSurface(const Zum8u* luma, int lumaStep, const Zum8u* pairs, int pairsStep, ZumiRect part,
                      Zum8u* const planes[3], const int steps[3]) {
  /* Chroma serves two by two pixels: the part begins on even columns and rows, and is even itself. */
  if (!luma || !pairs) return zumErrNullPtr;
  if ((part.x | part.y | part.width | part.height) & 1) return zumErrSize;
  const ZumiSize size = {part.width, part.height};
  luma += (ptrdiff_t)part.y * lumaStep + part.x;
  pairs += (ptrdiff_t)(part.y / 2) * pairsStep + part.x; /* two bytes for two pixels */
  return zumiYCbCr420_8u_P2P3R(luma, lumaStep, pairs, pairsStep, planes, steps, size);
}
