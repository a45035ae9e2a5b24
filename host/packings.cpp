#include "host/packings.h"

#include <bit>

#include "host/status.h"

namespace vistrel::host {
namespace {

using core::Packing;

struct PackingRow {
  uint32_t code;
  const char* name;
  uint32_t minBits, maxBits;
  Packing packing;
};
constexpr PackingRow kPackings[] = {
    {VISTREL_PACKING_BYTES, "BYTES", 8, 8, Packing::bytes},
    {VISTREL_PACKING_LITTLE, "LITTLE", 8, 16, Packing::little},
    {VISTREL_PACKING_BIG, "BIG", 8, 16, Packing::big},
    {VISTREL_PACKING_PFNC, "PFNC", 10, 10, Packing::pfnc10},
    {VISTREL_PACKING_PFNC, "PFNC", 12, 12, Packing::pfnc12},
    {VISTREL_PACKING_PFNC, "PFNC", 14, 14, Packing::pfnc14},
    {VISTREL_PACKING_GIGE, "GIGE", 10, 10, Packing::gige10},
    {VISTREL_PACKING_GIGE, "GIGE", 12, 12, Packing::gige12},
    {VISTREL_PACKING_MIPI, "MIPI", 10, 10, Packing::mipi10},
    {VISTREL_PACKING_MIPI, "MIPI", 12, 12, Packing::mipi12},
    {VISTREL_PACKING_MIPI, "MIPI", 14, 14, Packing::mipi14},
};

const PackingRow* findRow(uint32_t code, uint32_t bits) {
  for (const PackingRow& row : kPackings)
    if (row.code == code && row.minBits <= bits && bits <= row.maxBits) return &row;
  return nullptr;
}

[[noreturn]] void rejectPacking(uint32_t code, uint32_t bits, std::string_view structure,
                                std::string_view zero) {
  std::string packings, allowed, name;
  for (const PackingRow& row : kPackings) {
    if (row.code == code) {
      name = row.name;
      allowed += fmt::format("{}{}", allowed.empty() ? "" : ", ", row.minBits) +
                 (row.maxBits > row.minBits ? fmt::format(" to {}", row.maxBits) : "");
    }
    const std::string_view known = row.code ? row.name : zero;
    if (packings.find(known) == packings.npos)
      packings += fmt::format("{}{} ({})", packings.empty() ? "" : ", ", known, row.code);
  }
  if (allowed.empty())
    reject(VISTREL_BAD_PACKING, fmt::format("{}.packing", structure), code, "{} are allowed",
           packings);
  reject(VISTREL_BAD_BITS, fmt::format("{}.bits", structure), bits, "packing {} allows {}", name,
         allowed);
}

}  // namespace

core::Packing findPacking(uint32_t code, uint32_t bits, std::string_view structure,
                          std::string_view zero) {
  const PackingRow* const row = findRow(code, bits);
  if (!row) rejectPacking(code, bits, structure, zero);
  return row->packing;
}

std::optional<core::Packing> packingOf(const vistrel_frame& frame) {
  constexpr bool isLittle = std::endian::native == std::endian::little;
  constexpr uint32_t native = isLittle ? VISTREL_PACKING_LITTLE : VISTREL_PACKING_BIG;
  if (!frame.packing || frame.packing == native) return std::nullopt;
  return findRow(frame.packing, frame.bits)->packing;
}

}  // namespace vistrel::host
