#include "python/extension/tables.h"

#include "python/extension/arguments.h"

namespace vistrel::python {
namespace {

uint32_t phaseCodeOf(py::handle phase) {
  return codeOf(phase, {"phase", VISTREL_BAD_PHASE}, vistrel_parse_phase);
}

const char* phaseNameOf(py::handle phase) { return vistrel_phase_name(phaseCodeOf(phase)); }

const char* phaseAt(py::handle phase, uint32_t x, uint32_t y) {
  return vistrel_phase_name(vistrel_phase_at(phaseCodeOf(phase), x, y));
}

py::list formats() {
  py::list rows;
  for (size_t i = 0; const vistrel_format* f = vistrel_format_at(i); ++i)
    rows.append(py::make_tuple(f->name, f->channels, f->bytes_per_sample, f->mono != 0, f->planes));
  return rows;
}

py::list algorithms() {
  py::list rows;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    rows.append(py::make_tuple(a->name, a->max_bits, a->min_size));
  return rows;
}

py::dict statuses() {
  py::dict codes;
  for (int32_t i = 0; const char* name = vistrel_status_name(i); ++i) codes[name] = i;
  return codes;
}

std::string version() {
  return std::to_string(VISTREL_VERSION_MAJOR) + "." + std::to_string(VISTREL_VERSION_MINOR) + "." +
         std::to_string(VISTREL_VERSION_PATCH);
}

}  // namespace

void bindTables(py::module_& module) {
  module.def("phase_name", &phaseNameOf);
  module.def("phase_at", &phaseAt);
  module.def("formats", &formats);
  module.def("algorithms", &algorithms);
  module.def("statuses", &statuses);
  module.attr("version") = version();
}

}  // namespace vistrel::python
