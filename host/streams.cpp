#include "host/streams.h"

#include <pthread.h>

#include <array>
#include <condition_variable>
#include <mutex>
#include <new>
#include <vector>

#include "host/status.h"
#include "vistrel/processor.h"
#include "vistrel/vistrel.h"

namespace vistrel::host {
namespace {

constexpr uint32_t kStreams = 128;
using State = Slot::State;

// Guards the pool and the library's tables of streams: whoever holds it sees them whole. So a
// process that forks with it in hand leaves its child a pool that works.
constinit std::mutex g_mutex;

class Pool {
 public:
  // Registers every id at once. From then on a stream that grows touches its own slot of the
  // library's tables and nothing else, so no conversion has to wait for it.
  //
  // The packed operations go off, which choose a path of Kimmel's hues and nothing else: that path
  // turns many widths and phases black, and knows no binning.
  Pool() {
    ImgLoadDriver();
    ippSetCpuFeaturesMask(ippGetEnabledCpuFeatures() & ~uint64_t{IPP_CPU_SSE});
    for (uint32_t id = 0; id < kStreams; ++id) {
      if (!ImgInitialize(id, 0, 0)) {
        ImgUnloadDriver();
        throw std::bad_alloc();
      }
      free_[id] = kStreams - 1 - id;
    }
  }

  // The stream that came back last: its buffer is the warmest. Null where there is none and the
  // caller does not wait.
  Slot* take(std::unique_lock<std::mutex>& lock, bool wait, State state) {
    if (!count_ && !wait) return nullptr;
    returned_.wait(lock, [this] { return count_ > 0; });
    Slot& slot = slots_[free_[--count_]];
    slot.state = state;
    return &slot;
  }

  void giveBack(Slot& slot) {
    slot.state = State::kFree;
    ++slot.generation;
    free_[count_++] = idOf(slot);
    returned_.notify_one();
  }

  uint32_t idOf(const Slot& slot) const { return static_cast<uint32_t>(&slot - slots_.data()); }

  // What the caller holds is no address but a number that is never handed out twice: the
  // generation, and in the lowest byte the id, from 1, so that it is never null. (Of 32 bits, a
  // slot begins anew after 2^24 owners.)
  vistrel_stream* handleOf(const Slot& slot) const {
    return reinterpret_cast<vistrel_stream*>(slot.generation << 8 | (idOf(slot) + 1));
  }

  Slot& taken(const vistrel_stream* handle) {
    if (!handle) refuse(VISTREL_NULL_POINTER, "stream is null");
    const uintptr_t id = (reinterpret_cast<uintptr_t>(handle) & 0xFF) - 1;
    if (id >= kStreams || handleOf(slots_[id]) != handle || slots_[id].state == State::kFree)
      refuse(VISTREL_BAD_STREAM, "stream: none that was taken and not yet given back");
    if (slots_[id].state == State::kBusy)
      refuse(VISTREL_BAD_STREAM, "stream: another thread converts on it");
    return slots_[id];
  }

  // In the child of a fork: the threads that converted and waited are not there any more.
  void restore() {
    new (&returned_) std::condition_variable;
    for (Slot& slot : slots_)
      if (slot.state == State::kBusy) giveBack(slot);
  }

 private:
  std::condition_variable returned_;
  std::array<uint32_t, kStreams> free_;
  uint32_t count_ = kStreams;
  std::array<Slot, kStreams> slots_;
};

// Never destroyed: a thread may still convert while the process ends.
constinit Pool* g_pool = nullptr;

// With the mutex in hand.
Pool& pool() {
  if (!g_pool) g_pool = new Pool;
  return *g_pool;
}

[[maybe_unused]] const int g_forksAreWatched =
    pthread_atfork([] { g_mutex.lock(); }, [] { g_mutex.unlock(); },
                   [] {
                     if (g_pool) g_pool->restore();
                     g_mutex.unlock();
                   });

}  // namespace

void loadLibrary() {
  const std::lock_guard lock(g_mutex);
  pool();
}

StreamLease::StreamLease() : after_(State::kFree) {
  std::unique_lock lock(g_mutex);
  slot_ = pool().take(lock, true, State::kBusy);
}

StreamLease::StreamLease(vistrel_stream* taken) : after_(State::kTaken) {
  const std::lock_guard lock(g_mutex);
  slot_ = &pool().taken(taken);
  slot_->state = State::kBusy;
}

StreamLease::~StreamLease() {
  const std::lock_guard lock(g_mutex);
  slot_->state = after_;
  if (after_ == State::kFree) pool().giveBack(*slot_);
}

uint32_t StreamLease::id() const { return g_pool->idOf(*slot_); }

void StreamLease::reserve(uint32_t width, uint32_t height) {
  Slot& s = *slot_;
  if (width <= s.width && height <= s.height) return;
  const std::lock_guard lock(g_mutex);
  s.width = s.height = 0;
  if (!ImgInitialize(id(), width, height)) throw std::bad_alloc();
  s.width = width;
  s.height = height;
}

void StreamLease::loadTable(const uint16_t* table, uint32_t entries, uint32_t bits) {
  std::vector<uint16_t> whole(size_t{1} << bits);
  const size_t repeated = whole.size() / entries;
  for (size_t i = 0; i < whole.size(); ++i) whole[i] = table[i / repeated];
  const std::lock_guard lock(g_mutex);
  if (!ImgLoadLookupTable(id(), whole.data(), 1u << bits)) throw std::bad_alloc();
}

}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_stream_acquire(uint32_t wait, vistrel_stream** stream, vistrel_error* error) {
  return guarded(error, [&] {
    if (!stream) refuse(VISTREL_NULL_POINTER, "stream is null");
    if (wait != VISTREL_WAIT && wait != VISTREL_NO_WAIT)
      refuse(VISTREL_BAD_WAIT, "wait {}: 0 (wait) and 1 (do not wait) are allowed", wait);
    std::unique_lock lock(g_mutex);
    const Slot* slot = pool().take(lock, wait == VISTREL_WAIT, State::kTaken);
    if (!slot) refuse(VISTREL_NO_STREAM, "all {} streams are out", kStreams);
    *stream = pool().handleOf(*slot);
  });
}

int32_t vistrel_stream_release(vistrel_stream* stream, vistrel_error* error) {
  return guarded(error, [&] {
    const std::lock_guard lock(g_mutex);
    pool().giveBack(pool().taken(stream));
  });
}
