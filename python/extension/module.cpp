// The extension module of the package: a file for each part, each with one function that binds it.
#include "python/extension/convert.h"
#include "python/extension/develop.h"
#include "python/extension/guess.h"
#include "python/extension/memory.h"
#include "python/extension/stream.h"
#include "python/extension/tables.h"
#include "python/extension/teams.h"
#include "python/extension/unpack.h"

PYBIND11_MODULE(_core, module) {
  using namespace vistrel::python;
  bindRejection();
  bindTables(module);
  bindStream(module);
  bindConvert(module);
  bindUnpack(module);
  bindDevelop(module);
  bindGuess(module);
  module.def("trim", [] {
    endTeams();
    emptyPool();
    vistrel::trim();
  });
}
