#include "output/pixel_rows.h"

#include <cstring>

namespace vistrel::core {

InterleavedRows::InterleavedRows(const PlaneMemory& image, size_t width, size_t sourceBytes,
                                 size_t pixelBytes, PixelFunction convert, Arena& arena)
    : rows_(image, width * pixelBytes, arena), sourceBytes_(sourceBytes), pixelBytes_(pixelBytes),
      convert_(convert) {}

void* InterleavedRows::inPlace(size_t y) {
  return convert_ || rows_.hasLine() || !isAligned(rows_.row(y)) ? nullptr : rows_.row(y);
}

void InterleavedRows::begin(size_t y) { rows_.begin(y); }

void* InterleavedRows::next() {
  return convert_ || !isAligned(rows_.next()) ? nullptr : rows_.next();
}

void InterleavedRows::append(const void* pixels, size_t n) {
  if (convert_)
    convert_(pixels, n, rows_.next());
  else if (pixels != rows_.next())
    std::memcpy(rows_.next(), pixels, n * sourceBytes_);
  rows_.filled(n * pixelBytes_);
}

void InterleavedRows::end() { rows_.end(); }

PlanarRows::PlanarRows(const PlaneMemory (&planes)[3], size_t width, size_t sampleBytes,
                       PlanesFunction convert, Arena& arena)
    : planes_{{planes[0], width * sampleBytes, arena},
              {planes[1], width * sampleBytes, arena},
              {planes[2], width * sampleBytes, arena}},
      sampleBytes_(sampleBytes), convert_(convert) {}

void PlanarRows::begin(size_t y) {
  for (PlaneRows& plane : planes_) plane.begin(y);
}

void PlanarRows::append(const void* pixels, size_t n) {
  void* const to[3] = {planes_[0].next(), planes_[1].next(), planes_[2].next()};
  convert_(pixels, n, to);
  for (PlaneRows& plane : planes_) plane.filled(n * sampleBytes_);
}

void PlanarRows::end() {
  for (PlaneRows& plane : planes_) plane.end();
}

}  // namespace vistrel::core
