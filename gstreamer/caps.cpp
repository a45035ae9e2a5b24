#include "gstreamer/caps.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <tuple>

#include "gstreamer/formats.h"

namespace vistrel::gstreamer {
namespace {

constexpr const char* kMosaic = "video/x-bayer";
constexpr const char* kRaw = "video/x-raw";

using Names = std::vector<const char*>;

Names namesOfRaw(bool mono) {
  Names names;
  for (const RawFormat& format : rawFormats())
    if ((format.phase == VISTREL_MONO) == mono) names.push_back(format.name.c_str());
  return names;
}

Names namesOfPictures(const std::function<bool(const PictureFormat&)>& isWanted) {
  Names names;
  for (const PictureFormat& format : pictureFormats())
    if (isWanted(format)) names.push_back(gst_video_format_to_string(format.video));
  return names;
}

bool isMono(const PictureFormat& format) { return format.mono != kNoFormat; }

bool isRgb(const PictureFormat& format) { return !isMono(format) && !isYuv(format); }

void setFormats(GstStructure* structure, const Names& names) {
  GValue list = G_VALUE_INIT;
  gst_value_list_init(&list, static_cast<guint>(names.size()));
  for (const char* name : names) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_STRING);
    g_value_set_string(&value, name);
    gst_value_list_append_and_take_value(&list, &value);
  }
  gst_structure_take_value(structure, "format", &list);
}

// Caps of this media type that have the other fields of the structure.
void append(GstCaps* caps, const GstStructure* like, const char* media, const Names& names) {
  GstStructure* const structure = gst_structure_copy(like);
  gst_structure_set_name(structure, media);
  setFormats(structure, names);
  gst_caps_append_structure(caps, structure);
}

// A framerate is not needed.
GstStructure* anySize() {
  return gst_structure_new(kRaw, "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height",
                           GST_TYPE_INT_RANGE, 1, G_MAXINT, nullptr);
}

struct StructureFree {
  void operator()(GstStructure* structure) const { gst_structure_free(structure); }
};
using Structure = std::unique_ptr<GstStructure, StructureFree>;

// Extents, both inclusive.
struct Range {
  int64_t least, most;
};

Range rangeOf(const GstStructure* structure, const char* field) {
  const GValue* const value = gst_structure_get_value(structure, field);
  if (value && G_VALUE_HOLDS_INT(value)) return {g_value_get_int(value), g_value_get_int(value)};
  if (value && GST_VALUE_HOLDS_INT_RANGE(value))
    return {gst_value_get_int_range_min(value), gst_value_get_int_range_max(value)};
  return {1, G_MAXINT};
}

// `part` is the region's extent and `start` where it begins; 0 for the whole frame. Whether it lies
// within the frame, and how small pictures may be, is for the converter to say.
Range pictureRange(const Range& frame, uint32_t, uint32_t part, uint32_t binning) {
  const auto binned = [&](int64_t extent) { return std::max<int64_t>(extent / binning, 1); };
  if (!part) return {binned(frame.least), binned(frame.most)};
  return {binned(part), binned(part)};
}

Range frameRange(const Range& picture, uint32_t start, uint32_t part, uint32_t binning) {
  if (!part) return {picture.least * binning, (picture.most + 1) * binning - 1};
  const int64_t extent = std::max<int64_t>(part / binning, 1);
  const bool fits = picture.least <= extent && extent <= picture.most;
  return fits ? Range{int64_t{start} + part, G_MAXINT} : Range{1, 0};
}

// Returns false if there is no such extent.
bool setRange(GstStructure* structure, const char* field, Range range) {
  range.most = std::min<int64_t>(range.most, G_MAXINT);
  if (range.least < 1 || range.least > range.most) return false;
  const int least = static_cast<int>(range.least), most = static_cast<int>(range.most);
  if (least == most)
    gst_structure_set(structure, field, G_TYPE_INT, least, nullptr);
  else
    gst_structure_set(structure, field, GST_TYPE_INT_RANGE, least, most, nullptr);
  return true;
}

bool resize(GstStructure* structure, GstPadDirection direction, const Shape& shape) {
  const auto range = direction == GST_PAD_SINK ? pictureRange : frameRange;
  const vistrel_region& r = shape.region;
  const Range width = range(rangeOf(structure, "width"), r.x, r.width, shape.binning);
  const Range height = range(rangeOf(structure, "height"), r.y, r.height, shape.binning);
  return setRange(structure, "width", width) && setRange(structure, "height", height);
}

// That of a mosaic with another matrix and range; empty if it has none.
std::string colorimetryOf(const GstStructure* mosaic, GstVideoColorMatrix matrix,
                          GstVideoColorRange range) {
  const char* const text = gst_structure_get_string(mosaic, "colorimetry");
  GstVideoColorimetry colours;
  if (!text || !gst_video_colorimetry_from_string(&colours, text)) return "";
  colours.matrix = matrix;
  colours.range = range;
  gchar* const changed = gst_video_colorimetry_to_string(&colours);
  const std::string result = changed ? changed : "";
  g_free(changed);
  return result;
}

