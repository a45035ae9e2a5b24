#include "tests/check/sandbox.h"

#include <algorithm>

#include "streams/registry.h"
#include "tests/check/fill.h"
#include "tests/check/random.h"
#include "tests/reference/registry.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

constexpr size_t kArena = size_t{64} << 20;  // reserved, not used until touched
constexpr size_t kTableArena = size_t{16} << 10;

Edge edge(const Call& call, Place atStart) {
  return call.place & atStart ? Edge::start : Edge::end;
}

// The size that ImgInitialize gives it.
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

Sandbox::Sandbox(Side side)
    : side_(side), source_(kArena), destination_(kArena), work_(kArena), table_(kTableArena) {
  ImgLoadDriver();
  reference::ImgLoadDriver();
  for (uint32_t slot = 0; slot <= kSlot; ++slot) {
    NewIndex(kKnownId - kSlot + slot);
    reference::NewIndex(kKnownId - kSlot + slot);
  }
}

void Sandbox::beginCase(const Case& calls, const std::vector<Layout>& layouts) {
  const Shape shape = Shape::contiguous(workBytes(calls, layouts));
  memory_.work = work_.place(shape, edge(calls[0], kWorkAtStart));
  memory_.work.writeCanary(canary());
  fillWithNoise(memory_.work, mix(calls[0].seed));
}

void Sandbox::place(const Call& call, const Layout& layout) {
  const Edge sourceEdge = edge(call, kSourceAtStart);
  memory_.source = call.place & kGuardPageRows && GuardPageRows::fits(layout.source)
                       ? rows_.place(layout.source, sourceEdge)
                       : source_.place(layout.source, sourceEdge);
  memory_.destination = destination_.place(layout.destination, edge(call, kDestinationAtStart));
  memory_.table = table_.place(Shape::contiguous(2 * layout.tableEntries), Edge::end);
  for (const Block* block : {&memory_.source, &memory_.destination, &memory_.table})
    block->writeCanary(canary());
}

void Sandbox::set(const Subject& subject, const Call& call, const Layout& layout) {
  place(call, layout);
  fillWithNoise(memory_.destination, mix(call.seed + 1));
  fillWithNoise(memory_.table, mix(call.seed + 2));
  if (subject.fill)
    subject.fill(call, layout, memory_);
  else
    fillWithFrame(memory_.source, call, layout.sampleBytes, layout.sourceBits);
}

void Sandbox::setLike(const Sandbox& other, const Call& call, const Layout& layout) {
  place(call, layout);
  copyRows(other.memory_.source, memory_.source);
  copyRows(other.memory_.destination, memory_.destination);
  copyRows(other.memory_.table, memory_.table);
}

void Sandbox::settle(Range meaningless) const {
  std::fill(memory_.work.begin + meaningless.from, memory_.work.begin + meaningless.to, uint8_t{0});
}

// Sets both tables, so that either implementation can run on either side's memory.
void Sandbox::attachStream(const Call& call) const {
  uint16_t* const work = memory_.work.as<uint16_t>();
  uint16_t* const table = call.place & kNoTable ? nullptr : memory_.table.as<uint16_t>();
  const unsigned tableSlot = call.unknown ? kStreams : kSlot;
  g_pwBGRBuff[kSlot] = reference::g_pwBGRBuff[kSlot] = work;
  g_pwUserLUT[tableSlot] = reference::g_pwUserLUT[tableSlot] = table;
  g_anBGRBytes[kSlot] = reference::g_anBGRBytes[kSlot] = memory_.work.shape.span();
}

Outcome Sandbox::call(const Subject& subject, const Call& call) {
  attachStream(call);
  Outcome outcome;
  outcome.fault = trapped([&] { outcome.result = subject.run[side_](call, memory_); });
  return outcome;
}

}  // namespace vistrel::core::check
