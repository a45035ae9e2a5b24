// A fake processor whose answers a test sets; it replaces the real one during the test.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "cpu/cpuid.h"
#include "cpu/level_choice.h"
#include "vistrel/processor.h"

namespace vistrel::core::test {

constexpr CpuidRegisters kGenuineIntel = {0x16, 0x756E6547, 0x6C65746E, 0x49656E69};
constexpr CpuidRegisters kOtherMaker = {0x16, 0x68747541, 0x444D4163, 0x69746E65};

class FakeProcessor final : public Processor {
 public:
  bool present = true;
  std::map<std::pair<uint32_t, uint32_t>, CpuidRegisters> leaves;  // by leaf and sub-leaf
  uint32_t state = 0;
  uint64_t time = 0;
  mutable int stateReads = 0;
  mutable std::map<uint32_t, int> leafReads;

  bool hasCpuid() const override { return present; }
  CpuidRegisters cpuid(uint32_t leaf, uint32_t subLeaf) const override {
    ++leafReads[leaf];
    const auto found = leaves.find({leaf, subLeaf});
    return found == leaves.end() ? CpuidRegisters{} : found->second;
  }
  uint32_t enabledState() const override {
    ++stateReads;
    return state;
  }
  uint64_t timeStamp() const override { return time; }
};

// Begins without detected features, on the fake processor; restores all globals.
class OnFakeProcessor : public ::testing::Test {
 protected:
  OnFakeProcessor() {
    g_processor = &fake;
    ownFeaturesAreValid = 0;
    fake.leaves[{0, 0}] = kGenuineIntel;
  }
  ~OnFakeProcessor() override {
    g_processor = processor_;
    ippJumpIndexForMergedLibs = index_;
    ippJumpIndexForMergedLibsLP = lp_;
    ippSetCpuFeaturesMask(mask_);
    ownFeatures = features_;
    ownFeaturesAreValid = valid_;
  }

  CpuidRegisters& one() { return fake.leaves[{1, 0}]; }

  FakeProcessor fake;

 private:
  const Processor* const processor_ = g_processor;
  const uint32_t index_ = ippJumpIndexForMergedLibs, lp_ = ippJumpIndexForMergedLibsLP;
  const uint64_t mask_ = ownFeaturesMask, features_ = ownFeatures;
  const int32_t valid_ = ownFeaturesAreValid;
};

}  // namespace vistrel::core::test
