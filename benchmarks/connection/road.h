// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <vector>

/// A road is a way from values in one process to observers in another. Every contestant is one: its server's
/// end owns numbered values, its clients' ends follow them, and each client reports one number back.
namespace bench {

struct RoadSetup {
    int values = 1;
    int clients = 1;           ///< how many report back
    bool everyChange = false;  ///< no change may be left out; else the last content counts
    int brokerPort = 0;        ///< of the broker, where a road needs one
};

class ServerEnd {
  public:
    virtual ~ServerEnd() = default;

    /// Calls onOpen with the port for the clients, now or later.
    virtual void Open() = 0;
    virtual void Set(int index, int content) = 0;
    /// What was set in this turn of the event loop may go.
    virtual void Send() {}
    /// Messages so far, where a bus carries them to all.
    virtual quint64 Published() const { return 0; }

    std::function<void(int port)> onOpen;
    std::function<void(int client, int content)> onReport;
};

class ClientEnd {
  public:
    virtual ~ClientEnd() = default;

    /// Calls onReady when the values are followed.
    virtual void Open() = 0;
    virtual void Report(int content) = 0;

    std::function<void()> onReady;
    std::function<void(int index, int content)> onChange;
};

struct Road {
    QString name;  ///< on the command line
    std::function<std::unique_ptr<ServerEnd>(const RoadSetup&)> makeServerEnd;
    std::function<std::unique_ptr<ClientEnd>(const RoadSetup&, int client, int port)> makeClientEnd;
};

/// Those that this build has: a peer that is not installed is left out.
const std::vector<Road>& Roads();
/// Null if this build has none of that name.
const Road* FindRoad(const QString& name);

}  // namespace bench
