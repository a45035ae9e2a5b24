// What conversions run on: streams and teams. For C++17.
#ifndef VISTREL_STREAM_HPP
#define VISTREL_STREAM_HPP

#include "vistrel/vistrel_image.hpp"

namespace vistrel {
inline namespace v1 {

namespace detail {

// Convert on a stream, or on any stream, or begin to. The arguments must outlive these function
// objects.
inline auto onStream(vistrel_stream* stream, const vistrel_frame& frame,
                     const vistrel_conversion& conversion) noexcept {
  return [stream, &frame, &conversion](const vistrel_image& image, vistrel_error* error) {
    return vistrel_stream_convert(stream, &frame, &conversion, &image, error);
  };
}
inline auto onAnyStream(const vistrel_frame& frame, const vistrel_conversion& conversion) noexcept {
  return [&frame, &conversion](const vistrel_image& image, vistrel_error* error) {
    return vistrel_convert(&frame, &conversion, &image, error);
  };
}
inline auto beginOn(vistrel_stream* stream, const vistrel_frame& frame,
                    const vistrel_conversion& conversion) noexcept {
  return [stream, &frame, &conversion](const vistrel_image& image, vistrel_error* error) {
    return vistrel_stream_begin(stream, &frame, &conversion, &image, error);
  };
}

}  // namespace detail

// A conversion of a frame that arrives row by row, on the caller's stream: see Stream::begin. Its
// destructor aborts the conversion unless the frame is complete.
class PushedConversion {
 public:
  PushedConversion() = default;  // takes no rows

  // A conversion that was moved takes no rows; one that is replaced is aborted.
  PushedConversion(PushedConversion&& other) noexcept : state_(std::exchange(other.state_, {})) {}
  PushedConversion& operator=(PushedConversion&& other) noexcept {
    if (this != &other) abort();
    std::swap(state_, other.state_);
    return *this;
  }
  ~PushedConversion() { abort(); }

  // Whether it takes rows. It does until the last row, a sample with excess bits or abort().
  explicit operator bool() const noexcept { return state_.stream; }
  // The layout of the whole image.
  vistrel_layout layout() const noexcept { return state_.layout; }
  // How many rows of the image are final, from the top.
  uint32_t finalRows() const noexcept { return state_.finalRows; }

  // Takes the next rows of the frame, which are not needed afterwards, and returns how many rows of
  // the image are final.
  Result<uint32_t> tryPush(Span<const uint8_t> samples, uint32_t rows) noexcept {
    return push(samples.data(), samples.size(), rows);
  }
  uint32_t push(Span<const uint8_t> samples, uint32_t rows) {
    return tryPush(samples, rows).value();
  }
  Result<uint32_t> tryPush(Span<const uint16_t> samples, uint32_t rows) noexcept {
    return push(samples.data(), 2 * samples.size(), rows);
  }
  uint32_t push(Span<const uint16_t> samples, uint32_t rows) {
    return tryPush(samples, rows).value();
  }

  // Frees the stream for other conversions.
  void abort() noexcept {
    if (state_.stream) vistrel_stream_abort(std::exchange(state_.stream, nullptr), nullptr);
  }

 private:
  friend class Stream;
  struct State {
    vistrel_stream* stream;
    vistrel_layout layout;
    uint32_t rowsLeft, finalRows;
  };

  static int32_t rejectRows(vistrel_error* error) noexcept {
    *error = {VISTREL_BAD_STREAM,
              "stream",
              "",
              "this conversion has ended, or has not begun",
              "stream: this conversion has ended, or has not begun",
              {}};
    return error->status;
  }

  Result<uint32_t> push(const void* samples, size_t size, uint32_t rows) noexcept {
    return detail::attempt<uint32_t>([&](uint32_t& finalRows, vistrel_error* error) {
      if (!state_.stream) return rejectRows(error);
      const int32_t status =
          vistrel_stream_push(state_.stream, samples, size, rows, &state_.finalRows, error);
      if (status == VISTREL_OK) state_.rowsLeft -= rows;
      if (status == VISTREL_EXCESS_SAMPLE || !state_.rowsLeft) state_.stream = nullptr;
      finalRows = state_.finalRows;
      return status;
    });
  }

  State state_{};
};

// Holds one of the process's VISTREL_MAX_STREAMS streams as long as it lives. It may be moved, and
// one thread at a time may use it.
class Stream {
 public:
  Stream() = default;  // holds none

  // A Stream that was moved holds none; one that is replaced is released.
  Stream(Stream&& other) noexcept : stream_(std::exchange(other.stream_, nullptr)) {}
  Stream& operator=(Stream&& other) noexcept {
    if (this != &other) release();
    std::swap(stream_, other.stream_);
    return *this;
  }
  ~Stream() { release(); }

  // Acquires a stream. While all are in use it waits, or fails with VISTREL_NO_WAIT.
  static Result<Stream> tryAcquire(uint32_t wait = VISTREL_WAIT) noexcept {
    return detail::attempt<Stream>([&](Stream& stream, vistrel_error* error) {
      return vistrel_stream_acquire(wait, &stream.stream_, error);
    });
  }
  static Stream acquire(uint32_t wait = VISTREL_WAIT) { return tryAcquire(wait).value(); }

  // Whether it holds a stream.
  explicit operator bool() const noexcept { return stream_; }

  // For the functions of vistrel_host.h; null if it holds none. The Stream still owns it.
  vistrel_stream* handle() const noexcept { return stream_; }
  // Releases the stream, so that it holds none.
  void release() noexcept {
    if (stream_) vistrel_stream_release(std::exchange(stream_, nullptr), nullptr);
  }
  // Frees the memory that the stream keeps.
  void trim() noexcept {
    if (stream_) vistrel_stream_trim(stream_, nullptr);
  }

  // Convert on this stream, otherwise like the functions of the same names.
  Result<Image> tryConvert(const vistrel_frame& frame,
                           const vistrel_conversion& conversion) noexcept {
    return detail::makeImage(frame, conversion, detail::onStream(stream_, frame, conversion));
  }
  Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
    return tryConvert(frame, conversion).value();
  }
  Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                        const vistrel_conversion& conversion,
                                        Image& image) noexcept {
    return detail::remakeImage(frame, conversion, image,
                               detail::onStream(stream_, frame, conversion));
  }
  vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                             Image& image) {
    return tryConvertInto(frame, conversion, image).value();
  }
  Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                        const vistrel_conversion& conversion, Span<uint8_t> pixels,
                                        ptrdiff_t stride = 0) noexcept {
    return detail::fillImage(frame, conversion, pixels, stride,
                             detail::onStream(stream_, frame, conversion));
  }
  vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                             Span<uint8_t> pixels, ptrdiff_t stride = 0) {
    return tryConvertInto(frame, conversion, pixels, stride).value();
  }

  // Makes only these rows of the image in `pixels`, as vistrel_convert_rows does. `pixels` has room
  // for the whole image.
  // Returns the layout of the whole image.
  Result<vistrel_layout> tryConvertRows(const vistrel_frame& frame,
                                        const vistrel_conversion& conversion, Span<uint8_t> pixels,
                                        uint32_t first, uint32_t rows,
                                        ptrdiff_t stride = 0) noexcept {
    return detail::fillImage(
        frame, conversion, pixels, stride, [&](const vistrel_image& image, vistrel_error* error) {
          return vistrel_convert_rows(stream_, &frame, &conversion, &image, first, rows, error);
        });
  }
  vistrel_layout convertRows(const vistrel_frame& frame, const vistrel_conversion& conversion,
                             Span<uint8_t> pixels, uint32_t first, uint32_t rows,
                             ptrdiff_t stride = 0) {
    return tryConvertRows(frame, conversion, pixels, first, rows, stride).value();
  }

  // Begins the conversion of a frame that arrives row by row; samples and size of `frame` are not
  // read. Until it ends, it needs the image's memory and the stream, which rejects other
  // conversions.
  Result<PushedConversion> tryBegin(const vistrel_frame& frame,
                                    const vistrel_conversion& conversion, Image& image) & noexcept {
    return begun(frame, detail::remakeImage(frame, conversion, image,
                                            detail::beginOn(stream_, frame, conversion)));
  }
  PushedConversion begin(const vistrel_frame& frame, const vistrel_conversion& conversion,
                         Image& image) & {
    return tryBegin(frame, conversion, image).value();
  }
  Result<PushedConversion> tryBegin(const vistrel_frame& frame,
                                    const vistrel_conversion& conversion, Span<uint8_t> pixels,
                                    ptrdiff_t stride = 0) & noexcept {
    return begun(frame, detail::fillImage(frame, conversion, pixels, stride,
                                          detail::beginOn(stream_, frame, conversion)));
  }
  PushedConversion begin(const vistrel_frame& frame, const vistrel_conversion& conversion,
                         Span<uint8_t> pixels, ptrdiff_t stride = 0) & {
    return tryBegin(frame, conversion, pixels, stride).value();
  }

 private:
  Result<PushedConversion> begun(const vistrel_frame& frame,
                                 const Result<vistrel_layout>& layout) const noexcept {
    if (!layout) return layout.error();
    PushedConversion conversion;
    conversion.state_ = {stream_, *layout, frame.height, 0};
    return conversion;
  }

  vistrel_stream* stream_ = nullptr;
};

