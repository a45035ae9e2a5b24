#include "tests/check/block.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "tests/check/pages.h"

namespace vistrel::core::check {
namespace {

constexpr size_t kGuardBytes = size_t{1} << 20;
constexpr size_t kMargin = 4096;

}  // namespace

void Block::writeCanary(uint8_t canary) const {
  for (size_t r = 0; r < zoneRows; ++r) std::memset(zone + r * zonePitch, canary, zoneBytes);
}

std::optional<ptrdiff_t> Block::findCorruption(uint8_t canary) const {
  const auto scan = [&](const uint8_t* from, const uint8_t* to) -> std::optional<ptrdiff_t> {
    const bool clean = from == to || (*from == canary && std::equal(from + 1, to, from));
    if (clean) return std::nullopt;
    return std::find_if(from, to, [=](uint8_t b) { return b != canary; }) - begin;
  };
  for (size_t z = 0; z < zoneRows; ++z) {
    const size_t rows = zoneRows == 1 ? shape.rows : 1;  // of the block in this part of the zone
    const uint8_t* const to = zone + z * zonePitch + zoneBytes;
    const uint8_t* from = zone + z * zonePitch;
    for (size_t r = z; r < z + rows; ++r) {
      if (const auto at = scan(from, row(r))) return at;
      from = row(r) + shape.rowBytes;
    }
    if (const auto at = scan(from, to)) return at;
  }
  return std::nullopt;
}

std::optional<std::string> Block::describe(const uint8_t* address) const {
  const ptrdiff_t at = address - begin;
  const ptrdiff_t span = static_cast<ptrdiff_t>(shape.span());
  const ptrdiff_t near = static_cast<ptrdiff_t>(kGuardBytes);
  if (at < -near || at >= span + near) return std::nullopt;
  if (at < 0) return fmt::format("{} bytes before its first byte", -at);
  if (at >= span) return fmt::format("{} bytes past its last byte", at - span + 1);
  const size_t pitch = std::max<size_t>(shape.pitch, 1);
  return fmt::format("byte {} of row {}, which has {}", static_cast<size_t>(at) % pitch,
                     static_cast<size_t>(at) / pitch, shape.rowBytes);
}

GuardedMemory::GuardedMemory(size_t bytes)
    : capacity_((bytes + kMargin - 1) / kMargin * kMargin),
      map_(reservePages(capacity_ + 2 * kGuardBytes)) {
  openPages(map_ + kGuardBytes, capacity_);
}

GuardedMemory::~GuardedMemory() { releasePages(map_, capacity_ + 2 * kGuardBytes); }

Block GuardedMemory::place(const Shape& shape, Edge edge) const {
  const size_t span = shape.span();
  if (span > capacity_)
    throw std::length_error(fmt::format("a block of {} bytes is too large", span));
  const size_t margin = std::min(kMargin, capacity_ - span);
  uint8_t* const usable = map_ + kGuardBytes;
  uint8_t* const begin = edge == Edge::start ? usable : usable + capacity_ - span;
  uint8_t* const zone = edge == Edge::start ? begin : begin - margin;
  return {shape, begin, zone, 1, span + margin, 0};
}

GuardPageRows::GuardPageRows() : map_(reservePages(kRows * kPitch + kPage)) {
  for (size_t r = 0; r < kRows; ++r) openPages(map_ + kPage + r * kPitch, kPage);
}

GuardPageRows::~GuardPageRows() { releasePages(map_, kRows * kPitch + kPage); }

Block GuardPageRows::place(const Shape& shape, Edge edge) const {
  uint8_t* const page = map_ + kPage;
  uint8_t* const begin = edge == Edge::start ? page : page + kPage - shape.rowBytes;
  return {shape, begin, page, shape.rows, kPage, kPitch};
}

}  // namespace vistrel::core::check
