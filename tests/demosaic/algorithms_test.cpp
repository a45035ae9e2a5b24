// The table of algorithms, against the algorithms and the tables of the documentation.
#include "demosaic/algorithms.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "tests/arena.h"
#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

using Cells = std::vector<std::string>;

// The rows of a page's table whose heading begins as given, by the name in their first cell.
std::map<std::string, Cells> tableOf(const std::string& page, const std::string& heading) {
  std::ifstream file(VISTREL_DOCS + page);
  std::map<std::string, Cells> rows;
  std::string line;
  while (std::getline(file, line) && line.rfind(heading, 0) != 0) {
  }
  while (std::getline(file, line) && line.rfind('|', 0) == 0) {
    std::istringstream text(line.substr(1));
    Cells cells;
    for (std::string cell; std::getline(text, cell, '|');)
      cells.push_back(cell.substr(1, cell.size() - 2));
    if (cells[0][0] == '`') rows[cells[0].substr(1, cells[0].size() - 2)] = cells;
  }
  return rows;
}

// How many rows an algorithm reads above or below those that it makes, whichever is more.
template <class T>
int reachOf(const AlgorithmRow& algorithm) {
  constexpr int kSide = 64;
  const RowInterval wanted{20, 30};
  const auto frame = flat<T>(kSide * kSide, 1);
  auto pixels = flat<T>(3 * kSide * kSide, 0);
  PlainRows<T> source(frame.data(), kSide, kSide);
  PlainImage<T> image(pixels.data(), 3 * kSide);
  Memory memory;
  const auto& demosaic = *algorithm.of<T>().make({.source = source,
                                                  .mosaic = Mosaic::ofPhase(BAYER_GRBG),
                                                  .columns = kSide,
                                                  .height = kSide,
                                                  .roi = {0, 0, kSide, kSide},
                                                  .rows = wanted,
                                                  .image = &image,
                                                  .bits = 8},
                                                 memory);
  return std::max(wanted.first - demosaic.first(), demosaic.last() - wanted.end);
}

TEST(Algorithms, HaveDistinctNamesAndCodes) {
  std::set<std::string> names;
  std::set<uint32_t> codes;
  for (const AlgorithmRow& a : kAlgorithms) {
    names.insert(a.name);
    codes.insert(a.code);
    EXPECT_EQ(findAlgorithm(a.code), &a);
  }
  EXPECT_EQ(names.size(), std::size(kAlgorithms));
  EXPECT_EQ(codes.size(), std::size(kAlgorithms));
  EXPECT_EQ(findAlgorithm(255), nullptr);
}

TEST(Algorithms, ReachAsFarAsTheTableOfStagesSays) {
  auto rows = tableOf("architecture.md", "| Algorithm | Stages");
  EXPECT_EQ(rows.size(), std::size(kAlgorithms));
  for (const AlgorithmRow& a : kAlgorithms) {
    ASSERT_EQ(rows.count(a.name), 1u) << a.name;
    EXPECT_EQ(rows[a.name].at(2), std::to_string(reachOf<uint8_t>(a))) << a.name;
    EXPECT_EQ(reachOf<uint16_t>(a), reachOf<uint8_t>(a)) << a.name;
  }
}

TEST(Algorithms, HaveTheLimitsThatTheProgramsPageSays) {
  auto rows = tableOf("program.md", "| Name | Method");
  EXPECT_EQ(rows.size(), std::size(kAlgorithms));
  for (const AlgorithmRow& a : kAlgorithms) {
    ASSERT_EQ(rows.count(a.name), 1u) << a.name;
    const std::string side = std::to_string(a.minSize);
    EXPECT_EQ(rows[a.name].at(2), "8 to " + std::to_string(a.maxBits)) << a.name;
    EXPECT_EQ(rows[a.name].at(3), side + "x" + side) << a.name;
  }
}

}  // namespace
}  // namespace vistrel::core::test
