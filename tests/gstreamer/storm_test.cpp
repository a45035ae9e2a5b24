// Everything at random: formats, sizes, properties, buffers that do not fit. Critical messages end
// the process; sanitizers and the leaks tracer see the rest.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <random>
#include <thread>

#include "gstreamer/formats.h"
#include "tests/gstreamer/expected.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

int bufferCount() {
  const char* const count = std::getenv("VISTREL_LIVE_BUFFERS");
  return count ? std::atoi(count) : 5000;
}

uint32_t firstSeed() {
  const char* const seed = std::getenv("VISTREL_LIVE_SEED");
  return seed ? static_cast<uint32_t>(std::atol(seed)) : 1;
}

using Values = std::vector<std::string>;

// Bilinear is the first.
Values methods() {
  Values names;
  for (size_t i = 0; const vistrel_algorithm* algorithm = vistrel_algorithm_at(i); ++i)
    names.push_back(algorithm->name);
  std::stable_partition(names.begin(), names.end(),
                        [](const std::string& name) { return name == "bilinear"; });
  return names;
}

const std::vector<std::pair<const char*, Values>> kProperties = {
    {"method", methods()},
    {"threshold", {"0", "5", "255"}},
    {"edges", {"native", "padded"}},
    {"binning", {"1", "1", "2", "3", "4"}},
    {"bin-mode", {"sum", "mean"}},
    {"region", {"", "", "8x8+0+0", "9x7+3+5", "1x1+0+0", "0x4+0+0", "16x16+4294967295+0", "8x8"}},
    {"window", {"0", "1", "2"}},
    {"curve", {"none", "none", "light", "contrast"}},
    {"table", {"<>", "<>", "<>", "<1,2,3>"}},
    {"look", {"", "", "auto", "srgb", "linear", "astro", "curve=asinh:50", "nothing"}},
    {"black", {"", "", "16", "1:2:3:4", "70000", "x"}},
    {"white", {"0", "0", "200", "65535"}},
    {"gains", {"", "", "2:1:1.5", "0:0:0"}},
    {"matrix", {"", "1:0:0:0:1:0:0:0:1", "9:9:9:9:9:9:9:9:9"}},
    {"exposure", {"0", "0.5", "1000"}},
    {"awb", {"off", "once", "continuous"}},
    {"awb-time", {"0", "0.1", "10"}},
    {"bits", {"0", "0", "12", "3"}},
    {"excess", {"mask", "mask", "reject"}},
    {"stride", {"0", "0", "0", "1", "100000"}},
    {"threads", {"1", "1", "2"}},
};

class Storm {
 public:
  explicit Storm(uint32_t seed) : random_(seed) {
    harness_.pictures("video/x-raw");
    newFrames();
  }

  void step() {
    if (chance(5)) newFrames();
    if (chance(8)) newPictures();
    if (chance(2)) newProperty();
    if (chance(10)) calm();
    if (chance(40)) flush();
    const GstFlowReturn flow = gst_harness_push(harness_.get(), buffer());
    isExplained_ = isExplained_ || !harness_.error().empty();
    const Buffer picture = harness_.pull();
    EXPECT_EQ(picture != nullptr, flow == GST_FLOW_OK);
    EXPECT_TRUE(flow == GST_FLOW_OK || flow == GST_FLOW_NOT_NEGOTIATED || isExplained_);
    made_ += picture != nullptr;
    if (!picture) return;
    isExplained_ = false;
    const GstVideoInfo info = harness_.info();
    EXPECT_GE(gst_buffer_get_size(picture.get()), visibleBytes(picture.get(), info).size());
  }

  int made() const { return made_; }
  int negotiated() const { return negotiated_; }

 private:
  uint32_t below(size_t end) { return static_cast<uint32_t>(random_() % end); }
  bool chance(uint32_t oneIn) { return below(oneIn) == 0; }

  void newFrames() {
    format_ = &gstreamer::rawFormats()[below(gstreamer::rawFormats().size())];
    width_ = 1 + below(70);
    height_ = 1 + below(50);
    const bool isMono = format_->phase == VISTREL_MONO;
    harness_.frames(std::string(isMono ? "video/x-raw" : "video/x-bayer") +
                    ",format=" + format_->name + ",width=" + std::to_string(width_) +
                    ",height=" + std::to_string(height_) + ",framerate=25/1");
    ++negotiated_;
  }

