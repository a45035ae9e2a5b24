#include "gstreamer/element.h"

#include <gst/base/gstbasetransform.h>

#include <algorithm>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "apps/error.h"
#include "gstreamer/allocation.h"
#include "gstreamer/caps.h"
#include "gstreamer/converter.h"
#include "gstreamer/properties.h"

GST_DEBUG_CATEGORY_STATIC(vistrel_debug);
#define GST_CAT_DEFAULT vistrel_debug

namespace vistrel::gstreamer {
namespace {

const std::vector<Property>& properties() {
  static const std::vector<Property> all = makeProperties();
  return all;
}

// Of an element. Its object lock guards settings and changes; all else belongs to the streaming
// thread.
struct State {
  Settings settings;
  uint64_t changes = 1;  // of the settings
  uint64_t adopted = 0;  // those that the converter knows
  Shape shape;           // that of the adopted settings
  Converter converter;
  std::vector<std::string> warnings;        // that were posted
  std::string error;                        // that was posted since the last picture
  GstClockTime last = GST_CLOCK_TIME_NONE;  // when the last frame began
};

struct VistrelDemosaic {
  GstBaseTransform base;
  State* state;
};
struct VistrelDemosaicClass {
  GstBaseTransformClass base;
};

G_DEFINE_TYPE(VistrelDemosaic, vistrel_demosaic, GST_TYPE_BASE_TRANSFORM)

State& stateOf(gpointer element) { return *static_cast<VistrelDemosaic*>(element)->state; }

// Texts of the program's parsers name an option, those of the host layer what a property sets.
std::string textOf(const std::exception& error) {
  const std::string text = error.what();
  const auto* const host = dynamic_cast<const Error*>(&error);
  if (host && host->argument() == std::string("conversion.reduction"))
    return std::string("window, curve, table: ") + host->reason();
  for (const std::string prefix : {"--", "conversion."})
    if (text.starts_with(prefix)) return text.substr(prefix.size());
  return text;
}

// Sources try again with what has failed: an error is posted once.
void post(GstBaseTransform* base, const std::string& error) {
  if (std::exchange(stateOf(base).error, error) == error) return;
  GST_ELEMENT_ERROR(base, STREAM, FORMAT, ("%s", error.c_str()), (nullptr));
}

// Runs `action`; posts what it throws and returns false.
template <class Action>
bool attempt(GstBaseTransform* base, Action&& action) {
  try {
    action();
    return true;
  } catch (const std::exception& error) {
    post(base, textOf(error));
    return false;
  }
}

void setProperty(GObject* object, guint number, const GValue* value, GParamSpec*) {
  State& state = stateOf(object);
  GST_OBJECT_LOCK(object);
  properties()[number - 1].set(state.settings, value);
  ++state.changes;
  GST_OBJECT_UNLOCK(object);
}

void getProperty(GObject* object, guint number, GValue* value, GParamSpec*) {
  GST_OBJECT_LOCK(object);
  properties()[number - 1].get(stateOf(object).settings, value);
  GST_OBJECT_UNLOCK(object);
}

// Posts each warning once, as long as there is a reason for it.
void warnOfUnusedSettings(GstBaseTransform* base) {
  State& state = stateOf(base);
  const std::vector<std::string> warnings = state.converter.unused();
  for (const std::string& warning : warnings)
    if (!std::ranges::count(state.warnings, warning))
      GST_ELEMENT_WARNING(base, LIBRARY, SETTINGS, ("%s", warning.c_str()), (nullptr));
  state.warnings = warnings;
}

// Gives the settings to the converter. If they change the size of pictures, the caps of the source
// pad are negotiated anew before the next picture is made. Throws.
void adoptSettings(GstBaseTransform* base) {
  State& state = stateOf(base);
  GST_OBJECT_LOCK(base);
  const uint64_t changes = state.changes;
  const Settings settings = changes == state.adopted ? Settings{} : state.settings;
  GST_OBJECT_UNLOCK(base);
  if (changes == state.adopted) return;
  const Shape shape = shapeOf(settings);
  state.converter.set(settings);
  state.adopted = changes;
  warnOfUnusedSettings(base);
  if (shape == state.shape) return;
  state.shape = shape;
  gst_base_transform_reconfigure_src(base);
}

// The element for which this thread negotiates; null if it doesn't.
thread_local const GstBaseTransform* negotiating = nullptr;

// Runs a step of the base class that may negotiate. Its caps are those of the adopted settings,
// even if properties change meanwhile.
template <class Step>
auto negotiate(const GstBaseTransform* base, Step&& step) {
  const GstBaseTransform* const outer = std::exchange(negotiating, base);
  const auto result = step();
  negotiating = outer;
  return result;
}

gboolean start(GstBaseTransform* base) {
  State& state = stateOf(base);
  state.last = GST_CLOCK_TIME_NONE;
  state.error.clear();
  return attempt(base, [&] {
    state.converter.start();
    adoptSettings(base);
  });
}

gboolean stop(GstBaseTransform* base) {
  stateOf(base).converter.stop();
  return TRUE;
}

// By which caps are transformed. Throws if the properties are invalid.
Shape currentShape(GstBaseTransform* base) {
  State& state = stateOf(base);
  if (negotiating == base) return state.shape;
  GST_OBJECT_LOCK(base);
  const Settings settings = state.settings;
  GST_OBJECT_UNLOCK(base);
  return shapeOf(settings);
}

// With invalid properties, any caps of the other side: the element says what is wrong when it
// starts.
GstCaps* fittingCaps(GstBaseTransform* base, GstPadDirection direction, const GstCaps* caps) {
  try {
    return transformedCaps(direction, caps, currentShape(base));
  } catch (const std::exception&) {
    return direction == GST_PAD_SINK ? sourceCaps() : sinkCaps();
  }
}

GstCaps* transformCaps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps,
                       GstCaps* filter) {
  GstCaps* const all = fittingCaps(base, direction, caps);
  if (!filter) return all;
  GstCaps* const wanted = gst_caps_intersect_full(filter, all, GST_CAPS_INTERSECT_FIRST);
  gst_caps_unref(all);
  return wanted;
}

// The frames that lead to what is wanted of the pictures.
GstCaps* wantedFrames(GstBaseTransform* base, GstCaps* filter) {
  GstCaps* const possible = gst_pad_get_pad_template_caps(base->srcpad);
  GstCaps* const pictures = gst_pad_peer_query_caps(base->srcpad, possible);
  GstCaps* const wanted = transformCaps(base, GST_PAD_SRC, pictures, filter);
  gst_caps_unref(possible);
  gst_caps_unref(pictures);
  return wanted;
}

// The base class would prefer frames of the pictures' size, whatever region and binning are.
gboolean answer(GstBaseTransform* base, GstPadDirection direction, GstQuery* query) {
  if (direction != GST_PAD_SINK || GST_QUERY_TYPE(query) != GST_QUERY_CAPS)
    return GST_BASE_TRANSFORM_CLASS(vistrel_demosaic_parent_class)->query(base, direction, query);
  GstCaps* filter = nullptr;
  gst_query_parse_caps(query, &filter);
  GstCaps* const frames = wantedFrames(base, filter);
  gst_query_set_caps_result(query, frames);
  gst_caps_unref(frames);
  return TRUE;
}

gboolean setCaps(GstBaseTransform* base, GstCaps* frames, GstCaps* pictures) {
  return attempt(base, [&] {
    GstVideoInfo info;
    if (!gst_video_info_from_caps(&info, pictures))
      app::throwError(app::kRejected, "pictures are larger than GStreamer's can be");
    stateOf(base).converter.negotiate(rawStreamOf(frames), info);
    warnOfUnusedSettings(base);
  });
}

// Buffers of any size go in: those that are too short are rejected when they are converted.
gboolean transformSize(GstBaseTransform*, GstPadDirection direction, GstCaps*, gsize,
                       GstCaps* other, gsize* size) {
  *size = direction == GST_PAD_SINK ? pictureBytes(other) : frameBytes(other);
  return *size > 0;
}

// A caps event negotiates with the settings of that moment.
gboolean sinkEvent(GstBaseTransform* base, GstEvent* event) {
  if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS && !attempt(base, [&] { adoptSettings(base); })) {
    gst_event_unref(event);
    return FALSE;
  }
  return negotiate(base, [&] {
    return GST_BASE_TRANSFORM_CLASS(vistrel_demosaic_parent_class)->sink_event(base, event);
  });
}

