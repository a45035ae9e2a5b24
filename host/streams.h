// The library's streams, acquired and released.
#pragma once

#include <cstdint>

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// The pool's record of a stream; its index in the pool is the stream's id.
struct Slot {
  enum State { kFree, kAcquired, kBusy };
  State state = kFree;
  uint32_t width = 0, height = 0;  // size that the work buffer is large enough for
  uintptr_t generation = 0;        // how often it was released
};

// Loads the library and opens its streams, unless it is loaded. Throws std::bad_alloc.
void loadLibrary();

// Exclusive use of a stream, for as long as the lease lives.
class StreamLease {
 public:
  // Leases any stream; waits while all are in use. Throws std::bad_alloc.
  StreamLease();
  // Leases a stream that the caller has acquired. Throws Rejection.
  explicit StreamLease(vistrel_stream* acquired);
  ~StreamLease();
  StreamLease(const StreamLease&) = delete;
  StreamLease& operator=(const StreamLease&) = delete;

  uint32_t id() const;

  // Makes the work buffer large enough for a region of this size. Throws std::bad_alloc.
  void reserve(uint32_t width, uint32_t height);

  // Loads the table of VISTREL_TABLE, for samples of so many bits. Throws std::bad_alloc.
  void loadTable(const uint16_t* table, uint32_t entries, uint32_t bits);

 private:
  Slot* slot_;
  Slot::State after_;
};

}  // namespace vistrel::host
