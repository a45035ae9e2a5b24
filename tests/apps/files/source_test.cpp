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

// Commands open an input several times, a pipe can be read once.
TEST_F(SourceBytes, Pipes) {
  scratch.write("a.pgm", flat(77));
  scratch.write("b.pgm", flat(78));
  const std::string program = VISTREL_PROGRAM, convert = program + " convert --phase mono ";
  const auto shell = [this](const std::string& command) {
    const Finished result = scratch.run({"bash", "-c", "timeout 20 " + command});
    EXPECT_EQ(result.status, 0) << command;
    EXPECT_EQ(result.err, "") << command;
    return result.out;
  };
  EXPECT_EQ(shell(convert + "<(cat a.pgm) -o -"), flat(77));
  EXPECT_EQ(shell("cat a.pgm | " + convert + "/dev/stdin -o -"), flat(77));
  EXPECT_EQ(shell(convert + "a.pgm --dark <(cat a.pgm) -o -"), flat(0));
  EXPECT_EQ(shell("mkfifo pipe"), "");
  EXPECT_EQ(shell("cat a.pgm >pipe & timeout 20 " + convert + "pipe -o -"), flat(77));
  std::filesystem::create_directory(scratch / "out");
  shell(convert + "-j 2 <(cat a.pgm) <(cat b.pgm) -o out --type pgm");
  std::vector<std::string> pictures;
  for (const std::string& name : scratch.names())
    if (name.starts_with("out/")) pictures.push_back(scratch.read(name));
  std::sort(pictures.begin(), pictures.end());
  EXPECT_EQ(pictures, (std::vector{flat(77), flat(78)}));
}

// Nothing tells whether the content is that of the last run.
TEST_F(SourceBytes, PictureOfAPipeIsNeverUpToDate) {
  scratch.write("a.pgm", flat(77));
  std::filesystem::create_directory(scratch / "out");
  const std::string command =
      "cat a.pgm | " + std::string(VISTREL_PROGRAM) + " convert - --phase mono --type pgm -o out";
  for (const uint32_t value : {77u, 78u}) {
    scratch.write("a.pgm", flat(value));
    EXPECT_EQ(scratch.run({"bash", "-c", command}).err, "");
    EXPECT_EQ(scratch.read("out/stdin.pgm"), flat(value));
  }
}

TEST_F(SourceBytes, NeitherFileNorPipe) {
  for (const std::string name : {"/dev/null", "."}) {
    const Finished result = scratch.vistrel("info " + name);
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.err, "vistrel: " + name + ": it is neither a regular file nor a pipe\n");
  }
}

}  // namespace
}  // namespace vistrel
