// The table of streams: successive calls, with everything that they leave in the tables.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

#include "streams/registry.h"
#include "tests/check/groups.h"
#include "tests/reference/registry.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

// One side's functions and tables.
struct Registry {
  int32_t (*load)();
  void (*unload)();
  uint32_t (*initialize)(uint32_t, uint32_t, uint32_t);
  uint32_t (*loadTable)(uint32_t, const uint16_t*, uint32_t);
  uint16_t** buffers;
  uint32_t* ids;
  uint16_t** tables;
};

Registry registryOf(Side side) {
  if (side == kProduct)
    return {ImgLoadDriver, ImgUnloadDriver, ImgInitialize, ImgLoadLookupTable,
            g_pwBGRBuff,   g_anIDs,         g_pwUserLUT};
  return {reference::ImgLoadDriver,      reference::ImgUnloadDriver, reference::ImgInitialize,
          reference::ImgLoadLookupTable, reference::g_pwBGRBuff,     reference::g_anIDs,
          reference::g_pwUserLUT};
}

// Saves the checker's own stream and restores it afterwards.
class SavedTables {
 public:
  explicit SavedTables(const Registry& r)
      : registry_(r), buffers_(r.buffers, r.buffers + kStreams + 1), ids_(r.ids, r.ids + kStreams),
        tables_(r.tables, r.tables + kStreams + 1) {
    r.tables[kStreams] = nullptr;
    r.load();
  }
  ~SavedTables() {
    registry_.unload();
    std::free(registry_.tables[kStreams]);
    std::copy(buffers_.begin(), buffers_.end(), registry_.buffers);
    std::copy(ids_.begin(), ids_.end(), registry_.ids);
    std::copy(tables_.begin(), tables_.end(), registry_.tables);
  }
  SavedTables(const SavedTables&) = delete;
  SavedTables& operator=(const SavedTables&) = delete;

 private:
  const Registry& registry_;
  std::vector<uint16_t*> buffers_;
  std::vector<uint32_t> ids_;
  std::vector<uint16_t*> tables_;
};

uint64_t stateOf(const Registry& r) {
  uint64_t state = 0;
  const auto fold = [&](uint64_t v) { state = mix(state ^ v); };
  for (unsigned slot = 0; slot <= kStreams; ++slot) {
    fold(r.buffers[slot] != nullptr);
    if (slot < kStreams) fold(r.ids[slot]);
    if (!r.tables[slot]) continue;
    for (unsigned i = 0; i < kUserTableEntries; i += 4) {
      uint64_t entries;
      std::memcpy(&entries, r.tables[slot] + i, sizeof entries);
      fold(entries);
    }
  }
  return state;
}

// Makes `a` calls with `b` ids, one of which is the value of a free slot. Returns a hash of the
// results and of the tables after each call.
uint64_t runCalls(const Registry& r, const Call& call) {
  const SavedTables saved(r);
  Random random(call.seed);
  std::vector<uint16_t> entries(5000);
  std::generate(entries.begin(), entries.end(),
                [&] { return static_cast<uint16_t>(random.next()); });
  uint64_t folded = 0;
  for (uint32_t n = 0; n < call.a; ++n) {
    const uint32_t pick = random.below(call.b);
    const uint32_t id = pick == 0 ? kFreeSlot : pick * 3;
    uint64_t answer = 0;
    switch (random.below(16)) {
      case 0: r.unload(); break;
      case 1:
      case 2:
      case 3:
        answer = r.loadTable(id, entries.data(), random.pick({0, 1, 1024, 4096, 5000}));
        break;
      default: answer = r.initialize(id, random.below(50), 9); break;
    }
    folded = mix(folded ^ answer ^ stateOf(r));
  }
  return folded;
}

}  // namespace

void addRegistry(Catalogue& all) {
  const auto run = [](Side side) -> Subject::Run {
    return [side](const Call& call, const Memory&) { return runCalls(registryOf(side), call); };
  };
  all.add("registry",
          {"registry", [](const Call&) { return Layout{}; }, {run(kProduct), run(kReference)}, {}},
          [](Draw& draw) {
            Call call;
            call.seed = draw.word();
            call.a = 1 + draw.below(draw.oneIn(10) ? 200 : 20);
            call.b = draw.oneIn(4) ? 160 : 1 + draw.below(6);
            return call;
          });
  all.experiments.back().levels = false;
}

}  // namespace vistrel::core::check
