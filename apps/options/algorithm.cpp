#include "apps/options/algorithm.h"

#include <fmt/ranges.h>

#include <charconv>
#include <optional>

#include "apps/error.h"
#include "apps/names/nearest_name.h"

namespace vistrel::app {
namespace {

constexpr uint32_t kMaxThreshold = 255;
constexpr uint32_t kDefaultThreshold = 0;

bool hasThreshold(const vistrel_algorithm& a) { return a.code == VISTREL_EDGE; }

std::optional<AlgorithmChoice> find(std::string_view name) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    if (isSameName(name, a->name)) return algorithmAt(i);
  return {};
}

}  // namespace

AlgorithmChoice algorithmAt(size_t index) {
  const vistrel_algorithm* row = vistrel_algorithm_at(index);
  return {row, hasThreshold(*row) ? kDefaultThreshold : 0};
}

std::vector<std::string> algorithmNames() {
  std::vector<std::string> names;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    names.push_back(a->name);
  return names;
}

std::string labelOf(const AlgorithmChoice& algorithm) {
  const std::string name = algorithm.row->name;
  return hasThreshold(*algorithm.row) ? fmt::format("{}:{}", name, algorithm.threshold) : name;
}

void addAlgorithmsOption(CLI::App& command, std::vector<AlgorithmChoice>& algorithms) {
  command
      .add_option_function<std::vector<std::string>>(
          "-a,--algorithm",
          [&algorithms](const std::vector<std::string>& texts) {
            for (const std::string& text : texts)
              algorithms.push_back(parseAlgorithm("--algorithm", text));
          },
          "Only these algorithms, in this order (all)")
      ->allow_extra_args(false)
      ->type_name("NAME[:THRESHOLD]");
}

std::vector<AlgorithmChoice> orAll(const std::vector<AlgorithmChoice>& given) {
  if (!given.empty()) return given;
  std::vector<AlgorithmChoice> all;
  for (size_t i = 0; vistrel_algorithm_at(i); ++i) all.push_back(algorithmAt(i));
  return all;
}

AlgorithmChoice parseAlgorithm(std::string_view option, std::string_view text) {
  const size_t colon = text.find(':');
  const std::string_view name = text.substr(0, colon);
  auto algorithm = find(name);
  if (!algorithm)
    throwError(kUsage, "{} {}: {} are allowed{}", option, text, fmt::join(algorithmNames(), ", "),
               nearestText(name, algorithmNames()));
  if (colon == text.npos) return *algorithm;
  if (!hasThreshold(*algorithm->row))
    throwError(kUsage, "{} {}: {} takes no threshold; only edge does", option, text,
               algorithm->row->name);
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(&text[colon] + 1, end, algorithm->threshold);
  if (error != std::errc{} || rest != end || algorithm->threshold > kMaxThreshold)
    throwError(kUsage, "{} {}: a threshold of 0 to {} is allowed", option, text, kMaxThreshold);
  return *algorithm;
}

}  // namespace vistrel::app
