#include <cmath>
#include <string>

#include "apps/pictures/exif.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/picture_rows.h"
#include "apps/pictures/png_chunks.h"
#include "apps/pictures/png_coding.h"

namespace vistrel::app {
namespace {

size_t sampleBytes(const vistrel_layout& l) { return l.bits > 8 ? 2 : 1; }

void writeHeader(const vistrel_layout& l, AtomicFile& file) {
  constexpr char kColourTypes[] = {0, 0, 0, 2, 6};  // by channels: gray, RGB, RGBA
  std::string bytes;
  put32(bytes, l.width);
  put32(bytes, l.height);
  bytes += static_cast<char>(8 * sampleBytes(l));
  bytes += kColourTypes[l.channels];
  bytes.append(3, '\0');  // deflate, the usual filters, no interlacing
  writeChunk("IHDR", bytes, file);
}

void writeEncoding(const Encoding& encoding, AtomicFile& file) {
  constexpr double kGammaOne = 100000;
  constexpr uint32_t kSrgbGamma = 45455;
  constexpr uint32_t kSrgbChromaticities[] = {31270, 32900, 64000, 33000,
                                              30000, 60000, 15000, 6000};
  if (encoding.kind == Encoding::kUnknown) return;
  const bool srgb = encoding.kind == Encoding::kSrgb;
  std::string gamma, chromaticities;
  put32(gamma,
        srgb ? kSrgbGamma : static_cast<uint32_t>(std::lround(encoding.exponent * kGammaOne)));
  writeChunk("gAMA", gamma, file);
  if (!srgb) return;
  for (const uint32_t number : kSrgbChromaticities) put32(chromaticities, number);
  writeChunk("cHRM", chromaticities, file);
  writeChunk("sRGB", std::string(1, '\1'), file);  // relative colorimetric
}

// Latin-1 as tEXt, other texts as iTXt, uncompressed and without a language.
void writeText(const std::string& keyword, const std::string& text, AtomicFile& file) {
  if (text.empty()) return;
  const bool plain = isAscii(text);
  const std::string separator(plain ? 1 : 5, '\0');
  plain ? writeChunk("tEXt", keyword + separator + text, file)
        : writeChunk("iTXt", keyword + separator + text, file);
}

void writeDetails(const vistrel_layout& l, const PictureDetails& details, AtomicFile& file) {
  writeEncoding(details.encoding, file);
  if (l.bits > 8 && l.bits < 16)
    writeChunk("sBIT", std::string(l.channels, static_cast<char>(l.bits)), file);
  writeText("Software", kSoftware, file);
  writeText("Description", details.command, file);
  if (details.camera) writeText("Phase", vistrel_phase_name(details.camera->phase), file);
  if (details.shot != Shot{}) writeChunk("eXIf", exifOf(l, details), file);
}

void writePixels(const Image& image, const Compression& compression, AtomicFile& file) {
  PictureRows rows(image, Depth::kScaled, std::endian::big);
  const size_t step = image.layout.channels * sampleBytes(image.layout);
  const PngCoding coding = pngCodingOf(rows, step);
  FilteredRows filtered(coding.filter, rows.bytes(), step);
  const int level = compression.level.value_or(1);
  PixelChunks chunks(level, level > 1 ? Z_FILTERED : coding.strategy, file);
  for (uint32_t y = 0; y < rows.count(); ++y) {
    const auto& row = filtered.next(rows.row(y));
    chunks.add(row.data(), row.size());
  }
  chunks.finish();
}

}  // namespace

void writePng(const Image& image, const PictureDetails& details, AtomicFile& file) {
  constexpr char kSignature[] = "\x89PNG\r\n\x1A\n";
  file.write(kSignature, sizeof kSignature - 1);
  writeHeader(image.layout, file);
  writeDetails(image.layout, details, file);
  writePixels(image, details.compression, file);
  writeChunk("IEND", "", file);
}

}  // namespace vistrel::app
