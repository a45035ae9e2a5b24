/* In C, whose clean-up handlers need no frame of C++ to be unwound: threads end by another unwinder
   than the one that this module contains. */
#include "python/extension/restore_thread.h"

#include <pthread.h>
#include <unistd.h>

static void sleepForever(void* unused) {
  (void)unused;
  for (;;) pause();
}

void vistrel_restore_thread(PyThreadState* state) {
  pthread_cleanup_push(sleepForever, NULL);
  PyEval_RestoreThread(state);
  pthread_cleanup_pop(0);
}
