#include "gstreamer/allocation.h"

namespace vistrel::gstreamer {
namespace {

// Rows begin where caches and vectors do.
GstAllocationParams alignedMemory() {
  GstAllocationParams params;
  gst_allocation_params_init(&params);
  params.align = 63;
  return params;
}

// Pools count in 32 bits: 0 if that is too few.
guint poolBytes(size_t bytes) { return bytes <= G_MAXUINT ? static_cast<guint>(bytes) : 0; }

bool configure(GstBufferPool* pool, GstCaps* caps, guint size, bool hasMeta) {
  GstStructure* const config = gst_buffer_pool_get_config(pool);
  const GstAllocationParams params = alignedMemory();
  gst_buffer_pool_config_set_params(config, caps, size, 0, 0);
  gst_buffer_pool_config_set_allocator(config, nullptr, &params);
  if (hasMeta) gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
  return gst_buffer_pool_set_config(pool, config);
}

}  // namespace

RawStream rawStreamOf(const GstCaps* frames) {
  const GstStructure* const structure = gst_caps_get_structure(frames, 0);
  const char* const name = gst_structure_get_string(structure, "format");
  const RawFormat* const format = name ? findRawFormat(name) : nullptr;
  int width = 0, height = 0;
  gst_structure_get_int(structure, "width", &width);
  gst_structure_get_int(structure, "height", &height);
  RawStream stream;
  if (format && width > 0 && height > 0)
    stream = {*format, static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0};
  return stream;
}

size_t frameBytes(const GstCaps* frames) {
  const RawStream stream = rawStreamOf(frames);
  return stream.width ? usualStride(stream) * stream.height : 0;
}

size_t pictureBytes(const GstCaps* pictures) {
  GstVideoInfo info;
  return gst_video_info_from_caps(&info, pictures) ? GST_VIDEO_INFO_SIZE(&info) : 0;
}

bool offerFrames(GstQuery* query) {
  GstCaps* caps = nullptr;
  gboolean wantsPool = FALSE;
  gst_query_parse_allocation(query, &caps, &wantsPool);
  const guint bytes = caps ? poolBytes(frameBytes(caps)) : 0;
  if (!bytes) return false;
  if (wantsPool) {
    GstBufferPool* const pool = gst_buffer_pool_new();
    if (configure(pool, caps, bytes, false))
      gst_query_add_allocation_pool(query, pool, bytes, 0, 0);
    gst_object_unref(pool);
  }
  gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
  gst_query_add_allocation_meta(query, GST_VIDEO_CROP_META_API_TYPE, nullptr);
  return true;
}

bool choosePictures(GstQuery* query) {
  GstCaps* caps = nullptr;
  gst_query_parse_allocation(query, &caps, nullptr);
  if (gst_query_get_n_allocation_pools(query)) return true;
  const guint bytes = caps ? poolBytes(pictureBytes(caps)) : 0;
  if (!bytes) return false;
  const bool hasMeta = gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
  GstBufferPool* const pool = gst_video_buffer_pool_new();
  if (configure(pool, caps, bytes, hasMeta))
    gst_query_add_allocation_pool(query, pool, bytes, 0, 0);
  gst_object_unref(pool);
  return true;
}

}  // namespace vistrel::gstreamer
