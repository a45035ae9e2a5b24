// The ways in which libvistrelhost converts a frame. All give the same image.
#pragma once

#include "tests/check/host_call.h"

namespace vistrel::core::check {

// What a way returns instead of a status if a promise was broken that the image does not show.
enum HostBreach : uint64_t {
  kOtherLayout = 1000,  // than the reference's
  kOtherImage,          // of the same frame a second time
  kOtherRows,           // than those that were to be made have changed
  kRowsNotFinal         // although reported
};

#ifdef __EMSCRIPTEN__
constexpr bool kHasThreads = false;
#else
constexpr bool kHasThreads = true;
#endif

using HostWay = uint64_t(const Call& call, const Memory& memory, HostCall& host);

HostWay convertAlone;     // on a stream of the library's choice
HostWay convertAgain;     // on one stream, with another conversion in between
HostWay convertRows;      // bands of rows in any order
HostWay convertByTeam;    // where there are threads
HostWay convertByRunner;  // of the caller's; on one thread where there are no others
HostWay convertPushed;    // portions of the frame's rows

}  // namespace vistrel::core::check
