// A bar on the terminal while there is more than one frame to do.
#pragma once

#include <cstddef>
#include <string_view>

namespace vistrel::app {

class Progress {
 public:
  explicit Progress(size_t total);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // One more frame is done.
  void step();

  // A message on standard error that stays, above the bar.
  void say(std::string_view text);

 private:
  void draw() const;
  void clear() const;

  size_t total_;
  size_t done_ = 0;
  bool visible_;
};

}  // namespace vistrel::app
