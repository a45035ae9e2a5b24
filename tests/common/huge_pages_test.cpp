#include "common/huge_pages.h"

#include <gtest/gtest.h>

#if defined(__linux__)

#include <sys/mman.h>

#include <fstream>
#include <sstream>
#include <string>

namespace vistrel::core::test {
namespace {

constexpr size_t kHuge = size_t{2} << 20;

class Pages {
 public:
  explicit Pages(size_t bytes)
      : bytes_(bytes), at_(static_cast<char*>(mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                                                   MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {}
  ~Pages() { munmap(at_, bytes_); }
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;

  char* at() const { return at_; }
  char* firstPage() const {  // the first huge one
    return at_ + (kHuge - reinterpret_cast<uintptr_t>(at_) % kHuge) % kHuge;
  }

 private:
  size_t bytes_;
  char* at_;
};

// Whether the process has requested huge pages at this address, as the system lists it.
bool isAdvised(const char* address) {
  const auto wanted = reinterpret_cast<uintptr_t>(address);
  std::ifstream list("/proc/self/smaps");
  bool isThere = false;
  for (std::string line; std::getline(list, line);) {
    uintptr_t begin = 0, end = 0;
    char dash = 0;
    if (std::istringstream(line) >> std::hex >> begin >> dash >> end && dash == '-')
      isThere = begin <= wanted && wanted < end;
    else if (isThere && line.starts_with("VmFlags:"))
      return line.find(" hg") != std::string::npos;
  }
  return false;
}

// An emulator may ignore requests.
bool listsRequests() {
  const Pages pages(2 * kHuge);
  madvise(pages.firstPage(), kHuge, MADV_HUGEPAGE);
  return isAdvised(pages.firstPage());
}

TEST(HugePages, AreRequestedForTheWholePagesWithin) {
  if (!listsRequests()) GTEST_SKIP() << "This system has no huge pages on request.";
  const Pages pages(5 * kHuge);
  char* const page = pages.firstPage();
  adviseHugePages(page + 1, 3 * kHuge);
  EXPECT_FALSE(isAdvised(page + kHuge - 1));
  EXPECT_TRUE(isAdvised(page + kHuge));
  EXPECT_TRUE(isAdvised(page + 3 * kHuge - 1));
  EXPECT_FALSE(isAdvised(page + 3 * kHuge));
}

TEST(HugePages, AreOfNoUseToASmallBuffer) {
  const Pages pages(3 * kHuge);
  adviseHugePages(pages.firstPage(), 2 * kHuge - 1);
  EXPECT_FALSE(isAdvised(pages.firstPage()));
  adviseHugePages(nullptr, 8 * kHuge);
}

TEST(HugePages, KeepTheContents) {
  const Pages pages(4 * kHuge);
  for (size_t i = 0; i < 4 * kHuge; i += 4096) pages.at()[i] = static_cast<char>(1 + i / 4096 % 99);
  adviseHugePages(pages.at(), 4 * kHuge);
  for (size_t i = 0; i < 4 * kHuge; i += 4096)
    ASSERT_EQ(pages.at()[i], static_cast<char>(1 + i / 4096 % 99)) << i;
}

}  // namespace
}  // namespace vistrel::core::test

#endif
