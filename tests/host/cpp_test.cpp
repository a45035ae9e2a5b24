// The C++ interface: results, exceptions, spans, owners.
#include <gmock/gmock.h>

#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "tests/host/frames.h"

namespace vistrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

struct Cpp : ::testing::Test {
  std::vector<uint8_t> samples = std::vector<uint8_t>(6 * 4, 90);
  vistrel_frame frame = frameOf(samples, 6, 4, VISTREL_RGGB);
  vistrel_conversion good = defaultConversion(frame), bad = good;
  static constexpr const char* kText = "conversion.binning 7: 1 to 4 are allowed";

  Cpp() { bad.binning = 7; }

  template <class T>
  static void expectRejection(const Result<T>& result) {
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().status(), VISTREL_BAD_BINNING);
    EXPECT_STREQ(result.error().what(), kText);
    EXPECT_STREQ(result.error().argument(), "conversion.binning");
    EXPECT_STREQ(result.error().value(), "7");
    EXPECT_STREQ(result.error().reason(), "1 to 4 are allowed");
    EXPECT_THROW(result.value(), Error);
  }
  template <class Work>
  static void expectThrow(Work work) {
    try {
      work();
      ADD_FAILURE() << "nothing was thrown";
    } catch (const std::exception& error) {
      EXPECT_STREQ(error.what(), kText);
    }
  }
};

TEST_F(Cpp, TwinsGiveTheSame) {
  const Result<Image> image = tryConvert(frame, good);
  ASSERT_TRUE(image);
  EXPECT_THAT(image->pixels, Each(90));
  EXPECT_EQ(convert(frame, good).pixels, image->pixels);
  EXPECT_EQ((*image).layout.bytes, layoutOf(frame, good).bytes);
  EXPECT_EQ(layoutOf(frame, good).bytes, 72u);
  EXPECT_EQ(image.value().pixels.size(), 72u);
}

TEST_F(Cpp, TwinsRejectTheSame) {
  expectRejection(tryConvert(frame, bad));
  expectRejection(tryLayoutOf(frame, bad));
  uint8_t pixels[72];
  expectRejection(tryConvertInto(frame, bad, pixels));
  Stream stream = Stream::acquire();
  expectRejection(stream.tryConvert(frame, bad));
  expectRejection(stream.tryConvertInto(frame, bad, pixels));
  expectThrow([&] { convert(frame, bad); });
  expectThrow([&] { layoutOf(frame, bad); });
  expectThrow([&] { convertInto(frame, bad, pixels); });
  expectThrow([&] { stream.convert(frame, bad); });
  expectThrow([&] { stream.convertInto(frame, bad, pixels); });
}

TEST_F(Cpp, ResultsHaveTheUsualMembers) {
  const auto image = tryConvert(frame, good), none = tryConvert(frame, bad);
  EXPECT_TRUE(image.has_value());
  EXPECT_FALSE(none.has_value());
  const Image other{{}, {1, 2}};
  EXPECT_EQ(image.value_or(other).pixels.size(), 72u);
  EXPECT_THAT(none.value_or(other).pixels, ElementsAre(1, 2));
  EXPECT_EQ(tryParsePhase("x").value_or(99), 99u);
  EXPECT_EQ(tryParsePhase("mono").value_or(99), uint32_t{VISTREL_MONO});
  EXPECT_DEATH(image.error(), "");
}

// The second conversion fits the memory of the first.
TEST_F(Cpp, ConvertsIntoAnImageThatExists) {
  Stream stream = Stream::acquire();
  Image image;
  EXPECT_EQ(convertInto(frame, good, image).bytes, 72u);
  EXPECT_THAT(image.pixels, Each(90));
  const uint8_t* const memory = image.pixels.data();
  vistrel_conversion smaller = good;
  smaller.binning = 2;
  EXPECT_EQ(stream.convertInto(frame, smaller, image).bytes, 18u);
  EXPECT_THAT(image.pixels, Each(180));
  EXPECT_EQ(image.pixels.size(), 18u);
  EXPECT_EQ(image.layout.width, 3u);
  ASSERT_TRUE(stream.tryConvertInto(frame, good, image));
  EXPECT_EQ(image.pixels.data(), memory);
  expectRejection(tryConvertInto(frame, bad, image));
  expectRejection(stream.tryConvertInto(frame, bad, image));
  expectThrow([&] { convertInto(frame, bad, image); });
  EXPECT_THAT(image.pixels, Each(90)) << "a bad description leaves it alone";
}

