// The rows that the stages of the directional demosaic hand to each other. Each ring has as many
// rows as lie between a row's computation and its last use.
#pragma once

#include "demosaic/directional/directional_kernels.h"
#include "demosaic/directional/mirrored_ring.h"

namespace vistrel::core {

// What is known along rows, or along columns.
template <class Lane>
struct DirectionRings {
  MirroredRing<Lane> differences;
  MirroredRing<Change<Lane>> changes;
  MirroredRing<Lane> means, logs;  // at green sites

  DirectionRings(unsigned rowsOfDifferences, unsigned rowsOfChanges, PlaneSize size, Arena& arena)
      : differences(rowsOfDifferences, 2, size, arena), changes(rowsOfChanges, 2, size, arena),
        means(4, 1, size, arena), logs(3, 1, size, arena) {}

  DirectionWindow<Lane> window(int y) const {
    return {means.template window<1>(y), logs.template window<1>(y)};
  }
};

template <class Lane>
struct ColourChangeRings {
  MirroredRing<Change<Lane>> differences, samples;  // at green sites

  ColourChangeRings(unsigned rows, PlaneSize size, Arena& arena)
      : differences(rows, 1, size, arena), samples(rows, 1, size, arena) {}

  ColourChanges<Lane> row(int y) const { return {differences.half(y), samples.half(y)}; }
};

template <class Lane>
struct DirectionalRings {
  MirroredRing<Lane> samples;
  DirectionRings<Lane> alongRow, alongColumn;
  MirroredRing<Lane> blends, sharesOfColumn, settled;  // at red and blue sites
  ColourChangeRings<Lane> changesAlongRow, changesAlongColumn;

  DirectionalRings(PlaneSize size, Arena& arena)
      : samples(11, 2, size, arena), alongRow(1, 4, size, arena), alongColumn(3, 3, size, arena),
        blends(5, 1, size, arena), sharesOfColumn(3, 1, size, arena), settled(4, 1, size, arena),
        changesAlongRow(5, size, arena), changesAlongColumn(1, size, arena) {}
};

}  // namespace vistrel::core
