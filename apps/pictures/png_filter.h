// The filter of PNG's rows that suits photographs best: Paeth's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

class PaethFilter {
 public:
  // `step`: bytes of a pixel.
  PaethFilter(size_t rowBytes, size_t step)
      : step_(step), above_(step + rowBytes), row_(step + rowBytes), filtered_(1 + rowBytes) {}

  // The filter's code and the filtered bytes of the row below the last one; the first row lies
  // below zeros. Valid until the next call.
  const std::vector<uint8_t>& next(const uint8_t* row);

 private:
  size_t step_;
  std::vector<uint8_t> above_, row_;  // behind a pixel of zeros
  std::vector<uint8_t> filtered_;
};

}  // namespace vistrel::app
