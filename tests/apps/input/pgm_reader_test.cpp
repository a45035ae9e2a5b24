#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct PgmReader : InputTest {};

TEST_F(PgmReader, StreamOfPgms) {
  scratch.write("in.pgm", flat(10, 1023) + flat(600, 1023) + flat(30, 1023) + "\n");
  const std::string said = "vistrel: in.pgm: 1 byte after the last frame is ignored\n";
  EXPECT_EQ(info("in.pgm", said)["frames"], 3);
  EXPECT_EQ(info("in.pgm", said)["trailing_bytes"], 1);
  EXPECT_EQ(info("in.pgm", said)["max"], 10);
  EXPECT_EQ(info("in.pgm --frame 1", said)["max"], 600);
  EXPECT_EQ(info("in.pgm --frame 2", said)["mean"], 30);
}

}  // namespace
}  // namespace vistrel
