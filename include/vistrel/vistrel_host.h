/*
 * libvistrelhost: libVistrel behind functions that check every argument.
 *
 * Plain C. A caller describes its frame and the result it wants, asks for the
 * layout of that result, provides the memory and converts. The layer loads
 * libVistrel by itself and owns its streams. Every function but vistrel_set_level
 * may be called from any number of threads at once. A process that uses this layer
 * must not call libVistrel's Img entries beside it, since both would fill the same
 * table of streams.
 *
 * Every function that can refuse returns a status: VISTREL_OK, or the code of
 * the refusal. It also writes the code, and a text that names the argument, the
 * value it got and what is allowed, into the caller's vistrel_error, unless that
 * pointer is null. Nothing is written to a refused result, unless memory ran out.
 *
 * Set a structure to 0 before filling it, or fill it by the function that there
 * is for it. Structures that callers fill end in reserved fields, which must be
 * 0. A later version may give one of them a name; its 0 will mean what is done
 * today, and a version that does not know the name refuses any other value. So
 * programs and libraries of different minor versions understand each other.
 */
#ifndef VISTREL_HOST_H
#define VISTREL_HOST_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Status codes. Their values are stable; new ones are added at the end. */
enum {
  VISTREL_OK = 0,
  VISTREL_NULL_POINTER = 1,      /* a pointer that may not be null is null */
  VISTREL_BAD_SIZE = 2,          /* width or height is 0 */
  VISTREL_BAD_BITS = 3,          /* bytes_per_sample or bits */
  VISTREL_BAD_STRIDE = 4,        /* a stride is shorter than a row */
  VISTREL_BAD_PHASE = 5,         /* phase is none of the five */
  VISTREL_BAD_FORMAT = 6,        /* no such format, or not one for this frame */
  VISTREL_BAD_ALGORITHM = 7,     /* no such algorithm, or too many bits for it */
  VISTREL_BAD_BINNING = 8,       /* binning is not 1..4 */
  VISTREL_BAD_REGION = 9,        /* the region leaves the frame */
  VISTREL_REGION_TOO_SMALL = 10, /* nothing is left, or less than a demosaic needs */
  VISTREL_BAD_REDUCTION = 11,    /* no such mode, or not one for this frame and format */
  VISTREL_BAD_EXCESS = 12,       /* excess is neither VISTREL_REFUSE nor VISTREL_MASK */
  VISTREL_EXCESS_SAMPLE = 13,    /* a sample has bits beside the frame's significant ones */
  VISTREL_TOO_LARGE = 14,        /* more samples than the library can count */
  VISTREL_SHORT_BUFFER = 15,     /* a buffer ends before its last row does */
  VISTREL_OVERLAP = 16,          /* frame and image share memory */
  VISTREL_NO_MEMORY = 17,        /* an allocation failed */
  VISTREL_INTERNAL = 18,         /* a fault of this layer; please report it */
  VISTREL_BAD_THRESHOLD = 19,    /* threshold is not 0..255, or the algorithm has none */
  VISTREL_BAD_TRUNCATION = 20,   /* truncate_to is neither 0 nor 8..16 */
  VISTREL_BAD_TABLE = 21,        /* the table has the wrong size or an entry above 255 */
  VISTREL_BAD_GRAY = 22,         /* gray is neither of the two, or not for this algorithm */
  VISTREL_BAD_PACKING = 23,      /* no such packing */
  VISTREL_BAD_RESERVED = 24,     /* a reserved field is not 0 */
  VISTREL_BAD_ALIGNMENT = 25,    /* alignment is neither of the two */
  VISTREL_BAD_LEVEL = 26,        /* this machine has no such level */
  VISTREL_BAD_STREAM = 27,       /* the stream was not taken, or converts right now */
  VISTREL_NO_STREAM = 28,        /* all streams are out */
  VISTREL_BAD_WAIT = 29,         /* wait is neither of the two */
  VISTREL_BAD_BLACK = 30,        /* black is above full scale */
  VISTREL_BAD_BALANCE = 31,      /* no such white balance, or not for this frame; a gain's limits */
  VISTREL_BAD_EDGES = 32         /* edges is neither of the two, or not with raw gray */
};

