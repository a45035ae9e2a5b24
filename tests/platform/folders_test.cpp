// Folders by their codes, and the size of the root volume.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "vistrel/platform.h"

namespace vistrel::core::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Each;

// Sets an environment variable during a test.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
  }
  ~Variable() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* const name_;
  std::optional<std::string> before_;
};

// Gives each test an empty home folder.
class Folders : public ::testing::Test {
 protected:
  ~Folders() override { fs::remove_all(home); }

  static fs::path newFolder() {
    std::string name = ::testing::TempDir() + "vistrel_home_XXXXXX";
    return mkdtemp(name.data());
  }

  const fs::path home = newFolder();
  Variable home_{"HOME", home.string()}, config_{"XDG_CONFIG_HOME", ""}, data_{"XDG_DATA_HOME", ""};
};

constexpr size_t kPathBytes = 1024;
constexpr char kMark = '\x5A';

// The path buffer of a call, followed by a guard.
struct PathBuffer {
  char path[kPathBytes];
  char guard[64];
  PathBuffer() {
    std::fill(std::begin(path), std::end(path), kMark);
    std::fill(std::begin(guard), std::end(guard), kMark);
  }
};

std::string directory(int nKind) {
  PathBuffer buffer;
  EXPECT_EQ(OS_GetDirectory(nKind, buffer.path, 0), 0);
  EXPECT_THAT(buffer.guard, Each(kMark));
  return buffer.path;
}

TEST_F(Folders, HaveTheirNamesByKind) {
  EXPECT_EQ(directory(1), home.string() + "/Documents");
  EXPECT_EQ(directory(2), home.string() + "/.local/share");
  EXPECT_EQ(directory(3), home.string() + "/Documents");
}

TEST_F(Folders, AreOfThreeKindsOnly) {
  for (int kind : {4, 0, -1, 5, 1000}) {
    PathBuffer buffer;
    EXPECT_EQ(OS_GetDirectory(kind, buffer.path, 0), -1) << kind;
    EXPECT_THAT(buffer.path, Each(kMark)) << kind;
  }
}

TEST_F(Folders, FollowTheVariables) {
  const Variable config("XDG_CONFIG_HOME", (home / "config").string());
  const Variable data("XDG_DATA_HOME", "/somewhere/data");
  fs::create_directory(home / "config");
  std::ofstream(home / "config/user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"$HOME/Texte\"\n";
  EXPECT_EQ(directory(1), home.string() + "/Texte");
  EXPECT_EQ(directory(2), "/somewhere/data");
}

TEST_F(Folders, FollowTheFileInTheHome) {
  fs::create_directory(home / ".config");
  std::ofstream(home / ".config/user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"/srv/texts\"\n";
  EXPECT_EQ(directory(3), "/srv/texts");
}

TEST_F(Folders, AreOnlyNamed) {
  directory(1);
  directory(2);
  EXPECT_TRUE(fs::is_empty(home));
}

TEST_F(Folders, HaveNoNameWithoutAHome) {
  const Variable noHome("HOME", "");
  for (int kind : {1, 2, 3}) {
    PathBuffer buffer;
    EXPECT_EQ(OS_GetDirectory(kind, buffer.path, 1024), -1) << kind;
    EXPECT_THAT(buffer.path, Each(kMark)) << kind;
  }
}

TEST_F(Folders, IgnoreTheSizeGiven) {
  for (int size : {-1, 0, 1, 1024}) {
    PathBuffer buffer;
    EXPECT_EQ(OS_GetDirectory(2, buffer.path, size), 0);
    EXPECT_EQ(buffer.path, home.string() + "/.local/share");
  }
}

TEST_F(Folders, FillTheBufferToItsLastByte) {
  const std::string longest = "/" + std::string(1022, 'x');
  const Variable data("XDG_DATA_HOME", longest);
  EXPECT_EQ(directory(2), longest);
}

TEST_F(Folders, AreRejectedWhereTheNameDoesNotFit) {
  for (size_t length : {1024u, 1025u, 5000u}) {
    const Variable data("XDG_DATA_HOME", "/" + std::string(length - 1, 'x'));
    PathBuffer buffer;
    EXPECT_EQ(SHGetSpecialFolderPath(buffer.path, kAppropriateDisk, kDomainLibrary), 0);
    EXPECT_EQ(OS_GetDirectory(2, buffer.path, 1024), -1);
    EXPECT_THAT(buffer.path, Each(kMark));
    EXPECT_THAT(buffer.guard, Each(kMark));
  }
}

TEST_F(Folders, HaveCodesOfDomainAndFolder) {
  PathBuffer documents, library;
  EXPECT_EQ(SHGetSpecialFolderPath(documents.path, -32763, 0x646F6373), 1);
  EXPECT_EQ(documents.path, home.string() + "/Documents");
  EXPECT_EQ(SHGetSpecialFolderPath(library.path, -32767, 0x646C6962), 1);
  EXPECT_EQ(library.path, home.string() + "/.local/share");
}

TEST_F(Folders, RejectEveryOtherPairOfCodes) {
  struct Pair {
    int16_t domain;
    uint32_t folder;
  };
  for (const Pair& pair : {Pair{-32767, 0x646F6373}, Pair{-32763, 0x646C6962}, Pair{0, 0x646F6373},
                           Pair{-32763, 0}, Pair{32763, 0x646F6373}, Pair{-32763, 0x73636F64}}) {
    PathBuffer buffer;
    EXPECT_EQ(SHGetSpecialFolderPath(buffer.path, pair.domain, pair.folder), 0);
    EXPECT_THAT(buffer.path, Each(kMark));
  }
}

struct Sizes {
  uint64_t total, free;
  bool operator==(const Sizes&) const = default;
};

Sizes sizesOf(const char* path) {
  uint32_t totalLow = 1, totalHigh = 1, freeLow = 1, freeHigh = 1;
  EXPECT_EQ(OS_GetDiskFreeSpaceEx(path, &totalLow, &totalHigh, &freeLow, &freeHigh), 0);
  return {uint64_t{totalHigh} << 32 | totalLow, uint64_t{freeHigh} << 32 | freeLow};
}

Sizes ofRoot() {
  const fs::space_info space = fs::space("/");
  return {space.capacity, space.available};
}

// Other processes may write to the disk: compares only if the size is the same before and after.
TEST(DiskSize, IsThatOfTheRootWhateverThePath) {
  for (const char* path :
       {"/", "/proc", "/no/such/folder", "", static_cast<const char*>(nullptr)}) {
    bool compared = false;
    for (int attempt = 0; attempt < 1000 && !compared; ++attempt) {
      const Sizes before = ofRoot(), sizes = sizesOf(path);
      EXPECT_EQ(sizes.total, before.total);
      if (before != ofRoot()) continue;
      EXPECT_EQ(sizes.free, before.free);
      compared = true;
    }
    EXPECT_TRUE(compared);
  }
}

}  // namespace
}  // namespace vistrel::core::test
