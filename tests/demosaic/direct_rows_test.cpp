// Pixels that an algorithm storesDirectly, against those that the output makes of its rows.
#include "demosaic/direct_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "demosaic/algorithms.h"
#include "output/direct_output.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

constexpr int kHeight = 7;
constexpr DirectFormat kAll[] = {DirectFormat::three, DirectFormat::alphaLast,
                                 DirectFormat::alphaFirst, DirectFormat::luma};

template <class T>
DemosaicJob<T> jobOf(RowSource<T>& source, unsigned phase, int width, bool redFirst) {
  const core::Mosaic mosaic = core::Mosaic::ofPhase(phase);
  return {.source = source,
          .mosaic = mosaic,
          .columns = width,
          .height = kHeight,
          .roi = {0, 0, width, kHeight},
          .rows = {0, kHeight},
          .order = redFirst ? mosaic.exchanged() : mosaic,
          .bits = 8 * sizeof(T)};
}

template <class T>
void run(const DemosaicJob<T>& job) {
  withArena([&](Arena& arena) {
    core::RowProcess<T>* const demosaic = bilinear<T>().make(job, arena);
    if (demosaic) demosaic->advance(demosaic->last());
  });
}

// A pixel of samples, in the order that they have, as bytes of the format.
void store(DirectFormat format, const unsigned (&s)[3], std::vector<uint8_t>& bytes) {
  if (format == DirectFormat::luma) {
    bytes.push_back(static_cast<uint8_t>((114 * s[0] + 587 * s[1] + 299 * s[2] + 500) / 1000));
    return;
  }
  if (format == DirectFormat::alphaFirst) bytes.push_back(255);
  for (unsigned sample : s) bytes.push_back(static_cast<uint8_t>(sample));
  if (format == DirectFormat::alphaLast) bytes.push_back(255);
}

template <class T>
std::vector<T> frameOf(int width, unsigned seed) {
  return noise<T>(static_cast<size_t>(width) * kHeight, sizeof(T) == 1 ? 255 : 4095, seed);
}

// Samples of the algorithm's rows, reduced.
template <class T>
std::vector<unsigned> reducedSamples(RowSource<T>& source, unsigned phase, int width, bool redFirst,
                                     unsigned shift) {
  std::vector<T> plain(static_cast<size_t>(3 * width * kHeight));
  PlainImage<T> image(plain.data(), 3 * width);
  auto job = jobOf<T>(source, phase, width, redFirst);
  job.image = &image;
  run(job);
  std::vector<unsigned> reduced;
  for (const T sample : plain) reduced.push_back(std::min(unsigned{sample} >> shift, 255u));
  return reduced;
}

template <class T>
void expectDirect(int width, unsigned phase, unsigned shift, DirectFormat format) {
  const auto frame = frameOf<T>(width, phase + 5);
  PlainRows<T> source(frame.data(), width, kHeight);
  const bool redFirst = format != DirectFormat::luma && phase % 2 == 1;
  const auto samples = reducedSamples<T>(source, phase, width, redFirst, shift);
  std::vector<uint8_t> expected;
  for (size_t i = 0; i < samples.size(); i += 3)
    store(format, {samples[i], samples[i + 1], samples[i + 2]}, expected);

  for (const bool bypasses : {false, true}) {
    const size_t rowBytes = bytesOf(format) * static_cast<size_t>(width);
    std::vector<uint8_t> bytes(rowBytes * kHeight + 1, 7);
    withArena([&](Arena& arena) {
      DirectOutput output({bytes.data(), static_cast<ptrdiff_t>(rowBytes), bypasses}, rowBytes, 0,
                          0, arena);
      auto job = jobOf<T>(source, phase, width, redFirst);
      job.direct.emplace(DirectJob{output, format, shift, 0, static_cast<size_t>(width)});
      core::RowProcess<T>* const demosaic = bilinear<T>().make(job, arena);
      if (demosaic) demosaic->advance(demosaic->last());
    });
    EXPECT_EQ(bytes.back(), 7) << "behind the last row";
    bytes.pop_back();
    EXPECT_TRUE(bytes == expected) << width << " columns, phase " << phase << ", shift " << shift
                                   << ", format " << static_cast<int>(format);
  }
}

// Luma and pairs of chroma, from whoever makes the rows.
template <class Make>
std::vector<uint8_t> imageOfYcc420(int width, Make make) {
  const auto columns = static_cast<size_t>(width);
  std::vector<uint8_t> bytes(columns * (kHeight + (kHeight + 1) / 2) + 1, 7);
  uint8_t* const chroma = bytes.data() + columns * kHeight;
  withArena([&](Arena& arena) {
    Ycc420Rows rows({{bytes.data(), width, false}, {{chroma, width, false}, {}}, true}, columns,
                    kHeight, arena);
    make(rows, arena);
  });
  return bytes;
}

template <class T>
void expectDirectYcc420(int width, unsigned phase, unsigned shift) {
  const auto columns = static_cast<size_t>(width);
  const auto frame = frameOf<T>(width, phase + 9);
  PlainRows<T> source(frame.data(), width, kHeight);
  const auto samples = reducedSamples<T>(source, phase, width, false, shift);
  const std::vector<uint8_t> bgr(samples.begin(), samples.end());
  const auto expected = imageOfYcc420(width, [&](Ycc420Rows& rows, Arena& arena) {
    if (arena.counts()) return;
    for (size_t y = 0; y < kHeight; ++y) {
      rows.begin(y);
      rows.append(&bgr[3 * columns * y], columns);
      rows.end();
    }
  });
  const auto direct = imageOfYcc420(width, [&](Ycc420Rows& rows, Arena& arena) {
    DirectYcc420 output(rows, columns, 0, 0, arena);
    auto job = jobOf<T>(source, phase, width, false);
    job.direct.emplace(DirectJob{output, DirectFormat::ycc420, shift, 0, columns});
    core::RowProcess<T>* const demosaic = bilinear<T>().make(job, arena);
    if (demosaic) demosaic->advance(demosaic->last());
  });
  EXPECT_TRUE(direct == expected) << width << " columns, phase " << phase << ", shift " << shift;
}

VISTREL_LEVEL_SUITE(DirectRows);

TEST_P(DirectRows, EqualWhatTheOutputMakes) {
  if (!bilinear<uint8_t>().storesDirectly()) GTEST_SKIP() << "this level leaves it to the output";
  for (int width : {2, 3, 17, 63, 64, 65, 127, 128, 129, 300})
    for (unsigned phase = 0; phase < 4; ++phase)
      for (DirectFormat format : kAll) {
        expectDirect<uint8_t>(width, phase, 0, format);
        for (unsigned shift : {4u, 3u, 2u}) expectDirect<uint16_t>(width, phase, shift, format);
      }
}

// All widths are even.
TEST_P(DirectRows, OfLumaAndChromaEqualWhatTheOutputMakes) {
  if (!bilinear<uint8_t>().storesDirectly()) GTEST_SKIP() << "this level leaves it to the output";
  for (int width : {2, 4, 18, 62, 64, 66, 126, 128, 130, 300})
    for (unsigned phase = 0; phase < 4; ++phase) {
      expectDirectYcc420<uint8_t>(width, phase, 0);
      for (unsigned shift : {4u, 3u, 2u}) expectDirectYcc420<uint16_t>(width, phase, shift);
    }
}

}  // namespace
}  // namespace vistrel::core::test
