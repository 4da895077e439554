/* A screen's pixels (B, G, R, A) to planes for a video encoder, and a decoded frame back to the screen. */
#include <zumcc.h>

typedef struct {
  Zum8u* planes[3]; /* Y, Cb, Cr; the two for chroma have half the width and height */
  int steps[3];
  ZumiSize size; /* even */
} VideoFrame;

ZumStatus captureScreen(const Zum8u* bgra, int step, VideoFrame* frame) {
  return zumiBGRToYCbCr420_8u_AC4P3R(bgra, step, frame->planes, frame->steps, frame->size);
}

ZumStatus showFrame(const VideoFrame* frame, Zum8u* bgra, int step) {
  /* The function that interpolates chroma takes Cr before Cb. */
  const Zum8u* const planes[3] = {frame->planes[0], frame->planes[2], frame->planes[1]};
  const int steps[3] = {frame->steps[0], frame->steps[2], frame->steps[1]};
  const Zum8u opaque = 255;
  return zumiYCrCb420ToBGR_Filter_8u_P3C4R(planes, steps, bgra, step, frame->size, opaque);
}
