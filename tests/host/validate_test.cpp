// The checks that need neither region nor memory: one table, a row for each rejection.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

constexpr const char* kReserved = "only 0 is allowed in this version";
constexpr const char* kPhases =
    "grbg (0), bggr (1), rggb (2), gbrg (3), mono (4), bgr (256) are allowed";
constexpr const char* kGains = "1 to 65536 are allowed; 4096 is a gain of 1";

struct Request {
  vistrel_frame frame = bayer(64, 48);
  vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint16_t> table = std::vector<uint16_t>(65536);

  void setFrame(const vistrel_frame& f) {
    frame = f;
    conversion = defaultConversion(frame);
  }
  void setTable(uint32_t entries) {
    conversion.reduction = VISTREL_TABLE;
    conversion.table = table.data();
    conversion.table_entries = entries;
  }
};

struct Fault {
  const char* name;
  void (*change)(Request&);
  Rejection expected;
};
void PrintTo(const Fault& c, std::ostream* out) { *out << c.name; }

const Fault kFrames[] = {
    {"Ordinary", [](Request&) {}, kAccepted},
    {"NoColumn",
     [](Request& r) { r.setFrame(bayer(0, 48)); },
     {VISTREL_BAD_SIZE, "frame.width", "0", "a frame has at least 1 column"}},
    {"NoRow",
     [](Request& r) { r.setFrame(bayer(64, 0)); },
     {VISTREL_BAD_SIZE, "frame.height", "0", "a frame has at least 1 row"}},
    {"FourBytesASample",
     [](Request& r) { r.frame.bytes_per_sample = 4; },
     {VISTREL_BAD_BITS, "frame.bytes_per_sample", "4", "1 and 2 are allowed"}},
    {"SeventeenBits",
     [](Request& r) { r.frame.bits = 17; },
     {VISTREL_BAD_BITS, "frame.bits", "17", "8 to 16 are allowed"}},
    {"TenBitsInAByte",
     [](Request& r) { r.frame.bytes_per_sample = 1, r.frame.bits = 10; },
     {VISTREL_BAD_BITS, "frame.bits", "10", "samples of one byte have 8"}},
    {"ShortStride",
     [](Request& r) { r.frame.stride = 127; },
     {VISTREL_BAD_STRIDE, "frame.stride", "127", "a row of 64 samples has 128 bytes"}},
    {"ShortestStride", [](Request& r) { r.frame.stride = 128; }, kAccepted},
    {"Phase",
     [](Request& r) { r.frame.phase = 5; },
     {VISTREL_BAD_PHASE, "frame.phase", "5", kPhases}},
    {"Alignment",
     [](Request& r) { r.frame.alignment = 2; },
     {VISTREL_BAD_ALIGNMENT, "frame.alignment", "2", "0 (low bits) and 1 (high bits) are allowed"}},
    {"Reserved",
     [](Request& r) { r.frame.reserved[2] = 1; },
     {VISTREL_BAD_RESERVED, "frame.reserved[2]", "1", kReserved}},
};

