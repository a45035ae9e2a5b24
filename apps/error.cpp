#include "apps/error.h"

#include <new>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

Outcome outcomeOfException() {
  try {
    throw;
  } catch (const Failure& failure) {
    return {failure.status(), failure.what()};
  } catch (const Error& refusal) {
    return {kRejected, refusal.what()};
  } catch (const std::bad_alloc&) {
    return {kRejected, "out of memory"};   // short enough to need none itself
  } catch (const std::exception& error) {  // of the standard library: files, threads
    return {kInputOutput, error.what()};
  }
}

void Tally::add(ExitStatus status) {
  (status == kDone ? done_ : status == kInputOutput ? inputOutput_ : rejected_) = true;
}

ExitStatus Tally::status() const {
  if (!rejected_ && !inputOutput_) return kDone;
  if (done_) return kSomeFailed;
  if (inputOutput_) return kInputOutput;
  return left_ ? kSomeFailed : kRejected;
}

}  // namespace vistrel::app
