// Views of a caller's memory for the functions of vistrel.hpp. For C++17.
#ifndef VISTREL_SPAN_HPP
#define VISTREL_SPAN_HPP

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>
#if __cplusplus >= 202002L
#include <span>
#endif

namespace vistrel {
inline namespace v1 {

template <class T>
class Span;

namespace detail {

// Types that refer to elements they do not own, so a temporary one does no harm.
template <class>
constexpr bool isView = false;
template <class T>
constexpr bool isView<Span<T>> = true;
template <class T, class Traits>
constexpr bool isView<std::basic_string_view<T, Traits>> = true;
#if __cplusplus >= 202002L
template <class T, std::size_t n>
constexpr bool isView<std::span<T, n>> = true;
#endif

template <class Container>
constexpr bool outlivesTheCall =
    std::is_lvalue_reference_v<Container> || isView<std::remove_cv_t<Container>>;

template <class Container>
using ElementOf = std::remove_pointer_t<decltype(std::declval<Container&>().data())>;

// Whether a Span of T views elements of type U: its own, or std::byte as uint8_t.
template <class T, class U>
constexpr bool views =
    std::is_same_v<std::remove_const_t<U>, std::remove_const_t<T>>&& std::is_convertible_v<U*, T*>;
template <class U>
constexpr bool views<uint8_t, U> = std::is_same_v<U, uint8_t> || std::is_same_v<U, std::byte>;
template <class U>
constexpr bool views<const uint8_t, U> = views<uint8_t, std::remove_const_t<U>>;

}  // namespace detail

// A view of the caller's elements. One of uint8_t also views std::byte.
template <class T>
class Span {
 public:
  // Views nothing, or `count` elements.
  Span() = default;
  Span(T* first, std::size_t count) noexcept : first_(first), count_(count) {}

  // Views a vector, an array, a string or another span; a temporary only if it is a view itself.
  template <class Container, class U = detail::ElementOf<Container>,
            class = std::enable_if_t<detail::views<T, U> && detail::outlivesTheCall<Container>>>
  Span(Container&& container) noexcept
      : Span(reinterpret_cast<T*>(container.data()), container.size()) {}
  template <class U, std::size_t n, class = std::enable_if_t<detail::views<T, U>>>
  Span(U (&array)[n]) noexcept : Span(reinterpret_cast<T*>(array), n) {}
  template <class U, std::size_t n>
  Span(const U (&&array)[n]) = delete;

  // The elements and their number, as a container has them; indices are not checked.
  T* data() const noexcept { return first_; }
  std::size_t size() const noexcept { return count_; }
  T* begin() const noexcept { return first_; }
  T* end() const noexcept { return first_ + count_; }
  T& operator[](std::size_t i) const noexcept { return first_[i]; }

 private:
  T* first_ = nullptr;
  std::size_t count_ = 0;
};

// The memory of 16-bit samples, for a function that writes bytes.
inline Span<uint8_t> bytesOf(Span<uint16_t> samples) noexcept {
  return {reinterpret_cast<uint8_t*>(samples.data()), 2 * samples.size()};
}

}  // namespace v1
}  // namespace vistrel

#endif