void appendColoured(GstCaps* caps, const GstStructure* sized, const std::string& colorimetry,
                    const Names& names) {
  const Structure coloured(gst_structure_copy(sized));
  if (!colorimetry.empty())
    gst_structure_set(coloured.get(), "colorimetry", G_TYPE_STRING, colorimetry.c_str(), nullptr);
  append(caps, coloured.get(), kRaw, names);
}

// Gray is luma of BT.601 in full range; NV12 and I420 are BT.709 in limited range.
void appendPicturesOfMosaic(GstCaps* caps, GstStructure* sized) {
  const auto colours = [sized](GstVideoColorMatrix matrix, GstVideoColorRange range) {
    return colorimetryOf(sized, matrix, range);
  };
  const std::string rgb = colours(GST_VIDEO_COLOR_MATRIX_RGB, GST_VIDEO_COLOR_RANGE_0_255);
  const std::string gray = colours(GST_VIDEO_COLOR_MATRIX_BT601, GST_VIDEO_COLOR_RANGE_0_255);
  const std::string yuv = colours(GST_VIDEO_COLOR_MATRIX_BT709, GST_VIDEO_COLOR_RANGE_16_235);
  gst_structure_remove_fields(sized, "colorimetry", "chroma-site", nullptr);
  appendColoured(caps, sized, rgb, namesOfPictures(isRgb));
  appendColoured(caps, sized, gray, namesOfPictures(isMono));
  // A chroma sample is the mean of the pixels around it.
  gst_structure_set(sized, "chroma-site", G_TYPE_STRING, "jpeg", nullptr);
  appendColoured(caps, sized, yuv.empty() ? GST_VIDEO_COLORIMETRY_BT709 : yuv,
                 namesOfPictures(isYuv));
}

// The samples of mono frames mean the same in pictures, and so does their colorimetry.
void appendPictures(GstCaps* caps, const GstStructure* frames, const Shape& shape) {
  const Structure sized(gst_structure_copy(frames));
  if (!resize(sized.get(), GST_PAD_SINK, shape)) return;
  if (gst_structure_has_name(frames, kMosaic))
    appendPicturesOfMosaic(caps, sized.get());
  else
    append(caps, sized.get(), kRaw, namesOfPictures(isMono));
}

bool hasMonoFormat(const GstStructure* pictures) {
  Structure gray(gst_structure_new_empty(kRaw));
  setFormats(gray.get(), namesOfPictures(isMono));
  const GValue* const format = gst_structure_get_value(pictures, "format");
  return !format ||
         gst_value_intersect(nullptr, format, gst_structure_get_value(gray.get(), "format"));
}

void appendFrames(GstCaps* caps, const GstStructure* pictures, const Shape& shape) {
  Structure sized(gst_structure_copy(pictures));
  if (!resize(sized.get(), GST_PAD_SRC, shape)) return;
  const Structure mosaic(gst_structure_copy(sized.get()));
  gst_structure_remove_fields(mosaic.get(), "colorimetry", "chroma-site", nullptr);
  append(caps, mosaic.get(), kMosaic, namesOfRaw(false));
  if (hasMonoFormat(pictures)) append(caps, sized.get(), kRaw, namesOfRaw(true));
}

// Frames that region and binning fit come first. The converter says why it rejects others.
void appendFramesOfAnySize(GstCaps* caps) {
  for (guint i = 0, n = gst_caps_get_size(caps); i < n; ++i) {
    GstStructure* const any = gst_structure_copy(gst_caps_get_structure(caps, i));
    gst_structure_set(any, "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height", GST_TYPE_INT_RANGE,
                      1, G_MAXINT, nullptr);
    gst_caps_append_structure(caps, any);
  }
}

}  // namespace

bool Shape::operator==(const Shape& other) const {
  const auto all = [](const Shape& s) {
    return std::tuple(s.region.x, s.region.y, s.region.width, s.region.height, s.binning);
  };
  return all(*this) == all(other);
}

GstCaps* sinkCaps() {
  GstCaps* const caps = gst_caps_new_empty();
  const Structure any(anySize());
  append(caps, any.get(), kMosaic, namesOfRaw(false));
  append(caps, any.get(), kRaw, namesOfRaw(true));
  return caps;
}

GstCaps* sourceCaps() {
  GstCaps* const caps = gst_caps_new_empty();
  const Structure any(anySize());
  append(caps, any.get(), kRaw, namesOfPictures([](const auto&) { return true; }));
  return caps;
}

GstCaps* transformedCaps(GstPadDirection direction, const GstCaps* caps, const Shape& shape) {
  GstCaps* const result = gst_caps_new_empty();
  for (guint i = 0; i < gst_caps_get_size(caps); ++i) {
    const GstStructure* const structure = gst_caps_get_structure(caps, i);
    (direction == GST_PAD_SINK ? appendPictures : appendFrames)(result, structure, shape);
  }
  GstCaps* const simple = gst_caps_simplify(result);
  if (direction == GST_PAD_SRC && shape != Shape{}) appendFramesOfAnySize(simple);
  return simple;
}

}  // namespace vistrel::gstreamer
