#include "tests/check/self_test.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "tests/check/checker.h"
#include "tests/check/host_call.h"
#include "tests/reference/host.h"
#include "tests/supported_levels.h"

namespace vistrel::core::check {
namespace {

// Runs the correct implementation and does something wrong in addition.
using Mutation = uint64_t (*)(const Subject::Run& right, const Call&, const Memory&);

struct Mutant {
  const char* what;
  const char* base;  // the function that it replaces
  Mutation mutation;
  std::set<Kind> expected;  // the checker must report all of these kinds and no other
};

void readAndDiscard(const uint8_t* address) {
  [[maybe_unused]] const uint8_t value = *const_cast<const volatile uint8_t*>(address);
}

uint8_t* end(const Block& block) { return block.begin + block.shape.span(); }

void spoilFirstByte(const Block& block) {
  if (block.shape.span() > 0) *block.begin ^= 1;
}

uint8_t* middleRow(const Memory& m) { return m.destination.row(m.destination.shape.rows / 2); }

// Rows of the image from `first` on, as a region of its own.
uint64_t runAlone(const Subject::Run& right, Call call, Memory memory, uint32_t first,
                  uint32_t rows) {
  if (call.roiWidth == 0) call.roiWidth = call.imgWidth;
  call.roiY += call.factor() * first;
  call.roiHeight = call.factor() * rows;
  memory.destination.begin = memory.destination.row(first);
  memory.destination.shape.rows = rows;
  return right(call, memory);
}

// Makes an image in two bands that see nothing of each other.
uint64_t runInBlindBands(const Subject::Run& right, const Call& call, const Memory& memory) {
  const auto rows = static_cast<uint32_t>(memory.destination.shape.rows), half = rows / 2;
  if (call.defect || call.upward || half < 5) return right(call, memory);
  runAlone(right, call, memory, 0, half);
  return runAlone(right, call, memory, half, rows - half);
}

// Converts something else than the call describes.
uint64_t runChanged(const Subject::Run& right, const Call& call, const Memory& memory,
                    void (*change)(HostCall&)) {
  if (call.defect) return right(call, memory);
  HostCall host(call, memory);
  change(host);
  return static_cast<uint32_t>(reference::hostConvert(host.frame, host.conversion, host.image));
}

const Mutant kMutants[] = {
    {"nothing wrong",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) { return right(c, m); },
     {}},
    {"a wrong pixel",
     "mono-8to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       if (m.destination.shape.span() > 0) end(m.destination)[-1] ^= 1;
       return result;
     },
     {Kind::destination}},
    {"a write past the destination",
     "mono-8to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       *end(m.destination) = 0;
       return result;
     },
     {Kind::outside, Kind::fault}},
    {"a write before the destination",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       m.destination.begin[-1] = 0;
       return result;
     },
     {Kind::outside, Kind::fault}},
    {"a read past the source, discarded",
     "mono-8to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndDiscard(end(m.source));
       return right(c, m);
     },
     {Kind::fault}},
    {"a read before the source, discarded",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndDiscard(m.source.begin - 1);
       return right(c, m);
     },
     {Kind::fault}},
    {"a read between the rows, discarded",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       if (m.source.shape.rows > 1) readAndDiscard(m.source.row(1) - 1);
       return right(c, m);
     },
     {Kind::fault}},
    {"a read past the work buffer, discarded",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndDiscard(end(m.work));
       return right(c, m);
     },
     {Kind::fault}},
    {"a pixel made of bytes between the rows",
     "mono-16to16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       const Shape& s = m.source.shape;
       if (s.rows > 1 && s.pitch > s.rowBytes && !(c.place & kGuardPageRows))
         *m.destination.begin = m.source.begin[s.rowBytes];
       return result;
     },
     {Kind::destination}},
    {"a write between the rows",
     "mono-16to16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       const Shape& s = m.source.shape;
       if (s.rows > 1 && s.pitch > s.rowBytes && !(c.place & kGuardPageRows))
         m.source.begin[s.rowBytes] = 0;
       return result;
     },
     {Kind::outside}},
    {"a stale sample in the work buffer",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint8_t stale = m.work.shape.span() ? *m.work.begin : 0;
       const uint64_t result = right(c, m);
       if (m.work.shape.span()) *m.work.begin = stale;
       return result;
     },
     {Kind::work}},
    {"a sample behind the guard of the work buffer",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       const size_t guarded = 6 * (c.fullHeight() + 4) * (size_t{c.fullWidth()} + 4);
       m.work.begin[guarded] ^= 1;
       return result;
     },
     {Kind::work, Kind::outside, Kind::fault}},
    {"an alpha byte that changed",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       if (c.format == 3) spoilFirstByte(m.destination);
       return result;
     },
     {Kind::destination}},
    {"a wrong result",
     "rejected-8",
     [](const Subject::Run& right, const Call& c, const Memory& m) { return right(c, m) + 1; },
     {Kind::result}},
    {"a source that changed",
     "mono-16to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       spoilFirstByte(m.source);
       return result;
     },
     {Kind::source}},
    {"a user table that changed",
     "mono-16to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       spoilFirstByte(m.table);
       return result;
     },
     {Kind::source}},
    {"a wrong pixel at one phase, width and depth",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       if (c.bayer == 2 && c.fullWidth() % 8 == 3 && c.srcBits == 14) spoilFirstByte(m.destination);
       return result;
     },
     {Kind::destination}},
    {"a wrong pixel at the processor's highest level",
     "mono-8to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       if (currentLevel() == test::supportedLevels().back()) spoilFirstByte(m.destination);
       return result;
     },
     {Kind::destination}},
    {"bands that see nothing of each other", "engine-rows", runInBlindBands, {Kind::destination}},
    {"a row left out",
     "engine-rows",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const std::vector<uint8_t> row(middleRow(m), middleRow(m) + m.destination.shape.rowBytes);
       const uint64_t result = right(c, m);
       std::copy(row.begin(), row.end(), middleRow(m));
       return result;
     },
     {Kind::destination}},
    {"a read beyond a frame's row, discarded",
     "engine-pushed",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndDiscard(m.source.row(0) + m.source.shape.rowBytes);
       return right(c, m);
     },
     {Kind::fault}},
    {"a write between the rows of an image",
     "engine-team",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       const Shape& s = m.destination.shape;
       if (s.rows > 1 && s.pitch > s.rowBytes) m.destination.begin[s.rowBytes] ^= 1;
       return result;
     },
     {Kind::outside}},
    {"a pixel of a rejected conversion",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       if (result != 0) spoilFirstByte(m.destination);
       return result;
     },
     {Kind::destination}},
    {"an exposure that is one too high",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) { ++h.look.finish.exposure; });
     },
     {Kind::destination}},
    {"a matrix that is transposed",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) {
         auto& matrix = h.look.finish.matrix;
         std::swap(matrix[1], matrix[3]);
         std::swap(matrix[2], matrix[6]);
         std::swap(matrix[5], matrix[7]);
       });
     },
     {Kind::destination}},
    {"highlights that keep their colours",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m,
                         [](HostCall& h) { h.look.finish.highlights = VISTREL_HIGHLIGHTS_CLIP; });
     },
     {Kind::destination}},
    {"a transfer curve that lacks its last point",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) {
         auto& finish = h.look.finish;
         if (finish.transfer_points > 2) --finish.transfer_points;
       });
     },
     {Kind::destination}},
    {"dark levels one column off",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) {
         auto& dark = h.look.dark;
         if (!dark.empty()) std::rotate(dark.begin(), dark.begin() + 1, dark.end());
       });
     },
     {Kind::destination}},
    {"a flat field that is left out",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) { h.look.calibration.flat = nullptr; });
     },
     {Kind::destination}},
    {"hot pixels that stay",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) { h.look.calibration.hot_count = 0; });
     },
     {Kind::destination}},
    {"an image turned the wrong way",
     "engine-alone",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       return runChanged(right, c, m, [](HostCall& h) {
         uint32_t& turn = h.conversion.orientation;
         if (turn == VISTREL_TURNED_90) turn = VISTREL_TURNED_270;
       });
     },
     {Kind::destination}},
};

