// Chroma at fewer places, and video fields.
#include <algorithm>

#include "sections.h"

namespace {

// The photograph without the last rows and columns that fill no block.
Picture cut(const Picture& photo, int columns, int rows) {
  Picture result(photo.width - photo.width % columns, photo.height - photo.height % rows, photo.channels);
  for (int y = 0; y < result.height; ++y) std::copy_n(photo.row(y), result.step(), result.row(y));
  return result;
}

using PlanarConversion = ZumStatus(const Zum8u* const*, const int*, Zum8u* const*, const int*, ZumiSize);

void resample(Exhibition& show, const Named<PlanarConversion>& named, Planes& from, Planes& to) {
  show.convert(named.name, [&] {
    return named.function(from.data.data(), from.steps.data(), to.data.data(), to.steps.data(), from.y.size());
  });
}

Picture decoded(const Named<decltype(zumiYCbCr422ToRGB_8u_P3C3R)>& decoder, const Planes& planes) {
  Picture rgb(planes.y.width, planes.y.height, 3);
  decoder.function(planes.data.data(), planes.steps.data(), rgb.data(), rgb.step(), rgb.size());
  return rgb;
}

// From planes of some sampling to another and back.
struct Detour {
  const char* caption;
  int columns, rows;  // of pixels that share a chroma sample
  Named<PlanarConversion> there, back;
};
constexpr Detour kDetours422[] = {
    {"4:2:0, rows repeated", 2, 2, NAMED(zumiYCbCr422ToYCbCr420_8u_P3R), NAMED(zumiYCbCr420ToYCbCr422_8u_P3R)},
    {"4:2:0, rows filtered", 2, 2, NAMED(zumiYCbCr422ToYCbCr420_8u_P3R), NAMED(zumiYCbCr420ToYCbCr422_Filter_8u_P3R)},
    {"4:1:1, columns repeated", 4, 1, NAMED(zumiYCbCr422ToYCbCr411_8u_P3R), NAMED(zumiYCbCr411ToYCbCr422_8u_P3R)},
};
constexpr Detour kDetours420[] = {
    {"4:1:1, columns interpolated", 4, 1, NAMED(zumiYCbCr420To411_8u_P3R), NAMED(zumiYCbCr411To420_8u_P3R)},
    {"1620, interpolated", 4, 4, NAMED(zumiYCbCr420To1620_8u_P3R), NAMED(zumiYCbCr1620To420_8u_P3R)},
};

template <size_t n>
void hangDetours(Exhibition& show, const Detour (&detours)[n], Planes& planes,
                 const Named<decltype(zumiYCbCr422ToRGB_8u_P3C3R)>& decoder) {
  for (const Detour& detour : detours) {
    const ZumiSize size = planes.y.size();
    Planes away(size, {size.width / detour.columns, size.height / detour.rows}), back(size, planes.cb.size());
    resample(show, detour.there, planes, away);
    resample(show, detour.back, away, back);
    show.hangReturned(detour.caption, decoded(decoder, back));
  }
}

void chromaDetours(Exhibition& show) {
  const Picture photo = cut(show.photo(), 4, 8);
  if (photo.samples.empty()) return;
  Picture packed(photo.width, photo.height, 2);
  zumiRGBToYCbCr422_8u_C3C2R(photo.data(), photo.step(), packed.data(), packed.step(), photo.size());
  Planes of422(photo.size(), {photo.width / 2, photo.height}), of420(photo.size(), {photo.width / 2, photo.height / 2});
  show.convert("zumiYCbCr422_8u_C2P3R", [&] {
    return zumiYCbCr422_8u_C2P3R(packed.data(), packed.step(), of422.data.data(), of422.steps.data(), photo.size());
  });
  show.hangReturned("4:2:2", decoded(NAMED(zumiYCbCr422ToRGB_8u_P3C3R), of422));
  hangDetours(show, kDetours422, of422, NAMED(zumiYCbCr422ToRGB_8u_P3C3R));

  zumiRGBToYCbCr420_8u_C3P3R(photo.data(), photo.step(), of420.data.data(), of420.steps.data(), photo.size());
  show.hangReturned("4:2:0", decoded(NAMED(zumiYCbCr420ToRGB_8u_P3C3R), of420));
  hangDetours(show, kDetours420, of420, NAMED(zumiYCbCr420ToRGB_8u_P3C3R));
}

// A camera that pans: the lower field is taken a moment after the upper one.
Picture wovenFields(const Picture& photo) {
  const int pan = std::max(1, photo.width / 60);
  Picture woven = photo;
  for (int y = 1; y < photo.height; y += 2) {
    for (int x = 0; x < photo.width; ++x) {
      std::copy_n(photo.row(y) + 3 * std::min(x + pan, photo.width - 1), 3, woven.row(y) + 3 * x);
    }
  }
  return woven;
}

void deinterlacing(Exhibition& show) {
  const Picture woven = wovenFields(cut(show.photo(), 2, 2));
  const ZumiSize size = woven.size(), half{size.width / 2, size.height / 2};
  Planes planar(size, half);
  zumiRGBToYCbCr420_8u_C3P3R(woven.data(), woven.step(), planar.data.data(), planar.steps.data(), size);
  Picture y(size.width, size.height, 1), chroma(half.width, half.height, 2);
  show.convert("zumiYCbCr420_8u_P3P2R", [&] {
    return zumiYCbCr420_8u_P3P2R(planar.data.data(), planar.steps.data(), y.data(), y.step(), chroma.data(),
                                 chroma.step(), size);
  });

  Picture packed(size.width, size.height, 2), rgb(size.width, size.height, 3);
  show.convert("zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R", [&] {
    return zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(y.data(), y.step(), chroma.data(), chroma.step(), packed.data(),
                                                  packed.step(), size, zumWholePicture);
  });
  zumiYCbCr422ToRGB_8u_C2C3R(packed.data(), packed.step(), rgb.data(), rgb.step(), size);

  Planes smooth(size, half);
  show.convert("zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R", [&] {
    return zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(y.data(), y.step(), chroma.data(), chroma.step(), smooth.data.data(),
                                                  smooth.steps.data(), size, zumWholePicture);
  });

  show.hang("Two fields, woven", woven);
  show.hang("Deinterlaced to packed 4:2:2", std::move(rgb));
  // The first byte of a chroma pair comes out in the second plane, as it went in.
  show.hang("Deinterlaced to planes of 4:2:0", decoded(NAMED(zumiYCbCr420ToRGB_8u_P3C3R), smooth));
}

}  // namespace

std::vector<Section> samplingSections() {
  return {
      {"Chroma resampling", "Samples that were left out are repeated, filtered or interpolated on the way back.",
       chromaDetours},
      {"Deinterlacing",
       "Two fields of a moving picture woven into one comb at its edges; a filter over the rows calms it.",
       deinterlacing},
  };
}
