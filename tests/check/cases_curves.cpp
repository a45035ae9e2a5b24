// Tone curves, the solver and the fits.
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/check/groups.h"
#include "tests/reference/curves.h"
#include "vistrel/solvers.h"
#include "vistrel/tone_curves.h"

namespace vistrel::core::check {
namespace {

constexpr bool kByProcessor = false;

using Draws = std::function<Call(Draw&)>;

void add(Catalogue& all, Subject subject, Draws draw, bool portable = true) {
  all.add("curves", std::move(subject), std::move(draw));
  all.experiments.back().levels = kByProcessor;
  all.experiments.back().portable = portable;
}

int asInt(uint32_t v) { return static_cast<int>(v); }

// A table of 16-bit entries for srcBits input bits.
Layout tableLayout(const Call& call) {
  Layout layout;
  layout.destination = Shape::contiguous(sizeof(uint16_t) << call.srcBits);
  layout.destinationRaster = {sizeof(uint16_t), 1, size_t{1} << call.srcBits};
  layout.pixels = uint64_t{1} << call.srcBits;
  return layout;
}

// `a` .. `d` are signed numbers whose meaning depends on the function.
Call drawTable(Draw& draw, uint32_t highest) {
  Call call;
  draw.memory(call, false);
  call.srcBits = draw.oneIn(2) ? draw.pick({8, 10, 12}) : 4 + draw.below(13);
  call.dstBits = draw.oneIn(2) ? draw.pick({8, call.srcBits}) : draw.below(20);
  for (uint32_t Call::*number : {&Call::a, &Call::b, &Call::c, &Call::d})
    call.*number = draw.below(highest + 3) - 2;
  return call;
}

template <class Function>
Subject tableSubject(const char* name, Function product, Function reference,
                     uint64_t (*call)(Function, const Call&, uint16_t*)) {
  const auto run = [call](Function function) -> Subject::Run {
    return [=](const Call& c, const Memory& m) {
      return call(function, c, m.destination.as<uint16_t>());
    };
  };
  return {name, tableLayout, {run(product), run(reference)}, {}};
}

void addTables(Catalogue& all) {
  add(all,
      tableSubject(
          "UnityLut", UnityLut, reference::UnityLut,
          +[](decltype(&UnityLut) f, const Call& c, uint16_t* table) -> uint64_t {
            f(asInt(c.srcBits), asInt(c.dstBits), table);
            return 0;
          }),
      [](Draw& draw) { return drawTable(draw, 0); });
  add(all,
      tableSubject(
          "ResetLut", ResetLut, reference::ResetLut,
          +[](decltype(&ResetLut) f, const Call& c, uint16_t* table) -> uint64_t {
            f(table, asInt(c.a));
            return 0;
          }),
      [](Draw& draw) { return drawTable(draw, 16); });
  add(all,
      tableSubject(
          "GeneratePredefinedLut", GeneratePredefinedLut, reference::GeneratePredefinedLut,
          +[](decltype(&GeneratePredefinedLut) f, const Call& c, uint16_t* table) -> uint64_t {
            f(asInt(c.a), asInt(c.srcBits), asInt(c.dstBits), table);
            return 0;
          }),
      [](Draw& draw) { return drawTable(draw, 8); });
  // It uses the power function of the C library.
  add(
      all,
      tableSubject(
          "GenerateGammaLut", GenerateGammaLut, reference::GenerateGammaLut,
          +[](decltype(&GenerateGammaLut) f, const Call& c, uint16_t* table) -> uint64_t {
            f(asInt(c.a), asInt(c.b), asInt(c.c), asInt(c.d), asInt(c.srcBits), asInt(c.dstBits),
              table);
            return 0;
          }),
      [](Draw& draw) { return drawTable(draw, draw.oneIn(2) ? 30 : 1 << 12); }, false);
}

using Points = void(int, int*, int*);

void addPoints(Catalogue& all) {
  const auto run = [](Points* points) -> Subject::Run {
    return [points](const Call& c, const Memory& m) -> uint64_t {
      points(asInt(c.a), m.destination.as<int>(), m.work.as<int>());
      return 0;
    };
  };
  const auto layout = [](const Call&) {
    Layout l;
    l.workBytes = 6 * sizeof(int);
    l.destination = Shape::contiguous(l.workBytes);
    l.destinationRaster = l.workRaster = {sizeof(int)};
    return l;
  };
  add(all,
      {"NormalizePredefinedLutPoints",
       layout,
       {run(NormalizePredefinedLutPoints), run(reference::NormalizePredefinedLutPoints)},
       {}},
      [](Draw& draw) { return drawTable(draw, 9); });
}

// The payload of a NaN is unspecified.
void settleNaNs(const Block& block) {
  double* const values = block.as<double>();
  for (size_t k = 0; k < block.shape.span() / sizeof(double); ++k)
    if (std::isnan(values[k])) values[k] = std::numeric_limits<double>::quiet_NaN();
}

// A number by the call's kind: large and small, whole, equal ones, hardly any, none at all.
double element(Random& random, uint32_t kind) {
  const double value = (static_cast<double>(random.word()) - 2147483648.0) / 100000000.0;
  switch (kind) {
    case 0: return std::floor(value / 8);
    case 1: return random.oneIn(2) ? 0.0 : value;
    case 2: return value * (random.oneIn(3) ? 1e-9 : 1e6);
    case 3: return random.oneIn(9) ? std::numeric_limits<double>::quiet_NaN() : value;
    case 4: return 1.0;
    default: return value;
  }
}

// `a` rows, and `b` the kind of numbers. The source holds `doubles` of them.
void fillDoubles(const Call& call, const Layout&, const Memory& memory) {
  Random random(call.seed);
  double* const values = memory.source.as<double>();
  const size_t count = memory.source.shape.span() / sizeof(double);
  for (size_t k = 0; k < count; ++k) values[k] = element(random, call.b);
  const size_t n = call.a;
  if (n > 1 && random.oneIn(5)) std::memcpy(values, values + n, n * sizeof(double));
  if (n > 0 && random.oneIn(8)) std::memset(values, 0, n * sizeof(double));
}

Call drawSystem(Draw& draw, uint32_t rows) {
  Call call;
  draw.memory(call, false);
  call.a = rows > 0 ? rows : draw.oneIn(3) ? draw.below(31) : 1 + draw.below(8);
  call.b = draw.below(10);
  return call;
}

Layout doubleLayout(size_t in, size_t out, size_t ints) {
  Layout layout;
  layout.sampleBytes = sizeof(double);
  layout.source = Shape::contiguous(in * sizeof(double));
  layout.destination = Shape::contiguous(out * sizeof(double));
  layout.destinationRaster = {sizeof(double)};
  layout.workBytes = ints * sizeof(int);
  layout.workRaster = {sizeof(int)};
  return layout;
}

using Decomp = int(double*, int, int*, int*);
using Solve = void(double*, int, int*, double*);

// The factors go to the destination, the row numbers and the flag to the work buffer.
uint64_t decompose(Decomp* decomp, const Call& c, const Memory& m) {
  const int n = asInt(c.a);
  std::memcpy(m.destination.begin, m.source.begin, sizeof(double) * c.a * c.a);
  int* const rows = m.work.as<int>();
  return static_cast<uint64_t>(decomp(m.destination.as<double>(), n, rows, rows + n));
}

void addSystems(Catalogue& all) {
  const auto draw = [](Draw& d) { return drawSystem(d, 0); };
  const auto decomposing = [](Decomp* decomp) -> Subject::Run {
    return [=](const Call& c, const Memory& m) {
      const uint64_t result = decompose(decomp, c, m);
      settleNaNs(m.destination);
      return result;
    };
  };
  add(all,
      {"LUDecomp",
       [](const Call& c) { return doubleLayout(c.a * c.a, c.a * c.a, c.a + 1); },
       {decomposing(LUDecomp), decomposing(reference::LUDecomp)},
       fillDoubles},
      draw);
  const auto solving = [](Decomp* decomp, Solve* solve) -> Subject::Run {
    return [=](const Call& c, const Memory& m) -> uint64_t {
      double* const right = m.destination.as<double>() + c.a * c.a;
      std::memcpy(right, m.source.as<double>() + c.a * c.a, sizeof(double) * c.a);
      const uint64_t result = decompose(decomp, c, m);
      if (result) solve(m.destination.as<double>(), asInt(c.a), m.work.as<int>(), right);
      settleNaNs(m.destination);
      return result;
    };
  };
  add(all,
      {"LUSolve",
       [](const Call& c) { return doubleLayout(c.a * c.a + c.a, c.a * c.a + c.a, c.a + 1); },
       {solving(LUDecomp, LUSolve), solving(reference::LUDecomp, reference::LUSolve)},
       fillDoubles},
      draw);
}

using Fit = int(double*, double*, double*);

// x in ascending order, or in any order.
void fillPoints(const Call& call, const Layout& layout, const Memory& memory) {
  fillDoubles(call, layout, memory);
  if (call.seed % 4 == 0) return;
  double* const x = memory.source.as<double>();
  for (uint32_t k = 0; k < call.a; ++k) x[k] = k == 0 ? 0.0 : x[k - 1] + std::fabs(x[k]);
}

void addFit(Catalogue& all, const char* name, Fit* product, Fit* reference, uint32_t points,
            size_t coefficients) {
  const auto run = [](Fit* fit) -> Subject::Run {
    return [fit](const Call& c, const Memory& m) {
      double* const x = m.source.as<double>();
      const int result = fit(x, x + c.a, m.destination.as<double>());
      settleNaNs(m.destination);
      return static_cast<uint64_t>(result);
    };
  };
  add(all,
      {name,
       [=](const Call&) { return doubleLayout(2 * points, coefficients, 0); },
       {run(product), run(reference)},
       fillPoints},
      [=](Draw& draw) { return drawSystem(draw, points); });
}

using Invert = int(double*, double*);

void addInvert(Catalogue& all) {
  const auto run = [](Invert* invert) -> Subject::Run {
    return [invert](const Call& c, const Memory& m) {
      double* const out = m.destination.as<double>();
      const bool inPlace = c.seed % 4 == 0;
      if (inPlace) std::memcpy(out, m.source.begin, 16 * sizeof(double));
      const int result = invert(inPlace ? out : m.source.as<double>(), out);
      settleNaNs(m.destination);
      return static_cast<uint64_t>(result);
    };
  };
  add(all,
      {"Invert4x4Matrix",
       [](const Call&) { return doubleLayout(16, 16, 0); },
       {run(Invert4x4Matrix), run(reference::Invert4x4Matrix)},
       fillDoubles},
      [](Draw& draw) { return drawSystem(draw, 4); });
}

}  // namespace

void addCurves(Catalogue& all) {
  addTables(all);
  addPoints(all);
  addSystems(all);
  addFit(all, "Resolve4thOrderPolynomium", Resolve4thOrderPolynomium,
         reference::Resolve4thOrderPolynomium, 5, 5);
  addFit(all, "Resolve4thOrderSpline", Resolve4thOrderSpline, reference::Resolve4thOrderSpline, 5,
         16);
  addFit(all, "Resolve5thOrderSpline", Resolve5thOrderSpline, reference::Resolve5thOrderSpline, 6,
         20);
  addInvert(all);
}

}  // namespace vistrel::core::check
