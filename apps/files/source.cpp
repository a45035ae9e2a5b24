#include "apps/files/source.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <utility>

#include "apps/error.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void throwReadError() {
  throwError(kInputOutput, "cannot be read: {}", std::strerror(errno));
}

struct stat statusOf(std::FILE* file) {
  struct stat status {};
  if (fstat(fileno(file), &status) != 0) throwReadError();
  return status;
}

File duplicate(int descriptor) {
  const int other = dup(descriptor);
  if (other < 0) throwReadError();
  File file(fdopen(other, "rb"), std::fclose);
  if (!file) throwReadError();
  return file;
}

File copied(int from) {
  const auto throwKeepError = [] {
    throwError(kInputOutput, "its content cannot be kept in {}: {}", P_tmpdir,
               std::strerror(errno));
  };
  File file(std::tmpfile(), std::fclose);
  std::vector<char> part(1 << 16);
  for (ssize_t n; (n = ::read(from, part.data(), part.size())) != 0;) {
    if (n < 0) throwReadError();
    if (!file || std::fwrite(part.data(), 1, static_cast<size_t>(n), file.get()) == 0)
      throwKeepError();
  }
  if (!file || std::fflush(file.get()) != 0) throwKeepError();
  return file;
}

// The content of a pipe can be read only once: a file without a name keeps it until the program
// ends. `open` returns the pipe if it hasn't been read yet.
template <class Open>
File contentOf(const struct stat& pipe, Open open) {
  static std::mutex mutex;
  static std::map<std::pair<dev_t, ino_t>, File> contents;
  const std::lock_guard lock(mutex);
  const std::pair key(pipe.st_dev, pipe.st_ino);
  auto there = contents.find(key);
  if (there == contents.end()) there = contents.emplace(key, copied(fileno(open().get()))).first;
  return duplicate(fileno(there->second.get()));
}

File standardInput() {
  File input = duplicate(STDIN_FILENO);
  const struct stat status = statusOf(input.get());
  if (S_ISREG(status.st_mode)) return input;
  return contentOf(status, [&input] { return std::move(input); });
}

File opened(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) throwReadError();
  const auto open = [&path] {
    File file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) throwReadError();
    return file;
  };
  if (S_ISREG(status.st_mode)) return open();
  if (S_ISFIFO(status.st_mode)) return contentOf(status, open);
  throwError(kInputOutput, "it is neither a regular file nor a pipe");
}

}  // namespace

Source::Source(const fs::path& path)
    : path_(path), file_(path == "-" ? standardInput() : opened(path)) {
  size_ = static_cast<uint64_t>(statusOf(file_.get()).st_size);
}

size_t Source::readSome(uint64_t at, void* to, size_t count) const noexcept {
  if (at >= size_) return 0;
  size_t done = 0;
  while (done < count) {
    const ssize_t n = pread(fileno(file_.get()), static_cast<char*>(to) + done, count - done,
                            static_cast<off_t>(at + done));
    if (n <= 0) break;
    done += static_cast<size_t>(n);
  }
  return done;
}

void Source::read(uint64_t at, void* to, size_t count) const {
  errno = 0;
  if (readSome(at, to, count) == count) return;
  if (errno) throwReadError();
  throwError(kInputOutput, "cannot be read: it ends early");
}

std::string Source::head(size_t count) const {
  std::string bytes(std::min<uint64_t>(count, size_), 0);
  bytes.resize(readSome(0, bytes.data(), bytes.size()));
  return bytes;
}

std::vector<uint8_t> Source::all() const {
  std::vector<uint8_t> bytes(size_);
  read(0, bytes.data(), bytes.size());
  return bytes;
}

void swapBytes(void* samples, size_t count) {
  auto* bytes = static_cast<uint8_t*>(samples);
  for (size_t i = 0; i < count; ++i) std::swap(bytes[2 * i], bytes[2 * i + 1]);
}

}  // namespace vistrel::app
