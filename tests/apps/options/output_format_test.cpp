// The codes behind the names of --format.
#include <gtest/gtest.h>

#include <map>

#include "apps/error.h"
#include "apps/options/conversion_options.h"
#include "apps/options/output_format.h"

namespace vistrel::app {
namespace {

vistrel_frame frame(uint32_t phase) { return frameOf(Span<const uint16_t>(), 8, 6, 12, phase); }

const std::map<std::string, uint32_t> kCodes{
    {"gray8", VISTREL_GRAY8}, {"gray16", VISTREL_GRAY16}, {"bgr24", VISTREL_BGR24},
    {"rgb24", VISTREL_RGB24}, {"bgra", VISTREL_BGRA32},   {"rgba", VISTREL_RGBA32},
    {"argb", VISTREL_ARGB32}, {"bgr48", VISTREL_BGR48},   {"rgb48", VISTREL_RGB48},
    {"nv12", VISTREL_NV12},   {"i420", VISTREL_I420},     {"i444", VISTREL_I444},
};

TEST(OutputFormats, OfColourFramesAreAllFormats) {
  ConversionOptions o;
  for (const auto& [name, code] : kCodes) {
    o.format = name;
    o.output = OutputKind::raw;
    EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, code) << name;
    EXPECT_NO_THROW(layoutOf(frame(VISTREL_RGGB), o.of(frame(VISTREL_RGGB)))) << name;
  }
  o.format.clear();
  EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, uint32_t{VISTREL_BGR24});
  o.depth = "16";
  EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, uint32_t{VISTREL_BGR48});
}

TEST(OutputFormats, OfMonoFramesAreGray) {
  ConversionOptions o;
  EXPECT_EQ(o.of(frame(VISTREL_MONO)).format, uint32_t{VISTREL_MONO8});
  o.format = "gray16";
  EXPECT_EQ(o.of(frame(VISTREL_MONO)).format, uint32_t{VISTREL_MONO16});
  o.format = "rgb24";
  EXPECT_THROW(layoutOf(frame(VISTREL_MONO), o.of(frame(VISTREL_MONO))), Error);
}

// The picture's type determines the order of samples.
TEST(OutputFormats, OfPicturesHaveTheWritersOrder) {
  const std::map<std::string, uint32_t> codes{{"bgr24", VISTREL_RGB24},  {"bgra", VISTREL_RGBA32},
                                              {"rgba", VISTREL_RGBA32},  {"argb", VISTREL_RGBA32},
                                              {"rgb48", VISTREL_RGB48},  {"bgr48", VISTREL_RGB48},
                                              {"gray16", VISTREL_GRAY16}};
  ConversionOptions o;
  for (const auto& [name, code] : codes)
    for (const char* file : {"a.png", "a", "folder/", "-", "png:-"}) {
      o.format = name;
      o.output = outputKind(file);
      EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, code) << name << " " << file;
    }
  for (const char* file : {"a.raw", "a.bin", "a.RAW", "raw:-", "Bin:-"}) {
    o.format = "rgba";
    o.output = outputKind(file);
    EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, uint32_t{VISTREL_RGBA32}) << file;
  }
}

TEST(OutputFormats, OfFilmsArePlanar) {
  ConversionOptions o;
  o.output = outputKind("a.Y4M");
  EXPECT_EQ(outputKind("y4m:-"), OutputKind::y4m);
  EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, uint32_t{VISTREL_I420});
  EXPECT_EQ(o.of(frame(VISTREL_MONO)).format, uint32_t{VISTREL_MONO8});
  o.format = "i444";
  EXPECT_EQ(o.of(frame(VISTREL_RGGB)).format, uint32_t{VISTREL_I444});
}

}  // namespace
}  // namespace vistrel::app
