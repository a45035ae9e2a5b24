#include "apps/input/fits_input.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "apps/error.h"
#include "apps/input/deflate_check.h"
#include "apps/input/fits_gzip.h"
#include "apps/input/gzip_stream.h"

namespace vistrel::app {
namespace {

constexpr size_t kValue = 10;  // where it begins in a card

bool isWholeNumber(std::string_view value) {
  value.remove_prefix(std::min(value.find_first_not_of(" +"), value.size()));
  int64_t number = 0;
  const auto [rest, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  return error == std::errc{} &&
         (rest == value.data() + value.size() || *rest == ' ' || *rest == '/');
}

// What cfitsio does not check itself: it divides by the sizes of tiles, and of the blocks in those
// of Rice, as soon as it reaches their header, has no room for the complex numbers that damage
// makes of others, and takes memory for any number of columns if an earlier number is none.
void checkCard(std::string_view card, bool hasRice) {
  const std::string_view value = card.substr(kValue);
  const size_t begin = std::min(value.find_first_not_of(' '), value.size());
  const bool isComplex = value.substr(begin).starts_with('(');
  const bool isSize = card.starts_with("ZTILE") || (hasRice && card.starts_with("ZVAL"));
  if (isSize || (isComplex && card.starts_with("Z"))) {
    int64_t size = 0;
    std::from_chars(value.data() + begin, value.data() + value.size(), size);
    if (size < 1) throwError(kRejected, "FITS: {}: a size from 1 is expected", card.substr(0, 30));
  }
  constexpr const char* whole[] = {"BITPIX  ", "NAXIS", "PCOUNT  ", "GCOUNT  ", "TFIELDS "};
  const auto isNamed = [card](const char* name) { return card.starts_with(name); };
  const bool isGiven = card.substr(8, 2) == "= " && isWholeNumber(value);
  if (std::ranges::any_of(whole, isNamed) && !isGiven)
    throwError(kRejected, "FITS: {}: a whole number is expected", card.substr(0, 30));
}

void checkCards(const std::vector<uint8_t>& bytes) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const bool hasRice = text.find("'RICE_") != text.npos;
  for (size_t at = 0; at + kFitsCard <= text.size(); at += kFitsCard)
    checkCard(text.substr(at, kFitsCard), hasRice);
}

}  // namespace

bool FitsShape::isWhole() const {
  return (bits == BYTE_IMG || bits == SHORT_IMG) && std::trunc(scale) == scale &&
         std::trunc(zero) == zero && scale >= 1;
}

FitsInput::FitsInput(const Source& source) {
  InflatedFits in =
      beginsGzip(source.head(3)) ? inflatedFits(source) : InflatedFits{source.all(), 0};
  bytes_ = std::move(in.bytes);
  trailing_ = in.trailing;
  bytesOfFile_ = bytes_.size();
  // cfitsio reads whole blocks, even past the end of the buffer.
  bytes_.resize((bytes_.size() + kFitsBlock - 1) / kFitsBlock * kFitsBlock);
  checkCards(bytes_);
  start_ = bytes_.data();
  size_ = bytes_.size();
  int status = 0;
  fits_open_memfile(&file_, "memory", READONLY, &start_, &size_, 0, nullptr, &status);
  check(status);
  try {
    findImage(countUnits());
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

void FitsInput::readRow(uint64_t n, uint64_t y, double* to) {
  if (shape_.bits != FLOAT_IMG) return readReals(TDOUBLE, n, y, to);
  // Tiles of floats decode to other doubles than to floats, which are what was compressed.
  std::vector<float> row(static_cast<size_t>(shape_.size[0]));
  readReals(TFLOAT, n, y, row.data());
  std::ranges::copy(row, to);
}

template <class Real>
void FitsInput::readReals(int type, uint64_t n, uint64_t y, Real* to) {
  LONGLONG first[3] = {1, static_cast<LONGLONG>(y) + 1, static_cast<LONGLONG>(n) + 1};
  Real blank = std::numeric_limits<Real>::quiet_NaN();
  int status = 0, hasBlank = 0;
  fits_read_pixll(file_, type, first, shape_.size[0], &blank, to, &hasBlank, &status);
  check(status);
}

void FitsInput::check(int status) const {
  if (status == 0) return;
  fits_clear_errmsg();
  char text[FLEN_STATUS];
  fits_get_errstatus(status, text);
  throwError(kRejected, "FITS: {} (status {} of cfitsio)", text, status);
}

// What follows the last header unit and its data is no FITS.
int FitsInput::countUnits() {
  int units = 0, status = 0;
  LONGLONG header = 0, begin = 0, end = 0;
  fits_get_num_hdus(file_, &units, &status);
  fits_movabs_hdu(file_, units, nullptr, &status);
  fits_get_hduaddrll(file_, &header, &begin, &end, &status);
  check(status);
  trailing_ += bytesOfFile_ - std::min(bytesOfFile_, static_cast<uint64_t>(end));
  return units;
}

void FitsInput::findImage(int units) {
  int status = 0;
  for (int unit = 1; unit <= units; ++unit) {
    int type = 0;
    fits_movabs_hdu(file_, unit, &type, &status);
    check(status);
    shape_.isCompressed = fits_is_compressed_image(file_, &status);
    if (type != IMAGE_HDU && !shape_.isCompressed) continue;
    fits_get_img_paramll(file_, 3, &shape_.bits, &shape_.axes, shape_.size, &status);
    check(status);
    if (shape_.axes == 0) continue;
    shape_.scale = number("BSCALE", 1);
    shape_.zero = number("BZERO", 0);
    LONGLONG header = 0, begin = 0, end = 0;
    fits_get_hduaddrll(file_, &header, &begin, &end, &status);
    check(status);
    shape_.bytes = bytesOfFile_ - std::min(bytesOfFile_, static_cast<uint64_t>(begin));
    if (!shape_.isCompressed) return;
    checkTileSize();
    for (const char* column : {"COMPRESSED_DATA", "GZIP_COMPRESSED_DATA", "UNCOMPRESSED_DATA"})
      checkTiles(column);
    return;
  }
  throwError(kRejected, "FITS: it contains no image");
}

// cfitsio takes memory for a tile as its header says.
void FitsInput::checkTileSize() {
  constexpr double kSmall = 1 << 20;  // pixels
  // The other decoders of cfitsio trust sizes in the samples.
  const std::string method = text("ZCMPTYPE");
  if (!method.starts_with("RICE") && !method.starts_with("GZIP") && method != "NOCOMPRESS")
    throwError(kRejected, "FITS: {} is not read; funpack decodes it", method);
  double tile = 1, image = 1;
  for (int axis = 0; axis < std::min(shape_.axes, 3); ++axis) {
    image *= static_cast<double>(shape_.size[axis]);
    const std::string keyword = "ZTILE" + std::to_string(axis + 1);
    tile *= number(keyword.c_str(), axis == 0 ? static_cast<double>(shape_.size[0]) : 1);
  }
  if (!(tile >= 1 && tile <= std::max(image, kSmall)))
    throwError(kRejected, "FITS: tiles of {} pixels, an image of {}", tile, image);
}

// cfitsio takes memory for compressed bytes as the table says, and more and more of it for damaged
// gzip data.
void FitsInput::checkTiles(const std::string& column) {
  int number = 0, status = 0;
  fits_get_colnum(file_, CASEINSEN, const_cast<char*>(column.c_str()), &number, &status);
  if (status == COL_NOT_FOUND) return fits_clear_errmsg();
  LONGLONG rows = 0;
  fits_get_num_rowsll(file_, &rows, &status);
  check(status);
  const bool isGzip = column[0] == 'G' || (column[0] == 'C' && text("ZCMPTYPE")[0] == 'G');
  const std::span<const uint8_t> heap = heapOfTable();
  for (LONGLONG row = 1; row <= rows; ++row) {
    LONGLONG count = 0, at = 0;
    fits_read_descriptll(file_, number, row, &count, &at, &status);
    check(status);
    const auto end = static_cast<LONGLONG>(heap.size());
    if (count < 0 || at < 0 || at > end || count > end - at)
      throwError(kRejected, "FITS: {} of tile {}: the file is too short for it", column, row);
    const auto tile = heap.subspan(static_cast<size_t>(at), static_cast<size_t>(count));
    if (isGzip && count > 0 && !isIntactGzip(tile))
      throwError(kRejected, "FITS: {} of tile {} is damaged", column, row);
  }
}

// The compressed bytes, as far as the file has them. cfitsio would read rows that it lacks from
// whatever follows in memory.
std::span<const uint8_t> FitsInput::heapOfTable() {
  const double table = number("NAXIS1", 0) * number("NAXIS2", 0), all = double(shape_.bytes);
  if (!(table >= 0 && table <= all))
    throwError(kRejected, "FITS: the file is too short for its table of {} bytes", table);
  const double heap = number("THEAP", table);
  const auto left = heap >= 0 && heap <= all ? static_cast<size_t>(all - heap) : 0;
  return std::span<const uint8_t>(bytes_).first(bytesOfFile_).last(left);
}

}  // namespace vistrel::app
