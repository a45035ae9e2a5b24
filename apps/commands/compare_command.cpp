#include "apps/commands/commands.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/commands/develop_options.h"
#include "apps/error.h"
#include "apps/files/run_files.h"
#include "apps/input/curve_file.h"
#include "apps/input/frame_file.h"
#include "apps/look/camera_look.h"
#include "apps/look/decide.h"
#include "apps/look/finished_look.h"
#include "apps/options/conversion_options.h"
#include "apps/options/input_options.h"
#include "apps/options/options.h"
#include "apps/pictures/picture.h"
#include "apps/progress/progress.h"
#include "apps/tools/sheet/contact_sheet.h"

namespace vistrel::app {
namespace {

constexpr const char* kCompareExamples = R"(Examples:
  vistrel compare rose.pgm --phase rggb --bits 12 --window 2 -o sheet.png
  vistrel compare [ab]_8b_grbg.pgm --from-name --crop 90x60+64+40 -o sheet.png
  vistrel compare rose.pgm --phase rggb --look auto -a ahd -o sheet.png

The sheet has a block for each frame, with one copy of the crop per algorithm.
If an algorithm supports fewer bits than the frame has, the lowest bits are
dropped first, and the label says so. `vistrel algorithms`: which is for what.)";

constexpr uint32_t kCropWidth = 120, kCropHeight = 90;
// Pixels converted around the crop, so that it shows no border effects.
constexpr uint32_t kMargin = 16;

struct CompareOptions {
  std::vector<std::string> inputs;
  std::string output;
  InputOptions input;
  std::vector<AlgorithmChoice> algorithms;
  std::optional<vistrel_region> crop;
  uint32_t zoom = 3;
  ToneOptions tone;
  std::optional<LookChoice> look;
  bool mask = false;
};

OptionNames optionNamesOf(const CompareOptions& o) {
  OptionNames names = o.tone.optionNames();
  const OptionNames more = lookOptionNames();
  names.insert(names.end(), more.begin(), more.end());
  names.push_back({"conversion.region", "--crop", o.crop ? regionText(*o.crop) : ""});
  return names;
}

// Has the host layer reject a crop that is empty or extends beyond the frame. As a mono frame's,
// since algorithms get the margin as well. Throws Error.
void checkCrop(vistrel_frame frame, const vistrel_region& crop) {
  frame.phase = VISTREL_MONO;
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.region = crop;
  layoutOf(frame, conversion);
}

// What all cells of a frame have in common: with a look, all that develop does.
vistrel_conversion conversionOf(const FrameFile& file, const CompareOptions& o) {
  vistrel_conversion c = o.look ? DevelopOptions{}.of(file) : defaultConversion(file.frame());
  c.format = VISTREL_RGB24;
  c.excess = o.mask ? VISTREL_MASK : VISTREL_REJECT;
  o.tone.apply(c);
  return c;
}

// The middle of what the conversion shows by default.
vistrel_region cropOf(const vistrel_frame& f, const vistrel_conversion& c,
                      const CompareOptions& o) {
  if (o.crop) {
    checkCrop(f, *o.crop);
    return *o.crop;
  }
  const vistrel_region all = c.region.width ? c.region : vistrel_region{0, 0, f.width, f.height};
  const uint32_t width = std::min(all.width, kCropWidth);
  const uint32_t height = std::min(all.height, kCropHeight);
  return {all.x + (all.width - width) / 2, all.y + (all.height - height) / 2, width, height};
}

vistrel_region widened(const vistrel_region& c, const vistrel_frame& f) {
  const uint32_t left = std::min(c.x, kMargin), top = std::min(c.y, kMargin);
  const uint32_t right = std::min(f.width - c.x - c.width, kMargin);
  const uint32_t bottom = std::min(f.height - c.y - c.height, kMargin);
  return {c.x - left, c.y - top, left + c.width + right, top + c.height + bottom};
}

// Where the crop is in the image of the region, which is turned or mirrored.
vistrel_region placeOf(const vistrel_region& crop, const vistrel_region& region,
                       uint32_t orientation) {
  const auto isOneOf = [orientation](std::initializer_list<uint32_t> codes) {
    return std::ranges::count(codes, orientation) > 0;
  };
  uint32_t x = crop.x - region.x, y = crop.y - region.y;
  if (isOneOf({VISTREL_MIRRORED, VISTREL_TURNED_180, VISTREL_TRANSVERSE, VISTREL_TURNED_270}))
    x = region.width - crop.width - x;
  if (isOneOf({VISTREL_FLIPPED, VISTREL_TURNED_180, VISTREL_TRANSVERSE, VISTREL_TURNED_90}))
    y = region.height - crop.height - y;
  if (orientation < VISTREL_TRANSPOSED) return {x, y, crop.width, crop.height};
  return {y, x, crop.height, crop.width};
}

Cell cellOf(const vistrel_frame& frame, vistrel_conversion c, const vistrel_region& crop,
            const AlgorithmChoice& algorithm) {
  c.algorithm = algorithm.row->code;
  c.threshold = algorithm.threshold;
  c.region = widened(crop, frame);
  const bool reduced = frame.bits > algorithm.row->max_bits;
  c.truncate_to = reduced ? algorithm.row->max_bits : 0;
  std::string label = labelOf(algorithm);
  if (reduced) label += fmt::format(", {} bit", algorithm.row->max_bits);
  return {label, convert(frame, c), placeOf(crop, c.region, c.orientation)};
}

// What is known of a frame when its file has been read.
struct Compared {
  Strip strip;
  std::string look;  // in words; empty for linear samples
};

Compared comparedOf(const std::string& path, const CompareOptions& o,
                    std::vector<std::string>& warnings) {
  FrameFile file(path, o.input, warnings);
  if (file.frame().phase == VISTREL_MONO)
    throwError(kRejected,
               "a mono frame cannot be demosaiced; --phase names one of the four Bayer phases");
  vistrel_conversion conversion = conversionOf(file, o);
  const vistrel_region crop = cropOf(file.frame(), conversion, o);
  const vistrel_frame& frame = file.read();
  Compared result;
  result.strip.title =
      fmt::format("{}  {} bit {}  {}  {}x", std::filesystem::path(path).filename().string(),
                  frame.bits, vistrel_phase_name(frame.phase), regionText(crop), o.zoom);
  std::optional<FinishedLook> look;
  if (o.look) {
    const Look decided =
        decideLook(frame, withCamera(*o.look, file.description().camera, false), conversion.region);
    checkBlack(o.look->known, decided, frame);
    result.look = lookText(decided);
    look.emplace(decided).apply(frame, conversion);
  }
  for (const AlgorithmChoice& algorithm : orAll(o.algorithms))
    result.strip.cells.push_back(cellOf(frame, conversion, crop, algorithm));
  return result;
}

ExitStatus run(CompareOptions& o) {
  o.input.checkWithPhase();
  if (o.look && !o.tone.typed().empty())
    throwError(kUsage, "{} and --look cannot be combined: a look has a curve of its own",
               o.tone.typed());
  const PictureType& type = pictureType(o.output);
  if (type.channels == 1) throwError(kUsage, "-o {}: a sheet is a .png or .ppm", o.output);
  RunFiles files;
  files.addInputs(o.inputs);
  const auto curve = o.tone.file();
  if (curve) files.addRead("--curve", *curve);
  files.addWritten("-o", o.output);
  if (curve) o.tone.table = readCurve(*curve);
  std::vector<Strip> strips;
  std::string looks;
  Progress progress(o.inputs.size());
  ExitStatusSum sum;
  for (const std::string& path : o.inputs) {
    std::vector<std::string> warnings;
    const Outcome outcome = attempt([&] {
      withOptionNames(optionNamesOf(o), [&] {
        const Compared compared = comparedOf(path, o, warnings);
        strips.push_back(compared.strip);
        if (o.look) looks += fmt::format("{}: --look {}\n", path, compared.look);
      });
    });
    for (const std::string& warning : warnings) progress.say(fmt::format("{}: {}", path, warning));
    if (outcome.status != kDone) progress.say(fmt::format("{}: {}", path, outcome.text));
    sum.add(outcome.status);
    progress.made();
  }
  if (strips.empty()) return sum.status();
  const Canvas sheet = sheetOf(strips, o.zoom);
  savePicture(sheet.image(), {}, o.output);
  progress.clear();
  fmt::print(isStandardOutput(o.output) ? stderr : stdout, "{}", looks);
  return sum.status();
}

}  // namespace

void addCompareCommand(CLI::App& program, int& status) {
  auto* command = program.add_subcommand("compare", "Show one crop by every algorithm on a sheet");
  const auto o = std::make_shared<CompareOptions>();
  command->add_option("IN", o->inputs, "Frames, or headerless raw files with --size")->required();
  command->add_option("-o,--output", o->output, "Sheet (.png, .ppm)")->required()->type_name("OUT");
  addPhaseOption(*command, o->input.phase);
  addAlgorithmsOption(*command, o->algorithms);
  command
      ->add_option_function<std::string>(
          "--crop", [o](const std::string& s) { o->crop = parseRegion("--crop", s); },
          "Region to show, in sensor pixels (120x90 in the middle)")
      ->type_name("WxH+X+Y");
  between(command->add_option("--zoom", o->zoom, "Magnification (3)"), 1, 16);
  addLookOption(*command, o->look);
  addToneOptions(*command, o->tone);
  command->add_flag("--mask", o->mask, "Drop bits above the significant ones, don't reject");
  addInputOptions(*command, o->input);
  command->footer(kCompareExamples);
  command->callback([o, &status] { status = run(*o); });
}

}  // namespace vistrel::app
