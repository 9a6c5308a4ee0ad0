// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/ivtlosses.h>

#include <tests/support/printing.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// A tic whose state the test sets.
class FakeVtTic final : public IVtTic {
  public:
    explicit FakeVtTic(const QString& ticText)
        : m_localPath(ticText.section(QLatin1Char(','), 0, 0)),
          m_remotePath(ticText.section(QLatin1Char(','), 1)) {}

    bool IsEstablished() const override { return m_isEstablished; }
    QString GetLocalPath() const override { return m_localPath; }
    QString GetRemotePath() const override { return m_remotePath; }
    bool IsAbsent() const override { return m_isAbsent; }

    void SetAbsent(bool isAbsent) { m_isAbsent = isAbsent; }
    /// Sets the state without telling anybody.
    void SetEstablished(bool isEstablished) { m_isEstablished = isEstablished; }
    /// Sets the state and tells of it.
    void Establish(bool isEstablished = true) {
        SetEstablished(isEstablished);
        NotifyObservers(connectioncode::TicsChanged);
    }

  private:
    QString m_localPath;
    QString m_remotePath;
    bool m_isEstablished = false;
    bool m_isAbsent = false;
};

/// A value-tree client without a server: notes what it is asked for, and is what the test says it is. Keeps
/// the promises of a real one: its tics live until they are removed or until it goes, which it tells first.
class FakeVtClient : public IVtClient, public IVtLosses {
  public:
    using Reaction = std::function<void()>;

    explicit FakeVtClient(QString address = QStringLiteral("dfserver")) : m_address(std::move(address)) {}
    FakeVtClient(const FakeVtClient&) = delete;
    FakeVtClient& operator=(const FakeVtClient&) = delete;
    ~FakeVtClient() override {
        NotifyObservers(connectioncode::GoingAway);
        while (!m_tics.empty())
            Destroy(m_tics.front().get());
    }

    bool IsConnected() const override { return m_isConnected; }
    bool AreAllTicsEstablished() const override {
        return m_isConnected && std::all_of(m_tics.begin(), m_tics.end(),
                                            [](const auto& tic) { return tic->IsEstablished(); });
    }
    QString GetServerAddress() const override { return m_address; }
    int GetServerPort() const override { return 7450; }
    QString GetLastError() const override { return lastError; }
    bool HasUnansweredWrites() const override { return hasUnansweredWrites; }
    QString GetServerApplication() const override { return application; }
    std::optional<std::chrono::microseconds> GetLatency() const override { return latency; }
    bool IsEncrypted() const override { return isEncrypted; }

    IVtTic* AddTic(const QString& ticText, const char* options) override {
        m_calls.push_back(QStringLiteral("AddTic %1 [%2]").arg(ticText, QLatin1String(options)));
        if (--m_acceptedTics < 0) return nullptr;
        m_tics.push_back(std::make_unique<FakeVtTic>(ticText));
        FakeVtTic* const tic = m_tics.back().get();
        OnTicAdded(*tic);
        if (const Reaction reaction = m_onAddTic) reaction();
        return tic;
    }
    void RemoveTic(IVtTic* tic) override {
        if (IndexOf(tic) == m_tics.end()) {
            m_calls.push_back(QStringLiteral("RemoveTic of a stranger"));
            return;
        }
        m_calls.push_back(QStringLiteral("RemoveTic %1").arg(tic->GetLocalPath()));
        OnTicRemoved(*tic);
        Destroy(tic);
    }
    void ReleaseNode(values::Node* node) override {
        m_calls.push_back(QStringLiteral("ReleaseNode %1").arg(node->GetPathName()));
        if (m_onReleaseNode) std::exchange(m_onReleaseNode, nullptr)();
    }

    void SetConnected(bool isConnected) { m_isConnected = isConnected; }
    /// The next \a count tics are accepted, those after them refused.
    void AcceptTics(int count) { m_acceptedTics = count; }
    /// Happens within AddTic, after the tic is there.
    void OnAddTic(Reaction reaction) { m_onAddTic = std::move(reaction); }
    /// Happens within the next ReleaseNode.
    void OnReleaseNode(Reaction reaction) { m_onReleaseNode = std::move(reaction); }
    void Tell(TChangeCode code) { NotifyObservers(code); }
    /// Tells that \a loss has passed it by.
    void Miss(const VtLoss& loss) {
        m_lastLoss = loss;
        Tell(connectioncode::ChangesLost);
    }
    const VtLoss& GetLastLoss() const override { return m_lastLoss; }

    /// Connects, establishes all tics and tells of each, as after a server's answer.
    void EstablishAll() {
        SetConnected(true);
        for (const auto& tic : m_tics)
            tic->SetEstablished(true);
        const std::vector<FakeVtTic*> tics = Tics();
        Tell(connectioncode::Connected);
        for (FakeVtTic* tic : tics)
            tic->Establish();
        Tell(connectioncode::TicsChanged);
    }

    std::vector<FakeVtTic*> Tics() const {
        std::vector<FakeVtTic*> tics;
        for (const auto& tic : m_tics)
            tics.push_back(tic.get());
        return tics;
    }
    QString lastError;
    QString application;
    std::optional<std::chrono::microseconds> latency;
    bool isEncrypted = false;
    bool hasUnansweredWrites = false;

    const std::vector<QString>& Calls() const { return m_calls; }
    void ClearCalls() { m_calls.clear(); }

  protected:
    virtual void OnTicAdded(FakeVtTic& /*tic*/) {}
    virtual void OnTicRemoved(IVtTic& /*tic*/) {}

  private:
    std::vector<std::unique_ptr<FakeVtTic>>::iterator IndexOf(const IVtTic* tic) {
        return std::find_if(m_tics.begin(), m_tics.end(),
                            [tic](const auto& own) { return own.get() == tic; });
    }
    void Destroy(IVtTic* tic) {
        const std::unique_ptr<FakeVtTic> removed = std::move(*IndexOf(tic));
        m_tics.erase(std::find(m_tics.begin(), m_tics.end(), nullptr));
        removed->NotifyObservers(connectioncode::GoingAway);
    }

    QString m_address;
    bool m_isConnected = false;
    int m_acceptedTics = 1000;
    std::vector<std::unique_ptr<FakeVtTic>> m_tics;
    std::vector<QString> m_calls;
    VtLoss m_lastLoss;
    Reaction m_onAddTic;
    Reaction m_onReleaseNode;
};
