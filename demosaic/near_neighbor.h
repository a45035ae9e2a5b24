// The grid code that makes a filter-array primitive write blue, green, red.
#pragma once

// Of nBayer's mosaic with red and blue exchanged, since a primitive writes red first. Codes above
// 3 give that of 0.
unsigned VST2IPPBayerOffset(unsigned nBayer);
