// The pool of streams alone.
#include "host/streams.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <new>
#include <set>
#include <vector>

#include "tests/sanitizer.h"

namespace vistrel::host {
namespace {

std::vector<std::unique_ptr<StreamLease>> leaseAll() {
  std::vector<std::unique_ptr<StreamLease>> leases(VISTREL_MAX_STREAMS);
  for (auto& lease : leases) lease = std::make_unique<StreamLease>();
  return leases;
}

TEST(Streams, AreDistinct) {
  std::set<uint32_t> ids;
  for (const auto& lease : leaseAll()) ids.insert(lease->id());
  EXPECT_EQ(ids.size(), size_t{VISTREL_MAX_STREAMS});
}

TEST(Streams, AreReusedLastFirst) {
  const uint32_t id = StreamLease().id();
  EXPECT_EQ(StreamLease().id(), id);
}

TEST(Streams, AreReplacedByMemoryOfTheLeaseWhenAllAreInUse) {
  auto leases = leaseAll();
  {
    StreamLease another;
    EXPECT_EQ(another.id(), uint32_t{VISTREL_MAX_STREAMS});
    EXPECT_NE(another.scratch(0), nullptr);
    std::memset(another.scratch(5000), 1, 5000);
  }
  const uint32_t id = leases[77]->id();
  leases[77].reset();
  EXPECT_EQ(StreamLease().id(), id);
}

TEST(Streams, KeepTheirMemory) {
  StreamLease lease;
  void* const first = lease.scratch(5056);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(first) % 64, 0u);
  EXPECT_EQ(lease.scratch(320), first);
  EXPECT_EQ(lease.scratch(5056), first);
}

TEST(Streams, MayBeTrimmed) {
  StreamLease lease;
  ASSERT_NE(lease.scratch(5056), nullptr);
  lease.trim();
  std::memset(lease.scratch(320), 1, 300);
}

#if !VISTREL_SANITIZED
TEST(Streams, ThatFailToGrowCanBeUsedAgain) {
  StreamLease lease;
  EXPECT_THROW(lease.scratch(SIZE_MAX / 2 / 64 * 64), std::bad_alloc);
  std::memset(lease.scratch(128), 1, 128);
}
#endif

}  // namespace
}  // namespace vistrel::host
