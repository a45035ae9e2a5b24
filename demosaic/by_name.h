// Only tests call these functions, by name: single steps of pixel grouping and of variable
// gradients, on pixels of the work buffer in the guarded layout.
#pragma once

#include <cstdint>

namespace vistrel::core {

// Steps of pixel grouping.

// Green at a red or blue site. pPixel points to the pixel's blue sample. nStride: samples per row.
// nMode: the channel that the site senses, 0 blue, 2 red.
uint8_t calcOneGreen(uint8_t* pPixel, unsigned nStride, unsigned nMode);
uint16_t calcOneGreen(uint16_t* pPixel, unsigned nStride, unsigned nMode);

// Write red to pFirst and blue to pSecond, using finished green; the one that the site senses
// becomes 0. nMode: the site, 0 blue, 1 green beside blue, 2 red, 3 green beside red.
void calcOneRedBlu8(uint8_t* pPixel, unsigned nStride, uint8_t* pFirst, uint8_t* pSecond,
                    unsigned nMode);
void calcOneRedBlu16(uint16_t* pPixel, unsigned nStride, uint16_t* pFirst, uint16_t* pSecond,
                     unsigned nMode);

// A colour in the middle of three positions, from their greens L1, L2, L3 and the colours V1, V3 of
// the outer two. If green rises or falls steadily, the colour follows it; otherwise it bends half
// as much as green.
int HueTransit(int L1, int L2, int L3, int V1, int V3);

// One pixel of variable gradients.

// Write the two colours that a pixel of the guarded layout lacks. nRowSamples: distance between two
// rows. nChannel: at a green site the colour of its row, at a red or blue site the colour of its
// diagonals.
void calcOneGreenCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneGreenCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneRedBluCenter(uint8_t* pPixel, unsigned nRowSamples, unsigned nChannel);
void calcOneRedBluCenter(uint16_t* pPixel, unsigned nRowSamples, unsigned nChannel);

}  // namespace vistrel::core
