// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/modbussystem.h>

#include <winsock2.h>

#include <limits>

unsigned modbussystem::CodeOf(EError error) {
    switch (error) {
        case EError::InvalidArgument:
            return WSAEINVAL;
        case EError::NoAddress:
            return WSAEDESTADDRREQ;
        case EError::AddressNotAvailable:
            return WSAEADDRNOTAVAIL;
        case EError::NoSuchFamily:
            return WSAEAFNOSUPPORT;
        case EError::TimedOut:
            return WSAETIMEDOUT;
        case EError::ConnectionReset:
            return WSAECONNRESET;
        case EError::Interrupted:
            return ERROR_CANCELLED;
        case EError::TooManyFiles:
            return WSAEMFILE;
        case EError::NoResources:
            return WSAENOBUFS;
    }
    return WSAEINVAL;
}

// Bounded by memory alone.
int modbussystem::MostConnections() {
    return std::numeric_limits<int>::max();
}
