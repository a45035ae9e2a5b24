// Where an image's planes lie.
#pragma once

#include <array>

#include "host/tables.h"

namespace vistrel::host {

struct Plane {
  size_t offset, stride, rowBytes;  // in bytes
  size_t rows;

  size_t end() const { return offset + stride * rows; }
  size_t bytes() const { return stride * (rows - 1) + rowBytes; }
};

// Always three; unused ones are empty and lie at the end.
using Planes = std::array<Plane, 3>;

// The shortest stride that all planes allow.
uint64_t minStrideOf(const Format& format, uint32_t width);

// stride: that of the first plane, which determines the others.
Planes planesOf(const Format& format, size_t width, size_t height, size_t stride);

// The number of bytes from the first to the last.
size_t bytesOf(const Format& format, const Planes& planes);

}  // namespace vistrel::host
