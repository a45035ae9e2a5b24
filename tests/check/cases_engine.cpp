// libvistrelhost: every way of converting a frame, against the literal host layer.
#include <algorithm>

#include "cpu/level.h"
#include "tests/check/groups.h"
#include "tests/check/host_call.h"
#include "tests/check/host_ways.h"
#include "tests/check/pattern.h"
#include "tests/reference/host.h"

namespace vistrel::core::check {
namespace {

constexpr uint32_t kCases = 600;  // of each way, unless others are asked for

struct Way {
  const char* name;
  HostWay* convert;
  bool inParts;   // rows of the image are made apart, excess bits found along with them
  bool isPushed;  // the whole frame is never there
  bool isShared;  // by threads
  const char* algorithm = nullptr;  // drawn, unless given
};
constexpr Way kWays[] = {{"engine-alone", convertAlone, false, false, false},
                         {"engine-again", convertAgain, false, false, false},
                         {"engine-rows", convertRows, true, false, true},
                         {"engine-team", convertByTeam, false, false, true},
                         {"engine-runner", convertByRunner, false, false, true},
                         {"engine-pushed", convertPushed, true, true, false},
                         // libVistrel's functions, and so the other groups, don't have it.
                         {"engine-directional", convertAlone, false, false, false, "directional"}};

bool isMosaic(const Call& call) { return call.bayer <= VISTREL_GBRG; }
bool isGray(const Call& call) {
  return call.format == VISTREL_GRAY8 || call.format == VISTREL_GRAY16;
}
bool isTight(const Call& call) { return call.packing > VISTREL_PACKING_BIG; }

void drawFrame(Draw& draw, Call& call) {
  call.bayer = draw.oneIn(8) ? draw.pick({VISTREL_MONO, VISTREL_BGR}) : draw.below(4);
  call.sampleBytes = draw.oneIn(3) ? 1 : 2;
  call.srcBits = call.sampleBytes == 1 ? 8
                 : draw.oneIn(3)       ? 8 + draw.below(9)
                                       : draw.pick({10, 12});
  if (call.sampleBytes == 2 && draw.oneIn(2)) call.packing = 1 + draw.below(5);
  if (isTight(call)) call.srcBits = draw.pick({10, 12, 14});
  if (call.packing == VISTREL_PACKING_GIGE) call.srcBits = draw.pick({10, 12});
  if (!isTight(call)) call.highBits = draw.oneIn(3);
}

void drawLook(Draw& draw, Call& call, const Way& way) {
  if (call.bayer != VISTREL_BGR) {
    if (draw.oneIn(3)) call.finished = kFinished | draw.below(8) << 1;
    if (draw.oneIn(6)) call.calibrated = 1 + draw.below(7);
  }
  if (call.bayer == VISTREL_MONO) call.finished &= ~uint32_t{kMatrix};
  call.means = draw.oneIn(3);
  if (!way.inParts && draw.oneIn(4)) call.orientation = draw.below(9);
}

void drawFormat(Draw& draw, Call& call) {
  const bool wide = (call.sampleBytes == 2 || call.finished) && draw.oneIn(3);
  if (call.bayer == VISTREL_MONO)
    call.format = wide ? VISTREL_MONO16 : VISTREL_MONO8;
  else if (wide)
    call.format = draw.pick({VISTREL_GRAY16, VISTREL_BGR48, VISTREL_RGB48, VISTREL_RGB48_PLANAR});
  else
    call.format = draw.pick({VISTREL_BGR24, VISTREL_ARGB32, VISTREL_ARGB32_4, VISTREL_GRAY8,
                             VISTREL_RGB24, VISTREL_BGRA32, VISTREL_RGBA32, VISTREL_RGB24_PLANAR,
                             VISTREL_NV12, VISTREL_I420, VISTREL_I444});
}

uint32_t algorithms() {
  uint32_t count = 0;
  while (vistrel_algorithm_at(count)) ++count;
  return count;
}

const vistrel_algorithm& algorithmOf(const Call& call) {
  size_t index = 0;
  while (vistrel_algorithm_at(index)->code != call.algorithm) ++index;
  return *vistrel_algorithm_at(index);
}

uint32_t workingBits(const Call& call) {
  return call.truncateTo ? std::min(call.truncateTo, call.srcBits) : call.srcBits;
}

void drawAlgorithm(Draw& draw, Call& call, const Way& way) {
  if (way.algorithm)
    vistrel_parse_algorithm(way.algorithm, &call.algorithm, nullptr);
  else if (!draw.oneIn(3))
    call.algorithm = vistrel_algorithm_at(draw.below(algorithms()))->code;
  if (call.algorithm == VISTREL_EDGE) call.threshold = draw.below(256);
  if (draw.oneIn(6)) call.truncateTo = 8 + draw.below(9);
  const uint32_t most = algorithmOf(call).max_bits;
  if (workingBits(call) > most && isMosaic(call) && !call.finished)
    call.truncateTo = most - draw.below(3);
  call.edges = draw.below(2);
}

bool hasRawGray(const Call& call) {
  return isMosaic(call) && call.algorithm != VISTREL_NEAR && call.algorithm != VISTREL_AHD &&
         call.algorithm != VISTREL_DIRECTIONAL &&
         (call.algorithm != VISTREL_EDGE || call.binning == 0);
}

void drawGray(Draw& draw, Call& call, const Way& way) {
  if (!isGray(call) || !hasRawGray(call) || call.finished || call.means || draw.oneIn(2)) return;
  if (way.inParts && call.binning > 0) return;
  call.gray = VISTREL_RAW_GRAY;
  call.edges = VISTREL_EDGES_NATIVE;
}

void drawReduction(Draw& draw, Call& call) {
  const uint32_t bits = workingBits(call);
  if (call.finished || call.sampleBytes == 1 || reference::hostSampleBytes(call.format) == 2)
    return;
  const uint32_t mode = draw.pick({0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 10, 10});
  const bool allowed = mode == VISTREL_TABLE           ? bits >= 10 && bits <= 12
                       : mode == VISTREL_WINDOW_MIDDLE ? bits >= 9
                                                       : bits >= 10;
  if (allowed) call.lutMode = mode;
}

void drawPreparation(Draw& draw, Call& call, const Way& way) {
  if (draw.oneIn(3)) call.black = draw.below(1u << (call.srcBits - draw.below(6)));
  const uint32_t full = (1u << call.srcBits) - 1;
  if (call.finished) call.black = std::min(call.black, full - 1);
  if (call.finished ? draw.oneIn(2) : draw.oneIn(9))
    if (call.black < full) call.white = call.black + 1 + draw.below(full - call.black);
  if (isMosaic(call) && draw.oneIn(3)) call.balance = 1 + draw.below(way.isPushed ? 1 : 2);
  const bool mayExceed = !isTight(call) && call.srcBits < 8 * call.sampleBytes;
  call.stray = mayExceed && draw.oneIn(4);
  const bool allExceed = mayExceed && call.pattern == static_cast<uint32_t>(Pattern::stray);
  call.excess = draw.below(2);
  if (allExceed && !draw.oneIn(4)) call.excess = VISTREL_MASK;
  if (way.inParts && (call.stray || allExceed)) call.excess = VISTREL_MASK;
}

// Enough work for several threads.
void enlarge(Draw& draw, Call& call) {
  call.roiWidth = (200 + draw.below(300)) / call.factor();
  call.roiHeight = (400 + draw.below(300)) / call.factor();
}

// Results of most formats that bypass the caches if nobody reads them soon.
void enlargeBeyondCaches(Draw& draw, Call& call) {
  call.binning = 0;
  call.roiWidth = 900 + draw.below(300);
  call.roiHeight = 800 + draw.below(100);
  call.later = VISTREL_READ_LATER;
}

// From a result's size to a region and a frame around it.
void drawRegionAround(Draw& draw, Call& call) {
  const uint32_t padded = isMosaic(call) && call.edges == VISTREL_EDGES_PADDED;
  const uint32_t least = isMosaic(call) && !padded ? algorithmOf(call).min_size : 1;
  const auto side = [&](uint32_t bins) {
    while (bins * call.factor() < least) ++bins;
    return bins * call.factor() + draw.below(call.factor());
  };
  call.roiWidth = side(call.roiWidth);
  call.roiHeight = side(call.roiHeight);
  if (draw.oneIn(2)) call.roiX = draw.below(12), call.roiY = draw.below(12);
  const uint32_t leastFrame = isMosaic(call) ? 2 : 1;
  call.imgWidth = std::max(leastFrame, call.roiX + call.roiWidth + draw.below(2) * draw.below(20));
  call.imgHeight = std::max(leastFrame, call.roiY + call.roiHeight + draw.below(2) * draw.below(9));
  if (call.imgWidth == call.roiWidth && call.imgHeight == call.roiHeight && draw.oneIn(2))
    call.roiWidth = call.roiHeight = 0;
}

void drawRows(Draw& draw, Call& call) {
  if (draw.oneIn(2)) call.sourceGap = draw.below(9);
  if (draw.oneIn(2)) call.gap = draw.oneIn(4) ? 64 : draw.below(9);
  if (!hasPlanes(call.format)) call.upward = draw.oneIn(4);
  const Layout layout = hostLayout(call);
  const bool fits =
      layout.source.rowBytes <= GuardPageRows::kPage && layout.source.rows <= GuardPageRows::kRows;
  if (fits && draw.oneIn(4)) call.place |= kGuardPageRows;
}

Call drawOne(Draw& draw, const Way& way) {
  Call call;
  draw.size(call, false);
  call.binning %= 4;
  drawFrame(draw, call);
  drawLook(draw, call, way);
  drawFormat(draw, call);
  drawAlgorithm(draw, call, way);
  drawGray(draw, call, way);
  drawReduction(draw, call);
  draw.memory(call, call.sampleBytes == 2);
  drawPreparation(draw, call, way);
  if (way.isShared) call.threads = 1 + draw.below(5);
  if (way.isShared && draw.oneIn(8)) enlarge(draw, call);
  call.later = draw.oneIn(3);
  if (draw.oneIn(200)) enlargeBeyondCaches(draw, call);
  drawRegionAround(draw, call);
  drawRows(draw, call);
  if (draw.oddly(20))
    call.defect = 1 + draw.below(way.isPushed ? kDefectsOfPushedRows : kHostDefects);
  return call;
}

bool hasLayoutOf(const HostCall& host, const Layout& layout, const Call& call) {
  vistrel_layout given{};
  if (vistrel_get_layout(&host.frame, &host.conversion, &given, nullptr) != VISTREL_OK) return true;
  const auto [width, height] = reference::hostImageSize(host.frame, host.conversion);
  const size_t row = reference::hostImageRowBytes(call.format, width);
  return given.width == width && given.height == height && given.row_bytes == row &&
         given.frame_bytes == layout.source.span() &&
         (call.gap || given.bytes == layout.destination.span());
}

uint64_t runProduct(const Way& way, const Call& call, const Memory& memory) {
  vistrel_set_level(static_cast<size_t>(currentLevel()), nullptr);
  HostCall host(call, memory);
  if (!hasLayoutOf(host, hostLayout(call), call)) return kOtherLayout;
  return way.convert(call, memory, host);
}

uint64_t runReference(const Call& call, const Memory& memory) {
  const HostCall host(call, memory);
  if (call.defect) return static_cast<uint32_t>(hostDefect(call.defect).status);
  return static_cast<uint32_t>(reference::hostConvert(host.frame, host.conversion, host.image));
}

}  // namespace

void addEngine(Catalogue& all) {
  for (const Way& way : kWays) {
    if (way.convert == convertByTeam && !kHasThreads) continue;
    all.add(
        "engine",
        {way.name,
         hostLayout,
         {[way](const Call& c, const Memory& m) { return runProduct(way, c, m); }, runReference},
         fillHostFrame},
        [way](Draw& draw) { return drawOne(draw, way); });
    all.experiments.back().cases = kCases;
  }
}

}  // namespace vistrel::core::check