/* What a refusal says, in the caller's memory. */
typedef struct vistrel_error {
  int32_t status; /* one of the codes above */
  char text[252]; /* UTF-8, ended by a zero; empty with VISTREL_OK */
} vistrel_error;

/* Bayer phases: the mosaic's 2x2 block at pixel (0, 0), row by row. Mono: no colour filters. */
enum { VISTREL_GRBG = 0, VISTREL_BGGR = 1, VISTREL_RGGB = 2, VISTREL_GBRG = 3, VISTREL_MONO = 4 };

/* Where the significant bits of a word are. */
enum {
  VISTREL_LOW_BITS = 0, /* in the lowest bits, the others 0 */
  VISTREL_HIGH_BITS = 1 /* in the highest bits, the others 0 */
};

/* A raw frame, in the caller's memory for the length of a call. */
typedef struct vistrel_frame {
  const void* samples;       /* first sample: bytes, or 16-bit words of this machine's order */
  size_t size;               /* bytes that may be read from there */
  size_t stride;             /* bytes from row to row, at any alignment; 0: rows are packed */
  uint32_t width;            /* pixels, from 1 */
  uint32_t height;           /* pixels, from 1 */
  uint32_t bytes_per_sample; /* 1 or 2 */
  uint32_t bits;             /* significant bits: 8 of a byte, 8..16 of a word */
  uint32_t phase;            /* VISTREL_GRBG to VISTREL_MONO */
  uint32_t alignment;        /* VISTREL_LOW_BITS or VISTREL_HIGH_BITS */
  uint32_t reserved[4];      /* 0 */
} vistrel_frame;

/* A part of a frame, in sensor pixels. */
typedef struct vistrel_region {
  uint32_t x, y;          /* left upper corner */
  uint32_t width, height; /* size, from 1 */
} vistrel_region;

/* Demosaic algorithms. */
enum {
  VISTREL_BILINEAR = 0, /* the plain mean of the nearest sites */
  VISTREL_EDGE = 1,     /* colour differences along edges; takes a threshold */
  VISTREL_NEAR = 2,     /* nearest neighbours, green along an edge */
  VISTREL_LAROCHE = 3,  /* Laroche and Prescott: colours as differences to green */
  VISTREL_HAMILTON = 4, /* Hamilton and Adams: colours corrected by second differences */
  VISTREL_VNG = 5,      /* Chang, Cheung and Pang: variable number of gradients */
  VISTREL_COK = 6,      /* Cok: colours as ratios to green */
  VISTREL_KIMMEL = 7,   /* Kimmel: ratios to green, weighted by gradients */
  VISTREL_GROUPING = 8, /* Lin: pixel grouping */
  VISTREL_AHD = 256     /* Hirakawa and Parks: adaptive homogeneity-directed */
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
  VISTREL_RGB48 = 259   /* 16-bit samples red, green, blue */
};

/* How samples of more than 8 bits become 8. Windows keep eight consecutive bits, clamped. */
enum {
  VISTREL_WINDOW_HIGH = 0,   /* the highest eight bits */
  VISTREL_WINDOW_MIDDLE = 1, /* one place lower; from 9 bits up */
  VISTREL_WINDOW_LOW = 2,    /* two places lower; from 10 bits up */
  VISTREL_CURVE_2 = 3,       /* tone curves, from 10 bits up */
  VISTREL_CURVE_3 = 4,
  VISTREL_CURVE_4 = 5,
  VISTREL_CURVE_5 = 6,
  VISTREL_CURVE_6 = 7,
  VISTREL_TABLE = 10 /* the conversion's own table, for 10 to 12 bits */
};

/* Where the gray of VISTREL_GRAY8 and VISTREL_GRAY16 comes from. */
enum {
  VISTREL_LUMA = 0, /* (114 blue + 587 green + 299 red) / 1000 of the finished colours, rounded */
  VISTREL_RAW_GRAY = 1 /* the library's own: one too low here and there; rows mixed when binned */
};

/* What to do with samples that have bits set beside the frame's significant ones. */
enum {
  VISTREL_REFUSE = 0, /* refuse the frame and say where the first one is */
  VISTREL_MASK = 1    /* drop those bits */
};

