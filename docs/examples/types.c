/* What a status means, as a text for a log. */
#include <zumcc.h>

static const struct {
  ZumStatus status;
  const char* text;
} texts[] = {{zumOk, "done"},
             {zumWrnNoOperation, "nothing done: the image gives no scale"},
             {zumWrnOddSize, "done, but for the odd columns and rows"},
             {zumErrBadArg, "an argument is none of its values"},
             {zumErrSize, "the image is too small"},
             {zumErrNullPtr, "a pointer is missing"},
             {zumErrMemAlloc, "no memory"},
             {zumErrStep, "a step is below 1"},
             {zumErrContextMatch, "a state of another kind"},
             {zumErrRange, "the range of values is empty"},
             {zumErrDitherLevels, "the number of levels is out of range"},
             {zumErrNoiseValue, "the noise is out of range"}};

const char* statusText(ZumStatus status) {
  for (size_t i = 0; i < sizeof(texts) / sizeof(*texts); ++i) {
    if (texts[i].status == status) return texts[i].text;
  }
  return status < 0 ? "an error" : "a warning";
}
