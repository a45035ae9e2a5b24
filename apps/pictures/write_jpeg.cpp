#include <algorithm>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <string>

#include <jpeglib.h>

#include "apps/pictures/exif.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/picture_rows.h"

namespace vistrel::app {
namespace {

struct Errors {
  jpeg_error_mgr manager;
  std::jmp_buf at;
  char text[JMSG_LENGTH_MAX] = "";
};

void onError(j_common_ptr jpeg) {
  auto* const errors = reinterpret_cast<Errors*>(jpeg->err);
  jpeg->err->format_message(jpeg, errors->text);
  std::longjmp(errors->at, 1);
}

void describe(jpeg_compress_struct& jpeg, const vistrel_layout& l, const Compression& c) {
  jpeg.image_width = l.width;
  jpeg.image_height = l.height;
  jpeg.input_components = static_cast<int>(l.channels);
  jpeg.in_color_space = l.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, c.quality, TRUE);
  jpeg.dct_method = JDCT_ISLOW;
  jpeg.write_JFIF_header = FALSE;  // EXIF takes its place
  jpeg.comp_info[0].h_samp_factor = c.chroma == Chroma::k444 || l.channels == 1 ? 1 : 2;
  jpeg.comp_info[0].v_samp_factor = c.chroma == Chroma::k420 && l.channels == 3 ? 2 : 1;
}

// Returns false after an error. Errors jump, so nothing in here may have a destructor.
bool encode(jpeg_compress_struct& jpeg, Errors& errors, const vistrel_layout& layout,
            PictureRows& rows, const Compression& compression, const std::string& exif,
            std::FILE* to) {
  if (setjmp(errors.at)) return false;
  jpeg_create_compress(&jpeg);
  jpeg_stdio_dest(&jpeg, to);
  describe(jpeg, layout, compression);
  jpeg_start_compress(&jpeg, TRUE);
  jpeg_write_marker(&jpeg, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.data()),
                    static_cast<unsigned>(exif.size()));
  while (jpeg.next_scanline < jpeg.image_height) {
    auto* row = const_cast<JSAMPLE*>(rows.row(jpeg.next_scanline));
    jpeg_write_scanlines(&jpeg, &row, 1);
  }
  jpeg_finish_compress(&jpeg);
  return true;
}

// The block's length has 16 bits; the command is what may be too long.
std::string exifMarker(const vistrel_layout& l, PictureDetails details) {
  constexpr size_t kMost = 65533;
  const auto marker = [&] { return std::string("Exif\0\0", 6) + exifOf(l, details); };
  std::string bytes = marker();
  if (bytes.size() <= kMost) return bytes;
  details.command.clear();
  return marker();
}

}  // namespace

void writeJpeg(const Image& image, const PictureDetails& details, AtomicFile& file) {
  jpeg_compress_struct jpeg{};
  Errors errors{};
  jpeg.err = jpeg_std_error(&errors.manager);
  errors.manager.error_exit = onError;
  const std::string exif = exifMarker(image.layout, details);
  PictureRows rows(image, Depth::kKept, std::endian::native);
  const bool good =
      encode(jpeg, errors, image.layout, rows, details.compression, exif, file.stream());
  jpeg_destroy_compress(&jpeg);
  if (!good) file.throwWriteError(std::ferror(file.stream()) ? std::strerror(errno) : errors.text);
}

}  // namespace vistrel::app
