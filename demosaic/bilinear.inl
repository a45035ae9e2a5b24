// The plain mean of the two or four nearest sites that carry a colour. m(dx, dy) is the mosaic's
// sample dx columns to the right and dy rows below.
struct Bilinear {
  template <class M>
  VISTREL_INLINE static auto green(M m) {  // at a red or blue site
    return mean4(m(-1, 0), m(1, 0), m(0, -1), m(0, 1));
  }
  template <class M>
  VISTREL_INLINE static auto opposite(M m) {  // there, the colour of the diagonals
    return mean4(m(-1, -1), m(-1, 1), m(1, -1), m(1, 1));
  }
  template <class M>
  VISTREL_INLINE static auto along(M m) {  // at a green site: the colour of this row
    return mean2(m(-1, 0), m(1, 0));
  }
  template <class M>
  VISTREL_INLINE static auto across(M m) {  // there, the colour of the rows above and below
    return mean2(m(0, -1), m(0, 1));
  }
};
