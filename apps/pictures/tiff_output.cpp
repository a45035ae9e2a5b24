#include "apps/pictures/tiff_output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>

namespace vistrel::app {

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

void TiffOutput::writeRow(void* samples, uint32_t y) {
  errno = 0;
  if (TIFFWriteScanline(handle(), samples, y, 0) != 1) throwWriteError();
}

void TiffOutput::finish() {
  errno = 0;
  if (TIFFFlush(handle()) != 1) throwWriteError();
}

void TiffOutput::throwWriteError() const {
  file_.throwWriteError(errno ? std::strerror(errno) : message_);
}

}  // namespace vistrel::app
