// Any description of frame, conversion and image, over memory of exactly the described size: it is
// converted or rejected, and a rejected call writes nothing. What is accepted has the same pixels
// in every way of converting it, whatever other conversions have left behind.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/fuzz/input.h"
#include "tests/reference/host.h"
#include "vistrel/vistrel_host.h"

using namespace vistrel;

namespace {

constexpr uint8_t kUntouched = 0x5A;
constexpr size_t kMaxBytes = 1 << 18;
constexpr uint32_t kThreads = 3;

void require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// Every task, the last one first.
int32_t runAll(void*, uint32_t count, void (*task)(void*, uint32_t), void* data) {
  while (count > 0) task(data, --count);
  return 0;
}

vistrel_team* team() {
  static vistrel_team* const team = [] {
    vistrel_team* created = nullptr;
    require(vistrel_team_create(kThreads, &created, nullptr) == VISTREL_OK, "a team");
    return created;
  }();
  return team;
}

// Usually small; sometimes large enough for several threads.
void sizeFrom(Input& in, vistrel_frame& f) {
  f.width = in.below(48);
  f.height = in.below(48);
  if (in.take() % 16 == 1) f.width *= 16, f.height *= 12;
}

vistrel_frame frameFrom(Input& in) {
  vistrel_frame f{};
  sizeFrom(in, f);
  f.bytes_per_sample = in.below(4);
  f.bits = in.below(18);
  f.phase = in.below(6);
  if (in.take() % 8 == 1) f.phase = VISTREL_BGR;
  f.alignment = in.below(3);
  f.packing = in.take() & 1 ? in.below(7) : 0;
  const bool isKnown = f.packing <= VISTREL_PACKING_MIPI && f.bits >= 8 && f.bits <= 16;
  const uint8_t flags = in.take();
  const size_t row = isKnown ? reference::hostRowBytes(f) : 0;
  f.stride = flags & 1 ? 0 : flags & 2 ? row + (flags >> 4) : in.take<uint64_t>();
  f.size = f.height ? (f.stride ? f.stride : row) * (f.height - 1) + row : 0;
  if (flags & 4) f.size -= flags >> 5;
  f.size = std::min(f.size, kMaxBytes);
  return f;
}

void tableFrom(Input& in, std::vector<uint16_t>& table, vistrel_conversion& c) {
  table.resize(in.take() & 1 ? 1024 : in.below(4100) % 8192);
  for (size_t i = 0; i < table.size(); ++i) table[i] = static_cast<uint16_t>(i * 7 & 255);
  c.table = table.data();
  c.table_entries = static_cast<uint32_t>(table.size());
}

void threadsFrom(Input& in, vistrel_conversion& c) {
  const uint8_t flags = in.take();
  c.threads = flags >> 4;
  if (flags & 1) c.run = runAll;
  if (flags & 2) c.team = team();
}

// What a conversion refers to, in memory of exactly the described size.
struct Look {
  std::vector<uint16_t> table, dark, flat, transfer;
  std::vector<vistrel_point> hot;
  vistrel_calibration calibration{};
  vistrel_finish finish{};
};

// Levels below `end` of all pixels, rarely too few.
void levelsFrom(Input& in, const vistrel_frame& f, uint32_t end, std::vector<uint16_t>& levels) {
  const size_t all = size_t{f.width} * f.height;
  levels.resize(std::min(all, kMaxBytes / 2));
  if (in.take() % 16 == 1 && !levels.empty()) levels.pop_back();
  uint32_t level = in.take<uint16_t>();
  const uint32_t step = in.take();
  for (uint16_t& v : levels) v = static_cast<uint16_t>((level += step) % end);
}

void calibrationFrom(Input& in, const vistrel_frame& f, Look& look, vistrel_conversion& c) {
  const uint8_t flags = in.take();
  if (flags % 4 != 1) return;
  vistrel_calibration& by = look.calibration;
  if (flags & 4) {
    levelsFrom(in, f, 200, look.dark);
    by.dark = look.dark.data(), by.dark_size = 2 * look.dark.size();
  }
  if (flags & 8) {
    levelsFrom(in, f, 9000, look.flat);
    by.flat = look.flat.data(), by.flat_size = 2 * look.flat.size();
  }
  for (uint32_t left = flags >> 5, y = in.below(8); left > 0; --left, y += in.below(3))
    look.hot.push_back({in.below(48), y});
  by.hot = look.hot.data(), by.hot_count = look.hot.size();
  c.calibration = &by;
}

void finishFrom(Input& in, Look& look, vistrel_conversion& c) {
  const uint8_t flags = in.take();
  if (flags % 4 != 1) return;
  vistrel_finish& finish = look.finish;
  finish.highlights = in.below(3);
  finish.exposure = flags & 4 ? in.take<uint32_t>() : in.below(20000);
  if (flags & 8)
    for (int32_t& m : finish.matrix)
      m = flags & 16 ? in.take<int32_t>() : static_cast<int8_t>(in.take()) * 80;
  if (flags & 32) look.transfer.resize(in.below(700) % 70000);
  for (uint16_t& point : look.transfer) point = in.take<uint16_t>();
  finish.transfer = look.transfer.empty() ? nullptr : look.transfer.data();
  finish.transfer_points = static_cast<uint32_t>(look.transfer.size());
  c.finish = &finish;
}

vistrel_conversion conversionFrom(Input& in, const vistrel_frame& f, Look& look) {
  vistrel_conversion c{};
  c.format = in.below(12);
  if (in.take() & 1) c.format = 256 + in.below(9);
  c.algorithm = in.below(13);
  switch (in.take() % 8) {
    case 0: c.algorithm = VISTREL_AHD; break;
    case 2: c.algorithm = VISTREL_DIRECTIONAL; break;
  }
  c.threshold = in.below(257);
  c.gray = in.below(3);
  c.binning = in.below(6);
  c.truncate_to = in.below(18);
  c.reduction = in.below(12);
  tableFrom(in, look.table, c);
  c.excess = in.below(3);
  if (in.take() & 1) c.region = {in.below(48), in.below(48), in.below(48), in.below(48)};
  for (uint32_t& black : c.black) black = in.below(256);
  c.white_balance = in.below(4);
  for (uint32_t& gain : c.gains) gain = in.below(65540);
  c.edges = in.below(3);
  threadsFrom(in, c);
  c.destination = in.below(3);
  if (in.take() & 1) c.white = in.below(5000);
  c.bin_mode = in.below(3);
  c.orientation = in.below(10);
  calibrationFrom(in, f, look, c);
  finishFrom(in, look, c);
  return c;
}

struct Case {
  vistrel_frame frame{};
  vistrel_conversion conversion{};
  vistrel_layout layout{};
  vistrel_image image{};
  Look look;
  std::vector<uint8_t> samples, pixels, expected;
  std::vector<bool> isWritten;  // of each byte of pixels
};

// Memory for an image with its stride, or for a part of it.
void imageFrom(Input& in, Case& c) {
  const uint8_t flags = in.take();
  const size_t stride = c.layout.row_bytes + (flags & 1 ? flags >> 3 : 0);
  const bool isUpward = in.take() & 1;
  const auto planes =
      reference::hostPlanes(c.conversion.format, c.layout.width, c.layout.height, stride);
  const reference::HostPlane& last = planes.back();
  const size_t size = last.rows ? last.offset + (last.rows - 1) * last.stride + last.rowBytes : 0;
  c.image.size = size - (flags & 4 ? std::min<size_t>(size, flags >> 3) : 0);
  const auto distance = static_cast<ptrdiff_t>(stride);
  c.image.stride = isUpward ? -distance : flags & 3 ? distance : 0;
  if (c.image.size > kMaxBytes) return;
  c.pixels.assign(c.image.size, kUntouched);
  c.isWritten.assign(std::max(size, c.image.size), false);
  for (const reference::HostPlane& plane : planes)
    for (size_t y = 0; y < plane.rows; ++y)
      for (size_t x = 0; x < plane.rowBytes; ++x)
        c.isWritten[plane.offset + y * plane.stride + x] = true;
  const size_t above = isUpward && c.layout.height ? (c.layout.height - 1) * stride : 0;
  c.image.pixels = c.pixels.data() + above;
}

// Leaves other samples in the stream's memory.
void convertAnother(vistrel_stream* stream) {
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
  require(vistrel_stream_convert(stream, &frame, &c, &image, nullptr) == VISTREL_OK,
          "another conversion");
}

// Ways of converting a case that has been converted.

int32_t convertOnStream(Case& c, Input&, vistrel_stream* stream) {
  convertAnother(stream);
  return vistrel_stream_convert(stream, &c.frame, &c.conversion, &c.image, nullptr);
}

int32_t convertRows(Case& c, Input& in, vistrel_stream* stream) {
  const uint32_t height = c.layout.height;
  for (uint32_t first = 0; first < height;) {
    const uint32_t rows = std::min(2 * (1 + in.take() % 16u), height - first);
    const int32_t status =
        vistrel_convert_rows(stream, &c.frame, &c.conversion, &c.image, first, rows, nullptr);
    if (status) return status;
    first += rows;
  }
  return VISTREL_OK;
}

int32_t convertByThreads(Case& c, Input& in, vistrel_stream* stream) {
  vistrel_conversion conversion = c.conversion;
  const bool isTeam = in.take() & 1;
  conversion.threads = kThreads;
  conversion.team = isTeam ? team() : nullptr;
  conversion.run = isTeam ? nullptr : runAll;
  return vistrel_stream_convert(stream, &c.frame, &conversion, &c.image, nullptr);
}

// Each portion exists only while it is pushed.
int32_t pushRows(Case& c, Input& in, vistrel_stream* stream) {
  vistrel_conversion conversion = c.conversion;
  conversion.threads = 0;
  const int32_t begun = vistrel_stream_begin(stream, &c.frame, &conversion, &c.image, nullptr);
  if (begun) return begun;
  const size_t row = reference::hostRowBytes(c.frame),
               stride = c.frame.stride ? c.frame.stride : row;
  uint32_t finalRows = 0;
  for (uint32_t first = 0; first < c.frame.height;) {
    const uint32_t rows = std::min(1 + in.take() % 8u, c.frame.height - first);
    const auto from = c.samples.begin() + static_cast<ptrdiff_t>(first * stride);
    const std::vector<uint8_t> portion(from,
                                       from + static_cast<ptrdiff_t>((rows - 1) * stride + row));
    require(vistrel_stream_push(stream, portion.data(), portion.size(), rows, &finalRows,
                                nullptr) == VISTREL_OK,
            "a portion");
    first += rows;
  }
  require(finalRows == c.layout.height, "all rows final");
  return VISTREL_OK;
}

using Way = int32_t(Case& c, Input& in, vistrel_stream* stream);

// canReject: what needs the whole frame.
void expectSame(Case& c, Input& in, Way* way, bool canReject, const char* what) {
  vistrel_stream* stream = nullptr;
  require(vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, nullptr) == VISTREL_OK, "a stream");
  std::fill(c.pixels.begin(), c.pixels.end(), kUntouched);
  const int32_t status = way(c, in, stream);
  const bool isRejected = status == VISTREL_BAD_GRAY || status == VISTREL_BAD_BALANCE ||
                          status == VISTREL_BAD_ORIENTATION;
  require(status == VISTREL_OK || (canReject && isRejected), "accepted in one way only");
  const std::vector<uint8_t> untouched(c.pixels.size(), kUntouched);
  require(c.pixels == (status ? untouched : c.expected), what);
  require(vistrel_stream_release(stream, nullptr) == VISTREL_OK, "a release");
}

