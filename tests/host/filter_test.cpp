// Filters of finished pixels, against those of libVistrel.
#include <gtest/gtest.h>

#include <random>

#include "tests/host/rejection.h"
#include "vistrel/vistrel.h"

namespace vistrel {
namespace {

using FilterBytes = std::vector<uint8_t>;

struct FilterCase {
  const char* name;
  uint32_t format, libraryFormat, pixelBytes;
};
constexpr FilterCase kFilterCases[] = {
    {"Mono8", VISTREL_MONO8, IMG_FMT_MONO8, 1},    {"Mono16", VISTREL_MONO16, IMG_FMT_MONO16, 2},
    {"Gray8", VISTREL_GRAY8, IMG_FMT_GRAY8, 1},    {"Gray16", VISTREL_GRAY16, IMG_FMT_GRAY16, 2},
    {"Bgr24", VISTREL_BGR24, IMG_FMT_BGR24, 3},    {"Rgb24", VISTREL_RGB24, IMG_FMT_BGR24, 3},
    {"Argb32", VISTREL_ARGB32, IMG_FMT_ARGB32, 4}, {"Rgba32", VISTREL_RGBA32, IMG_FMT_ARGB32, 4},
};
void PrintTo(const FilterCase& c, std::ostream* out) { *out << c.name; }

FilterBytes randomPixels(size_t bytes) {
  std::mt19937 random(static_cast<unsigned>(bytes));
  FilterBytes pixels(bytes);
  for (uint8_t& byte : pixels) byte = static_cast<uint8_t>(random() >> 9);
  return pixels;
}

vistrel_filter_settings settingsOf(uint32_t filter) {
  return {filter, -7, {1, -2, 3, 4, -50, 6, 7, 8, 9}, {}};
}

FilterBytes filteredByTheLibrary(const FilterCase& c, const vistrel_filter_settings& k,
                                 uint32_t width, uint32_t height, FilterBytes pixels) {
  const uint32_t stream = 77;
  ImgLoadDriver();
  EXPECT_EQ(ImgInitialize(stream, width, height), 1u);
  _FLT_3X3 weighted{k.divisor, {}};
  std::copy_n(k.weights, 9, weighted.anWeights);
  const auto* fixed = reinterpret_cast<const _FLT_3X3*>(uintptr_t{k.filter - 1});
  const auto* filter = k.filter == VISTREL_FILTER_WEIGHTS ? &weighted : fixed;
  EXPECT_EQ(ImgFilter(stream, filter, c.libraryFormat, width, height, pixels.data()), 1u);
  ImgUnloadDriver();
  return pixels;
}

// Rows at a stride, one byte behind the beginning.
FilterBytes spread(const FilterBytes& pixels, size_t rowBytes, size_t stride) {
  FilterBytes result(1 + pixels.size() / rowBytes * stride, 0x5C);
  for (size_t y = 0; y < pixels.size() / rowBytes; ++y)
    std::copy_n(&pixels[y * rowBytes], rowBytes, &result[1 + y * stride]);
  return result;
}

struct HostFilter : ::testing::TestWithParam<FilterCase> {
  const FilterCase& c = GetParam();

  void expectLibrarys(const vistrel_filter_settings& k, uint32_t width, uint32_t height) {
    SCOPED_TRACE(::testing::Message() << width << 'x' << height << ", filter " << k.filter);
    const size_t rowBytes = size_t{width} * c.pixelBytes, stride = rowBytes + 5;
    FilterBytes from = randomPixels(rowBytes * height);
    const FilterBytes expected = filteredByTheLibrary(c, k, width, height, from);
    FilterBytes to(from.size());
    vistrel_picture picture{from.data(), from.size(), 0, width, height, c.format, {}};
    const vistrel_image image{to.data(), to.size(), 0, {}};
    ASSERT_EQ(vistrel_filter(&picture, &k, &image, nullptr), VISTREL_OK);
    EXPECT_EQ(to, expected);

    FilterBytes spreadOut = spread(from, rowBytes, stride);
    picture = {&spreadOut[1], spreadOut.size() - 1, stride, width, height, c.format, {}};
    const vistrel_image same{
        &spreadOut[1], spreadOut.size() - 1, static_cast<ptrdiff_t>(stride), {}};
    ASSERT_EQ(vistrel_filter(&picture, &k, &same, nullptr), VISTREL_OK);
    EXPECT_EQ(spreadOut, spread(expected, rowBytes, stride));

    picture = {from.data(), from.size(), 0, width, height, c.format, {}};
    const vistrel_image inPlace{from.data(), from.size(), static_cast<ptrdiff_t>(rowBytes), {}};
    ASSERT_EQ(vistrel_filter(&picture, &k, &inPlace, nullptr), VISTREL_OK);
    EXPECT_EQ(from, expected);
  }
};
INSTANTIATE_TEST_SUITE_P(Of, HostFilter, ::testing::ValuesIn(kFilterCases),
                         ::testing::PrintToStringParamName());

TEST_P(HostFilter, GivesThePixelsOfTheLibrary) {
  for (const uint32_t width : {5, 6, 17, 32, 67})
    for (const uint32_t height : {5, 8}) {
      expectLibrarys(settingsOf(VISTREL_FILTER_WEIGHTS), width, height);
      if (c.pixelBytes > 2) continue;
      expectLibrarys(settingsOf(VISTREL_FILTER_BOX), width, height);
      expectLibrarys(settingsOf(VISTREL_FILTER_FIVE), width, height);
    }
}

// A call with one fault.
struct FilterCall {
  FilterBytes memory = FilterBytes(400);
  vistrel_picture picture{memory.data(), 100, 0, 10, 10, VISTREL_GRAY8, {}};
  vistrel_filter_settings settings = settingsOf(VISTREL_FILTER_WEIGHTS);
  vistrel_image image{&memory[100], 100, 0, {}};

