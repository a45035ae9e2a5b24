// The demosaic algorithms, and the step that scatters the mosaic into the work buffer.
#include "tests/check/conversion.h"
#include "tests/check/groups.h"
#include "tests/check/mosaic_layout.h"
#include "tests/check/sandbox.h"
#include "tests/demosaic/by_name.h"
#include "tests/reference/demosaic.h"
#include "vistrel/image_functions.h"
#include "vistrel/platform.h"
#include "vistrel/processor.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

enum class Path { only, doubles, floats };  // Kimmel's algorithm has two

struct Algorithm {
  const char* name;
  uint32_t code;
  MemoryLayout memoryLayout;
  Path path = Path::only;
};

// One line per algorithm.
constexpr Algorithm kAlgorithms[] = {
    {"bilinear", DM_BILINEAR, MemoryLayout::guarded},
    {"edge", DM_EDGE_EX, MemoryLayout::blocks},
    {"near-neighbor", DM_NEAR_NEIGHBOR, MemoryLayout::nearest},
    {"laroche", DM_GRADIENT_LAROCHE, MemoryLayout::guarded},
    {"hamilton", DM_GRADIENT_HAMILTON, MemoryLayout::guarded},
    {"cok", DM_HUE_COK, MemoryLayout::guarded},
    {"grouping", DM_PIXEL_GROUPING, MemoryLayout::guarded},
    {"variable-gradients", DM_VARIABLE_GRADIENTS, MemoryLayout::guarded},
    {"kimmel", DM_HUE_KIMMEL, MemoryLayout::guarded, Path::doubles},
    {"kimmel-floats", DM_HUE_KIMMEL, MemoryLayout::guarded, Path::floats},
};

// Selects a path on both sides.
class PathScope {
 public:
  explicit PathScope(Path path) {
    if (path == Path::only) return;
    const bool inFloats = path == Path::floats;
    ippSetCpuFeaturesMask(inFloats ? mask_ | IPP_CPU_SSE : mask_ & ~uint64_t{IPP_CPU_SSE});
    reference::g_bIsSSE = OS_IsSSE();
  }
  ~PathScope() {
    ippSetCpuFeaturesMask(mask_);
    reference::g_bIsSSE = isSse_;
  }
  PathScope(const PathScope&) = delete;
  PathScope& operator=(const PathScope&) = delete;

 private:
  const uint64_t mask_ = ippGetEnabledCpuFeatures();
  const int32_t isSse_ = reference::g_bIsSSE;
};

std::array<Subject::Run, 2> conversions(bool wide, Path path) {
  auto runs = check::conversions(wide);
  for (Subject::Run& run : runs)
    run = [path, convert = run](const Call& call, const Memory& memory) {
      const PathScope scope(path);
      return convert(call, memory);
    };
  return runs;
}

std::string atDepth(const char* name, bool wide) {
  return std::string(name) + (wide ? "-16" : "-8");
}

// Calls the public entries. The edge demosaic alone reads some of the upper bits.
void addAlgorithm(Catalogue& all, const Algorithm& algorithm, bool wide) {
  const auto draw = [=](Draw& d) {
    Call call = drawMosaic(d, wide, algorithm.memoryLayout);
    call.algorithm = (d.word() & ~uint32_t{0xFF}) | algorithm.code;
    return call;
  };
  all.add("demosaic",
          {atDepth(algorithm.name, wide),
           [=](const Call& call) { return mosaicLayout(call, wide, algorithm.memoryLayout); },
           conversions(wide, algorithm.path),
           {}},
          draw);
  all.experiments.back().portable = algorithm.path != Path::floats;
}

// The homogeneity-directed algorithm has a function of its own, not a code.
void runHomogeneity(const auto& function, const Call& c, const Memory& m, uint8_t*) {
  function(kSlot, c.imgWidth, c.bayer, c.binning, c.format, c.roiX, c.roiY, c.roiWidth, c.roiHeight,
           m.source.as<uint8_t>(), m.destination.as());
}

void runHomogeneity(const auto& function, const Call& c, const Memory& m, uint16_t*) {
  function(kSlot, c.imgWidth, c.bayer, c.binning, c.format, c.lutMode, c.roiX, c.roiY, c.roiWidth,
           c.roiHeight, m.source.as<uint16_t>(), m.destination.as(), c.dstBits, c.srcBits);
}

template <class T>
void addHomogeneity(Catalogue& all) {
  const bool wide = sizeof(T) == 2;
  const auto run = [](auto function) -> Subject::Run {
    return [function](const Call& c, const Memory& m) -> uint64_t {
      runHomogeneity(function, c, m, static_cast<T*>(nullptr));
      return 0;
    };
  };
  all.add("demosaic",
          {atDepth("ImageColorDemosaicAHD", wide),
           [](const Call& call) { return mosaicLayout(call, wide, MemoryLayout::homogeneity); },
           {run([](auto... arguments) { ImageColorDemosaicAHD(arguments...); }),
            run([](auto... arguments) { reference::ImageColorDemosaicAHD(arguments...); })},
           {}},
          [](Draw& draw) { return drawMosaic(draw, wide, MemoryLayout::homogeneity); });
}

template <class T>
using Prepare = void(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, const T*,
                     T*);

template <class T>
Subject::Run preparing(Prepare<T>* prepare) {
  return [prepare](const Call& c, const Memory& m) -> uint64_t {
    prepare(c.imgWidth, c.bayer, c.binning, c.roiX, c.roiY, c.roiWidth, c.roiHeight,
            m.source.as<T>(), m.work.as<T>());
    return 0;
  };
}

template <class T>
void addPrepare(Catalogue& all) {
  const bool wide = sizeof(T) == 2;
  const auto layout = [](const Call& call) {
    Layout l;
    l.sampleBytes = sizeof(T);
    l.sourceBits = wide ? call.srcBits : 8;
    l.pixels = uint64_t{call.fullWidth()} * call.fullHeight();
    setGuarded(l, call);
    return l;
  };
  const auto draw = [](Draw& d) {
    Call call;
    d.size(call);
    d.memory(call, wide);
    drawRegion(d, call, wide);
    call.srcBits = wide ? d.sourceBits() : 0;
    call.place |= kWorkExact;
    return call;
  };
  all.add("demosaic",
          {atDepth("PrepareBGRBuffer", wide),
           layout,
           {preparing<T>(PrepareBGRBuffer<T>), preparing<T>(reference::PrepareBGRBuffer)},
           {}},
          draw);
}

}  // namespace

void addDemosaic(Catalogue& all) {
  addPrepare<uint8_t>(all);
  addPrepare<uint16_t>(all);
  for (const Algorithm& algorithm : kAlgorithms)
    for (const bool wide : {false, true}) addAlgorithm(all, algorithm, wide);
  addHomogeneity<uint8_t>(all);
  addHomogeneity<uint16_t>(all);
}

}  // namespace vistrel::core::check
