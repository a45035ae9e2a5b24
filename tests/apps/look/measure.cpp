// vistrel-measure PICTURE.png [PATCHES]: prints luma of the picture, and lightness and chroma of
// the patches.
#include <cstdio>
#include <exception>

#include "tests/apps/look/measures.h"

int main(int count, char** arguments) {
  using namespace vistrel;
  if (count != 2 && count != 3) {
    std::fprintf(stderr, "vistrel-measure PICTURE.png [PATCHES]\n");
    return 2;
  }
  try {
    const Picture picture = readPng(arguments[1]);
    const Luma luma = lumaOf(picture);
    std::printf("mean %.1f, median %.1f, white %.2f %%\n", luma.mean, luma.median,
                luma.percentWhite);
    if (count == 2) return 0;
    for (const Patch& patch : readPatches(arguments[2])) {
      const Lab lab = labOf(meanOf(picture, patch.box));
      std::printf("%s: lightness %.1f, chroma %.1f\n", patch.name.c_str(), lab.lightness,
                  lab.chroma());
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
