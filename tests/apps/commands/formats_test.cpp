// Names of phases and formats, compared with lists written by hand.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <fstream>
#include <set>

#include "apps/error.h"
#include "apps/names/names_json.h"
#include "apps/options/frame_name.h"
#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

struct Named {
  const char* name;
  uint32_t phase, bits;
  uint32_t packing;
};

constexpr uint32_t GR = VISTREL_GRBG, BG = VISTREL_BGGR, RG = VISTREL_RGGB, GB = VISTREL_GBRG,
                   M = VISTREL_MONO;

// Names with their PFNC values.
constexpr struct {
  const char* name;
  const char* value;
  uint32_t phase, bits;
  uint32_t packing;
} kPfnc[] = {
    {"BayerGR8", "0x01080008", GR, 8, VISTREL_PACKING_BYTES},
    {"BayerRG8", "0x01080009", RG, 8, VISTREL_PACKING_BYTES},
    {"BayerGB8", "0x0108000A", GB, 8, VISTREL_PACKING_BYTES},
    {"BayerBG8", "0x0108000B", BG, 8, VISTREL_PACKING_BYTES},
    {"BayerGR10", "0x0110000C", GR, 10, VISTREL_PACKING_LITTLE},
    {"BayerRG10", "0x0110000D", RG, 10, VISTREL_PACKING_LITTLE},
    {"BayerGB10", "0x0110000E", GB, 10, VISTREL_PACKING_LITTLE},
    {"BayerBG10", "0x0110000F", BG, 10, VISTREL_PACKING_LITTLE},
    {"BayerGR12", "0x01100010", GR, 12, VISTREL_PACKING_LITTLE},
    {"BayerRG12", "0x01100011", RG, 12, VISTREL_PACKING_LITTLE},
    {"BayerGB12", "0x01100012", GB, 12, VISTREL_PACKING_LITTLE},
    {"BayerBG12", "0x01100013", BG, 12, VISTREL_PACKING_LITTLE},
    {"BayerGR14", "0x01100109", GR, 14, VISTREL_PACKING_LITTLE},
    {"BayerRG14", "0x0110010A", RG, 14, VISTREL_PACKING_LITTLE},
    {"BayerGB14", "0x0110010B", GB, 14, VISTREL_PACKING_LITTLE},
    {"BayerBG14", "0x0110010C", BG, 14, VISTREL_PACKING_LITTLE},
    {"BayerGR16", "0x0110002E", GR, 16, VISTREL_PACKING_LITTLE},
    {"BayerRG16", "0x0110002F", RG, 16, VISTREL_PACKING_LITTLE},
    {"BayerGB16", "0x01100030", GB, 16, VISTREL_PACKING_LITTLE},
    {"BayerBG16", "0x01100031", BG, 16, VISTREL_PACKING_LITTLE},
    {"BayerBG10p", "0x010A0052", BG, 10, VISTREL_PACKING_PFNC},
    {"BayerGB10p", "0x010A0054", GB, 10, VISTREL_PACKING_PFNC},
    {"BayerGR10p", "0x010A0056", GR, 10, VISTREL_PACKING_PFNC},
    {"BayerRG10p", "0x010A0058", RG, 10, VISTREL_PACKING_PFNC},
    {"BayerBG12p", "0x010C0053", BG, 12, VISTREL_PACKING_PFNC},
    {"BayerGB12p", "0x010C0055", GB, 12, VISTREL_PACKING_PFNC},
    {"BayerGR12p", "0x010C0057", GR, 12, VISTREL_PACKING_PFNC},
    {"BayerRG12p", "0x010C0059", RG, 12, VISTREL_PACKING_PFNC},
    {"BayerGR10Packed", "0x010C0026", GR, 10, VISTREL_PACKING_GIGE},
    {"BayerRG10Packed", "0x010C0027", RG, 10, VISTREL_PACKING_GIGE},
    {"BayerGB10Packed", "0x010C0028", GB, 10, VISTREL_PACKING_GIGE},
    {"BayerBG10Packed", "0x010C0029", BG, 10, VISTREL_PACKING_GIGE},
    {"BayerGR12Packed", "0x010C002A", GR, 12, VISTREL_PACKING_GIGE},
    {"BayerRG12Packed", "0x010C002B", RG, 12, VISTREL_PACKING_GIGE},
    {"BayerGB12Packed", "0x010C002C", GB, 12, VISTREL_PACKING_GIGE},
    {"BayerBG12Packed", "0x010C002D", BG, 12, VISTREL_PACKING_GIGE},
    {"Mono8", "0x01080001", M, 8, VISTREL_PACKING_BYTES},
    {"Mono10", "0x01100003", M, 10, VISTREL_PACKING_LITTLE},
    {"Mono12", "0x01100005", M, 12, VISTREL_PACKING_LITTLE},
    {"Mono14", "0x01100025", M, 14, VISTREL_PACKING_LITTLE},
    {"Mono16", "0x01100007", M, 16, VISTREL_PACKING_LITTLE},
    {"Mono10p", "0x010A0046", M, 10, VISTREL_PACKING_PFNC},
    {"Mono12p", "0x010C0047", M, 12, VISTREL_PACKING_PFNC},
    {"Mono10Packed", "0x010C0004", M, 10, VISTREL_PACKING_GIGE},
    {"Mono12Packed", "0x010C0006", M, 12, VISTREL_PACKING_GIGE},
};

