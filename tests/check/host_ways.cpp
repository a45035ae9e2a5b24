#include "tests/check/host_ways.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <thread>
#include <vector>

#include "tests/check/fill.h"
#include "tests/check/random.h"

namespace vistrel::core::check {
namespace {

struct Acquired {
  Acquired() { vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, nullptr); }
  ~Acquired() { vistrel_stream_release(stream, nullptr); }
  Acquired(const Acquired&) = delete;
  Acquired& operator=(const Acquired&) = delete;
  operator vistrel_stream*() const { return stream; }

  vistrel_stream* stream = nullptr;
};

uint64_t asResult(int32_t status) { return static_cast<uint32_t>(status); }

// The rows of a block, without what lies between them.
std::vector<uint8_t> copyOf(const Block& block, size_t first, size_t end) {
  std::vector<uint8_t> bytes;
  for (size_t y = first; y < end; ++y)
    bytes.insert(bytes.end(), block.row(y), block.row(y) + block.shape.rowBytes);
  return bytes;
}
std::vector<uint8_t> copyOf(const Block& block) { return copyOf(block, 0, block.shape.rows); }

// Leaves other samples in the stream's memory.
void convertAnother(vistrel_stream* stream, uint32_t seed) {
  constexpr uint32_t kSide = 70;
  static const std::vector<uint16_t> samples(size_t{kSide} * kSide, 0xFFFF);
  std::vector<uint8_t> pixels(6 * samples.size());
  Random random(seed + 17);
  vistrel_frame frame{};
  frame.samples = samples.data(), frame.size = 2 * samples.size();
  frame.width = 2 + random.below(kSide - 1), frame.height = kSide;
  frame.bytes_per_sample = 2, frame.bits = 10;
  vistrel_conversion conversion{};
  vistrel_default_conversion(&frame, &conversion);
  conversion.excess = VISTREL_MASK;
  uint32_t algorithms = 0;
  while (vistrel_algorithm_at(algorithms)) ++algorithms;
  conversion.algorithm = vistrel_algorithm_at(random.below(algorithms))->code;
  conversion.format = random.pick({VISTREL_GRAY8, VISTREL_BGR48, VISTREL_I420, VISTREL_I444});
  conversion.binning = 1 + random.below(2);
  const vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_stream_convert(stream, &frame, &conversion, &image, nullptr);
}

struct Rows {
  uint32_t first, end;
};

// Cuts `height` rows, at even ones if they belong together in pairs.
std::vector<Rows> cut(Random& random, uint32_t height, bool inPairs) {
  std::vector<Rows> bands;
  for (uint32_t first = 0; first < height;) {
    uint32_t end = first + 1 + random.below(random.oneIn(2) ? 5 : height);
    if (inPairs) end += end % 2;
    bands.push_back({first, std::min(end, height)});
    first = end;
  }
  return bands;
}

void shuffle(Random& random, std::vector<Rows>& bands) {
  for (size_t i = bands.size(); i > 1; --i)
    std::swap(bands[i - 1], bands[random.below(static_cast<uint32_t>(i))]);
}

bool sharesChroma(uint32_t format) { return format == VISTREL_NV12 || format == VISTREL_I420; }

// Whether rows outside a band are what they were. Row y of the picture may be any row in memory.
bool othersAreAsBefore(const Block& block, const std::vector<uint8_t>& before, Rows made,
                       bool upward) {
  const size_t bytes = block.shape.rowBytes, rows = block.shape.rows;
  for (size_t y = 0; y < rows; ++y) {
    const size_t row = upward ? rows - 1 - y : y;
    if (y >= made.first && y < made.end) continue;
    if (std::memcmp(block.row(row), before.data() + row * bytes, bytes) != 0) return false;
  }
  return true;
}

// A runner of the caller's: two threads, each with every other task, the last one first. A single
// thread takes both turns.
int32_t runByTwo(void*, uint32_t count, void (*task)(void*, uint32_t), void* data) {
  const auto every = [=](uint32_t rest) {
    for (uint32_t index = count; index-- > 0;)
      if (index % 2 == rest) task(data, index);
  };
  if constexpr (kHasThreads) {
    std::thread other(every, 1);
    every(0);
    other.join();
  } else {
    every(1);
    every(0);
  }
  return 0;
}

class Teams {
 public:
  Teams() {
    for (uint32_t threads = 2; threads < teams_.size(); ++threads)
      vistrel_team_create(threads, &teams_[threads], nullptr);
  }
  ~Teams() {
    for (vistrel_team* const team : teams_)
      if (team) vistrel_team_destroy(team, nullptr);
  }
  Teams(const Teams&) = delete;
  Teams& operator=(const Teams&) = delete;
  vistrel_team* of(uint32_t threads) const { return threads < 2 ? nullptr : teams_[threads]; }

