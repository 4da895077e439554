/* A gray picture in the middle of a larger frame, with borders of one shade around it. */
#include <zumcc.h>

ZumStatus letterbox(const Zum8u* picture, int pictureStep, ZumiSize size, Zum8u* frame, int frameStep,
                    ZumiSize frameSize, Zum8u shade) {
  const int left = (frameSize.width - size.width) / 2, top = (frameSize.height - size.height) / 2;
  if (!frame) return zumErrNullPtr;
  if (size.width > frameSize.width || size.height > frameSize.height) return zumErrSize;
  const ZumStatus status = zumiSet_8u_C1R(shade, frame, frameStep, frameSize);
  if (status < 0) return status;
  Zum8u* const corner = frame + (ptrdiff_t)top * frameStep + left;
  return zumiCopy_8u_C1R(picture, pictureStep, corner, frameStep, size);
}
