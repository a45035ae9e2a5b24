// Texts of --look: whatever is accepted is written as a text that means the same.
#include <cstdlib>
#include <string_view>

#include "apps/error.h"
#include "apps/look/look.h"

using namespace vistrel;

namespace {

app::Look completed(const app::KnownLook& known) {
  app::Look look;
  look.black = known.black.value_or(look.black);
  look.white = known.white.value_or(65535);
  look.gains = known.gains.value_or(look.gains);
  look.matrix = known.matrix.value_or(look.matrix);
  look.exposure = known.exposure.value_or(look.exposure);
  look.transfer = known.transfer.value_or(look.transfer);
  look.neutralHighlights = known.neutralHighlights.value_or(look.neutralHighlights);
  return look;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  app::attempt([&] {
    const app::Look look = completed(app::parseLook(text).known);
    const app::Outcome again = app::attempt([&] {
      if (!(completed(app::parseLook(app::lookText(look)).known) == look)) std::abort();
    });
    if (again.status != app::kDone) std::abort();
  });
  return 0;
}
