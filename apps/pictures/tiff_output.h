// Writing TIFF through libtiff, with exceptions in place of messages.
#pragma once

#include <tiffio.h>

#include <cstdarg>
#include <cstdint>
#include <memory>

#include "apps/files/atomic_file.h"

namespace vistrel::app {

// More samples than this need 64-bit offsets.
constexpr size_t kMaxClassicBytes = 0xF0000000;

// A TIFF in a file that must outlive it. The members throw ProgramError (input/output).
class TiffOutput {
 public:
  // `mode` is that of TIFFOpen().
  TiffOutput(const AtomicFile& file, const char* mode);

  TIFF* handle() const { return tiff_.get(); }

  // Writes row y, the one after the last. May swap the bytes of `samples`.
  void writeRow(void* samples, uint32_t y);
  void finish();  // after the last row

 private:
  [[noreturn]] void throwWriteError() const;
  static int keepText(TIFF*, void* self, const char*, const char* format, va_list arguments);
  static int dropText(TIFF*, void*, const char*, const char*, va_list) { return 1; }

  const AtomicFile& file_;
  char message_[160] = "";  // the first one
  std::unique_ptr<TIFF, void (*)(TIFF*)> tiff_;
};

}  // namespace vistrel::app
