// The C++ interface: frames of every kind, tables, filters, names.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

// 0x2AB and 0x155 as in packings_test.cpp.
TEST(CppFrames, MayBePacked) {
  const uint8_t bytes[] = {0xAA, 0x13, 0x55};
  const vistrel_frame frame = frameOf(bytes, 2, 1, VISTREL_PACKING_GIGE, 10, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  EXPECT_THAT(samples16Of(convert(frame, c)), ElementsAre(0x2AB, 0x155));
  EXPECT_EQ(layoutOf(frame, c).frame_bytes, 3u);
  const vistrel_frame longer = frameOf(bytes, 3, 1, VISTREL_PACKING_GIGE, 10, VISTREL_MONO);
  EXPECT_EQ(tryConvert(longer, c).error().status(), VISTREL_SHORT_BUFFER);
  const vistrel_frame none = frameOf(bytes, 2, 1, VISTREL_PACKING_GIGE, 14, VISTREL_MONO);
  EXPECT_EQ(tryConvert(none, c).error().status(), VISTREL_BAD_BITS);
}

// Not what width and height ask for.
TEST(CppFrames, HaveTheSizeOfTheirArray) {
  const uint8_t bytes[24] = {};
  const uint16_t words[24] = {};
  EXPECT_EQ(frameOf(bytes, 64, 64, VISTREL_RGGB).size, 24u);
  EXPECT_EQ(frameOf(words, 64, 64, 12, VISTREL_RGGB).size, 48u);
  EXPECT_EQ(packedOf(bytes, 64, 64, VISTREL_PACKING_BYTES, 8).size, 24u);
  EXPECT_EQ(pictureOf(bytes, 64, 64, VISTREL_GRAY8).size, 24u);
  const vistrel_frame frame = frameOf(bytes, 64, 64, VISTREL_RGGB);
  EXPECT_EQ(tryConvert(frame, defaultConversion(frame)).error().status(), VISTREL_SHORT_BUFFER);
}

TEST(CppFrames, MayBePackedAsBytes) {
  const uint8_t bytes[] = {1, 2, 3, 4};
  const vistrel_frame frame = frameOf(bytes, 2, 2, VISTREL_PACKING_BYTES, 8, VISTREL_MONO);
  EXPECT_THAT(convert(frame, defaultConversion(frame)).pixels, ElementsAre(1, 2, 3, 4));
}

TEST(CppFrames, MayBeBigEndian) {
  const uint8_t bytes[] = {0x0A, 0xBC, 0x01, 0x23};
  const vistrel_frame frame = frameOf(bytes, 2, 1, VISTREL_PACKING_BIG, 12, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_MONO16;
  EXPECT_THAT(samples16Of(convert(frame, c)), ElementsAre(0xABC, 0x123));
}

TEST(CppFrames, MayBeBytesOfAnyType) {
  const std::vector<std::byte> bytes(4 * 4, std::byte{90});
  const std::byte array[] = {std::byte{0xAA}, std::byte{0x13}, std::byte{0x55}};
  const vistrel_frame frame = frameOf(bytes, 4, 4, VISTREL_RGGB);
  EXPECT_EQ(frame.size, 16u);
  EXPECT_THAT(convert(frame, defaultConversion(frame)).pixels, Each(90));
  EXPECT_EQ(frameOf({}, 4, 4, VISTREL_RGGB).size, 0u);
  const OwnedFrame unpacked = unpack(packedOf(array, 2, 1, VISTREL_PACKING_GIGE, 10), VISTREL_MONO);
  uint16_t samples[2];
  std::memcpy(samples, unpacked.get().samples, sizeof samples);
  EXPECT_THAT(samples, ElementsAre(0x2AB, 0x155));
  EXPECT_EQ(pictureOf(array, 3, 1, VISTREL_GRAY8).size, 3u);
}

// A packed description counts pixels of one sample; as many would be a third of the frame's.
TEST(CppFrames, AreNotUnpackedAsFinishedPixels) {
  const uint8_t bytes[6] = {};
  const auto frame = tryUnpack(packedOf(bytes, 6, 1, VISTREL_PACKING_BYTES, 8), VISTREL_BGR);
  ASSERT_FALSE(frame);
  EXPECT_EQ(frame.error().status(), VISTREL_BAD_PHASE);
  EXPECT_STREQ(frame.error().argument(), "phase");
  EXPECT_STREQ(frame.error().value(), "bgr");
  EXPECT_STREQ(frame.error().what(),
               "phase bgr: the pixels of a vistrel_packed have one sample each");
}

TEST(CppFrames, AreConvertedIntoSamplesOrBytesOfAnyType) {
  const uint16_t samples[] = {5, 700, 1023, 0};
  const vistrel_frame frame = frameOf(samples, 4, 1, 10, VISTREL_MONO);
  vistrel_conversion c = defaultConversion(frame);
  std::vector<std::byte> bytes(4);
  convertInto(frame, c, bytes);
  EXPECT_THAT(bytes, ElementsAre(std::byte{1}, std::byte{175}, std::byte{255}, std::byte{0}));
  c.format = VISTREL_MONO16;
  std::vector<uint16_t> words(4);
  EXPECT_EQ(tryConvertInto(frame, c, bytesOf(words)).value().bytes, 8u);
  EXPECT_THAT(words, ElementsAreArray(samples));
}

TEST(CppFrames, MayBeFinishedPixels) {
  const uint8_t bgr[] = {1, 2, 3, 4, 5, 6};
  const vistrel_frame frame = frameOf(bgr, 2, 1, VISTREL_BGR);
  vistrel_conversion c = defaultConversion(frame);
  c.format = VISTREL_RGB24;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(3, 2, 1, 6, 5, 4));
  c.format = VISTREL_RGB24_PLANAR;
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(3, 6, 2, 5, 1, 4));
}

