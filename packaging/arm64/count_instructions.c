/* A plugin of qemu's user emulation that counts the instructions of the emulated program and prints the number at its
   end. The few declarations of qemu's plugin interface (version 1) that it needs are repeated here because Debian 12 has
   no package with the header. */
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

typedef uint64_t qemu_plugin_id_t;
struct qemu_plugin_tb;
typedef struct qemu_info qemu_info_t;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id, void (*translated)(qemu_plugin_id_t, struct qemu_plugin_tb*));
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op op, void* number,
                                              uint64_t added);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*ended)(qemu_plugin_id_t, void*), void* data);

int qemu_plugin_version = 1;

static uint64_t count;

static void CountBlock(qemu_plugin_id_t id, struct qemu_plugin_tb* block) {
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &count, qemu_plugin_tb_n_insns(block));
}

static void PrintCount(qemu_plugin_id_t id, void* data) {
    (void)id;
    (void)data;
    fprintf(stderr, "instructions %llu\n", (unsigned long long)count);
}

int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t* info, int argc, char** argv) {
    (void)info;
    (void)argc;
    (void)argv;
    qemu_plugin_register_vcpu_tb_trans_cb(id, CountBlock);
    qemu_plugin_register_atexit_cb(id, PrintCount, NULL);
    return 0;
}
