#include "apps/input/tiff_input.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <new>

#include "apps/error.h"

namespace vistrel::app {
namespace {

// Limit of a single allocation in libtiff, for a tag or a strip.
constexpr tmsize_t kMaxMemory = tmsize_t{4} << 30;

constexpr size_t kMaxErrors = 8;

using Options = std::unique_ptr<TIFFOpenOptions, void (*)(TIFFOpenOptions*)>;

}  // namespace

TiffInput::TiffInput(const Source& source) : source_(source), tiff_(nullptr, TIFFClose) {
  const Options options(TIFFOpenOptionsAlloc(), TIFFOpenOptionsFree);
  if (!options) throw std::bad_alloc();
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), onError, this);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), onWarning, this);
  TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMaxMemory);
  // m: no memory mapping
  tiff_.reset(TIFFClientOpenExt("TIFF", "rm", this, onRead, onWrite, onSeek, onClose, onSize,
                                nullptr, nullptr, options.get()));
  if (!tiff_) throwReadError("it cannot be opened");
}

void TiffInput::throwReadError(const char* otherwise) const {
  const std::string text = errors_.empty() ? otherwise : errors_.front();
  const bool isNamed = text.starts_with("TIFF: ");  // libtiff puts the file's name before some
  throwError(kRejected, "{}{}", isNamed ? "" : "TIFF: ", text);
}

int TiffInput::onError(TIFF*, void* self, const char*, const char* format, va_list arguments) {
  auto& errors = static_cast<TiffInput*>(self)->errors_;
  char text[200];
  std::vsnprintf(text, sizeof text, format, arguments);
  if (errors.size() < kMaxErrors && !std::ranges::count(errors, text)) errors.push_back(text);
  return 1;
}

tmsize_t TiffInput::onRead(thandle_t self, void* to, tmsize_t count) {
  auto* input = static_cast<TiffInput*>(self);
  const size_t n = input->source_.readSome(input->at_, to, static_cast<size_t>(count));
  input->at_ += n;
  return static_cast<tmsize_t>(n);
}

toff_t TiffInput::onSeek(thandle_t self, toff_t to, int whence) {
  auto* input = static_cast<TiffInput*>(self);
  const uint64_t from = whence == SEEK_SET   ? 0
                        : whence == SEEK_CUR ? input->at_
                                             : input->source_.size();
  return input->at_ = from + to;
}

toff_t TiffInput::onSize(thandle_t self) { return static_cast<TiffInput*>(self)->source_.size(); }

}  // namespace vistrel::app
