// Writes any picture, with any details, as every type of file, and reads back what it can.
#include <cstdlib>

#include "apps/error.h"
#include "apps/input/readers.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/picture_rows.h"
#include "tests/fuzz/input.h"

using namespace vistrel;

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

Image imageFrom(Input& in) {
  constexpr uint32_t kChannels[] = {1, 3, 4};
  const uint32_t width = 1 + in.take() % 40, height = 1 + in.take() % 40;
  const uint32_t channels = kChannels[in.take() % 3], bits = 8 + in.take() % 9;
  const size_t row = size_t{width} * channels * (bits > 8 ? 2 : 1);
  Image image{{width, height, channels, bits, row, row * height, 0, 0, {}}, {}};
  image.pixels.resize(row * height);
  for (size_t i = 0; i<image.pixels.size(); i += bits> 8 ? 2 : 1) {
    const auto sample = static_cast<uint16_t>(in.take<uint16_t>() & ((1u << bits) - 1));
    const auto low = static_cast<uint8_t>(sample);
    std::memcpy(&image.pixels[i], bits > 8 ? static_cast<const void*>(&sample) : &low,
                bits > 8 ? 2 : 1);
  }
  return image;
}

std::string textFrom(Input& in) {
  std::string text;
  for (size_t count = in.take() % 40; text.size() < count;)
    if (const uint8_t byte = in.take())
      text += static_cast<char>(byte);
    else
      break;
  return text;
}

std::optional<double> numberFrom(Input& in) {
  const uint32_t above = in.below(5000), below = 1 + in.below(5000) % 5000;
  return above ? std::optional(static_cast<double>(above) / below) : std::nullopt;
}

app::PictureDetails detailsFrom(Input& in, const Image& image) {
  app::PictureDetails details;
  details.encoding.kind = static_cast<app::Encoding::Kind>(in.take() % 3);
  details.encoding.exponent = (1 + in.take()) / 100.0;
  details.command = textFrom(in);
  details.shot = {textFrom(in),   textFrom(in),   "2026-11-22T18:06:29", numberFrom(in),
                  numberFrom(in), numberFrom(in), numberFrom(in)};
  details.compression.level = in.take() % 10;
  details.compression.lzw = in.take() % 2;
  details.compression.quality = 1 + in.take() % 100;
  details.compression.chroma = static_cast<app::Chroma>(in.take() % 3);
  if (image.layout.channels == 1 && in.take() % 2)
    details.camera = app::unknownCamera(in.take() % 5, image.layout.bits);
  return details;
}

// A reader finds the samples and the phase.
void readBack(const app::ReaderType& type, const Image& image, const app::PictureDetails& details,
              const app::AtomicFile& file) {
  std::fflush(file.stream());
  const app::Source source("/proc/self/fd/" + std::to_string(fileno(file.stream())));
  const auto reader = type.open(source, {});
  const app::Description& d = reader->description();
  const vistrel_layout& l = image.layout;
  require(d.width == l.width && d.height == l.height && d.frames == 1);
  require(d.phase == (details.camera ? std::optional(details.camera->phase) : std::nullopt));
  std::vector<uint8_t> samples(image.pixels.size());
  reader->read(0, samples.data());
  require(std::equal(samples.begin(), samples.end(), image.pixels.begin(), image.pixels.end()));
}

const app::ReaderType* readerOf(const std::string& extension, const Image& image) {
  if (image.layout.channels > 1) return nullptr;
  if (extension == "png") return &app::kPng;
  if (extension == "pgm") return &app::kPgm;
  if (extension == "dng") return &app::kTiff;
  const bool scaled = image.layout.bits > 8 && image.layout.bits < 16;
  return extension == "tif" && !scaled ? &app::kTiff : nullptr;
}

void write(const std::string& extension, const Image& image, app::PictureDetails details) {
  const std::string name = extension + ":-";  // nothing reaches standard output
  const app::PictureType& type = app::pictureType(name);
  if (type.channels && type.channels != image.layout.channels) return;
  if (extension == "tif") details.camera.reset();
  const app::Outcome outcome = app::attempt([&] {
    app::checkHolds(type, image.layout, details);
    app::AtomicFile file(name);
    type.write(image, details, file);
    if (const auto* reader = readerOf(extension, image)) readBack(*reader, image, details, file);
  });
  require(outcome.status == app::kDone ||
          (outcome.status == app::kRejected && (extension == "jpg" || extension == "dng")));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const Image image = imageFrom(in);
  const app::PictureDetails details = detailsFrom(in, image);
  for (const char* const extension :
       {"png", "jpg", "tif", "pam", "ppm", "pgm", "npy", "dng", "raw"})
    write(extension, image, details);
  return 0;
}
