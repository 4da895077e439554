#include "support/traits.h"

#include <fnmatch.h>

#include <cmath>

namespace zumtest {
namespace {

bool eitherOdd(ZumiSize size) { return (size.width | size.height) & 1; }
bool eitherHalfOdd(ZumiSize size) { return (size.width | size.height) & 2; }
bool noGroupsOfFour(ZumiSize size) { return size.width % 4 != 0; }

// All dithers, and their extremes. The errors of diffusion go from channel to channel as the threads have it.
std::vector<Variant> reductions(double mostLevels) {
  std::vector<Variant> variants;
  const auto add = [&](double noise, ZumDitherType dither, double levels, const char* label = "") {
    const bool diffused = dither != zumDitherNone && dither != zumDitherBayer;
    variants.push_back({{noise, static_cast<double>(dither), levels}, 0, 0, 0, 0, label, diffused});
  };
  add(0, zumDitherNone, 16, "undithered");
  add(0, zumDitherFS, 16, "FS");
  add(0, zumDitherJJN, 16, "JJN");
  add(0, zumDitherStucki, 16, "Stucki");
  add(0, zumDitherBayer, 16, "Bayer");
  add(20, zumDitherBayer, 16, "Bayer+noise");
  add(20, zumDitherFS, 16, "FS+noise");
  add(20, zumDitherJJN, 16, "JJN+noise");
  add(100, zumDitherNone, mostLevels);
  add(0, zumDitherFS, mostLevels);
  add(60, zumDitherStucki, 2);
  add(0, zumDitherBayer, mostLevels);
  add(100, zumDitherBayer, 2);
  return variants;
}

void checkPlanesFirst(Traits& t) { t.checks = {Check::kPointers, Check::kPlanes, Check::kSize}; }

// Conversions among the layouts of YCbCr, with that sampling on at least one side.
#define ZUM_YCBCR "@(YCbCr|YCrCb|CbYCr)"
#define ZUM_YCBCR_LAYOUTS(sampling) "zumi?(" ZUM_YCBCR "4[12]?To)" ZUM_YCBCR sampling "?(To" ZUM_YCBCR "4[12]?)_8u_*"

struct Rule {
  const char* functions;  // a shell pattern
  void (*apply)(Traits&);
};

// Everything irregular. A function takes all the rules that its name matches, in this order.
const Rule kRules[] = {
    {"zumiRGBTo*420_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumi*420ToRGB_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumiYUV*ToRGB_8u_P3AC4R", [](Traits& t) { t.keepsAlpha = false; }},

    {"zumiBGR?(565|555)To*42?_*", checkPlanesFirst},
    {"zumiBGR?(565|555)ToYCbCr422_*",
     [](Traits& t) {
       t.minimum = {2, 1};
     }},
    {"zumiBGR?(565|555)To*420_*",
     [](Traits& t) {
       t.minimum = {2, 2};
     }},
    {"zumiBGRTo*420_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumiBGR@(565|555)ToYUV420_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumiBGR?(565|555)ToYCbCr411_*",
     [](Traits& t) {
       checkPlanesFirst(t);
       t.minimum = {4, 1};
       t.halfWidthRoundsUp = false;
       t.oddSize = noGroupsOfFour;
     }},

    {"zumiYCbCrToBGR_*", checkPlanesFirst},
    {"zumiYCbCr422ToBGR_*",
     [](Traits& t) {
       t.minimum = {2, 1};
     }},
    {"zumiYCbCr411ToBGR_*",
     [](Traits& t) {
       checkPlanesFirst(t);
       t.minimum = {4, 1};
     }},
    {"zumi@(YCbCr420ToBGR|YCrCb420ToBGR_Filter)_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumiYUV420ToBGR_*",
     [](Traits& t) {
       t.minimum = {2, 2};
       t.oddSize = eitherHalfOdd;
     }},

    {"zumiY*420To*_8u16u_*", [](Traits& t) { t.halfSizeRoundsUp = true; }},
    {"zumiYCbCr411To*_8u16u_*",
     [](Traits& t) {
       t.minimum = {4, 1};
       t.oddSize = [](ZumiSize size) { return size.width % 4 != 0; };
     }},
    {"zumiYCbCr@(|422)To@(RGB|BGR)@(565|555|444)_8u16u_C*", [](Traits& t) { t.tightShows = true; }},
    {"zumiYCbCr422To@(RGB|BGR)@(565|555|444)_8u16u_C2C3R", [](Traits& t) { t.narrowest = 2; }},
    {"zumi@(RGB|BGR)@(|565)To@(RGB|BGR)@(|565)_*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kSize, Check::kSteps};
     }},
    {"zumiColorToGray_*", [](Traits& t) { t.optionalArgument = 5; }},
    {"zumiRGBToCbYCr422*", [](Traits& t) { t.columnsBehind = [](int width) { return int{width % 4 == 2}; }; }},
    {"zumiRGBToCbYCr422Gamma_*", [](Traits& t) { t.checks.push_back(Check::kSteps); }},

