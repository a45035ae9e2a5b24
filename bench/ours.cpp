#include <fmt/format.h>

#include <memory>
#include <stdexcept>

#include "bench/host_call.h"

namespace vistrel::core::bench {

namespace {

struct Format {
  const char* name;
  Layout layout;
};

Format formatOf(uint32_t format) {
  switch (format) {
    case VISTREL_MONO8: return {"MONO8", kMono8};
    case VISTREL_MONO16: return {"MONO16", kMono16};
    case VISTREL_BGR24: return {"BGR24", kBgr24};
    case VISTREL_RGB24: return {"RGB24", kRgb24};
    case VISTREL_BGRA32: return {"BGRA32", kBgra32};
    case VISTREL_RGBA32: return {"RGBA32", kRgba32};
    case VISTREL_GRAY8: return {"GRAY8", kMono8};
    case VISTREL_BGR48: return {"BGR48", kBgr48};
    default: throw std::invalid_argument(fmt::format("no format {}", format));
  }
}

}  // namespace

std::string Conversion::name() const {
  const std::string bits = significantBits > 12 ? fmt::format("/{}bits", significantBits) : "";
  return fmt::format("{}{}/{}/{}x{}{}{}", algorithm, depth, formatOf(format).name, factor, factor,
                     reduction == VISTREL_TABLE ? "/table" : "", bits);
}

Task makeOurs(const Conversion& c, const Frame& frame) {
  const auto call = std::make_shared<HostCall>(c, frame);
  const Picture picture{call->memory.get(), call->layout.width, call->layout.height,
                        formatOf(c.format).layout, call->layout.bits};
  return {[call] { call->run(); }, picture};
}

}  // namespace vistrel::core::bench
