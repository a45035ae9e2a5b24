#include "apps/look/finished_look.h"

#include <algorithm>

#include "apps/error.h"
#include "apps/look/curve.h"

namespace vistrel::app {

FinishedLook::FinishedLook(const Look& look)
    : look_(look), transfer_(pointsOf(look.transfer, size_t{1} << 16)) {
  finish_.exposure = look.exposure;
  finish_.transfer = transfer_.empty() ? nullptr : transfer_.data();
  finish_.transfer_points = static_cast<uint32_t>(transfer_.size());
  monoFinish_ = finish_;
  finish_.highlights =
      look.neutralHighlights ? VISTREL_HIGHLIGHTS_NEUTRAL : VISTREL_HIGHLIGHTS_CLIP;
  std::copy(look.matrix.begin(), look.matrix.end(), finish_.matrix);
}

void FinishedLook::apply(const vistrel_frame& frame, vistrel_conversion& c) const {
  const bool isMono = frame.phase == VISTREL_MONO;
  std::copy(look_.black.begin(), look_.black.end(), c.black);
  c.white = look_.white;
  c.finish = isMono ? &monoFinish_ : &finish_;
  if (isMono) return;
  c.white_balance = VISTREL_BALANCE_GAINS;
  std::copy(look_.gains.begin(), look_.gains.end(), c.gains);
}

void FinishedLook::setExposure(uint32_t exposure) {
  finish_.exposure = exposure;
  monoFinish_.exposure = exposure;
}

void checkBlack(const KnownLook& given, const Look& look, const vistrel_frame& frame) {
  if (!given.black || given.white) return;
  const uint32_t black = std::ranges::max(look.black);
  if (black >= look.white && black >> frame.bits == 0)  // the library rejects larger ones
    throwError(kRejected,
               "--look black={}: it must be below the white level, {}, unless white= sets "
               "another",
               black, look.white);
}

}  // namespace vistrel::app
