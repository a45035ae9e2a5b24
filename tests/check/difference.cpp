#include "tests/check/difference.h"

#include <fmt/format.h>

#include <bit>
#include <cstring>
#include <utility>

namespace vistrel::core::check {
namespace {

constexpr std::pair<const char*, Block Memory::*> kBlocks[] = {
    {"source", &Memory::source},
    {"destination", &Memory::destination},
    {"work buffer", &Memory::work},
    {"table", &Memory::table}};

uint64_t sampleAt(const uint8_t* bytes, size_t sample, size_t sampleBytes) {
  uint64_t value = 0;
  constexpr bool lowFirst = std::endian::native == std::endian::little;
  char* const lowest =
      reinterpret_cast<char*>(&value) + (lowFirst ? 0 : sizeof value - sampleBytes);
  std::memcpy(lowest, bytes + sample * sampleBytes, sampleBytes);
  return value;
}

std::string placeOf(const Raster& raster, size_t sample) {
  if (raster.width == 0) return fmt::format("sample {}", sample);
  const size_t pixel = sample / raster.channels;
  const auto x = static_cast<ptrdiff_t>(pixel % raster.width) - static_cast<ptrdiff_t>(raster.left);
  const auto y = static_cast<ptrdiff_t>(pixel / raster.width) - static_cast<ptrdiff_t>(raster.top);
  return fmt::format("pixel ({}, {}) channel {}", x, y, sample % raster.channels);
}

// Compares one row of bytes, without those in `ignored`.
std::optional<std::string> firstDifference(const uint8_t* got, const uint8_t* expected,
                                           size_t bytes, const Raster& raster, Range ignored) {
  const size_t size = raster.sampleBytes;
  std::optional<size_t> first;
  size_t count = 0;
  for (size_t k = 0; (k + 1) * size <= bytes; ++k) {
    if (k * size >= ignored.from && k * size < ignored.to) continue;
    if (std::memcmp(got + k * size, expected + k * size, size) == 0) continue;
    if (!first) first = k;
    ++count;
  }
  if (!first) return std::nullopt;
  return fmt::format("{}: got {}, expected {} ({} of {} samples differ)", placeOf(raster, *first),
                     sampleAt(got, *first, size), sampleAt(expected, *first, size), count,
                     bytes / size);
}

std::optional<Failure> compareRows(Kind kind, const char* what, const Block& got,
                                   const Block& expected, const Raster& raster, Range ignored) {
  for (size_t r = 0; r < got.shape.rows; ++r) {
    if (std::memcmp(got.row(r), expected.row(r), got.shape.rowBytes) == 0) continue;
    const auto text =
        firstDifference(got.row(r), expected.row(r), got.shape.rowBytes, raster, ignored);
    if (!text) continue;
    const std::string row = got.shape.rows > 1 ? fmt::format("row {} ", r) : "";
    return Failure{kind, fmt::format("{} {}{}", what, row, *text)};
  }
  return std::nullopt;
}

}  // namespace

std::string place(const Memory& memory, const Fault& fault) {
  for (const auto& [what, member] : kBlocks)
    if (const auto where = (memory.*member).describe(fault.address))
      return fmt::format("{}: {}", what, *where);
  return fmt::format("at {}", static_cast<const void*>(fault.address));
}

std::optional<Failure> findCorruption(const Memory& memory, uint8_t canary, const char* side) {
  for (const auto& [what, member] : kBlocks) {
    const Block& block = memory.*member;
    if (const auto at = block.findCorruption(canary))
      return Failure{Kind::outside,
                     fmt::format("{} wrote outside the {}, {} bytes from its beginning "
                                 "(it has {})",
                                 side, what, *at, block.shape.span())};
  }
  return std::nullopt;
}

std::optional<Failure> difference(const Layout& layout, const Memory& got, const Memory& expected) {
  const Raster plain;
  Raster samples;
  samples.sampleBytes = layout.sampleBytes;
  if (auto failure = compareRows(Kind::source, "source", got.source, expected.source, samples, {}))
    return failure;
  if (auto failure = compareRows(Kind::source, "table", got.table, expected.table, plain, {}))
    return failure;
  if (auto failure = compareRows(Kind::destination, "destination", got.destination,
                                 expected.destination, layout.destinationRaster, {}))
    return failure;
  return compareRows(Kind::work, "work buffer", got.work, expected.work, layout.workRaster,
                     layout.meaningless);
}

}  // namespace vistrel::core::check
