#include "host/validate.h"

#include <algorithm>

#include "demosaic/algorithms.h"
#include "host/calibration.h"
#include "host/finishing.h"
#include "host/packings.h"
#include "host/plan.h"
#include "host/status.h"

namespace vistrel::host {
namespace {

void checkBits(const vistrel_frame& f) {
  if (f.packing) return void(findPacking(f.packing, f.bits, "frame", "0 (not packed)"));
  if (f.bytes_per_sample == 1 && f.bits != 8)
    reject(VISTREL_BAD_BITS, "frame.bits", f.bits, "samples of one byte have 8");
  if (f.bits < 8 || f.bits > 16)
    reject(VISTREL_BAD_BITS, "frame.bits", f.bits, "8 to 16 are allowed");
}

void checkAlignment(const vistrel_frame& f) {
  if (f.alignment != VISTREL_LOW_BITS && f.alignment != VISTREL_HIGH_BITS)
    reject(VISTREL_BAD_ALIGNMENT, "frame.alignment", f.alignment,
           "0 (low bits) and 1 (high bits) are allowed");
  if (isTight(f.packing) && f.alignment != VISTREL_LOW_BITS)
    reject(VISTREL_BAD_ALIGNMENT, "frame.alignment", f.alignment,
           "only 0 (low bits) is allowed with this packing");
}

}  // namespace

void checkFrame(const vistrel_frame& f) {
  if (!f.width) reject(VISTREL_BAD_SIZE, "frame.width", 0, "a frame has at least 1 column");
  if (!f.height) reject(VISTREL_BAD_SIZE, "frame.height", 0, "a frame has at least 1 row");
  if (f.bytes_per_sample != 1 && f.bytes_per_sample != 2)
    reject(VISTREL_BAD_BITS, "frame.bytes_per_sample", f.bytes_per_sample, "1 and 2 are allowed");
  if (f.packing && vistrel_packing_name(f.packing) && f.bytes_per_sample != 2)
    reject(VISTREL_BAD_BITS, "frame.bytes_per_sample", f.bytes_per_sample,
           "only 2 is allowed with packed samples");
  checkBits(f);
  checkAlignment(f);
  checkReserved("frame.reserved", f.reserved);
  if (f.stride && f.stride < rowBytesOf(f))
    reject(VISTREL_BAD_STRIDE, "frame.stride", f.stride, "a row of {} has {}",
           countOf(uint64_t{f.width} * channelsOf(f), "sample"), countOf(rowBytesOf(f), "byte"));
  if (!vistrel_phase_name(f.phase))
    reject(VISTREL_BAD_PHASE, "frame.phase", f.phase, "{} are allowed", phaseList());
}

namespace {

void checkFormat(const vistrel_frame& f, const vistrel_conversion& c) {
  constexpr const char* kArgument = "conversion.format";
  const bool colour = f.phase != VISTREL_MONO;
  const Format* format = findFormat(c.format);
  if (!format)
    reject(VISTREL_BAD_FORMAT, kArgument, c.format, "{} frames allow {}",
           vistrel_phase_name(f.phase),
           formatList([colour](const Format& other) { return other.colour() == colour; }));
  if (format->colour() != colour)
    reject(VISTREL_BAD_FORMAT, kArgument, format->name, "it is for {} frames; this one is {}",
           colour ? "mono" : "Bayer", vistrel_phase_name(f.phase));
  if (format->bytes_per_sample == 2 && f.bytes_per_sample == 1 && !c.finish)
    reject(VISTREL_BAD_FORMAT, kArgument, format->name,
           "it needs 2 bytes per sample; this frame has 1");
}

void checkAlgorithm(const vistrel_frame& f, const vistrel_conversion& c) {
  const core::AlgorithmRow* a = core::findAlgorithm(c.algorithm);
  if (!a)
    reject(VISTREL_BAD_ALGORITHM, "conversion.algorithm", c.algorithm, "{} are allowed",
           algorithmList());
  const uint32_t bits = workingBits(f, c);
  if (bits > a->maxBits)
    reject(VISTREL_BAD_ALGORITHM, "conversion.algorithm", a->name,
           "it supports at most {} bits; the samples have {}", a->maxBits, bits);
  if (c.algorithm != VISTREL_EDGE && c.threshold)
    reject(VISTREL_BAD_THRESHOLD, "conversion.threshold", c.threshold,
           "algorithm {} has none; only 0 is allowed", a->name);
  if (c.threshold > 255)
    reject(VISTREL_BAD_THRESHOLD, "conversion.threshold", c.threshold, "0 to 255 are allowed");
}

void checkGray(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.gray != VISTREL_LUMA && c.gray != VISTREL_RAW_GRAY)
    reject(VISTREL_BAD_GRAY, "conversion.gray", c.gray, "0 (luma) and 1 (raw) are allowed");
  if (c.gray == VISTREL_LUMA) return;
  constexpr const char* kRaw = "1 (raw)";
  if (!isMosaic(f))
    reject(VISTREL_BAD_GRAY, "conversion.gray", kRaw,
           "raw gray is for Bayer frames; this one is {}", vistrel_phase_name(f.phase));
  const core::AlgorithmRow& a = *core::findAlgorithm(c.algorithm);
  if (!a.isGuarded)
    reject(VISTREL_BAD_GRAY, "conversion.gray", kRaw, "algorithm {} has none", a.name);
  if (a.code == VISTREL_EDGE && c.binning > 1)
    reject(VISTREL_BAD_GRAY, "conversion.gray", kRaw, "raw gray of algorithm edge can't be binned");
}

void checkTable(const vistrel_conversion& c, uint32_t bits) {
  checkPointer(c.table, "conversion.table");
  if (bits > 12)
    reject(VISTREL_BAD_REDUCTION, "conversion.reduction", c.reduction,
           "a table requires 10 to 12 bits; the samples have {}", bits);
  if (c.table_entries != 1024 && c.table_entries != 1u << bits)
    reject(VISTREL_BAD_TABLE, "conversion.table_entries", c.table_entries,
           "samples of {} bits take {}", bits,
           bits == 10 ? "1024" : textOf("1024 or {}", 1u << bits));
  for (uint32_t i = 0; i < c.table_entries; ++i)
    if (c.table[i] > 255)
      reject(VISTREL_BAD_TABLE, textOf("conversion.table[{}]", i), c.table[i],
             "0 to 255 are allowed");
}

void checkReduction(const vistrel_frame& f, const vistrel_conversion& c) {
  constexpr const char* kArgument = "conversion.reduction";
  if (c.reduction > VISTREL_CURVE_6 && c.reduction != VISTREL_TABLE)
    reject(VISTREL_BAD_REDUCTION, kArgument, c.reduction, "0 to 7 and 10 are allowed");
  if (c.reduction == VISTREL_WINDOW_HIGH) return;
  if (c.finish)
    reject(VISTREL_BAD_REDUCTION, kArgument, c.reduction,
           "finished pixels are not reduced; only 0 is allowed");
  const Format& format = *findFormat(c.format);
  if (format.bytes_per_sample == 2)
    reject(VISTREL_BAD_REDUCTION, kArgument, c.reduction, "{} keeps all bits; only 0 is allowed",
           format.name);
  const uint32_t bits = workingBits(f, c), min = c.reduction == VISTREL_WINDOW_MIDDLE ? 9 : 10;
  if (bits < min)
    reject(VISTREL_BAD_REDUCTION, kArgument, c.reduction,
           "it needs {} bits or more; the samples have {}", min, bits);
  if (c.reduction == VISTREL_TABLE) checkTable(c, bits);
}

void checkDestination(const vistrel_conversion& c) {
  if (c.destination != VISTREL_READ_SOON && c.destination != VISTREL_READ_LATER)
    reject(VISTREL_BAD_DESTINATION, "conversion.destination", c.destination,
           "0 (read soon) and 1 (read later) are allowed");
}

void checkWhiteBalance(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.white_balance > VISTREL_BALANCE_GRAY_WORLD)
    reject(VISTREL_BAD_BALANCE, "conversion.white_balance", c.white_balance,
           "0 (none), 1 (gains) and 2 (gray-world) are allowed");
  if (c.white_balance != VISTREL_BALANCE_NONE && !isMosaic(f))
    reject(VISTREL_BAD_BALANCE, "conversion.white_balance", c.white_balance, "a {} frame {}",
           vistrel_phase_name(f.phase),
           f.phase == VISTREL_MONO ? "has no colours" : "has finished colours");
  for (size_t i = 0; c.white_balance == VISTREL_BALANCE_GAINS && i < 3; ++i)
    if (!c.gains[i] || c.gains[i] > VISTREL_GAIN_MAX)
      reject(VISTREL_BAD_BALANCE, textOf("conversion.gains[{}]", i), c.gains[i],
             "1 to {} are allowed; {} is a gain of 1", uint32_t{VISTREL_GAIN_MAX},
             uint32_t{VISTREL_GAIN_ONE});
}

