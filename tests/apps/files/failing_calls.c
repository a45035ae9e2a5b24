/*
 * For LD_PRELOAD on Linux: lets one system call of a program fail. The kernel traps the calls of
 * the chosen kind, also those from within the C library, and a handler makes them or doesn't.
 *
 * VISTREL_FAILING_CALL is the kind: write, open, rename, fsync or close; VISTREL_FAILING_NUMBER the
 * number of the call, from 1, that fails with the error VISTREL_FAILING_ERROR. Descriptor 9 is a
 * file of 4 bytes that receives how many calls there were.
 */
#define _GNU_SOURCE
#include <errno.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <stddef.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#define MAX_CALLS 3
/* An argument that no call of the program has: it marks those of the handler. */
#define MARK 0x56495354u

static const struct {
  const char* name;
  int is_made; /* although it fails */
  long calls[MAX_CALLS];
} kinds[] = {{"write", 0, {SYS_write, SYS_pwrite64, SYS_writev}},
             {"open", 0, {SYS_openat, SYS_open, SYS_openat}},
             {"rename", 0, {SYS_rename, SYS_renameat, SYS_renameat2}},
             {"fsync", 0, {SYS_fsync, SYS_fdatasync, SYS_fsync}},
             {"close", 1, {SYS_close, SYS_close, SYS_close}}};

static int is_made, failing_error;
static unsigned failing_number;
static unsigned* count; /* shared with the test */

static long made(long call, const greg_t* r) {
  const long result =
      syscall(call, r[REG_RDI], r[REG_RSI], r[REG_RDX], r[REG_R10], r[REG_R8], (long)MARK);
  return result < 0 ? -errno : result;
}

static void handle(int signal, siginfo_t* info, void* context) {
  (void)signal;
  greg_t* const registers = ((ucontext_t*)context)->uc_mcontext.gregs;
  const int saved = errno;
  const int fails = __atomic_add_fetch(count, 1, __ATOMIC_RELAXED) == failing_number;
  long result = -failing_error;
  if (!fails || is_made) result = made(info->si_syscall, registers);
  registers[REG_RAX] = fails ? -failing_error : result;
  errno = saved;
}

static void trap(const long* calls) {
  const struct sock_filter filter[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, args[5])),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, MARK, 4, 0),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (unsigned)calls[0], 3, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (unsigned)calls[1], 2, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (unsigned)calls[2], 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP)};
  const struct sock_fprog program = {sizeof filter / sizeof *filter, (struct sock_filter*)filter};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
    _exit(99);
}

__attribute__((constructor)) static void begin(void) {
  const char* const kind = getenv("VISTREL_FAILING_CALL");
  if (!kind) return;
  failing_number = (unsigned)atoi(getenv("VISTREL_FAILING_NUMBER"));
  failing_error = atoi(getenv("VISTREL_FAILING_ERROR"));
  count = mmap(NULL, sizeof *count, PROT_READ | PROT_WRITE, MAP_SHARED, 9, 0);
  struct sigaction action = {.sa_flags = SA_SIGINFO};
  action.sa_sigaction = handle;
  if (count == MAP_FAILED || sigaction(SIGSYS, &action, NULL) != 0) _exit(99);
  for (size_t i = 0; i < sizeof kinds / sizeof *kinds; ++i)
    if (strcmp(kind, kinds[i].name) == 0) {
      is_made = kinds[i].is_made;
      trap(kinds[i].calls);
    }
}
