#include "tests/check/call.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace vistrel::core::check {
namespace {

struct Field {
  const char* name;
  uint32_t Call::*member;
};

constexpr Field kFields[] = {
    {"format", &Call::format},
    {"algorithm", &Call::algorithm},
    {"bayer", &Call::bayer},
    {"binning", &Call::binning},
    {"dstBits", &Call::dstBits},
    {"lutMode", &Call::lutMode},
    {"imgWidth", &Call::imgWidth},
    {"imgHeight", &Call::imgHeight},
    {"roiX", &Call::roiX},
    {"roiY", &Call::roiY},
    {"roiWidth", &Call::roiWidth},
    {"roiHeight", &Call::roiHeight},
    {"srcBits", &Call::srcBits},
    {"skip", &Call::skip},
    {"guarded", &Call::guarded},
    {"stride", &Call::stride},
    {"shift", &Call::shift},
    {"unknown", &Call::unknown},
    {"a", &Call::a},
    {"b", &Call::b},
    {"c", &Call::c},
    {"d", &Call::d},
    {"packing", &Call::packing},
    {"sampleBytes", &Call::sampleBytes},
    {"highBits", &Call::highBits},
    {"sourceGap", &Call::sourceGap},
    {"gap", &Call::gap},
    {"upward", &Call::upward},
    {"gray", &Call::gray},
    {"threshold", &Call::threshold},
    {"truncateTo", &Call::truncateTo},
    {"edges", &Call::edges},
    {"excess", &Call::excess},
    {"stray", &Call::stray},
    {"black", &Call::black},
    {"balance", &Call::balance},
    {"threads", &Call::threads},
    {"later", &Call::later},
    {"defect", &Call::defect},
    {"white", &Call::white},
    {"means", &Call::means},
    {"orientation", &Call::orientation},
    {"calibrated", &Call::calibrated},
    {"finished", &Call::finished},
    {"pattern", &Call::pattern},
    {"seed", &Call::seed},
    {"place", &Call::place},
};

constexpr const char* kNext = "+";

uint32_t number(const std::string& word, const std::string& digits) {
  size_t read = 0;
  unsigned long value = 0;
  try {
    value = std::stoul(digits, &read, 0);
  } catch (const std::exception&) {
    read = 0;
  }
  if (read == 0 || read != digits.size() || value > UINT32_MAX)
    throw std::invalid_argument(fmt::format("'{}': expected a number from 0 to 4294967295", word));
  return static_cast<uint32_t>(value);
}

void readArgument(Call& call, const std::string& word) {
  const size_t equals = word.find('=');
  const std::string name = word.substr(0, equals);
  const auto field = std::find_if(std::begin(kFields), std::end(kFields),
                                  [&](const Field& f) { return name == f.name; });
  if (equals == std::string::npos || field == std::end(kFields))
    throw std::invalid_argument(fmt::format("'{}': no such argument", word));
  call.*field->member = number(word, word.substr(equals + 1));
}

}  // namespace

std::string text(const Call& call) {
  std::string line = call.subject;
  for (const Field& field : kFields)
    if (call.*field.member) line += fmt::format(" {}={}", field.name, call.*field.member);
  return line;
}

std::string text(const Case& calls) {
  std::string line;
  for (const Call& call : calls)
    line += line.empty() ? text(call) : fmt::format(" {} {}", kNext, text(call));
  return line;
}

Case readCase(const std::string& line) {
  Case calls;
  std::istringstream words(line);
  for (std::string word; words >> word;) {
    if (calls.empty() || word == kNext) {
      calls.emplace_back();
      if (word == kNext) words >> word;
      calls.back().subject = word;
    } else {
      readArgument(calls.back(), word);
    }
  }
  if (calls.empty()) throw std::invalid_argument("a case names at least one function");
  return calls;
}

}  // namespace vistrel::core::check
