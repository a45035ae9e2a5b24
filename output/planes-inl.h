// Interleaved samples to a row for each channel.
#if defined(VISTREL_PLANES_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PLANES_INL_H
#undef VISTREL_PLANES_INL_H
#else
#define VISTREL_PLANES_INL_H
#endif

#include "common/simd/deinterleave-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

template <class T>
struct Planes {
  static constexpr size_t kSources = 1, kResults = 3;
  static constexpr size_t kSourceBytes = 3 * sizeof(T), kResultBytes = sizeof(T);

#if VISTREL_PERMUTES
  static constexpr size_t kUnits = kLanes<T>;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[3]) {
    const Channels<T> v = loadChannels<T>(from[0]);
    std::memcpy(to[0], &v.first, sizeof v.first);
    std::memcpy(to[1], &v.second, sizeof v.second);
    std::memcpy(to[2], &v.third, sizeof v.third);
  }
#else
  static constexpr size_t kUnits = 1;
  VISTREL_INLINE static void convert(const uint8_t* const (&from)[1], uint8_t* const (&to)[3]) {
    for (size_t c = 0; c < 3; ++c) std::memcpy(to[c], from[0] + c * sizeof(T), sizeof(T));
  }
#endif
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
