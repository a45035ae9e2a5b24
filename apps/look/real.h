// Logarithms and powers made of operations that IEEE 754 rounds exactly, so that decisions are the
// same on every machine.
#pragma once

namespace vistrel::app {

// To about 12 digits. x is positive.
double log2Of(double x);
double exp2Of(double x);

}  // namespace vistrel::app
