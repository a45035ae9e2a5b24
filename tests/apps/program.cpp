#include "tests/apps/program.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

namespace vistrel {
namespace {

namespace fs = std::filesystem;

// An unnamed file that a child process writes and we read.
class Capture {
 public:
  Capture() : file_(std::tmpfile()) {}
  ~Capture() { std::fclose(file_); }
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;

  void standFor(int descriptor) const { dup2(fileno(file_), descriptor); }
  std::string text() const {
    std::string text;
    std::rewind(file_);
    for (int c; (c = std::fgetc(file_)) != EOF;) text += static_cast<char>(c);
    return text;
  }

 private:
  std::FILE* file_;
};

// Moves the last line of messages, if it sums up a run.
void takeSummary(Finished& finished) {
  static const std::regex summary("(^|\n)(vistrel: [0-9]+ made, [^\n]* in [0-9.]+ s[^\n]*\n)$");
  std::smatch match;
  if (!std::regex_search(finished.err, match, summary)) return;
  finished.summary = match[2];
  finished.err.resize(finished.err.size() - finished.summary.size());
}

}  // namespace

Scratch::Scratch() {
  std::string name = fs::temp_directory_path() / "vistrel-test-XXXXXX";
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  folder_ = name;
}

Scratch::~Scratch() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void Scratch::write(const std::string& name, const std::string& bytes) const {
  std::ofstream(folder_ / name, std::ios::binary) << bytes;
}

std::string Scratch::read(const std::string& name) const {
  std::ostringstream bytes;
  bytes << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
  return bytes.str();
}

std::vector<std::string> Scratch::names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(folder_))
    if (!entry.is_directory()) names.push_back(fs::relative(entry.path(), folder_));
  std::sort(names.begin(), names.end());
  return names;
}

Finished Scratch::run(std::vector<std::string> command,
                      const std::function<void()>& prepare) const {
  std::vector<char*> arguments;
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  const Capture out, err;
  const pid_t child = fork();
  if (child == 0) {
    out.standFor(STDOUT_FILENO);
    err.standFor(STDERR_FILENO);
    if (chdir(folder_.c_str()) != 0) _exit(126);
    if (prepare) prepare();
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  Finished finished{WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), out.text(),
                    err.text(), ""};
  takeSummary(finished);
  return finished;
}

Finished Scratch::vistrel(const std::string& arguments,
                          const std::function<void()>& prepare) const {
  std::vector<std::string> command{VISTREL_PROGRAM};
  std::istringstream words(arguments);
  for (std::string word; words >> word;) command.push_back(word == "''" ? "" : word);
  return run(command, prepare);
}

}  // namespace vistrel
