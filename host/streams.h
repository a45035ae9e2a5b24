// The library's 128 streams, handed out and taken back.
#pragma once

#include <cstdint>

namespace vistrel::host {

// Loads the library and opens its streams, unless that is done.
void loadLibrary();

// A stream of one's own for as long as it lives. Waits while all are out.
class StreamLease {
 public:
  StreamLease();
  ~StreamLease();
  StreamLease(const StreamLease&) = delete;
  StreamLease& operator=(const StreamLease&) = delete;

  uint32_t id() const { return id_; }

  // Makes the work buffer large enough for a region of this size. Throws std::bad_alloc.
  void reserve(uint32_t width, uint32_t height);

  // Makes this the table of lut_mode 10, for samples of so many bits. Throws std::bad_alloc.
  void loadTable(const uint16_t* table, uint32_t entries, uint32_t bits);

 private:
  uint32_t id_;
};

}  // namespace vistrel::host
