// Luma and colour differences, and the packed pixels that are made from them.
#include <algorithm>
#include <cmath>
#include <string>

#include "sections.h"

namespace {

void ycbcr444(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture ycbcr(photo.width, photo.height, 3), back = ycbcr;
  show.convert("zumiRGBToYCbCr_8u_C3R", [&] {
    return zumiRGBToYCbCr_8u_C3R(photo.data(), photo.step(), ycbcr.data(), ycbcr.step(), photo.size());
  });
  show.convert("zumiYCbCrToRGB_8u_C3R", [&] {
    return zumiYCbCrToRGB_8u_C3R(ycbcr.data(), ycbcr.step(), back.data(), back.step(), photo.size());
  });
  show.hang("Y", channel(ycbcr, 0));
  show.hang("Cb", channel(ycbcr, 1));
  show.hang("Cr", channel(ycbcr, 2));
  show.hangResult(std::move(back));
}

enum class ChromaPlace { kBehindLuma, kBeforeLuma };

// The library goes from RGB to packed rows, Y0 Cb Y1 Cr or Cb Y0 Cr Y1; here they are unpacked to be seen.
Planes unpacked422(const Picture& packed, ChromaPlace place) {
  const int width = packed.width, pairs = (width + 1) / 2;
  Planes planes({width, packed.height}, {pairs, packed.height});
  for (int r = 0; r < packed.height; ++r) {
    const uint8_t* row = packed.row(r);
    uint8_t *y = planes.y.row(r), *cb = planes.cb.row(r), *cr = planes.cr.row(r);
    for (int x = 0; x < width; ++x) {
      y[x] = row[2 * x + (place == ChromaPlace::kBeforeLuma)];
      (x % 2 == 0 ? cb : cr)[x / 2] = row[2 * x + (place == ChromaPlace::kBehindLuma)];
    }
    // A last odd pixel brings no Cr of its own.
    if (width % 2 != 0) cr[pairs - 1] = width > 1 ? cr[pairs - 2] : cb[0];
  }
  return planes;
}

void ycbcr422(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture packed(photo.width, photo.height, 2), back(photo.width, photo.height, 3);
  show.convert("zumiRGBToYCbCr422_8u_C3C2R", [&] {
    return zumiRGBToYCbCr422_8u_C3C2R(photo.data(), photo.step(), packed.data(), packed.step(), photo.size());
  });
  show.convert("zumiYCbCr422ToRGB_8u_C2C3R", [&] {
    return zumiYCbCr422ToRGB_8u_C2C3R(packed.data(), packed.step(), back.data(), back.step(), photo.size());
  });
  unpacked422(packed, ChromaPlace::kBehindLuma).hang(show);
  show.hangResult(std::move(back));
}

struct Planar420 {
  Named<decltype(zumiRGBToYCbCr420_8u_C3P3R)> forward;
  Named<decltype(zumiYCbCr420ToRGB_8u_P3C3R)> back;
  const char *firstChroma, *secondChroma;
};
constexpr Planar420 kYCbCr420{NAMED(zumiRGBToYCbCr420_8u_C3P3R), NAMED(zumiYCbCr420ToRGB_8u_P3C3R), "Cb", "Cr"},
    kYUV420{NAMED(zumiRGBToYUV420_8u_C3P3R), NAMED(zumiYUV420ToRGB_8u_P3C3R), "U", "V"};

template <const Planar420& model>
void planar420(Exhibition& show) {
  const Picture& photo = show.photo();
  const ZumiSize chroma{photo.width / 2, photo.height / 2};
  const ZumiSize even{2 * chroma.width, 2 * chroma.height};  // a last odd column or row has no chroma sample
  Planes planes(even, chroma);
  Picture back(even.width, even.height, 3);
  show.convert(model.forward.name, [&] {
    return model.forward.function(photo.data(), photo.step(), planes.data.data(), planes.steps.data(), even);
  });
  show.convert(model.back.name, [&] {
    return model.back.function(planes.data.data(), planes.steps.data(), back.data(), back.step(), even);
  });
  std::move(planes).hang(show, model.firstChroma, model.secondChroma);
  show.hangResult(std::move(back));
}

// The light that a picture stands for, by the inverse of the video transfer curve. The encoder reads and writes a pixel
// behind the rows of some widths: the picture has a column more.
Picture linearLight(const Picture& picture) {
  std::array<uint8_t, 256> light;
  for (int i = 0; i < 256; ++i) {
    const double v = i / 255.0;
    light[i] = uint8_t(std::lround(255 * (v < 0.081 ? v / 4.5 : std::pow((v + 0.099) / 1.099, 1 / 0.45))));
  }
  Picture result(picture.width + 1, picture.height, 3);
  for (int y = 0; y < picture.height; ++y) {
    for (int i = 0; i < picture.step(); ++i) result.row(y)[i] = light[picture.row(y)[i]];
  }
  return result;
}

// Without the columns behind `width`.
Picture cropped(const Picture& picture, int width) {
  Picture result(width, picture.height, picture.channels);
  for (int y = 0; y < picture.height; ++y) std::copy_n(picture.row(y), result.step(), result.row(y));
  return result;
}

void videoCurve(Exhibition& show) {
  const Picture& photo = show.photo();
  const Picture light = linearLight(photo);
  Picture packed(light.width, light.height, 2), back(photo.width, photo.height, 3);
  show.convert("zumiRGBToCbYCr422Gamma_8u_C3C2R", [&] {
    return zumiRGBToCbYCr422Gamma_8u_C3C2R(light.data(), light.step(), packed.data(), packed.step(), photo.size());
  });
  show.convert("zumiCbYCr422ToRGB_8u_C2C3R", [&] {
    return zumiCbYCr422ToRGB_8u_C2C3R(packed.data(), packed.step(), back.data(), back.step(), photo.size());
  });
  show.hang("Linear light", cropped(light, photo.width));
  unpacked422(cropped(packed, photo.width), ChromaPlace::kBeforeLuma).hang(show);
  show.hangResult(std::move(back));
}

// The bits of a 16-bit pixel, blue in the lowest.
struct Packing {
  const char* title;
  int outerBits, greenBits;
  Named<decltype(zumiYCbCrToBGR565_8u16u_C3R)> plain, dithered;
};
constexpr Packing kPackings[] = {
    {"5-6-5", 5, 6, NAMED(zumiYCbCrToBGR565_8u16u_C3R), NAMED(zumiYCbCrToBGR565Dither_8u16u_C3R)},
    {"5-5-5", 5, 5, NAMED(zumiYCbCrToBGR555_8u16u_C3R), NAMED(zumiYCbCrToBGR555Dither_8u16u_C3R)},
    {"4-4-4", 4, 4, NAMED(zumiYCbCrToBGR444_8u16u_C3R), NAMED(zumiYCbCrToBGR444Dither_8u16u_C3R)},
};

// 16-bit pixels as a picture: the levels of each channel from black to full.
Picture unpacked16(const std::vector<Zum16u>& pixels, ZumiSize size, const Packing& packing) {
  Picture picture(size.width, size.height, 3);
  uint8_t* to = picture.data();
  for (const int pixel : pixels) {
    const auto channel = [&](int shift, int bits) {
      const int highest = (1 << bits) - 1;
      return uint8_t(((pixel >> shift & highest) * 255 + highest / 2) / highest);
    };
    *to++ = channel(packing.outerBits + packing.greenBits, packing.outerBits);
    *to++ = channel(packing.outerBits, packing.greenBits);
    *to++ = channel(0, packing.outerBits);
  }
  return picture;
}

void pixels16(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture ycbcr(photo.width, photo.height, 3);
  zumiRGBToYCbCr_8u_C3R(photo.data(), photo.step(), ycbcr.data(), ycbcr.step(), photo.size());
  std::vector<Zum16u> pixels(photo.pixels());
  const int step = photo.width * int(sizeof(Zum16u));
  for (const Packing& packing : kPackings) {
    const auto convert = [&](const auto& named, const char* how) {
      show.convert(named.name,
                   [&] { return named.function(ycbcr.data(), ycbcr.step(), pixels.data(), step, photo.size()); });
      show.hang(std::string(packing.title) + how, unpacked16(pixels, photo.size(), packing));
    };
    convert(packing.plain, "");
    convert(packing.dithered, " dithered");
  }
}

}  // namespace

std::vector<Section> lumaChromaSections() {
  return {
      {"YCbCr 4:4:4", "Luma and two colour differences for every pixel. Only rounding is lost.", ycbcr444},
      {"YCbCr 4:2:2", "One pair of colour differences for two neighbours in a row.", ycbcr422},
      {"YCbCr 4:2:0", "One pair of colour differences for two by two pixels.", planar420<kYCbCr420>},
      {"YUV 4:2:0", "The same with the colour differences of analogue video, all over the range of a byte.",
       planar420<kYUV420>},
      {"CbYCr from light", "Linear light through the video transfer curve to packed 4:2:2, as a camera does it.",
       videoCurve},
      {"16-bit pixels",
       "Few levels a channel: smooth areas break into bands. Ordered dither trades them for a fine pattern.", pixels16},
  };
}
