// The block, read byte by byte.
#include "apps/pictures/exif.h"

#include <gtest/gtest.h>

#include <map>

namespace vistrel {
namespace {

uint32_t number(const std::string& block, size_t at, size_t bytes) {
  uint32_t value = 0;
  for (size_t i = bytes; i-- > 0;) value = value << 8 | static_cast<uint8_t>(block.at(at + i));
  return value;
}

// The values of a directory's fields as bytes. Tags must ascend.
std::map<uint32_t, std::string> fieldsOf(const std::string& block, size_t at) {
  constexpr size_t kSizes[] = {0, 1, 1, 2, 4, 8, 0, 1};  // by type
  std::map<uint32_t, std::string> fields;
  const uint32_t count = number(block, at, 2);
  uint32_t last = 0;
  for (size_t field = at + 2; field < at + 2 + 12 * count; field += 12) {
    const uint32_t tag = number(block, field, 2);
    EXPECT_GT(tag, last);
    last = tag;
    const size_t size = kSizes[number(block, field + 2, 2)] * number(block, field + 4, 4);
    fields[tag] = block.substr(size <= 4 ? field + 8 : number(block, field + 8, 4), size);
    EXPECT_EQ(fields[tag].size(), size) << tag;
  }
  EXPECT_EQ(number(block, at + 2 + 12 * count, 4), 0u);
  return fields;
}

struct ExifBlock {
  std::map<uint32_t, std::string> first, second;

  explicit ExifBlock(const app::PictureDetails& details) {
    const vistrel_layout layout{640, 480, 3, 8, 1920, 921600, 0, 0, {}};
    const std::string block = app::exifOf(layout, details);
    EXPECT_EQ(block.substr(0, 8), std::string("II*\0\10\0\0\0", 8));
    first = fieldsOf(block, 8);
    second = fieldsOf(block, number(first[0x8769], 0, 4));
  }
};

std::string rational(uint32_t above, uint32_t below) {
  std::string bytes;
  for (const uint32_t part : {above, below})
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(part >> shift);
  return bytes;
}

TEST(Exif, SaysEverything) {
  const app::Shot shot{"Maker", "Model", "2026-11-22T18:06:29", 0.004, 400, 5.6, 50};
  ExifBlock exif(
      {.encoding = {app::Encoding::kSrgb}, .command = "vistrel develop a", .shot = shot});
  EXPECT_EQ(exif.first[0x010E], std::string("vistrel develop a\0", 18));
  EXPECT_EQ(exif.first[0x010F], std::string("Maker\0", 6));
  EXPECT_EQ(exif.first[0x0110], std::string("Model\0", 6));
  EXPECT_EQ(exif.first[0x0132], std::string("2026:11:22 18:06:29\0", 20));
  EXPECT_EQ(exif.first[0x0131].substr(0, 8), "vistrel ");
  EXPECT_EQ(exif.second[0x829A], rational(1, 250));
  EXPECT_EQ(exif.second[0x829D], rational(5600000, 1000000));
  EXPECT_EQ(exif.second[0x8827], std::string("\x90\1"));
  EXPECT_EQ(exif.second[0x920A], rational(50000000, 1000000));
  EXPECT_EQ(exif.second[0xA001], std::string("\1\0", 2));
  EXPECT_EQ(exif.second[0xA002], std::string("\x80\2\0\0", 4));
}

TEST(Exif, IsSilentAboutWhatIsUnknown) {
  ExifBlock exif({.encoding = app::kLinearLight});
  for (const uint32_t tag : {0x010E, 0x010F, 0x0110, 0x0132}) EXPECT_FALSE(exif.first.count(tag));
  for (const uint32_t tag : {0x829A, 0x829D, 0x8827, 0x9003, 0x920A})
    EXPECT_FALSE(exif.second.count(tag)) << tag;
  EXPECT_EQ(exif.second[0xA001], "\xFF\xFF") << "linear light isn't sRGB";
}

TEST(Exif, Exposures) {
  const std::pair<double, std::string> cases[] = {{1.0 / 8000, rational(1, 8000)},
                                                  {0.3, rational(300000, 1000000)},
                                                  {1, rational(1000000, 1000000)},
                                                  {30, rational(30000000, 1000000)},
                                                  {5000, rational(5000, 1)}};
  for (const auto& [seconds, bytes] : cases) {
    app::Shot shot;
    shot.exposureTime = seconds;
    ExifBlock exif({.shot = shot});
    EXPECT_EQ(exif.second[0x829A], bytes) << seconds;
  }
}

}  // namespace
}  // namespace vistrel
