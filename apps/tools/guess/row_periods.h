// After how many bytes the content of a file resembles itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

class Points;

class Recurrence {
 public:
  explicit Recurrence(const std::vector<uint8_t>& bytes);

  // Distances at which bytes are most alike, the best first: the distances between rows are among
  // them.
  const std::vector<size_t>& distances() const { return distances_; }

  // How much they are alike there: their correlation, in standard deviations of that of bytes that
  // have nothing in common.
  double at(size_t distance) const;

 private:
  void addPoints(const Points& points, size_t size, size_t step, std::vector<float>& to);

  std::vector<float> ofBytes_, ofWords_;  // the latter of pairs of bytes
  std::vector<size_t> distances_;
};

}  // namespace vistrel::app
