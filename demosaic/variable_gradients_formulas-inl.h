// Chang, Cheung and Pang, "Color filter array recovery using a threshold-based variable number of
// gradients" (1999): a missing colour is the sensed one plus the mean difference of the two over
// those of eight directions in which samples change little.
//
// m: the mosaic. Formulas are written for the directions down and to the lower right; the other
// directions use them through a transposed or mirrored tap.
#if defined(VISTREL_VARIABLE_GRADIENTS_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_VARIABLE_GRADIENTS_FORMULAS_INL_H
#undef VISTREL_VARIABLE_GRADIENTS_FORMULAS_INL_H
#else
#define VISTREL_VARIABLE_GRADIENTS_FORMULAS_INL_H
#endif

#include "common/depth.h"
#include "common/simd/quotient-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

enum Direction { N, E, S, W, NE, SE, NW, SW };
constexpr int kDirections = 8;

template <class M>
struct Transposed {
  M m;
  VISTREL_INLINE auto operator()(int dx, int dy) const { return m(dy, dx); }
};

// sx, sy: -1 if the axis is reversed.
template <class M, int sx, int sy>
struct Mirrored {
  M m;
  VISTREL_INLINE auto operator()(int dx, int dy) const { return m(sx * dx, sy * dy); }
};

// A direction's values for the site's own colour and for the two that the site lacks.
template <class V>
struct Contribution {
  V own, first, second;
};

// The change down the columns around (0, y), at any site. Opposite directions share the middle.
template <class M>
VISTREL_INLINE auto change(M m, int y) {
  return absolute(m(0, y + 1) - m(0, y - 1)) + (absolute(m(1, y + 1) - m(1, y - 1)) >> 1) +
         (absolute(m(-1, y + 1) - m(-1, y - 1)) >> 1);
}

// A green site lacks the colour of its row, H, and that of its column, V.
//
//   G V G
//   H G H
//   G V G
struct AtGreen {
  template <class V, class M>
  VISTREL_INLINE static void diagonalGradients(M m, V& upperLeft, V& lowerRight) {
    const V here = absolute(m(1, 1) - m(-1, -1));
    upperLeft = here + absolute(m(0, 0) - m(-2, -2)) + absolute(m(0, 1) - m(-2, -1)) +
                absolute(m(1, 0) - m(-1, -2));
    lowerRight = here + absolute(m(2, 2) - m(0, 0)) + absolute(m(2, 1) - m(0, -1)) +
                 absolute(m(1, 2) - m(-1, 0));
  }
  template <class V, class M>
  VISTREL_INLINE static Contribution<V> down(M m) {
    return {(m(0, 0) + m(0, 2)) >> 1, ((m(1, 0) + m(1, 2)) + (m(-1, 0) + m(-1, 2))) >> 2, m(0, 1)};
  }
  template <class V, class M>
  VISTREL_INLINE static Contribution<V> right(M m) {
    const Contribution<V> turned = down<V>(Transposed<M>{m});
    return {turned.own, turned.second, turned.first};
  }
  template <class V, class M>
  VISTREL_INLINE static Contribution<V> lowerRight(M m) {
    return {m(1, 1), (m(1, 0) + m(1, 2)) >> 1, (m(0, 1) + m(2, 1)) >> 1};
  }
};

// A red or blue site, A, lacks green and the colour of its diagonals, D.
//
//   D G D
//   G A G
//   D G D
struct AtColour {
  template <class M>
  VISTREL_INLINE static auto diagonalChange(M m,
                                            int i) {  // the change down the diagonal around (i, i)
    return absolute(m(i + 1, i + 1) - m(i - 1, i - 1)) +
           (absolute(m(i + 1, i) - m(i, i - 1)) >> 1) + (absolute(m(i, i + 1) - m(i - 1, i)) >> 1);
  }
  template <class V, class M>
  VISTREL_INLINE static void diagonalGradients(M m, V& upperLeft, V& lowerRight) {
    const V here = diagonalChange(m, 0);
    upperLeft = diagonalChange(m, -1) + here;
    lowerRight = here + diagonalChange(m, 1);
  }
  template <class V, class M>
  VISTREL_INLINE static Contribution<V> down(M m) {
    return {(m(0, 0) + m(0, 2)) >> 1, m(0, 1), (m(1, 1) + m(-1, 1)) >> 1};
  }
  template <class V, class M>
  VISTREL_INLINE static Contribution<V> right(M m) {
    return down<V>(Transposed<M>{m});
  }
  template <class V, class M>
  VISTREL_INLINE static Contribution<V> lowerRight(M m) {
    return {((m(0, 0) + m(2, 0)) + (m(0, 2) + m(2, 2))) >> 2,
            (m(1, 0) + m(0, 1) + m(2, 1) + m(1, 2)) >> 2, m(1, 1)};
  }
};

