#include "tests/reference/directional.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "tests/reference/cfa_sites.h"

namespace reference {

namespace {

// Mirrors about the outermost samples, as often as it takes.
int mirror(int i, int n) {
  while (i < 0 || i >= n) i = i < 0 ? -i : 2 * (n - 1) - i;
  return i;
}

// Values of every pixel, readable at every coordinate.
struct Plane {
  int width, height;
  std::vector<int> values;

  template <class Value>
  Plane(int w, int h, Value value) : width(w), height(h) {
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) values.push_back(value(x, y));
  }
  int at(int x, int y) const {
    return values[static_cast<size_t>(mirror(y, height) * width + mirror(x, width))];
  }
};

// A plane's values at (x, y), before and after it, along a row or along a column.
struct Line {
  const Plane& plane;
  int x, y, dx, dy;
  int at(int i) const { return plane.at(x + i * dx, y + i * dy); }
};

// Green minus the other colour, in quarters of a level.
int differenceAt(Line m, bool isGreen) {
  const int k = 4 * (m.at(-1) + m.at(1)) - 6 * m.at(0) - m.at(-2) - m.at(2);
  return isGreen ? (1 - k) >> 1 : (k + 1) >> 1;
}

int meanAt(Line v) { return (((v.at(-1) + v.at(1)) >> 1) + v.at(0) + 1) >> 1; }

int changeAt(Line v) { return std::abs(v.at(-1) - v.at(1)) >> 3; }

int logOfRoughnessAt(const Plane& changes, int x, int y) {
  int roughness = 0;
  for (int j = -1; j <= 1; ++j)
    for (int i = -1; i <= 1; ++i) roughness += changes.at(x + i, y + j);
  return directionalLog(roughness + 1);
}

// What is known along rows, or along columns.
struct Direction {
  Plane differences, means, changes, logs;

  Direction(const Plane& mosaic, int grid, int dx, int dy)
      : differences(mosaic.width, mosaic.height,
                    [&](int x, int y) {
                      return differenceAt({mosaic, x, y, dx, dy}, colourAt(grid, x, y) == 'G');
                    }),
        means(mosaic.width, mosaic.height,
              [&](int x, int y) {
                return meanAt({differences, x, y, dx, dy});
              }),
        changes(mosaic.width, mosaic.height,
                [&](int x, int y) {
                  return changeAt({differences, x, y, dx, dy});
                }),
        logs(mosaic.width, mosaic.height,
             [&](int x, int y) { return logOfRoughnessAt(changes, x, y); }) {}
};

// What is known to the left, to the right, above and below a red or blue site.
struct Around {
  int left, right, up, down;

