#include "process_limits.h"

#include "import_process.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <new>
#include <vector>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace editor {

namespace {

constexpr qint64 mebibyte = 1 << 20;
// Only what is touched takes memory.
constexpr qint64 stackBytes = 512 * mebibyte;
constexpr qint64 baseMemory = stackBytes + 1024 * mebibyte;
constexpr qint64 memoryPerByte = 48;
constexpr qint64 baseSeconds = 6;
constexpr qint64 bytesPerSecond = mebibyte / 2;
constexpr qint64 mostSeconds = 3600;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Sanitizers reserve more addresses than any limit would leave.
constexpr bool limitsMemory = false;
#else
constexpr bool limitsMemory = true;
#endif

qint64 memoryOfMachine()
{
    return qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE);
}

template <typename Resource>
void setLimit(Resource resource, qint64 soft, qint64 hard)
{
    const rlimit limit{static_cast<rlim_t>(soft), static_cast<rlim_t>(hard)};
    setrlimit(resource, &limit);
}

template <typename Resource>
void raiseLimit(Resource resource, qint64 amount)
{
    rlimit limit{};
    getrlimit(resource, &limit);
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, static_cast<rlim_t>(amount));
    setrlimit(resource, &limit);
}

[[noreturn]] void endWithoutMemory()
{
    _exit(int(ImporterExit::OutOfMemory));
}

/// The system calls that reach beyond reading files fail with "not permitted" from now on.
void forbidSystemCalls()
{
#if defined(__x86_64__) || defined(__aarch64__)
#if defined(__x86_64__)
    constexpr quint32 architecture = AUDIT_ARCH_X86_64;
    constexpr quint32 foreignCalls = 0x40000000; // of the ABI with short pointers
    constexpr quint32 plainOpen = SYS_open;
#else
    constexpr quint32 architecture = AUDIT_ARCH_AARCH64;
    constexpr quint32 foreignCalls = ~0u;
    constexpr quint32 plainOpen = ~0u;
#endif
    constexpr quint32 forbidden[] = {
        SYS_socket,
        SYS_socketpair,
        SYS_connect,
        SYS_io_uring_setup,
        SYS_execve,
        SYS_execveat,
        SYS_ptrace,
        SYS_process_vm_readv,
        SYS_process_vm_writev,
        SYS_kill,
        SYS_tkill,
        SYS_rt_sigqueueinfo,
        SYS_pidfd_send_signal,
        SYS_openat2,
        SYS_mknodat,
        SYS_unlinkat,
        SYS_mkdirat,
        SYS_renameat,
        SYS_renameat2,
        SYS_linkat,
        SYS_symlinkat,
        SYS_truncate,
        SYS_ftruncate,
        SYS_fchmod,
        SYS_fchmodat,
#if defined(__x86_64__)
        SYS_unlink,
        SYS_rmdir,
        SYS_mkdir,
        SYS_rename,
        SYS_link,
        SYS_symlink,
        SYS_chmod,
        SYS_creat,
        SYS_mknod,
#endif
    };
    constexpr auto count = std::size(forbidden);
    const auto statement = [](quint16 code, quint32 value) {
        return sock_filter{code, 0, 0, value};
    };
    const auto jump = [](quint16 code, quint32 value, std::size_t yes, std::size_t no) {
        return sock_filter{code, quint8(yes), quint8(no), value};
    };
    const auto load = [&](std::size_t offset) {
        return statement(BPF_LD | BPF_W | BPF_ABS, quint32(offset));
    };
    // Of the low half of the argument, which comes first on both architectures.
    const auto loadArgument = [&](std::size_t number) {
        return load(offsetof(seccomp_data, args) + number * sizeof(quint64));
    };
    constexpr quint32 writing = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;
    // A forbidden call jumps to the verdict at the end.
    std::vector<sock_filter> program{load(offsetof(seccomp_data, arch)),
                                     jump(BPF_JMP | BPF_JEQ | BPF_K, architecture, 0, count + 9),
                                     load(offsetof(seccomp_data, nr)),
                                     jump(BPF_JMP | BPF_JGE | BPF_K, foreignCalls, count + 7, 0)};
    for (std::size_t i = 0; i < count; ++i)
        program.push_back(jump(BPF_JMP | BPF_JEQ | BPF_K, forbidden[i], count + 6 - i, 0));
    program.insert(program.end(), {jump(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 2),
                                   loadArgument(2), statement(BPF_JMP | BPF_JA, 2),
                                   jump(BPF_JMP | BPF_JEQ | BPF_K, plainOpen, 0, 2),
                                   loadArgument(1), jump(BPF_JMP | BPF_JSET | BPF_K, writing, 1, 0),
                                   statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
                                   statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM)});
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
#endif
}

} // namespace

void limitProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    std::set_new_handler(endWithoutMemory);
    if (limitsMemory)
        setLimit(RLIMIT_AS, baseMemory, std::max(baseMemory, memoryOfMachine() / 4 * 3));
    setLimit(RLIMIT_CPU, baseSeconds, mostSeconds);
    setLimit(RLIMIT_CORE, 0, 0);
    setLimit(RLIMIT_FSIZE, 0, 0);
    forbidSystemCalls();
}

void allowForInput(qint64 bytes)
{
    static std::atomic<qint64> total{0};
    const qint64 all = total += std::clamp<qint64>(bytes, 0, memoryOfMachine());
    if (limitsMemory)
        raiseLimit(RLIMIT_AS, baseMemory + all * memoryPerByte);
    raiseLimit(RLIMIT_CPU, baseSeconds + all / bytesPerSecond);
}

void runOnLargeStack(const std::function<void()>& work)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackBytes);
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)) != 0)
        endWithoutMemory();
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace editor
