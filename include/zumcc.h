/*
 * zumcc.h - colour conversion, bit-exact and fast.
 *
 * Every function converts a rectangle of pixels from one representation to another. The result of each is defined to
 * the last bit: it is the same with every instruction set and at every alignment. (Where a function's documentation
 * names the processor's reciprocal estimate, that estimate is part of the definition. Single-precision results that
 * are no number are NaNs of any bits.)
 *
 * How to read a name: zumiRGBToYCbCr420_8u_C3P3R is
 *
 *   zumi              the prefix: zumi for images, zums for vectors and memory, zumcc for the library itself
 *   RGBToYCbCr420     the conversion: 422, 420 and 411 behind a luma-chroma model are the chroma sampling
 *   8u                the sample type; two types, source first, where they differ (8u16u)
 *   C3P3              the layouts: interleaved pixels to planes; one tag where source and destination agree
 *   R                 it works on a rectangle and takes steps
 *
 *   C1  one channel                    P2  a plane of Y, a plane of interleaved chroma pairs
 *   C2  packed 4:2:2, two samples      P3  three planes, in the order of the model's name
 *       a pixel                        P4  four planes
 *   C3  three interleaved channels     AP4 four planes, the fourth is alpha and is not converted
 *   C4  four interleaved channels
 *   AC4 four interleaved channels, the fourth is alpha and is not converted
 *
 * Arguments: source, source step, destination, destination step, size, then the parameters of the conversion.
 * Functions on planes take an array of plane pointers, and either one step for all planes or an array of steps.
 *
 * Steps are the bytes from one row to the next, whatever the sample type. A step is not checked unless the function
 * says so: a negative one walks the image from the bottom up (the pointer is that of the first row worked on), a zero
 * step reads or writes the same row again. Steps of 16-bit images are halved by an arithmetic shift where the function
 * says that it counts in samples; the low bit of an odd step is lost there.
 *
 * Checks, always in this order: null pointers and null plane arrays (zumErrNullPtr), the size (zumErrSize), the plane
 * pointers inside the arrays (zumErrNullPtr), the steps where they are checked (zumErrStep), the parameters. A function
 * that returns a negative status has written nothing. Alignment is never an error and never changes a result.
 *
 * Memory: nothing outside the rectangle is read or written, unless the function says so. Padding between rows is left
 * alone. Exact in-place use, with the same pointer and the same step on both sides, works wherever source and
 * destination have the same interleaved layout. Any other overlap of source and destination gives an undefined result.
 *
 * Block columns and tail columns: many conversions are defined by two roundings, one for the whole blocks at the start
 * of a row and another for the pixels that remain. Where a function's documentation names block columns, a pixel's
 * value may depend on its column.
 *
 * Threads: every function is re-entrant. No function starts a thread by itself; those that divide their rows among
 * OpenMP threads say so, and ask for threads_omp_of_n_zum threads.
 */
#ifndef ZUMCC_H
#define ZUMCC_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ZUM_API __attribute__((visibility("default")))
#else
#define ZUM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @defgroup types Types and status codes
 *  What goes into a function and what comes out of it: samples, sizes, the values of enumerated arguments, statuses.
 *
 *  Samples are plain numbers in the byte order of the processor. Pointers to them may have any alignment.
 *
 *  After a negative status nothing has been written. Most functions return zumOk, zumErrNullPtr and zumErrSize alone;
 *  the other statuses come from these:
 *
 *  - zumWrnNoOperation: @ref tonemap
 *  - zumWrnOddSize: 4:2:0 of @ref ycbcr420, @ref yuv, @ref bgrencode and @ref bgrdecode; 4:1:1 of @ref bgrencode and
 *    @ref packed16
 *  - zumErrBadArg: @ref cfa
 *  - zumErrMemAlloc: 16-bit @ref gamma, @ref reduce with noise or error diffusion, @ref random
 *  - zumErrStep: @ref rgb565, @ref gamma, @ref colortwist, most of @ref hlsbgr, zumiRGBToCbYCr422Gamma_8u_C3C2R
 *  - zumErrContextMatch: @ref random
 *  - zumErrRange: single-precision @ref gamma
 *  - zumErrDitherLevels, zumErrNoiseValue: @ref reduce
 *
 *  Several faults in one call give the status of the first check that fails. The order is null pointers and null plane
 *  arrays, the size, the planes inside the arrays, the steps, the parameters; families that depart from it say so.
 *  @{ */

typedef uint8_t Zum8u;   /**< unsigned 8-bit sample, 0..255 */
typedef int8_t Zum8s;    /**< signed 8-bit sample, -128..127 */
typedef uint16_t Zum16u; /**< unsigned 16-bit sample, 0..65535; also one packed 5-6-5, 5-5-5 or 4-4-4 pixel */
typedef int16_t Zum16s;  /**< signed 16-bit sample, -32768..32767 */
typedef int32_t Zum32s;  /**< signed 32-bit sample */
typedef float Zum32f;    /**< IEEE 754 single-precision sample */

/** What a function returns: zero is success, negative an error, positive a warning. */
typedef int32_t ZumStatus;

/** The values of ZumStatus. */
enum {
  zumOk = 0,                /**< done */
  zumWrnNoOperation = 1,    /**< nothing was done: the image gives no usable scale */
  zumWrnOddSize = 35,       /**< done, but the size is not a whole number of chroma blocks; the rest is as documented */
  zumErrBadArg = -5,        /**< an enumerated argument is out of its set */
  zumErrSize = -6,          /**< a size or a length is below the minimum */
  zumErrNullPtr = -8,       /**< a pointer argument or a plane pointer is null */
  zumErrMemAlloc = -9,      /**< a work buffer or a state record could not be allocated */
  zumErrStep = -14,         /**< a step is below 1, in the functions that check steps */
  zumErrContextMatch = -17, /**< a state record is not of the kind that the function takes */
  zumErrRange = -49,        /**< a value range is empty or reversed */
  zumErrDitherLevels = -54, /**< the number of levels is out of range */
  zumErrNoiseValue = -55    /**< the noise is outside 0..100 */
};

/** The size of a rectangle, in pixels. */
typedef struct {
  int width;  /**< pixels in a row */
  int height; /**< rows */
} ZumiSize;

/** A rectangle inside an image, in pixels from the image's first pixel. */
typedef struct {
  int x;      /**< first column */
  int y;      /**< first row */
  int width;  /**< pixels in a row */
  int height; /**< rows */
} ZumiRect;

/** The phase of a colour filter array: the colours of the image's first two pixels and of the two below them. */
typedef Zum32s ZumiBayerGrid;

/** The values of ZumiBayerGrid. */
enum {
  zumiBayerBGGR = 0, /**< B G / G R */
  zumiBayerRGGB = 1, /**< R G / G B */
  zumiBayerGBRG = 2, /**< G B / R G */
  zumiBayerGRBG = 3  /**< G R / B G */
};

/** How the functions that reduce bits choose the level of a pixel. */
typedef Zum32s ZumDitherType;

/** The values of ZumDitherType. */
enum {
  zumDitherNone = 0,   /**< the nearest level */
  zumDitherFS = 1,     /**< error diffusion by Floyd and Steinberg */
  zumDitherJJN = 2,    /**< error diffusion by Jarvis, Judice and Ninke */
  zumDitherStucki = 3, /**< error diffusion by Stucki */
  zumDitherBayer = 4   /**< ordered dither by a pattern of four by four pixels */
};

/** How zumiSum_32f_C1R and zumiMean_32f_C1R add. */
enum {
  zumHintNone = 0,    /**< as zumHintFast */
  zumHintFast = 1,    /**< in single precision within a row, in extended precision over the rows */
  zumHintAccurate = 2 /**< in double precision throughout */
};

/** The version of the library. */
typedef struct {
  Zum32s major;          /**< 5 */
  Zum32s minor;          /**< 2 */
  Zum32s majorBuild;     /**< 108 */
  Zum32s build;          /**< 321 */
  char targetCpu[4];     /**< "k4", zero padded */
  const char* name;      /**< "libzumcck4.so.5.2" */
  const char* version;   /**< "5.2" */
  const char* buildDate; /**< "Jul 11 2007" */
} ZumLibraryVersion;

/** The state of a generator of 16-bit random numbers. */
typedef struct ZumsRandUniState_16s ZumsRandUniState_16s;
/** The state of a generator of single-precision random numbers. */
typedef struct ZumsRandUniState_32f ZumsRandUniState_32f;

/** @} */

/** @defgroup globals Global variables
 *  The only state of the library: the number of its threads and the source of its memory.
 *
 *  They are read without a lock, at each call that uses them. Set them before other threads call the library, i_malloc
 *  and i_free together and while no block of theirs is in use. No result depends on them, but for error diffusion in
 *  @ref reduce, which divides its work by the number of threads.
 *  @{ */

/** The number of threads that the parallel functions ask OpenMP for. It starts as the OpenMP runtime's own maximum;
 *  a value below 1 counts as 1. */
extern ZUM_API Zum32s threads_omp_of_n_zum;
/** The allocator behind the allocation functions and the work buffers: the C library's malloc unless replaced. It may
 *  return null, and blocks of any alignment. */
extern ZUM_API void* (*i_malloc)(size_t size);
/** The counterpart of i_malloc: the C library's free unless replaced. */
extern ZUM_API void (*i_free)(void* block);

/** @} */

/** @defgroup services Library services
 *  The version, aligned memory, copy and fill of bytes, and the maximum, sum and mean of a single-precision image.
 *
 *  Images here have one channel. Copy and fill serve any sample type if the width is given in bytes; large images go
 *  around the cache. Sum and mean differ in their last bits by the hint; a sum that must not depend on where the image
 *  lies in memory needs zumHintAccurate.
 *
 *  Checks: null pointers, then a size below 1 by 1; nothing else. The allocation functions tell of no memory by a null
 *  result. One thread.
 *  @{ */

/** The version of the library: a constant record that must not be freed. */
ZUM_API const ZumLibraryVersion* zumccGetLibVersion(void);

/** Allocates len samples, aligned to 32 bytes. Null if len is below 1 or the allocator gives none.
 *  Free the block with zumsFree. */
ZUM_API Zum16s* zumsMalloc_16s(int len);
/** Allocates len samples, as zumsMalloc_16s. */
ZUM_API Zum16u* zumsMalloc_16u(int len);
/** Allocates len samples, as zumsMalloc_16s. */
ZUM_API Zum32f* zumsMalloc_32f(int len);
/** Frees a block of the three functions above. Null is ignored. */
ZUM_API void zumsFree(void* pBlock);

/** Copies a rectangle of bytes. Steps are not checked. */
ZUM_API ZumStatus zumiCopy_8u_C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Sets every byte of a rectangle to value. The step is not checked. */
ZUM_API ZumStatus zumiSet_8u_C1R(Zum8u value, Zum8u* pDst, int dstStep, ZumiSize roi);

/** The largest sample of a rectangle, at least -3.4028235e38. A NaN is passed over when a later sample takes its place
 *  in the same of the eight running maxima. */
ZUM_API ZumStatus zumiMax_32f_C1R(const Zum32f* pSrc, int srcStep, ZumiSize roi, Zum32f* pMax);
/** The sum of all samples of a rectangle.
 *  With zumHintAccurate the even and the odd positions of the rows are added apart, in double precision, each in order,
 *  and the two sums together at the end. With any other hint each row is added in sixteen single-precision lanes, which
 *  are folded at its end, and the rows are added in extended precision (64 bits of significand); in this form the lane
 *  that a sample falls in, and so the rounding, depends on the address of the row modulo 16. */
ZUM_API ZumStatus zumiSum_32f_C1R(const Zum32f* pSrc, int srcStep, ZumiSize roi, double* pSum, int hint);
/** The mean of all samples of a rectangle: zumiSum_32f_C1R over the number of pixels, divided in double precision. */
ZUM_API ZumStatus zumiMean_32f_C1R(const Zum32f* pSrc, int srcStep, ZumiSize roi, double* pMean, int hint);

/** @} */

/** @defgroup random Uniform random numbers
 *  A generator of numbers that are spread evenly between two limits: the same seed gives the same numbers.
 *
 *  Each number is the sum of a linear congruential and a subtract-with-borrow sequence of 32 bits, scaled to low..high
 *  in extended precision (64 bits of significand). The seed enters the second sequence alone. Single-precision numbers
 *  are rounded. 16-bit ones are truncated toward zero: 0 to 1024 gives 0 to 1023, and -10 to 10 twice as many zeros as
 *  ones.
 *
 *  Two calls for n numbers give what one call for 2 n gives. The two kinds of state are told apart: a state of the
 *  other kind is refused with zumErrContextMatch. Memory comes from i_malloc. One thread at a time may use a state;
 *  different states are independent.
 *  @{ */

/** Allocates a generator of numbers in low..high (not checked; reversed limits work). If there is no memory,
 *  zumErrMemAlloc is returned and *pRandUniState stays as it was. */
ZUM_API ZumStatus zumsRandUniformInitAlloc_16s(ZumsRandUniState_16s** pRandUniState, Zum16s low, Zum16s high,
                                               uint32_t seed);
/** As zumsRandUniformInitAlloc_16s, for single precision. */
ZUM_API ZumStatus zumsRandUniformInitAlloc_32f(ZumsRandUniState_32f** pRandUniState, Zum32f low, Zum32f high,
                                               uint32_t seed);
/** Writes len numbers, truncated toward zero. Checks: null pointers, len below 1, the kind of the state. */
ZUM_API ZumStatus zumsRandUniform_16s(Zum16s* pDst, int len, ZumsRandUniState_16s* pRandUniState);
/** Writes len numbers. Checks: null pointers, len below 1, the kind of the state. */
ZUM_API ZumStatus zumsRandUniform_32f(Zum32f* pDst, int len, ZumsRandUniState_32f* pRandUniState);
/** Frees a generator. Checks: null pointer, the kind of the state. */
ZUM_API ZumStatus zumsRandUniformFree_16s(ZumsRandUniState_16s* pRandUniState);
/** Frees a generator. Checks: null pointer, the kind of the state. */
ZUM_API ZumStatus zumsRandUniformFree_32f(ZumsRandUniState_32f* pRandUniState);

/** @} */

/** @defgroup ycbcr444 RGB and YCbCr 4:4:4
 *  Full-range RGB to and from studio-range YCbCr of ITU-R BT.601, one chroma pair a pixel, all samples 8-bit.
 *
 *  On R, G, B of 0..255, Y is 16..235, Cb and Cr 16..240 around 128:
 *
 *      Y  = 0.257 R + 0.504 G + 0.098 B + 16
 *      Cb = 0.439 B - 0.291 G - 0.148 R + 128
 *      Cr = 0.439 R - 0.368 G - 0.071 B + 128
 *
 *      R = 1.164 (Y - 16) + 1.596 (Cr - 128)
 *      G = 1.164 (Y - 16) - 0.813 (Cr - 128) - 0.392 (Cb - 128)
 *      B = 1.164 (Y - 16) + 2.017 (Cb - 128)
 *
 *  Results beyond 0..255 are limited. In block columns each term of a sum is rounded or truncated to a few bits of
 *  fraction before they are added; elsewhere sums are exact to 16 bits of fraction. The sum is then rounded or
 *  truncated:
 *
 *  | function                   | block columns            | terms there | sum there | sum elsewhere |
 *  |----------------------------|--------------------------|-------------|-----------|---------------|
 *  | zumiRGBToYCbCr_8u_C3R      | width rounded down to 16 | rounded     | truncated | rounded       |
 *  | zumiRGBToYCbCr_8u_P3R      | width rounded down to 16 | truncated   | rounded   | rounded       |
 *  | zumiRGBToYCbCr_8u_AC4R     | none                     |             |           | rounded       |
 *  | zumiYCbCrToRGB_8u_C3R, P3R | width rounded down to 4  | truncated   | truncated | truncated     |
 *  | zumiYCbCrToRGB_8u_AC4R     | none                     |             |           | truncated     |
 *  | zumiYCbCrToRGB_8u_P3C3R    | width rounded down to 8  | truncated   | rounded   | truncated     |
 *
 *  So equal colours may differ by one between the two: pure blue has a Cb of 239 in the blocks of C3, else of 240; Y of
 *  235 without colour gives R, G, B of 255 in the blocks of P3C3, else of 254.
 *
 *  The fourth channel of AC4 images is neither read nor written.
 *
 *  Checks: null pointers, a size below 1 by 1, null planes. Steps are not checked. One thread.
 *  @{ */

/** RGB to YCbCr, interleaved. */
ZUM_API ZumStatus zumiRGBToYCbCr_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to YCbCr, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToYCbCr_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to YCbCr, three planes on each side, one step for the three. */
ZUM_API ZumStatus zumiRGBToYCbCr_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                        ZumiSize roi);
/** YCbCr to RGB, interleaved. */
ZUM_API ZumStatus zumiYCbCrToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to RGB, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiYCbCrToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to RGB, three planes on each side, one step for the three. */
ZUM_API ZumStatus zumiYCbCrToRGB_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                        ZumiSize roi);
/** YCbCr planes to interleaved RGB. */
ZUM_API ZumStatus zumiYCbCrToRGB_8u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                          ZumiSize roi);

