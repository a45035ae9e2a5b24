#include "gstreamer/stream_look.h"

#include <algorithm>
#include <cmath>

#include "apps/look/frame_statistics.h"
#include "apps/look/neutral.h"
#include "gstreamer/row_pairs.h"

namespace vistrel::gstreamer {
namespace {

// How many samples decisions are based on: once, and while the stream runs.
constexpr size_t kDecisionSamples = size_t{1} << 20, kBalanceSamples = size_t{1} << 16;

std::optional<uint32_t> exposureOf(double exposure) {
  if (exposure == 0) return {};
  return static_cast<uint32_t>(
      std::clamp<long>(std::lround(exposure * app::kLookOne), 1, app::kMaxExposure));
}

// Whether only the values of exposures differ.
bool areAlike(const app::LookChoice& a, app::LookChoice b) {
  if (a.known.exposure && b.known.exposure) b.known.exposure = a.known.exposure;
  return a.mode == b.mode && a.known == b.known;
}

// A region of a frame as one of some of its rows.
vistrel_region columnsOf(const vistrel_region& region, const vistrel_frame& rows) {
  return {region.x, 0, region.width, rows.height};
}

}  // namespace

void StreamLook::set(const Settings& settings) {
  app::LookChoice choice = lookChoiceOf(settings);
  choice.known.exposure = exposureOf(settings.exposure);
  const bool isWanted = !settings.look.empty();
  if (isWanted != isWanted_ || !areAlike(choice_, choice)) finished_.reset();
  if (finished_ && choice.known.exposure) finished_->setExposure(*choice.known.exposure);
  isWanted_ = isWanted;
  choice_ = choice;
  const auto mode = static_cast<BalanceMode>(settings.balance);
  if (mode != mode_) balance_.reset();
  mode_ = mode;
  balanceTime_ = settings.balanceTime;
}

void StreamLook::reset() {
  finished_.reset();
  balance_.reset();
}

void StreamLook::apply(const vistrel_frame& frame, double seconds, vistrel_conversion& conversion) {
  if (isWanted_) {
    if (!finished_) decide(frame, conversion.region);
    finished_->apply(frame, conversion);
  } else {
    prepare(conversion);
  }
  if (frame.phase == VISTREL_MONO)
    conversion.white_balance = VISTREL_BALANCE_NONE;
  else if (mode_ != BalanceMode::kOff)
    balance(frame, seconds, conversion);
}

void StreamLook::decide(const vistrel_frame& frame, const vistrel_region& region) {
  const vistrel_frame rows = rowPairsOf(frame, region, kDecisionSamples, memory_);
  finished_.emplace(app::decideLook(rows, choice_, columnsOf(region, rows)));
}

void StreamLook::prepare(vistrel_conversion& conversion) const {
  const app::KnownLook& known = choice_.known;
  if (known.black) std::ranges::copy(*known.black, conversion.black);
  conversion.white = known.white.value_or(0);
  if (!known.gains) return;
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  std::ranges::copy(*known.gains, conversion.gains);
}

void StreamLook::balance(const vistrel_frame& frame, double seconds,
                         vistrel_conversion& conversion) {
  const auto measured = [&] { return measure(frame, conversion); };
  const app::Gains& gains = balance_.next(mode_, seconds, balanceTime_, measured);
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  std::ranges::copy(gains, conversion.gains);
}

app::Gains StreamLook::measure(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  const vistrel_frame rows = rowPairsOf(frame, conversion.region, kBalanceSamples, memory_);
  const uint32_t white = conversion.white ? conversion.white : (1u << frame.bits) - 1;
  app::BlackLevels black;
  std::ranges::copy(conversion.black, black.begin());
  const auto blocks = app::blocksOf(rows, black, white, columnsOf(conversion.region, rows));
  return app::gainsOf(blocks, black, white);
}

}  // namespace vistrel::gstreamer
