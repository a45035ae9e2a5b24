// A FITS file that is read: what cfitsio does, with failures in place of status codes.
#pragma once

#include <fitsio.h>

#include <string>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

struct FitsShape {
  int bits = 0, axes = 0;
  LONGLONG size[3] = {1, 1, 1};
  double scale = 1, zero = 0;
  LONGLONG begin = 0;  // where the samples begin in the file
};

class FitsInput {
 public:
  // Opens the first image that is not empty. Throws Failure.
  explicit FitsInput(const Source& source);
  ~FitsInput();
  FitsInput(const FitsInput&) = delete;
  FitsInput& operator=(const FitsInput&) = delete;

  const FitsShape& shape() const { return shape_; }

  // Of the header; empty and `otherwise` where the keyword is missing. Throws Failure.
  std::string text(const char* keyword);
  double number(const char* keyword, double otherwise);

  // All samples of plane n, from 0, in the file's order of rows, as bytes or as 16-bit words.
  void readPlane(uint64_t n, bool words, void* to);

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
