// Processor detection and the choice of level (exported in plain C names).
#pragma once

#include <cstdint>

extern "C" {
int32_t ippStaticInit(void);
}
