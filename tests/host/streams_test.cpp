// The pool of streams alone, on stubs of the library that record calls.
#include "host/streams.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <new>
#include <set>
#include <vector>

#include "streams/registry.h"
#include "vistrel/processor.h"
#include "vistrel/vistrel.h"

namespace {

struct Call {
  uint32_t id, width, height;
  bool operator==(const Call&) const = default;
};

int g_loads = 0;
std::vector<Call> g_calls;  // of ImgInitialize
bool g_memory = true;
uint64_t g_features = 0xFF;

}  // namespace

int32_t ImgLoadDriver() { return ++g_loads; }

void ImgUnloadDriver() {}

uint32_t ImgInitialize(uint32_t nID, uint32_t nImgWidth, uint32_t nImgHeight) {
  g_calls.push_back({nID, nImgWidth, nImgHeight});
  return g_memory;
}

uint32_t ImgLoadLookupTable(uint32_t, const uint16_t*, uint32_t) { return g_memory; }

uint64_t ippGetEnabledCpuFeatures() { return g_features; }

int32_t ippSetCpuFeaturesMask(uint64_t nMask) {
  g_features = nMask;
  return 0;
}

namespace vistrel::host {
namespace {

constexpr size_t kStreams = VISTREL_MAX_STREAMS;
static_assert(kStreams == core::kStreams);

std::vector<std::unique_ptr<StreamLease>> leaseAll() {
  std::vector<std::unique_ptr<StreamLease>> leases(kStreams);
  for (auto& lease : leases) lease = std::make_unique<StreamLease>();
  return leases;
}

// The calls that `work` makes.
template <class Work>
std::vector<Call> callsOf(Work work) {
  g_calls.clear();
  work();
  return g_calls;
}

TEST(Streams, SwitchThePackedOperationsOffAndNothingElse) {
  const StreamLease stream;
  EXPECT_EQ(g_features, 0xFFu & ~uint64_t{IPP_CPU_SSE});
}

TEST(Streams, AreDistinct) {
  std::set<uint32_t> ids;
  for (const auto& lease : leaseAll()) ids.insert(lease->id());
  EXPECT_EQ(ids.size(), kStreams);
  EXPECT_EQ(g_loads, 1) << "a second load would empty the tables";
}

TEST(Streams, AreReusedLastFirst) {
  const uint32_t id = StreamLease().id();
  EXPECT_EQ(StreamLease().id(), id);
}

TEST(Streams, AreWaitedForWhenAllAreInUse) {
  auto leases = leaseAll();
  auto next = std::async(std::launch::async, [] { return StreamLease().id(); });
  EXPECT_EQ(next.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
  const uint32_t id = leases[77]->id();
  leases[77].reset();
  EXPECT_EQ(next.get(), id);
}

TEST(Streams, GrowOnlyIfTheyMust) {
  StreamLease lease;
  const uint32_t id = lease.id();
  EXPECT_EQ(callsOf([&] { lease.reserve(40, 30); }), (std::vector<Call>{{id, 40, 30}}));
  EXPECT_EQ(callsOf([&] { lease.reserve(40, 30); }), std::vector<Call>{});
  EXPECT_EQ(callsOf([&] { lease.reserve(7, 9); }), std::vector<Call>{});
  EXPECT_EQ(callsOf([&] { lease.reserve(30, 40); }), (std::vector<Call>{{id, 30, 40}}));
}

TEST(Streams, ThatFailedToGrowTryAgain) {
  StreamLease lease;
  const uint32_t id = lease.id();
  lease.reserve(50, 50);
  g_memory = false;
  EXPECT_THROW(lease.reserve(60, 60), std::bad_alloc);
  g_memory = true;
  EXPECT_EQ(callsOf([&] { lease.reserve(50, 50); }), (std::vector<Call>{{id, 50, 50}}))
      << "the buffer of 50 x 50 was freed";
}

}  // namespace
}  // namespace vistrel::host
