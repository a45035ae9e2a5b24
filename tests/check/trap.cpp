#include "tests/check/trap.h"

#include <setjmp.h>
#include <signal.h>
#include <unistd.h>

// Only the runtimes of sanitizers define it.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)(void));

namespace vistrel::core::check {
namespace {

constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};

sigjmp_buf g_return;
thread_local volatile sig_atomic_t g_armed = 0;  // another thread can't return from here
Fault g_fault;
std::string g_terminationMessage;

void writeTerminationMessage() {
  [[maybe_unused]] const ssize_t n =
      write(STDERR_FILENO, g_terminationMessage.data(), g_terminationMessage.size());
}

void onSignal(int signal, siginfo_t* info, void*) {
  if (!g_armed) {
    writeTerminationMessage();
    ::signal(signal, SIG_DFL);
    raise(signal);
    return;
  }
  g_armed = 0;
  g_fault = {signal, static_cast<const uint8_t*>(info->si_addr)};
  siglongjmp(g_return, 1);
}

void install() {
  struct sigaction action = {};
  action.sa_sigaction = onSignal;
  action.sa_flags = SA_SIGINFO | SA_NODEFER;
  sigemptyset(&action.sa_mask);
  for (const int signal : kSignals) sigaction(signal, &action, nullptr);
  if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(writeTerminationMessage);
}

}  // namespace

std::optional<Fault> trapped(const std::function<void()>& function) {
  static const bool installed = (install(), true);
  (void)installed;
  if (sigsetjmp(g_return, 1) != 0) return g_fault;
  g_armed = 1;
  function();
  g_armed = 0;
  return std::nullopt;
}

void setTerminationMessage(const std::string& text) { g_terminationMessage = text; }

}  // namespace vistrel::core::check