    {"zumi@(YCbCr|YCrCb)420ToYCbCr422_Filter_*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes, Check::kSize};
       t.minimum = {2, 8};
       t.halfWidthRoundsUp = false;
     }},
    // Deinterlacing. Bands reach out of their images, but for the planar top band.
    {"zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kSize};
       t.minimum = {2, 2};
       t.variants = {{{zumWholePicture}}};
     }},
    {"zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes};
       t.minimum = {2, 2};
       t.variants = {{{zumWholePicture}}, {{zumTopBand}}};
     }},
    {"zumiYCbCr@(420To1620|1620To420|420To411|411To420)_*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes, Check::kSize};
       t.minimum = t.multiple = {4, 4};
     }},
    {"zumiYCbCr420To411_*", [](Traits& t) { t.minimum.height = t.multiple.height = 2; }},

    {ZUM_YCBCR_LAYOUTS("4[12]?"),
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes, Check::kSize};
       t.minimum = {2, 0};
       t.halfWidthRoundsUp = false;
     }},
    {ZUM_YCBCR_LAYOUTS("411"), [](Traits& t) { t.minimum.width = 4; }},
    {ZUM_YCBCR_LAYOUTS("420"), [](Traits& t) { t.minimum.height = 2; }},
    {"zumi@(YCbCr422_8u_C2P3R|YCrCb422ToYCbCr422_8u_C2P3R|YCbCr422_8u_P3C2R|CbYCr422ToYCbCr422_8u_C2R)",
     [](Traits& t) { t.minimum.height = 1; }},

    {"zumi*YCoCg*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes};
       t.variants = {{{200}}, {{1}}};
     }},
    {"zumiYCoCgToSBGR*", [](Traits& t) { t.variants.push_back({{-12345}}); }},

    {"zumi@(RGBTo@(HSV|HLS|LUV)|BGRToHLS)_*", [](Traits& t) { t.estimates = true; }},
    {"zumiLUVToRGB_!(32f)_*", [](Traits& t) { t.estimates = true; }},

    {"zumi@(Sum|Mean)_32f_*",
     [](Traits& t) {
       t.variants = {{{zumHintFast}}, {{zumHintAccurate}}};
       t.alignmentShows = true;
     }},

    {"zumi@(BGRToHLS|HLSToBGR)_*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes, Check::kSteps, Check::kSize};
     }},
    {"zumiBGRToHLS_8u_AC4R",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kSize, Check::kSteps};
     }},

    {"zumiColorTwist*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes, Check::kSize, Check::kSteps};
     }},
    {"zumiToneMap*", [](Traits& t) { t.checksDestination = false; }},
    {"zumiToneMapMean_*", [](Traits& t) { t.alignmentShows = true; }},
    // Rows divided among threads at any size.
    {"zumi@(BGRToLab|LabToBGR)_*", [](Traits& t) { t.rowsInOrder = false; }},
    {"zumiReduceBits_*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kSize, Check::kParameters};
       t.variants = reductions(256);
       t.refusals = {{{-1, zumDitherFS, 1}, zumErrNoiseValue},
                     {{101, zumDitherNone, 2}, zumErrNoiseValue},
                     {{0, zumDitherNone, 1}, zumErrDitherLevels},
                     {{0, zumDitherBayer, 65537}, zumErrDitherLevels}};
     }},
    {"zumiReduceBits_@(16u|16s)_*", [](Traits& t) { t.variants = reductions(65536); }},
    {"zumiReduceBits_!(16u|16s)_*",
     [](Traits& t) {
       t.refusals.push_back({{0, zumDitherFS, 257}, zumErrDitherLevels});
     }},
    {"zumiReduceBits_*_C1R",
     [](Traits& t) {
       for (Variant& variant : t.variants) variant.threadsShow = false;
     }},

    {"zumiCFAToRGB_*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kSize, Check::kParameters};
       t.minimum = {2, 2};
       t.variants = {{{zumiBayerBGGR}},
                     {{zumiBayerRGGB}},
                     {{zumiBayerGBRG}},
                     {{zumiBayerGRBG}},
                     {{zumiBayerBGGR}, 1, 0, 2, 1},
                     {{zumiBayerRGGB}, 0, 3, 0, 2},
                     {{zumiBayerGBRG}, 2, 1, 1, 0},
                     {{zumiBayerGRBG}, 3, 2, 3, 4}};
       t.refusals = {{{-1}, zumErrBadArg}, {{4}, zumErrBadArg}};
       t.rowsInOrder = false;
     }},

    {"zumiGamma*",
     [](Traits& t) {
       t.checks = {Check::kPointers, Check::kPlanes, Check::kSize, Check::kSteps};
     }},
    {"zumiGamma*_32f_*",
     [](Traits& t) {
       t.checks.insert(t.checks.begin(), Check::kParameters);
       t.variants = {{{0, 1}}, {{0.25, 0.5}}, {{0.5, 0.5001}}, {{-3e38, 3e38}}};
       t.refusals = {{{1, 1}, zumErrRange}, {{0.5, 0.25}, zumErrRange}, {{std::nan(""), 1}, zumErrRange}};
     }},
};

}  // namespace

Traits traitsOf(const std::string& function) {
  Traits traits;
  for (const Rule& rule : kRules)
    if (fnmatch(rule.functions, function.c_str(), FNM_EXTMATCH) == 0) rule.apply(traits);
  return traits;
}

}  // namespace zumtest
