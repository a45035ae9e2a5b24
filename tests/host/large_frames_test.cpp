// The largest frames: sparse memory, of which only some samples are not 0.
#include <sys/mman.h>

#include <cstdio>

#include "tests/host/random_case.h"
#include "tests/host/rejection.h"
#include "tests/resident.h"

namespace vistrel {
namespace {

// Zeros that take memory when they are written to.
class SparseMemory {
 public:
  explicit SparseMemory(size_t bytes)
      : bytes_(bytes),
        begin_(static_cast<uint8_t*>(mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0))) {
    if (begin_ == MAP_FAILED) throw std::bad_alloc();
  }
  ~SparseMemory() { munmap(begin_, bytes_); }
  SparseMemory(const SparseMemory&) = delete;
  SparseMemory& operator=(const SparseMemory&) = delete;

  uint8_t* begin() const { return begin_; }
  void forget() { madvise(begin_, bytes_, MADV_DONTNEED); }

 private:
  size_t bytes_;
  uint8_t* begin_;
};

constexpr uint32_t kSide = 30000, kPatch = 64;

// Patches of noise on zeros, at even coordinates: at the corners, and where 31 and 32 bits of the
// image's bytes end.
constexpr std::pair<uint32_t, uint32_t> kPatches[] = {
    {0, 0},         {kSide - kPatch, 0}, {0, kSide - kPatch}, {kSide - kPatch, kSide - kPatch},
    {12000, 23860}, {15000, 15000}};

uint32_t noise(uint32_t x, uint32_t y) { return (x * 73856093 ^ y * 19349663) * 0x5BD1E995 >> 24; }

// The image of a frame of zeros with one patch in the middle, or at those sides of it where it
// touches the large one's.
Image imageAround(uint32_t patchX, uint32_t patchY) {
  constexpr uint32_t kAround = 16;
  const uint32_t x = patchX ? patchX - kAround : 0, y = patchY ? patchY - kAround : 0;
  const uint32_t width = std::min(patchX + kPatch + kAround, kSide) - x;
  const uint32_t height = std::min(patchY + kPatch + kAround, kSide) - y;
  const auto samples = samplesOf<uint8_t>(width, height, [&](uint32_t column, uint32_t row) {
    const uint32_t inX = column + x - patchX, inY = row + y - patchY;
    return inX < kPatch && inY < kPatch ? noise(column + x, row + y) : 0;
  });
  const vistrel_frame frame = frameOf(samples, width, height, VISTREL_RGGB);
  return convert(frame, defaultConversion(frame));
}

TEST(LargeFrames, AreConvertedRight) {
  if (VISTREL_SANITIZED) GTEST_SKIP() << "shadow memory is not sparse";
  SparseMemory samples(size_t{kSide} * kSide), pixels(size_t{kSide} * kSide * 3);
  for (const auto& [x, y] : kPatches)
    for (uint32_t row = y; row < y + kPatch; ++row)
      for (uint32_t column = x; column < x + kPatch; ++column)
        samples.begin()[size_t{row} * kSide + column] = static_cast<uint8_t>(noise(column, row));
  const vistrel_frame frame{
      samples.begin(), size_t{kSide} * kSide, 0, kSide, kSide, 1, 8, VISTREL_RGGB, 0, 0, {}};
  const vistrel_conversion conversion = defaultConversion(frame);
  const vistrel_image image{pixels.begin(), size_t{kSide} * kSide * 3, 0, {}};
  const OwnStream stream;
  for (const auto& [x, y] : kPatches) {
    const Image wanted = imageAround(x, y);
    const uint32_t left = x ? x - 16 : 0, top = y ? y - 16 : 0, rows = wanted.layout.height;
    ASSERT_EQ(vistrel_convert_rows(stream, &frame, &conversion, &image, top, rows, nullptr),
              VISTREL_OK);
    for (uint32_t row = 0; row < rows; ++row) {
      const uint8_t* got = &pixels.begin()[(size_t{top + row} * kSide + left) * 3];
      const uint8_t* expected = &wanted.pixels[row * wanted.layout.row_bytes];
      ASSERT_TRUE(std::equal(expected, expected + wanted.layout.row_bytes, got))
          << "row " << top + row << " at " << x << ", " << y;
    }
    pixels.forget();
  }
}

TEST(LargeFrames, AboveTheLimitAreRejectedWithoutMemory) {
  const long before = test::residentKiB();
  const auto statusOf = [](uint32_t width) {
    const vistrel_frame frame{nullptr, 0, 0, width, 2, 1, 8, VISTREL_RGGB, 0, 0, {}};
    return rejectionOf(frame, defaultConversion(frame)).status;
  };
  EXPECT_EQ(statusOf(2147483392), VISTREL_OK);
  EXPECT_EQ(statusOf(2147483393), VISTREL_TOO_LARGE);
  EXPECT_LT(test::residentKiB() - before, 16 * 1024);
}

}  // namespace
}  // namespace vistrel
