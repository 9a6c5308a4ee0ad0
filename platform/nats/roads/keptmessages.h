// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natskeeper.h>
#include <platform/vtclient/iroads.h>

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <memory>
#include <optional>

namespace nats {

/// Some messages of one road that are asked for from whoever keeps them, several at a time, as far as there
/// are any. Main thread.
class KeptMessages final : public std::enable_shared_from_this<KeptMessages> {
  public:
    /// \a keeper and \a listener outlive it, or end it; \a subject is that of the road, without a number.
    KeptMessages(NatsKeeper& keeper, QByteArray subject, vt::IRoads::IListener& listener, quint64 from,
                 quint64 to);

    void Start() { AskMore(); }
    /// The listener is told nothing any more.
    void Abort() { m_listener = nullptr; }

  private:
    static constexpr int AtOnce = 64;

    void AskMore();
    void OnAnswer(quint64 number, const std::optional<QByteArray>& message);

    NatsKeeper& m_keeper;
    const QByteArray m_subject;
    vt::IRoads::IListener* m_listener;
    quint64 m_next;
    quint64 m_to;
    int m_asked = 0;
    bool m_isTold = false;  ///< the listener: that nothing more is asked for
};

}  // namespace nats
