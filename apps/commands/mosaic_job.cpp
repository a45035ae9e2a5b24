#include "apps/commands/mosaic_job.h"

#include "apps/commands/camera_details.h"
#include "apps/commands/picture_request.h"

namespace vistrel::app {
namespace {

vistrel_frame withoutPhase(vistrel_frame frame) {
  frame.phase = VISTREL_MONO;
  return frame;
}

}  // namespace

vistrel_conversion unchanged(const vistrel_frame& frame) {
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.format = frame.bytes_per_sample == 2 ? VISTREL_MONO16 : VISTREL_MONO8;
  return conversion;
}

PictureDetails frameDetails(const FrameFile& file, std::string command) {
  return {.encoding = kLinearLight,
          .command = std::move(command),
          .shot = shotOf(file.description().camera),
          .camera = file.knowsPhase() ? std::optional(dngCameraOf(file)) : std::nullopt};
}

MosaicJob::MosaicJob(const Job& job, const InputOptions& input, const Compression& compression,
                     const std::string& given, Preview& preview)
    : FileJob(job, input, preview),
      details_(frameDetails(file_, commandText("convert", job.from.filename(), job, given))) {
  details_.compression = compression;
  const vistrel_frame frame = withoutPhase(file_.frame());
  checkHolds(pictureType(job.to), layoutOf(frame, unchanged(frame)), details_);
}

void MosaicJob::describe() {
  const vistrel_frame frame = withoutPhase(file_.frame());
  preview_.layout = layoutOf(frame, unchanged(frame));
  addOrigin(file_, preview_);
  for (std::string& remark : remarksOn(pictureType(job_.to), preview_.layout, details_))
    preview_.warnings.push_back(std::move(remark));
}

const Image& MosaicJob::make(uint64_t n, Worker& worker) {
  return withOriginOfBits(file_, [&]() -> const Image& {
    const vistrel_frame frame = withoutPhase(file_.read(n));
    return worker.convert(frame, unchanged(frame));
  });
}

}  // namespace vistrel::app
