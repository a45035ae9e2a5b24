#include "host/validate.h"

#include "host/status.h"

namespace vistrel::host {
namespace {

void checkFrame(const vistrel_frame& f) {
  if (!f.width) refuse(VISTREL_BAD_SIZE, "width 0: a frame has 1 column or more");
  if (!f.height) refuse(VISTREL_BAD_SIZE, "height 0: a frame has 1 row or more");
  if (f.bytes_per_sample != 1 && f.bytes_per_sample != 2)
    refuse(VISTREL_BAD_BITS, "bytes_per_sample {}: 1 or 2 is allowed", f.bytes_per_sample);
  if (f.bytes_per_sample == 1 && f.bits != 8)
    refuse(VISTREL_BAD_BITS, "bits {}: a sample of one byte has 8", f.bits);
  if (f.bits < 8 || f.bits > 16) refuse(VISTREL_BAD_BITS, "bits {}: 8 to 16 are allowed", f.bits);
  const uint64_t row = uint64_t{f.width} * f.bytes_per_sample;
  if (f.stride && f.stride < row)
    refuse(VISTREL_BAD_STRIDE, "stride {}: a row of {} samples has {} bytes", f.stride, f.width,
           row);
  if (!vistrel_phase_name(f.phase))
    refuse(VISTREL_BAD_PHASE, "phase {}: allowed are {}", f.phase, phaseList());
}

void checkFormat(const vistrel_frame& f, const vistrel_conversion& c) {
  const bool colour = f.phase != VISTREL_MONO;
  const Format* format = findFormat(c.format);
  if (!format || format->colour != colour)
    refuse(VISTREL_BAD_FORMAT, "format {}: a {} frame becomes {}",
           format ? format->name : fmt::to_string(c.format), vistrel_phase_name(f.phase),
           formatList(colour));
  if (format->sampleBytes == 2 && f.bytes_per_sample == 1)
    refuse(VISTREL_BAD_FORMAT, "format {}: it needs a frame of 2 bytes a sample, this one has 1",
           format->name);
}

void checkAlgorithm(const vistrel_frame& f, const vistrel_conversion& c) {
  const vistrel_algorithm* a = findAlgorithm(c.algorithm);
  if (!a) refuse(VISTREL_BAD_ALGORITHM, "algorithm {}: there is {}", c.algorithm, algorithmList());
  if (f.bits > a->max_bits)
    refuse(VISTREL_BAD_ALGORITHM, "algorithm {}: made for {} bits at most, the frame has {}",
           a->name, a->max_bits, f.bits);
}

void checkLutMode(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.lut_mode > 7) refuse(VISTREL_BAD_LUT_MODE, "lut_mode {}: 0 to 7 are allowed", c.lut_mode);
  if (c.lut_mode == 0) return;
  const Format& format = *findFormat(c.format);
  if (format.sampleBytes == 2)
    refuse(VISTREL_BAD_LUT_MODE, "lut_mode {}: format {} keeps all bits and allows 0 alone",
           c.lut_mode, format.name);
  const uint32_t least = c.lut_mode > 2 ? 10 : 8 + c.lut_mode;
  if (f.bits < least)
    refuse(VISTREL_BAD_LUT_MODE, "lut_mode {}: it needs {} bits or more, the frame has {}",
           c.lut_mode, least, f.bits);
}

}  // namespace

void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  checkFrame(frame);
  checkFormat(frame, conversion);
  if (frame.phase != VISTREL_MONO) checkAlgorithm(frame, conversion);
  if (conversion.binning < 1 || conversion.binning > 4)
    refuse(VISTREL_BAD_BINNING, "binning {}: 1 to 4 are allowed", conversion.binning);
  checkLutMode(frame, conversion);
  if (conversion.excess != VISTREL_REFUSE && conversion.excess != VISTREL_MASK)
    refuse(VISTREL_BAD_EXCESS, "excess {}: 0 (refuse) and 1 (mask) are allowed", conversion.excess);
}

}  // namespace vistrel::host
