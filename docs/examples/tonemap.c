/* A map of distances, heat or light for a display: the mean becomes a middle gray, which a few very
   large samples do not change much, and black stands for a map with no positive mean. */
#include <zumcc.h>

ZumStatus showMap(const Zum32f* map, int mapStep, Zum8u* gray, int grayStep, ZumiSize size) {
  const ZumStatus status = zumiToneMapMean_32f8u_C1R(map, mapStep, gray, grayStep, size);
  return status == zumWrnNoOperation ? zumiSet_8u_C1R(0, gray, grayStep, size) : status;
}
