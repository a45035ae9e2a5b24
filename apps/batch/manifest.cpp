#include "apps/batch/manifest.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>

#include "apps/error.h"
#include "apps/files/atomic_file.h"

namespace vistrel::app {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

std::string lineOf(const std::string& picture, const Entry& entry) {
  const Provenance& o = entry.provenance;
  Json json{{"output", picture}, {"input", o.input}};
  if (o.frame) json["frame"] = *o.frame;
  json["input_bytes"] = o.bytes;
  json["input_modified"] = o.modified;
  json["options"] = o.options;
  json["output_bytes"] = entry.bytes;
  json["pixels_crc32"] = fmt::format("{:08x}", entry.crc);
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::pair<std::string, Entry> parse(const std::string& line) {
  const Json json = Json::parse(line);
  Entry entry;
  Provenance& o = entry.provenance;
  o.input = json.at("input").get<std::string>();
  if (json.contains("frame")) o.frame = json.at("frame").get<uint64_t>();
  o.bytes = json.at("input_bytes").get<uint64_t>();
  o.modified = json.at("input_modified").get<int64_t>();
  o.options = json.at("options").get<std::string>();
  entry.bytes = json.at("output_bytes").get<uint64_t>();
  entry.crc =
      static_cast<uint32_t>(std::stoul(json.at("pixels_crc32").get<std::string>(), nullptr, 16));
  return {json.at("output").get<std::string>(), entry};
}

}  // namespace

Manifest::Manifest(const fs::path& path, bool readOnly) : path_(path) {
  readOnly ? checkAppendable() : openToAppend();
  load();
  if (!readOnly && ftruncate(descriptor_, static_cast<off_t>(good_)) != 0) throwWriteError();
}

Manifest::~Manifest() {
  if (descriptor_ >= 0) close(descriptor_);
}

void Manifest::openToAppend() {
  descriptor_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (descriptor_ < 0) throwWriteError();
  if (flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return;
  close(descriptor_);
  throwError(kInputOutput, "--manifest {}: another run is writing it", path_.string());
}

void Manifest::checkAppendable() const {
  checkWritable(path_);
  std::error_code error;
  if (fs::exists(path_, error) && faccessat(AT_FDCWD, path_.c_str(), W_OK, AT_EACCESS) != 0)
    throwWriteError();
}

void Manifest::load() {
  std::ifstream in(path_, std::ios::binary);
  std::string line;
  for (int number = 1; std::getline(in, line) && !in.eof(); ++number) {
    try {
      auto [picture, entry] = parse(line);
      entries_[picture] = std::move(entry);
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception&) {
      throwError(kInputOutput, "--manifest {}: line {} is not a manifest entry", path_.string(),
                 number);
    }
    good_ += line.size() + 1;
  }
}

bool Manifest::holds(const fs::path& picture, const Provenance& provenance) const {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(picture.string());
  if (found == entries_.end() || found->second.provenance != provenance) return false;
  std::error_code error;
  return fs::is_regular_file(picture, error) &&
         fs::file_size(picture, error) == found->second.bytes;
}

void Manifest::add(const fs::path& picture, const Entry& entry) {
  const std::string line = lineOf(picture.string(), entry);
  const std::lock_guard lock(mutex_);
  entries_[picture.string()] = entry;
  changed_ = true;
  const ssize_t written = write(descriptor_, line.data(), line.size());
  if (written != static_cast<ssize_t>(line.size())) throwWriteError();
}

void Manifest::finish() {
  if (!changed_) return;
  AtomicFile file(path_);
  for (const auto& [picture, entry] : entries_)
    std::fputs(lineOf(picture, entry).c_str(), file.stream());
  file.commit();
}

void Manifest::throwWriteError() const {
  throwError(kInputOutput, "--manifest {}: cannot be written: {}", path_.string(),
             std::strerror(errno));
}

}  // namespace vistrel::app
