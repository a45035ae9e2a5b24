// The element against the C interface: the same bytes from all formats to all formats.
#include <gtest/gtest.h>

#include <algorithm>

#include "gstreamer/formats.h"
#include "tests/gstreamer/expected.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

std::string mediaOf(const std::string& format) {
  return format.starts_with("GRAY") ? "video/x-raw" : "video/x-bayer";
}

std::string capsOf(const std::string& media, const std::string& format, uint32_t width,
                   uint32_t height) {
  return media + ",format=" + format + ",width=" + std::to_string(width) +
         ",height=" + std::to_string(height) + ",framerate=25/1";
}
std::string capsOf(const std::string& format, uint32_t width, uint32_t height) {
  return capsOf(mediaOf(format), format, width, height);
}

// Every name, so that none is missing. GStreamer 1.24 has those of samples of one or two bytes.
std::vector<std::string> expectedNames() {
  std::vector<std::string> names{"GRAY8", "GRAY16_LE", "GRAY16_BE"};
  for (const std::string phase : {"grbg", "bggr", "rggb", "gbrg"}) {
    names.push_back(phase);
    for (const std::string depth : {"10", "12", "14", "16"})
      for (const std::string order : {"le", "be"}) names.push_back(phase + depth + order);
  }
  for (const std::string row : {"GR", "BG", "RG", "GB"}) {
    for (const std::string rest : {"10p", "12p", "14p", "10Packed", "12Packed"})
      names.push_back("Bayer" + row + rest);
  }
  for (const std::string phase : {"SGRBG", "SBGGR", "SRGGB", "SGBRG"})
    for (const std::string rest : {"10_CSI2P", "12_CSI2P", "14_CSI2P"})
      names.push_back(phase + rest);
  return names;
}

const std::vector<std::string> kColours = {
    "RGB",       "BGR",       "RGBx",      "BGRx",      "RGBA",      "BGRA",      "ARGB",
    "xRGB",      "GRAY8",     "GRAY16_LE", "NV12",      "I420",      "ARGB64",    "ARGB64_LE",
    "ARGB64_BE", "RGBA64_LE", "RGBA64_BE", "BGRA64_LE", "BGRA64_BE", "ABGR64_LE", "ABGR64_BE"};
const std::vector<std::string> kGrays = {"GRAY8", "GRAY16_LE"};

vistrel_conversion plainConversion(const vistrel_frame& frame) {
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.excess = VISTREL_MASK;
  return conversion;
}

void expectSameBytes(const std::string& from, const std::string& to, uint32_t width,
                     uint32_t height) {
  const NamedFormat format = namedFormat(from);
  const size_t stride = format.stride(width);
  const Bytes bytes = noise(stride * height, width);
  Harness h;
  h.set("excess", "mask");
  h.pictures("video/x-raw,format=" + to);
  h.frames(capsOf(from, width, height));
  ASSERT_EQ(h.push(bytes), GST_FLOW_OK) << from << " to " << to << ": " << h.error();
  const Buffer picture = h.pull();
  ASSERT_TRUE(picture) << from << " to " << to;
  const GstVideoInfo info = h.info();
  EXPECT_EQ(gst_video_format_to_string(GST_VIDEO_INFO_FORMAT(&info)), to);
  EXPECT_EQ(GST_VIDEO_INFO_WIDTH(&info), static_cast<int>(width));
  const vistrel_frame frame = frameOf(format, width, height, bytes, stride);
  EXPECT_EQ(visibleBytes(picture.get(), info), expectedBytes(frame, plainConversion(frame), info))
      << from << " to " << to << " at " << width << "x" << height;
}

TEST(Element, HasAllNames) {
  std::vector<std::string> names;
  for (const auto& format : gstreamer::rawFormats()) names.push_back(format.name);
  std::vector<std::string> expected = expectedNames();
  std::ranges::sort(names);
  std::ranges::sort(expected);
  EXPECT_EQ(names, expected);
}

// Rows of width 26 are not whole groups of 4 bytes in any packing but that of 16 bits.
TEST(Element, MakesTheBytesOfTheCInterface) {
  for (const std::string& from : expectedNames())
    for (const std::string& to : mediaOf(from) == "video/x-raw" ? kGrays : kColours)
      expectSameBytes(from, to, 26, 14);
}

TEST(Element, MakesOddSizes) {
  for (const auto& [width, height] : {std::pair{21u, 13u}, {16u, 15u}, {23u, 16u}, {642u, 11u}})
    for (const char* from : {"rggb", "gbrg12le", "BayerGR12Packed", "SBGGR10_CSI2P"})
      for (const std::string& to : kColours) expectSameBytes(from, to, width, height);
}

