// Models of colour.
#include "sections.h"

namespace {

using Conversion = decltype(zumiRGBToHSV_8u_C3R);

// A model that a photograph goes to and comes back from.
struct Model {
  Named<Conversion> forward, back;
  const char* channels[3];
  bool isOfBgr = false;
};
constexpr Model kHsv{NAMED(zumiRGBToHSV_8u_C3R), NAMED(zumiHSVToRGB_8u_C3R), {"Hue", "Saturation", "Value"}},
    kHls{NAMED(zumiRGBToHLS_8u_C3R), NAMED(zumiHLSToRGB_8u_C3R), {"Hue", "Lightness", "Saturation"}},
    kYcc{NAMED(zumiRGBToYCC_8u_C3R), NAMED(zumiYCCToRGB_8u_C3R), {"Y", "C1", "C2"}},
    kXyz{NAMED(zumiRGBToXYZ_8u_C3R), NAMED(zumiXYZToRGB_8u_C3R), {"X", "Y", "Z"}},
    kLuv{NAMED(zumiRGBToLUV_8u_C3R), NAMED(zumiLUVToRGB_8u_C3R), {"L", "u", "v"}},
    kLab{NAMED(zumiBGRToLab_8u_C3R), NAMED(zumiLabToBGR_8u_C3R), {"L", "a", "b"}, true};

template <const Model& model>
void roundTrip(Exhibition& show) {
  const Picture photo = model.isOfBgr ? reversed(show.photo()) : show.photo();
  Picture there(photo.width, photo.height, 3), back = there;
  const auto convert = [&](const Named<Conversion>& named, const Picture& from, Picture& to) {
    show.convert(named.name,
                 [&] { return named.function(from.data(), from.step(), to.data(), to.step(), photo.size()); });
  };
  convert(model.forward, photo, there);
  convert(model.back, there, back);
  for (int i = 0; i < 3; ++i) show.hang(model.channels[i], channel(there, i));
  show.hangResult(model.isOfBgr ? reversed(back) : std::move(back));
}

void gray(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture gray(photo.width, photo.height, 1), filtered = gray;
  show.convert("zumiRGBToGray_8u_C3C1R", [&] {
    return zumiRGBToGray_8u_C3C1R(photo.data(), photo.step(), gray.data(), gray.step(), photo.size());
  });
  const Zum32f redFilter[3] = {0.9f, 0.1f, 0};
  show.convert("zumiColorToGray_8u_C3C1R", [&] {
    return zumiColorToGray_8u_C3C1R(photo.data(), photo.step(), filtered.data(), filtered.step(), photo.size(),
                                    redFilter);
  });
  show.hang("Luma", std::move(gray));
  show.hang("Through a red filter", std::move(filtered));
}

}  // namespace

std::vector<Section> modelSections() {
  return {
      {"Gray", "One channel, by the weights of luma or by others.", gray},
      {"HSV", "Hue, saturation and value. The hue is a circle: its black and its white are neighbours.",
       roundTrip<kHsv>},
      {"HLS", "The same circle of hues; lightness lies halfway between the largest and the smallest channel.",
       roundTrip<kHls>},
      {"YCC", "Luma and colour differences with room for highlights, as photographs are stored on discs.",
       roundTrip<kYcc>},
      {"XYZ", "The quantities that all colour measurement starts from.", roundTrip<kXyz>},
      {"LUV", "Lightness and chromaticity in nearly even steps for the eye.", roundTrip<kLuv>},
      {"Lab", "Another such space: lightness, from green to red, from blue to yellow.", roundTrip<kLab>},
  };
}
