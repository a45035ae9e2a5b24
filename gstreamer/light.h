// What noisy measurements say about the light of a scene.
#pragma once

#include <array>
#include <vector>

namespace vistrel::gstreamer {

class Light {
 public:
  using Logarithms = std::array<double, 3>;  // of gains

  // Takes a measurement. Returns true if the light has changed, which single measurements don't
  // prove: the last ones lie beside the mean, all on one side and farther than noise explains; or
  // the very first one lies that far from those after it. The mean begins anew then.
  bool take(const Logarithms& found);

  // Of the measurements; of many, the last ones count most.
  const Logarithms& mean() const { return mean_; }

  // Whether the next measurement should not wait: how much they scatter isn't known yet, or the
  // last one is far from the mean.
  bool isUnsure() const;

 private:
  bool begin(const Logarithms& found);
  bool isFar(const Logarithms& found) const;
  bool isBesideSuspects(const Logarithms& found) const;
  void absorb(const Logarithms& found);
  void absorbSuspects();

  std::vector<Logarithms> first_;  // measurements since the light changed
  Logarithms mean_{}, last_{};
  double variance_ = 0;               // of a measurement
  std::vector<Logarithms> suspects_;  // the last measurements, far from the mean
};

double largestDifference(const Light::Logarithms& a, const Light::Logarithms& b);

}  // namespace vistrel::gstreamer