/** @} */

/** @defgroup ycbcr422 RGB and YCbCr, YCrCb 4:2:2
 *  RGB to and from YCbCr as in @ref ycbcr444, with one chroma pair for two neighbouring pixels.
 *
 *  Going forward the pair has the chroma of the mean of the two pixels, exactly and rounded in all columns; going back
 *  it serves both, without interpolation. C2 rows are packed Y0 Cb Y1 Cr (YCbCr422) or Y0 Cr Y1 Cb (YCrCb422) and take
 *  two bytes a pixel. Chroma planes have half the width, rounded up.
 *
 *  Forward: in block columns, the width rounded down to 8, Y is truncated, terms and sum; in the pairs behind them the
 *  first Y is rounded and the second truncated. A last odd pixel writes two bytes, its Y and the first chroma byte of
 *  the pair, of its own colour.
 *
 *  Back from C2: block columns are the width rounded down to 4, terms truncated and sum truncated; elsewhere sums are
 *  exact and truncated. A last odd pixel has one chroma byte behind its Y and takes the other from the byte before its
 *  Y, that of the pair before. At a width of 1 there is none, and its one chroma byte serves as both Cb and Cr.
 *
 *  Back from planes: block columns are the width rounded down to 8, terms truncated and sum rounded; elsewhere sums are
 *  exact and truncated. A last odd pixel has chroma samples of its own.
 *
 *  Checks: null pointers, a size below 1 by 1, null planes. Steps are not checked. An odd width gives no warning. One
 *  thread.
 *  @{ */

/** RGB to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiRGBToYCbCr422_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB planes, one step for the three, to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiRGBToYCbCr422_8u_P3C2R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                             ZumiSize roi);
/** RGB to packed YCrCb 4:2:2. */
ZUM_API ZumStatus zumiRGBToYCrCb422_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB planes, one step for the three, to packed YCrCb 4:2:2. */
ZUM_API ZumStatus zumiRGBToYCrCb422_8u_P3C2R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                             ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB. */
ZUM_API ZumStatus zumiYCbCr422ToRGB_8u_C2C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB planes, one step for the three. */
ZUM_API ZumStatus zumiYCbCr422ToRGB_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], int dstStep,
                                             ZumiSize roi);
/** Planar YCbCr 4:2:2, a step for each plane, to RGB. */
ZUM_API ZumStatus zumiYCbCr422ToRGB_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                             ZumiSize roi);
/** Packed YCrCb 4:2:2 to RGB. */
ZUM_API ZumStatus zumiYCrCb422ToRGB_8u_C2C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed YCrCb 4:2:2 to RGB planes, one step for the three. */
ZUM_API ZumStatus zumiYCrCb422ToRGB_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], int dstStep,
                                             ZumiSize roi);

/** @} */

/** @defgroup ycbcr420 RGB and YCbCr 4:2:0
 *  RGB to and from planar YCbCr as in @ref ycbcr444, with one chroma pair for two by two pixels.
 *
 *  Going forward the pair has the chroma of the mean of the four pixels; going back it serves the four, without
 *  interpolation. Each plane has its own step; chroma planes have half the width and half the height, both rounded
 *  down.
 *
 *  Block columns are the width rounded down to 8 in both directions. Forward, terms are rounded there and sums
 *  truncated; elsewhere Y is rounded, and chroma, which is centred at 128.125, truncated. Back, terms and sums are
 *  truncated there; elsewhere sums are exact and truncated.
 *
 *  If the width or the height is odd, the last column or row of the destination stays as it was and the status is
 *  zumWrnOddSize; with a width or height of 1 that is all there is.
 *
 *  Checks: null pointers and plane arrays, a size below 1 by 1, null planes. Steps are not checked. One thread.
 *  @{ */

/** RGB to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiRGBToYCbCr420_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                             ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB. */
ZUM_API ZumStatus zumiYCbCr420ToRGB_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                             ZumiSize roi);

/** @} */

/** @defgroup yuv RGB and YUV
 *  Full-range RGB to and from full-range YUV at 4:4:4, 4:2:2 and 4:2:0, all samples 8-bit.
 *
 *  The luma is that of ITU-R BT.601, over the whole of 0..255; U and V are its colour differences at the weights of
 *  composite video, around 128, and limited to 0..255 where they reach beyond it (V of saturated reds and cyans):
 *
 *      Y = 0.299 R + 0.587 G + 0.114 B      R = Y + 1.140 (V - 128)
 *      U = 0.492 (B - Y) + 128              G = Y - 0.394 (U - 128) - 0.581 (V - 128)
 *      V = 0.877 (R - Y) + 128              B = Y + 2.032 (U - 128)
 *
 *  The layouts of 4:2:2 and 4:2:0 are those of @ref ycbcr422 and @ref ycbcr420, C2 rows being packed Y0 U Y1 V.
 *  Subsampled planes have a step each; the other planes share one. Going forward the chroma of two or four pixels is
 *  that of their mean, going back it is repeated.
 *
 *  Functions without R work on tight images: no steps, and no gap between rows. A chroma row has width / 2 samples,
 *  rounded up at 4:2:2 and down at 4:2:0.
 *
 *  Each function has its own fixed-point arithmetic, and most have another one behind their block columns, so that
 *  equal colours may differ by a unit or two. Block columns are the width rounded down to
 *
 *  - 16: zumiRGBToYUV_8u_C3R, zumiRGBToYUV_8u_P3R, zumiYUV422ToRGB_8u_P3C3R and P3C3
 *  - 8: zumiRGBToYUV_8u_AC4R, zumiRGBToYUV_8u_C3P3R, zumiYUVToRGB_8u_P3R, zumiRGBToYUV420_8u_C3P3R and C3P3
 *  - 4: zumiYUV422ToRGB_8u_P3AC4R, zumiYUV420ToRGB_8u_P3AC4R
 *  - 1 (4:4:4) or 2: all others
 *
 *  The tight 4:2:2 functions take an image of even width and at least 256 pixels as one row, of which the pixels
 *  rounded down to 8 come first and the others as a row of their own: there the block columns depend on the place in
 *  the image.
 *
 *  4:2:2: an odd width is no error and gives no warning. In planes the last pixel has its own chroma samples. In C2
 *  rows it has two bytes, its Y and U; going back it takes V from the byte before its Y, that of the pair before, and
 *  at a width of 1 its U also for V.
 *
 *  4:2:0: if the width or the height is odd, the last column or row of the destination stays as it was and the status
 *  is zumWrnOddSize.
 *
 *  The fourth channel of AC4 images is neither read nor written by the 4:4:4 functions; P3AC4 functions set it to 0 in
 *  every pixel that they convert.
 *
 *  Checks: null pointers and plane arrays, a size below 1 by 1, null planes. Steps are not checked. One thread.
 *  @{ */

/** RGB to YUV, interleaved. */
ZUM_API ZumStatus zumiRGBToYUV_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to YUV, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToYUV_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to YUV, three planes on each side, one step for the three. */
ZUM_API ZumStatus zumiRGBToYUV_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                      ZumiSize roi);
/** RGB to YUV planes, one step for the three. */
ZUM_API ZumStatus zumiRGBToYUV_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], int dstStep,
                                        ZumiSize roi);
/** YUV to RGB, interleaved. */
ZUM_API ZumStatus zumiYUVToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** YUV to RGB, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiYUVToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** YUV to RGB, three planes on each side, one step for the three. */
ZUM_API ZumStatus zumiYUVToRGB_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                      ZumiSize roi);
/** YUV planes, one step for the three, to interleaved RGB. */
ZUM_API ZumStatus zumiYUVToRGB_8u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                        ZumiSize roi);
/** RGB to packed YUV 4:2:2. */
ZUM_API ZumStatus zumiRGBToYUV422_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to planar YUV 4:2:2. */
ZUM_API ZumStatus zumiRGBToYUV422_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                           ZumiSize roi);
/** RGB planes, one step for the three, to planar YUV 4:2:2. */
ZUM_API ZumStatus zumiRGBToYUV422_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3],
                                         const int dstStep[3], ZumiSize roi);
/** RGB to planar YUV 4:2:2, tight images. */
ZUM_API ZumStatus zumiRGBToYUV422_8u_C3P3(const Zum8u* pSrc, Zum8u* const pDst[3], ZumiSize roi);
/** RGB planes to planar YUV 4:2:2, tight images. */
ZUM_API ZumStatus zumiRGBToYUV422_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi);
/** Packed YUV 4:2:2 to RGB. */
ZUM_API ZumStatus zumiYUV422ToRGB_8u_C2C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Planar YUV 4:2:2 to RGB. */
ZUM_API ZumStatus zumiYUV422ToRGB_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                           ZumiSize roi);
/** Planar YUV 4:2:2 to RGB planes, one step for the three. */
ZUM_API ZumStatus zumiYUV422ToRGB_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                         int dstStep, ZumiSize roi);
/** Planar YUV 4:2:2 to RGB with a fourth channel of 0. */
ZUM_API ZumStatus zumiYUV422ToRGB_8u_P3AC4R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                            ZumiSize roi);
/** Planar YUV 4:2:2 to RGB, tight images. */
ZUM_API ZumStatus zumiYUV422ToRGB_8u_P3C3(const Zum8u* const pSrc[3], Zum8u* pDst, ZumiSize roi);
/** Planar YUV 4:2:2 to RGB planes, tight images. */
ZUM_API ZumStatus zumiYUV422ToRGB_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi);
/** RGB to planar YUV 4:2:0. */
ZUM_API ZumStatus zumiRGBToYUV420_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                           ZumiSize roi);
/** RGB planes, one step for the three, to planar YUV 4:2:0. */
ZUM_API ZumStatus zumiRGBToYUV420_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3],
                                         const int dstStep[3], ZumiSize roi);
/** RGB to planar YUV 4:2:0, tight images. */
ZUM_API ZumStatus zumiRGBToYUV420_8u_C3P3(const Zum8u* pSrc, Zum8u* const pDst[3], ZumiSize roi);
/** RGB planes to planar YUV 4:2:0, tight images. */
ZUM_API ZumStatus zumiRGBToYUV420_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi);
/** Planar YUV 4:2:0 to RGB. */
ZUM_API ZumStatus zumiYUV420ToRGB_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                           ZumiSize roi);
/** Planar YUV 4:2:0 to RGB planes, one step for the three. */
ZUM_API ZumStatus zumiYUV420ToRGB_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                         int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB with a fourth channel of 0. */
ZUM_API ZumStatus zumiYUV420ToRGB_8u_P3AC4R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                            ZumiSize roi);
/** Planar YUV 4:2:0 to RGB, tight images. */
ZUM_API ZumStatus zumiYUV420ToRGB_8u_P3C3(const Zum8u* const pSrc[3], Zum8u* pDst, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB planes, tight images. */
ZUM_API ZumStatus zumiYUV420ToRGB_8u_P3(const Zum8u* const pSrc[3], Zum8u* const pDst[3], ZumiSize roi);

/** @} */

/** @defgroup bgrencode BGR to subsampled YCbCr and YUV
 *  BGR to studio-range YCbCr of ITU-R BT.601, and from packed 16-bit pixels also to full-range YUV.
 *
 *  Sources are three bytes a pixel (B, G, R), four (B, G, R and alpha, which is not read), or one Zum16u with blue in
 *  its lowest bits: 5, 6 and 5 bits (BGR565) or 5, 5 and 5 (BGR555, the highest bit is ignored), each widened to a byte
 *  by zeros, so that no sample reaches 255. The scales are those of @ref ycbcr444 and @ref yuv. Chroma is that of the
 *  mean of the pixels that share it, centred at 128.125 in YCbCr. Each plane has its own step; the planes of YCrCb are
 *  in the order Y, Cr, Cb.
 *
 *  In block columns the terms of a sum are truncated to a fraction of the result before they are added; elsewhere sums
 *  are exact. Y is rounded in both:
 *
 *  | to              | minimum | block columns                                             | odd sizes           |
 *  |-----------------|---------|-----------------------------------------------------------|---------------------|
 *  | 4:2:2           | 2 by 1  | width rounded down to 32, and 8 more if width mod 16 >= 8 | converted           |
 *  | 4:2:0, from 8u  | 2 by 2  | width rounded down to 16, and 4 more if width mod 8 >= 4  | left, zumWrnOddSize |
 *  | 4:2:0, from 16u | 2 by 2  | the same                                                  | Y alone, no warning |
 *  | 4:1:1           | 4 by 1  | width rounded down to 32, from BGR565 to 4                | see below           |
 *  | YUV 4:2:0       | 2 by 2  | as 4:2:0                                                  | left, zumWrnOddSize |
 *
 *  4:2:2: a last odd pixel has chroma of its own colour alone. C2 rows, packed Y0 Cb Y1 Cr, end with its Y and Cb;
 *  chroma planes, half as wide and rounded up, with both.
 *
 *  4:2:0: chroma planes have half the width and half the height, both rounded down.
 *
 *  4:1:1: chroma planes have a quarter of the width, rounded down; zumWrnOddSize is returned if the width is no
 *  multiple of 4. Of the last one to three pixels the AC4 and the BGR555 function convert Y alone, the others nothing.
 *  From C3 the block columns are the width rounded down to 16, and their terms are rounded and sums truncated as in
 *  @ref ycbcr420.
 *
 *  Checks: all pointers, those of the planes too, come before the size. Steps are not checked. One thread.
 *  @{ */

/** BGR to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGRToYCbCr422_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** BGR to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGRToYCbCr422_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                             ZumiSize roi);
/** BGR with alpha to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGRToYCbCr422_8u_AC4C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** BGR with alpha to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGRToYCbCr422_8u_AC4P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                              const int dstStep[3], ZumiSize roi);
/** BGR565 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGR565ToYCbCr422_16u8u_C3C2R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep,
                                                   ZumiSize roi);
/** BGR565 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGR565ToYCbCr422_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR555 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGR555ToYCbCr422_16u8u_C3C2R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep,
                                                   ZumiSize roi);
/** BGR555 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiBGR555ToYCbCr422_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiBGRToYCbCr420_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                             ZumiSize roi);
/** BGR to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiBGRToYCrCb420_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                             ZumiSize roi);
/** BGR with alpha to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiBGRToYCbCr420_8u_AC4P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                              const int dstStep[3], ZumiSize roi);
/** BGR with alpha to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiBGRToYCrCb420_8u_AC4P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                              const int dstStep[3], ZumiSize roi);
/** BGR565 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiBGR565ToYCbCr420_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR565 to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiBGR565ToYCrCb420_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR555 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiBGR555ToYCbCr420_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR555 to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiBGR555ToYCrCb420_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiBGRToYCbCr411_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                             ZumiSize roi);
/** BGR with alpha to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiBGRToYCbCr411_8u_AC4P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                              const int dstStep[3], ZumiSize roi);
/** BGR565 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiBGR565ToYCbCr411_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR555 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiBGR555ToYCbCr411_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                   const int dstStep[3], ZumiSize roi);
/** BGR565 to planar YUV 4:2:0. */
ZUM_API ZumStatus zumiBGR565ToYUV420_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                 const int dstStep[3], ZumiSize roi);
/** BGR555 to planar YUV 4:2:0. */
ZUM_API ZumStatus zumiBGR555ToYUV420_16u8u_C3P3R(const Zum16u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                 const int dstStep[3], ZumiSize roi);

