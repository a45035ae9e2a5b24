// Headerless raw files of any description: the first bytes are the options, the rest is the file.
#include "apps/error.h"
#include "apps/input/readers.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/read_frames.h"

using namespace vistrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  app::InputOptions o;
  const uint32_t width = in.below(64), height = in.below(64), format = in.below(128);
  o.size = app::Size{width, height};
  o.bits = in.below(20);
  const auto& formats = app::pixelFormats();
  if (format < formats.size()) o.pixfmt = &formats[format];
  if (o.pixfmt && in.take() & 1) o.bits.reset();
  const uint8_t flags = in.take();
  o.bigEndian = flags & 1;
  o.highBits = flags & 2;
  o.skip = flags & 4 ? in.take<uint64_t>() : flags >> 4;
  if (flags & 8) o.stride = flags & 16 ? in.take<uint64_t>() : in.take();
  const MemoryFile file(in.data(), in.left());
  app::attempt([&] {
    const app::Source source(file.path());
    readFrames(*openHeaderless(source, o));
  });
  return 0;
}
