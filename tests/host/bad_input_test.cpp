// Null pointers, unknown values, reserved words and impossible memory, for every function and
// every field.
#include <gtest/gtest.h>

#include <functional>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

// A good call of every function; tests spoil one thing.
struct GoodArguments {
  std::vector<uint8_t> samples = std::vector<uint8_t>(6 * 4, 9);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(6 * 4 * 4, 77);
  vistrel_frame frame = frameOf(samples, 6, 4, VISTREL_RGGB);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_layout layout{};
  vistrel_packed packed = packedOf(samples, 6, 4, VISTREL_PACKING_BYTES, 8);
  vistrel_packed_layout packedLayout{};
  vistrel_picture picture = pictureOf(samples, 6, 4, VISTREL_GRAY8);
  vistrel_filter_settings settings{VISTREL_FILTER_WEIGHTS, 1, {}, {}};
  uint32_t gains[3]{};
  Stream stream = Stream::acquire();
  vistrel_stream* handle = stream.handle();
};

using Call = std::function<int32_t(GoodArguments&, vistrel_error*)>;

struct PointerFault {
  const char* argument;
  Call call;
};

#define CALL(...) []([[maybe_unused]] GoodArguments& a, vistrel_error* e) { return __VA_ARGS__; }

const PointerFault kPointerFaults[] = {
    {"frame", CALL(vistrel_get_layout(nullptr, &a.conversion, &a.layout, e))},
    {"conversion", CALL(vistrel_get_layout(&a.frame, nullptr, &a.layout, e))},
    {"layout", CALL(vistrel_get_layout(&a.frame, &a.conversion, nullptr, e))},
    {"frame", CALL(vistrel_convert(nullptr, &a.conversion, &a.image, e))},
    {"conversion", CALL(vistrel_convert(&a.frame, nullptr, &a.image, e))},
    {"image", CALL(vistrel_convert(&a.frame, &a.conversion, nullptr, e))},
    {"frame.samples",
     CALL(a.frame.samples = nullptr, vistrel_convert(&a.frame, &a.conversion, &a.image, e))},
    {"image.pixels",
     CALL(a.image.pixels = nullptr, vistrel_convert(&a.frame, &a.conversion, &a.image, e))},
    {"stream", CALL(vistrel_stream_acquire(VISTREL_WAIT, nullptr, e))},
    {"stream", CALL(vistrel_stream_release(nullptr, e))},
    {"stream", CALL(vistrel_stream_trim(nullptr, e))},
    {"stream", CALL(vistrel_stream_convert(nullptr, &a.frame, &a.conversion, &a.image, e))},
    {"frame", CALL(vistrel_stream_convert(a.handle, nullptr, &a.conversion, &a.image, e))},
    {"conversion", CALL(vistrel_stream_convert(a.handle, &a.frame, nullptr, &a.image, e))},
    {"image", CALL(vistrel_stream_convert(a.handle, &a.frame, &a.conversion, nullptr, e))},
    {"stream", CALL(vistrel_convert_rows(nullptr, &a.frame, &a.conversion, &a.image, 0, 1, e))},
    {"frame", CALL(vistrel_convert_rows(a.handle, nullptr, &a.conversion, &a.image, 0, 1, e))},
    {"conversion", CALL(vistrel_convert_rows(a.handle, &a.frame, nullptr, &a.image, 0, 1, e))},
    {"image", CALL(vistrel_convert_rows(a.handle, &a.frame, &a.conversion, nullptr, 0, 1, e))},
    {"stream", CALL(vistrel_stream_begin(nullptr, &a.frame, &a.conversion, &a.image, e))},
    {"frame", CALL(vistrel_stream_begin(a.handle, nullptr, &a.conversion, &a.image, e))},
    {"conversion", CALL(vistrel_stream_begin(a.handle, &a.frame, nullptr, &a.image, e))},
    {"image", CALL(vistrel_stream_begin(a.handle, &a.frame, &a.conversion, nullptr, e))},
    {"stream", CALL(vistrel_stream_push(nullptr, a.samples.data(), 6, 1, nullptr, e))},
    {"samples", CALL(vistrel_stream_begin(a.handle, &a.frame, &a.conversion, &a.image, e),
                     vistrel_stream_push(a.handle, nullptr, 6, 1, nullptr, e))},
    {"stream", CALL(vistrel_stream_abort(nullptr, e))},
    {"team", CALL(vistrel_team_create(2, nullptr, e))},
    {"team", CALL(vistrel_team_destroy(nullptr, e))},
    {"frame", CALL(vistrel_measure_gains(nullptr, &a.conversion, a.gains, e))},
    {"conversion", CALL(vistrel_measure_gains(&a.frame, nullptr, a.gains, e))},
    {"gains", CALL(vistrel_measure_gains(&a.frame, &a.conversion, nullptr, e))},
    {"frame.samples",
     CALL(a.frame.samples = nullptr, vistrel_measure_gains(&a.frame, &a.conversion, a.gains, e))},
    {"packed", CALL(vistrel_get_packed_layout(nullptr, &a.packedLayout, e))},
    {"layout", CALL(vistrel_get_packed_layout(&a.packed, nullptr, e))},
    {"packed", CALL(vistrel_unpack(nullptr, a.pixels.data(), 24, e))},
    {"samples", CALL(vistrel_unpack(&a.packed, nullptr, 24, e))},
    {"packed.bytes",
     CALL(a.packed.bytes = nullptr, vistrel_unpack(&a.packed, a.pixels.data(), 24, e))},
    {"picture", CALL(vistrel_filter(nullptr, &a.settings, &a.image, e))},
    {"filter_settings", CALL(vistrel_filter(&a.picture, nullptr, &a.image, e))},
    {"image", CALL(vistrel_filter(&a.picture, &a.settings, nullptr, e))},
    {"picture.pixels",
     CALL(a.picture.pixels = nullptr, vistrel_filter(&a.picture, &a.settings, &a.image, e))},
    {"image.pixels",
     CALL(a.image.pixels = nullptr, vistrel_filter(&a.picture, &a.settings, &a.image, e))},
};

