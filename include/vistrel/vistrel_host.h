/*
 * libvistrelhost: libVistrel's conversions behind functions that check every argument.
 *
 * Plain C. A caller describes its frame and the result it wants, asks for the
 * layout of that result, provides the memory and converts. Every function except
 * vistrel_set_level may be called from any number of threads at once. The layer has
 * its own copy of the conversions and shares nothing with a libVistrel in the same
 * process.
 *
 * Every function that can reject a call returns a status: VISTREL_OK, or the code
 * of the rejection. It also describes the rejection in the caller's vistrel_error,
 * unless that pointer is null. A rejected call writes nothing to its result, with
 * two exceptions: rows pushed before a sample with excess bits, and the image of a
 * runner that reports a failure after it has run tasks.
 *
 * Set a structure to 0 before filling it, or fill it with the function provided
 * for it. Structures have no implicit padding. All except vistrel_region end in
 * reserved fields, which must be 0 if the caller fills the structure and are 0 if the
 * library does. A later version may name a reserved field; 0 will keep today's
 * behaviour, and a version that does not know the name rejects any other value.
 * So programs and libraries of different minor versions work together.
 */
#ifndef VISTREL_HOST_H
#define VISTREL_HOST_H

#include <stddef.h>
#include <stdint.h>

#include "vistrel/vistrel_finish.h"
#include "vistrel/vistrel_types.h"
#include "vistrel/vistrel_version.h"

#ifdef __cplusplus
extern "C" {
#endif

/* VISTREL_VERSION of the loaded library, which may be older or newer than the headers. */
uint32_t vistrel_version(void);

/*
 * Fills conversion with the defaults for frame: 8 bits per sample, mono or BGR
 * depending on the frame's phase, bilinear, no binning, no truncation, the highest
 * bits, the whole frame; samples with excess bits are rejected. Only reads
 * frame->phase. If frame is null, the defaults are those for Bayer frames; if
 * conversion is null, nothing happens.
 */
void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion);

/*
 * Checks everything that can be checked without the samples, and describes the
 * result. Reads neither frame->samples nor frame->size, so a caller can ask before it
 * allocates anything.
 */
int32_t vistrel_get_layout(const vistrel_frame* frame, const vistrel_conversion* conversion,
                           vistrel_layout* layout, vistrel_error* error);

/*
 * Converts frame into image, on a stream that it acquires and releases. While all
 * streams are in use, it allocates its own memory and frees it. It never waits.
 * The work is done on the caller's thread.
 */
int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                        const vistrel_image* image, vistrel_error* error);

/*
 * A stream: the memory that a conversion needs besides frame and image, mostly a few
 * rows. It serves one conversion at a time. Until it is trimmed, it keeps as much as
 * the largest of its conversions needed. So a worker that holds a stream allocates
 * nothing from its second frame of a kind on, and its memory stays in the caches.
 *
 * A process may fork at any time, from any thread, and the child may convert. In the
 * child, a stream stays acquired if the forking thread acquired it or converted on it
 * last; all others are free.
 *
 * A conversion must run to its end. A signal handler that leaves it with longjmp, for
 * instance because a mapped file became shorter, loses the stream: nobody can use or
 * release it until the process ends.
 */
typedef struct vistrel_stream vistrel_stream;

/* How many streams there are. */
enum { VISTREL_MAX_STREAMS = 128 };

/* What to do while all streams are in use. */
enum {
  VISTREL_WAIT = 0,   /* wait until one is released */
  VISTREL_NO_WAIT = 1 /* reject the call: VISTREL_NO_STREAM */
};

/*
 * Acquires a stream, which belongs to the caller until the caller releases it. The
 * wait is not a cancellation point: a thread cancelled by pthread_cancel meanwhile
 * continues to wait, and the cancellation takes effect after the call.
 */
int32_t vistrel_stream_acquire(uint32_t wait, vistrel_stream** stream, vistrel_error* error);

/* vistrel_convert on this stream. Rejected while another conversion runs on it. */
int32_t vistrel_stream_convert(vistrel_stream* stream, const vistrel_frame* frame,
                               const vistrel_conversion* conversion, const vistrel_image* image,
                               vistrel_error* error);

/*
 * Makes only these rows of the image, with the same bytes as in the whole conversion;
 * image describes the whole image. Rejected for raw gray with binning. The check for
 * excess bits covers the frame's rows that these rows are made from, and up to 9 rows
 * above and below. Gray-world gains are those of the whole frame; each call measures
 * them.
 */
int32_t vistrel_convert_rows(vistrel_stream* stream, const vistrel_frame* frame,
                             const vistrel_conversion* conversion, const vistrel_image* image,
                             uint32_t first, uint32_t rows, vistrel_error* error);

