// What every kind of input has in common.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "apps/files/source.h"

namespace vistrel::app {

// What an input tells of its frames, which are all alike.
struct Description {
  std::string format;  // "PGM", "TIFF", ...
  uint32_t width = 0, height = 0;
  uint32_t bytesPerSample = 1;
  uint32_t bits = 8;              // significant ones
  bool highBits = false;          // they are the highest ones of a word, not the lowest
  bool tellsBits = false;         // else `bits` is all that a sample of this size may have
  std::optional<uint32_t> phase;  // of the frame as it is read
  std::string phaseFault;         // why what the file says of it makes no sense
  uint64_t frames = 1;
  std::optional<uint32_t> maxval;  // of a PGM
  std::optional<double> black, white;
  std::optional<uint32_t> orientation;  // TIFF's code; frames are as the sensor has them
  std::optional<std::string> pixfmt;    // PFNC name of what a dump holds
  uint64_t trailing = 0;                // bytes after the last sample that nothing explains
};

// An open input whose description is complete and whose length is enough for it.
class Reader {
 public:
  virtual ~Reader() = default;
  const Description& description() const { return description_; }

  // Writes the samples of frame n, from 0: packed rows, from the top, in this machine's byte order.
  // `to` has room for width * height * bytesPerSample bytes. Throws Failure.
  virtual void read(uint64_t n, void* to) = 0;

 protected:
  Description description_;
};

// A kind of input. `open` throws Failure for what it can't read; `source` outlives the reader.
struct ReaderType {
  const char* name;  // of the kind
  bool (*recognises)(const Source& source, const std::string& head);
  std::unique_ptr<Reader> (*open)(const Source& source);
};

// The reader for the source's content. Throws Failure (rejected) where there is none.
std::unique_ptr<Reader> openReader(const Source& source);

// The kind that the source's first bytes are those of; null for a dump.
const char* kindOf(const Source& source);

// Refuses what is no frame at all, and then one whose samples, of so many bits in the file, need
// more than `available` bytes, before they take memory. One byte may stand for `ratio` bytes of
// them.
void checkSize(const Description& description, const Source& source, uint32_t storedBits,
               uint64_t available, uint64_t ratio = 1);

// The significant bits that a largest value tells: n where it is n set bits, else all `stored`
// ones.
uint32_t bitsOfLargest(uint64_t largest, uint32_t stored);

}  // namespace vistrel::app
