// Reading TIFF through libtiff, with exceptions in place of messages.
#pragma once

#include <tiffio.h>

#include <memory>
#include <string>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

class TiffInput {
 public:
  // Throws ProgramError if the source is not a TIFF.
  explicit TiffInput(const Source& source);

  TIFF* handle() const { return tiff_.get(); }

  // Throws ProgramError with libtiff's first message, or with `otherwise` if there is none.
  [[noreturn]] void throwReadError(const char* otherwise) const;

  // libtiff's messages so far about what it could not use: the first few, each once.
  const std::vector<std::string>& errors() const { return errors_; }

  // The value of a tag, or its default, or `otherwise`.
  template <class T>
  T get(uint32_t tag, T otherwise) const {
    T value = otherwise;
    return TIFFGetFieldDefaulted(handle(), tag, &value) ? value : otherwise;
  }

 private:
  static int onError(TIFF*, void* self, const char*, const char* format, va_list);
  static int onWarning(TIFF*, void*, const char*, const char*, va_list) { return 1; }
  static tmsize_t onRead(thandle_t self, void* to, tmsize_t count);
  static tmsize_t onWrite(thandle_t, void*, tmsize_t) { return 0; }
  static toff_t onSeek(thandle_t self, toff_t to, int whence);
  static toff_t onSize(thandle_t self);
  static int onClose(thandle_t) { return 0; }

  const Source& source_;
  uint64_t at_ = 0;
  std::vector<std::string> errors_;
  std::unique_ptr<TIFF, void (*)(TIFF*)> tiff_;
};

}  // namespace vistrel::app
