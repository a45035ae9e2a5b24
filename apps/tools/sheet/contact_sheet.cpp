#include "apps/tools/sheet/contact_sheet.h"

#include <algorithm>
#include <cmath>

#include "apps/error.h"

namespace vistrel::app {
namespace {

constexpr Paint kGround{28, 30, 34}, kHeading{240, 240, 236}, kLabel{190, 194, 200};
constexpr int kScale = 2, kGap = 14;
constexpr int kTitleHeight = 7 * (kScale + 1) + kGap, kLabelHeight = 7 * kScale + 6;
constexpr int64_t kMaxPixels = int64_t{1} << 28;

struct Block {
  int columns, rows;
  int cellWidth, cellHeight, pictureWidth;  // a label may be wider than its picture

  Block(const Strip& strip, uint32_t zoom) {
    const auto n = static_cast<int>(strip.cells.size());
    columns = static_cast<int>(std::ceil(std::sqrt(n)));
    rows = (n + columns - 1) / columns;
    const vistrel_region& part = strip.cells[0].part;
    cellHeight = static_cast<int>(part.height * zoom) + kLabelHeight + kGap;
    cellWidth = pictureWidth = static_cast<int>(part.width * zoom);
    for (const Cell& cell : strip.cells)
      cellWidth = std::max(cellWidth, Canvas::textWidth(kScale, cell.label));
    cellWidth += kGap;
  }

  int width(const Strip& strip) const {
    return kGap + std::max(columns * cellWidth, Canvas::textWidth(kScale + 1, strip.title) + kGap);
  }
  int height() const { return kTitleHeight + rows * cellHeight; }
};

void draw(Canvas& canvas, int top, const Strip& strip, const Block& block, uint32_t zoom) {
  canvas.text(kGap, top, kScale + 1, strip.title, kHeading);
  for (size_t i = 0; i < strip.cells.size(); ++i) {
    const Cell& cell = strip.cells[i];
    const int place = static_cast<int>(i);
    const int left = kGap + place % block.columns * block.cellWidth;
    const int y = top + kTitleHeight + place / block.columns * block.cellHeight;
    canvas.text(left, y, kScale, cell.label, kLabel);
    canvas.magnified(left, y + kLabelHeight, zoom, cell.image, cell.part);
  }
}

}  // namespace

Canvas sheetOf(const std::vector<Strip>& strips, uint32_t zoom) {
  int64_t width = 0, height = kGap;
  for (const Strip& strip : strips) {
    const Block block(strip, zoom);
    width = std::max<int64_t>(width, block.width(strip));
    height += block.height();
  }
  if (width * height > kMaxPixels)
    throwError(kUsage,
               "a sheet of {}x{} pixels: at most {} are allowed; use a smaller --crop or --zoom",
               width, height, kMaxPixels);
  Canvas canvas(static_cast<uint32_t>(width), static_cast<uint32_t>(height), kGround);
  int top = kGap;
  for (const Strip& strip : strips) {
    const Block block(strip, zoom);
    draw(canvas, top, strip, block, zoom);
    top += block.height();
  }
  return canvas;
}

}  // namespace vistrel::app
