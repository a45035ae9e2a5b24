/* The types of vistrel_host.h: choices and structures. Plain C. */
#ifndef VISTREL_TYPES_H
#define VISTREL_TYPES_H

#include <stddef.h>
#include <stdint.h>

#include "vistrel/vistrel_finish_types.h"
#include "vistrel/vistrel_status.h"

/* Bayer phases: the mosaic's 2x2 block at pixel (0, 0), row by row. Mono: no colour filters. BGR:
   not a mosaic but finished pixels of three samples, blue, green, red, to be binned, reduced or
   converted to another format. */
enum {
  VISTREL_GRBG = 0,
  VISTREL_BGGR = 1,
  VISTREL_RGGB = 2,
  VISTREL_GBRG = 3,
  VISTREL_MONO = 4,
  VISTREL_BGR = 256
};

/* Colours of a mosaic's filters, and their order in gains. */
enum { VISTREL_RED = 0, VISTREL_GREEN = 1, VISTREL_BLUE = 2, VISTREL_NO_COLOUR = 3 };

/* Where the significant bits of a 16-bit sample are. The others are 0. */
enum {
  VISTREL_LOW_BITS = 0, /* in the lowest bits */
  VISTREL_HIGH_BITS = 1 /* in the highest bits */
};

/*
 * Packings: how samples lie in a packed frame. A row's last group may have fewer
 * samples than the others. It then takes only the bytes that they need,
 * ceil(samples * bits / 8).
 */
enum {
  VISTREL_PACKING_BYTES = 0,  /* 8 bits: a byte each */
  VISTREL_PACKING_LITTLE = 1, /* 8..16 bits: two bytes each, low byte first */
  VISTREL_PACKING_BIG = 2,    /* 8..16 bits: two bytes each, high byte first */
  /* 10, 12, 14 bits, PFNC's "p": a stream of bits, the lowest bits of a sample and of a byte
     first: 4 samples in 5 bytes, 2 in 3, 4 in 7. */
  VISTREL_PACKING_PFNC = 3,
  /* 10, 12 bits, GigE Vision's "Packed": 2 samples in 3 bytes. The first byte has the high 8 bits
     of the first sample, the third byte those of the second. The second byte has the low bits of
     both, the first sample's from bit 0, the second's from bit 4; at 10 bits, it has 4 bits that
     are not read. */
  VISTREL_PACKING_GIGE = 4,
  /* 10, 12, 14 bits, MIPI CSI-2: 4 samples in 5 bytes, 2 in 3, 4 in 7: the high 8 bits of each,
     then the low bits of each as a stream that begins at bit 0. */
  VISTREL_PACKING_MIPI = 5
};

/* A frame, in the caller's memory for the length of a call. */
typedef struct vistrel_frame {
  const void* samples;       /* first sample: a byte, or 16 bits in this machine's byte order; the
                                first byte of a packed frame */
  size_t size;               /* bytes that may be read from there */
  size_t stride;             /* bytes from row to row, at any alignment; 0: rows have no padding */
  uint32_t width;            /* pixels, from 1 */
  uint32_t height;           /* pixels, from 1 */
  uint32_t bytes_per_sample; /* 1 or 2; 2 for packed frames */
  uint32_t bits;             /* significant bits: 8 for bytes, 8..16 for 16-bit samples; of packed
                                samples, what the packing allows */
  uint32_t phase;            /* VISTREL_GRBG to VISTREL_BGR */
  uint32_t alignment;        /* VISTREL_LOW_BITS or VISTREL_HIGH_BITS; only VISTREL_LOW_BITS with
                                the packings PFNC, GIGE and MIPI */
  /*
   * 0: the frame is not packed. VISTREL_PACKING_LITTLE to VISTREL_PACKING_MIPI: it is
   * packed, and each row begins at a whole byte. vistrel_unpack also takes frames
   * without byte boundaries between rows.
   */
  uint32_t packing;
  uint32_t reserved[3]; /* 0 */
} vistrel_frame;

/* A part of a frame, in sensor pixels; the whole frame if all fields are 0. */
typedef struct vistrel_region {
  uint32_t x, y;          /* upper left corner */
  uint32_t width, height; /* size, from 1 */
} vistrel_region;