// Threads that share the work of a conversion: see setTeam. It must outlive the conversions that
// use it.
class Team {
 public:
  Team() = default;  // has none

  // A Team that was moved has no threads; the workers of one that is replaced end.
  Team(Team&& other) noexcept
      : team_(std::exchange(other.team_, nullptr)), threads_(std::exchange(other.threads_, 0)) {}
  Team& operator=(Team&& other) noexcept {
    if (this != &other) end();
    std::swap(team_, other.team_);
    std::swap(threads_, other.threads_);
    return *this;
  }
  ~Team() { end(); }

  // Starts a team of 2 to VISTREL_MAX_THREADS threads, the one that converts among them.
  static Result<Team> tryCreate(uint32_t threads) noexcept {
    return detail::attempt<Team>([&](Team& team, vistrel_error* error) {
      team.threads_ = threads;
      return vistrel_team_create(threads, &team.team_, error);
    });
  }
  static Team create(uint32_t threads) { return tryCreate(threads).value(); }

  // Whether it has threads, and how many, the one that converts among them.
  explicit operator bool() const noexcept { return team_; }
  uint32_t threads() const noexcept { return threads_; }

  // For the functions of vistrel_host.h; null if it has no threads. The Team still owns it.
  vistrel_team* handle() const noexcept { return team_; }
  // Ends the workers. Afterwards it has no threads.
  void end() noexcept {
    threads_ = 0;
    if (team_) vistrel_team_destroy(std::exchange(team_, nullptr), nullptr);
  }

 private:
  vistrel_team* team_ = nullptr;
  uint32_t threads_ = 0;
};

// Shares the work of `conversion` among all threads of a team. With a team without threads, the
// caller's thread does the work alone.
inline void setTeam(vistrel_conversion& conversion, const Team& team) noexcept {
  conversion.threads = team.threads();
  conversion.team = team.handle();
  conversion.run = nullptr;
  conversion.run_context = nullptr;
}
void setTeam(vistrel_conversion&, const Team&&) = delete;

// Frees the memory of all streams that nobody has acquired.
inline void trim() noexcept { vistrel_trim(); }

}  // namespace v1
}  // namespace vistrel

#endif
