#include "apps/output/atomic_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <utility>

#include "apps/failure.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

// The unfinished file's name, where a signal handler can read it; empty without one.
char g_unfinished[PATH_MAX];

void onSignal(int signal) {
  if (g_unfinished[0]) unlink(g_unfinished);
  _exit(128 + signal);
}

// The file that a link leads to, so that the link stays.
fs::path resolve(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error) ? fs::canonical(path) : path;
}

// Those of the file that is replaced, else what a new one gets.
mode_t permissions(const fs::path& path) {
  struct stat there {};
  if (stat(path.c_str(), &there) == 0) return there.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

AtomicFile::AtomicFile(const fs::path& path) : name_(path), target_(resolve(path)) {
  std::error_code error;
  if (fs::exists(target_, error) && !fs::is_regular_file(target_, error))
    failToWrite("it is not a regular file");
  const std::string name = target_.parent_path() / ".vistrel-XXXXXX";
  if (name.size() >= sizeof g_unfinished) failToWrite("the name is too long");
  std::memcpy(g_unfinished, name.c_str(), name.size() + 1);
  const int descriptor = mkstemp(g_unfinished);
  if (descriptor < 0) {
    g_unfinished[0] = 0;
    failToWrite(std::strerror(errno));
  }
  fchmod(descriptor, permissions(target_));
  stream_ = fdopen(descriptor, "wb");
}

AtomicFile::~AtomicFile() {
  if (stream_) std::fclose(stream_);
  if (g_unfinished[0]) unlink(g_unfinished);
  g_unfinished[0] = 0;
}

void AtomicFile::commit() {
  bool good = std::fflush(stream_) == 0 && fsync(fileno(stream_)) == 0;
  good = std::fclose(std::exchange(stream_, nullptr)) == 0 && good;
  if (!good || std::rename(g_unfinished, target_.c_str()) != 0) failToWrite(std::strerror(errno));
  g_unfinished[0] = 0;
}

void AtomicFile::failToWrite(const char* reason) const {
  fail(kInputOutput, "{} cannot be written: {}", name_.string(), reason);
}

void installSignalHandlers() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, onSignal);
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace vistrel::app
