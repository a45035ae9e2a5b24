#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include "apps/error.h"
#include "apps/input/headerless_reader.h"
#include "apps/input/readers.h"

namespace vistrel::app {
namespace {

[[noreturn]] void throwArrivalError() {
  throwError(kInputOutput, "cannot be read: {}", std::strerror(errno));
}

// Read at once: memory grows with what arrives, whatever the size of a frame.
constexpr size_t kPiece = 1 << 22;

// Reads frames as soon as they are complete, each once.
class ArrivingReader : public HeaderlessReader {
 public:
  ArrivingReader(int descriptor, const InputOptions& options)
      : HeaderlessReader(options), descriptor_(descriptor) {
    description_.frames = std::numeric_limits<uint64_t>::max();
  }
  ~ArrivingReader() override { close(descriptor_); }
  ArrivingReader(const ArrivingReader&) = delete;
  ArrivingReader& operator=(const ArrivingReader&) = delete;

  bool has(uint64_t n) override {
    while (arrived_ <= n && !ended_) arrive();
    return n < arrived_;
  }

  void read(uint64_t n, void* to) override {
    if (!has(n)) throwError(kRejected, "it ends after {} frames", arrived_);
    unpackTo(to);
  }

 private:
  // The next frame, after what lies before it: bytes to skip, or the last frame's padding.
  void arrive() {
    uint64_t before = arrived_ ? distance() - layout_.bytes : skip_;
    while (before && !ended_) before -= take(std::min<uint64_t>(before, kPiece));
    const size_t taken = ended_ ? 0 : take(layout_.bytes);
    if (taken == layout_.bytes) return void(++arrived_);
    description_.trailing = taken;
    if (!arrived_) throwTooShort("input", fmt::format("its {} bytes", skip_ - before + taken));
  }

  // Fills the first `count` bytes; returns how many there are before the end.
  size_t take(size_t count) {
    size_t done = 0;
    while (done < count) {
      const size_t end = std::min(count, done + kPiece);
      bytes_.resize(std::max(bytes_.size(), end));
      const ssize_t n = ::read(descriptor_, bytes_.data() + done, end - done);
      if (n < 0 && errno != EINTR) throwArrivalError();
      if (n == 0) {
        ended_ = true;
        break;
      }
      if (n > 0) done += static_cast<size_t>(n);
    }
    return done;
  }

  int descriptor_;
  uint64_t arrived_ = 0;
  bool ended_ = false;
};

}  // namespace

bool isArriving(const std::filesystem::path& path, const InputOptions& options) {
  if (!options.arriving || !options.size) return false;
  struct stat status {};
  const bool isThere =
      (path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status)) == 0;
  return isThere && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

std::unique_ptr<Reader> openArriving(const std::filesystem::path& path,
                                     const InputOptions& options) {
  const int descriptor = path == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                     : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) throwArrivalError();
  return std::make_unique<ArrivingReader>(descriptor, options);
}

}  // namespace vistrel::app
