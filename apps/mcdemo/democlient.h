// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/observation.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtCore/QString>

class MpxORVHandle;

/// A client of the server as an application would be: it connects, mirrors the server's status, gets an
/// MpxORV of its own, and asks for what it is told to ask for. Prints a line for everything that it hears.
class DemoClient final : public IObserver {
  public:
    DemoClient();
    ~DemoClient() override;
    DemoClient(const DemoClient&) = delete;
    DemoClient& operator=(const DemoClient&) = delete;

    /// False if there can be no server there.
    bool Connect(const QString& address, int port);
    /// Carries out one line: "tune <Hz>", "master", "restart", "bit" or "calibrate".
    void Obey(const QString& line);

    void Update(Observable* source, TChangeCode code) override;

  private:
    void OnClientCode(TChangeCode code);
    void FollowAnswers();
    void Press(const char* button);

    values::Tree m_tree;
    MultiChannelServerClient m_client;
    MpxORVHandle* m_handle = nullptr;  ///< owned by the client
    Observation<values::Value<QString>> m_answer;
};
