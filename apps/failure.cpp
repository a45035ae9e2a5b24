#include "apps/failure.h"

#include <new>

#include "host/vistrel.hpp"

namespace vistrel::app {

Outcome attempt(const std::function<void()>& work) {
  try {
    work();
    return {};
  } catch (const Failure& failure) {
    return {failure.status(), failure.what()};
  } catch (const Error& refusal) {
    return {kRejected, refusal.what()};
  } catch (const std::bad_alloc&) {
    return {kRejected, "it takes more memory than there is"};
  }
}

void Tally::add(ExitStatus status) {
  (status == kDone ? done_ : status == kInputOutput ? inputOutput_ : rejected_) = true;
}

ExitStatus Tally::status() const {
  if (!rejected_ && !inputOutput_) return kDone;
  if (done_) return kSomeFailed;
  return inputOutput_ ? kInputOutput : kRejected;
}

}  // namespace vistrel::app
