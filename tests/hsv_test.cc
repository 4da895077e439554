// HSV against the formulas in single steps of scalar arithmetic: every 8-bit colour, and 16-bit colours of all kinds.
#include <cfenv>

#include "support/colours.h"

namespace zumtest {
namespace {

using Numbers = Colour<int>;

// ---- The formulas, for the numbers that depth and columns fix

template <class T>
constexpr int kTop = std::numeric_limits<T>::max();
template <class T>
constexpr bool kIsByte = sizeof(T) == 1;

template <class T>
int stored(float x, bool tail) {
  if (tail) return nearest(x) & kTop<T>;
  return std::clamp(kIsByte<T> ? truncated(x) : nearest(x), 0, kTop<T>);
}

template <class T>
Numbers toHsv(const Numbers& rgb, bool tail) {
  const int value = *std::max_element(rgb.begin(), rgb.end()),
            range = value - *std::min_element(rgb.begin(), rgb.end());
  if (range == 0) return {0, 0, value};
  const auto reciprocal = kIsByte<T> ? estimate : refined;
  const float c = reciprocal(range), saturation = reciprocal(value) * range * kTop<T>;
  const float r = (value - rgb[0]) * c, g = (value - rgb[1]) * c, b = (value - rgb[2]) * c;

  int channel = 0;
  if (tail) {
    for (int i = 1; i < 3; ++i) {
      if (rgb[i] == value) channel = i;
    }
  } else if (rgb[1] == value) {
    channel = rgb[0] == value ? 0 : 1;
  } else if (rgb[2] == value) {
    channel = 2;
  }
  float hue = channel == 0 ? b - g : channel == 1 ? r - b : g - r;
  hue += 2 * channel;
  hue *= kIsByte<T> ? 42.5f : 10922.5f;
  if (hue < 0) hue += kTop<T>;
  return {stored<T>(hue, tail), stored<T>(saturation, tail), value};
}

template <class T>
Numbers toRgb(const Numbers& hsv, bool tail) {
  const float perDegree = ofBits(0x3C888889), degrees = ofBits(kIsByte<T> ? 0x3FB4B4B5 : 0x3BB400B4),
              unit = ofBits(kIsByte<T> ? 0x3B808081 : 0x37800080);
  const int value = hsv[2];
  if (hsv[1] == 0) return {value, value, value};
  const float hue = (hsv[0] == kTop<T> ? 0 : hsv[0]) * perDegree * degrees;
  const int sextant = truncated(hue);
  const float chroma = hsv[1] * unit * value, ramp = (hue - sextant) * chroma, low = value - chroma;
  const auto store = [&](float x) { return kIsByte<T> ? stored<T>(x, tail) : nearest(x) & kTop<T>; };
  const int p = store(low), q = store(value - ramp), t = store(low + ramp);
  const Numbers bySextant[] = {{value, t, p}, {q, value, p}, {p, value, t},
                               {p, q, value}, {t, p, value}, {value, p, q}};
  return bySextant[sextant];
}

// ---- Comparisons

template <class T>
void compareAll(const std::string& functions, const std::vector<Colour<T>>& colours,
                Numbers (*formula)(const Numbers&, bool tail)) {
  compare(functions, 4, colours, [=](const Colour<T>& c, bool tail) { return formula({c[0], c[1], c[2]}, tail); });
}

#ifdef __SANITIZE_ADDRESS__
constexpr unsigned kEveryNth = 61;  // the formulas are slow there
#else
constexpr unsigned kEveryNth = 1;
#endif

TEST(Hsv, Bytes) {
  compareAll<Zum8u>("zumiRGBToHSV_8u_C3R", everyNth(kEveryNth), toHsv<Zum8u>);
  compareAll<Zum8u>("zumiHSVToRGB_8u_C3R", everyNth(kEveryNth), toRgb<Zum8u>);
  compareAll<Zum8u>("zumiRGBToHSV_8u_AC4R", everyNth(61), toHsv<Zum8u>);
  compareAll<Zum8u>("zumiHSVToRGB_8u_AC4R", everyNth(61), toRgb<Zum8u>);
}

TEST(Hsv, Words) {
  compareAll<Zum16u>("zumiRGBToHSV_16u_*", deepColours<Zum16u>(1 << 20), toHsv<Zum16u>);
  compareAll<Zum16u>("zumiHSVToRGB_16u_*", deepColours<Zum16u>(1 << 20), toRgb<Zum16u>);
  expectStepsInSamples("zumi@(RGBToHSV|HSVToRGB)_16u_*");
}

// ---- Values known beforehand

TEST(Hsv, KnownColours) {
  const struct {
    Colour<Zum8u> hsv, block, tail;
  } bytes[] = {
      {{42, 255, 255}, {255, 252, 0}, {255, 252, 0}}, {{43, 255, 255}, {251, 255, 0}, {252, 255, 0}},
      {{85, 255, 255}, {0, 255, 0}, {0, 255, 0}},     {{170, 255, 255}, {0, 0, 255}, {0, 0, 255}},
      {{254, 255, 255}, {255, 0, 5}, {255, 0, 6}},    {{255, 255, 255}, {255, 0, 0}, {255, 0, 0}},
      {{171, 0, 99}, {99, 99, 99}, {99, 99, 99}},
  };
  for (const auto& b : bytes) expectColour("zumiHSVToRGB_8u_C3R", b.hsv, b.block, b.tail);
  const Colour<Zum16u> words[][2] = {{{21845, 65535, 65535}, {0, 65535, 0}},
                                     {{43690, 65535, 65535}, {0, 0, 65535}},
                                     {{65534, 65535, 65535}, {65535, 0, 6}},
                                     {{65535, 65535, 65535}, {65535, 0, 0}}};
  for (const auto& [hsv, rgb] : words) expectColour("zumiHSVToRGB_16u_C3R", hsv, rgb);

  // Just below red: 254.83, whatever the estimate of 1 / 255. The saturation depends on it.
  EXPECT_EQ(254, converted("zumiRGBToHSV_8u_C3R", {255, 0, 1}, 5, 0)[0]);
  EXPECT_EQ(255, converted("zumiRGBToHSV_8u_C3R", {255, 0, 1}, 5, 4)[0]);
}

// 60.4 for the smaller two channels.
TEST(Hsv, TailRoundsAsTheThreadDoes) {
  onEveryInstructionSet([] {
    for (const int mode : {FE_TONEAREST, FE_UPWARD}) {
      std::fesetround(mode);
      const Colour<int> block = converted("zumiHSVToRGB_8u_C3R", {0, 101, 100}, 5, 0),
                        tail = converted("zumiHSVToRGB_8u_C3R", {0, 101, 100}, 5, 4);
      std::fesetround(FE_TONEAREST);
      const int low = mode == FE_UPWARD ? 61 : 60;
      EXPECT_EQ((Colour<int>{100, 60, 60}), block);
      EXPECT_EQ((Colour<int>{100, low, low}), tail);
    }
  });
}

}  // namespace
}  // namespace zumtest
