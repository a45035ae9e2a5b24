#include "apps/input/frame_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <numeric>

#include "apps/error.h"
#include "apps/files/stem.h"
#include "apps/input/readers.h"
#include "apps/options/frame_name.h"
#include "apps/options/option_names.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

constexpr const char* kPhaseIsMissing =
    "--phase is missing, and {} not specify it. It names the colours of the 2x2 block in the top "
    "left corner of the frame: rggb, bggr, grbg or gbrg; mono is for a frame without colour "
    "filters. With --from-name {} specifies it";

using Warnings = std::vector<std::string>;

void warnIfBitsDiffer(uint32_t used, const char* origin, uint32_t stated, Warnings& warnings) {
  if (used != stated)
    warnings.push_back(fmt::format("using {} bits; {} says {}", used, origin, stated));
}

void warnIfPhasesDiffer(uint32_t used, const char* origin, uint32_t stated, Warnings& warnings) {
  if (used != stated)
    warnings.push_back(fmt::format("using {}; {} says {}", vistrel_phase_name(used), origin,
                                   vistrel_phase_name(stated)));
}

// Files that specify their bits need none in their names.
void checkName(const InputOptions& o, bool areBitsKnown) {
  if (o.fromName && !o.bits && !o.pixfmt && !areBitsKnown)
    throwError(kRejected,
               "--from-name: the name does not end in _<bits>b_<phase> or _<bits>b, as in {}",
               "rose_12b_rggb.pgm");
}

// The options, completed from the file's name.
InputOptions withName(const std::filesystem::path& path, InputOptions o, Warnings& warnings) {
  const auto name = o.fromName ? findFrameName(stemOf(path).string()) : std::nullopt;
  if (!name) {
    checkName(o, !o.size);
    return o;
  }
  if (!o.bits) o.bits = name->bits;
  if (!o.phase) o.phase = name->phase;
  warnIfBitsDiffer(*o.bits, "its name", name->bits, warnings);
  if (name->phase) warnIfPhasesDiffer(*o.phase, "its name", *name->phase, warnings);
  return o;
}

[[noreturn]] void throwPhaseError(const std::string& fault, bool isNameRead) {
  if (!fault.empty()) throwError(kRejected, "{}; --phase overrides it", fault);
  throwError(kRejected, kPhaseIsMissing, isNameRead ? "file and name do" : "the file does",
             isNameRead ? "a name such as rose_12b_rggb.pgm" : "the file's name");
}

}  // namespace

FrameFile::FrameFile(const std::filesystem::path& path, const InputOptions& options,
                     Warnings& warnings)
    : chosen_(options.frame.value_or(0)), warnings_(warnings) {
  const InputOptions o = withName(path, options, warnings_);
  if (isArriving(path, o)) {
    reader_ = openArriving(path, o);
  } else {
    source_ = std::make_unique<Source>(path);
  }
  if (const char* const kind = source_ && o.size && !o.skip ? kindOf(*source_) : nullptr)
    warnings_.push_back(
        fmt::format("read as headerless raw because of --size; it begins like a {} file", kind));
  if (source_) reader_ = o.size ? openHeaderless(*source_, o) : openReader(*source_, o);
  describe(o);
  addWarnings(o);
}

void FrameFile::describe(const InputOptions& o) {
  const Description& d = description();
  checkName(o, d.bitsKnown);
  if (o.needsPhase && !o.phase && !d.phase) throwPhaseError(d.phaseFault, o.fromName);
  if (chosen_ >= d.frames)
    throwError(kRejected, "--frame {}: the file has {} frames, counted from 0", chosen_, d.frames);
  frame_.width = d.width;
  frame_.height = d.height;
  frame_.bytes_per_sample = d.bytesPerSample;
  frame_.bits = o.bits.value_or(d.bits);
  bitsKnown_ = o.bits || o.pixfmt || d.bitsKnown;
  specifiesBits_ = d.bitsKnown && !o.bits && !o.size;
  frame_.alignment = hasHighBits(o) ? VISTREL_HIGH_BITS : VISTREL_LOW_BITS;
  frame_.phase = VISTREL_MONO;
  const char* const option = o.fromName ? "--from-name: bits" : "--bits";
  withOptionNames({{"frame.bits", option}},  // rejects bits that such samples can't have
                  [this] { layoutOf(frame_, defaultConversion(frame_)); });
  phaseKnown_ = o.phase || d.phase;
  frame_.phase = o.phase.value_or(d.phase.value_or(VISTREL_MONO));
}

// The reader knows it of headerless raw files; of other files only the options do.
bool FrameFile::hasHighBits(const InputOptions& o) const {
  const Description& d = description();
  if (o.size || !o.highBits) return d.highBits;
  if (d.bytesPerSample == 1)
    throwError(kRejected, "--align high: it applies to 16-bit samples only");
  if (!bitsKnown_)
    throwError(kRejected, "--align high: --bits is missing, and the file does not specify it");
  if (d.bitsKnown && d.bits < 16)
    throwError(kRejected, "--align high: the file says that its samples are in the low {} bits",
               d.bits);
  return frame_.bits < 16;
}

void FrameFile::warnOfTrailingBytes() {
  const uint64_t n = description().trailing;
  warnings_.push_back(fmt::format("{} byte{} after the last frame {} ignored", n, n > 1 ? "s" : "",
                                  n > 1 ? "are" : "is"));
}

void FrameFile::addWarnings(const InputOptions& o) {
  const Description& d = description();
  if (d.trailing) warnOfTrailingBytes();
  warnings_.insert(warnings_.end(), d.warnings.begin(), d.warnings.end());
  const char* const origin = o.pixfmt ? "--pixfmt" : "the file";
  if (o.bits && (d.bitsKnown || o.pixfmt))
    warnIfBitsDiffer(*o.bits, origin, o.pixfmt ? o.pixfmt->bits : d.bits, warnings_);
  if (o.range && !d.range)
    warnings_.push_back("--range has no effect: its samples are whole numbers");
  if (o.phase && d.phase) warnIfPhasesDiffer(*o.phase, origin, *d.phase, warnings_);
  if (d.phaseFault.empty()) return;
  const char* const used = o.phase ? vistrel_phase_name(*o.phase) : nullptr;
  warnings_.push_back(d.phaseFault + (used ? fmt::format("; using {}", used) : ""));
}

// Warns if the bits are not specified, so that 16 are assumed, and the highest are always 0.
void FrameFile::warnOfUnusedBits() {
  if (bitsKnown_) return;
  const auto all = std::accumulate(samples_.begin(), samples_.end(), 0u, std::bit_or<>());
  const auto used = static_cast<uint32_t>(std::bit_width(all));
  if (used && used < frame_.bits)
    warnings_.push_back(
        fmt::format("using {} bits, only {} of which are set; --bits {} would use those",
                    frame_.bits, used, std::max(used, 8u)));
}

PrintedWarnings::~PrintedWarnings() {
  for (const std::string& warning : list_) fmt::print(stderr, "vistrel: {}: {}\n", name_, warning);
}

bool FrameFile::has(uint64_t n) {
  if (reader_->has(n)) return true;
  if (!source_ && description().trailing) warnOfTrailingBytes();
  return false;
}

const vistrel_frame& FrameFile::read(uint64_t n) {
  const size_t bytes = size_t{frame_.width} * frame_.height * frame_.bytes_per_sample;
  samples_.resize((bytes + 1) / 2);
  reader_->read(n, samples_.data());
  frame_.samples = samples_.data();
  frame_.size = bytes;
  frame_.stride = 0;
  warnOfUnusedBits();
  return frame_;
}

}  // namespace vistrel::app
