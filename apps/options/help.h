// The text of --help: at most 80 columns.
#pragma once

#include <CLI/CLI.hpp>

namespace vistrel::app {

// Sets the formatter of `program` and of all commands added to it later. Options are listed in
// order, under the titles of their groups.
void setHelp(CLI::App& program);

// Puts the options that `add` adds into `group`, which --help shows as their title.
template <class Add>
void inGroup(CLI::App& command, const std::string& group, Add add) {
  const auto before = command.get_options().size();
  add();
  const auto options = command.get_options();
  for (auto i = before; i < options.size(); ++i) options[i]->group(group);
}

// For help and manual. A command with other exit statuses ends its footer with those.
constexpr const char* kExitStatuses =
    "Exit status: 0 all done, 1 some inputs failed, 2 usage, 3 all inputs rejected,\n"
    "4 a file could not be read or written, 130 interrupted";

}  // namespace vistrel::app