const Fault kFormats[] = {
    {"Unknown",
     [](Request& r) { r.conversion.format = 99; },
     {VISTREL_BAD_FORMAT, "conversion.format", "99",
      "rggb frames allow BGR24 (2), ARGB32 (3), ARGB32_4 (4), BGR48 (7), GRAY8 (5), GRAY16 (6), "
      "RGB24 (256), BGRA32 (257), RGBA32 (258), RGB48 (259), "
      "RGB24_PLANAR (260), RGB48_PLANAR (261), NV12 (262), I420 (263), I444 (264)"}},
    {"UnknownForMono",
     [](Request& r) { r.setFrame(mono(64, 48)), r.conversion.format = 99; },
     {VISTREL_BAD_FORMAT, "conversion.format", "99", "mono frames allow MONO8 (0), MONO16 (1)"}},
    {"MonoForBayer",
     [](Request& r) { r.conversion.format = VISTREL_MONO16; },
     {VISTREL_BAD_FORMAT, "conversion.format", "MONO16",
      "it is for mono frames; this one is rggb"}},
    {"ColourForMono",
     [](Request& r) { r.setFrame(mono(64, 48)), r.conversion.format = VISTREL_BGR24; },
     {VISTREL_BAD_FORMAT, "conversion.format", "BGR24",
      "it is for Bayer frames; this one is mono"}},
    {"SixteenBitsOfBytes",
     [](Request& r) { r.setFrame(mono(64, 48)), r.conversion.format = VISTREL_MONO16; },
     {VISTREL_BAD_FORMAT, "conversion.format", "MONO16",
      "it needs 2 bytes per sample; this frame has 1"}},
    {"GrayIsNotReadForColours", [](Request& r) { r.conversion.gray = 2; }, kAccepted},
    {"Gray",
     [](Request& r) { r.conversion.gray = 2, r.conversion.format = VISTREL_GRAY8; },
     {VISTREL_BAD_GRAY, "conversion.gray", "2", "0 (luma) and 1 (raw) are allowed"}},
    {"RawGray",
     [](Request& r) { r.conversion.gray = VISTREL_RAW_GRAY, r.conversion.format = VISTREL_GRAY8; },
     kAccepted},
    {"RawGrayOfNear",
     [](Request& r) {
       r.conversion.gray = VISTREL_RAW_GRAY, r.conversion.format = VISTREL_GRAY8,
       r.conversion.algorithm = VISTREL_NEAR;
     },
     {VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)", "algorithm near has none"}},
    {"RawGrayOfAhd",
     [](Request& r) {
       r.conversion.gray = VISTREL_RAW_GRAY, r.conversion.format = VISTREL_GRAY8,
       r.conversion.algorithm = VISTREL_AHD;
     },
     {VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)", "algorithm ahd has none"}},
    {"BinnedRawGrayOfEdge",
     [](Request& r) {
       r.conversion.gray = VISTREL_RAW_GRAY, r.conversion.format = VISTREL_GRAY8,
       r.conversion.algorithm = VISTREL_EDGE, r.conversion.binning = 2;
     },
     {VISTREL_BAD_GRAY, "conversion.gray", "1 (raw)",
      "raw gray of algorithm edge can't be binned"}},
    {"LumaOfAhd",
     [](Request& r) { r.conversion.format = VISTREL_GRAY8, r.conversion.algorithm = VISTREL_AHD; },
     kAccepted},
};

const Fault kAlgorithms[] = {
    {"Unknown",
     [](Request& r) { r.conversion.algorithm = 9; },
     {VISTREL_BAD_ALGORITHM, "conversion.algorithm", "9",
      "bilinear (0), edge (1), near (2), laroche (3), hamilton (4), vng (5), cok (6), kimmel (7), "
      "grouping (8), ahd (256), directional (257) are allowed"}},
    {"IsNotReadForMono", [](Request& r) { r.setFrame(mono(64, 48)), r.conversion.algorithm = 9; },
     kAccepted},
    {"TooManyBits",
     [](Request& r) { r.conversion.algorithm = VISTREL_LAROCHE; },
     {VISTREL_BAD_ALGORITHM, "conversion.algorithm", "laroche",
      "it supports at most 10 bits; the samples have 12"}},
    {"TooManyBitsLeft",
     [](Request& r) { r.conversion.algorithm = VISTREL_LAROCHE, r.conversion.truncate_to = 11; },
     {VISTREL_BAD_ALGORITHM, "conversion.algorithm", "laroche",
      "it supports at most 10 bits; the samples have 11"}},
    {"Truncated",
     [](Request& r) { r.conversion.algorithm = VISTREL_LAROCHE, r.conversion.truncate_to = 10; },
     kAccepted},
    {"ThresholdOfBilinear",
     [](Request& r) { r.conversion.threshold = 1; },
     {VISTREL_BAD_THRESHOLD, "conversion.threshold", "1",
      "algorithm bilinear has none; only 0 is allowed"}},
    {"Threshold",
     [](Request& r) { r.conversion.algorithm = VISTREL_EDGE, r.conversion.threshold = 255; },
     kAccepted},
    {"LargeThreshold",
     [](Request& r) { r.conversion.algorithm = VISTREL_EDGE, r.conversion.threshold = 256; },
     {VISTREL_BAD_THRESHOLD, "conversion.threshold", "256", "0 to 255 are allowed"}},
    {"BinningOf0",
     [](Request& r) { r.conversion.binning = 0; },
     {VISTREL_BAD_BINNING, "conversion.binning", "0", "1 to 4 are allowed"}},
    {"BinningOf5",
     [](Request& r) { r.conversion.binning = 5; },
     {VISTREL_BAD_BINNING, "conversion.binning", "5", "1 to 4 are allowed"}},
};

const Fault kReductions[] = {
    {"Unknown",
     [](Request& r) { r.conversion.reduction = 8; },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "8", "0 to 7 and 10 are allowed"}},
    {"OfAllBits",
     [](Request& r) {
       r.conversion.reduction = VISTREL_WINDOW_MIDDLE, r.conversion.format = VISTREL_BGR48;
     },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "1",
      "BGR48 keeps all bits; only 0 is allowed"}},
    {"OfTooFewBits",
     [](Request& r) { r.frame.bits = 9, r.conversion.reduction = VISTREL_CURVE_6; },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "7",
      "it needs 10 bits or more; the samples have 9"}},
    {"OfTooFewBitsLeft",
     [](Request& r) { r.conversion.truncate_to = 9, r.conversion.reduction = VISTREL_WINDOW_LOW; },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "2",
      "it needs 10 bits or more; the samples have 9"}},
    {"TruncationTo7",
     [](Request& r) { r.conversion.truncate_to = 7; },
     {VISTREL_BAD_TRUNCATION, "conversion.truncate_to", "7",
      "0 (no truncation) and 8 to 16 are allowed"}},
    {"NullTable", [](Request& r) { r.setTable(1024), r.conversion.table = nullptr; },
     nullPointer("conversion.table")},
    {"TableSize",
     [](Request& r) { r.setTable(256); },
     {VISTREL_BAD_TABLE, "conversion.table_entries", "256",
      "samples of 12 bits take 1024 or 4096"}},
    {"TableSizeOfTenBits",
     [](Request& r) { r.setTable(256), r.conversion.truncate_to = 10; },
     {VISTREL_BAD_TABLE, "conversion.table_entries", "256", "samples of 10 bits take 1024"}},
    {"TableEntry",
     [](Request& r) { r.setTable(1024), r.conversion.truncate_to = 10, r.table[1023] = 256; },
     {VISTREL_BAD_TABLE, "conversion.table[1023]", "256", "0 to 255 are allowed"}},
    {"Table",
     [](Request& r) { r.setTable(1024), r.conversion.truncate_to = 10, r.table[1023] = 255; },
     kAccepted},
    {"TableOf13Bits",
     [](Request& r) { r.setTable(1024), r.frame.bits = 13; },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "10",
      "a table requires 10 to 12 bits; the samples have 13"}},
    {"TableOf9Bits",
     [](Request& r) { r.setTable(1024), r.frame.bits = 9; },
     {VISTREL_BAD_REDUCTION, "conversion.reduction", "10",
      "it needs 10 bits or more; the samples have 9"}},
};