/** @} */

/** @defgroup bgrdecode YCbCr and YUV to BGR
 *  Studio-range YCbCr of ITU-R BT.601, or full-range YUV, to BGR: three bytes a pixel, or four with the alpha that is
 *  given.
 *
 *  The scales are those of @ref ycbcr444 and @ref yuv. Planes have a step each but at 4:4:4, where they share one. In
 *  block columns the terms of a sum are truncated to a fraction of the result, and the sum is rounded where this is
 *  said and truncated elsewhere. Behind them sums are exact and truncated, or rounded where that is said:
 *
 *  | function                          | minimum | block columns           | elsewhere | odd sizes           |
 *  |-----------------------------------|---------|-------------------------|-----------|---------------------|
 *  | zumiYCbCrToBGR_8u_P3C3R, P3C4R    | 1 by 1  | all, rounded            |           | converted           |
 *  | zumiYCbCr422ToBGR_8u_C2C3R        | 2 by 1  | even width, rounded     | truncated | converted           |
 *  | zumiYCbCr422ToBGR_8u_C2C4R        | 2 by 1  | width rounded down to 8 | truncated | converted           |
 *  | zumiYCbCr411ToBGR_8u_P3C3R, P3C4R | 4 by 1  | width rounded down to 4 | truncated | converted           |
 *  | zumiYCbCr420ToBGR_8u_P3C3R        | 1 by 1  | width rounded down to 8 | rounded   | left, zumWrnOddSize |
 *  | zumiYUV420ToBGR_8u_P3C3R          | 2 by 2  | all                     |           | left, see below     |
 *  | zumiYCrCb420ToBGR_Filter_8u_P3C4R | 1 by 1  | see below               | truncated | left, zumWrnOddSize |
 *
 *  What is left of the destination keeps all its bytes, alpha too.
 *
 *  4:2:2: a last odd pixel has Cb behind its Y and takes Cr from the pair before. 4:1:1: chroma planes have a quarter
 *  of the width, rounded up. 4:2:0: chroma planes have half the width and half the height, both rounded down. The
 *  chroma of a pair or block is repeated, with one exception:
 *
 *  zumiYCrCb420ToBGR_Filter_8u_P3C4R takes the planes Y, Cr, Cb. The first pixel of a pair has the pair's chroma, the
 *  second the mean of that and the next pair's, rounded upward; both pixels of a row's last pair have the pair's. Block
 *  columns are the even width less 2, rounded down to 16.
 *
 *  zumiYUV420ToBGR_8u_P3C3R returns zumWrnOddSize if half the width or half the height, rounded down, is odd: for 6 by
 *  4 but not for 5 by 4.
 *
 *  Checks: null pointers and plane arrays, the minimum size, null planes; in the functions of 4:4:4 and 4:1:1 the
 *  planes come before the size. Steps are not checked. One thread.
 *  @{ */

/** YCbCr 4:4:4 planes, one step for the three, to BGR. */
ZUM_API ZumStatus zumiYCbCrToBGR_8u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                          ZumiSize roi);
/** YCbCr 4:4:4 planes, one step for the three, to BGR with alpha. */
ZUM_API ZumStatus zumiYCbCrToBGR_8u_P3C4R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                          ZumiSize roi, Zum8u alpha);
/** Packed YCbCr 4:2:2 to BGR. */
ZUM_API ZumStatus zumiYCbCr422ToBGR_8u_C2C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR with alpha. */
ZUM_API ZumStatus zumiYCbCr422ToBGR_8u_C2C4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                             Zum8u alpha);
/** Planar YCbCr 4:1:1 to BGR. */
ZUM_API ZumStatus zumiYCbCr411ToBGR_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                             ZumiSize roi);
/** Planar YCbCr 4:1:1 to BGR with alpha. */
ZUM_API ZumStatus zumiYCbCr411ToBGR_8u_P3C4R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                             ZumiSize roi, Zum8u alpha);
/** Planar YCbCr 4:2:0 to BGR. */
ZUM_API ZumStatus zumiYCbCr420ToBGR_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                             ZumiSize roi);
/** Planar YUV 4:2:0 to BGR. */
ZUM_API ZumStatus zumiYUV420ToBGR_8u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                           ZumiSize roi);
/** Planar YCrCb 4:2:0, the chroma interpolated, to BGR with alpha. */
ZUM_API ZumStatus zumiYCrCb420ToBGR_Filter_8u_P3C4R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst,
                                                    int dstStep, ZumiSize roi, Zum8u alpha);

/** @} */

/** @defgroup packed16 YCbCr and YUV to 16-bit pixels
 *  8-bit YCbCr (studio range, ITU-R BT.601) and YUV (full range) to one Zum16u a pixel.
 *
 *  The digits behind RGB and BGR are the bits of the channels, in the order of the name from the lowest bits upward:
 *  RGB565 has R in bits 0 to 4, G in 5 to 10 and B in 11 to 15, BGR565 has B in bits 0 to 4 and R in 11 to 15. 555
 *  leaves one bit at the top and 444 four, which are 0. Samples on the scales of @ref ycbcr444 and @ref yuv are limited
 *  to 0..255 and then lose their low bits; nothing is rounded there, and @ref packed16dither hides the bands that come
 *  of it.
 *
 *  Packed 4:2:2 rows are Y0 Cb Y1 Cr. Planes of 4:4:4 have one step, subsampled ones a step each. Chroma is repeated.
 *  Every pixel is converted, whatever the size: chroma planes have half the width (4:2:2, 4:2:0), a quarter of it
 *  (4:1:1) and half the height (4:2:0), all rounded up.
 *
 *  In block columns the terms of a sum are truncated at 16 times the sample, and so is the sum. All columns are block
 *  columns, except for these, whose sums are exact and truncated:
 *
 *  - 4:4:4 from C3: those behind the width rounded down to 8.
 *  - 4:2:2 from C2: those behind the width rounded down to 4. A last odd pixel takes its Cr from the pair before. A
 *    width of 1 makes no 16-bit pixels: in each row it gives three bytes R, G, B, for BGR names too, from the Y and its
 *    one chroma byte as both Cb and Cr, and the rows start dstStep / 2 bytes apart, rounded down.
 *  - YUV 4:2:0: a last odd column and a last odd row.
 *  - 4:1:1: the last one to three pixels if they are no whole group of four; the status is zumWrnOddSize then. In
 *    groups the sums are rounded.
 *
 *  Tight images from C3, and of even width from C2, are one long row: where the source step is 3 (C2: 2) times the
 *  width and the destination step is twice the width, or one more, only the last pixels of the image are outside block
 *  columns.
 *
 *  Checks: null pointers and plane arrays, a size below 1 by 1, for 4:1:1 below 4 by 1, null planes. Steps are not
 *  checked; that of the destination loses its low bit. One thread.
 *  @{ */

/** YCbCr to RGB565. */
ZUM_API ZumStatus zumiYCbCrToRGB565_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to BGR565. */
ZUM_API ZumStatus zumiYCbCrToBGR565_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to RGB555. */
ZUM_API ZumStatus zumiYCbCrToRGB555_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to BGR555. */
ZUM_API ZumStatus zumiYCbCrToBGR555_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to RGB444. */
ZUM_API ZumStatus zumiYCbCrToRGB444_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCbCr to BGR444. */
ZUM_API ZumStatus zumiYCbCrToBGR444_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCbCr planes to RGB565. */
ZUM_API ZumStatus zumiYCbCrToRGB565_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst, int dstStep,
                                                ZumiSize roi);
/** YCbCr planes to BGR565. */
ZUM_API ZumStatus zumiYCbCrToBGR565_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst, int dstStep,
                                                ZumiSize roi);
/** YCbCr planes to RGB555. */
ZUM_API ZumStatus zumiYCbCrToRGB555_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst, int dstStep,
                                                ZumiSize roi);
/** YCbCr planes to BGR555. */
ZUM_API ZumStatus zumiYCbCrToBGR555_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst, int dstStep,
                                                ZumiSize roi);
/** YCbCr planes to RGB444. */
ZUM_API ZumStatus zumiYCbCrToRGB444_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst, int dstStep,
                                                ZumiSize roi);
/** YCbCr planes to BGR444. */
ZUM_API ZumStatus zumiYCbCrToBGR444_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst, int dstStep,
                                                ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB565. */
ZUM_API ZumStatus zumiYCbCr422ToRGB565_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                   ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR565. */
ZUM_API ZumStatus zumiYCbCr422ToBGR565_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                   ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB555. */
ZUM_API ZumStatus zumiYCbCr422ToRGB555_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                   ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR555. */
ZUM_API ZumStatus zumiYCbCr422ToBGR555_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                   ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB444. */
ZUM_API ZumStatus zumiYCbCr422ToRGB444_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                   ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR444. */
ZUM_API ZumStatus zumiYCbCr422ToBGR444_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                   ZumiSize roi);
/** Planar YCbCr 4:2:2 to RGB565. */
ZUM_API ZumStatus zumiYCbCr422ToRGB565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to BGR565. */
ZUM_API ZumStatus zumiYCbCr422ToBGR565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to RGB555. */
ZUM_API ZumStatus zumiYCbCr422ToRGB555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to BGR555. */
ZUM_API ZumStatus zumiYCbCr422ToBGR555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to RGB444. */
ZUM_API ZumStatus zumiYCbCr422ToRGB444_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to BGR444. */
ZUM_API ZumStatus zumiYCbCr422ToBGR444_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB565. */
ZUM_API ZumStatus zumiYCbCr420ToRGB565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to BGR565. */
ZUM_API ZumStatus zumiYCbCr420ToBGR565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB555. */
ZUM_API ZumStatus zumiYCbCr420ToRGB555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to BGR555. */
ZUM_API ZumStatus zumiYCbCr420ToBGR555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB444. */
ZUM_API ZumStatus zumiYCbCr420ToRGB444_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to BGR444. */
ZUM_API ZumStatus zumiYCbCr420ToBGR444_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB565. */
ZUM_API ZumStatus zumiYUV420ToRGB565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                 int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to BGR565. */
ZUM_API ZumStatus zumiYUV420ToBGR565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                 int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB555. */
ZUM_API ZumStatus zumiYUV420ToRGB555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                 int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to BGR555. */
ZUM_API ZumStatus zumiYUV420ToBGR555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                 int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB444. */
ZUM_API ZumStatus zumiYUV420ToRGB444_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                 int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to BGR444. */
ZUM_API ZumStatus zumiYUV420ToBGR444_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                 int dstStep, ZumiSize roi);
/** Planar YCbCr 4:1:1 to BGR565. */
ZUM_API ZumStatus zumiYCbCr411ToBGR565_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);
/** Planar YCbCr 4:1:1 to BGR555. */
ZUM_API ZumStatus zumiYCbCr411ToBGR555_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                   int dstStep, ZumiSize roi);

/** @} */

/** @defgroup rgb565 RGB and BGR to and from 16-bit pixels
 *  8-bit interleaved pixels to and from 16-bit ones of 5, 6 and 5 bits, the first sample in the lowest bits.
 *
 *  Samples lose their low bits on the way there and have zeros in their place on the way back, so that white comes back
 *  as 248, 252, 248. RGB565 has R in bits 0 to 4, G in 5 to 10 and B in 11 to 15, BGR565 has B in bits 0 to 4 and R in
 *  11 to 15. All columns are alike.
 *
 *  Checks: null pointers, a size below 1 by 1, then the steps (below 1: zumErrStep). The step of 16-bit pixels loses
 *  its low bit where they are written.
 *
 *  Threads: an image of at least 192 by 192 pixels is cut into threads_omp_of_n_zum bands of rows, one a thread. If the
 *  OpenMP runtime grants fewer threads than that (because the caller is inside a parallel region already, for example),
 *  only the bands of the threads that run are converted: set threads_omp_of_n_zum to 1 there.
 *  @{ */

/** RGB to RGB565. */
ZUM_API ZumStatus zumiRGBToRGB565_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** BGR to BGR565. */
ZUM_API ZumStatus zumiBGRToBGR565_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB565 to RGB. */
ZUM_API ZumStatus zumiRGB565ToRGB_16u8u_C3R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** BGR565 to BGR. */
ZUM_API ZumStatus zumiBGR565ToBGR_16u8u_C3R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup packed16dither YCbCr and YUV to 16-bit pixels with ordered dither
 *  The conversions of @ref packed16, with ordered dither in the place of cut bits: a flat area gives a pattern, not a
 *  band.
 *
 *  Each channel of each pixel is rounded down to its level or up to the next. For a sample v of 0..255 and a channel of
 *  n bits, the level is v (2^n - 1) / 256, rounded down, and one more if what v has above it exceeds a threshold. The
 *  threshold goes by the place of the pixel, in a matrix of 4 by 4 that starts at the first pixel of each call, from
 *  nothing to about a whole step between levels in the order of these ranks:
 *
 *  | rows, columns modulo 4 | 0  | 1  | 2  | 3  |
 *  |------------------------|----|----|----|----|
 *  | 0                      | 0  | 8  | 2  | 10 |
 *  | 1                      | 12 | 4  | 14 | 6  |
 *  | 2                      | 3  | 11 | 1  | 9  |
 *  | 3                      | 15 | 7  | 13 | 5  |
 *
 *  0 is 0 everywhere, and 255 the highest level, but for the green of 565 at rank 15, which is 62 of 63.
 *
 *  The samples before the dither are those of the block columns of @ref packed16, in all columns and rows, and so are
 *  the layouts and the bits. A last odd pixel of packed 4:2:2, at a width of 1 too, takes its Cb as both Cb and Cr.
 *  Tight images are as others.
 *
 *  Checks: null pointers and plane arrays, a size below 1 by 1, null planes. No size gives a warning. Steps are not
 *  checked; that of the destination loses its low bit. One thread.
 *  @{ */

/** YCbCr to RGB565, dithered. */
ZUM_API ZumStatus zumiYCbCrToRGB565Dither_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                    ZumiSize roi);
/** YCbCr to BGR565, dithered. */
ZUM_API ZumStatus zumiYCbCrToBGR565Dither_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                    ZumiSize roi);
/** YCbCr to RGB555, dithered. */
ZUM_API ZumStatus zumiYCbCrToRGB555Dither_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                    ZumiSize roi);
/** YCbCr to BGR555, dithered. */
ZUM_API ZumStatus zumiYCbCrToBGR555Dither_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                    ZumiSize roi);
/** YCbCr to RGB444, dithered. */
ZUM_API ZumStatus zumiYCbCrToRGB444Dither_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                    ZumiSize roi);
/** YCbCr to BGR444, dithered. */
ZUM_API ZumStatus zumiYCbCrToBGR444Dither_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                    ZumiSize roi);
/** YCbCr planes to RGB565, dithered. */
ZUM_API ZumStatus zumiYCbCrToRGB565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst,
                                                      int dstStep, ZumiSize roi);
