#include <algorithm>
#include <optional>

#include "host/bands.h"
#include "host/engine.h"
#include "host/excess.h"
#include "host/finishing.h"
#include "host/plan.h"
#include "host/status.h"
#include "host/streams.h"
#include "host/turned.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

// Of shared memory, and that of so many members after it.
size_t bytesOf(size_t shared, size_t members, size_t member) {
  core::Arena count;
  count.take<unsigned char>(shared);
  for (size_t i = 0; i < members; ++i) count.take<unsigned char>(member);
  return count.used();
}

// The scratch memory of one thread.
template <class Make>
size_t memberBytes(const Make& make) {
  core::Arena count;
  make(count);
  return count.used();
}

size_t rowsMemberBytes(const EngineCall& call) {
  return memberBytes([&](core::Arena& count) { makeRows(call, allRows(call.plan), count); });
}

size_t turnedMemberBytes(const EngineCall& call) {
  return memberBytes(
      [&](core::Arena& count) { storeTurned(call, nullptr, allRows(call.plan), count); });
}

// What a call that makes bands of its image takes, counted once.
struct BandMemory {
  BandMemory(const EngineCall& call, const Bands& bands)
      : table(finishTableBytes(call.plan, call.conversion)), member(rowsMemberBytes(call)),
        bytes(bytesOf(table, bands.members(), member)) {}

  size_t table, member, bytes;  // shared; of one thread; of all
};

// Makes bands of the image in that memory.
void makeBands(const EngineCall& call, const Bands& bands, const ThreadSource& threadSource,
               const BandMemory& memory, unsigned char* scratch) {
  EngineCall finished = call;
  finished.finishTable = fillFinishTable(call, scratch);
  unsigned char* const members = scratch + memory.table;
  threadSource.share(bands, [&](uint32_t member, ImageRows band) {
    core::Arena arena(members + member * memory.member);
    makeRows(finished, band, arena);
  });
}

// A conversion whose image is turned or mirrored.
class TurnedConversion {
 public:
  explicit TurnedConversion(const EngineCall& call)
      : call_(call), conversion_(uprightConversion(call.plan, call.conversion)),
        plan_(makePlan(&call.frame, &conversion_)),
        uprightBands_(bandsOf(plan_, conversion_, allRows(plan_))),
        bands_(bandsOf(call.plan, call.conversion, allRows(call.plan))),
        uprightMemory_(uprightCall(nullptr), uprightBands_), memberBytes_(turnedMemberBytes(call)) {
  }

  size_t bytes() const {
    return std::max(bytesOf(imageBytes(), 1, uprightMemory_.bytes),
                    bytesOf(imageBytes(), bands_.members(), memberBytes_));
  }

  void make(const ThreadSource& threadSource, unsigned char* scratch) const {
    makeBands(uprightCall(scratch), uprightBands_, threadSource, uprightMemory_,
              scratch + imageBytes());
    threadSource.share(bands_, [&](uint32_t member, ImageRows band) {
      core::Arena arena(scratch + imageBytes() + member * memberBytes_);
      storeTurned(call_, scratch, band, arena);
    });
  }

 private:
  size_t imageBytes() const { return bytesOf(plan_.layout.bytes, 0, 0); }
  EngineCall uprightCall(unsigned char* pixels) const {
    return {plan_,       call_.frame, conversion_,
            call_.gains, pixels,      static_cast<ptrdiff_t>(plan_.layout.row_bytes)};
  }

  const EngineCall& call_;
  const vistrel_conversion conversion_;
  const Plan plan_;
  const Bands uprightBands_, bands_;
  const BandMemory uprightMemory_;
  const size_t memberBytes_;
};

size_t workingBytes(const EngineCall& call) {
  if (isTurned(call.conversion)) return TurnedConversion(call).bytes();
  return BandMemory(call, bandsOf(call.plan, call.conversion, allRows(call.plan))).bytes;
}

void make(const EngineCall& call, ImageRows rows, const ThreadSource& threadSource,
          StreamLease& stream) {
  const auto take = [&](size_t bytes) {
    return static_cast<unsigned char*>(stream.scratch(bytes));
  };
  if (isTurned(call.conversion)) {
    const TurnedConversion turned(call);
    return turned.make(threadSource, take(turned.bytes()));
  }
  const Bands bands = bandsOf(call.plan, call.conversion, rows);
  const BandMemory memory(call, bands);
  makeBands(call, bands, threadSource, memory, take(memory.bytes));
}

// The rows of the upright image that the frame's samples are read for.
ImageRows rowsToRead(const Plan& plan, const vistrel_conversion& conversion, ImageRows rows) {
  if (!isTurned(conversion)) return rows;
  return {0, std::max(plan.layout.width, plan.layout.height)};
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
    checkExcessSamples(*frame,
                       partOf(plan, *frame, *conversion, rowsToRead(plan, *conversion, rows)),
                       threadsOf(plan, *conversion), threadSource);
  const EngineCall call{plan,
                        *frame,
                        *conversion,
                        gainsOf(*frame, *conversion),
                        static_cast<unsigned char*>(image->pixels),
                        stride};
  make(call, rows, threadSource, *stream);
}

void convertAll(vistrel_stream* stream, const vistrel_frame* frame,
                const vistrel_conversion* conversion, const vistrel_image* image) {
  const Plan plan = makePlan(frame, conversion);
  convert(stream, plan, allRows(plan), frame, conversion, image);
}

void convertRows(vistrel_stream* stream, const vistrel_frame* frame,
                 const vistrel_conversion* conversion, const vistrel_image* image, uint32_t first,
                 uint32_t count) {
  const Plan plan = makePlan(frame, conversion);
  if (plan.throughBuffer)
    reject(VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
           "binned raw gray mixes all rows; they can't be made separately");
  checkUpright(*conversion, "a turned or mirrored image is made as a whole");
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
    layout->working_bytes = workingBytes({plan, *frame, *conversion, kNoGains, nullptr, 0});
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
