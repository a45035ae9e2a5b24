#include "cfa/processor.h"
extern "C" {
uint32_t ippJumpIndexForMergedLibs = 0;
int32_t ippStaticInit(void) { ippJumpIndexForMergedLibs = 3; return 0; }
}
