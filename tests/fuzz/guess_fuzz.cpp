// What guess finds in any bytes must be frames within them. The first bytes say whether the size is
// given.
#include <cstdlib>

#include "apps/tools/guess/guess.h"
#include "tests/fuzz/input.h"

using namespace vistrel;

namespace {

void check(const app::Guess& guess, size_t bytes, const std::optional<app::Size>& size) {
  if (guess.width == 0 || guess.height == 0 || guess.frames == 0) abort();
  if (size && (guess.width != size->width || guess.height != size->height)) abort();
  if (guess.skip + guess.trailing >= bytes) abort();
  if (!(guess.score >= 0 && guess.score <= 1)) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  std::optional<app::Size> known;
  if (in.take() & 1) known = app::Size{in.below(100), in.below(100)};
  const std::vector<uint8_t> bytes(in.data(), in.data() + in.left());
  for (const app::Guess& guess : app::guessFormat(bytes, known)) check(guess, bytes.size(), known);
  return 0;
}