void checkThreads(const vistrel_conversion& c) {
  constexpr const char* kArgument = "conversion.threads";
  if (c.threads > VISTREL_MAX_THREADS)
    reject(VISTREL_BAD_THREADS, kArgument, c.threads, "at most {} are allowed",
           uint32_t{VISTREL_MAX_THREADS});
  if (c.threads < 2 || !c.run != !c.team) return;
  if (c.run) reject(VISTREL_BAD_THREADS, kArgument, c.threads, "set team or run, not both");
  reject(VISTREL_BAD_THREADS, kArgument, c.threads,
         "more than 1 needs a team, or a function that runs tasks");
}

void checkEdges(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.edges != VISTREL_EDGES_NATIVE && c.edges != VISTREL_EDGES_PADDED)
    reject(VISTREL_BAD_EDGES, "conversion.edges", c.edges, "0 (native) and 1 (padded) are allowed");
  if (c.edges == VISTREL_EDGES_NATIVE) return;
  if (findFormat(c.format)->gray() && c.gray == VISTREL_RAW_GRAY)
    reject(VISTREL_BAD_EDGES, "conversion.edges", "1 (padded)", "raw gray has native edges only");
  if (isMosaic(f) && (f.width < 2 || f.height < 2))
    reject(VISTREL_REGION_TOO_SMALL, "frame", textOf("{}x{}", f.width, f.height),
           "padding a mosaic takes at least 2 columns and 2 rows");
}

