// The pool of streams. A stream is the memory that a conversion needs besides frame and image.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <cstdint>
#include <memory>

#include "common/aligned_memory.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::host {

// Memory that conversions reuse.
class Scratch {
 public:
  // Returns at least that many bytes, aligned for an arena, with undefined contents. Throws
  // std::bad_alloc.
  void* reserve(size_t bytes);
  void free() { block_.reset(), bytes_ = 0; }

 private:
  std::unique_ptr<void, core::FreeAligned> block_;
  size_t bytes_ = 0;
};

// A conversion that continues from call to call. It lies in its stream's scratch memory.
class OngoingConversion {
 public:
  virtual ~OngoingConversion() = default;
};
struct EndInPlace {
  void operator()(OngoingConversion* conversion) const { conversion->~OngoingConversion(); }
};
using OngoingPointer = std::unique_ptr<OngoingConversion, EndInPlace>;

// The pool's record of a stream.
struct StreamRecord {
  enum State { kFree, kAcquired, kBusy };
  State state = kFree;
  uintptr_t generation = 0;  // how often it was released
  pthread_t user{};          // the thread that acquired it or converted on it last
  Scratch scratch;
  OngoingPointer ongoing;
};

// Exclusive use of a stream, for as long as the lease lives.
class StreamLease {
 public:
  // Leases a free stream. If all are in use, the lease has memory of its own; it never waits.
  StreamLease();
  // Leases a stream that the caller has acquired. Throws Rejection.
  explicit StreamLease(vistrel_stream* acquired);
  ~StreamLease();
  StreamLease(const StreamLease&) = delete;
  StreamLease& operator=(const StreamLease&) = delete;

  // The number of the stream; VISTREL_MAX_STREAMS without one.
  uint32_t id() const;

  // The conversion that has begun on the stream, if any.
  OngoingPointer& ongoing() { return record_->ongoing; }
  // Throws Rejection if there is one.
  void checkIdle() const;

  // Throws std::bad_alloc.
  void* scratch(size_t bytes) { return (record_ ? record_->scratch : own_).reserve(bytes); }
  void trim() { record_->scratch.free(); }  // of an acquired one

 private:
  StreamRecord* record_;
  StreamRecord::State after_;
  Scratch own_;
};

}  // namespace vistrel::host
