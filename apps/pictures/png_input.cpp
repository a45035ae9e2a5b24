#include "apps/pictures/png_input.h"

#include <bit>
#include <csetjmp>
#include <new>

#include "apps/error.h"

namespace vistrel::app {

PngInput::PngInput(const Source& source)
    : source_(source),
      png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, &message_, onPngError, onPngWarning)),
      info_(png_ ? png_create_info_struct(png_) : nullptr) {
  if (info_ && readHeader()) return;
  png_destroy_read_struct(&png_, &info_, nullptr);
  if (!message_.text[0]) throw std::bad_alloc();
  throwError(kRejected, "PNG: {}", message_.text);
}

PngInput::~PngInput() { png_destroy_read_struct(&png_, &info_, nullptr); }

uint32_t PngInput::grayBits() const {
  png_color_8p significant = nullptr;
  const bool known = png_get_sBIT(png_, info_, &significant) && colourType() == PNG_COLOR_TYPE_GRAY;
  return known && significant->gray >= 8 ? significant->gray : bits();
}

std::string PngInput::text(const char* keyword) const {
  png_textp texts = nullptr;
  const int count = png_get_text(png_, info_, &texts, nullptr);
  for (int i = 0; i < count; ++i)
    if (std::strcmp(texts[i].key, keyword) == 0) return texts[i].text;
  return {};
}

void PngInput::readRows(uint8_t* to, size_t rowBytes) {
  if (!decode(to, rowBytes)) throwError(kRejected, "PNG: {}", message_.text);
}

// Returns false after an error. Errors jump, so nothing in here may have a destructor.
bool PngInput::readHeader() {
  if (setjmp(png_jmpbuf(png_))) return false;
  png_set_read_fn(png_, this, onRead);
  png_read_info(png_, info_);
  return true;
}

bool PngInput::decode(uint8_t* to, size_t rowBytes) {
  if (setjmp(png_jmpbuf(png_))) return false;
  const int passes = png_set_interlace_handling(png_);
  const png_color_8 gray{0, 0, 0, static_cast<png_byte>(grayBits()), 0};
  if (grayBits() < bits()) png_set_shift(png_, &gray);
  if (bits() == 16 && std::endian::native == std::endian::little) png_set_swap(png_);
  png_set_bgr(png_);
  for (int pass = 0; pass < passes; ++pass)
    for (uint32_t y = 0; y < height(); ++y) png_read_row(png_, to + y * rowBytes, nullptr);
  png_read_end(png_, nullptr);
  return true;
}

void PngInput::onRead(png_structp png, png_bytep to, size_t count) {
  auto* input = static_cast<PngInput*>(png_get_io_ptr(png));
  if (input->source_.readSome(input->at_, to, count) != count)
    png_error(png, "the file is too short");
  input->at_ += count;
}

}  // namespace vistrel::app
