#include "vistrel/vistrel_host.h"

uint32_t vistrel_version() { return VISTREL_VERSION; }