template <class Site, class V, class M>
VISTREL_INLINE void findGradients(M m, V (&g)[kDirections]) {
  const Transposed<M> t{m};
  const V down = change(m, 0), right = change(t, 0);
  g[N] = change(m, -1) + down;
  g[S] = down + change(m, 1);
  g[W] = change(t, -1) + right;
  g[E] = right + change(t, 1);
  Site::template diagonalGradients<V>(m, g[NW], g[SE]);
  Site::template diagonalGradients<V>(Mirrored<M, -1, 1>{m}, g[NE], g[SW]);
}

VISTREL_INLINE int maskOf(bool condition) { return -int{condition}; }
template <class C>
VISTREL_INLINE C maskOf(C condition) {
  return condition;
}

// The smallest gradient that is too large: one above minimum + maximum / 2, which equals 1.5 *
// minimum + 0.5 * (maximum - minimum).
//
// quirk: exclusive-extremes. A gradient that lowers the running minimum never counts for the
// maximum, so the first one almost never does. If all of them lower it, the difference wraps, the
// threshold is huge, and all directions are kept.
template <class V>
VISTREL_INLINE V threshold(const V (&g)[kDirections], V start) {
  V minimum = start, maximum{};
  for (int i = 0; i < kDirections; ++i) {
    maximum = larger(maximum, V(g[i] | maskOf(g[i] < minimum)));
    minimum = smaller(minimum, g[i]);
  }
  return select(maximum < minimum, g[N], V(minimum + (maximum >> 1))) + 1;
}

// The number of directions that are kept, and the sums of their differences to the site's own
// colour.
template <class V>
struct DifferenceSums {
  V n, first, second;

  template <class C>
  VISTREL_INLINE void add(C isKept, Contribution<V> part) {
    const V mask = maskOf(isKept);
    first += (part.first - part.own) & mask;
    second += (part.second - part.own) & mask;
    n -= mask;
  }
};

template <class Site, class V, class M>
VISTREL_INLINE DifferenceSums<V> keptDirections(M m, V start) {
  V g[kDirections];
  findGradients<Site>(m, g);
  const V limit = threshold(g, start);
  DifferenceSums<V> kept{};
  kept.add(g[N] < limit, Site::template down<V>(Mirrored<M, 1, -1>{m}));
  kept.add(g[E] < limit, Site::template right<V>(m));
  kept.add(g[S] < limit, Site::template down<V>(m));
  kept.add(g[W] < limit, Site::template right<V>(Mirrored<M, -1, 1>{m}));
  kept.add(g[NE] < limit, Site::template lowerRight<V>(Mirrored<M, 1, -1>{m}));
  kept.add(g[SE] < limit, Site::template lowerRight<V>(m));
  kept.add(g[NW] < limit, Site::template lowerRight<V>(Mirrored<M, -1, -1>{m}));
  kept.add(g[SW] < limit, Site::template lowerRight<V>(Mirrored<M, -1, 1>{m}));
  return kept;
}

// The two colours that a site lacks. start: 65535, or any value above all gradients. If all
// gradients exceed 131070, no direction is kept, and both colours get the sensed value.
template <class T, class V>
struct Missing {
  V first, second;

  template <class Site, class M>
  VISTREL_INLINE static Missing at(Site, M m, V start) {
    const DifferenceSums<V> kept = keptDirections<Site>(m, start);
    const auto perDirection = reciprocal(larger(kept.n, V(V{} + 1)));
    const V first = product(kept.first, perDirection);
    const V second = product(kept.second, perDirection);
    return {clampTo(V(m(0, 0) + first), kLimit<T>), clampTo(V(m(0, 0) + second), kLimit<T>)};
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
