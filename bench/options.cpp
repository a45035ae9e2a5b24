// What the options of a conversion cost, relative to the same conversion without them.
#include <memory>

#include "bench/host_call.h"
#include "bench/sections.h"

namespace vistrel::core::bench {

namespace {

struct Option {
  const char* name;
  HostCall::Change change;
  double limit;  // of its time by that without; 0: none
};

void format(HostCall& call, uint32_t format) { call.conversion.format = format; }
void padEdges(HostCall& call) { call.conversion.edges = VISTREL_EDGES_PADDED; }
void padRows(HostCall& call) { call.padding = 48; }

void prepare(HostCall& call) {
  for (uint32_t& black : call.conversion.black) black = 1u << (call.frame.bits - 6);
  call.conversion.white_balance = VISTREL_BALANCE_GAINS;
  call.conversion.gains[VISTREL_RED] = 7000;
  call.conversion.gains[VISTREL_GREEN] = VISTREL_GAIN_ONE;
  call.conversion.gains[VISTREL_BLUE] = 6000;
}

// sRGB, a camera's matrix, an exposure of 1.5.
const vistrel_finish& finish() {
  static const std::vector<uint16_t> transfer = [] {
    std::vector<uint16_t> points(65536);
    vistrel_make_transfer(VISTREL_TRANSFER_SRGB, 0, points.data(), points.size(), nullptr);
    return points;
  }();
  static const vistrel_finish finish{VISTREL_HIGHLIGHTS_NEUTRAL,
                                     6144,
                                     {7000, -2500, -404, -1100, 6400, -1204, 100, -2300, 6296},
                                     65536,
                                     transfer.data(),
                                     {}};
  return finish;
}
void finishPixels(HostCall& call) {
  prepare(call);
  call.conversion.finish = &finish();
}
void turn(HostCall& call) { call.conversion.orientation = VISTREL_TURNED_90; }

// The bytes of a frame of 16-bit samples, read as packed ones.
void pack(HostCall& call, uint32_t packing, uint32_t bits) {
  call.frame.packing = packing;
  call.frame.bits = bits;
}

Option packed(const char* name, uint32_t packing, uint32_t bits) {
  return {name, [=](HostCall& call) { pack(call, packing, bits); }, 1.2};
}

const std::vector<Option>& optionsOf8Bits() {
  static const std::vector<Option> options{
      {"8 bits to BGR24", {}, 0},
      {"RGB24", [](HostCall& call) { format(call, VISTREL_RGB24); }, 1.05},
      {"RGBA32", [](HostCall& call) { format(call, VISTREL_RGBA32); }, 1.25},
      {"stride", padRows, 1.05},
      {"padded edges", padEdges, 1.1},
      {"black, gains", prepare, 1.3},
      {"GRAY8", [](HostCall& call) { format(call, VISTREL_GRAY8); }, 1.2},
      {"NV12", [](HostCall& call) { format(call, VISTREL_NV12); }, 1.2},
      {"read later", [](HostCall& call) { call.conversion.destination = VISTREL_READ_LATER; }, 0}};
  return options;
}

const std::vector<Option>& optionsOf12Bits() {
  static const std::vector<Option> options{
      {"12 bits to BGR24", {}, 0},
      {"excess rejected", [](HostCall& call) { call.conversion.excess = VISTREL_REJECT; }, 0},
      packed("PFNC 10", VISTREL_PACKING_PFNC, 10),
      packed("PFNC 12", VISTREL_PACKING_PFNC, 12),
      packed("GigE 10", VISTREL_PACKING_GIGE, 10),
      packed("GigE 12", VISTREL_PACKING_GIGE, 12),
      packed("MIPI 10", VISTREL_PACKING_MIPI, 10),
      packed("MIPI 12", VISTREL_PACKING_MIPI, 12),
      {"PFNC 12, black, gains, padded, stride, RGBA32",
       [](HostCall& call) {
         pack(call, VISTREL_PACKING_PFNC, 12);
         prepare(call);
         padEdges(call);
         padRows(call);
         format(call, VISTREL_RGBA32);
       },
       1.6},
      {"finished", finishPixels, 0},
      {"turned by 90 degrees", turn, 0},
      {"finished, turned",
       [](HostCall& call) {
         finishPixels(call);
         turn(call);
       },
       0}};
  return options;
}

const std::vector<Option>& optionsOfDirectional() {
  static const std::vector<Option> options{{"directional, 12 bits to BGR24", {}, 0},
                                           {"directional, finished", finishPixels, 0}};
  return options;
}

// The first option is none.
void runOptions(Report& report, const std::vector<Option>& options, const Conversion& plain,
                int rounds) {
  for (const FrameSize& size : kFrameSizes) {
    const Frame frame = makeFrame(size, 1, plain.significantBits);
    std::vector<Job> jobs;
    for (const Option& option : options) {
      const auto call = std::make_shared<HostCall>(plain, frame, option.change);
      jobs.push_back({option.name, [call] { call->run(); }});
    }
    const auto times = measure(jobs, rounds);
    report.add(jobs[0].name, size.name, perPixel(times[0], size));
    for (size_t i = 1; i < jobs.size(); ++i)
      report.addRelative(jobs[i].name, size.name, perPixel(times[i], size),
                         times[i].minimum / times[0].minimum, options[i].limit);
  }
}

void run(Report& report, int rounds) {
  const auto plain = [](const char* algorithm, uint32_t code, unsigned depth) {
    return Conversion{algorithm, code, depth, VISTREL_BGR24, 1, VISTREL_WINDOW_HIGH};
  };
  runOptions(report, optionsOf8Bits(), plain("bilinear", VISTREL_BILINEAR, 8), rounds);
  runOptions(report, optionsOf12Bits(), plain("bilinear", VISTREL_BILINEAR, 16), rounds);
  runOptions(report, optionsOfDirectional(), plain("directional", VISTREL_DIRECTIONAL, 16), rounds);
}

}  // namespace

const Section kOptions{"options", "what the options of a conversion cost", "ns/pixel", true, run};

}  // namespace vistrel::core::bench
