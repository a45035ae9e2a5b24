#include "host/planes.h"

namespace vistrel::host {
namespace {

Plane following(const Plane& plane, size_t stride, size_t rowBytes, size_t rows) {
  return {plane.end(), stride, rowBytes, rows};
}

}  // namespace

uint64_t minStrideOf(const Format& format, uint32_t width) {
  const uint64_t pixels =
      format.arrangement == Arrangement::nv12 ? uint64_t{width} + width % 2 : width;
  return pixels * format.pixelBytes();
}

Planes planesOf(const Format& format, size_t width, size_t height, size_t stride) {
  const Plane first{0, stride, width * format.pixelBytes(), height};
  const size_t half = (width + 1) / 2, halfRows = (height + 1) / 2;
  Plane second = following(first, 0, 0, 0), third = second;
  switch (format.arrangement) {
    case Arrangement::interleaved: break;
    case Arrangement::planes:
    case Arrangement::i444:
      second = following(first, stride, first.rowBytes, height);
      third = following(second, stride, first.rowBytes, height);
      break;
    case Arrangement::nv12: second = following(first, stride, 2 * half, halfRows); break;
    case Arrangement::i420:
      second = following(first, (stride + 1) / 2, half, halfRows);
      third = following(second, second.stride, half, halfRows);
      break;
  }
  return {first, second, third};
}

size_t bytesOf(const Format& format, const Planes& planes) {
  const Plane& last = planes[format.planes - 1];
  return last.offset + last.bytes();
}

}  // namespace vistrel::host
