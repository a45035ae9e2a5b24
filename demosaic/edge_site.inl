#include "common/lanes.inl"
#include "common/wide.inl"
#include "demosaic/edge.inl"
