#include "apps/input/frame_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <numeric>

#include "apps/failure.h"
#include "apps/input/dump_reader.h"
#include "apps/options/frame_name.h"
#include "apps/options/wording.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

constexpr const char* kPhaseIsMissing =
    "--phase is missing, and the file does not tell it. It names the colours of the 2x2 block at "
    "the frame's left upper corner: rggb, bggr, grbg or gbrg; mono stands for a frame without "
    "colour filters. With --from-name the file's name tells it";

using Remarks = std::vector<std::string>;

void remarkBits(uint32_t taken, const char* teller, uint32_t told, Remarks& remarks) {
  if (taken != told)
    remarks.push_back(fmt::format("taken as {} bits; {} tells {}", taken, teller, told));
}

void remarkPhase(uint32_t taken, const char* teller, uint32_t told, Remarks& remarks) {
  if (taken != told)
    remarks.push_back(fmt::format("taken as {}; {} tells {}", vistrel_phase_name(taken), teller,
                                  vistrel_phase_name(told)));
}

// The options, with what the file's name tells filled in.
InputOptions withName(const std::filesystem::path& path, InputOptions o, Remarks& remarks) {
  if (!o.fromName) return o;
  const FrameName name = parseFrameName(path.stem().string());
  if (!o.bits) o.bits = name.bits;
  if (!o.phase) o.phase = name.phase;
  remarkBits(*o.bits, "its name", name.bits, remarks);
  remarkPhase(*o.phase, "its name", name.phase, remarks);
  return o;
}

}  // namespace

void InputOptions::check() const {
  if (size && !bits && !fromName && !pixfmt)
    fail(kUsage, "--bits is missing: a header-less dump does not tell its depth");
}

void InputOptions::checkWithPhase() {
  check();
  needsPhase = true;
}

FrameFile::FrameFile(const std::filesystem::path& path, const InputOptions& options)
    : source_(std::make_unique<Source>(path)), chosen_(options.frame.value_or(0)) {
  const InputOptions o = withName(path, options, remarks_);
  reader_ = o.size ? openDump(*source_, o) : openReader(*source_);
  if (const char* const kind = o.size && !o.skip ? kindOf(*source_) : nullptr)
    remarks_.push_back(fmt::format("taken as a dump by --size; it begins like a {} file", kind));
  describe(o);
  remark(o);
}

void FrameFile::describe(const InputOptions& o) {
  const Description& d = description();
  const std::string& fault = d.phaseFault;
  if (o.needsPhase && !o.phase && !d.phase)
    fail(kRejected, "{}", fault.empty() ? kPhaseIsMissing : fault + "; --phase tells another");
  if (chosen_ >= d.frames)
    fail(kRejected, "--frame {}: the file has {} frames, counted from 0", chosen_, d.frames);
  frame_.width = d.width;
  frame_.height = d.height;
  frame_.bytes_per_sample = d.bytesPerSample;
  frame_.bits = o.bits.value_or(d.bits);
  bitsAreTold_ = o.bits || o.pixfmt || d.tellsBits;
  frame_.alignment = hasHighBits(o) ? VISTREL_HIGH_BITS : VISTREL_LOW_BITS;
  frame_.phase = VISTREL_MONO;
  const char* const option = o.fromName ? "--from-name: bits" : "--bits";
  inTypedWords({{"frame.bits", option, ""}},  // rejects bits that such samples can't have
               [this] { layoutOf(frame_, defaultConversion(frame_)); });
  frame_.phase = o.phase.value_or(d.phase.value_or(VISTREL_MONO));
}

// Of dumps the reader knows; of other files the options alone.
bool FrameFile::hasHighBits(const InputOptions& o) const {
  const Description& d = description();
  if (o.size || !o.highBits) return d.highBits;
  if (d.bytesPerSample == 1)
    fail(kRejected, "--align high: it is for samples in words, and these are not");
  if (!bitsAreTold_)
    fail(kRejected, "--align high: --bits is missing, and the file does not tell it");
  if (d.tellsBits && d.bits < 16)
    fail(kRejected, "--align high: the file tells that its samples are the lowest {} bits", d.bits);
  return frame_.bits < 16;
}

void FrameFile::remark(const InputOptions& o) {
  const Description& d = description();
  if (d.trailing)
    remarks_.push_back(fmt::format("{} byte{} after the last frame {} left out", d.trailing,
                                   d.trailing > 1 ? "s" : "", d.trailing > 1 ? "are" : "is"));
  const char* const teller = o.pixfmt ? "--pixfmt" : "the file";
  if (o.bits && (d.tellsBits || o.pixfmt))
    remarkBits(*o.bits, teller, o.pixfmt ? o.pixfmt->bits : d.bits, remarks_);
  if (o.phase && d.phase) remarkPhase(*o.phase, teller, *d.phase, remarks_);
  if (d.phaseFault.empty()) return;
  const char* const taken = o.phase ? vistrel_phase_name(*o.phase) : nullptr;
  remarks_.push_back(d.phaseFault + (taken ? fmt::format("; taken as {}", taken) : ""));
}

// Words of sixteen bits, as far as anybody knows, and the highest ones are 0.
void FrameFile::remarkUnusedBits() {
  if (bitsAreTold_) return;
  const auto all = std::accumulate(samples_.begin(), samples_.end(), 0u, std::bit_or<>());
  const auto used = static_cast<uint32_t>(std::bit_width(all));
  if (used && used < frame_.bits)
    remarks_.push_back(fmt::format("taken as {} bits, of which {} are used; --bits {} says so",
                                   frame_.bits, used, std::max(used, 8u)));
}

void printRemarks(const FrameFile& file, const std::string& name) {
  for (const std::string& remark : file.remarks())
    fmt::print(stderr, "vistrel: {}: {}\n", name, remark);
}

const vistrel_frame& FrameFile::read(uint64_t n) {
  const size_t bytes = size_t{frame_.width} * frame_.height * frame_.bytes_per_sample;
  samples_.resize((bytes + 1) / 2);
  reader_->read(n, samples_.data());
  frame_.samples = samples_.data();
  frame_.size = bytes;
  frame_.stride = 0;
  remarkUnusedBits();
  return frame_;
}

}  // namespace vistrel::app
