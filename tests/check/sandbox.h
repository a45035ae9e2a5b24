// One side's memory and stream, on which its calls run.
#pragma once

#include <vector>

#include "tests/check/subject.h"
#include "tests/check/trap.h"

namespace vistrel::core::check {

// The stream's slot in the tables of both sides, and an id that is in neither.
constexpr unsigned kSlot = 2;
constexpr uint32_t kKnownId = 1002;
constexpr uint32_t kUnknownId = 77;
inline uint32_t idOf(const Call& call) { return call.unknown ? kUnknownId : kKnownId; }

struct Outcome {
  std::optional<Fault> fault;
  uint64_t result = 0;
};

class Sandbox {
 public:
  explicit Sandbox(Side side);

  // Gives the stream a work buffer for all calls of a case, filled with noise.
  void beginCase(const Case& calls, const std::vector<Layout>& layouts);
  // Lays out the call's blocks and fills them.
  void set(const Subject& subject, const Call& call, const Layout& layout);
  // Does the same with the contents of another sandbox.
  void setLike(const Sandbox& other, const Call& call, const Layout& layout);
  // Clears the bytes of the work buffer whose value is unspecified after a call.
  void settle(Range meaningless) const;
  Outcome call(const Subject& subject, const Call& call);

  const Memory& memory() const { return memory_; }
  // The value of the bytes that no call may touch. It differs between the sides, so that a result
  // computed from such bytes differs too.
  uint8_t canary() const { return side_ == kProduct ? 0xA7 : 0x58; }

 private:
  void place(const Call& call, const Layout& layout);
  void attachStream(const Call& call) const;

  Side side_;
  GuardedMemory source_, destination_, work_, table_;
  GuardPageRows rows_;
  Memory memory_;
};

}  // namespace vistrel::core::check