// Files have segments of bytes.
void syncControlledProperties(GstBaseTransform* base, const GstBuffer* buffer) {
  if (base->segment.format != GST_FORMAT_TIME) return;
  const GstClockTime time =
      gst_segment_to_stream_time(&base->segment, GST_FORMAT_TIME, GST_BUFFER_TIMESTAMP(buffer));
  if (GST_CLOCK_TIME_IS_VALID(time)) gst_object_sync_values(GST_OBJECT(base), time);
}

// Comes before the source pad negotiates anew.
GstFlowReturn submitBuffer(GstBaseTransform* base, gboolean isDiscont, GstBuffer* buffer) {
  syncControlledProperties(base, buffer);
  if (!attempt(base, [&] { adoptSettings(base); })) {
    gst_buffer_unref(buffer);
    return GST_FLOW_ERROR;
  }
  return negotiate(base, [&] {
    return GST_BASE_TRANSFORM_CLASS(vistrel_demosaic_parent_class)
        ->submit_input_buffer(base, isDiscont, buffer);
  });
}

// Since the last frame; a frame at 25 Hz if there are no times.
double secondsBefore(State& state, const GstBuffer* frame) {
  const GstClockTime now = GST_BUFFER_PTS(frame), last = std::exchange(state.last, now);
  if (!GST_CLOCK_TIME_IS_VALID(now) || !GST_CLOCK_TIME_IS_VALID(last)) return 0.04;
  return now > last ? static_cast<double>(now - last) / GST_SECOND : 0;
}

