// Every packing at every level, against bits taken one by one.
#include "samples/unpack.h"

#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/samples/guarded.h"
#include "tests/samples/places.h"

namespace vistrel::core::test {
namespace {

using namespace packed;

VISTREL_LEVEL_SUITE(Unpack);

struct Format {
  Packing packing;
  unsigned bits;
  PlaceOfBit place;
};
constexpr Format kFormats[kPackings] = {
    {Packing::bytes, 8, inBytes},
    {Packing::little, 16, inLittle},
    {Packing::big, 16, inBig},
    {Packing::pfnc10, 10, inPfnc<10>},
    {Packing::pfnc12, 12, inPfnc<12>},
    {Packing::pfnc14, 14, inPfnc<14>},
    {Packing::gige10, 10, inGige<10>},
    {Packing::gige12, 12, inGige<12>},
    {Packing::mipi10, 10, inMipi<10, 4>},
    {Packing::mipi12, 12, inMipi<12, 2>},
    {Packing::mipi14, 14, inMipi<14, 4>},
};

std::vector<uint16_t> model(const Format& format, const std::vector<uint8_t>& row, size_t samples) {
  std::vector<uint16_t> unpacked(samples);
  for (size_t i = 0; i < samples; ++i)
    for (size_t b = 0; b < format.bits; ++b) {
      const size_t place = format.place(i, b, samples);
      unpacked[i] = static_cast<uint16_t>(unpacked[i] | (row.at(place / 8) >> place % 8 & 1) << b);
    }
  return unpacked;
}

std::vector<uint16_t> samplesIn(const Format& format, const GuardedOutput& output) {
  if (format.packing != Packing::bytes) return output.samples<uint16_t>();
  const auto bytes = output.samples<uint8_t>();
  return {bytes.begin(), bytes.end()};
}

// Any bytes: where a packing leaves bits unused, they are set too.
std::vector<uint8_t> randomRow(const Format& format, size_t samples) {
  return noise<uint8_t>(packedBytes(format.packing, samples), 255, unsigned(samples));
}

TEST_P(Unpack, RowsOfAnyLength) {
  GuardedInput input;
  GuardedOutput output;
  for (const Format& format : kFormats)
    for (const size_t n : lengths())
      for (const Edge edge : {Edge::start, Edge::end}) {
        const auto row = randomRow(format, n);
        const uint8_t* const from = input.place(row.data(), row.size(), edge);
        uint8_t* const to = output.place(n * sampleBytes(format.packing), edge);
        unpackRowOf(format.packing)(from, n, to);
        ASSERT_EQ(samplesIn(format, output), model(format, row, n))
            << n << " samples of packing " << int(format.packing);
      }
}

TEST_P(Unpack, AtAnyAlignment) {
  GuardedInput input;
  GuardedOutput output;
  for (const Format& format : kFormats)
    for (size_t skipped = 0; skipped < 64; ++skipped) {
      const size_t n = 8 * (17 + skipped % 5) + skipped % 7;
      const auto row = randomRow(format, n);
      const uint8_t* const from = input.place(row.data(), row.size(), Edge::start, skipped);
      uint8_t* const to =
          output.place(n * sampleBytes(format.packing), Edge::start, 7 * skipped % 64);
      unpackRowOf(format.packing)(from, n, to);
      ASSERT_EQ(samplesIn(format, output), model(format, row, n)) << int(format.packing);
    }
}

TEST_P(Unpack, PartsOfRows) {
  GuardedInput input;
  GuardedOutput output;
  for (const Format& format : kFormats)
    for (size_t n = 1; n < 120; n += n < 20 ? 1 : 9) {
      const auto row = randomRow(format, n);
      const auto whole = model(format, row, n);
      const uint8_t* const from = input.place(row.data(), row.size(), Edge::end);
      for (size_t begin = 0; begin <= n; ++begin)
        for (size_t end = begin; end <= n; end += end < begin + 20 ? 1 : 5) {
          uint8_t* const to = output.place((end - begin) * sampleBytes(format.packing), Edge::end);
          unpackPart(format.packing, from, n, begin, end, to);
          ASSERT_EQ(samplesIn(format, output),
                    std::vector(whole.begin() + ptrdiff_t(begin), whole.begin() + ptrdiff_t(end)))
              << begin << " to " << end << " of " << n << ", packing " << int(format.packing);
        }
    }
}

TEST(PackedBytes, AreRoundedUp) {
  EXPECT_EQ(packedBytes(Packing::pfnc10, 8), 10u);
  EXPECT_EQ(packedBytes(Packing::pfnc10, 7), 9u);
  EXPECT_EQ(packedBytes(Packing::gige10, 3), 5u);
  EXPECT_EQ(packedBytes(Packing::mipi14, 9), 16u);
  EXPECT_EQ(packedBytes(Packing::big, 9), 18u);
}

}  // namespace
}  // namespace vistrel::core::test
