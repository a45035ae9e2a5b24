#include "apps/pictures/pgm_header.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

struct PgmHeaders : ::testing::Test {
  Scratch scratch;

  app::PgmHeader read(const std::string& file, uint64_t at = 0) const {
    scratch.write("in.pgm", file);
    return app::readGrayHeader(app::Source(scratch / "in.pgm"), at);
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
  EXPECT_EQ(read("..P5 2 1 255 \n\n\n", 2).samplesAt, 13u);
  scratch.write("in.ppm", "P6 2 1 255 \n\n\n\n\n\n");
  EXPECT_EQ(app::readPpmHeader(app::Source(scratch / "in.ppm")).samplesAt, 11u);
}

TEST_F(PgmHeaders, LinesOfPam) {
  const std::string head =
      "P7\n# a comment\nWIDTH 640\nTUPLTYPE any words\nHEIGHT 480\nDEPTH 1\n\n"
      "MAXVAL 4095\nENDHDR\n";
  const app::PgmHeader header = read(head + "..");
  EXPECT_EQ(header.type, '7');
  EXPECT_EQ(header.width, 640u);
  EXPECT_EQ(header.height, 480u);
  EXPECT_EQ(header.maxval, 4095u);
  EXPECT_EQ(header.samplesAt, head.size());
}

// What looks like a keyword after a value is no line of its own.
TEST_F(PgmHeaders, LinesOfPamStandOnceAndAlone) {
  const std::string whole = "P7\nWIDTH 2\nHEIGHT 1\nDEPTH 1\nMAXVAL 255\nENDHDR\n";
  const auto errorOf = [this](const std::string& file) {
    return app::attempt([&] { read(file + ".."); }).text;
  };
  EXPECT_EQ(errorOf(whole), "");
  for (const std::string line : {"WIDTH 2", "HEIGHT 1", "DEPTH 1", "MAXVAL 255"}) {
    const std::string keyword = line.substr(0, line.find(' ')), text = "PAM: its header gives ";
    EXPECT_EQ(errorOf("P7\n" + line + whole.substr(2)), text + keyword + " twice");
    std::string other = whole;
    other.replace(whole.find(line), line.size(), line + " 3");
    EXPECT_NE(errorOf(other), "") << other;
  }
  std::string open = whole;
  open.replace(open.find("255\nENDHDR"), 10, "255 ENDHDR");
  EXPECT_EQ(errorOf(open), "MAXVAL \"255 ENDHDR\": a number is expected");
  open = whole;
  EXPECT_EQ(errorOf(open.replace(open.find("ENDHDR"), 6, "TUPLTYPE A ENDHDR")),
            "the file ends within the header");
  open = whole;
  EXPECT_NE(errorOf(open.erase(open.find("ENDHDR"), 7)), "");
  open = whole;
  EXPECT_NE(errorOf(open.replace(open.find("255"), 3, std::string("25\0005", 4))), "");
}

TEST_F(PgmHeaders, InvalidOnesAreRejected) {
  for (const char* file :
       {"P1 1 1 1\n.", "P6 1 1 255\n...", "P7\nWIDTH 1\nHEIGHT 1\nMAXVAL 1\nENDHDR\n.",
        "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 3\nMAXVAL 1\nENDHDR\n...",
        "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 1\nMAXVAL 70000\nENDHDR\n..",
        "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 1\nMAXVAL 1\nENDHDR", "P7\nWIDTH 1\nHEIG",
        "P7\nWIDTH 1\nSIZE 1\nDEPTH 1\nMAXVAL 1\nENDHDR\n.", "P5", "P5 1", "P5 1 1",
        "P5 0 1 255\n.", "P5 1 1 0\n.", "P5 1 1 65536\n.", "P5 1 x 255\n.", "P5 1 1 255"})
    EXPECT_EQ(app::attempt([&] { read(file); }).status, app::kRejected) << file;
}

}  // namespace
}  // namespace vistrel
