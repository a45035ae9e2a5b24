#include "host/engine.h"

#include <algorithm>
#include <new>

#include "demosaic/conversion.h"
#include "demosaic/through_buffer.h"
#include "host/frame_rows.h"
#include "host/row_engine.h"

namespace vistrel::host {
namespace {

using namespace core;

ColourOutput outputOf(const EngineCall& call, const uint16_t* table) {
  const Plan& p = call.plan;
  const vistrel_conversion& c = call.conversion;
  if (call.frame.bytes_per_sample == 1) return {p.layout.width, c.format, c.binning - 1, true};
  return {p.layout.width, p.bits, c.format, c.reduction, table, c.binning - 1, p.layout.bits, true};
}

// Binned raw gray mixes rows of the work buffer.
template <class T>
void makeThroughBuffer(const EngineCall& call, Arena& arena) {
  const Plan& p = call.plan;
  const vistrel_conversion& c = call.conversion;
  FrameRows<T> source(p, call.frame, c, call.gains, arena);
  ImagePixels pixels(call, arena);
  T* const samples = arena.take<T>(size_t{p.width} * p.height);
  T* const work = arena.take<T>(workBufferBytes(p.width, p.height) / 2);
  uint8_t* const result = arena.take<uint8_t>(p.layout.bytes);
  uint16_t* const table = arena.take<uint16_t>(size_t{1} << 12);
  if (arena.counts()) return;
  std::fill_n(work, workBufferBytes(p.width, p.height) / 2, T{0});
  for (uint32_t y = 0; y < p.height; ++y)
    std::copy_n(source.row(int(y)), p.width, samples + size_t{y} * p.width);
  if (c.reduction == VISTREL_TABLE) {
    const size_t entries = size_t{1} << p.bits, repeated = entries / c.table_entries;
    for (size_t i = 0; i < entries; ++i) table[i] = c.table[i / repeated];
  }
  const Region region(p.phase, c.binning - 1, 0, 0, p.layout.width, p.layout.height);
  const auto output = outputOf(call, table);
  const Conversion<T> conversion{
      region, p.phase,         0,     0, p.bits, samples, p.width, work, guardedLayout(region),
      result, p.layout.height, output};
  if (!convertThroughBuffer(conversion, findAlgorithm(c.algorithm)->of<T>()))
    throw std::bad_alloc();
  for (uint32_t y = 0; y < p.layout.height; ++y) {
    pixels.rows().begin(y);
    pixels.rows().append(result + y * p.layout.row_bytes, p.layout.width);
    pixels.rows().end();
  }
  storeFence();
}

template <class T>
void make(const EngineCall& call, ImageRows rows, Arena& arena) {
  if (call.plan.throughBuffer) return makeThroughBuffer<T>(call, arena);
  FrameRows<T> source(call.plan, call.frame, call.conversion, call.gains, arena);
  RowEngine<T> engine(call, rows, source, arena);
  if (arena.counts()) return;
  engine.advance(engine.last());
  storeFence();
}

}  // namespace

void makeRows(const EngineCall& call, ImageRows rows, Arena& arena) {
  call.plan.sampleBytes == 1 ? make<uint8_t>(call, rows, arena)
                             : make<uint16_t>(call, rows, arena);
}

}  // namespace vistrel::host