TEST(NullPointers, AreRejectedByEveryFunction) {
  for (const PointerFault& fault : kPointerFaults) {
    GoodArguments arguments;
    vistrel_error error{};
    EXPECT_EQ(fault.call(arguments, &error), VISTREL_NULL_POINTER) << fault.argument;
    expectError(error, nullPointer(fault.argument));
    EXPECT_EQ(std::count(arguments.pixels.begin(), arguments.pixels.end(), 77), 96);
  }
}

TEST(NullPointers, OfErrorsAreAllowed) {
  for (const PointerFault& fault : kPointerFaults) {
    GoodArguments arguments;
    EXPECT_EQ(fault.call(arguments, nullptr), VISTREL_NULL_POINTER) << fault.argument;
  }
}

TEST(NullPointers, AreHarmlessInDefaults) {
  vistrel_default_conversion(nullptr, nullptr);
  const vistrel_frame frame = mono(6, 4);
  vistrel_default_conversion(&frame, nullptr);
  vistrel_conversion conversion;
  std::memset(&conversion, 0xFF, sizeof conversion);
  vistrel_default_conversion(nullptr, &conversion);
  const vistrel_frame bayerFrame = bayer(6, 4);
  const vistrel_conversion expected = defaultConversion(bayerFrame);
  EXPECT_EQ(std::memcmp(&conversion, &expected, sizeof conversion), 0);
}