/** YCbCr planes to BGR565, dithered. */
ZUM_API ZumStatus zumiYCbCrToBGR565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst,
                                                      int dstStep, ZumiSize roi);
/** YCbCr planes to RGB555, dithered. */
ZUM_API ZumStatus zumiYCbCrToRGB555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst,
                                                      int dstStep, ZumiSize roi);
/** YCbCr planes to BGR555, dithered. */
ZUM_API ZumStatus zumiYCbCrToBGR555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst,
                                                      int dstStep, ZumiSize roi);
/** YCbCr planes to RGB444, dithered. */
ZUM_API ZumStatus zumiYCbCrToRGB444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst,
                                                      int dstStep, ZumiSize roi);
/** YCbCr planes to BGR444, dithered. */
ZUM_API ZumStatus zumiYCbCrToBGR444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum16u* pDst,
                                                      int dstStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB565, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToRGB565Dither_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                         ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR565, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToBGR565Dither_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                         ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB555, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToRGB555Dither_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                         ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR555, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToBGR555Dither_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                         ZumiSize roi);
/** Packed YCbCr 4:2:2 to RGB444, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToRGB444Dither_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                         ZumiSize roi);
/** Packed YCbCr 4:2:2 to BGR444, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToBGR444Dither_8u16u_C2C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep,
                                                         ZumiSize roi);
/** Planar YCbCr 4:2:2 to RGB565, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToRGB565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to BGR565, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToBGR565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to RGB555, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToRGB555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to BGR555, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToBGR555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to RGB444, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToRGB444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to BGR444, dithered. */
ZUM_API ZumStatus zumiYCbCr422ToBGR444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB565, dithered. */
ZUM_API ZumStatus zumiYCbCr420ToRGB565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to BGR565, dithered. */
ZUM_API ZumStatus zumiYCbCr420ToBGR565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB555, dithered. */
ZUM_API ZumStatus zumiYCbCr420ToRGB555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to BGR555, dithered. */
ZUM_API ZumStatus zumiYCbCr420ToBGR555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to RGB444, dithered. */
ZUM_API ZumStatus zumiYCbCr420ToRGB444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to BGR444, dithered. */
ZUM_API ZumStatus zumiYCbCr420ToBGR444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                         int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB565, dithered. */
ZUM_API ZumStatus zumiYUV420ToRGB565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                       int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to BGR565, dithered. */
ZUM_API ZumStatus zumiYUV420ToBGR565Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                       int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB555, dithered. */
ZUM_API ZumStatus zumiYUV420ToRGB555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                       int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to BGR555, dithered. */
ZUM_API ZumStatus zumiYUV420ToBGR555Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                       int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to RGB444, dithered. */
ZUM_API ZumStatus zumiYUV420ToRGB444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                       int dstStep, ZumiSize roi);
/** Planar YUV 4:2:0 to BGR444, dithered. */
ZUM_API ZumStatus zumiYUV420ToBGR444Dither_8u16u_P3C3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum16u* pDst,
                                                       int dstStep, ZumiSize roi);

/** @} */

/** @defgroup cbycr RGB, BGR and CbYCr 4:2:2
 *  Full-range RGB or BGR to and from studio-range CbYCr of ITU-R BT.601, packed Cb Y0 Cr Y1 for a pair of pixels.
 *
 *  The scale is that of @ref ycbcr444.
 *
 *  From RGB: chroma is filtered along the row, each pair's from its first pixel at half its weight and the pixel on
 *  either side at a quarter. Before the first pixel of a row lies black, so that a row begins with less colour. All
 *  pairs are exact and rounded. Unless the width is a multiple of 4, one more pixel is converted without the filter:
 *  its Cb and its Y are written, two bytes. At an odd width this is the last pixel. If the width leaves 2 when divided
 *  by 4 it is the pixel behind the row: **the three bytes behind each source row are read and the two bytes behind each
 *  destination row are written**, and the caller must have room for them. Of rows without a gap between them each
 *  overwrites what the row before left behind itself; walking upward, it is the row above that loses its first pair's
 *  Cb and Y0.
 *
 *  From BGR: chroma is that of the mean of a pair. Block columns, the width rounded down to 8, truncate the terms of a
 *  sum; the pairs behind them are exact. A last odd pixel writes two bytes, its Cb and its Y, and is converted as if
 *  its bytes were R, G, B. Alpha is not read.
 *
 *  Back: block columns are the width rounded down to 8, terms truncated and sum rounded; sums are exact elsewhere, and
 *  rounded. A last odd pixel has one chroma byte before its Y, its Cb, and takes Cr from the pair before. At a width of
 *  1 there is none, and its one chroma byte serves as both.
 *
 *  Checks: null pointers, a size below 1 by 1; steps in zumiRGBToCbYCr422Gamma_8u_C3C2R alone (below 1: zumErrStep). An
 *  odd width gives no warning. One thread.
 *  @{ */

/** RGB to packed CbYCr 4:2:2, the chroma filtered. Reads and writes behind rows of some widths, see above. */
ZUM_API ZumStatus zumiRGBToCbYCr422_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** The same of samples x that went through a video transfer curve first: 1.099 x^0.45 - 0.099 from x = 0.018 on and
 *  4.5 x below, of full range 0 to 1. After the size both steps are checked: below 1 is zumErrStep. */
ZUM_API ZumStatus zumiRGBToCbYCr422Gamma_8u_C3C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep,
                                                  ZumiSize roi);
/** BGR with alpha, which is not read, to packed CbYCr 4:2:2. */
ZUM_API ZumStatus zumiBGRToCbYCr422_8u_AC4C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed CbYCr 4:2:2 to RGB. */
ZUM_API ZumStatus zumiCbYCr422ToRGB_8u_C2C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed CbYCr 4:2:2 to BGR with alpha, which is the same in all pixels. */
ZUM_API ZumStatus zumiCbYCr422ToBGR_8u_C2C4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                             Zum8u alpha);

/** @} */

/** @defgroup gray Gray
 *  The weighted sum of three interleaved channels, as one channel of the same depth. The weights are those of channels
 *  0, 1 and 2, whatever their colours: zumiRGBToGray takes 0.299, 0.587 and 0.114, which give the luma of ITU-R BT.601
 *  from RGB; zumiColorToGray takes the caller's three, of any sign and size, or these for a null pointer. The fourth
 *  channel of AC4 images is not read.
 *
 *  Bytes are summed in integers, with weights rounded to multiples of 1/4096 and taken modulo 16. Wider samples are
 *  summed in single precision, (c0 w0 + c1 w1) + c2 w2, and 16-bit results are truncated from that. 16s samples stand
 *  for their distance from -32768.
 *
 *  | samples | block columns           | in blocks                                     | behind them         |
 *  |---------|-------------------------|-----------------------------------------------|---------------------|
 *  | 8u C3   | width rounded down to 4 | terms truncated to sixteenths, then their sum | exact sum truncated |
 *  | 8u AC4  | width rounded down to 8 | terms truncated to sixteenths, then their sum | exact sum truncated |
 *  | 16u     | none                    |                                               | low 16 bits         |
 *  | 16s     | width rounded down to 4 | limited to the range                          | low 16 bits         |
 *  | 32f     | none                    |                                               | as it is            |
 *
 *  At 8u white is 254 in blocks and 255 behind them. By the caller's weights sums can leave the range: those in blocks
 *  are limited to 0..255, but are 0 from 2048 on, the others keep their low 8 bits. A sum beyond the 32-bit integers is
 *  0 at 16u; at 16s it is the largest sample in blocks and the smallest behind them.
 *
 *  Checks: null pointers (zumErrNullPtr), a size below 1 by 1 (zumErrSize). Steps are not checked; those of 16-bit and
 *  32f images lose the bits that are no whole sample. One thread.
 *  @{ */

/** RGB to gray, 8-bit. */
ZUM_API ZumStatus zumiRGBToGray_8u_C3C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, 8-bit, from four channels. */
ZUM_API ZumStatus zumiRGBToGray_8u_AC4C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, 16-bit. */
ZUM_API ZumStatus zumiRGBToGray_16u_C3C1R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, 16-bit, from four channels. */
ZUM_API ZumStatus zumiRGBToGray_16u_AC4C1R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, signed 16-bit. */
ZUM_API ZumStatus zumiRGBToGray_16s_C3C1R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, signed 16-bit, from four channels. */
ZUM_API ZumStatus zumiRGBToGray_16s_AC4C1R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, single precision. */
ZUM_API ZumStatus zumiRGBToGray_32f_C3C1R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** RGB to gray, single precision, from four channels. */
ZUM_API ZumStatus zumiRGBToGray_32f_AC4C1R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** Three channels to gray by the weights pWeights, 8-bit. */
ZUM_API ZumStatus zumiColorToGray_8u_C3C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, 8-bit, from four channels. */
ZUM_API ZumStatus zumiColorToGray_8u_AC4C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, 16-bit. */
ZUM_API ZumStatus zumiColorToGray_16u_C3C1R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, 16-bit, from four channels. */
ZUM_API ZumStatus zumiColorToGray_16u_AC4C1R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                             const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, signed 16-bit. */
ZUM_API ZumStatus zumiColorToGray_16s_C3C1R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, signed 16-bit, from four channels. */
ZUM_API ZumStatus zumiColorToGray_16s_AC4C1R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                             const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, single precision. */
ZUM_API ZumStatus zumiColorToGray_32f_C3C1R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* pWeights);
/** Three channels to gray by the weights pWeights, single precision, from four channels. */
ZUM_API ZumStatus zumiColorToGray_32f_AC4C1R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                             const Zum32f* pWeights);

/** @} */

/** @defgroup hsv HSV
 *  RGB to and from hue, saturation, value: the hexcone model, V being the largest channel and S its distance from the
 *  smallest in parts of V.
 *
 *  | channel | 8u                                 | 16u                                    |
 *  |---------|------------------------------------|----------------------------------------|
 *  | H       | 0..255, the circle being 255 units | 0..65535, the circle being 65535 units |
 *  | S       | 0..255                             | 0..65535                               |
 *  | V       | 0..255                             | 0..65535                               |
 *
 *  Hue rises from red over green, at a third of the circle, and blue, at two thirds; the largest hue is the same as the
 *  smallest. Gray has hue and saturation 0, and without saturation any hue gives gray.
 *
 *  V is exact; all else is computed in single precision. The divisions of the forward direction are the processor's
 *  reciprocal estimate, refined once at 16u, so that full saturation may come out as 254 at 8u.
 *
 *  Block columns are the width rounded down to 4. At 8u they truncate the results, in both directions, and the columns
 *  behind them round to the nearest by the thread's rounding mode; at 16u both round. On a tie of two channels for V,
 *  block columns test green last and the others blue last, which can move the hue by one unit.
 *
 *  The fourth channel of AC4 images is neither read nor written. Checks: null pointers (zumErrNullPtr), a size below 1
 *  by 1 (zumErrSize). Steps are not checked; 16u steps lose their low bit. From 4097 pixels on the rows are divided
 *  among threads_omp_of_n_zum threads.
 *  @{ */

