// A global mutex, ready before the first constructor of the program runs.
#pragma once

#include <mutex>

// With MinGW, its own constructor is among those.
#ifdef _WIN32
#define VISTREL_GLOBAL_MUTEX std::mutex
#else
#define VISTREL_GLOBAL_MUTEX constinit std::mutex
#endif
