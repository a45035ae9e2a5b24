#include "host/packings.h"

#include <bit>
#include <span>

#include "host/names.h"

namespace vistrel::host {
namespace {

using core::Packing;

struct Depth {
  uint32_t minBits, maxBits;
  Packing packing;
};
constexpr Depth kBytes[] = {{8, 8, Packing::bytes}};
constexpr Depth kLittle[] = {{8, 16, Packing::little}};
constexpr Depth kBig[] = {{8, 16, Packing::big}};
constexpr Depth kPfnc[] = {
    {10, 10, Packing::pfnc10}, {12, 12, Packing::pfnc12}, {14, 14, Packing::pfnc14}};
constexpr Depth kGige[] = {{10, 10, Packing::gige10}, {12, 12, Packing::gige12}};
constexpr Depth kMipi[] = {
    {10, 10, Packing::mipi10}, {12, 12, Packing::mipi12}, {14, 14, Packing::mipi14}};

// Indexed by code.
constexpr struct {
  const char* name;
  uint32_t code;
  std::span<const Depth> depths;
} kPackings[] = {
    {"BYTES", VISTREL_PACKING_BYTES, kBytes}, {"LITTLE", VISTREL_PACKING_LITTLE, kLittle},
    {"BIG", VISTREL_PACKING_BIG, kBig},       {"PFNC", VISTREL_PACKING_PFNC, kPfnc},
    {"GIGE", VISTREL_PACKING_GIGE, kGige},    {"MIPI", VISTREL_PACKING_MIPI, kMipi},
};

// Of an unknown code: none.
std::span<const Depth> depthsOf(uint32_t code) {
  return code < std::size(kPackings) ? kPackings[code].depths : std::span<const Depth>();
}

// "10, 12", "8 to 16"
std::string bitsOf(uint32_t code) {
  std::string list;
  for (const Depth& depth : depthsOf(code)) {
    list += textOf("{}{}", list.empty() ? "" : ", ", depth.minBits);
    if (depth.maxBits > depth.minBits) list += textOf(" to {}", depth.maxBits);
  }
  return list;
}

const Depth* findDepth(uint32_t code, uint32_t bits) {
  for (const Depth& depth : depthsOf(code))
    if (depth.minBits <= bits && bits <= depth.maxBits) return &depth;
  return nullptr;
}

}  // namespace

core::Packing findPacking(uint32_t code, uint32_t bits, std::string_view structure,
                          std::string_view zero) {
  if (const Depth* const depth = findDepth(code, bits)) return depth->packing;
  const char* const name = vistrel_packing_name(code);
  if (!name) {
    const auto others = listOf(kPackings, [](const auto& row) { return row.code != 0; });
    reject(VISTREL_BAD_PACKING, textOf("{}.packing", structure), code, "{}, {} are allowed", zero,
           others);
  }
  reject(VISTREL_BAD_BITS, textOf("{}.bits", structure), bits, "packing {} allows {}", name,
         bitsOf(code));
}

std::optional<core::Packing> packingOf(const vistrel_frame& frame) {
  constexpr bool isLittle = std::endian::native == std::endian::little;
  constexpr uint32_t native = isLittle ? VISTREL_PACKING_LITTLE : VISTREL_PACKING_BIG;
  if (!frame.packing || frame.packing == native) return std::nullopt;
  return findDepth(frame.packing, frame.bits)->packing;
}

}  // namespace vistrel::host

using namespace vistrel::host;

const char* vistrel_packing_name(uint32_t packing) {
  return packing < std::size(kPackings) ? kPackings[packing].name : nullptr;
}

int32_t vistrel_parse_packing(const char* name, uint32_t* packing, vistrel_error* error) {
  return parseName(kPackings, name, packing, "packing", VISTREL_BAD_PACKING, error);
}