constexpr Named kV4l2[] = {
    {"GRBG", GR, 8, VISTREL_PACKING_BYTES},   {"BA81", BG, 8, VISTREL_PACKING_BYTES},
    {"RGGB", RG, 8, VISTREL_PACKING_BYTES},   {"GBRG", GB, 8, VISTREL_PACKING_BYTES},
    {"GREY", M, 8, VISTREL_PACKING_BYTES},    {"BA10", GR, 10, VISTREL_PACKING_LITTLE},
    {"BG10", BG, 10, VISTREL_PACKING_LITTLE}, {"RG10", RG, 10, VISTREL_PACKING_LITTLE},
    {"GB10", GB, 10, VISTREL_PACKING_LITTLE}, {"Y10 ", M, 10, VISTREL_PACKING_LITTLE},
    {"BA12", GR, 12, VISTREL_PACKING_LITTLE}, {"BG12", BG, 12, VISTREL_PACKING_LITTLE},
    {"RG12", RG, 12, VISTREL_PACKING_LITTLE}, {"GB12", GB, 12, VISTREL_PACKING_LITTLE},
    {"Y12 ", M, 12, VISTREL_PACKING_LITTLE},  {"GR14", GR, 14, VISTREL_PACKING_LITTLE},
    {"BG14", BG, 14, VISTREL_PACKING_LITTLE}, {"RG14", RG, 14, VISTREL_PACKING_LITTLE},
    {"GB14", GB, 14, VISTREL_PACKING_LITTLE}, {"Y14 ", M, 14, VISTREL_PACKING_LITTLE},
    {"GR16", GR, 16, VISTREL_PACKING_LITTLE}, {"BYR2", BG, 16, VISTREL_PACKING_LITTLE},
    {"RG16", RG, 16, VISTREL_PACKING_LITTLE}, {"GB16", GB, 16, VISTREL_PACKING_LITTLE},
    {"Y16 ", M, 16, VISTREL_PACKING_LITTLE},  {"pgAA", GR, 10, VISTREL_PACKING_MIPI},
    {"pBAA", BG, 10, VISTREL_PACKING_MIPI},   {"pRAA", RG, 10, VISTREL_PACKING_MIPI},
    {"pGAA", GB, 10, VISTREL_PACKING_MIPI},   {"Y10P", M, 10, VISTREL_PACKING_MIPI},
    {"pgCC", GR, 12, VISTREL_PACKING_MIPI},   {"pBCC", BG, 12, VISTREL_PACKING_MIPI},
    {"pRCC", RG, 12, VISTREL_PACKING_MIPI},   {"pGCC", GB, 12, VISTREL_PACKING_MIPI},
    {"Y12P", M, 12, VISTREL_PACKING_MIPI},    {"pgEE", GR, 14, VISTREL_PACKING_MIPI},
    {"pBEE", BG, 14, VISTREL_PACKING_MIPI},   {"pREE", RG, 14, VISTREL_PACKING_MIPI},
    {"pGEE", GB, 14, VISTREL_PACKING_MIPI},   {"Y14P", M, 14, VISTREL_PACKING_MIPI},
};

