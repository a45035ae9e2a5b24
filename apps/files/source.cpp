#include "apps/files/source.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "apps/error.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void throwReadError() {
  throwError(kInputOutput, "cannot be read: {}", std::strerror(errno));
}

File opened(const fs::path& path) {
  checkIsFile(path);
  File file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) throwReadError();
  return file;
}

struct stat statusOf(std::FILE* file) {
  struct stat status {};
  if (fstat(fileno(file), &status) != 0) throwReadError();
  return status;
}

File copied(int from) {
  File file(std::tmpfile(), std::fclose);
  std::vector<char> part(1 << 16);
  for (ssize_t n; (n = ::read(from, part.data(), part.size())) != 0;) {
    if (n < 0) throwReadError();
    if (!file || std::fwrite(part.data(), 1, static_cast<size_t>(n), file.get()) == 0)
      throwError(kInputOutput, "standard input cannot be kept in {}: {}", P_tmpdir,
                 std::strerror(errno));
  }
  if (!file || std::fflush(file.get()) != 0)
    throwError(kInputOutput, "standard input cannot be kept in {}: {}", P_tmpdir,
               std::strerror(errno));
  return file;
}

File standardInput() {
  const int descriptor = dup(STDIN_FILENO);
  if (descriptor < 0) throwReadError();
  File input(fdopen(descriptor, "rb"), std::fclose);
  if (!input) throwReadError();
  if (S_ISREG(statusOf(input.get()).st_mode)) return input;
  File copy = copied(descriptor);
  if (dup2(fileno(copy.get()), STDIN_FILENO) < 0)
    throwReadError();  // so that it can be opened again
  return copy;
}

}  // namespace

void checkIsFile(const fs::path& path) {
  std::error_code error;
  const auto status = fs::status(path, error);
  if (!fs::exists(status)) throwError(kInputOutput, "cannot be read: {}", error.message());
  if (!fs::is_regular_file(status)) throwError(kInputOutput, "it is not a regular file");
}

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
