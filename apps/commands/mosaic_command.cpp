#include "apps/commands/commands.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/files/run_files.h"
#include "apps/names/output_type.h"
#include "apps/names/phase_names.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/raw_frame.h"

namespace vistrel::app {
namespace {

constexpr const char* kMosaicExamples = R"(Examples:
  vistrel mosaic photo.png -o frame.pgm --phase rggb --bits 12
  vistrel mosaic photo.png -o frame.raw --pixfmt BayerRG12p

Each pixel keeps the colour of its filter. Sample v of a picture with maximum m
becomes v (2^bits - 1) / m, rounded.)";

// The types of raw frames that describe themselves.
constexpr std::string_view kDescribed[] = {"pgm", "dng", "png", "npy"};

struct MosaicOptions {
  std::string input, output;
  std::optional<uint32_t> phase, bits;
  const PixelFormat* format = nullptr;  // of a headerless raw file
};

uint32_t sampleAt(const Image& image, uint32_t x, uint32_t y, uint32_t channel) {
  const uint32_t bytes = image.layout.bits / 8;
  const uint8_t* at = &image.pixels[y * image.layout.row_bytes + (size_t{x} * 3 + channel) * bytes];
  if (bytes == 1) return *at;
  uint16_t sample;
  std::memcpy(&sample, at, 2);
  return sample;
}

std::vector<uint16_t> mosaicOf(const ColourPicture& picture, uint32_t phase, uint32_t bits) {
  const Image& image = picture.image;
  const uint64_t from = picture.largest, to = (1u << bits) - 1;
  std::vector<uint16_t> mosaic;
  mosaic.reserve(size_t{image.layout.width} * image.layout.height);
  for (uint32_t y = 0; y < image.layout.height; ++y)
    for (uint32_t x = 0; x < image.layout.width; ++x) {
      const uint64_t sample = sampleAt(image, x, y, channelAt(phase, x, y));
      mosaic.push_back(static_cast<uint16_t>((2 * sample * to + from) / (2 * from)));
    }
  return mosaic;
}

// A headerless raw file has a format, and no other file has.
void checkOutput(const MosaicOptions& o) {
  const bool standard = isStandardOutput(o.output);
  const std::string type = outputTypeName(o.output);
  const bool described = std::ranges::count(kDescribed, type) > 0;
  if (o.format && described)
    throwError(kUsage, "-o {}: --pixfmt writes a headerless raw file, not a .{}", o.output, type);
  if (!o.format && !described && !standard)
    throwError(kUsage,
               "-o {}: a raw frame is a .pgm, .dng, .png or .npy, or headerless with --pixfmt",
               o.output);
  if (o.phase == VISTREL_MONO || (o.format && o.format->phase == VISTREL_MONO))
    throwError(kUsage, "{} mono: a mosaic needs colour filters", o.format ? "--pixfmt" : "--phase");
  if (o.format && !o.format->phase)
    throwError(kUsage, "--pixfmt {}: its name leaves the phase open; SRGGB10P names one",
               o.format->mipi);
}

void mosaicOne(const MosaicOptions& o) {
  const ColourPicture picture = readColourPicture(o.input);
  const uint32_t width = picture.image.layout.width;
  const auto own = std::max(8u, static_cast<uint32_t>(std::bit_width(picture.largest)));
  const uint32_t phase = o.format ? *o.format->phase : o.phase.value_or(VISTREL_RGGB);
  const uint32_t bits = o.format ? o.format->bits : o.bits.value_or(own);
  const std::vector<uint16_t> samples = mosaicOf(picture, phase, bits);
  if (!o.format) {
    const PictureDetails details{.camera = unknownCamera(phase, bits)};
    const Image image = monoImage(samples, width, bits);
    savePicture(image, details, o.output);
    return printRemarks(o.output, image.layout, details);
  }
  AtomicFile output(o.output);
  writeHeaderless(*o.format, samples, width, output);
  output.commit();
}

ExitStatus run(const MosaicOptions& o) {
  checkOutput(o);
  RunFiles files;
  files.addInput(o.input);
  files.addWritten("-o", o.output);
  const Outcome outcome = attempt([&o] { mosaicOne(o); });
  if (outcome.status != kDone) throw ProgramError(outcome.status, o.input + ": " + outcome.text);
  return kDone;
}

}  // namespace

void addMosaicCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("mosaic", "Turn a full-colour picture into a raw frame");
  const auto o = std::make_shared<MosaicOptions>();
  command->add_option("IN", o->input, "Picture: PPM, or PNG of 3 channels of 8 or 16 bits")
      ->required();
  command
      ->add_option("-o,--output", o->output,
                   "Frame: .pgm, .dng, .png, .npy or -; headerless with --pixfmt")
      ->required()
      ->type_name("OUT");
  auto* phase = addPhaseOption(*command, o->phase);
  auto* bits = between(
      command->add_option("--bits", o->bits, "Significant bits of a sample (those of IN)"), 8, 16);
  command
      ->add_option_function<std::string>(
          "--pixfmt", [o](const std::string& s) { o->format = &parsePixelFormat("--pixfmt", s); },
          "Write a headerless raw file of this format (see vistrel formats)")
      ->type_name("NAME")
      ->excludes(bits)
      ->excludes(phase);
  command->footer(kMosaicExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
