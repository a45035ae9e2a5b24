#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

// An array whose header is the dictionary; `version` 1 has two bytes for its length.
std::string npy(const std::string& dictionary, const std::string& samples, int version = 1) {
  std::string file("\x93NUMPY", 6);
  const size_t size = dictionary.size();
  file += {static_cast<char>(version), '\0', static_cast<char>(size), static_cast<char>(size >> 8)};
  if (version > 1) file += {'\0', '\0'};
  return file + dictionary + samples;
}

std::string dictionary(const std::string& type, const std::string& shape,
                       const std::string& order = "False") {
  return "{'descr': '" + type + "', 'fortran_order': " + order + ", 'shape': " + shape + ", }\n";
}

struct NpyReader : InputTest {
  void expectRejected(const std::string& text, const std::string& file) const {
    scratch.write("in.npy", file);
    const Finished result = scratch.vistrel("info in.npy");
    EXPECT_EQ(result.status, 3) << file;
    EXPECT_EQ(result.err, "vistrel: in.npy: " + text + "\n");
  }
};

TEST_F(NpyReader, Bytes) {
  scratch.write("in.npy", npy(dictionary("|u1", "(2, 3)"), "abcdef"));
  EXPECT_EQ(info("in.npy")["format"], "NPY");
  EXPECT_EQ(info("in.npy")["bits"], 8);
  expectSamples("in.npy", 3, 2, 8, [](uint32_t x, uint32_t y) { return 'a' + 3 * y + x; });
}

TEST_F(NpyReader, BothByteOrders) {
  const auto sample = [](uint32_t x, uint32_t y) { return 0x1234 + 0x1111 * (2 * y + x); };
  scratch.write("in.npy", npy(dictionary("<u2", "(2, 2)"), "\x34\x12\x45\x23\x56\x34\x67\x45"));
  expectSamples("in.npy", 2, 2, 16, sample);
  scratch.write("in.npy", npy(dictionary(">u2", "(2, 2)"), "\x12\x34\x23\x45\x34\x56\x45\x67"));
  expectSamples("in.npy", 2, 2, 16, sample);
}

TEST_F(NpyReader, ReadsWhatIsWritten) {
  scratch.write("in.pgm", pgm(7, 5, 4095, noise(12)));
  ASSERT_EQ(scratch.vistrel("unpack in.pgm -o own.npy").status, 0);
  ASSERT_EQ(scratch.vistrel("convert own.npy --bits 12 --phase mono --depth 16 -o own.pgm").err,
            "");
  EXPECT_EQ(scratch.read("own.pgm"), scratch.read("in.pgm"));
  std::filesystem::create_directory(scratch / "frames");
  std::filesystem::rename(scratch / "own.npy", scratch / "frames/own.npy");
  ASSERT_EQ(scratch.vistrel("convert frames --bits 12 --phase mono -o out/").err, "");
  EXPECT_TRUE(std::filesystem::exists(scratch / "out/own.png")) << "it is a frame of the folder";
}

TEST_F(NpyReader, HeadersOfAllVersionsAndAnyOrder) {
  const std::string other = "{ 'shape':(1,2),'fortran_order':False ,'descr':'|u1'}   \n";
  for (const int version : {1, 2, 3}) {
    scratch.write("in.npy", npy(other, "ab", version));
    expectSamples("in.npy", 2, 1, 8, [](uint32_t x, uint32_t) { return 'a' + x; });
  }
}

TEST_F(NpyReader, OtherArrays) {
  const auto expectType = [this](const std::string& type) {
    expectRejected("NPY: samples of type \"" + type + "\": uint8 and uint16 are read",
                   npy(dictionary(type, "(1, 2)"), std::string(16, 'a')));
  };
  for (const char* type : {"<i2", "|b1", "<f4", "<u4", "|u2", "=u1", "u1", "<u1x"})
    expectType(type);
  expectRejected("NPY: samples of several fields: uint8 and uint16 are read",
                 npy("{'descr': [('a', '|u1')], 'fortran_order': False, 'shape': (1, 2)}", "ab"));
  expectRejected(
      "NPY: Fortran order: rows one after the other are expected, as "
      "numpy.ascontiguousarray() makes them",
      npy(dictionary("|u1", "(1, 2)", "True"), "ab"));
  const auto expectShape = [this](const std::string& shape, const std::string& text) {
    expectRejected("NPY: " + text, npy(dictionary("|u1", shape), "abcdefgh"));
  };
  expectShape("()", "0 axes: 2 are expected, height and width");
  expectShape("(8,)", "1 axis: 2 are expected, height and width");
  expectShape("(2, 2, 2)", "3 axes: 2 are expected, height and width");
  expectShape("(0, 2)", "an axis of \"0\": 1 to 4294967295 are allowed");
  expectShape("(2, 4294967296)", "an axis of \"4294967296\": 1 to 4294967295 are allowed");
  expectShape("(2, -1)", "an axis of \"-1\": 1 to 4294967295 are allowed");
}

TEST_F(NpyReader, DamagedHeaders) {
  const std::string whole = dictionary("|u1", "(1, 2)");
  expectRejected("NPY: version 4 of the format: 1 to 3 are read", npy(whole, "ab", 4));
  expectRejected("NPY: version 0 of the format: 1 to 3 are read", npy(whole, "ab", 0));
  expectRejected("the file ends within the header", npy(whole, "").substr(0, 40));
  expectRejected("the file ends within the header", std::string("\x93NUMPY\1\0", 8));
  std::string longer = npy(whole, "ab", 2);
  longer[10] = 1;
  expectRejected("NPY: a header of 65596 bytes: at most 65535 are allowed", longer);
  expectRejected("NPY: its header lacks \"{\"", npy("'descr'", "ab"));
  expectRejected("NPY: its header lacks \"}\"", npy("{'descr': '|u1'", "ab"));
  expectRejected("NPY: its header lacks \"'\"", npy("{'descr", "ab"));
  expectRejected("NPY: its header lacks \"False\"",
                 npy(dictionary("|u1", "(1, 2)", "Maybe"), "ab"));
  expectRejected("NPY: its header lacks the type, order or shape",
                 npy("{'descr': '|u1', 'shape': (1, 2)}", "ab"));
  for (const std::string key : {"descr': '|u1", "colour': 'red"})
    expectRejected("NPY: \"" + key.substr(0, key.find('\'')) +
                       "\" in its header: one type, order and shape are expected",
                   npy("{'descr': '|u1', '" + key + "'}", "ab"));
  expectRejected("NPY: its header goes on behind the dictionary", npy(whole + "{}", "ab"));
}

TEST_F(NpyReader, SamplesAreCounted) {
  expectRejected("the file is too short: 3x2 samples of 16 bits do not fit its 81 bytes",
                 npy(dictionary("<u2", "(2, 3)"), std::string(11, 'a')));
  expectRejected("the file is too short: 65000x65000 samples of 8 bits do not fit its 80 bytes",
                 npy(dictionary("|u1", "(65000, 65000)"), "ab"));
  scratch.write("in.npy", npy(dictionary("|u1", "(1, 2)"), "abcd"));
  EXPECT_EQ(info("in.npy", "vistrel: in.npy: 2 bytes after the last frame are ignored\n")["max"],
            'b');
}

}  // namespace
}  // namespace vistrel
