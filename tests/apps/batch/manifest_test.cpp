// A batch that keeps a manifest, and a later one that uses it.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

struct ManifestTest : ::testing::Test {
  Scratch scratch;
  ManifestTest() {
    for (const std::string name : {"a.pgm", "b.pgm"})
      scratch.write(name,
                    pgm(3, 3, 255, [](uint32_t x, uint32_t y) { return "123456789"[3 * y + x]; }));
    fs::create_directory(scratch / "out");
  }
  Finished convert(const std::string& arguments = "") const {
    return scratch.vistrel("convert a.pgm b.pgm --phase mono -o out --manifest m.jsonl " +
                           arguments);
  }
  // How many pictures a run made.
  size_t made(const std::string& arguments = "") const {
    const json report = json::parse(convert("--json " + arguments).out);
    size_t count = 0;
    for (const json& input : report.at("inputs"))
      for (const json& output : input.at("outputs")) count += output.at("status") == "made";
    return count;
  }
  std::vector<json> lines() const {
    std::istringstream in(scratch.read("m.jsonl"));
    std::vector<json> objects;
    for (std::string line; std::getline(in, line);) objects.push_back(json::parse(line));
    return objects;
  }
};

TEST_F(ManifestTest, RecordsWhatWasMadeFromWhat) {
  EXPECT_EQ(convert("--mask").err, "");
  ASSERT_EQ(lines().size(), 2u);
  const json line = lines()[0];
  EXPECT_EQ(line.at("input"), "a.pgm");
  EXPECT_EQ(line.at("output"), "out/a.png");
  EXPECT_EQ(line.at("input_bytes"), scratch.read("a.pgm").size());
  EXPECT_EQ(line.at("output_bytes"), scratch.read("out/a.png").size());
  EXPECT_EQ(line.at("options"), "--phase mono --mask");
  EXPECT_EQ(line.at("pixels_crc32"), "cbf43926") << "the check value of CRC-32: of 123456789";
}

TEST_F(ManifestTest, RedoesWhatDiffers) {
  EXPECT_EQ(made(), 2u);
  EXPECT_EQ(made(), 0u);
  EXPECT_EQ(made("-j 2 --progress never"), 0u) << "not a part of the picture";
  EXPECT_EQ(made("--bin 2"), 2u);
  EXPECT_EQ(made(), 2u);
  scratch.write("a.pgm", scratch.read("a.pgm") + "?");
  EXPECT_EQ(made(), 1u) << "another size";
  fs::last_write_time(scratch / "b.pgm",
                      fs::last_write_time(scratch / "b.pgm") - std::chrono::hours(1));
  EXPECT_EQ(made(), 1u) << "another time, even an earlier one";
  scratch.write("out/b.png", "");
  EXPECT_EQ(made(), 1u) << "a picture that was cut";
  fs::remove(scratch / "out/b.png");
  EXPECT_EQ(made(), 1u) << "a picture that is gone";
  EXPECT_EQ(made("--overwrite"), 2u);
  EXPECT_EQ(made(), 0u);
  EXPECT_EQ(lines().size(), 2u);
}

TEST_F(ManifestTest, DependsOnTheContentOfACurve) {
  const auto curve = [this](const char* value) {
    std::string table;
    for (int i = 0; i < 1024; ++i) table += value;
    scratch.write("curve.txt", table);
  };
  scratch.write("a.pgm", pgm(3, 3, 1023, [](uint32_t, uint32_t) { return 0; }));
  scratch.write("b.pgm", pgm(3, 3, 1023, [](uint32_t, uint32_t) { return 0; }));
  curve("1 ");
  EXPECT_EQ(made("--curve curve.txt"), 2u);
  EXPECT_EQ(made("--curve curve.txt"), 0u);
  curve("2 ");
  EXPECT_EQ(made("--curve curve.txt"), 2u);
}

// As left by a run that was killed while it wrote a line.
TEST_F(ManifestTest, AnIncompleteLineIsIgnored) {
  EXPECT_EQ(made(), 2u);
  const std::string whole = scratch.read("m.jsonl");
  scratch.write("m.jsonl", whole.substr(0, whole.size() - 1));
  EXPECT_EQ(made(), 1u);
  EXPECT_EQ(scratch.read("m.jsonl"), whole);
}

TEST_F(ManifestTest, RejectsOtherFiles) {
  scratch.write("m.jsonl", "notes\n");
  const Finished result = convert();
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.err, "vistrel: --manifest m.jsonl: line 1 is not a manifest entry\n");
  EXPECT_EQ(scratch.read("m.jsonl"), "notes\n");
  EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o out --manifest a.pgm").err,
            "vistrel: --manifest a.pgm: it is the same file as the input a.pgm\n");
  EXPECT_EQ(scratch.vistrel("convert a.pgm --phase mono -o out --manifest no/m").status, 4);
  const Finished stream = scratch.vistrel("convert a.pgm --phase mono -o out --manifest -");
  EXPECT_EQ(stream.status, 2);
  EXPECT_EQ(stream.err, "vistrel: --manifest -: a file name is expected\n");
}

}  // namespace
}  // namespace vistrel
