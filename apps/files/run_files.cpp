#include "apps/files/run_files.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

#include "apps/error.h"
#include "apps/files/atomic_file.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> fileAt(const fs::path& path) {
  struct stat status {};
  if ((path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status)) != 0) return {};
  return fmt::format("{}:{}", status.st_dev, status.st_ino);
}

}  // namespace

void RunFiles::addInput(const fs::path& path) { addExisting(path, "the input " + path.string()); }

void RunFiles::addInputs(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) addInput(path);
}

void RunFiles::addRead(const std::string& option, const fs::path& path) {
  addExisting(path, option + " " + path.string());
}

// A file that doesn't exist cannot be overwritten.
void RunFiles::addExisting(const fs::path& path, const std::string& name) {
  if (const auto file = fileAt(path)) uses_.emplace(*file, Use{name, ""});
}

void RunFiles::addWritten(const std::string& option, const fs::path& path,
                          const std::string& input) {
  if (isStandardOutput(path)) return;
  const std::string name = option + " " + path.string();
  const auto file = fileAt(path);
  const auto [there, isNew] = uses_.emplace(file ? *file : placeOf(path), Use{name, input});
  if (isNew) return;
  const Use& other = there->second;
  if (!input.empty() && !other.input.empty())
    throwError(kUsage, "{}: both {} and {} would be written there", name, other.input, input);
  throwError(kUsage, "{}: it is the same file as {}", name, other.name);
}

// The place where a file that doesn't exist would be created.
std::string RunFiles::placeOf(const fs::path& path) {
  return canonicalFolder(path.parent_path()) + "/" + path.filename().string();
}

const std::string& RunFiles::canonicalFolder(const fs::path& folder) {
  const auto [there, isNew] = folders_.try_emplace(folder);
  if (!isNew) return there->second;
  std::error_code error;
  const fs::path canonical = fs::canonical(folder.empty() ? "." : folder, error);
  return there->second = error ? folder.string() : canonical.string();
}

}  // namespace vistrel::app
