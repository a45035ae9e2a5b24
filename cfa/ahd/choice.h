// Chooses the image that each pixel of a row is taken from.
#pragma once

#include "cfa/ahd/reconstruction.h"

namespace vistrel::core {

template <class T>
class AhdChoice {
 public:
  AhdChoice(const AhdReconstruction<T>& images, int first, size_t columns,
            const AhdKernels<T>& kernels, Arena& arena)
      : images_(images), first_(first), kernels_(kernels), scores_(3, 2, columns, arena),
        scoreColumns_(1, 2, columns, arena), sums_(1, 2, columns, arena),
        choice_(1, 2, columns, arena) {}

  // Computes how many more neighbours of a pixel are similar in one image than in the other.
  void score(int y) const {
    const LumaChromaWindow<T> h = images_.lumaChroma(kAlongRow, y);
    const LumaChromaWindow<T> v = images_.lumaChroma(kAlongColumn, y);
    for (unsigned p = 0; p < 2; ++p)
      kernels_.scores[p](h, v, images_.halfSize(), scores_.half(placeOf(y), p));
  }

  // Sums the scores of rows y - 1 .. y + 1.
  void sum(int y) const {
    const T* rows[3][2];
    for (int dy = -1; dy <= 1; ++dy)
      for (unsigned p = 0; p < 2; ++p) rows[dy + 1][p] = scores_.half(placeOf(y + dy), p);
    kernels_.sums(rows, images_.halfSize(), sums_.half(0, 0), sums_.half(0, 1),
                  scoreColumns_.half(0, 0), scoreColumns_.half(0, 1));
  }

  // Restarts the running choice of the row just summed at column x: a tie there chooses the image
  // along rows.
  void restartAt(int x) const {
    const int i = x - first_;
    int8_t& sum = sums_.half(0, i & 1)[i / 2];
    if (sum == 0) sum = 1;
  }

  // Computes the choice by column parity: all ones where the image along columns is taken.
  void run() const;
  const T* half(unsigned parity) const { return choice_.half(0, parity); }

 private:
  static unsigned placeOf(int y) { return AhdReconstruction<T>::placeOf(y); }

  const AhdReconstruction<T>& images_;
  int first_;
  const AhdKernels<T>& kernels_;
  HalfRowRing<T> scores_, scoreColumns_;
  HalfRowRing<int8_t> sums_;
  HalfRowRing<T> choice_;
};

}  // namespace vistrel::core
