#include "apps/input/curve_file.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <sstream>
#include <string>

#include "apps/error.h"
#include "apps/input/frame_file.h"
#include "apps/pictures/pgm_header.h"

namespace vistrel::app {
namespace {

constexpr uint32_t kMaxValue = 255;
constexpr size_t kMaxEntries = 4096, kMaxText = 1 << 20;

uint16_t parseEntry(const std::string& word, size_t line) {
  uint32_t value = 0;
  const char* const end = word.data() + word.size();
  const auto [rest, error] = std::from_chars(word.data(), end, value);
  if (rest != end || error == std::errc::invalid_argument)
    throwError(kUsage, "line {}: {:?}: a number is expected", line, word);
  if (error != std::errc{} || value > kMaxValue)
    throwError(kUsage, "line {}: {}: 0 to {} are allowed", line, word, kMaxValue);
  return static_cast<uint16_t>(value);
}

std::vector<uint16_t> readText(std::istream& in) {
  std::vector<uint16_t> table;
  std::string line;
  for (size_t number = 1; std::getline(in, line) && table.size() <= kMaxEntries; ++number) {
    std::istringstream words(line.substr(0, line.find('#')));
    for (std::string word; words >> word;) table.push_back(parseEntry(word, number));
  }
  return table;
}

std::vector<uint16_t> readSamples(const std::filesystem::path& path) {
  std::vector<std::string> warnings;  // none that matters to a table
  FrameFile file(path, {}, warnings);
  const vistrel_frame& f = file.read();
  const size_t n = size_t{f.width} * f.height;
  std::vector<uint16_t> table(n);
  if (f.bytes_per_sample == 2)
    std::memcpy(table.data(), f.samples, 2 * n);
  else
    std::copy_n(static_cast<const uint8_t*>(f.samples), n, table.begin());
  for (size_t i = 0; i < n; ++i)
    if (table[i] > kMaxValue)
      throwError(kUsage, "entry {}: {}: 0 to {} are allowed", i, table[i], kMaxValue);
  return table;
}

std::vector<uint16_t> readTable(const std::filesystem::path& path) {
  const Source source(path);
  if (beginsPnm(source, 0, '5')) return readSamples(path);
  if (source.size() > kMaxText) throwError(kUsage, "a text of more than {} bytes", kMaxText);
  std::istringstream text(source.head(kMaxText));
  return readText(text);
}

}  // namespace

std::vector<uint16_t> readCurve(const std::filesystem::path& path) {
  std::vector<uint16_t> table;
  const Outcome outcome = attempt([&] {
    table = readTable(path);
    const size_t n = table.size();
    if (n > kMaxEntries) throwError(kUsage, "more than {} entries", kMaxEntries);
    if (n != 1024 && n != 2048 && n != 4096)
      throwError(kUsage,
                 "{} entries: 1024 are expected, one for each value of ten bits, or 2048 or 4096",
                 n);
  });
  if (outcome.status == kDone) return table;
  throw ProgramError(outcome.status == kInputOutput ? kInputOutput : kUsage,
                     "--curve " + path.string() + ": " + outcome.text);
}

}  // namespace vistrel::app
