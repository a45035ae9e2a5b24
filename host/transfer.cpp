// Transfer curves by kind and by name.
#include "finish/transfer.h"

#include <iterator>

#include "host/names.h"
#include "vistrel/vistrel_finish.h"

namespace vistrel::host {
namespace {

// Indexed by code.
constexpr struct {
  const char* name;
  uint32_t code;
  core::TransferCurve curve;
  uint32_t min, max;  // of the parameter
} kTransfers[] = {
    {"linear", VISTREL_TRANSFER_LINEAR, core::TransferCurve::linear, 0, 0},
    {"srgb", VISTREL_TRANSFER_SRGB, core::TransferCurve::srgb, 0, 0},
    {"gamma", VISTREL_TRANSFER_GAMMA, core::TransferCurve::gamma, 100, 10000},
    {"asinh", VISTREL_TRANSFER_ASINH, core::TransferCurve::asinh, 1, 1000000000},
};

core::Transfer toTransfer(uint32_t kind, uint32_t parameter) {
  if (kind >= std::size(kTransfers))
    reject(VISTREL_BAD_TRANSFER, "kind", kind, "{} are allowed", listOf(kTransfers));
  const auto& row = kTransfers[kind];
  if (!row.max && parameter)
    reject(VISTREL_BAD_TRANSFER, "parameter", parameter,
           "transfer curve {} has none; only 0 is allowed", row.name);
  if (parameter < row.min || parameter > row.max)
    reject(VISTREL_BAD_TRANSFER, "parameter", parameter,
           "transfer curve {} allows {} to {} thousandths", row.name, row.min, row.max);
  return {row.curve, parameter};
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;
namespace core = vistrel::core;

int32_t vistrel_make_transfer(uint32_t kind, uint32_t parameter, uint16_t* points, size_t count,
                              vistrel_error* error) {
  return toStatus(error, [&] {
    const core::Transfer transfer = toTransfer(kind, parameter);
    if (count < 2 || count > 65536)
      reject(VISTREL_BAD_COUNT, "count", count, "2 to 65536 are allowed");
    checkPointer(points, "points");
    core::fillTransfer(transfer, {points, count});
  });
}

const char* vistrel_transfer_name(uint32_t kind) {
  return kind < std::size(kTransfers) ? kTransfers[kind].name : nullptr;
}

int32_t vistrel_parse_transfer(const char* name, uint32_t* kind, vistrel_error* error) {
  return parseName(kTransfers, name, kind, "kind", VISTREL_BAD_TRANSFER, error);
}
