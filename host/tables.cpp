#include "host/tables.h"

#include <algorithm>
#include <iterator>

#include "host/names.h"

namespace vistrel::host {
namespace {

using core::Finish;
using Kernels = core::PixelFormatKernels;
constexpr Format kFormats[] = {
    {{"MONO8", VISTREL_MONO8, 1, 1, 1, 1, {}}, false, Finish::three, nullptr},
    {{"MONO16", VISTREL_MONO16, 1, 2, 1, 1, {}}, false, Finish::three, nullptr},
    {{"BGR24", VISTREL_BGR24, 3, 1, 0, 1, {}}, false, Finish::three, nullptr},
    {{"ARGB32", VISTREL_ARGB32, 4, 1, 0, 1, {}}, true, Finish::alphaFirst, &Kernels::alphaFirst8},
    {{"ARGB32_4", VISTREL_ARGB32_4, 4, 1, 0, 1, {}},
     true,
     Finish::alphaFirst,
     &Kernels::alphaFirst8},
    {{"BGR48", VISTREL_BGR48, 3, 2, 0, 1, {}}, false, Finish::three, nullptr},
    {{"GRAY8", VISTREL_GRAY8, 1, 1, 0, 1, {}}, false, Finish::luma, &Kernels::luma8},
    {{"GRAY16", VISTREL_GRAY16, 1, 2, 0, 1, {}}, false, Finish::three, &Kernels::luma16},
    {{"RGB24", VISTREL_RGB24, 3, 1, 0, 1, {}}, true, Finish::three, nullptr},
    {{"BGRA32", VISTREL_BGRA32, 4, 1, 0, 1, {}}, false, Finish::alphaLast, &Kernels::alphaLast8},
    {{"RGBA32", VISTREL_RGBA32, 4, 1, 0, 1, {}}, true, Finish::alphaLast, &Kernels::alphaLast8},
    {{"RGB48", VISTREL_RGB48, 3, 2, 0, 1, {}}, true, Finish::three, nullptr},
    {{"RGB24_PLANAR", VISTREL_RGB24_PLANAR, 3, 1, 0, 3, {}},
     true,
     Finish::three,
     nullptr,
     Arrangement::planes},
    {{"RGB48_PLANAR", VISTREL_RGB48_PLANAR, 3, 2, 0, 3, {}},
     true,
     Finish::three,
     nullptr,
     Arrangement::planes},
    {{"NV12", VISTREL_NV12, 3, 1, 0, 2, {}}, false, Finish::ycc420, nullptr, Arrangement::nv12},
    {{"I420", VISTREL_I420, 3, 1, 0, 3, {}}, false, Finish::ycc420, nullptr, Arrangement::i420},
};

// Name, code, maximum bits, minimum size. Ten bits for algorithms that clamp at 1023, fifteen for
// the one that compares 16-bit samples as signed numbers.
constexpr vistrel_algorithm kAlgorithms[] = {
    {"bilinear", VISTREL_BILINEAR, 16, 2, {}}, {"edge", VISTREL_EDGE, 15, 2, {}},
    {"near", VISTREL_NEAR, 16, 2, {}},         {"laroche", VISTREL_LAROCHE, 10, 2, {}},
    {"hamilton", VISTREL_HAMILTON, 10, 2, {}}, {"vng", VISTREL_VNG, 10, 2, {}},
    {"cok", VISTREL_COK, 10, 2, {}},           {"kimmel", VISTREL_KIMMEL, 10, 2, {}},
    {"grouping", VISTREL_GROUPING, 10, 2, {}}, {"ahd", VISTREL_AHD, 16, 5, {}},
};

// The letters of a phase's name are the filters of its 2x2 block, row by row.
constexpr struct {
  const char* name;
  uint32_t code;
} kPhases[] = {{"grbg", VISTREL_GRBG},
               {"bggr", VISTREL_BGGR},
               {"rggb", VISTREL_RGGB},
               {"gbrg", VISTREL_GBRG},
               {"mono", VISTREL_MONO}};

template <class Table>
auto findCode(const Table& table, uint32_t code) {
  const auto row = std::find_if(std::begin(table), std::end(table),
                                [code](const auto& r) { return r.code == code; });
  return row == std::end(table) ? nullptr : &*row;
}

}  // namespace

const Format* findFormat(uint32_t code) { return findCode(kFormats, code); }
const vistrel_algorithm* findAlgorithm(uint32_t code) { return findCode(kAlgorithms, code); }

std::string formatList(bool colour) {
  return listOf(kFormats, [colour](const Format& f) { return f.colour() == colour; });
}

std::string algorithmList() { return listOf(kAlgorithms); }

std::string phaseList() { return listOf(kPhases); }

std::string_view phaseName(uint32_t phase) {
  return phase == VISTREL_BGR ? "BGR" : kPhases[phase].name;
}

}  // namespace vistrel::host

using namespace vistrel::host;

const vistrel_format* vistrel_format_at(size_t index) {
  return index < std::size(kFormats) ? &kFormats[index] : nullptr;
}

const vistrel_algorithm* vistrel_algorithm_at(size_t index) {
  return index < std::size(kAlgorithms) ? &kAlgorithms[index] : nullptr;
}

const char* vistrel_phase_name(uint32_t phase) {
  return phase < std::size(kPhases) ? kPhases[phase].name : nullptr;
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

// An odd x swaps the mosaic's columns (bit 1 of a phase), an odd y its rows (bit 0).
uint32_t vistrel_phase_at(uint32_t phase, uint32_t x, uint32_t y) {
  return phase < VISTREL_MONO ? phase ^ (y & 1) ^ ((x & 1) << 1) : phase;
}

uint32_t vistrel_colour_at(uint32_t phase, uint32_t x, uint32_t y) {
  if (phase >= VISTREL_MONO) return VISTREL_NO_COLOUR;
  const char filter = kPhases[phase].name[2 * (y & 1) + (x & 1)];
  return filter == 'r' ? VISTREL_RED : filter == 'g' ? VISTREL_GREEN : VISTREL_BLUE;
}
