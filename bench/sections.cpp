#include "bench/sections.h"

#include "bench/floor.h"
#include "bench/samples.h"

namespace vistrel::core::bench {

namespace {

template <auto jobsOf>
void runOnAllFrames(Report& report, int rounds) {
  for (const FrameSize& size : kFrameSizes) {
    const auto jobs = jobsOf(makeFrame(size, 1, 12));
    const auto times = measure(jobs, rounds);
    for (size_t i = 0; i < jobs.size(); ++i)
      report.add(jobs[i].name, size.name, perPixel(times[i], size));
  }
}

}  // namespace

const Section kFloor{"floor", "loops that only move bytes", "ns/pixel", false,
                     runOnAllFrames<floorJobs>};
const Section kSamples{"samples", "unpacking and preparation", "ns/pixel", true,
                       runOnAllFrames<sampleJobs>};

}  // namespace vistrel::core::bench
