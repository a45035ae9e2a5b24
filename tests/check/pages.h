// Pages of memory that fault until they are opened, where the system has such.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core::check {

// Throw std::bad_alloc.
uint8_t* reservePages(size_t bytes);
void openPages(uint8_t* from, size_t bytes);

void releasePages(uint8_t* pages, size_t bytes);

}  // namespace vistrel::core::check
