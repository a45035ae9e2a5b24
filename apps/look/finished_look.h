// A look as the library takes it.
#pragma once

#include <vector>

#include "apps/look/look.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// A stage that leaves everything as it is. Layouts are those of finished pictures; samples of
// formats of 16 bits are scaled to all of these.
inline constexpr vistrel_finish kPlainFinish{0, VISTREL_EXPOSURE_ONE, {}, 0, nullptr, {}};

class FinishedLook {
 public:
  // Throws Error.
  explicit FinishedLook(const Look& look);
  FinishedLook(const FinishedLook&) = delete;
  FinishedLook& operator=(const FinishedLook&) = delete;

  // In 1/4096.
  void setExposure(uint32_t exposure);

  // The conversion refers to this object.
  void apply(const vistrel_frame& frame, vistrel_conversion& conversion) const;

 private:
  const Look look_;
  const std::vector<uint16_t> transfer_;
  vistrel_finish finish_{}, monoFinish_{};
};

// Throws ProgramError if the black level that users give is not below the white level that was
// decided or that the file specifies.
void checkBlack(const KnownLook& given, const Look& look, const vistrel_frame& frame);

}  // namespace vistrel::app
