/*
 * For LD_PRELOAD: runs a program's main() repeatedly, each time in a child process, and lets its
 * first, second, third allocation fail and so on, until there are no more. For each run it writes
 * a line "n status" to descriptor 9, where status is that of wait().
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

typedef int (*Main)(int, char**, char**);
typedef int (*Start)(Main, int, char**, void (*)(void), void (*)(void), void (*)(void), void*);

extern void* __libc_malloc(size_t);
extern void* __libc_calloc(size_t, size_t);
extern void* __libc_realloc(void*, size_t);
extern void* __libc_memalign(size_t, size_t);

static Main real_main;
static long left;    /* allocations until the one that fails; 0: none does */
static int* reached; /* shared by parent and child */

static int fails(void) {
  if (left == 0 || --left != 0) return 0;
  *reached = 1;
  errno = ENOMEM;
  return 1;
}

void* malloc(size_t size) { return fails() ? NULL : __libc_malloc(size); }
void* calloc(size_t count, size_t size) { return fails() ? NULL : __libc_calloc(count, size); }
void* realloc(void* p, size_t size) { return fails() ? NULL : __libc_realloc(p, size); }
void* aligned_alloc(size_t to, size_t size) { return fails() ? NULL : __libc_memalign(to, size); }

static int every_allocation(int argc, char** argv, char** environment) {
  reached = mmap(NULL, sizeof *reached, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  for (long n = 1;; ++n) {
    int status = 0;
    *reached = 0;
    const pid_t child = fork();
    if (child == 0) {
      left = n;
      return real_main(argc, argv, environment);
    }
    waitpid(child, &status, 0);
    if (!*reached) return 0;
    dprintf(9, "%ld %d\n", n, status);
  }
}

int __libc_start_main(Main program, int argc, char** argv, void (*init)(void), void (*fini)(void),
                      void (*end)(void), void* stack) {
  real_main = program;
  return ((Start)dlsym(RTLD_NEXT, "__libc_start_main"))(every_allocation, argc, argv, init, fini,
                                                        end, stack);
}
