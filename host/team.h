// Teams of threads, which a caller starts to share the work of conversions.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <memory>

#include "vistrel/vistrel_host.h"

namespace vistrel::host {

using Task = void (*)(void* data, uint32_t index);

// The thread that runs tasks is a member of the team; the others are the team's workers.
class Team {
 public:
  // Throws Rejection if the system does not start all of them, and ends those that it started.
  explicit Team(uint32_t threads);
  // Ends the workers.
  ~Team();
  Team(const Team&) = delete;
  Team& operator=(const Team&) = delete;

  uint32_t threads() const { return workers_ + 1; }

  // Runs task(data, 0 .. count - 1), each on a thread of its own if enough threads are ready. count
  // is at most threads().
  void run(uint32_t count, Task task, void* data);

  // For the child of a fork, which has no workers.
  void abandon() { started_ = 0; }

 private:
  struct Worker;
  void start();
  void end();

  uint32_t workers_, started_ = 0;
  std::unique_ptr<Worker[]> worker_;
};

// Exclusive use of a team, for as long as the lease lives.
class TeamLease {
 public:
  // Throws Rejection.
  explicit TeamLease(const vistrel_team* team);
  ~TeamLease();
  TeamLease(const TeamLease&) = delete;
  TeamLease& operator=(const TeamLease&) = delete;

  Team* operator->() const { return team_; }

 private:
  Team* team_;
  bool* isBusy_;
};

}  // namespace vistrel::host