TEST(GoodArguments, AreAccepted) {
  GoodArguments a;
  EXPECT_EQ(vistrel_convert(&a.frame, &a.conversion, &a.image, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_filter(&a.picture, &a.settings, &a.image, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_unpack(&a.packed, a.pixels.data(), 24, nullptr), VISTREL_OK);
}

// Whether `call` rejects each reserved word of a structure, and names it.
template <size_t n, class CallWithIt>
void expectReserved(uint32_t (&words)[n], const std::string& structure, CallWithIt call) {
  for (size_t i = 0; i < n; ++i) {
    words[i] = kMax;
    vistrel_error error{};
    call(&error);
    expectError(error, {VISTREL_BAD_RESERVED, structure + ".reserved[" + std::to_string(i) + "]",
                        "4294967295", "only 0 is allowed in this version"});
    words[i] = 0;
  }
}

TEST(ReservedWords, AreRejectedInEveryStructure) {
  GoodArguments a;
  const auto convert = [&](vistrel_error* e) {
    vistrel_convert(&a.frame, &a.conversion, &a.image, e);
  };
  expectReserved(a.frame.reserved, "frame", convert);
  expectReserved(a.conversion.reserved, "conversion", convert);
  expectReserved(a.image.reserved, "image", convert);
  const auto unpack = [&](vistrel_error* e) { vistrel_unpack(&a.packed, a.pixels.data(), 24, e); };
  expectReserved(a.packed.reserved, "packed", unpack);
  const auto filter = [&](vistrel_error* e) {
    vistrel_filter(&a.picture, &a.settings, &a.image, e);
  };
  expectReserved(a.picture.reserved, "picture", filter);
  expectReserved(a.settings.reserved, "filter_settings", filter);
  expectReserved(a.image.reserved, "image", filter);
}

TEST(ReservedWords, AreWrittenAsZero) {
  GoodArguments a;
  std::memset(&a.layout, 0xFF, sizeof a.layout);
  std::memset(&a.packedLayout, 0xFF, sizeof a.packedLayout);
  ASSERT_EQ(vistrel_get_layout(&a.frame, &a.conversion, &a.layout, nullptr), VISTREL_OK);
  ASSERT_EQ(vistrel_get_packed_layout(&a.packed, &a.packedLayout, nullptr), VISTREL_OK);
  for (const uint32_t word : a.layout.reserved) EXPECT_EQ(word, 0u);
  for (const uint32_t word : a.packedLayout.reserved) EXPECT_EQ(word, 0u);
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i)
    for (const uint32_t word : f->reserved) EXPECT_EQ(word, 0u);
  for (size_t i = 0; const vistrel_algorithm* f = vistrel_algorithm_at(i); ++i)
    for (const uint32_t word : f->reserved) EXPECT_EQ(word, 0u);
}

// A field of a choice, and its values: 0 to `last`, and some others.
template <class Structure>
struct ChoiceField {
  uint32_t Structure::*field;
  const char* name;
  int32_t status;
  uint32_t last;
  std::vector<uint32_t> others;

  bool allows(uint32_t value) const {
    return value <= last || std::count(others.begin(), others.end(), value);
  }
};

const ChoiceField<vistrel_frame> kFrameChoices[] = {
    {&vistrel_frame::phase, "frame.phase", VISTREL_BAD_PHASE, VISTREL_MONO, {VISTREL_BGR}},
    {&vistrel_frame::alignment, "frame.alignment", VISTREL_BAD_ALIGNMENT, 1, {}},
    {&vistrel_frame::packing, "frame.packing", VISTREL_BAD_PACKING, VISTREL_PACKING_MIPI, {}},
};

const ChoiceField<vistrel_conversion> kConversionChoices[] = {
    {&vistrel_conversion::format,
     "conversion.format",
     VISTREL_BAD_FORMAT,
     VISTREL_BGR48,
     {256, 257, 258, 259, 260, 261, 262, 263, 264}},
    {&vistrel_conversion::algorithm,
     "conversion.algorithm",
     VISTREL_BAD_ALGORITHM,
     VISTREL_GROUPING,
     {VISTREL_AHD}},
    {&vistrel_conversion::gray, "conversion.gray", VISTREL_BAD_GRAY, 1, {}},
    {&vistrel_conversion::reduction,
     "conversion.reduction",
     VISTREL_BAD_REDUCTION,
     VISTREL_CURVE_6,
     {VISTREL_TABLE}},
    {&vistrel_conversion::excess, "conversion.excess", VISTREL_BAD_EXCESS, 1, {}},
    {&vistrel_conversion::edges, "conversion.edges", VISTREL_BAD_EDGES, 1, {}},
    {&vistrel_conversion::white_balance, "conversion.white_balance", VISTREL_BAD_BALANCE, 2, {}},
    {&vistrel_conversion::destination, "conversion.destination", VISTREL_BAD_DESTINATION, 1, {}},
};

// Gray, so that the field of that name is read; 16-bit samples allow all that frames have.
struct ChoiceArguments : GoodArguments {
  ChoiceArguments() {
    frame.bytes_per_sample = 2, frame.bits = 10;
    conversion.format = VISTREL_GRAY8;
  }
};

template <class Structure>
void expectUnknownValues(const ChoiceField<Structure>& choice, Structure& structure,
                         const ChoiceArguments& a) {
  for (uint32_t bit = 0; bit < 32; ++bit)
    for (const uint32_t value : {1u << bit, ~(1u << bit), 5 + (1u << bit)}) {
      if (choice.allows(value)) continue;
      structure.*choice.field = value;
      const vistrel_error error = rejectionOf(a.frame, a.conversion);
      EXPECT_EQ(error.status, choice.status) << choice.name << ' ' << value;
      EXPECT_STREQ(error.argument, choice.name);
      EXPECT_EQ(error.value, std::to_string(value));
      EXPECT_NE(std::string(error.reason).find(" allow"), std::string::npos) << error.reason;
    }
}

TEST(UnknownValues, AreRejectedWithWhatIsAllowed) {
  for (const auto& choice : kFrameChoices) {
    ChoiceArguments a;
    ASSERT_EQ(rejectionOf(a.frame, a.conversion).status, VISTREL_OK);
    expectUnknownValues(choice, a.frame, a);
  }
  for (const auto& choice : kConversionChoices) {
    ChoiceArguments a;
    expectUnknownValues(choice, a.conversion, a);
  }
}

// Planes: 7x5 pixels.
struct PlanesOfMemory : ::testing::TestWithParam<const vistrel_format*> {
  const std::string name = GetParam()->name;
  std::vector<uint16_t> samples = std::vector<uint16_t>(7 * 5, 9);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(500, 77);
  vistrel_frame frame = frameOf(samples, 7, 5, 10, VISTREL_RGGB);
  vistrel_conversion conversion = defaultConversion(frame);
  vistrel_image image{pixels.data() + 200, 300, 0, {}};

  PlanesOfMemory() { conversion.format = GetParam()->code; }

  void expect(const Rejection& expected) const {
    vistrel_error error{};
    vistrel_convert(&frame, &conversion, &image, &error);
    expectError(error, expected);
    if (expected.status) {
      EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 77), ptrdiff_t(pixels.size()));
    }
  }
};

