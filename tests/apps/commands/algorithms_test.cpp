// Which algorithm is for what: against the library's table, and against the figures in docs/.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

std::string page(const std::string& name) {
  std::ifstream file(VISTREL_DOCS "/" + name);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

nlohmann::json algorithms() {
  return nlohmann::json::parse(Scratch().vistrel("algorithms --json").out);
}

// The number that the expression finds in the text.
double numberAt(const std::string& text, const std::string& expression) {
  std::smatch found;
  EXPECT_TRUE(std::regex_search(text, found, std::regex(expression))) << expression;
  return found.empty() ? 0 : std::stod(found[1]);
}

TEST(Algorithms, AreThoseOfTheLibrary) {
  size_t i = 0;
  for (const auto& row : algorithms()) {
    const vistrel_algorithm* const a = vistrel_algorithm_at(i++);
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(row["name"], a->name);
    EXPECT_EQ(row["max_bits"], a->max_bits);
    EXPECT_EQ(row["min_size"], a->min_size);
    EXPECT_FALSE(row["use"].get<std::string>().empty());
  }
  EXPECT_EQ(vistrel_algorithm_at(i), nullptr);
}

TEST(Algorithms, HaveTheFiguresOfThePages) {
  const std::string scores = page("program.md");
  std::string times = page("performance.md");
  times.resize(times.find("avx512  "));
  const std::map<std::string, std::string> benchNames{{"vng", "variable-gradients"}};
  for (const auto& row : algorithms()) {
    const std::string name = row["name"];
    EXPECT_EQ(row["cpsnr_db"], numberAt(scores, fmt::format("\\| `{}` \\| ([0-9.]+) \\|", name)));
    const auto other = benchNames.find(name);
    EXPECT_EQ(row["ns_per_pixel"],
              numberAt(times, fmt::format("\n{}16/BGR24/1x1 +12MP +([0-9.]+) ",
                                          other == benchNames.end() ? name : other->second)));
  }
}

TEST(Algorithms, AreATableOnThePageAboutChoosing) {
  const std::string table = Scratch().vistrel("algorithms").out;
  EXPECT_NE(page("choosing.md").find("```\n" + table + "```\n"), std::string::npos) << table;
}

}  // namespace
}  // namespace vistrel
