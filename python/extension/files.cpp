// The module that reads and writes files: apart from _core, so that conversions need no libraries
// for files.
#include "python/extension/read.h"
#include "python/extension/write.h"

PYBIND11_MODULE(_files, module) {
  using namespace vistrel::python;
  bindRejection();
  bindRead(module);
  bindWrite(module);
}
