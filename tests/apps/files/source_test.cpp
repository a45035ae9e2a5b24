// Standard input, as a file and as a pipe.
#include <fcntl.h>
#include <unistd.h>

#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct SourceBytes : InputTest {};

TEST_F(SourceBytes, StandardInputAsAFile) {
  scratch.write("in.pgm", flat(77));
  const auto input = [this] { dup2(open((scratch / "in.pgm").c_str(), O_RDONLY), STDIN_FILENO); };
  EXPECT_EQ(nlohmann::json::parse(scratch.vistrel("info --json -", input).out)["max"], 77);
}

TEST_F(SourceBytes, StandardInputAsAPipe) {
  scratch.write("in.pgm", flat(77));
  const std::string program = VISTREL_PROGRAM;
  const Finished result = scratch.run({"sh", "-c", "cat in.pgm | " + program + " info --json -"});
  EXPECT_EQ(nlohmann::json::parse(result.out)["max"], 77);
  const Finished empty = scratch.run({"sh", "-c", "cat /dev/null | " + program + " info -"});
  EXPECT_EQ(empty.status, 3);
  EXPECT_EQ(empty.err, "vistrel: -: the file is empty\n");
  const Finished closed = scratch.run({"sh", "-c", program + " info - <&-"});
  EXPECT_EQ(closed.status, 4);
  EXPECT_EQ(closed.err, "vistrel: -: cannot be read: Bad file descriptor\n");
  EXPECT_EQ(scratch.run({"sh", "-c", program + " info - 0>>in.pgm"}).status, 4) << "write only";
}

}  // namespace
}  // namespace vistrel
