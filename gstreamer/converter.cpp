#include "gstreamer/converter.h"

#include "apps/error.h"
#include "apps/look/finished_look.h"

namespace vistrel::gstreamer {
namespace {

bool isDeep(uint32_t format) {
  return format == VISTREL_RGB48 || format == VISTREL_GRAY16 || format == VISTREL_MONO16;
}

void checkSize(const vistrel_layout& layout, const GstVideoInfo& info) {
  const auto width = static_cast<uint32_t>(GST_VIDEO_INFO_WIDTH(&info));
  const auto height = static_cast<uint32_t>(GST_VIDEO_INFO_HEIGHT(&info));
  if (layout.width != width || layout.height != height)
    app::throwError(app::kRejected, "pictures are {}x{}, the caps {}x{}", layout.width,
                    layout.height, width, height);
}

}  // namespace

void Converter::start() { host_ = Stream::acquire(VISTREL_NO_WAIT); }

void Converter::stop() {
  host_.release();
  team_.end();
  look_.reset();
}

void Converter::set(const Settings& settings) {
  const Shape shape = shapeOf(settings);
  look_.set(settings);
  settings_ = settings;
  shape_ = shape;
}

std::vector<std::string> Converter::unused() const {
  return stream_.width ? unusedSettings(settings_, stream_.format) : std::vector<std::string>();
}

void Converter::setThreads(uint32_t threads) {
  const uint32_t wanted =
      std::min<uint32_t>(threads ? threads : g_get_num_processors(), VISTREL_MAX_THREADS);
  if (wanted < 2)
    team_.end();
  else if (wanted != team_.threads())
    team_ = Team::create(wanted);
}

RawStream Converter::withBits(RawStream stream) const {
  stream.bits = settings_.bits;
  return stream;
}

vistrel_conversion Converter::conversionOf(const vistrel_frame& frame,
                                           const vistrel_region& visible,
                                           const GstVideoInfo& info) const {
  const PictureFormat* const format = findPictureFormat(GST_VIDEO_INFO_FORMAT(&info));
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.format = frame.phase == VISTREL_MONO ? format->mono : format->mosaic;
  apply(settings_, conversion);
  const vistrel_region& r = shape_.region;
  conversion.region = visible;
  if (r.width || r.height)
    conversion.region = {visible.x + r.x, visible.y + r.y, r.width, r.height};
  if (isDeep(conversion.format)) conversion.finish = &app::kPlainFinish;
  setTeam(conversion, team_);
  return conversion;
}

void Converter::negotiate(const RawStream& stream, const GstVideoInfo& info) {
  const vistrel_frame frame = frameOf(withBits(stream));
  checkSize(layoutOf(frame, conversionOf(frame, {0, 0, frame.width, frame.height}, info)), info);
  if (stream != stream_) look_.reset();
  stream_ = stream;
  info_ = info;
}

void Converter::convert(GstBuffer* buffer, GstBuffer* picture, double seconds) {
  setThreads(settings_.threads);
  const RawBuffer raw(buffer, withBits(stream_), settings_.stride);
  const vistrel_frame& frame = raw.frame();
  vistrel_conversion conversion = conversionOf(frame, raw.visible(), info_);
  const vistrel_layout layout = layoutOf(frame, conversion);
  checkSize(layout, info_);
  look_.apply(frame, seconds, conversion);
  PictureBuffer(picture, info_).fill(layout, scratch_, [&](const vistrel_image& image) {
    vistrel_error error;
    if (vistrel_stream_convert(host_.handle(), &frame, &conversion, &image, &error))
      throw Error(error);
  });
}

}  // namespace vistrel::gstreamer
