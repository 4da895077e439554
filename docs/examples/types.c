/* What a status means, as a text for a log. */
#include <zumcc.h>

const char* statusText(ZumStatus status) {
  switch (status) {
    case zumOk:
      return "done";
    case zumWrnNoOperation:
      return "nothing to do: the image gives no scale";
    case zumWrnOddSize:
      return "done, but for the odd columns and rows at the edge";
    case zumErrBadArg:
      return "an argument is not one of its values";
    case zumErrSize:
      return "the image is too small";
    case zumErrNullPtr:
      return "a pointer is missing";
    case zumErrMemAlloc:
      return "no memory";
    case zumErrStep:
      return "a step is below 1";
    case zumErrContextMatch:
      return "a state of another kind";
    case zumErrRange:
      return "the range of values is empty";
    case zumErrDitherLevels:
      return "the number of levels is out of range";
    case zumErrNoiseValue:
      return "the noise is out of range";
    default:
      return status < 0 ? "an error" : "a warning";
  }
}
