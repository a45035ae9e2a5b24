// The caller's image in its format: its planes, and the rows that receive pixels.
#pragma once

#include <variant>

#include "host/engine.h"
#include "output/ycc420_rows.h"

namespace vistrel::host {

// The rows of an image, whatever its format.
class ImagePixels {
 public:
  ImagePixels(const EngineCall& call, core::Arena& arena);

  core::PixelRows& rows();
  // Null for a format of another arrangement.
  core::Ycc420Rows* ycc420Rows() { return std::get_if<core::Ycc420Rows>(&rows_); }
  core::PlaneMemory firstPlane() const { return firstPlane_; }

 private:
  using Rows = std::variant<core::InterleavedRows, core::PlanarRows, core::Ycc420Rows>;
  static Rows rowsOf(const EngineCall& call, const core::PlaneMemory& firstPlane,
                     core::Arena& arena);

  core::PlaneMemory firstPlane_;
  Rows rows_;
};

}  // namespace vistrel::host