TEST_P(PlanesOfMemory, HaveNoNegativeStride) {
  for (const ptrdiff_t stride :
       {-ptrdiff_t(layoutOf(frame, conversion).row_bytes), ptrdiff_t{-30}}) {
    image.stride = stride;
    expect({VISTREL_BAD_STRIDE, "image.stride", std::to_string(stride),
            "planes of " + name + " have no negative stride"});
  }
  frame.height = 2;
  conversion.region = {0, 0, 7, 1}, conversion.edges = VISTREL_EDGES_PADDED;
  expect({VISTREL_BAD_STRIDE, "image.stride", "-30",
          "planes of " + name + " have no negative stride"});
}

// 7 bytes or samples; NV12 has whole pairs.
TEST_P(PlanesOfMemory, HaveStridesOfWholeRows) {
  const size_t rowBytes = GetParam()->code == VISTREL_NV12 ? 8 : 7 * GetParam()->bytes_per_sample;
  for (const size_t stride : {rowBytes - 1, size_t{1}}) {
    image.stride = ptrdiff_t(stride);
    expect({VISTREL_BAD_STRIDE, "image.stride", std::to_string(stride),
            "a row has " + std::to_string(rowBytes) + " bytes"});
  }
  image.stride = ptrdiff_t(rowBytes);
  expect(kAccepted);
}

