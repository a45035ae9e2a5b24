#include "apps/rejection.h"

#include <fmt/format.h>

#include <string_view>

namespace vistrel::app {
namespace {

// The arguments that a user can set, by an option or in a file. No memory is needed to look them
// up.
constexpr struct {
  std::string_view argument, option;
} kCommonNames[] = {
    {"frame.bits", "--bits"},
    {"frame.phase", "--phase"},
    {"frame.samples", "sample"},
    {"packed.bits", "--bits"},
    {"packed.packing", "--pixfmt"},
    {"packed.stride", "--stride"},
    {"packed", "--size"},
    {"conversion.algorithm", "--algorithm"},
    {"conversion.threshold", "--algorithm"},
    {"conversion.region", "--roi"},
    {"conversion.binning", "--bin"},
    {"conversion.bin_mode", "--bin-means"},
    {"conversion.white", "--white"},
    {"conversion.orientation", "--orient"},
    {"conversion.format", "--format"},
    {"conversion.gray", "--gray"},
    {"conversion.reduction", "--window"},
    {"conversion.truncate_to", "--depth"},
    {"conversion.table_entries", "--curve"},
    {"conversion.black[0]", "--black"},
    {"conversion.white_balance", "--wb"},
    {"conversion.edges", "--edges"},
};

std::string sentence(std::string_view option, std::string_view value, const Error& error) {
  const char* const between = option.ends_with('=') || option.ends_with(':') ? "" : " ";
  return fmt::format("{}{}{}: {}", option, between, value.empty() ? error.value() : value,
                     error.reason());
}

}  // namespace

std::string textOf(const Error& error, const OptionNames& names) {
  for (const OptionName& n : names)
    if (n.argument == error.argument())
      return sentence(n.option, n.value, error) + (n.hint.empty() ? "" : "; " + n.hint);
  for (const auto& [argument, option] : kCommonNames)
    if (argument == error.argument()) return sentence(option, "", error);
  return error.what();
}

}  // namespace vistrel::app
