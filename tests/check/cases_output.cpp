// The path from demosaiced samples to the output formats: the members, the functions that choose
// one, the table.
#include <algorithm>

#include "common/arith.h"
#include "output/colour.h"
#include "output/mono.h"
#include "output/table.h"
#include "tests/check/conversion.h"
#include "tests/check/groups.h"
#include "tests/output/by_name.h"
#include "tests/reference/output.h"

namespace vistrel::core::check {
namespace {

enum class Family { mono, bgr, argb, gray };

size_t channelsRead(Family family) { return family == Family::mono ? 1 : 3; }
size_t channelsWritten(Family family) {
  return family == Family::bgr ? 3 : family == Family::argb ? 4 : 1;
}

// The samples that a member reads. Its stride counts samples or pixels, depending on the family.
Shape sourceShape(Family family, const Call& call, size_t s) {
  if (call.roiWidth == 0 || call.roiHeight == 0) return {};
  size_t pitch = call.stride;
  if (family == Family::bgr || family == Family::argb) pitch *= 3;
  if (family == Family::gray && call.binning == 0) pitch = 3 * (size_t{call.roiWidth} + 4);
  Shape shape = {0, call.fullHeight(), s * channelsRead(family) * call.fullWidth(), s * pitch};
  if (shape.pitch < shape.rowBytes) shape = Shape::contiguous(shape.span());
  return shape;
}

template <class T>
constexpr bool kIsTable = !std::is_pointer_v<T>;

template <class Source, class Sample>
Layout memberLayout(Family family, const Call& call) {
  Layout layout;
  layout.sampleBytes = std::is_same_v<Source, const uint8_t*> ? 1 : 2;
  layout.sourceBits = layout.sampleBytes == 1 ? 8 : call.a;
  layout.source = sourceShape(family, call, layout.sampleBytes);
  layout.destination =
      Shape::contiguous(sizeof(Sample) * channelsWritten(family) * call.roiWidth * call.roiHeight);
  layout.destinationRaster = {sizeof(Sample), channelsWritten(family), call.roiWidth};
  layout.tableEntries = kIsTable<Source> ? kTableEntries / sizeof(uint16_t) : 0;
  layout.pixels = uint64_t{call.fullWidth()} * call.fullHeight();
  return layout;
}

// The depth of the frame is `a`; srcBits, dstBits and shift go to the member as they are.
template <class Source>
Call drawMember(Draw& draw, Family family, bool wideResult) {
  Call call;
  do {
    draw.size(call);
  } while (call.binning > 3);
  draw.memory(call, !std::is_same_v<Source, const uint8_t*>);
  call.a = draw.plain() ? 12 : 8 + draw.below(9);
  call.srcBits = call.dstBits = 8;
  if (std::is_same_v<Source, const uint16_t*>) {
    call.srcBits = draw.oddly(16) ? draw.below(41) : call.a;
    call.dstBits = draw.oddly(16) ? draw.below(41) : wideResult ? 8 + draw.below(9) : 8;
    call.shift = draw.oddly(16) ? draw.word() : draw.pick({0, 0, 1, 2, 0xFFFFFFFF});
  }
  call.stride = call.fullWidth() + (draw.oddly(2) ? draw.below(12) : 0);
  if (family == Family::gray && draw.oneIn(2)) call.stride *= 3;
  return call;
}

template <class Source>
Source sourceOf(const Call& call, const Memory& memory) {
  if constexpr (kIsTable<Source>)
    return {memory.table.as(), memory.source.as<uint16_t>(), call.a - 10};
  else
    return memory.source.as<std::remove_const_t<std::remove_pointer_t<Source>>>();
}

template <class Source, class Sample>
using Member = void(Source, uint32_t, uint32_t, Sample*, uint32_t, uint32_t, uint32_t, uint32_t);

template <class Source, class Sample>
using Members = std::array<Member<Source, Sample>*, 4>;  // 1x1 .. 4x4

template <class Source, class Sample>
Subject::Run running(const Members<Source, Sample>& members) {
  return [members](const Call& c, const Memory& m) -> uint64_t {
    members[c.binning](sourceOf<Source>(c, m), c.stride, c.srcBits, m.destination.as<Sample>(),
                       c.roiWidth, c.roiHeight, c.dstBits, c.shift);
    return 0;
  };
}

template <class Source, class TheirSource, class Sample>
void addMember(Catalogue& all, const char* name, Family family,
               const Members<Source, Sample>& product,
               const Members<TheirSource, Sample>& reference) {
  all.add("output",
          {name,
           [=](const Call& call) { return memberLayout<Source, Sample>(family, call); },
           {running(product), running(reference)},
           {}},
          [=](Draw& draw) { return drawMember<Source>(draw, family, sizeof(Sample) == 2); });
}

#define VISTREL_MEMBERS(space, family, Source, Sample)                               \
  Members<Source, Sample> {                                                          \
    space::family##1x1 < Source, Sample >, space::family##2x2 < Source, Sample >,    \
        space::family##3x3 < Source, Sample >, space::family##4x4 < Source, Sample > \
  }
#define VISTREL_ADD(name, kind, family, Source, Sample)                             \
  addMember(all, name, Family::kind, VISTREL_MEMBERS(core, family, Source, Sample), \
            VISTREL_MEMBERS(reference, family, Source, Sample))
#define VISTREL_ADD_TABLE(name, kind, family)                                                     \
  addMember(all, name, Family::kind, VISTREL_MEMBERS(core, family, core::CLutTransform, uint8_t), \
            VISTREL_MEMBERS(reference, family, reference::CLutTransform, uint8_t))

void addMembers(Catalogue& all) {
  VISTREL_ADD("ImageBinning-8to8", mono, ImageBinning, const uint8_t*, uint8_t);
  VISTREL_ADD("ImageBinning-16to8", mono, ImageBinning, const uint16_t*, uint8_t);
  VISTREL_ADD("ImageBinning-16to16", mono, ImageBinning, const uint16_t*, uint16_t);
  VISTREL_ADD_TABLE("ImageBinning-table", mono, ImageBinning);
  VISTREL_ADD("ImageBGRBinning-8to8", bgr, ImageBGRBinning, const uint8_t*, uint8_t);
  VISTREL_ADD("ImageBGRBinning-16to8", bgr, ImageBGRBinning, const uint16_t*, uint8_t);
  VISTREL_ADD("ImageBGRBinning-16to16", bgr, ImageBGRBinning, const uint16_t*, uint16_t);
  VISTREL_ADD_TABLE("ImageBGRBinning-table", bgr, ImageBGRBinning);
  VISTREL_ADD("ImageARGBBinning-8to8", argb, ImageARGBBinning, const uint8_t*, uint8_t);
  VISTREL_ADD("ImageARGBBinning-16to8", argb, ImageARGBBinning, const uint16_t*, uint8_t);
  VISTREL_ADD_TABLE("ImageARGBBinning-table", argb, ImageARGBBinning);
  VISTREL_ADD("ImageGrayBinning-8to8", gray, ImageGrayBinning, const uint8_t*, uint8_t);
  VISTREL_ADD("ImageGrayBinning-16to8", gray, ImageGrayBinning, const uint16_t*, uint8_t);
  VISTREL_ADD("ImageGrayBinning-16to16", gray, ImageGrayBinning, const uint16_t*, uint16_t);
  VISTREL_ADD_TABLE("ImageGrayBinning-table", gray, ImageGrayBinning);
}

Call drawImage(Draw& draw, bool wide) {
  Call call;
  draw.size(call);
  drawColour(draw, call, wide);
  call.guarded = draw.oneIn(2) ? draw.pick({1, 1, 2, 0xFFFFFFFF}) : 0;
  return call;
}

Layout imageLayout(const Call& call, bool wide) {
  Layout layout = conversionLayout(call, wide);
  layout.source = imageShape(call, wide, call.guarded != 0);
  return layout;
}

using Convert8To = void(const uint8_t*, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t, int32_t);
using Convert16To = void(const uint16_t*, uint32_t, uint32_t, uint32_t, void*, uint32_t, uint32_t,
                         const uint16_t*, uint32_t, uint32_t, int32_t);

Subject::Run running(Convert8To* convert) {
  return [convert](const Call& c, const Memory& m) -> uint64_t {
    convert(m.source.as(), c.roiWidth, c.roiHeight, m.destination.as(), c.format, c.binning,
            static_cast<int32_t>(c.guarded));
    return 0;
  };
}

Subject::Run running(Convert16To* convert) {
  return [convert](const Call& c, const Memory& m) -> uint64_t {
    convert(m.source.as<uint16_t>(), c.roiWidth, c.roiHeight, c.srcBits, m.destination.as(),
            c.format, c.lutMode, c.place & kNoTable ? nullptr : m.table.as<uint16_t>(), c.binning,
            c.dstBits, static_cast<int32_t>(c.guarded));
    return 0;
  };
}

void addDispatch(Catalogue& all, const char* name, bool wide, std::array<Subject::Run, 2> run) {
  all.add("output",
          {name, [=](const Call& call) { return imageLayout(call, wide); }, std::move(run), {}},
          [=](Draw& draw) { return drawImage(draw, wide); });
}

// One past the last entry of the user table that is read; `shift` is its stride's logarithm.
size_t userEntries(const Call& call) {
  if (call.lutMode != 10) return 0;
  uint32_t last = 0;
  for (uint32_t i = 0; i < kTableEntries; ++i) last = std::max(last, shl(i, call.shift));
  return std::min<size_t>(last, kTableEntries16 - 1) + 1;
}

using CreateTable = void(uint8_t*, uint32_t, const uint16_t*, int32_t);

Subject::Run running(CreateTable* create) {
  return [create](const Call& c, const Memory& m) -> uint64_t {
    create(m.destination.as(), c.lutMode, m.table.as<uint16_t>(), static_cast<int32_t>(c.shift));
    return 0;
  };
}

void addTable(Catalogue& all) {
  const auto layout = [](const Call& call) {
    Layout l;
    l.destination = Shape::contiguous(kTableEntries);
    l.tableEntries = userEntries(call);
    l.pixels = kTableEntries;
    return l;
  };
  all.add("output",
          {"Create10To8BitLUT",
           layout,
           {running(Create10To8BitLUT), running(reference::Create10To8BitLUT)},
           {}},
          [](Draw& draw) {
            Call call;
            draw.memory(call, false);
            call.lutMode = 3 + draw.below(10);
            call.shift = draw.oneIn(2) ? draw.below(7) : draw.below(48) - 10;
            return call;
          });
}

}  // namespace

void addOutput(Catalogue& all) {
  addMembers(all);
  addDispatch(all, "ConvertToOutputFormat8", false,
              {running(ConvertToOutputFormat8), running(reference::ConvertToOutputFormat8)});
  addDispatch(all, "ConvertToOutputFormat16", true,
              {running(ConvertToOutputFormat16), running(reference::ConvertToOutputFormat16)});
  addTable(all);
}

}  // namespace vistrel::core::check
