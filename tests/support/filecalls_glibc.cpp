// SPDX-License-Identifier: Apache-2.0
#include <tests/support/filecalls_glibc.h>

#include <QtCore/QFile>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/types.h>

#include <cstdarg>
#include <cstring>

namespace {

using Clock = std::chrono::steady_clock;

QByteArray& Directory() {
    static auto& directory = *new QByteArray;  // whatever ends later may still open files
    return directory;
}

filecalls::Counts counts;

template <class Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool IsWatched(const char* name) {
    const QByteArray& directory = Directory();
    return !directory.isEmpty() && std::strncmp(name, directory.constData(), size_t(directory.size())) == 0;
}

void CountOpen(const char* name, int flags) {
    if (!IsWatched(name)) return;
    if ((flags & O_ACCMODE) == O_RDONLY) ++counts.reads;
    if ((flags & O_ACCMODE) == O_WRONLY) ++counts.writes;
}

int Synchronize(int (*real)(int), int file) {
    const Clock::time_point begin = Clock::now();
    const int result = real(file);
    ++counts.syncs;
    counts.syncTime += Clock::now() - begin;
    return result;
}

}  // namespace

void filecalls::Start(const QString& directory) {
    Directory() = QFile::encodeName(directory) + '/';
    counts = Counts();
}

filecalls::Counts filecalls::Get() {
    return counts;
}

std::vector<int> filecalls::GetCalls() {
    return {counts.locks, counts.reads, counts.writes, counts.renames, counts.syncs};
}

// The libraries find them here, before they look in the C library.
#pragma GCC visibility push(default)
extern "C" {
int open(const char* name, int flags, ...) {
    static auto* const real = Real<int(const char*, int, ...)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    CountOpen(name, flags);
    return real(name, flags, mode);
}

int open64(const char* name, int flags, ...) {
    static auto* const real = Real<int(const char*, int, ...)>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    CountOpen(name, flags);
    return real(name, flags, mode);
}

int flock(int file, int operation) noexcept {
    static auto* const real = Real<int(int, int)>("flock");
    if ((operation & LOCK_EX) != 0) ++counts.locks;
    return real(file, operation);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = Real<int(const char*, const char*)>("rename");
    if (IsWatched(to)) ++counts.renames;
    return real(from, to);
}

int fdatasync(int file) {
    static auto* const real = Real<int(int)>("fdatasync");
    return Synchronize(real, file);
}

int fsync(int file) {
    static auto* const real = Real<int(int)>("fsync");
    return Synchronize(real, file);
}
}
#pragma GCC visibility pop
