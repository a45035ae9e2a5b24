#include "tests/apps/tools/guess/dumps.h"

#include <algorithm>

#include "apps/pictures/raw_frame.h"
#include "tests/real_frames.h"
#include "vistrel/vistrel.hpp"

namespace vistrel {
namespace {

uint32_t phaseNamed(const std::string& name) {
  for (uint32_t phase = 0; phase <= VISTREL_MONO; ++phase)
    if (name == vistrel_phase_name(phase)) return phase;
  return VISTREL_MONO;
}

uint32_t draw(std::mt19937& random, uint32_t min, uint32_t max) {
  return min + static_cast<uint32_t>(random() % (max - min + 1));
}

// Frames differ by a camera that moves a little.
constexpr uint32_t kMargin = 18;

// 8 bits in GigE's packing are the same bytes with 10 and with 12 bits, and 8 bits in 16 are those
// of the other byte order.
bool isAmbiguous(const SampleFrame& frame, const app::PixelFormat& f) {
  return frame.bits == 8 && (f.bits == 16 || (f.bits == 10 && f.packing == VISTREL_PACKING_GIGE));
}

void fill(std::vector<uint8_t>& bytes, size_t count, uint32_t filling, std::mt19937& random) {
  static const std::string text = "camera=7; exposure=0.0125; gain=2.0; sensor=A\n";
  for (size_t i = 0; i < count; ++i)
    bytes.push_back(static_cast<uint8_t>(filling == 0   ? 0
                                         : filling == 1 ? 255
                                         : filling == 2 ? random()
                                                        : text[i % text.size()]));
}

}  // namespace

std::vector<SampleFrame> realFrames() {
  std::vector<SampleFrame> frames;
  for (const char* const folder : {"bayer", "mono"})
    for (const auto& path : framesIn(folder)) {
      const Mosaic m(path);
      const FrameName name = frameNameOf(path.stem().string());
      SampleFrame f{path.stem().string(), m.width, m.height, name.bits, phaseNamed(name.phase), {}};
      for (uint32_t y = 0; y < m.height; ++y)
        for (uint32_t x = 0; x < m.width; ++x)
          f.samples.push_back(
              static_cast<uint16_t>(m.at(static_cast<int>(x), static_cast<int>(y))));
      frames.push_back(std::move(f));
    }
  return frames;
}

size_t Dump::stride() const {
  const uint32_t stored = app::are16Bit(format.packing)            ? 16
                          : format.packing == VISTREL_PACKING_GIGE ? 12
                                                                   : format.bits;
  return (size_t{width} * stored + 7) / 8 + padding;
}

std::string Dump::text() const {
  return std::string(app::packingNames(format.packing).name) + " " + std::to_string(format.bits) +
         " " + std::to_string(width) + "x" + std::to_string(height) + "+" + std::to_string(x) +
         "+" + std::to_string(y) + " stride " + std::to_string(stride()) + " (" +
         std::to_string(padding) + ") skip " + std::to_string(header) + " fill " +
         std::to_string(filling) + " frames " + std::to_string(frames);
}

namespace {

// The whole frame, a usual size or any crop.
void drawCrop(const SampleFrame& frame, std::mt19937& random, Dump& d) {
  static constexpr uint32_t kUsual[][2] = {{640, 480}, {320, 240},  {752, 480},
                                           {512, 512}, {1280, 720}, {640, 512}};
  const uint32_t room = d.frames > 1 ? kMargin : 0;
  const bool standard = random() % 2;
  if (standard && !room) return;
  d.width = draw(random, 150, frame.width - room);
  d.height = draw(random, 120, frame.height - room);
  const auto& size = kUsual[random() % 6];
  if (standard && size[0] + room <= frame.width && size[1] + room <= frame.height) {
    d.width = size[0];
    d.height = size[1];
  }
  d.x = draw(random, 0, frame.width - room - d.width);
  d.y = draw(random, 0, frame.height - room - d.height);
}

}  // namespace

Dump drawDump(const SampleFrame& frame, uint32_t kind, std::mt19937& random) {
  std::vector<app::PixelFormat> formats;
  for (const app::PixelFormat& f : app::pixelFormats())
    if (f.phase == VISTREL_MONO && !isAmbiguous(frame, f)) formats.push_back(f);
  Dump d{0, 0, frame.width, frame.height, formats[random() % formats.size()], 0, 0, 0, 1};
  const bool mixed = kind == 4;
  if (mixed ? random() % 2 : kind == 1) d.padding = draw(random, 1, 256) * 2;
  if (mixed ? random() % 2 : kind == 2)
    d.header = random() % 2 ? size_t{16} << draw(random, 0, 8) : draw(random, 8, 2048) * 2;
  if (mixed ? random() % 2 : kind == 3) d.frames = draw(random, 2, 9);
  d.filling = draw(random, 0, 3);
  drawCrop(frame, random, d);
  return d;
}

std::vector<uint8_t> bytesOf(const SampleFrame& frame, const Dump& dump) {
  std::mt19937 random(dump.width * 7919 + dump.height);
  std::vector<uint8_t> bytes;
  fill(bytes, dump.header, dump.filling, random);
  std::vector<uint16_t> row(dump.width);
  const int up = static_cast<int>(dump.format.bits) - static_cast<int>(frame.bits);
  for (uint32_t n = 0; n < dump.frames; ++n)
    for (uint32_t y = 0; y < dump.height; ++y) {
      const size_t at = size_t{frame.width} * (dump.y + y + 2 * (n * 5 % 9)) + dump.x + 2 * n;
      for (uint32_t x = 0; x < dump.width; ++x) {
        const uint16_t s = frame.samples[at + x];
        row[x] = static_cast<uint16_t>(up < 0 ? s >> -up : s << up);
      }
      const auto packed = app::packRow(dump.format, row.data(), row.size());
      bytes.insert(bytes.end(), packed.begin(), packed.end());
      fill(bytes, dump.padding, dump.filling, random);
    }
  return bytes;
}

}  // namespace vistrel
