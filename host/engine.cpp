#include "host/engine.h"

#include <algorithm>
#include <new>

#include "demosaic/algorithms.h"
#include "demosaic/conversion.h"
#include "demosaic/ready_rows.h"
#include "demosaic/through_buffer.h"
#include "host/frame_rows.h"
#include "host/image_pixels.h"
#include "host/tables.h"
#include "output/finished_output.h"
#include "output/image_output.h"
#include "output/table.h"

namespace vistrel::host {
namespace {

using namespace core;

template <class T>
DemosaicAlgorithm<T> algorithmOf(uint32_t code) {
  switch (code) {
    case VISTREL_BILINEAR: return bilinear<T>();
    case VISTREL_EDGE: return edge<T>();
    case VISTREL_NEAR: return near<T>();
    case VISTREL_LAROCHE: return laroche<T>();
    case VISTREL_HAMILTON: return hamilton<T>();
    case VISTREL_VNG: return variableGradients<T>();
    case VISTREL_COK: return cok<T>();
    case VISTREL_KIMMEL: return kimmel<T>();
    case VISTREL_GROUPING: return pixelGrouping<T>();
    default: return ahd<T>();
  }
}

// Entry i serves the samples whose highest ten bits are i.
void fillTable(const vistrel_conversion& c, uint32_t bits, uint8_t* table) {
  if (c.reduction != VISTREL_TABLE) return Create10To8BitLUT(table, c.reduction, nullptr, 0);
  const size_t step = c.table_entries == kTableEntries ? 1 : size_t{1} << (bits - 10);
  for (size_t i = 0; i < kTableEntries; ++i) table[i] = static_cast<uint8_t>(c.table[i * step]);
}

template <class T>
class Engine {
 public:
  Engine(const EngineCall& call, Arena& arena)
      : call_(call), p_(call.plan), c_(call.conversion),
        source_(p_, call.frame, c_, call.gains, arena), pixels_(call, arena) {}

  void run(ImageRows rows, Arena& arena) {
    if (p_.throughBuffer)
      runThroughBuffer(arena);
    else if (isMosaic(call_.frame))
      runDemosaic(rows, arena);
    else
      runReady(rows, arena);
    pixels_.finish();
  }

 private:
  void runDemosaic(ImageRows rows, Arena& arena) {
    const DemosaicAlgorithm<T> algorithm = algorithmOf<T>(c_.algorithm);
    const int first = engineRow(rows.first);
    if (finishes(algorithm)) {
      FinishedOutput<T> output(pixels_.firstPlane(), p_.layout.row_bytes, engineRow(0), first,
                               arena);
      DemosaicJob<T> job = jobOf(rows, output);
      job.finishing = Finishing{p_.format->finish, shiftOf(), p_.pad, p_.layout.width};
      return make(algorithm, job, arena);
    }
    // Columns of padding, an even number, that the algorithm need not make.
    const uint32_t left = c_.binning == 1 && algorithm.makesRoi ? p_.pad : 0;
    const uint32_t columns = p_.width - 2 * left;
    OutputShape shape = shapeOf(ImageOutput<T>::pitchOf(columns));
    shape.left -= left;
    ImageOutput<T> output(shape, columns, first, pixels_.rows(), arena);
    DemosaicJob<T> job = jobOf(rows, output);
    job.roi.x = int(left);
    job.roi.width = int(columns);
    make(algorithm, job, arena);
  }

  int engineRow(uint32_t imageRow) const { return int((imageRow + p_.pad) * c_.binning); }

  // Some algorithms work on pairs of rows, so the first row is even.
  DemosaicJob<T> jobOf(ImageRows rows, ImageSink<T>& image) {
    const int width = int(p_.width), height = int(p_.height);
    const Mosaic mosaic = Mosaic::ofPhase(p_.phase);
    return {.source = source_,
            .mosaic = mosaic,
            .columns = width,
            .height = height,
            .roi = {0, 0, width, height},
            .rows = {engineRow(rows.first) & ~1, engineRow(rows.end)},
            .image = image,
            .order = redFirst() && !exchangesEnds() ? mosaic.exchanged() : mosaic,
            .bits = p_.bits,
            .threshold = c_.threshold};
  }

  static void make(const DemosaicAlgorithm<T>& algorithm, const DemosaicJob<T>& job, Arena& arena) {
    Demosaic<T>* const demosaic = algorithm.make(job, arena);
    if (demosaic) demosaic->advance(demosaic->last());
  }

  // Whether the algorithm can store bytes of the format at once.
  bool finishes(const DemosaicAlgorithm<T>& algorithm) const {
    return algorithm.finishes && algorithm.finishes() && !p_.rawGray && c_.binning == 1 &&
           p_.format->planes == 1 && p_.format->bytes_per_sample == 1 &&
           (sizeof(T) == 1 || isWindow(c_.reduction));
  }
  unsigned shiftOf() const { return sizeof(T) == 1 ? 0 : p_.bits - 8 - c_.reduction; }

