// A user of the host layer: a conversion with a result worked out by hand, and a rejection.
#include <cstdio>

#include <vistrel/vistrel.hpp>

int main() {
  const uint16_t samples[4] = {0, 3, 4, 1023};
  vistrel_frame frame = vistrel::frameOf(samples, 4, 1, 10, VISTREL_MONO);
  const vistrel::Image image = vistrel::convert(frame, vistrel::defaultConversion(frame));
  if (image.pixels != vistrel::Bytes{0, 0, 1, 255}) {
    std::puts("wrong pixels");
    return 1;
  }
  frame.width = 0;
  try {
    vistrel::layoutOf(frame, vistrel::defaultConversion(frame));
  } catch (const vistrel::Error& error) {
    return error.status() == VISTREL_BAD_SIZE ? 0 : 1;
  }
  std::puts("a frame without a pixel was not rejected");
  return 1;
}
