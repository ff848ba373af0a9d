// Preloaded before the program: makes the n-th call of one kind fail. FRIGANA_FAULT names kind and number ("write:3");
// when it happens, the file that FRIGANA_FAULT_TRACE names comes into being.
#include <dlfcn.h>
#include <fcntl.h>
#include <stdarg.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

struct Fault {
    char kind[16] = "";
    long number = 0;
    const char* trace = nullptr;
    Fault() {
        trace = std::getenv("FRIGANA_FAULT_TRACE");
        const char* wanted = std::getenv("FRIGANA_FAULT");
        const char* colon = wanted == nullptr ? nullptr : std::strchr(wanted, ':');
        if (colon == nullptr || colon - wanted >= 15) return;
        std::memcpy(kind, wanted, static_cast<std::size_t>(colon - wanted));
        number = std::atol(colon + 1);
    }
};

// Whether this call is the one; counted per kind, from the first call of the process.
bool strikes(const char* kind) {
    static Fault fault;
    static long calls = 0;
    if (std::strcmp(kind, fault.kind) != 0 || ++calls != fault.number) return false;
    const long trace =
        fault.trace == nullptr ? -1 : syscall(SYS_openat, AT_FDCWD, fault.trace, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (trace >= 0) syscall(SYS_close, trace);
    return true;
}

template <class Call>
Call next(const char* name) {
    return reinterpret_cast<Call>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(more, int) : 0;
    va_end(more);
    const bool writing = (flags & O_ACCMODE) != O_RDONLY;
    if (strikes(writing ? "create" : "open")) {
        errno = writing ? ENOSPC : EMFILE;
        return -1;
    }
    static const auto call = next<int (*)(const char*, int, ...)>("open");
    return call(path, flags, mode);
}

ssize_t read(int handle, void* bytes, size_t count) {
    if (strikes("read")) {
        errno = EIO;
        return -1;
    }
    static const auto call = next<ssize_t (*)(int, void*, size_t)>("read");
    return call(handle, bytes, count);
}

ssize_t write(int handle, const void* bytes, size_t count) {
    static const auto call = next<ssize_t (*)(int, const void*, size_t)>("write");
    if (strikes("write")) {
        errno = ENOSPC;
        return -1;
    }
    if (strikes("short") && count > 1) return call(handle, bytes, count / 2);
    if (strikes("full")) {  // a part is written, then the disk is full
        if (count > 1) call(handle, bytes, count / 2);
        errno = ENOSPC;
        return -1;
    }
    return call(handle, bytes, count);
}

int close(int handle) {
    static const auto call = next<int (*)(int)>("close");
    const int result = call(handle);
    if (!strikes("close")) return result;
    errno = EIO;
    return -1;
}

int rename(const char* from, const char* to) noexcept {
    static const auto call = next<int (*)(const char*, const char*)>("rename");
    if (!strikes("rename")) return call(from, to);
    errno = EIO;
    return -1;
}

int unlink(const char* path) noexcept {
    static const auto call = next<int (*)(const char*)>("unlink");
    if (!strikes("unlink")) return call(path);
    errno = EACCES;
    return -1;
}

// The declaration of the system is that of a structure of the same name as well.
#pragma GCC diagnostic ignored "-Wshadow"
int flock(int handle, int how) noexcept {
    static const auto call = next<int (*)(int, int)>("flock");
    if (!strikes("flock")) return call(handle, how);
    errno = ENOLCK;
    return -1;
}
}
