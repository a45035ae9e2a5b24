#include "gstreamer/properties.h"

#include <gst/gst.h>

#include <list>

#include "apps/names/curve_names.h"

namespace vistrel::gstreamer {
namespace {

constexpr auto kFixed = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS |
                                                 GST_PARAM_MUTABLE_PLAYING);
constexpr auto kControlled = static_cast<GParamFlags>(kFixed | GST_PARAM_CONTROLLABLE);

// A member of Settings that a property of its type sets.
template <auto kMember>
struct Access {
  static void setUint(Settings& s, const GValue* value) { s.*kMember = g_value_get_uint(value); }
  static void getUint(const Settings& s, GValue* value) { g_value_set_uint(value, s.*kMember); }
  static void setEnum(Settings& s, const GValue* value) {
    s.*kMember = static_cast<uint32_t>(g_value_get_enum(value));
  }
  static void getEnum(const Settings& s, GValue* value) {
    g_value_set_enum(value, static_cast<gint>(s.*kMember));
  }
  static void setDouble(Settings& s, const GValue* value) {
    s.*kMember = g_value_get_double(value);
  }
  static void getDouble(const Settings& s, GValue* value) { g_value_set_double(value, s.*kMember); }
  static void setText(Settings& s, const GValue* value) {
    const char* const text = g_value_get_string(value);
    s.*kMember = text ? text : "";
  }
  static void getText(const Settings& s, GValue* value) {
    g_value_set_string(value, (s.*kMember).c_str());
  }
};

template <auto kMember>
Property uintProperty(const char* name, const char* text, uint32_t least, uint32_t most,
                      GParamFlags flags = kFixed) {
  return {g_param_spec_uint(name, name, text, least, most, Settings{}.*kMember, flags),
          Access<kMember>::setUint, Access<kMember>::getUint};
}

template <auto kMember>
Property enumProperty(const char* name, const char* text, GType type, GParamFlags flags = kFixed) {
  return {g_param_spec_enum(name, name, text, type, static_cast<gint>(Settings{}.*kMember), flags),
          Access<kMember>::setEnum, Access<kMember>::getEnum};
}

template <auto kMember>
Property doubleProperty(const char* name, const char* text, double most) {
  return {g_param_spec_double(name, name, text, 0, most, Settings{}.*kMember, kControlled),
          Access<kMember>::setDouble, Access<kMember>::getDouble};
}

template <auto kMember>
Property textProperty(const char* name, const char* text) {
  return {g_param_spec_string(name, name, text, "", kFixed), Access<kMember>::setText,
          Access<kMember>::getText};
}

void setTable(Settings& settings, const GValue* value) {
  settings.table.clear();
  for (guint i = 0; i < gst_value_array_get_size(value); ++i)
    settings.table.push_back(
        static_cast<uint16_t>(g_value_get_int(gst_value_array_get_value(value, i))));
}

void getTable(const Settings& settings, GValue* value) {
  for (const uint16_t entry : settings.table) {
    GValue number = G_VALUE_INIT;
    g_value_init(&number, G_TYPE_INT);
    g_value_set_int(&number, entry);
    gst_value_array_append_and_take_value(value, &number);
  }
}

Property tableProperty() {
  GParamSpec* const entry =
      g_param_spec_int("entry", "entry", "A value", 0, 255, 0, G_PARAM_READWRITE);
  return {gst_param_spec_array("table", "table",
                               "1024 values for the highest ten bits of samples of 10 to 12 bits, "
                               "or one for each sample",
                               entry, kFixed),
          setTable, getTable};
}

// The types live as long as the process, and so do their names.
GType makeEnum(const char* name, std::vector<GEnumValue> values) {
  static auto& kept = *new std::list<std::vector<GEnumValue>>;
  values.push_back({0, nullptr, nullptr});
  kept.push_back(std::move(values));
  return g_enum_register_static(name, kept.back().data());
}

GType methodType() {
  std::vector<GEnumValue> values;
  for (size_t i = 0; const vistrel_algorithm* algorithm = vistrel_algorithm_at(i); ++i)
    values.push_back({static_cast<gint>(algorithm->code), algorithm->name, algorithm->name});
  return makeEnum("GstVistrelMethod", std::move(values));
}

GType curveType() {
  std::vector<GEnumValue> values{{0, "No curve", "none"}};
  for (const app::CurveName& curve : app::curveNames())
    values.push_back({static_cast<gint>(curve.number), curve.effect, curve.name});
  return makeEnum("GstVistrelCurve", std::move(values));
}

GType edgesType() {
  return makeEnum("GstVistrelEdges",
                  {{VISTREL_EDGES_NATIVE, "Substitutes; several methods tint the border", "native"},
                   {VISTREL_EDGES_PADDED, "The frame continues into its mirror image", "padded"}});
}

GType binModeType() {
  return makeEnum("GstVistrelBinMode",
                  {{VISTREL_BIN_SUM, "Sums divided by the binning: brighter by that factor", "sum"},
                   {VISTREL_BIN_MEAN, "Means", "mean"}});
}

GType excessType() {
  return makeEnum("GstVistrelExcess", {{VISTREL_REJECT, "End the stream with an error", "reject"},
                                       {VISTREL_MASK, "Ignore those bits", "mask"}});
}

GType balanceType() {
  return makeEnum("GstVistrelBalance", {{0, "The gains given", "off"},
                                        {1, "The gains of the first frame", "once"},
                                        {2, "Gains that follow the light", "continuous"}});
}

using S = Settings;

void addMosaic(std::vector<Property>& all) {
  all.insert(all.end(),
             {enumProperty<&S::method>("method", "Demosaic algorithm", methodType()),
              uintProperty<&S::threshold>(
                  "threshold", "Of the method edge: how smooth green must be", 0, 255, kControlled),
              enumProperty<&S::edges>("edges", "What methods read beyond the border", edgesType()),
              uintProperty<&S::binning>("binning", "Bin NxN pixels", 1, 4),
              enumProperty<&S::binMode>("bin-mode", "What a bin becomes", binModeType()),
              textProperty<&S::region>("region", "Part of the frame to convert, WxH+X+Y")});
}

void addTones(std::vector<Property>& all) {
  all.insert(
      all.end(),
      {uintProperty<&S::window>("window", "Which 8 bits to keep: 0 the highest, 1 or 2 lower ones",
                                0, 2),
       enumProperty<&S::curve>("curve", "Tone curve, of samples of 10 bits or more", curveType()),
       tableProperty()});
}

void addLook(std::vector<Property>& all) {
  all.insert(
      all.end(),
      {textProperty<&S::look>("look",
                              "Finish pictures for the eye: auto, linear, srgb, astro or parts of "
                              "a look, such as curve=gamma:2.2; what isn't given is decided from "
                              "the first frame"),
       textProperty<&S::black>("black", "Black level, or four of the 2x2 block: 64:64:66:64"),
       uintProperty<&S::white>("white", "Level where the sensor clips; 0: full scale, or decided",
                               0, app::kMaxLevel, kControlled),
       textProperty<&S::gains>("gains", "Gains of red, green and blue: 1.87:1:1.55"),
       textProperty<&S::matrix>("matrix", "Of a look: nine numbers by rows, to the picture's RGB"),
       doubleProperty<&S::exposure>("exposure", "Of a look: brightness, as a factor; 0: decided",
                                    app::kMaxExposure / app::kLookOne),
       enumProperty<&S::balance>("awb", "Automatic white balance", balanceType()),
       doubleProperty<&S::balanceTime>("awb-time",
                                       "Seconds in which gains follow a change of light by 63 %; "
                                       "what noise explains moves them "
                                       "by at most 0.4 % a frame",
                                       3600)});
}

void addBuffers(std::vector<Property>& all) {
  all.insert(all.end(),
             {uintProperty<&S::bits>(
                  "bits", "Significant bits of GRAY16 samples, in the low bits; 0: all 16", 0, 16),
              enumProperty<&S::excess>("excess", "What to do with bits above the significant ones",
                                       excessType()),
              uintProperty<&S::stride>("stride",
                                       "Bytes from row to row of raw buffers without a video meta; "
                                       "0: rows rounded up to 4 bytes; without padding in buffers "
                                       "of exactly that length",
                                       0, G_MAXINT),
              uintProperty<&S::threads>("threads", "Threads that share a frame; 0: one per CPU", 0,
                                        VISTREL_MAX_THREADS)});
}

}  // namespace

std::vector<Property> makeProperties() {
  std::vector<Property> all;
  addMosaic(all);
  addTones(all);
  addLook(all);
  addBuffers(all);
  return all;
}

}  // namespace vistrel::gstreamer
