#include "apps/files/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "apps/error.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void throwWriteErrorTo(const fs::path& path, const char* reason) {
  throwError(kInputOutput, "{} cannot be written: {}",
             path == "-" ? "standard output" : path.string(), reason);
}

// Resolves links, so that a link survives.
fs::path targetOf(const fs::path& path) {
  std::error_code error;
  const fs::path target = fs::exists(path, error) ? fs::canonical(path) : path;
  if (fs::exists(target, error) && !fs::is_regular_file(target, error))
    throwWriteErrorTo(path, "it is not a regular file");
  return target;
}

mode_t permissionsOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// The permissions of the file to be replaced, or those of a new file.
mode_t permissions(const fs::path& path) {
  static const mode_t ofNewFiles =
      permissionsOfNewFiles();  // once, since all threads share the mask
  struct stat there {};
  return stat(path.c_str(), &there) == 0 ? there.st_mode & 07777 : ofNewFiles;
}

bool writeAll(int to, const char* bytes, size_t count) {
  while (count) {
    const ssize_t n = ::write(to, bytes, count);
    if (n < 0) return false;
    bytes += n;
    count -= static_cast<size_t>(n);
  }
  return true;
}

}  // namespace

bool isStandardOutput(const fs::path& path) {
  const std::string& name = path.native();
  return name == "-" || name.ends_with(":-");
}

AtomicFile::AtomicFile(const fs::path& path) : name_(path), target_(path) {
  if (isStandardOutput(path)) {
    stream_ = std::tmpfile();
    if (!stream_) throwWriteError(std::strerror(errno));
    return;
  }
  target_ = targetOf(path);
  const int descriptor = temporary_.emplace((target_.parent_path() / "").string()).descriptor();
  if (descriptor < 0) throwWriteError(std::strerror(errno));
  fchmod(descriptor, permissions(target_));
  stream_ = fdopen(descriptor, "w+b");
  if (!stream_) throwWriteError(std::strerror(errno));
}

AtomicFile::~AtomicFile() {
  if (stream_) std::fclose(stream_);
}

void AtomicFile::write(const void* bytes, size_t count) {
  if (std::fwrite(bytes, 1, count, stream_) != count) throwWriteError(std::strerror(errno));
}

void AtomicFile::commit() {
  if (!temporary_) return copyToStandardOutput();
  // Only the stream remembers an earlier write that failed.
  bool good = !std::ferror(stream_) && std::fflush(stream_) == 0 && fsync(fileno(stream_)) == 0;
  good = std::fclose(std::exchange(stream_, nullptr)) == 0 && good;
  if (!good || !temporary_->rename(target_.c_str())) throwWriteError(std::strerror(errno));
}

void AtomicFile::copyToStandardOutput() {
  if (std::ferror(stream_)) throwWriteError(std::strerror(errno));  // rewinding clears the error
  std::rewind(stream_);
  std::vector<char> part(1 << 16);
  for (size_t n; (n = std::fread(part.data(), 1, part.size(), stream_)) > 0;)
    if (!writeAll(STDOUT_FILENO, part.data(), n)) throwWriteError(std::strerror(errno));
  if (std::ferror(stream_)) throwWriteError(std::strerror(errno));
}

void AtomicFile::throwWriteError(const char* reason) const { throwWriteErrorTo(name_, reason); }

void checkWritable(const fs::path& path) {
  if (isStandardOutput(path)) return;
  fs::path folder = targetOf(path).parent_path();
  std::error_code error;
  while (!folder.empty() && !fs::exists(folder, error)) folder = folder.parent_path();
  if (!folder.empty()) folder /= "";
  if (faccessat(AT_FDCWD, folder.empty() ? "." : folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
    throwWriteErrorTo(path, std::strerror(errno));
}

}  // namespace vistrel::app
