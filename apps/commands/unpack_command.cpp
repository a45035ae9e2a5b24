#include "apps/commands/unpack_command.h"

#include <memory>
#include <string>

#include "apps/batch/jobs.h"
#include "apps/failure.h"
#include "apps/input/frame_file.h"
#include "apps/options/options.h"
#include "apps/output/picture.h"

namespace vistrel::app {
namespace {

constexpr const char* kExamples = R"(Examples:
  vistrel unpack cam.raw -s 1280x960 --pixfmt BayerRG12p -o frame.pgm
  vistrel unpack cam.raw -s 1280x960 --pixfmt pRAA --stride 1600 -o words.raw

Samples stay as they are. A .raw has bytes for formats of 8 bits, else 16-bit
words, low byte first.)";

struct UnpackOptions {
  std::string input, output;
  InputOptions in;
};

void unpackOne(const UnpackOptions& o, const PictureType& type) {
  FrameFile file(o.input, o.in);
  vistrel_frame frame = file.read();
  frame.phase = VISTREL_MONO;  // so that samples are kept
  vistrel_conversion conversion = defaultConversion(frame);
  if (frame.bytes_per_sample == 2) conversion.format = IMG_FMT_MONO16;
  const Image image = convert(frame, conversion);
  AtomicFile output(o.output);
  type.write(image, output);
  output.commit();
}

ExitStatus run(const UnpackOptions& o) {
  if (!o.in.size || !o.in.pixfmt)
    fail(kUsage, "--size and --pixfmt are needed: a dump does not tell how its samples lie");
  const PictureType& type = pictureType(o.output);
  if (type.channels > 1) fail(kUsage, "-o {}: samples go to .pgm or .raw", o.output);
  checkIsNoInput("-o", {o.input}, o.output);
  const Outcome outcome = attempt([&] { unpackOne(o, type); });
  if (outcome.status != kDone) throw Failure(outcome.status, o.input + ": " + outcome.text);
  return kDone;
}

}  // namespace

void addUnpackCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("unpack", "Turn a packed dump into plain samples");
  const auto o = std::make_shared<UnpackOptions>();
  command->add_option("IN", o->input, "Dump without a header; - is standard input")->required();
  command->add_option("-o,--output", o->output, "Samples (.pgm, .raw)")
      ->required()
      ->type_name("OUT");
  addInputOptions(*command, o->in);
  command->footer(kExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
