// Files of every kind that are damaged, or lie about what they hold: each is refused or right, in
// little time and memory.
#include <fitsio.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>

#include "tests/amount.h"
#include "tests/apps/input/fits_file.h"
#include "tests/apps/input/gzip.h"
#include "tests/apps/input/tiff_file.h"
#include "tests/apps/input/tiled_fits.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/apps/texture.h"
#include "tests/sanitizer.h"

namespace vistrel {
namespace {

constexpr uint32_t kWidth = 60, kHeight = 44, kSamples = kWidth * kHeight;

// A file, and the picture that it makes.
struct Whole {
  std::string name, bytes, options, picture;
  size_t samplesAt;  // where its samples begin, which are bytes, uncompressed; 0: they aren't
  bool isChecked;    // damaged samples are noticed by a checksum
};

struct Damaged : ::testing::Test {
  Scratch scratch;
  std::vector<Whole> files;
  std::mt19937 random{test::seed()};

  uint32_t below(size_t limit) { return static_cast<uint32_t>(random() % limit); }

  void add(const std::string& name, const std::string& bytes, const std::string& options = "",
           bool isPlain = false, bool isChecked = false) {
    const std::string path = std::to_string(files.size()) + name;
    scratch.write(path, bytes);
    const Finished made = convert(path, options);
    ASSERT_EQ(made.status, 0) << path << ": " << made.err;
    const size_t at = isPlain ? bytes.find(made.out.substr(made.out.size() - kSamples)) : 0;
    ASSERT_NE(at, bytes.npos) << path;
    files.push_back({path, bytes, options, made.out, at, isChecked});
  }
  void addTiff(const std::string& name, const TiffSpec& spec) {
    writeTiff(scratch / "whole.tif", spec, texture);
    add(name, scratch.read("whole.tif"));
  }

  void addAll();

  // As the program writes it, in 64 MiB and a second of the processor. The clock on the wall only
  // ends what hangs.
  Finished convert(const std::string& path, const std::string& options) const {
    const auto begin = std::chrono::steady_clock::now();
    const Finished made =
        scratch.vistrel("convert " + path + " --phase mono -o pgm:-" + options, [] {
          const rlimit memory{64 << 20, 64 << 20}, time{1, 1};
          if (!VISTREL_SANITIZED) setrlimit(RLIMIT_DATA, &memory);
          if (!VISTREL_SANITIZED) setrlimit(RLIMIT_CPU, &time);
        });
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(seconds.count(), 60) << path;
    return made;
  }

