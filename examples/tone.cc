// Tone curves, matrices, high dynamic range and the reversible transform.
#include <algorithm>
#include <cmath>

#include "sections.h"

namespace {

void gamma(Exhibition& show) {
  const Picture& photo = show.photo();
  Picture light(photo.width, photo.height, 3), back = light;
  show.convert("zumiGammaInv_8u_C3R", [&] {
    return zumiGammaInv_8u_C3R(photo.data(), photo.step(), light.data(), light.step(), photo.size());
  });
  show.convert("zumiGammaFwd_8u_C3R",
               [&] { return zumiGammaFwd_8u_C3R(light.data(), light.step(), back.data(), back.step(), photo.size()); });
  show.hang("Linear light", std::move(light));
  show.hangResult(std::move(back));
}

struct Twist {
  const char* caption;
  std::array<Zum32f, 12> matrix;  // a row for each channel, the offset behind the weights
};

// Gray by the weights of luma at 0, the photograph at 1.
constexpr Twist saturation(const char* caption, float s) {
  constexpr float kWeights[3] = {0.299f, 0.587f, 0.114f};
  Twist twist{caption, {}};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) twist.matrix[4 * i + j] = (i == j ? s : 0) + (1 - s) * kWeights[j];
  }
  return twist;
}
constexpr Twist kTwists[] = {
    {"Sepia", kSepia},
    saturation("Less saturation", 0.4f),
    saturation("More saturation", 1.8f),
};

void colourTwist(Exhibition& show) {
  const Picture& photo = show.photo();
  for (const Twist& twist : kTwists) {
    Picture twisted(photo.width, photo.height, 3);
    show.convert("zumiColorTwist32f_8u_C3R", [&] {
      return zumiColorTwist32f_8u_C3R(photo.data(), photo.step(), twisted.data(), twisted.step(), photo.size(),
                                      twist.matrix.data());
    });
    show.hang(twist.caption, std::move(twisted));
  }
}

// The light of the photograph, a hundred times as strong toward a lamp in one corner.
std::vector<Zum32f> sceneWithLamp(const Picture& photo) {
  std::vector<Zum32f> scene;
  for (int y = 0; y < photo.height; ++y) {
    const uint8_t* row = photo.row(y);
    for (int x = 0; x < photo.width; ++x) {
      const double luma = (0.299 * row[3 * x] + 0.587 * row[3 * x + 1] + 0.114 * row[3 * x + 2]) / 255;
      const double across = 1.0 * x / photo.width, down = 1.0 * y / photo.height;
      scene.push_back(float(std::pow(luma, 2.2) * (0.02 + 2 * std::exp(-6 * (across * across + down * down)))));
    }
  }
  return scene;
}

void toneMapping(Exhibition& show) {
  const Picture& photo = show.photo();
  const std::vector<Zum32f> scene = sceneWithLamp(photo);
  const int step = photo.width * int(sizeof(Zum32f));
  Picture linear(photo.width, photo.height, 1), mean = linear;
  show.convert("zumiToneMapLinear_32f8u_C1R", [&] {
    return zumiToneMapLinear_32f8u_C1R(scene.data(), step, linear.data(), linear.step(), photo.size());
  });
  show.convert("zumiToneMapMean_32f8u_C1R",
               [&] { return zumiToneMapMean_32f8u_C1R(scene.data(), step, mean.data(), mean.step(), photo.size()); });
  show.hang("By the maximum", std::move(linear));
  show.hang("By the mean", std::move(mean));
}

// Planes of signed samples as they are seen, 0 in the middle.
Picture seen(const std::vector<Zum16s>& plane, ZumiSize size, int offset) {
  Picture picture(size.width, size.height, 1);
  std::transform(plane.begin(), plane.end(), picture.data(),
                 [&](Zum16s v) { return uint8_t(std::clamp(v / (offset ? 2 : 1) + offset, 0, 255)); });
  return picture;
}

void ycocg(Exhibition& show) {
  const Picture bgr = reversed(show.photo());
  std::vector<Zum16s> planes[3];
  for (auto& plane : planes) plane.resize(bgr.pixels());
  Zum16s* const pointers[3] = {planes[0].data(), planes[1].data(), planes[2].data()};
  const Zum16s* const sources[3] = {pointers[0], pointers[1], pointers[2]};
  const int step = bgr.width * int(sizeof(Zum16s));
  Picture lossy(bgr.width, bgr.height, 3), back = lossy;
  show.convert("zumiBGRToYCoCg_8u16s_C3P3R",
               [&] { return zumiBGRToYCoCg_8u16s_C3P3R(bgr.data(), bgr.step(), pointers, step, bgr.size()); });
  show.convert("zumiYCoCgToBGR_16s8u_P3C3R",
               [&] { return zumiYCoCgToBGR_16s8u_P3C3R(sources, step, lossy.data(), lossy.step(), bgr.size()); });
  show.convert("zumiBGRToYCoCg_Rev_8u16s_C3P3R",
               [&] { return zumiBGRToYCoCg_Rev_8u16s_C3P3R(bgr.data(), bgr.step(), pointers, step, bgr.size()); });
  show.convert("zumiYCoCgToBGR_Rev_16s8u_P3C3R",
               [&] { return zumiYCoCgToBGR_Rev_16s8u_P3C3R(sources, step, back.data(), back.step(), bgr.size()); });
  show.hang("Y", seen(planes[0], bgr.size(), 0));
  show.hang("Co", seen(planes[1], bgr.size(), 128));
  show.hang("Cg", seen(planes[2], bgr.size(), 128));
  show.hangReturned("Lossy, and back", reversed(lossy));
  show.hangResult(reversed(back));
}

}  // namespace

std::vector<Section> toneSections() {
  return {
      {"Gamma", "The video transfer curve undone and done again.", gamma},
      {"Colour twist", "Every channel a weighted sum of all.", colourTwist},
      {"High dynamic range",
       "A scene with a lamp in its corner, a hundred times as bright there: scaled to its maximum "
       "it is dark, to twice its mean the lamp burns out.",
       toneMapping},
      {"YCoCg", "Two differences by shifts and additions alone; the reversible form loses nothing.", ycocg},
  };
}
