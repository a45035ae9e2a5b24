// One pixel of the variable gradients.
#pragma once

#include <cstdint>

namespace vistrel::core {

// Write the two colours that a pixel of the guarded layout lacks. nRowSamples: from row to row.
// nChannel: at a green site the colour of its row, at a red or blue one that of its diagonals.
void calcOneGreenCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneGreenCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneRedBluCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneRedBluCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel);

}  // namespace vistrel::core