void convertInEveryWay(Case& c, Input& in) {
  c.expected = c.pixels;
  expectSame(c, in, convertOnStream, false, "the same bytes after another conversion");
  expectSame(c, in, convertByThreads, false, "the same bytes by threads");
  expectSame(c, in, convertRows, true, "the same bytes by rows");
  expectSame(c, in, pushRows, true, "the same bytes from pushed rows");
}

void convertAny(Input& in) {
  Case c;
  c.frame = frameFrom(in);
  c.conversion = conversionFrom(in, c.frame, c.look);
  vistrel_error error{};
  const int32_t rejected = vistrel_get_layout(&c.frame, &c.conversion, &c.layout, &error);
  require(error.status == rejected && (error.text[0] == 0) == (rejected == 0), "status and text");
  imageFrom(in, c);
  if (c.image.size > kMaxBytes) return;
  c.samples.resize(c.frame.size);
  for (uint8_t& sample : c.samples) sample = in.take();
  c.frame.samples = c.samples.data();
  const int32_t status = vistrel_convert(&c.frame, &c.conversion, &c.image, &error);
  require(status != VISTREL_INTERNAL, "internal");
  require(status == 0 || rejected == 0 || status == rejected, "one rejection, two codes");
  for (size_t i = 0; i < c.pixels.size(); ++i)
    if (status != 0 || !c.isWritten[i])
      require(c.pixels[i] == kUntouched, "bytes that are not the image's");
  if (status == 0) convertInEveryWay(c, in);
}

void unpackAny(Input& in) {
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
  Input in(data, size);
  in.take() & 1 ? unpackAny(in) : convertAny(in);
  return 0;
}
