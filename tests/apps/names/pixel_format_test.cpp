// Names of formats, compared with lists written by hand.
#include <gtest/gtest.h>

#include <linux/videodev2.h>

#include <set>

#include "apps/error.h"
#include "apps/names/pixel_format.h"
#include "vistrel/vistrel.hpp"

namespace vistrel {
namespace {

struct Named {
  const char* name;
  std::optional<uint32_t> phase;
  uint32_t bits, packing;
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
    {"BayerGR14p", "0x010E0105", GR, 14, VISTREL_PACKING_PFNC},
    {"BayerRG14p", "0x010E0106", RG, 14, VISTREL_PACKING_PFNC},
    {"BayerGB14p", "0x010E0107", GB, 14, VISTREL_PACKING_PFNC},
    {"BayerBG14p", "0x010E0108", BG, 14, VISTREL_PACKING_PFNC},
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
    {"Mono14p", "0x010E0104", M, 14, VISTREL_PACKING_PFNC},
    {"Mono10Packed", "0x010C0004", M, 10, VISTREL_PACKING_GIGE},
    {"Mono12Packed", "0x010C0006", M, 12, VISTREL_PACKING_GIGE},
};

constexpr Named kV4l2Codes[] = {
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
    {"SRGGB10P", RG, 10, VISTREL_PACKING_MIPI},
    {"SGRBG8", GR, 8, VISTREL_PACKING_BYTES},
    {"V4L2_PIX_FMT_SGBRG12P", GB, 12, VISTREL_PACKING_MIPI},
    {"V4L2_PIX_FMT_SBGGR14", BG, 14, VISTREL_PACKING_LITTLE},
    {"V4L2_PIX_FMT_Y16", M, 16, VISTREL_PACKING_LITTLE},
    {"V4L2_PIX_FMT_GREY", M, 8, VISTREL_PACKING_BYTES},
    {"SRGGB12_CSI2P", RG, 12, VISTREL_PACKING_MIPI},
    {"SGBRG10_CSI2P", GB, 10, VISTREL_PACKING_MIPI},
    {"R8", M, 8, VISTREL_PACKING_BYTES},
    {"R10_CSI2P", M, 10, VISTREL_PACKING_MIPI},
    {"RAW8", std::nullopt, 8, VISTREL_PACKING_BYTES},
    {"RAW10", std::nullopt, 10, VISTREL_PACKING_MIPI},
    {"RAW12", std::nullopt, 12, VISTREL_PACKING_MIPI},
    {"RAW14", std::nullopt, 14, VISTREL_PACKING_MIPI},
};

void expectFormat(const std::string& name, std::optional<uint32_t> phase, uint32_t bits,
                  uint32_t packing) {
  const app::PixelFormat* format = app::findPixelFormat(name);
  ASSERT_NE(format, nullptr) << name;
  EXPECT_EQ(format->phase, phase) << name;
  EXPECT_EQ(format->bits, bits) << name;
  EXPECT_EQ(format->packing, packing) << name;
}

TEST(PixelFormat, EveryNameOfTheHandWrittenLists) {
  for (const auto& f : kPfnc) {
    expectFormat(f.name, f.phase, f.bits, f.packing);
    expectFormat(f.value, f.phase, f.bits, f.packing);
  }
  for (const Named& f : kV4l2Codes) expectFormat(f.name, f.phase, f.bits, f.packing);
  for (const Named& f : kOthers) expectFormat(f.name, f.phase, f.bits, f.packing);
}

// So the table contains nothing that is missing in the lists.
TEST(PixelFormat, NoOtherPfncOrV4l2Names) {
  size_t pfnc = 0, v4l2 = 0;
  for (const app::PixelFormat& f : app::pixelFormats()) {
    pfnc += !f.pfnc.empty();
    v4l2 += !f.v4l2Code.empty();
  }
  EXPECT_EQ(pfnc, std::size(kPfnc));
  EXPECT_EQ(v4l2, std::size(kV4l2Codes));
}

TEST(PixelFormat, EveryNameLeadsToItsOwnRow) {
  for (const app::PixelFormat& f : app::pixelFormats())
    for (const std::string& name :
         {f.pfnc, f.pfncValue, f.v4l2Code, f.v4l2Name, f.libcamera, f.gstreamer, f.ffmpeg, f.mipi})
      EXPECT_EQ(app::findPixelFormat(name), name.empty() ? nullptr : &f) << name;
}

TEST(PixelFormat, CaseOfNames) {
  expectFormat("bayerrg12P", RG, 12, VISTREL_PACKING_PFNC);
  expectFormat("0x0108000b", BG, 8, VISTREL_PACKING_BYTES);
  expectFormat("BGGR", BG, 8, VISTREL_PACKING_BYTES);
  expectFormat("srggb12_csi2p", RG, 12, VISTREL_PACKING_MIPI);
  expectFormat("bayer_rggb10le", RG, 10, VISTREL_PACKING_LITTLE);
  expectFormat("bayer_gbrg14be", GB, 14, VISTREL_PACKING_BIG);
  for (const char* none : {"bayer_",
                           "bayer_gray",
                           "bayer_rggb",
                           "bayer_BayerRG10",
                           "PRCC",
                           "prcc",
                           "ba81",
                           "byr2",
                           "",
                           " ",
                           "BayerGB",
                           "BayerGB2BGR",
                           "COLOR_BayerGB2BGR",
                           "GB",
                           "Mono",
                           "0x0108000",
                           "mono",
                           "V4L2_PIX_FMT_",
                           "V4L2_PIX_FMT_BayerRG8",
                           "RAW",
                           "RAW16"})
    EXPECT_EQ(app::findPixelFormat(none), nullptr) << none;
}

#define VISTREL_KERNEL(name) \
  { V4L2_PIX_FMT_##name, "V4L2_PIX_FMT_" #name }
constexpr struct {
  uint32_t code;
  const char* name;
} kKernel[] = {
    VISTREL_KERNEL(GREY),     VISTREL_KERNEL(Y10),      VISTREL_KERNEL(Y12),
    VISTREL_KERNEL(Y14),      VISTREL_KERNEL(Y16),      VISTREL_KERNEL(Y10P),
    VISTREL_KERNEL(SBGGR8),   VISTREL_KERNEL(SGBRG8),   VISTREL_KERNEL(SGRBG8),
    VISTREL_KERNEL(SRGGB8),   VISTREL_KERNEL(SBGGR10),  VISTREL_KERNEL(SGBRG10),
    VISTREL_KERNEL(SGRBG10),  VISTREL_KERNEL(SRGGB10),  VISTREL_KERNEL(SBGGR10P),
    VISTREL_KERNEL(SGBRG10P), VISTREL_KERNEL(SGRBG10P), VISTREL_KERNEL(SRGGB10P),
    VISTREL_KERNEL(SBGGR12),  VISTREL_KERNEL(SGBRG12),  VISTREL_KERNEL(SGRBG12),
    VISTREL_KERNEL(SRGGB12),  VISTREL_KERNEL(SBGGR12P), VISTREL_KERNEL(SGBRG12P),
    VISTREL_KERNEL(SGRBG12P), VISTREL_KERNEL(SRGGB12P), VISTREL_KERNEL(SBGGR14),
    VISTREL_KERNEL(SGBRG14),  VISTREL_KERNEL(SGRBG14),  VISTREL_KERNEL(SRGGB14),
    VISTREL_KERNEL(SBGGR14P), VISTREL_KERNEL(SGBRG14P), VISTREL_KERNEL(SGRBG14P),
    VISTREL_KERNEL(SRGGB14P), VISTREL_KERNEL(SBGGR16),  VISTREL_KERNEL(SGBRG16),
    VISTREL_KERNEL(SGRBG16),  VISTREL_KERNEL(SRGGB16),
};

// The kernel's own header says which code a name stands for.
TEST(PixelFormat, NamesOfTheKernelLeadToItsCodes) {
  for (const auto& [code, name] : kKernel) {
    std::string text;
    for (int shift = 0; shift < 32; shift += 8) text += static_cast<char>(code >> shift);
    ASSERT_NE(app::findPixelFormat(name), nullptr) << name;
    EXPECT_EQ(app::findPixelFormat(name), app::findPixelFormat(text)) << name;
  }
}

// The names cover what the library unpacks: of 16-bit samples the depths that cameras have.
TEST(PixelFormat, EveryPackingHasNames) {
  std::set<std::pair<uint32_t, uint32_t>> named, unpacked;
  for (const app::PixelFormat& f : app::pixelFormats()) named.insert({f.packing, f.bits});
  for (uint32_t packing = 0; vistrel_packing_name(packing); ++packing)
    for (uint32_t bits = 0; bits <= 16; ++bits) {
      const bool unusual = app::are16Bit(packing) && (bits < 10 || bits % 2);
      if (!unusual && tryPackedLayoutOf(packedOf({}, 1, 1, packing, bits)))
        unpacked.insert({packing, bits});
    }
  EXPECT_EQ(named, unpacked);
}

// How many samples fill how many bytes, as the packings are defined.
TEST(PixelFormat, Groups) {
  const auto groupOf = [](uint32_t packing, uint32_t bits) {
    const app::SampleGroup group = app::groupOf(packing, bits);
    return std::pair(group.pixels, group.bytes);
  };
  EXPECT_EQ(groupOf(VISTREL_PACKING_BYTES, 8), std::pair(1u, 1u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_LITTLE, 10), std::pair(1u, 2u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_BIG, 16), std::pair(1u, 2u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_PFNC, 10), std::pair(4u, 5u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_PFNC, 12), std::pair(2u, 3u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_PFNC, 14), std::pair(4u, 7u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_GIGE, 10), std::pair(2u, 3u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_MIPI, 12), std::pair(2u, 3u));
  EXPECT_EQ(groupOf(VISTREL_PACKING_MIPI, 14), std::pair(4u, 7u));
}

std::string errorOf(const char* name) {
  return app::attempt([name] { app::parsePixelFormat("--pixfmt", name); }).text;
}

TEST(PixelFormat, TheErrorSuggestsTheNearestName) {
  EXPECT_EQ(errorOf("BayerRG12pp"),
            "--pixfmt BayerRG12pp: unknown pixel format; the nearest is BayerRG12p; "
            "`vistrel formats` lists all");
  EXPECT_NE(errorOf("SRGB12P").find("the nearest is SRGGB12P;"), std::string::npos);
  EXPECT_NE(errorOf("V4L2_PIX_FMT_SRGGB10PP").find("is V4L2_PIX_FMT_SRGGB10P;"), std::string::npos);
  for (const char* far : {"COLOR_BayerBG2BGR", "BayerBG2BGR", "mosaic", "nv12"})
    EXPECT_EQ(errorOf(far).find("nearest"), std::string::npos) << errorOf(far);
}

// Every name with any one of its characters wrong, and with underscores for hyphens or the other
// way round, leads to a name.
TEST(PixelFormats, MisspeltNamesAreCorrected) {
  const auto expectHelp = [](const std::string& text) {
    if (app::findPixelFormat(text)) return;  // another name
    const std::string error = app::attempt([&] { app::parsePixelFormat("--pixfmt", text); }).text;
    EXPECT_NE(error.find("the nearest is "), std::string::npos) << error;
  };
  size_t names = 0;
  for (const app::PixelFormat& f : app::pixelFormats()) {
    std::vector<std::string> all = app::namesOf(f);
    if (!f.v4l2Code.empty()) all.push_back(f.v4l2Code);
    for (const std::string& name : all) {
      for (size_t i = 0; i < name.size(); ++i) {
        std::string wrong = name;
        wrong[i] = name[i] == 'q' ? 'x' : 'q';
        expectHelp(wrong);
      }
      std::string other = name;
      for (char& c : other) c = c == '_' ? '-' : static_cast<char>(std::tolower(c));
      expectHelp(other);
      ++names;
    }
  }
  EXPECT_GT(names, 300u);
}

}  // namespace
}  // namespace vistrel
