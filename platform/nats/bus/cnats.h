// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nats/nats.h>

#include <QtCore/QString>

#include <memory>

namespace nats {

/// Destroys what the client library made.
struct CnatsDeleter {
    void operator()(natsOptions* options) const { natsOptions_Destroy(options); }
    void operator()(natsConnection* connection) const { natsConnection_Destroy(connection); }
    void operator()(natsSubscription* subscription) const { natsSubscription_Destroy(subscription); }
    void operator()(natsMsg* message) const { natsMsg_Destroy(message); }
};

template <class T>
using CnatsPointer = std::unique_ptr<T, CnatsDeleter>;

/// \a text of the library in one line, without the place in its sources that stands in front; what \a status
/// means where it says nothing.
QString CnatsText(natsStatus status, const char* text);
/// The same for what it said last in this thread.
QString CnatsText(natsStatus status);

}  // namespace nats
