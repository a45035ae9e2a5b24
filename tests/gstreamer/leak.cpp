// A leak, for the leaks tracer to find.
#include <gst/gst.h>

int main(int argc, char** argv) {
  gst_init(&argc, &argv);
  const GstCaps* const caps = gst_caps_new_empty_simple("video/x-raw");
  gst_deinit();
  return caps ? 0 : 1;
}