/* White balance, by a gain for each colour. */
enum {
  VISTREL_BALANCE_NONE = 0,      /* all gains are 1 */
  VISTREL_BALANCE_GAINS = 1,     /* those of the conversion */
  VISTREL_BALANCE_GRAY_WORLD = 2 /* those of vistrel_measure_gains */
};

/* A gain of 1, and the largest one: 16. */
enum { VISTREL_GAIN_ONE = 4096, VISTREL_GAIN_MAX = 65536 };

/* What a demosaic sees beyond the region. */
enum {
  VISTREL_EDGES_NATIVE = 0, /* what the library makes up: several algorithms tint the border */
  VISTREL_EDGES_PADDED = 1  /* the frame, and beyond it the frame mirrored in its outermost rows
                               and columns, so that phases go on: 8 samples on each side, 9
                               with a binning of 3 */
};

/* The result that is wanted. vistrel_default_conversion fills it. */
typedef struct vistrel_conversion {
  /*
   * VISTREL_MONO8 or VISTREL_MONO16 for mono frames, any other format for Bayer
   * frames. Formats of 16 bits need a frame of 16-bit samples and keep its
   * significant bits.
   */
  uint32_t format;
  uint32_t algorithm; /* VISTREL_BILINEAR to VISTREL_AHD; not read for mono frames */
  uint32_t threshold; /* VISTREL_EDGE: green that varies by up to so many of 255 parts of full
                         scale is smoothed; 0 smooths none. 0 for all others */
  uint32_t gray;      /* VISTREL_LUMA or VISTREL_RAW_GRAY; read for gray formats alone */
  uint32_t binning;   /* 1..4: each block of so many pixels either way makes one; its sum is
                         divided by this number, so the image gets brighter by as much */
  /*
   * Samples of more than so many significant bits, 8..16, lose the lowest ones
   * before all else, so that algorithms made for 10 bits can have them. 0: none do.
   */
  uint32_t truncate_to;
  /*
   * VISTREL_WINDOW_..., VISTREL_CURVE_... or VISTREL_TABLE: how samples of more than 8 bits become
   * 8. VISTREL_WINDOW_HIGH for formats of 16 bits and for frames of bytes.
   */
  uint32_t reduction;
  /*
   * For VISTREL_TABLE: a value of 0..255 for each of the highest ten bits of a
   * sample, 1024, or for each sample that there can be, of which those are used
   * whose lowest bits are zero. Else not read.
   */
  const uint16_t* table;
  uint32_t table_entries;
  uint32_t excess;              /* VISTREL_REFUSE or VISTREL_MASK */
  const vistrel_region* region; /* null: the whole frame. Its size is rounded down to whole bins */
  /*
   * Preparation of the samples, off as long as these are 0, before all else but
   * the check for excess bits. Of a sample s of the frame's significant bits
   *
   *   v = max(s - black, 0)
   *   w = min((v * gain + 2048) >> 12, full scale)      rounded, a half up
   *
   * is left, with the gain of the sample's colour in 1/4096, and full scale
   * 2^bits - 1. Then truncate_to has its turn.
   */
  uint32_t black;         /* 0 to full scale */
  uint32_t white_balance; /* VISTREL_BALANCE_...; none for mono frames */
  uint32_t gains[3];      /* red, green, blue: 1 to VISTREL_GAIN_MAX; else not read */
  uint32_t edges;         /* VISTREL_EDGES_...; mono frames have none that matter */
  uint32_t reserved[8];   /* 0 */
} vistrel_conversion;

/* The shape of a result, and every size there is to know. */
typedef struct vistrel_layout {
  uint32_t width, height; /* pixels */
  uint32_t channels;      /* samples of a pixel: 1, 3 or 4 */
  uint32_t bits;          /* significant bits of a sample, in its low bits: 8..16 */
  size_t row_bytes;       /* bytes of a row of pixels, without padding */
  size_t bytes;           /* row_bytes * height */
  size_t frame_bytes;     /* least size of the frame, by its stride */
  /*
   * Memory that a conversion needs beside frame and image, at most: the stream's
   * work buffer, which stays, and copies of samples and pixels, which do not. Some
   * rows and tables come on top.
   */
  size_t working_bytes;
  uint32_t reserved[4]; /* 0 */
} vistrel_layout;

