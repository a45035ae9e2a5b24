// Compressed bytes for the program to read.
#pragma once

#include <zlib.h>

#include <string>

namespace vistrel {

// As a gzip file, or as a zlib stream.
inline std::string deflated(const std::string& bytes, bool isGzip = true, int level = 6) {
  z_stream zlib{};
  deflateInit2(&zlib, level, Z_DEFLATED, MAX_WBITS + (isGzip ? 16 : 0), 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&zlib, bytes.size()), 0);
  zlib.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  zlib.avail_in = static_cast<uInt>(bytes.size());
  zlib.next_out = reinterpret_cast<Bytef*>(packed.data());
  zlib.avail_out = static_cast<uInt>(packed.size());
  deflate(&zlib, Z_FINISH);
  packed.resize(zlib.total_out);
  deflateEnd(&zlib);
  return packed;
}

}  // namespace vistrel
