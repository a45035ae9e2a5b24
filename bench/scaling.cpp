// The time of a pixel by the size of the frame, and by the number of threads.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <memory>

#include "bench/host_call.h"
#include "bench/peers.h"
#include "bench/sections.h"

namespace vistrel::core::bench {

namespace {

constexpr FrameSize kMegapixels[] = {
    {"0.3MP", 640, 480},  {"0.9MP", 1280, 720}, {"2MP", 1920, 1080},  {"5MP", 2592, 1944},
    {"12MP", 4096, 3000}, {"24MP", 6000, 4000}, {"50MP", 8192, 6144}, {"100MP", 11648, 8736}};
constexpr Conversion kBilinear{"bilinear", VISTREL_BILINEAR,   8, VISTREL_BGR24,
                               1,          VISTREL_WINDOW_HIGH};

Job jobOf(const std::string& name, const Frame& frame, const HostCall::Change& change) {
  const auto call = std::make_shared<HostCall>(kBilinear, frame, change);
  return {name, [call] { call->run(); }};
}

// Reads one sample of each cache line.
uint32_t readAll(const HostCall& call) {
  uint32_t sum = 0;
  for (size_t i = 0; i < call.layout.bytes; i += 64) sum += call.memory[i];
  return sum;
}

Job readAtOnce(const std::string& name, const Frame& frame, uint32_t destination) {
  const auto call = std::make_shared<HostCall>(
      kBilinear, frame, [=](HostCall& c) { c.conversion.destination = destination; });
  return {name, [call] {
            call->run();
            benchmark::DoNotOptimize(readAll(*call));
          }};
}

void runSizes(Report& report, int rounds) {
  for (const FrameSize& size : kMegapixels) {
    const Frame frame = makeFrame(size, 1, 12);
    const auto later = [](HostCall& c) { c.conversion.destination = VISTREL_READ_LATER; };
    const std::vector<Job> jobs{jobOf("read soon", frame, {}), jobOf("read later", frame, later),
                                readAtOnce("read soon, and read", frame, VISTREL_READ_SOON),
                                readAtOnce("read later, but read", frame, VISTREL_READ_LATER)};
    const auto times = measure(jobs, rounds);
    for (size_t i = 0; i < jobs.size(); ++i)
      report.add(jobs[i].name, size.name, perPixel(times[i], size));
  }
}

struct TeamOf {
  explicit TeamOf(uint32_t threads) { vistrel_team_create(threads, &team, nullptr); }
  ~TeamOf() { vistrel_team_destroy(team, nullptr); }
  TeamOf(const TeamOf&) = delete;
  TeamOf& operator=(const TeamOf&) = delete;
  vistrel_team* team = nullptr;
};

void runThreads(Report& report, int rounds) {
  for (const FrameSize& size : kFrameSizes) {
    const Frame frame = makeFrame(size, 1, 12);
    std::vector<std::unique_ptr<TeamOf>> teams;
    std::vector<Job> jobs{jobOf("one thread", frame, {})};
    for (const uint32_t threads : {2, 4}) {
      teams.push_back(std::make_unique<TeamOf>(threads));
      jobs.push_back(jobOf(fmt::format("team of {}", threads), frame,
                           [team = teams.back()->team, threads](HostCall& c) {
                             c.conversion.threads = threads;
                             c.conversion.team = team;
                           }));
    }
#if VISTREL_BENCH_OPENCV
    const Task peer = openCvBilinear(kBilinear, frame);
    openCvThreads(2);
    jobs.push_back({"OpenCV bilinear, 2 threads", peer.run});
#endif
    const auto times = measure(jobs, rounds, Clock::wall);
    report.add(jobs[0].name, size.name, perPixel(times[0], size));
    for (size_t i = 1; i < jobs.size(); ++i)
      report.addRelative(jobs[i].name, size.name, perPixel(times[i], size),
                         times[i].minimum / times[0].minimum, 0);
  }
#if VISTREL_BENCH_OPENCV
  openCvThreads(1);
#endif
}

}  // namespace

const Section kSizes{"sizes", "frames from 0.3 to 100 megapixels", "ns/pixel", true, runSizes};
const Section kThreads{"threads", "teams of workers, by elapsed time", "ns/pixel", true,
                       runThreads};

}  // namespace vistrel::core::bench
