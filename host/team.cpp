#include "host/team.h"

#include <signal.h>

#include <chrono>

#include "host/fork.h"
#include "host/mutex.h"
#include "host/status.h"

namespace vistrel::host {

// A worker sleeps while it is idle. Only idle workers get tasks.
struct alignas(64) Team::Worker {
  enum State : int { kIdle, kCalled, kRunning, kEnding };

  // Requests task(data, index).
  void call(Task newTask, void* newData, uint32_t newIndex) {
    task = newTask, data = newData, index = newIndex;
    set(kCalled);
  }

  // Withdraws a task that the worker has not begun.
  bool recall() {
    int called = kCalled;
    return state.compare_exchange_strong(called, kIdle, std::memory_order_acq_rel);
  }

  void set(State next) {
    state.store(next, std::memory_order_release);
    state.notify_one();
  }

  // Waits for a change. Spins for a short while first, since waking up takes longer than most
  // bands.
  void await(State present) const;
  void work();

  std::atomic<int> state{kIdle};
  Task task = nullptr;
  void* data = nullptr;
  uint32_t index = 0;
  pthread_t thread{};
};

namespace {

void relax() {
#if defined(__x86_64__) || defined(__i386__)
  __builtin_ia32_pause();
#elif defined(__aarch64__)
  asm volatile("yield");
#endif
}

#ifdef _WIN32
class SignalsBlocked {};  // there are none
#else
// While one exists, new threads block all signals, which are for the program's own threads.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_;
};
#endif

}  // namespace

void Team::Worker::await(State present) const {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::microseconds(20);
  do {
    for (int i = 0; i < 16; ++i) {
      if (state.load(std::memory_order_acquire) != present) return;
      relax();
    }
  } while (Clock::now() < end);
  state.wait(present, std::memory_order_acquire);
}

void Team::Worker::work() {
  for (;;) {
    await(kIdle);
    int called = kCalled;
    if (state.compare_exchange_strong(called, kRunning, std::memory_order_acq_rel)) {
      task(data, index);
      set(kIdle);
    } else if (called == kEnding) {
      return;
    }
  }
}

Team::Team(uint32_t threads) : workers_(threads - 1), worker_(new Worker[workers_]) { start(); }

Team::~Team() { end(); }

void Team::start() {
  [[maybe_unused]] const SignalsBlocked blocked;
  const auto work = [](void* worker) -> void* {
    static_cast<Worker*>(worker)->work();
    return nullptr;
  };
  for (; started_ < workers_; ++started_) {
    Worker& worker = worker_[started_];
    if (pthread_create(&worker.thread, nullptr, work, &worker) == 0) continue;
    const uint32_t started = started_;
    end();
    reject(VISTREL_NO_THREAD, "threads", threads(), "the system started only {} of {} workers",
           started, workers_);
  }
}

void Team::end() {
  for (uint32_t i = 0; i < started_; ++i) worker_[i].set(Worker::kEnding);
  for (uint32_t i = 0; i < started_; ++i) pthread_join(worker_[i].thread, nullptr);
  started_ = 0;
}

void Team::run(uint32_t count, Task task, void* data) {
  for (uint32_t i = 1; i < count; ++i) worker_[i - 1].call(task, data, i);
  task(data, 0);
  for (uint32_t i = 1; i < count; ++i) {
    Worker& worker = worker_[i - 1];
    worker.recall() ? task(data, i) : worker.await(Worker::kRunning);
  }
}

namespace {

// A handle is the team's number, which is never reused.
struct Entry {
  explicit Entry(uint32_t threads) : team(threads) {}

  Team team;
  uintptr_t number = 0;
  bool isBusy = false;
  bool isForeign = false;  // its threads belong to the parent of this process
  std::unique_ptr<Entry> next;
};
using Place = std::unique_ptr<Entry>;

// Never destroyed: a thread may still be converting while the process ends.
struct Teams {
  Place first;
  uintptr_t created = 0;
};
union NeverDestroyed {
  Teams teams{};
  constexpr NeverDestroyed() {}
  ~NeverDestroyed() {}
};
constinit NeverDestroyed g_all;
VISTREL_GLOBAL_MUTEX g_mutex;  // guards it

void abandonAll() {
  for (Entry* entry = g_all.teams.first.get(); entry; entry = entry->next.get()) {
    entry->isForeign = true;
    entry->isBusy = false;
    entry->team.abandon();
  }
}

[[maybe_unused]] const int g_forkHandlers = atFork([] { g_mutex.lock(); }, [] { g_mutex.unlock(); },
                                                   [] { abandonAll(), g_mutex.unlock(); });

// The caller holds the mutex. Throws Rejection, including for a team at work.
Place& placeOf(const vistrel_team* team, std::string_view argument) {
  Place* place = &g_all.teams.first;
  while (*place && (*place)->number != reinterpret_cast<uintptr_t>(team)) place = &(*place)->next;
  if (!*place) reject(VISTREL_BAD_TEAM, argument, "", "there is no such team");
  if ((*place)->isBusy) reject(VISTREL_BAD_TEAM, argument, "", "another conversion runs on it");
  return *place;
}

}  // namespace

TeamLease::TeamLease(const vistrel_team* team) {
  const std::lock_guard lock(g_mutex);
  Entry& entry = *placeOf(team, "conversion.team");
  if (entry.isForeign)
    reject(VISTREL_BAD_TEAM, "conversion.team", "",
           "it belongs to the parent process; its workers are not in the child");
  entry.isBusy = true;
  team_ = &entry.team;
  isBusy_ = &entry.isBusy;
}

TeamLease::~TeamLease() {
  const std::lock_guard lock(g_mutex);
  *isBusy_ = false;
}

}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_team_create(uint32_t threads, vistrel_team** team, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(team, "team");
    if (threads < 2 || threads > VISTREL_MAX_THREADS)
      reject(VISTREL_BAD_THREADS, "threads", threads, "2 to {} are allowed",
             uint32_t{VISTREL_MAX_THREADS});
    auto entry = std::make_unique<Entry>(threads);
    const std::lock_guard lock(g_mutex);
    Teams& all = g_all.teams;
    entry->number = ++all.created;
    *team = reinterpret_cast<vistrel_team*>(entry->number);
    entry->next = std::move(all.first);
    all.first = std::move(entry);
  });
}

int32_t vistrel_team_destroy(vistrel_team* team, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(team, "team");
    Place ended;  // outside the mutex, since this waits for the workers
    const std::lock_guard lock(g_mutex);
    Place& place = placeOf(team, "team");
    ended = std::move(place);
    place = std::move(ended->next);
  });
}