/** RGB to HSV. */
ZUM_API ZumStatus zumiRGBToHSV_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to HSV, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToHSV_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to HSV, 16-bit. */
ZUM_API ZumStatus zumiRGBToHSV_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to HSV, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToHSV_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** HSV to RGB. */
ZUM_API ZumStatus zumiHSVToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** HSV to RGB, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiHSVToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** HSV to RGB, 16-bit. */
ZUM_API ZumStatus zumiHSVToRGB_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** HSV to RGB, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiHSVToRGB_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup ycc YCC
 *  RGB to and from PhotoYCC, the model of photographs on the Photo CD: luma, and two colours' differences from it. Luma
 *  is that of ITU-R BT.601, 0.299 R + 0.587 G + 0.114 B.
 *
 *  | channel | forward                     | 8u (from RGB)       | 16u offset | 32f offset |
 *  |---------|-----------------------------|---------------------|------------|------------|
 *  | Y       | luma / 1.402                | 0..181              | 0          | 0          |
 *  | C1      | 0.43686 (B - luma) + offset | 57..254, offset 156 | 40092      | 156/255    |
 *  | C2      | 0.53192 (R - luma) + offset | 41..232, offset 137 | 35209      | 137/255    |
 *
 *  Back, with u and v for C1 and C2 less their offsets and y for 1.3584 Y:
 *
 *  | channel | inverse                                 |
 *  |---------|-----------------------------------------|
 *  | R       | y + 1.8215 v                            |
 *  | G       | y - 0.194 (2.2179 u) - 0.509 (1.8215 v) |
 *  | B       | y + 2.2179 u                            |
 *
 *  Y has room for highlights: white comes back from 188, though forward it is 181, so that a round trip leaves 245 of
 *  it. 16s samples stand for their distance from -32768, 32f ones are parts of 1.
 *
 *  Bytes are converted in integers: block columns truncate terms at 16 bits, those behind them sums, but for green, at
 *  32 bits; they can differ by 1. Wider samples are converted in single precision; 16-bit results are truncated in
 *  block columns, and behind them have 0.49999 added first, except from YCC at 16s. Block columns are the width rounded
 *  down to 8 at 8u C3, to 4 at 8u AC4 and 16 bits; 32f has none. Integers and the RGB of 32f are limited to their
 *  range, the YCC of 32f is stored as it is.
 *
 *  The fourth channel of AC4 images is neither read nor written. Checks: null pointers (zumErrNullPtr), a size below 1
 *  by 1 (zumErrSize). Steps are not checked; those of 16-bit and 32f images lose the bits that are no whole sample.
 *  From 4097 pixels on the rows are divided among threads_omp_of_n_zum threads.
 *  @{ */

/** RGB to YCC. */
ZUM_API ZumStatus zumiRGBToYCC_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToYCC_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, 16-bit. */
ZUM_API ZumStatus zumiRGBToYCC_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToYCC_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, signed 16-bit. */
ZUM_API ZumStatus zumiRGBToYCC_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToYCC_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, single precision. */
ZUM_API ZumStatus zumiRGBToYCC_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** RGB to YCC, single precision, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToYCC_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB. */
ZUM_API ZumStatus zumiYCCToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiYCCToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, 16-bit. */
ZUM_API ZumStatus zumiYCCToRGB_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiYCCToRGB_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, signed 16-bit. */
ZUM_API ZumStatus zumiYCCToRGB_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiYCCToRGB_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, single precision. */
ZUM_API ZumStatus zumiYCCToRGB_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** YCC to RGB, single precision, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiYCCToRGB_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup xyz XYZ
 *  RGB to and from CIE 1931 XYZ, by the matrices of linear RGB with the primaries of ITU-R BT.709 and the white point
 *  D65. No transfer curve is applied: samples are taken as linear.
 *
 *  | to XYZ                                   | from XYZ                                  |
 *  |------------------------------------------|-------------------------------------------|
 *  | X = 0.412453 R + 0.35758 G + 0.180423 B  | R = 3.240479 X - 1.53715 Y - 0.498535 Z   |
 *  | Y = 0.212671 R + 0.71516 G + 0.072169 B  | G = -0.969256 X + 1.875991 Y + 0.041556 Z |
 *  | Z = 0.019334 R + 0.119193 G + 0.950227 B | B = 0.055648 X - 0.204043 Y + 1.057311 Z  |
 *
 *  XYZ is in the units of RGB: the Y of white is full scale, its X 0.95 of that, and its Z, 1.09 of it, is limited to
 *  full scale. White does not come back therefore: 231 is left of its blue at 8u. 16s samples stand for their distance
 *  from -32768. Results are limited to their range, except that at 32f X and Y are stored as they are.
 *
 *  At 8u the sums are exact and truncated, of factors at 32768 times (to XYZ) or 8192 times (from XYZ) in block columns
 *  and at 65536 times in those behind them: white is (242, 255, 255) in the ones and (242, 254, 255) in the others.
 *  Block columns are the width rounded down to 8, with alpha to 4. Wider samples are converted in single precision, the
 *  same way in all columns, 16-bit results truncated.
 *
 *  The fourth channel of AC4 images is neither read nor written. Checks: null pointers (zumErrNullPtr), a size below 1
 *  by 1 (zumErrSize). Steps are not checked; those of 16-bit and 32f images lose the bits that are no whole sample.
 *  From 4097 pixels on the rows are divided among threads_omp_of_n_zum threads.
 *  @{ */

/** RGB to XYZ. */
ZUM_API ZumStatus zumiRGBToXYZ_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToXYZ_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, 16-bit. */
ZUM_API ZumStatus zumiRGBToXYZ_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToXYZ_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, signed 16-bit. */
ZUM_API ZumStatus zumiRGBToXYZ_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToXYZ_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, single precision. */
ZUM_API ZumStatus zumiRGBToXYZ_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** RGB to XYZ, single precision, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToXYZ_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB. */
ZUM_API ZumStatus zumiXYZToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiXYZToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, 16-bit. */
ZUM_API ZumStatus zumiXYZToRGB_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiXYZToRGB_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, signed 16-bit. */
ZUM_API ZumStatus zumiXYZToRGB_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiXYZToRGB_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, single precision. */
ZUM_API ZumStatus zumiXYZToRGB_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** XYZ to RGB, single precision, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiXYZToRGB_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup hls HLS
 *  RGB to and from hue, lightness, saturation: the double hexcone model, L being the mean of the largest and the
 *  smallest channel, and S their distance in parts of the largest one that this lightness allows.
 *
 *  | samples | H, L and S                                                              |
 *  |---------|-------------------------------------------------------------------------|
 *  | 8u      | 0..255, the circle of hues being 255 units                              |
 *  | 16u     | 0..65535, the circle being 65535 units                                  |
 *  | 16s     | as 16u, from -32768 on: every sample stands for its distance from there |
 *  | 32f     | 0..1, the circle being 1; nothing is limited                            |
 *
 *  Hue rises from red over green, at a third of the circle, and blue, at two thirds. Gray has hue and saturation 0. All
 *  is computed in single precision, with hue in degrees in between.
 *
 *  To HLS the integer depths truncate all results. Their divisions are the processor's reciprocal estimate, refined
 *  once, but not refined in the block columns of 8u, where hue and saturation may therefore differ by one from the
 *  columns behind them. 32f divides; there a range of the channels of at most 2^-23 counts as gray.
 *
 *  From HLS hue is not wrapped around: the largest one is 360 degrees, which is red. In detail:
 *
 *  | samples | in block columns                                     | behind them                                 |
 *  |---------|------------------------------------------------------|---------------------------------------------|
 *  | 8u      | truncated                                            | the same                                    |
 *  | 16u     | truncated on a scale of 32767.5 and doubled, so even | the same, but gray is kept                  |
 *  | 16s     | truncated                                            | by divisions, 0.49999 added, then truncated |
 *  | 32f     | multiplied by reciprocals, gray is kept              | by divisions, gray is kept                  |
 *
 *  Block columns are the width rounded down to 8 at 8u C3, to 4 elsewhere. The fourth channel of AC4 images is neither
 *  read nor written. Checks: null pointers (zumErrNullPtr), a size below 1 by 1 (zumErrSize). Steps are not checked;
 *  those of 16-bit and 32f images lose the bits that are no whole sample. From 4097 pixels on the rows are divided
 *  among threads_omp_of_n_zum threads.
 *  @{ */

/** RGB to HLS. */
ZUM_API ZumStatus zumiRGBToHLS_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToHLS_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, 16-bit. */
ZUM_API ZumStatus zumiRGBToHLS_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToHLS_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, signed 16-bit. */
ZUM_API ZumStatus zumiRGBToHLS_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToHLS_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, single precision. */
ZUM_API ZumStatus zumiRGBToHLS_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** RGB to HLS, single precision, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToHLS_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB. */
ZUM_API ZumStatus zumiHLSToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiHLSToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, 16-bit. */
ZUM_API ZumStatus zumiHLSToRGB_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiHLSToRGB_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, signed 16-bit. */
ZUM_API ZumStatus zumiHLSToRGB_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiHLSToRGB_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, single precision. */
ZUM_API ZumStatus zumiHLSToRGB_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** HLS to RGB, single precision, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiHLSToRGB_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup hlsbgr HLS and BGR
 *  BGR to and from HLS in bytes, interleaved and planar, with and without alpha. Scales and arithmetic are those of
 *  @ref hls at 8u: H, L and S are 0..255, and the circle of hues is 255 units. Block columns are the width rounded down
 *  to 4 in all layouts; from HLS all columns are alike. The planes of an image are in the order of its name, B, G, R or
 *  H, L, S, and share one step.
 *
 *  | layout       | alpha                                                                                |
 *  |--------------|--------------------------------------------------------------------------------------|
 *  | AC4          | stays as it is in the destination                                                    |
 *  | AP4          | copied from plane to plane                                                           |
 *  | AP4C4, AC4P4 | copied from the fourth plane to the fourth channel, or from the channel to the plane |
 *
 *  Checks: null pointers and null planes (zumErrNullPtr), then steps below 1 (zumErrStep), then a size below 1 by 1
 *  (zumErrSize); with AC4 the size comes before the steps. The rows are divided among threads_omp_of_n_zum threads,
 *  however few they are.
 *  @{ */

/** BGR to HLS, alpha left as it is in the destination. Here the size is checked before the steps. */
ZUM_API ZumStatus zumiBGRToHLS_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** BGR to HLS, planar, alpha copied. */
ZUM_API ZumStatus zumiBGRToHLS_8u_AP4R(const Zum8u* const pSrc[4], int srcStep, Zum8u* const pDst[4], int dstStep,
                                       ZumiSize roi);
/** BGR to HLS, planar to interleaved, alpha copied. */
ZUM_API ZumStatus zumiBGRToHLS_8u_AP4C4R(const Zum8u* const pSrc[4], int srcStep, Zum8u* pDst, int dstStep,
                                         ZumiSize roi);
/** BGR to HLS, interleaved to planar, alpha copied. */
ZUM_API ZumStatus zumiBGRToHLS_8u_AC4P4R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[4], int dstStep,
                                         ZumiSize roi);
/** BGR to HLS, planar. */
ZUM_API ZumStatus zumiBGRToHLS_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                      ZumiSize roi);
/** BGR to HLS, planar to interleaved. */
ZUM_API ZumStatus zumiBGRToHLS_8u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                        ZumiSize roi);
/** BGR to HLS, interleaved to planar. */
ZUM_API ZumStatus zumiBGRToHLS_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], int dstStep,
                                        ZumiSize roi);
/** HLS to BGR, planar, alpha copied. */
ZUM_API ZumStatus zumiHLSToBGR_8u_AP4R(const Zum8u* const pSrc[4], int srcStep, Zum8u* const pDst[4], int dstStep,
                                       ZumiSize roi);
/** HLS to BGR, planar to interleaved, alpha copied. */
ZUM_API ZumStatus zumiHLSToBGR_8u_AP4C4R(const Zum8u* const pSrc[4], int srcStep, Zum8u* pDst, int dstStep,
                                         ZumiSize roi);
/** HLS to BGR, interleaved to planar, alpha copied. */
ZUM_API ZumStatus zumiHLSToBGR_8u_AC4P4R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[4], int dstStep,
                                         ZumiSize roi);
/** HLS to BGR, planar. */
ZUM_API ZumStatus zumiHLSToBGR_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                      ZumiSize roi);
/** HLS to BGR, planar to interleaved. */
ZUM_API ZumStatus zumiHLSToBGR_8u_P3C3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                        ZumiSize roi);
/** HLS to BGR, interleaved to planar. */
ZUM_API ZumStatus zumiHLSToBGR_8u_C3P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], int dstStep,
                                        ZumiSize roi);

/** @} */

/** @defgroup luv LUV
 *  RGB to and from CIE 1976 L*u*v*, relative to D65. RGB is taken as linear, with the primaries of ITU-R BT.709, by the
 *  matrices of @ref xyz. Computed in single precision.
 *
 *  | channel       | 8u                   | 16u                    | 32f  |
 *  |---------------|----------------------|------------------------|------|
 *  | L*, 0..100    | L* 255 / 100         | L* 65535 / 100         | L*   |
 *  | u*, -134..220 | (u* + 134) 255 / 354 | (u* + 134) 65535 / 354 | u*   |
 *  | v*, -140..122 | (v* + 140) 255 / 262 | (v* + 140) 65535 / 262 | v*   |
 *  | R, G, B       | 0..255               | 0..65535               | 0..1 |
 *
 *  A 16s sample is a 16u one less 32768. Black is (0, 97, 136) at 8u.
 *
 *  Forward, at 8u L* is looked up by the rounded luminance, and all else divided out and rounded, in all columns. At
 *  the other depths the cube root is a series about one of 128 points, and the division the processor's reciprocal
 *  estimate, refined once. At 16u and 16s block columns, the width rounded down to 4, truncate L* and the columns
 *  behind them round it; u* and v* are rounded everywhere, and the code of v* is half a unit high. At 32f the two
 *  differ only where Z is 0.
 *
 *  Inverse, block columns are the width rounded down to 4, or to 8 with three channels at 8u. They truncate, and
 *  multiply by the reciprocal estimate, refined once at 16u and 16s. The columns behind them round, divide and take a
 *  slightly different white. At 32f all columns divide, and results are limited to 0..1.
 *
 *  Two results at 32f are unlike their surroundings. Forward, a luminance of exactly 1 gives L* = 26.426399; above 1
 *  L*, u* and v* have no meaning. Inverse, the first pixel of a row whose L* is below 0.00009 becomes 0 and ends the
 *  row: the columns behind it are left as they are.
 *
 *  The fourth channel of AC4 images is neither read nor written. Checks: null pointers (zumErrNullPtr), a size below 1
 *  by 1 (zumErrSize). Steps are not checked; 16u and 16s steps lose their low bit, and those of the inverse 32f
 *  functions their low two. From 4097 pixels on the rows are divided among threads_omp_of_n_zum threads.
 *  @{ */

/** RGB to LUV. */
ZUM_API ZumStatus zumiRGBToLUV_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToLUV_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, 16-bit. */
ZUM_API ZumStatus zumiRGBToLUV_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToLUV_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, signed 16-bit. */
ZUM_API ZumStatus zumiRGBToLUV_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToLUV_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, floating point. */
ZUM_API ZumStatus zumiRGBToLUV_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** RGB to LUV, floating point, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiRGBToLUV_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB. */
ZUM_API ZumStatus zumiLUVToRGB_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiLUVToRGB_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, 16-bit. */
ZUM_API ZumStatus zumiLUVToRGB_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiLUVToRGB_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, signed 16-bit. */
ZUM_API ZumStatus zumiLUVToRGB_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, signed 16-bit, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiLUVToRGB_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, floating point. */
ZUM_API ZumStatus zumiLUVToRGB_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);
/** LUV to RGB, floating point, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiLUVToRGB_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup lab Lab
 *  BGR in bytes to and from CIE 1976 L*a*b*, relative to D65. BGR is taken as linear, with the primaries of ITU-R
 *  BT.709, by the matrices of @ref xyz. Lab pixels are three interleaved channels, of 8 or of 16 bits.
 *
 *  | channel    | 8 bits   | 16 bits        |
 *  |------------|----------|----------------|
 *  | L*, 0..100 | L* 2.55  | L* 655.35      |
 *  | a*         | a* + 128 | (a* + 128) 255 |
 *  | b*         | b* + 128 | (b* + 128) 255 |
 *
 *  Computed in single precision, rounded to the nearest by the thread's rounding mode and limited to the range; all
 *  columns alike. Forward, the cube root is a series about one of 128 points, and linear near black. The inverse cubes
 *  at all lightnesses, so that black does not come back as black but as (1, 1, 1).
 *
 *  Checks: null pointers (zumErrNullPtr), a size below 1 by 1 (zumErrSize). Steps are not checked, and used as they
 *  are, also odd ones of 16-bit images. The rows are divided among threads_omp_of_n_zum threads at any size.
 *  @{ */

