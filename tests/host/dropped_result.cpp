// Must not compile where warnings are errors: the refusal would pass unseen.
#include "vistrel/vistrel.hpp"

void drop(const vistrel_frame& frame, vistrel::Span<uint8_t> pixels) {
  vistrel::tryConvertInto(frame, vistrel::defaultConversion(frame), pixels);
}
