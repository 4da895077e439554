// Models of colour.

#include "sections.h"

namespace {

void hsv(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture hsv(photo.width, photo.height, 3), back = hsv;
  show.convert("zumiRGBToHSV_8u_C3R",
               [&] { return zumiRGBToHSV_8u_C3R(photo.data(), photo.step(), hsv.data(), hsv.step(), photo.size()); });
  show.convert("zumiHSVToRGB_8u_C3R",
               [&] { return zumiHSVToRGB_8u_C3R(hsv.data(), hsv.step(), back.data(), back.step(), photo.size()); });
  show.hang("Hue", channel(hsv, 0));
  show.hang("Saturation", channel(hsv, 1));
  show.hang("Value", channel(hsv, 2));
  show.hangResult(std::move(back));
}

}  // namespace

std::vector<Section> modelSections() {
  return {
      {"HSV", "Hue, saturation and value. The hue is a circle: its black and its white are neighbours.", hsv},
  };
}
