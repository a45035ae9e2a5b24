#include <optional>

#include "host/bands.h"
#include "host/engine.h"
#include "host/excess.h"
#include "host/plan.h"
#include "host/status.h"
#include "host/streams.h"

namespace vistrel::host {
namespace {

// The scratch memory of one thread.
size_t scratchBytes(const EngineCall& call) {
  core::Arena count;
  makeRows(call, {0, call.plan.layout.height}, count);
  return count.used();
}

void makeBands(const EngineCall& call, const Bands& bands, const ThreadSource& threadSource,
               StreamLease& stream) {
  const size_t bytes = scratchBytes(call);
  auto* const scratch = static_cast<unsigned char*>(stream.scratch(bands.members() * bytes));
  threadSource.share(bands, [&](uint32_t member, ImageRows band) {
    core::Arena arena(scratch + member * bytes);
    makeRows(call, band, arena);
  });
}

void convert(vistrel_stream* callerStream, const Plan& plan, ImageRows rows,
             const vistrel_frame* frame, const vistrel_conversion* conversion,
             const vistrel_image* image) {
  const ptrdiff_t stride = checkMemory(plan, *frame, image);
  std::optional<StreamLease> stream;
  callerStream ? stream.emplace(callerStream) : stream.emplace();
  stream->checkIdle();
  const ThreadSource threadSource(*conversion);
  if (conversion->excess == VISTREL_REJECT)
    checkExcessSamples(*frame, partOf(plan, *frame, *conversion, rows),
                       threadsOf(plan, *conversion), threadSource);
  const EngineCall call{plan,
                        *frame,
                        *conversion,
                        gainsOf(*frame, *conversion),
                        static_cast<unsigned char*>(image->pixels),
                        stride};
  makeBands(call, bandsOf(plan, *conversion, rows), threadSource, *stream);
}

void convertAll(vistrel_stream* stream, const vistrel_frame* frame,
                const vistrel_conversion* conversion, const vistrel_image* image) {
  const Plan plan = makePlan(frame, conversion);
  convert(stream, plan, {0, plan.layout.height}, frame, conversion, image);
}

void convertRows(vistrel_stream* stream, const vistrel_frame* frame,
                 const vistrel_conversion* conversion, const vistrel_image* image, uint32_t first,
                 uint32_t count) {
  const Plan plan = makePlan(frame, conversion);
  if (plan.throughBuffer)
    reject(VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
           "binned raw gray mixes all rows; they can't be made separately");
  const uint32_t height = plan.layout.height;
  if (first >= height)
    reject(VISTREL_BAD_ROWS, "first", first, "the image has {}", countOf(height, "row"));
  if (!count) reject(VISTREL_BAD_ROWS, "rows", count, "1 or more are allowed");
  if (count > height - first)
    reject(VISTREL_BAD_ROWS, "rows", count, "the image has {} from row {} on",
           countOf(height - first, "row"), first);
  const uint32_t together = rowsPerChroma(*plan.format);
  const uint32_t end = first + count;
  constexpr const char* kPairs = "rows of {} are made in pairs, as they share chroma";
  if (first % together) reject(VISTREL_BAD_ROWS, "first", first, kPairs, plan.format->name);
  if (end % together && end < height)
    reject(VISTREL_BAD_ROWS, "rows", count, kPairs, plan.format->name);
  convert(stream, plan, {first, end}, frame, conversion, image);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion) {
  if (!conversion) return;
  const bool mono = frame && frame->phase == VISTREL_MONO;
  *conversion = {};
  conversion->format = mono ? VISTREL_MONO8 : VISTREL_BGR24;
  conversion->algorithm = VISTREL_BILINEAR;
  conversion->binning = 1;
}

int32_t vistrel_get_layout(const vistrel_frame* frame, const vistrel_conversion* conversion,
                           vistrel_layout* layout, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(layout, "layout");
    const Plan plan = makePlan(frame, conversion);
    *layout = plan.layout;
    const uint32_t members = bandsOf(plan, *conversion, {0, plan.layout.height}).members();
    layout->working_bytes = members * scratchBytes({plan, *frame, *conversion, {}, nullptr, 0});
  });
}

int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                        const vistrel_image* image, vistrel_error* error) {
  return toStatus(error, [&] { convertAll(nullptr, frame, conversion, image); });
}

int32_t vistrel_stream_convert(vistrel_stream* stream, const vistrel_frame* frame,
                               const vistrel_conversion* conversion, const vistrel_image* image,
                               vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(stream, "stream");
    convertAll(stream, frame, conversion, image);
  });
}

int32_t vistrel_convert_rows(vistrel_stream* stream, const vistrel_frame* frame,
                             const vistrel_conversion* conversion, const vistrel_image* image,
                             uint32_t first, uint32_t rows, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(stream, "stream");
    convertRows(stream, frame, conversion, image, first, rows);
  });
}
