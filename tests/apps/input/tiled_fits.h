// FITS files compressed by tiles, written through cfitsio.
#pragma once

#include <fitsio.h>

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <vector>

namespace vistrel {

// `compression` is RICE_1, GZIP_1, ...; BZERO is 32768.
inline void writeTiledFits(const std::filesystem::path& path, int compression, uint32_t width,
                           uint32_t height,
                           const std::function<uint32_t(uint32_t x, uint32_t y)>& sample) {
  std::vector<uint16_t> samples;
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < width; ++x) samples.push_back(static_cast<uint16_t>(sample(x, y)));
  fitsfile* file = nullptr;
  int status = 0;
  long size[2] = {width, height};
  fits_create_diskfile(&file, path.c_str(), &status);
  fits_set_compression_type(file, compression, &status);
  fits_create_img(file, USHORT_IMG, 2, size, &status);
  fits_write_img(file, TUSHORT, 1, static_cast<LONGLONG>(samples.size()), samples.data(), &status);
  fits_close_file(file, &status);
  if (status) throw std::runtime_error("cfitsio: " + std::to_string(status));
}

}  // namespace vistrel