/*
 * Converts a frame that arrives row by row. vistrel_stream_begin checks everything
 * except the samples, and reads neither frame->samples nor frame->size. The caller
 * then pushes the rows of the whole frame from top to bottom, any number at a time:
 * vistrel_stream_push reads `rows` rows, frame->stride bytes apart, from memory of
 * `size` bytes, which it does not need after it returns. The image's memory must stay
 * valid until the frame's last row has been pushed, which completes the conversion,
 * or until vistrel_stream_abort. No other argument of vistrel_stream_begin, such as
 * the table, is read after that call. Until the conversion ends, the stream rejects
 * others; releasing the stream aborts it.
 *
 * Rows of the image become final, from top to bottom and with the same bytes as in
 * vistrel_stream_convert, as soon as the rows that they are made from have been
 * pushed: at most 9 below those that their pixels cover, and in NV12 and I420 those of
 * both rows of a pair.
 * Unless final_rows is null, it receives their number, even if a sample with excess
 * bits ends the conversion. The other rows of the image are then unspecified. Any
 * other rejected push leaves the conversion as it was.
 *
 * Rejected: raw gray with binning and gray-world gains, which need the whole frame;
 * more than one thread.
 */
int32_t vistrel_stream_begin(vistrel_stream* stream, const vistrel_frame* frame,
                             const vistrel_conversion* conversion, const vistrel_image* image,
                             vistrel_error* error);
int32_t vistrel_stream_push(vistrel_stream* stream, const void* samples, size_t size, uint32_t rows,
                            uint32_t* final_rows, vistrel_error* error);
int32_t vistrel_stream_abort(vistrel_stream* stream, vistrel_error* error);

/*
 * Starts a team of 2 to VISTREL_MAX_THREADS threads, for conversion.team: the thread
 * that converts, and workers. Between conversions, the workers spin for 20 microseconds,
 * then sleep. They take no signals. A team serves one conversion at a time and rejects
 * others meanwhile. A child of fork has no workers: it can only destroy the teams of
 * its parent.
 */
int32_t vistrel_team_create(uint32_t threads, vistrel_team** team, vistrel_error* error);

/* Ends the workers. From then on, the pointer is rejected. */
int32_t vistrel_team_destroy(vistrel_team* team, vistrel_error* error);

/* Releases a stream. From then on, the pointer is rejected, even after somebody else has acquired
   the stream: no pointer is handed out twice. */
int32_t vistrel_stream_release(vistrel_stream* stream, vistrel_error* error);

/* Frees the memory that a stream keeps. Its next conversion allocates what it needs. */
int32_t vistrel_stream_trim(vistrel_stream* stream, vistrel_error* error);

/* Frees the memory of all streams that nobody has acquired. */
void vistrel_trim(void);

/*
 * Measures the gains that make the means of the three colours of a region equal
 * (gray-world), in the order red, green, blue. Of the conversion, only black, white,
 * excess and region are read. Samples count by their significant bits alone: a sample s
 * as max(s - black, 0), with the black level of its place. If white is 0, every sample
 * of the region counts; otherwise, those of all 2x2 blocks within it that begin at even
 * coordinates of the frame and have no sample s >= white. The mean m of a colour is
 * that of all its samples, for green those of both kinds of rows, in 1/256, rounded,
 * halves up. With the largest mean M
 *
 *   gain = min((4096 * M + m / 2) / m, VISTREL_GAIN_MAX)      in integers
 *
 * so the smallest gain is 1. A mean of 0 and a colour without samples have the largest
 * gain; if all three means are 0, all gains are 1. Rejected for frames that are not a
 * mosaic.
 */
int32_t vistrel_measure_gains(const vistrel_frame* frame, const vistrel_conversion* conversion,
                              uint32_t gains[3], vistrel_error* error);

/*
 * Measures the gains that make a frame of an evenly lit surface even, for
 * vistrel_calibration: one of 16 bits, in 1/4096, for each pixel, in rows without
 * padding, at any alignment. `size` is the bytes that may be written there. Of the conversion,
 * black and the dark levels of its calibration are read. With v = max(s - dark - black, 0) and the
 * mean m of v at all pixels of the same place in 1/256, rounded, halves up
 *
 *   gain = min((16 * m + v / 2) / v, 65535)                   in integers
 *
 * The gain of v = 0 is 65535, or 4096 if m is 0. Excess bits are ignored.
 */
int32_t vistrel_measure_flat(const vistrel_frame* frame, const vistrel_conversion* conversion,
                             void* flat, size_t size, vistrel_error* error);

/* A packed frame, in the caller's memory for the length of a call. */
typedef struct vistrel_packed {
  const void* bytes;    /* first byte */
  size_t size;          /* bytes that may be read from there */
  size_t stride;        /* bytes from row to row; 0: each row begins at the next whole byte */
  uint32_t width;       /* pixels, from 1 */
  uint32_t height;      /* pixels, from 1 */
  uint32_t packing;     /* VISTREL_PACKING_... */
  uint32_t bits;        /* bits of a sample, as the packing allows */
  uint32_t continuous;  /* 1: no byte boundary between rows; else 0 */
  uint32_t reserved[5]; /* 0 */
} vistrel_packed;

