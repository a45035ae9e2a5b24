// Headerless raw frames, wherever their bytes come from.
#pragma once

#include <string>
#include <vector>

#include "apps/input/reader.h"
#include "apps/options/input_options.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {

class HeaderlessReader : public Reader {
 protected:
  explicit HeaderlessReader(const InputOptions& options);

  // From the first byte of a frame to that of the next one.
  uint64_t distance() const;

  // Unpacks bytes_, which are all there, as Reader::read() does.
  void unpackTo(void* samples) const;

  [[noreturn]] void throwTooShort(const char* input, const std::string& capacity) const;

  uint64_t skip_;
  vistrel_packed packed_;
  vistrel_packed_layout layout_;
  std::vector<uint8_t> bytes_;  // of a frame, without padding behind it; as many as were read
};

}  // namespace vistrel::app
