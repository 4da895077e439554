// Mosaics of a sensor.

#include "sections.h"

namespace {

// The channels that the two by two sites of each grid sample, as indices into R G B.
struct Filter {
  ZumiBayerGrid grid;
  int site[2][2];
};
constexpr Filter kBGGR{zumiBayerBGGR, {{2, 1}, {1, 0}}}, kRGGB{zumiBayerRGGB, {{0, 1}, {1, 2}}},
    kGBRG{zumiBayerGBRG, {{1, 2}, {0, 1}}}, kGRBG{zumiBayerGRBG, {{1, 0}, {2, 1}}};

template <const Filter& filter>
void demosaic(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture mosaic(photo.width, photo.height, 1), back(photo.width, photo.height, 3);
  for (int y = 0; y < photo.height; ++y)
    for (int x = 0; x < photo.width; ++x) mosaic.row(y)[x] = photo.row(y)[3 * x + filter.site[y % 2][x % 2]];
  show.convert("zumiCFAToRGB_8u_C1C3R", [&] {
    return zumiCFAToRGB_8u_C1C3R(mosaic.data(), {0, 0, photo.width, photo.height}, photo.size(), mosaic.step(),
                                 back.data(), back.step(), filter.grid);
  });
  show.hang("Mosaic", std::move(mosaic));
  show.hangResult(std::move(back));
}

}  // namespace

std::vector<Section> sensorSections() {
  return {
      {"Demosaic BGGR", "One colour a pixel, as a sensor sees it behind the filter B G / G R.", demosaic<kBGGR>},
      {"Demosaic RGGB", "The same behind R G / G B.", demosaic<kRGGB>},
      {"Demosaic GBRG", "The same behind G B / R G.", demosaic<kGBRG>},
      {"Demosaic GRBG", "The same behind G R / B G.", demosaic<kGRBG>},
  };
}