TEST_P(PlanesOfMemory, HaveStridesThatMemoryHolds) {
  for (const ptrdiff_t stride : {PTRDIFF_MAX, PTRDIFF_MAX / 5, PTRDIFF_MAX / 9}) {
    image.stride = stride;
    image.size = SIZE_MAX;
    expect({VISTREL_TOO_LARGE, "image.stride", std::to_string(stride),
            "no memory can hold 5 such rows"});
  }
}

// Rows of 7 at stride 20: three planes of 5, or one and two of 3, without padding at the end.
TEST_P(PlanesOfMemory, AreLongEnough) {
  const size_t bytes = GetParam()->code == VISTREL_NV12 ? 5 * 20 + 2 * 20 + 8
                       : GetParam()->code == VISTREL_I420
                           ? 5 * 20 + 3 * 10 + 2 * 10 + 4
                           : 14 * 20 + 7 * GetParam()->bytes_per_sample;
  image.stride = 20;
  image.size = bytes - 1;
  expect({VISTREL_SHORT_BUFFER, "image.size", std::to_string(bytes - 1),
          "planes of 5 rows, stride 20, take " + std::to_string(bytes) + " bytes"});
  image.size = bytes;
  expect(kAccepted);
}

// Between rows too, unlike in formats of one plane.
TEST_P(PlanesOfMemory, ShareNoneWithTheFrame) {
  std::vector<uint8_t> canvas(1000);
  frame.samples = canvas.data();
  frame.stride = 64;
  frame.size = 4 * 64 + 14;
  image = {canvas.data() + 32, canvas.size() - 32, 64, {}};
  expect({VISTREL_OVERLAP, "image.pixels", "", "they overlap the frame's samples"});
  conversion.format = VISTREL_BGR24;
  expect(kAccepted);
}

std::vector<const vistrel_format*> formatsOfPlanes() {
  std::vector<const vistrel_format*> formats;
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i)
    if (f->planes > 1) formats.push_back(f);
  return formats;
}
INSTANTIATE_TEST_SUITE_P(Of, PlanesOfMemory, ::testing::ValuesIn(formatsOfPlanes()),
                         [](const auto& test) { return std::string(test.param->name); });

TEST(FilteredMemory, HasStridesThatMemoryHolds) {
  GoodArguments a;
  vistrel_error error{};
  a.picture.stride = SIZE_MAX / 4, a.picture.size = SIZE_MAX;
  vistrel_filter(&a.picture, &a.settings, &a.image, &error);
  expectError(error, {VISTREL_TOO_LARGE, "picture.stride", std::to_string(SIZE_MAX / 4),
                      "no memory can hold 4 such rows"});
  a.picture.stride = 0;
  a.image.stride = PTRDIFF_MAX;
  vistrel_filter(&a.picture, &a.settings, &a.image, &error);
  expectError(error, {VISTREL_TOO_LARGE, "image.stride", std::to_string(PTRDIFF_MAX),
                      "no memory can hold 4 such rows"});
  a.image.stride = -6;
  vistrel_filter(&a.picture, &a.settings, &a.image, &error);
  expectError(error, {VISTREL_BAD_STRIDE, "image.stride", "-6", "filters take no negative stride"});
}

}  // namespace
}  // namespace vistrel