TEST(Element, RejectsMonoFramesToColours) {
  Harness h;
  h.pictures("video/x-raw,format=RGB");
  h.frames(capsOf("GRAY8", 16, 16));
  EXPECT_EQ(h.push(Bytes(256)), GST_FLOW_NOT_NEGOTIATED);
}

// Frames of 12 bits that a camera delivers as GRAY16_LE.
TEST(Element, ReadsTheSignificantBits) {
  Harness h;
  h.set("bits", "12");
  h.pictures("video/x-raw,format=GRAY8");
  h.frames(capsOf("GRAY16_LE", 2, 1));
  ASSERT_EQ(h.push({0xFF, 0x0F, 0x10, 0x00}), GST_FLOW_OK);
  const Bytes picture = bytesOf(h.pull().get());
  ASSERT_GE(picture.size(), 2u);
  EXPECT_EQ(picture[0], 255);
  EXPECT_EQ(picture[1], 1);
}

TEST(Element, AppliesATableToTheSignificantBits) {
  std::string table = "<0";
  for (int i = 1; i < 4096; ++i) table += "," + std::to_string(255 - i / 16);
  Harness h;
  h.set("bits", "12");
  h.set("table", table + ">");
  h.pictures("video/x-raw,format=GRAY8");
  h.frames(capsOf("GRAY16_LE", 2, 1));
  ASSERT_EQ(h.push({0xFF, 0x0F, 0x10, 0x00}), GST_FLOW_OK) << h.error();
  const Bytes picture = bytesOf(h.pull().get());
  ASSERT_GE(picture.size(), 2u);
  EXPECT_EQ(picture[0], 0);
  EXPECT_EQ(picture[1], 254);
}

struct Choice {
  const char *property, *value;
  void (*apply)(vistrel_conversion& conversion);
};
using C = vistrel_conversion;
const Choice kChoices[] = {
    {"method", "ahd", [](C& c) { c.algorithm = VISTREL_AHD; }},
    {"method", "vng", [](C& c) { c.algorithm = VISTREL_VNG; }},
    {"edges", "padded", [](C& c) { c.edges = VISTREL_EDGES_PADDED; }},
    {"binning", "2", [](C& c) { c.binning = 2; }},
    {"binning", "3", [](C& c) { c.binning = 3; }},
    {"region", "17x9+3+5",
     [](C& c) {
       c.region = {3, 5, 17, 9};
     }},
    {"window", "2", [](C& c) { c.reduction = VISTREL_WINDOW_LOW; }},
    {"curve", "lightest", [](C& c) { c.reduction = VISTREL_CURVE_4; }},
    {"black", "64", [](C& c) { std::fill_n(c.black, 4, 64u); }},
    {"black", "1:2:3:4",
     [](C& c) {
       for (uint32_t i = 0; i < 4; ++i) c.black[i] = i + 1;
     }},
    {"gains", "2:1:1.5",
     [](C& c) {
       c.white_balance = VISTREL_BALANCE_GAINS;
       c.gains[0] = 8192, c.gains[1] = 4096, c.gains[2] = 6144;
     }},
};

TEST(Element, AppliesProperties) {
  constexpr uint32_t kWidth = 32, kHeight = 24;
  const NamedFormat format = namedFormat("gbrg10le");
  Bytes bytes = noise(kWidth * kHeight * 2, 5);
  for (size_t i = 1; i < bytes.size(); i += 2) bytes[i] &= 3;
  for (const Choice& choice : kChoices) {
    Harness h;
    h.set(choice.property, choice.value);
    h.pictures("video/x-raw,format=BGRx");
    h.frames(capsOf("gbrg10le", kWidth, kHeight));
    ASSERT_EQ(h.push(bytes), GST_FLOW_OK) << choice.property << ": " << h.error();
    const Buffer picture = h.pull();
    const vistrel_frame frame = frameOf(format, kWidth, kHeight, bytes, 2 * kWidth);
    vistrel_conversion conversion = defaultConversion(frame);
    choice.apply(conversion);
    EXPECT_EQ(visibleBytes(picture.get(), h.info()), expectedBytes(frame, conversion, h.info()))
        << choice.property << "=" << choice.value;
  }
}

