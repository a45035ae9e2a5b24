// The row kernels of the directional demosaic, compiled for each level.
#pragma once

#include <type_traits>

#include "common/rows/half_rows.h"
#include "common/rows/pixel_kernels.h"

namespace vistrel::core {

// The sums of changes use the sign bit.
template <class Lane>
using Change = std::make_unsigned_t<Lane>;

// What is known along rows, or along columns, of a few rows. Means and logarithms are those of
// green sites; the other half of a row has none.
template <class Lane>
struct DirectionWindow {
  HalfRowWindow<Lane, 1> means, logs;
};

// Changes at the green sites of a row: those of settled differences and those of samples.
template <class Lane>
struct ColourChanges {
  Change<Lane>*differences, *samples;
};

// The input for a row of pixels. alongRow: of rows y - 2, y, y + 2.
template <class Lane>
struct SettledWindow {
  HalfRowWindow<Lane, 1> samples, differences;
  ColourChanges<Lane> alongRow[3], alongColumn;
  int limit;
};

// The kernels of a level. All but `split` and `pixels` are indexed by the column parity of the
// row's green sites.
template <class T, class Lane>
struct DirectionalKernels {
  using Samples = HalfRowWindow<Lane, 2>;

  void (*split)(const T* source, size_t columns, Lane* even, Lane* odd);
  void (*differences[2])(const Samples& samples, size_t n, Lane* const (&alongRow)[2],
                         Lane* const (&alongColumn)[2]);
  // Changes at all sites, means at green ones.
  void (*changesAlongRow[2])(const HalfRowWindow<Lane, 1>& differences, size_t n,
                             Change<Lane>* const (&changes)[2], Lane* means);
  void (*changesAlongColumn[2])(const HalfRowWindow<Lane, 1>& differences, size_t n,
                                Change<Lane>* const (&changes)[2], Lane* means);
  void (*logs[2])(const HalfRowWindow<Change<Lane>, 1>& changes, size_t n, Lane* logs);
  void (*blends[2])(const DirectionWindow<Lane>& row, const DirectionWindow<Lane>& column, size_t n,
                    Lane* blends, Lane* sharesOfColumn);
  void (*settle[2])(const Samples& samples, const HalfRowWindow<Lane, 2>& blends,
                    const Lane* sharesOfColumn, size_t n, Lane* differences);
  void (*colourChangesAlongRow[2])(const HalfRowWindow<Lane, 1>& samples,
                                   const HalfRowWindow<Lane, 1>& differences, size_t n,
                                   const ColourChanges<Lane>& to);
  void (*colourChangesAlongColumn[2])(const HalfRowWindow<Lane, 1>& samples,
                                      const HalfRowWindow<Lane, 1>& differences, size_t n,
                                      const ColourChanges<Lane>& to);
  PixelKernels<T, SettledWindow<Lane>> pixels;
};

}  // namespace vistrel::core
