// The filters of PNG's rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

// What is subtracted from each byte; the values are those in the file.
enum class PngFilter : uint8_t { kNone, kLeft, kAbove, kMean, kPaeth };

class FilteredRows {
 public:
  // `step`: bytes of a pixel.
  FilteredRows(PngFilter filter, size_t rowBytes, size_t step)
      : filter_(filter), step_(step), above_(step + rowBytes), row_(step + rowBytes),
        filtered_(1 + rowBytes) {}

  // The filter's code and the filtered bytes of the row below the last one; the first row lies
  // below zeros. Valid until the next call.
  const std::vector<uint8_t>& next(const uint8_t* row);

 private:
  PngFilter filter_;
  size_t step_;
  std::vector<uint8_t> above_, row_;  // behind a pixel of zeros
  std::vector<uint8_t> filtered_;
};

}  // namespace vistrel::app
