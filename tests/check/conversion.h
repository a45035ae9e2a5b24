// What all conversions share: how their arguments are drawn, and which bytes of source, destination
// and work buffer they touch. `wide`: 16-bit samples.
#pragma once

#include "tests/check/subject.h"

namespace vistrel::core::check {

constexpr uint32_t kTableEntries16 = 4096;  // of a stream's look-up table

size_t sampleBytes(bool wide);
bool isGray(uint32_t format);
// Whether the call writes pixels: the format is a known colour format, the binning is valid and
// the size is not zero.
bool hasOutput(const Call& call, bool wide);

// Draws bayer, roiX, roiY, imgWidth, imgHeight; sometimes, where allowed, with rows far enough
// apart for guard pages between them.
void drawRegion(Draw& draw, Call& call, bool wide, bool guardPagesAllowed = true);
// Draws format, dstBits, lutMode, srcBits of a colour conversion, and where its memory lies.
void drawColour(Draw& draw, Call& call, bool wide);

// The part of the layout that all conversions share: the destination and the table.
Layout conversionLayout(const Call& call, bool wide);
// The bytes that the output step reads of a finished image.
Shape imageShape(const Call& call, bool wide, bool guarded);

// The entries, as a subject runs them.
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
