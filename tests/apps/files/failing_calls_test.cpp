// A program whose calls to the system fail, one at a time: whatever has its final name is complete,
// and what is missing is reported and made by a second run.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>

#include "tests/amount.h"
#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/apps/texture.h"

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

struct Call {
  const char* kind;
  std::vector<int> errors;
};
const std::vector<Call> kCalls{{"write", {ENOSPC, EIO, EPIPE}},
                               {"open", {EACCES, EIO}},
                               {"rename", {EACCES, EIO, ENOSPC}},
                               {"fsync", {EIO, ENOSPC}},
                               {"close", {EIO, ENOSPC}}};

constexpr const char* kCommands[] = {
    "convert in0.pgm -o out/a.png",
    "convert in0.pgm -o out/a.jpg",
    "convert in0.pgm --mosaic -o out/a.dng",
    "convert in0.pgm in1.pgm -o out/film.y4m",
    "convert in0.pgm -o -",
    "develop in0.pgm -o out/a.tif --depth 16",
    "unpack in0.pgm -o out/a.npy",
    "convert in0.pgm in1.pgm in2.pgm -o out/new/ -j 1 --keep-going --manifest out/m.jsonl",
    "develop in0.pgm in1.pgm in2.pgm -o out -j 3 --type ppm",
};

struct FailingCalls : ::testing::Test {
  Scratch scratch;
  FailingCalls() {
    for (const std::string name : {"in0.pgm", "in1.pgm", "in2.pgm"})
      scratch.write(name, pgm(120, 90, 4095, texture, "rggb"));
  }

  void clear() const {
    fs::remove_all(scratch / "out");
    fs::create_directory(scratch / "out");
  }
  // The pictures, in files or on standard output; the manifest has times.
  Files results(const std::string& command, const Finished& finished) const {
    Files files;
    if (command.ends_with("-o -")) files["-"] = finished.out;
    for (const auto& entry : fs::recursive_directory_iterator(scratch / "out"))
      if (entry.is_regular_file() && entry.path().extension() != ".jsonl")
        files[entry.path().filename()] = scratch.read(fs::relative(entry.path(), scratch / ""));
    return files;
  }
  // Runs the command; the call of that number fails, none if it is 0.
  Finished run(const std::string& command, const char* kind, uint64_t number, int error) const {
    return scratch.vistrel(command, [&] {
      setenv("VISTREL_FAILING_CALL", kind, 1);
      setenv("VISTREL_FAILING_NUMBER", std::to_string(number).c_str(), 1);
      setenv("VISTREL_FAILING_ERROR", std::to_string(error).c_str(), 1);
      setenv("LD_PRELOAD", VISTREL_FAILING_CALLS, 1);
      std::FILE* const count = std::fopen("count", "w+b");
      if (!count || ftruncate(fileno(count), 4) != 0 || dup2(fileno(count), 9) != 9) _exit(98);
    });
  }
  uint32_t counted() const {
    uint32_t count = 0;
    std::ifstream(scratch / "count", std::ios::binary).read(reinterpret_cast<char*>(&count), 4);
    return count;
  }

  void expectGoodEnd(const std::string& command, const Finished& failed, int error,
                     const Files& whole) const {
    for (const std::string& name : scratch.names())
      EXPECT_EQ(name.find(".vistrel-"), name.npos) << name;
    const Files left = results(command, failed);
    for (const auto& [name, bytes] : left)
      if (name != "-") {
        EXPECT_TRUE(whole.count(name) && bytes == whole.at(name)) << name << " is not complete";
      }
    if (failed.status == 0) {
      EXPECT_TRUE(left == whole) << "nothing is reported";
    } else {
      EXPECT_LE(failed.status, 4);
      EXPECT_NE(failed.err.find(std::strerror(error)), failed.err.npos) << failed.err;
    }
    const Finished second = scratch.vistrel(command);
    EXPECT_EQ(second.status, 0) << second.err;
    EXPECT_TRUE(results(command, second) == whole) << "a second run doesn't complete it";
  }
};

// VISTREL_AMOUNT in the environment is the largest number of calls of a kind that fail in a
// command; without it, a few from the first to the last. Where all fail, they do with each error.
TEST_F(FailingCalls, EndWellEverywhere) {
  const uint64_t most = test::amount(3);
  uint64_t failures = 0;
  for (const std::string command : kCommands) {
    clear();
    const Files whole = results(command, scratch.vistrel(command));
    for (const Call& call : kCalls) {
      clear();
      ASSERT_EQ(run(command, call.kind, 0, 0).status, 0) << "the calls aren't trapped";
      const uint64_t all = counted(), tried = std::min(all, most);
      const uint64_t errors = tried == all ? call.errors.size() : 1;
      for (uint64_t i = 0; i < tried * errors; ++i) {
        const uint64_t number = 1 + i / errors * (all - 1) / std::max<uint64_t>(tried - 1, 1);
        const int error = call.errors[i % call.errors.size()];
        SCOPED_TRACE(command + ": " + call.kind + " " + std::to_string(number) + ": " +
                     std::strerror(error));
        clear();
        const Finished failed = run(command, call.kind, number, error);
        expectGoodEnd(command, failed, error, whole);
        ++failures;
      }
    }
  }
  if (!HasFailure())
    std::printf("%llu failures end well\n", static_cast<unsigned long long>(failures));
}

}  // namespace
}  // namespace vistrel
