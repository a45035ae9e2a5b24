// Reading FITS through cfitsio, with exceptions in place of status codes.
#pragma once

#include <fitsio.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

struct FitsShape {
  int bits = 0, axes = 0;
  LONGLONG size[3] = {1, 1, 1};
  double scale = 1, zero = 0;
  bool isCompressed = false;  // by tiles
  uint64_t bytes = 0;         // from the first sample to the end of the file

  // Whole numbers that fit 16-bit samples, unless the zero point is far off.
  bool isWhole() const;
};

class FitsInput {
 public:
  // Opens the first non-empty image, also in a gzip file. Throws ProgramError.
  explicit FitsInput(const Source& source);
  ~FitsInput();
  FitsInput(const FitsInput&) = delete;
  FitsInput& operator=(const FitsInput&) = delete;

  const FitsShape& shape() const { return shape_; }

  // Bytes after the last header unit and its data, and after the end of a gzip file.
  uint64_t trailing() const { return trailing_; }

  // The value of a header keyword; an empty string or `otherwise` if it is missing. Throws
  // ProgramError.
  std::string text(const char* keyword);
  double number(const char* keyword, double otherwise);

  // The same for keywords that are merely informative: nothing if the value is missing or
  // malformed.
  std::optional<double> numberIfValid(const char* keyword);
  std::optional<std::string> textIfValid(const char* keyword);

  // Reads plane n, counted from 0, in the file's row order, as 8-bit or 16-bit samples.
  void readPlane(uint64_t n, bool wide, void* to);

  // Reads row y of plane n as real numbers; those without a value become NaN.
  void readRow(uint64_t n, uint64_t y, double* to);

 private:
  template <class Real>
  void readReals(int type, uint64_t n, uint64_t y, Real* to);
  void check(int status) const;
  int countUnits();
  void findImage(int units);
  void checkTileSize();
  void checkTiles(const std::string& column);
  std::span<const uint8_t> heapOfTable();

  std::vector<uint8_t> bytes_;
  uint64_t bytesOfFile_ = 0;  // without the padding behind them
  uint64_t trailing_ = 0;
  void* start_;
  size_t size_;
  fitsfile* file_ = nullptr;
  FitsShape shape_;
};

}  // namespace vistrel::app
