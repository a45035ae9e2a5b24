// Reading FITS through cfitsio, with exceptions in place of status codes.
#pragma once

#include <fitsio.h>

#include <optional>
#include <string>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

struct FitsShape {
  int bits = 0, axes = 0;
  LONGLONG size[3] = {1, 1, 1};
  double scale = 1, zero = 0;
  LONGLONG begin = 0;  // offset of the samples in the file
};

class FitsInput {
 public:
  // Opens the first non-empty image. Throws ProgramError.
  explicit FitsInput(const Source& source);
  ~FitsInput();
  FitsInput(const FitsInput&) = delete;
  FitsInput& operator=(const FitsInput&) = delete;

  const FitsShape& shape() const { return shape_; }

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

 private:
  void check(int status) const;
  void findImage();

  std::vector<uint8_t> bytes_;
  void* start_;
  size_t size_;
  fitsfile* file_ = nullptr;
  FitsShape shape_;
};

}  // namespace vistrel::app
