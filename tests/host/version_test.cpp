// The version: of the header, of the library, of its symbols.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

TEST(Version, OfHeaderBuildAndLibraryAgree) {
  const auto part = [](int number) { return std::to_string(number); };
  EXPECT_EQ(part(VISTREL_VERSION_MAJOR) + "." + part(VISTREL_VERSION_MINOR) + "." +
                part(VISTREL_VERSION_PATCH),
            PROJECT_VERSION);
  EXPECT_EQ(vistrel_version(), uint32_t{VISTREL_VERSION});
  EXPECT_EQ(VISTREL_VERSION / 10000, VISTREL_VERSION_MAJOR);
}

// Programs that are linked with one major version cannot be bound to another one's symbols.
TEST(Version, OfSymbolsIsTheMajorOne) {
  const std::string node = "VISTRELHOST_" + std::to_string(VISTREL_VERSION_MAJOR);
  EXPECT_NE(dlvsym(RTLD_DEFAULT, "vistrel_convert", node.c_str()), nullptr);
  EXPECT_EQ(dlvsym(RTLD_DEFAULT, "vistrel_convert", "VISTRELHOST_0"), nullptr);
}

}  // namespace
}  // namespace vistrel