/* Demosaic algorithms. */
enum {
  VISTREL_BILINEAR = 0,     /* the mean of the nearest sites */
  VISTREL_EDGE = 1,         /* colour differences along edges; takes a threshold */
  VISTREL_NEAR = 2,         /* nearest neighbours; green along edges */
  VISTREL_LAROCHE = 3,      /* Laroche and Prescott: colours as differences to green */
  VISTREL_HAMILTON = 4,     /* Hamilton and Adams: colours corrected by second differences */
  VISTREL_VNG = 5,          /* Chang, Cheung and Pang: variable number of gradients */
  VISTREL_COK = 6,          /* Cok: colours as ratios to green */
  VISTREL_KIMMEL = 7,       /* Kimmel: ratios to green, weighted by gradients */
  VISTREL_GROUPING = 8,     /* Lin: pixel grouping */
  VISTREL_AHD = 256,        /* Hirakawa and Parks: adaptive homogeneity-directed */
  VISTREL_DIRECTIONAL = 257 /* differences along rows and columns, blended by roughness */
};

/* Pixel formats. Alpha is 255. */
enum {
  VISTREL_MONO8 = 0,    /* 1 byte; for mono frames */
  VISTREL_MONO16 = 1,   /* one 16-bit sample; for mono frames */
  VISTREL_BGR24 = 2,    /* bytes blue, green, red */
  VISTREL_ARGB32 = 3,   /* bytes alpha, red, green, blue */
  VISTREL_ARGB32_4 = 4, /* the same under a second code */
  VISTREL_GRAY8 = 5,    /* 1 byte of luminance */
  VISTREL_GRAY16 = 6,   /* one 16-bit sample of luminance */
  VISTREL_BGR48 = 7,    /* 16-bit samples blue, green, red */
  VISTREL_RGB24 = 256,  /* bytes red, green, blue */
  VISTREL_BGRA32 = 257, /* bytes blue, green, red, alpha */
  VISTREL_RGBA32 = 258, /* bytes red, green, blue, alpha */
  VISTREL_RGB48 = 259,  /* 16-bit samples red, green, blue */
  /*
   * Planes lie one after the other, each with as many strides as it has rows. Planar
   * RGB has a plane of red samples, one of green and one of blue.
   */
  VISTREL_RGB24_PLANAR = 260, /* bytes */
  VISTREL_RGB48_PLANAR = 261, /* 16-bit samples */
  /*
   * BT.709 luma and chroma in limited range. Each chroma sample covers 2x2 pixels,
   * fewer at an odd right or bottom edge, so there are (width + 1) / 2 columns and
   * (height + 1) / 2 rows of them. With >> rounding down
   *
   *   Y  = 17 * (15 * blue + 148 * green + 44 * red + 3966) >> 12
   *   Cb = (16448 + product(b - g, 14392) + product(r - g, -3298)) >> 7
   *   Cr = (16448 + product(r - g, 14392) + product(b - g, -1320)) >> 7
   *
   * where b, g and r are 32 times the sums of a block's samples, those at an odd edge
   * repeated, and product(v, w) = (v * w + 16384) >> 15. In I444, each pixel has chroma of
   * its own, that of a block of four such pixels.
   */
  VISTREL_NV12 = 262, /* a plane of Y, one of pairs Cb, Cr with the same stride; if the width
                          is odd, a row's last Y is stored twice */
  VISTREL_I420 = 263, /* a plane of Y, one of Cb, one of Cr with half the stride, rounded up */
  VISTREL_I444 = 264  /* a plane of Y, one of Cb, one of Cr */
};

/* How samples of more than 8 bits are reduced to 8. Windows keep eight adjacent bits, clamped. */
enum {
  VISTREL_WINDOW_HIGH = 0,   /* the highest eight bits */
  VISTREL_WINDOW_MIDDLE = 1, /* one bit lower; for 9 bits or more */
  VISTREL_WINDOW_LOW = 2,    /* two bits lower; for 10 bits or more */
  VISTREL_CURVE_2 = 3,       /* tone curves, for 10 bits or more */
  VISTREL_CURVE_3 = 4,
  VISTREL_CURVE_4 = 5,
  VISTREL_CURVE_5 = 6,
  VISTREL_CURVE_6 = 7,
  VISTREL_TABLE = 10 /* the conversion's own table, for 10 to 12 bits */
};

