#include "host/row_engine.h"

#include "host/finishing.h"
#include "host/tables.h"
#include "output/table.h"

namespace vistrel::host {

using namespace core;

namespace {

// Entry i serves the samples whose highest ten bits are i.
void fillTable(const vistrel_conversion& c, uint32_t bits, uint8_t* table) {
  if (c.reduction != VISTREL_TABLE) return Create10To8BitLUT(table, c.reduction, nullptr, 0);
  const size_t step = c.table_entries == kTableEntries ? 1 : size_t{1} << (bits - 10);
  for (size_t i = 0; i < kTableEntries; ++i) table[i] = static_cast<uint8_t>(c.table[i * step]);
}

}  // namespace

template <class T>
RowEngine<T>::RowEngine(const EngineCall& call, ImageRows rows, RowSource<T>& source, Arena& arena)
    : call_(call), p_(call.plan), c_(call.conversion), rows_(rows), pixels_(call, arena) {
  isMosaic(call.frame) ? startDemosaic(source, arena) : startReady(source, arena);
}

template <class T>
void RowEngine<T>::startReady(RowSource<T>& source, Arena& arena) {
  const size_t columns = p_.width, channels = channelsOf(call_.frame);
  ready_.emplace(source, columns, channels,
                 RowInterval{engineRow(rows_.first), engineRow(rows_.end)},
                 shapeOf(ReadyRows<T>::pitchOf(columns, channels)), rowsToFill(arena), arena);
  demosaic_ = &*ready_;
}

template <class T>
void RowEngine<T>::startDemosaic(RowSource<T>& source, Arena& arena) {
  const DemosaicAlgorithm<T> algorithm = findAlgorithm(c_.algorithm)->of<T>();
  DemosaicJob<T> job = jobOf(source);
  if (storesDirectly(algorithm)) {
    job.direct.emplace(
        DirectJob{directImage(arena), p_.format->direct, shiftOf(), p_.pad, p_.layout.width});
  } else {
    // An even number of padding columns that the algorithm need not make.
    const uint32_t left = c_.binning == 1 && algorithm.makesRoi ? p_.pad : 0;
    const uint32_t columns = p_.width - 2 * left;
    OutputShape shape = shapeOf(ImageOutput<T>::pitchOf(columns));
    shape.left -= left;
    job.image = &output_.emplace(shape, columns, engineRow(rows_.first), rowsToFill(arena), arena);
    job.roi.x = int(left);
    job.roi.width = int(columns);
  }
  demosaic_ = algorithm.make(job, arena);
}

template <class T>
DirectImageSink& RowEngine<T>::directImage(Arena& arena) {
  const int top = engineRow(0), first = engineRow(rows_.first);
  if (Ycc420Rows* const rows = pixels_.ycc420Rows())
    return directYcc420_.emplace(*rows, p_.layout.width, top, first, arena);
  return directOutput_.emplace(pixels_.firstPlane(), p_.layout.row_bytes, top, first, arena);
}

// Without a sink. Some algorithms work on pairs of rows, so the first row is even.
template <class T>
DemosaicJob<T> RowEngine<T>::jobOf(RowSource<T>& source) const {
  const int width = int(p_.width), height = int(p_.height);
  const Mosaic mosaic = Mosaic::ofPhase(p_.phase);
  return {.source = source,
          .mosaic = mosaic,
          .columns = width,
          .height = height,
          .roi = {0, 0, width, height},
          .rows = {engineRow(rows_.first) & ~1, engineRow(rows_.end)},
          .order = redFirst() && !swapsRedBlue() ? mosaic.exchanged() : mosaic,
          .bits = p_.bits,
          .threshold = c_.threshold};
}

template <class T>
bool RowEngine<T>::storesDirectly(const DemosaicAlgorithm<T>& algorithm) const {
  return algorithm.storesDirectly && algorithm.storesDirectly() && !p_.rawGray && !c_.finish &&
         c_.binning == 1 && hasDirectArrangement() && p_.format->bytes_per_sample == 1 &&
         (sizeof(T) == 1 || isWindow(c_.reduction));
}

template <class T>
uint32_t RowEngine<T>::finalRows(int end) const {
  const int reach = last() - engineRow(rows_.end);
  const int made = std::clamp(end - reach, engineRow(rows_.first), engineRow(rows_.end));
  const uint32_t rows = uint32_t(made) / c_.binning - p_.pad;
  // Rows that share chroma become final together.
  return rows == rows_.end ? rows : rows / rowsPerChroma(*p_.format) * rowsPerChroma(*p_.format);
}

// What takes the pixels: the image, or the finishing stage before it.
template <class T>
PixelRows& RowEngine<T>::rowsToFill(Arena& arena) {
  if (!c_.finish) return pixels_.rows();
  return finished_.emplace(finishOf(p_, call_.frame, c_, call_.gains, call_.finishTable),
                           pixels_.rows(), arena);
}

// pitch: the distance between two rows of a bin, in samples.
template <class T>
OutputShape RowEngine<T>::shapeOf(size_t pitch) {
  const Pack pack = !p_.format->colour() ? Pack::mono : p_.rawGray ? Pack::gray : Pack::bgr;
  const bool bins = c_.binning > 1 && !makesMeans();
  return {
      .writer = writerOf(pack, bins ? c_.binning : 1, pitch),
      .changes = p_.rawGray || bins || reduces() || mayExceed() || (redFirst() && swapsRedBlue()),
      .swapsRedBlue = redFirst() && swapsRedBlue(),
      .binning = c_.binning,
      .left = p_.pad * c_.binning,
      .width = p_.layout.width,
      .top = engineRow(0),
      .pixelBytes = c_.finish ? channels() * sizeof(T) : p_.nativePixelBytes,
      .mean = makesMeans() ? meanFunction<T>(channels(), c_.binning) : nullptr,
      .pitch = pitch,
      .ceiling = (1u << p_.bits) - 1,
      .meanBytes = makesMeans() ? channels() * sizeof(T) : 0};
}

template <class T>
RowWriter RowEngine<T>::writerOf(Pack pack, unsigned binning, size_t pitch) {
  const size_t width = p_.layout.width;
  if (sizeof(T) == 1)
    return RowWriter(pack, Depth::from8to8, binning, pitch, width, reductionOf<uint8_t>(8, 8, 0));
  if (!reduces())
    return RowWriter(pack, Depth::from16to16, binning, pitch, width,
                     reductionOf<uint16_t>(p_.bits, p_.bits, 0));
  if (isWindow(c_.reduction))
    return RowWriter(pack, Depth::from16to8, binning, pitch, width,
                     reductionOf<uint8_t>(p_.bits, 8, c_.reduction));
  fillTable(c_, p_.bits, table_);
  return RowWriter(pack, binning, pitch, width, table_, p_.bits - 10);
}

template class RowEngine<uint8_t>;
template class RowEngine<uint16_t>;

}  // namespace vistrel::host
