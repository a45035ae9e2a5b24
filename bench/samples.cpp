#include "bench/samples.h"

#include <benchmark/benchmark.h>

#include "samples/prepare.h"
#include "samples/scan.h"
#include "samples/unpack.h"

namespace vistrel::core::bench {

namespace {

constexpr const char* kNames[kPackings] = {"unpack bytes",   "unpack little",  "unpack big",
                                           "unpack pfnc 10", "unpack pfnc 12", "unpack pfnc 14",
                                           "unpack gige 10", "unpack gige 12", "unpack mipi 10",
                                           "unpack mipi 12", "unpack mipi 14"};

// Calls use(row, samples) for each row of so many bytes.
template <class T, class Use>
Job rowJob(const char* name, const Buffer<T>& source, const FrameSize& size, size_t rowBytes,
           Use use) {
  return {name, [=] {
            const auto* row = reinterpret_cast<const uint8_t*>(source.get());
            for (unsigned y = 0; y < size.height; ++y, row += rowBytes) use(row, size.width);
          }};
}

template <class T>
Job prepareJob(const char* name, const Buffer<T>& source, const FrameSize& size,
               const Preparation& how) {
  const auto result = allocate<T>(size.width);
  return rowJob(name, source, size, size.width * sizeof(T),
                [=](const uint8_t* row, size_t n) { prepareRow<T>(row, n, result.get(), how); });
}

}  // namespace

std::vector<Job> sampleJobs(const Frame& frame) {
  std::vector<Job> jobs;
  const FrameSize& size = frame.size;
  const auto& source = frame.samples16;
  const auto result = allocate<uint16_t>(size.width);
  for (int i = 0; i < kPackings; ++i) {
    const auto packing = static_cast<Packing>(i);
    const UnpackRow unpack = unpackRowOf(packing);
    jobs.push_back(rowJob(kNames[i], source, size, packedBytes(packing, size.width),
                          [=](const uint8_t* row, size_t n) { unpack(row, n, result.get()); }));
  }
  const ColumnPair<uint32_t> black{64, 64}, gain{5000, 9000};
  jobs.push_back(prepareJob("prepare 8 bits", frame.samples8, size, {8, 0, 0, {5, 5}, gain}));
  jobs.push_back(prepareJob("prepare 12 bits", source, size, {12, 0, 0, black, gain}));
  jobs.push_back(prepareJob("prepare 16 bits", source, size, {16, 0, 0, black, gain}));
  const size_t rowBytes = 2 * size.width;
  jobs.push_back(rowJob("excess bits", source, size, rowBytes, [](const uint8_t* row, size_t n) {
    benchmark::DoNotOptimize(exceeds<uint16_t>(row, n, 0xF000));
  }));
  jobs.push_back(rowJob("sums", source, size, rowBytes, [=](const uint8_t* row, size_t n) {
    benchmark::DoNotOptimize(sumsAboveBlack<uint16_t>(row, n, {12, 0, 0, black, {}}));
  }));
  return jobs;
}

}  // namespace vistrel::core::bench
