#include "apps/error.h"

#include <new>

#include "apps/rejection.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

Outcome outcomeOfException() {
  try {
    throw;
  } catch (const ProgramError& error) {
    return {error.status(), error.what()};
  } catch (const Error& error) {
    return {kRejected, textOf(error)};
  } catch (const std::bad_alloc&) {
    return {kRejected, "out of memory"};   // short enough to need no allocation
  } catch (const std::exception& error) {  // from the standard library: files, threads
    return {kInputOutput, error.what()};
  }
}

void ExitStatusSum::add(ExitStatus status) {
  (status == kDone ? done_ : status == kInputOutput ? inputOutput_ : rejected_) = true;
}

ExitStatus ExitStatusSum::status() const {
  if (!rejected_ && !inputOutput_) return kDone;
  if (done_) return kSomeFailed;
  if (inputOutput_) return kInputOutput;
  return skipped_ ? kSomeFailed : kRejected;
}

}  // namespace vistrel::app
