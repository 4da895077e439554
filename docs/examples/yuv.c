/* A tight RGB image to tight YUV 4:2:0 in one block, the planes one after another: for a codec that takes it so. */
#include <stdlib.h>
#include <zumcc.h>

Zum8u* rgbToYuvBlock(const Zum8u* rgb, ZumiSize size, size_t* bytes) {
  if (size.width < 2 || size.height < 2) return NULL;
  const size_t luma = (size_t)size.width * size.height;
  const size_t chroma = (size_t)(size.width / 2) * (size.height / 2);
  Zum8u* const block = calloc(luma + 2 * chroma, 1);
  if (!block) return NULL;
  Zum8u* const planes[3] = {block, block + luma, block + luma + chroma};
  /* A warning, of an odd size, leaves a last column or row of luma at 0. */
  if (zumiRGBToYUV420_8u_C3P3(rgb, planes, size) < 0) {
    free(block);
    return NULL;
  }
  *bytes = luma + 2 * chroma;
  return block;
}
