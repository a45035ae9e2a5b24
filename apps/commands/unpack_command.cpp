#include "apps/commands/commands.h"

#include <memory>
#include <string>

#include "apps/commands/mosaic_job.h"
#include "apps/error.h"
#include "apps/files/run_files.h"
#include "apps/input/frame_file.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {
namespace {

constexpr const char* kUnpackExamples = R"(Examples:
  vistrel unpack cam.raw -s 1280x960 --pixfmt BayerRG12p -o frame.pgm
  vistrel unpack cam.raw -s 1280x960 --pixfmt BayerRG12p -o frame.dng
  vistrel unpack rose.dng -o rose.npy
  vistrel unpack cam.raw -s 1280x960 --pixfmt pRAA --stride 1600 -o samples.raw

Sample values do not change. Files of all types but .raw and .npy tell the
phase, so that `convert` needs no --phase. A .raw file has 8-bit samples for
formats of 8 bits, otherwise 16-bit ones in little-endian order. A .pgm or .raw
receives all frames of the file, one after the other, or the one that --frame
selects. The colours in a .dng are sRGB's if the camera's are unknown.)";

struct UnpackOptions {
  std::string input, output;
  InputOptions in;
};

Image imageOf(vistrel_frame frame) {
  frame.phase = VISTREL_MONO;
  return convert(frame, unchanged(frame));
}

void unpackFrames(const UnpackOptions& o) {
  PrintedWarnings warnings(o.input);
  FrameFile file(o.input, o.in, warnings.list());
  const PictureType& type = pictureType(o.output);
  const uint64_t first = o.in.frame.value_or(0), count = o.in.frame ? 1 : file.frames();
  if (count > 1 && !type.many)
    throwError(kRejected,
               "it has {} frames: {} takes one, .pgm and .raw take all; --frame N selects one",
               count, o.output);
  const PictureDetails details = frameDetails(file, "");
  AtomicFile output(o.output);
  vistrel_layout layout{};
  for (uint64_t n = first; n < first + count; ++n) {
    const Image image = imageOf(file.read(n));
    checkHolds(type, image.layout, details);
    type.write(image, details, output);
    layout = image.layout;
  }
  output.commit();
  printRemarks(o.output, layout, details);
}

ExitStatus run(const UnpackOptions& o) {
  o.in.check();
  frameType(o.output);
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
      program.add_subcommand("unpack", "Turn raw frames of any kind into plain samples");
  const auto o = std::make_shared<UnpackOptions>();
  command->add_option("IN", o->input, "Frame of any kind; - is standard input")->required();
  command->add_option("-o,--output", o->output, "Samples: .pgm, .dng, .png, .npy, .raw, or -")
      ->required()
      ->type_name("OUT");
  addPhaseOption(*command, o->in.phase);
  addInputOptions(*command, o->in);
  command->footer(kUnpackExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
