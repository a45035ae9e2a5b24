// A rejection that a test expects, and the rules that every rejection keeps.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>

#include "vistrel/vistrel_host.h"

namespace vistrel {

struct Rejection {
  int32_t status;
  std::string argument, value, reason;

  std::string text() const {
    if (argument.empty()) return reason;
    return argument + (value.empty() ? "" : " " + value) + ": " + reason;
  }
};

inline std::ostream& operator<<(std::ostream& out, const Rejection& r) {
  return out << r.status << ", " << r.text();
}

// The parameters that a rejection may name, and the fields: an unknown one does not compile.
inline const std::set<std::string>& argumentNames() {
#define FIELD(structure, field) \
  (static_cast<void>(&vistrel_##structure::field), #structure "." #field)
  static const std::set<std::string> names{"conversion",
                                           "frame",
                                           "algorithm",
                                           "first",
                                           "count",
                                           "format",
                                           "flat",
                                           "gains",
                                           "image",
                                           "filter_settings",
                                           "kind",
                                           "layout",
                                           "level",
                                           "name",
                                           "packed",
                                           "packing",
                                           "parameter",
                                           "phase",
                                           "points",
                                           "rows",
                                           "picture",
                                           "samples",
                                           "size",
                                           "stream",
                                           "team",
                                           "threads",
                                           "wait",
                                           FIELD(conversion, algorithm),
                                           FIELD(calibration, dark_size),
                                           FIELD(calibration, dark_stride),
                                           FIELD(calibration, flat_size),
                                           FIELD(calibration, flat_stride),
                                           FIELD(calibration, hot),
                                           FIELD(calibration, reserved),
                                           FIELD(conversion, bin_mode),
                                           FIELD(conversion, binning),
                                           FIELD(conversion, black),
                                           FIELD(conversion, calibration),
                                           FIELD(conversion, destination),
                                           FIELD(conversion, edges),
                                           FIELD(conversion, excess),
                                           FIELD(conversion, finish),
                                           FIELD(conversion, format),
                                           FIELD(conversion, gains),
                                           FIELD(conversion, gray),
                                           FIELD(conversion, orientation),
                                           FIELD(conversion, reduction),
                                           FIELD(conversion, region),
                                           FIELD(conversion, reserved),
                                           FIELD(conversion, run),
                                           FIELD(conversion, table),
                                           FIELD(conversion, table_entries),
                                           FIELD(conversion, team),
                                           FIELD(conversion, threads),
                                           FIELD(conversion, threshold),
                                           FIELD(conversion, truncate_to),
                                           FIELD(conversion, white),
                                           FIELD(conversion, white_balance),
                                           FIELD(finish, exposure),
                                           FIELD(finish, highlights),
                                           FIELD(finish, matrix),
                                           FIELD(finish, reserved),
                                           FIELD(finish, transfer_points),
                                           FIELD(frame, alignment),
                                           FIELD(frame, bits),
                                           FIELD(frame, bytes_per_sample),
                                           FIELD(frame, height),
                                           FIELD(frame, packing),
                                           FIELD(frame, phase),
                                           FIELD(frame, reserved),
                                           FIELD(frame, samples),
                                           FIELD(frame, size),
                                           FIELD(frame, stride),
                                           FIELD(frame, width),
                                           FIELD(image, pixels),
                                           FIELD(image, reserved),
                                           FIELD(image, size),
                                           FIELD(image, stride),
                                           FIELD(filter_settings, divisor),
                                           FIELD(filter_settings, filter),
                                           FIELD(filter_settings, reserved),
                                           FIELD(picture, format),
                                           FIELD(picture, pixels),
                                           FIELD(picture, reserved),
                                           FIELD(picture, size),
                                           FIELD(picture, stride),
                                           FIELD(packed, bits),
                                           FIELD(packed, bytes),
                                           FIELD(packed, continuous),
                                           FIELD(packed, height),
                                           FIELD(packed, packing),
                                           FIELD(packed, reserved),
                                           FIELD(packed, size),
                                           FIELD(packed, stride),
                                           FIELD(packed, width)};
#undef FIELD
  return names;
}

// Whether it is a parameter or a field of one; elements of arrays have an index.
inline bool isArgument(const std::string& name) {
  const std::string field = name.substr(0, name.find('['));
  return argumentNames().count(field) == 1;
}

inline bool namesNoArgument(int32_t status) {
  return status == VISTREL_OK || status == VISTREL_NO_MEMORY || status == VISTREL_INTERNAL ||
         status == VISTREL_NO_STREAM;
}

// All parts, the text made of them, and an argument that exists.
inline void expectError(const vistrel_error& error, const Rejection& expected) {
  EXPECT_EQ(error.status, expected.status);
  EXPECT_EQ(error.argument, expected.argument);
  EXPECT_EQ(error.value, expected.value);
  EXPECT_EQ(error.reason, expected.reason);
  EXPECT_EQ(error.text, expected.text());
  for (const uint32_t word : error.reserved) EXPECT_EQ(word, 0u);
  if (namesNoArgument(error.status))
    EXPECT_STREQ(error.argument, "");
  else
    EXPECT_TRUE(isArgument(error.argument)) << error.argument;
}

inline const Rejection kAccepted{VISTREL_OK, "", "", ""};

inline Rejection nullPointer(const std::string& argument) {
  return {VISTREL_NULL_POINTER, argument, "", "must not be null"};
}

}  // namespace vistrel
