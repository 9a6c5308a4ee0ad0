// SPDX-License-Identifier: Apache-2.0
// Loaded before the C library, lets a program have another time of day than this machine: so many seconds
// later as the file says that MCS_WRONG_CLOCK names, at each moment. Clocks that only run on stay as they
// are.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

const volatile std::int64_t* MapOffset() {
    const char* const file = std::getenv("MCS_WRONG_CLOCK");
    const int descriptor = file != nullptr ? ::open(file, O_RDONLY | O_CLOEXEC) : -1;
    if (descriptor < 0) return nullptr;
    void* const place = ::mmap(nullptr, sizeof(std::int64_t), PROT_READ, MAP_SHARED, descriptor, 0);
    ::close(descriptor);
    return place == MAP_FAILED ? nullptr : static_cast<const volatile std::int64_t*>(place);
}

std::time_t Offset() {
    static const volatile std::int64_t* const offset = MapOffset();
    return offset != nullptr ? static_cast<std::time_t>(*offset) : 0;
}

template <class Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    static auto* const next = Next<int(clockid_t, timespec*)>("clock_gettime");
    const int result = next(clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE)) time->tv_sec += Offset();
    return result;
}

int gettimeofday(timeval* time, void* zone) noexcept {
    static auto* const next = Next<int(timeval*, void*)>("gettimeofday");
    const int result = next(time, zone);
    if (result == 0) time->tv_sec += Offset();
    return result;
}

std::time_t time(std::time_t* place) noexcept {
    timeval now{};
    ::gettimeofday(&now, nullptr);
    if (place != nullptr) *place = now.tv_sec;
    return now.tv_sec;
}

}  // extern "C"
#pragma GCC visibility pop
