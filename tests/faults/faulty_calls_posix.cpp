#include "tests/faults/faulty_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace dunkman {

namespace {

bool isCounting = false;
std::array<std::int64_t, systemCallNames.size()> counts{};
SystemCall failingCall = SystemCall::Allocation;
std::int64_t failingNumber = 0;

bool fails(SystemCall call) {
    if (!isCounting) {
        return false;
    }
    const std::int64_t number = ++counts[static_cast<std::size_t>(call)];
    return call == failingCall && number == failingNumber;
}

// The function that would have been called without this file.
template <typename Function> Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

void beginCounting(SystemCall failing, std::int64_t number) {
    counts = {};
    failingCall = failing;
    failingNumber = number;
    isCounting = true;
}

std::array<std::int64_t, systemCallNames.size()> endCounting() {
    isCounting = false;
    return counts;
}

} // namespace dunkman

using dunkman::fails;
using dunkman::original;
using dunkman::SystemCall;

// With nothrow as well: what was taken so is given back by the plain form, which would not know it otherwise.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return fails(SystemCall::Allocation) ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

extern "C" {

int open(const char* path, int flags, ...) {
    static auto* const real = original<int(const char*, int, ...)>("open");
    if (fails(SystemCall::Open)) {
        errno = EMFILE;
        return -1;
    }
    if ((flags & O_CREAT) == 0) {
        return real(path, flags);
    }
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    return real(path, flags, mode);
}

// The file is closed, but what was to reach the disk did not.
int close(int file) {
    static auto* const real = original<int(int)>("close");
    const int result = real(file);
    if (fails(SystemCall::Close)) {
        errno = EIO;
        return -1;
    }
    return result;
}

ssize_t read(int file, void* bytes, std::size_t count) {
    static auto* const real = original<ssize_t(int, void*, std::size_t)>("read");
    if (fails(SystemCall::Read)) {
        errno = EIO;
        return -1;
    }
    return real(file, bytes, count);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    static auto* const real = original<ssize_t(int, const void*, std::size_t)>("write");
    if (fails(SystemCall::Write)) {
        errno = ENOSPC;
        return -1;
    }
    return real(file, bytes, count);
}

int stat(const char* path, struct stat* result) noexcept {
    static auto* const real = original<int(const char*, struct stat*)>("stat");
    if (fails(SystemCall::Status)) {
        errno = EACCES;
        return -1;
    }
    return real(path, result);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = original<int(const char*, const char*)>("rename");
    if (fails(SystemCall::Rename)) {
        errno = EACCES;
        return -1;
    }
    return real(from, to);
}

} // extern "C"