  // pitch: distance of two rows of a bin, in samples.
  OutputShape shapeOf(size_t pitch) {
    const Pack pack = !p_.format->colour() ? Pack::mono : p_.rawGray ? Pack::gray : Pack::bgr;
    return {.writer = writerOf(pack, pitch),
            .changes = p_.rawGray || c_.binning > 1 || reduces() || (redFirst() && exchangesEnds()),
            .exchangesEnds = redFirst() && exchangesEnds(),
            .binning = c_.binning,
            .left = p_.pad * c_.binning,
            .width = p_.layout.width,
            .top = engineRow(0),
            .pixelBytes = p_.madeBytes};
  }

  bool redFirst() const { return p_.format->redFirst; }
  // Binning treats the samples of a pixel differently, so it takes them in one order only. Finished
  // pixels come in that order too.
  bool exchangesEnds() const { return c_.binning > 1 || !isMosaic(call_.frame); }

  bool reduces() const { return sizeof(T) == 2 && p_.format->bytes_per_sample == 1; }

  RowWriter writerOf(Pack pack, size_t pitch) {
    const size_t width = p_.layout.width;
    if (sizeof(T) == 1)
      return RowWriter(pack, Depth::from8to8, c_.binning, pitch, width,
                       reductionOf<uint8_t>(8, 8, 0));
    if (!reduces())
      return RowWriter(pack, Depth::from16to16, c_.binning, pitch, width,
                       reductionOf<uint16_t>(p_.bits, p_.bits, 0));
    if (isWindow(c_.reduction))
      return RowWriter(pack, Depth::from16to8, c_.binning, pitch, width,
                       reductionOf<uint8_t>(p_.bits, 8, c_.reduction));
    fillTable(c_, p_.bits, table_);
    return RowWriter(pack, c_.binning, pitch, width, table_, p_.bits - 10);
  }

  void runReady(ImageRows rows, Arena& arena) {
    const size_t columns = p_.width, channels = channelsOf(call_.frame);
    ReadyRows<T> ready(source_, columns, channels, {engineRow(rows.first), engineRow(rows.end)},
                       shapeOf(ReadyRows<T>::pitchOf(columns, channels)), pixels_.rows(), arena);
    if (!arena.counts()) ready.advance(ready.last());
  }

  // The library's own binned gray mixes rows of the work buffer.
  void runThroughBuffer(Arena& arena) {
    T* const samples = arena.take<T>(size_t{p_.width} * p_.height);
    T* const work = arena.take<T>(workBufferBytes(p_.width, p_.height) / 2);
    uint8_t* const result = arena.take<uint8_t>(p_.layout.bytes);
    uint16_t* const table = arena.take<uint16_t>(size_t{1} << 12);
    if (arena.counts()) return;
    std::fill_n(work, workBufferBytes(p_.width, p_.height) / 2, T{0});
    for (uint32_t y = 0; y < p_.height; ++y)
      std::copy_n(source_.row(int(y)), p_.width, samples + size_t{y} * p_.width);
    if (c_.reduction == VISTREL_TABLE) {
      const size_t entries = size_t{1} << p_.bits, repeated = entries / c_.table_entries;
      for (size_t i = 0; i < entries; ++i) table[i] = c_.table[i / repeated];
    }
    const Region region(p_.phase, c_.binning - 1, 0, 0, p_.layout.width, p_.layout.height);
    const auto output = outputOf(table);
    const Conversion<T> conversion{
        region, p_.phase,         0,     0, p_.bits, samples, p_.width, work, guardedLayout(region),
        result, p_.layout.height, output};
    if (!convertThroughBuffer(conversion, algorithmOf<T>(c_.algorithm))) throw std::bad_alloc();
    PixelRows& pixels = pixels_.rows();
    for (uint32_t y = 0; y < p_.layout.height; ++y) {
      pixels.begin(y);
      pixels.append(result + y * p_.layout.row_bytes, p_.layout.width);
      pixels.end();
    }
  }

  ColourOutput outputOf(const uint16_t* table) const {
    if constexpr (sizeof(T) == 1)
      return {p_.layout.width, c_.format, c_.binning - 1, true};
    else
      return {p_.layout.width, p_.bits,        c_.format,      c_.reduction,
              table,           c_.binning - 1, p_.layout.bits, true};
  }

  const EngineCall& call_;
  const Plan& p_;
  const vistrel_conversion& c_;
  FrameRows<T> source_;
  ImagePixels pixels_;
  uint8_t table_[kTableEntries];
};

template <class T>
void make(const EngineCall& call, ImageRows rows, Arena& arena) {
  Engine<T>(call, arena).run(rows, arena);
}

}  // namespace

void makeRows(const EngineCall& call, ImageRows rows, Arena& arena) {
  call.frame.bytes_per_sample == 1 ? make<uint8_t>(call, rows, arena)
                                   : make<uint16_t>(call, rows, arena);
}

}  // namespace vistrel::host
