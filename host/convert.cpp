#include <algorithm>
#include <optional>

#include "host/engine.h"
#include "host/plan.h"
#include "host/significant.h"
#include "host/status.h"
#include "host/streams.h"

namespace vistrel::host {
namespace {

// The first sample with excess bits, row by row.
template <class T>
void checkExcessSamples(const Plan& p, const vistrel_frame& f) {
  const Significant<T> significant(f);
  const uint32_t channels = channelsOf(f);
  const auto first = static_cast<uint32_t>(std::max<int64_t>(p.x, 0));
  const auto end = static_cast<uint32_t>(std::min<int64_t>(p.x + p.width, f.width));
  const auto top = std::max<int64_t>(p.y, 0);
  const auto bottom = std::min<int64_t>(p.y + p.height, f.height);
  const auto* bytes =
      static_cast<const unsigned char*>(f.samples) + size_t{first} * channels * sizeof(T);
  for (int64_t y = top; y < bottom; ++y)
    significant.rejectExcess(bytes + static_cast<size_t>(y) * static_cast<size_t>(strideOf(f)),
                             size_t{end - first} * channels, static_cast<uint32_t>(y),
                             [=](size_t i) { return first + static_cast<uint32_t>(i / channels); });
}

void convert(vistrel_stream* callerStream, const vistrel_frame* frame,
             const vistrel_conversion* conversion, const vistrel_image* image) {
  const Plan plan = makePlan(frame, conversion);
  const size_t stride = checkMemory(plan, *frame, image);
  std::optional<StreamLease> stream;
  callerStream ? stream.emplace(callerStream) : stream.emplace();
  if (conversion->excess == VISTREL_REJECT)
    frame->bytes_per_sample == 1 ? checkExcessSamples<uint8_t>(plan, *frame)
                                 : checkExcessSamples<uint16_t>(plan, *frame);
  const EngineCall call{plan,
                        *frame,
                        *conversion,
                        gainsOf(*frame, *conversion),
                        static_cast<unsigned char*>(image->pixels),
                        static_cast<ptrdiff_t>(stride)};
  const ImageRows all{0, plan.layout.height};
  core::Arena count;
  makeRows(call, all, count);
  core::Arena arena(stream->scratch(count.used()));
  makeRows(call, all, arena);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion) {
  const bool mono = frame->phase == VISTREL_MONO;
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
    vistrel::core::Arena count;
    makeRows({plan, *frame, *conversion, {}, nullptr, 0}, {0, plan.layout.height}, count);
    layout->working_bytes = count.used();
  });
}

int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                        const vistrel_image* image, vistrel_error* error) {
  return toStatus(error, [&] { convert(nullptr, frame, conversion, image); });
}

int32_t vistrel_stream_convert(vistrel_stream* stream, const vistrel_frame* frame,
                               const vistrel_conversion* conversion, const vistrel_image* image,
                               vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(stream, "stream");
    convert(stream, frame, conversion, image);
  });
}
