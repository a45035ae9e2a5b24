#include "apps/algorithm.h"

#include <charconv>
#include <optional>

#include "apps/failure.h"

namespace vistrel::app {
namespace {

constexpr uint32_t kMostThreshold = 255;
constexpr uint32_t kDefaultThreshold = 0;

bool hasThreshold(const vistrel_algorithm& a) { return a.code == DM_EDGE_EX; }

std::optional<Algorithm> find(std::string_view name) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    if (name == a->name) return algorithmAt(i);
  return {};
}

}  // namespace

Algorithm algorithmAt(size_t index) {
  const vistrel_algorithm* row = vistrel_algorithm_at(index);
  return {row, hasThreshold(*row) ? kDefaultThreshold : 0};
}

std::string algorithmNames() {
  std::string names;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    names.append(i ? ", " : "").append(a->name);
  return names;
}

Algorithm parseAlgorithm(std::string_view option, std::string_view text) {
  const size_t colon = text.find(':');
  auto algorithm = find(text.substr(0, colon));
  if (!algorithm) fail(kUsage, "{} {}: {} are allowed", option, text, algorithmNames());
  if (colon == text.npos) return *algorithm;
  if (!hasThreshold(*algorithm->row))
    fail(kUsage, "{} {}: {} takes no threshold, only edge does", option, text,
         algorithm->row->name);
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(&text[colon] + 1, end, algorithm->threshold);
  if (error != std::errc{} || rest != end || algorithm->threshold > kMostThreshold)
    fail(kUsage, "{} {}: a threshold of 0 to {} is allowed", option, text, kMostThreshold);
  return *algorithm;
}

}  // namespace vistrel::app