void checkBinning(const vistrel_conversion& c) {
  if (c.binning < 1 || c.binning > 4)
    reject(VISTREL_BAD_BINNING, "conversion.binning", c.binning, "1 to 4 are allowed");
  if (c.bin_mode != VISTREL_BIN_SUM && c.bin_mode != VISTREL_BIN_MEAN)
    reject(VISTREL_BAD_BINNING, "conversion.bin_mode", c.bin_mode,
           "0 (sum) and 1 (mean) are allowed");
  if (c.bin_mode == VISTREL_BIN_MEAN && c.gray == VISTREL_RAW_GRAY && findFormat(c.format)->gray())
    reject(VISTREL_BAD_BINNING, "conversion.bin_mode", "1 (mean)", "raw gray is binned by sums");
}

void checkOrientation(const vistrel_conversion& c) {
  if (c.orientation > VISTREL_TURNED_270)
    reject(VISTREL_BAD_ORIENTATION, "conversion.orientation", c.orientation, "0 to 8 are allowed");
}

}  // namespace

void checkBlack(const vistrel_frame& f, const vistrel_conversion& c) {
  for (size_t i = 0; i < std::size(c.black); ++i)
    if (c.black[i] >> f.bits)
      reject(VISTREL_BAD_BLACK, textOf("conversion.black[{}]", i), c.black[i],
             "samples of {} bits allow 0 to {}", f.bits, (1u << f.bits) - 1);
}

void checkWhite(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.white >> f.bits)
    reject(VISTREL_BAD_WHITE, "conversion.white", c.white, "samples of {} bits are at most {}",
           f.bits, (1u << f.bits) - 1);
  if (!c.white && !c.finish) return;
  const uint32_t black = *std::max_element(std::begin(c.black), std::end(c.black));
  if (whiteOf(f, c) <= black)
    reject(VISTREL_BAD_WHITE, "conversion.white", whiteOf(f, c),
           "it must be above the black levels; the highest is {}", black);
}

void checkExcess(const vistrel_conversion& c) {
  if (c.excess != VISTREL_REJECT && c.excess != VISTREL_MASK)
    reject(VISTREL_BAD_EXCESS, "conversion.excess", c.excess,
           "0 (reject) and 1 (mask) are allowed");
}

void checkUpright(const vistrel_conversion& c, const char* reason) {
  if (c.orientation > VISTREL_UPRIGHT)
    reject(VISTREL_BAD_ORIENTATION, "conversion.orientation", c.orientation, "{}", reason);
}

uint32_t workingBits(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  const uint32_t bits = conversion.finish ? finishBits(frame, conversion) : frame.bits;
  return conversion.truncate_to ? std::min(bits, conversion.truncate_to) : bits;
}

void checkArguments(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  checkFrame(frame);
  checkFormat(frame, conversion);
  const uint32_t to = conversion.truncate_to;
  if (to && (to < 8 || to > 16))
    reject(VISTREL_BAD_TRUNCATION, "conversion.truncate_to", to,
           "0 (no truncation) and 8 to 16 are allowed");
  if (isMosaic(frame)) checkAlgorithm(frame, conversion);
  if (findFormat(conversion.format)->gray()) checkGray(frame, conversion);
  checkBinning(conversion);
  checkReduction(frame, conversion);
  checkExcess(conversion);
  checkDestination(conversion);
  checkBlack(frame, conversion);
  checkWhite(frame, conversion);
  checkWhiteBalance(frame, conversion);
  checkEdges(frame, conversion);
  checkThreads(conversion);
  checkCalibration(frame, conversion);
  checkFinish(frame, conversion);
  checkOrientation(conversion);
  checkReserved("conversion.reserved", conversion.reserved);
}

}  // namespace vistrel::host
