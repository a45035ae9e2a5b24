#include "apps/input/deflate_check.h"

#include <gtest/gtest.h>

#include "tests/apps/input/gzip.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

TEST(DeflateCheck, NoticesEveryChangedByte) {
  const Scratch scratch;
  std::string bytes;
  for (uint32_t i = 0; i < 300; ++i) bytes += static_cast<char>(i * i * 7 >> 3);
  const std::string stream = deflated(bytes, false), before = "abc", behind = "padding";
  const auto isIntact = [&](const std::string& changed, size_t count) {
    scratch.write("in", before + changed + behind);
    return app::isIntactDeflate(app::Source(scratch / "in"), before.size(), count);
  };
  EXPECT_TRUE(isIntact(stream, stream.size()));
  EXPECT_TRUE(isIntact(stream, stream.size() + behind.size()));
  EXPECT_FALSE(isIntact(stream, stream.size() - 1)) << "a part of the checksum";
  EXPECT_FALSE(isIntact(stream, 0));
  for (size_t i = 0; i < stream.size(); ++i) {
    if (i == 1) continue;  // two bits of it are the level, which means nothing
    std::string changed = stream;
    changed[i] ^= 1;
    EXPECT_FALSE(isIntact(changed, changed.size())) << i;
  }
}

TEST(DeflateCheck, TakesMuchThatDecodesFromLittle) {
  const Scratch scratch;
  const std::string stream = deflated(std::string(50'000'000, '\0'), false);
  scratch.write("in", stream);
  EXPECT_TRUE(app::isIntactDeflate(app::Source(scratch / "in"), 0, stream.size()));
}

}  // namespace
}  // namespace vistrel
