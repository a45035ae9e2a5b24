// Feeds any bytes to one reader, whose ReaderType is VISTREL_FUZZ_TYPE.
#include "apps/error.h"
#include "apps/input/readers.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/read_frames.h"

using namespace vistrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const MemoryFile file(data, size);
  app::attempt([&file] {
    const app::Source source(file.path());
    if (app::VISTREL_FUZZ_TYPE.recognises(source, source.head(64)))
      readFrames(*app::VISTREL_FUZZ_TYPE.open(source));
  });
  return 0;
}
