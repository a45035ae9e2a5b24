// What the functions of vistrel.hpp return: a value or an error. For C++17.
#ifndef VISTREL_RESULT_HPP
#define VISTREL_RESULT_HPP

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <new>
#include <utility>
#include <variant>

#include "vistrel/vistrel_status.h"

namespace vistrel {
inline namespace v1 {

// A rejection. Its texts are valid as long as it lives.
class Error : public std::exception {
 public:
  // A copy of what a function of vistrel_host.h reported.
  explicit Error(const vistrel_error& error) noexcept : error_(error) {}

  // Its VISTREL_... code.
  int32_t status() const noexcept { return error_.status; }
  // Its text, and the parts of it: see vistrel_error.
  const char* what() const noexcept override { return error_.text; }
  const char* argument() const noexcept { return error_.argument; }
  const char* value() const noexcept { return error_.value; }
  const char* reason() const noexcept { return error_.reason; }

 private:
  vistrel_error error_;
};

namespace detail {

// Ends the program where exceptions are disabled.
[[noreturn]] inline void raise([[maybe_unused]] const Error& error) {
#ifdef __cpp_exceptions
  throw error;
#else
  std::abort();
#endif
}

}  // namespace detail

// A value or an error. With an error, value() throws it, and * and -> must not be used; with a
// value, error() ends the program. A temporary result returns by value, so nothing dangles.
template <class T>
class [[nodiscard]] Result {
 public:
  // Holds that value or that error.
  Result(T value) : either_(std::move(value)) {}
  Result(const Error& error) : either_(error) {}

  // Whether it holds a value.
  explicit operator bool() const noexcept { return has_value(); }
  bool has_value() const noexcept { return either_.index() == 0; }

  // The value; not for a result with an error.
  T& operator*() & noexcept { return *std::get_if<0>(&either_); }
  const T& operator*() const& noexcept { return *std::get_if<0>(&either_); }
  T operator*() && noexcept { return std::move(*std::get_if<0>(&either_)); }
  T* operator->() & noexcept { return std::get_if<0>(&either_); }
  const T* operator->() const& noexcept { return std::get_if<0>(&either_); }
  const T* operator->() const&& = delete;

  // The error; ends the program if there is a value.
  const Error& error() const& noexcept { return std::get<1>(either_); }
  Error error() && noexcept { return std::get<1>(either_); }

  // The value; throws the error if there is one.
  T value() && {
    if (!*this) detail::raise(std::get<1>(either_));
    return std::move(*std::get_if<0>(&either_));
  }
  const T& value() const& {
    if (!*this) detail::raise(error());
    return **this;
  }

  // The value, or `other` if there is none.
  template <class U>
  T value_or(U&& other) && {
    return *this ? *std::move(*this) : static_cast<T>(std::forward<U>(other));
  }
  template <class U>
  T value_or(U&& other) const& {
    return *this ? **this : static_cast<T>(std::forward<U>(other));
  }

 private:
  std::variant<T, Error> either_;
};

namespace detail {

// The value that `work` fills in, or the error that it reports.
template <class T, class Work>
Result<T> outcomeOf(Work& work) {
  T value{};
  vistrel_error error{};
  if (work(value, &error) == VISTREL_OK) return value;
  return Error(error);
}

// The same, even if `work` runs out of memory.
template <class T, class Work>
Result<T> attempt(Work work) noexcept {
#ifdef __cpp_exceptions
  try {
    return outcomeOf<T>(work);
  } catch (const std::bad_alloc&) {
    return Error({VISTREL_NO_MEMORY, "", "", "out of memory", "out of memory", {}});
  }
#else
  return outcomeOf<T>(work);
#endif
}

}  // namespace detail

}  // namespace v1
}  // namespace vistrel

#endif
