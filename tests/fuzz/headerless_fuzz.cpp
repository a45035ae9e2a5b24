// Headerless raw files of any description: the first bytes are the options, the rest is the file.
#include "apps/error.h"
#include "apps/input/readers.h"
#include "tests/fuzz/headerless_options.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/read_frames.h"

using namespace vistrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const app::InputOptions o = takeHeaderlessOptions(in);
  const MemoryFile file(in.data(), in.left());
  app::attempt([&] {
    const app::Source source(file.path());
    readFrames(*openHeaderless(source, o));
  });
  return 0;
}
