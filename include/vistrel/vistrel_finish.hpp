// Calibration and finishing: what conversions refer to, and how to make it. For C++17.
#ifndef VISTREL_FINISH_HPP
#define VISTREL_FINISH_HPP

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vistrel/vistrel_host.h"
#include "vistrel/vistrel_names.hpp"
#include "vistrel/vistrel_result.hpp"
#include "vistrel/vistrel_span.hpp"

namespace vistrel {
inline namespace v1 {

// The points of a transfer curve, as vistrel_make_transfer makes them.
inline Result<std::vector<uint16_t>> tryMakeTransfer(uint32_t kind, uint32_t parameter,
                                                     std::size_t count = 65536) noexcept {
  return detail::attempt<std::vector<uint16_t>>(
      [&](std::vector<uint16_t>& points, vistrel_error* error) {
        if (count <= 65536) points.resize(count);
        return vistrel_make_transfer(kind, parameter, points.data(), count, error);
      });
}
inline std::vector<uint16_t> makeTransfer(uint32_t kind, uint32_t parameter,
                                          std::size_t count = 65536) {
  return tryMakeTransfer(kind, parameter, count).value();
}

// Kinds of transfer curves by name, and the names.
inline Result<uint32_t> tryParseTransfer(const char* name) noexcept {
  return detail::parsed(vistrel_parse_transfer, name);
}
inline uint32_t parseTransfer(const char* name) { return tryParseTransfer(name).value(); }
inline const char* transferName(uint32_t kind) noexcept { return vistrel_transfer_name(kind); }

// A finishing stage with this transfer curve, none if it is empty; an exposure of 1, no matrix, and
// highlights that clip. It refers to the curve.
inline vistrel_finish finishOf(Span<const uint16_t> transfer) noexcept {
  constexpr uint32_t kMax = 0xFFFFFFFF;
  vistrel_finish finish{};
  finish.exposure = VISTREL_EXPOSURE_ONE;
  finish.transfer = transfer.data();
  finish.transfer_points = transfer.size() < kMax ? static_cast<uint32_t>(transfer.size()) : kMax;
  return finish;
}

// Makes `conversion` finish its pixels. `finish` must live as long as the conversion is used.
inline void setFinish(vistrel_conversion& conversion, const vistrel_finish& finish) noexcept {
  conversion.finish = &finish;
}
void setFinish(vistrel_conversion&, const vistrel_finish&&) = delete;

// A calibration by levels and gains of all pixels, in rows without padding, and by hot pixels. An
// empty one leaves its step out. It refers to all three.
inline vistrel_calibration calibrationOf(Span<const uint16_t> dark, Span<const uint16_t> flat,
                                         Span<const vistrel_point> hot) noexcept {
  return {dark.data(), 2 * dark.size(), 0,          flat.data(), 2 * flat.size(),
          0,           hot.data(),      hot.size(), {}};
}

// Makes `conversion` calibrate its samples. `calibration` must live as long as the conversion is
// used.
inline void setCalibration(vistrel_conversion& conversion,
                           const vistrel_calibration& calibration) noexcept {
  conversion.calibration = &calibration;
}
void setCalibration(vistrel_conversion&, const vistrel_calibration&&) = delete;

// The gains that make a frame of an evenly lit surface even: see vistrel_measure_flat.
inline Result<std::vector<uint16_t>> tryMeasureFlat(const vistrel_frame& frame,
                                                    const vistrel_conversion& conversion) noexcept {
  return detail::attempt<std::vector<uint16_t>>(
      [&](std::vector<uint16_t>& flat, vistrel_error* error) {
        // A frame has a byte or more for each pixel, or is rejected.
        const uint64_t pixels = uint64_t{frame.width} * frame.height;
        const bool fits = pixels && pixels <= frame.size && pixels <= flat.max_size();
        flat.resize(fits ? static_cast<std::size_t>(pixels) : 1);
        return vistrel_measure_flat(&frame, &conversion, flat.data(), 2 * flat.size(), error);
      });
}
inline std::vector<uint16_t> measureFlat(const vistrel_frame& frame,
                                         const vistrel_conversion& conversion) {
  return tryMeasureFlat(frame, conversion).value();
}

}  // namespace v1
}  // namespace vistrel

#endif
