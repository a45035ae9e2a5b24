// The texts of --help: at most 80 columns.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// For `program` and all commands that are added to it afterwards. Options stand under the titles of
// their groups, in order.
void setHelp(CLI::App& program);

// Puts the options that `add` adds into the group, so that --help shows them under its name.
template <class Add>
void inGroup(CLI::App& command, const std::string& group, Add add) {
  const auto before = command.get_options().size();
  add();
  const auto options = command.get_options();
  for (auto i = before; i < options.size(); ++i) options[i]->group(group);
}

// The program's, for help and manual. A command that ends its footer with others has those.
constexpr const char* kExitStatuses =
    "Exit status: 0 all done, 1 some inputs failed, 2 usage, 3 all inputs rejected,\n"
    "4 a file could not be read or written, 130 interrupted";

}  // namespace vistrel::app