/* Where the gray of VISTREL_GRAY8 and VISTREL_GRAY16 comes from. */
enum {
  VISTREL_LUMA = 0, /* (114 blue + 587 green + 299 red) / 1000 of the finished colours, rounded */
  VISTREL_RAW_GRAY = 1 /* libVistrel's own: some values are one too low; binning mixes rows */
};

/* When the result is read. The bytes are the same. */
enum {
  VISTREL_READ_SOON = 0, /* at once: it should stay in the caches */
  VISTREL_READ_LATER = 1 /* long after the conversion: large results bypass the caches, which saves
                            memory traffic */
};

/*
 * What to do with samples that have bits set outside the frame's significant ones. Only
 * samples that are read count: those of the region and of its padding within the frame,
 * or all of the frame if the conversion measures gains.
 */
enum {
  VISTREL_REJECT = 0, /* reject the conversion and report the first such sample */
  VISTREL_MASK = 1    /* treat those bits as 0 */
};

/* White balance: a gain for each colour. */
enum {
  VISTREL_BALANCE_NONE = 0,      /* all gains are 1 */
  VISTREL_BALANCE_GAINS = 1,     /* the gains of the conversion */
  VISTREL_BALANCE_GRAY_WORLD = 2 /* the gains of vistrel_measure_gains for the whole
                                     frame */
};

/* A gain of 1, and the largest one: 16. */
enum { VISTREL_GAIN_ONE = 4096, VISTREL_GAIN_MAX = 65536 };

/* What an algorithm reads beyond the region. */
enum {
  VISTREL_EDGES_NATIVE = 0, /* libVistrel's substitutes; several algorithms tint the border */
  VISTREL_EDGES_PADDED = 1  /* the frame, and beyond it the frame mirrored about its outermost rows
                               and columns, so that the mosaic continues: 8 to 12 samples a side */
};

/* What a bin of binning x binning pixels becomes. */
enum {
  VISTREL_BIN_SUM = 0, /* their sum divided by binning: brighter by that factor */
  VISTREL_BIN_MEAN = 1 /* their mean, rounded, halves up: sum + n / 2 divided by n, of all n */
};

/*
 * How the image is turned and mirrored, with the codes of TIFF and EXIF; 0 means 1.
 * Turns are clockwise. A code that turns by 90 or 270 degrees exchanges width and height
 * of the image.
 */
enum {
  VISTREL_UPRIGHT = 1,
  VISTREL_MIRRORED = 2, /* left and right exchanged */
  VISTREL_TURNED_180 = 3,
  VISTREL_FLIPPED = 4,    /* top and bottom exchanged */
  VISTREL_TRANSPOSED = 5, /* rows and columns exchanged */
  VISTREL_TURNED_90 = 6,
  VISTREL_TRANSVERSE = 7, /* rows and columns exchanged, then turned by 180 degrees */
  VISTREL_TURNED_270 = 8
};

/* The maximum number of threads of a conversion or a team. */
enum { VISTREL_MAX_THREADS = 256 };

/* Threads that share the work of a conversion: see vistrel_team_create. */
typedef struct vistrel_team vistrel_team;

/*
 * A function of the caller's that calls task(data, index) for each index from 0 to
 * count - 1, on any threads, in any order, at the same time or one after the other.
 * It returns 0 after all these calls have returned, and any other value if it fails.
 */
typedef int32_t vistrel_run(void* context, uint32_t count, void (*task)(void* data, uint32_t index),
                            void* data);