 private:
  std::array<vistrel_team*, 6> teams_{};
};

// Pushes rows of the frame where they are, or as copies that exist only while they are pushed.
class Pusher {
 public:
  Pusher(vistrel_stream* stream, const Call& call, const Memory& memory)
      : stream_(stream), source_(memory.source), image_(memory.destination),
        upward_(call.upward != 0),
        copies_(call.seed & 8 && source_.shape.pitch == source_.shape.rowBytes) {}

  int32_t push(Rows rows) {
    const size_t size = (rows.end - rows.first - 1) * source_.shape.pitch + source_.shape.rowBytes;
    const uint8_t* samples = source_.row(rows.first);
    const std::vector<uint8_t> copy(samples, samples + (copies_ ? size : 0));
    if (copies_) samples = copy.data();
    return vistrel_stream_push(stream_, samples, size, rows.end - rows.first, &final_, nullptr);
  }

  // Keeps the rows that have become final.
  void keep() {
    for (; kept_ < final_ && kept_ < image_.shape.rows; ++kept_) {
      const auto row = copyOf(image_, rowOf(kept_), rowOf(kept_) + 1);
      rows_.insert(rows_.end(), row.begin(), row.end());
    }
  }

  bool isKept() const {
    for (size_t y = 0; y < kept_; ++y)
      if (std::memcmp(image_.row(rowOf(y)), rows_.data() + y * image_.shape.rowBytes,
                      image_.shape.rowBytes) != 0)
        return false;
    return true;
  }
  uint32_t finalRows() const { return final_; }

 private:
  size_t rowOf(size_t y) const { return upward_ ? image_.shape.rows - 1 - y : y; }

  vistrel_stream* stream_;
  const Block& source_;
  const Block& image_;
  bool upward_, copies_;
  uint32_t final_ = 0;
  size_t kept_ = 0;
  std::vector<uint8_t> rows_;
};

}  // namespace

uint64_t convertAlone(const Call&, const Memory&, HostCall& h) {
  return asResult(vistrel_convert(&h.frame, &h.conversion, &h.image, nullptr));
}

uint64_t convertAgain(const Call& call, const Memory& memory, HostCall& h) {
  const Acquired stream;
  const auto before = copyOf(memory.destination);
  const auto convert = [&] {
    return vistrel_stream_convert(stream, &h.frame, &h.conversion, &h.image, nullptr);
  };
  if (const int32_t status = convert()) return asResult(status);
  const auto first = copyOf(memory.destination);
  convertAnother(stream, call.seed);
  for (size_t y = 0; y < memory.destination.shape.rows; ++y)
    std::memcpy(memory.destination.row(y), &before[y * memory.destination.shape.rowBytes],
                memory.destination.shape.rowBytes);
  const int32_t status = convert();
  return first == copyOf(memory.destination) ? asResult(status) : uint64_t{kOtherImage};
}

uint64_t convertRows(const Call& call, const Memory& memory, HostCall& h) {
  const Acquired stream;
  Random random(call.seed + 19);
  h.conversion.run = runByTwo;
  h.conversion.threads = call.threads;
  auto bands = cut(random, imageHeight(call), sharesChroma(call.format));
  shuffle(random, bands);
  for (const Rows rows : bands) {
    const auto before = copyOf(memory.destination);
    const int32_t status = vistrel_convert_rows(stream, &h.frame, &h.conversion, &h.image,
                                                rows.first, rows.end - rows.first, nullptr);
    if (status) return asResult(status);
    if (!hasPlanes(call.format) &&
        !othersAreAsBefore(memory.destination, before, rows, call.upward != 0))
      return kOtherRows;
  }
  return VISTREL_OK;
}

uint64_t convertByTeam(const Call& call, const Memory&, HostCall& h) {
  static const Teams teams;
  h.conversion.threads = call.threads;
  h.conversion.team = teams.of(call.threads);
  return asResult(vistrel_convert(&h.frame, &h.conversion, &h.image, nullptr));
}

uint64_t convertByRunner(const Call& call, const Memory&, HostCall& h) {
  h.conversion.threads = call.threads;
  h.conversion.run = runByTwo;
  return asResult(vistrel_convert(&h.frame, &h.conversion, &h.image, nullptr));
}

uint64_t convertPushed(const Call& call, const Memory& memory, HostCall& h) {
  const Acquired stream;
  Random random(call.seed + 23);
  vistrel_frame frame = h.frame;
  frame.samples = nullptr, frame.size = 0;
  const int32_t begun = vistrel_stream_begin(stream, &frame, &h.conversion, &h.image, nullptr);
  if (begun) return asResult(begun);
  Pusher pusher(stream, call, memory);
  for (const Rows rows : cut(random, call.imgHeight, false)) {
    if (const int32_t status = pusher.push(rows)) return asResult(status);
    if (!hasPlanes(call.format)) pusher.keep();
  }
  const bool isFinal = pusher.isKept() && pusher.finalRows() == imageHeight(call);
  return isFinal ? uint64_t{VISTREL_OK} : uint64_t{kRowsNotFinal};
}

}  // namespace vistrel::core::check
