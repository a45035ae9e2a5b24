#include "apps/tools/manual/details.h"

#include <fmt/format.h>

#include <map>

#include "apps/names/curve_names.h"
#include "apps/options/algorithm.h"

namespace vistrel::app {
namespace {

constexpr const char* kProgram =
    R"(vistrel turns the raw frames of digital cameras into pictures. Every sample of the result is
defined, so all machines make the same bytes.

A frame has one sample per pixel. Its phase names the colours of the 2x2 block in the top left
corner, row by row: rggb, bggr, grbg, gbrg; or mono. Options describe only what a file does not
say itself.

Results go to files or to standard output, messages to standard error. A file appears complete or
not at all. Each command has a page of its own.)";

constexpr const char* kConvert =
    R"(IN is a binary PGM, a gray PNG, a TIFF, a DNG or a FITS file, a camera raw file if the plug-in
is installed, or a headerless raw file of the given --size; a folder stands for the frames in it,
and - for standard input. A file with several frames yields a picture for each.

A picture shows the samples as they are: linear, without white balance. --black and --wb change
the samples first. Then follow the demosaic algorithm, binning, and the reduction to 8 bits by
--window or --curve; --depth 16 keeps all bits.)";

constexpr const char* kConvertBatch =
    R"(With several inputs, OUT is an existing folder. A picture there that is newer than its frame is
left alone unless --overwrite is given, so the same command goes on after an interrupt. Pictures
and messages do not depend on --jobs.)";

constexpr const char* kInfo =
    R"(Prints what a file says about itself, then the range and the means of its samples. What the
file does not specify is marked as such, and options supply it as for convert.)";

constexpr const char* kFormats =
    R"(Prints one table of names: those of GigE Vision and USB3 Vision cameras (PFNC) with their values,
of V4L2, GStreamer, FFmpeg, FITS and DNG. Case is ignored except in the codes of V4L2. Names of
OpenCV are shown but not accepted: they start at another pixel.)";

constexpr const char* kScene =
    R"(Renders a scene with colours, edges and fine patterns, with the noise of a sensor. The same
options make the same frame on every machine.)";

constexpr const char* kUnfinished = "an unfinished file of a run; the next run removes it";

std::string algorithms() {
  return "Algorithms: " + algorithmNames() +
         ". `vistrel algorithms` says which is for what. edge:N smooths green that varies by up to "
         "N "
         "of 255.";
}

std::string curves() {
  std::string text = "Tone curves, for 10 bits or more:";
  for (const CurveName& curve : curveNames())
    text += fmt::format("\n\n{} ({}) {}.", curve.name, curve.number, curve.effect);
  return text;
}

const std::map<std::string, Details>& allDetails() {
  static const std::map<std::string, Details> all{
      {"vistrel",
       {kProgram,
        {{"share/vistrel/formats.json", "the names that `vistrel formats --json` prints"},
         {"share/doc/vistrel", "guides to the program, to algorithms and curves, to the libraries"},
         {"lib/vistrel/vistrel-libraw.so", "the plug-in that reads camera raw files"}}}},
      {"convert",
       {std::string(kConvert) + "\n\n" + algorithms() + "\n\n" + curves() + "\n\n" + kConvertBatch,
        {{"OUT/NAME.png", "the picture of NAME.pgm, with the extension of --type"},
         {"OUT/NAME_000000.png", "the first picture of a file with several frames"},
         {".vistrel-XXXXXX", kUnfinished}}}},
      {"info", {kInfo, {}}},
      {"formats", {kFormats, {}}},
      {"scene", {kScene, {{".vistrel-XXXXXX", kUnfinished}}}},
  };
  return all;
}

}  // namespace

Details detailsOf(const std::string& command) {
  const auto found = allDetails().find(command);
  return found == allDetails().end() ? Details{} : found->second;
}

}  // namespace vistrel::app
