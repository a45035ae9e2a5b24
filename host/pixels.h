// From rows of the library's native formats to those of other formats.
#pragma once

#include <cstddef>

namespace vistrel::host {

// Turns n pixels of blue, green, red into n pixels of another format, at any alignment. Pixels of
// the same size may be repacked in place.
using Repack = void (*)(const unsigned char* bgr, size_t n, unsigned char* pixels);

void luma8(const unsigned char* bgr, size_t n, unsigned char* pixels);
void luma16(const unsigned char* bgr, size_t n, unsigned char* pixels);
void swapEnds8(const unsigned char* bgr, size_t n, unsigned char* pixels);
void swapEnds16(const unsigned char* bgr, size_t n, unsigned char* pixels);
void addAlpha(const unsigned char* bgr, size_t n, unsigned char* pixels);
void swapEndsAddAlpha(const unsigned char* bgr, size_t n, unsigned char* pixels);

}  // namespace vistrel::host