  std::string damaged(const Whole& file, std::string& what);
  void expectGoodEnd(const Whole& file, const std::string& bytes);
  static bool isElsewhereSame(const Whole& file, const std::string& bytes);
  void expectPicture(const Whole& file, const std::string& bytes, const Finished& made);
};

void Damaged::addAll() {
  const auto eight = [](uint32_t x, uint32_t y) { return texture(x, y) & 255; };
  const std::string samples = [&] {
    std::string all;
    for (uint32_t y = 0; y < kHeight; ++y)
      for (uint32_t x = 0; x < kWidth; ++x) all += static_cast<char>(eight(x, y));
    return all;
  }();
  add(".pgm", pgm(kWidth, kHeight, 255, eight), "", true);
  add(".pgm", pgm(kWidth, kHeight, 4095, texture));
  add(".pam",
      "P7\nWIDTH 60\nHEIGHT 44\nDEPTH 1\nMAXVAL 255\nTUPLTYPE GRAYSCALE\nENDHDR\n" + samples, "",
      true);
  add(".npy",
      std::string("\x93NUMPY\1\0\x3B\0", 10) +
          "{'descr': '|u1', 'fortran_order': False, 'shape': (44, 60)}" + samples,
      "", true);
  add(".raw", samples, " -s 60x44 --bits 8", true);
  add(".raw", "1234567890" + samples + samples, " -s 60x44 --pixfmt GREY --skip 10 --frame 0");
  add(".fits", fits(cards(8, {"60", "44"}), samples), "", true);
  add(".fits", fits(cards(-32, {"60", "11"}), samples));
  add(".fits.gz", deflated(fits(cards(8, {"60", "44"}), samples)), "", false, true);
  for (const int compression : {RICE_1, GZIP_1}) {
    const std::string name = "tiles" + std::to_string(compression) + ".fits";
    writeTiledFits(scratch / name, compression, kWidth, kHeight, texture);
    add(".fits", scratch.read(name));
  }
  scratch.write("in.pgm", pgm(kWidth, kHeight, 255, eight));
  scratch.write("wide.pgm", pgm(kWidth, kHeight, 65535, texture));
  for (const std::string command :
       {"convert in.pgm --phase mono -o out.png", "convert wide.pgm --phase mono -o out.png"}) {
    ASSERT_EQ(scratch.vistrel(command).status, 0);
    add(".png", scratch.read("out.png"), "", false, true);
  }
  TiffSpec spec;
  spec.width = kWidth;
  spec.height = kHeight;
  for (const uint32_t compression : {1u, 5u, 8u, 32773u}) {
    spec.compression = compression;
    spec.tile = compression == 5 ? 16 : 0;
    addTiff(".tif", spec);
  }
  ASSERT_EQ(scratch.vistrel("unpack in.pgm --phase rggb -o out.dng").status, 0);
  add(".dng", scratch.read("out.dng"), "", true);
  spec.isDng = spec.inSubdirectory = true;
  spec.compression = 1;
  spec.cfa = {0, 1, 1, 2};
  spec.activeArea = {2, 2, kHeight, kWidth};
  spec.linearization = {0, 1, 4, 9, 16, 4000};
  addTiff(".dng", spec);
}

// One of the ways in which files are damaged; most of them where the headers are.
std::string Damaged::damaged(const Whole& file, std::string& what) {
  std::string bytes = file.bytes;
  const size_t size = bytes.size(), head = std::min<size_t>(size, 600);
  const size_t at = below(random() % 4 ? head : size);
  const size_t count = std::min<size_t>(1 + below(random() % 2 ? 4 : 200), size - at);
  const std::string digits = "0123456789-+.eE() ";
  const uint32_t kind = below(8);
  if (kind == 0) bytes.resize(at);
  if (kind == 1) bytes[at] = static_cast<char>(bytes[at] ^ 1 << below(8));
  if (kind == 2) bytes.replace(at, count, std::string(count, random() % 2 ? '\xFF' : '\0'));
  if (kind == 3) bytes.erase(at, count);
  if (kind == 4) bytes.insert(at, bytes.substr(below(size), count));
  if (kind == 5)
    for (size_t i = at; i < at + count; ++i) bytes[i] = static_cast<char>(random());
  if (kind == 6) bytes += bytes.substr(at);
  if (kind == 7) {  // a number of a text
    const size_t digit = bytes.find_first_of("0123456789", at);
    if (digit < size) bytes.replace(digit, 1, random() % 2 ? "99999" : digits.substr(below(18), 1));
  }
  what =
      "kind " + std::to_string(kind) + " at " + std::to_string(at) + ", " + std::to_string(count);
  return bytes;
}

void Damaged::expectGoodEnd(const Whole& file, const std::string& bytes) {
  scratch.write(file.name, bytes);
  const Finished made = convert(file.name, file.options);
  EXPECT_TRUE(made.status == 0 || made.status == 3) << made.status << ": " << made.err;
  EXPECT_EQ(made.err.find("vistrel: "), made.err.empty() ? made.err.npos : 0) << made.err;
  if (made.status == 0) {
    expectPicture(file, bytes, made);
  } else {
    EXPECT_FALSE(made.err.empty());
    EXPECT_EQ(made.out, "");
  }
}

// The size of the picture is the one that it says. Samples are as they were where a checksum
// protects them, and as the bytes are where nothing but such bytes changed.
void Damaged::expectPicture(const Whole& file, const std::string& bytes, const Finished& made) {
  uint32_t width = 0, height = 0, maxval = 0;
  int header = 0;
  ASSERT_EQ(std::sscanf(made.out.c_str(), "P5\n%u %u\n%u%n", &width, &height, &maxval, &header), 3);
  const size_t all = size_t{width} * height * (maxval > 255 ? 2 : 1);
  EXPECT_EQ((made.out.size() - static_cast<size_t>(header + 1)) % all, 0u);
  if (file.isChecked) {
    EXPECT_TRUE(made.out == file.picture);
  }
  if (file.samplesAt && isElsewhereSame(file, bytes)) {
    const std::string samples = bytes.substr(file.samplesAt, kSamples);
    EXPECT_TRUE(made.out == file.picture.substr(0, file.picture.size() - kSamples) + samples);
  }
}

// Whether nothing but samples changed.
bool Damaged::isElsewhereSame(const Whole& file, const std::string& bytes) {
  const size_t end = file.samplesAt + kSamples;
  return bytes.size() == file.bytes.size() &&
         bytes.compare(0, file.samplesAt, file.bytes, 0, file.samplesAt) == 0 &&
         bytes.compare(end, bytes.npos, file.bytes, end) == 0;
}

// VISTREL_AMOUNT in the environment is the number of files.
TEST_F(Damaged, FilesAreRefusedOrRight) {
  ASSERT_NO_FATAL_FAILURE(addAll());
  const uint64_t amount = test::amount(150);
  for (uint64_t i = 0; i < amount && !HasFailure(); ++i) {
    const Whole& file = files[i % files.size()];
    std::string what;
    const std::string bytes = damaged(file, what);
    SCOPED_TRACE(file.name + ", file " + std::to_string(i) + ", " + what);
    expectGoodEnd(file, bytes);
  }
  if (!HasFailure())
    std::printf("%llu damaged files are refused or right\n",
                static_cast<unsigned long long>(amount));
}

}  // namespace
}  // namespace vistrel
