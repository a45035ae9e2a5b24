// Feeds any bytes to one reader, whose ReaderType is VISTREL_FUZZ_TYPE, and what it reads of the
// camera to the colour matrix.
#include "apps/error.h"
#include "apps/input/camera_colour.h"
#include "apps/input/readers.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/read_frames.h"

using namespace vistrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const MemoryFile file(data, size);
  app::attempt([&file] {
    const app::Source source(file.path());
    if (app::VISTREL_FUZZ_TYPE.recognises(source, source.head(64))) {
      const auto reader = app::VISTREL_FUZZ_TYPE.open(source, {});
      app::cameraColour(reader->description().camera);
      readFrames(*reader);
    }
  });
  return 0;
}
