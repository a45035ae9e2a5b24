// What decisions about a frame's look are based on.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "apps/look/look.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {

// The number of samples of each value, from 0 to the largest value of the frame's bits.
using Histogram = std::vector<uint64_t>;

// Of the places of the 2x2 block at the frame's first pixel, row by row. The samples of a region;
// of the whole frame, if all its fields are 0. The frame is not packed.
std::array<Histogram, 4> histogramsOf(const vistrel_frame& frame,
                                      const vistrel_region& region = {});

// The differences of each sample to the next one of its place in the row, in the same way.
std::array<Histogram, 4> differencesOf(const vistrel_frame& frame, const vistrel_region& region);

Histogram sumOf(const std::array<Histogram, 4>& places);
uint64_t countOf(const Histogram& histogram);

// The smallest value that more than this part of the samples do not exceed; 0 if there are none.
uint32_t quantile(const Histogram& histogram, double part);

// The colour of each place of a mosaic's 2x2 block: VISTREL_RED, ... Green for mono frames.
std::array<uint32_t, 4> coloursOf(uint32_t phase);

// A frame at half its resolution or less: a block of 2x2 pixels each, from an even row and column.
struct Block {
  std::array<float, 3> colour;  // red, green, blue from black, 0, to white, 1; equal if mono
  bool clipped;                 // a sample has reached white
};

// The samples that count for gray-world gains: those of the region, or if there is a white level,
// of its blocks without a sample that reaches it.
uint64_t balancedSamples(const vistrel_frame& frame, uint32_t white, const vistrel_region& region);

// At most about `kMaxBlocks` blocks, evenly spaced.
constexpr uint32_t kMaxBlocks = 200'000;
std::vector<Block> blocksOf(const vistrel_frame& frame, const BlackLevels& black, uint32_t white,
                            const vistrel_region& region = {});

}  // namespace vistrel::app
