#include "apps/files/interrupts.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>

#include "apps/files/temporary_file.h"

namespace vistrel::app {
namespace {

// A handler may read one text while another thread writes the other.
constexpr size_t kLongest = 200;
using Text = std::array<std::atomic<char>, kLongest + 1>;
Text g_texts[2];
std::atomic<unsigned> g_current;

// A line for standard error, of functions that handlers may call.
class Line {
 public:
  void add(char c) { characters_[size_++] = c; }
  void add(std::string_view text) {
    for (const char c : text) add(c);
  }
  void print() const {
    [[maybe_unused]] const auto said = ::write(STDERR_FILENO, characters_, size_);
  }

 private:
  char characters_[kLongest + 30];
  size_t size_ = 0;
};

// A bar may stand in the terminal's line.
void onSignal(int signal) {
  removeAllTemporaryFiles();
  Line line;
  if (isatty(STDERR_FILENO)) line.add('\n');
  line.add("vistrel: interrupted");
  const Text& text = g_texts[g_current];
  if (text[0]) line.add(": ");
  for (size_t i = 0; text[i]; ++i) line.add(text[i]);
  line.add('\n');
  line.print();
  _exit(128 + signal);
}

}  // namespace

void installSignalHandlers() {
  for (const int signal : kTerminatingSignals) std::signal(signal, onSignal);
  std::signal(SIGXFSZ, SIG_IGN);
}

void setInterruptedText(std::string_view text) {
  const unsigned next = 1 - g_current;
  text = text.substr(0, kLongest);
  std::copy(text.begin(), text.end(), g_texts[next].begin());
  g_texts[next][text.size()] = 0;
  g_current = next;
}

}  // namespace vistrel::app
