// For LD_PRELOAD: flips one bit of one pixel, in one conversion at one level.
#include <dlfcn.h>

#include <cstring>

#include "vistrel/vistrel_host.h"

extern "C" int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                                   const vistrel_image* image, vistrel_error* error) {
  using Convert = decltype(vistrel_convert);
  const auto convert = reinterpret_cast<Convert*>(dlsym(RTLD_NEXT, "vistrel_convert"));
  const int32_t status = convert(frame, conversion, image, error);
  const bool chosen = conversion->algorithm == VISTREL_VNG && frame->bits == 10 &&
                      frame->phase == VISTREL_GBRG && conversion->binning == 1 &&
                      std::strcmp(vistrel_level_name(vistrel_level()), "base") == 0;
  if (!status && chosen) static_cast<unsigned char*>(image->pixels)[image->size / 2] ^= 1;
  return status;
}
