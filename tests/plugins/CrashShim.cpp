// Preloaded into the program: ends it at a chosen step of writing a file, as a power failure would,
// or lets that and all further steps fail, as a full disk does, if CRASH_FULL is set. CRASH_FOLDER
// names the folder whose files count, CRASH_AT the number of the step, from 1. Steps are the making
// of files, writes, of which half is done, and the flushing and renaming of files, which isn't
// done.

#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

namespace {

bool counts(const char* name) {
    const char* folder = getenv("CRASH_FOLDER");
    return folder && strncmp(name, folder, strlen(folder)) == 0;
}

bool counts(int file) {
    char link[64];
    char name[PATH_MAX] = {};
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    return readlink(link, name, sizeof name - 1) > 0 && counts(name);
}

bool isLastStep() {
    static int steps = 0;
    const char* last = getenv("CRASH_AT");
    return last && ++steps >= atoi(last);
}

int fail() {
    if (!getenv("CRASH_FULL")) {
        raise(SIGKILL);
    }
    errno = ENOSPC;
    return -1;
}

template <class Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" ssize_t write(int file, const void* data, size_t size) {
    static auto* const real = original<ssize_t(int, const void*, size_t)>("write");
    if (!counts(file)) {
        return real(file, data, size);
    }
    if (isLastStep()) {
        real(file, data, size / 2);
        return fail();
    }
    return real(file, data, size);
}

extern "C" int fsync(int file) {
    static auto* const real = original<int(int)>("fsync");
    return counts(file) && isLastStep() ? fail() : real(file);
}

extern "C" int rename(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("rename");
    return counts(to) && isLastStep() ? fail() : real(from, to);
}

extern "C" int open64(const char* name, int flags, ...) {
    static auto* const real = original<int(const char*, int, ...)>("open64");
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return (flags & O_CREAT) != 0 && counts(name) && isLastStep() ? fail()
                                                                  : real(name, flags, mode);
}

extern "C" int open(const char* name, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return open64(name, flags, mode);
}
