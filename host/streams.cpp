#include "host/streams.h"

#include <pthread.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <new>
#include <vector>

#include "common/rows/arena.h"
#include "host/fork.h"
#include "host/mutex.h"
#include "host/status.h"

namespace vistrel::host {
namespace {

constexpr uint32_t kStreams = VISTREL_MAX_STREAMS;
using State = StreamRecord::State;

// Guards the pool. A process that forks holds the mutex meanwhile, so the child's pool is intact.
VISTREL_GLOBAL_MUTEX g_mutex;

// A cancelled thread would unwind through entries that let no exception escape.
class CancellationOff {
 public:
  CancellationOff() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
  ~CancellationOff() { pthread_setcancelstate(before_, nullptr); }
  CancellationOff(const CancellationOff&) = delete;
  CancellationOff& operator=(const CancellationOff&) = delete;

 private:
  int before_ = 0;
};

class Pool {
 public:
  Pool() {
    for (uint32_t id = 0; id < kStreams; ++id) free_[id] = kStreams - 1 - id;
  }

  // Takes the stream that was released last, since its buffer is the warmest. Returns null if all
  // streams are in use and the caller does not wait.
  StreamRecord* acquire(std::unique_lock<std::mutex>& lock, bool wait, State state) {
    if (!count_ && !wait) return nullptr;
    const CancellationOff off;
    released_.wait(lock, [this] { return count_ > 0; });
    StreamRecord& record = records_[free_[--count_]];
    use(record, state);
    return &record;
  }

  void use(StreamRecord& record, State state) {
    record.state = state;
    record.user = pthread_self();
  }

  void release(StreamRecord& record) {
    record.state = State::kFree;
    record.ongoing.reset();
    ++record.generation;
    free_[count_++] = idOf(record);
    released_.notify_one();
  }

  uint32_t idOf(const StreamRecord& record) const {
    return static_cast<uint32_t>(&record - records_.data());
  }

  // A handle is not an address but a number that is never handed out twice: the generation, and in
  // the lowest byte the id + 1, so that no handle is null. (With 32-bit pointers, the numbers of a
  // slot repeat after 2^24 owners.)
  vistrel_stream* handleOf(const StreamRecord& record) const {
    return reinterpret_cast<vistrel_stream*>(record.generation << 8 | (idOf(record) + 1));
  }

  StreamRecord& acquired(const vistrel_stream* handle) {
    checkPointer(handle, "stream");
    const uintptr_t id = (reinterpret_cast<uintptr_t>(handle) & 0xFF) - 1;
    if (id >= kStreams || handleOf(records_[id]) != handle || records_[id].state == State::kFree)
      reject(VISTREL_BAD_STREAM, "stream", "", "it is not acquired");
    if (records_[id].state == State::kBusy)
      reject(VISTREL_BUSY_STREAM, "stream", "", "a conversion is running on it");
    return records_[id];
  }

  void trim() {
    for (StreamRecord& record : records_)
      if (record.state == State::kFree) record.scratch.free();
  }

  // Runs in the child of a fork, where only this thread exists.
  void restore() {
    new (&released_) std::condition_variable;
    for (StreamRecord& record : records_)
      if (record.state != State::kFree && !pthread_equal(record.user, pthread_self()))
        release(record);
  }

 private:
  std::condition_variable released_;
  std::array<uint32_t, kStreams> free_;
  uint32_t count_ = kStreams;
  std::array<StreamRecord, kStreams> records_;
};

// Never destroyed: a thread may still be converting while the process ends.
alignas(Pool) constinit unsigned char g_memory[sizeof(Pool)] = {};
constinit Pool* g_pool = nullptr;

// The caller holds the mutex.
Pool& pool() {
  if (!g_pool) g_pool = new (g_memory) Pool;
  return *g_pool;
}

[[maybe_unused]] const int g_forkHandlers = atFork([] { g_mutex.lock(); }, [] { g_mutex.unlock(); },
                                                   [] {
                                                     if (g_pool) g_pool->restore();
                                                     g_mutex.unlock();
                                                   });

}  // namespace

void* Scratch::reserve(size_t bytes) {
  // A fork may have caught another thread between two of these steps.
  if (block_ && bytes <= bytes_) return block_.get();
  free();
  constexpr size_t kAlign = core::Arena::kAlign;
  const size_t lines = std::max<size_t>(bytes / kAlign + (bytes % kAlign > 0), 1);
  block_.reset(core::allocateAligned(kAlign, lines * kAlign));
  if (!block_) throw std::bad_alloc();
  bytes_ = bytes;
  return block_.get();
}

StreamLease::StreamLease() : after_(State::kFree) {
  std::unique_lock lock(g_mutex);
  record_ = pool().acquire(lock, false, State::kBusy);
}

StreamLease::StreamLease(vistrel_stream* acquired) : after_(State::kAcquired) {
  const std::lock_guard lock(g_mutex);
  record_ = &pool().acquired(acquired);
  pool().use(*record_, State::kBusy);
}

StreamLease::~StreamLease() {
  if (!record_) return;
  const std::lock_guard lock(g_mutex);
  record_->state = after_;
  if (after_ == State::kFree) pool().release(*record_);
}

uint32_t StreamLease::id() const { return record_ ? g_pool->idOf(*record_) : kStreams; }

void StreamLease::checkIdle() const {
  if (record_ && record_->ongoing)
    reject(VISTREL_BUSY_STREAM, "stream", "", "a conversion of pushed rows is in progress on it");
}

}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_stream_acquire(uint32_t wait, vistrel_stream** stream, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(stream, "stream");
    if (wait != VISTREL_WAIT && wait != VISTREL_NO_WAIT)
      reject(VISTREL_BAD_WAIT, "wait", wait, "0 (wait) and 1 (do not wait) are allowed");
    std::unique_lock lock(g_mutex);
    const StreamRecord* record = pool().acquire(lock, wait == VISTREL_WAIT, State::kAcquired);
    if (!record) reject(VISTREL_NO_STREAM, "", "", "all {} streams are in use", kStreams);
    *stream = pool().handleOf(*record);
  });
}

int32_t vistrel_stream_release(vistrel_stream* stream, vistrel_error* error) {
  return toStatus(error, [&] {
    const std::lock_guard lock(g_mutex);
    pool().release(pool().acquired(stream));
  });
}

int32_t vistrel_stream_trim(vistrel_stream* stream, vistrel_error* error) {
  return toStatus(error, [&] {
    StreamLease lease(stream);
    lease.checkIdle();  // pushed rows lie in the scratch memory
    lease.trim();
  });
}

void vistrel_trim() {
  const std::lock_guard lock(g_mutex);
  if (g_pool) g_pool->trim();
}
