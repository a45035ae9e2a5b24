// What the jobs of all commands share: the file that their frames come from.
#pragma once

#include <memory>

#include "apps/batch/batch.h"
#include "apps/input/frame_file.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

class FileJob : public OpenJob {
 public:
  // Opens the file. Throws ProgramError. Warnings appear in the preview as they arise. The
  // arguments must outlive the object.
  FileJob(const Job& job, const InputOptions& input, Preview& preview)
      : job_(job), preview_(preview), file_(job.from, input, preview.warnings) {}

  std::unique_ptr<AtomicFile> run(Worker& worker) final {
    const Image& image = make(job_.frame.value_or(file_.chosen()), worker);
    auto picture = writePicture(image, details(), job_.to);
    describe();
    return picture;
  }

  uint64_t frames() const final { return file_.frames(); }
  bool has(uint64_t n) final { return file_.has(n); }

 protected:
  const Job& job_;
  Preview& preview_;
  FrameFile file_;
};

}  // namespace vistrel::app
