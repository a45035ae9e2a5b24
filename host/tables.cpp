#include "host/tables.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "common/mosaic.h"
#include "demosaic/algorithms.h"
#include "host/names.h"

namespace vistrel::host {
namespace {

using Direct = core::DirectFormat;
using Kernels = core::PixelFormatKernels;
constexpr Format kFormats[] = {
    {{"MONO8", VISTREL_MONO8, 1, 1, 1, 1, {}}, false, Direct::three, nullptr},
    {{"MONO16", VISTREL_MONO16, 1, 2, 1, 1, {}}, false, Direct::three, nullptr},
    {{"BGR24", VISTREL_BGR24, 3, 1, 0, 1, {}}, false, Direct::three, nullptr},
    {{"ARGB32", VISTREL_ARGB32, 4, 1, 0, 1, {}}, true, Direct::alphaFirst, &Kernels::alphaFirst8},
    {{"ARGB32_4", VISTREL_ARGB32_4, 4, 1, 0, 1, {}},
     true,
     Direct::alphaFirst,
     &Kernels::alphaFirst8},
    {{"BGR48", VISTREL_BGR48, 3, 2, 0, 1, {}}, false, Direct::three, nullptr},
    {{"GRAY8", VISTREL_GRAY8, 1, 1, 0, 1, {}}, false, Direct::luma, &Kernels::luma8},
    {{"GRAY16", VISTREL_GRAY16, 1, 2, 0, 1, {}}, false, Direct::three, &Kernels::luma16},
    {{"RGB24", VISTREL_RGB24, 3, 1, 0, 1, {}}, true, Direct::three, nullptr},
    {{"BGRA32", VISTREL_BGRA32, 4, 1, 0, 1, {}}, false, Direct::alphaLast, &Kernels::alphaLast8},
    {{"RGBA32", VISTREL_RGBA32, 4, 1, 0, 1, {}}, true, Direct::alphaLast, &Kernels::alphaLast8},
    {{"RGB48", VISTREL_RGB48, 3, 2, 0, 1, {}}, true, Direct::three, nullptr},
    {{"RGB24_PLANAR", VISTREL_RGB24_PLANAR, 3, 1, 0, 3, {}},
     true,
     Direct::three,
     nullptr,
     Arrangement::planes},
    {{"RGB48_PLANAR", VISTREL_RGB48_PLANAR, 3, 2, 0, 3, {}},
     true,
     Direct::three,
     nullptr,
     Arrangement::planes},
    {{"NV12", VISTREL_NV12, 3, 1, 0, 2, {}}, false, Direct::ycc420, nullptr, Arrangement::nv12},
    {{"I420", VISTREL_I420, 3, 1, 0, 3, {}}, false, Direct::ycc420, nullptr, Arrangement::i420},
    {{"I444", VISTREL_I444, 3, 1, 0, 3, {}}, false, Direct::three, nullptr, Arrangement::i444},
};

constexpr auto kAlgorithms = [] {
  std::array<vistrel_algorithm, std::size(core::kAlgorithms)> rows{};
  std::transform(std::begin(core::kAlgorithms), std::end(core::kAlgorithms), rows.begin(),
                 [](const core::AlgorithmRow& a) {
                   return vistrel_algorithm{a.name, a.code, a.maxBits, a.minSize, {}};
                 });
  return rows;
}();

// The letters of a mosaic's name are the filters of its 2x2 block, row by row.
constexpr struct {
  const char* name;
  uint32_t code;
} kPhases[] = {{"grbg", VISTREL_GRBG}, {"bggr", VISTREL_BGGR}, {"rggb", VISTREL_RGGB},
               {"gbrg", VISTREL_GBRG}, {"mono", VISTREL_MONO}, {"bgr", VISTREL_BGR}};

// Null for an unknown code.
template <class Table>
auto rowOfCode(const Table& table, uint32_t code) {
  const auto row = std::find_if(std::begin(table), std::end(table),
                                [code](const auto& r) { return r.code == code; });
  return row == std::end(table) ? nullptr : row;
}

}  // namespace

const Format* findFormat(uint32_t code) { return rowOfCode(kFormats, code); }

std::string formatList(const std::function<bool(const Format&)>& lists) {
  return listOf(kFormats, lists);
}

std::string algorithmList() { return listOf(kAlgorithms); }

std::string phaseList() { return listOf(kPhases); }

}  // namespace vistrel::host

using namespace vistrel::host;
namespace core = vistrel::core;

const vistrel_format* vistrel_format_at(size_t index) {
  return index < std::size(kFormats) ? &kFormats[index] : nullptr;
}

const vistrel_algorithm* vistrel_algorithm_at(size_t index) {
  return index < std::size(kAlgorithms) ? &kAlgorithms[index] : nullptr;
}

const char* vistrel_phase_name(uint32_t phase) {
  const auto* const row = rowOfCode(kPhases, phase);
  return row ? row->name : nullptr;
}

int32_t vistrel_parse_phase(const char* name, uint32_t* phase, vistrel_error* error) {
  return parseName(kPhases, name, phase, "phase", VISTREL_BAD_PHASE, error);
}

int32_t vistrel_parse_format(const char* name, uint32_t* format, vistrel_error* error) {
  return parseName(kFormats, name, format, "format", VISTREL_BAD_FORMAT, error);
}

int32_t vistrel_parse_algorithm(const char* name, uint32_t* algorithm, vistrel_error* error) {
  return parseName(kAlgorithms, name, algorithm, "algorithm", VISTREL_BAD_ALGORITHM, error);
}

uint32_t vistrel_phase_at(uint32_t phase, uint32_t x, uint32_t y) {
  if (phase >= VISTREL_MONO) return phase;
  return phase ^ (y & 1 ? core::kRowShift : 0) ^ (x & 1 ? core::kColumnShift : 0);
}

uint32_t vistrel_colour_at(uint32_t phase, uint32_t x, uint32_t y) {
  if (phase >= VISTREL_MONO) return VISTREL_NO_COLOUR;
  const int colour = core::Mosaic::ofPhase(phase).colourAt(x, y);
  return colour == core::kRed ? VISTREL_RED : colour == core::kGreen ? VISTREL_GREEN : VISTREL_BLUE;
}
