#include "support/traits.h"

#include <fnmatch.h>

namespace zumtest {
namespace {

bool eitherOdd(ZumiSize size) { return (size.width | size.height) & 1; }

struct Rule {
  const char* functions;  // a shell pattern
  void (*apply)(Traits&);
};

// Everything irregular. A function takes all the rules that its name matches, in this order.
const Rule kRules[] = {
    {"zumiRGBTo*420_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumi*420ToRGB_*", [](Traits& t) { t.oddSize = eitherOdd; }},
    {"zumiYUV*ToRGB_8u_P3AC4R", [](Traits& t) { t.keepsAlpha = false; }},

    {"zumi@(Sum|Mean)_32f_*",
     [](Traits& t) {
       t.variants = {{{zumHintFast}}, {{zumHintAccurate}}};
       t.alignmentShows = true;
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
};

}  // namespace

Traits traitsOf(const std::string& function) {
  Traits traits;
  for (const Rule& rule : kRules)
    if (fnmatch(rule.functions, function.c_str(), FNM_EXTMATCH) == 0) rule.apply(traits);
  return traits;
}

}  // namespace zumtest
