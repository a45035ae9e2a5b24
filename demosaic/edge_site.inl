#include "common/simd/lanes.inl"
#include "common/simd/wide.inl"
#include "demosaic/edge.inl"
