/* Python's lock for a thread that may outlast the interpreter. */
#ifndef VISTREL_PYTHON_RESTORE_THREAD_H
#define VISTREL_PYTHON_RESTORE_THREAD_H

#include <Python.h>

#ifdef __cplusplus
extern "C" {
#endif

/* PyEval_RestoreThread. If the interpreter has ended, the thread sleeps until the process ends. */
void vistrel_restore_thread(PyThreadState* state);

#ifdef __cplusplus
}
#endif

#endif