std::string kindsText(const std::set<Kind>& kinds) {
  constexpr const char* kNames[] = {"fault", "result", "source", "destination", "work", "outside"};
  std::vector<std::string> names;
  for (const Kind kind : kinds) names.push_back(kNames[static_cast<size_t>(kind)]);
  return names.empty() ? "nothing" : fmt::format("{}", fmt::join(names, ", "));
}

// A catalogue with the mutant in the product's place.
Catalogue catalogueOf(const Catalogue& all, const Mutant& mutant) {
  Catalogue catalogue;
  Subject subject = all.subject(mutant.base);
  subject.run[kProduct] = [right = subject.run[kReference], mutation = mutant.mutation](
                              const Call& c, const Memory& m) { return mutation(right, c, m); };
  catalogue.subjects.push_back(std::move(subject));
  return catalogue;
}

// Every kind of failure that the checker reports, each with the first text.
std::map<Kind, std::string> failuresOf(const Catalogue& all, const Mutant& mutant, uint64_t seed) {
  const Experiment& experiment =
      *std::find_if(all.experiments.begin(), all.experiments.end(),
                    [&](const Experiment& p) { return p.name == mutant.base; });
  const Catalogue catalogue = catalogueOf(all, mutant);
  Checker checker(catalogue);
  std::map<Kind, std::string> failures;
  for (uint32_t n = 0; n < experiment.cases; ++n) {
    Draw draw(seed, n);
    const Case calls = experiment.draw(draw);
    if (const auto failure = checker.check(calls, test::supportedLevels().back()))
      failures.emplace(failure->kind, failure->text);
  }
  return failures;
}

}  // namespace

bool selfTest(const Catalogue& all, uint64_t seed) {
  bool allCaught = true;
  for (const Mutant& mutant : kMutants) {
    std::set<Kind> seen;
    std::string texts;
    for (const auto& [kind, text] : failuresOf(all, mutant, seed)) {
      seen.insert(kind);
      texts += fmt::format("    {}\n", text);
    }
    const bool caught = seen == mutant.expected;
    allCaught = allCaught && caught;
    fmt::print("{} {}, in {}: seen by {}\n{}", caught ? "ok" : "MISSED", mutant.what, mutant.base,
               kindsText(seen), texts);
    if (!caught) fmt::print("    expected {}\n", kindsText(mutant.expected));
  }
  return allCaught;
}

}  // namespace vistrel::core::check