TEST(CppBytes, StayUninitialisedOnlyIfNobodySetsThem) {
  Bytes bytes(3, 7);
  bytes.insert(bytes.end(), {1, 2});
  bytes.resize(7, 9);
  const Bytes copy = bytes;
  EXPECT_THAT(copy, ElementsAre(7, 7, 7, 1, 2, 9, 9));
  bytes.clear();
  bytes.resize(5);  // the same memory
  EXPECT_THAT(bytes, ElementsAre(7, 7, 7, 1, 2));
}

// `into` converts `frame` into the caller's pixels.
template <class Into>
void expectTheCallersRows(Into into) {
  std::vector<uint8_t> pixels(4 * 20, 77);
  EXPECT_EQ(into(pixels, 20).value().row_bytes, 18u);
  for (size_t i = 0; i < pixels.size(); ++i) EXPECT_EQ(pixels[i], i % 20 < 18 ? 90 : 77) << i;
  const auto little = into(Span<uint8_t>(pixels.data(), 71), 0);
  ASSERT_FALSE(little);
  EXPECT_EQ(little.error().status(), VISTREL_SHORT_BUFFER);
  for (const ptrdiff_t stride : {ptrdiff_t{-20}, ptrdiff_t{-21}, PTRDIFF_MIN, ptrdiff_t{-5}})
    EXPECT_FALSE(into(Span<uint8_t>(pixels.data(), 77), stride)) << stride;
}

TEST_F(Cpp, ConvertsIntoTheCallersRows) {
  expectTheCallersRows([this](Span<uint8_t> pixels, ptrdiff_t stride) {
    return tryConvertInto(frame, good, pixels, stride);
  });
  Stream stream = Stream::acquire();
  expectTheCallersRows([&](Span<uint8_t> pixels, ptrdiff_t stride) {
    return stream.tryConvertInto(frame, good, pixels, stride);
  });
  std::vector<uint8_t> pixels(72);
  EXPECT_EQ(Stream::acquire().convertInto(frame, good, pixels).bytes, 72u);
  EXPECT_THAT(pixels, Each(90));
}

TEST_F(Cpp, FramesHaveTheSizeOfTheirSpan) {
  samples.pop_back();
  frame = frameOf(samples, 6, 4, VISTREL_RGGB);
  EXPECT_EQ(tryConvert(frame, good).error().status(), VISTREL_SHORT_BUFFER);
  const std::array<uint16_t, 4> sixteenBits{1, 2, 3, 4};
  EXPECT_EQ(frameOf(sixteenBits, 2, 2, 10, VISTREL_MONO).size, 8u);
}

TEST(CppSpan, RefersToWhatItIsMadeOf) {
  int array[] = {1, 2, 3};
  std::vector<int> vector{4, 5};
  Span<int> writable(array);
  writable[1] = 9;
  EXPECT_THAT(array, ElementsAre(1, 9, 3));
  Span<const int> readable = vector;
  EXPECT_EQ(readable.data(), vector.data());
  EXPECT_THAT(std::vector<int>(readable.begin(), readable.end()), ElementsAre(4, 5));
  readable = writable;
  EXPECT_EQ(readable.size(), 3u);
  EXPECT_EQ(Span<int>().size(), 0u);
  static_assert(!std::is_constructible_v<Span<int>, const std::vector<int>&>);
  static_assert(!std::is_constructible_v<Span<int>, std::vector<char>&>);
}