/* The result that the caller wants. vistrel_default_conversion fills it. */
typedef struct vistrel_conversion {
  /*
   * VISTREL_MONO8 or VISTREL_MONO16 for mono frames, any other format for all other
   * frames. Formats of 16 bits need a frame of 16-bit samples and keep its
   * significant bits.
   */
  uint32_t format;
  uint32_t algorithm; /* VISTREL_BILINEAR to VISTREL_DIRECTIONAL; only read for Bayer frames */
  uint32_t threshold; /* for VISTREL_EDGE, 0..255: smooths green that varies by up to that many
                         255ths of full scale; 0 smooths none. 0 for all other algorithms */
  uint32_t gray;      /* VISTREL_LUMA or VISTREL_RAW_GRAY; only read for gray formats */
  uint32_t binning;   /* 1..4: each block of binning x binning pixels becomes one pixel */
  /*
   * 8..16: samples with more significant bits are truncated to this number of bits.
   * They lose their lowest bits, so that algorithms made for 10 bits accept them.
   * 0: no truncation.
   */
  uint32_t truncate_to;
  /*
   * VISTREL_WINDOW_..., VISTREL_CURVE_... or VISTREL_TABLE: how samples of more than 8 bits are
   * reduced to 8. VISTREL_WINDOW_HIGH for formats of 16 bits and for frames of bytes.
   */
  uint32_t reduction;
  /*
   * Only read for VISTREL_TABLE: the table of values 0..255, in the caller's memory for
   * the length of a call. It has either 1024 entries, one for each value of a sample's
   * highest ten bits, or one for each possible sample; of these, only entries for
   * samples whose other bits are 0 are used.
   */
  uint32_t table_entries;
  const uint16_t* table;
  uint32_t excess;       /* VISTREL_REJECT or VISTREL_MASK */
  uint32_t edges;        /* VISTREL_EDGES_...; makes no difference to mono frames */
  vistrel_region region; /* all 0: the whole frame. Its size is rounded down to whole bins */
  /*
   * Preparation of the samples: off while these fields are 0. It comes before
   * everything except the check for excess bits. A sample s of the frame's significant
   * bits becomes w:
   *
   *   v = max(s - black, 0)
   *   w = min((v * gain + 2048) >> 12, full scale)      rounded, halves up
   *
   * with the black level of the sample's place, the gain of its colour in 1/4096,
   * and full scale 2^bits - 1. truncate_to applies to w.
   *
   * Places are those of the 2x2 block at the frame's pixel (0, 0), row by row, like the
   * letters of a phase's name: pixel (x, y) has black[2 * (y % 2) + x % 2], in mono
   * frames too.
   */
  uint32_t black[4]; /* 0 to full scale */
  uint32_t white;    /* where the sensor clips, above all black levels; 0: full scale. Only read
                        by the finishing stage and for measuring gains */
  uint32_t white_balance; /* VISTREL_BALANCE_...; must be NONE except for Bayer frames */
  uint32_t gains[3];      /* red, green, blue: 1 to VISTREL_GAIN_MAX; only read for
                             VISTREL_BALANCE_GAINS */
  /*
   * 0 and 1: the caller's thread does all the work. From 2: up to that many threads
   * share it, fewer for small frames and one for raw gray with binning. They are those
   * of `team`, which include the caller's thread, or those on which `run` calls tasks.
   * Set one of the two; the other must be null. The image is the same with any number
   * of threads.
   */
  uint32_t threads; /* at most VISTREL_MAX_THREADS, and no more than the team has */
  vistrel_run* run;
  void* run_context; /* passed to `run` */
  vistrel_team* team;
  /*
   * Null: none. Only for Bayer and mono frames. A sample s of the frame's significant
   * bits becomes
   *
   *   v = max(s - dark - black, 0)
   *   f = min((v * flat + 2048) >> 12, full scale)
   *
   * and f takes the place of max(s - black, 0) in other formulas. A hot pixel gets the
   * rounded mean (halves up) of the f of the nearest two pixels of its row, one on each
   * side, that are not hot and, in a mosaic, have its colour; that of the one if there is
   * only one; 0 if there is none. While rows are pushed, the memory of its levels and
   * hot pixels must stay valid.
   */
  const vistrel_calibration* calibration;
  /*
   * Null: none, so samples and pixels stay linear and exact. Only for Bayer and mono
   * frames, without raw gray, and with VISTREL_WINDOW_HIGH. Formats of 16 bits then have
   * 16 significant ones, from any frame.
   */
  const vistrel_finish* finish;
  uint32_t destination; /* VISTREL_READ_... */
  uint32_t bin_mode;    /* VISTREL_BIN_SUM or VISTREL_BIN_MEAN */
  uint32_t orientation; /* 0, or VISTREL_UPRIGHT to VISTREL_TURNED_270. A turned or mirrored image
                           is made upright first, in memory for all its pixels */
  uint32_t reserved[7]; /* 0 */
} vistrel_conversion;