  void newPictures() {
    const auto& formats = gstreamer::pictureFormats();
    const GstVideoFormat format = formats[below(formats.size())].video;
    harness_.pictures(chance(3) ? "video/x-raw"
                                : std::string("video/x-raw,format=") +
                                      gst_video_format_to_string(format));
    ++negotiated_;
  }

  void newProperty() {
    const auto& [name, values] = kProperties[below(kProperties.size())];
    harness_.set(name, values[below(values.size())]);
  }

  // The first values go with every frame.
  void calm() {
    for (const auto& [name, values] : kProperties) harness_.set(name, values.front());
  }

  void flush() {
    gst_harness_push_event(harness_.get(), gst_event_new_flush_start());
    gst_harness_push_event(harness_.get(), gst_event_new_flush_stop(TRUE));
    GstSegment segment;
    gst_segment_init(&segment, chance(2) ? GST_FORMAT_TIME : GST_FORMAT_BYTES);
    gst_harness_push_event(harness_.get(), gst_event_new_segment(&segment));
  }

  GstBuffer* buffer() {
    const NamedFormat format = namedFormat(format_->name);
    size_t bytes = format.stride(width_) * height_;
    if (chance(8)) bytes = below(2 * bytes);
    GstBuffer* const buffer = bufferOf(noise(bytes, below(1000)));
    if (chance(2)) GST_BUFFER_PTS(buffer) = below(100) * GST_SECOND / 25;
    if (chance(8)) addMetas(buffer, format);
    return buffer;
  }

  void addMetas(GstBuffer* buffer, const NamedFormat& format) {
    const int row = static_cast<int>(format.row(width_));
    gsize offsets[GST_VIDEO_MAX_PLANES] = {chance(2) ? 0 : below(1000)};
    gint strides[GST_VIDEO_MAX_PLANES] = {row + static_cast<int>(below(8)) - 2};
    if (chance(8)) strides[0] = std::array{G_MININT, -1, 0, G_MAXINT}[below(4)];
    gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_ENCODED,
                                   width_ + below(3), height_ + below(3), below(2), offsets,
                                   strides);
    if (chance(2)) return;
    GstVideoCropMeta* const crop = gst_buffer_add_video_crop_meta(buffer);
    crop->x = chance(8) ? G_MAXUINT : below(3), crop->y = below(3);
    crop->width = width_, crop->height = height_;
  }

  std::mt19937 random_;
  Harness harness_;
  const gstreamer::RawFormat* format_ = nullptr;
  uint32_t width_ = 0, height_ = 0;
  int made_ = 0, negotiated_ = 0;
  bool isExplained_ = false;  // an error was posted since the last picture
};

TEST(Storm, IsSurvived) {
  const int streams = 10, count = bufferCount();
  int made = 0, negotiated = 0;
  for (uint32_t i = 0; i < streams; ++i) {
    Storm storm(firstSeed() + i);
    for (int n = 0; n < count / streams; ++n) storm.step();
    made += storm.made();
    negotiated += storm.negotiated();
  }
  EXPECT_GT(made, count / 20);
  EXPECT_GT(negotiated, count / 5);
  RecordProperty("pictures", made);
}

// Properties change from another thread while frames pass.
TEST(Storm, OfPropertiesFromAnotherThread) {
  Harness h;
  h.pictures("video/x-raw,format=BGRx");
  h.frames("video/x-bayer,format=rggb10le,width=64,height=48,framerate=25/1");
  h.set("excess", "mask");
  std::atomic<bool> isDone = false;
  std::thread other([&] {
    for (int i = 0; !isDone; ++i) {
      h.set("binning", std::to_string(1 + i % 3));
      h.set("method", i % 2 ? "ahd" : "vng");
      h.set("region", i % 5 ? "" : "20x20+3+3");
    }
  });
  const Bytes samples = noise(64 * 48 * 2, 1);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(h.push(samples), GST_FLOW_OK) << h.error();
    const Buffer picture = h.pull();
    const GstVideoInfo info = h.info();
    ASSERT_TRUE(picture);
    EXPECT_EQ(gst_buffer_get_size(picture.get()), GST_VIDEO_INFO_SIZE(&info));
  }
  isDone = true;
  other.join();
}

}  // namespace
}  // namespace vistrel::test
