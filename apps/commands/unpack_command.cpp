#include "apps/commands/commands.h"

#include <memory>
#include <string>

#include "apps/error.h"
#include "apps/files/run_files.h"
#include "apps/input/frame_file.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/write_dng.h"

namespace vistrel::app {
namespace {

constexpr const char* kUnpackExamples = R"(Examples:
  vistrel unpack cam.raw -s 1280x960 --pixfmt BayerRG12p -o frame.pgm
  vistrel unpack cam.raw -s 1280x960 --pixfmt BayerRG12p -o frame.dng
  vistrel unpack cam.raw -s 1280x960 --pixfmt pRAA --stride 1600 -o samples.raw

Sample values do not change. A .raw file has 8-bit samples for formats of 8
bits, otherwise 16-bit ones in little-endian order. A .pgm or .raw receives all
frames of the file, one after the other, or the one that --frame selects. A .dng
specifies the phase and the significant bits; its colours are taken to be sRGB.)";

struct UnpackOptions {
  std::string input, output;
  InputOptions in;
};

// The unchanged samples.
Image imageOf(vistrel_frame frame) {
  frame.phase = VISTREL_MONO;
  vistrel_conversion conversion = defaultConversion(frame);
  if (frame.bytes_per_sample == 2) conversion.format = VISTREL_MONO16;
  return convert(frame, conversion);
}

void unpackToDng(FrameFile& file, const UnpackOptions& o) {
  const uint32_t phase = file.frame().phase;
  if (phase == VISTREL_MONO)
    throwError(kRejected, "{}: a .dng needs colour filters; mono goes to .pgm or .raw", o.output);
  const Image samples = imageOf(file.read());
  AtomicFile output(o.output);
  writeDng(samples, unknownCamera(phase, samples.layout.bits), output);
  output.commit();
  printAssumedColours(o.output);
}

void unpackFrames(const UnpackOptions& o) {
  PrintedWarnings warnings(o.input);
  FrameFile file(o.input, o.in, warnings.list());
  const PictureType* const type = isDngName(o.output) ? nullptr : &pictureType(o.output);
  const uint64_t first = o.in.frame.value_or(0), count = o.in.frame ? 1 : file.frames();
  if (count > 1 && !(type && type->many))
    throwError(kRejected,
               "it has {} frames: {} takes one, .pgm and .raw take all; --frame N selects one",
               count, o.output);
  if (!type) return unpackToDng(file, o);
  AtomicFile output(o.output);
  for (uint64_t n = first; n < first + count; ++n) type->write(imageOf(file.read(n)), output);
  output.commit();
}

ExitStatus run(const UnpackOptions& o) {
  if (!o.in.size || !o.in.pixfmt)
    throwError(
        kUsage,
        "--size and --pixfmt are required: a headerless raw file does not specify its format");
  if (!isDngName(o.output) && pictureType(o.output).channels > 1)
    throwError(kUsage, "-o {}: samples go to .pgm, .raw or .dng", o.output);
  RunFiles files;
  files.addInput(o.input);
  files.addWritten("-o", o.output);
  const Outcome outcome = attempt([&] { unpackFrames(o); });
  if (outcome.status != kDone) throw ProgramError(outcome.status, o.input + ": " + outcome.text);
  return kDone;
}

}  // namespace

void addUnpackCommand(CLI::App& program, int& status) {
  auto* command =
      program.add_subcommand("unpack", "Unpack a headerless raw file into plain samples");
  const auto o = std::make_shared<UnpackOptions>();
  command->add_option("IN", o->input, "Headerless raw file; - is standard input")->required();
  command->add_option("-o,--output", o->output, "Samples (.pgm, .raw, .dng)")
      ->required()
      ->type_name("OUT");
  addInputOptions(*command, o->in);
  command->footer(kUnpackExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
