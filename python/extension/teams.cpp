#include "python/extension/teams.h"

#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace vistrel::python {
namespace {

constexpr size_t kMaxIdle = 8;

struct Idle {
  std::vector<Team> teams;
  pid_t process = getpid();
};

// Never destroyed: a conversion may outlast the interpreter. A child of fork has no workers.
Idle& idle() {
  static Idle* const all = new Idle;
  if (all->process != getpid()) {
    all->teams.clear();
    all->process = getpid();
  }
  return *all;
}

}  // namespace

BorrowedTeam::BorrowedTeam(uint32_t threads) {
  if (threads < 2) return;
  std::vector<Team>& teams = idle().teams;
  const auto found = std::find_if(teams.begin(), teams.end(),
                                  [=](const Team& team) { return team.threads() == threads; });
  if (found == teams.end()) {
    team_ = Team::create(threads);
    return;
  }
  team_ = std::move(*found);
  teams.erase(found);
}

BorrowedTeam::~BorrowedTeam() {
  if (!team_) return;
  std::vector<Team>& teams = idle().teams;
  if (teams.size() == kMaxIdle) teams.erase(teams.begin());
  teams.push_back(std::move(team_));
}

void endTeams() { idle().teams.clear(); }

}  // namespace vistrel::python
