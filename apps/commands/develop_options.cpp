#include "apps/commands/develop_options.h"

#include "apps/look/finished_look.h"
#include "apps/options/options.h"
#include "apps/options/orientation.h"

namespace vistrel::app {
namespace {

bool isPart(const Crop& crop, const vistrel_frame& frame) {
  return crop.width < frame.width || crop.height < frame.height;
}

}  // namespace

AlgorithmChoice DevelopOptions::usualAlgorithm() {
  return parseAlgorithm("--algorithm", kDevelopAlgorithm);
}

vistrel_conversion DevelopOptions::of(const FrameFile& file) const {
  const vistrel_frame& frame = file.frame();
  const CameraMetadata& camera = file.description().camera;
  ConversionOptions options = conversion;
  if (!options.algorithm) options.algorithm = usualAlgorithm();
  if (options.preparation.edges.empty()) options.preparation.edges = "padded";
  vistrel_conversion c = options.of(frame);
  c.bin_mode = VISTREL_BIN_MEAN;
  c.orientation = options.orientation.value_or(camera.orientation.value_or(VISTREL_UPRIGHT));
  if (!options.region && camera.crop && isPart(*camera.crop, frame))
    c.region = {camera.crop->x, camera.crop->y, camera.crop->width, camera.crop->height};
  c.finish = &kPlainFinish;
  return c;
}

void addDevelopmentOptions(CLI::App& command, DevelopOptions& o) {
  ConversionOptions& c = o.conversion;
  addLookOption(command, o.look);
  command.add_flag("--same", o.same, "Give all frames the look of the first one");
  addAlgorithmOption(command, c, kDevelopAlgorithm);
  addRegionOption(command, c);
  addOrientOption(command, c.orientation, true);
  between(command.add_option("--bin", c.binning, "Means of blocks of N x N pixels (1)"), 1, 4);
  oneOf(command.add_option("--edges", c.preparation.edges, "Borders: native, or mirrored (padded)"),
        {"native", "padded"});
  addCalibrationOptions(command, c.calibration);
  addFormatOptions(command, c, {"8", "16"}, "Bits per sample (8)");
}

}  // namespace vistrel::app
