#include "common/aligned_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

#include "tests/sanitizer.h"

namespace vistrel::core {
namespace {

TEST(AlignedMemory, BeginsAtAMultiple) {
  for (const size_t alignment : {16, 64, 4096}) {
    const std::unique_ptr<void, FreeAligned> block(allocateAligned(alignment, 2 * alignment));
    ASSERT_TRUE(block);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block.get()) % alignment, 0u);
    std::memset(block.get(), 1, 2 * alignment);
  }
}

TEST(AlignedMemory, IsNullIfThereIsNotEnough) {
  if (VISTREL_SANITIZED) GTEST_SKIP() << "a sanitizer would end the program";
  volatile size_t most = std::numeric_limits<size_t>::max() - 63;
  EXPECT_EQ(allocateAligned(64, most), nullptr);
}

}  // namespace
}  // namespace vistrel::core
