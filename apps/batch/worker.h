// What converts: streams with their image memory, and a pool of them.
#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// A stream and image memory, which it keeps from frame to frame.
class Worker {
 public:
  // With several threads, these share the work on each frame.
  explicit Worker(unsigned threads = 1) {
    if (threads > 1) team_ = Team::create(threads);
  }

  // The image is valid until the next call. Throws Error.
  const Image& convert(const vistrel_frame& frame, const vistrel_conversion& conversion);

  // The last one.
  const Image& image() const { return image_; }

 private:
  Stream stream_;  // acquired on first use
  Image image_;
  Team team_;
};

// Fewer workers than threads: while some threads wait for the disk, others convert.
class WorkerPool {
 public:
  explicit WorkerPool(size_t count);

  // A worker that belongs to one thread until it is returned.
  class Lease {
   public:
    explicit Lease(WorkerPool& pool);  // waits for one
    ~Lease() { release(); }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    Worker& operator*() const { return *worker_; }
    void release();

   private:
    WorkerPool& pool_;
    Worker* worker_;
  };

 private:
  std::vector<Worker> workers_;
  std::vector<Worker*> free_;
  std::mutex mutex_;
  std::condition_variable returned_;
};

}  // namespace vistrel::app
