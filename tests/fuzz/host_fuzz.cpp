// Any description of frame, conversion and image, over memory of exactly the described size: it is
// converted or rejected, and a rejected call writes nothing. What other conversions have left
// behind changes no pixel, and neither does a frame that arrives in portions.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/fuzz/bytes.h"
#include "vistrel/vistrel_host.h"

using namespace vistrel;

namespace {

constexpr uint8_t kUntouched = 0x5A;
constexpr size_t kMaxBytes = 1 << 18;

void require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

vistrel_frame frameFrom(Bytes& in) {
  vistrel_frame f{};
  f.width = in.below(48);
  f.height = in.below(48);
  f.bytes_per_sample = in.below(4);
  f.bits = in.below(18);
  f.phase = in.below(6);
  f.alignment = in.below(3);
  const uint8_t flags = in.take();
  if (flags & 8) f.packing = in.below(8);
  if (flags & 16) f.phase = VISTREL_BGR;
  const size_t row = size_t{f.width} * f.bytes_per_sample * (flags & 16 ? 3 : 1);
  f.stride = flags & 1 ? 0 : flags & 2 ? row + (flags >> 5) : in.take<uint64_t>();
  return f;
}

vistrel_conversion conversionFrom(Bytes& in, std::vector<uint16_t>& table) {
  vistrel_conversion c{};
  c.format = in.below(12);
  if (in.take() & 1) c.format = 256 + in.below(9);
  c.algorithm = in.below(13);
  if (in.take() % 8 == 0) c.algorithm = VISTREL_AHD;
  c.threshold = in.below(257);
  c.gray = in.below(3);
  c.binning = in.below(6);
  c.truncate_to = in.below(18);
  c.reduction = in.below(12);
  table.resize(in.take() & 1 ? 1024 : in.below(4100) % 8192);
  for (size_t i = 0; i < table.size(); ++i) table[i] = static_cast<uint16_t>(i * 7 & 255);
  c.table = table.data();
  c.table_entries = static_cast<uint32_t>(table.size());
  c.excess = in.below(3);
  if (in.take() & 1) c.region = {in.below(48), in.below(48), in.below(48), in.below(48)};
  for (uint32_t& black : c.black) black = in.below(256);
  c.white_balance = in.below(4);
  for (uint32_t& gain : c.gains) gain = in.below(65540);
  c.edges = in.below(3);
  c.destination = in.below(3);
  return c;
}

// Leaves other samples in the memory of the stream that is acquired next.
void convertAnother() {
  static const std::vector<uint16_t> samples(size_t{64} * 64, 0xFFFF);
  static std::vector<uint8_t> pixels(samples.size());
  vistrel_frame frame{};
  frame.samples = samples.data();
  frame.size = 2 * samples.size();
  frame.width = frame.height = 64;
  frame.bytes_per_sample = 2, frame.bits = 16;
  vistrel_conversion c{};
  vistrel_default_conversion(&frame, &c);
  c.format = VISTREL_GRAY8, c.gray = VISTREL_RAW_GRAY, c.binning = 2;
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  require(vistrel_convert(&frame, &c, &image, nullptr) == VISTREL_OK, "another conversion");
}

bool hasPlanes(uint32_t format) { return VISTREL_RGB24_PLANAR <= format && format <= VISTREL_I420; }

// Makes the image, whose memory is `pixels`, again from pushed rows, if it can be made so.
void pushAny(Bytes& in, const vistrel_frame& frame, const vistrel_conversion& conversion,
             const vistrel_image& image, std::vector<uint8_t>& pixels) {
  vistrel_stream* stream = nullptr;
  require(vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, nullptr) == VISTREL_OK, "a stream");
  if (vistrel_stream_begin(stream, &frame, &conversion, &image, nullptr) == VISTREL_OK) {
    std::fill(pixels.begin(), pixels.end(), kUntouched);
    const auto* from = static_cast<const uint8_t*>(frame.samples);
    const size_t distance = frame.stride       ? frame.stride
                            : frame.height > 1 ? frame.size / frame.height
                                               : 0;
    for (uint32_t y = 0, rows; y < frame.height; y += rows) {
      rows = std::min(1 + in.below(9) % 9, frame.height - y);
      const int32_t status = vistrel_stream_push(stream, from + y * distance,
                                                 frame.size - y * distance, rows, nullptr, nullptr);
      require(status == VISTREL_OK, "rows of an accepted frame");
    }
  }
  vistrel_stream_release(stream, nullptr);
}