/* The sizes of a packed frame and of its unpacked samples. */
typedef struct vistrel_packed_layout {
  size_t row_bytes;          /* of a packed row without padding; if continuous, of all rows */
  size_t bytes;              /* of the packed frame, without padding after its last row */
  size_t unpacked_bytes;     /* width * height * bytes_per_sample */
  uint32_t bytes_per_sample; /* unpacked: 1 for VISTREL_PACKING_BYTES, else 2 */
  uint32_t reserved[5];      /* written as 0 */
} vistrel_packed_layout;

/* Checks the description and computes the sizes. Reads neither packed->bytes nor packed->size. */
int32_t vistrel_get_packed_layout(const vistrel_packed* packed, vistrel_packed_layout* layout,
                                  vistrel_error* error);

/*
 * Unpacks a packed frame into `samples`, memory of `size` bytes at any alignment:
 * rows of bytes, or of 16-bit samples in this machine's byte order, without
 * padding, as a vistrel_frame takes them. Samples of the packings LITTLE and BIG
 * keep all 16 bits, also those above `bits`.
 */
int32_t vistrel_unpack(const vistrel_packed* packed, void* samples, size_t size,
                       vistrel_error* error);

/*
 * Filters finished pixels into image, which has the picture's size and format; in
 * place if image has the picture's memory and stride. Acquires and releases a stream
 * as vistrel_convert does, and uses its memory for a copy of the pixels, or for two if
 * image has padding, or 16-bit samples at odd addresses.
 *
 * A weighted sum is divided, truncated toward zero and clamped to 0..255, or to
 * 0..1023 for 16-bit samples. The outermost pixels on every side stay unchanged.
 * VISTREL_FILTER_BOX leaves the last row and the last column unchanged, for 16-bit
 * samples the last three columns; VISTREL_FILTER_FIVE two rows at the top, two at the
 * bottom and the last four columns. A picture in which nothing would change is
 * rejected. Pixels of several bytes are filtered as libVistrel does: with three, the
 * weights left and right of the centre apply to the bytes next to the centre byte;
 * with four, the lower left weight applies to the byte just before the lower tap's.
 */
int32_t vistrel_filter(const vistrel_picture* picture,
                       const vistrel_filter_settings* filter_settings, const vistrel_image* image,
                       vistrel_error* error);

/* The format at an index, counted from 0; null past the last one. */
const vistrel_format* vistrel_format_at(size_t index);

/* The algorithm at an index, counted from 0; null past the last one. */
const vistrel_algorithm* vistrel_algorithm_at(size_t index);

/* "grbg", "bggr", "rggb", "gbrg", "mono", "bgr"; null for any other value. */
const char* vistrel_phase_name(uint32_t phase);

/* "BYTES", "LITTLE", "BIG", "PFNC", "GIGE", "MIPI"; null for any other value. */
const char* vistrel_packing_name(uint32_t packing);

/* "VISTREL_OK", "VISTREL_NULL_POINTER" and so on; null for values that are not a status code. */
const char* vistrel_status_name(int32_t status);

/* The code that a name, in lower or upper case, stands for: of a phase, of a packing, or of a row
   of the tables of formats and algorithms. */
int32_t vistrel_parse_phase(const char* name, uint32_t* phase, vistrel_error* error);
int32_t vistrel_parse_packing(const char* name, uint32_t* packing, vistrel_error* error);
int32_t vistrel_parse_format(const char* name, uint32_t* format, vistrel_error* error);
int32_t vistrel_parse_algorithm(const char* name, uint32_t* algorithm, vistrel_error* error);

/*
 * The phase of a frame that begins at pixel (x, y) of a frame of the given phase:
 * of a crop, or of a mirrored frame, whose first pixel was the last of its row
 * (width - 1, 0) or of its column (0, height - 1). Returns a value that is not a Bayer
 * phase unchanged.
 */
uint32_t vistrel_phase_at(uint32_t phase, uint32_t x, uint32_t y);

/*
 * The colour of the filter at pixel (x, y) of a frame of that phase: VISTREL_RED,
 * VISTREL_GREEN or VISTREL_BLUE; VISTREL_NO_COLOUR for VISTREL_MONO and for values
 * that are not a phase.
 */
uint32_t vistrel_colour_at(uint32_t phase, uint32_t x, uint32_t y);

/*
 * The instruction sets that the library can use on this machine, in ascending order
 * from 0: "base", "ssse3", "sse41", "avx2", "avx512" on x86, "base", "neon" on
 * 64-bit ARM; null past the last one. All give the same pixels.
 */
const char* vistrel_level_name(size_t level);

/* The level in use: the last one, unless another has been set. */
size_t vistrel_level(void);

/* Sets the level, for tests and benchmarks. No conversion may run at the same time. */
int32_t vistrel_set_level(size_t level, vistrel_error* error);

#ifdef __cplusplus
}
#endif

#endif