/** BGR to Lab. */
ZUM_API ZumStatus zumiBGRToLab_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Lab to BGR. */
ZUM_API ZumStatus zumiLabToBGR_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** BGR to Lab coded in 16 bits. */
ZUM_API ZumStatus zumiBGRToLab_8u16u_C3R(const Zum8u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** Lab coded in 16 bits to BGR. */
ZUM_API ZumStatus zumiLabToBGR_16u8u_C3R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup reduce Bit reduction
 *  Fewer levels in every channel, and in the same pass fewer bits. The levels are evenly spaced over the range of the
 *  source, which is 0 to 1 for floats; what is stored for one is its value in the depth of the destination, truncated.
 *  From 16-bit sources to bytes that is the high byte of the 16-bit level, except with zumDitherNone. C4 images have
 *  four channels of the same kind; AC4 leaves the fourth sample of the destination as it is.
 *
 *  levels is 2 to 256, and to 65536 where both sides have 16-bit integers. noise, 0 to 100, is a percentage of a step
 *  by which random numbers move every decision; they depend on the place of the pixel alone and are the same in every
 *  call.
 *
 *  dither is
 *
 *  - zumDitherNone: the nearest level, the lower one halfway between two. noise is ignored.
 *  - zumDitherBayer, ordered dither: the level below the sample, or the one above if what remains is more than the
 *    threshold of the pixel. noise is added to the threshold. The channels of a pixel share it.
 *  - zumDitherFS, zumDitherJJN, zumDitherStucki, error diffusion: the level nearest to the sample plus the errors that
 *    its neighbours left. noise moves the border between two levels by up to its percentage of a step to either side.
 *  - anything else: nothing is done, and zumOk returned.
 *
 *  Thresholds are fifteenths of a step, by Bayer's pattern, which repeats every four columns and rows. The errors that
 *  reach a pixel * are those left of it and in the one or two rows above, with the weights of Floyd and Steinberg, of
 *  Jarvis, Judice and Ninke, and of Stucki. Rows go from left to right, all of them. A sample that reaches the top or
 *  falls below the bottom leaves no error.
 *
 *      Bayer            Floyd-Steinberg, / 16   Jarvis, Judice, Ninke, / 48   Stucki, / 42
 *       0  8  2 10                               1  3  5  3  1                 1  2  4  2  1
 *      12  4 14  6         1  5  3               3  5  7  5  3                 2  4  8  4  2
 *       3 11  1  9         7  *                  5  7  *                       4  8  *
 *      15  7 13  5
 *
 *  All is computed in single precision. Some truncations have 0.000009 added, so that a value that is a level but for a
 *  rounding counts as it: with zumDitherBayer and noise those of 32f sources, but for C4; with zumDitherFS those of 32f
 *  and 16s8u.
 *
 *  Out of range are samples of floats outside 0..1, and levels that rounding or noise lifts past the top. They are
 *  limited to the range of the destination or keep their low bits. With zumDitherNone only the 32f16u functions other
 *  than AC4 keep low bits. With zumDitherBayer and no noise the tail of C1 rows does; with noise, 32f sources in all
 *  but C4. Diffusion keeps low bits.
 *
 *  The tail is the last width mod 4 pixels of a row. With zumDitherBayer tails differ in more: without noise 16u8u and
 *  16s8u in C1 exchange the thresholds of their second and third pixel; with noise 8u in AC4 and C4 takes the
 *  fifteenths themselves for thresholds, without a step or noise, and C4 of all other depths does so in the first
 *  channel and has threshold 0 in the other three.
 *
 *  Checks: null pointers (zumErrNullPtr), a size below 1 by 1 (zumErrSize), noise (zumErrNoiseValue), levels
 *  (zumErrDitherLevels). Steps are not checked; they lose the bits below a sample of their side, except with
 *  zumDitherNone, and with zumDitherBayer in C4. zumErrMemAlloc if there is no memory for the noise or the errors;
 *  nothing has been written then.
 *
 *  Threads: zumDitherNone takes one. With zumDitherBayer rows are divided among threads_omp_of_n_zum threads. Diffusion
 *  divides channels, into as many sections as there are threads, at most one a channel, the first ones with one channel
 *  more if it does not come out even. Within a section the errors at the bottom of a channel go on to the top of the
 *  next, so that the result of images with more than one channel depends on the number of threads.
 *  @{ */

/** 8-bit, one channel. */
ZUM_API ZumStatus zumiReduceBits_8u_C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                        int noise, ZumDitherType dither, int levels);
/** 8-bit, three channels. */
ZUM_API ZumStatus zumiReduceBits_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                        int noise, ZumDitherType dither, int levels);
/** 8-bit, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 8-bit, four channels. */
ZUM_API ZumStatus zumiReduceBits_8u_C4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                        int noise, ZumDitherType dither, int levels);
/** 16-bit, one channel. */
ZUM_API ZumStatus zumiReduceBits_16u_C1R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 16-bit, three channels. */
ZUM_API ZumStatus zumiReduceBits_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 16-bit, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                          int noise, ZumDitherType dither, int levels);
/** 16-bit, four channels. */
ZUM_API ZumStatus zumiReduceBits_16u_C4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 16-bit signed, one channel. */
ZUM_API ZumStatus zumiReduceBits_16s_C1R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 16-bit signed, three channels. */
ZUM_API ZumStatus zumiReduceBits_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 16-bit signed, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                          int noise, ZumDitherType dither, int levels);
/** 16-bit signed, four channels. */
ZUM_API ZumStatus zumiReduceBits_16s_C4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                         int noise, ZumDitherType dither, int levels);
/** 16-bit to 8-bit, one channel. */
ZUM_API ZumStatus zumiReduceBits_16u8u_C1R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** 16-bit to 8-bit, three channels. */
ZUM_API ZumStatus zumiReduceBits_16u8u_C3R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** 16-bit to 8-bit, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_16u8u_AC4R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** 16-bit to 8-bit, four channels. */
ZUM_API ZumStatus zumiReduceBits_16u8u_C4R(const Zum16u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** 16-bit signed to 8-bit, one channel. */
ZUM_API ZumStatus zumiReduceBits_16s8u_C1R(const Zum16s* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** 16-bit signed to 8-bit, three channels. */
ZUM_API ZumStatus zumiReduceBits_16s8u_C3R(const Zum16s* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** 16-bit signed to 8-bit, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_16s8u_AC4R(const Zum16s* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** 16-bit signed to 8-bit, four channels. */
ZUM_API ZumStatus zumiReduceBits_16s8u_C4R(const Zum16s* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** Single precision to 8-bit, one channel. */
ZUM_API ZumStatus zumiReduceBits_32f8u_C1R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** Single precision to 8-bit, three channels. */
ZUM_API ZumStatus zumiReduceBits_32f8u_C3R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** Single precision to 8-bit, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_32f8u_AC4R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** Single precision to 8-bit, four channels. */
ZUM_API ZumStatus zumiReduceBits_32f8u_C4R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit, one channel. */
ZUM_API ZumStatus zumiReduceBits_32f16u_C1R(const Zum32f* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit, three channels. */
ZUM_API ZumStatus zumiReduceBits_32f16u_C3R(const Zum32f* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_32f16u_AC4R(const Zum32f* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                             int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit, four channels. */
ZUM_API ZumStatus zumiReduceBits_32f16u_C4R(const Zum32f* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit signed, one channel. */
ZUM_API ZumStatus zumiReduceBits_32f16s_C1R(const Zum32f* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit signed, three channels. */
ZUM_API ZumStatus zumiReduceBits_32f16s_C3R(const Zum32f* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit signed, three channels, alpha left as it is in the destination. */
ZUM_API ZumStatus zumiReduceBits_32f16s_AC4R(const Zum32f* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                             int noise, ZumDitherType dither, int levels);
/** Single precision to 16-bit signed, four channels. */
ZUM_API ZumStatus zumiReduceBits_32f16s_C4R(const Zum32f* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                            int noise, ZumDitherType dither, int levels);

/** @} */

/** @defgroup cfa Demosaic
 *  A mosaic of one sample a pixel, behind a two by two colour filter array of the Bayer kind, to interleaved RGB of the
 *  same depth. Every pixel keeps the sample it has and gets the other two colours from its neighbours:
 *
 *  - Red or blue at a green pixel: the mean of the two neighbours of that colour.
 *  - Blue at a red pixel, red at a blue one: the mean of the four diagonal neighbours.
 *  - Green, two pixels and more from the frame: the mean of the two neighbours above and below, or left and right,
 *    along the direction in which the pixel's own colour, two pixels to either side, changes less; of all four if it
 *    changes as much in both.
 *  - Green in the two-pixel ring along the frame: the mean of all four.
 *
 *  Means are rounded to the nearest, halves up. A neighbour beyond the frame is the one on the other side of the pixel.
 *
 *  Unlike elsewhere the source is a whole image, pSrc its first sample and srcSize its size; srcRoi is the part to
 *  convert, and pDst is the pixel that receives the first pixel of that part. grid is the phase of the image, not of
 *  the part. Samples up to two pixels around the part are read. A part that reaches past the right or the lower frame
 *  is cropped there; of one that starts outside the image nothing is converted. If srcRoi is empty but starts in column
 *  or row 0 or 1, that column or row may be written.
 *
 *  Checks: null pointers (zumErrNullPtr), srcSize below 2 by 2 (zumErrSize), grid (zumErrBadArg). Steps and srcRoi are
 *  not checked; the 16u form loses the low bit of its steps. Source and destination must not overlap.
 *
 *  Threads: an interior of at least 192 by 192 pixels is cut into threads_omp_of_n_zum bands of rows, one a thread. If
 *  the OpenMP runtime grants fewer threads than that (because the caller is inside a parallel region already, for
 *  example), only the bands of the threads that run are converted: set threads_omp_of_n_zum to 1 there.
 *  @{ */

/** Demosaic, 8-bit. */
ZUM_API ZumStatus zumiCFAToRGB_8u_C1C3R(const Zum8u* pSrc, ZumiRect srcRoi, ZumiSize srcSize, int srcStep, Zum8u* pDst,
                                        int dstStep, ZumiBayerGrid grid);
/** Demosaic, 16-bit. */
ZUM_API ZumStatus zumiCFAToRGB_16u_C1C3R(const Zum16u* pSrc, ZumiRect srcRoi, ZumiSize srcSize, int srcStep,
                                         Zum16u* pDst, int dstStep, ZumiBayerGrid grid);

/** @} */

/** @defgroup chromafilter Chroma of YCbCr 4:2:0 filtered to 4:2:2
 *  Planar or semi-planar YCbCr 4:2:0 to planar 4:2:2, 8-bit, with chroma rows interpolated where @ref ycbcrlayouts
 *  repeats them.
 *
 *  Luma is copied. Row 2 r of chroma is row r of the source; the row behind it is halfway to the next by a vertical
 *  filter, (9 (b + c) - (a + d) + 8) >> 4 limited to 0..255, of the rows a, b, c, d that are r - 1 to r + 2 of the
 *  source. Beyond the first and the last row these are repeated. All columns are alike. Source chroma has half the
 *  width and half the height, the destination's half the width and all rows.
 *
 *  The width is rounded down to even and the height to a multiple of 8; what is beyond is not written, and there is no
 *  warning.
 *
 *  Checks: null pointers, those inside plane arrays included; then a size below 2 by 8. Steps are not checked. One
 *  thread.
 *  @{ */

/** Planar YCbCr 4:2:0 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr422_Filter_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3],
                                                       Zum8u* const pDst[3], const int dstStep[3], ZumiSize roi);
/** Planar YCrCb 4:2:0 to planar YCbCr 4:2:2: planes 1 and 2 change places. */
ZUM_API ZumStatus zumiYCrCb420ToYCbCr422_Filter_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3],
                                                       Zum8u* const pDst[3], const int dstStep[3], ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                         int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                         ZumiSize roi);

/** @} */

/** @defgroup deinterlace Deinterlacing
 *  Semi-planar 4:2:0 (NV12) to packed 4:2:2 (Y0 Cb Y1 Cr) or to planes, with the comb of interlaced pictures smoothed
 *  away.
 *
 *  Luma becomes (a + 2 c + b) / 4 of the row above, the row itself and the row below, and (3 c + b) / 4 in the first
 *  and the last row of the picture, b being its one neighbour. Row r of chroma becomes the mean of rows r and r + 1,
 *  the last one that of the last two; the one row of a picture of two rows stays as it is. Packed output repeats chroma
 *  for both rows of pixels.
 *
 *  Bands. A picture may be sent from the top down in bands of rows; layout tells which one a call brings, as one of the
 *  values below, and any value with the bits of all three means the whole picture. For other values nothing is done. As
 *  the filter needs a row below, a band's last two rows of luma and last row of chroma are left to the next call: this
 *  reads luma from row -3, chroma from row -1, and writes from luma row -2 (chroma row -1) of its pointers, which must
 *  lie inside the picture. A top band of height 2 writes its two rows if the output is packed (it reads the rows below
 *  the band for that), the first row of luma alone if it is planar.
 *
 *  Rounding. Width and height are rounded down to even; block columns are the width rounded down to a multiple of the
 *  block. In them the means that the filter is made of, of (a, c) and (c, b) and then of these, and those of chroma,
 *  round halves up; elsewhere they round down as a whole.
 *
 *  | output | rows                                 | block | particular to them                                     |
 *  |--------|--------------------------------------|-------|--------------------------------------------------------|
 *  | packed | first two and last two, of bands     | 8     |                                                        |
 *  |        | the others of bands                  | 32    |                                                        |
 *  |        | first two and last two, of a picture | none  | luma is one more, up to 255                            |
 *  |        | the others of a picture              | 32    | luma is one more outside the blocks, up to 255         |
 *  | planar | those of bands                       | 16    | top band: the means are of (a, b), then of that and c  |
 *  |        | first and last, of a picture         | none  | if these are the only two, luma is one more, up to 255 |
 *  |        | the others of a picture              | 16    |                                                        |
 *
 *  A planar top band rounds as the other bands do if the width is a multiple of 64, the height rounded down to even one
 *  of 16, all pointers and srcYStep multiples of 16, and the other steps multiples of 32: the one place where alignment
 *  shows in a result.
 *
 *  Checks: null pointers and the plane array, the size, the plane pointers. The smallest size is 2 by 2; with planar
 *  output a width or height of 1 is found only behind the plane pointers. Steps are not checked. One thread.
 *  @{ */

/** The values of layout. */
enum {
  zumTopBand = 1,      /**< the first rows of the picture */
  zumMiddleBand = 4,   /**< rows between two other bands */
  zumBottomBand = 16,  /**< the last rows of the picture */
  zumWholePicture = 21 /**< all of it */
};

/** Deinterlaces semi-planar YCbCr 4:2:0 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                         int srcCbCrStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                                         int layout);
/** Deinterlaces semi-planar YCbCr 4:2:0 to planes. These come out in the order Y, Cb, Cr, in spite of the name. */
ZUM_API ZumStatus zumiYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                         int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                         ZumiSize roi, int layout);

/** @} */

/** @defgroup chromablocks YCbCr 4:2:0 to and from 1620 and 4:1:1
 *  Planar YCbCr, 8-bit, between 4:2:0 and two coarser samplings: 1620, a chroma pair for four by four pixels, and
 *  4:1:1.
 *
 *  Luma is copied. The planes are Y, Cb, Cr, each with its own step. Chroma planes of 4:2:0 have half the width and
 *  half the height, of 1620 a quarter of both, of 4:1:1 a quarter of the width. In terms of chroma planes:
 *
 *  - 420 to 1620: odd rows and columns are dropped.
 *  - 420 to 411: odd columns are dropped; behind each row comes its mean with the next, behind the last one itself.
 *  - 411 to 420: odd rows are dropped; behind each column comes its mean with the next, behind the last one itself.
 *  - 1620 to 420: columns are doubled as from 411. Behind each row comes the mean of it and the next (in the new
 *    columns the mean of the two means), behind the last one this row with each column repeated.
 *
 *  Means round halves up in block columns and down elsewhere. Block columns are, to 411, the width of the destination
 *  plane rounded down to 32; to 420, those that come of the first n columns of the source plane, n being its width less
 *  1, rounded down to 16.
 *
 *  Where chroma is to be moved and not filtered, @ref ycbcrlayouts has 4:2:0 to 4:1:1 and back without loss.
 *
 *  Checks: null pointers, those inside plane arrays included; then the size. Width and height must be multiples of 4,
 *  and at least 4; from 420 to 411 the height may be any even one from 2 on. Another size is refused with zumErrSize,
 *  not rounded down. Steps are not checked. One thread.
 *  @{ */

/** Planar YCbCr 4:2:0 to planar YCbCr of a pair for four by four pixels. */
ZUM_API ZumStatus zumiYCbCr420To1620_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                            const int dstStep[3], ZumiSize roi);
/** Planar YCbCr of a pair for four by four pixels to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr1620To420_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                            const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:2:0 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr420To411_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                           const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:1:1 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr411To420_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                           const int dstStep[3], ZumiSize roi);

/** @} */

/** @defgroup ycbcrlayouts YCbCr layouts
 *  8-bit YCbCr from one chroma sampling and layout to another, without a new value: luma is copied, and chroma is
 *  copied, dropped, repeated or placed elsewhere.
 *
 *  Layouts: C2 is packed 4:2:2, Y0 Cb Y1 Cr (YCbCr422), Y0 Cr Y1 Cb (YCrCb422) or Cb Y0 Cr Y1 (CbYCr422). P2 is a plane
 *  of Y and a plane of pairs, Cb Cr. P3 is three planes, Y, Cb, Cr or, under the name YCrCb, Y, Cr, Cb; each has its
 *  own step. NV12 is YCbCr420 in P2, YV12 is YCrCb420 in P3, I420 is YCbCr420 in P3, YUY2 is YCbCr422 in C2, UYVY is
 *  CbYCr422 in C2. Values are of any range: none is looked at.
 *
 *  Chroma planes of 4:2:2 have half the width of luma, of 4:2:0 half the width and half the height, of 4:1:1 a quarter
 *  of the width. What becomes of chroma, in row r and column c of its plane:
 *
 *  | from           | what happens                | where the samples go                                         |
 *  |----------------|-----------------------------|--------------------------------------------------------------|
 *  | 4:2:2 to 4:2:0 | odd rows are dropped        | dst[r][c] = src[2 r][c]                                      |
 *  | 4:2:0 to 4:2:2 | rows are repeated           | dst[2 r][c] = dst[2 r + 1][c] = src[r][c]                    |
 *  | 4:2:2 to 4:1:1 | odd columns are dropped     | dst[r][c] = src[r][2 c]                                      |
 *  | 4:1:1 to 4:2:2 | columns are repeated        | dst[r][2 c] = dst[r][2 c + 1] = src[r][c]                    |
 *  | 4:2:0 to 4:1:1 | odd columns become odd rows | dst[2 r][c] = src[r][2 c], dst[2 r + 1][c] = src[r][2 c + 1] |
 *  | 4:1:1 to 4:2:0 | odd rows become odd columns | dst[r][2 c] = src[2 r][c], dst[r][2 c + 1] = src[2 r + 1][c] |
 *
 *  Columns and rows beyond whole blocks, of as many columns and rows as the smallest width and height, are neither read
 *  nor written; there is no warning.
 *
 *  Checks: null pointers, those inside plane arrays included, then the size. The smallest width is 4 with 4:1:1 on
 *  either side, else 2. The smallest height is 2 with 4:2:0 on either side, and 1 in zumiYCbCr422_8u_C2P3R,
 *  zumiYCrCb422ToYCbCr422_8u_C2P3R, zumiYCbCr422_8u_P3C2R and zumiCbYCr422ToYCbCr422_8u_C2R; the other functions accept
 *  any height and do nothing if it is 0 or less. Steps are not checked. One thread.
 *  @{ */

/** Packed CbYCr 4:2:2 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiCbYCr422ToYCbCr422_8u_C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to packed CbYCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr422ToCbYCr422_8u_C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to packed YCrCb 4:2:2. */
ZUM_API ZumStatus zumiYCbCr422ToYCrCb422_8u_C2R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Packed CbYCr 4:2:2 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiCbYCr422ToYCbCr411_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed CbYCr 4:2:2 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiCbYCr422ToYCbCr420_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed CbYCr 4:2:2 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiCbYCr422ToYCbCr422_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed CbYCr 4:2:2 to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiCbYCr422ToYCrCb420_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed YCbCr 4:2:2 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr411_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed YCbCr 4:2:2 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr420_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed YCbCr 4:2:2 to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiYCbCr422ToYCrCb420_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed YCbCr 4:2:2 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr422_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3], const int dstStep[3],
                                        ZumiSize roi);
/** Packed YCrCb 4:2:2 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCrCb422ToYCbCr411_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed YCrCb 4:2:2 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCrCb422ToYCbCr420_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed YCrCb 4:2:2 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCrCb422ToYCbCr422_8u_C2P3R(const Zum8u* pSrc, int srcStep, Zum8u* const pDst[3],
                                                  const int dstStep[3], ZumiSize roi);
/** Packed CbYCr 4:2:2 to semi-planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiCbYCr422ToYCbCr420_8u_C2P2R(const Zum8u* pSrc, int srcStep, Zum8u* pDstY, int dstYStep,
                                                  Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to semi-planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr411_8u_C2P2R(const Zum8u* pSrc, int srcStep, Zum8u* pDstY, int dstYStep,
                                                  Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Packed YCbCr 4:2:2 to semi-planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr420_8u_C2P2R(const Zum8u* pSrc, int srcStep, Zum8u* pDstY, int dstYStep,
                                                  Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCbCr 4:1:1 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr422_8u_P3C2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst,
                                                  int dstStep, ZumiSize roi);
/** Planar YCbCr 4:1:1 to packed YCrCb 4:2:2. */
ZUM_API ZumStatus zumiYCbCr411ToYCrCb422_8u_P3C2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst,
                                                  int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to packed YCrCb 4:2:2. */
ZUM_API ZumStatus zumiYCbCr422ToYCrCb422_8u_P3C2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst,
                                                  int dstStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr422_8u_P3C2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst, int dstStep,
                                        ZumiSize roi);
/** Planar YCrCb 4:2:0 to packed CbYCr 4:2:2. */
ZUM_API ZumStatus zumiYCrCb420ToCbYCr422_8u_P3C2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst,
                                                  int dstStep, ZumiSize roi);
/** Planar YCrCb 4:2:0 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCrCb420ToYCbCr422_8u_P3C2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDst,
                                                  int dstStep, ZumiSize roi);
/** Semi-planar YCbCr 4:1:1 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr422_8u_P2C2R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to packed CbYCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToCbYCr422_8u_P2C2R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to packed YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr422_8u_P2C2R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Planar YCbCr 4:1:1 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr420_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:1:1 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr422_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:1:1 to planar YCrCb 4:2:2. */
ZUM_API ZumStatus zumiYCbCr411ToYCrCb422_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:2:0 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr422_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:2:2 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr411_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:2:2 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr420_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCrCb 4:2:0 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCrCb420ToYCbCr422_8u_P3R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* const pDst[3],
                                                const int dstStep[3], ZumiSize roi);
/** Planar YCbCr 4:1:1 to semi-planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr420_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY,
                                                  int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCbCr 4:1:1 to semi-planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr411_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY, int dstYStep,
                                        Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to semi-planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr411_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY,
                                                  int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCbCr 4:2:0 to semi-planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr420_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY, int dstYStep,
                                        Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to semi-planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr411_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY,
                                                  int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCbCr 4:2:2 to semi-planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr422ToYCbCr420_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY,
                                                  int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCrCb 4:2:0 to semi-planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCrCb420ToYCbCr411_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY,
                                                  int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Planar YCrCb 4:2:0 to semi-planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCrCb420ToYCbCr420_8u_P3P2R(const Zum8u* const pSrc[3], const int srcStep[3], Zum8u* pDstY,
                                                  int dstYStep, Zum8u* pDstCbCr, int dstCbCrStep, ZumiSize roi);
/** Semi-planar YCbCr 4:1:1 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr420_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                  ZumiSize roi);
/** Semi-planar YCbCr 4:1:1 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr411ToYCbCr422_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                  ZumiSize roi);
/** Semi-planar YCbCr 4:1:1 to planar YCrCb 4:2:0. */
ZUM_API ZumStatus zumiYCbCr411ToYCrCb420_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                  ZumiSize roi);
/** Semi-planar YCbCr 4:1:1 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr411_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr, int srcCbCrStep,
                                        Zum8u* const pDst[3], const int dstStep[3], ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to planar YCbCr 4:1:1. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr411_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                  ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to planar YCbCr 4:2:2. */
ZUM_API ZumStatus zumiYCbCr420ToYCbCr422_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                  ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to planar YCrCb 4:2:0. The planes come out in the order Y, Cb, Cr, in spite of the name. */
ZUM_API ZumStatus zumiYCbCr420ToYCrCb420_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr,
                                                  int srcCbCrStep, Zum8u* const pDst[3], const int dstStep[3],
                                                  ZumiSize roi);