const Fault kPreparations[] = {
    {"Excess",
     [](Request& r) { r.conversion.excess = 2; },
     {VISTREL_BAD_EXCESS, "conversion.excess", "2", "0 (reject) and 1 (mask) are allowed"}},
    {"BlackAtFullScale", [](Request& r) { setBlack(r.conversion, 4095); }, kAccepted},
    {"Black",
     [](Request& r) { r.conversion.black[2] = 4096; },
     {VISTREL_BAD_BLACK, "conversion.black[2]", "4096", "samples of 12 bits allow 0 to 4095"}},
    {"BlackOf16Bits",
     [](Request& r) { r.frame.bits = 16, r.conversion.black[3] = 65536; },
     {VISTREL_BAD_BLACK, "conversion.black[3]", "65536", "samples of 16 bits allow 0 to 65535"}},
    {"White",
     [](Request& r) { r.conversion.white = 4096; },
     {VISTREL_BAD_WHITE, "conversion.white", "4096", "samples of 12 bits are at most 4095"}},
    {"WhiteBalance",
     [](Request& r) { r.conversion.white_balance = 3; },
     {VISTREL_BAD_BALANCE, "conversion.white_balance", "3",
      "0 (none), 1 (gains) and 2 (gray-world) are allowed"}},
    {"GainOf0",
     [](Request& r) {
       r.conversion.white_balance = VISTREL_BALANCE_GAINS, r.conversion.gains[0] = 65536,
       r.conversion.gains[1] = 1;
     },
     {VISTREL_BAD_BALANCE, "conversion.gains[2]", "0", kGains}},
    {"LargeGain",
     [](Request& r) {
       r.conversion.white_balance = VISTREL_BALANCE_GAINS, r.conversion.gains[0] = 65536,
       r.conversion.gains[1] = 1, r.conversion.gains[2] = 65537;
     },
     {VISTREL_BAD_BALANCE, "conversion.gains[2]", "65537", kGains}},
    {"Gains",
     [](Request& r) {
       r.conversion.white_balance = VISTREL_BALANCE_GAINS, r.conversion.gains[0] = 65536,
       r.conversion.gains[1] = 1, r.conversion.gains[2] = 4096;
     },
     kAccepted},
    {"WhiteBalanceOfMono",
     [](Request& r) {
       r.setFrame(mono(64, 48)), r.conversion.white_balance = VISTREL_BALANCE_GRAY_WORLD;
     },
     {VISTREL_BAD_BALANCE, "conversion.white_balance", "2", "a mono frame has no colours"}},
    {"Edges",
     [](Request& r) { r.conversion.edges = 2; },
     {VISTREL_BAD_EDGES, "conversion.edges", "2", "0 (native) and 1 (padded) are allowed"}},
    {"PaddedRawGray",
     [](Request& r) {
       r.conversion.edges = VISTREL_EDGES_PADDED, r.conversion.format = VISTREL_GRAY8,
       r.conversion.gray = VISTREL_RAW_GRAY;
     },
     {VISTREL_BAD_EDGES, "conversion.edges", "1 (padded)", "raw gray has native edges only"}},
    {"PaddedLuma",
     [](Request& r) {
       r.conversion.edges = VISTREL_EDGES_PADDED, r.conversion.format = VISTREL_GRAY8;
     },
     kAccepted},
    {"PaddedColumn",
     [](Request& r) { r.setFrame(bayer(1, 9)), r.conversion.edges = VISTREL_EDGES_PADDED; },
     {VISTREL_REGION_TOO_SMALL, "frame", "1x9",
      "padding a mosaic takes at least 2 columns and 2 rows"}},
    {"Reserved",
     [](Request& r) { r.conversion.reserved[6] = 3; },
     {VISTREL_BAD_RESERVED, "conversion.reserved[6]", "3", kReserved}},
};

