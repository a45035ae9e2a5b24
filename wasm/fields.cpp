// Where the fields of the host layer's structures lie, for callers in JavaScript.
#include <cstddef>

#include "vistrel/vistrel_host.h"

namespace {

struct Field {
  const char* name;  // "frame.width"; of a structure itself: "frame"
  uint32_t offset, bytes;
};

#define STRUCTURE(s) #s, 0, sizeof(vistrel_##s)
#define FIELD(s, f) #s "." #f, offsetof(vistrel_##s, f), sizeof(vistrel_##s::f)

constexpr Field kFields[] = {
    {STRUCTURE(frame)},
    {FIELD(frame, samples)},
    {FIELD(frame, size)},
    {FIELD(frame, stride)},
    {FIELD(frame, width)},
    {FIELD(frame, height)},
    {FIELD(frame, bytes_per_sample)},
    {FIELD(frame, bits)},
    {FIELD(frame, phase)},
    {FIELD(frame, alignment)},
    {FIELD(frame, packing)},
    {STRUCTURE(conversion)},
    {FIELD(conversion, format)},
    {FIELD(conversion, algorithm)},
    {FIELD(conversion, threshold)},
    {FIELD(conversion, gray)},
    {FIELD(conversion, binning)},
    {FIELD(conversion, truncate_to)},
    {FIELD(conversion, reduction)},
    {FIELD(conversion, table_entries)},
    {FIELD(conversion, table)},
    {FIELD(conversion, excess)},
    {FIELD(conversion, edges)},
    {FIELD(conversion, region)},
    {FIELD(conversion, black)},
    {FIELD(conversion, white)},
    {FIELD(conversion, white_balance)},
    {FIELD(conversion, gains)},
    {FIELD(conversion, calibration)},
    {FIELD(conversion, finish)},
    {FIELD(conversion, bin_mode)},
    {FIELD(conversion, orientation)},
    {STRUCTURE(calibration)},
    {FIELD(calibration, dark)},
    {FIELD(calibration, dark_size)},
    {FIELD(calibration, flat)},
    {FIELD(calibration, flat_size)},
    {FIELD(calibration, hot)},
    {FIELD(calibration, hot_count)},
    {STRUCTURE(finish)},
    {FIELD(finish, highlights)},
    {FIELD(finish, exposure)},
    {FIELD(finish, matrix)},
    {FIELD(finish, transfer_points)},
    {FIELD(finish, transfer)},
    {STRUCTURE(layout)},
    {FIELD(layout, width)},
    {FIELD(layout, height)},
    {FIELD(layout, channels)},
    {FIELD(layout, bits)},
    {FIELD(layout, row_bytes)},
    {FIELD(layout, bytes)},
    {STRUCTURE(image)},
    {FIELD(image, pixels)},
    {FIELD(image, size)},
    {STRUCTURE(error)},
    {FIELD(error, status)},
    {FIELD(error, text)},
    {nullptr, 0, 0},
};

}  // namespace

extern "C" const void* vistrel_wasm_fields();
const void* vistrel_wasm_fields() { return kFields; }
