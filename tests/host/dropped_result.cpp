// Must not compile with warnings as errors: the rejection would go unnoticed.
#include "vistrel/vistrel.hpp"

void drop(const vistrel_frame& frame, vistrel::Span<uint8_t> pixels) {
  vistrel::tryConvertInto(frame, vistrel::defaultConversion(frame), pixels);
}