// References that would dangle do not compile. Views may be temporary.
template <class Samples>
concept MakesAFrame = requires(Samples&& s) {
  frameOf(static_cast<Samples&&>(s), 4, 4, 0);
};
static_assert(MakesAFrame<std::vector<uint8_t>&>);
static_assert(MakesAFrame<const std::vector<uint8_t>&>);
static_assert(MakesAFrame<const uint8_t (&)[16]>);
static_assert(MakesAFrame<Span<uint8_t>>);
static_assert(MakesAFrame<Span<const uint8_t>>);
static_assert(MakesAFrame<std::span<uint8_t>>);
static_assert(MakesAFrame<const std::span<const uint8_t>>);
static_assert(!MakesAFrame<std::vector<uint8_t>>);
static_assert(!MakesAFrame<const std::vector<uint8_t>>);
static_assert(!MakesAFrame<std::array<uint8_t, 16>>);
static_assert(!MakesAFrame<std::array<const uint8_t, 16>>);
static_assert(!MakesAFrame<const uint8_t*>);
static_assert(!MakesAFrame<uint8_t (&&)[16]>);
static_assert(std::is_constructible_v<Span<const char>, std::string_view>);
static_assert(!std::is_constructible_v<Span<const char>, std::string>);

template <class Owner>
concept Lends = requires(Owner&& owner) {
  static_cast<Owner&&>(owner).get();
};
static_assert(Lends<OwnedFrame&>);
static_assert(Lends<const OwnedFrame&>);
static_assert(!Lends<OwnedFrame>);
static_assert(!Lends<const OwnedFrame>);

static_assert(std::is_same_v<decltype(*std::declval<Result<Image>>()), Image>);
static_assert(std::is_same_v<decltype(std::declval<Result<Image>>().value()), Image>);
static_assert(std::is_same_v<decltype(std::declval<Result<Image>>().error()), Error>);

TEST_F(Cpp, StreamsAreReleasedByTheirOwners) {
  {
    std::vector<Stream> all;
    for (int i = 0; i < VISTREL_MAX_STREAMS; ++i) all.push_back(Stream::acquire(VISTREL_NO_WAIT));
    const auto another = Stream::tryAcquire(VISTREL_NO_WAIT);
    ASSERT_FALSE(another);
    EXPECT_EQ(another.error().status(), VISTREL_NO_STREAM);
    Stream moved = std::move(all.back());
    EXPECT_THAT(moved.convert(frame, good).pixels, Each(90));
    EXPECT_EQ(all.back().tryConvert(frame, good).error().status(), VISTREL_NULL_POINTER);
    all.back() = std::move(moved);
  }
  EXPECT_TRUE(Stream::tryAcquire(VISTREL_NO_WAIT));
}

uint32_t streamsInUse() {
  std::vector<Stream> others;
  while (auto stream = Stream::tryAcquire(VISTREL_NO_WAIT)) others.push_back(*std::move(stream));
  return VISTREL_MAX_STREAMS - static_cast<uint32_t>(others.size());
}

TEST_F(Cpp, StreamsAreReleasedByAssignmentAndByHand) {
  Stream a = Stream::acquire(), b = Stream::acquire(), none;
  EXPECT_TRUE(a && b && !none);
  EXPECT_EQ(none.handle(), nullptr);
  EXPECT_EQ(streamsInUse(), 2u);
  vistrel_stream* const handle = b.handle();
  a = std::move(b);
  EXPECT_EQ(streamsInUse(), 1u);
  EXPECT_EQ(a.handle(), handle);
  EXPECT_FALSE(b);
  Stream& same = a;
  a = std::move(same);
  EXPECT_EQ(a.handle(), handle);
  a.trim();
  EXPECT_THAT(a.convert(frame, good).pixels, Each(90));
  a.release();
  a.release();
  a.trim();
  EXPECT_FALSE(a);
  EXPECT_EQ(streamsInUse(), 0u);
}

TEST_F(Cpp, MeasuresAndParses) {
  const auto plain = samplesOf<uint8_t>(8, 6, plainColour(VISTREL_BGGR, 50, 100, 25));
  frame = frameOf(plain, 8, 6, VISTREL_BGGR);
  EXPECT_THAT(measureGains(frame, good), ElementsAre(16384, 4096, 8192));
  EXPECT_EQ(parsePhase("GBRG"), uint32_t{VISTREL_GBRG});
  EXPECT_EQ(tryParsePhase("gr").error().status(), VISTREL_BAD_PHASE);
  EXPECT_THROW(parsePhase("gr"), Error);
  EXPECT_EQ(parseFormat("rgb48"), uint32_t{VISTREL_RGB48});
  EXPECT_EQ(tryParseFormat("rgb").error().status(), VISTREL_BAD_FORMAT);
  EXPECT_EQ(parseAlgorithm("AHD"), uint32_t{VISTREL_AHD});
  EXPECT_EQ(tryParseAlgorithm("").error().status(), VISTREL_BAD_ALGORITHM);
  EXPECT_EQ(parsePacking("mipi"), uint32_t{VISTREL_PACKING_MIPI});
  EXPECT_EQ(tryParsePacking("raw").error().status(), VISTREL_BAD_PACKING);
  frame.phase = VISTREL_MONO;
  EXPECT_FALSE(tryMeasureGains(frame, good));
}

