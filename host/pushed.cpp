#include "host/pushed.h"

#include "host/status.h"

namespace vistrel::host {
namespace {

Plan makePushedPlan(const vistrel_frame* frame, const vistrel_conversion* conversion) {
  const Plan plan = makePlan(frame, conversion);
  if (plan.throughBuffer)
    reject(VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
           "binned, the library's own gray needs the whole frame at once");
  if (conversion->white_balance == VISTREL_BALANCE_GRAY_WORLD)
    reject(VISTREL_BAD_BALANCE, "conversion.white_balance", "2 (gray-world)",
           "its gains need the whole frame at once");
  if (conversion->threads > 1)
    reject(VISTREL_BAD_THREADS, "conversion.threads", conversion->threads,
           "pushed rows are converted by the thread that pushes them");
  return plan;
}

template <class T>
class PushedSamples final : public PushedConversion {
 public:
  PushedSamples(const vistrel_frame* frame, const vistrel_conversion* conversion,
                const vistrel_image* image, StreamLease& stream)
      : PushedConversion(frame, conversion, image), arena_(stream.scratch(scratchBytes())),
        source_(call(), arena_), engine_(call(), allRows(), source_, arena_),
        next_(engine_.first()) {}

 private:
  size_t scratchBytes() const {
    core::Arena count;
    PushedRows<T> source(call(), count);
    RowEngine<T> engine(call(), allRows(), source, count);
    return count.used();
  }

  uint32_t convert(uint32_t y, const unsigned char* frameRow, const unsigned char* next) override {
    source_.push(y, frameRow, next);
    while (next_ < engine_.last() && source_.has(next_)) ++next_;
    engine_.advance(next_);
    return engine_.finished(next_);
  }

  core::Arena arena_;
  PushedRows<T> source_;
  RowEngine<T> engine_;
  int next_;  // the sweep's next row
};

std::unique_ptr<PushedConversion> begin(const vistrel_frame* frame,
                                        const vistrel_conversion* conversion,
                                        const vistrel_image* image, StreamLease& stream) {
  checkPointer(frame, "frame");
  if (frame->bytes_per_sample == 1)
    return std::make_unique<PushedSamples<uint8_t>>(frame, conversion, image, stream);
  return std::make_unique<PushedSamples<uint16_t>>(frame, conversion, image, stream);
}

PushedConversion& begunOn(StreamLease& stream) {
  if (!stream.begun())
    reject(VISTREL_BAD_STREAM, "stream", "", "no conversion of pushed rows has begun on it");
  return static_cast<PushedConversion&>(*stream.begun());
}

void push(StreamLease& stream, const void* samples, size_t size, uint32_t rows,
          uint32_t* finalRows) {
  PushedConversion& conversion = begunOn(stream);
  conversion.checkPortion(samples, size, rows);
  const auto finish = [&] {
    core::storeFence();
    if (finalRows) *finalRows = conversion.finalRows();
    if (conversion.isOver()) stream.begun().reset();
  };
  try {
    conversion.push(samples, rows);
  } catch (const Rejection&) {
    finish();
    throw;
  }
  finish();
}

}  // namespace

PushedConversion::PushedConversion(const vistrel_frame* frame, const vistrel_conversion* conversion,
                                   const vistrel_image* image)
    : plan_(makePushedPlan(frame, conversion)), frame_(*frame), conversion_(*conversion),
      image_(checkImage(plan_, image)), call_{plan_,       frame_,
                                              conversion_, gainsOf(frame_, conversion_),
                                              nullptr,     image_.stride},
      part_(partOf(plan_, frame_, conversion_, allRows())) {
  call_.pixels = static_cast<unsigned char*>(image->pixels);
}

void PushedConversion::checkPortion(const void* samples, size_t size, uint32_t rows) const {
  checkPointer(samples, "samples");
  const uint32_t left = frame_.height - pushed_;
  if (!rows || rows > left)
    reject(VISTREL_BAD_ROWS, "rows", rows, "1 to {} are allowed: those that are left", left);
  vistrel_frame portion = frame_;
  portion.height = rows;
  if (size < bytesOf(portion))
    reject(VISTREL_SHORT_BUFFER, "size", size, "{} rows of stride {} take {} bytes", rows,
           strideOf(frame_), bytesOf(portion));
  if (overlap(image_.rows,
              {reinterpret_cast<uintptr_t>(samples), strideOf(frame_), rowBytesOf(frame_), rows}))
    reject(VISTREL_OVERLAP, "samples", "", "they overlap the image's pixels");
}

void PushedConversion::push(const void* samples, uint32_t rows) {
  const auto* row = static_cast<const unsigned char*>(samples);
  isOver_ = true;  // unless all samples pass
  for (; rows > 0; --rows, ++pushed_, row += strideOf(frame_)) {
    if (pushed_ < part_.top || pushed_ >= part_.bottom) continue;
    if (conversion_.excess == VISTREL_REJECT) checkExcessSamples(frame_, part_, row, pushed_);
    finalRows_ = convert(pushed_, row, rows > 1 ? row + strideOf(frame_) : nullptr);
  }
  isOver_ = pushed_ == frame_.height;
}

}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_stream_begin(vistrel_stream* stream, const vistrel_frame* frame,
                             const vistrel_conversion* conversion, const vistrel_image* image,
                             vistrel_error* error) {
  return toStatus(error, [&] {
    StreamLease lease(stream);
    lease.checkIdle();
    lease.begun() = begin(frame, conversion, image, lease);
  });
}

int32_t vistrel_stream_push(vistrel_stream* stream, const void* samples, size_t size, uint32_t rows,
                            uint32_t* final_rows, vistrel_error* error) {
  return toStatus(error, [&] {
    StreamLease lease(stream);
    push(lease, samples, size, rows, final_rows);
  });
}

int32_t vistrel_stream_abort(vistrel_stream* stream, vistrel_error* error) {
  return toStatus(error, [&] {
    StreamLease lease(stream);
    begunOn(lease);
    lease.begun().reset();
  });
}
