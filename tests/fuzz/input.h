// Consumes values from a fuzzer's bytes; past the end they are zero.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace vistrel {

class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), left_(size) {}

  template <class T = uint8_t>
  T take() {
    T value{};
    const size_t n = std::min(sizeof value, left_);
    if (n) std::memcpy(&value, data_, n);
    data_ += n;
    left_ -= n;
    return value;
  }
  // Usually less than `end`, occasionally any value.
  uint32_t below(uint32_t end) {
    const auto kind = take();
    return kind == 255 ? take<uint32_t>() : (kind & 1 ? take<uint16_t>() : kind / 2) % end;
  }

  const uint8_t* data() const { return data_; }
  size_t left() const { return left_; }

 private:
  const uint8_t* data_;
  size_t left_;
};

}  // namespace vistrel
