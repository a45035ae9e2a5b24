#include "apps/tools/manual/details.h"

#include <fmt/ranges.h>

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
    R"(IN is a PGM, a gray PAM, a gray PNG, an NPY, a TIFF, a DNG or a FITS file, a camera raw file if the plug-in
is installed, or a headerless raw file of the given --size; a folder stands for the frames in it,
and - for standard input. A file with several frames yields a picture for each, or one film:
standard output (-, raw:-, y4m:-) and a .y4m take the pictures of all frames, one after the other.
Headerless frames that come through a pipe are converted as they arrive.

A picture shows the samples as they are: linear, without white balance, and so dark and often
green; vistrel-develop(1) makes pictures for the eye. What the file says about levels, colours and
orientation is not used; a note says so.

--dark, --black, --flat, --hot and --wb change the samples first, in this order. Then follow the
demosaic algorithm, binning, and the reduction to 8 bits by --window or --curve; --depth 16 keeps
all bits. --orient turns the picture at the end.)";

constexpr const char* kDevelop =
    R"(IN is what vistrel-convert(1) reads. Without -o, each picture lies beside its frame, under its
name.

Of the file, develop uses the black and white levels, the neutral, the colour matrices, the
orientation and the crop. It decides the rest from the samples: black from the darkest ones; white
from where they pile up; gains by Bayesian colour constancy; without a matrix in the file, one that
many cameras have in common; an exposure that keeps the highlights below white; sRGB's curve, an asinh
that lifts the shadows of a dark picture, or a gamma that darkens a picture beside clipped
highlights. Astronomical frames get a neutral, dark sky, and their brightest stars become white.

For each picture, it prints one command line that makes the same picture again without deciding
anything. Copy it, change a number, and run it. If the picture goes to standard output, the line
goes to standard error.)";

constexpr const char* kLook =
    R"(LOOK is a mode, parts NAME=VALUE separated by commas, or a mode followed by parts. Parts that are
not given come from the file or are decided.

The modes: auto decides all; srgb has sRGB's curve whatever the brightness; linear has an exposure
of 1 and no curve; astro treats the frame as an astronomical one.

The parts, in the order in which they act: black=N or N:N:N:N and white=N, levels of the samples;
gains=R:G:B; highlights=neutral or clip, where the sensor clips; matrix= nine numbers, row by row,
to linear sRGB; exposure=E, a factor; curve=linear, srgb, gamma:G or asinh:N.

--same decides the look of the first frame and gives it to all; they need the same bits and phase.)";

constexpr const char* kCalibration =
    R"(--dark FILE is a frame without light, which is subtracted with the black level in it; it has the
bits of the frame. --flat FILE is a frame of an evenly lit surface, which evens out vignetting and
dust. Both have the frame's size and phase. --hot FILE is a text of
lines "X Y", the column and the row of a pixel to replace, counted from 0; # begins a comment.)";

constexpr const char* kBatch =
    R"(With several inputs, OUT is a folder, which need not exist. A picture there that is newer than its
frame is left alone unless --overwrite is given, so the same command goes on after an interrupt. Pictures
and messages do not depend on --jobs.)";

constexpr const char* kInfo =
    R"(Prints what a file says about itself, then the range and the means of its samples. What the
file does not specify is marked as such, and options supply it as for convert.)";

constexpr const char* kFormats =
    R"(Prints one table of names: those of GigE Vision and USB3 Vision cameras (PFNC) with their values,
of V4L2, libcamera, GStreamer, FFmpeg, MIPI, FITS and DNG. Case is ignored except in the codes of V4L2. Names of
OpenCV are shown but not accepted: they start at another pixel.)";

constexpr const char* kScene =
    R"(Renders a scene with colours, edges and fine patterns, with the noise of a sensor. The same
options make the same frame on every machine.

Without --camera, the sensor takes display colours for light, so a converted frame looks right as
it is. With it, the frame needs developing.)";

constexpr const char* kUnfinished = "an unfinished file of a run; the next run removes it";

std::string algorithms() {
  return fmt::format(
      "Algorithms: {}. `vistrel algorithms` says which is for what. edge:N smooths green that "
      "varies by up to N of 255.",
      fmt::join(algorithmNames(), ", "));
}

std::string curves() {
  std::string text = "Tone curves, for 10 bits or more:";
  for (const CurveName& curve : curveNames())
    text += fmt::format("\n\n{} ({}) {}.", curve.name, curve.number, curve.effect);
  return text;
}

std::vector<FileText> pictureFiles(const std::string& folder) {
  return {{folder + "NAME.png", "the picture of NAME.pgm, with the extension of --type"},
          {folder + "NAME_000000.png", "the first picture of a file with several frames"},
          {".vistrel-XXXXXX", kUnfinished}};
}

const std::map<std::string, Details>& allDetails() {
  static const std::map<std::string, Details> all{
      {"vistrel",
       {kProgram,
        {{"share/vistrel/formats.json", "the names that `vistrel formats --json` prints"},
         {"share/doc/vistrel", "guides to the program, to algorithms and curves, to the libraries"},
         {"lib/vistrel/vistrel-libraw.so", "the plug-in that reads camera raw files"}}}},
      {"convert",
       {std::string(kConvert) + "\n\n" + algorithms() + "\n\n" + curves() + "\n\n" + kCalibration +
            "\n\n" + kBatch,
        pictureFiles("OUT/")}},
      {"develop",
       {std::string(kDevelop) + "\n\n" + kLook + "\n\n" + kCalibration + "\n\n" + kBatch,
        pictureFiles("")}},
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
