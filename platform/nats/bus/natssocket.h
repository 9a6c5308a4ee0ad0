// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/bus/cnats.h>

namespace nats {

/// What the client library tells of a connection's socket while our event loop serves it. Belongs to whoever
/// calls the library for this connection: the thread that connects, and then the main thread.
struct NatsSocket {
    int descriptor = -1;  ///< -1 before and after
    bool wantsToWrite = false;

    /// Has \a options call this, which outlives the connection.
    natsStatus Attach(natsOptions* options) {
        return natsOptions_SetEventLoop(options, this, OnAttach, OnRead, OnWrite, OnDetach);
    }

  private:
    static natsStatus OnAttach(void** userData, void* loop, natsConnection* /*connection*/,
                               natsSock descriptor) {
        auto* const self = static_cast<NatsSocket*>(loop);
        self->descriptor = descriptor;
        self->wantsToWrite = false;
        *userData = self;
        return NATS_OK;
    }
    // It is always read; that it is not any more says that the connection is gone.
    static natsStatus OnRead(void* userData, bool isOn) {
        if (!isOn) static_cast<NatsSocket*>(userData)->descriptor = -1;
        return NATS_OK;
    }
    static natsStatus OnWrite(void* userData, bool isOn) {
        static_cast<NatsSocket*>(userData)->wantsToWrite = isOn;
        return NATS_OK;
    }
    static natsStatus OnDetach(void* userData) {
        static_cast<NatsSocket*>(userData)->descriptor = -1;
        return NATS_OK;
    }
};

}  // namespace nats
