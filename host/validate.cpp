#include "host/validate.h"

#include <algorithm>

#include "host/status.h"

namespace vistrel::host {

void checkFrame(const vistrel_frame& f) {
  if (!f.width) refuse(VISTREL_BAD_SIZE, "width 0: a frame has 1 column or more");
  if (!f.height) refuse(VISTREL_BAD_SIZE, "height 0: a frame has 1 row or more");
  if (f.bytes_per_sample != 1 && f.bytes_per_sample != 2)
    refuse(VISTREL_BAD_BITS, "bytes_per_sample {}: 1 or 2 is allowed", f.bytes_per_sample);
  if (f.bytes_per_sample == 1 && f.bits != 8)
    refuse(VISTREL_BAD_BITS, "bits {}: a sample of one byte has 8", f.bits);
  if (f.bits < 8 || f.bits > 16) refuse(VISTREL_BAD_BITS, "bits {}: 8 to 16 are allowed", f.bits);
  if (f.alignment != VISTREL_LOW_BITS && f.alignment != VISTREL_HIGH_BITS)
    refuse(VISTREL_BAD_ALIGNMENT, "alignment {}: 0 (low bits) and 1 (high bits) are allowed",
           f.alignment);
  checkReserved("frame->reserved", f.reserved);
  const uint64_t row = uint64_t{f.width} * f.bytes_per_sample;
  if (f.stride && f.stride < row)
    refuse(VISTREL_BAD_STRIDE, "stride {}: a row of {} samples has {} bytes", f.stride, f.width,
           row);
  if (!vistrel_phase_name(f.phase))
    refuse(VISTREL_BAD_PHASE, "phase {}: allowed are {}", f.phase, phaseList());
}

namespace {

void checkFormat(const vistrel_frame& f, const vistrel_conversion& c) {
  const bool colour = f.phase != VISTREL_MONO;
  const Format* format = findFormat(c.format);
  if (!format || format->colour() != colour)
    refuse(VISTREL_BAD_FORMAT, "format {}: a {} frame becomes {}",
           format ? format->name : fmt::to_string(c.format), vistrel_phase_name(f.phase),
           formatList(colour));
  if (format->bytes_per_sample == 2 && f.bytes_per_sample == 1)
    refuse(VISTREL_BAD_FORMAT, "format {}: it needs a frame of 2 bytes a sample, this one has 1",
           format->name);
}

void checkAlgorithm(const vistrel_frame& f, const vistrel_conversion& c) {
  const vistrel_algorithm* a = findAlgorithm(c.algorithm);
  if (!a) refuse(VISTREL_BAD_ALGORITHM, "algorithm {}: there is {}", c.algorithm, algorithmList());
  const uint32_t bits = workingBits(f, c);
  if (bits > a->max_bits)
    refuse(VISTREL_BAD_ALGORITHM,
           "algorithm {}: made for {} bits at most, the samples have {}; truncate_to {} drops the "
           "lowest ones first",
           a->name, a->max_bits, bits, a->max_bits);
  const uint32_t most = c.algorithm == VISTREL_EDGE ? 255 : 0;
  if (c.threshold > most)
    refuse(VISTREL_BAD_THRESHOLD, "threshold {}: algorithm {} allows {}", c.threshold, a->name,
           most ? "0 to 255" : "0 alone, it has none");
}

void checkGray(const vistrel_conversion& c) {
  if (c.gray != VISTREL_LUMA && c.gray != VISTREL_RAW_GRAY)
    refuse(VISTREL_BAD_GRAY, "gray {}: 0 (luma) and 1 (raw) are allowed", c.gray);
  if (c.gray == VISTREL_RAW_GRAY && isCompact(c.algorithm))
    refuse(VISTREL_BAD_GRAY,
           "gray 1 (raw): the library's own gray of algorithm {} is sheared; 0 (luma) is allowed",
           findAlgorithm(c.algorithm)->name);
}

void checkTable(const vistrel_conversion& c, uint32_t bits) {
  if (!c.table) refuse(VISTREL_NULL_POINTER, "table is null");
  if (bits > 12)
    refuse(
        VISTREL_BAD_REDUCTION,
        "reduction 10: a table serves 10 to 12 bits, the samples have {}; truncate_to 12 drops the "
        "lowest ones first",
        bits);
  if (c.table_entries != 1024 && c.table_entries != 1u << bits)
    refuse(VISTREL_BAD_TABLE, "table_entries {}: samples of {} bits take {}", c.table_entries, bits,
           bits == 10 ? "1024" : fmt::format("1024 or {}", 1u << bits));
  for (uint32_t i = 0; i < c.table_entries; ++i)
    if (c.table[i] > 255)
      refuse(VISTREL_BAD_TABLE, "table[{}] {}: 0 to 255 are allowed", i, c.table[i]);
}

void checkLutMode(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.reduction > 7 && c.reduction != 10)
    refuse(VISTREL_BAD_REDUCTION, "reduction {}: 0 to 7 and 10 are allowed", c.reduction);
  if (c.reduction == 0) return;
  const Format& format = *findFormat(c.format);
  if (format.bytes_per_sample == 2)
    refuse(VISTREL_BAD_REDUCTION, "reduction {}: format {} keeps all bits and allows 0 alone",
           c.reduction, format.name);
  const uint32_t bits = workingBits(f, c), least = c.reduction > 2 ? 10 : 8 + c.reduction;
  if (bits < least)
    refuse(VISTREL_BAD_REDUCTION, "reduction {}: it needs {} bits or more, the samples have {}",
           c.reduction, least, bits);
  if (c.reduction == 10) checkTable(c, bits);
}

void checkPreparation(const vistrel_frame& f, const vistrel_conversion& c) {
  checkBlack(f, c);
  if (c.white_balance > VISTREL_BALANCE_GRAY_WORLD)
    refuse(VISTREL_BAD_BALANCE,
           "white_balance {}: 0 (none), 1 (gains) and 2 (gray-world) are allowed", c.white_balance);
  if (c.white_balance != VISTREL_BALANCE_NONE && f.phase == VISTREL_MONO)
    refuse(VISTREL_BAD_BALANCE, "white_balance {}: a mono frame has no colours; 0 is allowed",
           c.white_balance);
  for (size_t i = 0; c.white_balance == VISTREL_BALANCE_GAINS && i < 3; ++i)
    if (!c.gains[i] || c.gains[i] > VISTREL_GAIN_MAX)
      refuse(VISTREL_BAD_BALANCE, "gains[{}] {}: 1 to {} are allowed, {} is a gain of 1", i,
             c.gains[i], uint32_t{VISTREL_GAIN_MAX}, uint32_t{VISTREL_GAIN_ONE});
}

void checkEdges(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.edges != VISTREL_EDGES_NATIVE && c.edges != VISTREL_EDGES_PADDED)
    refuse(VISTREL_BAD_EDGES, "edges {}: 0 (native) and 1 (padded) are allowed", c.edges);
  if (c.edges == VISTREL_EDGES_PADDED && findFormat(c.format)->gray() && c.gray == VISTREL_RAW_GRAY)
    refuse(VISTREL_BAD_EDGES, "edges 1 (padded): not with gray 1 (raw); 0 (native) is allowed");
  if (c.edges == VISTREL_EDGES_PADDED && f.phase != VISTREL_MONO && (f.width < 2 || f.height < 2))
    refuse(VISTREL_REGION_TOO_SMALL,
           "frame {}x{}: to be padded a mosaic has 2 columns and 2 rows or more", f.width,
           f.height);
}

}  // namespace

