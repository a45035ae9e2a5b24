#include "apps/input/gzip_stream.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "tests/apps/input/gzip.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

struct GzipStreams : ::testing::Test {
  Scratch scratch;

  // Reads in parts of so many bytes.
  std::string read(const std::string& file, size_t part) const {
    scratch.write("in.gz", file);
    const app::Source source(scratch / "in.gz");
    app::GzipStream in(source);
    std::string all, bytes(part, 0);
    for (size_t n = part; n == part; all.append(bytes, 0, n))
      n = in.read(reinterpret_cast<uint8_t*>(bytes.data()), part);
    return all;
  }
  std::string errorOf(const std::string& file) const {
    return app::attempt([&] { read(file, 100); }).text;
  }
};

std::string text() {
  std::string text;
  for (uint32_t i = 0; i < 70000; ++i) text += std::to_string(i * 2654435761u);
  return text;
}

TEST_F(GzipStreams, ReadsInParts) {
  const std::string all = text();
  for (const size_t part : {997u, 65536u, 1u << 20}) EXPECT_EQ(read(deflated(all), part), all);
  EXPECT_EQ(read(deflated(""), 10), "");
}

TEST_F(GzipStreams, ReadsAllMembers) {
  EXPECT_EQ(read(deflated("abc") + deflated("") + deflated("def"), 2), "abcdef");
  EXPECT_EQ(read(deflated("abc") + std::string(9, '\0'), 2), "abc") << "padding";
}

TEST_F(GzipStreams, CountsWhatFollows) {
  for (const std::string rest : {"", "\x1F", "rubbish"}) {
    scratch.write("in.gz", deflated("abc") + deflated("de") + rest);
    const app::Source source(scratch / "in.gz");
    app::GzipStream in(source);
    uint8_t bytes[9];
    EXPECT_EQ(in.read(bytes, sizeof bytes), 5u);
    EXPECT_EQ(in.trailing(), rest.size());
  }
}

TEST_F(GzipStreams, NoticesDamage) {
  const std::string file = deflated(text());
  const std::string early = "gzip: the file ends early", damaged = "gzip: the file is damaged: ";
  for (const size_t size : {3u, 12u, 1000u}) EXPECT_EQ(errorOf(file.substr(0, size)), early);
  EXPECT_EQ(errorOf(file.substr(0, file.size() - 1)), early);
  for (const size_t back : {1u, 5u, 30000u}) {
    std::string changed = file;
    changed[changed.size() - back] ^= 4;
    const std::string error = errorOf(changed);
    EXPECT_TRUE(error.starts_with(damaged) || error == early) << back << ": " << error;
  }
}

}  // namespace
}  // namespace vistrel
