// The bytes in a gzip file, from the first to the last.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

bool beginsGzip(const std::string& head);

// Decodes as far as it is asked to, so that the caller decides how much memory that takes.
class GzipStream {
 public:
  explicit GzipStream(const Source& source);
  ~GzipStream();
  GzipStream(const GzipStream&) = delete;
  GzipStream& operator=(const GzipStream&) = delete;

  // Returns fewer than `count` bytes at the end alone, whose checksum is then known to be right.
  // Throws ProgramError (rejected) if the file is damaged or ends early.
  size_t read(uint8_t* to, size_t count);

  // Bytes of the file after the last one that counts, once the end is reached.
  uint64_t trailing() const { return trailing_; }

 private:
  void refill();
  void check(int status) const;
  void beginNextMember();

  const Source& source_;
  uint64_t at_ = 0, trailing_ = 0;
  std::vector<uint8_t> part_;
  z_stream zlib_{};
  bool isAtEnd_ = false;
};

}  // namespace vistrel::app
