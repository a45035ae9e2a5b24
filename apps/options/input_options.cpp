#include "apps/options/input_options.h"

#include <CLI/CLI.hpp>

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

}  // namespace

void addInputOptions(CLI::App& command, InputOptions& options) {
  auto* input = command.add_option_group("Input");
  CLI::Option* size = addSampleOptions(*input, options);
  addLayoutOptions(*input, options, size);
  fromZero(
      input->add_option("--frame", options.frame, "Which frame of the file, counted from 0 (0)"))
      ->type_name("N");
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
