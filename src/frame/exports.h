// The exported functions as a table: a name, the images it takes, what is done with them.
#ifndef ZUM_FRAME_EXPORTS_H
#define ZUM_FRAME_EXPORTS_H

#include "frame/drivers.h"

// Source and Destination are types of arguments.h which hold a base and a step; the expression sees them as src and
// dst, and the size as roi.
#define ZUM_EXPORT(name, Source, Destination, ...)                                                                \
  ZumStatus name(decltype(zum::Source::base) pSrc, decltype(zum::Source::step) srcStep,                           \
                 decltype(zum::Destination::base) pDst, decltype(zum::Destination::step) dstStep, ZumiSize roi) { \
    ZUM_EXPORT_BODY(Source, Destination, __VA_ARGS__)                                                             \
  }

// The same with a parameter behind the size, as it is declared.
#define ZUM_EXPORT_WITH(name, Source, Destination, parameter, ...)                                              \
  ZumStatus name(decltype(zum::Source::base) pSrc, decltype(zum::Source::step) srcStep,                         \
                 decltype(zum::Destination::base) pDst, decltype(zum::Destination::step) dstStep, ZumiSize roi, \
                 parameter) {                                                                                   \
    ZUM_EXPORT_BODY(Source, Destination, __VA_ARGS__)                                                           \
  }

#define ZUM_EXPORT_BODY(Source, Destination, ...) \
  using namespace zum;                            \
  const Source src{pSrc, srcStep};                \
  const Destination dst{pDst, dstStep};           \
  return __VA_ARGS__;

// A row kernel that one function alone has, for ZUM_KERNEL in its row of the table.
#define ZUM_ROW_KERNEL(kernel) \
  namespace zum {              \
  HWY_EXPORT(kernel);          \
  }

#endif
