// What the arguments of conversions have in common: how they are drawn, and which bytes of
// source, destination and work buffer they speak of. `wide`: samples of 16 bits.
#pragma once

#include "tests/check/subject.h"

namespace vistrel::core::check {

constexpr uint32_t kTableEntries16 = 4096;  // of a stream's look-up table

size_t sampleBytes(bool wide);
bool isGray(uint32_t format);
// Something is written: a colour format with an output branch, a binning that there is, a size.
bool hasOutput(const Call& call, bool wide);

// bayer, roiX, roiY, imgWidth, imgHeight; sometimes, where allowed, with rows far enough apart for
// fences between.
void drawRegion(Draw& draw, Call& call, bool wide, bool fencesAllowed = true);
// format, dstBits, lutMode, srcBits of a colour conversion, and the place of its memory.
void drawColour(Draw& draw, Call& call, bool wide);

// The destination's part of a layout, and what any conversion's layout begins with.
Layout conversionLayout(const Call& call, bool wide);
// The bytes that the output step reads of a finished image.
Shape imageShape(const Call& call, bool wide, bool guarded);

// Either entry, as a subject runs it.
using Convert8 = uint32_t(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                          uint32_t, uint32_t, uint32_t, uint32_t, const uint8_t*, void*, uint32_t,
                          uint32_t);
using Convert16 = uint32_t(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                           uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                           const uint16_t*, void*, uint32_t, uint32_t);
Subject::Run running(Convert8* convert);
Subject::Run running(Convert16* convert);
std::array<Subject::Run, 2> conversions(bool wide);

}  // namespace vistrel::core::check
