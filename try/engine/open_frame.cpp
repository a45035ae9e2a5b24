#include "try/engine/open_frame.h"

#include <algorithm>

#include "apps/look/camera_look.h"
#include "apps/look/decide.h"
#include "apps/look/frame_statistics.h"
#include "try/engine/words.h"

namespace vistrel::page {
namespace {

app::InputOptions inputOf(const Words& words) {
  app::InputOptions options;
  parseWords(words, [&options](CLI::App& command) {
    app::addPhaseOption(command, options.phase);
    addInputOptions(command, options);
  });
  options.check();
  return options;
}

uint32_t formatFor(Purpose purpose, uint32_t format) {
  const bool isGray = format == VISTREL_MONO8 || format == VISTREL_MONO16;
  if (purpose == Purpose::kDisplay) return isGray ? VISTREL_MONO8 : VISTREL_RGBA32;
  if (purpose == Purpose::kBytes || isGray) return format;
  return format == VISTREL_BGR48 ? VISTREL_RGB48 : VISTREL_RGB24;
}

uint32_t sampleAt(const vistrel_frame& f, uint32_t x, uint32_t y) {
  const size_t n = size_t{y} * f.width + x;
  if (f.bytes_per_sample == 1) return static_cast<const uint8_t*>(f.samples)[n];
  return static_cast<const uint16_t*>(f.samples)[n];
}

Json jsonOf(const vistrel_layout& l) {
  return {{"width", l.width}, {"height", l.height}, {"channels", l.channels}, {"bits", l.bits}};
}

}  // namespace

OpenFrame::OpenFrame(const std::filesystem::path& path, const Words& words)
    : file_(path, inputOf(words), warnings_), frame_(file_.read()) {}

Json OpenFrame::describe() const {
  const app::Description& d = file_.description();
  return {{"format", d.format},
          {"width", frame_.width},
          {"height", frame_.height},
          {"bits", frame_.bits},
          {"bytesPerSample", frame_.bytes_per_sample},
          {"phase", vistrel_phase_name(frame_.phase)},
          {"knowsPhase", file_.knowsPhase()},
          {"frames", d.frames},
          {"warnings", warnings_}};
}

Json OpenFrame::prepare(const std::string& command, const Words& words) {
  look_.reset();
  Json decided = command == "develop" ? prepareDevelop(words) : prepareConvert(words);
  const app::OptionNames names = look_ ? develop_.conversion.optionNames() : convert_.optionNames();
  decided.update(
      jsonOf(app::withOptionNames(names, [&] { return layoutOf(frame_, conversion_); })));
  decided["rows"] = hasRows();
  return decided;
}

Json OpenFrame::prepareDevelop(const Words& words) {
  develop_ = {};
  develop_.conversion.output = app::OutputKind::raw;
  parseWords(words, [this](CLI::App& command) { addDevelopmentOptions(command, develop_); });
  conversion_ = develop_.of(file_);
  const bool isMono = frame_.phase == VISTREL_MONO;
  const app::Look look = app::withOptionNames(app::lookOptionNames(), [&] {
    const app::LookChoice choice = withCamera(develop_.look, file_.description().camera, isMono);
    const app::Look decided = decideLook(frame_, choice, conversion_.region);
    checkBlack(develop_.look.known, decided, frame_);
    return decided;
  });
  look_.emplace(look);
  look_->apply(frame_, conversion_);
  return {{"look", app::jsonOf(look, isMono)}, {"lookText", lookText(look, isMono)}};
}

Json OpenFrame::prepareConvert(const Words& words) {
  convert_ = {};
  convert_.output = app::OutputKind::raw;
  parseWords(words, [this](CLI::App& command) { addConversionOptions(command, convert_); });
  const auto conflicts = convert_.conflicts();
  if (!conflicts.empty()) app::throwError(app::kUsage, "{}", conflicts[0]);
  conversion_ = convert_.of(frame_);
  if (conversion_.white_balance == VISTREL_BALANCE_GRAY_WORLD) {
    vistrel_conversion measuring = conversion_;
    measuring.region = convert_.preparation.balanceRegion.value_or(vistrel_region{});
    const auto gains = measureGains(frame_, measuring);
    conversion_.white_balance = VISTREL_BALANCE_GAINS;
    std::ranges::copy(gains, conversion_.gains);
  }
  return {};
}

bool OpenFrame::hasRows() const {
  const bool isPadded = conversion_.edges == VISTREL_EDGES_PADDED || frame_.phase == VISTREL_MONO;
  return isPadded && conversion_.orientation <= VISTREL_UPRIGHT && conversion_.binning == 1;
}

const Image& OpenFrame::convert(Purpose purpose, uint32_t first, uint32_t rows) {
  vistrel_conversion c = conversion_;
  c.format = formatFor(purpose, c.format);
  if (hasRows()) {
    const vistrel_region whole =
        c.region.width ? c.region : vistrel_region{0, 0, frame_.width, frame_.height};
    c.region = {whole.x, whole.y + first, whole.width, rows};
  }
  withOriginOfBits(file_, [&] { convertInto(frame_, c, image_); });
  return image_;
}

Json OpenFrame::probe(uint32_t x, uint32_t y) {
  constexpr uint32_t kAround = 2;
  Json result{{"mosaic", Json::array()}};
  const uint32_t left = conversion_.region.x + x, top = conversion_.region.y + y;
  for (uint32_t j = top < kAround ? 0 : top - kAround; j <= top + kAround && j < frame_.height; ++j)
    for (uint32_t i = left < kAround ? 0 : left - kAround; i <= left + kAround && i < frame_.width;
         ++i)
      result["mosaic"].push_back({i, j, sampleAt(frame_, i, j), colourAt(frame_.phase, i, j)});
  const bool alone = hasRows();
  const Image& image = convert(Purpose::kPicture, y, 1);
  const vistrel_layout& l = image.layout;
  const uint8_t* const row = image.pixels.data() + (alone ? 0 : y * l.row_bytes);
  for (uint32_t c = 0; c < l.channels; ++c) {
    const size_t n = size_t{x} * l.channels + c;
    result["colour"].push_back(l.bits > 8 ? reinterpret_cast<const uint16_t*>(row)[n] : row[n]);
  }
  result["bits"] = l.bits;
  return result;
}

Json OpenFrame::gray(uint32_t x, uint32_t y) const {
  constexpr uint32_t kSize = 16;
  const uint32_t width = std::min(kSize, frame_.width), height = std::min(kSize, frame_.height);
  const uint32_t left = conversion_.region.x + x, top = conversion_.region.y + y;
  const auto begin = [](uint32_t centre, uint32_t size, uint32_t all) {
    return std::min(centre - std::min(centre, size / 2), all - size);
  };
  vistrel_conversion measuring = conversion_;
  measuring.finish = nullptr;
  measuring.region = {begin(left, width, frame_.width), begin(top, height, frame_.height), width,
                      height};
  Json gains = Json::array();
  for (const uint32_t gain : measureGains(frame_, measuring))
    gains.push_back(gain / double{int{VISTREL_GAIN_ONE}});
  return gains;
}

Json OpenFrame::histogram() const {
  constexpr size_t kClasses = 256;
  Json result = Json::array();
  const auto colours = app::coloursOf(frame_.phase);
  const auto places = app::histogramsOf(frame_);
  for (size_t place = 0; place < places.size(); ++place) {
    const app::Histogram& h = places[place];
    std::vector<uint64_t> classes(kClasses);
    for (size_t i = 0; i < h.size(); ++i) classes[i * kClasses / h.size()] += h[i];
    result.push_back({{"colour", colours[place]}, {"counts", classes}});
  }
  return result;
}

}  // namespace vistrel::page
