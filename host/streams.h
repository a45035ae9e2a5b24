// The library's 128 streams, handed out and taken back.
#pragma once

#include <cstdint>

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// What the pool knows of a stream; its place in the pool's array is the stream's number.
struct Slot {
  enum State { kFree, kTaken, kBusy };
  State state = kFree;
  uint32_t width = 0, height = 0;  // that the work buffer is large enough for
  uintptr_t generation = 0;        // how often it was given back
};

// Loads the library and opens its streams, unless that is done. Throws std::bad_alloc.
void loadLibrary();

// A stream that nobody else converts on for as long as it lives.
class StreamLease {
 public:
  // Waits while all are out. Throws std::bad_alloc.
  StreamLease();
  // One that the caller has taken. Throws Refusal.
  explicit StreamLease(vistrel_stream* taken);
  ~StreamLease();
  StreamLease(const StreamLease&) = delete;
  StreamLease& operator=(const StreamLease&) = delete;

  uint32_t id() const;

  // Makes the work buffer large enough for a region of this size. Throws std::bad_alloc.
  void reserve(uint32_t width, uint32_t height);

  // Makes this the table of reduction 10, for samples of so many bits. Throws std::bad_alloc.
  void loadTable(const uint16_t* table, uint32_t entries, uint32_t bits);

 private:
  Slot* slot_;
  Slot::State after_;
};

}  // namespace vistrel::host