constexpr Named kOthers[] = {
    {"grbg", GR, 8, VISTREL_PACKING_BYTES},
    {"bggr", BG, 8, VISTREL_PACKING_BYTES},
    {"rggb", RG, 8, VISTREL_PACKING_BYTES},
    {"gbrg", GB, 8, VISTREL_PACKING_BYTES},
    {"grbg10le", GR, 10, VISTREL_PACKING_LITTLE},
    {"bggr12le", BG, 12, VISTREL_PACKING_LITTLE},
    {"rggb14be", RG, 14, VISTREL_PACKING_BIG},
    {"gbrg16be", GB, 16, VISTREL_PACKING_BIG},
    {"GRAY8", M, 8, VISTREL_PACKING_BYTES},
    {"GRAY16_LE", M, 16, VISTREL_PACKING_LITTLE},
    {"GRAY16_BE", M, 16, VISTREL_PACKING_BIG},
    {"bayer_grbg8", GR, 8, VISTREL_PACKING_BYTES},
    {"bayer_bggr8", BG, 8, VISTREL_PACKING_BYTES},
    {"bayer_rggb16le", RG, 16, VISTREL_PACKING_LITTLE},
    {"bayer_gbrg16be", GB, 16, VISTREL_PACKING_BIG},
    {"gray", M, 8, VISTREL_PACKING_BYTES},
    {"gray12le", M, 12, VISTREL_PACKING_LITTLE},
    {"gray10be", M, 10, VISTREL_PACKING_BIG},
};

void expectFormat(const std::string& name, uint32_t phase, uint32_t bits, uint32_t packing) {
  const app::PixelFormat* format = app::findPixelFormat(name);
  ASSERT_NE(format, nullptr) << name;
  EXPECT_EQ(format->phase, phase) << name;
  EXPECT_EQ(format->bits, bits) << name;
  EXPECT_EQ(format->packing, packing) << name;
}

TEST(Formats, EveryNameOfTheHandWrittenLists) {
  for (const auto& f : kPfnc) {
    expectFormat(f.name, f.phase, f.bits, f.packing);
    expectFormat(f.value, f.phase, f.bits, f.packing);
  }
  for (const Named& f : kV4l2) expectFormat(f.name, f.phase, f.bits, f.packing);
  for (const Named& f : kOthers) expectFormat(f.name, f.phase, f.bits, f.packing);
}

// So the table contains nothing that is missing in the lists.
TEST(Formats, NoOtherPfncOrV4l2Names) {
  size_t pfnc = 0, v4l2 = 0;
  for (const app::PixelFormat& f : app::pixelFormats()) {
    pfnc += !f.pfnc.empty();
    v4l2 += !f.v4l2.empty();
  }
  EXPECT_EQ(pfnc, std::size(kPfnc));
  EXPECT_EQ(v4l2, std::size(kV4l2));
}

TEST(Formats, EveryNameLeadsToItsOwnRow) {
  for (const app::PixelFormat& f : app::pixelFormats())
    for (const std::string& name : {f.pfnc, f.pfncValue, f.v4l2, f.gstreamer, f.ffmpeg})
      EXPECT_EQ(app::findPixelFormat(name), name.empty() ? nullptr : &f) << name;
}

TEST(Formats, CaseOfNames) {
  expectFormat("bayerrg12P", RG, 12, VISTREL_PACKING_PFNC);
  expectFormat("0x0108000b", BG, 8, VISTREL_PACKING_BYTES);
  expectFormat("BGGR", BG, 8, VISTREL_PACKING_BYTES);
  for (const char* none : {"PRCC", "prcc", "ba81", "byr2", "", " ", "BayerGB", "BayerGB2BGR",
                           "COLOR_BayerGB2BGR", "GB", "Mono", "0x0108000", "mono"})
    EXPECT_EQ(app::findPixelFormat(none), nullptr) << none;
}

TEST(Formats, Phases) {
  const struct {
    const char *name, *pfnc, *opencv, *dng;
    std::array<int, 2> blue;
  } expected[] = {{"grbg", "BayerGR", "COLOR_BayerGB2BGR", "01 00 02 01", {1, 0}},
                  {"bggr", "BayerBG", "COLOR_BayerRG2BGR", "02 01 01 00", {0, 0}},
                  {"rggb", "BayerRG", "COLOR_BayerBG2BGR", "00 01 01 02", {1, 1}},
                  {"gbrg", "BayerGB", "COLOR_BayerGR2BGR", "01 02 00 01", {0, 1}}};
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const app::PhaseNames& names = app::phaseNames(phase);
    EXPECT_EQ(names.phase, phase);
    EXPECT_STREQ(names.name, vistrel_phase_name(phase));
    EXPECT_STREQ(names.name, expected[phase].name);
    EXPECT_STREQ(names.pfnc, expected[phase].pfnc);
    EXPECT_STREQ(names.opencv, expected[phase].opencv);
    EXPECT_STREQ(names.dng, expected[phase].dng);
    EXPECT_EQ(names.blue, expected[phase].blue);
  }
}