/* The shape of a result, and all sizes. */
typedef struct vistrel_layout {
  uint32_t width, height; /* pixels */
  uint32_t channels;      /* samples per pixel: 1, 3 or 4 */
  uint32_t bits;          /* significant bits of a sample, in its low bits: 8..16 */
  size_t row_bytes;   /* bytes of a row of the image or of its first plane, without padding; with
                         VISTREL_NV12, rounded up to whole pairs */
  size_t bytes;       /* of all rows and planes, with a stride of row_bytes */
  size_t frame_bytes; /* minimum size of the frame, with its stride */
  /*
   * Memory that a conversion needs besides frame and image, which its stream keeps: a
   * few rows for each thread. Only binned raw gray needs memory for whole images. Pushed
   * rows need up to 10 rows of samples and 4 KiB more.
   */
  size_t working_bytes;
  uint32_t reserved[4]; /* written as 0 */
} vistrel_layout;

/*
 * Memory for a result. With a negative stride, each row lies before the one above it in
 * the image, so the last row is lowest in memory; planar formats have no negative
 * stride. Bytes between rows are not written. They may be part of the frame, except in
 * planar formats.
 */
typedef struct vistrel_image {
  void* pixels;          /* first pixel of the image's top row, at any alignment */
  size_t size;           /* bytes that may be written, from the row that is lowest in memory */
  ptrdiff_t stride;      /* bytes from row to row; 0: rows have no padding */
  uint32_t reserved[10]; /* 0 */
} vistrel_image;

/* A pixel format. */
typedef struct vistrel_format {
  const char* name;          /* "BGR24" */
  uint32_t code;             /* VISTREL_MONO8 to VISTREL_I444 */
  uint32_t channels;         /* samples per pixel: 1, 3 or 4 */
  uint32_t bytes_per_sample; /* 1 or 2 */
  uint32_t mono;             /* 1: for mono frames, 0: for Bayer and BGR frames */
  uint32_t planes;           /* 1 to 3 */
  uint32_t reserved[3];      /* 0 */
} vistrel_format;

/* A demosaic algorithm. */
typedef struct vistrel_algorithm {
  const char* name;     /* short, lower case, for command lines */
  uint32_t code;        /* VISTREL_BILINEAR to VISTREL_DIRECTIONAL */
  uint32_t max_bits;    /* maximum significant bits of a sample */
  uint32_t min_size;    /* minimum width and height of a region, in sensor pixels; padded edges
                           allow any region of a mosaic from 2x2 up */
  uint32_t reserved[5]; /* 0 */
} vistrel_algorithm;

/* Filters. */
enum {
  VISTREL_FILTER_WEIGHTS = 0, /* the weighted sum of 3x3 pixels, divided */
  VISTREL_FILTER_BOX = 1,     /* the mean of 2x2 samples; single-channel formats only */
  VISTREL_FILTER_FIVE = 2     /* the mean of five samples of one colour of a mosaic;
                                 single-channel formats only */
};

/* What a filter computes. */
typedef struct vistrel_filter_settings {
  uint32_t filter;      /* VISTREL_FILTER_... */
  int32_t divisor;      /* not 0; only read for VISTREL_FILTER_WEIGHTS, like the weights */
  int32_t weights[9];   /* row by row, upper left first */
  uint32_t reserved[5]; /* 0 */
} vistrel_filter_settings;

/* Finished pixels to filter, in the caller's memory for the length of a call. */
typedef struct vistrel_picture {
  const void* pixels;   /* first pixel, at any alignment */
  size_t size;          /* bytes that may be read from there */
  size_t stride;        /* bytes from row to row; 0: rows have no padding */
  uint32_t width;       /* pixels, from 1 */
  uint32_t height;      /* pixels, from 1 */
  uint32_t format;      /* any single-plane format except BGR48 and RGB48 */
  uint32_t reserved[5]; /* 0 */
} vistrel_picture;

#endif
