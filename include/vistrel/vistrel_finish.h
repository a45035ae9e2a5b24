/* Finishing: what makes a picture for the eye of linear samples. Plain C. */
#ifndef VISTREL_FINISH_H
#define VISTREL_FINISH_H

#include <stddef.h>
#include <stdint.h>

#include "vistrel/vistrel_status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Transfer curves, from linear light x, 0 to 1, to values f(x) with f(0) = 0 and f(1) = 1. */
enum {
  VISTREL_TRANSFER_LINEAR = 0, /* x */
  VISTREL_TRANSFER_SRGB = 1,   /* 12.92 x if x <= 0.0031308, else 1.055 x^(1/2.4) - 0.055:
                                  IEC 61966-2-1 */
  VISTREL_TRANSFER_GAMMA = 2,  /* x^(1/G) */
  VISTREL_TRANSFER_ASINH = 3   /* asinh(N x) / asinh(N): Lupton et al., PASP 116 (2004) */
};

/*
 * Sets points[i] to 65535 f(i / (count - 1)), rounded, halves up, for i = 0 to
 * count - 1; count is 2 to 65536. `parameter` is in thousandths: G is 100 to 10000
 * for VISTREL_TRANSFER_GAMMA, N is 1 to 1000000000 for VISTREL_TRANSFER_ASINH. The
 * others have none: 0. All arithmetic is in integers, so the points are the same on
 * every machine. Its error is below 2^-40, with N < 1000 below 2^-30: only a value
 * that close to a half may round the wrong way.
 */
int32_t vistrel_make_transfer(uint32_t kind, uint32_t parameter, uint16_t* points, size_t count,
                              vistrel_error* error);

/* "linear", "srgb", "gamma", "asinh"; null for any other value. */
const char* vistrel_transfer_name(uint32_t kind);

/* The kind that a name, in lower or upper case, stands for. */
int32_t vistrel_parse_transfer(const char* name, uint32_t* kind, vistrel_error* error);

#ifdef __cplusplus
}
#endif

#endif
