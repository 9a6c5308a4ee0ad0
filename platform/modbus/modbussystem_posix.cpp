// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/modbussystem.h>

#include <sys/resource.h>

#include <algorithm>
#include <cerrno>

unsigned modbussystem::CodeOf(EError error) {
    switch (error) {
        case EError::InvalidArgument:
            return EINVAL;
        case EError::NoAddress:
            return EDESTADDRREQ;
        case EError::AddressNotAvailable:
            return EADDRNOTAVAIL;
        case EError::NoSuchFamily:
            return EAFNOSUPPORT;
        case EError::TimedOut:
            return ETIMEDOUT;
        case EError::ConnectionReset:
            return ECONNRESET;
        case EError::Interrupted:
            return ECANCELED;
        case EError::TooManyFiles:
            return EMFILE;
        case EError::NoResources:
            return EAGAIN;
    }
    return EINVAL;
}

// A socket and the descriptor that wakes its thread's event loop, and as many again are left for everything
// else.
int modbussystem::MostConnections() {
    constexpr rlim_t Usual = 1024;  // descriptors
    constexpr rlim_t Most = 1'000'000;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) limit.rlim_cur = Usual;
    return static_cast<int>(std::min(limit.rlim_cur, Most)) * 2 / 5;
}
