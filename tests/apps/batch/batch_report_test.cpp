#include <nlohmann/json.hpp>

#include "tests/apps/batch/batch_test.h"

namespace vistrel {
namespace {

using nlohmann::json;

struct BatchReport : BatchTest {};

TEST_F(BatchReport, JsonReport) {
  EXPECT_EQ(convert("b.pgm").err, "");
  const Finished result = convert("a.pgm b.pgm bad.pgm c.pgm --json");
  EXPECT_EQ(result.status, 1);
  const json report = json::parse(result.out);
  EXPECT_EQ(report.at("exit_status"), 1);
  EXPECT_GE(report.at("seconds"), 0.0);
  ASSERT_EQ(report.at("inputs").size(), 4u);
  const auto output = [&report](size_t i) { return report.at("inputs")[i].at("outputs").at(0); };
  EXPECT_EQ(report.at("inputs")[3].at("input"), "c.pgm");
  EXPECT_EQ(output(0).at("output"), "out/a.png");
  EXPECT_EQ(output(0).at("status"), "made");
  EXPECT_EQ(output(0).at("width"), 4);
  EXPECT_EQ(output(0).at("height"), 3);
  EXPECT_EQ(output(0).at("channels"), 1);
  EXPECT_EQ(output(0).at("bits"), 8);
  EXPECT_GT(output(0).at("seconds"), 0.0);
  EXPECT_EQ(output(1).at("status"), "up to date");
  EXPECT_EQ(output(2).at("status"), "failed");
  EXPECT_EQ(output(2).at("error"), "maxval 0: 1 to 65535 are allowed");
  EXPECT_EQ(output(3).at("status"), "not begun");
  for (const auto& [key, count] :
       {std::pair{"made", 1}, {"up_to_date", 1}, {"failed", 1}, {"not_begun", 1}})
    EXPECT_EQ(report.at(key), count) << key;
  EXPECT_GT(report.at("megabytes_per_second"), 0.0);
  const json plan = json::parse(convert("a.pgm b.pgm --json --dry-run --overwrite").out);
  EXPECT_EQ(plan.at("planned"), 2);
  EXPECT_EQ(plan.at("up_to_date"), 0);
}

// JSON is UTF-8: what isn't becomes U+FFFD.
TEST_F(BatchReport, NamesNeedNotBeUtf8) {
  put("\xE9.pgm", 7);
  const Finished result = convert("\xE9.pgm --json --manifest m.jsonl");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(valueOf("out/\xE9.png"), 7u);
  const json input = json::parse(result.out).at("inputs").at(0);
  EXPECT_EQ(input.at("input"), "\xEF\xBF\xBD.pgm");
  EXPECT_EQ(input.at("outputs").at(0).at("output"), "out/\xEF\xBF\xBD.png");
  const Finished info = scratch.vistrel("info --json \xE9.pgm");
  EXPECT_EQ(json::parse(info.out).at("file"), "\xEF\xBF\xBD.pgm");
}

// Those that standard error has.
TEST_F(BatchReport, HasEveryNote) {
  const auto expectNotes = [this](const std::string& arguments, const std::string& notes) {
    const Finished result = convert(arguments + " --json");
    EXPECT_EQ(result.status, 0) << result.err;
    const json report = json::parse(result.out);
    std::string listed;
    for (const json& note : report.at("warnings"))
      listed += "vistrel: " + note.get<std::string>() + "\n";
    EXPECT_EQ(listed, notes);
    EXPECT_EQ(result.err, notes);
  };
  expectNotes("a.pgm", "");
  expectNotes("a.pgm c.pgm",
              "vistrel: up to date: 1 of 2, regardless of their options; --overwrite remakes "
              "them\n");
  expectNotes("a.pgm -a ahd --overwrite",
              "vistrel: a.pgm: --algorithm ahd has no effect: the frame is mono\n");
}

TEST_F(BatchReport, SaysHowFramesWereConverted) {
  scratch.write("w.pgm", pgm(4, 3, 1023, [](uint32_t, uint32_t) { return 5; }));
  const auto outputOf = [this](const std::string& options) {
    const Finished result = scratch.vistrel("convert w.pgm --json -o out --overwrite " + options);
    return json::parse(result.out).at("inputs").at(0).at("outputs").at(0);
  };
  const json edge = outputOf("--phase gbrg -a edge:20");
  EXPECT_EQ(edge.at("phase"), "gbrg");
  EXPECT_EQ(edge.at("frame_bits"), 10);
  EXPECT_EQ(edge.at("bits"), 8);
  EXPECT_EQ(edge.at("algorithm"), "edge:20");
  EXPECT_EQ(outputOf("--phase rggb").at("algorithm"), "bilinear");
  const json mono = outputOf("--phase mono");
  EXPECT_EQ(mono.at("phase"), "mono");
  EXPECT_FALSE(mono.contains("algorithm"));
}

}  // namespace
}  // namespace vistrel
