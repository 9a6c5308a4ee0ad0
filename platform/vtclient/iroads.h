// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <optional>
#include <string_view>

namespace vt {

/// A message that goes by a road has no more bytes.
constexpr int MaxRoadMessage = 1 << 20;

/// Ways on which what a server publishes once reaches whoever listens: the seam between shared roads and a
/// bus that carries them. A road may lose, repeat and reorder what goes by it, and anybody may publish there:
/// what it means is safe all the same. Main thread.
class MCS_CONNECTION_EXPORT IRoads {
  public:
    /// Called from the event loop only, never from within a call to IRoads.
    class MCS_CONNECTION_EXPORT IListener {
      public:
        virtual ~IListener();
        /// One message as it came, from whomever. \a isFetched: because of Fetch(). \a data is valid during
        /// the call, in which anybody may stop to listen.
        virtual void OnRoadMessage(const char* data, qint64 size, bool isFetched) = 0;
        /// The messages at hand were given: what they led to can be sent.
        virtual void OnRoadInputDone() = 0;
        /// All that was found for the last Fetch() was given, or something of it is not there: what else is
        /// found may still come. A later OnRoadInputDone() does not follow.
        virtual void OnFetched() = 0;
    };

    virtual ~IRoads();
    /// Whose roads these are. What is sealed for one station cannot be opened as another's.
    virtual QString Station() const = 0;
    /// Sends \a message, of no more than MaxMessage() bytes, to all who listen to \a road, a name of
    /// letters, digits and "-", and to whoever keeps it for a while. False if it is lost at once.
    virtual bool Publish(const QString& road, std::string_view message) = 0;
    /// Gives what comes by \a road to \a listener, which listens to no other.
    virtual void Listen(const QString& road, IListener* listener) = 0;
    /// Nothing is given to \a listener any more. Does nothing if it does not listen.
    virtual void Unlisten(IListener* listener) = 0;
    /// Asks whoever keeps the road of \a listener for the messages with the numbers \a from to \a to; those
    /// that are found are given to it, in order if possible, others too if need be. Ends a question before.
    /// False if nobody keeps it: then OnFetched() is not called.
    virtual bool Fetch(IListener* listener, quint64 from, quint64 to) = 0;
    /// How many bytes a message may have on this bus, now, and no more than MaxRoadMessage.
    virtual int MaxMessage() const { return MaxRoadMessage; }
    /// What was published leaves now, as far as it can: something that takes time comes next.
    virtual void Flush() {}
};

/// The number that a message on a road says it has, from 1, by which a keeper finds it; none if it is
/// rubbish. Whether it is the server's, only those know who have the key.
MCS_CONNECTION_EXPORT std::optional<quint64> NumberOnRoad(const char* data, qint64 size);

}  // namespace vt
