#include "host/packings.h"

#include <bit>

#include "host/names.h"

namespace vistrel::host {
namespace {

using core::Packing;

// Indexed by code.
constexpr struct {
  const char* name;
  uint32_t code;
} kNames[] = {{"BYTES", VISTREL_PACKING_BYTES}, {"LITTLE", VISTREL_PACKING_LITTLE},
              {"BIG", VISTREL_PACKING_BIG},     {"PFNC", VISTREL_PACKING_PFNC},
              {"GIGE", VISTREL_PACKING_GIGE},   {"MIPI", VISTREL_PACKING_MIPI}};

struct PackingRow {
  uint32_t code, minBits, maxBits;
  Packing packing;
};
constexpr PackingRow kPackings[] = {
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

const PackingRow* findRow(uint32_t code, uint32_t bits) {
  for (const PackingRow& row : kPackings)
    if (row.code == code && row.minBits <= bits && bits <= row.maxBits) return &row;
  return nullptr;
}

}  // namespace

core::Packing findPacking(uint32_t code, uint32_t bits, std::string_view structure,
                          std::string_view zero) {
  if (const PackingRow* const row = findRow(code, bits)) return row->packing;
  const char* const name = vistrel_packing_name(code);
  if (!name) {
    const auto others = listOf(kNames, [](const auto& row) { return row.code != 0; });
    reject(VISTREL_BAD_PACKING, fmt::format("{}.packing", structure), code, "{}, {} are allowed",
           zero, others);
  }
  reject(VISTREL_BAD_BITS, fmt::format("{}.bits", structure), bits, "packing {} allows {}", name,
         bitsOf(code));
}

std::optional<core::Packing> packingOf(const vistrel_frame& frame) {
  constexpr bool isLittle = std::endian::native == std::endian::little;
  constexpr uint32_t native = isLittle ? VISTREL_PACKING_LITTLE : VISTREL_PACKING_BIG;
  if (!frame.packing || frame.packing == native) return std::nullopt;
  return findRow(frame.packing, frame.bits)->packing;
}

}  // namespace vistrel::host

using namespace vistrel::host;

const char* vistrel_packing_name(uint32_t packing) {
  return packing < std::size(kNames) ? kNames[packing].name : nullptr;
}

int32_t vistrel_parse_packing(const char* name, uint32_t* packing, vistrel_error* error) {
  return parseName(kNames, name, packing, "packing", VISTREL_BAD_PACKING, error);
}
