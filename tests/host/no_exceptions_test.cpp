// The C++ interface where exceptions are disabled. With an argument, asks for the value of a
// rejection, which must abort the program.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "vistrel/vistrel.hpp"

#ifdef __cpp_exceptions
#error "exceptions are enabled"
#endif

namespace {

int g_failures = 0;

void expect(bool holds, const char* what) {
  if (holds) return;
  std::printf("not so: %s\n", what);
  ++g_failures;
}

void convertAPlainFrame() {
  const std::vector<uint8_t> samples(6 * 4, 90);
  const vistrel_frame frame = vistrel::frameOf(samples, 6, 4, VISTREL_RGGB);
  vistrel_conversion conversion = vistrel::defaultConversion(frame);
  const auto image = vistrel::tryConvert(frame, conversion);
  expect(image && image->pixels.size() == 72 && image->pixels[71] == 90, "an image");
  conversion.binning = 7;
  const auto rejected = vistrel::tryConvert(frame, conversion);
  expect(!rejected && rejected.error().status() == VISTREL_BAD_BINNING, "a rejection");
}

void convertPushedRows() {
  const std::vector<uint8_t> samples(6 * 4, 90);
  const vistrel_frame frame = vistrel::frameOf(samples, 6, 4, VISTREL_RGGB);
  vistrel::Image image;
  auto stream = vistrel::Stream::tryAcquire();
  auto pushed = stream->tryBegin(frame, vistrel::defaultConversion(frame), image);
  const auto rows = pushed->tryPush(samples, 4);
  expect(rows && *rows == 4 && image.pixels[0] == 90, "pushed rows");
}

void convertByARunner() {
  const std::vector<uint8_t> samples(1000 * 700, 90);
  const vistrel_frame frame = vistrel::frameOf(samples, 1000, 700, VISTREL_MONO);
  vistrel_conversion conversion = vistrel::defaultConversion(frame);
  unsigned tasks = 0;
  const auto runner = [&tasks](uint32_t count, auto task) {
    for (; count > 0; ++tasks) task(--count);
  };
  vistrel::setRunner(conversion, 3, runner);
  const auto image = vistrel::tryConvert(frame, conversion);
  expect(image && image->pixels[1] == 90 && tasks == 3, "a runner");
}

void finishACalibratedFrame() {
  const std::vector<uint8_t> samples(6 * 4, 90);
  const vistrel_frame frame = vistrel::frameOf(samples, 6, 4, VISTREL_RGGB);
  vistrel_conversion conversion = vistrel::defaultConversion(frame);
  const auto flat = vistrel::tryMeasureFlat(frame, conversion);
  const auto transfer = vistrel::tryMakeTransfer(VISTREL_TRANSFER_LINEAR, 0, 2);
  const vistrel_calibration calibration = vistrel::calibrationOf({}, *flat, {});
  const vistrel_finish finish = vistrel::finishOf(*transfer);
  vistrel::setCalibration(conversion, calibration);
  vistrel::setFinish(conversion, finish);
  const auto image = vistrel::tryConvert(frame, conversion);
  expect(image && image->pixels[71] == 90, "a finished image");
  const vistrel_frame none{};
  expect(!vistrel::tryMeasureFlat(none, conversion), "no flat field");
}

int askForNoValue() {
  std::signal(SIGABRT, [](int) { std::_Exit(0); });
  vistrel::parsePhase("no phase");
  return 1;
}

}  // namespace

int main(int count, char**) {
  if (count > 1) return askForNoValue();
  convertAPlainFrame();
  convertPushedRows();
  convertByARunner();
  finishACalibratedFrame();
  return g_failures;
}
