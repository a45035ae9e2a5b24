#include "host/streams.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <new>
#include <vector>

#include "cfa/processor.h"
#include "frontend/vistrel.h"

namespace vistrel::host {
namespace {

constexpr uint32_t kStreams = 128;

struct Size {
  uint32_t width, height;
};

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
      ImgInitialize(id, 0, 0);
      free_[id] = kStreams - 1 - id;
    }
  }

  // The stream that came back last: its buffer is the warmest.
  uint32_t take() {
    std::unique_lock lock(mutex_);
    returned_.wait(lock, [this] { return count_ > 0; });
    return free_[--count_];
  }

  void giveBack(uint32_t id) {
    {
      const std::lock_guard lock(mutex_);
      free_[count_++] = id;
    }
    returned_.notify_one();
  }

  Size& size(uint32_t id) { return sizes_[id]; }

 private:
  std::mutex mutex_;
  std::condition_variable returned_;
  std::array<uint32_t, kStreams> free_;
  uint32_t count_ = kStreams;
  std::array<Size, kStreams> sizes_{};
};

// Never destroyed: a thread may still convert while the process ends.
Pool& pool() {
  static Pool& instance = *new Pool;
  return instance;
}

}  // namespace

void loadLibrary() { pool(); }

StreamLease::StreamLease() : id_(pool().take()) {}
StreamLease::~StreamLease() { pool().giveBack(id_); }

void StreamLease::reserve(uint32_t width, uint32_t height) {
  Size& size = pool().size(id_);
  if (width <= size.width && height <= size.height) return;
  size = {0, 0};
  if (!ImgInitialize(id_, width, height)) throw std::bad_alloc();
  size = {width, height};
}

void StreamLease::loadTable(const uint16_t* table, uint32_t entries, uint32_t bits) {
  std::vector<uint16_t> whole(size_t{1} << bits);
  const size_t repeated = whole.size() / entries;
  for (size_t i = 0; i < whole.size(); ++i) whole[i] = table[i / repeated];
  if (!ImgLoadLookupTable(id_, whole.data(), 1u << bits)) throw std::bad_alloc();
}

}  // namespace vistrel::host
