#include "tests/check/checksum.h"

#include <fmt/format.h>

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace vistrel::core::check {
namespace {

constexpr uint32_t kCases = 200;
constexpr uint64_t kSeed = 1;

class Fold {
 public:
  void bytes(const uint8_t* from, size_t count) {
    for (size_t k = 0; k < count; ++k) sum_ = (sum_ ^ from[k]) * 0x100000001B3;
  }
  void word(uint64_t value) { bytes(reinterpret_cast<const uint8_t*>(&value), sizeof value); }
  uint64_t sum() const { return sum_; }

 private:
  uint64_t sum_ = 0xCBF29CE484222325;
};

void foldCall(Fold& fold, const Memory& memory, const Outcome& outcome) {
  if (outcome.fault) throw std::runtime_error("a fault; run the check to see where");
  fold.word(outcome.result);
  for (const Block* block : {&memory.destination, &memory.work})
    for (size_t r = 0; r < block->shape.rows; ++r) fold.bytes(block->row(r), block->shape.rowBytes);
}

std::map<std::string, std::string> readGolden(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::invalid_argument(fmt::format("'{}': cannot be opened", path));
  std::map<std::string, std::string> golden;
  for (std::string name, sum; file >> name >> sum;) golden[name] = sum;
  return golden;
}

std::string asText(uint64_t sum) { return fmt::format("{:016x}", sum); }

}  // namespace

uint64_t checksum(const Catalogue& all, const Experiment& experiment, Side side) {
  Sandbox sandbox(side);
  Fold fold;
  for (uint32_t n = 0; n < kCases; ++n) {
    Draw draw(kSeed, n);
    const Case calls = experiment.draw(draw);
    std::vector<Layout> layouts;
    for (const Call& call : calls) layouts.push_back(all.subject(call.subject).layout(call));
    sandbox.beginCase(calls, layouts);
    for (size_t i = 0; i < calls.size(); ++i) {
      const Subject& subject = all.subject(calls[i].subject);
      sandbox.set(subject, calls[i], layouts[i]);
      const Outcome outcome = sandbox.call(subject, calls[i]);
      sandbox.settle(layouts[i].meaningless);
      foldCall(fold, sandbox.memory(), outcome);
    }
  }
  return fold.sum();
}

void printChecksums(const Catalogue& all) {
  for (const Experiment& experiment : all.experiments)
    if (hasChecksum(experiment))
      fmt::print("{} {}\n", experiment.name, asText(checksum(all, experiment, kReference)));
}

bool compareChecksums(const Catalogue& all, Side side, const std::string& path) {
  const auto golden = readGolden(path);
  bool same = true;
  for (const Experiment& experiment : all.experiments) {
    if (!hasChecksum(experiment)) continue;
    const auto entry = golden.find(experiment.name);
    const std::string expected = entry == golden.end() ? "none" : entry->second;
    const std::string got = asText(checksum(all, experiment, side));
    if (got == expected) continue;
    same = false;
    fmt::print("FAIL {}: got {}, expected {}\n", experiment.name, got, expected);
  }
  return same;
}

}  // namespace vistrel::core::check
