// A camera that sends its frames over the network: the simulator of GigE Vision cameras, on this
// machine. Every picture is compared with that of the C interface.
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/gstreamer/expected.h"
#include "tests/gstreamer/harness.h"

namespace vistrel::test {
namespace {

constexpr int kFrames = 100;

// Without the right to packet sockets, frames come by UDP, as they do for ordinary users. Threads
// that start later inherit that.
void dropPacketSockets() {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct data[2];
  if (syscall(SYS_capget, &header, data)) return;
  for (auto* const set : {&data[0].effective, &data[0].permitted, &data[0].inheritable})
    *set &= ~(1u << CAP_NET_RAW);
  syscall(SYS_capset, &header, data);
}

// A process that runs as long as this object.
class Simulator {
 public:
  Simulator() : serial_("VT" + std::to_string(getpid())) {
    const char* const arguments[] = {"arv-fake-gv-camera-0.8", "-i",   "127.0.0.1", "-s",
                                     serial_.c_str(),          nullptr};
    g_spawn_async(nullptr, const_cast<char**>(arguments), nullptr,
                  static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD |
                                           G_SPAWN_STDOUT_TO_DEV_NULL),
                  nullptr, nullptr, &process_, nullptr);
  }
  ~Simulator() {
    if (!process_) return;
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  bool runs() const { return process_ != 0; }
  std::string camera() const { return "Aravis-Fake-" + serial_; }

 private:
  std::string serial_;
  GPid process_ = 0;
};

struct ElementUnref {
  void operator()(GstElement* element) const { gst_object_unref(element); }
};
using Pipeline = std::unique_ptr<GstElement, ElementUnref>;

struct SampleUnref {
  void operator()(GstSample* sample) const { gst_sample_unref(sample); }
};
using Sample = std::unique_ptr<GstSample, SampleUnref>;

// Null at the end of the stream, and after 10 seconds without a frame.
Sample pull(const Pipeline& pipeline, const char* sink) {
  GstElement* const element = gst_bin_get_by_name(GST_BIN(pipeline.get()), sink);
  GstSample* sample = nullptr;
  g_signal_emit_by_name(element, "try-pull-sample", 10 * GST_SECOND, &sample);
  gst_object_unref(element);
  return Sample(sample);
}

// A camera needs a moment until it answers.
Pipeline started(const std::string& description) {
  for (int i = 0; i < 50; ++i) {
    Pipeline pipeline(gst_parse_launch(description.c_str(), nullptr));
    if (gst_element_set_state(pipeline.get(), GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE)
      return pipeline;
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    g_usleep(200'000);
  }
  return nullptr;
}

void expectSamePicture(const Sample& raw, const Sample& picture, const std::string& name) {
  GstVideoInfo info;
  ASSERT_TRUE(gst_video_info_from_caps(&info, gst_sample_get_caps(picture.get())));
  const Bytes bytes = bytesOf(gst_sample_get_buffer(raw.get()));
  const NamedFormat format = namedFormat(name);
  const auto width = static_cast<uint32_t>(info.width), height = static_cast<uint32_t>(info.height);
  const vistrel_frame frame = frameOf(format, width, height, bytes, format.stride(width));
  EXPECT_EQ(visibleBytes(gst_sample_get_buffer(picture.get()), info),
            expectedBytes(frame, defaultConversion(frame), info));
}

void expectPictures(const Simulator& camera, const std::string& media, const std::string& name,
                    const std::string& picture) {
  const Pipeline pipeline = started(
      "aravissrc packet-size=8000 camera-name=" + camera.camera() +
      " num-buffers=" + std::to_string(kFrames) + " ! " + media + ",format=" + name +
      ",width=162,height=120,framerate=100/1 ! tee name=t t. ! queue ! appsink name=raw sync=false "
      "t. ! queue ! vistreldemosaic ! video/x-raw,format=" +
      picture + " ! appsink name=picture sync=false");
  ASSERT_TRUE(pipeline) << "the camera does not answer";
  Bytes last;
  int count = 0, different = 0;
  for (; const Sample made = pull(pipeline, "picture"); ++count) {
    const Sample raw = pull(pipeline, "raw");
    ASSERT_TRUE(raw);
    expectSamePicture(raw, made, name);
    const Bytes bytes = bytesOf(gst_sample_get_buffer(made.get()));
    different += bytes != last;
    last = bytes;
  }
  gst_element_set_state(pipeline.get(), GST_STATE_NULL);
  EXPECT_EQ(count, kFrames) << name;
  EXPECT_GT(different, kFrames / 2) << name;  // the simulator's picture moves
}

TEST(Camera, SendsPictures) {
  dropPacketSockets();
  const Simulator camera;
  GstElementFactory* const factory = gst_element_factory_find("aravissrc");
  if (!camera.runs() || !factory) GTEST_SKIP() << "Aravis is not installed";
  gst_object_unref(factory);
  expectPictures(camera, "video/x-bayer", "rggb", "BGRx");
  expectPictures(camera, "video/x-bayer", "gbrg", "NV12");
  expectPictures(camera, "video/x-raw", "GRAY8", "GRAY8");
  expectPictures(camera, "video/x-raw", "GRAY16_LE", "GRAY8");
}

}  // namespace
}  // namespace vistrel::test
