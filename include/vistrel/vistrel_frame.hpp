// Frames, and conversions for them. For C++17.
#ifndef VISTREL_FRAME_HPP
#define VISTREL_FRAME_HPP

#include "vistrel/vistrel_image.hpp"

namespace vistrel {
inline namespace v1 {

// A frame of the caller's samples, in rows without padding: bytes of 8 significant bits, or 16-bit
// samples whose lowest `bits` are significant. `phase` is VISTREL_GRBG to VISTREL_MONO, or
// VISTREL_BGR for finished pixels of three samples.
inline vistrel_frame frameOf(Span<const uint8_t> samples, uint32_t width, uint32_t height,
                             uint32_t phase) {
  return {samples.data(), samples.size(), 0, width, height, 1, 8, phase, VISTREL_LOW_BITS, 0, {}};
}
inline vistrel_frame frameOf(Span<const uint16_t> samples, uint32_t width, uint32_t height,
                             uint32_t bits, uint32_t phase) {
  return {samples.data(), samples.size() * 2, 0, width, height, 2, bits,
          phase,          VISTREL_LOW_BITS,   0, {}};
}
// A packed frame of the caller's bytes, each row of which begins at the next whole byte. It is
// converted without being unpacked first. `packing` is VISTREL_PACKING_...
inline vistrel_frame frameOf(Span<const uint8_t> bytes, uint32_t width, uint32_t height,
                             uint32_t packing, uint32_t bits, uint32_t phase) {
  const uint32_t bytesPerSample = packing == VISTREL_PACKING_BYTES ? 1 : 2;
  return {bytes.data(), bytes.size(),     0,       width, height, bytesPerSample, bits,
          phase,        VISTREL_LOW_BITS, packing, {}};
}

// The conversion of vistrel_default_conversion, to be changed as needed.
inline vistrel_conversion defaultConversion(const vistrel_frame& frame) {
  vistrel_conversion conversion{};
  vistrel_default_conversion(&frame, &conversion);
  return conversion;
}

// Makes `conversion` reduce samples through the caller's table of 1024 values, or of one for each
// possible sample. The table must live as long as the conversion is used.
inline void setTable(vistrel_conversion& conversion, Span<const uint16_t> table) noexcept {
  constexpr uint32_t kMax = 0xFFFFFFFF;
  conversion.reduction = VISTREL_TABLE;
  conversion.table = table.data();
  conversion.table_entries = table.size() < kMax ? static_cast<uint32_t>(table.size()) : kMax;
}

// Shares the work of `conversion` among up to `threads` of the caller's threads. runner(count,
// task) calls task(index) for each index from 0 to count - 1, on any threads, and returns after all
// these calls have returned. `runner` must live as long as the conversion is used.
template <class Runner>
void setRunner(vistrel_conversion& conversion, uint32_t threads, Runner& runner) noexcept {
  conversion.threads = threads;
  conversion.team = nullptr;
  conversion.run_context = const_cast<void*>(static_cast<const void*>(std::addressof(runner)));
  conversion.run = [](void* context, uint32_t count, void (*task)(void*, uint32_t),
                      void* data) -> int32_t {
    const auto run = [=] {
      (*static_cast<Runner*>(context))(count, [=](uint32_t index) { task(data, index); });
    };
#ifdef __cpp_exceptions
    try {
      run();
    } catch (...) {
      return 1;
    }
#else
    run();
#endif
    return 0;
  };
}
template <class Runner>
void setRunner(vistrel_conversion&, uint32_t, const Runner&&) = delete;

// A packed frame of the caller's bytes, without padding; `packing` is VISTREL_PACKING_...
inline vistrel_packed packedOf(Span<const uint8_t> bytes, uint32_t width, uint32_t height,
                               uint32_t packing, uint32_t bits) {
  return {bytes.data(), bytes.size(), 0, width, height, packing, bits, 0, {}};
}

namespace detail {

// Rejects finished pixels, and an unknown phase as a conversion does.
inline int32_t checkPhase(const vistrel_frame& shape, vistrel_error* error) noexcept {
  if (shape.phase == VISTREL_BGR) {
    *error = {VISTREL_BAD_PHASE,
              "phase",
              "bgr",
              "the pixels of a vistrel_packed have one sample each",
              "phase bgr: the pixels of a vistrel_packed have one sample each",
              {}};
    return error->status;
  }
  if (vistrel_phase_name(shape.phase)) return VISTREL_OK;
  const vistrel_conversion conversion = defaultConversion(shape);
  vistrel_layout layout;
  return vistrel_get_layout(&shape, &conversion, &layout, error);
}

}  // namespace detail

// A frame that owns its samples.
class OwnedFrame {
 public:
  OwnedFrame() = default;

  // Refers to the samples: valid until this frame is moved from or destroyed. Not for temporaries.
  vistrel_frame get() const&& = delete;
  vistrel_frame get() const& noexcept {
    vistrel_frame frame = shape_;
    frame.samples = samples_.data();
    frame.size = samples_.size();
    return frame;
  }

 private:
  friend Result<OwnedFrame> tryUnpack(const vistrel_packed& packed, uint32_t phase) noexcept;

  vistrel_frame shape_{};
  Bytes samples_;
};

// The samples of a packed frame, as a frame of that phase: VISTREL_GRBG to VISTREL_MONO.
inline Result<OwnedFrame> tryUnpack(const vistrel_packed& packed, uint32_t phase) noexcept {
  return detail::attempt<OwnedFrame>([&](OwnedFrame& frame, vistrel_error* error) {
    vistrel_packed_layout layout{};
    if (const int32_t rejected = vistrel_get_packed_layout(&packed, &layout, error))
      return rejected;
    vistrel_frame& shape = frame.shape_;
    shape.width = packed.width;
    shape.height = packed.height;
    shape.bytes_per_sample = layout.bytes_per_sample;
    shape.bits = packed.bits;
    shape.phase = phase;
    if (const int32_t rejected = detail::checkPhase(shape, error)) return rejected;
    frame.samples_.resize(layout.unpacked_bytes);
    return vistrel_unpack(&packed, frame.samples_.data(), frame.samples_.size(), error);
  });
}
inline OwnedFrame unpack(const vistrel_packed& packed, uint32_t phase) {
  return tryUnpack(packed, phase).value();
}

// The sizes of a packed frame and of its samples. Reads none of its bytes.
inline Result<vistrel_packed_layout> tryPackedLayoutOf(const vistrel_packed& packed) noexcept {
  return detail::attempt<vistrel_packed_layout>(
      [&](vistrel_packed_layout& layout, vistrel_error* error) {
        return vistrel_get_packed_layout(&packed, &layout, error);
      });
}
inline vistrel_packed_layout packedLayoutOf(const vistrel_packed& packed) {
  return tryPackedLayoutOf(packed).value();
}

// Unpacks a packed frame into `samples`, the bytes that vistrel_unpack writes. Returns the layout.
inline Result<vistrel_packed_layout> tryUnpackInto(const vistrel_packed& packed,
                                                   Span<uint8_t> samples) noexcept {
  return detail::attempt<vistrel_packed_layout>(
      [&](vistrel_packed_layout& layout, vistrel_error* error) {
        if (const int32_t rejected = vistrel_get_packed_layout(&packed, &layout, error))
          return rejected;
        return vistrel_unpack(&packed, samples.data(), samples.size(), error);
      });
}
inline vistrel_packed_layout unpackInto(const vistrel_packed& packed, Span<uint8_t> samples) {
  return tryUnpackInto(packed, samples).value();
}

}  // namespace v1
}  // namespace vistrel

#endif