TEST(Element, AppliesATable) {
  std::string table = "<";
  std::vector<uint16_t> entries;
  for (int i = 0; i < 1024; ++i) {
    entries.push_back(static_cast<uint16_t>(255 - i / 4));
    table += (i ? "," : "") + std::to_string(entries.back());
  }
  Bytes bytes = noise(16 * 16 * 2, 6);
  for (size_t i = 1; i < bytes.size(); i += 2) bytes[i] &= 3;
  Harness h;
  h.set("table", table + ">");
  h.pictures("video/x-raw,format=RGB");
  h.frames(capsOf("rggb10le", 16, 16));
  ASSERT_EQ(h.push(bytes), GST_FLOW_OK) << h.error();
  const Buffer picture = h.pull();
  const vistrel_frame frame = frameOf(namedFormat("rggb10le"), 16, 16, bytes, 32);
  vistrel_conversion conversion = defaultConversion(frame);
  setTable(conversion, entries);
  EXPECT_EQ(visibleBytes(picture.get(), h.info()), expectedBytes(frame, conversion, h.info()));
}

TEST(Element, AppliesALook) {
  Bytes bytes = noise(32 * 24 * 2, 7);
  for (size_t i = 1; i < bytes.size(); i += 2) bytes[i] &= 15;
  Harness h;
  h.set("look", "curve=gamma:2.2,highlights=clip");
  h.set("black", "64");
  h.set("white", "4000");
  h.set("gains", "2:1:1.5");
  h.set("matrix", "1.5:-0.5:0:0:1:0:0:-0.25:1.25");
  h.set("exposure", "1.25");
  h.pictures("video/x-raw,format=ARGB64_LE");
  h.frames(capsOf("bggr12le", 32, 24));
  ASSERT_EQ(h.push(bytes), GST_FLOW_OK) << h.error();
  const Buffer picture = h.pull();
  const vistrel_frame frame = frameOf(namedFormat("bggr12le"), 32, 24, bytes, 64);
  vistrel_conversion conversion = defaultConversion(frame);
  std::fill_n(conversion.black, 4, 64u);
  conversion.white = 4000;
  conversion.white_balance = VISTREL_BALANCE_GAINS;
  conversion.gains[0] = 8192, conversion.gains[1] = 4096, conversion.gains[2] = 6144;
  const auto transfer = makeTransfer(VISTREL_TRANSFER_GAMMA, 2200);
  vistrel_finish finish = finishOf(transfer);
  finish.exposure = 5120;
  const int32_t matrix[] = {6144, -2048, 0, 0, 4096, 0, 0, -1024, 5120};
  std::ranges::copy(matrix, finish.matrix);
  setFinish(conversion, finish);
  EXPECT_EQ(visibleBytes(picture.get(), h.info()), expectedBytes(frame, conversion, h.info()));
}

TEST(Element, SaysWhatIsWrong) {
  const std::pair<const char*, const char*> wrong[] = {
      {"region", "4x4"}, {"region", "20x20+30+30"}, {"look", "pretty"},
      {"black", "-1"},   {"gains", "1:2"},          {"matrix", "1"},
  };
  for (const auto& [property, value] : wrong) {
    Harness h;
    h.set(property, value);
    h.pictures("video/x-raw");
    h.frames(capsOf("rggb", 32, 32));
    EXPECT_NE(h.push(Bytes(1024)), GST_FLOW_OK) << property << "=" << value;
    EXPECT_NE(h.error(), "") << property << "=" << value;
  }
}

TEST(Element, RejectsExcessBitsUnlessMasked) {
  Harness h;
  h.pictures("video/x-raw,format=GRAY8");
  h.frames(capsOf("rggb10le", 16, 16));
  EXPECT_EQ(h.push(Bytes(512, 0xFF)), GST_FLOW_ERROR);
  EXPECT_NE(h.error().find("10 bits"), std::string::npos);
  h.set("excess", "mask");
  EXPECT_EQ(h.push(Bytes(512, 0xFF)), GST_FLOW_OK);
}

TEST(Element, SharesFramesAmongThreads) {
  const Bytes bytes = noise(1024 * 512, 8);
  Bytes first;
  for (const char* threads : {"1", "2", "0"}) {
    Harness h;
    h.set("threads", threads);
    h.pictures("video/x-raw,format=BGRx");
    h.frames(capsOf("grbg", 1024, 512));
    ASSERT_EQ(h.push(bytes), GST_FLOW_OK) << h.error();
    const Bytes picture = bytesOf(h.pull().get());
    if (first.empty()) first = picture;
    EXPECT_TRUE(picture == first) << threads;
  }
}

}  // namespace
}  // namespace vistrel::test
