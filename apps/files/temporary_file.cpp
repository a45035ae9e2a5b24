#include "apps/files/temporary_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace vistrel::app {

struct TemporaryFile::Entry {
  std::atomic<bool> taken, made;  // entry in use; file exists
  char name[PATH_MAX];            // constant while the file exists
};

TemporaryFile::Entry TemporaryFile::entries_[256];

namespace {

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);
std::atomic<bool> g_terminating;
std::atomic<int> g_creating;  // threads that are creating a file

// While a thread creates a file, terminating signals are blocked on it, and handlers on other
// threads wait.
class CreationGuard {
 public:
  CreationGuard() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kTerminatingSignals) sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, &before_);
    ++g_creating;
    if (g_terminating) {
      --g_creating;
      for (;;) pause();
    }
  }
  ~CreationGuard() {
    --g_creating;
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  CreationGuard(const CreationGuard&) = delete;
  CreationGuard& operator=(const CreationGuard&) = delete;

 private:
  sigset_t before_;
};

}  // namespace

TemporaryFile::TemporaryFile(const std::string& folder) {
  const std::string name = folder + ".vistrel-XXXXXX";
  errno = name.size() < PATH_MAX ? EMFILE : ENAMETOOLONG;
  if (name.size() >= PATH_MAX) return;
  for (Entry& entry : entries_) {
    if (entry.taken.exchange(true)) continue;
    entry_ = &entry;
    const CreationGuard guard;
    do {
      std::memcpy(entry.name, name.c_str(), name.size() + 1);
      descriptor_ = mkstemp(entry.name);
    } while (descriptor_ >= 0 && !lock());
    entry.made = descriptor_ >= 0;
    return;
  }
}

// Locks the file for the lifetime of this object, which marks it as in use. Returns false if
// another process took the file for a stale one before it was locked, and removed it.
bool TemporaryFile::lock() {
  lock_ = fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
  struct stat status {};
  if (lock_ < 0 || flock(lock_, LOCK_EX) != 0 || fstat(lock_, &status) != 0) return true;
  if (status.st_nlink > 0) return true;
  close(lock_);
  close(descriptor_);
  return false;
}

TemporaryFile::~TemporaryFile() {
  if (!entry_) return;
  if (lock_ >= 0) close(lock_);
  if (entry_->made) unlink(entry_->name);
  entry_->made = false;
  entry_->taken = false;
}

bool TemporaryFile::rename(const char* name) {
  if (std::rename(entry_->name, name) != 0) return false;
  entry_->made = false;
  return true;
}

void removeStaleFiles(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> files(opendir(folder.c_str()), closedir);
  if (!files) return;
  while (const dirent* entry = readdir(files.get())) {
    const std::string name = entry->d_name;
    if (!name.starts_with(".vistrel-") || name.size() != sizeof ".vistrel-XXXXXX" - 1) continue;
    const int file = openat(dirfd(files.get()), name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0) continue;
    if (flock(file, LOCK_EX | LOCK_NB) == 0) unlinkat(dirfd(files.get()), name.c_str(), 0);
    close(file);
  }
}

void removeAllTemporaryFiles() {
  g_terminating = true;
  while (g_creating) {
  }
  for (const TemporaryFile::Entry& entry : TemporaryFile::entries_)
    if (entry.made) unlink(entry.name);
}

}  // namespace vistrel::app
