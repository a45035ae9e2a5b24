// What the page's workers call. Arguments and results are JSON; a result with "error" says what is
// wrong in words for the user. Results are valid until the next call.
#include <memory>

#include "apps/error.h"
#include "apps/names/algorithm_guide.h"
#include "apps/pictures/picture_rows.h"
#include "apps/tools/guess/guess_text.h"
#include "apps/tools/selftest/run.h"
#include "try/engine/decoded.h"
#include "try/engine/open_frame.h"

using namespace vistrel;
using namespace vistrel::page;

namespace {

std::unique_ptr<OpenFrame> g_frame;

template <class Make>
const char* answer(Make&& make) {
  static std::string text;
  Json result;
  const app::Outcome outcome = app::attempt([&] { result = make(); });
  if (outcome.status != app::kDone) result = {{"error", outcome.text}};
  text = result.dump(-1, ' ', false, Json::error_handler_t::replace);
  return text.c_str();
}

OpenFrame& openFrame() {
  if (!g_frame) app::throwError(app::kRejected, "no frame is open");
  return *g_frame;
}

Words wordsIn(const char* json) { return Json::parse(json).get<Words>(); }

Json placeOf(const Image& image) {
  const vistrel_layout& l = image.layout;
  return {{"place", reinterpret_cast<uintptr_t>(image.pixels.data())},
          {"bytes", l.bytes},
          {"width", l.width},
          {"height", l.height},
          {"channels", l.channels},
          {"bits", l.bits}};
}

}  // namespace

extern "C" {

const char* try_open(const char* path, const char* words) {
  g_frame.reset();
  return answer([&] {
    g_frame = std::make_unique<OpenFrame>(path, wordsIn(words));
    return g_frame->describe();
  });
}

// Takes the samples of a PNG or a TIFF that is opened next.
const char* try_decoded(const char* tags, const uint8_t* samples, size_t bytes) {
  g_frame.reset();
  return answer([&] {
    decoded() = {descriptionOf(nlohmann::json::parse(tags)), {samples, samples + bytes}};
    return Json::object();
  });
}

// Renders the scene, which is opened next as a TIFF.
const char* try_scene(uint32_t width, uint32_t height, uint32_t bits) {
  return answer([&] {
    app::SceneOptions options;
    options.size = {width, height};
    options.bits = bits;
    options.camera = true;
    decoded() = decodedScene(options, VISTREL_RGGB);
    return Json::object();
  });
}

const char* try_prepare(const char* command, const char* words) {
  return answer([&] { return openFrame().prepare(command, wordsIn(words)); });
}

const char* try_convert(uint32_t purpose, uint32_t first, uint32_t rows) {
  return answer(
      [&] { return placeOf(openFrame().convert(static_cast<Purpose>(purpose), first, rows)); });
}

// The picture's rows as a PNG has them.
const char* try_save(uint32_t first, uint32_t rows) {
  return answer([&] {
    static Image scaled;
    scaled = openFrame().convert(Purpose::kPicture, first, rows);
    app::PictureRows from(scaled, app::Depth::kScaled, std::endian::native);
    for (uint32_t y = 0; y < from.count(); ++y)
      std::copy_n(from.row(y), from.bytes(), scaled.pixels.data() + y * from.bytes());
    return placeOf(scaled);
  });
}

const char* try_probe(uint32_t x, uint32_t y) {
  return answer([&] { return openFrame().probe(x, y); });
}

const char* try_gray(uint32_t x, uint32_t y) {
  return answer([&] { return openFrame().gray(x, y); });
}

const char* try_histogram() {
  return answer([] { return openFrame().histogram(); });
}

const char* try_guess(const char* path) {
  return answer([&] {
    Json list = Json::array();
    for (const app::Guess& guess : app::guessFormat(app::Source(path).all()))
      list.push_back(
          {{"score", guess.score}, {"text", describe(guess)}, {"options", optionsOf(guess)}});
    return list;
  });
}

const char* try_selftest() {
  return answer([] {
    const auto summary = app::selftest::run();
    return Json{{"combinations", summary.combinations},
                {"differences", summary.differences.size()}};
  });
}

const char* try_algorithms() {
  return answer([] {
    Json list = Json::array();
    for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
      const app::AlgorithmGuide* guide = app::guideTo(a->code);
      list.push_back({{"name", a->name}, {"use", guide ? guide->use : ""}});
    }
    return list;
  });
}

}  // extern "C"
