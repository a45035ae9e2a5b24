// The processor architecture that this build targets.
#pragma once

#if defined(__x86_64__) || defined(__i386__)
#define VISTREL_X86 1
#else
#define VISTREL_X86 0
#endif
