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
    /// Hears how attempts end. It may start the next one, or destroy the connector.
    class MCS_CONNECTION_EXPORT IListener {
      public:
        virtual ~IListener();
        /// An attempt has led to \a channel.
        virtual void OnConnected(std::unique_ptr<IChannel> channel) = 0;
        virtual void OnConnectFailed(const QString& reason) = 0;  ///< One has failed: \a reason is one line.
    };

    virtual ~IConnector();
    virtual void SetListener(IListener* listener) = 0;  ///< Not owned; one at most, null for none.
    /// Starts an attempt; the listener hears how it ended, from the event loop.
    virtual void Connect() = 0;
    /// Ends an attempt under way; the listener hears nothing of it.
    virtual void Abort() = 0;
};

}  // namespace vt
