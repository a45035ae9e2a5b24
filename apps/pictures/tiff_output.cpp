#include "apps/pictures/tiff_output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>

#include "apps/error.h"
#include "apps/pictures/exif.h"

namespace vistrel::app {
namespace {

// So many bytes of samples make a strip, or a row if that is longer.
constexpr size_t kStripBytes = 1 << 18;

void setText(TIFF* t, uint32_t tag, const std::string& text) {
  if (!text.empty()) TIFFSetField(t, tag, text.c_str());
}

void setNumber(TIFF* t, uint32_t tag, const std::optional<double>& number) {
  if (number) TIFFSetField(t, tag, *number);
}

// What no other tag can say. A raw frame has none: some converters read 512 bytes of it, and fail
// where the file is shorter.
std::string descriptionOf(const vistrel_layout& l, const PictureDetails& details) {
  if (details.camera) return {};
  const bool scaled = l.bits > 8 && l.bits < 16;
  const std::string bits = scaled ? fmt::format("{} significant bits, scaled to 16", l.bits) : "";
  return details.command + (details.command.empty() || bits.empty() ? "" : "\n") + bits;
}

}  // namespace

TiffOutput::TiffOutput(const AtomicFile& file, const char* mode)
    : file_(file), tiff_(nullptr, TIFFClose) {
  const std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)> options(TIFFOpenOptionsAlloc(),
                                                                             TIFFOpenOptionsFree);
  if (!options) throw std::bad_alloc();
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepText, this);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), dropText, nullptr);
  errno = 0;
  // TIFFClose() closes the descriptor, so it gets a duplicate.
  tiff_.reset(TIFFFdOpenExt(dup(fileno(file.stream())), "TIFF", mode, options.get()));
  if (!tiff_) throwWriteError();
}

int TiffOutput::keepText(TIFF*, void* self, const char*, const char* format, va_list arguments) {
  auto& message = static_cast<TiffOutput*>(self)->message_;
  if (!message[0]) std::vsnprintf(message, sizeof message, format, arguments);
  return 1;
}

void TiffOutput::describe(const vistrel_layout& l, const PictureDetails& details) {
  const Shot& shot = details.shot;
  const bool hasSettings =
      shot.date || shot.exposureTime || shot.iso || shot.aperture || shot.focalLength;
  const uint64_t exif = hasSettings ? writeExif(shot) : 0;
  TIFF* const t = handle();
  TIFFSetField(t, TIFFTAG_IMAGEWIDTH, l.width);
  TIFFSetField(t, TIFFTAG_IMAGELENGTH, l.height);
  TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, l.bits > 8 ? 16 : 8);
  TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, l.channels);
  TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  const size_t rows = std::clamp<size_t>(kStripBytes / l.row_bytes, 1, l.height);
  TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(rows));
  setText(t, TIFFTAG_SOFTWARE, kSoftware);
  setText(t, TIFFTAG_IMAGEDESCRIPTION, descriptionOf(l, details));
  setText(t, TIFFTAG_MAKE, shot.make.value_or(""));
  setText(t, TIFFTAG_MODEL, shot.model.value_or(""));
  if (shot.date) setText(t, TIFFTAG_DATETIME, exifDate(*shot.date));
  if (exif) TIFFSetField(t, TIFFTAG_EXIFIFD, exif);
}

// Returns the directory's offset. The next directory is the picture's.
uint64_t TiffOutput::writeExif(const Shot& shot) {
  TIFF* const t = handle();
  if (TIFFCreateEXIFDirectory(t) != 0) throwWriteError();
  setNumber(t, EXIFTAG_EXPOSURETIME, shot.exposureTime);
  setNumber(t, EXIFTAG_FNUMBER, shot.aperture);
  setNumber(t, EXIFTAG_FOCALLENGTH, shot.focalLength);
  const auto iso = static_cast<uint16_t>(std::clamp(shot.iso.value_or(0), 0.0, 65535.0));
  if (iso) TIFFSetField(t, EXIFTAG_ISOSPEEDRATINGS, 1, &iso);
  if (shot.date) setText(t, EXIFTAG_DATETIMEORIGINAL, exifDate(*shot.date));
  uint64_t offset = 0;
  if (TIFFWriteCustomDirectory(t, &offset) != 1) throwWriteError();
  TIFFFreeDirectory(t);  // the next call forgets what it has
  if (TIFFCreateDirectory(t) != 0) throwWriteError();
  return offset;
}

void TiffOutput::writeRow(const uint8_t* row, uint32_t y) {
  row_.assign(row, row + TIFFScanlineSize64(handle()));  // libtiff may change it
  errno = 0;
  if (TIFFWriteScanline(handle(), row_.data(), y, 0) != 1) throwWriteError();
}

void TiffOutput::finish() {
  errno = 0;
  if (TIFFFlush(handle()) != 1) throwWriteError();
}

void TiffOutput::throwWriteError() const {
  file_.throwWriteError(errno ? std::strerror(errno) : message_);
}

}  // namespace vistrel::app
