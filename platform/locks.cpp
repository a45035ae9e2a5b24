#include "vistrel/platform.h"

void OS_InitializeCriticalSection(pthread_mutex_t* m) { pthread_mutex_init(m, nullptr); }
void OS_DeleteCriticalSection(pthread_mutex_t* m) { pthread_mutex_destroy(m); }
void OS_EnterCriticalSection(pthread_mutex_t* m) { pthread_mutex_lock(m); }
void OS_LeaveCriticalSection(pthread_mutex_t* m) { pthread_mutex_unlock(m); }
