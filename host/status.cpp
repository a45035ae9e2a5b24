#include "host/status.h"

namespace vistrel::host {

int32_t report(vistrel_error* error, int32_t status, const char* text) noexcept {
  if (error) {
    error->status = status;
    size_t length = 0;
    for (; text[length] && length + 1 < sizeof error->text; ++length)
      error->text[length] = text[length];
    error->text[length] = 0;
  }
  return status;
}

}  // namespace vistrel::host
