#include "apps/options/input_options.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>

#include "apps/error.h"
#include "apps/options/frame_name.h"
#include "apps/options/options.h"

namespace vistrel::app {

void InputOptions::check() const {
  if (size && !bits && !fromName && !pixfmt)
    throwError(kUsage, "--bits is missing: a headerless raw file does not specify its depth");
}

void InputOptions::checkWithPhase() {
  check();
  needsPhase = true;
}

namespace {

// Returns the option --size, on which those of headerless raw files depend.
CLI::Option* addSampleOptions(CLI::Option_group& input, InputOptions& options) {
  auto* size = input.add_option_function<std::string>(
      "-s,--size", [&options](const std::string& s) { options.size = parseSize("--size", s); },
      "Size of a headerless raw file");
  size->type_name("WxH");
  between(
      input.add_option("--bits", options.bits, "Significant bits of a sample (as the file says)"),
      8, 16);
  auto* endian = input.add_option_function<std::string>(
      "--endian", [&options](const std::string& s) { options.bigEndian = s == "big"; },
      "Byte order of headerless 16-bit samples (little)");
  oneOf(endian, {"little", "big"})->needs(size);
  auto* pixfmt = input.add_option_function<std::string>(
      "--pixfmt",
      [&options](const std::string& s) { options.pixfmt = &parsePixelFormat("--pixfmt", s); },
      "Format of a headerless raw file: see `formats`");
  pixfmt->type_name("NAME")->needs(size)->excludes(endian);
  auto* align = input.add_option_function<std::string>(
      "--align", [&options](const std::string& s) { options.highBits = s == "high"; },
      "Which bits of 16-bit samples are significant (low)");
  oneOf(align, {"low", "high"});
  return size;
}

void addLayoutOptions(CLI::Option_group& input, InputOptions& options, CLI::Option* size) {
  fromZero(input.add_option("--skip", options.skip, "Bytes before the first headerless sample (0)"))
      ->type_name("BYTES")
      ->needs(size);
  auto* stride = fromZero(input.add_option("--stride", options.stride,
                                           "Bytes from one headerless row to the next (packed)"));
  stride->type_name("BYTES")->needs(size);
  input.add_flag("--continuous", options.continuous, "Headerless rows may begin within a byte")
      ->needs(size)
      ->excludes(stride);
}

// "0:1", "-0.5:1e4"
RealRange parseRange(const std::string& text) {
  constexpr double kMost = 1e30, kLeastDistance = 1e-30;
  RealRange range{};
  const char* const end = text.data() + text.size();
  const auto low = std::from_chars(text.data(), end, range.low);
  const bool isPair = low.ec == std::errc{} && low.ptr != end && *low.ptr == ':';
  const auto high = isPair ? std::from_chars(low.ptr + 1, end, range.high) : low;
  if (!isPair || high.ec != std::errc{} || high.ptr != end)
    throwError(kUsage, "--range {}: LOW:HIGH is expected, such as 0:1", text);
  if (!(std::abs(range.low) <= kMost && std::abs(range.high) <= kMost &&
        range.high - range.low >= kLeastDistance))
    throwError(kUsage, "--range {}: the second number has to be the larger one, both up to {}",
               text, kMost);
  return range;
}

}  // namespace

void addInputOptions(CLI::App& command, InputOptions& options) {
  auto* input = command.add_option_group("Input");
  CLI::Option* size = addSampleOptions(*input, options);
  addLayoutOptions(*input, options, size);
  fromZero(
      input->add_option("--frame", options.frame, "Which frame of the file, counted from 0 (0)"))
      ->type_name("N");
  input
      ->add_option_function<std::string>(
          "--range", [&options](const std::string& s) { options.range = parseRange(s); },
          "Values of a FITS of real numbers that become 0 and 65535")
      ->type_name("LOW:HIGH");
  input->add_flag("--from-name", options.fromName,
                  "Bits and phase from a name such as rose_12b_rggb.pgm");
}

CLI::Option* addPhaseOption(CLI::App& command, std::optional<uint32_t>& phase) {
  return command
      .add_option_function<std::string>(
          "--phase", [&phase](const std::string& s) { phase = parsePhase("--phase", s); },
          "Top left 2x2 block: rggb, bggr, grbg, gbrg; or mono")
      ->type_name("PHASE");
}

}  // namespace vistrel::app
