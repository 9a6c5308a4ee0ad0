// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/faultlink.h>

#include <QtNetwork/QTcpServer>

#include <memory>
#include <vector>

/// Stands between clients and a server and passes on what they send, byte by byte as badly as it is told.
/// Without faults it swallows nothing and delays nothing.
class FaultProxy final : public QTcpServer {
  public:
    /// \a target is the server's port on this machine.
    explicit FaultProxy(int target);
    ~FaultProxy() override;

    int Port() const { return serverPort(); }
    /// Where connections from now on lead.
    void SetTarget(int target) { m_target = target; }
    /// What happens to the bytes of one direction, at once and in connections to come.
    void SetFaults(EDirection direction, const Faults& faults);
    void SetFaults(const Faults& both);
    /// Cuts every connection, without a word.
    void Cut();
    /// Connections from now on are cut when \a bytes of one direction have passed, \a count times; then all
    /// pass.
    void CutNext(EDirection direction, qint64 bytes, int count = 1);
    /// From now on nothing is cut any more, and no fault is left.
    void Heal();

    int CountLinks() const { return static_cast<int>(m_links.size()); }
    int CountAccepted() const { return m_accepted; }
    /// How many bytes have passed in all.
    qint64 CountBytes(EDirection direction) const;

  protected:
    void incomingConnection(qintptr descriptor) override;

  private:
    void Forget(FaultLink* link);

    int m_target;
    Faults m_faults[2];
    int m_cutsLeft = 0;
    EDirection m_cutDirection = EDirection::ToServer;
    qint64 m_cutAfter = 0;
    int m_accepted = 0;
    qint64 m_bytes[2] = {0, 0};  ///< of links that are gone
    std::vector<std::unique_ptr<FaultLink>> m_links;
};
