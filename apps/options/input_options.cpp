#include "apps/options/input_options.h"

#include <CLI/CLI.hpp>

#include "apps/error.h"
#include "apps/options/frame_name.h"
#include "apps/options/options.h"

namespace vistrel::app {

void InputOptions::check() const {
  if (size && !bits && !fromName && !pixfmt)
    throwError(kUsage, "--bits is missing: a header-less dump does not tell its depth");
}

void InputOptions::checkWithPhase() {
  check();
  needsPhase = true;
}

void addInputOptions(CLI::App& command, InputOptions& options) {
  auto* input = command.add_option_group("Input");
  auto* size = input->add_option_function<std::string>(
      "-s,--size", [&options](const std::string& s) { options.size = parseSize("--size", s); },
      "Size of a header-less dump");
  size->type_name("WxH");
  between(
      input->add_option("--bits", options.bits, "Significant bits of a sample (as the file tells)"),
      8, 16);
  auto* endian = input->add_option_function<std::string>(
      "--endian", [&options](const std::string& s) { options.bigEndian = s == "big"; },
      "Byte order of a dump of more than 8 bits (little)");
  oneOf(endian, {"little", "big"})->needs(size);
  auto* pixfmt = input->add_option_function<std::string>(
      "--pixfmt",
      [&options](const std::string& s) { options.pixfmt = &parsePixelFormat("--pixfmt", s); },
      "Phase, bits, packing of a dump: name of `formats`");
  pixfmt->type_name("NAME")->needs(size)->excludes(endian);
  auto* align = input->add_option_function<std::string>(
      "--align", [&options](const std::string& s) { options.highBits = s == "high"; },
      "Where the bits of words are (low)");
  oneOf(align, {"low", "high"});
  fromZero(input->add_option("--skip", options.skip, "Bytes of a dump before its first sample (0)"))
      ->type_name("BYTES")
      ->needs(size);
  auto* stride = fromZero(
      input->add_option("--stride", options.stride, "Bytes of a dump from row to row (packed)"));
  stride->type_name("BYTES")->needs(size);
  input->add_flag("--continuous", options.continuous, "Rows of a dump begin within bytes")
      ->needs(size)
      ->excludes(stride);
  fromZero(input->add_option("--frame", options.frame, "Which of a file's frames, from 0 (0)"))
      ->type_name("N");
  input->add_flag("--from-name", options.fromName,
                  "Bits and phase by a name such as rose_12b_rggb.pgm");
}

CLI::Option* addPhaseOption(CLI::App& command, std::optional<uint32_t>& phase) {
  return command
      .add_option_function<std::string>(
          "--phase", [&phase](const std::string& s) { phase = parsePhase("--phase", s); },
          "Colours of the left upper 2x2 block, row by row: rggb, bggr, grbg or gbrg; or mono")
      ->type_name("PHASE");
}

}  // namespace vistrel::app
