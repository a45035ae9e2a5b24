#include "demosaic/through_buffer.h"

#include "demosaic/guard_writer.h"
#include "demosaic/work_image.h"

namespace vistrel::core {

template <class T>
bool sweepThroughBuffer(const Conversion<T>& c, MakeDemosaic<T>* make) {
  const auto Wf = static_cast<int>(c.region.Wf), Hf = static_cast<int>(c.region.Hf);
  PlainRows<T> source(c.pSrc + c.region.x0, static_cast<ptrdiff_t>(c.sourceStride), Hf);
  GuardWriter<T> guard(c);
  return withArena([&](Arena& arena) {
    WorkImage<T> image(c, arena);
    const DemosaicJob<T> job{.source = source,
                             .mosaic = c.region.mosaic,
                             .columns = Wf,
                             .height = Hf,
                             .roi = {0, 0, Wf, Hf},
                             .rows = {0, Hf},
                             .image = &image,
                             .bits = c.nSrcBits,
                             .margins = &guard};
    RowProcess<T>* const demosaic = make(job, arena);
    if (!demosaic) return;
    demosaic->advance(demosaic->last());
    image.finish();
  });
}

template <class T>
bool convertThroughBuffer(const Conversion<T>& c, const DemosaicAlgorithm<T>& algorithm) {
  if (!isDegenerate(c.region)) return sweepThroughBuffer(c, algorithm.make);
  algorithm.inPlace(c);
  return true;
}

template bool sweepThroughBuffer(const Conversion<uint8_t>&, MakeDemosaic<uint8_t>*);
template bool sweepThroughBuffer(const Conversion<uint16_t>&, MakeDemosaic<uint16_t>*);
template bool convertThroughBuffer(const Conversion<uint8_t>&, const DemosaicAlgorithm<uint8_t>&);
template bool convertThroughBuffer(const Conversion<uint16_t>&, const DemosaicAlgorithm<uint16_t>&);

}  // namespace vistrel::core
