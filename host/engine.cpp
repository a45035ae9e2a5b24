#include "host/engine.h"

#include <algorithm>

#include "demosaic/algorithms.h"
#include "demosaic/guard_writer.h"
#include "demosaic/work_image.h"
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

// The caller's table as libVistrel takes it: an entry for each possible sample.
void fillTable(const EngineCall& call, uint16_t* table) {
  const vistrel_conversion& c = call.conversion;
  if (c.reduction != VISTREL_TABLE) return;
  const size_t entries = size_t{1} << call.plan.bits, repeated = entries / c.table_entries;
  for (size_t i = 0; i < entries; ++i) table[i] = c.table[i / repeated];
}

// Demosaics into conversion.work, and from there makes conversion.pDst.
template <class T>
void runThroughBuffer(const EngineCall& call, const Conversion<T>& conversion, Arena& arena) {
  const Plan& p = call.plan;
  const int width = int(p.width), height = int(p.height);
  FrameRows<T> source(p, call.frame, call.conversion, call.gains, arena);
  GuardWriter<T> guard(conversion);
  WorkImage<T> image(conversion, arena);
  const DemosaicJob<T> job{.source = source,
                           .mosaic = conversion.region.mosaic,
                           .columns = width,
                           .height = height,
                           .roi = {0, 0, width, height},
                           .rows = {0, height},
                           .image = &image,
                           .bits = p.bits,
                           .margins = &guard};
  RowProcess<T>* const demosaic =
      findAlgorithm(call.conversion.algorithm)->of<T>().make(job, arena);
  if (arena.counts()) return;
  demosaic->advance(demosaic->last());
  image.finish();
}

// Binned raw gray mixes rows of the work buffer.
template <class T>
void makeThroughBuffer(const EngineCall& call, Arena& arena) {
  const Plan& p = call.plan;
  const vistrel_layout& l = p.layout;
  ImagePixels pixels(call, arena);
  const size_t samples = workBufferBytes(p.width, p.height) / 2;
  T* const work = arena.take<T>(samples);
  uint8_t* const result = arena.take<uint8_t>(l.bytes);
  if (!arena.counts()) std::fill_n(work, samples, T{0});
  uint16_t table[1 << 12];
  fillTable(call, table);
  const auto output = outputOf(call, table);
  const Region region(p.phase, call.conversion.binning - 1, 0, 0, l.width, l.height);
  runThroughBuffer<T>(call,
                      {region, p.phase, 0, 0, p.bits, nullptr, 0, work, guardedLayout(region),
                       result, l.height, output},
                      arena);
  if (arena.counts()) return;
  for (uint32_t y = 0; y < l.height; ++y) {
    pixels.rows().begin(y);
    pixels.rows().append(result + y * l.row_bytes, l.width);
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
  call.plan.sampleBytes == 1 ? make<uint8_t>(call, rows, arena) : make<uint16_t>(call, rows, arena);
}

}  // namespace vistrel::host
