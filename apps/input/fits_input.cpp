#include "apps/input/fits_input.h"

#include "apps/error.h"

namespace vistrel::app {
namespace {

constexpr size_t kBlock = 2880;

}  // namespace

FitsInput::FitsInput(const Source& source) : bytes_(source.all()) {
  // cfitsio reads whole blocks, even past the end of the buffer.
  bytes_.resize((bytes_.size() + kBlock - 1) / kBlock * kBlock);
  start_ = bytes_.data();
  size_ = bytes_.size();
  int status = 0;
  fits_open_memfile(&file_, "memory", READONLY, &start_, &size_, 0, nullptr, &status);
  check(status);
  try {
    findImage();
  } catch (...) {
    fits_close_file(file_, &(status = 0));
    throw;
  }
}

FitsInput::~FitsInput() {
  int status = 0;
  fits_close_file(file_, &status);
}

std::string FitsInput::text(const char* keyword) {
  char value[FLEN_VALUE] = "";
  int status = 0;
  fits_read_key(file_, TSTRING, keyword, value, nullptr, &status);
  if (status == KEY_NO_EXIST) return {};
  check(status);
  return value;
}

double FitsInput::number(const char* keyword, double otherwise) {
  double value = otherwise;
  int status = 0;
  fits_read_key(file_, TDOUBLE, keyword, &value, nullptr, &status);
  if (status == KEY_NO_EXIST) return otherwise;
  check(status);
  return value;
}

std::optional<double> FitsInput::numberIfValid(const char* keyword) {
  double value = 0;
  int status = 0;
  fits_read_key(file_, TDOUBLE, keyword, &value, nullptr, &status);
  fits_clear_errmsg();
  return status ? std::nullopt : std::optional(value);
}

std::optional<std::string> FitsInput::textIfValid(const char* keyword) {
  char value[FLEN_VALUE] = "";
  int status = 0;
  fits_read_key(file_, TSTRING, keyword, value, nullptr, &status);
  fits_clear_errmsg();
  return status ? std::nullopt : std::optional<std::string>(value);
}

void FitsInput::readPlane(uint64_t n, bool wide, void* to) {
  LONGLONG first[3] = {1, 1, static_cast<LONGLONG>(n) + 1};
  int status = 0;
  fits_read_pixll(file_, wide ? TUSHORT : TBYTE, first, shape_.size[0] * shape_.size[1], nullptr,
                  to, nullptr, &status);
  if (status == NUM_OVERFLOW) throwError(kRejected, "FITS: a sample is below 0 or above 65535");
  check(status);
}

void FitsInput::check(int status) const {
  if (status == 0) return;
  fits_clear_errmsg();
  char text[FLEN_STATUS];
  fits_get_errstatus(status, text);
  throwError(kRejected, "FITS: {} (status {} of cfitsio)", text, status);
}

void FitsInput::findImage() {
  int units = 0, status = 0;
  fits_get_num_hdus(file_, &units, &status);
  check(status);
  for (int unit = 1; unit <= units; ++unit) {
    int type = 0;
    fits_movabs_hdu(file_, unit, &type, &status);
    check(status);
    if (type != IMAGE_HDU) continue;
    if (fits_is_compressed_image(file_, &status))
      throwError(kRejected, "FITS: its image is tile-compressed, which is not supported");
    fits_get_img_paramll(file_, 3, &shape_.bits, &shape_.axes, shape_.size, &status);
    check(status);
    if (shape_.axes == 0) continue;
    shape_.scale = number("BSCALE", 1);
    shape_.zero = number("BZERO", 0);
    LONGLONG header = 0, end = 0;
    fits_get_hduaddrll(file_, &header, &shape_.begin, &end, &status);
    check(status);
    return;
  }
  throwError(kRejected, "FITS: it contains no image");
}

}  // namespace vistrel::app
