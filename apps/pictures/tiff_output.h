// Writing TIFF through libtiff, with exceptions in place of messages.
#pragma once

#include <tiffio.h>

#include <cstdarg>
#include <cstdint>
#include <memory>
#include <vector>

#include "apps/files/atomic_file.h"
#include "apps/pictures/picture_details.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// More samples than this need 64-bit offsets.
constexpr size_t kMaxClassicBytes = 0xF0000000;

// A TIFF in a file that must outlive it. The members throw ProgramError (input/output).
class TiffOutput {
 public:
  // `mode` is that of TIFFOpen().
  TiffOutput(const AtomicFile& file, const char* mode);

  TIFF* handle() const { return tiff_.get(); }

  // Sets the size and the tags that all our files have. Comes before all other tags, since it may
  // write a directory of its own, for EXIF.
  void describe(const vistrel_layout& layout, const PictureDetails& details);

  // Writes row y, the one after the last.
  void writeRow(const uint8_t* row, uint32_t y);
  void finish();  // after the last row

 private:
  uint64_t writeExif(const Shot& shot);
  [[noreturn]] void throwWriteError() const;
  static int keepText(TIFF*, void* self, const char*, const char* format, va_list arguments);
  static int dropText(TIFF*, void*, const char*, const char*, va_list) { return 1; }

  const AtomicFile& file_;
  char message_[160] = "";  // the first one
  std::vector<uint8_t> row_;
  std::unique_ptr<TIFF, void (*)(TIFF*)> tiff_;
};

}  // namespace vistrel::app