/* Memory for a result. */
typedef struct vistrel_image {
  void* pixels;  /* first pixel, at any alignment */
  size_t size;   /* bytes that may be written there */
  size_t stride; /* bytes from row to row; 0: rows are packed. Bytes between are left alone */
} vistrel_image;

/* A pixel format. */
typedef struct vistrel_format {
  const char* name;          /* "BGR24" */
  uint32_t code;             /* VISTREL_MONO8 to VISTREL_RGB48 */
  uint32_t channels;         /* samples of a pixel: 1, 3 or 4 */
  uint32_t bytes_per_sample; /* 1 or 2 */
  uint32_t mono;             /* 1: for mono frames, 0: for Bayer frames */
} vistrel_format;

/* A demosaic algorithm. */
typedef struct vistrel_algorithm {
  const char* name;  /* short, lower case, for command lines */
  uint32_t code;     /* VISTREL_BILINEAR to VISTREL_AHD */
  uint32_t max_bits; /* most significant bits that it is made for */
  uint32_t min_size; /* least width and height of a region, in sensor pixels */
} vistrel_algorithm;

/*
 * Fills conversion for frame: 8 bits a sample, mono or BGR by the frame's phase,
 * the bilinear algorithm, no binning, no reduction, the highest bits, the whole
 * frame; samples with excess bits are refused. Reads frame->phase alone. Neither may be null.
 */
void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion);

/*
 * Checks all that can be checked without the samples and describes the result.
 * frame->samples and frame->size are not read, so a caller can ask before it
 * allocates anything.
 */
int32_t vistrel_get_layout(const vistrel_frame* frame, const vistrel_conversion* conversion,
                           vistrel_layout* layout, vistrel_error* error);

/*
 * Converts frame into image, on a stream that it takes and gives back: up to 128
 * conversions run at once; further callers wait for one to end. The work is done
 * on the caller's thread.
 */
int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                        const vistrel_image* image, vistrel_error* error);

/*
 * A stream: what one conversion at a time needs beside frame and image. There are
 * 128. Each keeps about 6 bytes for every pixel of the largest colour frame it has
 * served. To hold one saves a worker from waiting, and keeps its memory warm.
 *
 * A process may fork at any time, from any thread, and the child may convert.
 * Streams that its one thread had taken are still taken there; those on which other
 * threads were converting are free.
 */
typedef struct vistrel_stream vistrel_stream;

/* What to do while all 128 are out. */
enum {
  VISTREL_WAIT = 0,   /* wait for one to come back */
  VISTREL_NO_WAIT = 1 /* refuse: VISTREL_NO_STREAM */
};

/* Takes a stream out. It belongs to the caller until it is given back. */
int32_t vistrel_stream_acquire(uint32_t wait, vistrel_stream** stream, vistrel_error* error);

/* vistrel_convert on this stream. Refused while another thread converts on it. */
int32_t vistrel_stream_convert(vistrel_stream* stream, const vistrel_frame* frame,
                               const vistrel_conversion* conversion, const vistrel_image* image,
                               vistrel_error* error);

/* Gives a stream back. The caller's pointer is no longer a stream, and never will be again: it is
   refused from then on, whoever takes the stream next. */
int32_t vistrel_stream_release(vistrel_stream* stream, vistrel_error* error);

/*
 * The gains that make the means of a frame's three colours equal, in the order
 * red, green, blue: gray-world. The mean m of a colour is that of its samples over
 * the whole frame, those under black counted as 0, in 1/256, rounded. With the
 * largest one M
 *
 *   gain = min((4096 * M + m / 2) / m, VISTREL_GAIN_MAX)      in integers
 *
 * so the smallest gain is 1. A mean of 0 has the largest gain; where all three
 * are 0 all gains are 1. Reads black and excess of the conversion alone.
 */
int32_t vistrel_measure_gains(const vistrel_frame* frame, const vistrel_conversion* conversion,
                              uint32_t gains[3], vistrel_error* error);

/*
 * How samples lie in a dump. A row's last group may have fewer samples than the
 * others; then it has the bytes that these need, ceil(samples * bits / 8).
 */
