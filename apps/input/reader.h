// The interface that all kinds of input share.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/files/source.h"
#include "apps/input/camera_metadata.h"
#include "apps/options/input_options.h"

namespace vistrel::app {

// What an input says about its frames, which are all alike.
struct Description {
  std::string format;  // "PGM", "TIFF", ...
  uint32_t width = 0, height = 0;
  uint32_t bytesPerSample = 1;
  uint32_t bits = 8;              // significant bits
  bool highBits = false;          // they are the highest bits of a 16-bit sample, not the lowest
  bool bitsKnown = false;         // otherwise `bits` is the size of a sample
  std::optional<uint32_t> phase;  // of the frame as it is read
  std::string phaseFault;         // why the phase in the file is invalid
  uint64_t frames = 1;
  std::optional<uint32_t> maxval;  // in a PGM
  std::optional<RealRange> range;  // of real numbers, which become 16-bit samples
  CameraMetadata camera;
  std::vector<std::string> warnings;  // about what in the file is not used
  std::optional<std::string> pixfmt;  // PFNC name of a headerless raw file's format
  uint64_t trailing = 0;              // bytes after the last sample that belong to nothing
};

// An open input. Its description is complete, and it is long enough for its frames.
class Reader {
 public:
  virtual ~Reader() = default;
  const Description& description() const { return description_; }

  // Writes the samples of frame n, counted from 0: packed rows, from the top, in native byte order.
  // `to` holds width * height * bytesPerSample bytes. Throws ProgramError.
  virtual void read(uint64_t n, void* to) = 0;

  // Whether there is a frame n. For frames that arrive, which have to be asked for in order, it
  // waits for the frame.
  virtual bool has(uint64_t n) { return n < description_.frames; }

 protected:
  Description description_;
};

// A kind of input. `open` throws ProgramError if it can't read the source, which must outlive the
// reader.
struct ReaderType {
  const char* name;  // of the kind
  bool (*recognises)(const Source& source, const std::string& head);
  std::unique_ptr<Reader> (*open)(const Source& source, const InputOptions& options);
};

// Opens the reader for the content of the source. Throws ProgramError (rejected) if there is none.
std::unique_ptr<Reader> openReader(const Source& source, const InputOptions& options);

// The kind of file that the first bytes suggest; null if they suggest none.
const char* kindOf(const Source& source);

// Checks, before memory is allocated, that the description is that of a frame, and that
// `available` bytes can hold its samples, of `storedBits` each in the file. With compression one
// byte may decode to up to `ratio` bytes.
void checkSize(const Description& description, const Source& source, uint32_t storedBits,
               uint64_t available, uint64_t ratio = 1);

// The significant bits implied by a largest value: n if it is 2^n - 1, otherwise `stored`.
uint32_t bitsOfLargest(uint64_t largest, uint32_t stored);

}  // namespace vistrel::app
