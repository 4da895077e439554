// L*u*v* against its formulas in single steps of scalar arithmetic.
#include "support/cie.h"

namespace zumtest {
namespace {

constexpr float kWhiteU = 0.197839f, kWhiteV = 0.468342f;

float sum(float a, float b, float c) {
  const float both = a + b;
  return both + c;
}

// ---- Forward

Colour<Zum8u> forward8(const Colour<Zum8u>& rgb, bool) {
  const Floats scaled = rgbToXyz(levels(rgb));
  const int luminance = truncated(0.49999f + scaled[1]);
  const double unit = luminance / 255.0, curve = unit <= 0.008856 ? 903.3 * unit : 116 * std::cbrt(unit) - 16;
  const long lightness = std::lround(2.55 * curve);
  float u = 0, v = 0;
  if (luminance != 0) {
    const float x = scaled[0] / 255, y = scaled[1] / 255, z = scaled[2] / 255, den = sum(3 * z, x, 15 * y);
    u = 4 * x / den;
    v = 9 * y / den;
  }
  const float slopeU = ofBits(0x406B073B) * lightness, slopeV = lightness * ofBits(0x409EC754);
  const float codeU = slopeU * (u - kWhiteU) + ofBits(0x42C20D04), codeV = slopeV * (v - kWhiteV) + ofBits(0x4308C271);
  return {static_cast<Zum8u>(lightness), static_cast<Zum8u>(truncated(codeU)), static_cast<Zum8u>(truncated(codeV))};
}

float rootCurve(float y, int cell, int terms) {
  RootAt at((cell + 1) / 128.0 + 0.0001);
  if (cell == 128) at.root = at.inverse = ofBits(0x3EAAAAAB);
  return cubeRoot(y, at, terms, 0x3C9BA857, 0x3C81B6F3) * 116 - 16;
}

Floats luv(float lightness, const Floats& t, bool colourless) {
  float den = sum(3 * t[2], 15 * t[1], t[0]);
  if (den == 0) den = 3;
  const float r = refined(den), u = colourless ? 0 : 4 * t[0] * r, v = colourless ? 0 : 9 * t[1] * r;
  const float scale = 13 * lightness;
  return {lightness, (u - kWhiteU) * scale, (v - kWhiteV) * scale};
}

template <class T>
T saturated(int64_t v) {
  return static_cast<T>(std::clamp<int64_t>(v, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

template <class T>
Colour<T> forward16(const Colour<T>& rgb, bool tail) {
  const bool isSigned = kLowest<T> != 0;
  const Floats t = rgbToXyz(levels(rgb));
  const float y = t[1] * ofBits(0x37800080);
  const int cell = (tail && isSigned ? nearest(t[1]) : truncated(t[1])) >> 9;
  const Floats l = luv(t[1] <= 580.378f ? 903.3f * y : rootCurve(y, cell, 6), t, false);
  const float code = 655.35f * l[0], v = (l[2] + 140) * 250.13359f;
  const int codes[] = {tail ? nearest(code) : truncated(code), nearest((l[1] + 134) * 185.12712f), nearest(v + 0.5f)};
  Colour<T> result;
  for (int i = 0; i < 3; ++i)
    result[i] = tail && !isSigned ? static_cast<T>(codes[i]) : saturated<T>(codes[i] + kLowest<T>);
  return result;
}

Colour<float> forward32(const Colour<float>& rgb, bool tail) {
  const Floats t = rgbToXyz(levels(rgb));
  const bool even = t[1] <= ofBits(0x3C1118C2);
  return luv(even ? 903.3f * t[1] : rootCurve(t[1], truncated(128 * t[1]), 8), t, tail && t[2] == 0);
}

// ---- Inverse

// By divisions.
Floats divided(float lightness, float u, float v, float whiteU, float whiteV, float top) {
  const float root = (16 + lightness) / 116, scale = 13 * lightness, uPrime = u / scale + whiteU,
              vPrime = v / scale + whiteV;
  const float y = (lightness >= ofBits(0x40FFFCED) ? root * root * root : lightness / 903.3f) * top, w = y / vPrime;
  const float x = 2.25f * w * uPrime, thrice = w * 3, five = 5 * y, rest = thrice - five;
  return {x, y, rest - x / 3};
}

template <class T>
Colour<T> inverse(const Colour<T>& luv, bool tail) {
  const bool bytes = sizeof(T) == 1;
  const float top = bytes ? 255 : 65535;
  const auto [l, u, v] = levels(luv);
  int64_t codes[3] = {};
  if (tail) {
    const float lightness = l * 100 / top;
    if (lightness >= 0.00009f) {
      const Floats t =
          divided(lightness, u * 354 / top - 134, v * 262 / top - 140, ofBits(0x3E4A966A), ofBits(0x3EEFCA8D), top);
      const float half = ofBits(0x3EFFFEB0), xy = sum(0.055648f * t[0], -0.204043f * t[1], 0);
      codes[0] = truncated(sum(half - 1.53715f * t[1], 3.240479f * t[0], -0.498535f * t[2]));
      codes[1] = truncated(sum(half + 1.875991f * t[1], -0.969256f * t[0], 0.041556f * t[2]));
      codes[2] = truncated(xy + 0.49999 + 1.057311 * t[2]);
    }
  } else {
    const float unit = ofBits(bytes ? 0x3EC8C8C9 : 0x3AC800C8), unitU = bytes ? 1.3882353f : ofBits(0x3BB100B1),
                unitV = bytes ? 1.027451f : ofBits(0x3B830083), least = ofBits(0x38BCBE62);
    float lightness = l * unit;
    if (lightness <= least) lightness = sizeof(T) == 2 && !kLowest<T> ? (l + least) * unit : lightness + least;
    const auto reciprocal = bytes ? estimate : refined;
    const float c = reciprocal(13 * lightness), uStar = u * unitU - 134, vStar = v * unitV - 140;
    const float uPrime = uStar * c + kWhiteU, vPrime = vStar * c + kWhiteV, root = (lightness + 16) * 0.00862069f;
    const float y = (lightness <= 7.9996247f ? 0.001107052f * lightness : root * root * root) * top;
    const float w = reciprocal(vPrime) * y, x = 2.25f * w * uPrime, thrice = w * 3, five = 5 * y, rest = thrice - five;
    const Floats rgb = xyzToRgb({x, y, rest - 0.33333334f * x});
    codes[0] = truncated(rgb[0]);
    codes[1] = truncated(rgb[1]);
    codes[2] = truncated(rgb[2]);
    // A difference in 32 bits, which wraps.
    for (int64_t& code : codes)
      if (!bytes) code = static_cast<int32_t>(static_cast<uint32_t>(code) - 0x8000u) + int64_t{0x8000};
  }
  Colour<T> result;
  for (int i = 0; i < 3; ++i) result[i] = saturated<T>(codes[i] + kLowest<T>);
  return result;
}

Colour<float> inverse32(const Colour<float>& luv, bool) {
  const Floats rgb = xyzToRgb(divided(luv[0], luv[1], luv[2], kWhiteU, kWhiteV, 1));
  return {std::clamp(rgb[0], 0.0f, 1.0f), std::clamp(rgb[1], 0.0f, 1.0f), std::clamp(rgb[2], 0.0f, 1.0f)};
}

// ---- Colours

constexpr unsigned kEveryNth = 61;
constexpr std::size_t kFloats = 1 << 18;

// Codes for which v' is nearly 0, so that RGB leaves all ranges, among deep colours.
template <class T>
std::vector<Colour<T>> deepCodes() {
  std::vector<Colour<T>> colours = deepColours<T>();
  std::minstd_rand random;
  for (std::size_t i = 0; i < colours.size(); i += 4) {
    const int l = static_cast<int>(random() % 15000), near = static_cast<int>(random() % 3) - 1;
    const int v = std::max(0, nearest((140 - 0.468342f * 13 * l / 655.35f) * 250.13359f) + near);
    colours[i][0] = static_cast<T>(l + kLowest<T>);
    colours[i][2] = static_cast<T>(v + kLowest<T>);
  }
  return colours;
}

TEST(Luv, Bytes) {
  compare("zumiRGBToLUV_8u_*", 1, everyNth(kEveryNth), forward8);
  compare("zumiLUVToRGB_8u_C3R", 8, everyNth(kEveryNth), inverse<Zum8u>);
  compare("zumiLUVToRGB_8u_AC4R", 4, everyNth(kEveryNth), inverse<Zum8u>);
}

TEST(Luv, Words) {
  compare("zumiRGBToLUV_16u_*", 4, deepColours<Zum16u>(), forward16<Zum16u>);
  compare("zumiLUVToRGB_16u_*", 4, deepCodes<Zum16u>(), inverse<Zum16u>);
}

TEST(Luv, SignedWords) {
  compare("zumiRGBToLUV_16s_*", 4, deepColours<Zum16s>(), forward16<Zum16s>);
  compare("zumiLUVToRGB_16s_*", 4, deepCodes<Zum16s>(), inverse<Zum16s>);
}

TEST(Luv, Floats) {
  std::mt19937 random;
  const auto any = [&](float low, float high) { return low + (high - low) * (random() * 0x1p-32f); };
  std::vector<Colour<float>> rgb{{0, 0, 0}, {1, 1, 1}}, luv;
  while (rgb.size() < kFloats) {
    const float gray = (random() % 512) / 512.0f, r = any(0, 1), g = any(0, 1);
    rgb.push_back({r, g, any(0, 1)});
    rgb.push_back({gray, gray, gray});
    rgb.push_back({r / 64, g / 64, any(-0.02f, 0.02f)});
    // No Z, or next to none.
    rgb.push_back({r, g, -(0.019334f * r + 0.119193f * g) / 0.950227f});
  }
  while (luv.size() < kFloats) {
    luv.push_back({any(0.0001f, 100), any(-134, 220), any(-140, 122)});
    luv.push_back({any(0.0001f, 16), any(-20, 20), any(-20, 20)});
  }
  compare("zumiRGBToLUV_32f_*", 4, rgb, forward32);
  compare("zumiLUVToRGB_32f_*", 1, luv, inverse32);
}

// ---- Values known beforehand

TEST(Luv, KnownColours) {
  const char *const forward = "zumiRGBToLUV_8u_C3R", *const inverse = "zumiLUVToRGB_8u_C3R",
                    *const floats = "zumiRGBToLUV_32f_C3R";
  expectColour<int>(forward, {0, 0, 0}, {0, 97, 136});
  const int lightness[] = {0, 9, 18, 26};
  for (const int gray : {1, 2, 3}) EXPECT_EQ(lightness[gray], converted(forward, {gray, gray, gray}, 1, 0)[0]);
  EXPECT_EQ(255, converted(forward, {255, 255, 255}, 1, 0)[0]);
  expectColour<int>(inverse, {0, 97, 136}, {0, 0, 0});
  expectColour<int>("zumiLUVToRGB_16u_C3R", {0, 24807, 35019}, {0, 0, 0});

  EXPECT_EQ(26.426399f, (converted<float, float>(floats, {1, 1, 1}, 4, 0)[0]));
  EXPECT_NEAR(100, (converted<float, float>(floats, {0.999f, 0.999f, 0.999f}, 4, 0)[0]), 0.1);
  for (const int x : {0, 4})
    for (int k = 0; k < 3; ++k)
      EXPECT_EQ(bitsOf(k ? -0.0f : 0.0f), bitsOf(converted<float, float>(floats, {0, 0, 0}, 5, x)[k])) << k;
}

// What is behind the first black pixel of a row is left alone.
TEST(Luv, BlackEndsARow) {
  constexpr int kWidth = 75;
  for (const Function& function : named("zumiLUVToRGB_32f_*")) {
    for (int black = 0; black < kWidth; ++black) {
      ASSERT_NO_FATAL_FAILURE(expectPicture(
          function, {kWidth, 1},
          [=](const Picture& src, const Picture& dst) {
            for (int x = 0; x <= black; ++x)
              dst.set(x, 0, x < black ? inverse32(src.at<float>(x, 0), false) : Colour<float>{});
          },
          [=](const Picture& src) {
            for (int x = 0; x < kWidth; ++x)
              src.set(x, 0, Colour<float>{x == black || x == kWidth - 1 ? 0.00008f : 50, 50, 50});
          }));
    }
  }
}

// Steps are in samples, but for single precision forward, which takes any.
TEST(Luv, Steps) {
  expectStepsInSamples("zumi@(RGBToLUV_@(8u|16u|16s)|LUVToRGB)_*");
  constexpr int kStep = 61;
  const float samples[2][12] = {{0.5f, 0.25f, 1}, {0.125f, 0.75f, 0.5f}};
  Zum8u src[2 * kStep], dst[2 * kStep];
  float packed[12], got[12];
  for (const int row : {0, 1}) std::memcpy(src + row * kStep, samples[row], sizeof packed);
  zumiRGBToLUV_32f_C3R(reinterpret_cast<Zum32f*>(src), kStep, reinterpret_cast<Zum32f*>(dst), kStep, {4, 2});
  zumiRGBToLUV_32f_C3R(samples[1], sizeof packed, packed, sizeof packed, {4, 1});
  std::memcpy(got, dst + kStep, sizeof got);
  EXPECT_TRUE(std::equal(packed, std::end(packed), got));
}

}  // namespace
}  // namespace zumtest
