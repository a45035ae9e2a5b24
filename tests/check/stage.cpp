#include "tests/check/stage.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "frontend/registry.h"
#include "frontend/vistrel.h"
#include "tests/check/random.h"
#include "tests/reference/registry.h"

namespace vistrel::check {
namespace {

constexpr size_t kArena = size_t{64} << 20;  // reserved, not used until touched
constexpr size_t kTableArena = size_t{16} << 10;

Edge edge(const Call& call, Place atStart) {
  return call.place & atStart ? Edge::start : Edge::end;
}

void fillWithGarbage(const Block& block, uint64_t seed) {
  const size_t bytes = block.shape.span();
  for (size_t at = 0; at < bytes; at += 8) {
    const uint64_t garbage = mix(seed + at);
    std::memcpy(block.begin + at, &garbage, std::min<size_t>(8, bytes - at));
  }
}

void copyRows(const Block& from, const Block& to) {
  for (size_t r = 0; r < from.shape.rows; ++r)
    std::memcpy(to.row(r), from.row(r), from.shape.rowBytes);
}

// The frame's own samples as far as they go, then the same again: odd figures, so that the
// repetition falls in with nothing.
constexpr size_t kOwnRows = 509, kOwnSamples = 99991;

template <class T>
void fillRow(const Frame& frame, uint32_t x0, uint32_t y, T* row, size_t samples) {
  const size_t own = std::min(samples, kOwnSamples);
  for (size_t x = 0; x < own; ++x)
    row[x] = static_cast<T>(frame.at(x0 + static_cast<uint32_t>(x), y));
  for (size_t x = own; x < samples; ++x) row[x] = row[x - own];
}

template <class T>
void fillWithFrame(const Call& call, const Layout& layout, const Block& block) {
  const uint32_t largest = std::numeric_limits<T>::max();
  const uint32_t bits = layout.sourceBits;
  const uint32_t maximum = bits == 0 || bits > 16 ? largest : std::min(largest, (1u << bits) - 1);
  const Frame frame{static_cast<Pattern>(call.pattern), call.seed, maximum, largest};
  const Shape& shape = block.shape;
  for (size_t y = 0; y < shape.rows; ++y) {
    if (y < kOwnRows)
      fillRow(frame, static_cast<uint32_t>(shape.origin / sizeof(T)), static_cast<uint32_t>(y),
              reinterpret_cast<T*>(block.row(y)), shape.rowBytes / sizeof(T));
    else
      std::memcpy(block.row(y), block.row(y - kOwnRows), shape.rowBytes);
  }
}

// As ImgInitialize sizes it.
size_t workBytesFor(FrameSize size) {
  return (size_t{3} * size.width + 18) * (size_t{size.height} + 6) * 2;
}

size_t workBytes(const Case& calls, const std::vector<Layout>& layouts) {
  size_t touched = 0;
  FrameSize size = {0, 0};
  bool stream = false;
  for (const Layout& layout : layouts) {
    touched = std::max(touched, layout.workBytes + layout.workBytes % 2);
    if (!layout.stream) continue;
    stream = true;
    size = {std::max(size.width, layout.stream->width),
            std::max(size.height, layout.stream->height)};
  }
  const bool exact = calls.size() == 1 && calls[0].place & kWorkExact;
  return stream && !exact ? workBytesFor(size) : touched;
}

}  // namespace

Stage::Stage(Side side)
    : side_(side), source_(kArena), destination_(kArena), work_(kArena), table_(kTableArena) {
  ImgLoadDriver();
  reference::ImgLoadDriver();
  for (uint32_t slot = 0; slot <= kSlot; ++slot) {
    NewIndex(kKnownId - kSlot + slot);
    reference::NewIndex(kKnownId - kSlot + slot);
  }
}

void Stage::beginCase(const Case& calls, const std::vector<Layout>& layouts) {
  const Shape shape = Shape::packed(workBytes(calls, layouts));
  memory_.work = work_.place(shape, edge(calls[0], kWorkAtStart));
  memory_.work.paint(colour());
  fillWithGarbage(memory_.work, mix(calls[0].seed));
}

void Stage::place(const Call& call, const Layout& layout) {
  const Edge sourceEdge = edge(call, kSourceAtStart);
  memory_.source = call.place & kFencedRows && FencedRows::fits(layout.source)
                       ? rows_.place(layout.source, sourceEdge)
                       : source_.place(layout.source, sourceEdge);
  memory_.destination =
      destination_.place(Shape::packed(layout.destinationBytes), edge(call, kDestinationAtStart));
  memory_.table = table_.place(Shape::packed(2 * layout.tableEntries), Edge::end);
  for (const Block* block : {&memory_.source, &memory_.destination, &memory_.table})
    block->paint(colour());
}

void Stage::set(const Subject& subject, const Call& call, const Layout& layout) {
  place(call, layout);
  fillWithGarbage(memory_.destination, mix(call.seed + 1));
  fillWithGarbage(memory_.table, mix(call.seed + 2));
  if (subject.fill)
    subject.fill(call, layout, memory_);
  else if (layout.sampleBytes == 1)
    fillWithFrame<uint8_t>(call, layout, memory_.source);
  else
    fillWithFrame<uint16_t>(call, layout, memory_.source);
}

void Stage::setLike(const Stage& other, const Call& call, const Layout& layout) {
  place(call, layout);
  copyRows(other.memory_.source, memory_.source);
  copyRows(other.memory_.destination, memory_.destination);
  copyRows(other.memory_.table, memory_.table);
}

// In both tables, so that either implementation can be played on either side's memory.
void Stage::attachStream(const Call& call) const {
  uint16_t* const work = memory_.work.as<uint16_t>();
  uint16_t* const table = call.place & kNoTable ? nullptr : memory_.table.as<uint16_t>();
  const unsigned tableSlot = call.unknown ? kStreams : kSlot;
  g_pwBGRBuff[kSlot] = reference::g_pwBGRBuff[kSlot] = work;
  g_pwUserLUT[tableSlot] = reference::g_pwUserLUT[tableSlot] = table;
  reference::g_anBGRBytes[kSlot] = memory_.work.shape.span();
}

Outcome Stage::play(const Subject& subject, const Call& call) {
  attachStream(call);
  Outcome outcome;
  outcome.fault = trapped([&] { outcome.result = subject.run[side_](call, memory_); });
  return outcome;
}

}  // namespace vistrel::check
