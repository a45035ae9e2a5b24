#include "apps/pictures/pgm_header.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

struct PgmHeaders : ::testing::Test {
  Scratch scratch;

  app::PgmHeader read(const std::string& file, uint64_t at = 0, char type = '5') const {
    scratch.write("in.pgm", file);
    return app::readPgmHeader(app::Source(scratch / "in.pgm"), at, type);
  }
};

TEST_F(PgmHeaders, CommentsStandBetweenItsNumbers) {
  const std::string head = "P5 # a comment\n#another\n640\t480\n# the last\n4095\n";
  const app::PgmHeader header = read(head + "..");
  EXPECT_EQ(header.width, 640u);
  EXPECT_EQ(header.height, 480u);
  EXPECT_EQ(header.maxval, 4095u);
  EXPECT_EQ(header.samplesAt, head.size());
}

// Only a single space ends the header: the samples may begin with white space.
TEST_F(PgmHeaders, SamplesMayBeginWithWhiteSpace) {
  EXPECT_EQ(read("P5 1 1 255\n\n").samplesAt, 11u);
  EXPECT_EQ(read("..P6 2 1 255 \n\n\n\n\n\n", 2, '6').samplesAt, 13u);
}

TEST_F(PgmHeaders, InvalidOnesAreRejected) {
  for (const char* file : {"P5", "P5 1", "P5 1 1", "P5 0 1 255\n.", "P5 1 1 0\n.",
                           "P5 1 1 65536\n.", "P5 1 x 255\n.", "P5 1 1 255"})
    EXPECT_EQ(app::attempt([&] { read(file); }).status, app::kRejected) << file;
}

}  // namespace
}  // namespace vistrel
