/* Status codes, and why a call was rejected. Plain C. */
#ifndef VISTREL_STATUS_H
#define VISTREL_STATUS_H

#include <stdint.h>

/* Status codes. Their values are stable; new ones are added at the end. */
enum {
  VISTREL_OK = 0,
  VISTREL_NULL_POINTER = 1,      /* a pointer that must not be null is null */
  VISTREL_BAD_SIZE = 2,          /* width or height is 0 */
  VISTREL_BAD_BITS = 3,          /* bytes_per_sample or bits */
  VISTREL_BAD_STRIDE = 4,        /* a stride is shorter than a row, or must be 0 */
  VISTREL_BAD_PHASE = 5,         /* no such phase, or not one for this call */
  VISTREL_BAD_FORMAT = 6,        /* no such format, or not one for this frame */
  VISTREL_BAD_ALGORITHM = 7,     /* no such algorithm, or too many bits for it */
  VISTREL_BAD_BINNING = 8,       /* binning is not 1..4, or bin_mode */
  VISTREL_BAD_REGION = 9,        /* the region extends beyond the frame */
  VISTREL_REGION_TOO_SMALL = 10, /* no whole bin is left, or less than an algorithm needs */
  VISTREL_BAD_REDUCTION = 11,    /* no such reduction, or not one for this frame and format */
  VISTREL_BAD_EXCESS = 12,       /* excess is neither VISTREL_REJECT nor VISTREL_MASK */
  VISTREL_EXCESS_SAMPLE = 13,    /* a sample has bits set outside the significant ones */
  VISTREL_TOO_LARGE = 14,        /* more than the library can count or memory can hold */
  VISTREL_SHORT_BUFFER = 15,     /* a buffer ends before its last row does */
  VISTREL_OVERLAP = 16,          /* input and output share bytes */
  VISTREL_NO_MEMORY = 17,        /* an allocation failed */
  VISTREL_INTERNAL = 18,         /* a bug in this layer; please report it */
  VISTREL_BAD_THRESHOLD = 19,    /* threshold is not 0..255, or the algorithm has none */
  VISTREL_BAD_TRUNCATION = 20,   /* truncate_to is neither 0 nor 8..16 */
  VISTREL_BAD_TABLE = 21,        /* the table has the wrong size or an entry above 255 */
  VISTREL_BAD_GRAY = 22,         /* no such gray, or not one for this algorithm */
  VISTREL_BAD_PACKING = 23,      /* no such packing */
  VISTREL_BAD_RESERVED = 24,     /* a reserved field is not 0 */
  VISTREL_BAD_ALIGNMENT = 25,    /* no such alignment */
  VISTREL_BAD_LEVEL = 26,        /* this machine has no such level */
  VISTREL_BAD_STREAM = 27,       /* not acquired, or no conversion to push to */
  VISTREL_NO_STREAM = 28,        /* all streams are in use */
  VISTREL_BAD_WAIT = 29,         /* wait is neither VISTREL_WAIT nor VISTREL_NO_WAIT */
  VISTREL_BAD_BLACK = 30,        /* a black level is above full scale */
  VISTREL_BAD_BALANCE = 31,      /* no such white balance, not one for this frame, or a bad gain */
  VISTREL_BAD_EDGES = 32,        /* no such edges, or padded ones with raw gray */
  VISTREL_BUSY_STREAM = 33,      /* a conversion is running on the stream, or takes pushed rows */
  VISTREL_BAD_CONTINUOUS = 34,   /* continuous is neither 0 nor 1 */
  VISTREL_BAD_WHITE = 35,        /* white is above full scale, or not above black */
  VISTREL_BAD_THREADS = 36,      /* too many threads, or no team and no function to run tasks */
  VISTREL_BAD_TEAM = 37,         /* no such team, a busy one, or one of a parent process */
  VISTREL_NO_THREAD = 38,        /* the system did not start a thread */
  VISTREL_RUN_FAILED = 39,       /* the caller's function did not run all tasks */
  VISTREL_BAD_ROWS = 40,         /* no rows, or more than there are */
  VISTREL_BAD_DESTINATION = 41,  /* destination is neither VISTREL_READ_SOON nor
                                    VISTREL_READ_LATER */
  VISTREL_BAD_FILTER = 42,       /* no such filter, or a divisor of 0 */
  VISTREL_BAD_CALIBRATION = 43,  /* a calibration that is not for this frame, or a bad hot pixel */
  VISTREL_BAD_FINISH = 44,      /* a finish that is not for this conversion, or a bad field of it */
  VISTREL_BAD_ORIENTATION = 45, /* no such orientation, or not one for this call */
  VISTREL_BAD_TRANSFER = 46,    /* no such transfer curve, or not a parameter of it */
  VISTREL_BAD_COUNT = 47        /* count is not 2..65536 */
};

/*
 * Why a call was rejected. All texts are printable ASCII, end in a zero and are
 * empty with VISTREL_OK; other characters that a caller passed appear as "?".
 * `argument` is empty if no argument is at fault: with VISTREL_NO_MEMORY,
 * VISTREL_INTERNAL and VISTREL_NO_STREAM.
 */
typedef struct vistrel_error {
  int32_t status;       /* one of the codes above */
  char argument[48];    /* a parameter, or a field of one: "wait", "frame.stride",
                           "conversion.gains[2]" */
  char value[64];       /* its value; may be empty */
  char reason[376];     /* what is wrong with it, or what is allowed */
  char text[496];       /* "ARGUMENT VALUE: REASON", "ARGUMENT: REASON" or "REASON" */
  uint32_t reserved[9]; /* written as 0 */
} vistrel_error;

#endif