void convertAny(Bytes& in) {
  vistrel_frame frame = frameFrom(in);
  std::vector<uint16_t> table;
  const vistrel_conversion conversion = conversionFrom(in, table);
  vistrel_layout layout{};
  vistrel_error error{};
  const int32_t rejected = vistrel_get_layout(&frame, &conversion, &layout, &error);
  require(error.status == rejected && (error.text[0] == 0) == (rejected == 0), "status and text");
  const uint8_t flags = in.take();
  vistrel_image image{};
  const bool planes = hasPlanes(conversion.format);
  const size_t padding = flags & 1 && !planes ? flags >> 3 : 0;
  const auto distance = static_cast<ptrdiff_t>(layout.row_bytes + padding);
  const bool isBottomUp = in.take() & 1;
  image.stride = isBottomUp ? -distance : padding || flags & 2 ? distance : 0;
  image.size = layout.bytes + padding * (layout.height ? layout.height - 1 : 0);
  if (flags & 4) image.size -= std::min<size_t>(image.size, flags >> 3);
  const uint8_t missing = in.take();
  frame.size =
      layout.frame_bytes - std::min<size_t>(layout.frame_bytes, missing % 8 == 7 ? missing : 0);
  if (image.size > kMaxBytes || frame.size > kMaxBytes) return;
  std::vector<uint8_t> samples(frame.size), pixels(image.size, kUntouched);
  for (uint8_t& sample : samples) sample = in.take();
  frame.samples = samples.data();
  const size_t above = layout.height ? layout.height - 1 : 0;
  image.pixels = pixels.data();
  if (isBottomUp) image.pixels = pixels.data() + above * (layout.row_bytes + padding);
  const int32_t status = vistrel_convert(&frame, &conversion, &image, &error);
  require(status != VISTREL_INTERNAL, "internal");
  require(status == 0 || rejected == 0 || status == rejected, "one rejection, two codes");
  for (size_t i = 0; i < pixels.size(); ++i)
    if (status != 0 || (padding && i % (layout.row_bytes + padding) >= layout.row_bytes))
      require(pixels[i] == kUntouched, "bytes that are not the image's");
  if (status != 0) return;
  const std::vector<uint8_t> first = pixels;
  convertAnother();
  require(vistrel_convert(&frame, &conversion, &image, &error) == VISTREL_OK, "accepted once only");
  require(pixels == first, "the same bytes after another conversion");
  pushAny(in, frame, conversion, image, pixels);
  require(pixels == first, "the same bytes from rows");
}

void unpackAny(Bytes& in) {
  vistrel_packed packed{};
  packed.width = in.below(48);
  packed.height = in.below(48);
  packed.packing = in.below(7);
  packed.bits = in.below(18);
  packed.continuous = in.below(3);
  if (in.take() & 1) packed.stride = in.below(200);
  vistrel_packed_layout layout{};
  vistrel_error error{};
  if (vistrel_get_packed_layout(&packed, &layout, &error) != 0) return;
  const uint8_t flags = in.take();
  if (layout.bytes > kMaxBytes || layout.unpacked_bytes > kMaxBytes) return;
  packed.size = layout.bytes - std::min<size_t>(layout.bytes, flags & 1 ? flags >> 4 : 0);
  std::vector<uint8_t> bytes(packed.size);
  for (uint8_t& byte : bytes) byte = in.take();
  std::vector<uint8_t> samples(layout.unpacked_bytes - (flags & 2 ? 1 : 0));
  packed.bytes = bytes.data();
  const int32_t status = vistrel_unpack(&packed, samples.data(), samples.size(), &error);
  require((status == 0) == (packed.size == layout.bytes && samples.size() == layout.unpacked_bytes),
          "exactly the bytes of the layout");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Bytes in(data, size);
  in.take() & 1 ? unpackAny(in) : convertAny(in);
  return 0;
}
