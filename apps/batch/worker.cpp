#include "apps/batch/worker.h"

#include <utility>

namespace vistrel::app {

const Image& Worker::convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  if (!stream_) stream_ = Stream::acquire();
  vistrel_conversion shared = conversion;
  setTeam(shared, team_);
  stream_.convertInto(frame, shared, image_);
  return image_;
}

WorkerPool::WorkerPool(size_t count) : workers_(count) {
  for (Worker& worker : workers_) free_.push_back(&worker);
}

WorkerPool::Lease::Lease(WorkerPool& pool) : pool_(pool) {
  std::unique_lock lock(pool_.mutex_);
  pool_.returned_.wait(lock, [this] { return !pool_.free_.empty(); });
  worker_ = pool_.free_.back();
  pool_.free_.pop_back();
}

void WorkerPool::Lease::release() {
  if (!worker_) return;
  {
    const std::lock_guard lock(pool_.mutex_);
    pool_.free_.push_back(std::exchange(worker_, nullptr));
  }
  pool_.returned_.notify_one();
}

}  // namespace vistrel::app