  void expect(const Rejection& rejection) const {
    vistrel_error error{};
    vistrel_filter(&picture, &settings, &image, &error);
    expectError(error, rejection);
  }
};

void expectRejected(void (*change)(FilterCall&), const Rejection& rejection) {
  FilterCall call;
  change(call);
  call.expect(rejection);
}

TEST(HostFilters, AreRejectedWithBadArguments) {
  const char* const kFormats =
      "MONO8 (0), MONO16 (1), BGR24 (2), ARGB32 (3), ARGB32_4 (4), GRAY8 (5), GRAY16 (6), "
      "RGB24 (256), BGRA32 (257), RGBA32 (258) are allowed";
  expectRejected([](FilterCall&) {}, kAccepted);
  expectRejected([](FilterCall& c) { c.settings.divisor = 0; },
                 {VISTREL_BAD_FILTER, "filter_settings.divisor", "0", "any other is allowed"});
  expectRejected([](FilterCall& c) { c.settings.filter = 3; },
                 {VISTREL_BAD_FILTER, "filter_settings.filter", "3",
                  "0 (weights), 1 (box) and 2 (five) are allowed"});
  expectRejected([](FilterCall& c) { c.settings.filter = 1, c.picture.format = VISTREL_BGR24; },
                 {VISTREL_BAD_FILTER, "filter_settings.filter", "1",
                  "it is for pixels of one channel; BGR24 has 3"});
  for (const uint32_t format : {VISTREL_BGR48, VISTREL_NV12, VISTREL_RGB24_PLANAR}) {
    FilterCall call;
    call.picture.format = format;
    call.expect({VISTREL_BAD_FORMAT, "picture.format", std::to_string(format), kFormats});
  }
  expectRejected([](FilterCall& c) { c.picture.width = 2; },
                 {VISTREL_BAD_SIZE, "picture", "2x10", "this filter needs 3x3 pixels or more"});
  expectRejected([](FilterCall& c) { c.picture.width = c.picture.height = 0; },
                 {VISTREL_BAD_SIZE, "picture", "0x0", "this filter needs 3x3 pixels or more"});
  expectRejected(
      [](FilterCall& c) { c.picture.width = 1 << 16, c.picture.height = 1 << 16; },
      {VISTREL_TOO_LARGE, "picture", "65536x65536", "it has more than 4294967295 bytes"});
  expectRejected([](FilterCall& c) { c.picture.stride = 9; },
                 {VISTREL_BAD_STRIDE, "picture.stride", "9", "a row has 10 bytes"});
  expectRejected([](FilterCall& c) { c.image.size = 99; },
                 {VISTREL_SHORT_BUFFER, "image.size", "99", "10 rows of stride 10 take 100 bytes"});
  expectRejected([](FilterCall& c) { c.image.pixels = &c.memory[99]; },
                 {VISTREL_OVERLAP, "image.pixels", "", "they overlap the picture's pixels"});
  expectRejected([](FilterCall& c) { c.picture.pixels = nullptr; }, nullPointer("picture.pixels"));
  expectRejected([](FilterCall& c) { c.settings.reserved[4] = 1; },
                 {VISTREL_BAD_RESERVED, "filter_settings.reserved[4]", "1",
                  "only 0 is allowed in this version"});
}

}  // namespace
}  // namespace vistrel
