// The options of the develop command, and the conversion that follows from them.
#pragma once

#include "apps/commands/look_options.h"
#include "apps/input/frame_file.h"
#include "apps/options/conversion_options.h"

namespace vistrel::app {

struct DevelopOptions {
  ConversionOptions conversion;
  LookChoice look;
  bool same = false;  // the look of the first frame for all

  // The algorithm without -a.
  static AlgorithmChoice usualAlgorithm();

  // All but the look and the calibration. The result refers to these options.
  vistrel_conversion of(const FrameFile& file) const;
};

void addDevelopmentOptions(CLI::App& command, DevelopOptions& options);

}  // namespace vistrel::app
