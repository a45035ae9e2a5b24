// Conversions of frames that arrive row by row.
#pragma once

#include "host/excess.h"
#include "host/pushed_rows.h"
#include "host/row_engine.h"
#include "host/streams.h"

namespace vistrel::host {

class PushedConversion : public OngoingConversion {
 public:
  // Throws Rejection without changing anything.
  void checkPortion(const void* samples, size_t size, uint32_t rows) const;

  // Takes the frame's next rows. Throws Rejection for a sample with excess bits, which ends the
  // conversion.
  void push(const void* samples, uint32_t rows);

  uint32_t finalRows() const { return finalRows_; }  // of the image
  bool isOver() const { return isOver_; }

 protected:
  // Copies what the call refers to, but for the image's pixels.
  PushedConversion(const EngineCall& call, const CheckedImage& image);

  const EngineCall& call() const { return call_; }

 private:
  // Takes row y of the frame and returns how many rows of the image are final. next: as in
  // PushedRows.
  virtual uint32_t convert(uint32_t y, const unsigned char* frameRow,
                           const unsigned char* next) = 0;

  Plan plan_;
  vistrel_frame frame_;
  vistrel_conversion conversion_;
  CheckedImage image_;
  EngineCall call_;
  FramePart part_;
  uint32_t pushed_ = 0, finalRows_ = 0;
  bool isOver_ = false;
};

}  // namespace vistrel::host
