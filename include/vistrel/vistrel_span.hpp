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
using DataOf = decltype(std::declval<Container&>().data());

}  // namespace detail

// A view of the caller's elements.
template <class T>
class Span {
 public:
  Span() = default;
  Span(T* first, std::size_t count) noexcept : first_(first), count_(count) {}
  // Views a vector, an array, a string or another span; a temporary only if it is a view itself.
  template <class Container, class Data = detail::DataOf<Container>,
            class = std::enable_if_t<std::is_convertible_v<Data, T*> &&
                                     detail::outlivesTheCall<Container>>>
  Span(Container&& container) noexcept : Span(container.data(), container.size()) {}
  template <class U, std::size_t n,
            class = std::enable_if_t<std::is_convertible_v<U (*)[], T (*)[]>>>
  Span(U (&array)[n]) noexcept : Span(array, n) {}
  template <class U, std::size_t n>
  Span(const U (&&array)[n]) = delete;

  T* data() const noexcept { return first_; }
  std::size_t size() const noexcept { return count_; }
  T* begin() const noexcept { return first_; }
  T* end() const noexcept { return first_ + count_; }
  T& operator[](std::size_t i) const noexcept { return first_[i]; }

 private:
  T* first_ = nullptr;
  std::size_t count_ = 0;
};

// The memory of 16-bit samples, or of bytes of another type, for a function that writes bytes.
inline Span<uint8_t> bytesOf(Span<uint16_t> samples) noexcept {
  return {reinterpret_cast<uint8_t*>(samples.data()), 2 * samples.size()};
}
inline Span<uint8_t> bytesOf(Span<std::byte> bytes) noexcept {
  return {reinterpret_cast<uint8_t*>(bytes.data()), bytes.size()};
}

}  // namespace v1
}  // namespace vistrel

#endif
