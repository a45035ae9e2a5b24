// Frames that arrive must be those of the same bytes as a file. The first bytes are the options,
// the rest is the stream.
#include "apps/error.h"
#include "apps/input/readers.h"
#include "tests/fuzz/headerless_options.h"
#include "tests/fuzz/memory_file.h"

using namespace vistrel;

namespace {

using Samples = std::vector<uint8_t>;

Samples samplesOf(app::Reader& reader, uint64_t n) {
  const app::Description& d = reader.description();
  Samples samples(size_t{d.width} * d.height * d.bytesPerSample);
  reader.read(n, samples.data());
  return samples;
}

void compare(app::Reader& file, app::Reader& arriving) {
  constexpr uint64_t kMost = 20;
  const uint64_t frames = file.description().frames;
  for (uint64_t n = 0; n < std::min(frames, kMost); ++n)
    if (!arriving.has(n) || samplesOf(file, n) != samplesOf(arriving, n)) abort();
  if (frames > kMost) return;
  if (arriving.has(frames)) abort();
  if (arriving.description().trailing != file.description().trailing) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const app::InputOptions o = takeHeaderlessOptions(in);
  const MemoryFile file(in.data(), in.left());
  app::attempt([&] {
    const auto arriving = openArriving(file.path(), o);
    const app::Outcome outcome = app::attempt([&] {
      const app::Source source(file.path());
      compare(*openHeaderless(source, o), *arriving);
    });
    if (outcome.status != app::kDone && arriving->has(0)) abort();
  });
  return 0;
}
