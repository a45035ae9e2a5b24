// Vector code compared with plain code, element by element.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

namespace vistrel::core::test {

constexpr size_t kElements = 4096;  // whole vectors of every level

// Integers from all over their range, with its ends among them.
template <class T>
std::vector<T> mixed(std::mt19937& random, size_t n = kElements) {
  using Limits = std::numeric_limits<T>;
  const T ends[] = {Limits::min(), static_cast<T>(Limits::min() + 1), T{0},
                    T{1},          static_cast<T>(Limits::max() - 1), Limits::max()};
  std::vector<T> elements(n);
  for (T& element : elements)
    element = random() % 4 == 0 ? ends[random() % std::size(ends)] : static_cast<T>(random());
  return elements;
}

// kernel: makes n results of the operands; plain: makes one of them.
template <class Result, class... Operands, class Plain>
void expectElements(void (*kernel)(Result*, size_t, const Operands*...), Plain plain) {
  std::mt19937 random;
  const std::tuple<std::vector<Operands>...> operands{mixed<Operands>(random)...};
  std::vector<Result> results(kElements);
  std::apply(
      [&](const auto&... in) {
        kernel(results.data(), kElements, in.data()...);
        for (size_t i = 0; i < kElements; ++i)
          ASSERT_EQ(results[i], static_cast<Result>(plain(in[i]...)))
              << ::testing::PrintToString(std::tuple(in[i]...));
      },
      operands);
}

}  // namespace vistrel::core::test
