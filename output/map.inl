// Samples through a table of 1024 bytes. Indices are formed a few at a time, so that the look-ups
// are all that is left to be done one by one.
inline void mapSamples(const uint16_t* __restrict source, uint8_t* __restrict destination,
                       size_t n, const uint8_t* __restrict table, uint32_t shift) {
  constexpr size_t tile = 256;
  uint16_t index[tile];
  for (size_t begin = 0; begin < n; begin += tile) {
    const size_t count = n - begin < tile ? n - begin : tile;
    const uint16_t* s = source + begin;
    uint8_t* d = destination + begin;
    for (size_t i = 0; i < count; ++i) {
      const uint16_t v = static_cast<uint16_t>(uint32_t{s[i]} >> shift);
      index[i] = v < 1023 ? v : 1023;
    }
    for (size_t i = 0; i < count; ++i) d[i] = table[index[i]];
  }
}
