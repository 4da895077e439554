/* 4:2:0 planes of even size to 4:2:2 planes: chroma interpolated in whole groups of eight rows, repeated below them. */
#include <zumcc.h>

ZumStatus upsample(const Zum8u* const src[3], const int srcStep[3], Zum8u* const dst[3], const int dstStep[3],
                   ZumiSize size) {
  const ZumiSize filtered = {size.width, size.height & ~7}, rest = {size.width, size.height & 7};
  if (filtered.height) {
    const ZumStatus status = zumiYCbCr420ToYCbCr422_Filter_8u_P3R(src, srcStep, dst, dstStep, filtered);
    if (status < 0 || rest.height < 2) return status;
  }
  const Zum8u* below[3];
  Zum8u* to[3];
  for (int p = 0; p < 3; ++p) {
    below[p] = src[p] + (ptrdiff_t)(p ? filtered.height / 2 : filtered.height) * srcStep[p];
    to[p] = dst[p] + (ptrdiff_t)filtered.height * dstStep[p];
  }
  return zumiYCbCr420ToYCbCr422_8u_P3R(below, srcStep, to, dstStep, rest);
}
