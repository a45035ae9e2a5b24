// From the last byte of a frame to the last byte of its image: 12-bit packed samples to BGRA32.
#include <memory>
#include <stdexcept>

#include "bench/host_call.h"
#include "bench/sections.h"

namespace vistrel::core::bench {

namespace {

constexpr Conversion kBilinear{"bilinear", VISTREL_BILINEAR,   16, VISTREL_BGRA32,
                               1,          VISTREL_WINDOW_HIGH};

using Call = std::shared_ptr<HostCall>;

Call makeCall(const Frame& frame) {
  return std::make_shared<HostCall>(kBilinear, frame, [](HostCall& call) {
    call.frame.packing = VISTREL_PACKING_PFNC;
    call.frame.bits = 12;
  });
}

void push(HostCall& call, uint32_t first, uint32_t rows) {
  const size_t rowBytes = call.frame.width * 3 / 2;
  const auto* const samples = static_cast<const uint8_t*>(call.frame.samples) + first * rowBytes;
  if (vistrel_stream_push(call.stream(), samples, rows * rowBytes, rows, nullptr, nullptr))
    throw std::logic_error("the rows were rejected");
}

void begin(HostCall& call) {
  if (vistrel_stream_begin(call.stream(), &call.frame, &call.conversion, &call.image, nullptr))
    throw std::logic_error("the conversion was rejected");
}

// All rows but the last `rows` have been pushed before the clock starts.
Job lastRows(const char* name, const Call& call, uint32_t rows) {
  const uint32_t before = call->frame.height - rows;
  return {name, [=] { push(*call, before, rows); },
          [=] {
            begin(*call);
            push(*call, 0, before);
          }};
}

Job rowByRow(const Call& call) {
  return {"all rows, pushed one by one", [=] {
            begin(*call);
            for (uint32_t y = 0; y < call->frame.height; ++y) push(*call, y, 1);
          }};
}

void add(Report& report, const std::vector<Job>& jobs, const FrameSize& size, int rounds) {
  const auto times = measure(jobs, rounds, Clock::wall);
  for (size_t i = 0; i < jobs.size(); ++i)
    report.add(jobs[i].name, size.name, {times[i].minimum / 1e3, times[i].median / 1e3});
}

// What a call costs besides its pixels.
void runSmallest(Report& report, int rounds) {
  constexpr FrameSize smallest{"8x8", 8, 8};
  const Frame frame = makeFrame(smallest, 1, 12);
  const Call call = makeCall(frame);
  add(report, {{"whole frame, one thread", [=] { call->run(); }}}, smallest, rounds);
}

void run(Report& report, int rounds) {
  runSmallest(report, rounds);
  vistrel_team* team = nullptr;
  vistrel_team_create(2, &team, nullptr);
  for (const FrameSize& size : kFrameSizes) {
    const Frame frame = makeFrame(size, 1, 12);
    const Call whole = makeCall(frame), shared = makeCall(frame), pushed = makeCall(frame);
    shared->conversion.threads = 2;
    shared->conversion.team = team;
    const std::vector<Job> jobs{{"whole frame, one thread", [=] { whole->run(); }},
                                {"whole frame, team of 2", [=] { shared->run(); }},
                                rowByRow(pushed),
                                lastRows("last 16 rows", pushed, 16),
                                lastRows("last row", pushed, 1)};
    add(report, jobs, size, rounds);
  }
  vistrel_team_destroy(team, nullptr);
}

}  // namespace

const Section kDelay{"delay", "from the last byte of a frame to that of its image", "us", true,
                     run};

}  // namespace vistrel::core::bench
