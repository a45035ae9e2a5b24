#include "host/packings.h"

#include "host/names.h"

namespace vistrel::host {
namespace {

using core::Packing;

// By code.
constexpr struct {
  const char* name;
  uint32_t code;
} kNames[] = {{"BYTES", VISTREL_PACKING_BYTES}, {"LITTLE", VISTREL_PACKING_LITTLE},
              {"BIG", VISTREL_PACKING_BIG},     {"PFNC", VISTREL_PACKING_PFNC},
              {"GIGE", VISTREL_PACKING_GIGE},   {"MIPI", VISTREL_PACKING_MIPI}};

constexpr struct {
  uint32_t code, minBits, maxBits;
  Packing packing;
} kPackings[] = {
    {VISTREL_PACKING_BYTES, 8, 8, Packing::bytes},
    {VISTREL_PACKING_LITTLE, 8, 16, Packing::little},
    {VISTREL_PACKING_BIG, 8, 16, Packing::big},
    {VISTREL_PACKING_PFNC, 10, 10, Packing::pfnc10},
    {VISTREL_PACKING_PFNC, 12, 12, Packing::pfnc12},
    {VISTREL_PACKING_PFNC, 14, 14, Packing::pfnc14},
    {VISTREL_PACKING_GIGE, 10, 10, Packing::gige10},
    {VISTREL_PACKING_GIGE, 12, 12, Packing::gige12},
    {VISTREL_PACKING_MIPI, 10, 10, Packing::mipi10},
    {VISTREL_PACKING_MIPI, 12, 12, Packing::mipi12},
    {VISTREL_PACKING_MIPI, 14, 14, Packing::mipi14},
};

// "10, 12", "8 to 16"
std::string bitsOf(uint32_t code) {
  std::string list;
  for (const auto& row : kPackings) {
    if (row.code != code) continue;
    list += fmt::format("{}{}", list.empty() ? "" : ", ", row.minBits);
    if (row.maxBits > row.minBits) list += fmt::format(" to {}", row.maxBits);
  }
  return list;
}

}  // namespace

core::Packing findPacking(uint32_t code, uint32_t bits) {
  for (const auto& row : kPackings)
    if (row.code == code && row.minBits <= bits && bits <= row.maxBits) return row.packing;
  const char* const name = vistrel_packing_name(code);
  if (!name) reject(VISTREL_BAD_PACKING, "packed.packing", code, "{} are allowed", listOf(kNames));
  reject(VISTREL_BAD_BITS, "packed.bits", bits, "packing {} allows {}", name, bitsOf(code));
}

}  // namespace vistrel::host

using namespace vistrel::host;

const char* vistrel_packing_name(uint32_t packing) {
  return packing < std::size(kNames) ? kNames[packing].name : nullptr;
}

int32_t vistrel_parse_packing(const char* name, uint32_t* packing, vistrel_error* error) {
  return parseName(kNames, name, packing, "packing", VISTREL_BAD_PACKING, error);
}