// 0x2AB and 0x155 as in packings_test.cpp.
TEST(CppUnpack, ReturnsAFrameThatOwnsItsSamples) {
  const uint8_t bytes[] = {0xAA, 0x13, 0x55};
  OwnedFrame frame = unpack(packedOf(bytes, 2, 1, VISTREL_PACKING_GIGE, 10), VISTREL_MONO);
  const OwnedFrame copy = frame;
  frame = OwnedFrame();
  vistrel_conversion c = defaultConversion(copy.get());
  c.format = VISTREL_MONO16;
  EXPECT_THAT(samples16Of(convert(copy.get(), c)), ElementsAre(0x2AB, 0x155));
  const auto rejected = tryUnpack(packedOf(bytes, 3, 1, VISTREL_PACKING_GIGE, 10), VISTREL_MONO);
  ASSERT_FALSE(rejected);
  EXPECT_EQ(rejected.error().status(), VISTREL_SHORT_BUFFER);
}

TEST(CppUnpack, RejectsAnUnknownPhase) {
  const uint8_t bytes[] = {1, 2, 3, 4};
  const auto packed = packedOf(bytes, 4, 1, VISTREL_PACKING_BYTES, 8);
  EXPECT_TRUE(tryUnpack(packed, VISTREL_GBRG)) << "a row is no mosaic yet, and may become one";
  const auto rejected = tryUnpack(packed, 99);
  ASSERT_FALSE(rejected);
  EXPECT_EQ(rejected.error().status(), VISTREL_BAD_PHASE);
  EXPECT_STREQ(
      rejected.error().what(),
      "frame.phase 99: grbg (0), bggr (1), rggb (2), gbrg (3), mono (4), bgr (256) are allowed");
}

TEST(CppUnpack, UnpacksIntoTheCallersMemory) {
  const uint8_t bytes[] = {0xAA, 0x13, 0x55};
  vistrel_packed packed = packedOf(bytes, 2, 1, VISTREL_PACKING_GIGE, 10);
  EXPECT_EQ(packedLayoutOf(packed).unpacked_bytes, 4u);
  uint8_t samples[5] = {9, 9, 9, 9, 9};
  EXPECT_EQ(unpackInto(packed, samples).bytes, 3u);
  uint16_t unpacked[2];
  std::memcpy(unpacked, samples, 4);
  EXPECT_THAT(unpacked, ElementsAre(0x2AB, 0x155));
  EXPECT_EQ(samples[4], 9);
  EXPECT_EQ(tryUnpackInto(packed, {samples, 3}).error().status(), VISTREL_SHORT_BUFFER);
  packed.bits = 11;
  EXPECT_EQ(tryPackedLayoutOf(packed).error().status(), VISTREL_BAD_BITS);
  EXPECT_EQ(tryUnpackInto(packed, samples).error().status(), VISTREL_BAD_BITS);
  EXPECT_THROW(packedLayoutOf(packed), Error);
  EXPECT_THROW(unpackInto(packed, samples), Error);
}

TEST(CppLevel, ChangesOrIsRejected) {
  const size_t best = vistrel_level();
  EXPECT_EQ(setLevel(0), best);
  EXPECT_EQ(setLevel(best), 0u);
  EXPECT_EQ(vistrel_level(), best);
  EXPECT_EQ(trySetLevel(99).error().status(), VISTREL_BAD_LEVEL);
  EXPECT_THROW(setLevel(99), Error);
}

}  // namespace
}  // namespace vistrel
