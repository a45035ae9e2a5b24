#include "tests/check/self_test.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <set>

#include "tests/check/checker.h"
#include "tests/check/levels.h"

namespace vistrel::core::check {
namespace {

// Runs the right implementation and does something wrong beside it.
using Breaking = uint64_t (*)(const Subject::Run& right, const Call&, const Memory&);

struct Impostor {
  const char* what;
  const char* base;  // the function that it pretends to be
  Breaking broken;
  std::set<Kind> signs;  // all of them, and no other, must come up
};

void readAndForget(const uint8_t* address) {
  [[maybe_unused]] const uint8_t value = *const_cast<const volatile uint8_t*>(address);
}

uint8_t* end(const Block& block) { return block.begin + block.shape.span(); }

void spoilFirstByte(const Block& block) {
  if (block.shape.span() > 0) *block.begin ^= 1;
}

const Impostor kImpostors[] = {
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
    {"a read past the source, thrown away",
     "mono-8to8",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndForget(end(m.source));
       return right(c, m);
     },
     {Kind::fault}},
    {"a read before the source, thrown away",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndForget(m.source.begin - 1);
       return right(c, m);
     },
     {Kind::fault}},
    {"a read between the rows, thrown away",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       if (m.source.shape.rows > 1) readAndForget(m.source.row(1) - 1);
       return right(c, m);
     },
     {Kind::fault}},
    {"a read past the work buffer, thrown away",
     "bilinear-16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       readAndForget(end(m.work));
       return right(c, m);
     },
     {Kind::fault}},
    {"a pixel made of bytes between the rows",
     "mono-16to16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       const Shape& s = m.source.shape;
       if (s.rows > 1 && s.pitch > s.rowBytes && !(c.place & kFencedRows))
         *m.destination.begin = m.source.begin[s.rowBytes];
       return result;
     },
     {Kind::destination}},
    {"a write between the rows",
     "mono-16to16",
     [](const Subject::Run& right, const Call& c, const Memory& m) {
       const uint64_t result = right(c, m);
       const Shape& s = m.source.shape;
       if (s.rows > 1 && s.pitch > s.rowBytes && !(c.place & kFencedRows))
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
     "refused-8",
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
       if (currentLevel() == supportedLevels().back()) spoilFirstByte(m.destination);
       return result;
     },
     {Kind::destination}},
};

std::string signsText(const std::set<Kind>& signs) {
  constexpr const char* kNames[] = {"fault", "result", "source", "destination", "work", "outside"};
  std::vector<std::string> names;
  for (const Kind kind : signs) names.push_back(kNames[static_cast<size_t>(kind)]);
  return names.empty() ? "nothing" : fmt::format("{}", fmt::join(names, ", "));
}

// A catalogue in which the impostor stands in the product's place.
Catalogue disguised(const Catalogue& all, const Impostor& impostor) {
  Catalogue cast;
  Subject subject = all.subject(impostor.base);
  subject.run[kProduct] = [right = subject.run[kReference], broken = impostor.broken](
                              const Call& c, const Memory& m) { return broken(right, c, m); };
  cast.subjects.push_back(std::move(subject));
  return cast;
}

// Every sign that comes up, with the first text that told of it.
std::map<Kind, std::string> signsOf(const Catalogue& all, const Impostor& impostor, uint64_t seed) {
  const Plan& plan = *std::find_if(all.plans.begin(), all.plans.end(),
                                   [&](const Plan& p) { return p.name == impostor.base; });
  const Catalogue cast = disguised(all, impostor);
  Checker checker(cast);
  std::map<Kind, std::string> signs;
  for (uint32_t n = 0; n < Draw::kComplete; ++n) {
    Draw draw(seed, n);
    const Case calls = plan.draw(draw);
    if (const auto failure = checker.check(calls, supportedLevels().back()))
      signs.emplace(failure->kind, failure->text);
  }
  return signs;
}

}  // namespace

bool selfTest(const Catalogue& all, uint64_t seed) {
  bool allCaught = true;
  for (const Impostor& impostor : kImpostors) {
    std::set<Kind> seen;
    std::string texts;
    for (const auto& [kind, text] : signsOf(all, impostor, seed)) {
      seen.insert(kind);
      texts += fmt::format("    {}\n", text);
    }
    const bool caught = seen == impostor.signs;
    allCaught = allCaught && caught;
    fmt::print("{} {}, in {}: seen by {}\n{}", caught ? "ok" : "MISSED", impostor.what,
               impostor.base, signsText(seen), texts);
    if (!caught) fmt::print("    to be seen by {}\n", signsText(impostor.signs));
  }
  return allCaught;
}

}  // namespace vistrel::core::check