/** Semi-planar YCbCr 4:2:0 to planar YCbCr 4:2:0. */
ZUM_API ZumStatus zumiYCbCr420_8u_P2P3R(const Zum8u* pSrcY, int srcYStep, const Zum8u* pSrcCbCr, int srcCbCrStep,
                                        Zum8u* const pDst[3], const int dstStep[3], ZumiSize roi);

/** @} */

/** @defgroup gamma Gamma
 *  The transfer curve of ITU-R BT.709 on every colour sample: zumiGammaFwd from linear light to gamma-corrected values,
 *  zumiGammaInv back. On a scale of 0..1, with the powers of the C library's pow in double precision, the curve is
 *
 *  | direction | near black                  | from there on                    |
 *  |-----------|-----------------------------|----------------------------------|
 *  | forward   | 4.5 x, for x below 0.018    | 1.099 x^0.45 - 0.099             |
 *  | inverse   | x / 4.5, for x below 0.0812 | ((x + 0.099) / 1.099)^(1 / 0.45) |
 *
 *  Integer samples are parts of 255 or of 65535, rounded to the nearest; a tie at 8 bits goes to the even one. At 16
 *  bits the value is rounded to single precision on its way, half a unit above its place: what then is an odd integer
 *  becomes the even one below.
 *
 *  Single-precision samples are parts of the range vMin..vMax. Nothing is clamped: below vMin the curve goes on as a
 *  straight line, above vMax as the power. The rounding mode of the thread is followed.
 *
 *  The fourth channel of AC4 images is left as it is in the destination. IR and IP3R functions work in place. Planes
 *  share a step. One thread. Functions on more than 65536 16-bit samples in all (3 width height, wrapping to 32 bits)
 *  use a table of 128 KiB, from zumsMalloc_16u.
 *
 *  Checks, in this order: at 32f vMax - vMin, in single precision, not above 0 (zumErrRange); null pointers, plane
 *  pointers among them (zumErrNullPtr); a size below 1 by 1 (zumErrSize); a step below 1 (zumErrStep); the table
 *  (zumErrMemAlloc). Steps are exact bytes, also odd ones.
 *  @{ */

/** Linear to gamma-corrected at 8 bits, interleaved. */
ZUM_API ZumStatus zumiGammaFwd_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Linear to gamma-corrected at 8 bits, interleaved, in place. */
ZUM_API ZumStatus zumiGammaFwd_8u_C3IR(Zum8u* pSrcDst, int step, ZumiSize roi);
/** Linear to gamma-corrected at 8 bits, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiGammaFwd_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Linear to gamma-corrected at 8 bits, interleaved with alpha, in place; alpha is left as it is. */
ZUM_API ZumStatus zumiGammaFwd_8u_AC4IR(Zum8u* pSrcDst, int step, ZumiSize roi);
/** Linear to gamma-corrected at 8 bits, three planes. */
ZUM_API ZumStatus zumiGammaFwd_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                      ZumiSize roi);
/** Linear to gamma-corrected at 8 bits, three planes, in place. */
ZUM_API ZumStatus zumiGammaFwd_8u_IP3R(Zum8u* const pSrcDst[3], int step, ZumiSize roi);
/** Gamma-corrected to linear at 8 bits, interleaved. */
ZUM_API ZumStatus zumiGammaInv_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Gamma-corrected to linear at 8 bits, interleaved, in place. */
ZUM_API ZumStatus zumiGammaInv_8u_C3IR(Zum8u* pSrcDst, int step, ZumiSize roi);
/** Gamma-corrected to linear at 8 bits, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiGammaInv_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Gamma-corrected to linear at 8 bits, interleaved with alpha, in place; alpha is left as it is. */
ZUM_API ZumStatus zumiGammaInv_8u_AC4IR(Zum8u* pSrcDst, int step, ZumiSize roi);
/** Gamma-corrected to linear at 8 bits, three planes. */
ZUM_API ZumStatus zumiGammaInv_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                      ZumiSize roi);
/** Gamma-corrected to linear at 8 bits, three planes, in place. */
ZUM_API ZumStatus zumiGammaInv_8u_IP3R(Zum8u* const pSrcDst[3], int step, ZumiSize roi);
/** Linear to gamma-corrected at 16 bits, interleaved. */
ZUM_API ZumStatus zumiGammaFwd_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** Linear to gamma-corrected at 16 bits, interleaved, in place. */
ZUM_API ZumStatus zumiGammaFwd_16u_C3IR(Zum16u* pSrcDst, int step, ZumiSize roi);
/** Linear to gamma-corrected at 16 bits, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiGammaFwd_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** Linear to gamma-corrected at 16 bits, interleaved with alpha, in place; alpha is left as it is. */
ZUM_API ZumStatus zumiGammaFwd_16u_AC4IR(Zum16u* pSrcDst, int step, ZumiSize roi);
/** Linear to gamma-corrected at 16 bits, three planes. */
ZUM_API ZumStatus zumiGammaFwd_16u_P3R(const Zum16u* const pSrc[3], int srcStep, Zum16u* const pDst[3], int dstStep,
                                       ZumiSize roi);
/** Linear to gamma-corrected at 16 bits, three planes, in place. */
ZUM_API ZumStatus zumiGammaFwd_16u_IP3R(Zum16u* const pSrcDst[3], int step, ZumiSize roi);
/** Gamma-corrected to linear at 16 bits, interleaved. */
ZUM_API ZumStatus zumiGammaInv_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** Gamma-corrected to linear at 16 bits, interleaved, in place. */
ZUM_API ZumStatus zumiGammaInv_16u_C3IR(Zum16u* pSrcDst, int step, ZumiSize roi);
/** Gamma-corrected to linear at 16 bits, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiGammaInv_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi);
/** Gamma-corrected to linear at 16 bits, interleaved with alpha, in place; alpha is left as it is. */
ZUM_API ZumStatus zumiGammaInv_16u_AC4IR(Zum16u* pSrcDst, int step, ZumiSize roi);
/** Gamma-corrected to linear at 16 bits, three planes. */
ZUM_API ZumStatus zumiGammaInv_16u_P3R(const Zum16u* const pSrc[3], int srcStep, Zum16u* const pDst[3], int dstStep,
                                       ZumiSize roi);
