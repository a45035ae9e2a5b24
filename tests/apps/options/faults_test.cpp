#include "apps/options/faults.h"

#include <gtest/gtest.h>

namespace vistrel::app {
namespace {

// What is wrong with the arguments, which CLI11 takes in reverse order.
std::string faultOf(std::vector<std::string> reversed) {
  CLI::App program;
  std::string text;
  CLI::App* command = program.add_subcommand("convert");
  command->add_option("--output", text)->type_name("OUT");
  CLI::App* group = command->add_option_group("Input");
  group->add_option("--phase", text);
  bool flag = false;
  command->add_flag("--json", flag)->disable_flag_override();
  program.add_subcommand("report")->add_option("--reference", text);
  program.add_subcommand("scene")->add_option("--phases", text);
  try {
    program.parse(std::move(reversed));
  } catch (const CLI::ParseError& error) {
    return faultText(program, error);
  }
  return {};
}

TEST(Faults, OptionsOfTheCommandAreSuggested) {
  EXPECT_EQ(faultOf({"--phases", "convert"}),
            "--phases: there is no such option; the nearest is --phase; --help lists them");
  EXPECT_EQ(faultOf({"--ouput=a=b", "convert"}),
            "--ouput=a=b: there is no such option; the nearest is --output; --help lists them");
  EXPECT_EQ(faultOf({"--brighter", "convert"}),
            "--brighter: there is no such option; --help lists them");
  EXPECT_EQ(faultOf({"--reference", "convert"}),
            "--reference: there is no such option; report takes it; --help lists them");
}

TEST(Faults, Arguments) {
  EXPECT_EQ(faultOf({"a", "b", "convert"}), "b: the command takes no such argument");
}

TEST(Faults, Values) {
  EXPECT_EQ(faultOf({"--output", "convert"}), "--output: OUT is missing");
  EXPECT_EQ(faultOf({"b", "--output", "a", "--output", "convert"}),
            "--output: it is given more than once");
  EXPECT_EQ(faultOf({"b", "--output", "convert"}), "");
  EXPECT_EQ(faultOf({"--json=5", "convert"}), "--json: it takes no value");
  EXPECT_EQ(faultOf({"--json", "convert"}), "");
}

}  // namespace
}  // namespace vistrel::app