enum {
  VISTREL_PACKING_BYTES = 0,  /* 8 bits: a byte each */
  VISTREL_PACKING_LITTLE = 1, /* 8..16 bits: a word each, low byte first */
  VISTREL_PACKING_BIG = 2,    /* 8..16 bits: a word each, high byte first */
  /* 10, 12, 14 bits, PFNC's "p": a stream of bits, the lowest ones of a sample and of a byte
     first: 4 samples in 5 bytes, 2 in 3, 4 in 7. */
  VISTREL_PACKING_PFNC = 3,
  /* 10, 12 bits, GigE Vision's "Packed": 2 samples in 3 bytes: the high 8 bits of the first;
     low bits, the first one's from bit 0 and the second one's from bit 4; the high 8 of the
     second. */
  VISTREL_PACKING_GIGE = 4,
  /* 10, 12, 14 bits, MIPI CSI-2: 4 samples in 5 bytes, 2 in 3, 4 in 7: the high 8 bits of each,
     then the low bits of each as a stream that begins in bit 0. */
  VISTREL_PACKING_MIPI = 5
};

/* A packed dump, in the caller's memory for the length of a call. */
typedef struct vistrel_packed {
  const void* bytes;    /* first byte */
  size_t size;          /* bytes that may be read from there */
  size_t stride;        /* bytes from row to row; 0: each row begins at the next whole byte */
  uint32_t width;       /* pixels, from 1 */
  uint32_t height;      /* pixels, from 1 */
  uint32_t packing;     /* VISTREL_PACKING_... */
  uint32_t bits;        /* of a sample, as the packing allows */
  uint32_t continuous;  /* 1: rows follow each other without a byte boundary; 0 */
  uint32_t reserved[3]; /* 0 */
} vistrel_packed;

/* What a dump takes, packed and unpacked. */
typedef struct vistrel_packed_layout {
  size_t row_bytes;          /* of a packed row without padding; of all of them, if continuous */
  size_t bytes;              /* of the dump, padding behind its last row left out */
  uint32_t bytes_per_sample; /* unpacked: 1 of VISTREL_PACKING_BYTES, else 2 */
  size_t unpacked_bytes;     /* width * height * bytes_per_sample */
} vistrel_packed_layout;

/* Checks the description and measures the dump. Reads neither bytes nor size of it. */
int32_t vistrel_get_packed_layout(const vistrel_packed* packed, vistrel_packed_layout* layout,
                                  vistrel_error* error);

/*
 * Unpacks a dump into `samples`, memory of `size` bytes at any alignment: rows
 * without padding of bytes or of 16-bit words of this machine, as a
 * vistrel_frame takes them. Words of the packings LITTLE and BIG come out as
 * they are, whatever their highest bits hold.
 */
int32_t vistrel_unpack(const vistrel_packed* packed, void* samples, size_t size,
                       vistrel_error* error);

/* The format of the given index, counted from 0; null past the last one. */
const vistrel_format* vistrel_format_at(size_t index);

/* The algorithm of the given index, counted from 0; null past the last one. */
const vistrel_algorithm* vistrel_algorithm_at(size_t index);

/* "grbg", "bggr", "rggb", "gbrg", "mono"; null for a phase that there is not. */
const char* vistrel_phase_name(uint32_t phase);

/* The phase of that name, in small or capital letters: those of the 2x2 block, row by row. */
int32_t vistrel_parse_phase(const char* name, uint32_t* phase, vistrel_error* error);

/*
 * The phase of what begins at pixel (x, y) of a frame of that phase: of a crop,
 * and of a mirrored frame, which begins at what was its last column
 * (width - 1, 0) or its last row (0, height - 1). Values that are no Bayer phase
 * come back unchanged.
 */
uint32_t vistrel_phase_at(uint32_t phase, uint32_t x, uint32_t y);

/*
 * The sets of instructions that the library's loops can use on this machine, by
 * rising number from 0: "base", "ssse3", "sse41", "avx2", "avx512"; null past
 * the last one. All give the same pixels.
 */
const char* vistrel_level_name(size_t level);

/* The level in use: the last one, unless another has been set. */
size_t vistrel_level(void);

/* Sets it, for tests and benchmarks. No conversion may run at the same time. */
int32_t vistrel_set_level(size_t level, vistrel_error* error);

#ifdef __cplusplus
}
#endif

#endif
