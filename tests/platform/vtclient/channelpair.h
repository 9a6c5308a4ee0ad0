// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ichannel.h>

#include <functional>
#include <memory>
#include <vector>

/// The two ends of one connection over some transport, and how to let its bytes move.
class ChannelPair {
  public:
    virtual ~ChannelPair() = default;
    ChannelPair(const ChannelPair&) = delete;
    ChannelPair& operator=(const ChannelPair&) = delete;

    /// Lets bytes move until \a isDone. False if they come to rest, or time is up, before.
    virtual bool RunUntil(const std::function<bool()>& isDone) = 0;
    /// Lets everything arrive that is on its way.
    virtual void Settle() = 0;

    std::unique_ptr<vt::IChannel> client;
    std::unique_ptr<vt::IChannel> server;

  protected:
    ChannelPair() = default;
};

/// What an end has to say of the other one.
struct ExpectedPeer {
    bool isLoopback = true;
    bool isEncrypted = false;
    const char* certificateName = "";
};

/// A transport by name, and how a connection over it is made; null if that failed.
struct Transport {
    const char* name;
    std::unique_ptr<ChannelPair> (*connect)();
    QString (*obstacle)() = nullptr;  ///< asked first: why it cannot be tested here; empty if it can
    ExpectedPeer atClient = {};
    ExpectedPeer atServer = {};
};

/// The transports that the program tests, which it says itself.
std::vector<Transport> TransportsToTest();

std::unique_ptr<ChannelPair> ConnectInMemory();
std::unique_ptr<ChannelPair> ConnectOverTcp();
std::unique_ptr<ChannelPair> ConnectOverTls();