struct Validation : ::testing::TestWithParam<Fault> {};

TEST_P(Validation, NamesArgumentValueAndReason) {
  Request r;
  GetParam().change(r);
  expectError(rejectionOf(r.frame, r.conversion), GetParam().expected);
}

const auto nameOf = [](const auto& test) { return test.param.name; };
INSTANTIATE_TEST_SUITE_P(Frame, Validation, ::testing::ValuesIn(kFrames), nameOf);
INSTANTIATE_TEST_SUITE_P(Format, Validation, ::testing::ValuesIn(kFormats), nameOf);
INSTANTIATE_TEST_SUITE_P(Algorithm, Validation, ::testing::ValuesIn(kAlgorithms), nameOf);
INSTANTIATE_TEST_SUITE_P(Reduction, Validation, ::testing::ValuesIn(kReductions), nameOf);
INSTANTIATE_TEST_SUITE_P(Preparation, Validation, ::testing::ValuesIn(kPreparations), nameOf);

struct Limits : ::testing::Test, Request {
  int32_t status() const { return rejectionOf(frame, conversion).status; }
};

TEST_F(Limits, BytesPerSample) {
  for (const uint32_t bytes : {0u, 3u, 4u}) {
    frame.bytes_per_sample = bytes;
    EXPECT_EQ(status(), VISTREL_BAD_BITS) << bytes;
  }
}

TEST_F(Limits, Bits) {
  for (const uint32_t bits : {0u, 7u, 17u, 32u, kMax}) {
    frame.bits = bits;
    EXPECT_EQ(status(), VISTREL_BAD_BITS) << bits;
  }
}

TEST_F(Limits, Truncation) {
  for (const uint32_t bits : {1u, 7u, 17u, kMax}) {
    conversion.truncate_to = bits;
    EXPECT_EQ(status(), VISTREL_BAD_TRUNCATION) << bits;
  }
}

TEST_F(Limits, TableEntries) {
  for (const uint32_t entries : {0u, 256u, 1023u, 1025u, 2048u, 4095u, 8192u}) {
    setTable(entries);
    EXPECT_EQ(status(), VISTREL_BAD_TABLE) << entries;
  }
}

TEST_F(Limits, BitsOfEveryAlgorithm) {
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    conversion.algorithm = a->code;
    for (frame.bits = 8; frame.bits <= 16; ++frame.bits)
      EXPECT_EQ(status(), frame.bits > a->max_bits ? VISTREL_BAD_ALGORITHM : VISTREL_OK)
          << a->name << ", " << frame.bits << " bits";
  }
}

TEST_F(Limits, BitsOfEveryReduction) {
  for (frame.bits = 8; frame.bits <= 16; ++frame.bits)
    for (uint32_t reduction = 0; reduction <= VISTREL_CURVE_6; ++reduction) {
      conversion.reduction = reduction;
      const uint32_t min = reduction == 0 ? 8 : reduction == 1 ? 9 : 10;
      EXPECT_EQ(status(), frame.bits < min ? VISTREL_BAD_REDUCTION : VISTREL_OK)
          << frame.bits << " bits, reduction " << reduction;
    }
}

TEST(AlgorithmList, IsTheTable) {
  Request r;
  r.conversion.algorithm = 9;
  std::string list;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    list.append(i ? ", " : "").append(a->name).append(" (" + std::to_string(a->code) + ")");
  EXPECT_EQ(rejectionOf(r.frame, r.conversion).reason, list + " are allowed");
}

}  // namespace
}  // namespace vistrel
