/*
 * Counts the instructions that an emulated program executes, and prints their number when it ends.
 * QEMU loads this plug-in; it works for every processor that QEMU emulates. Debian has no header of
 * the interface, so what is used of it is declared here (version 1).
 */
#include <inttypes.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

typedef uint64_t qemu_plugin_id_t;
struct qemu_plugin_tb;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*translated)(qemu_plugin_id_t,
                                                              struct qemu_plugin_tb*));
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op op,
                                              void* sum, uint64_t addend);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*ended)(qemu_plugin_id_t, void*),
                                    void* user);

int qemu_plugin_version = 1;

static uint64_t count;

static void translated(qemu_plugin_id_t id, struct qemu_plugin_tb* block) {
  (void)id;
  qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &count,
                                           qemu_plugin_tb_n_insns(block));
}

static void ended(qemu_plugin_id_t id, void* user) {
  (void)id;
  (void)user;
  fprintf(stderr, "%" PRIu64 "\n", count);
}

int qemu_plugin_install(qemu_plugin_id_t id, const void* info, int argc, char** argv) {
  (void)info;
  (void)argc;
  (void)argv;
  qemu_plugin_register_vcpu_tb_trans_cb(id, translated);
  qemu_plugin_register_atexit_cb(id, ended, NULL);
  return 0;
}
