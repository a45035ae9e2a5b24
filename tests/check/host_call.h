// A conversion of libvistrelhost: the structures that a call describes, over the sandbox's memory.
#pragma once

#include <vector>

#include "tests/check/subject.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::core::check {

// What a conversion refers to: levels of a calibration, a transfer curve.
struct HostLook {
  HostLook(const Call& call, const vistrel_frame& frame);

  std::vector<uint16_t> dark, flat, transfer;
  std::vector<vistrel_point> hot;
  vistrel_calibration calibration{};
  vistrel_finish finish{};
};
// Bits of Call::calibrated, and of Call::finished.
enum : uint32_t { kDark = 1, kFlat = 2, kHotPixels = 4 };
enum : uint32_t { kFinished = 1, kNeutral = 2, kMatrix = 4, kTransfer = 8 };

struct HostCall {
  HostCall(const Call& call, const Memory& memory);

  HostCall(const HostCall&) = delete;
  HostCall& operator=(const HostCall&) = delete;

  vistrel_frame frame{};
  vistrel_conversion conversion{};
  vistrel_image image{};
  HostLook look;
};

// An accepted description, and what makes it one that must be rejected.
struct HostDefect {
  int32_t status;
  void (*make)(HostCall& host);
};
// For Call::defect from 1. The last ones concern memory that pushed rows do not have.
constexpr uint32_t kHostDefects = 12, kDefectsOfPushedRows = 10;
const HostDefect& hostDefect(uint32_t defect);

Layout hostLayout(const Call& call);
// Fills source and table.
void fillHostFrame(const Call& call, const Layout& layout, const Memory& memory);

// Whether the destination's rows are not the image's: several planes are one block.
bool hasPlanes(uint32_t format);
uint32_t imageHeight(const Call& call);

}  // namespace vistrel::core::check