  Around(const Plane& alongRows, const Plane& alongColumns, int x, int y)
      : left(alongRows.at(x - 1, y)), right(alongRows.at(x + 1, y)), up(alongColumns.at(x, y - 1)),
        down(alongColumns.at(x, y + 1)) {}
};

// Of a value along the row and one along the column.
int blendOfDirections(int h, int v, const Around& logs) {
  return directionalBlend(h, v, std::min(logs.left, logs.right), std::min(logs.up, logs.down));
}

int blendedAt(const Around& means, const Around& logs) {
  return blendOfDirections(directionalBlend(means.left, means.right, logs.left, logs.right),
                           directionalBlend(means.up, means.down, logs.up, logs.down), logs);
}

// A value taken from the samples around, or through differences: mainly what changes less.
int chosen(int direct, int through, int changesOfSamples, int changesOfDifferences) {
  return directionalBlend(through, direct, directionalLog(1 + changesOfDifferences),
                          directionalLog(8 + changesOfSamples));
}

// From each of the values to the next one, and from the last to the first.
int changesAround(const std::array<int, 4>& values) {
  int changes = 0;
  for (size_t i = 0; i < 4; ++i) changes += std::abs(values[i] - values[(i + 1) % 4]);
  return changes;
}

// The difference at a red or blue site.
int settledAt(const Plane& mosaic, const Plane& blended, const Around& logs, int x, int y) {
  const int here = blended.at(x, y);
  const std::initializer_list<int> others{blended.at(x - 2, y), blended.at(x + 2, y),
                                          blended.at(x, y - 2), blended.at(x, y + 2)};
  int changes = 0;
  for (const int other : others) changes += std::abs(other - here) >> 3;
  const auto [least, most] = std::minmax(others);
  const Around s(mosaic, mosaic, x, y);
  const int direct =
      blendOfDirections(2 * (s.left + s.right), 2 * (s.up + s.down), logs) - 4 * mosaic.at(x, y);
  int ownChanges = 0;
  for (const auto& [i, j] : {std::pair{-2, 0}, {2, 0}, {0, -2}, {0, 2}})
    ownChanges += std::abs(mosaic.at(x + i, y + j) - mosaic.at(x, y));
  const int samples = std::max(2 * changesAround({s.left, s.up, s.right, s.down}), ownChanges >> 5);
  return chosen(direct, std::clamp(here, least, most), samples, changes);
}

// At a red site blue, at a blue site red.
int oppositeAt(const Plane& mosaic, const Plane& settled, int x, int y) {
  const Line falling[] = {{mosaic, x, y, 1, 1}, {settled, x, y, 1, 1}};
  const Line rising[] = {{mosaic, x, y, 1, -1}, {settled, x, y, 1, -1}};
  const int fallingChange = changeAt(falling[1]), risingChange = changeAt(rising[1]);
  const int opposite =
      directionalBlend((falling[1].at(-1) + falling[1].at(1) + 1) >> 1,
                       (rising[1].at(-1) + rising[1].at(1) + 1) >> 1,
                       directionalLog(1 + fallingChange), directionalLog(1 + risingChange));
  const int direct =
      (falling[0].at(-1) + falling[0].at(1) + rising[0].at(-1) + rising[0].at(1) + 2) >> 2;
  const int samples =
      changesAround({falling[0].at(-1), rising[0].at(1), falling[0].at(1), rising[0].at(-1)}) >> 1;
  return chosen(direct, mosaic.at(x, y) + ((settled.at(x, y) - opposite + 2) >> 2), samples,
                fallingChange + risingChange);
}

// At a green site: the colour of its neighbours before and after it.
int neighbourAt(const Plane& mosaic, const Plane& settled, int x, int y, int dx, int dy) {
  int samples = 0, differences = 0;
  for (const int k : {-2, 0, 2}) {
    const Line s{mosaic, x + k * dy, y + k * dx, dx, dy},
        d{settled, x + k * dy, y + k * dx, dx, dy};
    samples += std::abs(s.at(-1) - s.at(1));
    differences += changeAt(d);
  }
  const Line s{mosaic, x, y, dx, dy}, d{settled, x, y, dx, dy};
  return chosen((s.at(-1) + s.at(1) + 1) >> 1, s.at(0) - ((d.at(-1) + d.at(1) + 4) >> 3), samples,
                differences);
}

struct Pixel {
  int own, green, opposite;  // own: the colour that the row senses besides green
};

Pixel pixelAt(const Plane& mosaic, const Plane& settled, bool isGreen, int x, int y) {
  const int s = mosaic.at(x, y);
  if (isGreen)
    return {neighbourAt(mosaic, settled, x, y, 1, 0), s, neighbourAt(mosaic, settled, x, y, 0, 1)};
  return {s, s + ((settled.at(x, y) + 2) >> 2), oppositeAt(mosaic, settled, x, y)};
}

}  // namespace

int directionalLog(int n) {
  int octave = 0;
  while (n >> octave > 1) ++octave;
  return 4 * octave + (4 * n >> octave) - 4;
}

int directionalBlend(int a, int b, int la, int lb) {
  constexpr int kParts[] = {64, 48, 33, 22, 14, 9, 5, 3, 2, 1, 1};  // of 128
  constexpr int kEntries = sizeof kParts / sizeof *kParts;
  const int apart = std::abs(la - lb);
  const int part = apart < kEntries ? kParts[apart] : 0;
  return la <= lb ? a + (((b - a) * part + 64) >> 7) : b + (((a - b) * part + 64) >> 7);
}

std::vector<uint16_t> demosaicDirectional(const DirectionalFrame& frame) {
  const int w = frame.width, h = frame.height, grid = frame.grid;
  const auto isGreen = [grid](int x, int y) { return colourAt(grid, x, y) == 'G'; };
  const Plane mosaic(w, h,
                     [&](int x, int y) { return frame.samples[static_cast<size_t>(y * w + x)]; });
  const Direction rows(mosaic, grid, 1, 0), columns(mosaic, grid, 0, 1);
  const Plane blended(w, h, [&](int x, int y) {
    if (isGreen(x, y)) return 0;
    return blendedAt({rows.means, columns.means, x, y}, {rows.logs, columns.logs, x, y});
  });
  const Plane settled(w, h, [&](int x, int y) {
    if (isGreen(x, y)) return 0;
    return settledAt(mosaic, blended, {rows.logs, columns.logs, x, y}, x, y);
  });
  std::vector<uint16_t> rgb;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const Pixel pixel = pixelAt(mosaic, settled, isGreen(x, y), x, y);
      const bool redRow = colourAt(grid, 0, y) == 'R' || colourAt(grid, 1, y) == 'R';
      for (const int sample :
           {redRow ? pixel.own : pixel.opposite, pixel.green, redRow ? pixel.opposite : pixel.own})
        rgb.push_back(static_cast<uint16_t>(std::clamp(sample, 0, (1 << frame.bits) - 1)));
    }
  }
  return rgb;
}

}  // namespace reference
