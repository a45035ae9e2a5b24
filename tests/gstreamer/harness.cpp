#include "tests/gstreamer/harness.h"

#include <gtest/gtest.h>

#include <random>

#include "gstreamer/element.h"

// For the sanitizers. GLib has a table of names from the moment when it is loaded; when the table
// grows, other threads may still read the old one, so GLib forgets it.
extern "C" const char* __lsan_default_suppressions() { return "leak:_dl_init\n"; }
extern "C" const char* __asan_default_options() {
  return "fast_unwind_on_malloc=0:malloc_context_size=8";
}

namespace vistrel::test {
namespace {

// The leaks tracer reports when GStreamer ends.
class Gstreamer : public testing::Environment {
 public:
  void SetUp() override { initGstreamer(); }
  void TearDown() override { gst_deinit(); }
};
[[maybe_unused]] const auto* const kGstreamer = testing::AddGlobalTestEnvironment(new Gstreamer);

using Parse = void (*)(GstMessage*, GError**, gchar**);

// Takes the message.
std::string textOf(GstMessage* message, Parse parse) {
  GError* notice = nullptr;
  parse(message, &notice, nullptr);
  const std::string text = notice->message;
  g_error_free(notice);
  gst_message_unref(message);
  return text;
}

std::vector<std::string> textsOn(GstBus* bus, GstMessageType type, Parse parse) {
  std::vector<std::string> texts;
  while (GstMessage* const message = gst_bus_pop_filtered(bus, type))
    texts.push_back(textOf(message, parse));
  return texts;
}

}  // namespace

void initGstreamer() {
  gst_init(nullptr, nullptr);
  g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_ERROR));
  gst_element_register(nullptr, "vistreldemosaic", GST_RANK_NONE, gstreamer::elementType());
}

Harness::Harness() : harness_(gst_harness_new("vistreldemosaic")), bus_(gst_bus_new()) {
  gst_element_set_bus(element(), bus_);
}

Harness::~Harness() {
  gst_element_set_bus(element(), nullptr);
  gst_harness_teardown(harness_);
  gst_object_unref(bus_);
}

void Harness::set(const char* property, const std::string& value) {
  gst_util_set_object_arg(G_OBJECT(element()), property, value.c_str());
}

void Harness::frames(const std::string& caps) {
  gst_harness_set_src_caps_str(harness_, caps.c_str());
}

void Harness::pictures(const std::string& caps) {
  gst_harness_set_sink_caps_str(harness_, caps.c_str());
}

GstFlowReturn Harness::push(const Bytes& bytes) {
  return gst_harness_push(harness_, bufferOf(bytes));
}

GstVideoInfo Harness::info() {
  GstVideoInfo info;
  gst_video_info_init(&info);
  GstCaps* const caps = gst_pad_get_current_caps(harness_->sinkpad);
  if (!caps) return info;
  gst_video_info_from_caps(&info, caps);
  gst_caps_unref(caps);
  return info;
}

std::vector<std::string> Harness::errors() {
  return textsOn(bus_, GST_MESSAGE_ERROR, gst_message_parse_error);
}

std::string Harness::error() {
  const std::vector<std::string> all = errors();
  return all.empty() ? "" : all.back();
}

std::vector<std::string> Harness::warnings() {
  return textsOn(bus_, GST_MESSAGE_WARNING, gst_message_parse_warning);
}

std::string errorOf(const std::string& description) {
  GError* error = nullptr;
  GstElement* const pipeline = gst_parse_launch(description.c_str(), &error);
  std::string text = error ? error->message : "";
  g_clear_error(&error);
  if (!pipeline) return text;
  GstBus* const bus = gst_element_get_bus(pipeline);
  if (text.empty()) {
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    constexpr auto kEnds = static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_EOS);
    GstMessage* const end = gst_bus_timed_pop_filtered(bus, 20 * GST_SECOND, kEnds);
    if (!end)
      text = "no end";
    else if (GST_MESSAGE_TYPE(end) == GST_MESSAGE_ERROR)
      text = textOf(end, gst_message_parse_error);
    else
      gst_message_unref(end);
  }
  gst_object_unref(bus);
  gst_element_set_state(pipeline, GST_STATE_NULL);
  gst_object_unref(pipeline);
  return text;
}

GstBuffer* bufferOf(const Bytes& bytes) {
  return bytes.empty() ? gst_buffer_new() : gst_buffer_new_memdup(bytes.data(), bytes.size());
}

Bytes bytesOf(GstBuffer* buffer) {
  Bytes bytes(gst_buffer_get_size(buffer));
  gst_buffer_extract(buffer, 0, bytes.data(), bytes.size());
  return bytes;
}

Bytes noise(size_t count, uint32_t seed) {
  std::mt19937 random(seed);
  Bytes bytes(count);
  for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random() >> 11);
  return bytes;
}

}  // namespace vistrel::test
