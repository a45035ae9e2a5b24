// One job of convert --mosaic: a frame that is written as it is, without demosaicing.
#pragma once

#include "apps/commands/file_job.h"

namespace vistrel::app {

// The samples of a frame as a mono image, unchanged. Throws Error.
vistrel_conversion unchanged(const vistrel_frame& frame);

// What a file can say about a raw frame; `command` made it.
PictureDetails frameDetails(const FrameFile& file, std::string command);

class MosaicJob : public FileJob {
 public:
  // Opens the frame. Throws ProgramError. Warnings appear in the preview as they arise. The
  // arguments must outlive the object.
  MosaicJob(const Job& job, const InputOptions& input, const Compression& compression,
            const std::string& given, Preview& preview);

  void describe() override;
  const Image& make(uint64_t n, Worker& worker) override;
  PictureDetails details() const override { return details_; }

 private:
  PictureDetails details_;
};

}  // namespace vistrel::app
