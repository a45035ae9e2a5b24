#include <libraw/libraw.h>
#include <omp.h>

#include "bench/peers.h"

namespace vistrel::core::bench {

namespace {

constexpr unsigned kRggb = 0x94949494;  // as LibRaw writes it

// LibRaw's interpolators work in place on an image of red, green, blue and second green. Only a
// derived class can call them one by one, without the rest of LibRaw's processing.
class Interpolators : public LibRaw {
 public:
  explicit Interpolators(const Frame& frame) {
    const FrameSize size = frame.size;
    imgdata.sizes.width = imgdata.sizes.iwidth = static_cast<ushort>(size.width);
    imgdata.sizes.height = imgdata.sizes.iheight = static_cast<ushort>(size.height);
    imgdata.idata.filters = kRggb;
    imgdata.idata.colors = 3;
    imgdata.color.maximum = (1u << frame.significantBits) - 1;
    for (int i = 0; i < 3; ++i) imgdata.color.rgb_cam[i][i] = 1;  // for its colour differences
    image_ = allocate<ushort[4]>(size.pixels());
    imgdata.image = image_.get();
    for (unsigned y = 0; y < size.height; ++y)
      for (unsigned x = 0; x < size.width; ++x) {
        const size_t i = size_t{y} * size.width + x;
        imgdata.image[i][(y & 1) + (x & 1)] = frame.samples16[i];
      }
  }
  ~Interpolators() override { imgdata.image = nullptr; }

  using LibRaw::ahd_interpolate;
  using LibRaw::ppg_interpolate;

  Picture picture(unsigned bits) const {
    return {image_.get(), imgdata.sizes.width, imgdata.sizes.height, {4, 2, {0, 1, 2}}, bits};
  }

 private:
  Buffer<ushort[4]> image_;
};

}  // namespace

// Runs repeatedly on one image: it reads only sensed samples and greens that it has just written.
Task librawPixelGrouping(const Conversion&, const Frame& frame) {
  omp_set_num_threads(1);
  const auto libraw = std::make_shared<Interpolators>(frame);
  return {[=] { libraw->ppg_interpolate(); }, libraw->picture(frame.significantBits)};
}

Task librawAhd(const Conversion&, const Frame& frame) {
  omp_set_num_threads(1);
  const auto libraw = std::make_shared<Interpolators>(frame);
  return {[=] { libraw->ahd_interpolate(); }, libraw->picture(frame.significantBits)};
}

}  // namespace vistrel::core::bench
