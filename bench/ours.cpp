#include <fmt/format.h>

#include <cmath>
#include <stdexcept>
#include <vector>

#include "bench/task.h"
#include "streams/registry.h"
#include "vistrel/image_functions.h"
#include "vistrel/processor.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::bench {

namespace {

constexpr uint32_t kStream = 1;
constexpr uint32_t kUserTableMode = 10;

struct Format {
  const char* name;
  Layout layout;
  unsigned bits;      // of a sample of the result
  uint32_t nDstBits;  // of a pixel, as the library counts them
};

Format formatOf(uint32_t nFormat, unsigned significantBits) {
  switch (nFormat) {
    case IMG_FMT_MONO8: return {"MONO8", kMono8, 8, 8};
    case IMG_FMT_MONO16: return {"MONO16", kMono16, significantBits, significantBits};
    case IMG_FMT_BGR24: return {"BGR24", kBgr24, 8, 24};
    case IMG_FMT_ARGB32: return {"ARGB32", kArgb32, 8, 24};
    case IMG_FMT_GRAY8: return {"GRAY8", kMono8, 8, 8};
    case IMG_FMT_GRAY16: return {"GRAY16", kMono16, significantBits, significantBits};
    case IMG_FMT_BGR48: return {"BGR48", kBgr48, significantBits, 3 * significantBits};
    default: throw std::invalid_argument(fmt::format("no format {}", nFormat));
  }
}

void loadToneCurve(unsigned significantBits) {
  const unsigned entries = 1u << significantBits;
  std::vector<uint16_t> table(entries);
  for (unsigned i = 0; i < entries; ++i)
    table[i] = static_cast<uint16_t>(std::lround(255 * toneCurve((i + 0.5) / entries)));
  ImgLoadLookupTable(kStream, table.data(), entries);
}

// Memory for a result, and a stream prepared for its frame.
struct Result {
  Buffer<uint8_t> memory;
  Picture picture;
  uint32_t nDstBits;

  Result(const Conversion& c, const FrameSize& size) {
    const Format format = formatOf(c.nFormat, c.significantBits);
    const unsigned width = size.width / c.factor, height = size.height / c.factor;
    memory = allocate<uint8_t>(size_t{width} * height * format.layout.channels *
                               format.layout.sampleBytes);
    picture = {data(), width, height, format.layout, format.bits};
    nDstBits = format.nDstBits;
    if (!ImgInitialize(kStream, size.width, size.height)) throw std::bad_alloc();
    loadToneCurve(c.significantBits);
  }

  uint8_t* data() const { return memory.get(); }
};

}  // namespace

double toneCurve(double light) { return std::pow(light, 1 / 2.2); }

std::string Conversion::name() const {
  return fmt::format("{}{}/{}/{}x{}{}", algorithm, depth, formatOf(nFormat, significantBits).name,
                     factor, factor, nLutMode == kUserTableMode ? "/table" : "");
}

Task makeOurs(const Conversion& c, const Frame& frame) {
  const Result result(c, frame.size);
  const FrameSize size = frame.size;
  const auto run = [=] {
    const Picture& p = result.picture;
    const uint32_t done =
        c.depth == 8
            ? ImgConvert8(kStream, c.nFormat, c.nAlgorithm, BAYER_RGGB, c.factor - 1, size.width,
                          size.height, 0, 0, p.width, p.height, frame.samples8.get(), result.data(),
                          8, 0)
            : ImgConvert16(kStream, c.nFormat, c.nAlgorithm, BAYER_RGGB, c.factor - 1,
                           result.nDstBits, c.nLutMode, size.width, size.height, 0, 0, p.width,
                           p.height, frame.samples16.get(), result.data(), c.significantBits, 0);
    if (!done) throw std::runtime_error("rejected: " + c.name());
  };
  return {run, result.picture};
}

Task makeWithoutPacked(const Conversion& c, const Frame& frame) {
  const Task task = makeOurs(c, frame);
  const auto run = [whole = task.run] {
    const uint64_t enabled = ippGetEnabledCpuFeatures();
    ippSetCpuFeaturesMask(enabled & ~uint64_t{IPP_CPU_SSE});
    whole();
    ippSetCpuFeaturesMask(enabled);
  };
  return {run, task.picture};
}

Task makeAhd(const Conversion& c, const Frame& frame) {
  const Result result(c, frame.size);
  const unsigned slot = static_cast<unsigned>(NewIndex(kStream));
  const auto run = [=] {
    const Picture& p = result.picture;
    if (c.depth == 8)
      ImageColorDemosaicAHD(slot, p.width, BAYER_RGGB, 0, c.nFormat, 0, 0, p.width, p.height,
                            frame.samples8.get(), result.data());
    else
      ImageColorDemosaicAHD(slot, p.width, BAYER_RGGB, 0, c.nFormat, c.nLutMode, 0, 0, p.width,
                            p.height, frame.samples16.get(), result.data(), result.nDstBits,
                            c.significantBits);
  };
  return {run, result.picture};
}

}  // namespace vistrel::core::bench
