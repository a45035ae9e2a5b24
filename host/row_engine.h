// The engine's chain: a source of rows, an algorithm, the caller's image.
#pragma once

#include <optional>

#include "demosaic/algorithms.h"
#include "demosaic/ready_rows.h"
#include "finish/finished_rows.h"
#include "host/image_pixels.h"
#include "output/direct_output.h"
#include "output/image_output.h"

namespace vistrel::host {

// Makes rows of an image while its source gets rows.
template <class T>
class RowEngine {
 public:
  // With an arena that counts, only takes memory.
  RowEngine(const EngineCall& call, ImageRows rows, core::RowSource<T>& source, core::Arena& arena);
  RowEngine(const RowEngine&) = delete;
  RowEngine& operator=(const RowEngine&) = delete;

  // Reads the source's rows first() .. last() - 1, as far as they exist.
  int first() const { return demosaic_->first(); }
  int last() const { return demosaic_->last(); }

  // Makes all rows that the source's rows before `end` allow.
  void advance(int end) { demosaic_->advance(end); }

  // How many rows of the image are final after advance(end).
  uint32_t finalRows(int end) const;

 private:
  int engineRow(uint32_t imageRow) const { return int((imageRow + p_.pad) * c_.binning); }
  void startReady(core::RowSource<T>& source, core::Arena& arena);
  void startDemosaic(core::RowSource<T>& source, core::Arena& arena);
  core::DirectImageSink& directImage(core::Arena& arena);
  core::DemosaicJob<T> jobOf(core::RowSource<T>& source) const;
  // Whether the algorithm can store bytes of the format directly.
  bool storesDirectly(const core::DemosaicAlgorithm<T>& algorithm) const;
  bool hasDirectArrangement() const {
    return p_.format->direct == core::DirectFormat::ycc420 ? p_.layout.width % 2 == 0
                                                           : p_.format->planes == 1;
  }
  core::OutputShape shapeOf(size_t pitch);
  core::RowWriter writerOf(core::Pack pack, unsigned binning, size_t pitch);
  core::PixelRows& rowsToFill(core::Arena& arena);

  bool redFirst() const { return p_.format->redFirst; }
  // Binning treats the samples of a pixel differently, so it takes them in one order only. Finished
  // pixels come in that order too.
  bool swapsRedBlue() const { return c_.binning > 1 || !isMosaic(call_.frame); }
  unsigned shiftOf() const { return sizeof(T) == 1 ? 0 : p_.bits - 8 - c_.reduction; }
  // Six algorithms limit what they compute of 16-bit samples to 1023, whatever the frame has.
  bool mayExceed() const { return sizeof(T) == 2 && p_.bits < 10 && isMosaic(call_.frame); }
  bool reduces() const { return sizeof(T) == 2 && p_.format->bytes_per_sample == 1 && !c_.finish; }
  bool makesMeans() const { return c_.binning > 1 && c_.bin_mode == VISTREL_BIN_MEAN; }
  size_t channels() const { return p_.format->mono ? 1 : 3; }

  const EngineCall& call_;
  const Plan& p_;
  const vistrel_conversion& c_;
  ImageRows rows_;
  ImagePixels pixels_;
  std::optional<core::FinishedRows> finished_;
  // One of these.
  std::optional<core::DirectOutput> directOutput_;
  std::optional<core::DirectYcc420> directYcc420_;
  std::optional<core::ImageOutput<T>> output_;
  std::optional<core::ReadyRows<T>> ready_;
  core::RowProcess<T>* demosaic_ = nullptr;
  uint8_t table_[core::kTableEntries];
};

}  // namespace vistrel::host
