// WebAssembly has neither protected pages nor signals: only canaries guard the blocks, and a fault
// ends the program.
#include <cstdlib>
#include <new>

#include "tests/check/pages.h"
#include "tests/check/trap.h"

namespace vistrel::core::check {

uint8_t* reservePages(size_t bytes) {
  constexpr size_t kPage = 4096;
  void* const pages = std::aligned_alloc(kPage, bytes);
  if (!pages) throw std::bad_alloc();
  return static_cast<uint8_t*>(pages);
}

void openPages(uint8_t*, size_t) {}
void releasePages(uint8_t* pages, size_t) { std::free(pages); }

std::optional<Fault> trapped(const std::function<void()>& function) {
  function();
  return std::nullopt;
}

void setTerminationMessage(const std::string&) {}

}  // namespace vistrel::core::check
