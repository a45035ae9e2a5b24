// Threads that share the work of conversions, kept for the next one.
#pragma once

#include <cstdint>

#include "vistrel/vistrel.hpp"

namespace vistrel::python {

// A team for one conversion. Made and destroyed with Python's lock held, which guards the idle
// ones.
class BorrowedTeam {
 public:
  explicit BorrowedTeam(uint32_t threads);
  ~BorrowedTeam();
  BorrowedTeam(const BorrowedTeam&) = delete;
  BorrowedTeam& operator=(const BorrowedTeam&) = delete;

  const Team& get() const { return team_; }

 private:
  Team team_;  // without threads if one is enough
};

// Ends all idle teams.
void endTeams();

}  // namespace vistrel::python
