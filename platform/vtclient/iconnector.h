// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/ichannel.h>

#include <QtCore/QString>

#include <memory>

namespace vt {

/// Makes channels to one server, one at a time: what a client needs of a transport. Main thread.
class MCS_CONNECTION_EXPORT IConnector {
  public:
    class MCS_CONNECTION_EXPORT IListener {
      public:
        virtual ~IListener();
        virtual void OnConnected(std::unique_ptr<IChannel> channel) = 0;
        virtual void OnConnectFailed(const QString& reason) = 0;
    };

    virtual ~IConnector();
    virtual void SetListener(IListener* listener) = 0;
    /// Starts an attempt; the listener hears how it ended, from the event loop.
    virtual void Connect() = 0;
    /// Ends an attempt under way; the listener hears nothing of it.
    virtual void Abort() = 0;
};

}  // namespace vt
