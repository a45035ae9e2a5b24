// A row's even and odd columns to two half rows.
template <class T>
void splitPairs(const T* __restrict source, size_t pairs, T* __restrict even, T* __restrict odd) {
  for (size_t k = 0; k < pairs; ++k) {
    even[k] = source[2 * k];
    odd[k] = source[2 * k + 1];
  }
}
