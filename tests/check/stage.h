// One side's memory and stream, on which its calls are played.
#pragma once

#include <vector>

#include "tests/check/subject.h"
#include "tests/check/trap.h"

namespace vistrel::core::check {

// The stream's place in the tables of either side, and an id that is in none.
constexpr unsigned kSlot = 2;
constexpr uint32_t kKnownId = 1002;
constexpr uint32_t kUnknownId = 77;
inline uint32_t idOf(const Call& call) { return call.unknown ? kUnknownId : kKnownId; }

struct Outcome {
  std::optional<Fault> fault;
  uint64_t result = 0;
};

class Stage {
 public:
  explicit Stage(Side side);

  // Gives the stream a work buffer for all calls of a case, full of old samples.
  void beginCase(const Case& calls, const std::vector<Layout>& layouts);
  // Lays out the call's blocks and fills them.
  void set(const Subject& subject, const Call& call, const Layout& layout);
  // The same, with what another stage holds.
  void setLike(const Stage& other, const Call& call, const Layout& layout);
  // Puts something definite where a call has left bytes of no meaning in the work buffer.
  void settle(Range meaningless) const;
  Outcome play(const Subject& subject, const Call& call);

  const Memory& memory() const { return memory_; }
  // Of the bytes that no call may touch. Each side has its own: a value made of them differs.
  uint8_t colour() const { return side_ == kProduct ? 0xA7 : 0x58; }

 private:
  void place(const Call& call, const Layout& layout);
  void attachStream(const Call& call) const;

  Side side_;
  Arena source_, destination_, work_, table_;
  FencedRows rows_;
  Memory memory_;
};

}  // namespace vistrel::core::check
