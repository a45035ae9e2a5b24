// Measures flat fields.
#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "host/calibration.h"
#include "host/packings.h"
#include "host/plan.h"
#include "host/status.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

constexpr uint64_t kGainOne = VISTREL_GAIN_ONE, kMostGain = 65535;

// The levels above dark and black of a frame of an evenly lit surface.
class FlatRows {
 public:
  FlatRows(const vistrel_frame& frame, const vistrel_conversion& conversion)
      : frame_(frame), conversion_(conversion), packing_(packingOf(frame)), line_(frame.width) {
    if (conversion.calibration) dark_ = *conversion.calibration;
    dark_.flat = nullptr;
    dark_.hot_count = 0;
    conversion_.calibration = &dark_;
    calibration_.emplace(frame_, conversion_);
  }
  FlatRows(const FlatRows&) = delete;

  const std::vector<uint16_t>& row(uint32_t y) {
    const auto* const row = static_cast<const unsigned char*>(frame_.samples) +
                            y * static_cast<size_t>(strideOf(frame_));
    const void* from = row;
    if (packing_)
      core::unpackPart(*packing_, row, frame_.width, 0, frame_.width, line_.data());
    else if (frame_.bytes_per_sample == 1)
      std::copy_n(row, frame_.width, line_.begin());
    if (packing_ || frame_.bytes_per_sample == 1) from = line_.data();
    calibration_->apply(from, row, 0, y, frame_.width, line_.data());
    return line_;
  }

 private:
  const vistrel_frame& frame_;
  vistrel_conversion conversion_;
  vistrel_calibration dark_{};
  std::optional<core::Packing> packing_;
  std::optional<Calibration> calibration_;
  std::vector<uint16_t> line_;
};

// The mean of each of the four places in 1/256, rounded.
std::array<uint64_t, 4> meansOf(const vistrel_frame& f, FlatRows& rows) {
  std::array<uint64_t, 4> sums{}, counts{};
  for (uint32_t y = 0; y < f.height; ++y) {
    const auto& row = rows.row(y);
    for (size_t x = 0; x < f.width; ++x) {
      const size_t place = 2 * (y & 1) + (x & 1);
      sums[place] += row[x];
      ++counts[place];
    }
  }
  std::array<uint64_t, 4> means{};
  for (size_t i = 0; i < 4; ++i)
    if (counts[i]) means[i] = (sums[i] * 256 + counts[i] / 2) / counts[i];
  return means;
}

uint16_t gainOf(uint64_t mean, uint32_t level) {
  const uint64_t most = mean ? kMostGain : kGainOne;
  return static_cast<uint16_t>(level ? std::min((16 * mean + level / 2) / level, most) : most);
}

void measureFlat(const vistrel_frame& f, const vistrel_conversion& c, unsigned char* flat) {
  FlatRows rows(f, c);
  const auto means = meansOf(f, rows);
  for (uint32_t y = 0; y < f.height; ++y) {
    const auto& row = rows.row(y);
    for (size_t x = 0; x < f.width; ++x, flat += 2) {
      const uint16_t gain = gainOf(means[2 * (y & 1) + (x & 1)], row[x]);
      std::memcpy(flat, &gain, sizeof gain);
    }
  }
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_measure_flat(const vistrel_frame* frame, const vistrel_conversion* conversion,
                             void* flat, size_t size, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(frame, "frame");
    checkPointer(conversion, "conversion");
    checkPointer(flat, "flat");
    checkFrame(*frame);
    checkBlack(*frame, *conversion);
    if (frame->phase == VISTREL_BGR)
      reject(VISTREL_BAD_PHASE, "frame.phase", "bgr", "a flat field is a Bayer or mono frame");
    checkCalibration(*frame, *conversion);
    checkSamples(*frame);
    const uint64_t bytes = uint64_t{2} * frame->width * frame->height;
    if (size < bytes)
      reject(VISTREL_SHORT_BUFFER, "size", size, "gains of {}x{} pixels take {} bytes",
             frame->width, frame->height, bytes);
    measureFlat(*frame, *conversion, static_cast<unsigned char*>(flat));
  });
}
