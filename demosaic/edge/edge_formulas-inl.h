// Colours as differences to green, and green along the axis with less activity, which is found for
// each red or blue site separately. m: the mosaic; q: measures of red and blue sites. Both are
// addressed relative to the current site.
#if defined(VISTREL_EDGE_FORMULAS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_EDGE_FORMULAS_INL_H
#undef VISTREL_EDGE_FORMULAS_INL_H
#else
#define VISTREL_EDGE_FORMULAS_INL_H
#endif

#include "common/simd/lanes-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// quirk: signed-samples. 16-bit samples compare as signed numbers: if only one of two samples is
// 32768 or more, their difference is negative.
template <class V>
VISTREL_INLINE V inOrder(V sample) {
  return sample ^ 0x8000;
}
VISTREL_INLINE Vec<int16_t> inOrder(Vec<int16_t> sample) { return sample; }

// The largest minus the smallest.
template <class V, class... More>
VISTREL_INLINE V range(V first, More... more) {
  V most = inOrder(first), least = most;
  ((most = larger(most, inOrder(more)), least = smaller(least, inOrder(more))), ...);
  return inOrder(most) - inOrder(least);
}
template <class M>
VISTREL_INLINE auto down(M m, int dx, int dy) {
  return range(m(dx, dy - 1), m(dx, dy + 1));
}
template <class M>
VISTREL_INLINE auto across(M m, int dx, int dy) {
  return range(m(dx - 1, dy), m(dx + 1, dy));
}
template <class V>
VISTREL_INLINE V twice(V v) {
  return v + v;
}

// The measures of a red or blue site: changes down the columns, three side by side or five in a
// cross; changes across the rows likewise; and both means of green.
//
//   columnActivity3   | | |      rowActivity3   -
//                                               -
//                                               -
//
//   columnActivity5     |        rowActivity5     -
//                     | | |                     - - -
//                       |                         -
struct Measures {
  template <class M>
  VISTREL_INLINE static auto columnActivity3(M m) {
    return down(m, -1, 0) + down(m, 0, 0) + down(m, 1, 0);
  }
  template <class M>
  VISTREL_INLINE static auto columnActivity5(M m) {
    return columnActivity3(m) + down(m, 0, -1) + down(m, 0, 1);
  }
  template <class M>
  VISTREL_INLINE static auto rowActivity3(M m) {
    return across(m, 0, -1) + across(m, 0, 0) + across(m, 0, 1);
  }
  template <class M>
  VISTREL_INLINE static auto rowActivity5(M m) {
    return rowActivity3(m) + across(m, -1, 0) + across(m, 1, 0);
  }
  template <class M>
  VISTREL_INLINE static auto inRow(M m) {
    return (m(-1, 0) + m(1, 0)) >> 1;
  }
  template <class M>
  VISTREL_INLINE static auto inColumn(M m) {
    return (m(0, -1) + m(0, 1)) >> 1;
  }
};

// A neighbour's activity counts double on the side of the current site. A tie takes green from the
// column.
struct Edge {
  template <class Q>
  VISTREL_INLINE static auto green(Q q) {  // at a red or blue site
    return chosen(q, 0, 0, q.columnActivity5(0, 0), q.rowActivity5(0, 0));
  }
  template <class M, class Q>
  VISTREL_INLINE static auto opposite(M m, Q q) {  // at a red or blue site: the other of the two
    return green(q) + ((corner(m, q, -1, -1) + corner(m, q, 1, -1) + corner(m, q, 1, 1) +
                        corner(m, q, -1, 1)) >>
                       2);
  }
  template <class M, class Q, class V>
  VISTREL_INLINE static auto along(M m, Q q, V g) {  // at a green site: the colour of this row
    return g + ((beside(m, q, -1) + beside(m, q, 1)) >> 1);
  }
  template <class M, class Q, class V>
  VISTREL_INLINE static auto acrossRows(M m, Q q, V g) {  // the colour above and below
    return g + ((above(m, q, -1) + above(m, q, 1)) >> 1);
  }

  // Green at this site: the more uniform its surroundings, the more quarters of the mean it takes.
  // t: thresholds, falling.
  template <class M, class Q, class V>
  VISTREL_INLINE static V smoothed(M m, Q q, const V (&t)[4]) {
    const V own = m(0, 0), r = range(own, m(-1, -1), m(1, -1), m(-1, 1), m(1, 1));
    const V mean = (twice(own) + q.inRow(0, -1) + q.inRow(0, 1)) >> 2;
    const V one = (own >> 2) + (own >> 1) + (mean >> 2), two = (own >> 1) + (mean >> 1),
            three = (mean >> 1) + (mean >> 2) + (own >> 2);
    return select(r > t[0], own,
                  select(r > t[1], one, select(r > t[2], two, select(r > t[3], three, mean))));
  }

 private:
  template <class Q, class V>
  VISTREL_INLINE static V chosen(Q q, int dx, int dy, V columnActivity3, V rowActivity3) {
    return select(columnActivity3 > rowActivity3, q.inRow(dx, dy), q.inColumn(dx, dy));
  }

  // The difference of a neighbouring site's colour to its green.
  template <class M, class Q>
  VISTREL_INLINE static auto corner(M m, Q q, int dx, int dy) {
    return m(dx, dy) - chosen(q, dx, dy, q.columnActivity3(dx, dy) + twice(down(m, dx, 0)),
                              q.rowActivity3(dx, dy) + twice(across(m, 0, dy)));
  }
  template <class M, class Q>
  VISTREL_INLINE static auto beside(M m, Q q, int dx) {
    return m(dx, 0) - chosen(q, dx, 0, q.columnActivity5(dx, 0),
                             q.rowActivity3(dx, 0) + twice(across(m, 0, 0)));
  }
  template <class M, class Q>
  VISTREL_INLINE static auto above(M m, Q q, int dy) {
    return m(0, dy) -
           chosen(q, 0, dy, q.columnActivity3(0, dy) + twice(down(m, 0, 0)), q.rowActivity5(0, dy));
  }
};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