GstFlowReturn transform(GstBaseTransform* base, GstBuffer* frame, GstBuffer* picture) {
  State& state = stateOf(base);
  const double seconds = secondsBefore(state, frame);
  if (!attempt(base, [&] { state.converter.convert(frame, picture, seconds); }))
    return GST_FLOW_ERROR;
  state.error.clear();
  return GST_FLOW_OK;
}

gboolean proposeAllocation(GstBaseTransform* base, GstQuery* decided, GstQuery* query) {
  return offerFrames(query) && GST_BASE_TRANSFORM_CLASS(vistrel_demosaic_parent_class)
                                   ->propose_allocation(base, decided, query);
}

gboolean decideAllocation(GstBaseTransform* base, GstQuery* query) {
  return choosePictures(query) &&
         GST_BASE_TRANSFORM_CLASS(vistrel_demosaic_parent_class)->decide_allocation(base, query);
}

void finalize(GObject* object) {
  delete static_cast<VistrelDemosaic*>(static_cast<gpointer>(object))->state;
  G_OBJECT_CLASS(vistrel_demosaic_parent_class)->finalize(object);
}

void addPad(GstElementClass* element, const char* name, GstPadDirection direction, GstCaps* caps) {
  gst_element_class_add_pad_template(element,
                                     gst_pad_template_new(name, direction, GST_PAD_ALWAYS, caps));
  gst_caps_unref(caps);
}

void describe(GstElementClass* element) {
  gst_element_class_set_static_metadata(
      element, "Raw frames to pictures", "Filter/Converter/Video",
      "Demosaics frames of cameras of any depth and packing, exact to the sample", "libVistrel");
  addPad(element, "sink", GST_PAD_SINK, sinkCaps());
  addPad(element, "src", GST_PAD_SRC, sourceCaps());
}

void installProperties(GObjectClass* object) {
  object->set_property = setProperty;
  object->get_property = getProperty;
  for (guint i = 0; i < properties().size(); ++i) {
    GParamSpec* const spec = properties()[i].spec;
    g_object_class_install_property(object, i + 1, spec);
    if (G_IS_PARAM_SPEC_ENUM(spec))
      gst_type_mark_as_plugin_api(spec->value_type, GstPluginAPIFlags{});
  }
}

void vistrel_demosaic_class_init(VistrelDemosaicClass* klass) {
  GST_DEBUG_CATEGORY_INIT(vistrel_debug, "vistreldemosaic", 0, "Raw frames to pictures");
  auto* const object = G_OBJECT_CLASS(klass);
  object->finalize = finalize;
  installProperties(object);
  describe(GST_ELEMENT_CLASS(klass));
  GstBaseTransformClass& base = klass->base;
  base.start = start;
  base.stop = stop;
  base.transform_caps = transformCaps;
  base.query = answer;
  base.set_caps = setCaps;
  base.transform_size = transformSize;
  base.sink_event = sinkEvent;
  base.submit_input_buffer = submitBuffer;
  base.transform = transform;
  base.propose_allocation = proposeAllocation;
  base.decide_allocation = decideAllocation;
}

void vistrel_demosaic_init(VistrelDemosaic* element) {
  element->state = new State;
  gst_base_transform_set_qos_enabled(&element->base, TRUE);
}

}  // namespace

GType elementType() { return vistrel_demosaic_get_type(); }

}  // namespace vistrel::gstreamer
