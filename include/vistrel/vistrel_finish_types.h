/* The types of calibration and of the finishing stage. Plain C. */
#ifndef VISTREL_FINISH_TYPES_H
#define VISTREL_FINISH_TYPES_H

#include <stddef.h>
#include <stdint.h>

/* A pixel of a frame. */
typedef struct vistrel_point {
  uint32_t x, y; /* column and row, from 0 */
} vistrel_point;

/*
 * What is known about each pixel of a sensor: see vistrel_conversion.calibration. All
 * memory is the caller's, for the length of a call, at any alignment. Strides are
 * bytes from row to row, 0 if rows have no padding; sizes are the bytes that may be
 * read. A null pointer leaves a step out.
 */
typedef struct vistrel_calibration {
  const void*
      dark; /* 16-bit levels, one for each pixel of the frame, in the scale of its samples */
  size_t dark_size, dark_stride; /* in bytes */
  const void* flat; /* 16-bit gains in 1/4096, one for each pixel: see vistrel_measure_flat */
  size_t flat_size, flat_stride; /* in bytes */
  const vistrel_point*
      hot;              /* hot pixels, by rows and then columns, each one once; 4-byte aligned */
  size_t hot_count;     /* how many points */
  uint32_t reserved[8]; /* 0 */
} vistrel_calibration;

/* What becomes of highlights. */
enum {
  VISTREL_HIGHLIGHTS_CLIP = 0,   /* nothing special */
  VISTREL_HIGHLIGHTS_NEUTRAL = 1 /* clipped channels follow the others, so that neutral areas
                                    stay neutral; Bayer frames */
};

/* An exposure of 1, and the largest one: 65536. */
enum { VISTREL_EXPOSURE_ONE = 4096, VISTREL_EXPOSURE_MAX = 65536 * 4096 };

/* The largest sum of the absolute values of a matrix row. */
enum { VISTREL_MATRIX_MAX = 32767 };

/*
 * How colours are finished for the eye: see vistrel_conversion.finish. In the
 * formulas, >> rounds down, and all arithmetic is in integers without overflow.
 *
 * 1. Samples are scaled to B bits: 16, or the fewer that the algorithm allows, or
 *    truncate_to if that is less. With F = 2^B - 1, black level b of the sample's
 *    place, range R = white - b, gain g of its colour and the largest of the three
 *    gains G (g = G = 1 for mono frames)
 *
 *      factor = (F * 2^(31-B) * g + R * G / 2) / (R * G)
 *      w = min((min(max(s - b, 0), R) * factor + 2^(30-B)) >> (31-B), F)
 *
 *    so only what the sensor clips is clipped.
 * 2. The frame is demosaiced and binned. From here on, values have 16 bits:
 *    v << (16-B) | v >> (2B-16).
 * 3. Neutral highlights. Let c be what w is for a sample at white (the least of a
 *    colour's two places, in 16 bits), and h = c >> 4. A channel v clips by
 *
 *      t = min(max(v - (c - h), 0), h) * 256 / h      rounded down
 *
 *    and by 0 if c < 16. It moves towards another value by
 *
 *      fade(v, to) = v + (((to - v) * t + 128) >> 8)
 *
 *    With a pixel's largest channel m, and l the least of fade(v, m) of its channels,
 *    each channel becomes fade(v, max(v, (l + m + 1) >> 1)). So a clipped channel rises
 *    to the middle of the two others, or to the last one that is not clipped.
 * 4. The matrix: each channel becomes min(max((sum + 2048) >> 12, 0), 65535), where
 *    the sum is that of its row times red, green and blue.
 * 5. The exposure e, which also makes up for the largest gain: with
 *    a = min((e * G + 2048) >> 12, 2^28), where G is in 1/4096,
 *    i = min((v * a + 2048) >> 12, 65535).
 * 6. The transfer curve. With n points and p = i * (n - 1), its value lies between
 *    point k = p / 65535, rounded down, and the next one, at f = p - 65535 * k:
 *
 *      y = (points[k] * (65535 - f) + points[k + 1] * f + 32767) / 65535
 *
 * 7. Formats of 8 bits get (y + 128) / 257, rounded down.
 */
typedef struct vistrel_finish {
  uint32_t highlights;      /* VISTREL_HIGHLIGHTS_... */
  uint32_t exposure;        /* in 1/4096: 1 to VISTREL_EXPOSURE_MAX */
  int32_t matrix[9];        /* in 1/4096, from red, green, blue to red, green, blue, row by row;
                               all 0: none. The absolute values of a row add up to
                               VISTREL_MATRIX_MAX at most. Must be 0 for mono frames */
  uint32_t transfer_points; /* 2 to 65536; 0 if transfer is null */
  const uint16_t* transfer; /* in the caller's memory for the length of a call: the values for
                               evenly spaced light from 0 to 65535; null: y = i. See
                               vistrel_make_transfer */
  uint32_t reserved[8];     /* 0 */
} vistrel_finish;

#endif