/** Gamma-corrected to linear at 16 bits, three planes, in place. */
ZUM_API ZumStatus zumiGammaInv_16u_IP3R(Zum16u* const pSrcDst[3], int step, ZumiSize roi);
/** Linear to gamma-corrected in single precision, interleaved. */
ZUM_API ZumStatus zumiGammaFwd_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                       Zum32f vMin, Zum32f vMax);
/** Linear to gamma-corrected in single precision, interleaved, in place. */
ZUM_API ZumStatus zumiGammaFwd_32f_C3IR(Zum32f* pSrcDst, int step, ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Linear to gamma-corrected in single precision, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiGammaFwd_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                        Zum32f vMin, Zum32f vMax);
/** Linear to gamma-corrected in single precision, interleaved with alpha, in place; alpha is left as it is. */
ZUM_API ZumStatus zumiGammaFwd_32f_AC4IR(Zum32f* pSrcDst, int step, ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Linear to gamma-corrected in single precision, three planes. */
ZUM_API ZumStatus zumiGammaFwd_32f_P3R(const Zum32f* const pSrc[3], int srcStep, Zum32f* const pDst[3], int dstStep,
                                       ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Linear to gamma-corrected in single precision, three planes, in place. */
ZUM_API ZumStatus zumiGammaFwd_32f_IP3R(Zum32f* const pSrcDst[3], int step, ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Gamma-corrected to linear in single precision, interleaved. */
ZUM_API ZumStatus zumiGammaInv_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                       Zum32f vMin, Zum32f vMax);
/** Gamma-corrected to linear in single precision, interleaved, in place. */
ZUM_API ZumStatus zumiGammaInv_32f_C3IR(Zum32f* pSrcDst, int step, ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Gamma-corrected to linear in single precision, interleaved with alpha; alpha is left as it is in the destination. */
ZUM_API ZumStatus zumiGammaInv_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                        Zum32f vMin, Zum32f vMax);
/** Gamma-corrected to linear in single precision, interleaved with alpha, in place; alpha is left as it is. */
ZUM_API ZumStatus zumiGammaInv_32f_AC4IR(Zum32f* pSrcDst, int step, ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Gamma-corrected to linear in single precision, three planes. */
ZUM_API ZumStatus zumiGammaInv_32f_P3R(const Zum32f* const pSrc[3], int srcStep, Zum32f* const pDst[3], int dstStep,
                                       ZumiSize roi, Zum32f vMin, Zum32f vMax);
/** Gamma-corrected to linear in single precision, three planes, in place. */
ZUM_API ZumStatus zumiGammaInv_32f_IP3R(Zum32f* const pSrcDst[3], int step, ZumiSize roi, Zum32f vMin, Zum32f vMax);

/** @} */

/** @defgroup colortwist Colour twist
 *  An affine map of the three colour samples of each pixel: a matrix for another luma, for white balance, for
 *  saturation, or from one model to another. twist is a matrix of three rows of four, row after row: output i is
 *  t[i][0] x0 + t[i][1] x1 + t[i][2] x2 + t[i][3], in single precision whatever the samples, and in their units. The
 *  additions are made in this order, with a rounding after each operation:
 *
 *  | samples           | order                                                                |
 *  |-------------------|----------------------------------------------------------------------|
 *  | 8u, 16u, 16s, 32f | (t[i][3] + x0 t[i][0]) + (x2 t[i][2] + x1 t[i][1])                   |
 *  | 8s                | ((x0 t[i][0] + x1 t[i][1]) + x2 t[i][2]) + t[i][3]                   |
 *  | 32f C4            | ((x0 t[i][0] + x1 t[i][1]) + x2 t[i][2]) + x3 t[i][3], i from 0 to 3 |
 *
 *  zumiColorTwist_32f stores the sums as they are, rounded by the caller's rounding mode. zumiColorTwist32f limits them
 *  to the range of the samples and rounds them to the nearest integer, ties to even, whatever rounding mode the caller
 *  has set; the sums are formed in this mode too. The caller's mode is the same after the call. A NaN becomes the
 *  largest sample.
 *
 *  AC4: the fourth sample of a pixel is neither read nor written. C3IR, AC4IR and IP3R convert one image in place.
 *  Planes share a step. Checks: null pointers, twist and those inside plane arrays included (zumErrNullPtr); a size
 *  below 1 by 1 (zumErrSize); a step below 1 (zumErrStep). Steps are exact bytes, also odd ones. One thread.
 *  @{ */

/** Colour twist, single precision, interleaved. */
ZUM_API ZumStatus zumiColorTwist_32f_C3R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                         const Zum32f* twist);
/** Colour twist, single precision, interleaved, in place. */
ZUM_API ZumStatus zumiColorTwist_32f_C3IR(Zum32f* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, single precision, interleaved with alpha. */
ZUM_API ZumStatus zumiColorTwist_32f_AC4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                          const Zum32f* twist);
/** Colour twist, single precision, interleaved with alpha, in place. */
ZUM_API ZumStatus zumiColorTwist_32f_AC4IR(Zum32f* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, single precision, three planes. */
ZUM_API ZumStatus zumiColorTwist_32f_P3R(const Zum32f* const pSrc[3], int srcStep, Zum32f* const pDst[3], int dstStep,
                                         ZumiSize roi, const Zum32f* twist);
/** Colour twist, single precision, three planes, in place. */
ZUM_API ZumStatus zumiColorTwist_32f_IP3R(Zum32f* const pSrcDst[3], int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** A linear map of four samples, single precision: twist has four rows of four, and no offsets. If both steps are
 *  equal to width times 4, a quarter of a row, the image is taken as one row of width times height pixels. */
ZUM_API ZumStatus zumiColorTwist_32f_C4R(const Zum32f* pSrc, int srcStep, Zum32f* pDst, int dstStep, ZumiSize roi,
                                         const Zum32f* twist);
/** Colour twist, unsigned 8-bit, interleaved. */
ZUM_API ZumStatus zumiColorTwist32f_8u_C3R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                           const Zum32f* twist);
/** Colour twist, unsigned 8-bit, interleaved, in place. */
ZUM_API ZumStatus zumiColorTwist32f_8u_C3IR(Zum8u* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 8-bit, interleaved with alpha. */
ZUM_API ZumStatus zumiColorTwist32f_8u_AC4R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* twist);
/** Colour twist, unsigned 8-bit, interleaved with alpha, in place. */
ZUM_API ZumStatus zumiColorTwist32f_8u_AC4IR(Zum8u* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 8-bit, three planes. */
ZUM_API ZumStatus zumiColorTwist32f_8u_P3R(const Zum8u* const pSrc[3], int srcStep, Zum8u* const pDst[3], int dstStep,
                                           ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 8-bit, three planes, in place. */
ZUM_API ZumStatus zumiColorTwist32f_8u_IP3R(Zum8u* const pSrcDst[3], int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 8-bit, interleaved. */
ZUM_API ZumStatus zumiColorTwist32f_8s_C3R(const Zum8s* pSrc, int srcStep, Zum8s* pDst, int dstStep, ZumiSize roi,
                                           const Zum32f* twist);
/** Colour twist, signed 8-bit, interleaved, in place. */
ZUM_API ZumStatus zumiColorTwist32f_8s_C3IR(Zum8s* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 8-bit, interleaved with alpha. */
ZUM_API ZumStatus zumiColorTwist32f_8s_AC4R(const Zum8s* pSrc, int srcStep, Zum8s* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* twist);
/** Colour twist, signed 8-bit, interleaved with alpha, in place. */
ZUM_API ZumStatus zumiColorTwist32f_8s_AC4IR(Zum8s* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 8-bit, three planes. */
ZUM_API ZumStatus zumiColorTwist32f_8s_P3R(const Zum8s* const pSrc[3], int srcStep, Zum8s* const pDst[3], int dstStep,
                                           ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 8-bit, three planes, in place. */
ZUM_API ZumStatus zumiColorTwist32f_8s_IP3R(Zum8s* const pSrcDst[3], int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 16-bit, interleaved. */
ZUM_API ZumStatus zumiColorTwist32f_16u_C3R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* twist);
/** Colour twist, unsigned 16-bit, interleaved, in place. */
ZUM_API ZumStatus zumiColorTwist32f_16u_C3IR(Zum16u* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 16-bit, interleaved with alpha. */
ZUM_API ZumStatus zumiColorTwist32f_16u_AC4R(const Zum16u* pSrc, int srcStep, Zum16u* pDst, int dstStep, ZumiSize roi,
                                             const Zum32f* twist);
/** Colour twist, unsigned 16-bit, interleaved with alpha, in place. */
ZUM_API ZumStatus zumiColorTwist32f_16u_AC4IR(Zum16u* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 16-bit, three planes. */
ZUM_API ZumStatus zumiColorTwist32f_16u_P3R(const Zum16u* const pSrc[3], int srcStep, Zum16u* const pDst[3],
                                            int dstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, unsigned 16-bit, three planes, in place. */
ZUM_API ZumStatus zumiColorTwist32f_16u_IP3R(Zum16u* const pSrcDst[3], int srcDstStep, ZumiSize roi,
                                             const Zum32f* twist);
/** Colour twist, signed 16-bit, interleaved. */
ZUM_API ZumStatus zumiColorTwist32f_16s_C3R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                            const Zum32f* twist);
/** Colour twist, signed 16-bit, interleaved, in place. */
ZUM_API ZumStatus zumiColorTwist32f_16s_C3IR(Zum16s* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 16-bit, interleaved with alpha. */
ZUM_API ZumStatus zumiColorTwist32f_16s_AC4R(const Zum16s* pSrc, int srcStep, Zum16s* pDst, int dstStep, ZumiSize roi,
                                             const Zum32f* twist);
/** Colour twist, signed 16-bit, interleaved with alpha, in place. */
ZUM_API ZumStatus zumiColorTwist32f_16s_AC4IR(Zum16s* pSrcDst, int srcDstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 16-bit, three planes. */
ZUM_API ZumStatus zumiColorTwist32f_16s_P3R(const Zum16s* const pSrc[3], int srcStep, Zum16s* const pDst[3],
                                            int dstStep, ZumiSize roi, const Zum32f* twist);
/** Colour twist, signed 16-bit, three planes, in place. */
ZUM_API ZumStatus zumiColorTwist32f_16s_IP3R(Zum16s* const pSrcDst[3], int srcDstStep, ZumiSize roi,
                                             const Zum32f* twist);

/** @} */

/** @defgroup tonemap Tone mapping
 *  One channel of unbounded range to 8 bits, by one scale factor taken from the image: zumiToneMapLinear makes 255 of
 *  the maximum, zumiToneMapMean of twice the mean, so that the mean becomes 127. Products are truncated toward zero to
 *  32-bit integers; a NaN, and a product beyond their range, becomes the most negative integer.
 *
 *  If the maximum, or twice the mean, is negative or a NaN, nothing is written and the status is zumWrnNoOperation. If
 *  it is not above the smallest normal number, 1.1754944e-38, all of pDst becomes 0.
 *
 *  Checks: those of zumiMax_32f_C1R on source and size, a null source (zumErrNullPtr) and a size below 1 by 1
 *  (zumErrSize). Steps are not checked, and pDst only if it is filled with 0. The mean can differ in its last bits with
 *  the address of the source, as zumiSum_32f_C1R says. One thread.
 *  @{ */

/** Scales the maximum (zumiMax_32f_C1R) to 255, in single precision, and stores the low 8 bits: negative samples wrap
 *  around. */
ZUM_API ZumStatus zumiToneMapLinear_32f8u_C1R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);
/** Scales twice the mean (zumiMean_32f_C1R with zumHintFast) to 255, the factor computed in double and rounded to
 *  single precision, and limits to 0..255. A product beyond 32 bits becomes 0, even a positive one. */
ZUM_API ZumStatus zumiToneMapMean_32f8u_C1R(const Zum32f* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi);

/** @} */

/** @defgroup ycocg YCoCg
 *  Interleaved BGR, or BGRA, to and from planes of Y, Co and Cg, the model of ITU-T H.264. SBGR is BGR of signed 16-bit
 *  samples. There is a lossy transform, and a reversible one of lifting steps, named _Rev, whose inverse gives the
 *  source back. Right shifts round down.
 *
 *  |            | lossy                       | _Rev                          |
 *  |------------|-----------------------------|-------------------------------|
 *  | to YCoCg   | Y = (R + 2 G + B + 2) >> 2  | Co = R - B, t = B + (Co >> 1) |
 *  |            | Co = (R - B + 1) >> 1       | Cg = G - t                    |
 *  |            | Cg = (2 G - R - B + 2) >> 2 | Y = t + (Cg >> 1)             |
 *  | from YCoCg | R = Y + Co - Cg             | t = Y - (Cg >> 1)             |
 *  |            | G = Y + Cg                  | G = Cg + t                    |
 *  |            | B = Y - Co - Cg             | B = t - (Co >> 1), R = Co + B |
 *
 *  From bytes Y is 0..255; Co and Cg are -127..128, by _Rev -255..255.
 *
 *  | depth    | arithmetic                                                                        |
 *  |----------|-----------------------------------------------------------------------------------|
 *  | 8u16s    | exact                                                                             |
 *  | 16s32s   | exact                                                                             |
 *  | 16s to   | lossy: exact sums, saturated to 16 bits in block columns, low 16 bits behind them |
 *  | 16s to   | _Rev: every step wraps around at 16 bits                                          |
 *  | 16s8u    | wraps around at 16 bits; then each of B, G and R is limited to 0..255             |
 *  | 16s from | wraps around at 16 bits                                                           |
 *  | 32s16s   | wraps around at 32 bits; then the low 16 bits                                     |
 *
 *  Block columns are the width rounded down to 4. C4 sources: the fourth sample is ignored. C4 destinations: the fourth
 *  sample of each pixel becomes fourth. The planes share one step; steps are exact bytes, also odd ones, and not
 *  checked. The only checks are those of the pointers, plane pointers among them (zumErrNullPtr): a width or height
 *  below 1 writes nothing and gives zumOk. One thread.
 *  @{ */

/** BGR to YCoCg, unsigned 8-bit to signed 16-bit. */
ZUM_API ZumStatus zumiBGRToYCoCg_8u16s_C3P3R(const Zum8u* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                             ZumiSize roi);
/** BGRA to YCoCg, unsigned 8-bit to signed 16-bit. */
ZUM_API ZumStatus zumiBGRToYCoCg_8u16s_C4P3R(const Zum8u* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                             ZumiSize roi);
/** YCoCg to BGR, signed 16-bit to unsigned 8-bit. */
ZUM_API ZumStatus zumiYCoCgToBGR_16s8u_P3C3R(const Zum16s* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                             ZumiSize roi);
/** YCoCg to BGRA, signed 16-bit to unsigned 8-bit. */
ZUM_API ZumStatus zumiYCoCgToBGR_16s8u_P3C4R(const Zum16s* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                             ZumiSize roi, Zum8u fourth);
/** SBGR to YCoCg, signed 16-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_16s_C3P3R(const Zum16s* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                            ZumiSize roi);
/** SBGRA to YCoCg, signed 16-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_16s_C4P3R(const Zum16s* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                            ZumiSize roi);
/** YCoCg to SBGR, signed 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_16s_P3C3R(const Zum16s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                            ZumiSize roi);
/** YCoCg to SBGRA, signed 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_16s_P3C4R(const Zum16s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                            ZumiSize roi, Zum16s fourth);
/** SBGR to YCoCg, signed 16-bit to 32-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_16s32s_C3P3R(const Zum16s* pSrc, int srcStep, Zum32s* const pDst[3], int dstStep,
                                               ZumiSize roi);
/** SBGRA to YCoCg, signed 16-bit to 32-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_16s32s_C4P3R(const Zum16s* pSrc, int srcStep, Zum32s* const pDst[3], int dstStep,
                                               ZumiSize roi);
/** YCoCg to SBGR, signed 32-bit to 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_32s16s_P3C3R(const Zum32s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                               ZumiSize roi);
/** YCoCg to SBGRA, signed 32-bit to 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_32s16s_P3C4R(const Zum32s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                               ZumiSize roi, Zum16s fourth);
/** BGR to YCoCg, reversible, unsigned 8-bit to signed 16-bit. */
ZUM_API ZumStatus zumiBGRToYCoCg_Rev_8u16s_C3P3R(const Zum8u* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                                 ZumiSize roi);
/** BGRA to YCoCg, reversible, unsigned 8-bit to signed 16-bit. */
ZUM_API ZumStatus zumiBGRToYCoCg_Rev_8u16s_C4P3R(const Zum8u* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                                 ZumiSize roi);
/** YCoCg to BGR, reversible, signed 16-bit to unsigned 8-bit. */
ZUM_API ZumStatus zumiYCoCgToBGR_Rev_16s8u_P3C3R(const Zum16s* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                                 ZumiSize roi);
/** YCoCg to BGRA, reversible, signed 16-bit to unsigned 8-bit. */
ZUM_API ZumStatus zumiYCoCgToBGR_Rev_16s8u_P3C4R(const Zum16s* const pSrc[3], int srcStep, Zum8u* pDst, int dstStep,
                                                 ZumiSize roi, Zum8u fourth);
/** SBGR to YCoCg, reversible, signed 16-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_Rev_16s_C3P3R(const Zum16s* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                                ZumiSize roi);
/** SBGRA to YCoCg, reversible, signed 16-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_Rev_16s_C4P3R(const Zum16s* pSrc, int srcStep, Zum16s* const pDst[3], int dstStep,
                                                ZumiSize roi);
/** YCoCg to SBGR, reversible, signed 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_Rev_16s_P3C3R(const Zum16s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                                ZumiSize roi);
/** YCoCg to SBGRA, reversible, signed 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_Rev_16s_P3C4R(const Zum16s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                                ZumiSize roi, Zum16s fourth);
/** SBGR to YCoCg, reversible, signed 16-bit to 32-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_Rev_16s32s_C3P3R(const Zum16s* pSrc, int srcStep, Zum32s* const pDst[3], int dstStep,
                                                   ZumiSize roi);
/** SBGRA to YCoCg, reversible, signed 16-bit to 32-bit. */
ZUM_API ZumStatus zumiSBGRToYCoCg_Rev_16s32s_C4P3R(const Zum16s* pSrc, int srcStep, Zum32s* const pDst[3], int dstStep,
                                                   ZumiSize roi);
/** YCoCg to SBGR, reversible, signed 32-bit to 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_Rev_32s16s_P3C3R(const Zum32s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                                   ZumiSize roi);
/** YCoCg to SBGRA, reversible, signed 32-bit to 16-bit. */
ZUM_API ZumStatus zumiYCoCgToSBGR_Rev_32s16s_P3C4R(const Zum32s* const pSrc[3], int srcStep, Zum16s* pDst, int dstStep,
                                                   ZumiSize roi, Zum16s fourth);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
