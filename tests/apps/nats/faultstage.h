// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsoptions.h>
#include <platform/nats/natsstation.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtserver.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

/// A server and clients over NATS, all in this process, with changes, occurrences and writes going on; and
/// what their users notice meanwhile.
class FaultStage {
  public:
    using Number = values::Value<int>;
    using Text = values::Value<QString>;
    using Time = std::chrono::milliseconds;

    FaultStage();
    ~FaultStage();
    FaultStage(const FaultStage&) = delete;
    FaultStage& operator=(const FaultStage&) = delete;

    /// Before there is anybody: who is silent for so long is taken for lost.
    void SetPatience(Time time);
    /// Offers the server as the station "tower", at the nodes of \a options.
    bool StartServer(const nats::NatsOptions& options);
    /// Ends it without a word, as a kill would, but for the process.
    void EndServer();
    /// A client at the nodes of \a address. False if it does not get there.
    bool AddClient(const QString& address);
    /// Waits until what changes comes by a shared road, at which \a bus listens.
    bool WaitForRoads(nats::INatsBus& bus);

    /// Lets changes, occurrences and writes go on for \a time.
    void Run(Time time);
    /// The same until \a isDone. False if it never is.
    bool RunUntil(const std::function<bool()>& isDone, Time patience = std::chrono::seconds(30));
    /// Starts what goes on, until it is stopped; for a stage in a process of its own.
    void SetChanging(bool isChanging);
    /// The server is another process's, which has sent so many and changes nothing any more.
    void BelieveSent(int sent);
    /// From now on a text of so many characters changes, too.
    void SetTextLength(int length) { m_textLength = length; }
    /// Nothing goes on any more: trees are equal, tics established, writes answered, and no occurrence was
    /// doubled or came out of order; none was lost either, if \a isWhole.
    testing::AssertionResult IsInOrder(bool isWhole);

    /// How long at most nothing came to a client since this was asked last, one time for each, in order.
    std::vector<Time> TakePauses();
    /// How often clients have lost their sessions.
    int CountLosses() const;
    /// How many occurrences clients have missed.
    int CountMissed() const;
    int CountSent() const { return m_sent; }
    int CountDoubled() const;
    /// Of how many gaps clients were told.
    int CountTold() const;
    /// The occurrence that the client who is furthest behind has heard last.
    int LastHeard() const;
    bool IsOffering() const { return m_state == nats::NatsStation::EState::Offering; }
    bool AreAllEstablished() const;
    const TraceRecorder& Traces() const { return m_traces; }
    VtServer& Server() { return *m_server; }

  private:
    /// One client, as its user sees it.
    class Seat final : public IObserver {
      public:
        Seat(FaultStage& stage, int number) : m_stage(stage), m_root(QStringLiteral("/L%1").arg(number)) {}
        ~Seat() override;
        void Update(Observable* source, TChangeCode code) override;
        bool Connect(const QString& address);
        template <class V>
        V* Find(const char* name) const;

        FaultStage& m_stage;
        const QString m_root;
        IVtClient* m_client = nullptr;
        IVtTic* m_tic = nullptr;
        Number* m_number = nullptr;
        Text* m_log = nullptr;
        int m_heard = 0;  ///< the last one
        int m_doubled = 0;
        int m_missed = 0;
        int m_losses = 0;
        int m_told = 0;  ///< of gaps
        QElapsedTimer m_lastChange;
        Time m_longestPause{0};
    };

    void Change();
    bool IsAlike(const Seat& seat) const;

    const TraceRecorder m_traces;
    values::Tree m_tree;
    TestAccess m_access;
    Number* m_number = nullptr;
    Number* m_written = nullptr;
    Text* m_log = nullptr;
    Text* m_text = nullptr;
    int m_textLength = 0;
    Time m_patience = std::chrono::seconds(15);
    std::unique_ptr<VtServer> m_server;
    std::unique_ptr<nats::NatsStation> m_station;
    nats::NatsStation::EState m_state = nats::NatsStation::EState::Connecting;
    std::vector<std::unique_ptr<Seat>> m_seats;
    QTimer m_changes;
    int m_sent = 0;
};