void checkBlack(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.black >> f.bits)
    refuse(VISTREL_BAD_BLACK, "black {}: samples of {} bits allow 0 to {}", c.black, f.bits,
           (1u << f.bits) - 1);
}

void checkExcess(const vistrel_conversion& c) {
  if (c.excess != VISTREL_REFUSE && c.excess != VISTREL_MASK)
    refuse(VISTREL_BAD_EXCESS, "excess {}: 0 (refuse) and 1 (mask) are allowed", c.excess);
}

uint32_t workingBits(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return conversion.truncate_to ? std::min(frame.bits, conversion.truncate_to) : frame.bits;
}

void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  checkFrame(frame);
  checkFormat(frame, conversion);
  const uint32_t to = conversion.truncate_to;
  if (to && (to < 8 || to > 16))
    refuse(VISTREL_BAD_TRUNCATION, "truncate_to {}: 0 (no reduction) and 8 to 16 are allowed", to);
  if (frame.phase != VISTREL_MONO) checkAlgorithm(frame, conversion);
  if (findFormat(conversion.format)->gray()) checkGray(conversion);
  if (conversion.binning < 1 || conversion.binning > 4)
    refuse(VISTREL_BAD_BINNING, "binning {}: 1 to 4 are allowed", conversion.binning);
  checkLutMode(frame, conversion);
  checkExcess(conversion);
  checkPreparation(frame, conversion);
  checkEdges(frame, conversion);
  checkReserved("conversion->reserved", conversion.reserved);
}

}  // namespace vistrel::host