TEST(CppFrames, MayPromiseALaterReader) {
  const std::vector<uint8_t> samples(8 * 6, 90);
  const vistrel_frame frame = frameOf(samples, 8, 6, VISTREL_RGGB);
  vistrel_conversion c = defaultConversion(frame);
  c.destination = VISTREL_READ_LATER;
  EXPECT_THAT(convert(frame, c).pixels, Each(90));
  c.destination = 2;
  EXPECT_EQ(tryConvert(frame, c).error().status(), VISTREL_BAD_DESTINATION);
}

TEST(CppTables, ReduceSamples) {
  const uint16_t samples[] = {0, 5, 1022, 1023};
  const vistrel_frame frame = frameOf(samples, 4, 1, 10, VISTREL_MONO);
  std::vector<uint16_t> table(1024, 7);
  table[5] = 200, table[1023] = 1;
  vistrel_conversion c = defaultConversion(frame);
  setTable(c, table);
  EXPECT_EQ(c.reduction, uint32_t{VISTREL_TABLE});
  EXPECT_THAT(convert(frame, c).pixels, ElementsAre(7, 200, 7, 1));
  table.pop_back();
  setTable(c, table);
  EXPECT_EQ(tryConvert(frame, c).error().status(), VISTREL_BAD_TABLE);
  setTable(c, {table.data(), size_t{1024} << 32});
  EXPECT_EQ(tryConvert(frame, c).error().status(), VISTREL_BAD_TABLE) << "not cut to 0 entries";
}

// The mean of nine pixels inside; those outermost stay.
constexpr uint8_t kPixels[] = {9, 9, 9,  9,  //
                               9, 0, 18, 9,  //
                               9, 9, 9,  9};
constexpr uint8_t kMeans[] = {9, 9, 9, 9,  //
                              9, 9, 9, 9,  //
                              9, 9, 9, 9};
constexpr vistrel_filter_settings kMean{VISTREL_FILTER_WEIGHTS, 9, {1, 1, 1, 1, 1, 1, 1, 1, 1}, {}};

TEST(CppFilter, WritesIntoTheCallersRows) {
  const vistrel_picture picture = pictureOf(kPixels, 4, 3, VISTREL_GRAY8);
  std::vector<uint8_t> pixels(3 * 6, 77);
  const Span<uint8_t> filtered = filterInto(picture, kMean, pixels, 6);
  EXPECT_EQ(filtered.data(), pixels.data());
  for (size_t i = 0; i < pixels.size(); ++i) EXPECT_EQ(pixels[i], i % 6 < 4 ? 9 : 77) << i;
}

TEST(CppFilter, WorksInPlaceOnAnImage) {
  const vistrel_frame frame = frameOf(kPixels, 4, 3, VISTREL_MONO);
  Image image = convert(frame, defaultConversion(frame));
  const vistrel_picture picture = pictureOf(image, VISTREL_MONO8);
  EXPECT_EQ(tryFilterInto(picture, kMean, image.pixels).value().size(), 12u);
  EXPECT_THAT(image.pixels, ElementsAreArray(kMeans));
}

TEST(CppFilter, IsRejected) {
  const vistrel_picture picture = pictureOf(kPixels, 4, 3, VISTREL_GRAY8);
  vistrel_filter_settings settings = kMean;
  settings.divisor = 0;
  uint8_t pixels[12];
  EXPECT_EQ(tryFilterInto(picture, settings, pixels).error().status(), VISTREL_BAD_FILTER);
  EXPECT_THROW(filterInto(picture, settings, pixels), Error);
  EXPECT_EQ(tryFilterInto(picture, kMean, {pixels, 11}).error().status(), VISTREL_SHORT_BUFFER);
}

// So that a program may hold classes of two versions.
static_assert(std::is_same_v<Image, v1::Image> && std::is_same_v<Stream, v1::Stream>);
static_assert(std::is_same_v<Team, v1::Team> && std::is_same_v<Error, v1::Error>);
static_assert(std::is_same_v<PushedConversion, v1::PushedConversion>);

TEST(CppNames, AreThoseOfTheCInterface) {
  EXPECT_STREQ(phaseName(VISTREL_GBRG), "gbrg");
  EXPECT_EQ(phaseName(9), nullptr);
  EXPECT_STREQ(packingName(VISTREL_PACKING_MIPI), "MIPI");
  EXPECT_STREQ(statusName(VISTREL_BAD_FILTER), "VISTREL_BAD_FILTER");
  EXPECT_STREQ(levelName(0), "base");
  EXPECT_STREQ(formatAt(0)->name, "MONO8");
  EXPECT_EQ(formatAt(1000), nullptr);
  EXPECT_STREQ(algorithmAt(0)->name, "bilinear");
  EXPECT_EQ(algorithmAt(1000), nullptr);
  EXPECT_EQ(phaseAt(VISTREL_RGGB, 1, 0), uint32_t{VISTREL_GRBG});
  EXPECT_EQ(colourAt(VISTREL_RGGB, 1, 1), uint32_t{VISTREL_BLUE});
  EXPECT_EQ(version(), uint32_t{VISTREL_VERSION});
  EXPECT_EQ(level(), vistrel_level());
}

}  // namespace
}  // namespace vistrel
