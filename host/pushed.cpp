#include "host/pushed.h"

#include "host/finishing.h"
#include "host/status.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

Plan makePushedPlan(const vistrel_frame* frame, const vistrel_conversion* conversion) {
  // First, since makePlan() would ask for a team.
  if (conversion && conversion->threads > 1)
    reject(VISTREL_BAD_THREADS, "conversion.threads", conversion->threads,
           "0 and 1 are allowed: the thread that pushes rows converts them");
  const Plan plan = makePlan(frame, conversion);
  if (plan.throughBuffer)
    reject(VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
           "binned raw gray needs the whole frame at once");
  if (conversion->white_balance == VISTREL_BALANCE_GRAY_WORLD)
    reject(VISTREL_BAD_BALANCE, "conversion.white_balance", "2 (gray-world)",
           "its gains need the whole frame at once");
  checkUpright(*conversion, "it needs the whole frame at once");
  return plan;
}

// The parts that take memory.
template <class T>
struct PushedEngine {
  PushedEngine(const EngineCall& call, core::Arena& arena)
      : source(call, arena), engine(call, allRows(call.plan), source, arena) {}

  PushedRows<T> source;
  RowEngine<T> engine;
};

template <class T>
class PushedSamples final : public PushedConversion {
 public:
  PushedSamples(const EngineCall& engineCall, const CheckedImage& image, core::Arena& arena)
      : PushedConversion(engineCall, image), parts_(call(), arena), next_(parts_.engine.first()) {}

 private:
  uint32_t convert(uint32_t y, const unsigned char* frameRow, const unsigned char* next) override {
    parts_.source.push(y, frameRow, next);
    while (next_ < parts_.engine.last() && parts_.source.has(next_)) ++next_;
    parts_.engine.advance(next_);
    return parts_.engine.finalRows(next_);
  }

  PushedEngine<T> parts_;
  int next_;  // the sweep's next row
};

// Puts the conversion first into the stream's scratch memory, and behind it what it takes.
template <class T>
OngoingPointer begin(const EngineCall& call, const CheckedImage& image, StreamLease& stream) {
  const size_t table = finishTableBytes(call.plan, call.conversion);
  core::Arena count;
  count.take<PushedSamples<T>>(1);
  count.take<unsigned char>(table);
  PushedEngine<T>(call, count);
  core::Arena arena(stream.scratch(count.used()));
  void* const place = arena.take<PushedSamples<T>>(1);
  EngineCall finished = call;
  finished.finishTable = fillFinishTable(call, arena.take<unsigned char>(table));
  return OngoingPointer(new (place) PushedSamples<T>(finished, image, arena));
}

OngoingPointer begin(const vistrel_frame* frame, const vistrel_conversion* conversion,
                     const vistrel_image* image, StreamLease& stream) {
  const Plan plan = makePushedPlan(frame, conversion);
  const CheckedImage checked = checkImage(plan, image);
  auto* const pixels = static_cast<unsigned char*>(image->pixels);
  const EngineCall call{.plan = plan,
                        .frame = *frame,
                        .conversion = *conversion,
                        .gains = gainsOf(*frame, *conversion),
                        .pixels = pixels,
                        .stride = checked.stride,
                        .isPushed = true};
  return plan.sampleBytes == 1 ? begin<uint8_t>(call, checked, stream)
                               : begin<uint16_t>(call, checked, stream);
}

PushedConversion& ongoingOn(StreamLease& stream) {
  if (!stream.ongoing())
    reject(VISTREL_BAD_STREAM, "stream", "", "no conversion of pushed rows is in progress on it");
  return static_cast<PushedConversion&>(*stream.ongoing());
}

void push(StreamLease& stream, const void* samples, size_t size, uint32_t rows,
          uint32_t* finalRows) {
  PushedConversion& conversion = ongoingOn(stream);
  conversion.checkPortion(samples, size, rows);
  const auto finish = [&] {
    core::storeFence();
    if (finalRows) *finalRows = conversion.finalRows();
    if (conversion.isOver()) stream.ongoing().reset();
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

PushedConversion::PushedConversion(const EngineCall& call, const CheckedImage& image)
    : plan_(call.plan), frame_(call.frame), conversion_(call.conversion),
      image_(image), call_{plan_,       frame_,      conversion_,      call.gains,
                           call.pixels, call.stride, call.finishTable, call.isPushed},
      part_(partOf(plan_, frame_, conversion_, allRows(plan_))) {}

void PushedConversion::checkPortion(const void* samples, size_t size, uint32_t rows) const {
  checkPointer(samples, "samples");
  const uint32_t left = frame_.height - pushed_;
  if (!rows) reject(VISTREL_BAD_ROWS, "rows", rows, "1 or more are allowed");
  if (rows > left)
    reject(VISTREL_BAD_ROWS, "rows", rows, "the frame has {} left", countOf(left, "row"));
  vistrel_frame portion = frame_;
  portion.height = rows;
  if (size < bytesOf(portion))
    reject(VISTREL_SHORT_BUFFER, "size", size, "{}",
           rowsIn(bytesOf(portion), rows, strideOf(frame_)));
  if (overlap(image_.rows,
              {reinterpret_cast<uintptr_t>(samples), strideOf(frame_), rowBytesOf(frame_), rows}))
    reject(VISTREL_OVERLAP, "samples", "", "they overlap the image's pixels");
}

void PushedConversion::push(const void* samples, uint32_t rows) {
  const auto* row = static_cast<const unsigned char*>(samples);
  const auto stride = static_cast<size_t>(strideOf(frame_));
  isOver_ = true;  // unless all samples pass
  for (; rows > 0; --rows, ++pushed_, row += stride) {
    if (pushed_ < part_.top || pushed_ >= part_.bottom) continue;
    if (conversion_.excess == VISTREL_REJECT) checkExcessSamples(frame_, part_, row, pushed_);
    finalRows_ = convert(pushed_, row, rows > 1 ? row + stride : nullptr);
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
    lease.ongoing() = begin(frame, conversion, image, lease);
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
    ongoingOn(lease);
    lease.ongoing().reset();
  });
}