// All conventions' names can be derived from our letters.
TEST(Formats, PhaseNamesAgree) {
  for (uint32_t phase = 0; phase < 4; ++phase) {
    const app::PhaseNames& n = app::phaseNames(phase);
    const std::string letters = n.name;
    std::string upper, dng;
    for (const char c : letters) {
      upper += static_cast<char>(std::toupper(c));
      dng += std::string(dng.empty() ? "" : " ") + (c == 'r' ? "00" : c == 'g' ? "01" : "02");
    }
    EXPECT_EQ(upper, n.fits);
    EXPECT_EQ("VISTREL_" + upper, n.constant);
    EXPECT_EQ(upper.substr(0, 2) + "/" + upper.substr(2), n.block);
    EXPECT_EQ("Bayer" + upper.substr(0, 2), n.pfnc);
    EXPECT_EQ(dng, n.dng);
    EXPECT_EQ(letters.find('b'), static_cast<size_t>(2 * n.blue[0] + n.blue[1]));
    // The block at row 1, column 1 has the letters in reverse order.
    EXPECT_EQ(fmt::format("COLOR_Bayer{}{}2BGR", upper[3], upper[2]), n.opencv);
    EXPECT_EQ(app::parsePhase("--phase", fmt::format("blue={},{}", n.blue[0], n.blue[1])), phase);
  }
}

TEST(Formats, JsonIsTheTable) {
  const auto json = nlohmann::json::parse(Scratch().vistrel("formats --json").out);
  ASSERT_EQ(json["raw"].size(), app::pixelFormats().size());
  const auto text = [](const nlohmann::json& value) {
    return value.is_null() ? std::string() : value.get<std::string>();
  };
  for (size_t i = 0; i < json["raw"].size(); ++i) {
    const app::PixelFormat& f = app::pixelFormats()[i];
    const auto& row = json["raw"][i];
    EXPECT_EQ(row["packing"], app::packingName(f.packing));
    EXPECT_EQ(row["bits"], f.bits);
    EXPECT_EQ(row["phase"], vistrel_phase_name(f.phase));
    EXPECT_EQ(text(row["pfnc"]), f.pfnc);
    EXPECT_EQ(text(row["pfnc_value"]), f.pfncValue);
    EXPECT_EQ(text(row["v4l2"]), f.v4l2);
    EXPECT_EQ(text(row["gstreamer"]), f.gstreamer);
    EXPECT_EQ(text(row["ffmpeg"]), f.ffmpeg);
  }
  ASSERT_EQ(json["phases"].size(), 5u);
  EXPECT_EQ(json["phases"][2], nlohmann::json::parse(R"({
    "phase": "rggb", "rows": "RG/GB", "nBayer": 2, "constant": "VISTREL_RGGB", "pfnc": "BayerRG",
    "fits": "RGGB", "dng": "00 01 01 02", "blue": [1, 1], "opencv": "COLOR_BayerBG2BGR"})"));
  EXPECT_TRUE(json["phases"][4]["nBayer"].is_null());
  EXPECT_EQ(json["results"][3], nlohmann::json::parse(R"({
    "constant": "VISTREL_ARGB32", "bytes": 4, "order": "alpha red green blue", "v4l2": "BA24",
    "gstreamer": "ARGB", "ffmpeg": "argb", "opencv": "CV_8UC4"})"));
}

TEST(Formats, TheInstalledFileIsTheSame) {
  std::ostringstream file;
  file << std::ifstream(VISTREL_FORMATS_JSON).rdbuf();
  EXPECT_EQ(file.str(), Scratch().vistrel("formats --json").out);
}

TEST(Formats, TextHasEveryName) {
  const Scratch scratch;
  const std::string text = scratch.vistrel("formats").out;
  for (const app::PixelFormat& f : app::pixelFormats())
    for (const std::string& name : {f.pfnc, f.pfncValue, f.v4l2, f.gstreamer, f.ffmpeg})
      EXPECT_NE(text.find(" " + name), std::string::npos) << name;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 120u) << line;
}

TEST(Formats, One) {
  const Scratch scratch;
  const auto json = nlohmann::json::parse(scratch.vistrel("formats pBEE --json").out);
  EXPECT_EQ(json, nlohmann::json::parse(R"({"packing": "mipi", "bits": 14, "phase": "bggr",
    "pfnc": null, "pfnc_value": null, "v4l2": "pBEE", "gstreamer": null, "ffmpeg": null})"));
  EXPECT_NE(scratch.vistrel("formats BYR2").out.find("\n  bggr   16    BayerBG16 "),
            std::string::npos);
  const Finished none = scratch.vistrel("formats COLOR_BayerBG2BGR");
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.err.find("vistrel: NAME COLOR_BayerBG2BGR: unknown pixel format."), 0u);
}

}  // namespace
}  // namespace vistrel
