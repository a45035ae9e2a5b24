// Calibration of rows at every level, against the formula.
#include "samples/calibrate.h"

#include <random>

#include "tests/levels.h"
#include "tests/samples/guarded.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Calibrate);

using Row = std::vector<uint16_t>;

uint64_t calibrated(uint64_t s, uint64_t dark, uint64_t black, uint64_t flat, uint64_t fullScale) {
  const uint64_t v = s > dark + black ? s - dark - black : 0;
  return std::min((v * flat + 2048) / 4096, fullScale);
}

template <class T>
std::vector<T> model(const std::vector<T>& row, const Row& dark, const Row& flat,
                     const CalibrationRow& by) {
  std::vector<T> result;
  for (size_t i = 0; i < row.size(); ++i)
    result.push_back(static_cast<T>(calibrated(row[i], by.dark ? dark[i] : 0,
                                               i % 2 ? by.black.odd : by.black.even,
                                               by.flat ? flat[i] : 4096, by.fullScale)));
  return result;
}

// Rows of up to 600 samples: several tiles.
template <class T>
void expectCalibrated() {
  std::mt19937 random(3);
  const auto below = [&](uint32_t end) { return static_cast<uint32_t>(random() % end); };
  GuardedInput darkMemory, flatMemory;
  for (size_t round = 0; round < 200; ++round) {
    const size_t n = round < 40 ? round : below(600);
    std::vector<T> row(n);
    Row dark(n), flat(n);
    for (size_t i = 0; i < n; ++i) {
      row[i] = static_cast<T>(random());
      dark[i] = static_cast<uint16_t>(below(round % 5 ? 100 : 65536));
      flat[i] = static_cast<uint16_t>(below(round % 7 ? 9000 : 65536));
    }
    const Edge edge = round % 2 ? Edge::end : Edge::start;
    const CalibrationRow by{
        round % 3 == 1 ? nullptr : darkMemory.place(dark.data(), 2 * n, edge, round % 3),
        round % 4 == 1 ? nullptr : flatMemory.place(flat.data(), 2 * n, edge, round % 4),
        {below(300), below(20)},
        (1u << (8 * sizeof(T) - below(3))) - 1};
    std::vector<T> result = row;
    calibrateRow(result.data(), n, by);
    ASSERT_EQ(result, model(row, dark, flat, by)) << round;
  }
}

TEST_P(Calibrate, IsTheFormulaForBytes) { expectCalibrated<uint8_t>(); }
TEST_P(Calibrate, IsTheFormulaForWideSamples) { expectCalibrated<uint16_t>(); }

}  // namespace
}  // namespace vistrel::core::test
